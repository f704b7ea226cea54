#include "canvas.h"
#include "win32/error.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <vector>

namespace {

TEST(Rectangle, HasItsFrameOnTheFirstAndLastButOneRowsAndColumns) {
    Canvas canvas(6, 6);
    canvas.brush(kGreen);
    EXPECT_TRUE(Rectangle(canvas.dc(), 0, 0, 5, 5));
    EXPECT_EQ(canvas.rows(), (Rows{"#####.", "#GGG#.", "#GGG#.", "#GGG#.", "#####.", "......"}));
}

TEST(Rectangle, WithoutAPenIsOnePixelSmaller) {
    Canvas canvas(6, 6);
    canvas.brush(kGreen);
    SelectObject(canvas.dc(), GetStockObject(NULL_PEN));
    EXPECT_TRUE(Rectangle(canvas.dc(), 5, 5, 0, 0)); // corners in any order
    EXPECT_EQ(canvas.rows(), (Rows{"GGGG..", "GGGG..", "GGGG..", "GGGG..", "......", "......"}));
}

TEST(Rectangle, OfOneRowOrColumnIsPaintedOnce) {
    Canvas canvas(5, 5);
    SetROP2(canvas.dc(), R2_NOT);
    Rectangle(canvas.dc(), 0, 0, 4, 1);
    Rectangle(canvas.dc(), 4, 1, 5, 5);
    Rectangle(canvas.dc(), 1, 2, 2, 3);
    Rectangle(canvas.dc(), 2, 2, 2, 4);
    EXPECT_EQ(canvas.rows(), (Rows{"####.", "....#", ".#..#", "....#", "....#"}));
}

TEST(Rectangle, InsideFrameKeepsAWidePenWithinTheRectangle) {
    for (int width : {2, 3, 4, 5}) {
        Canvas canvas(20, 20);
        canvas.pen(PS_INSIDEFRAME, width, kRed);
        canvas.brush(kGreen);
        Rectangle(canvas.dc(), 2, 2, 18, 18);
        for (int place = 0; place < 20; ++place) {
            const bool inFrame = place >= 2 && place < 18;
            const bool inside = place >= 2 + width && place < 18 - width;
            const COLORREF expected = inside ? kGreen : inFrame ? kRed : kWhite;
            EXPECT_EQ(canvas.color(place, 10), expected) << width << ", column " << place;
            EXPECT_EQ(canvas.color(10, place), expected) << width << ", row " << place;
        }
    }
}

TEST(Ellipse, IsRoundConnectedAndFilled) {
    struct Case {
        int width;
        int height;
        Rows rows;
    };
    for (const Case& row :
         {Case{1, 1, {"#"}}, Case{3, 3, {".#.", "#G#", ".#."}},
          Case{5, 5, {".###.", "#GGG#", "#GGG#", "#GGG#", ".###."}}, Case{4, 4, {".##.", "#GG#", "#GG#", ".##."}},
          Case{9,
               9,
               {"...###...", ".##GGG##.", ".#GGGGG#.", "#GGGGGGG#", "#GGGGGGG#", "#GGGGGGG#", ".#GGGGG#.", ".##GGG##.",
                "...###..."}},
          Case{10, 4, {"..######..", "##GGGGGG##", "##GGGGGG##", "..######.."}}}) {
        Canvas canvas(row.width, row.height);
        canvas.brush(kGreen);
        Ellipse(canvas.dc(), 0, 0, row.width, row.height);
        EXPECT_EQ(canvas.rows(), row.rows) << row.width << " x " << row.height;
    }
}

TEST(Ellipse, OutlineLiesWithinOnePixelOfTheCurve) {
    for (int size : {20, 33, 64, 101}) {
        Canvas canvas(size, size);
        SelectObject(canvas.dc(), GetStockObject(NULL_BRUSH));
        Ellipse(canvas.dc(), 0, 0, size, size);
        const double radius = (size - 1) / 2.0;
        int pixels = 0;
        for (int y = 0; y < size; ++y)
            for (int x = 0; x < size; ++x)
                if (canvas.color(x, y) == kBlack) {
                    ++pixels;
                    ASSERT_LT(std::abs(std::hypot(x - radius, y - radius) - radius), 0.75)
                        << size << ": " << x << ", " << y;
                }
        // A thin curve has one pixel for each step along the longer direction.
        EXPECT_NEAR(pixels, 8 * radius / std::sqrt(2.0), 9) << size;
    }
}

TEST(Ellipse, LyingDownIsTheSameAsStanding) {
    for (int width = 1; width < 40; ++width)
        for (int height = 1; height <= width; ++height) {
            Canvas lying(width, height);
            Canvas standing(height, width);
            Ellipse(lying.dc(), 0, 0, width, height);
            Ellipse(standing.dc(), 0, 0, height, width);
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x)
                    ASSERT_EQ(lying.pixel(x, y), standing.pixel(y, x))
                        << width << " x " << height << ": " << x << ", " << y;
        }
}

TEST(Figures, WithAWidePenPaintNoPixelTwice) {
    const std::vector<std::function<void(HDC)>> figures{
        [](HDC dc) { Rectangle(dc, 5, 5, 35, 30); },
        [](HDC dc) { Ellipse(dc, 5, 5, 35, 30); },
        [](HDC dc) { RoundRect(dc, 5, 5, 35, 30, 10, 14); },
    };
    for (std::size_t index = 0; index < figures.size(); ++index) {
        Canvas canvas(40, 40);
        canvas.pen(PS_SOLID, 5, kWhite);
        canvas.brush(kWhite);
        SetROP2(canvas.dc(), R2_XORPEN);
        figures[index](canvas.dc());
        for (int x = 3; x < 37; ++x)
            EXPECT_EQ(canvas.color(x, 18), kBlack) << "figure " << index << ", column " << x;
    }
}

TEST(Figures, WithAWidePenAreSymmetric) {
    for (int width : {2, 3, 4, 7})
        for (int size : {20, 21}) {
            Canvas canvas(size + 10, size + 10);
            canvas.pen(PS_SOLID, width, kBlack);
            RoundRect(canvas.dc(), 5, 5, 5 + size, 5 + size, 12, 12);
            const int last = size + 9 + (width % 2 == 0 ? -1 : 0); // an even pen lies half a pixel higher
            for (int y = 0; y <= last; ++y)
                for (int x = 0; x <= last; ++x) {
                    ASSERT_EQ(canvas.pixel(x, y), canvas.pixel(last - x, y)) << width << ": " << x << ", " << y;
                    ASSERT_EQ(canvas.pixel(x, y), canvas.pixel(y, x)) << width << ": " << x << ", " << y;
                }
        }
}

TEST(Ellipse, OutlineAndInsideArePaintedOnceEach) {
    for (int width = 1; width < 24; ++width)
        for (int height : {1, 2, 5, 16, 23}) {
            Canvas canvas(width, height);
            canvas.brush(kWhite);
            canvas.pen(PS_SOLID, 1, kWhite);
            SetROP2(canvas.dc(), R2_XORPEN);
            Ellipse(canvas.dc(), 0, 0, width, height);
            const HRGN region = CreateEllipticRgn(0, 0, width, height);
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x)
                    ASSERT_EQ(canvas.color(x, y) == kBlack, PtInRegion(region, x, y) != 0)
                        << width << " x " << height << ": " << x << ", " << y;
            DeleteObject(region);
        }
}

TEST(RoundRect, HasQuartersOfTheEllipseAtItsCorners) {
    Canvas canvas(10, 8);
    canvas.brush(kGreen);
    RoundRect(canvas.dc(), 0, 0, 10, 8, 5, 5);
    EXPECT_EQ(canvas.rows(), (Rows{".########.", "#GGGGGGGG#", "#GGGGGGGG#", "#GGGGGGGG#", "#GGGGGGGG#", "#GGGGGGGG#",
                                   "#GGGGGGGG#", ".########."}));
    Canvas square(6, 5);
    RoundRect(square.dc(), 0, 0, 6, 5, 0, 0);
    EXPECT_EQ(square.rows(), (Rows{"######", "#....#", "#....#", "#....#", "######"}));
}

TEST(Arc, TwoHalvesMakeTheWholeEllipse) {
    for (int size : {18, 19}) {
        Canvas halves(size, size);
        Canvas whole(size, size);
        const int middle = size / 2;
        Arc(halves.dc(), 0, 0, size, size, 0, middle, size, middle);
        Arc(halves.dc(), 0, 0, size, size, size, middle, 0, middle);
        SelectObject(whole.dc(), GetStockObject(NULL_BRUSH));
        Ellipse(whole.dc(), 0, 0, size, size);
        EXPECT_EQ(halves.rows(), whole.rows()) << size;
    }
}

TEST(Arc, RunsCounterclockwiseUnlessToldOtherwise) {
    Canvas canvas(21, 21);
    Arc(canvas.dc(), 0, 0, 21, 21, 20, 10, 10, 0); // from the right to the top
    EXPECT_EQ(canvas.color(17, 3), kBlack);
    EXPECT_EQ(canvas.color(3, 17), kWhite);
    canvas.clear();
    SetArcDirection(canvas.dc(), AD_CLOCKWISE);
    Arc(canvas.dc(), 0, 0, 21, 21, 20, 10, 10, 0);
    EXPECT_EQ(canvas.color(17, 3), kWhite);
    EXPECT_EQ(canvas.color(3, 17), kBlack);
    canvas.clear();
    Arc(canvas.dc(), 0, 0, 21, 21, 20, 10, 30, 10); // equal rays
    EXPECT_EQ(canvas.color(17, 3), kBlack);
    EXPECT_EQ(canvas.color(3, 17), kBlack);
}

TEST(Arc, WithAWidePenIsARing) {
    Canvas canvas(40, 40);
    canvas.pen(PS_SOLID, 4, kBlack);
    Arc(canvas.dc(), 4, 4, 36, 36, 36, 20, 4, 20); // the upper half
    EXPECT_EQ(canvas.color(20, 3), kBlack);
    EXPECT_EQ(canvas.color(20, 5), kBlack);
    EXPECT_EQ(canvas.color(20, 8), kWhite);
    EXPECT_EQ(canvas.color(20, 35), kWhite);
}

TEST(PieAndChord, FillTheirPartOnly) {
    using Figure = BOOL (*)(HDC, int, int, int, int, int, int, int, int);
    struct Case {
        const char* name;
        Figure draw;
        bool wedge; // is a point between centre and chord filled?
    };
    for (const Case& row : {Case{"pie", Pie, true}, Case{"chord", Chord, false}}) {
        Canvas canvas(41, 41);
        canvas.brush(kGreen);
        row.draw(canvas.dc(), 0, 0, 41, 41, 40, 20, 20, 0); // the upper right quarter
        EXPECT_EQ(canvas.color(31, 9), kGreen) << row.name;
        EXPECT_EQ(canvas.color(24, 16) == kGreen, row.wedge) << row.name;
        EXPECT_EQ(canvas.color(10, 30), kWhite) << row.name;
        EXPECT_EQ(canvas.color(20, 0), kBlack) << row.name;
        EXPECT_EQ(canvas.color(20, 20) == kBlack, row.wedge) << row.name;
    }
}

TEST(Polygon, FillModesDifferInTheMiddleOfAStar) {
    const POINT star[] = {{20, 0}, {32, 38}, {0, 14}, {39, 14}, {8, 38}};
    for (int mode : {ALTERNATE, WINDING}) {
        Canvas canvas(40, 40);
        canvas.brush(kGreen);
        SetPolyFillMode(canvas.dc(), mode);
        EXPECT_TRUE(Polygon(canvas.dc(), star, 5));
        EXPECT_EQ(canvas.color(20, 20), mode == WINDING ? kGreen : kWhite);
        EXPECT_EQ(canvas.color(20, 7), kGreen);
    }
}

TEST(Polygon, PixelsOnLeftAndUpperEdgesBelongToIt) {
    Canvas canvas(8, 8);
    canvas.brush(kGreen);
    SelectObject(canvas.dc(), GetStockObject(NULL_PEN));
    const POINT points[] = {{1, 1}, {5, 1}, {5, 5}, {1, 5}, {2, 2}, {4, 2}, {4, 4}, {2, 4}};
    const INT counts[] = {4, 4};
    EXPECT_TRUE(PolyPolygon(canvas.dc(), points, counts, 2));
    EXPECT_EQ(canvas.rows(),
              (Rows{"........", ".GGGG...", ".G..G...", ".G..G...", ".GGGG...", "........", "........", "........"}));
    EXPECT_FALSE(Polygon(canvas.dc(), points, 1));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST(FillRect, LeavesRightAndBottomAndTakesSystemColours) {
    Canvas canvas(5, 4);
    const RECT rect{1, 1, 4, 3};
    EXPECT_NE(FillRect(canvas.dc(), &rect, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH))), 0);
    EXPECT_EQ(canvas.rows(), (Rows{".....", ".###.", ".###.", "....."}));
    EXPECT_NE(FillRect(canvas.dc(), &rect, reinterpret_cast<HBRUSH>(UINT_PTR{1})), 0);
    EXPECT_EQ(FillRect(canvas.dc(), nullptr, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH))), 0);
    EXPECT_EQ(FillRect(canvas.dc(), &rect, nullptr), 0);
    const RECT reversed{4, 3, 1, 1};
    canvas.clear();
    FillRect(canvas.dc(), &reversed, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    EXPECT_EQ(canvas.rows()[1], ".....");
}

TEST(FrameRect, IsABorderOfOnePixel) {
    Canvas canvas(6, 5);
    const RECT rect{1, 1, 5, 4};
    FrameRect(canvas.dc(), &rect, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    EXPECT_EQ(canvas.rows(), (Rows{"......", ".####.", ".#..#.", ".####.", "......"}));
}

TEST(Regions, AreFilledFramedAndInvertedInLogicalPoints) {
    Canvas canvas(8, 8);
    SetViewportOrgEx(canvas.dc(), 1, 1, nullptr);
    const HRGN region = CreateRectRgn(0, 0, 6, 6);
    const HRGN hole = CreateRectRgn(2, 2, 4, 4);
    CombineRgn(region, region, hole, RGN_DIFF);
    const auto green = CreateSolidBrush(kGreen);
    EXPECT_TRUE(FillRgn(canvas.dc(), region, green));
    EXPECT_TRUE(FrameRgn(canvas.dc(), region, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)), 1, 1));
    EXPECT_EQ(canvas.rows(),
              (Rows{"........", ".######.", ".######.", ".##..##.", ".##..##.", ".######.", ".######.", "........"}));
    EXPECT_TRUE(InvertRgn(canvas.dc(), region));
    EXPECT_EQ(canvas.rows()[1], "........");
    EXPECT_TRUE(PaintRgn(canvas.dc(), hole));
    DeleteObject(region);
    DeleteObject(hole);
    DeleteObject(green);
}

TEST(FrameRgn, LeavesWhatIsFartherFromTheEdge) {
    Canvas canvas(9, 9);
    const HRGN region = CreateRectRgn(0, 0, 9, 9);
    FrameRgn(canvas.dc(), region, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)), 3, 2);
    for (int y = 0; y < 9; ++y)
        for (int x = 0; x < 9; ++x)
            EXPECT_EQ(canvas.color(x, y) == kWhite, x >= 3 && x < 6 && y >= 2 && y < 7) << x << ", " << y;
    DeleteObject(region);
}

TEST(FloodFill, StopsAtTheBorderOrWhereTheColourEnds) {
    const auto draw = [](Canvas& canvas) {
        SelectObject(canvas.dc(), GetStockObject(NULL_BRUSH));
        Ellipse(canvas.dc(), 1, 1, 12, 12);
        SetPixel(canvas.dc(), 6, 6, kRed);
        canvas.brush(kGreen);
    };
    Canvas border(13, 13);
    draw(border);
    EXPECT_TRUE(ExtFloodFill(border.dc(), 5, 5, kBlack, FLOODFILLBORDER));
    EXPECT_EQ(border.color(6, 6), kGreen) << "any colour but the border's is filled";
    EXPECT_EQ(border.color(0, 0), kWhite);
    Canvas surface(13, 13);
    draw(surface);
    EXPECT_FALSE(ExtFloodFill(surface.dc(), 5, 5, kRed, FLOODFILLSURFACE));
    EXPECT_TRUE(ExtFloodFill(surface.dc(), 5, 5, kWhite, FLOODFILLSURFACE));
    EXPECT_EQ(surface.color(6, 6), kRed);
    EXPECT_EQ(surface.color(7, 7), kGreen);
    EXPECT_EQ(surface.color(0, 0), kWhite);
    EXPECT_FALSE(FloodFill(surface.dc(), -1, 5, kBlack));
    EXPECT_FALSE(FloodFill(surface.dc(), 1, 6, kBlack)) << "begins on the border";
}

TEST(FloodFill, FindsItsWayThroughASpiral) {
    Canvas canvas(31, 31);
    MoveToEx(canvas.dc(), 15, 15, nullptr);
    const int directions[4][2] = {{1, 0}, {0, 1}, {-1, 0}, {0, -1}};
    POINT at{15, 15};
    for (int leg = 0; leg < 14; ++leg) {
        const int length = 2 + (leg / 2) * 2;
        at.x += directions[leg % 4][0] * length;
        at.y += directions[leg % 4][1] * length;
        LineTo(canvas.dc(), at.x, at.y);
    }
    canvas.brush(kRed);
    ExtFloodFill(canvas.dc(), 0, 0, kWhite, FLOODFILLSURFACE);
    int white = 0;
    for (const std::string& row : canvas.rows())
        for (char letter : row)
            white += letter == '.' ? 1 : 0;
    EXPECT_EQ(white, 0) << "the spiral is open, so all of it is reached";
}

} // namespace
