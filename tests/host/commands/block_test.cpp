// BLOCK and EATTEDIT.
#include "commands_fixture.h"
#include "db/block_reference.h"
#include "db/text.h"

namespace {

class BlockTest : public CommandsTest {
protected:
    /// A reference with an attribute for each definition of the block, as INSERT makes it.
    AcDbObjectId insert(const char* name, const AcGePoint3d& position) {
        AcDbObjectId block, id;
        const AcDbObjectPointer<AcDbBlockTable> table(database().blockTableId());
        static_cast<const AcDbSymbolTable&>(*table).getAt(name, block);
        auto* const reference = new AcDbBlockReference(position, block);
        {
            const AcDbObjectPointer<AcDbBlockTableRecord> space(database().modelSpaceId(), AcDb::kForWrite);
            space->appendAcDbEntity(id, reference);
        }
        const AcDbObjectPointer<AcDbBlockTableRecord> record(block);
        for (const AcDbObjectId item : record->entities()) {
            const AcDbObjectPointer<AcDbAttributeDefinition> definition(item);
            if (!definition)
                continue;
            auto* const attribute = new AcDbAttribute;
            attribute->setAttributeFromBlock(definition.object(), reference->blockTransform());
            reference->appendAttribute(attribute);
            attribute->close();
        }
        reference->close();
        return id;
    }
    std::string values(AcDbObjectId id) {
        std::string text;
        const AcDbObjectPointer<AcDbBlockReference> reference(id);
        for (const AcDbObjectId item : reference->attributes()) {
            const AcDbObjectPointer<AcDbAttribute> attribute(item);
            text += attribute->tagValue() + "=" + attribute->textValue() + ";";
        }
        return text;
    }
};

constexpr const char* kTwoAttributes = "ATTDEF\n\nA first\none\n0,0 1 0\nATTDEF\n\nB second\ntwo\n0,2 1 0\n";

} // namespace

TEST_F(BlockTest, takesObjectsOutOfTheDrawing) {
    run("LINE 5,5 6,5\n\nCIRCLE 1,1 1\nLINE 9,9 8,8\n\n-BLOCK DESK 5,5 6,5 2,1\n\n");
    EXPECT_EQ(drawn(), "LINE 9,9 8,8");
    EXPECT_EQ(blockContents("desk"), "LINE 0,0 1,0\nCIRCLE -4,-4 r 1");
    run("U\n");
    EXPECT_EQ(drawn(), "LINE 5,5 6,5\nCIRCLE 1,1 r 1\nLINE 9,9 8,8");
    EXPECT_EQ(blockContents("desk"), "no block");
    run("REDO\n");
    EXPECT_EQ(drawn(), "LINE 9,9 8,8");
    EXPECT_EQ(blockContents("desk"), "LINE 0,0 1,0\nCIRCLE -4,-4 r 1");
}

TEST_F(BlockTest, keepsAttributeDefinitionsInTheOrderOfTheirSelection) {
    run(std::string(kTwoAttributes) + "BLOCK B 0,0 0.1,2.1 0.1,0.1\n\n");
    EXPECT_EQ(blockContents("B"), "ATTDEF 'two' at 0,2 h 1 r 0 tag B prompt 'second' flags 0\n"
                                  "ATTDEF 'one' at 0,0 h 1 r 0 tag A prompt 'first' flags 0");
}

TEST_F(BlockTest, isSeenFromTheCoordinateSystemInWhichItWasMade) {
    run("LINE 100,0 100,5\n\nUCS O 100,0\nUCS Z 90\nBLOCK B 0,0 L\n\n");
    EXPECT_EQ(blockContents("B"), "LINE 0,0 5,0");
}

TEST_F(BlockTest, isRedefinedOnlyWhenAsked) {
    run("LINE 0,0 1,0\n\nBLOCK B 0,0 L\n\nCIRCLE 0,0 1\nBLOCK b N C 0,0 L\n\n");
    EXPECT_EQ(blockContents("B"), "LINE 0,0 1,0");
    EXPECT_EQ(blockContents("C"), "CIRCLE 0,0 r 1");
    run("CIRCLE 0,0 2\nBLOCK b Y 0,0 L\n\n");
    EXPECT_EQ(blockContents("B"), "CIRCLE 0,0 r 2");
    EXPECT_TRUE(printed("already exists.  Redefine it? [Yes/No] <N>: ")) << output;
    run("U\n");
    EXPECT_EQ(blockContents("B"), "LINE 0,0 1,0");
    run("SETVAR EXPERT 2\nERASE ALL\n\nLINE 0,0 7,0\n\nBLOCK B 0,0 L\n\n");
    EXPECT_EQ(blockContents("B"), "LINE 0,0 7,0");
}

TEST_F(BlockTest, neverHoldsItself) {
    run("LINE 0,0 1,0\n\nBLOCK INNER 0,0 L\n\n");
    insert("INNER", AcGePoint3d());
    run("BLOCK OUTER 0,0 L\n\n");
    insert("OUTER", AcGePoint3d());
    run("BLOCK INNER Y 0,0 L\n\n");
    EXPECT_TRUE(printed("Block \"INNER\" references itself")) << output;
    EXPECT_EQ(blockContents("INNER"), "LINE 0,0 1,0");
    EXPECT_EQ(drawn(), "INSERT 0,0");
}

TEST_F(BlockTest, refusesNamesThatNoBlockCanHave) {
    run("LINE 0,0 1,0\n\nBLOCK a<b *U1 |x GOOD 0,0 L\n\n");
    EXPECT_EQ(blockContents("GOOD"), "LINE 0,0 1,0");
    run("BLOCK ?\n\n\x1B");
    EXPECT_TRUE(printed("\"GOOD\"\nUser blocks: 1  Unnamed blocks: 0")) << output;
}

TEST_F(BlockTest, eatteditChangesTheValuesThatAreGiven) {
    run(std::string(kTwoAttributes) + "BLOCK B 0,0 ALL\n\n");
    const AcDbObjectId id = insert("B", {10, 10, 0});
    run("EATTEDIT L\nnew value\n\n");
    EXPECT_TRUE(printed("Enter value for B <two>: ")) << output;
    EXPECT_EQ(values(id), "A=new value;B=two;");
    run("U\n");
    EXPECT_EQ(values(id), "A=one;B=two;");
}

TEST_F(BlockTest, eatteditRefusesWhatHasNoAttributes) {
    const struct {
        const char* script;
        const char* complaint;
    } cases[] = {
        {"EATTEDIT 500,500\n", "No object was selected"},
        {"LINE 0,0 1,0\n\nEATTEDIT L\n", "The object is not a block."},
    };
    for (const auto& c : cases) {
        run(c.script);
        EXPECT_TRUE(printed(c.complaint)) << c.script << output;
        EXPECT_EQ(events.back(), "fail EATTEDIT");
    }
    run("BLOCK PLAIN 0,0 ALL\n\n");
    insert("PLAIN", AcGePoint3d());
    run("EATTEDIT L\n");
    EXPECT_TRUE(printed("has no editable attributes")) << output;
}
