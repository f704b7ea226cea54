// SETVAR, LIST, REGEN and ARX.
#include "commands_fixture.h"

namespace {

class SettingsTest : public CommandsTest {};

} // namespace

TEST_F(SettingsTest, setvarSetsByType) {
    const struct {
        const char* script;
        const char* expression;
        const char* value;
    } cases[] = {
        {"SETVAR LTSCALE 2.5\n", "(getvar \"LTSCALE\")", "2.5"},
        {"SETVAR ltscale\n\n", "(getvar \"LTSCALE\")", "1.0"},
        {"SETVAR ATTREQ 0\n", "(getvar \"ATTREQ\")", "0"},
        {"SETVAR ATTREQ 2\n", "(getvar \"ATTREQ\")", "1"},
        {"SETVAR ATTREQ 65536\n", "(getvar \"ATTREQ\")", "1"},
        {"SETVAR USERS1 two words\n", "(getvar \"USERS1\")", "\"two words\""},
        {"SETVAR USERS1 x\nSETVAR USERS1 .\n", "(getvar \"USERS1\")", "\"\""},
        {"SETVAR INSBASE 1,2,3\n", "(getvar \"INSBASE\")", "(1.0 2.0 3.0)"},
        {"UCS O 10,0\nSETVAR INSBASE 1,2,3\nUCS W\n", "(getvar \"INSBASE\")", "(11.0 2.0 3.0)"},
        {"SETVAR INSBASE 1,2,3\nTILEMODE 0\nINSBASE 7,7,7\n", "(getvar \"INSBASE\")", "(7.0 7.0 7.0)"},
        {"SETVAR INSBASE 1,2,3\nTILEMODE 0\nINSBASE 7,7,7\nTILEMODE 1\n", "(getvar \"INSBASE\")", "(1.0 2.0 3.0)"},
        {"SETVAR CLAYER nolayer\n", "(getvar \"CLAYER\")", "\"0\""},
        {"LINE 0,0 'SETVAR LTSCALE 4 1,0\n\n", "(getvar \"LTSCALE\")", "4.0"},
        // A variable's name stands for SETVAR and the name.
        {"ltscale 3\n", "(getvar \"LTSCALE\")", "3.0"},
        {"USERS1 two words\n", "(getvar \"USERS1\")", "\"two words\""},
        {"LTSCALE 3\n\n5\n", "(getvar \"LTSCALE\")", "5.0"}, // Enter repeats it
        {"LINE 0,0 'LTSCALE 4 1,0\n\n", "(getvar \"LTSCALE\")", "4.0"},
        {"(command \"LTSCALE\" 6)\n", "(getvar \"LTSCALE\")", "6.0"},
        {"LTSCALE 3\nU\n", "(getvar \"LTSCALE\")", "1.0"},
        {"(defun c:ltscale () (setvar \"USERI1\" 7))\nLTSCALE\n", "(getvar \"USERI1\")", "7"},
    };
    for (const auto& c : cases) {
        startAgain();
        run("SETVAR ATTREQ 1\n");
        run(c.script);
        EXPECT_EQ(lisp(c.expression), c.value) << c.script << output;
    }
}

TEST_F(SettingsTest, aVariablesNameAsksForItsValueAlone) {
    run("LTSCALE\n\n");
    EXPECT_EQ(output.find("Enter variable name"), std::string::npos) << output;
    EXPECT_TRUE(printed("Enter new value for LTSCALE <1>: ")) << output;
    EXPECT_EQ(events, (std::vector<std::string>{"start SETVAR", "end SETVAR"}));
    run("VIEWSIZE\n");
    EXPECT_TRUE(printed("VIEWSIZE = 9 (read only)")) << output;
    host.commands().setUndefined("SETVAR", true);
    run("LTSCALE\n");
    EXPECT_TRUE(printed("Unknown command \"LTSCALE\"")) << output;
}

TEST_F(SettingsTest, setvarTellsWhatItCantSet) {
    run("SETVAR ACADVER\n");
    EXPECT_TRUE(printed("ACADVER = ") && printed("(read only)")) << output;
    run("SETVAR NOSUCHVARIABLE\n");
    EXPECT_EQ(events.back(), "fail SETVAR");
    EXPECT_TRUE(printed("NOSUCHVARIABLE")) << output;
    run("SETVAR ATTREQ 7\n");
    EXPECT_EQ(events.back(), "fail SETVAR");
    run("SETVAR ? USERI*\n");
    EXPECT_TRUE(printed("USERI1") && printed("USERI5")) << output;
    EXPECT_FALSE(printed("USERR1"));
}

TEST_F(SettingsTest, listShowsTheFactsInTheUnitsOfTheDrawing) {
    run("-LAYER M WALLS\n\nUCS O 1,1\nLINE 0,0 3,4\n\nSETVAR LUPREC 2\nLIST L\n\n");
    for (const char* text : {"LINE  Layer: \"WALLS\"", "Space:  Model space", "Handle =  ", "Length =  5.00",
                             "from point,  X=     0.00  Y=     0.00", "to point,  X=     3.00  Y=     4.00"})
        EXPECT_TRUE(printed(text)) << text << output;
}

TEST_F(SettingsTest, listKnowsEveryKindThatCommandsDraw) {
    const struct {
        const char* script;
        const char* shown;
    } cases[] = {
        {"CIRCLE 0,0 2\n", "radius  2.0000"},
        {"ARC C 0,0 1,0 0,1\n", "end angle  90"},
        {"PLINE 0,0 1,0 A 1,1\n\n", "bulge  1.000000"},
        {"TEXT 0,0 1 0\nHello\n\n", "text  Hello"},
        {"ATTDEF I\n\nTAG1 q\nv\n0,0 1 0\n", "flags  invisible"},
    };
    for (const auto& c : cases) {
        run(c.script);
        run("LIST L\n\n");
        EXPECT_TRUE(printed(c.shown)) << c.shown << output;
    }
}

TEST_F(SettingsTest, arxTellsWhyALibraryWontLoad) {
    run("ARX L /no/such/library.arx\n");
    EXPECT_EQ(events.back(), "fail ARX");
    EXPECT_TRUE(printed("library.arx")) << output;
    run("ARX U nothing.arx\n");
    EXPECT_EQ(events.back(), "fail ARX");
    run("ARX ?\n");
    EXPECT_TRUE(printed("Loaded modules:")) << output;
    EXPECT_EQ(events.back(), "end ARX");
}
