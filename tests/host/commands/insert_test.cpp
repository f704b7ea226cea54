// INSERT and MINSERT of blocks that the drawing has.
#include "insert_fixture.h"

namespace {

class InsertTest : public InsertFixture {};

constexpr const char* kMakeBlock = "LINE 0,0 2,1\n\nBLOCK B 0,0 L\n\n";
/// Two definitions with prompts, one without; the first is verified.
constexpr const char* kMakeLabel = "ATTDEF V\n\nNAME Name?\noak\n1,0 0.5 0\nATTDEF V\n\nSIZE\n\n\n1,1 0.5 0\n"
                                   "BLOCK LABEL 0,0 1,0 1,1\n\n";

struct PlacementCase {
    const char* answers;
    const char* reference;
};

} // namespace

TEST_F(InsertTest, placesByAllWaysToAnswer) {
    const PlacementCase cases[] = {
        {"5,6\n\n\n\n", "B 5,6 s 1,1,1 r 0"},           {"5,6 2 3 90\n", "B 5,6 s 2,3,2 r 90"},
        {"5,6 -2\n\n\n", "B 5,6 s -2,-2,2 r 0"},        {"5,6 @4,-3 0\n", "B 5,6 s 4,-3,4 r 0"},
        {"5,6 C 7,9 0\n", "B 5,6 s 2,3,2 r 0"},         {"5,6 XYZ 2 3 4 0\n", "B 5,6 s 2,3,4 r 0"},
        {"5,6 XYZ -2\n\n\n0\n", "B 5,6 s -2,-2,2 r 0"}, {"5,6 XYZ C 7,9 5 0\n", "B 5,6 s 2,3,5 r 0"},
        {"S 3 5,6 45\n", "B 5,6 s 3,3,3 r 45"},         {"S -3 5,6 0\n", "B 5,6 s -3,-3,3 r 0"},
        {"X 2 Y 3 5,6 0\n", "B 5,6 s 2,3,1 r 0"},       {"R 30 5,6 2\n\n", "B 5,6 s 2,2,2 r 30"},
        {"R 30 S 2 5,6\n", "B 5,6 s 2,2,2 r 30"},       {"PS 7 PR 80 5,6 1 1 0\n", "B 5,6 s 1,1,1 r 0"},
        {"5,6 1 1 5,10\n", "B 5,6 s 1,1,1 r 90"}, // seen from the insertion point
        {"5,6 0 2 0 3 5\n", "B 5,6 s 2,3,2 r 5"}, // a factor of 0 is asked for again
        {"5,6 5,9 7,9 0\n", "B 5,6 s 2,3,2 r 0"}, // and so is a corner without width
    };
    run(kMakeBlock);
    for (const PlacementCase& c : cases) {
        for (const char* command : {"INSERT", "-INSERT", "DDINSERT"}) {
            run(std::string(command) + " B " + c.answers);
            EXPECT_EQ(references(), c.reference) << c.answers << output;
            EXPECT_EQ(events.back(), std::string("end ") + command) << output;
            EXPECT_TRUE(document().lastPoint == AcGePoint3d(5, 6, 0)) << c.answers;
            run("U\n");
            EXPECT_EQ(references(), "") << c.answers;
        }
    }
}

TEST_F(InsertTest, asksInTheUsualWords) {
    run(kMakeBlock);
    run("-INSERT\n?\nb*\nB\n1,2\n\n\n\n");
    EXPECT_EQ(output, "Command: -INSERT\nEnter block name or [?]: ?\nEnter block(s) to list <*>: b*\nDefined blocks.\n"
                      "  \"B\"\nUser blocks: 1  Unnamed blocks: 0\nEnter block name or [?]: B\n"
                      "Specify insertion point or [Scale/X/Y/Z/Rotate/PScale/PX/PY/PZ/PRotate]: 1,2\n"
                      "Enter X scale factor, specify opposite corner, or [Corner/XYZ] <1>: \n"
                      "Enter Y scale factor <use X scale factor>: \nSpecify rotation angle <0>: \n");
    run("INSERT\n\n");
    EXPECT_TRUE(printed("Enter block name or [?] <B>: \nSpecify insertion point or [")) << output;
    EXPECT_EQ(host.variables().getText("INSNAME"), "B");
    run("INSERT b 0,0 1 1 0\n");
    EXPECT_EQ(host.variables().getText("INSNAME"), "B") << "the block's own spelling";
}

TEST_F(InsertTest, standsInTheCoordinateSystemThatIsInForce) {
    run(std::string(kMakeBlock) + kMakeLabel + "UCS O 10,0,5\nUCS X 90\nINSERT B 1,2 1 1 90\n");
    {
        const AcDbObjectPointer<AcDbBlockReference> reference(lastReference());
        EXPECT_TRUE(reference->normal().isParallelTo({0, -1, 0}));
        // The end of the line of the block: x and y of the UCS are X and Z of the world.
        const AcGePoint3d end = reference->blockTransform() * AcGePoint3d(2, 1, 0);
        EXPECT_NEAR(end.x, 10 + 1 - 1, 1e-9);
        EXPECT_NEAR(end.y, 0, 1e-9);
        EXPECT_NEAR(end.z, 5 + 2 + 2, 1e-9);
    }
    run("UCS W\nSETVAR ANGBASE 90\nINSERT B 0,0 1 1 0\n");
    EXPECT_TRUE(references().ends_with("B 0,0 s 1,1,1 r 0")) << "no angle turns nothing: " << references();
    run("SETVAR ANGBASE 0\nSETVAR TILEMODE 0\nINSERT B 3,3 1 1 0\n");
    EXPECT_EQ(references(), "B 3,3 s 1,1,1 r 0") << "in paper space";
}

TEST_F(InsertTest, asksForAttributesAsTheirDefinitionsSay) {
    run(kMakeLabel);
    run("INSERT LABEL 10,10 1 1 0\nred oak\n 12 x 3 \nash\n");
    EXPECT_TRUE(printed("Enter attribute values\nName? <oak>: red oak\nSIZE:  12 x 3 \nVerify attribute values\n"
                        "Name? <red oak>: ash\n"))
        << output;
    EXPECT_EQ(references(), "LABEL 10,10 s 1,1,1 r 0 NAME='ash'@11,10 SIZE=' 12 x 3 '@11,11");
    run("U\n");
    EXPECT_EQ(references(), "");
    run("REDO\n");
    EXPECT_EQ(references(), "LABEL 10,10 s 1,1,1 r 0 NAME='ash'@11,10 SIZE=' 12 x 3 '@11,11");
    run("U\nSETVAR ATTDIA 1\nINSERT LABEL 0,0 1 1 0\nash\n\n\n");
    EXPECT_EQ(references(), "LABEL 0,0 s 1,1,1 r 0 NAME='ash'@1,0 SIZE=''@1,1") << "no dialog: prompts";
    run("U\nINSERT LABEL 0,0 1 1 0\n" + std::string(256, 'x') + "\n" + std::string(255, 'y') + "\n\n\n");
    EXPECT_TRUE(printed("The text may have 255 characters at most.")) << output;
    EXPECT_EQ(references(), "LABEL 0,0 s 1,1,1 r 0 NAME='" + std::string(255, 'y') + "'@1,0 SIZE=''@1,1");
    run("U\nSETVAR ATTREQ 0\nINSERT LABEL 0,0 1 1 0\n");
    EXPECT_FALSE(printed("Enter attribute values")) << output;
    EXPECT_EQ(references(), "LABEL 0,0 s 1,1,1 r 0 NAME='oak'@1,0 SIZE=''@1,1");
}

TEST_F(InsertTest, leavesOutConstantsAndDoesNotAskForPresets) {
    run("ATTDEF C\n\nFIXED\nalways\n0,0 1 0\nATTDEF C P\n\nPRE\nPreset?\nset\n0,2 1 0\n"
        "ATTDEF P I\n\nHIDDEN\nHidden?\nh\n0,4 1 0\nBLOCK MODES 0,0 ALL\n\n");
    run("INSERT MODES 0,0 1 1 0\nseen\n");
    EXPECT_TRUE(printed("Enter attribute values\nHidden? <h>: seen\n")) << output;
    EXPECT_FALSE(printed("Preset?")) << output;
    EXPECT_FALSE(printed("Verify")) << output;
    EXPECT_EQ(references(), "MODES 0,0 s 1,1,1 r 0 PRE='set'@0,2 HIDDEN='seen'@0,4");
    const AcDbObjectPointer<AcDbBlockReference> reference(lastReference());
    const AcDbObjectPointer<AcDbAttribute> hidden(reference->attributes()[1]);
    EXPECT_TRUE(hidden->isInvisible());
    const AcDbObjectPointer<AcDbEntity> end(reference->subentities().sequenceEnd());
    EXPECT_TRUE(end) << "attributes end with a sequence end";
}

TEST_F(InsertTest, attributesFollowBasePointScaleAndAngle) {
    run("ATTDEF\n\nA\n\nv\n12,20 1 0\nBLOCK BASE 10,20 L\n\n"); // 2 right of the base point
    run("SETVAR ATTREQ 0\nINSERT BASE 100,0 3 3 90\nINSERT BASE 100,0 2 5 0\nINSERT BASE 100,0 -1 1 0\n");
    EXPECT_EQ(references(), "BASE 100,0 s 3,3,3 r 90 A='v'@100,6\nBASE 100,0 s 2,5,2 r 0 A='v'@104,0\n"
                            "BASE 100,0 s -1,1,1 r 0 A='v'@98,0");
    const auto attribute = [&](size_t number) {
        const AcDbObjectPointer<AcDbBlockReference> reference(referenceIds()[number]);
        return reference->attributes()[0];
    };
    const AcDbObjectPointer<AcDbAttribute> turned(attribute(0)), uneven(attribute(1)), mirrored(attribute(2));
    EXPECT_NEAR(turned->height(), 3, 1e-9);
    EXPECT_NEAR(turned->rotation(), kAcGePi / 2, 1e-9);
    EXPECT_NEAR(uneven->height(), 5, 1e-9);
    EXPECT_NEAR(uneven->widthFactor(), 2.0 / 5, 1e-9);
    EXPECT_TRUE(mirrored->isMirroredInX());
}

TEST_F(InsertTest, putsTheContentsInPiecesBehindAnAsterisk) {
    run("LINE 1,0 3,0\n\nATTDEF\n\nT\n\nv\n1,1 1 0\nBLOCK B 1,0 ALL\n\n");
    run("INSERT *B 10,10 2 90\n");
    EXPECT_EQ(drawn(), "LINE 10,10 10,14\nATTDEF 'v' at 8,10 h 2 r 90 tag T prompt '' flags 0") << output;
    run("U\n");
    EXPECT_EQ(drawn(), "");
    run("MINSERT *B B 0,0 1 1 0\n\n\n\x1B");
    EXPECT_TRUE(printed("The pieces of a block can't be arrayed")) << output;
    EXPECT_EQ(drawn(), "");
}

TEST_F(InsertTest, minsertMakesOneReferenceOfRowsAndColumns) {
    run(kMakeBlock);
    const struct {
        const char* answers;
        const char* reference;
    } cases[] = {
        {"3 4 10 20\n", "B 1,1 s 1,1,1 r 0 4 x 20, 3 x 10"},
        {"2 1 -5\n", "B 1,1 s 1,1,1 r 0 1 x 0, 2 x -5"},
        {"1 2 0 7\n", "B 1,1 s 1,1,1 r 0 2 x 7, 1 x 0"}, // 0 is no distance
        {"2 2 0,0 3,4\n", "B 1,1 s 1,1,1 r 0 2 x 3, 2 x 4"},
        {"0 -2 40000 2\n\n6\n", "B 1,1 s 1,1,1 r 0 1 x 0, 2 x 6"},
        {"\n\n", "B 1,1 s 1,1,1 r 0"},
    };
    for (const auto& c : cases) {
        run(std::string("MINSERT B 1,1 1 1 0 ") + c.answers);
        EXPECT_EQ(references(), c.reference) << c.answers << output;
        EXPECT_EQ(events.back(), "end MINSERT") << c.answers << output;
        run("U\n");
    }
    EXPECT_EQ(references(), "");
}

TEST_F(InsertTest, refusesWhatLeadsToNothing) {
    run(kMakeBlock);
    for (const char* name : {"nothing.here", "*Model_Space", "**U1", "Q:\\x", "no/such/folder/x"}) {
        run(std::string("INSERT ") + name + " B 0,0 1 1 0\n");
        EXPECT_TRUE(printed("Can't find file in search path:")) << name << output;
        EXPECT_EQ(references(), "B 0,0 s 1,1,1 r 0") << name;
        run("U\n");
    }
    host.variables().force("INSNAME", std::string());
    run("INSERT\n\n\x1B");
    EXPECT_TRUE(printed("Give the name of a block or of a drawing, or ? to list the blocks.")) << output;
    host.commandLine().setInvalidAnswers(vndk::host::InvalidAnswers::FailCommand);
    run("INSERT nothing\nLINE 0,0 1,0\n\n");
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->kind, vndk::host::Problem::Kind::InvalidAnswer);
    EXPECT_EQ(drawn(), "LINE 0,0 1,0") << "the lines behind it run";
}

TEST_F(InsertTest, namesMayHoldBlanksBetweenQuotesAndFromLisp) {
    run(kMakeBlock);
    ASSERT_FALSE(renameBlock("B", "MY DESK").isNull());
    run("INSERT \"my desk\" 1,1 1 1 0\n(command \"-INSERT\" \"MY DESK\" '(2 2) 1 1 0)\n");
    EXPECT_EQ(references(), "MY DESK 1,1 s 1,1,1 r 0\nMY DESK 2,2 s 1,1,1 r 0") << output;
}

TEST_F(InsertTest, twoDrawingsHaveTheirOwnBlocks) {
    run(kMakeBlock);
    AcApDocument* const first = &document();
    run("NEW\n\nINSERT B\n\x1B");
    EXPECT_TRUE(printed("\"B\": Can't find file in search path:")) << output;
    run("CIRCLE 0,0 1\nBLOCK B 0,0 L\n\nINSERT B 3,3 1 1 0\nINSERT\n\n4,4 1 1 0\n");
    EXPECT_EQ(references(), "B 3,3 s 1,1,1 r 0\nB 4,4 s 1,1,1 r 0");
    ASSERT_EQ(host.documents().activateDocument(first), Acad::eOk);
    EXPECT_EQ(references(), "");
    EXPECT_EQ(blockContents("B"), "LINE 0,0 2,1");
}
