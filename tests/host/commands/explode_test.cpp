// EXPLODE.
#include "commands_fixture.h"
#include "db/block_reference.h"
#include "db/text.h"

namespace {

class ExplodeCommandTest : public CommandsTest {
protected:
    AcDbObjectId insert(std::unique_ptr<AcDbBlockReference> reference, const char* name) {
        AcDbObjectId block, id;
        const AcDbObjectPointer<AcDbBlockTable> table(database().blockTableId());
        static_cast<const AcDbSymbolTable&>(*table).getAt(name, block);
        reference->setBlockTableRecord(block);
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId(), AcDb::kForWrite);
        space->appendAcDbEntity(id, reference.get());
        reference.release()->close();
        return id;
    }
    AcDbObjectId insert(const char* name, const AcGePoint3d& position) {
        return insert(std::make_unique<AcDbBlockReference>(position, AcDbObjectId()), name);
    }
};

} // namespace

TEST_F(ExplodeCommandTest, takesApartAndCanBeTakenBack) {
    run("LINE 0,0 1,0\n\nCIRCLE 1,1 1\n-BLOCK B 0,0 ALL\n\nPLINE 0,0 5,0 5,5\n\n");
    insert("B", {10, 10, 0});
    const std::string before = drawn();
    run("EXPLODE ALL\n\n");
    EXPECT_EQ(drawn(), "LINE 0,0 5,0\nLINE 5,0 5,5\nLINE 10,10 11,10\nCIRCLE 11,11 r 1");
    EXPECT_EQ(events.back(), "end EXPLODE");
    run("U\n");
    EXPECT_EQ(drawn(), before);
    run("REDO\n");
    EXPECT_EQ(drawn(), "LINE 0,0 5,0\nLINE 5,0 5,5\nLINE 10,10 11,10\nCIRCLE 11,11 r 1");
    EXPECT_EQ(blockContents("B"), "LINE 0,0 1,0\nCIRCLE 1,1 r 1");
}

TEST_F(ExplodeCommandTest, tellsThatWidthsAreLost) {
    run("PLINE 0,0 1,0\n\nEXPLODE L\n\n");
    EXPECT_FALSE(printed("lost width information")) << output;
    run("PLINE 0,0 W 1 1 1,0\n\nEXPLODE L\n\n");
    EXPECT_TRUE(printed("Exploding this polyline has lost width information.\nThe UNDO command will restore it."))
        << output;
}

TEST_F(ExplodeCommandTest, oneLevelAtATimeAndWithoutAttributeValues) {
    run("LINE 0,0 1,0\n\n-BLOCK INNER 0,0 L\n\nATTDEF\n\nTAG\nprompt\ndefault\n0,2 1 0\n");
    insert("INNER", {1, 0, 0});
    run("-BLOCK OUTER 0,0 ALL\n\n");
    const AcDbObjectId id = insert("OUTER", {5, 5, 0});
    {
        auto* const attribute = new AcDbAttribute({5, 7, 0}, "value", "TAG");
        AcDbObjectPointer<AcDbBlockReference>(id, AcDb::kForWrite)->appendAttribute(attribute);
        attribute->close();
    }
    run("EXPLODE L\n\n");
    EXPECT_EQ(drawn(), "ATTDEF 'default' at 5,7 h 1 r 0 tag TAG prompt 'prompt' flags 0\nINSERT 6,5");
    run("EXPLODE L\n\n");
    EXPECT_EQ(drawn(), "ATTDEF 'default' at 5,7 h 1 r 0 tag TAG prompt 'prompt' flags 0\nLINE 6,5 7,5");
}

TEST_F(ExplodeCommandTest, saysWhatStaysWhole) {
    run("LINE 0,0 1,0\n\n-BLOCK B 0,0 L\n\nCIRCLE 0,0 1\nPLINE 0,0 5,0\n\n");
    auto array = std::make_unique<AcDbMInsertBlock>();
    array->setArray(2, 2, 1, 1);
    insert(std::move(array), "B");
    run("EXPLODE ALL\n\n");
    EXPECT_TRUE(printed("1 CIRCLE could not be exploded.")) << output;
    EXPECT_TRUE(printed("1 was MINSERTed and could not be exploded.")) << output;
    EXPECT_EQ(drawn(), "CIRCLE 0,0 r 1\nINSERT 0,0\nLINE 0,0 5,0");
    EXPECT_EQ(events.back(), "end EXPLODE");
    run("EXPLODE ALL\n\n");
    EXPECT_EQ(events.back(), "fail EXPLODE") << "nothing came apart";
    run("-LAYER LO 0\n\nEXPLODE ALL\n\n");
    EXPECT_TRUE(printed("3 were on a locked layer.")) << output;
    EXPECT_EQ(events.back(), "end EXPLODE");
}
