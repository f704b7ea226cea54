// The framework's windows: which handler gets what, in which order, and who ends whom.
#include "mfc/afx.h"
#include "platform/win32/user/template_builder.h"
#include "support/desktop_fixture.h"

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using vndk::test::DesktopFixture;
using vndk::test::DialogBuilder;

constexpr UINT kCommand = 0x8010;
constexpr UINT kGreyed = 0x8011;
constexpr int kChild = 50;

std::vector<std::string> journal;
std::vector<std::string> taken() { return std::exchange(journal, {}); }

class Base : public CWnd {
public:
    BOOL OnCmdMsg(UINT id, int code, void* extra, void* info) override {
        if (id == kCommand || id == kGreyed)
            journal.push_back("route " + std::to_string(code));
        return CWnd::OnCmdMsg(id, code, extra, info);
    }

protected:
    void OnCommandBase() { journal.push_back("base command"); }
    void OnUpdateGreyed(CCmdUI* state) { state->Enable(FALSE); }
    void OnGreyed() { journal.push_back("never"); }
    void OnSize(UINT, int width, int height) {
        journal.push_back("size " + std::to_string(width) + "x" + std::to_string(height));
    }
    LRESULT OnOwnMessage(WPARAM wParam, LPARAM lParam) { return static_cast<LRESULT>(wParam) + lParam; }
    void OnThrow() { throw std::runtime_error("a handler's own fault"); }
    DECLARE_MESSAGE_MAP()
};

constexpr UINT kOwnMessage = WM_USER + 1;
constexpr UINT kThrow = 0x8012;

BEGIN_MESSAGE_MAP(Base, CWnd)
ON_COMMAND(kCommand, &Base::OnCommandBase)
ON_COMMAND(kGreyed, &Base::OnGreyed)
ON_COMMAND(kThrow, &Base::OnThrow)
ON_UPDATE_COMMAND_UI(kGreyed, &Base::OnUpdateGreyed)
ON_WM_SIZE()
ON_MESSAGE(kOwnMessage, &Base::OnOwnMessage)
END_MESSAGE_MAP()

class Derived : public Base {
protected:
    void OnCommandDerived() { journal.push_back("derived command"); }
    void OnEdit() { journal.push_back("parent heard change"); }
    void OnRange(UINT id) { journal.push_back("range " + std::to_string(id)); }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Derived, Base)
ON_COMMAND(kCommand, &Derived::OnCommandDerived)
ON_EN_CHANGE(kChild, &Derived::OnEdit)
ON_COMMAND_RANGE(0x8020, 0x8022, &Derived::OnRange)
END_MESSAGE_MAP()

/// Hears its own changes first and says whether the parent is to hear them.
class OwnEdit : public CEdit {
public:
    BOOL consume = FALSE;

protected:
    BOOL OnChange() {
        journal.push_back("edit heard change");
        return consume;
    }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(OwnEdit, CEdit)
ON_CONTROL_REFLECT_EX(EN_CHANGE, &OwnEdit::OnChange)
END_MESSAGE_MAP()

class FrameworkTest : public DesktopFixture {
protected:
    void SetUp() override { journal.clear(); }
    void make(CWnd& window) {
        ASSERT_TRUE(window.CreateEx(0, AfxRegisterWndClass(0), "window", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr,
                                    nullptr));
        settle();
    }
};

/// Throws something else at each message.
class Thrower : public CWnd {
protected:
    void OnPaint() { throw 5; }
    int OnCreate(LPCREATESTRUCT) { throw std::runtime_error("not made"); }
    void OnSize(UINT, int, int) { AfxThrowUserException(); }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Thrower, CWnd)
ON_WM_PAINT()
ON_WM_CREATE()
ON_WM_SIZE()
END_MESSAGE_MAP()

TEST_F(FrameworkTest, HandlersThatThrowHarmNobodyElse) {
    testing::internal::CaptureStderr();
    Thrower refused;
    EXPECT_FALSE(
        refused.CreateEx(0, AfxRegisterWndClass(0), "window", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr, nullptr));
    const HWND plain =
        ::CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 200, 100, nullptr, nullptr, nullptr, nullptr);
    Thrower window;
    ASSERT_TRUE(window.SubclassWindow(plain));
    window.MoveWindow(10, 10, 300, 200);
    settle();
    EXPECT_FALSE(::GetUpdateRect(window.m_hWnd, nullptr, FALSE)) << "what can't be painted isn't asked for again";
    window.DestroyWindow();
    const std::string logged = testing::internal::GetCapturedStderr();
    EXPECT_NE(logged.find("0x0001 threw: not made"), std::string::npos) << logged;
    EXPECT_NE(logged.find("0x0005 threw a CUserException"), std::string::npos) << logged;
    EXPECT_NE(logged.find("0x000F threw"), std::string::npos) << logged;
}

TEST_F(FrameworkTest, RoutesACommandAfterOneQueryOfItsState) {
    Derived window;
    make(window);
    taken();
    window.SendMessage(WM_COMMAND, kCommand);
    EXPECT_EQ(taken(), (std::vector<std::string>{"route -1", "route 0", "derived command"}));
    window.SendMessage(WM_COMMAND, kGreyed);
    EXPECT_EQ(taken(), (std::vector<std::string>{"route -1"})) << "a disabled command goes nowhere";
    window.SendMessage(WM_COMMAND, 0x8021);
    EXPECT_EQ(taken(), (std::vector<std::string>{"range 32801"}));
    window.DestroyWindow();
}

TEST_F(FrameworkTest, HearsWindowMessagesFromTheFirstOn) {
    Base window;
    make(window);
    EXPECT_EQ(taken(), (std::vector<std::string>{"size 200x100"})) << "while it is being created";
    EXPECT_EQ(window.SendMessage(kOwnMessage, 40, 2), 42);
    window.MoveWindow(0, 0, 300, 50);
    EXPECT_EQ(taken(), (std::vector<std::string>{"size 300x50"}));
    window.SendMessage(WM_COMMAND, kThrow);
    EXPECT_TRUE(IsWindow(window.m_hWnd)) << "what a handler throws ends there";
    window.DestroyWindow();
}

TEST_F(FrameworkTest, GivesNotificationsToTheControlFirst) {
    Derived window;
    make(window);
    OwnEdit edit;
    ASSERT_TRUE(edit.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 100, 20), &window, kChild));
    taken();
    edit.SetWindowText("a");
    EXPECT_EQ(taken(), (std::vector<std::string>{"edit heard change", "parent heard change"}));
    edit.consume = TRUE;
    edit.SetWindowText("b");
    EXPECT_EQ(taken(), (std::vector<std::string>{"edit heard change"}));
    window.DestroyWindow();
    EXPECT_EQ(edit.m_hWnd, nullptr) << "the object lets go of a window that ends with its parent";
}

TEST_F(FrameworkTest, KnowsItsObjectsByHandle) {
    Base window;
    make(window);
    EXPECT_EQ(CWnd::FromHandle(window.m_hWnd), &window);
    const HWND foreign =
        ::CreateWindowEx(0, "STATIC", "", WS_CHILD, 0, 0, 5, 5, window.m_hWnd, nullptr, nullptr, nullptr);
    CWnd* const temporary = CWnd::FromHandle(foreign);
    EXPECT_EQ(temporary->m_hWnd, foreign);
    EXPECT_EQ(CWnd::FromHandlePermanent(foreign), nullptr);
    EXPECT_EQ(CWnd::FromHandle(nullptr), nullptr);
    CWnd::DeleteTempMap();
    {
        CStatic label;
        EXPECT_TRUE(label.SubclassWindow(foreign));
        EXPECT_FALSE(label.SubclassWindow(foreign));
        EXPECT_EQ(CWnd::FromHandle(foreign), &label);
    }
    EXPECT_FALSE(IsWindow(foreign)) << "an object that ends takes its subclassed window along";
    window.DestroyWindow();
}

class SelfDeleting : public CWnd {
public:
    ~SelfDeleting() override { journal.push_back("deleted"); }
    void PostNcDestroy() override { delete this; }
};

// Handles come into use again after a while, and temporary objects of their former owners are still there.
TEST_F(FrameworkTest, KeepsObjectsApartWhoseHandleWasAnothersBefore) {
    for (int round = 0; round < 300; ++round) {
        const HBITMAP bitmap = ::CreateBitmap(2, 2, 1, 32, nullptr);
        CBitmap::FromHandle(bitmap);
        ::DeleteObject(bitmap);
        CPen pen(PS_SOLID, 1, RGB(255, 0, 0));
        LOGPEN shape{};
        ASSERT_NE(::GetObjectA(pen, sizeof shape, &shape), 0) << "the pen lives, round " << round;
        ASSERT_NE(dynamic_cast<CPen*>(CPen::FromHandle(pen)), nullptr);
        pen.DeleteObject();
        const HBRUSH brush = ::CreateSolidBrush(RGB(0, 0, 255));
        ASSERT_NE(dynamic_cast<CBrush*>(CBrush::FromHandle(brush)), nullptr) << round;
        ::DeleteObject(brush);
    }
    CGdiObject::DeleteTempMap();
}

TEST_F(FrameworkTest, LetsHeapObjectsEndWithTheirWindow) {
    auto* const window = new SelfDeleting;
    make(*window);
    window->DestroyWindow();
    EXPECT_EQ(taken(), (std::vector<std::string>{"deleted"}));
}

class NumbersDlg : public CDialog {
public:
    int count = 7;
    CString name = "Door";
    int check = 1;
    CEdit editName;

    bool create(CWnd* parent) {
        bytes = DialogBuilder(WS_POPUP | WS_VISIBLE)
                    .font(8, "MS Sans Serif")
                    .size(120, 80)
                    .control("EDIT", "", WS_TABSTOP, 10)
                    .control("EDIT", "", WS_TABSTOP, 11)
                    .control("BUTTON", "Check", WS_TABSTOP | BS_AUTOCHECKBOX, 12)
                    .bytes();
        return CreateIndirect(reinterpret_cast<const DLGTEMPLATE*>(bytes.data()), parent) != FALSE;
    }

protected:
    void DoDataExchange(CDataExchange* exchange) override {
        CDialog::DoDataExchange(exchange);
        DDX_Control(exchange, 11, editName);
        DDX_Text(exchange, 10, count);
        DDV_MinMaxInt(exchange, count, 1, 99);
        DDX_Text(exchange, 11, name);
        DDV_MaxChars(exchange, name, 6);
        DDX_Check(exchange, 12, check);
    }

private:
    std::vector<std::uint8_t> bytes;
};

TEST_F(FrameworkTest, ExchangesDialogDataBothWays) {
    NumbersDlg dialog;
    ASSERT_TRUE(dialog.create(nullptr));
    CString text;
    dialog.GetDlgItemText(10, text);
    EXPECT_EQ(text, "7");
    EXPECT_EQ(dialog.IsDlgButtonChecked(12), 1U);
    dialog.SetDlgItemText(10, " 42 ");
    dialog.editName.SetWindowText("Lamp");
    dialog.CheckDlgButton(12, 0);
    EXPECT_TRUE(dialog.UpdateData());
    EXPECT_EQ(dialog.count, 42);
    EXPECT_EQ(dialog.name, "Lamp");
    EXPECT_EQ(dialog.check, 0);
}

TEST_F(FrameworkTest, RefusesBadNumbersAndPutsTheFocusThere) {
    for (const char* const bad : {"", "x", "12x", "99999999999999999999", "0", "100"}) {
        NumbersDlg dialog;
        ASSERT_TRUE(dialog.create(nullptr));
        dialog.editName.SetFocus();
        dialog.SetDlgItemText(10, bad);
        // The box that tells the user is closed by a key that waits already.
        user.key(VK_RETURN, '\r');
        EXPECT_FALSE(dialog.UpdateData()) << bad;
        EXPECT_EQ(::GetFocus(), ::GetDlgItem(dialog.m_hWnd, 10)) << bad;
    }
}

} // namespace
