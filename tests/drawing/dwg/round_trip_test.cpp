// Whole drawings: opened and saved, changed and saved, read again.
#include <gtest/gtest.h>

#include "db/block_reference.h"
#include "db/curves.h"
#include "db/polylines.h"
#include "db/text.h"
#include "drawing/dwg/round_trip.h"
#include "dwg/drawing_reader.h"
#include "dwg/drawing_writer.h"
#include "support/drawings.h"

namespace vndk::test {

namespace {

std::string hex(uint64_t handle) {
    char text[17];
    AcDbHandle(handle).getIntoAsciiBuffer(text);
    return text;
}

std::vector<uint8_t> written(AcDbDatabase& database) {
    auto bytes = dwg::writeDrawing(database);
    EXPECT_TRUE(bytes) << bytes.error().message;
    return bytes ? *bytes : std::vector<uint8_t>();
}

void reread(AcDbDatabase& database, std::vector<uint8_t> bytes) {
    const auto read = dwg::readDrawing(database, std::move(bytes), "saved drawing");
    ASSERT_TRUE(read) << read.error().message;
}

void reread(AcDbDatabase& database, AcDbDatabase& from) { reread(database, written(from)); }

/// How many objects of `former` have the same bytes in `later`; handles of the others go to `changed`.
size_t identicalObjects(const AcDbDatabase& former, const AcDbDatabase& later, std::vector<std::string>& changed) {
    size_t identical = 0;
    for (const AcDbStub& stub : former.stubs()) {
        const AcDbStub* const again = later.findStub(stub.handle);
        const bool same = again && again->byteCount == stub.byteCount &&
                          std::equal(stub.bytes, stub.bytes + stub.byteCount, again->bytes);
        identical += same;
        if (!same)
            changed.push_back(hex(stub.handle.value()));
    }
    return identical;
}

AcDbObjectId append(AcDbObjectId block, AcDbEntity* entity) {
    AcDbObjectId id;
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
    EXPECT_EQ(record.openStatus(), Acad::eOk);
    EXPECT_EQ(record->appendAcDbEntity(id, entity), Acad::eOk);
    entity->close();
    return id;
}

AcDbObjectId addBlock(AcDbDatabase& database, const char* name) {
    const AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId(), AcDb::kForWrite);
    auto* const record = new AcDbBlockTableRecord;
    EXPECT_EQ(record->setName(name), Acad::eOk);
    EXPECT_EQ(table->add(record), Acad::eOk);
    record->close();
    return record->objectId();
}

void erase(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
    ASSERT_TRUE(object);
    ASSERT_EQ(object->erase(), Acad::eOk);
}

std::vector<AcDbObjectId> entitiesOf(AcDbObjectId block) {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block);
    return record ? record->entities() : std::vector<AcDbObjectId>();
}

/// Each member's links name its neighbours, in both directions, and the ends have none.
void expectWholeChain(AcDbDatabase& database, const std::vector<AcDbObjectId>& ids) {
    const dwg::FrameContext& context = dwg::sourceOf(database).codec().context();
    for (size_t i = 0; i < ids.size(); ++i) {
        const AcDbStub& stub = *ids[i].stub();
        const std::span<const uint8_t> record(stub.bytes, stub.byteCount);
        dwg::ObjectFrame frame;
        dwg::CommonHandles handles;
        ASSERT_TRUE(dwg::parseFrame(record, context, frame) && dwg::readCommonHandles(record, frame, handles));
        EXPECT_EQ(handles.previous, i == 0 ? 0 : ids[i - 1].handle().value()) << hex(stub.handle.value());
        EXPECT_EQ(handles.next, i + 1 == ids.size() ? 0 : ids[i + 1].handle().value()) << hex(stub.handle.value());
    }
}

std::vector<std::string> allDrawings() {
    std::vector<std::string> paths = realDrawings("r2000");
    for (const std::string& path : realDrawings("big"))
        paths.push_back(path);
    return paths;
}

TEST(RoundTrip, KeepsEveryObjectThatNobodyTouched) {
    SKIP_WITHOUT_DRAWINGS();
    for (const std::string& path : allDrawings()) {
        AcDbDatabase database(false), again(false);
        ASSERT_TRUE(dwg::readDrawing(database, path));
        reread(again, database);
        std::vector<std::string> changed;
        const size_t identical = identicalObjects(database, again, changed);
        std::cout << path << ": " << identical << " of " << database.stubs().size() << " objects are identical\n";
        EXPECT_EQ(identical, database.stubs().size()) << "first: " << changed.front();
        EXPECT_EQ(again.stubs().size(), database.stubs().size());
        EXPECT_EQ(again.header(), database.header());
    }
}

TEST(RoundTrip, AppendingTouchesOnlyTheNeighboursAndTheBlock) {
    SKIP_WITHOUT_DRAWINGS();
    for (const std::string& path : realDrawings("r2000")) {
        AcDbDatabase database(false), again(false);
        ASSERT_TRUE(dwg::readDrawing(database, path));
        const std::vector<AcDbObjectId> before = entitiesOf(database.modelSpaceId());
        const AcDbObjectId line = append(database.modelSpaceId(), new AcDbLine({1, 2, 3}, {4, 5, 6}));
        reread(again, database);
        std::vector<std::string> changed;
        identicalObjects(database, again, changed);
        std::vector<std::string> expected = {hex(database.modelSpaceId().handle().value())};
        if (!before.empty())
            expected.push_back(hex(before.back().handle().value()));
        expected.push_back(hex(line.handle().value()));
        std::sort(expected.begin(), expected.end());
        std::sort(changed.begin(), changed.end());
        EXPECT_EQ(changed, expected) << path;
        const std::vector<AcDbObjectId> after = entitiesOf(again.modelSpaceId());
        ASSERT_EQ(after.size(), before.size() + 1) << path;
        expectWholeChain(again, after);
        EXPECT_TRUE(again.warnings().empty()) << again.warnings().front();
        const AcDbObjectPointer<AcDbLine> copy(after.back());
        ASSERT_TRUE(copy) << path;
        EXPECT_EQ(copy->endPoint(), AcGePoint3d(4, 5, 6));
    }
}

TEST(RoundTrip, ErasingAnyOneEntityLeavesTheRestChained) {
    SKIP_WITHOUT_DRAWINGS();
    const std::vector<std::string> paths = realDrawings("r2000");
    for (const std::string& path : paths) {
        AcDbDatabase whole(false);
        ASSERT_TRUE(dwg::readDrawing(whole, path));
        const size_t count = entitiesOf(whole.modelSpaceId()).size();
        for (size_t victim = 0; victim < count; victim += 1 + count / 8) {
            AcDbDatabase database(false), again(false);
            ASSERT_TRUE(dwg::readDrawing(database, path));
            const AcDbObjectId id = entitiesOf(database.modelSpaceId())[victim];
            erase(id);
            reread(again, database);
            const std::vector<AcDbObjectId> after = entitiesOf(again.modelSpaceId());
            EXPECT_EQ(after.size(), count - 1) << path << " without entity " << victim;
            EXPECT_EQ(again.findStub(id.handle()), nullptr);
            expectWholeChain(again, after);
        }
    }
}

/// Of neighbours by number and of others.
TEST(RoundTrip, ReadsTheSameChainWithAndWithoutDecoding) {
    AcDbDatabase database, plain(false), decoded(false);
    append(database.modelSpaceId(), new AcDbLine({0, 0, 0}, {1, 0, 0}));
    const AcDbObjectId block = addBlock(database, "DOOR");
    append(block, new AcDbLine({0, 0, 0}, {8, 5, 0}));
    append(database.modelSpaceId(), new AcDbBlockReference({5, 5, 0}, block));
    const AcDbObjectId gone = append(database.modelSpaceId(), new AcDbLine({0, 0, 0}, {2, 0, 0}));
    append(database.modelSpaceId(), new AcDbLine({0, 0, 0}, {3, 0, 0}));
    erase(gone);
    reread(plain, database);
    reread(decoded, database);
    const std::vector<AcDbObjectId> expected = entitiesOf(plain.modelSpaceId());
    ASSERT_EQ(expected.size(), 3U);
    EXPECT_EQ(expected.back().stub()->object, nullptr) << "fields stay as they are";
    const AcDbObjectPointer<AcDbBlockTableRecord> space(decoded.modelSpaceId());
    ASSERT_EQ(space->entities(true).size(), expected.size());
    EXPECT_FALSE(space->isChainBroken());
    for (size_t i = 0; i < expected.size(); ++i) {
        const AcDbObjectId id = space->entities()[i];
        EXPECT_EQ(id.handle(), expected[i].handle());
        EXPECT_NE(id.stub()->object, nullptr);
        EXPECT_EQ(AcDbObjectPointer<AcDbEntity>(id)->ownerId(), decoded.modelSpaceId());
    }
}

/// A block with definitions, referenced with attributes in both spaces: everything that INSERT makes.
TEST(RoundTrip, KeepsABlockWithAttributesInANewDrawing) {
    AcDbDatabase database, again(false);
    const AcDbObjectId block = addBlock(database, "DOOR");
    append(block, new AcDbLine({0, 0, 0}, {10, 0, 0}));
    append(block, new AcDbAttributeDefinition({1, 1, 0}, "oak", "WOOD", "Kind of wood?"));
    auto* const insert = new AcDbBlockReference({5, 6, 7}, block);
    ASSERT_EQ(insert->setScaleFactors({1, -2, 3}), Acad::eOk);
    ASSERT_EQ(insert->setRotation(0.25), Acad::eOk);
    const AcDbObjectId insertId = append(database.modelSpaceId(), insert);
    append(database.paperSpaceId(), new AcDbBlockReference({1, 0, 0}, block));
    {
        const AcDbObjectPointer<AcDbBlockReference> open(insertId, AcDb::kForWrite);
        for (const char* tag : {"WOOD", "WIDTH"}) {
            auto* const attribute = new AcDbAttribute({1, 2, 3}, "beech \xE4", tag);
            ASSERT_EQ(open->appendAttribute(attribute), Acad::eOk);
            attribute->close();
        }
    }
    reread(again, database);
    EXPECT_TRUE(again.warnings().empty()) << again.warnings().front();
    const AcDbObjectPointer<AcDbBlockReference> copy(entitiesOf(again.modelSpaceId()).at(0));
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->position(), AcGePoint3d(5, 6, 7));
    EXPECT_EQ(copy->scaleFactors(), AcGeScale3d(1, -2, 3));
    EXPECT_EQ(copy->rotation(), 0.25);
    ASSERT_EQ(copy->attributes().size(), 2u);
    expectWholeChain(again, copy->attributes());
    const AcDbObjectPointer<AcDbAttribute> attribute(copy->attributes()[1]);
    ASSERT_TRUE(attribute);
    EXPECT_EQ(attribute->tagValue(), "WIDTH");
    EXPECT_EQ(attribute->textValue(), "beech \xE4");
    EXPECT_EQ(attribute->position(), AcGePoint3d(1, 2, 3));
    const AcDbObjectPointer<AcDbBlockTableRecord> record(copy->blockTableRecord());
    ASSERT_TRUE(record);
    EXPECT_EQ(record->name(), "DOOR");
    EXPECT_TRUE(record->fileHasDefinitions());
    EXPECT_EQ(record->references().size(), 2u);
    const AcDbObjectPointer<AcDbAttributeDefinition> definition(record->entities().at(1));
    ASSERT_TRUE(definition);
    EXPECT_EQ(definition->promptValue(), "Kind of wood?");
}

TEST(RoundTrip, LeavesOutWhatAnErasedBlockAndReferenceOwned) {
    AcDbDatabase database, saved(false), again(false);
    const AcDbObjectId block = addBlock(database, "GONE");
    append(block, new AcDbLine({0, 0, 0}, {10, 0, 0}));
    const AcDbObjectId insertId = append(database.modelSpaceId(), new AcDbBlockReference({0, 0, 0}, block));
    {
        const AcDbObjectPointer<AcDbBlockReference> open(insertId, AcDb::kForWrite);
        auto* const attribute = new AcDbAttribute({}, "a", "A");
        ASSERT_EQ(open->appendAttribute(attribute), Acad::eOk);
        attribute->close();
    }
    const size_t before = AcDbDatabase().stubs().size();
    reread(saved, database);
    ASSERT_GT(saved.stubs().size(), before);
    erase(saved.idOf(insertId.handle().value()));
    erase(saved.idOf(block.handle().value()));
    reread(again, saved);
    EXPECT_EQ(again.stubs().size(), before);
    EXPECT_TRUE(entitiesOf(again.modelSpaceId()).empty());
    EXPECT_TRUE(again.warnings().empty());
}

TEST(RoundTrip, GivesTheSameFileAgainWhenSavedTwice) {
    AcDbDatabase database, second(false);
    append(database.modelSpaceId(), new AcDbCircle({1, 2, 0}, {0, 0, 1}, 3));
    reread(second, database);
    const std::vector<uint8_t> bytes = written(second);
    AcDbDatabase third(false);
    reread(third, bytes);
    EXPECT_EQ(written(third), bytes);
}

TEST(RoundTrip, KeepsTheVerticesOfAPolyline) {
    AcDbDatabase database, again(false);
    const AcDbObjectId id = append(database.modelSpaceId(), new AcDb2dPolyline);
    {
        const AcDbObjectPointer<AcDb2dPolyline> polyline(id, AcDb::kForWrite);
        for (const double x : {0.0, 1.0, 2.0}) {
            auto* const vertex = new AcDb2dVertex({x, x * x, 0}, 0.5, 1, 1);
            ASSERT_EQ(polyline->appendVertex(vertex), Acad::eOk);
            vertex->close();
        }
    }
    auto* const flat = new AcDbPolyline;
    flat->addVertexAt(0, {0, 0}, 1);
    flat->addVertexAt(1, {1e-3, 5}, 0, 2, 3);
    flat->setElevation(4);
    flat->setClosed(true);
    append(database.modelSpaceId(), flat);
    reread(again, database);
    const std::vector<AcDbObjectId> ids = entitiesOf(again.modelSpaceId());
    ASSERT_EQ(ids.size(), 2u);
    const AcDbObjectPointer<AcDb2dPolyline> polyline(ids[0]);
    ASSERT_TRUE(polyline);
    ASSERT_EQ(polyline->vertices().size(), 3u);
    const AcDbObjectPointer<AcDb2dVertex> vertex(polyline->vertices()[2]);
    EXPECT_EQ(vertex->position(), AcGePoint3d(2, 4, 0));
    EXPECT_EQ(vertex->endWidth(), 1);
    const AcDbObjectPointer<AcDbPolyline> copy(ids[1]);
    ASSERT_TRUE(copy);
    double start = 0, end = 0;
    EXPECT_EQ(copy->getWidthsAt(1, start, end), Acad::eOk);
    EXPECT_EQ(start, 2);
    EXPECT_EQ(end, 3);
    EXPECT_TRUE(copy->isClosed());
    EXPECT_EQ(copy->elevation(), 4);
}

} // namespace

} // namespace vndk::test
