// Dialogs from their creation to their end, and which control has the focus.
#include "dialog_fixture.h"
#include "win32/draw.h"
#include "win32/gdi.h"

#include <algorithm>

namespace {

using namespace vndk::test;
using namespace vndk::win32;

class DialogTest : public DialogFixture {
protected:
    static DialogBuilder threeEdits() {
        return DialogBuilder(WS_POPUP | WS_VISIBLE)
            .control("Edit", "one", WS_TABSTOP, 101)
            .control("Edit", "two", WS_TABSTOP, 102)
            .control("Edit", "three", WS_TABSTOP, 103);
    }
};

TEST_F(DialogTest, ProcedureHearsOfTheFontAndThenOfTheWholeDialog) {
    static std::vector<UINT> seen;
    seen.clear();
    static int controlsAtInit = 0;
    const auto bytesOf = DialogBuilder(WS_POPUP | WS_VISIBLE)
                             .font(8, "MS Sans Serif")
                             .control("Edit", "", WS_TABSTOP, 101)
                             .control("Button", "", WS_TABSTOP, 102)
                             .bytes();
    const DLGPROC procedure = [](HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) -> INT_PTR {
        seen.push_back(message);
        if (message != WM_INITDIALOG)
            return FALSE;
        EXPECT_EQ(reinterpret_cast<HWND>(wParam), GetDlgItem(dialog, 101)) << "the first tab stop";
        EXPECT_EQ(lParam, 77);
        EXPECT_FALSE(IsWindowVisible(dialog));
        EXPECT_EQ(SendDlgItemMessage(dialog, 102, WM_GETFONT, 0, 0), SendMessage(dialog, WM_GETFONT, 0, 0));
        controlsAtInit = GetDlgItem(dialog, 102) != nullptr ? 2 : 1;
        return TRUE;
    };
    const HWND dialog = createDialog(nullptr, bytesOf, nullptr, procedure, 77);
    ASSERT_NE(dialog, nullptr);
    ASSERT_GE(seen.size(), 2U);
    EXPECT_EQ(seen[0], WM_SETFONT);
    const auto init = std::find(seen.begin(), seen.end(), WM_INITDIALOG);
    ASSERT_NE(init, seen.end());
    EXPECT_EQ(std::find(seen.begin(), init, WM_SHOWWINDOW), init) << "shown only afterwards";
    EXPECT_EQ(controlsAtInit, 2);
    EXPECT_TRUE(IsWindowVisible(dialog));
    EXPECT_EQ(focusId(), 101);
    DestroyWindow(dialog);
}

TEST_F(DialogTest, WindowHearsItsSizeBeforeItIsInitialized) {
    static std::vector<UINT> seen;
    seen.clear();
    WNDCLASSA own{};
    own.lpszClassName = "OwnDialog";
    own.cbWndExtra = DLGWINDOWEXTRA;
    own.lpfnWndProc = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
        seen.push_back(message);
        return DefDlgProc(window, message, wParam, lParam);
    };
    RegisterClass(&own);
    const HWND dialog = create(DialogBuilder(WS_POPUP).className("OwnDialog").control("Button", "", 0, 1));
    ASSERT_NE(dialog, nullptr);
    const auto size = std::find(seen.begin(), seen.end(), WM_SIZE);
    const auto init = std::find(seen.begin(), seen.end(), WM_INITDIALOG);
    ASSERT_NE(size, seen.end());
    ASSERT_NE(init, seen.end());
    EXPECT_LT(size - seen.begin(), init - seen.begin());
}

// ---- First focus ---------------------------------------------------------------------------------------------------

TEST_F(DialogTest, FocusGoesToTheFirstControlThatCanTakeIt) {
    struct Case {
        const char* name;
        DialogBuilder builder;
        int focus;
    };
    const DialogBuilder plain(WS_POPUP | WS_VISIBLE);
    const Case cases[] = {
        {"label and edit", DialogBuilder(plain).control("Static", "&Name", 0, 1).control("Edit", "", WS_TABSTOP, 2), 2},
        {"disabled one first",
         DialogBuilder(plain).control("Edit", "", WS_TABSTOP | WS_DISABLED, 1).control("Edit", "", WS_TABSTOP, 2), 2},
        {"hidden one first",
         DialogBuilder(plain).control("Edit", "", WS_TABSTOP, 1).without(WS_VISIBLE).control("Edit", "", WS_TABSTOP, 2),
         2},
        {"no tab stop at all", DialogBuilder(plain).control("Static", "label", 0, 1).control("Button", "", 0, 2), 1},
    };
    for (const Case& each : cases) {
        const HWND dialog = create(each.builder);
        ASSERT_NE(dialog, nullptr) << each.name;
        EXPECT_EQ(focusId(), each.focus) << each.name;
        DestroyWindow(dialog);
    }
}

TEST_F(DialogTest, CheckedRadioButtonTakesTheFocusForItsGroup) {
    create(DialogBuilder(WS_POPUP | WS_VISIBLE)
               .control("Button", "a", WS_TABSTOP | WS_GROUP | BS_AUTORADIOBUTTON, 1)
               .control("Button", "b", WS_TABSTOP | BS_AUTORADIOBUTTON, 2),
           nullptr, [](HWND dialog, UINT message, WPARAM, LPARAM) -> INT_PTR {
               if (message != WM_INITDIALOG)
                   return FALSE;
               CheckDlgButton(dialog, 2, BST_CHECKED);
               return TRUE;
           });
    EXPECT_EQ(focusId(), 2);
}

TEST_F(DialogTest, FocusStaysWhereInitDialogPutItWhenItAnswersFalse) {
    create(threeEdits(), nullptr, [](HWND dialog, UINT message, WPARAM, LPARAM) -> INT_PTR {
        if (message == WM_INITDIALOG)
            SetFocus(GetDlgItem(dialog, 103));
        return FALSE;
    });
    EXPECT_EQ(focusId(), 103);
}

TEST_F(DialogTest, FirstEditHasAllOfItsTextSelected) {
    const HWND dialog = create(threeEdits());
    DWORD begin = 9;
    DWORD end = 9;
    SendDlgItemMessage(dialog, 101, EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(begin, 0U);
    EXPECT_EQ(end, 3U);
}

// ---- Focus kept ----------------------------------------------------------------------------------------------------

TEST_F(DialogTest, ActivationBringsTheFocusBackToWhereItWas) {
    const HWND dialog = create(threeEdits());
    SetFocus(GetDlgItem(dialog, 102));
    SendMessage(dialog, WM_ACTIVATE, WA_INACTIVE, 0);
    SetFocus(nullptr);
    SendMessage(dialog, WM_ACTIVATE, WA_ACTIVE, 0);
    EXPECT_EQ(focusId(), 102);
}

TEST_F(DialogTest, FocusComesBackAfterAnotherWindowWasActive) {
    const HWND other = createOwner();
    const HWND dialog = create(threeEdits());
    SetFocus(GetDlgItem(dialog, 103));
    SetActiveWindow(other);
    EXPECT_EQ(GetFocus(), other);
    SetActiveWindow(dialog);
    EXPECT_EQ(focusId(), 103);
}

TEST_F(DialogTest, FocusGivenToTheDialogItselfGoesToItsFirstControl) {
    const HWND dialog = create(threeEdits());
    SetFocus(GetDlgItem(dialog, 102));
    SetFocus(dialog);
    EXPECT_EQ(focusId(), 101);
}

TEST_F(DialogTest, NoFocusIsRestoredToWhatCannotTakeIt) {
    const HWND dialog = create(threeEdits());
    SetFocus(GetDlgItem(dialog, 102));
    SendMessage(dialog, WM_ACTIVATE, WA_INACTIVE, 0);
    EnableWindow(GetDlgItem(dialog, 102), FALSE);
    SendMessage(dialog, WM_ACTIVATE, WA_ACTIVE, 0);
    EXPECT_EQ(focusId(), 101);
}

// ---- The dialog's own messages -------------------------------------------------------------------------------------

TEST_F(DialogTest, ResultOfAMessageIsWhatTheProcedureLeft) {
    const HWND dialog =
        create(DialogBuilder(WS_POPUP), nullptr, [](HWND window, UINT message, WPARAM, LPARAM) -> INT_PTR {
            if (message == WM_APP) {
                SetWindowLongPtr(window, DWL_MSGRESULT, 4711);
                return TRUE;
            }
            return message == WM_CTLCOLORDLG || message == WM_COMPAREITEM ? 12 : 0;
        });
    EXPECT_EQ(SendMessage(dialog, WM_APP, 0, 0), 4711);
    EXPECT_EQ(SendMessage(dialog, WM_APP + 1, 0, 0), 0);
    EXPECT_EQ(SendMessage(dialog, WM_COMPAREITEM, 0, 0), 12) << "such messages answer directly";
    EXPECT_EQ(SendMessage(dialog, WM_CTLCOLORDLG, 0, 0), 12);
}

TEST_F(DialogTest, DefaultIdIsTheDefaultButtonsUntilOneIsSet) {
    const HWND dialog = create(DialogBuilder(WS_POPUP)
                                   .control("Edit", "", WS_TABSTOP, 100)
                                   .control("Button", "OK", WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK)
                                   .control("Button", "Cancel", WS_TABSTOP, IDCANCEL));
    EXPECT_EQ(SendMessage(dialog, DM_GETDEFID, 0, 0), MAKELRESULT(IDOK, DC_HASDEFID));
    EXPECT_EQ(SendMessage(dialog, DM_SETDEFID, IDCANCEL, 0), TRUE);
    EXPECT_EQ(SendMessage(dialog, DM_GETDEFID, 0, 0), MAKELRESULT(IDCANCEL, DC_HASDEFID));
    EXPECT_TRUE(looksDefault(dialog, IDCANCEL));
    EXPECT_FALSE(looksDefault(dialog, IDOK));
    EXPECT_EQ(SendMessage(create(DialogBuilder(WS_POPUP)), DM_GETDEFID, 0, 0), 0) << "no button, no default";
}

TEST_F(DialogTest, OnlyOneButtonIsTheDefaultOne) {
    const HWND dialog = create(DialogBuilder(WS_POPUP)
                                   .control("Button", "a", WS_TABSTOP | BS_DEFPUSHBUTTON, 11)
                                   .control("Button", "b", WS_TABSTOP | BS_DEFPUSHBUTTON, 12));
    EXPECT_EQ(LOWORD(SendMessage(dialog, DM_GETDEFID, 0, 0)), 12);
    EXPECT_FALSE(looksDefault(dialog, 11) && looksDefault(dialog, 12));
}

TEST_F(DialogTest, NextControlGoesRoundAndLeavesTheDefaultIdAlone) {
    const HWND dialog = create(DialogBuilder(WS_POPUP | WS_VISIBLE)
                                   .control("Edit", "", WS_TABSTOP, 100)
                                   .control("Button", "1", WS_TABSTOP, 101)
                                   .control("Button", "2", WS_TABSTOP, IDCANCEL));
    SendMessage(dialog, DM_SETDEFID, IDCANCEL, 0);
    SetFocus(GetDlgItem(dialog, IDCANCEL));
    SendMessage(dialog, WM_NEXTDLGCTL, 0, 0);
    EXPECT_EQ(focusId(), 100);
    EXPECT_EQ(SendMessage(dialog, DM_GETDEFID, 0, 0), MAKELRESULT(IDCANCEL, DC_HASDEFID));
    SendMessage(dialog, WM_NEXTDLGCTL, 1, 0);
    EXPECT_EQ(focusId(), IDCANCEL);
    SendMessage(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog, 101)), TRUE);
    EXPECT_EQ(focusId(), 101);
    EXPECT_TRUE(looksDefault(dialog, 101)) << "the button with the focus";
    EXPECT_FALSE(looksDefault(dialog, IDCANCEL));
    SendMessage(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog, 100)), TRUE);
    EXPECT_TRUE(looksDefault(dialog, IDCANCEL)) << "and back";
}

TEST_F(DialogTest, CloseAsksForCancelUnlessThatIsDisabled) {
    for (const bool disabled : {false, true}) {
        std::vector<WPARAM> commands;
        const HWND dialog =
            create(DialogBuilder(WS_POPUP | WS_VISIBLE)
                       .control("Button", "Cancel", WS_TABSTOP | (disabled ? WS_DISABLED : 0U), IDCANCEL),
                   nullptr, [&](HWND, UINT message, WPARAM wParam, LPARAM) -> INT_PTR {
                       if (message == WM_COMMAND)
                           commands.push_back(wParam);
                       return FALSE;
                   });
        SendMessage(dialog, WM_CLOSE, 0, 0);
        EXPECT_TRUE(commands.empty()) << "posted, not sent";
        settle();
        EXPECT_EQ(commands.size(), disabled ? 0U : 1U);
        EXPECT_EQ(screen.beeps(), disabled ? 1 : 0);
        DestroyWindow(dialog);
    }
}

TEST_F(DialogTest, RepositionBringsTheDialogIntoTheScreen) {
    const HWND dialog = create(DialogBuilder(WS_POPUP));
    SetWindowPos(dialog, nullptr, screenWidth - 20, -30, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    SendMessage(dialog, DM_REPOSITION, 0, 0);
    EXPECT_EQ(windowRect(dialog).right, screenWidth);
    EXPECT_EQ(windowRect(dialog).top, 0);
}

TEST_F(DialogTest, BackgroundIsPaintedWithTheBrushOfTheProcedure) {
    const HBRUSH brush = CreateSolidBrush(RGB(10, 200, 30));
    const HWND dialog = create(DialogBuilder(WS_POPUP | WS_VISIBLE), nullptr, [&](HWND, UINT message, WPARAM, LPARAM) {
        return message == WM_CTLCOLORDLG ? reinterpret_cast<INT_PTR>(brush) : INT_PTR{0};
    });
    settle();
    const POINT point = onScreen(dialog, 20, 20);
    EXPECT_EQ(pixel(point.x, point.y), 0x0AC81EU);
    DestroyWindow(dialog);
    DeleteObject(brush);
}

// ---- Ends ----------------------------------------------------------------------------------------------------------

TEST_F(DialogTest, EndDialogOnlyHidesAModelessDialog) {
    const HWND owner = createOwner();
    const HWND dialog = create(threeEdits(), owner);
    ASSERT_EQ(GetActiveWindow(), dialog);
    EXPECT_TRUE(EndDialog(dialog, 5));
    EXPECT_TRUE(IsWindow(dialog));
    EXPECT_FALSE(IsWindowVisible(dialog));
    EXPECT_EQ(GetActiveWindow(), owner);
    EXPECT_EQ(GetFocus(), owner);
    EXPECT_FALSE(EndDialog(owner, 5)) << "no dialog";
    EXPECT_FALSE(EndDialog(nullptr, 5));
}

TEST_F(DialogTest, DialogMayBeDestroyedByAnyOfItsMessages) {
    for (const UINT when : {WM_SETFONT, WM_INITDIALOG, WM_CTLCOLORBTN, WM_SHOWWINDOW, WM_ACTIVATE, WM_ERASEBKGND}) {
        static UINT deadly;
        deadly = when;
        const auto bytesOf = DialogBuilder(WS_POPUP | WS_VISIBLE)
                                 .font(8, "MS Sans Serif")
                                 .control("Button", "a", WS_TABSTOP | BS_DEFPUSHBUTTON, 1)
                                 .control("Edit", "b", WS_TABSTOP, 2)
                                 .bytes();
        const DLGPROC procedure = [](HWND dialog, UINT message, WPARAM, LPARAM) -> INT_PTR {
            if (message == deadly)
                DestroyWindow(dialog);
            return message != WM_PAINT; // whoever takes that one has to paint, or it comes for ever
        };
        const HWND dialog = createDialog(nullptr, bytesOf, nullptr, procedure, 0);
        settle();
        if (dialog != nullptr && IsWindow(dialog) != FALSE)
            DestroyWindow(dialog);
        EXPECT_EQ(GetTopWindow(nullptr), nullptr) << nameOfMessage(when);
    }
}

TEST_F(DialogTest, DeadOwnerMakesNoDialog) {
    const HWND owner = createOwner();
    DestroyWindow(owner);
    EXPECT_EQ(create(DialogBuilder(), owner), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
}

} // namespace
