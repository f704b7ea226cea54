// A window that owns menus, and what it hears while they are open.
#pragma once

#include "support/desktop_fixture.h"
#include "support/message_recorder.h"
#include "user/frame_geometry.h"
#include "user/menu_bar.h"
#include "user/window_position.h"
#include "win32/error.h"
#include "win32/menu.h"
#include "win32/user_script.h"

#include <string>
#include <vector>

namespace vndk::test {

class MenuFixture : public DesktopFixture {
protected:
    void SetUp() override {
        recorder.registerClass();
        window = CreateWindow(MessageRecorder::className, "menus", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 400, 300,
                              nullptr, nullptr, nullptr, nullptr);
        settle();
        recorder.onMessage(WM_COMMAND, [this](HWND, UINT, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
            commands.push_back(LOWORD(wParam));
            return 0;
        });
        recorder.onMessage(WM_SYSCOMMAND, [this](HWND, UINT, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
            if ((wParam & 0xFFF0) == SC_KEYMENU || (wParam & 0xFFF0) == SC_MOUSEMENU)
                return std::nullopt;
            systemCommands.push_back(static_cast<int>(wParam));
            return 0;
        });
        recorder.clear();
    }
    void TearDown() override {
        EXPECT_FALSE(win32::menuTracked());
        EXPECT_EQ(popup(), nullptr) << "a menu's window was left behind";
        EXPECT_EQ(win32::verifyWindows(), "");
    }

    /// A popup menu: Open, a line, Off (disabled), More with Inner and Second, Last.
    HMENU makePopup() {
        const HMENU more = CreatePopupMenu();
        AppendMenu(more, MF_STRING, 41, "&Inner");
        AppendMenu(more, MF_STRING, 42, "&Second");
        const HMENU menu = CreatePopupMenu();
        AppendMenu(menu, MF_STRING, 1, "&Open\tCtrl+O");
        AppendMenu(menu, MF_SEPARATOR, 0, nullptr);
        AppendMenu(menu, MF_STRING | MF_GRAYED, 2, "O&ff");
        AppendMenu(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(more), "&More");
        AppendMenu(menu, MF_STRING, 5, "&Last");
        return menu;
    }
    /// The popup that is on top; null when none is open.
    static HWND popup() { return FindWindow("#32768", nullptr); }
    static POINT middleOf(HWND owner, HMENU menu, UINT position) {
        RECT rect{};
        EXPECT_TRUE(GetMenuItemRect(owner, menu, position, &rect)) << "item " << position << " has no place";
        return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    }
    /// Once the menus wait for the user: runs `action`, and so on for each further one.
    void whenIdle(std::function<void()> action) { script.call(std::move(action)); }
    void press(int key) { script.press(key); }

    HWND window = nullptr;
    MessageRecorder recorder;
    std::vector<int> commands;
    std::vector<int> systemCommands;
    win32::UserScript script{screen};
};

} // namespace vndk::test
