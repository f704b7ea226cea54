// Static controls: texts, shapes, pictures, notifications.
#include "control_fixture.h"
#include "win32/dialog.h"
#include "win32/draw.h"
#include "win32/gdi.h"
#include "win32/icons.h"
#include "win32/static.h"

namespace vndk::win32 {
namespace {

using namespace test;

class StaticTest : public ControlFixture {
protected:
    HWND makeStatic(DWORD style, LPCSTR text = "", int width = 60, int height = 40) {
        return make("STATIC", style, 20, 20, width, height, text);
    }
    std::uint32_t at(int x, int y) { return pixel(left + 20 + x, top + 20 + y); }
    static std::uint32_t system(int index) { return rgbOf(GetSysColor(index)); }
    /// Columns and rows of the control that hold pixels of the text's colour.
    RECT inkOf(int width, int height) {
        RECT ink{width, height, 0, 0};
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                if (at(x, y) == system(COLOR_WINDOWTEXT))
                    ink = {std::min<LONG>(ink.left, x), std::min<LONG>(ink.top, y), std::max<LONG>(ink.right, x + 1),
                           std::max<LONG>(ink.bottom, y + 1)};
        return ink;
    }
};

TEST_F(StaticTest, ShapesHaveTheirColours) {
    struct Row {
        const char* name;
        DWORD style;
        int border, inside;
    };
    const Row rows[] = {
        {"black rectangle", SS_BLACKRECT, COLOR_3DDKSHADOW, COLOR_3DDKSHADOW},
        {"gray rectangle", SS_GRAYRECT, COLOR_3DSHADOW, COLOR_3DSHADOW},
        {"white rectangle", SS_WHITERECT, COLOR_3DHIGHLIGHT, COLOR_3DHIGHLIGHT},
        {"black frame", SS_BLACKFRAME, COLOR_3DDKSHADOW, -1},
        {"gray frame", SS_GRAYFRAME, COLOR_3DSHADOW, -1},
        {"white frame", SS_WHITEFRAME, COLOR_3DHIGHLIGHT, -1},
        {"etched frame", SS_ETCHEDFRAME, COLOR_BTNSHADOW, -1},
        {"etched line", SS_ETCHEDHORZ, COLOR_BTNSHADOW, -1},
        {"etched upright line", SS_ETCHEDVERT, COLOR_BTNSHADOW, -1},
    };
    const std::uint32_t ground = at(30, 20);
    for (const Row& row : rows) {
        const HWND control = makeStatic(row.style);
        EXPECT_EQ(at(0, 0), system(row.border)) << row.name;
        EXPECT_EQ(at(30, 20), row.inside >= 0 ? system(row.inside) : ground) << row.name;
        DestroyWindow(control);
        settle();
    }
}

TEST_F(StaticTest, TextStandsWhereTheStyleSays) {
    struct Row {
        const char* name;
        DWORD style;
        bool left, right, top;
    };
    const Row rows[] = {
        {"left", SS_LEFT, true, false, true},      {"right", SS_RIGHT, false, true, true},
        {"center", SS_CENTER, false, false, true}, {"half way down", SS_LEFT | SS_CENTERIMAGE, true, false, false},
        {"simple", SS_SIMPLE, true, false, true},
    };
    for (const Row& row : rows) {
        const HWND control = makeStatic(row.style, "Ill", 60, 40);
        const RECT ink = inkOf(60, 40);
        ASSERT_GT(ink.right, ink.left) << row.name;
        EXPECT_EQ(ink.left < 4, row.left) << row.name << ' ' << ink.left;
        EXPECT_EQ(ink.right > 56, row.right) << row.name << ' ' << ink.right;
        EXPECT_EQ(ink.bottom < 20, row.top) << row.name << ' ' << ink.bottom;
        DestroyWindow(control);
        settle();
    }
}

TEST_F(StaticTest, LongTextIsWrappedOrCut) {
    makeStatic(SS_LEFT, "word word word word", 60, 40);
    EXPECT_GT(inkOf(60, 40).bottom, 20);
    DestroyWindow(GetDlgItem(owner, controlId));
    makeStatic(SS_LEFTNOWORDWRAP, "word word word word", 60, 40);
    EXPECT_LT(inkOf(60, 40).bottom, 20);
}

TEST_F(StaticTest, NewTextShowsAtOnce) {
    const HWND control = makeStatic(SS_LEFT, "");
    EXPECT_EQ(inkOf(60, 40).right, 0);
    SetWindowText(control, "X");
    EXPECT_GT(inkOf(60, 40).right, 0);
    EXPECT_EQ(textOf(control), "X");
    SetWindowText(control, "");
    EXPECT_EQ(inkOf(60, 40).right, 0) << "the former text is gone";
    SendMessage(control, WM_SETREDRAW, FALSE, 0);
    SetWindowText(control, "X");
    EXPECT_EQ(inkOf(60, 40).right, 0) << "redraw is off";
}

TEST_F(StaticTest, MouseGoesThroughUnlessNotificationsAreAsked) {
    const HWND quiet = makeStatic(SS_LEFT);
    EXPECT_EQ(SendMessage(quiet, WM_NCHITTEST, 0, 0), HTTRANSPARENT);
    EXPECT_EQ(SendMessage(quiet, WM_GETDLGCODE, 0, 0), DLGC_STATIC);
    SendMessage(quiet, WM_LBUTTONDOWN, 0, 0);
    EnableWindow(quiet, FALSE);
    EXPECT_TRUE(takeCodes().empty());
    DestroyWindow(quiet);
    const HWND telling = makeStatic(SS_LEFT | SS_NOTIFY);
    EXPECT_EQ(SendMessage(telling, WM_NCHITTEST, 0, 0), HTCLIENT);
    user.doubleClick(left + 30, top + 30);
    settle();
    EXPECT_EQ(takeCodes(), (std::vector<int>{STN_CLICKED, STN_DBLCLK}));
    EnableWindow(telling, FALSE);
    EnableWindow(telling, TRUE);
    EXPECT_EQ(takeCodes(), (std::vector<int>{STN_DISABLE, STN_ENABLE}));
}

TEST_F(StaticTest, PictureGivesTheControlItsSizeUnlessAStyleKeepsIt) {
    struct Row {
        const char* name;
        DWORD style;
        RECT expected; // in the parent
    };
    const Row rows[] = {
        {"plain", SS_BITMAP, {20, 20, 36, 44}},
        {"in the middle", SS_BITMAP | SS_CENTERIMAGE, {20, 20, 80, 60}},
        {"stretched", SS_BITMAP | SS_REALSIZECONTROL, {20, 20, 80, 60}},
        {"lower right corner", SS_BITMAP | SS_RIGHTJUST, {64, 36, 80, 60}},
    };
    const HBITMAP bitmap = CreateBitmap(16, 24, 1, 1, nullptr);
    for (const Row& row : rows) {
        const HWND control = makeStatic(row.style);
        EXPECT_EQ(SendMessage(control, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap)), 0) << row.name;
        RECT rect = windowRect(control);
        OffsetRect(&rect, -left, -top);
        EXPECT_TRUE(EqualRect(&rect, &row.expected)) << row.name << ": " << rect.left << ' ' << rect.top;
        EXPECT_EQ(SendMessage(control, STM_GETIMAGE, IMAGE_BITMAP, 0), reinterpret_cast<LRESULT>(bitmap));
        EXPECT_EQ(SendMessage(control, STM_GETIMAGE, IMAGE_ICON, 0), 0) << row.name;
        EXPECT_EQ(SendMessage(control, STM_SETICON, 0, 0), 0) << row.name << ": no icon";
        EXPECT_EQ(SendMessage(control, STM_SETIMAGE, IMAGE_BITMAP, 0), reinterpret_cast<LRESULT>(bitmap)) << row.name;
        DestroyWindow(control);
    }
    DeleteObject(bitmap);
}

TEST_F(StaticTest, PictureStandsInTheMiddleOrFillsTheControl) {
    const HDC dc = GetDC(owner);
    const HBITMAP bitmap = CreateCompatibleBitmap(dc, 10, 10);
    const HDC memory = CreateCompatibleDC(dc);
    const HGDIOBJ former = SelectObject(memory, bitmap);
    const RECT all{0, 0, 10, 10};
    const HBRUSH red = CreateSolidBrush(RGB(255, 0, 0));
    FillRect(memory, &all, red);
    SelectObject(memory, former);
    DeleteDC(memory);
    ReleaseDC(owner, dc);
    const HWND centered = makeStatic(SS_BITMAP | SS_CENTERIMAGE);
    SendMessage(centered, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap));
    EXPECT_EQ(at(25, 15), 0xFF0000U);
    EXPECT_EQ(at(34, 24), 0xFF0000U);
    EXPECT_NE(at(24, 14), 0xFF0000U);
    EXPECT_NE(at(35, 25), 0xFF0000U);
    DestroyWindow(centered);
    const HWND stretched = makeStatic(SS_BITMAP | SS_REALSIZECONTROL);
    SendMessage(stretched, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap));
    EXPECT_EQ(at(0, 0), 0xFF0000U);
    EXPECT_EQ(at(59, 39), 0xFF0000U);
    DestroyWindow(stretched);
    DeleteObject(bitmap);
    DeleteObject(red);
}

TEST_F(StaticTest, OwnerDrawnControlAsksTheParent) {
    int asked = 0;
    recorder.onMessage(WM_DRAWITEM, [&](HWND, UINT, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        const auto& item = *reinterpret_cast<DRAWITEMSTRUCT*>(lParam);
        EXPECT_EQ(wParam, static_cast<WPARAM>(controlId));
        EXPECT_EQ(item.CtlType, ODT_STATIC);
        EXPECT_EQ(item.rcItem.right, 60);
        ++asked;
        return TRUE;
    });
    makeStatic(SS_OWNERDRAW);
    EXPECT_EQ(asked, 1);
}

TEST_F(StaticTest, SunkenControlHasAStaticEdge) {
    const HWND control = makeStatic(SS_LEFT | SS_SUNKEN);
    EXPECT_EQ(clientRect(control).right, 58);
    EXPECT_EQ(clientRect(control).bottom, 38);
}

TEST_F(StaticTest, TitleOfAPictureIsNoText) {
    const HWND control = makeStatic(SS_ICON, "#4711");
    EXPECT_EQ(textOf(control), "");
    EXPECT_EQ(SendMessage(control, STM_GETICON, 0, 0), 0) << "there is no such icon";
}

} // namespace
} // namespace vndk::win32
