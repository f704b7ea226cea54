// The box for distances, in a window that behaves as a dialog, by real keys.
#include "attributes/distance_edit.h"
#include "ed/host.h"
#include "support/desktop_fixture.h"

#include <gmock/gmock.h>

namespace {

/// Answers keys as a dialog does.
class Parent : public CWnd {
public:
    BOOL PreTranslateMessage(MSG* pMsg) override { return PreTranslateInput(pMsg); }
};

class DistanceEditTest : public vndk::test::DesktopFixture {
protected:
    void SetUp() override {
        host.documents().appContextNewDocument(nullptr);
        ASSERT_TRUE(parent.CreateEx(0, AfxRegisterWndClass(0), "parent", WS_POPUP | WS_VISIBLE, 0, 0, 300, 200, nullptr,
                                    nullptr));
        const DWORD style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | ES_AUTOHSCROLL;
        ASSERT_TRUE(edit.Create(style | WS_BORDER, CRect(10, 10, 110, 30), &parent, 1));
        ASSERT_TRUE(other.Create(style, CRect(10, 50, 110, 70), &parent, 2));
        edit.SetUp(CDistanceEdit::CharsOfUnits(), "How far");
        edit.SetFocus();
        deliver();
    }
    void TearDown() override { parent.DestroyWindow(); }

    void deliver() {
        MSG message{};
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) != FALSE)
            AfxPumpMessage();
        settle();
    }
    void units(short kind, short precision) {
        host.variables().set("LUNITS", kind);
        host.variables().set("LUPREC", precision);
        edit.SetUp(CDistanceEdit::CharsOfUnits(), "How far");
    }
    std::string text() const {
        CString text;
        edit.GetWindowText(text);
        return std::string(text.View());
    }
    std::string type(std::string_view keys) {
        user.type(keys);
        deliver();
        return text();
    }
    /// Leaves the box and comes back.
    std::string leave() {
        user.key(VK_TAB);
        deliver();
        EXPECT_EQ(::GetFocus(), other.m_hWnd);
        const std::string left = text();
        edit.SetFocus();
        deliver();
        return left;
    }
    static HWND shownTip() {
        for (HWND window = ::GetTopWindow(nullptr); window; window = ::GetWindow(window, GW_HWNDNEXT)) {
            char name[40] = "";
            ::GetClassNameA(window, name, sizeof name);
            if (std::string(name) == TOOLTIPS_CLASS && ::IsWindowVisible(window) != FALSE)
                return window;
        }
        return nullptr;
    }

    CWinApp application{"distance-test"};
    vndk::host::Host host;
    Parent parent;
    CDistanceEdit edit;
    CEdit other;
};

TEST_F(DistanceEditTest, TakesOnlyTheCharactersOfItsUnits) {
    const struct {
        short units;
        const char *typed, *taken;
    } rows[] = {{1, "1a.5E+01'", "1.5E+01"},
                {2, "-1 2/.5x'E", "-12.5"},
                {3, "1'6.5\"/", "1'6.5\""},
                {4, "1'-6 1/2\"x", "1'-6 1/2\""},
                {5, "18 1/2'\"", "18 1/2"}};
    for (const auto& row : rows) {
        units(row.units, 2);
        edit.SetWindowText("");
        EXPECT_EQ(type(row.typed), row.taken) << row.units;
    }
}

TEST_F(DistanceEditTest, BackspaceAlwaysWorksAndTheValueFollowsEachKey) {
    type("12.5");
    EXPECT_EQ(edit.Value(), 12.5);
    user.key(VK_BACK, '\b');
    user.key(VK_BACK, '\b');
    deliver();
    EXPECT_EQ(text(), "12");
    EXPECT_EQ(edit.Value(), 12);
    user.keyWith(VK_CONTROL, 'A', 1);
    deliver();
    EXPECT_EQ(text(), "12") << "other control characters are refused";
}

TEST_F(DistanceEditTest, IsRewrittenInTheDrawingsFormatWhenLeft) {
    type("2.5");
    EXPECT_EQ(leave(), "2.5000");
    units(4, 4);
    type("17.5"); // all was selected, so this replaces it
    EXPECT_EQ(text(), "17.5");
    EXPECT_EQ(leave(), "1'-5 1/2\"");
    EXPECT_EQ(edit.CurrentValue(), 17.5);
}

TEST_F(DistanceEditTest, ABadTextGivesWayToTheLastGoodOne) {
    type("1-");
    EXPECT_EQ(edit.Value(), 0) << "there is no good one yet";
    edit.SetWindowText("");
    type("7");
    EXPECT_EQ(leave(), "7.0000");
    EXPECT_EQ(type("--"), "--");
    EXPECT_EQ(edit.Value(), 7);
    EXPECT_EQ(edit.CurrentValue(), 7);
    EXPECT_EQ(leave(), "7.0000");
    edit.SetWindowText("");
    EXPECT_EQ(leave(), "") << "an empty box stays empty";
    EXPECT_EQ(edit.CurrentValue(), 0);
    type("..");
    EXPECT_EQ(leave(), "7.0000") << "and remembers";
}

TEST_F(DistanceEditTest, EnteringSelectsAllAndLongTextsShowTheirEnd) {
    edit.SetWindowText("3.5000");
    other.SetFocus();
    edit.SetFocus();
    deliver();
    int begin = -1, end = -1;
    edit.GetSel(begin, end);
    EXPECT_EQ(begin, 0);
    EXPECT_EQ(end, 6);
    EXPECT_EQ(type("4"), "4");
}

TEST_F(DistanceEditTest, TheTipShowsOverTheBoxAndGoesWithIt) {
    user.moveTo(50, 20);
    deliver();
    wait(1000);
    deliver();
    const HWND tip = shownTip();
    ASSERT_TRUE(tip);
    char shown[80] = "";
    TOOLINFO tool{};
    tool.cbSize = sizeof tool;
    tool.hwnd = edit.m_hWnd;
    tool.uId = 1;
    tool.lpszText = shown;
    ::SendMessageA(tip, TTM_GETTEXT, 0, reinterpret_cast<LPARAM>(&tool));
    EXPECT_STREQ(shown, "How far");
    edit.DestroyWindow();
    deliver();
    EXPECT_FALSE(shownTip());
}

} // namespace
