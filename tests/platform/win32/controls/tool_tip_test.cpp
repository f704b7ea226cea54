// Tool tips: their tools and texts by messages, showing and hiding by the pointer and the clock.
#include "control_fixture.h"

#include "win32/static.h"
#include "win32/tooltip.h"

#include <cstring>

namespace vndk::test {
namespace {

class ToolTipTest : public ControlFixture {
protected:
    void SetUp() override {
        ControlFixture::SetUp();
        target = make("STATIC", SS_NOTIFY, 20, 20, 100, 40);
        tip = CreateWindowEx(0, TOOLTIPS_CLASS, "", 0, 0, 0, 0, 0, owner, nullptr, nullptr, nullptr);
        recorder.onMessage(WM_NOTIFY, [this](HWND, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
            auto* const header = reinterpret_cast<NMHDR*>(lParam);
            notified.push_back(header->code);
            if (header->code == TTN_GETDISPINFO)
                std::strcpy(reinterpret_cast<NMTTDISPINFO*>(header)->szText, "asked for");
            return std::nullopt;
        });
    }

    TOOLINFO tool(LPSTR text, UINT flags = TTF_IDISHWND) const {
        TOOLINFO info{};
        info.cbSize = sizeof info;
        info.uFlags = flags;
        info.hwnd = owner;
        info.uId = reinterpret_cast<UINT_PTR>(target);
        info.lpszText = text;
        return info;
    }
    LRESULT send(UINT message, TOOLINFO& info, WPARAM wParam = 0) {
        return SendMessage(tip, message, wParam, reinterpret_cast<LPARAM>(&info));
    }
    std::string textOfTool() {
        char buffer[80] = "untouched";
        TOOLINFO info = tool(buffer);
        send(TTM_GETTEXT, info, sizeof buffer);
        return buffer;
    }
    void hover(int x = 30) {
        const POINT point = onScreen(target, x, 20);
        user.moveTo(point.x, point.y);
        settle();
    }
    bool shown() { return IsWindowVisible(tip) != FALSE; }

    HWND target = nullptr;
    HWND tip = nullptr;
    std::vector<UINT> notified;
};

char hello[] = "Hello";

TEST_F(ToolTipTest, KeepsTextsOfAllKinds) {
    TOOLINFO info = tool(nullptr);
    EXPECT_EQ(send(TTM_ADDTOOL, info), TRUE) << "a tool without text";
    EXPECT_EQ(textOfTool(), "");
    info.lpszText = hello;
    send(TTM_UPDATETIPTEXT, info);
    EXPECT_EQ(textOfTool(), "Hello");
    info.lpszText = LPSTR_TEXTCALLBACK;
    send(TTM_UPDATETIPTEXT, info);
    EXPECT_EQ(textOfTool(), "asked for");
    EXPECT_EQ(notified, std::vector<UINT>{TTN_NEEDTEXT});
    TOOLINFO back = tool(nullptr);
    EXPECT_EQ(send(TTM_GETTOOLINFO, back), TRUE);
    EXPECT_EQ(back.lpszText, LPSTR_TEXTCALLBACK) << "asking for the tool gives the mark back, not the text";
}

TEST_F(ToolTipTest, RefusesWhatIsNoTool) {
    EXPECT_EQ(SendMessage(tip, TTM_ADDTOOL, 0, 0), FALSE);
    TOOLINFO info = tool(hello);
    info.cbSize = 8;
    EXPECT_EQ(send(TTM_ADDTOOL, info), FALSE);
    info.cbSize = sizeof info;
    EXPECT_EQ(send(TTM_GETTOOLINFO, info), FALSE);
    for (const UINT message : {TTM_DELTOOL, TTM_SETTOOLINFO, TTM_UPDATETIPTEXT, TTM_NEWTOOLRECT, TTM_GETTEXT,
                               TTM_RELAYEVENT, TTM_HITTEST, TTM_SETMARGIN, TTM_GETMARGIN, TTM_WINDOWFROMPOINT})
        SendMessage(tip, message, 0, 0);
    EXPECT_EQ(SendMessage(tip, TTM_GETTOOLCOUNT, 0, 0), 0);
}

TEST_F(ToolTipTest, ReplacesAToolsProcedureOnceAndForGood) {
    const LONG_PTR before = GetWindowLongPtr(target, GWLP_WNDPROC);
    TOOLINFO info = tool(hello, TTF_IDISHWND | TTF_SUBCLASS);
    send(TTM_ADDTOOL, info);
    const LONG_PTR replaced = GetWindowLongPtr(target, GWLP_WNDPROC);
    EXPECT_NE(replaced, before);
    info.uFlags = TTF_IDISHWND;
    send(TTM_SETTOOLINFO, info);
    EXPECT_EQ(GetWindowLongPtr(target, GWLP_WNDPROC), replaced);
    DestroyWindow(target);
    settle();
}

TEST_F(ToolTipTest, SetToolInfoDoesNotReplaceAProcedure) {
    const LONG_PTR before = GetWindowLongPtr(target, GWLP_WNDPROC);
    TOOLINFO info = tool(hello);
    send(TTM_ADDTOOL, info);
    info.uFlags |= TTF_SUBCLASS;
    send(TTM_SETTOOLINFO, info);
    EXPECT_EQ(GetWindowLongPtr(target, GWLP_WNDPROC), before);
}

TEST_F(ToolTipTest, ShowsAfterAWhileAndHidesWhenThePointerGoes) {
    TOOLINFO info = tool(hello, TTF_IDISHWND | TTF_SUBCLASS);
    send(TTM_ADDTOOL, info);
    hover();
    EXPECT_FALSE(shown());
    wait(GetDoubleClickTime() + 50);
    ASSERT_TRUE(shown());
    const RECT place = windowRect(tip);
    EXPECT_GT(place.top, onScreen(target, 30, 20).y) << "below the pointer";
    user.moveTo(700, 500);
    settle();
    wait(300);
    EXPECT_FALSE(shown());
    EXPECT_EQ(notified, (std::vector<UINT>{TTN_SHOW, TTN_POP}));
}

TEST_F(ToolTipTest, StaysInsideTheScreen) {
    SetWindowPos(owner, nullptr, screenWidth - 125, screenHeight - 65, 400, 300, SWP_NOZORDER);
    TOOLINFO info = tool(hello, TTF_IDISHWND | TTF_SUBCLASS);
    send(TTM_ADDTOOL, info);
    const POINT point = onScreen(target, 95, 35);
    user.moveTo(point.x, point.y);
    settle();
    wait(GetDoubleClickTime() + 50);
    ASSERT_TRUE(shown());
    EXPECT_LE(windowRect(tip).right, screenWidth);
    EXPECT_LE(windowRect(tip).bottom, screenHeight);
}

TEST_F(ToolTipTest, IsHiddenByAPressAndByTime) {
    TOOLINFO info = tool(hello, TTF_IDISHWND | TTF_SUBCLASS);
    send(TTM_ADDTOOL, info);
    hover();
    wait(GetDoubleClickTime() + 50);
    ASSERT_TRUE(shown());
    user.press();
    user.release();
    settle();
    EXPECT_FALSE(shown());
    wait(2 * GetDoubleClickTime());
    EXPECT_FALSE(shown()) << "until the pointer moves again";
    SendMessage(tip, TTM_SETDELAYTIME, TTDT_AUTOPOP, 300);
    hover(40);
    wait(GetDoubleClickTime() + 50);
    ASSERT_TRUE(shown());
    wait(500);
    EXPECT_FALSE(shown()) << "it has been up long enough";
}

TEST_F(ToolTipTest, ShowsNothingWhileItIsSwitchedOff) {
    TOOLINFO info = tool(hello, TTF_IDISHWND | TTF_SUBCLASS);
    send(TTM_ADDTOOL, info);
    SendMessage(tip, TTM_ACTIVATE, FALSE, 0);
    hover();
    wait(2 * GetDoubleClickTime());
    EXPECT_FALSE(shown());
    SendMessage(tip, TTM_ACTIVATE, TRUE, 0);
    hover(40);
    wait(GetDoubleClickTime() + 50);
    EXPECT_TRUE(shown());
}

TEST_F(ToolTipTest, HearsOfThePointerByRelayedMessages) {
    TOOLINFO info = tool(hello);
    send(TTM_ADDTOOL, info);
    hover();
    int x = 30;
    const auto relay = [&](UINT number) {
        MSG message{};
        message.hwnd = target;
        message.message = number;
        message.lParam = MAKELPARAM(x, 20);
        SendMessage(tip, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&message));
    };
    const std::uint32_t delay = GetDoubleClickTime();
    relay(WM_MOUSEMOVE);
    for (const int next : {34, 34}) {
        wait(delay - 100);
        EXPECT_FALSE(shown()) << "each message begins the delay anew";
        x = next;
        relay(WM_MOUSEMOVE);
    }
    wait(delay + 50);
    EXPECT_TRUE(shown());
    for (const UINT press : {WM_LBUTTONDOWN, WM_RBUTTONDOWN, WM_MBUTTONDOWN}) {
        relay(press);
        EXPECT_FALSE(shown()) << press;
        relay(WM_MOUSEMOVE);
        wait(delay + 50);
        EXPECT_FALSE(shown()) << "the pointer has to move first";
        hover(++x);
        relay(WM_MOUSEMOVE);
        wait(delay + 50);
        EXPECT_TRUE(shown()) << press;
    }
    send(TTM_DELTOOL, info);
    EXPECT_FALSE(shown()) << "the tool has gone";
}

} // namespace
} // namespace vndk::test
