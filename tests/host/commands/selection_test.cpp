// Which objects a selection takes, seen by what ERASE leaves.
#include "commands_fixture.h"
#include "db/viewport.h"

namespace {

// A horizontal line, a slanting one that passes the corner of the square 4..6, a circle around 5,5, and an arc.
constexpr const char* kScene = "LINE 0,0 10,0\n\nLINE 0,5 5,0\n\nCIRCLE 5,5 1\nARC C 20,20 21,20 20,21\n";
constexpr const char* kLine = "LINE 0,0 10,0";
constexpr const char* kSlant = "LINE 0,5 5,0";
constexpr const char* kCircle = "CIRCLE 5,5 r 1";
constexpr const char* kArc = "ARC 20,20 r 1 0..90";

struct SelectionCase {
    const char* answers;
    std::vector<const char*> left;
};

const SelectionCase kCases[] = {
    {"ALL\n\n", {}},
    {"L\n\n", {kLine, kSlant, kCircle}},
    {"5,0\n\n", {kLine, kCircle, kArc}}, // both lie there: the later one
    {"8,0\n\n", {kSlant, kCircle, kArc}},
    {"6,5\n\n", {kLine, kSlant, kArc}},                  // on the circle
    {"5,5 5.5,5.5\n\n", {kLine, kSlant, kCircle, kArc}}, // nothing there: a window with nothing inside
    {"W 3,3 7,7\n\n", {kLine, kSlant, kArc}},
    {"W 4.5,4.5 7,7\n\n", {kLine, kSlant, kCircle, kArc}},
    {"C 4.5,4.5 7,7\n\n", {kLine, kSlant, kArc}},
    {"C 5.2,5.2 4.8,4.8\n\n", {kLine, kSlant, kCircle, kArc}}, // inside the circle, not touching it
    {"C 4,4 4.1,4.1\n\n", {kLine, kSlant, kCircle, kArc}},     // inside the slant's box, not touching it
    {"C 20,20 20.5,20.5\n\n", {kLine, kSlant, kCircle, kArc}}, // inside the arc's box, not touching it
    {"BOX 3,3 7,7\n\n", {kLine, kSlant, kArc}},
    {"BOX 7,7 4.5,4.5\n\n", {kLine, kSlant, kArc}},
    {"7,7 4.5,4.5\n\n", {kLine, kSlant, kArc}},
    {"ALL R L\n\n", {kArc}},
    {"ALL R L A L\n\n", {}},
    {"L U\n\n", {kLine, kSlant, kCircle, kArc}},
    {"SI L\n", {kLine, kSlant, kCircle}},
    {"(entlast)\n\n", {kLine, kSlant, kCircle}},
    {"(list (entlast) (list 0.0 0.0 0.0))\n\n", {kLine, kSlant, kCircle}},
    {"P\n\n", {kLine, kSlant, kCircle, kArc}},
    {"WP 3,3 7,3 7,7 3,7\n\n\n", {kLine, kSlant, kArc}},
    {"WP 4.5,4.5 7,4.5 7,7\n\n\n", {kLine, kSlant, kCircle, kArc}}, // the circle reaches out of it
    {"CP 4.5,4.5 7,4.5 7,7\n\n\n", {kLine, kSlant, kArc}},
    {"CP 4.8,4.8 5.2,4.8 5,5.2\n\n\n", {kLine, kSlant, kCircle, kArc}}, // inside the circle
    {"CP -9,-9 -8,-9 U 30,-9 30,30 -9,30\n\n\n", {}},
    {"F 2,-1 2,4\n\n\n", {kCircle, kArc}},
    {"F 20,20 20.3,20.3\n\n\n", {kLine, kSlant, kCircle, kArc}}, // does not reach the arc
    {"F 20,20 21,21\n\n\n", {kLine, kSlant, kCircle}},
    {"M 8,0 6,5\n\n\n", {kSlant, kArc}},
    {"nonsense L\n\n", {kLine, kSlant, kCircle}},
    {"\n", {kLine, kSlant, kCircle, kArc}},
};

class SelectionTest : public CommandsTest {
protected:
    static std::string joined(const std::vector<const char*>& lines) {
        std::string text;
        for (const char* line : lines)
            text += (text.empty() ? "" : "\n") + std::string(line);
        return text;
    }
};

} // namespace

TEST_F(SelectionTest, takesWhatTheAnswersMean) {
    for (const SelectionCase& c : kCases) {
        startAgain();
        run(kScene);
        run(std::string("ERASE ") + c.answers);
        EXPECT_EQ(drawn(), joined(c.left)) << "ERASE " << c.answers << output;
        EXPECT_FALSE(host.commandLine().commandActive()) << c.answers;
    }
}

TEST_F(SelectionTest, tellsHowManyItFound) {
    run(kScene);
    run("LIST ALL L R L\n\n");
    EXPECT_TRUE(printed("4 found\n")) << output;
    EXPECT_TRUE(printed("1 found (1 duplicate), 4 total")) << output;
    EXPECT_TRUE(printed("1 found, 1 removed, 3 total")) << output;
}

TEST_F(SelectionTest, previousIsWhatTheLastCommandTook) {
    run(kScene);
    run("LIST L\n\nERASE P\n\n");
    EXPECT_EQ(drawn(), joined({kLine, kSlant, kCircle}));
    run("ERASE P\n\n");
    EXPECT_TRUE(printed("No previous selection set.")) << output;
}

TEST_F(SelectionTest, previousForgetsWhatIsGone) {
    run(kScene);
    run("LIST 8,0 L\n\nERASE 8,0\n\nMOVE L\n\n0,0 1,1\nUNDO 1\nLIST 6,5\n\nERASE P\n\n");
    EXPECT_EQ(drawn(), joined({kSlant, kArc}));
}

TEST_F(SelectionTest, whatStandsInTheOtherSpaceIsLeftOut) {
    run("LINE 0,0 1,0\n\nLIST L\n\nSETVAR TILEMODE 0\nLINE 5,5 6,6\n\nERASE P L\n\n");
    EXPECT_TRUE(printed("1 found\n1 was not in current space.")) << output;
    EXPECT_EQ(drawn(), "");
    run("SETVAR TILEMODE 1\n");
    EXPECT_EQ(drawn(), "LINE 0,0 1,0");
}

TEST_F(SelectionTest, theSheetIsNoObject) {
    run("SETVAR TILEMODE 0\n");
    for (const double x : {5.0, 50.0}) {
        auto* const viewport = new AcDbViewport;
        AcDbViewport::Data data;
        data.center = {x, 5, 0};
        data.width = data.height = 10;
        viewport->setFileData(data);
        AcDbObjectId id;
        const AcDbObjectPointer<AcDbBlockTableRecord> space(database().paperSpaceId(), AcDb::kForWrite);
        space->appendAcDbEntity(id, viewport);
        viewport->close();
    }
    run("ERASE 50,5 51,6\n\n");
    EXPECT_EQ(drawn(), "VIEWPORT\nVIEWPORT") << "a viewport is taken by its frame";
    run("ERASE 50,0 5,0 5.5,1\n\n");
    EXPECT_EQ(drawn(), "VIEWPORT");
    run("ERASE ALL L C -9,-9 99,99\n\n");
    EXPECT_EQ(drawn(), "VIEWPORT");
}

TEST_F(SelectionTest, layersHideAndLock) {
    run("-LAYER M HIDDEN\n\nLINE 0,0 10,0\n\n-LAYER M LOCKED LO LOCKED\n\nLINE 0,1 10,1\n\n-LAYER S 0 OFF HIDDEN\n\n");
    run("ERASE C -1,-1 11,11\n\n");
    EXPECT_TRUE(printed("1 was on a locked layer.")) << output;
    EXPECT_EQ(drawn(), "LINE 0,0 10,0\nLINE 0,1 10,1");
    run("-LAYER ON HIDDEN U LOCKED\n\nERASE C -1,-1 11,11\n\n");
    EXPECT_EQ(drawn(), "");
}

TEST_F(SelectionTest, rectanglesFollowTheCoordinateSystem) {
    run("LINE 0,10 0,20\n\nUCS Z 90\nERASE W 9,-1 21,1\n\n");
    EXPECT_EQ(drawn(), "");
}
