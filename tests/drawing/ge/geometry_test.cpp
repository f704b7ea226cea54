#include "ge/extents.h"
#include "ge/line_seg3d.h"
#include "ge/matrix3d.h"

#include <gtest/gtest.h>

namespace {

constexpr AcGeTol kTol{1e-9, 1e-9};

void expectNear(const AcGePoint3d& actual, const AcGePoint3d& expected, const char* what) {
    EXPECT_TRUE(actual.isEqualTo(expected, kTol))
        << what << ": (" << actual.x << ", " << actual.y << ", " << actual.z << ") instead of (" << expected.x << ", "
        << expected.y << ", " << expected.z << ")";
}

TEST(Matrix3d, TransformsMovePointsAsTheirNamesSay) {
    const AcGePoint3d p(3, 1, 2);
    const struct {
        const char* what;
        AcGeMatrix3d matrix;
        AcGePoint3d expected;
    } cases[] = {
        {"translation", AcGeMatrix3d::translation({1, 2, 3}), {4, 3, 5}},
        {"quarter turn about Z through (1,1)",
         AcGeMatrix3d::rotation(kAcGePi / 2, AcGeVector3d::kZAxis, {1, 1, 0}),
         {1, 3, 2}},
        {"quarter turn about X", AcGeMatrix3d::rotation(kAcGePi / 2, AcGeVector3d::kXAxis), {3, -2, 1}},
        {"scaling about (1,1,1)", AcGeMatrix3d::scaling(2, {1, 1, 1}), {5, 1, 3}},
        {"mirror in the plane x = 1", AcGeMatrix3d::mirroring({1, 0, 0}, {1, 0, 0}), {-1, 1, 2}},
        {"right factor first", AcGeMatrix3d::translation({1, 0, 0}) * AcGeMatrix3d::scaling(2), {7, 2, 4}},
    };
    for (const auto& c : cases) {
        expectNear(c.matrix * p, c.expected, c.what);
        expectNear(c.matrix.inverse() * (c.matrix * p), p, c.what);
    }
}

TEST(Matrix3d, TellsEvenScalingFromUneven) {
    EXPECT_TRUE((AcGeMatrix3d::rotation(0.3, {1, 2, 3}) * AcGeMatrix3d::scaling(2.5)).isUniScaledOrtho(kTol));
    EXPECT_TRUE(AcGeMatrix3d::mirroring({0, 0, 0}, {1, 1, 0}).isUniScaledOrtho(kTol));
    EXPECT_FALSE(AcGeMatrix3d::scaling(AcGeScale3d(1, 2, 1)).isUniScaledOrtho(kTol));
    EXPECT_NEAR(AcGeMatrix3d::scaling(AcGeScale3d(-3, 3, 3)).scale(), 3, 1e-12);
    EXPECT_TRUE(AcGeMatrix3d::scaling(AcGeScale3d(1, 0, 1)).isSingular());
    EXPECT_FALSE(AcGeMatrix3d::scaling(1e-9).isSingular()) << "tiny isn't singular";
}

TEST(ArbitraryAxis, SwitchesItsHelperNearTheWorldZAxis) {
    // Beyond 1/64 the world Z axis gives the X axis, nearer the world Y axis does.
    expectNear(AcGeMatrix3d::planeToWorld({0, 0, -1}) * AcGePoint3d(1, 2, 3), {-1, 2, -3}, "from below");
    const AcGeVector3d inside(0.0156, 0, 1);
    const AcGeVector3d outside(0.0158, 0, 1);
    EXPECT_GT(inside.perpVector().x, 0.9);
    EXPECT_NEAR(outside.perpVector().y, 1, 1e-9);
    const AcGeMatrix3d there = AcGeMatrix3d::planeToWorld({1, 2, 3});
    EXPECT_TRUE((there * AcGeMatrix3d::worldToPlane({1, 2, 3})).isEqualTo(AcGeMatrix3d::kIdentity, kTol));
}

TEST(Extents, EmptyBoxesChangeNothing) {
    AcDbExtents box;
    box.addExt(AcDbExtents());
    EXPECT_TRUE(box.isEmpty());
    box.addPoint({1, 2, 3});
    box.addExt(AcDbExtents());
    EXPECT_EQ(box.minPoint(), box.maxPoint());
    box.addPoint({-1, 5, 0});
    box.transformBy(AcGeMatrix3d::rotation(kAcGePi / 2, AcGeVector3d::kZAxis));
    expectNear(box.minPoint(), {-5, -1, 0}, "turned");
    expectNear(box.maxPoint(), {-2, 1, 3}, "turned");
}

TEST(Extents, TransformedBoxesHoldTheirCorners) {
    const AcGePoint3d low(-3, 2, 5), high(4, 9, 6);
    const AcGeMatrix3d matrix = AcGeMatrix3d::translation({7, -8, 9}) *
                                AcGeMatrix3d::rotation(0.7, AcGeVector3d(1, 2, -3).normal()) *
                                AcGeMatrix3d::scaling(AcGeScale3d(2, -3, 0.5));
    AcDbExtents box(low, high), corners;
    box.transformBy(matrix);
    for (const double x : {low.x, high.x})
        for (const double y : {low.y, high.y})
            for (const double z : {low.z, high.z})
                corners.addPoint(matrix * AcGePoint3d(x, y, z));
    EXPECT_EQ(box.minPoint(), corners.minPoint());
    EXPECT_EQ(box.maxPoint(), corners.maxPoint());
    AcDbExtents nothing;
    nothing.transformBy(matrix);
    EXPECT_TRUE(nothing.isEmpty());
}

TEST(LineSegment, CrossesOnlyWhereBothAre) {
    const AcGeLineSeg3d a({0, 0, 0}, {10, 10, 0});
    AcGePoint3d p;
    ASSERT_TRUE(a.intersectWith({{0, 10, 0}, {10, 0, 0}}, p));
    expectNear(p, {5, 5, 0}, "crossing");
    EXPECT_FALSE(a.intersectWith({{0, 10, 0}, {4, 6, 0}}, p)) << "ends before the other";
    EXPECT_FALSE(a.intersectWith({{0, 1, 0}, {10, 11, 0}}, p)) << "parallel";
    EXPECT_FALSE(a.intersectWith({{0, 10, 1}, {10, 0, 1}}, p)) << "passes above";
    expectNear(a.closestPointTo({20, 20, 0}), {10, 10, 0}, "beyond the end");
}

} // namespace
