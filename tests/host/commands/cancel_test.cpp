// Every command is given up at every prompt: it ends as cancelled, what it drew till then stays and can be undone, and
// no half work is left.
#include "commands_fixture.h"

namespace {

/// Lines of a script; before each of them the command may be cancelled. `kept` is what stands then, by lines typed.
struct CancelCase {
    std::vector<const char*> lines;
    std::vector<const char*> kept; ///< after as many lines; the last one counts for more lines too
};

const char* const kOneLine = "LINE 0,0 1,0";
const char* const kTwoLines = "LINE 0,0 1,0\nLINE 1,0 1,1";

const CancelCase kCases[] = {
    {{"LINE", "0,0", "1,0", "1,1"}, {"", "", "", kOneLine, kTwoLines}},
    {{"CIRCLE", "0,0"}, {""}},
    {{"CIRCLE", "0,0", "D"}, {""}},
    {{"CIRCLE", "3P", "0,0", "1,0"}, {""}},
    {{"CIRCLE", "2P", "0,0"}, {""}},
    {{"ARC", "0,0", "1,1"}, {""}},
    {{"ARC", "0,0", "C", "1,0", "A"}, {""}},
    {{"ARC", "0,0", "E", "1,0", "R"}, {""}},
    {{"ARC", "C", "0,0", "1,0", "L"}, {""}},
    {{"PLINE", "0,0", "1,0", "W", "2"}, {"", "", "", "LWPOLYLINE 0,0 1,0"}},
    {{"PLINE", "0,0", "1,0", "A", "S", "2,2"}, {"", "", "", "LWPOLYLINE 0,0 1,0"}},
    {{"TEXT", "J", "F", "0,0", "9,0", "2"}, {""}},
    {{"TEXT", "0,0", "2", "0", "a"}, {"", "", "", "", "", "TEXT 'a' at 0,0 h 2 r 0"}},
    {{"TEXT", "S"}, {""}},
    {{"ATTDEF", "I", "", "TAG", "prompt", "value", "0,0", "2"}, {""}},
    {{"LINE 0,0 1,0\n\nERASE", "L", "W", "-1,-1"}, {"", kOneLine}},
    {{"LINE 0,0 1,0\n\nBLOCK", "B", "0,0", "L", "C", "-1,-1"}, {"", kOneLine}},
    {{"LINE 0,0 1,0\n\nBLOCK B 0,0 L\n\nINSERT", "B", "R", "30", "1,1", "2"}, {""}},
    {{"LINE 0,0 1,0\n\nBLOCK B 0,0 L\n\nMINSERT", "B", "1,1", "C", "2,2", "0", "2", "2", "0,0"}, {""}},
    {{"LINE 0,0 1,0\n\nBLOCK B 0,0 L\n\nINSERT", "*B", "1,1", "2"}, {""}},
    {{"LINE 0,0 1,0\n\nMOVE", "L", "", "0,0"}, {"", kOneLine}},
    {{"LINE 0,0 1,0\n\nCOPY", "L", "", "0,0"}, {"", kOneLine}},
    {{"LINE 0,0 1,0\n\nCOPY", "L", "", "M", "0,0", "1,0"},
     {"", kOneLine, kOneLine, kOneLine, kOneLine, kOneLine, "LINE 0,0 1,0\nLINE 1,0 2,0"}},
    {{"LINE 0,0 1,0\n\nROTATE", "L", "", "0,0", "R", "0,0", "1,1"}, {"", kOneLine}},
    {{"LINE 0,0 1,0\n\nSCALE", "L", "", "0,0", "R", "0,0", "1,1"}, {"", kOneLine}},
    {{"LINE 0,0 1,0\n\nMIRROR", "L", "", "0,0", "1,1"}, {"", kOneLine}},
    {{"LINE 0,0 1,0\n\nCHPROP", "L", "", "C"}, {"", kOneLine}},
    {{"LINE 0,0 1,0\n\nCHPROP", "L", "", "T"}, {"", kOneLine}},
    {{"DIMLINEAR", "0,0", "5,0", "R", "30"}, {""}},
    {{"DIMALIGNED", "0,0", "5,0", "T", "text"}, {""}},
    {{"LIST"}, {""}},
    {{"-LAYER", "M", "A"}, {""}},
    {{"-LAYER", "OFF", "0"}, {""}},
    {{"-LAYER", "C", "1"}, {""}},
    {{"-LAYER", "L", "Continuous"}, {""}},
    {{"-LAYER", "LW", "0.5"}, {""}},
    {{"UCS", "3", "1,1", "2,1"}, {""}},
    {{"UCS", "N"}, {""}},
    {{"SETVAR", "LTSCALE"}, {""}},
    {{"UNDO", "C"}, {""}},
    {{"ARX", "L"}, {""}},
    {{"SAVEAS", ""}, {""}},
    {{"NEW"}, {""}},
    {{"OPEN"}, {""}},
    {{"EATTEDIT"}, {""}},
};

class CancelTest : public CommandsTest {};

} // namespace

TEST_F(CancelTest, leavesNoHalfWorkAtAnyPrompt) {
    for (const CancelCase& c : kCases) {
        for (size_t typed = 1; typed <= c.lines.size(); ++typed) {
            std::string script;
            for (size_t i = 0; i < typed; ++i)
                script += std::string(c.lines[i]) + "\n";
            startAgain();
            const int documents = host.documents().documentCount();
            events.clear();
            run(script + "\x1B");
            const std::string kept = c.kept[std::min(typed, c.kept.size() - 1)];
            EXPECT_EQ(drawn(), kept) << script;
            ASSERT_FALSE(events.empty()) << script;
            EXPECT_TRUE(events.back().starts_with("cancel ")) << script << events.back() << "\n" << output;
            EXPECT_FALSE(host.commandLine().commandActive()) << script;
            EXPECT_FALSE(database().undo().inGroup()) << script;
            EXPECT_EQ(host.documents().documentCount(), documents) << script;
            while (database().undo().undo()) {
            }
            EXPECT_EQ(drawn(), "") << "undone: " << script;
            EXPECT_EQ(blockContents("B"), "no block") << script;
        }
    }
}

TEST_F(CancelTest, theEndOfTheInputCancelsToo) {
    run("LINE 0,0 1,0");
    EXPECT_EQ(drawn(), kOneLine);
    EXPECT_EQ(events.back(), "cancel LINE");
}
