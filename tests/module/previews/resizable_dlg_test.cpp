// The dialog that is resized within limits and remembers its place.
#include "platform/temp_folder.h"
#include "previews/resizable_dlg.h"
#include "support/desktop_fixture.h"

#include <gmock/gmock.h>

namespace {

class Dialog : public CResizableDlg {
public:
    explicit Dialog(CWnd* parent) : CResizableDlg(0, parent) {}
    using CResizableDlg::mGripperRect;
    using CResizableDlg::mProfileSection;
    using CResizableDlg::mShowGripper;
};

class ResizableDlgTest : public vndk::test::DesktopFixture {
protected:
    ResizableDlgTest() {
        application.SetProfileFile((folder.path() + "/profile.ini").c_str());
        // An empty template: a window with a sizing frame.
        struct {
            DLGTEMPLATE head;
            WORD menu = 0, windowClass = 0, title = 0;
        } bare{};
        bare.head.style = WS_POPUP | WS_THICKFRAME | WS_CAPTION;
        EXPECT_TRUE(dialog.CreateIndirect(&bare.head));
        dialog.SetWindowPos(nullptr, 50, 60, 400, 300, SWP_NOZORDER);
        dialog.ShowWindow(SW_SHOW);
        settle();
    }
    ~ResizableDlgTest() override { dialog.DestroyWindow(); }

    CRect saved() const {
        CRect rect;
        dialog.GetSavedRect(rect);
        return rect;
    }
    void store(const char* key, int value) { application.WriteProfileInt("Vondrake", key, value); }
    int stored(const char* key) { return static_cast<int>(application.GetProfileInt("Vondrake", key, -1)); }
    CRect sized(CRect rect, UINT side = WMSZ_BOTTOMRIGHT) {
        dialog.SendMessage(WM_SIZING, side, reinterpret_cast<LPARAM>(&rect));
        return rect;
    }

    TempFolder folder;
    CWinApp application{"resizable-test"};
    Dialog dialog{nullptr};
};

TEST_F(ResizableDlgTest, BeginAtItsOwnPlaceButNeverNearTheEdge) {
    dialog.mProfileSection = "Vondrake";
    EXPECT_EQ(saved(), CRect(200, 200, 650, 540));
    dialog.SetWindowPos(nullptr, 300, 250, 400, 300, SWP_NOZORDER);
    store("sizeWidth3", 500);
    EXPECT_EQ(saved().Width(), 500);
}

TEST_F(ResizableDlgTest, TakeWhatIsStoredWithinItsLimits) {
    dialog.mProfileSection = "Vondrake";
    const struct {
        const char* key;
        int value;
        LONG CRect::*side;
        int expected;
    } cases[] = {
        {"nTopLeftX3", 199, &CRect::left, 200},   {"nTopLeftX3", 201, &CRect::left, 201},
        {"nTopLeftX3", 790, &CRect::left, 790},   {"nTopLeftX3", 791, &CRect::left, 200},
        {"nTopLeftY3", 590, &CRect::top, 590},    {"nTopLeftY3", 591, &CRect::top, 200},
        {"nTopLeftY3", -32000, &CRect::top, 200},
    };
    for (const auto& [key, value, side, expected] : cases) {
        store(key, value);
        EXPECT_EQ(saved().*side, expected) << key << ' ' << value;
    }
    const struct {
        int stored, width, height;
    } sizes[] = {{99, 200, 100},  {100, 200, 100}, {199, 200, 199},   {200, 200, 200},
                 {900, 900, 900}, {901, 901, 100}, {1000, 1000, 100}, {1001, 200, 100}};
    for (const auto& size : sizes) {
        store("sizeWidth3", size.stored);
        store("sizeHeight3", size.stored);
        EXPECT_EQ(saved().Size(), CSize(size.width, size.height)) << size.stored;
    }
}

TEST_F(ResizableDlgTest, WriteItsPlaceOnceItHasASection) {
    dialog.SavePlacement();
    EXPECT_EQ(stored("sizeWidth3"), -1);
    dialog.mProfileSection = "Vondrake";
    dialog.SavePlacement();
    EXPECT_EQ(stored("sizeWidth3"), 400);
    EXPECT_EQ(stored("sizeHeight3"), 300);
    EXPECT_EQ(stored("nTopLeftX3"), 50);
    EXPECT_EQ(stored("nTopLeftY3"), 60);
}

TEST_F(ResizableDlgTest, GiveWayAtTheRightAndTheBottom) {
    EXPECT_EQ(sized(CRect(100, 100, 449, 199), WMSZ_TOPLEFT), CRect(100, 100, 450, 200));
    EXPECT_EQ(sized(CRect(0, 0, 350, 100)), CRect(0, 0, 350, 100));
    EXPECT_EQ(sized(CRect(0, 0, 1200, 1000)), CRect(0, 0, 1200, 1000));
    EXPECT_EQ(sized(CRect(5, 5, 1300, 1100)), CRect(5, 5, 1205, 1005));
}

TEST_F(ResizableDlgTest, ResizeByItsGripper) {
    CRect client;
    dialog.GetClientRect(client);
    EXPECT_EQ(dialog.mGripperRect,
              CRect(client.right - ::GetSystemMetrics(SM_CXVSCROLL), client.bottom - ::GetSystemMetrics(SM_CYHSCROLL),
                    client.right, client.bottom));
    const POINT grip = onScreen(dialog.m_hWnd, client.right - 4, client.bottom - 4);
    const auto hit = [&] { return dialog.SendMessage(WM_NCHITTEST, 0, MAKELPARAM(grip.x, grip.y)); };
    EXPECT_EQ(hit(), HTBOTTOMRIGHT);
    dialog.mShowGripper = 0;
    EXPECT_EQ(hit(), HTCLIENT);
    dialog.mShowGripper = 1;
    user.drag(grip, {grip.x + 40, grip.y + 20});
    settle();
    EXPECT_EQ(windowRect(dialog.m_hWnd).right, 490);
    EXPECT_EQ(windowRect(dialog.m_hWnd).bottom, 380);
    user.drag({grip.x + 40, grip.y + 20}, {grip.x - 300, grip.y});
    settle();
    EXPECT_EQ(windowRect(dialog.m_hWnd).right, 400) << "no narrower than 350";
}

} // namespace
