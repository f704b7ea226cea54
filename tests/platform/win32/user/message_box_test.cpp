// Message boxes.
#include "dialog_fixture.h"
#include "win32/memory.h"
#include "win32/menu.h"
#include "win32/messagebox.h"
#include "win32/user_script.h"

namespace {

using namespace vndk::test;
using namespace vndk::win32;

class MessageBoxTest : public DialogFixture {
protected:
    static HWND box() { return FindWindow("#32770", nullptr); }
    int show(UINT kind, HWND owner = nullptr, LPCSTR text = "text") {
        const int result = MessageBox(owner, text, "title", kind);
        EXPECT_TRUE(script.finish()) << script.failure();
        return result;
    }

    UserScript script{screen};
};

TEST_F(MessageBoxTest, EveryKindHasItsButtons) {
    struct Case {
        UINT kind;
        std::vector<int> ids;
    };
    const Case cases[] = {
        {MB_OK, {IDOK}},
        {MB_OKCANCEL, {IDOK, IDCANCEL}},
        {MB_ABORTRETRYIGNORE, {IDABORT, IDRETRY, IDIGNORE}},
        {MB_YESNOCANCEL, {IDYES, IDNO, IDCANCEL}},
        {MB_YESNO, {IDYES, IDNO}},
        {MB_RETRYCANCEL, {IDRETRY, IDCANCEL}},
    };
    for (const Case& each : cases) {
        for (const int id : each.ids) {
            script.in("title").click(id);
            EXPECT_EQ(show(each.kind), id) << "kind " << each.kind;
        }
        int buttons = 0;
        script.call([&] {
            for (HWND child = GetWindow(box(), GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
                buttons += (SendMessage(child, WM_GETDLGCODE, 0, 0) & DLGC_BUTTON) != 0 ? 1 : 0;
        });
        script.in("title").click(each.ids.front());
        show(each.kind);
        EXPECT_EQ(buttons, static_cast<int>(each.ids.size())) << "kind " << each.kind;
    }
}

TEST_F(MessageBoxTest, KeysAnswer) {
    struct Case {
        const char* name;
        UINT kind;
        int key;
        int answer;
    };
    const Case cases[] = {
        {"Enter", MB_YESNO, VK_RETURN, IDYES},
        {"Enter on the second button", MB_YESNO | MB_DEFBUTTON2, VK_RETURN, IDNO},
        {"Enter on a button that isn't there", MB_YESNO | MB_DEFBUTTON4, VK_RETURN, IDYES},
        {"Escape with Cancel", MB_RETRYCANCEL, VK_ESCAPE, IDCANCEL},
        {"Escape with OK alone", MB_OK, VK_ESCAPE, IDOK},
        {"letter", MB_YESNO, 'N', IDNO},
    };
    for (const Case& each : cases) {
        script.press(each.key);
        EXPECT_EQ(show(each.kind), each.answer) << each.name;
    }
}

TEST_F(MessageBoxTest, WithoutCancelItCannotBeClosed) {
    script.press(VK_ESCAPE);
    script.call([] {
        EXPECT_NE(GetMenuState(GetSystemMenu(box(), FALSE), SC_CLOSE, MF_BYCOMMAND) & MF_GRAYED, 0U);
        PostMessage(box(), WM_CLOSE, 0, 0);
    });
    script.pause(50).in("title").click(IDYES);
    EXPECT_EQ(show(MB_YESNO), IDYES);
}

TEST_F(MessageBoxTest, StandsInTheMiddleOfItsOwner) {
    const HWND owner = createOwner();
    bool disabled = false;
    RECT place{};
    script.call([&] {
        disabled = IsWindowEnabled(owner) == FALSE;
        place = windowRect(box());
    });
    script.press(VK_RETURN);
    show(MB_OK, owner);
    const RECT around = windowRect(owner);
    EXPECT_NEAR(place.left + place.right, around.left + around.right, 1);
    EXPECT_NEAR(place.top + place.bottom, around.top + around.bottom, 1);
    EXPECT_TRUE(disabled);
    EXPECT_TRUE(IsWindowEnabled(owner));
}

TEST_F(MessageBoxTest, LongTextIsWrappedAndAllOfItShown) {
    std::string text;
    for (int i = 0; i < 60; ++i)
        text += "several words ";
    RECT boxPlace{};
    RECT textPlace{};
    script.call([&] {
        boxPlace = windowRect(box());
        textPlace = windowRect(GetDlgItem(box(), 0xFFFF));
    });
    script.press(VK_RETURN);
    show(MB_OK | MB_ICONQUESTION, nullptr, text.c_str());
    EXPECT_LE(boxPlace.right - boxPlace.left, screenWidth);
    EXPECT_GT(textPlace.bottom - textPlace.top, 40) << "several lines";
    EXPECT_LT(textPlace.bottom, boxPlace.bottom);
}

TEST_F(MessageBoxTest, ControlCCopiesWhatItSays) {
    script.press('C', {.control = true}).press(VK_ESCAPE);
    MessageBox(nullptr, "Save it?", "Drawing", MB_YESNOCANCEL);
    EXPECT_TRUE(script.finish());
    const std::string line = "---------------------------\n";
    EXPECT_EQ(screen.clipboardText(),
              line + "Drawing\n" + line + "Save it?\n" + line + "Yes   No   Cancel   \n" + line);
}

TEST_F(MessageBoxTest, HelpIsAskedOfTheOwner) {
    const HWND owner = createOwner();
    MessageRecorder recorder;
    recorder.watch(owner);
    script.in("title").click(IDHELP);
    script.expect("it stays", [] { return box() != nullptr; });
    script.press(VK_ESCAPE);
    EXPECT_EQ(show(MB_OKCANCEL | MB_HELP, owner), IDCANCEL);
    EXPECT_EQ(recorder.count(WM_HELP), 1);
}

TEST_F(MessageBoxTest, NonsenseIsRefused) {
    EXPECT_EQ(MessageBox(nullptr, "x", "y", 0xF), 0);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    const HWND dead = createOwner();
    DestroyWindow(dead);
    EXPECT_EQ(MessageBox(dead, "x", "y", MB_OK), 0);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
    std::string title;
    script.call([&] {
        char text[20];
        GetWindowText(box(), text, sizeof text);
        title = text;
    });
    script.press(VK_RETURN);
    EXPECT_EQ(MessageBox(nullptr, nullptr, nullptr, MB_OK), IDOK);
    EXPECT_EQ(title, "Error");
    PostQuitMessage(0);
    EXPECT_EQ(MessageBox(nullptr, "x", "y", MB_OK), 0);
}

} // namespace
