// Scripts of drawing commands, and what stands in the drawing afterwards.
#include "commands_fixture.h"

namespace {

const DrawingCase kLines[] = {
    {"LINE 0,0 10,0\n\n", "LINE 0,0 10,0"},
    {"_line 0,0 @10,5 @5<90\n\n", "LINE 0,0 10,5\nLINE 10,5 10,10"},
    {"LINE 0,0 10,0 10,10 c\n", "LINE 0,0 10,0\nLINE 10,0 10,10\nLINE 10,10 0,0"},
    {"LINE 0,0 10,0 u 0,10\n\n", "LINE 0,0 0,10"},
    {"LINE 0,0 u 5,5\n\n", "LINE 0,0 5,5"},
    {"LINE 0,0 10,0\n\nLINE\n\n20,0\n\n", "LINE 0,0 10,0\nLINE 10,0 20,0"},
    {"LINE 1,2,3 4,5,6\n\n", "LINE 1,2,3 4,5,6"},
    {"LINE 0,0\n\n", ""},
    {"ELEVATION 5\n(command \"LINE\" '(0 0) '(1 2 3) \"4,0\" \"\")\n", "LINE 0,0,5 1,2,3\nLINE 1,2,3 4,0,5"},
};

const DrawingCase kCircles[] = {
    {"CIRCLE 1,2 5\n", "CIRCLE 1,2 r 5"},
    {"CIRCLE 1,2 4,6\n", "CIRCLE 1,2 r 5"},
    {"CIRCLE 1,2 d 5\n", "CIRCLE 1,2 r 2.5"},
    {"CIRCLE 0,0 3\nCIRCLE 9,0\n\n", "CIRCLE 0,0 r 3\nCIRCLE 9,0 r 3"},
    {"CIRCLE 0,0 3\nCIRCLE 9,0 D\n\n", "CIRCLE 0,0 r 3\nCIRCLE 9,0 r 3"},
    {"CIRCLE 2P 0,0 10,0\n", "CIRCLE 5,0 r 5"},
    {"CIRCLE _3p 10,0 0,10 -10,0\n", "CIRCLE 0,0 r 10"},
    {"CIRCLE 3P 0,0 1,1 2,2\n", ""},
    {"CIRCLE 2P 1,1 1,1\n", ""},
    {"LINE 0,0 9,0\n\nLINE 0,0 0,9\n\nCIRCLE T 5,0 0,5 2\n", "LINE 0,0 9,0\nLINE 0,0 0,9\nCIRCLE 2,2 r 2"},
    {"LINE 0,0 9,0\n\nLINE 0,0 0,9\n\nCIRCLE T 9,0 0,9 20\n", "LINE 0,0 9,0\nLINE 0,0 0,9\nCIRCLE 20,20 r 20"},
    {"LINE 0,0 20,0\n\nCIRCLE 10,5 3\nCIRCLE Ttr 10,0 10,2 1\n", "LINE 0,0 20,0\nCIRCLE 10,5 r 3\nCIRCLE 10,1 r 1"},
    {"LINE -9,0 9,0\n\nCIRCLE 0,0 10\nCIRCLE T 5,0 8,6 2\n",
     "LINE -9,0 9,0\nCIRCLE 0,0 r 10\nCIRCLE 7.745967,2 r 2"}, // within the other circle
    {"CIRCLE 0,0 1\nCIRCLE 10,0 1\nCIRCLE T 0.6,0.8 9.4,0.8 5\n",
     "CIRCLE 0,0 r 1\nCIRCLE 10,0 r 1\nCIRCLE 5,3.316625 r 5"},
    {"CIRCLE 0,0 1\nCIRCLE 10,0 1\nCIRCLE T -1,0 11,0 6\n",
     "CIRCLE 0,0 r 1\nCIRCLE 10,0 r 1\nCIRCLE 5,0 r 6"}, // around both
    {"CIRCLE 0,0 2\nARC C 10,0 12,0 8,0\nCIRCLE T 1,1.732 9,1.732 6\n",
     "CIRCLE 0,0 r 2\nARC 10,0 r 2 0..180\nCIRCLE 5,6.244998 r 6"},
    {"LINE 0,0 9,0\n\nLINE 0,9 9,9\n\nCIRCLE T 5,0 5,9 2\n", "LINE 0,0 9,0\nLINE 0,9 9,9"}, // parallel
    {"LINE 0,0 9,0\n\nCIRCLE T 5,5 5,0 3,0 2\n", "LINE 0,0 9,0"}, // nothing at the first point; one line twice
};

const DrawingCase kArcs[] = {
    {"ARC 10,0 0,10 -10,0\n", "ARC 0,0 r 10 0..180"},
    {"ARC -10,0 0,10 10,0\n", "ARC 0,0 r 10 0..180"},
    {"ARC 10,0 C 0,0 0,10\n", "ARC 0,0 r 10 0..90"},
    {"ARC 10,0 C 0,0 A 45\n", "ARC 0,0 r 10 0..45"},
    {"ARC 10,0 C 0,0 A -45\n", "ARC 0,0 r 10 315..0"},
    {"ARC 10,0 C 0,0 L 10\n", "ARC 0,0 r 10 0..60"},
    {"ARC 10,0 E 0,10 A 90\n", "ARC 0,0 r 10 0..90"},
    {"ARC 10,0 E 0,10 D 90\n", "ARC 0,0 r 10 0..90"},
    {"ARC 10,0 E 0,10 R 10\n", "ARC 0,0 r 10 0..90"},
    {"ARC 10,0 E 0,10 0,0\n", "ARC 0,0 r 10 0..90"},
    {"ARC C 0,0 10,0 -5,0\n", "ARC 0,0 r 10 0..180"},
    {"ARC C 0,0 10,0 a 270\n", "ARC 0,0 r 10 0..270"},
    {"LINE 0,0 10,0\n\nARC\n\n10,10\n", "LINE 0,0 10,0\nARC 10,5 r 5 270..90"},
    {"ARC 0,0 1,1 2,2\n", ""},
    {"ARC\n\n", ""},
};

const DrawingCase kPolylines[] = {
    {"PLINE 0,0 10,0 10,10\n\n", "LWPOLYLINE 0,0 10,0 10,10"},
    {"PLINE 0,0 10,0 10,10 C\n", "LWPOLYLINE 0,0 10,0 10,10 closed"},
    {"PLINE 0,0 10,0 U 0,10\n\n", "LWPOLYLINE 0,0 0,10"},
    {"PLINE 0,0 W 1 2 10,0 20,0\n\n", "LWPOLYLINE 0,0 w1-2 10,0 w2-2 20,0"},
    {"PLINE 0,0 H 1\n\n10,0\n\n", "LWPOLYLINE 0,0 w2-2 10,0"},
    {"PLINE 0,0 10,0 A 10,10\n\n", "LWPOLYLINE 0,0 10,0 b1 10,10"},
    {"PLINE 0,0 10,0 A 10,10 L 0,10 C\n", "LWPOLYLINE 0,0 10,0 b1 10,10 0,10 closed"},
    {"PLINE 0,0 10,0 A 10,10 L L 5\n\n", "LWPOLYLINE 0,0 10,0 b1 10,10 5,10"},
    {"PLINE 0,0 A D 90 10,0\n\n", "LWPOLYLINE 0,0 b-1 10,0"},
    {"PLINE 0,0 A S 5,5 10,0\n\n", "LWPOLYLINE 0,0 b-1 10,0"},
    {"PLINE 0,0 A A 180 10,0\n\n", "LWPOLYLINE 0,0 b1 10,0"},
    {"PLINE 0,0 A CE 5,0 10,0\n\n", "LWPOLYLINE 0,0 b1 10,0"},
    {"PLINE 0,0 A R 5 10,0\n\n", "LWPOLYLINE 0,0 b1 10,0"},
    {"PLINE 0,0 10,0 A 10,10 CL\n", "LWPOLYLINE 0,0 10,0 b1 10,10 b0.414214 closed"},
    {"PLINE 0,0\n\n", ""},
};

const DrawingCase kTexts[] = {
    {"TEXT 1,2 5 0\nHello world\n\n", "TEXT 'Hello world' at 1,2 h 5 r 0"},
    {"TEXT 1,2 3 90\none\ntwo\n\n", "TEXT 'one' at 1,2 h 3 r 90\nTEXT 'two' at 6,2 h 3 r 90"},
    {"TEXT 0,0 3 0\na\n\nTEXT\n\nb\n\n", "TEXT 'a' at 0,0 h 3 r 0\nTEXT 'b' at 0,-5 h 3 r 0"},
    {"TEXT J R 10,0 2 0\nabcde\n\n", "TEXT 'abcde' at 2,0 h 2 r 0 just 2/0 10,0"},
    {"TEXT C 10,0 2 0\nabcde\n\n", "TEXT 'abcde' at 6,0 h 2 r 0 just 1/0 10,0"},
    {"TEXT J M 10,0 2 0\nabcde\n\n", "TEXT 'abcde' at 6,-1 h 2 r 0 just 4/0 10,0"},
    {"TEXT J TL 10,0 2 0\nabcde\n\n", "TEXT 'abcde' at 10,-2 h 2 r 0 just 0/3 10,0"},
    {"TEXT J MC 10,0 2 0\nabcde\n\n", "TEXT 'abcde' at 6,-1 h 2 r 0 just 1/2 10,0"},
    {"TEXT J BR 10,0 2 0\nabcde\n\n", "TEXT 'abcde' at 2,0 h 2 r 0 just 2/1 10,0"},
    {"TEXT J A 0,0 8,0\nabcde\n\n", "TEXT 'abcde' at 0,0 h 2 r 0 just 3/0 8,0"},
    {"TEXT J F 0,0 0,8 2\nabcde\n\n", "TEXT 'abcde' at 0,0 h 2 r 90 just 5/0 0,8"},
    {"TEXT S standard 0,0 2 0\n(not lisp)\n\n", "TEXT '(not lisp)' at 0,0 h 2 r 0"},
    {"TEXT 0,0 2 0\n\n", ""},
    {"TEXT 0,0 0 2 0\nno zero height\n\n", "TEXT 'no zero height' at 0,0 h 2 r 0"},
};

const DrawingCase kDefinitions[] = {
    {"ATTDEF\n\nroom Name of the room\nan empty one\n1,2 3 0\n",
     "ATTDEF 'an empty one' at 1,2 h 3 r 0 tag ROOM prompt 'Name of the room' flags 0"},
    {"ATTDEF I P\n\nA q\nv\n0,0 1 0\n", "ATTDEF 'v' at 0,0 h 1 r 0 tag A prompt 'q' flags 9"},
    {"ATTDEF C\n\nB fixed\n0,0 1 0\n", "ATTDEF 'fixed' at 0,0 h 1 r 0 tag B prompt '' flags 2"},
    {"ATTDEF V V\n\nA q\nv\nJ MC 0,0 1 0\n", "ATTDEF 'v' at -0.4,-0.5 h 1 r 0 just 1/2 0,0 tag A prompt 'q' flags 0"},
    {"ATTDEF\n\n\nA q\nv\n0,0 1 0\n", "ATTDEF 'v' at 0,0 h 1 r 0 tag A prompt 'q' flags 0"},
};

const DrawingCase kTurned[] = {
    {"UCS O 100,0\nUCS Z 90\nLINE 0,0 10,0\n\n", "LINE 100,0 100,10"},
    {"UCS O 100,0\nUCS Z 90\nARC C 0,0 10,0 A 90\n", "ARC 100,0 r 10 90..180"},
    {"UCS O 100,0\nUCS Z 90\nTEXT 1,0 2 0\nup\n\n", "TEXT 'up' at 100,1 h 2 r 90"},
    {"UCS O 100,0\nUCS Z 90\nPLINE 0,0 10,0\n\n", "LWPOLYLINE 100,0 100,10"},
    {"UCS O 0,0,7\nPLINE 0,0 10,0\n\nCIRCLE 0,0 1\n", "LWPOLYLINE 0,0 10,0\nCIRCLE 0,0,7 r 1"},
    {"UCS X 90\nCIRCLE 1,2 1\n", "CIRCLE 1,0,2 r 1"},
    {"UCS 3 5,5 5,6 4,5\nLINE 0,0 1,0\n\n", "LINE 5,5 5,6"},
    {"UCS N ZA 0,0,0 0,-1,0\nLINE 0,0 0,1\n\n", "LINE 0,0 0,0,1"},
    {"UCS O 9,9\nUCS P\nLINE 0,0 1,0\n\n", "LINE 0,0 1,0"},
    {"UCS O 9,9\nUCS\n\nLINE 0,0 1,0\n\n", "LINE 0,0 1,0"},
    {"UCS O 9,9\nLINE *0,0 1,0\n\n", "LINE 0,0 10,9"},
};

class DrawingTest : public CommandsTest {
protected:
    void expect(std::span<const DrawingCase> cases) {
        for (const DrawingCase& c : cases) {
            startAgain();
            run(c.script);
            EXPECT_EQ(drawn(), c.drawn) << c.script << "printed:\n" << output;
            EXPECT_FALSE(host.commandLine().commandActive()) << c.script;
            while (database().undo().undo()) {
            }
            EXPECT_EQ(drawn(), "") << "undone: " << c.script;
        }
    }
};

} // namespace

TEST_F(DrawingTest, lines) { expect(kLines); }
TEST_F(DrawingTest, circles) { expect(kCircles); }
TEST_F(DrawingTest, arcs) { expect(kArcs); }
TEST_F(DrawingTest, polylines) { expect(kPolylines); }
TEST_F(DrawingTest, texts) { expect(kTexts); }
TEST_F(DrawingTest, attributeDefinitions) { expect(kDefinitions); }
TEST_F(DrawingTest, underATurnedCoordinateSystem) { expect(kTurned); }

TEST_F(DrawingTest, aFixedHeightOfTheStyleIsntAskedFor) {
    {
        const AcDbObjectPointer<AcDbTextStyleTableRecord> style(database().textstyle(), AcDb::kForWrite);
        AcDbTextStyleTableRecord::Data data = style->data();
        data.textSize = 7;
        style->setData(data);
    }
    run("TEXT 0,0 0\nfixed\n\n");
    EXPECT_EQ(drawn(), "TEXT 'fixed' at 0,0 h 7 r 0");
}

TEST_F(DrawingTest, goesToPaperSpaceWhenTilemodeIsOff) {
    run("SETVAR TILEMODE 0\nLINE 0,0 1,0\n\n");
    EXPECT_EQ(drawn(), "LINE 0,0 1,0");
    run("SETVAR TILEMODE 1\n");
    EXPECT_EQ(drawn(), "");
}

TEST_F(DrawingTest, takesLayerAndColourOfTheDrawing) {
    run("-LAYER M WALLS\n\nSETVAR CECOLOR 3\nLINE 0,0 1,0\n\n");
    EXPECT_EQ(lisp("(cdr (assoc 8 (entget (entlast))))"), "\"WALLS\"");
    EXPECT_EQ(lisp("(cdr (assoc 62 (entget (entlast))))"), "3");
}

TEST_F(DrawingTest, answersThatAreNoneAreAskedForAgainAtAKeyboard) {
    run("LINE abc 0,0 1,0,0,0 xyz 5,0\n\n");
    EXPECT_EQ(drawn(), "LINE 0,0 5,0");
}

TEST_F(DrawingTest, answersThatAreNoneEndTheCommandInABatchRun) {
    host.commandLine().setInvalidAnswers(vndk::host::InvalidAnswers::FailCommand);
    run("LINE 0,0 5,0 abc\nCIRCLE 1,1 2\n");
    EXPECT_EQ(drawn(), "LINE 0,0 5,0\nCIRCLE 1,1 r 2");
    ASSERT_TRUE(problem);
    EXPECT_EQ(problem->line, 1u);
}
