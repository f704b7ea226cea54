#include "canvas.h"
#include "win32/error.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <set>
#include <utility>

namespace {

using Pixels = std::set<std::pair<int, int>>;

Pixels drawn(Canvas& canvas) {
    Pixels pixels;
    for (int y = 0; y < canvas.height(); ++y)
        for (int x = 0; x < canvas.width(); ++x)
            if ((canvas.pixel(x, y) & 0xFFFFFF) == 0)
                pixels.insert({x, y});
    return pixels;
}

/// Along the longer axis each place but the last; on the other the nearest whole number, of two equally near ones the
/// smaller. Whole numbers only, so that there is no doubt about halves.
Pixels expectedLine(POINT from, POINT to) {
    const int dx = to.x - from.x;
    const int dy = to.y - from.y;
    const int steps = std::max(std::abs(dx), std::abs(dy));
    Pixels pixels;
    const auto nearest = [&](int start, int distance, int step) {
        // The largest number whose half a pixel lies below the exact place.
        const int twice = 2 * (start * steps + distance * step) - steps; // of (place - 1/2) * 2 * steps
        const int divisor = 2 * steps;
        int result = twice / divisor;
        while (result * divisor < twice)
            ++result;
        while ((result - 1) * divisor >= twice)
            --result;
        return result;
    };
    for (int step = 0; step < steps; ++step)
        pixels.insert({nearest(from.x, dx, step), nearest(from.y, dy, step)});
    return pixels;
}

TEST(Line, HasThePixelsNearestToItInEveryDirection) {
    constexpr int middle = 12;
    for (int y = 0; y <= 2 * middle; ++y)
        for (int x = 0; x <= 2 * middle; ++x) {
            Canvas canvas(2 * middle + 1, 2 * middle + 1);
            MoveToEx(canvas.dc(), middle, middle, nullptr);
            LineTo(canvas.dc(), x, y);
            ASSERT_EQ(drawn(canvas), expectedLine({middle, middle}, {x, y})) << "to " << x << ", " << y;
        }
}

TEST(Line, FromAPointToItselfIsNothing) {
    for (int width : {1, 5}) {
        Canvas canvas(10, 10);
        canvas.pen(PS_SOLID, width, kBlack);
        MoveToEx(canvas.dc(), 5, 5, nullptr);
        EXPECT_TRUE(LineTo(canvas.dc(), 5, 5));
        EXPECT_TRUE(drawn(canvas).empty()) << "width " << width;
    }
}

TEST(Line, PositionMovesWithItAndIsTold) {
    Canvas canvas(10, 10);
    POINT former{};
    EXPECT_TRUE(MoveToEx(canvas.dc(), 3, 4, &former));
    EXPECT_EQ(former.x, 0);
    LineTo(canvas.dc(), 7, 4);
    MoveToEx(canvas.dc(), 0, 0, &former);
    EXPECT_EQ(former.x, 7);
    EXPECT_EQ(former.y, 4);
    const POINT points[] = {{1, 1}, {2, 5}};
    PolylineTo(canvas.dc(), points, 2);
    Polyline(canvas.dc(), points, 2);
    GetCurrentPositionEx(canvas.dc(), &former);
    EXPECT_EQ(former.y, 5);
    EXPECT_EQ(canvas.color(0, 0), kBlack) << "PolylineTo begins at the position";
}

TEST(Line, EndpointsFarOutsideKeepItsSlope) {
    // The part inside must be the very one of a line computed in full.
    Canvas canvas(20, 20);
    MoveToEx(canvas.dc(), -1000, -490, nullptr);
    LineTo(canvas.dc(), 1020, 520);
    Pixels expected;
    for (const auto& [x, y] : expectedLine({-1000, -490}, {1020, 520}))
        if (x >= 0 && x < 20 && y >= 0 && y < 20)
            expected.insert({x, y});
    EXPECT_EQ(drawn(canvas), expected);
    EXPECT_FALSE(expected.empty());
    canvas.clear();
    MoveToEx(canvas.dc(), -(1 << 26), -(1 << 26), nullptr);
    LineTo(canvas.dc(), 1 << 26, 1 << 26);
    for (int place = 0; place < 20; ++place)
        EXPECT_EQ(canvas.color(place, place), kBlack) << place;
}

TEST(Polyline, PaintsEachCornerOnce) {
    Canvas canvas(12, 12);
    SetROP2(canvas.dc(), R2_NOT);
    const POINT points[] = {{1, 1}, {9, 1}, {9, 9}, {1, 9}, {1, 1}};
    EXPECT_TRUE(Polyline(canvas.dc(), points, 5));
    EXPECT_EQ(drawn(canvas).size(), 32U);
    EXPECT_FALSE(Polyline(canvas.dc(), points, 1));
    EXPECT_FALSE(Polyline(canvas.dc(), nullptr, 5));
    const DWORD counts[] = {2, 1};
    EXPECT_FALSE(PolyPolyline(canvas.dc(), points, counts, 2));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST(Pen, DashesGoOnAroundCornersWithGapsInTheBackgroundColour) {
    struct Case {
        int style;
        const char* pattern; // over 24 pixels: '#' the pen, 'G' the background
    };
    for (const Case& row : {Case{PS_SOLID, "########################"}, Case{PS_DASH, "##################GGGGGG"},
                            Case{PS_DOT, "###GGG###GGG###GGG###GGG"}, Case{PS_DASHDOT, "#########GGGGGG###GGGGGG"},
                            Case{PS_DASHDOTDOT, "#########GGG###GGG###GGG"}}) {
        Canvas canvas(14, 13);
        canvas.pen(row.style, 1, kBlack);
        SetBkColor(canvas.dc(), kGreen);
        const POINT corner[] = {{0, 0}, {12, 0}, {12, 12}};
        Polyline(canvas.dc(), corner, 3);
        std::string seen;
        for (int x = 0; x < 12; ++x)
            seen += canvas.rows()[0][static_cast<std::size_t>(x)];
        for (int y = 0; y < 12; ++y)
            seen += canvas.rows()[static_cast<std::size_t>(y)][12];
        EXPECT_EQ(seen, row.pattern) << row.style;
        canvas.clear();
        SetBkMode(canvas.dc(), TRANSPARENT);
        Polyline(canvas.dc(), corner, 3);
        for (const std::string& line : canvas.rows())
            EXPECT_EQ(line.find('G'), std::string::npos) << row.style;
    }
}

TEST(Pen, NullDrawsNothing) {
    Canvas canvas(10, 10);
    SelectObject(canvas.dc(), GetStockObject(NULL_PEN));
    MoveToEx(canvas.dc(), 0, 0, nullptr);
    LineTo(canvas.dc(), 9, 9);
    EXPECT_TRUE(drawn(canvas).empty());
}

TEST(Pen, WideLinesHaveTheirWidthAroundTheMiddle) {
    struct Case {
        int width;
        int first;
        int end;
    };
    for (const Case& row : {Case{2, 9, 11}, Case{3, 9, 12}, Case{4, 8, 12}, Case{5, 8, 13}}) {
        Canvas canvas(30, 20);
        canvas.pen(PS_SOLID, row.width, kBlack);
        MoveToEx(canvas.dc(), 8, 10, nullptr);
        LineTo(canvas.dc(), 22, 10);
        for (int y = 0; y < 20; ++y)
            EXPECT_EQ(canvas.color(15, y) == kBlack, y >= row.first && y < row.end) << row.width << ", row " << y;
    }
}

TEST(Pen, WideInvertedLinesPaintEachPixelOnce) {
    Canvas canvas(40, 40);
    canvas.pen(PS_SOLID, 6, kWhite);
    SetROP2(canvas.dc(), R2_XORPEN);
    const POINT points[] = {{6, 6}, {30, 8}, {10, 30}, {20, 2}};
    Polyline(canvas.dc(), points, 4);
    const Pixels once = drawn(canvas);
    EXPECT_TRUE(once.count({10, 29}) != 0);
    EXPECT_TRUE(once.count({30, 8}) != 0);
    Polyline(canvas.dc(), points, 4);
    EXPECT_TRUE(drawn(canvas).empty());
}

TEST(Pen, OfTheContextHasTheContextsColour) {
    Canvas canvas(4, 4);
    SelectObject(canvas.dc(), GetStockObject(DC_PEN));
    SelectObject(canvas.dc(), GetStockObject(DC_BRUSH));
    SetDCPenColor(canvas.dc(), kRed);
    SetDCBrushColor(canvas.dc(), kGreen);
    Rectangle(canvas.dc(), 0, 0, 3, 3);
    EXPECT_EQ(canvas.rows(), (Rows{"RRR.", "RGR.", "RRR.", "...."}));
}

} // namespace
