// Saved drawings after erasures, renamings and additions: nothing in the bytes leads to what isn't there.
#include <gtest/gtest.h>

#include "db/curves.h"
#include "db/point.h"
#include "db/text.h"
#include "drawing/dwg/file_audit.h"
#include "dwg/drawing_writer.h"
#include "support/drawings.h"

namespace vndk::test {

namespace {

AcDbObjectId append(AcDbObjectId block, AcDbEntity* entity) {
    AcDbObjectId id;
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
    EXPECT_EQ(record->appendAcDbEntity(id, entity), Acad::eOk);
    entity->close();
    return id;
}

template <class Table, class Record>
AcDbObjectId addRecord(AcDbObjectId tableId, const char* name) {
    const AcDbObjectPointer<Table> table(tableId, AcDb::kForWrite);
    auto* const record = new Record;
    record->setName(name);
    EXPECT_EQ(table->add(record), Acad::eOk);
    record->close();
    return record->objectId();
}

void erase(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
    ASSERT_TRUE(object);
    ASSERT_EQ(object->erase(), Acad::eOk);
}

/// Saves, audits what was saved and reads it into `again`. `before` dangled in the file that it came from.
void saveAndAudit(AcDbDatabase& database, AcDbDatabase& again, const std::set<std::string>& before = {}) {
    const auto bytes = dwg::writeDrawing(database);
    ASSERT_TRUE(bytes);
    const auto image = dwg::FileImage::parse(*bytes, "saved");
    ASSERT_TRUE(image);
    for (const std::string& reference : danglingReferences(**image))
        EXPECT_TRUE(before.count(reference)) << reference;
    ASSERT_TRUE(dwg::readDrawing(again, *bytes, "saved"));
}

TEST(FileAudit, NothingLeadsToErasedEntitiesInRealDrawings) {
    SKIP_WITHOUT_DRAWINGS();
    for (const std::string& path : realDrawings("r2000"))
        for (const size_t first : {0, 1, 2}) {
            SCOPED_TRACE(path + " from " + std::to_string(first));
            AcDbDatabase database(false), again(false), whole(false);
            ASSERT_TRUE(dwg::readDrawing(database, path) && dwg::readDrawing(whole, path));
            std::vector<AcDbObjectId> ids;
            {
                const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId());
                ids = space->entities();
            }
            for (size_t i = first; i < ids.size(); i += 3)
                erase(ids[i]);
            append(database.modelSpaceId(), new AcDbLine({0, 0, 0}, {1, 1, 1}));
            saveAndAudit(database, again, danglingReferences(*dwg::sourceOf(database).image()));
            const std::vector<std::string> former = disagreements(whole), now = disagreements(again);
            EXPECT_LE(now.size(), former.size()) << now.front();
        }
}

/// Reactors, a dictionary and a layer that the holders' own bytes name.
TEST(FileAudit, WhoHeldAnErasedObjectLetsItGo) {
    AcDbDatabase fresh, saved(false), again(false);
    const AcDbObjectId layer = addRecord<AcDbLayerTable, AcDbLayerTableRecord>(fresh.layerTableId(), "GONE");
    const AcDbObjectId target = append(fresh.modelSpaceId(), new AcDbCircle({1, 2, 0}, {0, 0, 1}, 3));
    const AcDbObjectId plain = append(fresh.modelSpaceId(), new AcDbPoint({1, 2, 3}));
    const AcDbObjectId holder = append(fresh.modelSpaceId(), new AcDbLine({0, 0, 0}, {1, 0, 0}));
    {
        const AcDbObjectPointer<AcDbLine> line(holder, AcDb::kForWrite);
        line->addPersistentReactor(target);
        line->addPersistentReactor(plain);
        ASSERT_EQ(line->setLayer(layer), Acad::eOk);
    }
    saveAndAudit(fresh, saved);
    erase(saved.idOf(target.handle().value()));
    erase(saved.idOf(layer.handle().value()));
    saveAndAudit(saved, again);
    EXPECT_EQ(disagreements(again), std::vector<std::string>());
    const AcDbObjectPointer<AcDbLine> line(again.idOf(holder.handle().value()));
    ASSERT_TRUE(line);
    EXPECT_EQ(line->persistentReactors(), std::vector<AcDbObjectId>{again.idOf(plain.handle().value())});
    EXPECT_EQ(line->layerId().handle().value(), again.header().CLAYER);
    EXPECT_EQ(line->endPoint(), AcGePoint3d(1, 0, 0));
}

/// The file's lists at sizes where counts change their form.
TEST(FileAudit, ManyEntitiesAndReferencesOfOneBlock) {
    constexpr size_t kEntities = 70'000, kReferences = 100'000;
    AcDbDatabase database, again(false);
    database.disableUndoRecording(true);
    const AcDbObjectId block = addRecord<AcDbBlockTable, AcDbBlockTableRecord>(database.blockTableId(), "MANY");
    for (size_t i = 0; i < kEntities; ++i)
        append(block, new AcDbPoint({static_cast<double>(i), 0, 0}));
    for (size_t i = 0; i < kReferences; ++i)
        append(database.modelSpaceId(), new AcDbBlockReference({0, static_cast<double>(i), 0}, block));
    saveAndAudit(database, again);
    EXPECT_EQ(disagreements(again), std::vector<std::string>());
    const AcDbObjectPointer<AcDbBlockTableRecord> record(again.idOf(block.handle().value()));
    ASSERT_TRUE(record);
    EXPECT_EQ(record->entities().size(), kEntities);
    EXPECT_EQ(record->references().size(), kReferences);
}

TEST(FileAudit, HandlesAbove32BitsAndLongTextsComeBack) {
    AcDbDatabase database, again(false), twice(false);
    database.reserveHandles(AcDbHandle(0x123456789AB));
    const std::string text(40'000, '\xE4');
    const AcDbObjectId id = append(database.modelSpaceId(), new AcDbText({1, 2, 3}, text.c_str()));
    EXPECT_EQ(id.handle().value(), 0x123456789ABu);
    saveAndAudit(database, again);
    append(again.modelSpaceId(), new AcDbPoint({0, 0, 0}));
    saveAndAudit(again, twice);
    EXPECT_EQ(disagreements(twice), std::vector<std::string>());
    EXPECT_GT(twice.header().HANDSEED, 0x123456789ACu);
    const AcDbObjectPointer<AcDbText> copy(twice.idOf(0x123456789AB));
    ASSERT_TRUE(copy);
    EXPECT_EQ(copy->textValue(), text);
}

TEST(FileAudit, TheBoxOfTheSpaceGrowsByWhatWasDrawn) {
    AcDbDatabase database, again(false), twice(false);
    append(database.modelSpaceId(), new AcDbLine({-3, 2, 0}, {7, 11, 5}));
    saveAndAudit(database, again);
    const auto expectBox = [](AcDbDatabase& of, AcGePoint3d least, AcGePoint3d most) {
        const dwg::HeaderVariables& header = of.header();
        EXPECT_EQ(AcGePoint3d(header.EXTMIN.x, header.EXTMIN.y, header.EXTMIN.z), least);
        EXPECT_EQ(AcGePoint3d(header.EXTMAX.x, header.EXTMAX.y, header.EXTMAX.z), most);
    };
    expectBox(again, {-3, 2, 0}, {7, 11, 5});
    // What goes doesn't shrink it: that takes a look at everything.
    append(again.modelSpaceId(), new AcDbPoint({0, -20, 0}));
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(again.modelSpaceId());
        const std::vector<AcDbObjectId> ids = space->entities();
        erase(ids.front());
    }
    saveAndAudit(again, twice);
    expectBox(twice, {-3, -20, 0}, {7, 11, 5});
}

} // namespace

} // namespace vndk::test
