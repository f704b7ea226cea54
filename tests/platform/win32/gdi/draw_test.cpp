#include "gdi/metrics.h"
#include "text_canvas.h"
#include "win32/error.h"
#include "win32/icons.h"
#include "win32/metrics.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

// ---- System colours ------------------------------------------------------------------------------------------------

TEST(SystemColors, ChangeWithTheirBrushes) {
    const INT index = COLOR_INFOBK;
    const COLORREF before = GetSysColor(index);
    HBRUSH brush = GetSysColorBrush(index);
    ASSERT_NE(SetSysColors(1, &index, &kRed), FALSE);
    EXPECT_EQ(GetSysColor(index), kRed);
    EXPECT_EQ(GetSysColorBrush(index), brush);
    Canvas canvas(4, 4);
    const RECT all{0, 0, 4, 4};
    FillRect(canvas.dc(), &all, brush);
    EXPECT_EQ(canvas.color(1, 1), kRed);
    canvas.clear();
    FillRect(canvas.dc(), &all, reinterpret_cast<HBRUSH>(UINT_PTR{COLOR_INFOBK + 1}));
    EXPECT_EQ(canvas.color(1, 1), kRed) << "the number in the brush's place";
    EXPECT_NE(DeleteObject(brush), FALSE);
    EXPECT_NE(FillRect(canvas.dc(), &all, brush), 0) << "system brushes stay";
    SetSysColors(1, &index, &before);
}

TEST(SystemColors, OfUnknownIndexesAreNotChanged) {
    const INT indexes[] = {COLOR_INFOBK, 99};
    const COLORREF colors[] = {kRed, kRed};
    const COLORREF before = GetSysColor(COLOR_INFOBK);
    EXPECT_EQ(SetSysColors(2, indexes, colors), FALSE);
    EXPECT_EQ(SetSysColors(1, nullptr, colors), FALSE);
    EXPECT_EQ(SetSysColors(-1, indexes, colors), FALSE);
    EXPECT_EQ(GetSysColor(COLOR_INFOBK), before);
    EXPECT_EQ(GetSysColorBrush(99), nullptr);
    EXPECT_EQ(GetSysColorBrush(-1), nullptr);
}

// ---- Rectangles ----------------------------------------------------------------------------------------------------

TEST(Rectangles, AreCombined) {
    using Combine = BOOL (*)(RECT*, const RECT*, const RECT*);
    const RECT big{0, 0, 10, 10};
    const RECT none{};
    const struct {
        const char* name;
        Combine combine;
        RECT first;
        RECT second;
        RECT result;
        BOOL answer;
    } cases[] = {
        {"overlap", IntersectRect, big, {5, 6, 20, 20}, {5, 6, 10, 10}, TRUE},
        {"touch", IntersectRect, big, {10, 0, 20, 10}, none, FALSE},
        {"empty inside", IntersectRect, big, {5, 5, 5, 8}, none, FALSE},
        {"union", UnionRect, big, {5, 6, 20, 20}, {0, 0, 20, 20}, TRUE},
        {"union with nothing", UnionRect, big, {50, 50, 50, 60}, big, TRUE},
        {"nothing with union", UnionRect, {50, 50, 40, 60}, big, big, TRUE},
        {"nothing at all", UnionRect, {9, 9, 9, 9}, none, none, FALSE},
        {"cut left", SubtractRect, big, {-5, -5, 4, 20}, {4, 0, 10, 10}, TRUE},
        {"cut right", SubtractRect, big, {7, 0, 20, 10}, {0, 0, 7, 10}, TRUE},
        {"cut top", SubtractRect, big, {0, 0, 10, 3}, {0, 3, 10, 10}, TRUE},
        {"cut bottom", SubtractRect, big, {-1, 8, 11, 11}, {0, 0, 10, 8}, TRUE},
        {"hole", SubtractRect, big, {2, 2, 4, 4}, big, TRUE},
        {"corner", SubtractRect, big, {5, 5, 20, 20}, big, TRUE},
        {"all", SubtractRect, big, {-1, -1, 11, 11}, none, FALSE},
        {"beside", SubtractRect, big, {20, 0, 30, 10}, big, TRUE},
    };
    for (const auto& row : cases) {
        RECT result{7, 7, 7, 7};
        EXPECT_EQ(row.combine(&result, &row.first, &row.second), row.answer) << row.name;
        EXPECT_EQ(result, row.result) << row.name;
        RECT inPlace = row.first;
        row.combine(&inPlace, &inPlace, &row.second);
        EXPECT_EQ(inPlace, row.result) << row.name << " in place";
    }
}

TEST(Rectangles, AreHalfOpenAndWrap) {
    const RECT rect{1, 2, 4, 6};
    EXPECT_NE(PtInRect(&rect, {1, 2}), FALSE);
    EXPECT_EQ(PtInRect(&rect, {4, 5}), FALSE);
    EXPECT_EQ(PtInRect(&rect, {3, 6}), FALSE);
    RECT wild{INT_MIN, 0, INT_MAX, 0};
    InflateRect(&wild, 1, -1);
    EXPECT_EQ(wild, (RECT{INT_MAX, 1, INT_MIN, -1}));
    OffsetRect(&wild, 1, 1);
    EXPECT_EQ(wild.left, INT_MIN);
    EXPECT_NE(IsRectEmpty(nullptr), FALSE);
    EXPECT_EQ(OffsetRect(nullptr, 1, 1), FALSE);
    EXPECT_EQ(EqualRect(&rect, nullptr), FALSE);
    EXPECT_EQ(IntersectRect(&wild, &rect, nullptr), FALSE);
}

// ---- The focus rectangle -------------------------------------------------------------------------------------------

TEST(FocusRect, DottedOnceAndGoneTwice) {
    for (const RECT rect :
         {RECT{2, 3, 9, 8}, RECT{2, 3, 9, 4}, RECT{2, 3, 3, 8}, RECT{-5, -5, 30, 30}, RECT{4, 4, 5, 5}}) {
        Canvas canvas(12, 12);
        for (int index = 0; index < 144; ++index)
            canvas.pixel(index % 12, index / 12) = static_cast<std::uint32_t>(index) * 0x01357 & 0xFFFFFF;
        const auto before = canvas.rows();
        std::vector<std::uint32_t> pixels(&canvas.pixel(0, 0), &canvas.pixel(0, 0) + 144);
        DrawFocusRect(canvas.dc(), &rect);
        for (int y = 0; y < 12; ++y)
            for (int x = 0; x < 12; ++x) {
                const RECT inside{rect.left + 1, rect.top + 1, rect.right - 1, rect.bottom - 1};
                const bool framed = PtInRect(&rect, {x, y}) != FALSE && PtInRect(&inside, {x, y}) == FALSE;
                const std::uint32_t change = framed && (x + y) % 2 != 0 ? 0xFFFFFF : 0;
                EXPECT_EQ(canvas.pixel(x, y), pixels[static_cast<std::size_t>(y * 12 + x)] ^ change)
                    << rect << ": " << x << ' ' << y;
            }
        DrawFocusRect(canvas.dc(), &rect);
        EXPECT_EQ(canvas.rows(), before) << rect;
    }
}

TEST(FocusRect, DotsMoveWithTheContextsOrigin) {
    Canvas canvas(8, 8);
    const RECT rect{0, 0, 6, 6};
    DrawFocusRect(canvas.dc(), &rect);
    EXPECT_EQ(canvas.rows()[0], ".#.#.#..");
    SetBrushOrgEx(canvas.dc(), 1, 0, nullptr);
    canvas.clear();
    DrawFocusRect(canvas.dc(), &rect);
    EXPECT_EQ(canvas.rows()[0], "#.#.#...");
}

// ---- States --------------------------------------------------------------------------------------------------------

using Places = std::set<std::pair<int, int>>;

/// What the subject paints black when it is drawn as it is.
Places shapeOf(LPARAM data, UINT kind) {
    TextCanvas canvas(60, 40);
    DrawStateA(canvas.dc(), nullptr, nullptr, data, 0, 5, 4, 0, 0, kind | DSS_NORMAL);
    return canvas.pixelsOf(kBlack);
}

TEST(DrawState, DisabledIsAShadowOverItsLight) {
    const auto text = reinterpret_cast<LPARAM>("&Grayed");
    const Places shape = shapeOf(text, DST_PREFIXTEXT);
    ASSERT_GT(shape.size(), 30u);
    TextCanvas canvas(60, 40);
    canvas.clear(kGreen);
    SetBkMode(canvas.dc(), OPAQUE);
    EXPECT_NE(DrawStateA(canvas.dc(), nullptr, nullptr, text, 0, 5, 4, 0, 0, DST_PREFIXTEXT | DSS_DISABLED), FALSE);
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 60; ++x) {
            const COLORREF expected = shape.count({x, y}) != 0           ? GetSysColor(COLOR_3DSHADOW)
                                      : shape.count({x - 1, y - 1}) != 0 ? GetSysColor(COLOR_3DHILIGHT)
                                                                         : kGreen;
            ASSERT_EQ(canvas.color(x, y), expected) << x << ' ' << y;
        }
}

TEST(DrawState, OfAnIconTakesAllThatIsNotWhite) {
    Canvas colors(4, 4);
    Canvas none(4, 4);
    none.clear(kBlack);
    colors.pixel(1, 1) = 0xFFFF00; // nearly as bright as white
    colors.pixel(2, 2) = 0x000001;
    ICONINFO info{TRUE, 0, 0, none.bitmap(), colors.bitmap()};
    HICON icon = CreateIconIndirect(&info);
    ASSERT_NE(icon, nullptr);
    TextCanvas canvas(10, 10);
    HBRUSH brush = CreateSolidBrush(kRed);
    const auto data = reinterpret_cast<LPARAM>(icon);
    EXPECT_NE(DrawStateA(canvas.dc(), brush, nullptr, data, 0, 3, 3, 0, 0, DST_ICON | DSS_MONO), FALSE);
    EXPECT_EQ(canvas.pixelsOf(kRed), (Places{{4, 4}, {5, 5}}));
    DeleteObject(brush);

    brush = CreateHatchBrush(HS_VERTICAL, kRed);
    canvas.clear();
    SetBkColor(canvas.dc(), kBlue);
    SetBkMode(canvas.dc(), OPAQUE);
    DrawStateA(canvas.dc(), brush, nullptr, data, 0, 3, 3, 0, 0, DST_ICON | DSS_MONO);
    EXPECT_EQ(canvas.pixelsOf(kRed), (Places{{4, 4}}));
    EXPECT_EQ(canvas.pixelsOf(kBlue), (Places{{5, 5}}));
    DeleteObject(brush);
    DestroyIcon(icon);
}

TEST(DrawState, UnionLeavesEverySecondPixel) {
    Canvas picture(8, 8);
    picture.clear(kBlack);
    TextCanvas canvas(20, 20);
    EXPECT_EQ(DrawStateA(canvas.dc(), nullptr, nullptr, reinterpret_cast<LPARAM>(picture.bitmap()), 0, 2, 2, 0, 0,
                         DST_BITMAP | DSS_UNION),
              FALSE)
        << "another context has it selected";
    HBITMAP bitmap = CreateBitmap(8, 8, 1, 1, nullptr);
    EXPECT_NE(DrawStateA(canvas.dc(), nullptr, nullptr, reinterpret_cast<LPARAM>(bitmap), 0, 2, 2, 0, 0,
                         DST_BITMAP | DSS_UNION),
              FALSE);
    const Places dots = canvas.pixelsOf(kBlack);
    EXPECT_EQ(dots.size(), 32u);
    for (const auto& [x, y] : dots)
        EXPECT_EQ((x + y) % 2, 1) << x << ' ' << y;
    DeleteObject(bitmap);
}

BOOL drawBox(HDC dc, LPARAM data, WPARAM extra, int width, int height) {
    if (extra == 99)
        return FALSE;
    const RECT rect{1, 1, width, height};
    FillRect(dc, &rect, reinterpret_cast<HBRUSH>(data));
    return TRUE;
}

TEST(DrawState, CallsTheProgramsProcedure) {
    TextCanvas canvas(20, 20);
    const auto black = reinterpret_cast<LPARAM>(GetStockObject(BLACK_BRUSH));
    EXPECT_NE(DrawStateA(canvas.dc(), nullptr, drawBox, black, 0, 5, 6, 4, 3, DST_COMPLEX), FALSE);
    EXPECT_EQ(canvas.painted(), (RECT{6, 7, 9, 9}));
    POINT origin{1, 1};
    GetViewportOrgEx(canvas.dc(), &origin);
    EXPECT_EQ(origin.x, 0);
    canvas.clear();
    EXPECT_NE(DrawStateA(canvas.dc(), nullptr, drawBox, black, 0, 5, 6, 4, 3, DST_COMPLEX | DSS_DISABLED), FALSE);
    EXPECT_EQ(canvas.pixelsOf(GetSysColor(COLOR_3DSHADOW)).size(), 6u);
    EXPECT_EQ(DrawStateA(canvas.dc(), nullptr, drawBox, black, 99, 5, 6, 4, 3, DST_COMPLEX), FALSE);
}

TEST(DrawState, OfNonsenseIsRefused) {
    TextCanvas canvas(10, 10);
    const struct {
        LPARAM data;
        UINT flags;
        int size;
    } cases[] = {{0, DST_TEXT, 0},
                 {0, DST_PREFIXTEXT | DSS_DISABLED, 0},
                 {12345, DST_ICON, 0},
                 {12345, DST_BITMAP | DSS_MONO, 0},
                 {0, DST_COMPLEX, 5},
                 {12345, 0x000F, 5},
                 {reinterpret_cast<LPARAM>("x"), DST_TEXT | DSS_DISABLED, INT_MAX}};
    for (const auto& row : cases)
        EXPECT_EQ(DrawStateA(canvas.dc(), nullptr, nullptr, row.data, 0, 0, 0, row.size, row.size, row.flags), FALSE)
            << row.data << ' ' << row.flags;
    EXPECT_EQ(DrawStateA(nullptr, nullptr, nullptr, reinterpret_cast<LPARAM>("x"), 0, 0, 0, 0, 0, DST_TEXT), FALSE);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_EQ(canvas.painted(), RECT{});
}

// ---- Metrics -------------------------------------------------------------------------------------------------------

TEST(Metrics, FollowTheScreen) {
    vndk::win32::setScreenSize(640, 480);
    EXPECT_EQ(GetSystemMetrics(SM_CXSCREEN), 640);
    EXPECT_EQ(GetSystemMetrics(SM_CYFULLSCREEN), 480 - GetSystemMetrics(SM_CYCAPTION));
    EXPECT_EQ(GetSystemMetrics(SM_CXMAXIMIZED), 640 + 2 * GetSystemMetrics(SM_CXSIZEFRAME));
    RECT area{};
    EXPECT_NE(SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0), FALSE);
    EXPECT_EQ(area, (RECT{0, 0, 640, 480}));
    EXPECT_EQ(GetSystemMetrics(-1), 0);
    EXPECT_EQ(GetSystemMetrics(9999), 0);
    vndk::win32::setScreenSize(1024, 768);
}

TEST(Metrics, OfFramesAgreeWithEachOther) {
    NONCLIENTMETRICSA metrics{};
    EXPECT_EQ(SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, 0, &metrics, 0), FALSE) << "the size isn't filled in";
    metrics.cbSize = sizeof metrics;
    ASSERT_NE(SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0), FALSE);
    EXPECT_EQ(metrics.iCaptionHeight + 1, GetSystemMetrics(SM_CYCAPTION));
    EXPECT_EQ(metrics.iMenuHeight + 1, GetSystemMetrics(SM_CYMENU));
    EXPECT_EQ(metrics.iScrollWidth, GetSystemMetrics(SM_CXVSCROLL));
    EXPECT_EQ(metrics.lfCaptionFont.lfWeight, FW_BOLD);
    EXPECT_STREQ(metrics.lfMenuFont.lfFaceName, "Tahoma");

    UINT lines = 0;
    EXPECT_NE(SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &lines, 0), FALSE);
    EXPECT_EQ(lines, 3u);
    EXPECT_EQ(SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, nullptr, 0), FALSE);
    EXPECT_EQ(SystemParametersInfoA(0xFFFF, 0, &lines, 0), FALSE);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

} // namespace
