#include "database_fixture.h"

#include "db/redefine_block.h"
#include "drawing/db/expect_saves.h"
#include "drawing/db/insertion_checks.h"
#include "support/drawings.h"

using namespace vndk::test;

namespace {

class RedefineBlock : public DatabaseTest {
protected:
    RedefineBlock() {
        block = addBlock("DESK");
        append(new AcDbLine({0, 0, 0}, {1, 0, 0}), block);
        reference = append(new AcDbBlockReference({5, 5, 0}, block));
        put(source, new AcDbCircle({0, 0, 0}, {0, 0, 1}, 2));
        source.setInsbase({3, 0, 0});
    }
    static void put(AcDbDatabase& database, AcDbEntity* entity) {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForWrite);
        ASSERT_EQ(space->appendAcDbEntity(entity), Acad::eOk);
        entity->close();
    }
    /// "LINE/0" for a block that holds a line, with the base point's x.
    std::string contents() {
        const AcDbObjectPointer<AcDbBlockTableRecord> record(block);
        std::string text;
        for (const AcDbObjectId id : record->entities())
            if (const AcDbObjectPointer<AcDbEntity> entity(id); entity)
                text += std::string(entity->dxfName()) + ' ';
        return text + std::to_string(static_cast<int>(record->origin().x));
    }

    AcDbDatabase source;
    AcDbObjectId block, reference;
};

TEST_F(RedefineBlock, changesTheContentsAndNothingElse) {
    const AcDbHandle handle = reference.handle();
    database.undo().beginGroup("INSERT");
    ASSERT_EQ(acdbRedefineBlock(block, source), Acad::eOk);
    database.undo().endGroup();
    EXPECT_EQ(contents(), "CIRCLE 3");
    EXPECT_EQ(AcDbObjectPointer<AcDbBlockReference>(reference)->blockTableRecord(), block);
    EXPECT_EQ(reference.handle().value(), handle.value());
    std::vector<AcDbObjectId> references;
    AcDbObjectPointer<AcDbBlockTableRecord>(block)->getBlockReferenceIds(references);
    EXPECT_EQ(references.size(), 1u);
    ASSERT_TRUE(database.undo().undo());
    EXPECT_EQ(contents(), "LINE 0");
    ASSERT_TRUE(database.undo().redo());
    EXPECT_EQ(contents(), "CIRCLE 3");
    expectAllClosed(source);
}

TEST_F(RedefineBlock, keepsTheBlockWhenItWouldHoldItself) {
    // The source uses a block of the same name.
    AcDbDatabase holds;
    const AcDbObjectId inner = addRecord<AcDbBlockTable>(holds.blockTableId(), new AcDbBlockTableRecord, "desk");
    put(holds, new AcDbBlockReference({0, 0, 0}, inner));
    const DrawingState before(database);
    EXPECT_EQ(acdbRedefineBlock(block, holds), Acad::eSelfReference);
    EXPECT_EQ(before.difference(DrawingState(database)), "");
    // The source uses a block that here holds the one to be redefined.
    const AcDbObjectId outer = addBlock("ROOM");
    append(new AcDbBlockReference({0, 0, 0}, block), outer);
    AcDbDatabase over;
    const AcDbObjectId plain = addRecord<AcDbBlockTable>(over.blockTableId(), new AcDbBlockTableRecord, "ROOM");
    put(over, new AcDbBlockReference({0, 0, 0}, plain));
    const DrawingState later(database);
    EXPECT_EQ(acdbRedefineBlock(block, over), Acad::eSelfReference);
    EXPECT_EQ(later.difference(DrawingState(database)), "");
    std::vector<AcDbObjectId> references;
    AcDbObjectPointer<AcDbBlockTableRecord>(outer)->getBlockReferenceIds(references);
    EXPECT_TRUE(references.empty()) << "of the room";
    EXPECT_TRUE(acdbBlockContains(outer, block));
    EXPECT_FALSE(acdbBlockContains(block, block));
    EXPECT_EQ(acdbRedefineBlock(block, database), Acad::eSelfReference);
}

TEST_F(RedefineBlock, keepsNothingOfASourceThatItGaveUp) {
    const size_t former = AcDbObjectPointer<AcDbBlockTableRecord>(block)->entities().size();
    {
        AcDbDatabase holds;
        const AcDbObjectId inner = addRecord<AcDbBlockTable>(holds.blockTableId(), new AcDbBlockTableRecord, "desk");
        put(holds, new AcDbLine({0, 0, 0}, {7, 0, 0}));
        put(holds, new AcDbBlockReference({0, 0, 0}, inner));
        ASSERT_EQ(acdbRedefineBlock(block, holds), Acad::eSelfReference);
    }
    EXPECT_EQ(AcDbObjectPointer<AcDbBlockTableRecord>(block)->entities().size(), former);
    expectSavesWhole(database); // what was left would lead into the drawing that is gone
    EXPECT_EQ(contents(), "LINE 0");
}

TEST_F(RedefineBlock, refusesWhatIsNoBlockOrNoDrawing) {
    AcDbDatabase nothing(false);
    EXPECT_EQ(acdbRedefineBlock({}, source), Acad::eNullObjectId);
    EXPECT_EQ(acdbRedefineBlock(reference, source), Acad::eNotThatKindOfClass);
    EXPECT_EQ(acdbRedefineBlock(database.modelSpaceId(), source), Acad::eNotApplicable);
    EXPECT_EQ(acdbRedefineBlock(block, nothing), Acad::eNoDatabase);
    EXPECT_EQ(contents(), "LINE 0");
}

TEST_F(RedefineBlock, takesEveryRealDrawingAndGivesTheFormerContentsBack) {
    SKIP_WITHOUT_DRAWINGS();
    const DrawingDigest former = digestOf(database);
    for (const std::string& path : realDrawings("r2000")) {
        AcDbDatabase drawing(false);
        ASSERT_EQ(drawing.readDwgFile(path.c_str()), Acad::eOk) << path;
        database.undo().beginGroup("INSERT");
        ASSERT_EQ(acdbRedefineBlock(block, drawing), Acad::eOk) << path << database.lastFileError();
        database.undo().endGroup();
        EXPECT_EQ(strayReferences(database), std::vector<std::string>()) << path;
        const DrawingDigest redefined = digestOf(database);
        ASSERT_TRUE(database.undo().undo());
        EXPECT_EQ(digestDifference(former, digestOf(database)), "") << path;
        ASSERT_TRUE(database.undo().redo());
        EXPECT_EQ(digestDifference(redefined, digestOf(database)), "") << path;
        expectSavesWhole(database);
        ASSERT_TRUE(database.undo().undo());
    }
}

} // namespace
