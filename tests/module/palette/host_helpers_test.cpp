// What the palette sends to the host's command line, as the host's LISP sees it arrive.
#include "host/host_fixture.h"
#include "palette/host_helpers.h"

namespace {

class HostHelpersTest : public HostTest {};

TEST_F(HostHelpersTest, WritesCoordinatesInDecimalsWhateverTheUnits) {
    run("SETVAR LUNITS 4\nSETVAR LUPREC 2\n");
    EXPECT_STREQ(CoordToText(1), "1.00000000");
    EXPECT_STREQ(CoordToText(-1234.5), "-1234.50000000");
    EXPECT_STREQ(CoordToText(1e-9), "0.00000000");
    EXPECT_STREQ(CoordToText(1e300), "0.0") << "what the host can't write";
    EXPECT_STREQ(IntToText(12), "12");
}

TEST_F(HostHelpersTest, SendsAnInsertionThatCancelsWhatRuns) {
    run("(defun c:_bInsert (name point) (setq got (list name point)) (princ))\n");
    const double point[3] = {1, 2, 3};
    SendInsertion("c:_bInsert", "DESK 1", point);
    // LINE waits for a point, and gets what was sent.
    host.runText("LINE\n");
    EXPECT_EQ(lisp("got"), "(\"DESK 1\" (1.0 2.0 3.0))");
    EXPECT_EQ(entityCount(), 0U);
}

TEST_F(HostHelpersTest, SendsNothingToNoDrawing) {
    host.documents().closeDocument(&document());
    SendToCommandLine("(setq got 1) ");
    host.pump();
    EXPECT_EQ(output.find("got"), std::string::npos);
}

} // namespace
