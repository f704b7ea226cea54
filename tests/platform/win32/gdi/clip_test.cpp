#include "canvas.h"
#include "gdi/window_dc.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <vector>

namespace {

TEST(Clip, SelectingNothingTakesItAway) {
    Canvas canvas(10, 10);
    const HRGN region = CreateRectRgn(2, 2, 4, 4);
    EXPECT_EQ(SelectClipRgn(canvas.dc(), region), SIMPLEREGION);
    EXPECT_EQ(SetPixel(canvas.dc(), 5, 5, kRed), CLR_INVALID);
    EXPECT_EQ(SelectClipRgn(canvas.dc(), nullptr), SIMPLEREGION);
    EXPECT_EQ(GetClipRgn(canvas.dc(), region), 0);
    EXPECT_EQ(SetPixel(canvas.dc(), 5, 5, kRed), kRed);
    DeleteObject(region);
}

TEST(Clip, IsACopyOfTheRegion) {
    Canvas canvas(10, 10);
    const HRGN region = CreateRectRgn(0, 0, 3, 3);
    SelectObject(canvas.dc(), region);
    SetRectRgn(region, 0, 0, 10, 10);
    EXPECT_FALSE(PtVisible(canvas.dc(), 5, 5));
    EXPECT_EQ(GetClipRgn(canvas.dc(), region), 1);
    RECT box{};
    GetRgnBox(region, &box);
    EXPECT_EQ(box.right, 3);
    EXPECT_TRUE(DeleteObject(region));
}

TEST(Clip, CountsInDevicePointsAndItsBoxInLogicalOnes) {
    Canvas canvas(10, 10);
    SetViewportOrgEx(canvas.dc(), 4, 4, nullptr);
    EXPECT_EQ(IntersectClipRect(canvas.dc(), 0, 0, 3, 3), SIMPLEREGION);
    const HRGN region = CreateRectRgn(0, 0, 0, 0);
    GetClipRgn(canvas.dc(), region);
    RECT box{};
    GetRgnBox(region, &box);
    EXPECT_EQ(box.left, 4);
    EXPECT_EQ(GetClipBox(canvas.dc(), &box), SIMPLEREGION);
    EXPECT_EQ(box.left, 0);
    EXPECT_EQ(box.bottom, 3);
    EXPECT_EQ(OffsetClipRgn(canvas.dc(), 1, 0), SIMPLEREGION);
    GetClipBox(canvas.dc(), &box);
    EXPECT_EQ(box.left, 1);
    EXPECT_EQ(ExcludeClipRect(canvas.dc(), 2, 1, 3, 2), COMPLEXREGION);
    const RECT hole{2, 1, 3, 2};
    EXPECT_FALSE(RectVisible(canvas.dc(), &hole));
    EXPECT_TRUE(PtVisible(canvas.dc(), 1, 1));
    EXPECT_EQ(ExcludeClipRect(canvas.dc(), 9, 9, -9, -9), NULLREGION);
    EXPECT_EQ(GetClipBox(canvas.dc(), &box), NULLREGION);
    EXPECT_EQ(box.right, 0);
    DeleteObject(region);
}

TEST(Clip, ModesCombineWithWhatIsThere) {
    struct Case {
        int mode;
        int kind;
        bool old;  // is a point of the old clip alone visible?
        bool both; // one of old and new
        bool fresh;
    };
    for (const Case& row :
         {Case{RGN_AND, SIMPLEREGION, false, true, false}, Case{RGN_OR, COMPLEXREGION, true, true, true},
          Case{RGN_XOR, COMPLEXREGION, true, false, true}, Case{RGN_DIFF, COMPLEXREGION, true, false, false},
          Case{RGN_COPY, SIMPLEREGION, false, true, true}}) {
        Canvas canvas(10, 10);
        const HRGN region = CreateRectRgn(2, 2, 8, 8);
        IntersectClipRect(canvas.dc(), 0, 0, 5, 5);
        EXPECT_EQ(ExtSelectClipRgn(canvas.dc(), region, row.mode), row.kind) << row.mode;
        EXPECT_EQ(PtVisible(canvas.dc(), 0, 0), row.old) << row.mode;
        EXPECT_EQ(PtVisible(canvas.dc(), 3, 3), row.both) << row.mode;
        EXPECT_EQ(PtVisible(canvas.dc(), 7, 7), row.fresh) << row.mode;
        DeleteObject(region);
    }
    Canvas canvas(10, 10);
    EXPECT_EQ(ExtSelectClipRgn(canvas.dc(), nullptr, RGN_AND), ERROR);
}

/// Paints the same thing without a clip and through one: inside of the clip the pictures must agree, outside nothing
/// may have changed.
class ThroughRandomClips : public testing::TestWithParam<int> {};

struct Painting {
    const char* name;
    std::function<void(Canvas&)> paint;
};

const std::vector<Painting>& paintings() {
    static const std::vector<Painting> list{
        {"lines",
         [](Canvas& c) {
             for (int x = -20; x < 60; x += 7) {
                 MoveToEx(c.dc(), x, -10, nullptr);
                 LineTo(c.dc(), 40 - x, 50);
             }
         }},
        {"dashes",
         [](Canvas& c) {
             c.pen(PS_DASHDOT, 1, kRed);
             SetROP2(c.dc(), R2_XORPEN);
             const POINT points[] = {{-5, 3}, {38, 20}, {2, 37}, {20, -9}, {20, 50}};
             Polyline(c.dc(), points, 5);
         }},
        {"wide line",
         [](Canvas& c) {
             c.pen(PS_SOLID, 7, kBlue);
             const POINT points[] = {{3, 3}, {30, 12}, {8, 35}};
             Polyline(c.dc(), points, 3);
         }},
        {"ellipse",
         [](Canvas& c) {
             c.brush(kGreen);
             Ellipse(c.dc(), 2, 3, 37, 30);
         }},
        {"polygon",
         [](Canvas& c) {
             const POINT points[] = {{20, 0}, {32, 38}, {0, 14}, {39, 14}, {8, 38}};
             SelectObject(c.dc(), GetStockObject(GRAY_BRUSH));
             Polygon(c.dc(), points, 5);
         }},
        {"hatch",
         [](Canvas& c) {
             c.use(CreateHatchBrush(HS_DIAGCROSS, kRed));
             PatBlt(c.dc(), 1, 1, 35, 36, PATCOPY);
         }},
        {"stretch",
         [](Canvas& c) {
             Canvas source(9, 9);
             source.brush(kBlue);
             Ellipse(source.dc(), 0, 0, 9, 9);
             StretchBlt(c.dc(), 38, 2, -35, 33, source.dc(), 0, 0, 9, 9, SRCCOPY);
         }},
        {"scroll", [](Canvas& c) { BitBlt(c.dc(), 3, 5, 30, 30, c.dc(), 0, 0, SRCCOPY); }},
    };
    return list;
}

TEST_P(ThroughRandomClips, PaintingIsTheSameInsideAndNothingOutside) {
    constexpr int side = 40;
    const Painting& painting = paintings()[static_cast<std::size_t>(GetParam())];
    std::mt19937 engine(static_cast<unsigned>(GetParam()) + 1);
    const auto upTo = [&](int highest) { return std::uniform_int_distribution<int>(0, highest)(engine); };
    const auto drawGround = [](Canvas& canvas) {
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x)
                canvas.pixel(x, y) = static_cast<std::uint32_t>(x * 5 + y * 0x700);
    };
    for (int round = 0; round < 20; ++round) {
        Canvas ground(side, side);
        Canvas plain(side, side);
        Canvas clipped(side, side);
        for (Canvas* canvas : {&ground, &plain, &clipped})
            drawGround(*canvas);
        const HRGN clip = CreateRectRgn(0, 0, 0, 0);
        for (int count = upTo(6); count >= 0; --count) {
            const HRGN part = CreateRectRgn(upTo(side), upTo(side), upTo(side), upTo(side));
            CombineRgn(clip, clip, part, RGN_XOR);
            DeleteObject(part);
        }
        SelectClipRgn(clipped.dc(), clip);
        painting.paint(plain);
        painting.paint(clipped);
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x) {
                Canvas& expected = PtInRegion(clip, x, y) ? plain : ground;
                ASSERT_EQ(clipped.pixel(x, y), expected.pixel(x, y))
                    << painting.name << ", round " << round << ", " << x << ", " << y;
            }
        DeleteObject(clip);
    }
}

INSTANTIATE_TEST_SUITE_P(Paintings, ThroughRandomClips, testing::Range(0, static_cast<int>(paintings().size())),
                         [](const testing::TestParamInfo<int>& row) {
                             std::string name = paintings()[static_cast<std::size_t>(row.param)].name;
                             return name.replace(std::min(name.find(' '), name.size()), name.find(' ') < name.size(),
                                                 "");
                         });

} // namespace
