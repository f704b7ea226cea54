// Dialogs that are waited for.
#include "dialog_fixture.h"
#include "win32/resources.h"

namespace {

using namespace vndk::test;
using namespace vndk::win32;

class ModalTest : public DialogFixture {
protected:
    static DialogBuilder sample() {
        return DialogBuilder(WS_POPUP | WS_CAPTION | WS_SYSMENU)
            .control("Edit", "", WS_TABSTOP, 100)
            .control("Button", "OK", WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK)
            .control("Button", "Cancel", WS_TABSTOP, IDCANCEL);
    }
    /// Ends the dialog with the id of the button that is pressed.
    static INT_PTR endByButton(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
        if (message == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL))
            return EndDialog(dialog, LOWORD(wParam));
        return message == WM_INITDIALOG;
    }
};

TEST_F(ModalTest, KeysEndItWithTheirCommand) {
    user.key(VK_RETURN);
    EXPECT_EQ(runModal(sample(), nullptr, &endByButton), IDOK);
    user.key(VK_ESCAPE);
    EXPECT_EQ(runModal(sample(), nullptr, &endByButton), IDCANCEL);
    EXPECT_EQ(GetTopWindow(nullptr), nullptr);
}

TEST_F(ModalTest, IsShownWhenTheQueueIsEmptyForTheFirstTime) {
    bool visibleAtPosted = true;
    bool visibleAtIdle = false;
    const HWND owner = createOwner();
    MessageRecorder recorder;
    recorder.watch(owner);
    recorder.onMessage(WM_ENTERIDLE, [&](HWND, UINT, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        EXPECT_EQ(wParam, static_cast<WPARAM>(MSGF_DIALOGBOX));
        visibleAtIdle = IsWindowVisible(reinterpret_cast<HWND>(lParam)) != FALSE;
        EndDialog(reinterpret_cast<HWND>(lParam), 9);
        return 0;
    });
    const INT_PTR result = runModal(sample(), owner, [&](HWND dialog, UINT message, WPARAM, LPARAM) -> INT_PTR {
        if (message == WM_INITDIALOG)
            PostMessage(dialog, WM_APP, 0, 0);
        if (message == WM_APP)
            visibleAtPosted = (GetWindowLong(dialog, GWL_STYLE) & static_cast<LONG>(WS_VISIBLE)) != 0;
        return message == WM_INITDIALOG;
    });
    EXPECT_EQ(result, 9);
    EXPECT_FALSE(visibleAtPosted);
    EXPECT_TRUE(visibleAtIdle);
}

TEST_F(ModalTest, OwnerIsDisabledMeanwhileAndActiveAfterwards) {
    const HWND owner = createOwner();
    bool enabledInside = true;
    user.key(VK_RETURN);
    runModal(sample(), owner, [&](HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_INITDIALOG)
            enabledInside = IsWindowEnabled(owner) != FALSE;
        return endByButton(dialog, message, wParam, lParam);
    });
    EXPECT_FALSE(enabledInside);
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(GetActiveWindow(), owner);

    EnableWindow(owner, FALSE);
    user.key(VK_RETURN);
    runModal(sample(), owner, &endByButton);
    EXPECT_FALSE(IsWindowEnabled(owner)) << "what was disabled before stays so";
}

TEST_F(ModalTest, ChildGivenAsOwnerStandsForItsTopLevelWindow) {
    const HWND top = createOwner();
    const HWND child = CreateWindow("Static", "", WS_CHILD | WS_VISIBLE, 0, 0, 10, 10, top, nullptr, nullptr, nullptr);
    bool topEnabled = true;
    HWND owner = nullptr;
    user.key(VK_RETURN);
    runModal(sample(), child, [&](HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_INITDIALOG) {
            topEnabled = IsWindowEnabled(top) != FALSE;
            owner = GetWindow(dialog, GW_OWNER);
        }
        return endByButton(dialog, message, wParam, lParam);
    });
    EXPECT_FALSE(topEnabled);
    EXPECT_EQ(owner, top);
    EXPECT_TRUE(IsWindowEnabled(top));
}

TEST_F(ModalTest, FailuresHaveTheirResults) {
    const HWND dead = createOwner();
    DestroyWindow(dead);
    EXPECT_EQ(runModal(sample(), dead, nullptr), 0);
    EXPECT_EQ(DialogBoxParam(nullptr, MAKEINTRESOURCE(4), dead, nullptr, 0), 0);
    EXPECT_EQ(DialogBoxParam(nullptr, MAKEINTRESOURCE(4), nullptr, nullptr, 0), -1);
    EXPECT_EQ(DialogBoxIndirectParam(nullptr, nullptr, nullptr, nullptr, 0), -1);
    const HWND owner = createOwner();
    EXPECT_EQ(runModal(DialogBuilder().control("NoSuchClass", "", 0, 1), owner, nullptr), -1);
    EXPECT_TRUE(IsWindowEnabled(owner)) << "the owner isn't left disabled";
}

TEST_F(ModalTest, EndedInInitDialogItIsNeverShown) {
    bool shown = false;
    const INT_PTR result = runModal(sample(), createOwner(), [&](HWND dialog, UINT message, WPARAM wParam, LPARAM) {
        if (message == WM_INITDIALOG)
            EndDialog(dialog, 31);
        shown = shown || (message == WM_SHOWWINDOW && wParam != FALSE) || IsWindowVisible(dialog) != FALSE;
        return INT_PTR{message == WM_INITDIALOG};
    });
    EXPECT_EQ(result, 31);
    EXPECT_FALSE(shown);
}

TEST_F(ModalTest, CheckedRadioButtonHasTheFocus) {
    int focus = 0;
    runModal(DialogBuilder(WS_POPUP)
                 .control("Button", "a", WS_TABSTOP | WS_GROUP | BS_AUTORADIOBUTTON, 1)
                 .control("Button", "b", WS_TABSTOP | BS_AUTORADIOBUTTON, 2),
             nullptr, [&](HWND dialog, UINT message, WPARAM, LPARAM) -> INT_PTR {
                 if (message == WM_INITDIALOG) {
                     CheckDlgButton(dialog, 2, BST_CHECKED);
                     PostMessage(dialog, WM_APP, 0, 0);
                 }
                 if (message == WM_APP) {
                     focus = focusId();
                     EndDialog(dialog, 0);
                 }
                 return message == WM_INITDIALOG;
             });
    EXPECT_EQ(focus, 2);
}

TEST_F(ModalTest, OneInsideOfTheOther) {
    const HWND owner = createOwner();
    HWND outerDialog = nullptr;
    bool outerEnabledInside = true;
    const auto inner = sample().bytes();
    const INT_PTR result = runModal(sample(), owner, [&](HWND dialog, UINT message, WPARAM wParam, LPARAM) -> INT_PTR {
        if (message == WM_SHOWWINDOW && wParam != FALSE)
            PostMessage(dialog, WM_APP, 0, 0);
        if (message == WM_APP) {
            outerDialog = dialog;
            static const HWND* outer = nullptr;
            outer = &outerDialog;
            static bool* enabled = nullptr;
            enabled = &outerEnabledInside;
            user.key(VK_ESCAPE);
            const INT_PTR innerResult = DialogBoxIndirectParam(
                nullptr, reinterpret_cast<const DLGTEMPLATE*>(inner.data()), dialog,
                [](HWND innerDialog, UINT innerMessage, WPARAM wParam, LPARAM lParam) -> INT_PTR {
                    if (innerMessage == WM_INITDIALOG)
                        *enabled = IsWindowEnabled(*outer) != FALSE;
                    return endByButton(innerDialog, innerMessage, wParam, lParam);
                },
                0);
            EXPECT_EQ(innerResult, IDCANCEL);
            EXPECT_TRUE(IsWindowEnabled(dialog));
            EXPECT_FALSE(IsWindowEnabled(owner));
            EXPECT_EQ(GetActiveWindow(), dialog);
            EndDialog(dialog, 77);
        }
        return message == WM_INITDIALOG;
    });
    EXPECT_EQ(result, 77);
    EXPECT_FALSE(outerEnabledInside);
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(GetActiveWindow(), owner);
}

TEST_F(ModalTest, OwnerIsActiveAgainWhenADialogEndsBeforeItIsShown) {
    const HWND owner = createOwner();
    const auto inner = sample().bytes();
    HWND activeInside = nullptr;
    const INT_PTR result = runModal(sample(), owner, [&](HWND dialog, UINT message, WPARAM, LPARAM) -> INT_PTR {
        if (message == WM_INITDIALOG) {
            // As with a message box that tells why the dialog can't be used.
            user.key(VK_ESCAPE);
            DialogBoxIndirectParam(nullptr, reinterpret_cast<const DLGTEMPLATE*>(inner.data()), dialog, &endByButton,
                                   0);
            activeInside = GetActiveWindow();
            EndDialog(dialog, 5);
        }
        return message == WM_INITDIALOG;
    });
    EXPECT_EQ(result, 5);
    EXPECT_NE(activeInside, owner) << "it is disabled meanwhile";
    EXPECT_EQ(GetActiveWindow(), owner);
    EXPECT_EQ(GetFocus(), owner);
}

TEST_F(ModalTest, QuitMessageEndsItAndStaysInTheQueue) {
    const HWND owner = createOwner();
    runModal(sample(), owner, [&](HWND, UINT message, WPARAM, LPARAM) -> INT_PTR {
        if (message == WM_INITDIALOG)
            PostQuitMessage(13);
        return message == WM_INITDIALOG;
    });
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(GetTopWindow(nullptr), owner);
    MSG message{};
    while (PeekMessage(&message, nullptr, 0, 0, PM_REMOVE) != FALSE && message.message != WM_QUIT)
        DispatchMessage(&message);
    EXPECT_EQ(message.message, WM_QUIT);
    EXPECT_EQ(message.wParam, 13U);
}

TEST_F(ModalTest, EndsWhenItsWindowOrItsOwnerIsDestroyed) {
    for (const bool destroyOwner : {false, true}) {
        const HWND owner = createOwner();
        runModal(sample(), owner, [&](HWND dialog, UINT message, WPARAM, LPARAM) -> INT_PTR {
            if (message == WM_INITDIALOG)
                PostMessage(dialog, WM_APP, 0, 0);
            if (message == WM_APP)
                DestroyWindow(destroyOwner ? owner : dialog);
            return message == WM_INITDIALOG;
        });
        EXPECT_EQ(IsWindow(owner) != FALSE, !destroyOwner);
        if (!destroyOwner) {
            EXPECT_TRUE(IsWindowEnabled(owner));
            DestroyWindow(owner);
        }
    }
}

TEST_F(ModalTest, DestroyedInInitDialogItCountsAsNotMade) {
    EXPECT_EQ(runModal(sample(), createOwner(),
                       [](HWND dialog, UINT message, WPARAM, LPARAM) -> INT_PTR {
                           if (message == WM_INITDIALOG)
                               DestroyWindow(dialog);
                           return TRUE;
                       }),
              -1);
}

TEST_F(ModalTest, TimersDoNotKeepItHidden) {
    int ticks = 0;
    bool visible = false;
    runModal(sample(), nullptr, [&](HWND dialog, UINT message, WPARAM, LPARAM) -> INT_PTR {
        if (message == WM_INITDIALOG)
            SetTimer(dialog, 1, 10, nullptr);
        if (message == WM_TIMER && ++ticks == 3) {
            visible = IsWindowVisible(dialog) != FALSE;
            EndDialog(dialog, 0);
        }
        return message == WM_INITDIALOG;
    });
    EXPECT_TRUE(visible);
}

TEST_F(ModalTest, NoIdleMessageForDialogsThatWantNone) {
    const HWND owner = createOwner();
    MessageRecorder recorder;
    recorder.watch(owner);
    runModal(DialogBuilder(WS_POPUP | DS_NOIDLEMSG), owner, [&](HWND dialog, UINT message, WPARAM, LPARAM) -> INT_PTR {
        if (message == WM_INITDIALOG)
            SetTimer(dialog, 1, 50, nullptr);
        if (message == WM_TIMER)
            EndDialog(dialog, 0);
        return message == WM_INITDIALOG;
    });
    EXPECT_EQ(recorder.count(WM_ENTERIDLE), 0);
}

TEST_F(ModalTest, MultiLineEditTurnsEscapeIntoCloseAndEnterIntoTheDefaultButton) {
    std::vector<std::pair<UINT, WPARAM>> seen;
    const auto run = [&](DWORD style, int key) {
        seen.clear();
        user.key(key);
        runModal(DialogBuilder(WS_POPUP | WS_CAPTION | WS_SYSMENU)
                     .control("Edit", "", WS_TABSTOP | ES_MULTILINE | style, 100)
                     .control("Button", "OK", WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK),
                 nullptr, [&](HWND dialog, UINT message, WPARAM wParam, LPARAM) -> INT_PTR {
                     if (message == WM_INITDIALOG)
                         SetTimer(dialog, 1, 100, nullptr);
                     if (message == WM_CLOSE || (message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED))
                         seen.emplace_back(message, LOWORD(wParam));
                     if (message == WM_TIMER)
                         EndDialog(dialog, 0);
                     return message == WM_INITDIALOG || message == WM_CLOSE;
                 });
    };
    using Seen = std::vector<std::pair<UINT, WPARAM>>;
    for (const DWORD style : {0U, ES_READONLY}) {
        run(style, VK_ESCAPE);
        EXPECT_EQ(seen, (Seen{{WM_CLOSE, 0}})) << "style " << style;
    }
    run(0, VK_RETURN);
    EXPECT_EQ(seen, (Seen{{WM_COMMAND, IDOK}}));
    run(ES_WANTRETURN, VK_RETURN);
    EXPECT_EQ(seen, Seen{}) << "a new line";
}

} // namespace
