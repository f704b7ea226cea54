// One drawing inserted into another: what comes along, how it hangs together there, and that a refusal leaves nothing.
#include <limits>

#include "db/id_mapping.h"
#include "drawing/db/expect_saves.h"
#include "drawing/db/insertion_checks.h"
#include "drawing/db/rich_drawing.h"
#include "dwg/crc.h"
#include "dwg/drawing_reader.h"
#include "dwg/file_writer.h"
#include "dwg/xrecord_handles.h"

namespace vndk::test {

namespace {

template <class T>
T* found(AcDbDatabase& database, AcDbObjectId id) {
    return id.isNull() ? nullptr : T::cast(database.objectOf(*id.stub()));
}

template <class T>
T* firstOf(AcDbDatabase& database, const std::vector<AcDbObjectId>& ids) {
    for (const AcDbObjectId id : ids)
        if (T* const object = found<T>(database, id))
            return object;
    return nullptr;
}

AcDbObjectId recordNamed(AcDbDatabase& database, AcDbObjectId table, const char* name) {
    AcDbObjectId id;
    AcDbSymbolTable::cast(database.objectOf(*table.stub()))->getAt(name, id);
    return id;
}

AcDbObjectId memberNamed(AcDbDatabase& database, const char* folder, const char* key) {
    AcDbObjectId id;
    if (found<AcDbDictionary>(database, database.namedObjectsDictionaryId())->getAt(folder, id) == Acad::eOk)
        found<AcDbDictionary>(database, id)->getAt(key, id);
    return id;
}

/// The copies, in the order of the originals' space.
std::vector<AcDbObjectId> contents(AcDbDatabase& database, AcDbObjectId block) {
    return found<AcDbBlockTableRecord>(database, block)->entities();
}

template <class T>
T* firstOf(AcDbDatabase& database, AcDbObjectId block) {
    for (const AcDbObjectId id : contents(database, block))
        if (auto* const entity = found<T>(database, id))
            return entity;
    return nullptr;
}

class Insert : public ::testing::Test {
protected:
    AcDbObjectId insert(const char* name = "DETAIL") {
        AcDbObjectId block;
        EXPECT_EQ(database.insert(block, name, &source.database), Acad::eOk) << database.lastFileError();
        return block;
    }
    void TearDown() override {
        EXPECT_EQ(strayReferences(database), std::vector<std::string>());
        expectSavesWhole(database);
    }

    RichDrawing source;
    AcDbDatabase database;
};

TEST_F(Insert, TakesAlongWhatTheEntitiesNeedAndNoMore) {
    const AcDbObjectId block = insert();
    const auto* const record = found<AcDbBlockTableRecord>(database, block);
    EXPECT_EQ(record->origin(), AcGePoint3d(5, 6, 7));
    EXPECT_EQ(record->entities().size(), contents(source.database, source.database.modelSpaceId()).size() - 1)
        << "all but the viewport";
    EXPECT_TRUE(contents(database, database.paperSpaceId()).empty());
    EXPECT_EQ(firstOf<AcDbAttributeDefinition>(database, block)->position(), AcGePoint3d(7, 8, 0));

    const AcDbObjectId steel = recordNamed(database, database.layerTableId(), "Steel");
    const AcDbObjectId fence = recordNamed(database, database.linetypeTableId(), "Fence");
    EXPECT_EQ(found<AcDbLayerTableRecord>(database, steel)->linetypeObjectId(), fence);
    const AcDbObjectId shapes = found<AcDbLinetypeTableRecord>(database, fence)->data().dashes[1].style;
    EXPECT_EQ(found<AcDbTextStyleTableRecord>(database, shapes)->data().fileName, "parts.shx");
    for (const AcDbObjectId id : contents(database, block))
        EXPECT_EQ(found<AcDbEntity>(database, id)->layerId(), steel);

    const auto* const reference = firstOf<AcDbBlockReference>(database, block);
    const AcDbObjectId outer = recordNamed(database, database.blockTableId(), "OUTER");
    EXPECT_EQ(reference->blockTableRecord(), outer);
    ASSERT_EQ(reference->attributes().size(), 2u);
    EXPECT_EQ(firstOf<AcDbBlockReference>(database, outer)->blockTableRecord(),
              recordNamed(database, database.blockTableId(), "PART"));
    EXPECT_EQ(firstOf<AcDb3dPolyline>(database, block)->vertices().size(), 3u);
    EXPECT_TRUE(recordNamed(database, database.blockTableId(), "UNUSED").isNull());
}

TEST_F(Insert, TurnsWhatOneCopySaysOfAnother) {
    const AcDbObjectId block = insert();
    auto* const line = firstOf<AcDbLine>(database, block);
    const AcDbObjectId circle = firstOf<AcDbCircle>(database, block)->objectId();
    EXPECT_EQ(line->persistentReactors(), std::vector<AcDbObjectId>{circle}) << "the group stays behind";
    EXPECT_TRUE(memberNamed(database, "ACAD_GROUP", "Pair").isNull());

    const AcDbXDataGroup& group = line->packedXData()->groups.at(0);
    EXPECT_EQ(group.application, recordNamed(database, database.regAppTableId(), "MAKER"));
    std::vector<uint64_t> handles;
    AcDbXDataReader reader(group.items);
    for (AcDbXDataItem item; reader.next(item);)
        if (item.code == 3 || item.code == 5)
            handles.push_back(item.handle.value());
    const uint64_t layer = recordNamed(database, database.layerTableId(), "Steel").handle().value();
    EXPECT_EQ(handles, (std::vector<uint64_t>{circle.handle().value(), 0, layer}));

    const auto* const dictionary = found<AcDbDictionary>(database, line->extensionDictionary());
    ASSERT_EQ(dictionary->entries().size(), 1u);
    EXPECT_EQ(dictionary->ownerId(), line->objectId());
    AcDbOpaqueFields values = found<AcDbOpaqueObject>(database, dictionary->entries()[0].id)->fields();
    std::vector<uint64_t> turned;
    ASSERT_TRUE(dwg::turnXrecordHandles(values, [&](uint64_t handle) { return turned.emplace_back(handle); }));
    EXPECT_EQ(turned, (std::vector<uint64_t>{circle.handle().value(), 0}));
}

TEST_F(Insert, MembersOfNamedDictionariesComeUnderTheirNames) {
    const AcDbObjectId block = insert();
    std::vector<AcDbObjectId> targets;
    for (const AcDbObjectId id : contents(database, block))
        if (const auto* const opaque = found<AcDbOpaqueEntity>(database, id))
            targets.push_back(opaque->fields().references.at(0).id);
    EXPECT_EQ(targets, (std::vector<AcDbObjectId>{memberNamed(database, "ACAD_MLINESTYLE", "Wall"),
                                                  memberNamed(database, "ACAD_IMAGE_DICT", "photo")}));
    const std::vector<AcDbObjectId> all = contents(database, block);
    const auto* const mline = firstOf<AcDbMline>(database, all);
    const auto* const hatch = firstOf<AcDbHatch>(database, all);
    ASSERT_TRUE(mline && hatch);
    EXPECT_EQ(mline->style(), targets[0]);
    EXPECT_EQ(hatch->data().loops[0].boundary,
              (std::vector<AcDbObjectId>{firstOf<AcDbCircle>(database, all)->objectId(), AcDbObjectId()}));
    insert("AGAIN");
    EXPECT_EQ(found<AcDbOpaqueEntity>(database, contents(database, block)[8])->dxfName(), std::string("OLE2FRAME"));
    EXPECT_TRUE(database.warnings().empty()) << database.warnings().front();
}

TEST_F(Insert, WhatTheDrawingHasUnderThatNameStands) {
    const auto add = [](AcDbObjectId table, AcDbSymbolTableRecord* record, const char* name) {
        const AcDbObjectPointer<AcDbSymbolTable> open(table, AcDb::kForWrite);
        record->setName(name);
        EXPECT_EQ(open->add(record), Acad::eOk);
        record->close();
        return record->objectId();
    };
    const AcDbObjectId outer = add(database.blockTableId(), new AcDbBlockTableRecord, "Outer");
    const AcDbObjectId steel = add(database.layerTableId(), new AcDbLayerTableRecord, "STEEL");
    const AcDbObjectId taken = add(database.blockTableId(), new AcDbBlockTableRecord, "*U1");
    const AcDbObjectId first = insert("FIRST"), second = insert("SECOND");
    EXPECT_TRUE(contents(database, outer).empty());
    EXPECT_TRUE(contents(database, taken).empty());
    EXPECT_TRUE(recordNamed(database, database.blockTableId(), "PART").isNull()) << "only OUTER needs it";
    std::set<AcDbObjectId> anonymous;
    for (const AcDbObjectId block : {first, second}) {
        EXPECT_EQ(firstOf<AcDbLine>(database, block)->layerId(), steel);
        EXPECT_EQ(firstOf<AcDbBlockReference>(database, block)->blockTableRecord(), outer);
        for (const AcDbObjectId id : contents(database, block))
            if (const auto* const reference = found<AcDbBlockReference>(database, id))
                anonymous.insert(reference->blockTableRecord());
    }
    EXPECT_EQ(anonymous.size(), 3u) << "OUTER, and an anonymous block of its own for each";
    EXPECT_FALSE(anonymous.count(taken));
    std::vector<AcDbObjectId> references;
    found<AcDbBlockTableRecord>(database, outer)->getBlockReferenceIds(references);
    EXPECT_EQ(references.size(), 2u);
}

TEST_F(Insert, WhatAnExtensionDictionaryHoldsIsNamedFromElsewhere) {
    AcDbObjectId values;
    auto* const dictionary =
        found<AcDbDictionary>(source.database, found<AcDbLine>(source.database, source.line)->extensionDictionary());
    dictionary->getAt("VALUES", values);
    auto* const entity = new AcDbOpaqueEntity;
    entity->setFields(RichDrawing::fields("OLEFRAME", 43, {{5, values, 0}}));
    source.append(entity);
    const AcDbObjectId block = insert();
    const auto* const line = firstOf<AcDbLine>(database, block);
    const auto* const copy = found<AcDbDictionary>(database, line->extensionDictionary());
    const auto* const frame = found<AcDbOpaqueEntity>(database, contents(database, block).back());
    ASSERT_EQ(copy->entries().size(), 1u);
    EXPECT_EQ(frame->fields().references[0].id, copy->entries()[0].id);
}

TEST_F(Insert, ALostReferenceOfAnUnknownTypeIsTold) {
    auto* const entity = new AcDbOpaqueEntity;
    entity->setFields(RichDrawing::fields("OLEFRAME", 43, {{5, source.paper, 0}, {5, {}, 0x10}}));
    source.append(entity);
    const AcDbObjectId block = insert();
    const auto* const copy = found<AcDbOpaqueEntity>(database, contents(database, block).back());
    for (const AcDbOpaqueFields::Reference& reference : copy->fields().references)
        EXPECT_TRUE(reference.id.isNull() && reference.danglingHandle == 0);
    ASSERT_EQ(database.warnings().size(), 1u);
    EXPECT_NE(database.warnings()[0].find("OLEFRAME"), std::string::npos);
}

TEST_F(Insert, BlocksDontComeToHoldThemselves) {
    const DrawingState before(database);
    AcDbObjectId block;
    EXPECT_EQ(database.insert(block, "part", &source.database), Acad::eSelfReference);
    EXPECT_TRUE(block.isNull());
    insert("UNUSED"); // a block of that name is there, but nothing needs it
    source.append(new AcDbBlockReference({1, 1, 0}, source.outer), source.part);
    const DrawingState between(database);
    EXPECT_EQ(database.insert(block, "OTHER", &source.database), Acad::eOk) << "the drawing's own PART stands";
    AcDbDatabase empty;
    const DrawingState nothing(empty);
    EXPECT_EQ(empty.insert(block, "OTHER", &source.database), Acad::eSelfReference);
    EXPECT_EQ(nothing.difference(DrawingState(empty)), "");
}

/// A drawing of a file, with something to undo and something to redo, and no change since it was saved.
struct Destination {
    Destination() {
        AcDbDatabase fresh;
        EXPECT_TRUE(dwg::readDrawing(database, *dwg::writeDrawing(fresh), "destination"));
        database.undo().setEnabled(true);
        for (const char* const name : {"FIRST", "SECOND"}) {
            database.undo().beginGroup(name);
            append();
            database.undo().endGroup();
        }
        EXPECT_TRUE(database.undo().undo());
        database.setDirty(false);
    }

    void append() {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
        auto* const line = new AcDbLine({0, 0, 0}, {1, 1, 0});
        EXPECT_EQ(space->appendAcDbEntity(line), Acad::eOk);
        line->close();
    }

    Acad::ErrorStatus insert(AcDbDatabase& source) {
        AcDbObjectId block;
        const Acad::ErrorStatus status = database.insert(block, "DETAIL", &source);
        EXPECT_EQ(block.isNull(), status != Acad::eOk);
        return status;
    }

    /// The file as it would be saved, but for the next free handle.
    std::vector<uint8_t> saved() {
        const auto bytes = dwg::writeDrawing(database);
        EXPECT_TRUE(bytes);
        const auto image = dwg::FileImage::parse(*bytes, "saved");
        dwg::FileParts parts = dwg::partsOf(**image);
        parts.header.HANDSEED = 0;
        return *dwg::writeFile(parts);
    }

    AcDbDatabase database{false};
};

/// The file with one object damaged: fields that don't decode, or nothing that could be read at all.
std::vector<uint8_t> withDamage(AcDbDatabase& good, const AcDbStub& stub, bool wholly) {
    const auto file = dwg::sourceOf(good).image()->bytes();
    std::vector<uint8_t> bytes(file.begin(), file.end());
    const std::span<uint8_t> record =
        std::span(bytes).subspan(static_cast<size_t>(stub.bytes - file.data()), stub.byteCount);
    record[4] ^= 0x40; // of the bit size, behind the type's ten bits
    if (wholly)
        std::fill(record.begin() + 4, record.end() - 2, uint8_t{0xFF});
    const uint16_t crc = dwg::crc16(dwg::kCrcSeed, record.data(), record.size() - 2);
    record[record.size() - 2] = static_cast<uint8_t>(crc);
    record[record.size() - 1] = static_cast<uint8_t>(crc >> 8);
    return bytes;
}

TEST(InsertRefused, WhereverTheSourceIsDamaged) {
    RichDrawing rich;
    AcDbDatabase good(false);
    ASSERT_TRUE(dwg::readDrawing(good, *dwg::writeDrawing(rich.database), "good"));
    size_t refused = 0, unneeded = 0;
    for (const AcDbStub& stub : good.stubs())
        for (const bool wholly : {false, true}) {
            SCOPED_TRACE(hexOf(stub.handle.value()) + (wholly ? " wholly" : ""));
            AcDbDatabase source(false);
            if (!dwg::readDrawing(source, withDamage(good, stub, wholly), "damaged"))
                continue;
            Destination to;
            const DrawingState before(to.database);
            if (to.insert(source) == Acad::eOk) {
                ++unneeded;
                EXPECT_EQ(strayReferences(to.database), std::vector<std::string>());
                continue;
            }
            ++refused;
            EXPECT_NE(to.database.lastFileError().find("damaged"), std::string::npos);
            ASSERT_EQ(before.difference(DrawingState(to.database)), "");
        }
    EXPECT_GT(refused, 60u);
    EXPECT_GT(unneeded, 40u);
}

/// Keeps a container of the destination open from the n-th object on that comes in.
class Holder : public AcDbDatabaseReactor {
public:
    Holder(AcDbDatabase& database, AcDbObjectId held, size_t from) : database_(database), held_(held), left_(from) {
        database.addReactor(this);
    }
    ~Holder() override {
        database_.removeReactor(this);
        if (open_)
            open_->close();
    }
    void objectAppended(const AcDbDatabase*, const AcDbObject*) override {
        if (left_-- == 0)
            acdbOpenAcDbObject(open_, held_, AcDb::kForRead);
    }

private:
    AcDbDatabase& database_;
    AcDbObjectId held_;
    AcDbObject* open_ = nullptr;
    size_t left_;
};

TEST(InsertRefused, AtTheNthObjectWhenSomebodyHoldsATableOpen) {
    RichDrawing rich;
    size_t refused = 0;
    for (const auto table : {&AcDbDatabase::blockTableId, &AcDbDatabase::layerTableId, &AcDbDatabase::linetypeTableId,
                             &AcDbDatabase::regAppTableId, &AcDbDatabase::namedObjectsDictionaryId})
        for (size_t n = 0; n < 50; ++n) {
            SCOPED_TRACE(n);
            Destination to;
            const std::vector<uint8_t> file = to.saved();
            const DrawingState before(to.database);
            {
                const Holder holder(to.database, (to.database.*table)(), n);
                if (to.insert(rich.database) == Acad::eOk)
                    continue;
            }
            ++refused;
            ASSERT_EQ(before.difference(DrawingState(to.database)), "");
            ASSERT_EQ(file, to.saved());
            // And nothing stands in the way of doing it right.
            ASSERT_EQ(to.insert(rich.database), Acad::eOk);
            EXPECT_EQ(strayReferences(to.database), std::vector<std::string>());
            ASSERT_TRUE(to.database.undo().undo());
            EXPECT_EQ(digestDifference(before.digest, digestOf(to.database)), "");
        }
    EXPECT_GT(refused, 25u);
}

TEST(InsertRefused, WhenHandlesRunOut) {
    RichDrawing rich;
    size_t refused = 0;
    for (uint64_t left = 0; left < 200; ++left) {
        Destination to;
        to.database.reserveHandles(AcDbHandle(std::numeric_limits<uint64_t>::max() - left));
        const DrawingState before(to.database);
        const Acad::ErrorStatus status = to.insert(rich.database);
        if (status == Acad::eOk)
            break;
        ++refused;
        EXPECT_EQ(status, Acad::eOutOfRange);
        ASSERT_EQ(before.difference(DrawingState(to.database)), "") << left;
    }
    EXPECT_GT(refused, 40u);
    EXPECT_LT(refused, 200u);
}

TEST(InsertRefused, WithinAnUndoGroupAndWithoutRecording) {
    RichDrawing rich;
    rich.append(new AcDbBlockReference({1, 1, 0}, rich.outer), rich.part); // a circle of blocks
    for (const bool recording : {true, false}) {
        Destination to;
        to.database.undo().setEnabled(recording);
        to.database.undo().beginGroup("SCRIPT");
        to.append();
        const DrawingState before(to.database);
        EXPECT_EQ(to.insert(rich.database), Acad::eSelfReference);
        EXPECT_EQ(before.difference(DrawingState(to.database)), "");
        to.append();
        to.database.undo().endGroup();
        EXPECT_EQ(to.database.undo().undo(), true) << "SCRIPT, or FIRST when nothing was recorded";
        EXPECT_EQ(contents(to.database, to.database.modelSpaceId()).front().isErased(), !recording);
    }
}

} // namespace

} // namespace vndk::test
