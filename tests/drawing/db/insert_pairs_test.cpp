// Every real drawing inserted into every other one and into itself.
#include <filesystem>

#include "db/id_mapping.h"
#include "db/viewport.h"
#include "drawing/db/expect_saves.h"
#include "drawing/db/insertion_checks.h"
#include "support/drawings.h"

namespace vndk::test {

namespace {

/// The classes of what a block holds, in order; of a drawing's space without its viewports.
std::vector<std::string> contentsOfBlock(AcDbObjectId block) {
    std::vector<std::string> classes;
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block);
    for (const AcDbObjectId id : record->entities()) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (entity && !AcDbViewport::cast(entity.object()))
            classes.push_back(std::string(entity->isA()->name()) + " " + entity->dxfName());
    }
    return classes;
}

/// Live objects by class, anything that an insertion could bring along.
std::map<std::string, int> countObjects(AcDbDatabase& database) {
    std::map<std::string, int> counts;
    for (AcDbStub& stub : database.stubs())
        if (const AcDbObject* const object = stub.has(kStubErased) ? nullptr : database.objectOf(stub))
            ++counts[std::string(object->isA()->name()) + " " + (object->dxfName() ? object->dxfName() : "")];
    return counts;
}

std::map<std::string, int> difference(std::map<std::string, int> later, const std::map<std::string, int>& former) {
    for (const auto& [name, count] : former)
        if ((later[name] -= count) == 0)
            later.erase(name);
    return later;
}

class Pair {
public:
    Pair(const std::string& destination, const std::string& source) {
        EXPECT_EQ(original.readDwgFile(destination.c_str()), Acad::eOk);
        EXPECT_EQ(database.readDwgFile(destination.c_str()), Acad::eOk);
        EXPECT_EQ(side.readDwgFile(source.c_str()), Acad::eOk);
        database.undo().setEnabled(true);
    }

    void run() {
        const DrawingDigest before = digestOf(database);
        const auto countsBefore = countObjects(database);
        const size_t odd = strayReferences(original).size();
        insert("INSERTED");
        EXPECT_LE(strayReferences(database).size(), odd) << strayReferences(database).front();
        const DrawingDigest after = digestOf(database);
        const auto added = difference(countObjects(database), countsBefore);
        insert("inserted again");
        // The second time everything with a name stands: only what has none comes once more.
        for (const auto& [name, count] : difference(difference(countObjects(database), countsBefore), added)) {
            EXPECT_LE(count, added.at(name)) << name;
            for (const char* const named : {"AcDbLayer", "AcDbTextStyle", "AcDbLinetype", "AcDbRegApp", "MLINESTYLE"})
                EXPECT_EQ(name.find(named), std::string::npos) << name;
        }
        ASSERT_TRUE(database.undo().undo());
        EXPECT_EQ(digestDifference(after, digestOf(database)), "") << "after undo of the second";
        ASSERT_TRUE(database.undo().undo());
        EXPECT_EQ(digestDifference(before, digestOf(database)), "") << "after undo";
        ASSERT_TRUE(database.undo().redo());
        EXPECT_EQ(digestDifference(after, digestOf(database)), "") << "after redo";
        expectSavesWhole(database, &original);
    }

private:
    void insert(const char* name) {
        database.undo().beginGroup("INSERT");
        AcDbObjectId block;
        ASSERT_EQ(database.insert(block, name, &side), Acad::eOk) << database.lastFileError();
        database.undo().endGroup();
        EXPECT_EQ(contentsOfBlock(block), contentsOfBlock(side.modelSpaceId()));
        EXPECT_EQ(AcDbObjectPointer<AcDbBlockTableRecord>(block)->origin(), side.insbase());
    }

    AcDbDatabase original{false}, database{false}, side{false};
};

TEST(InsertPairs, OfRealDrawings) {
    SKIP_WITHOUT_DRAWINGS();
    for (const std::string& destination : realDrawings("r2000"))
        for (const std::string& source : realDrawings("r2000")) {
            SCOPED_TRACE(std::filesystem::path(source).filename().string() + " into " +
                         std::filesystem::path(destination).filename().string());
            Pair(destination, source).run();
        }
}

} // namespace

} // namespace vndk::test
