// What is kept with windows: numbers, properties, names; and the walks that find them.
#include "support/desktop_fixture.h"
#include "support/message_recorder.h"
#include "win32/error.h"

#include <stdexcept>

namespace {

using namespace vndk::test;

class WindowDataTest : public DesktopFixture {
protected:
    void SetUp() override {
        WNDCLASS registered{};
        registered.lpfnWndProc = &DefWindowProcA;
        registered.lpszClassName = "Keeper";
        registered.cbWndExtra = 24;
        registered.cbClsExtra = 8;
        RegisterClass(&registered);
    }
    static HWND create(LPCSTR name = "", HWND parent = nullptr) {
        return CreateWindow("Keeper", name, parent != nullptr ? WS_CHILD : WS_POPUP, 0, 0, 10, 10, parent, nullptr,
                            nullptr, nullptr);
    }
};

TEST_F(WindowDataTest, ExtraBytesAreBounded) {
    const HWND window = create();
    EXPECT_EQ(SetWindowLongPtr(window, 16, 0x1122334455667788), 0);
    EXPECT_EQ(GetWindowLongPtr(window, 16), 0x1122334455667788);
    EXPECT_EQ(GetWindowLong(window, 16), 0x55667788);
    EXPECT_EQ(SetWindowLong(window, 20, -5), 0x11223344);
    for (const int index : {17, 24, 2147483647, -1, -100}) {
        SetLastError(0);
        EXPECT_EQ(SetWindowLongPtr(window, index, 1), 0) << index;
        EXPECT_EQ(GetLastError(), ERROR_INVALID_INDEX) << index;
        EXPECT_EQ(GetWindowLongPtr(window, index), 0) << index;
    }
    EXPECT_EQ(SetClassLongPtr(window, 0, 77), 0U);
    EXPECT_EQ(GetClassLongPtr(create(), 0), 77U) << "the class's bytes are all its windows'";
    EXPECT_EQ(SetClassLongPtr(window, 4, 1), 0U);
}

TEST_F(WindowDataTest, PropertiesAreKnownByNameOrNumber) {
    const HWND window = create();
    const HANDLE value = reinterpret_cast<HANDLE>(UINT_PTR{42});
    EXPECT_TRUE(SetProp(window, "Colour", value));
    EXPECT_EQ(GetProp(window, "COLOUR"), value);
    EXPECT_EQ(GetProp(window, "Color"), nullptr);
    const auto number = reinterpret_cast<LPCSTR>(UINT_PTR{0xC123});
    EXPECT_TRUE(SetProp(window, number, value));
    EXPECT_EQ(RemoveProp(window, number), value);
    EXPECT_EQ(RemoveProp(window, number), nullptr);
    EXPECT_FALSE(SetProp(window, nullptr, value));
    EXPECT_FALSE(SetProp(nullptr, "Colour", value));
}

TEST_F(WindowDataTest, RegisteredMessagesKeepTheirNumbers) {
    const UINT first = RegisterWindowMessage("vndk example message");
    EXPECT_GE(first, 0xC000U);
    EXPECT_EQ(RegisterWindowMessage("VNDK Example Message"), first);
    EXPECT_NE(RegisterWindowMessage("another example message"), first);
    EXPECT_EQ(RegisterWindowMessage(nullptr), 0U);
}

TEST_F(WindowDataTest, WindowsAreFoundByClassAndTitle) {
    const HWND first = create("First");
    const HWND second = create("Second");
    const HWND child = create("First", second);
    EXPECT_EQ(FindWindow("keeper", "FIRST"), first);
    EXPECT_EQ(FindWindow(nullptr, "Second"), second);
    EXPECT_EQ(FindWindow("Keeper", "Third"), nullptr);
    EXPECT_EQ(FindWindow("Nobody", nullptr), nullptr);
    EXPECT_EQ(FindWindowEx(second, nullptr, nullptr, "First"), child);
    EXPECT_EQ(FindWindowEx(second, child, nullptr, "First"), nullptr) << "behind the only one";
}

TEST_F(WindowDataTest, EnumerationPassesOverWindowsThatDieMeanwhile) {
    const HWND parent = create();
    for (int index = 0; index < 5; ++index)
        create("", parent);
    struct Count {
        HWND parent;
        int visited;
    } count{parent, 0};
    EXPECT_TRUE(EnumChildWindows(
        parent,
        [](HWND window, LPARAM lParam) -> BOOL {
            auto& counted = *reinterpret_cast<Count*>(lParam);
            ++counted.visited;
            const HWND next = GetWindow(window, GW_HWNDNEXT);
            DestroyWindow(window);
            DestroyWindow(next);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&count)));
    EXPECT_EQ(count.visited, 3);
    EXPECT_FALSE(EnumWindows([](HWND, LPARAM) -> BOOL { return FALSE; }, 0));
    EXPECT_FALSE(EnumWindows(nullptr, 0));
}

TEST_F(WindowDataTest, ProcedureIsReplacedAndCalledThroughTheNewOne) {
    static WNDPROC former;
    const HWND window = create("old");
    former = reinterpret_cast<WNDPROC>(SetWindowLongPtr(
        window, GWLP_WNDPROC,
        reinterpret_cast<LONG_PTR>(static_cast<WNDPROC>([](HWND self, UINT message, WPARAM wParam, LPARAM lParam) {
            return message == WM_USER ? LRESULT{99} : CallWindowProc(former, self, message, wParam, lParam);
        }))));
    EXPECT_EQ(former, &DefWindowProcA);
    EXPECT_EQ(SendMessage(window, WM_USER, 0, 0), 99);
    EXPECT_EQ(GetWindowTextLength(window), 3);
}

TEST_F(WindowDataTest, ExceptionsAndEndlessSendingStopAtTheProcedure) {
    const HWND window = create();
    const auto replace = [&](WNDPROC procedure) {
        SetWindowLongPtr(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
    };
    testing::internal::CaptureStderr();
    replace([](HWND, UINT message, WPARAM, LPARAM) -> LRESULT {
        if (message == WM_USER + 7)
            throw std::runtime_error("oops");
        return 5;
    });
    EXPECT_EQ(SendMessage(window, WM_USER + 7, 0, 0), 0);
    EXPECT_EQ(SendMessage(window, WM_USER + 8, 0, 0), 5);
    replace([](HWND self, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
        return message == WM_USER + 9 ? SendMessage(self, message, wParam + 1, lParam) + 1 : 0;
    });
    EXPECT_GT(SendMessage(window, WM_USER + 9, 0, 0), 100);
    replace([](HWND, UINT message, WPARAM, LPARAM) -> LRESULT { throw static_cast<int>(message); });
    EXPECT_EQ(SendMessage(window, WM_USER + 10, 0, 0), 0);
    ShowWindow(window, SW_SHOW);
    InvalidateRect(window, nullptr, TRUE);
    settle(); // comes to rest, though nothing of it is ever painted
    const std::string logged = testing::internal::GetCapturedStderr();
    EXPECT_NE(logged.find("0x040A threw an exception"), std::string::npos) << logged;
    EXPECT_NE(logged.find("oops"), std::string::npos);
    EXPECT_NE(logged.find("nested too deeply"), std::string::npos);
    replace(&DefWindowProcA);
}

TEST_F(WindowDataTest, HooksSeeMessagesAndPassThemOn) {
    static std::vector<std::string> seen;
    seen.clear();
    const HWND window = create();
    const HHOOK older = SetWindowsHookEx(
        WH_CALLWNDPROC,
        [](int code, WPARAM wParam, LPARAM lParam) -> LRESULT {
            if (reinterpret_cast<const CWPSTRUCT*>(lParam)->message == WM_USER)
                seen.push_back("older");
            return CallNextHookEx(nullptr, code, wParam, lParam);
        },
        nullptr, 0);
    const HHOOK newer = SetWindowsHookEx(
        WH_CALLWNDPROC,
        [](int code, WPARAM wParam, LPARAM lParam) -> LRESULT {
            if (reinterpret_cast<const CWPSTRUCT*>(lParam)->message == WM_USER)
                seen.push_back("newer");
            return CallNextHookEx(nullptr, code, wParam, lParam);
        },
        nullptr, 0);
    const HHOOK after = SetWindowsHookEx(
        WH_CALLWNDPROCRET,
        [](int code, WPARAM wParam, LPARAM lParam) -> LRESULT {
            if (reinterpret_cast<const CWPRETSTRUCT*>(lParam)->message == WM_USER)
                seen.push_back("after");
            return CallNextHookEx(nullptr, code, wParam, lParam);
        },
        nullptr, 0);
    SendMessage(window, WM_USER, 0, 0);
    EXPECT_EQ(seen, (std::vector<std::string>{"newer", "older", "after"}));
    for (const HHOOK hook : {older, newer, after})
        EXPECT_TRUE(UnhookWindowsHookEx(hook));
    EXPECT_EQ(SetWindowsHookEx(WH_CBT, nullptr, nullptr, 0), nullptr);
    EXPECT_EQ(SetWindowsHookEx(
                  99, [](int, WPARAM, LPARAM) -> LRESULT { return 0; }, nullptr, 0),
              nullptr);
}

} // namespace
