// The user made of steps.
#include "dialog_fixture.h"
#include "win32/menu.h"
#include "win32/user_script.h"

namespace {

using namespace vndk::test;
using namespace vndk::win32;

class UserScriptTest : public DialogFixture {
protected:
    static DialogBuilder sample() {
        return DialogBuilder(WS_POPUP | WS_CAPTION | WS_SYSMENU)
            .caption("Form")
            .size(150, 120)
            .control("Edit", "", WS_TABSTOP | ES_AUTOHSCROLL, 100)
            .control("Button", "OK", WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK)
            .control("Button", "Off", WS_TABSTOP | WS_DISABLED, 30)
            .control("Button", "Hidden", WS_TABSTOP, 31)
            .without(WS_VISIBLE);
    }
    INT_PTR runForm(std::string* typed = nullptr) {
        return runModal(sample(), nullptr, [typed](HWND dialog, UINT message, WPARAM wParam, LPARAM) -> INT_PTR {
            if (message == WM_COMMAND && (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL)) {
                char text[40];
                GetDlgItemText(dialog, 100, text, sizeof text);
                if (typed != nullptr)
                    *typed = text;
                EndDialog(dialog, LOWORD(wParam));
            }
            return message == WM_INITDIALOG;
        });
    }

    UserScript script{screen};
};

TEST_F(UserScriptTest, WorksInsideOfAModalDialog) {
    std::string typed;
    script.in("Form").click(100).type("Tür No. 7 (A)").click(IDOK);
    EXPECT_EQ(runForm(&typed), IDOK);
    EXPECT_TRUE(script.finish()) << script.failure();
    // The source is UTF-8; each of its bytes was typed as a character of its own.
    EXPECT_EQ(typed, "Tür No. 7 (A)");
}

TEST_F(UserScriptTest, StepThatCannotBeDoneEndsTheDialogAndIsNamed) {
    struct Case {
        const char* name;
        std::function<void(UserScript&)> steps;
        const char* wanted;
    };
    const Case cases[] = {
        {"no such control", [](UserScript& user) { user.in("Form").click(99); },
         "click on 99: control 99 of the window \"Form\" isn't there"},
        {"disabled", [](UserScript& user) { user.in("Form").click(30); },
         "click on 30: control 30 of the window \"Form\" is disabled"},
        {"hidden", [](UserScript& user) { user.in("Form").click(31); },
         "click on 31: control 31 of the window \"Form\" is hidden"},
        {"no such window", [](UserScript& user) { user.in("Other").click(IDOK); },
         "click on 1: the window \"Other\" isn't there"},
        {"no such item", [](UserScript& user) { user.in("Form").pick({"File"}); },
         "pick \"File\": no menu that is open has such an item"},
        {"condition", [](UserScript& user) { user.expect("rain", [] { return false; }); },
         "expect \"rain\": it didn't come true"},
    };
    for (const Case& each : cases) {
        UserScript failing(screen);
        const DWORD start = GetTickCount();
        each.steps(failing.patience(300));
        failing.click(IDOK); // is dropped
        EXPECT_NE(runForm(), IDOK) << each.name;
        EXPECT_FALSE(failing.finish()) << each.name;
        EXPECT_EQ(failing.failure(), each.wanted) << each.name;
        EXPECT_GE(GetTickCount() - start, 300U) << each.name << ": it was patient";
    }
}

TEST_F(UserScriptTest, CoveredControlsCannotBeClicked) {
    const HWND window = create(sample().without(0));
    ShowWindow(window, SW_SHOW);
    const RECT place = windowRect(window);
    WNDCLASSA plain{};
    plain.lpfnWndProc = &DefWindowProc;
    plain.lpszClassName = "Cover";
    RegisterClass(&plain);
    CreateWindow("Cover", "", WS_POPUP | WS_VISIBLE, place.left, place.top, place.right - place.left,
                 place.bottom - place.top, nullptr, nullptr, nullptr, nullptr);
    script.patience(100).inWindow(window).click(IDOK);
    EXPECT_FALSE(script.finish());
    EXPECT_NE(script.failure().find("is covered"), std::string::npos) << script.failure();
}

TEST_F(UserScriptTest, WaitsForWhatComesLater) {
    script.in("Form").waitForWindow().click(IDOK).waitUntilGone();
    static INT_PTR result = 0;
    static std::function<INT_PTR()> run;
    run = [this] { return runForm(); };
    SetTimer(nullptr, 0, 600, [](HWND, UINT, UINT_PTR id, DWORD) {
        KillTimer(nullptr, id);
        result = run();
    });
    EXPECT_TRUE(script.finish()) << script.failure();
    EXPECT_EQ(result, IDOK);
}

TEST_F(UserScriptTest, PlacesAreAskedForUntilTheyAreThere) {
    const HWND owner = createOwner();
    MessageRecorder recorder;
    recorder.watch(owner);
    recorder.clear();
    int asked = 0;
    const auto find = [&]() -> UserPlace {
        if (++asked < 3)
            return {.trouble = "it isn't there"};
        return {.window = owner, .point = {20, 30}};
    };
    script.clickPlace("the place", find, {.twice = true, .keys = {.control = true}})
        .clickPlace("the place", find, {.right = true})
        .dragPlace("the place", find, {10, 0})
        .wheelPlace("the place", find, -2);
    EXPECT_TRUE(script.finish()) << script.failure();
    EXPECT_EQ(asked, 6);
    std::vector<std::pair<UINT, WPARAM>> seen;
    for (const RecordedMessage& each : recorder.messages())
        if (each.message > WM_MOUSEFIRST && each.message <= WM_MOUSELAST)
            seen.emplace_back(each.message, each.wParam);
    EXPECT_EQ(seen, (std::vector<std::pair<UINT, WPARAM>>{{WM_LBUTTONDOWN, MK_LBUTTON | MK_CONTROL},
                                                          {WM_LBUTTONUP, MK_CONTROL},
                                                          {WM_LBUTTONDOWN, MK_LBUTTON | MK_CONTROL},
                                                          {WM_LBUTTONUP, MK_CONTROL},
                                                          {WM_RBUTTONDOWN, MK_RBUTTON},
                                                          {WM_RBUTTONUP, 0},
                                                          {WM_LBUTTONDOWN, MK_LBUTTON},
                                                          {WM_LBUTTONUP, 0},
                                                          {WM_MOUSEWHEEL, MAKEWPARAM(0, -2 * WHEEL_DELTA)}}));
    script.patience(100).clickPlace("the place", [] { return UserPlace{.trouble = "it is gone"}; });
    EXPECT_FALSE(script.finish());
    EXPECT_EQ(script.failure(), "click on the place: it is gone");
}

TEST_F(UserScriptTest, DragsMoveStepByStep) {
    const HWND owner = createOwner();
    MessageRecorder recorder;
    recorder.watch(owner);
    recorder.clear();
    script.inWindow(owner).drag(0, {10, 10}, {110, 60});
    EXPECT_TRUE(script.finish()) << script.failure();
    std::vector<std::pair<UINT, LPARAM>> seen;
    for (const RecordedMessage& each : recorder.messages())
        if (each.message >= WM_MOUSEFIRST && each.message <= WM_MOUSELAST)
            seen.emplace_back(each.message, each.lParam);
    EXPECT_EQ(seen, (std::vector<std::pair<UINT, LPARAM>>{{WM_MOUSEMOVE, MAKELPARAM(10, 10)},
                                                          {WM_LBUTTONDOWN, MAKELPARAM(10, 10)},
                                                          {WM_MOUSEMOVE, MAKELPARAM(60, 35)},
                                                          {WM_MOUSEMOVE, MAKELPARAM(110, 60)},
                                                          {WM_LBUTTONUP, MAKELPARAM(110, 60)}}));
}

TEST_F(UserScriptTest, PicksFromMenusThatAreOpen) {
    const HWND owner = createOwner();
    const HMENU menu = CreatePopupMenu();
    const HMENU sub = CreatePopupMenu();
    AppendMenu(sub, MF_STRING, 5, "&Save && close\tF5");
    AppendMenu(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(sub), "&More");
    script.pick({"More", "Save & close"});
    EXPECT_EQ(TrackPopupMenu(menu, TPM_RETURNCMD, 100, 100, 0, owner, nullptr), 5);
    EXPECT_TRUE(script.finish()) << script.failure();
    script.patience(100).pick({"Missing"});
    EXPECT_EQ(TrackPopupMenu(menu, TPM_RETURNCMD, 100, 100, 0, owner, nullptr), 0) << "left after the failure";
    EXPECT_FALSE(script.finish());
    DestroyMenu(menu);
}

} // namespace
