#include "canvas.h"
#include "gdi/objects.h"
#include "gdi/window_dc.h"
#include "win32/error.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <vector>

namespace {

using vndk::win32::createWindowDC;
using vndk::win32::deleteWindowDC;
using vndk::win32::PixelTarget;
using vndk::win32::Region;

TEST(SavedLevels, AreCountedFromOneAndDroppedWithThoseAbove) {
    Canvas canvas(4, 4);
    const HDC dc = canvas.dc();
    for (int level = 1; level <= 3; ++level) {
        SetTextColor(dc, RGB(level, 0, 0));
        EXPECT_EQ(SaveDC(dc), level);
    }
    SetTextColor(dc, kWhite);
    EXPECT_TRUE(RestoreDC(dc, -2));
    EXPECT_EQ(GetTextColor(dc), RGB(2, 0, 0));
    EXPECT_EQ(SaveDC(dc), 2);
    EXPECT_TRUE(RestoreDC(dc, 1));
    EXPECT_EQ(GetTextColor(dc), RGB(1, 0, 0));
}

TEST(SavedLevels, ThatDontExistChangeNothing) {
    Canvas canvas(4, 4);
    SaveDC(canvas.dc());
    SetTextColor(canvas.dc(), kRed);
    for (int level : {0, 2, -2, INT_MIN, INT_MAX})
        EXPECT_FALSE(RestoreDC(canvas.dc(), level)) << level;
    EXPECT_EQ(GetTextColor(canvas.dc()), kRed);
    EXPECT_EQ(SaveDC(canvas.dc()), 2);
}

TEST(SavedLevels, BringBackObjectsOriginsAndClip) {
    Canvas canvas(8, 8);
    const HDC dc = canvas.dc();
    SaveDC(dc);
    const HGDIOBJ pen = GetCurrentObject(dc, OBJ_PEN);
    SelectObject(dc, GetStockObject(WHITE_PEN));
    SetViewportOrgEx(dc, 3, 3, nullptr);
    IntersectClipRect(dc, 0, 0, 1, 1);
    MoveToEx(dc, 9, 9, nullptr);
    RestoreDC(dc, -1);
    EXPECT_EQ(GetCurrentObject(dc, OBJ_PEN), pen);
    POINT position{};
    GetCurrentPositionEx(dc, &position);
    EXPECT_EQ(position.x, 0);
    EXPECT_NE(SetPixel(dc, 7, 7, kRed), CLR_INVALID);
    EXPECT_EQ(canvas.color(7, 7), kRed);
}

TEST(Selecting, ABitmapGoesIntoOneMemoryContextAtATime) {
    Canvas canvas(4, 4);
    const HDC other = CreateCompatibleDC(nullptr);
    EXPECT_EQ(SelectObject(other, canvas.bitmap()), nullptr);

    std::vector<std::uint32_t> pixels(16);
    const HDC window = createWindowDC({pixels.data(), 4, 4, 4}, {0, 0}, Region(RECT{0, 0, 4, 4}), nullptr);
    const HBITMAP bitmap = CreateCompatibleBitmap(window, 2, 2);
    EXPECT_EQ(SelectObject(window, bitmap), nullptr);
    EXPECT_EQ(GetCurrentObject(window, OBJ_BITMAP), nullptr);
    EXPECT_NE(SelectObject(other, bitmap), nullptr);
    EXPECT_EQ(SelectObject(other, bitmap), bitmap) << "into the same context once more";
    DeleteDC(other);
    EXPECT_TRUE(DeleteObject(bitmap));
    deleteWindowDC(window);
}

TEST(Deleting, StockObjectsSucceedsAndChangesNothing) {
    Canvas canvas(4, 4);
    const RECT all{0, 0, 4, 4};
    for (int number : {BLACK_BRUSH, NULL_PEN, SYSTEM_FONT, DEFAULT_GUI_FONT})
        EXPECT_TRUE(DeleteObject(GetStockObject(number))) << number;
    EXPECT_NE(FillRect(canvas.dc(), &all, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH))), 0);
    EXPECT_EQ(canvas.color(1, 1), kBlack);
    EXPECT_EQ(GetObjectType(GetStockObject(SYSTEM_FONT)), OBJ_FONT);
}

TEST(Deleting, ASelectedObjectFailsUntilItIsSelectedOutAgain) {
    Canvas canvas(4, 4);
    const HPEN pen = CreatePen(PS_SOLID, 1, kRed);
    const HGDIOBJ old = SelectObject(canvas.dc(), pen);
    EXPECT_FALSE(DeleteObject(pen));
    SaveDC(canvas.dc());
    SelectObject(canvas.dc(), old);
    EXPECT_FALSE(DeleteObject(pen)) << "a saved level still has it";
    RestoreDC(canvas.dc(), -1);
    EXPECT_EQ(SelectObject(canvas.dc(), old), pen);
    EXPECT_TRUE(DeleteObject(pen));
    EXPECT_FALSE(DeleteObject(pen));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST(Deleting, AContextLetsItsObjectsGo) {
    const std::size_t before = vndk::win32::objectCount();
    {
        Canvas canvas(4, 4);
        canvas.pen(PS_DOT, 1, kRed);
        canvas.brush(kGreen);
        SaveDC(canvas.dc());
    }
    EXPECT_EQ(vndk::win32::objectCount(), before);
}

TEST(Bitmaps, WithoutWidthOrHeightAreTheStockBitmapOfOnePixel) {
    Canvas canvas(4, 4);
    const std::vector<HBITMAP> bitmaps{CreateBitmap(0, 5, 1, 32, nullptr), CreateBitmap(5, 0, 1, 1, nullptr),
                                       CreateCompatibleBitmap(canvas.dc(), 0, 0)};
    for (HBITMAP bitmap : bitmaps) {
        BITMAP data{};
        ASSERT_EQ(GetObject(bitmap, sizeof data, &data), static_cast<int>(sizeof data));
        EXPECT_EQ(data.bmWidth, 1);
        EXPECT_EQ(data.bmHeight, 1);
        EXPECT_EQ(data.bmBitsPixel, 1);
        EXPECT_TRUE(DeleteObject(bitmap));
        EXPECT_EQ(bitmap, bitmaps.front());
        EXPECT_EQ(GetObjectType(bitmap), OBJ_BITMAP) << "stock stays";
    }
}

TEST(Bitmaps, ThatCantBeAreRefused) {
    struct Case {
        int width;
        int height;
        UINT planes;
        UINT bits;
        DWORD error;
    };
    for (const Case& row :
         {Case{-1, 5, 1, 32, ERROR_INVALID_PARAMETER}, Case{5, INT_MIN, 1, 32, ERROR_INVALID_PARAMETER},
          Case{5, 5, 3, 7, ERROR_INVALID_PARAMETER}, Case{5, 5, 0x10000, 0x10000, ERROR_INVALID_PARAMETER},
          Case{INT_MAX, INT_MAX, 1, 32, ERROR_NOT_ENOUGH_MEMORY},
          Case{1 << 20, 1 << 20, 1, 1, ERROR_NOT_ENOUGH_MEMORY}}) {
        EXPECT_EQ(CreateBitmap(row.width, row.height, row.planes, row.bits, nullptr), nullptr)
            << row.width << " " << row.bits;
        EXPECT_EQ(GetLastError(), row.error) << row.width << " " << row.bits;
    }
}

TEST(Bitmaps, AreAsTheContextTheyAreMadeFor) {
    const HDC fresh = CreateCompatibleDC(nullptr);
    const HBITMAP mono = CreateCompatibleBitmap(fresh, 3, 2);
    BITMAP data{};
    GetObject(mono, sizeof data, &data);
    EXPECT_EQ(data.bmBitsPixel, 1) << "the context's first bitmap is monochrome";
    EXPECT_EQ(data.bmWidthBytes, 2);
    Canvas canvas(4, 4);
    const HBITMAP section = CreateCompatibleBitmap(canvas.dc(), 3, 2);
    EXPECT_EQ(GetObject(section, sizeof data, &data), static_cast<int>(sizeof data));
    EXPECT_EQ(data.bmBitsPixel, 32);
    EXPECT_NE(data.bmBits, nullptr);
    DeleteDC(fresh);
    DeleteObject(mono);
    DeleteObject(section);
}

TEST(Bitmaps, BitsGoInAndComeOutInRowsOfWords) {
    const std::uint8_t bits[] = {0xA0, 0x00, 0x40, 0x00};
    const HBITMAP bitmap = CreateBitmap(3, 2, 1, 1, bits);
    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ old = SelectObject(dc, bitmap);
    EXPECT_EQ(GetPixel(dc, 0, 0), kWhite);
    EXPECT_EQ(GetPixel(dc, 1, 0), kBlack);
    EXPECT_EQ(GetPixel(dc, 1, 1), kWhite);
    std::uint8_t out[4]{};
    EXPECT_EQ(GetBitmapBits(bitmap, 0, nullptr), 4);
    EXPECT_EQ(GetBitmapBits(bitmap, 3, out), 3);
    EXPECT_EQ(out[0], 0xA0);
    const std::uint8_t changed[] = {0x00, 0x00, 0xE0, 0x00};
    EXPECT_EQ(SetBitmapBits(bitmap, 100, changed), 4);
    EXPECT_EQ(GetPixel(dc, 0, 0), kBlack);
    EXPECT_EQ(GetPixel(dc, 2, 1), kWhite);
    SelectObject(dc, old);
    DeleteDC(dc);
    DeleteObject(bitmap);
}

TEST(Objects, TellWhatTheyWereMadeOf) {
    const HPEN pen = CreatePen(PS_DASH, 0, kRed);
    LOGPEN pens{};
    EXPECT_EQ(GetObject(pen, sizeof pens, &pens), static_cast<int>(sizeof pens));
    EXPECT_EQ(pens.lopnStyle, PS_DASH);
    EXPECT_EQ(pens.lopnWidth.x, 1) << "0 stands for 1";
    EXPECT_EQ(GetObject(pen, sizeof pens - 1, &pens), 0);
    const HBRUSH brush = CreateHatchBrush(HS_CROSS, kBlue);
    LOGBRUSH brushes{};
    EXPECT_EQ(GetObject(brush, 0, nullptr), static_cast<int>(sizeof brushes));
    GetObject(brush, sizeof brushes, &brushes);
    EXPECT_EQ(brushes.lbStyle, BS_HATCHED);
    EXPECT_EQ(brushes.lbHatch, static_cast<ULONG_PTR>(HS_CROSS));
    EXPECT_EQ(brushes.lbColor, kBlue);
    DeleteObject(pen);
    DeleteObject(brush);
    EXPECT_EQ(CreatePen(17, 1, 0), nullptr);
    EXPECT_EQ(CreateHatchBrush(-1, 0), nullptr);
    EXPECT_EQ(GetStockObject(9), nullptr);
    EXPECT_EQ(GetStockObject(-1), nullptr);
}

TEST(Attributes, SettersAnswerTheValueBeforeAndRefuseOthers) {
    struct Case {
        const char* name;
        std::function<int(HDC, int)> set;
        int first;
        int other;
        int wrong;
    };
    const std::vector<Case> cases{
        {"mix", SetROP2, R2_COPYPEN, R2_XORPEN, 17},
        {"background", SetBkMode, OPAQUE, TRANSPARENT, 3},
        {"stretch", SetStretchBltMode, BLACKONWHITE, HALFTONE, 0},
        {"fill", SetPolyFillMode, ALTERNATE, WINDING, -1},
        {"arc", SetArcDirection, AD_COUNTERCLOCKWISE, AD_CLOCKWISE, 9},
    };
    Canvas canvas(4, 4);
    for (const Case& row : cases) {
        EXPECT_EQ(row.set(canvas.dc(), row.other), row.first) << row.name;
        EXPECT_EQ(row.set(canvas.dc(), row.wrong), 0) << row.name;
        EXPECT_EQ(row.set(canvas.dc(), row.first), row.other) << row.name;
    }
    EXPECT_EQ(SetMapMode(canvas.dc(), 2), 0);
    EXPECT_EQ(SetMapMode(canvas.dc(), MM_TEXT), MM_TEXT);
}

TEST(Origins, MovePointsBothWays) {
    Canvas canvas(10, 10);
    const HDC dc = canvas.dc();
    POINT former{};
    SetViewportOrgEx(dc, 2, 3, nullptr);
    SetWindowOrgEx(dc, -1, 1, nullptr);
    OffsetViewportOrgEx(dc, 1, 0, &former);
    EXPECT_EQ(former.x, 2);
    POINT point{4, 5};
    LPtoDP(dc, &point, 1);
    EXPECT_EQ(point.x, 8); // 4 + 1 + 3
    EXPECT_EQ(point.y, 7); // 5 - 1 + 3
    DPtoLP(dc, &point, 1);
    EXPECT_EQ(point.x, 4);
    EXPECT_EQ(point.y, 5);
    SetPixel(dc, 0, 1, kRed);
    EXPECT_EQ(canvas.pixel(4, 3), 0xFF0000U);
}

TEST(Origins, FarOffNeverOverflow) {
    Canvas canvas(10, 10);
    const HDC dc = canvas.dc();
    for (int value : {INT_MIN, INT_MAX}) {
        SetViewportOrgEx(dc, value, value, nullptr);
        SetWindowOrgEx(dc, -(value / 2), value, nullptr);
        OffsetViewportOrgEx(dc, value, value, nullptr);
        SetBrushOrgEx(dc, value, value, nullptr);
        Rectangle(dc, INT_MIN, INT_MIN, INT_MAX, INT_MAX);
        Ellipse(dc, INT_MIN, INT_MIN, INT_MAX, INT_MAX);
        RoundRect(dc, INT_MIN, INT_MIN, INT_MAX, INT_MAX, INT_MIN, INT_MAX);
        MoveToEx(dc, INT_MIN, INT_MAX, nullptr);
        LineTo(dc, INT_MAX, INT_MIN);
        StretchBlt(dc, INT_MIN, INT_MAX, INT_MAX, INT_MIN, dc, INT_MIN, INT_MAX, INT_MIN, INT_MAX, SRCCOPY);
        EXPECT_EQ(GetPixel(dc, value, value), CLR_INVALID);
    }
}

TEST(DeviceCaps, DescribeTheScreen) {
    std::vector<std::uint32_t> pixels(std::size_t{1280} * 4);
    vndk::win32::setScreenTarget({pixels.data(), 1280, 4, 1280});
    const HDC dc = CreateDC("DISPLAY", nullptr, nullptr, nullptr);
    EXPECT_EQ(GetDeviceCaps(dc, HORZRES), 1280);
    EXPECT_EQ(GetDeviceCaps(dc, LOGPIXELSX), 96);
    EXPECT_EQ(GetDeviceCaps(dc, BITSPIXEL) * GetDeviceCaps(dc, PLANES), 32);
    EXPECT_EQ(GetDeviceCaps(dc, NUMCOLORS), -1);
    EXPECT_EQ(GetDeviceCaps(dc, 9999), 0);
    EXPECT_NE(SetPixel(dc, 1279, 3, kRed), CLR_INVALID);
    EXPECT_EQ(pixels.back(), 0xFFFF0000U) << "the screen's pixels are opaque";
    vndk::win32::setScreenTarget({});
    EXPECT_EQ(SetPixel(dc, 0, 0, kRed), CLR_INVALID) << "there is no screen any more";
    EXPECT_TRUE(DeleteDC(dc));
    EXPECT_EQ(CreateDC("PRINTER", nullptr, nullptr, nullptr), nullptr);
}

TEST(WindowContexts, PaintTheirVisiblePartOnlyAndKeepItFromTheClip) {
    std::vector<std::uint32_t> pixels(100, 0xFF000000);
    const PixelTarget target{pixels.data(), 10, 10, 10};
    const auto window = reinterpret_cast<HWND>(UINT_PTR{42});
    const HDC dc = createWindowDC(target, {2, 2}, Region(RECT{2, 2, 6, 6}) - Region(RECT{3, 3, 4, 4}), window);
    const HRGN region = CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(GetClipRgn(dc, region), 0);
    EXPECT_EQ(WindowFromDC(dc), window);
    const RECT all{-5, -5, 50, 50};
    FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    int painted = 0;
    for (std::uint32_t pixel : pixels)
        painted += pixel == 0xFFFFFFFF ? 1 : 0;
    EXPECT_EQ(painted, 15);
    EXPECT_EQ(pixels[33], 0xFF000000U);
    RECT box{};
    EXPECT_EQ(GetClipBox(dc, &box), COMPLEXREGION);
    EXPECT_EQ(box.left, 0);
    EXPECT_EQ(box.right, 4);
    EXPECT_FALSE(DeleteDC(dc)) << "a window's context is given back, not deleted";
    vndk::win32::moveWindowDC(dc, target, {8, 8}, Region(RECT{0, 0, 100, 100}));
    SetPixel(dc, 0, 0, kRed);
    EXPECT_EQ(pixels[88], 0xFFFF0000U);
    EXPECT_EQ(SetPixel(dc, 2, 2, kRed), CLR_INVALID) << "outside of the pixels, whatever is called visible";
    SetTextColor(dc, kRed);
    vndk::win32::resetWindowDC(dc);
    EXPECT_EQ(GetTextColor(dc), kBlack);
    EXPECT_TRUE(deleteWindowDC(dc));
    EXPECT_FALSE(deleteWindowDC(dc));
    DeleteObject(region);
}

TEST(WindowContexts, CountClipAndPatternsFromTheirOwnCorner) {
    std::vector<std::uint32_t> pixels(64);
    const HDC dc = createWindowDC({pixels.data(), 8, 8, 8}, {3, 2}, Region(RECT{0, 0, 8, 8}), nullptr);
    IntersectClipRect(dc, 1, 1, 4, 3);
    const std::uint8_t bits[] = {0x80, 0, 0x00, 0};
    const HBITMAP bitmap = CreateBitmap(2, 2, 1, 1, bits);
    const HBRUSH pattern = CreatePatternBrush(bitmap);
    SetTextColor(dc, kRed);
    const RECT all{-9, -9, 9, 9};
    FillRect(dc, &all, pattern);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x) {
            const bool inside = x >= 4 && x < 7 && y >= 3 && y < 5;
            const bool one = (x - 3) % 2 == 0 && (y - 2) % 2 == 0;
            EXPECT_EQ(pixels[static_cast<std::size_t>(y * 8 + x)], !inside ? 0U
                                                                   : one   ? 0xFFFFFFFF
                                                                           : 0xFFFF0000)
                << x << ", " << y;
        }
    deleteWindowDC(dc);
    DeleteObject(pattern);
    DeleteObject(bitmap);
}

TEST(DeadHandles, AreRefusedByEveryCall) {
    Canvas canvas(4, 4);
    const HDC dead = CreateCompatibleDC(nullptr);
    DeleteDC(dead);
    const HBRUSH deadBrush = CreateSolidBrush(0);
    DeleteObject(deadBrush);
    const HPEN pen = CreatePen(PS_SOLID, 1, 0);
    const auto wrongKind = reinterpret_cast<HRGN>(pen);
    const RECT rect{0, 0, 2, 2};
    const POINT points[] = {{0, 0}, {1, 1}};
    RECT box{};
    struct Case {
        const char* name;
        std::function<bool()> failed;
    };
    const std::vector<Case> cases{
        {"Rectangle", [&] { return !Rectangle(dead, 0, 0, 1, 1); }},
        {"LineTo", [&] { return !LineTo(dead, 1, 1); }},
        {"MoveToEx", [&] { return !MoveToEx(dead, 1, 1, nullptr); }},
        {"Polygon", [&] { return !Polygon(dead, points, 2); }},
        {"BitBlt target", [&] { return !BitBlt(dead, 0, 0, 1, 1, canvas.dc(), 0, 0, SRCCOPY); }},
        {"BitBlt source", [&] { return !BitBlt(canvas.dc(), 0, 0, 1, 1, dead, 0, 0, SRCCOPY); }},
        {"PatBlt", [&] { return !PatBlt(dead, 0, 0, 1, 1, PATCOPY); }},
        {"FillRect context",
         [&] { return FillRect(dead, &rect, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH))) == 0; }},
        {"FillRect brush", [&] { return FillRect(canvas.dc(), &rect, deadBrush) == 0; }},
        {"GetPixel", [&] { return GetPixel(dead, 0, 0) == CLR_INVALID; }},
        {"SetBkColor", [&] { return SetBkColor(dead, 0) == CLR_INVALID; }},
        {"SetTextAlign", [&] { return SetTextAlign(dead, 0) == GDI_ERROR; }},
        {"SaveDC", [&] { return SaveDC(dead) == 0; }},
        {"RestoreDC", [&] { return !RestoreDC(dead, -1); }},
        {"SelectObject context", [&] { return SelectObject(dead, pen) == nullptr; }},
        {"SelectObject object", [&] { return SelectObject(canvas.dc(), deadBrush) == nullptr; }},
        {"GetClipBox", [&] { return GetClipBox(dead, &box) == ERROR; }},
        {"GetClipRgn", [&] { return GetClipRgn(canvas.dc(), wrongKind) == -1; }},
        {"SelectClipRgn", [&] { return SelectClipRgn(canvas.dc(), wrongKind) == ERROR; }},
        {"GetRgnBox", [&] { return GetRgnBox(wrongKind, &box) == ERROR; }},
        {"GetObject", [&] { return GetObject(deadBrush, 0, nullptr) == 0; }},
        {"GetObjectType", [&] { return GetObjectType(deadBrush) == 0; }},
        {"CreateCompatibleDC", [&] { return CreateCompatibleDC(dead) == nullptr; }},
        {"CreateCompatibleBitmap", [&] { return CreateCompatibleBitmap(dead, 1, 1) == nullptr; }},
        {"CreatePatternBrush", [&] { return CreatePatternBrush(reinterpret_cast<HBITMAP>(pen)) == nullptr; }},
        {"GetDeviceCaps", [&] { return GetDeviceCaps(dead, BITSPIXEL) == 0; }},
        {"DeleteDC", [&] { return !DeleteDC(dead); }},
    };
    for (const Case& row : cases) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_TRUE(row.failed()) << row.name;
        EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE) << row.name;
    }
    DeleteObject(pen);
}

} // namespace
