// The line where commands are typed, and what reaches it.
#include "frame_fixture.h"

#include "ui/canvas.h"
#include "ui/command_window.h"
#include "ui/status_line.h"
#include "ui/text_window.h"

namespace {

using vndk::host::AnswerForm;
using vndk::test::FrameFixture;
using vndk::win32::UserScript;

class CommandWindowTest : public FrameFixture {
protected:
    void paste(const std::string& text) {
        screen.setClipboardText(text);
        user().press('V', {.control = true});
    }
    HWND promptLabel() { return GetDlgItem(frame_.commandWindow().m_hWnd, 1002); }
    std::string promptText() {
        char text[256];
        GetWindowTextA(promptLabel(), text, sizeof text);
        return text;
    }
};

TEST_F(CommandWindowTest, BlanksAndLinesEndAnswers) {
    user().type("LINE 0,0 10,0  CIRCLE 5,5\n2\n");
    play();
    EXPECT_EQ(entityCount(), 2U);
    EXPECT_NE(history().find("Command: CIRCLE\n"), std::string::npos) << history();
    EXPECT_EQ(promptText(), "Command:");
}

TEST_F(CommandWindowTest, WhatWasSaidLastIsInSightWhenACommandIsWaitedFor) {
    host_.print("\nType HELP.");
    user().call([this] {
        char shown[1000];
        GetDlgItemTextA(frame_.commandWindow().m_hWnd, 1001, shown, sizeof shown);
        EXPECT_TRUE(std::string_view(shown).ends_with("Type HELP.")) << shown;
    });
    play();
}

TEST_F(CommandWindowTest, ABlankRepeatsTheLastCommand) {
    user().type("CIRCLE 5,5 2  9,9 1\n");
    play();
    EXPECT_EQ(entityCount(), 2U);
}

TEST_F(CommandWindowTest, BlanksBelongToTextsAndExpressions) {
    user().type("TEXT 0,0 2 0 two words\n\n");
    user().type("(setq a (strcat \"one \" \"two\"))\n(strlen a) ");
    play();
    EXPECT_EQ(entityCount(), 1U);
    EXPECT_NE(history().find("two words"), std::string::npos) << history();
    EXPECT_NE(history().find("\n7\n"), std::string::npos) << history();
}

TEST_F(CommandWindowTest, ShowsThePromptBeforeTheLineAndNotTwice) {
    std::string shown;
    user().type("CIRCLE ").call([&] {
        shown = promptText();
        CString inControl;
        CWnd::FromHandle(GetDlgItem(frame_.commandWindow().m_hWnd, 1001))->GetWindowText(inControl);
        EXPECT_EQ(std::string(inControl.View()).find("Specify center"), std::string::npos);
    });
    user().press(VK_ESCAPE);
    play();
    EXPECT_NE(shown.find("Specify center point"), std::string::npos) << shown;
    EXPECT_NE(history().find("*Cancel*"), std::string::npos) << history();
    EXPECT_EQ(entityCount(), 0U);
}

TEST_F(CommandWindowTest, LongPromptsLeaveRoomToType) {
    frame_.commandWindow().showPrompt("\n" + std::string(500, 'W') + " <end>: ", AnswerForm::Line);
    EXPECT_TRUE(promptText().ends_with(" <end>: ")) << promptText();
    const RECT label = windowRect(promptLabel()), line = windowRect(frame_.commandWindow().line().m_hWnd);
    EXPECT_LE(label.right, line.left);
    EXPECT_GE(line.right - line.left, screenWidth / 3);
}

TEST_F(CommandWindowTest, RecallsLines) {
    user().type("SETVAR\nORTHOMODE\n1\n").press(VK_UP).press(VK_UP);
    user().expect("the line before the last", [this] { return lineText() == "ORTHOMODE"; });
    user().press(VK_DOWN).expect("the last line", [this] { return lineText() == "1"; });
    user().press(VK_DOWN).expect("an empty line", [this] { return lineText().empty(); });
    play();
}

TEST_F(CommandWindowTest, CompletesNames) {
    user().type("circ").press(VK_TAB).expect("the name", [this] { return lineText() == "CIRCLE"; });
    user().press(VK_ESCAPE).type("-in").press(VK_TAB);
    user().expect("its name with a dash", [this] { return lineText() == "-INSERT"; });
    user().press(VK_ESCAPE);
    play();
}

TEST_F(CommandWindowTest, RunsAllPastedLinesButTheLast) {
    paste("CIRCLE\n5,5\n2\nLINE 0,0 1,1\n\nCIRC");
    user().expect("the last line waits", [this] { return lineText() == "CIRC"; });
    user().type("LE 1,1 1\n");
    play();
    EXPECT_EQ(entityCount(), 3U);
}

TEST_F(CommandWindowTest, PastesIntoWhatIsTyped) {
    user().type("CIE").press(VK_LEFT);
    paste("RCL");
    user().expect("one word", [this] { return lineText() == "CIRCLE"; });
    user().press(VK_ESCAPE);
    play();
    EXPECT_TRUE(lineText().empty());
}

TEST_F(CommandWindowTest, TypingAnywhereReachesTheLine) {
    user().call([this] { frame_.canvas().SetFocus(); }).type("LINE 0,0 1,0\n\n");
    user().call([this] { frame_.statusLine().SetFocus(); }).type("CIRCLE 5,5 2\n");
    play();
    EXPECT_EQ(entityCount(), 2U);
}

TEST_F(CommandWindowTest, SentTextRunsWhileAPromptWaits) {
    user().type("CIRCLE ");
    user().call(
        [this] { host_.documents().sendStringToExecute(&document(), "\x1b\x1b(setq b 42) ", false, true, false); });
    user().expect("the expression has run", [this] { return history().find("\n42\n") != std::string::npos; });
    play();
    EXPECT_EQ(entityCount(), 0U);
}

TEST_F(CommandWindowTest, SentTextRunsWhenNothingElseHappens) {
    user().call([this] { host_.documents().sendStringToExecute(&document(), "CIRCLE 1,1 1 ", true); });
    user().expect("the circle", [this] { return entityCount() == 1; });
    play();
}

TEST_F(CommandWindowTest, TextWindowHasEverythingAndCopies) {
    user().type("SETVAR ORTHOMODE\n\n").press(VK_F2);
    user().expect("the window opens", [this] { return frame_.textWindow().isOpen(); });
    user().press('A', {.control = true}).press('C', {.control = true});
    user().expect("the text is in the clipboard",
                  [this] { return screen.clipboardText().find("Enter new value for ORTHOMODE") != std::string::npos; });
    // Typing there reaches the line, too, and what it does is seen at once.
    user().type("CIRCLE 1,1 1\n").expect("the circle", [this] { return entityCount() == 1; });
    user().press(VK_F2).expect("the window closes", [this] { return !frame_.textWindow().isOpen(); });
    play();
}

TEST_F(CommandWindowTest, HeightIsDraggedAndRemembered) {
    const RECT before = windowRect(frame_.commandWindow().m_hWnd);
    // The frame's menu lies above its client area.
    const POINT origin = onScreen(frame_.m_hWnd, 0, 0);
    user().drag(0, {300, before.top - 2 - origin.y}, {300, before.top - 62 - origin.y});
    play();
    const RECT after = windowRect(frame_.commandWindow().m_hWnd);
    EXPECT_EQ(after.bottom, before.bottom);
    EXPECT_EQ(after.bottom - after.top, before.bottom - before.top + 60);
    EXPECT_EQ(profile_.read("Window", "CommandHeight"), std::to_string(after.bottom - after.top));
}

} // namespace
