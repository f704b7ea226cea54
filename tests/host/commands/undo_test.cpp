#include "commands_fixture.h"

namespace {

class UndoTest : public CommandsTest {};

constexpr const char* kThree = "CIRCLE 0,0 1\nCIRCLE 0,0 2\nCIRCLE 0,0 3\n";
constexpr const char* kC1 = "CIRCLE 0,0 r 1";
constexpr const char* kC12 = "CIRCLE 0,0 r 1\nCIRCLE 0,0 r 2";
constexpr const char* kC123 = "CIRCLE 0,0 r 1\nCIRCLE 0,0 r 2\nCIRCLE 0,0 r 3";

} // namespace

TEST_F(UndoTest, goesBackAndForth) {
    const struct {
        const char* script;
        const char* drawn;
    } cases[] = {
        {"U\n", kC12},
        {"U\nU\n", kC1},
        {"UNDO 2\n", kC1},
        {"UNDO\n\n", kC12},
        {"UNDO 99\n", ""},
        {"U\nREDO\n", kC123},
        {"UNDO 2\nREDO\n", kC123},
        {"U\nU\nREDO\n", kC12},
        {"U\nU\nREDO\nREDO\n", kC123},
        {"U\nCIRCLE 0,0 3\nREDO\n", kC123},
        {"REDO\n", kC123},
        {"UNDO M\nCIRCLE 0,0 4\nCIRCLE 0,0 5\nUNDO B\n", kC123},
        {"UNDO M\nCIRCLE 0,0 4\nUNDO B\nREDO\nU\n", kC123},
        {"UNDO M\nUNDO B\n", kC123},
        {"UNDO B Y\n", ""},
        {"UNDO B\n\n", ""},
        {"UNDO B N\n", kC123},
        {"UNDO BE\nCIRCLE 0,0 4\nCIRCLE 0,0 5\nUNDO E\nU\n", kC123},
        {"UNDO BE\nCIRCLE 0,0 4\nU\nUNDO E\nUNDO 1\n", kC123},
        {"UNDO C N\nCIRCLE 0,0 4\nU\nUNDO C A\n", "CIRCLE 0,0 r 1\nCIRCLE 0,0 r 2\nCIRCLE 0,0 r 3\nCIRCLE 0,0 r 4"},
        {"ERASE ALL\n\nU\n", kC123},
        {"UNDO -1 1\n", kC12},
        {"UNDO A OFF\n", kC123},
    };
    for (const auto& c : cases) {
        startAgain();
        run(kThree);
        run(c.script);
        EXPECT_EQ(drawn(), c.drawn) << c.script << output;
        EXPECT_FALSE(database().undo().inGroup()) << c.script;
    }
}

TEST_F(UndoTest, saysWhatItTookBack) {
    run("LINE 0,0 1,0\n\nCIRCLE 0,0 1\nUNDO 2\n");
    EXPECT_TRUE(printed("CIRCLE LINE")) << output;
    run("U\n");
    EXPECT_TRUE(printed("Everything has been undone")) << output;
    run("REDO\nREDO\n");
    EXPECT_TRUE(printed("Nothing to redo")) << output;
}

TEST_F(UndoTest, takesVariablesAndCoordinateSystemsBackToo) {
    run("SETVAR LTSCALE 3\nUCS O 5,5\nUNDO 2\n");
    EXPECT_EQ(lisp("(list (getvar \"LTSCALE\") (getvar \"WORLDUCS\"))"), "(1.0 1)");
}
