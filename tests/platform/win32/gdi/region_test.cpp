#include "gdi/region.h"
#include "gdi/window_dc.h"
#include "win32/error.h"
#include "win32/gdi.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <climits>
#include <cstring>
#include <functional>
#include <random>

using vndk::win32::Region;

namespace {

constexpr int side = 24;

/// The same set as single pixels.
using Bits = std::bitset<std::size_t{side} * side>;

std::size_t bitOf(int x, int y) {
    const int bit = y * side + x;
    return static_cast<std::size_t>(bit);
}

Bits bitsOf(const Region& region) {
    Bits bits;
    for (const RECT& rect : region.rects())
        for (int y = rect.top; y < rect.bottom; ++y)
            for (int x = rect.left; x < rect.right; ++x) {
                EXPECT_FALSE(bits[bitOf(x, y)]) << "rectangles overlap";
                bits.set(bitOf(x, y));
            }
    return bits;
}

/// Sorted in bands that can't be joined any further: only then do equal sets have equal lists.
void expectCanonical(const Region& region) {
    const auto rects = region.rects();
    std::vector<std::vector<RECT>> bands;
    for (const RECT& rect : rects) {
        ASSERT_LT(rect.left, rect.right);
        ASSERT_LT(rect.top, rect.bottom);
        if (bands.empty() || bands.back().front().top != rect.top)
            bands.emplace_back();
        else
            ASSERT_LT(bands.back().back().right, rect.left) << "pieces of a band touch";
        ASSERT_TRUE(bands.back().empty() || bands.back().front().bottom == rect.bottom);
        bands.back().push_back(rect);
    }
    for (std::size_t index = 1; index < bands.size(); ++index) {
        const auto& above = bands[index - 1];
        const auto& below = bands[index];
        ASSERT_LE(above.front().bottom, below.front().top) << "bands overlap";
        const bool sameColumns =
            std::equal(above.begin(), above.end(), below.begin(), below.end(),
                       [](const RECT& a, const RECT& b) { return a.left == b.left && a.right == b.right; });
        ASSERT_FALSE(sameColumns && above.front().bottom == below.front().top) << "bands could be one";
    }
}

class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}
    int upTo(int highest) { return std::uniform_int_distribution<int>(0, highest)(engine_); }
    RECT rect() {
        const int left = upTo(side - 1);
        const int top = upTo(side - 1);
        return {left, top, left + upTo(side - left), top + upTo(side - top)};
    }
    Region region() {
        Region result;
        for (int count = upTo(5); count > 0; --count)
            result ^= Region(rect());
        return result;
    }

private:
    std::mt19937 engine_;
};

TEST(Region, EveryOperationAgreesWithTheSameOnSinglePixels) {
    struct Operation {
        const char* name;
        std::function<void(Region&, const Region&)> onRegions;
        std::function<Bits(Bits, Bits)> onBits;
    };
    const std::array<Operation, 4> operations{{
        {"or", [](Region& a, const Region& b) { a |= b; }, [](Bits a, Bits b) { return a | b; }},
        {"and", [](Region& a, const Region& b) { a &= b; }, [](Bits a, Bits b) { return a & b; }},
        {"minus", [](Region& a, const Region& b) { a -= b; }, [](Bits a, Bits b) { return a & ~b; }},
        {"xor", [](Region& a, const Region& b) { a ^= b; }, [](Bits a, Bits b) { return a ^ b; }},
    }};
    Random random(4711);
    for (int round = 0; round < 2000; ++round) {
        const Region a = random.region();
        const Region b = random.region();
        const Operation& operation = operations[static_cast<std::size_t>(round) % operations.size()];
        SCOPED_TRACE(std::string(operation.name) + ", round " + std::to_string(round));
        Region result = a;
        operation.onRegions(result, b);
        ASSERT_EQ(bitsOf(result), operation.onBits(bitsOf(a), bitsOf(b)));
        expectCanonical(result);
    }
}

TEST(Region, PointsAndRectanglesAreFoundAsOnSinglePixels) {
    Random random(815);
    for (int round = 0; round < 200; ++round) {
        const Region region = random.region();
        const Bits bits = bitsOf(region);
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x)
                ASSERT_EQ(region.contains({x, y}), bits[bitOf(x, y)]) << x << ", " << y;
        const RECT rect = random.rect();
        ASSERT_EQ(region.intersects(rect), (bits & bitsOf(Region(rect))).any()) << "round " << round;
    }
}

TEST(Region, OffsetKeepsTheShapeAndDropsWhatLeavesTheRange) {
    Region region = Region(RECT{0, 0, 10, 10}) - Region(RECT{2, 2, 4, 4});
    Region moved = region;
    moved.offset(5, -3);
    EXPECT_TRUE(moved.contains({5, -3}));
    EXPECT_FALSE(moved.contains({7, -1}));
    moved.offset(-5, 3);
    EXPECT_TRUE(moved == region);

    Region farOff(RECT{INT_MAX - 10, 0, INT_MAX - 2, 5});
    farOff.offset(5, 0);
    EXPECT_EQ(farOff.bounds().left, INT_MAX - 5);
    EXPECT_EQ(farOff.bounds().right, INT_MAX);
    farOff.offset(INT_MAX, 0);
    EXPECT_TRUE(farOff.empty());
}

TEST(Region, SpansInAnyOrderBecomeARegion) {
    vndk::win32::SpanSet spans({0, 0, 10, 4});
    spans.add(2, 5, 20);
    spans.add(1, 3, 6);
    spans.add(1, -4, 4);
    spans.add(9, 0, 5);
    const Region region = spans.take();
    EXPECT_TRUE(region == (Region(RECT{0, 1, 6, 2}) | Region(RECT{5, 2, 10, 3})));
}

TEST(RegionCalls, CombineAnswersTheKindAndMayWriteIntoItsSources) {
    const HRGN a = CreateRectRgn(10, 10, 0, 0); // corners in any order
    const HRGN b = CreateRectRgn(5, 5, 15, 15);
    EXPECT_EQ(CombineRgn(a, a, b, RGN_AND), SIMPLEREGION);
    RECT box{};
    EXPECT_EQ(GetRgnBox(a, &box), SIMPLEREGION);
    EXPECT_EQ(box.left, 5);
    EXPECT_EQ(box.right, 10);
    EXPECT_EQ(CombineRgn(a, b, a, RGN_DIFF), COMPLEXREGION);
    EXPECT_FALSE(PtInRegion(a, 5, 5));
    EXPECT_TRUE(PtInRegion(a, 10, 5));
    EXPECT_EQ(CombineRgn(a, a, a, RGN_XOR), NULLREGION);
    EXPECT_EQ(CombineRgn(a, b, nullptr, RGN_COPY), SIMPLEREGION);
    EXPECT_TRUE(EqualRgn(a, b));
    EXPECT_EQ(CombineRgn(a, b, b, 99), ERROR);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    DeleteObject(a);
    EXPECT_EQ(CombineRgn(b, b, a, RGN_OR), ERROR);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    DeleteObject(b);
}

TEST(RegionCalls, ShapesHaveTheirBoundsAndLackTheirCorners) {
    const POINT triangle[] = {{0, 0}, {10, 0}, {0, 10}};
    struct Case {
        const char* name;
        HRGN region;
        POINT inside;
        POINT outside;
    };
    const std::array<Case, 3> cases{{
        {"ellipse", CreateEllipticRgn(0, 0, 20, 10), {0, 5}, {0, 0}},
        {"rounded", CreateRoundRectRgn(0, 0, 20, 10, 8, 8), {0, 5}, {0, 0}},
        {"triangle", CreatePolygonRgn(triangle, 3, ALTERNATE), {0, 0}, {9, 9}},
    }};
    for (const Case& row : cases) {
        EXPECT_TRUE(PtInRegion(row.region, row.inside.x, row.inside.y)) << row.name;
        EXPECT_FALSE(PtInRegion(row.region, row.outside.x, row.outside.y)) << row.name;
        DeleteObject(row.region);
    }
}

TEST(RegionCalls, DataMakesTheSameRegionAgain) {
    const HRGN region = CreateRectRgn(0, 0, 10, 10);
    const HRGN hole = CreateRectRgn(3, 3, 5, 5);
    CombineRgn(region, region, hole, RGN_DIFF);
    const DWORD size = GetRegionData(region, 0, nullptr);
    std::vector<char> bytes(size);
    auto* data = reinterpret_cast<RGNDATA*>(bytes.data());
    EXPECT_EQ(GetRegionData(region, size - 1, data), 0U);
    ASSERT_EQ(GetRegionData(region, size, data), size);
    const HRGN again = ExtCreateRegion(nullptr, size, data);
    EXPECT_TRUE(EqualRgn(region, again));
    data->rdh.nCount = 0x40000000; // more rectangles than there are bytes
    EXPECT_EQ(ExtCreateRegion(nullptr, size, data), nullptr);
    for (HRGN each : {region, hole, again})
        DeleteObject(each);
}

TEST(RegionCalls, OffsetBeyondTheRangeFailsAndChangesNothing) {
    const HRGN region = CreateRectRgn(0, 0, 10, 10);
    EXPECT_EQ(OffsetRgn(region, INT_MAX, 0), ERROR);
    EXPECT_EQ(OffsetRgn(region, 3, 4), SIMPLEREGION);
    RECT box{};
    GetRgnBox(region, &box);
    EXPECT_EQ(box.left, 3);
    EXPECT_EQ(box.bottom, 14);
    DeleteObject(region);
}

} // namespace
