// The edit control in real modal dialogs, and its menu.
#include "control_fixture.h"
#include "platform/win32/user/template_builder.h"
#include "win32/button.h"
#include "win32/dialog.h"
#include "win32/edit.h"
#include "win32/user_script.h"

namespace vndk::win32 {
namespace {

using namespace test;

constexpr int editId = 1000;
constexpr int dialogSteps = 5; // turns of the dialog's loop until everything that a key has caused has come

struct Outcome {
    std::vector<int> clicked; // ids of WM_COMMAND with BN_CLICKED
    bool closed = false;      // WM_CLOSE
    int focus = 0;
    std::string text;
};

/// What one key press in the edit control of a dialog leads to.
struct KeyCase {
    int key = 0;
    Outcome outcome;
    int step = 0;
};

INT_PTR CALLBACK keyDialog(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* given = reinterpret_cast<KeyCase*>(GetWindowLongPtr(dialog, DWL_USER));
    switch (message) {
    case WM_INITDIALOG:
        SetWindowLongPtr(dialog, DWL_USER, lParam);
        PostMessage(GetDlgItem(dialog, editId), WM_KEYDOWN,
                    static_cast<WPARAM>(reinterpret_cast<KeyCase*>(lParam)->key), 1);
        PostMessage(dialog, WM_APP, 0, 0);
        return TRUE;
    case WM_COMMAND:
        if (given != nullptr && HIWORD(wParam) == BN_CLICKED)
            given->outcome.clicked.push_back(LOWORD(wParam));
        return TRUE;
    case WM_CLOSE:
        given->outcome.closed = true;
        return TRUE;
    case WM_APP: {
        if (++given->step < dialogSteps) {
            PostMessage(dialog, WM_APP, 0, 0);
            return TRUE;
        }
        given->outcome.focus = GetDlgCtrlID(GetFocus());
        char text[64] = "";
        GetDlgItemText(dialog, editId, text, sizeof text);
        given->outcome.text = text;
        EndDialog(dialog, 1);
        return TRUE;
    }
    default:
        return FALSE;
    }
}

class EditDialogTest : public ControlFixture {
protected:
    Outcome press(DWORD editStyle, int key) {
        const auto bytes = DialogBuilder()
                               .control("Edit", "ab", editStyle | WS_TABSTOP, editId, {80, 14})
                               .control("Button", "OK", BS_DEFPUSHBUTTON | WS_TABSTOP, IDOK)
                               .control("Button", "Cancel", BS_PUSHBUTTON | WS_TABSTOP, IDCANCEL)
                               .bytes();
        KeyCase given{key, {}, 0};
        EXPECT_EQ(DialogBoxIndirectParam(nullptr, reinterpret_cast<const DLGTEMPLATE*>(bytes.data()), nullptr,
                                         keyDialog, reinterpret_cast<LPARAM>(&given)),
                  1);
        return given.outcome;
    }
};

TEST_F(EditDialogTest, KeysOfTheDialogReachItFromTheEditControl) {
    constexpr DWORD many = ES_MULTILINE | ES_AUTOVSCROLL;
    struct Row {
        const char* name;
        DWORD style;
        int key;
        std::vector<int> clicked;
        bool closed;
        int focus;
        const char* text;
    };
    const Row rows[] = {
        {"Escape in one line", 0, VK_ESCAPE, {IDCANCEL}, false, editId, "ab"},
        {"Return in one line", 0, VK_RETURN, {IDOK}, false, editId, "ab"},
        {"Return in one line that wants it", ES_WANTRETURN, VK_RETURN, {IDOK}, false, editId, "ab"},
        {"Tab in one line", 0, VK_TAB, {}, false, IDOK, "ab"},
        {"Escape in many lines", many, VK_ESCAPE, {}, true, editId, "ab"},
        {"Escape in many read-only lines", many | ES_READONLY, VK_ESCAPE, {}, true, editId, "ab"},
        {"Return in many lines", many, VK_RETURN, {IDOK}, false, IDOK, "ab"},
        {"Return in many read-only lines", many | ES_READONLY, VK_RETURN, {IDOK}, false, IDOK, "ab"},
        {"Return in many lines that want it", many | ES_WANTRETURN, VK_RETURN, {}, false, editId, "\r\n"},
        {"Tab in many lines", many, VK_TAB, {}, false, IDOK, "ab"},
    };
    for (const Row& row : rows) {
        const Outcome outcome = press(row.style, row.key);
        EXPECT_EQ(outcome.clicked, row.clicked) << row.name;
        EXPECT_EQ(outcome.closed, row.closed) << row.name;
        EXPECT_EQ(outcome.focus, row.focus) << row.name;
        // The dialog selects the text of the control that gets the focus.
        EXPECT_EQ(outcome.text, row.text) << row.name;
    }
}

TEST_F(EditDialogTest, MenuOffersWhatCanBeDone) {
    const HWND edit = make("EDIT", ES_AUTOHSCROLL, 10, 10, 200, 20, "some text");
    UserScript script(screen);
    script.inWindow(owner).rightClick(controlId).pick({"Select All"});
    script.rightClick(controlId).pick({"Cut"});
    EXPECT_TRUE(script.finish()) << script.failure();
    EXPECT_EQ(textOf(edit), "");
    EXPECT_TRUE(IsClipboardFormatAvailable(CF_TEXT));
    UserScript again(screen);
    again.inWindow(owner).rightClick(controlId).pick({"Undo"});
    EXPECT_TRUE(again.finish()) << again.failure();
    EXPECT_EQ(textOf(edit), "some text");
    UserScript more(screen);
    more.inWindow(owner).rightClick(controlId).pick({"Delete"});
    more.rightClick(controlId).pick({"Paste"});
    more.rightClick(controlId).pick({"Paste"});
    EXPECT_TRUE(more.finish()) << more.failure();
    EXPECT_EQ(textOf(edit), "some textsome text");
}

} // namespace
} // namespace vndk::win32
