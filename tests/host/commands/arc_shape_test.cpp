#include "commands/arc_shape.h"

#include <gtest/gtest.h>

using namespace vndk::host;

namespace {

const double kHalf = kAcGePi;
const AcGePoint3d kEast(1, 0, 0), kNorth(0, 1, 0), kWest(-1, 0, 0), kOrigin;

void expectArc(const std::optional<ArcShape>& arc, AcGePoint3d center, double radius, double start, double end,
               const char* what) {
    ASSERT_TRUE(arc) << what;
    EXPECT_NEAR(arc->center.x, center.x, 1e-9) << what;
    EXPECT_NEAR(arc->center.y, center.y, 1e-9) << what;
    EXPECT_NEAR(arc->radius, radius, 1e-9) << what;
    EXPECT_NEAR(std::remainder(arc->startAngle - start, 2 * kAcGePi), 0, 1e-9) << what;
    EXPECT_NEAR(std::remainder(arc->endAngle - end, 2 * kAcGePi), 0, 1e-9) << what;
}

} // namespace

TEST(ArcShape, isTheSameWhateverItIsGivenBy) {
    expectArc(arcThrough(kEast, kNorth, kWest), kOrigin, 1, 0, kHalf, "three points");
    expectArc(arcThrough(kWest, kNorth, kEast), kOrigin, 1, 0, kHalf, "three points clockwise");
    expectArc(arcAround(kOrigin, kEast, {-5, 0, 0}), kOrigin, 1, 0, kHalf, "centre, start, end direction");
    expectArc(arcByAngle(kOrigin, kEast, kHalf), kOrigin, 1, 0, kHalf, "angle");
    expectArc(arcByAngle(kOrigin, kWest, -kHalf), kOrigin, 1, 0, kHalf, "angle clockwise");
    expectArc(arcByChord(kOrigin, kEast, std::sqrt(2.0)), kOrigin, 1, 0, kHalf / 2, "chord");
    expectArc(arcByChord(kOrigin, kEast, -std::sqrt(2.0)), kOrigin, 1, 0, 1.5 * kHalf, "longer arc of the chord");
    expectArc(arcByEndAndAngle(kEast, kWest, kHalf), kOrigin, 1, 0, kHalf, "end and angle");
    expectArc(arcByEndAndAngle(kEast, kNorth, kHalf / 2), kOrigin, 1, 0, kHalf / 2, "end and quarter");
    expectArc(arcByEndAndAngle(kNorth, kEast, -kHalf / 2), kOrigin, 1, 0, kHalf / 2, "end and quarter clockwise");
    expectArc(arcByEndAndDirection(kEast, kWest, kHalf / 2), kOrigin, 1, 0, kHalf, "end and direction");
    expectArc(arcByEndAndRadius(kEast, kNorth, 1), kOrigin, 1, 0, kHalf / 2, "end and radius");
    expectArc(arcByEndAndRadius(kEast, kNorth, -1), {1, 1, 0}, 1, -kHalf / 2, -kHalf, "longer arc of the radius");
}

TEST(ArcShape, isNoneWhereThereIsNoArc) {
    EXPECT_FALSE(arcThrough(kEast, kOrigin, kWest));
    EXPECT_FALSE(arcThrough(kEast, kEast, kWest));
    EXPECT_FALSE(arcAround(kOrigin, kOrigin, kWest));
    EXPECT_FALSE(arcAround(kOrigin, kEast, kOrigin));
    EXPECT_FALSE(arcByAngle(kOrigin, kEast, 0));
    EXPECT_FALSE(arcByChord(kOrigin, kEast, 2.1));
    EXPECT_FALSE(arcByEndAndAngle(kEast, kEast, 1));
    EXPECT_FALSE(arcByEndAndAngle(kEast, kWest, 2 * kAcGePi));
    EXPECT_FALSE(arcByEndAndRadius(kEast, kWest, 0.9));
}
