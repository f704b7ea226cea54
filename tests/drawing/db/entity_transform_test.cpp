// Transforms and boxes of entities, by cases.
#include "db/block_reference.h"
#include "db/curves.h"
#include "db/point.h"
#include "db/polylines.h"
#include "db/solids.h"
#include "db/text.h"
#include "drawing/db/matrix_cases.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

constexpr double kNear = 1e-9;

void expectNear(const AcGePoint3d& a, const AcGePoint3d& b, const std::string& what) {
    EXPECT_LT(a.distanceTo(b), kNear) << what << ": (" << a.x << ", " << a.y << ", " << a.z << ") and (" << b.x << ", "
                                      << b.y << ", " << b.z << ")";
}

using namespace vndk::test;

TEST(Transform, MovesTheEndsOfAnArcWithItsShape) {
    for (const MatrixCase& c : evenMatrices()) {
        AcDbArc arc({1, 2, 3}, 4, 0.3, 2.0);
        arc.setNormal(kTilted);
        AcGePoint3d start, end, movedStart, movedEnd;
        arc.getStartPoint(start);
        arc.getEndPoint(end);
        const AcGePoint3d center = arc.center();
        ASSERT_EQ(arc.transformBy(c.matrix), Acad::eOk) << c.name;
        arc.getStartPoint(movedStart);
        arc.getEndPoint(movedEnd);
        expectNear(arc.center(), c.matrix * center, c.name);
        // The middle of the arc has to lie on the same side: ends alone could be swapped wrongly.
        if (c.matrix.det() < 0)
            std::swap(movedStart, movedEnd);
        expectNear(movedStart, c.matrix * start, c.name);
        expectNear(movedEnd, c.matrix * end, c.name);
        EXPECT_NEAR(arc.radius(), 4 * c.matrix.scale(), kNear) << c.name;
        double sweep = std::fmod(arc.endAngle() - arc.startAngle() + 4 * kAcGePi, 2 * kAcGePi);
        EXPECT_NEAR(sweep, 1.7, kNear) << c.name;
    }
}

TEST(Transform, MovesEveryPointOfAnEllipse) {
    for (const MatrixCase& c : evenMatrices()) {
        AcDbEllipse ellipse({1, 2, 3}, AcGeVector3d::kZAxis, {3, 1, 0}, 0.4, 0.5, 2.5);
        AcGePoint3d start, end, movedStart, movedEnd;
        ellipse.getStartPoint(start);
        ellipse.getEndPoint(end);
        ASSERT_EQ(ellipse.transformBy(c.matrix), Acad::eOk) << c.name;
        ellipse.getStartPoint(movedStart);
        ellipse.getEndPoint(movedEnd);
        if (c.matrix.det() < 0)
            std::swap(movedStart, movedEnd);
        expectNear(movedStart, c.matrix * start, c.name);
        expectNear(movedEnd, c.matrix * end, c.name);
    }
}

/// The corner of the text's frame at its position, and the direction in which it runs.
struct TextFrame {
    AcGePoint3d position;
    AcGeVector3d along, up;
};

TextFrame frameOf(const AcDbText& text) {
    const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(text.normal());
    const double c = std::cos(text.rotation()), s = std::sin(text.rotation());
    const double x = text.isMirroredInX() ? -1 : 1, y = text.isMirroredInY() ? -1 : 1;
    return {text.position(), plane * AcGeVector3d(c * x, s * x, 0), plane * AcGeVector3d(-s * y, c * y, 0)};
}

TEST(Transform, TurnsAndMirrorsText) {
    for (const MatrixCase& c : evenMatrices()) {
        AcDbText text({1, 2, 3}, "abc", AcDbObjectId::kNull, 2, 0.4);
        text.setHorizontalMode(AcDb::kTextRight);
        text.setAlignmentPoint({5, 3, 3});
        const TextFrame before = frameOf(text);
        const AcGePoint3d alignment = text.alignmentPoint();
        ASSERT_EQ(text.transformBy(c.matrix), Acad::eOk) << c.name;
        const TextFrame after = frameOf(text);
        expectNear(after.position, c.matrix * before.position, c.name);
        expectNear(text.alignmentPoint(), c.matrix * alignment, c.name);
        EXPECT_TRUE((c.matrix * before.along).normal().isEqualTo(after.along, {kNear, kNear})) << c.name;
        EXPECT_TRUE((c.matrix * before.up).normal().isEqualTo(after.up, {kNear, kNear})) << c.name;
        EXPECT_NEAR(text.height(), 2 * c.matrix.scale(), kNear) << c.name;
    }
}

TEST(Transform, MultipliesTheTransformOfAReference) {
    for (const AcGeScale3d& scale : {AcGeScale3d(1, 1, 1), AcGeScale3d(2, 3, 4), AcGeScale3d(-1, 2, -3)})
        for (const MatrixCase& c : evenMatrices()) {
            AcDbBlockReference insert({1, 2, 3}, {});
            insert.setNormal(kTilted);
            insert.setScaleFactors(scale);
            insert.setRotation(0.6);
            const AcGeMatrix3d expected = c.matrix * insert.blockTransform();
            ASSERT_EQ(insert.transformBy(c.matrix), Acad::eOk) << c.name;
            EXPECT_TRUE(insert.blockTransform().isEqualTo(expected, {kNear, kNear})) << c.name;
            // The same placement told by the matrix alone.
            AcDbBlockReference placed;
            ASSERT_EQ(placed.setBlockTransform(expected), Acad::eOk) << c.name;
            EXPECT_TRUE(placed.blockTransform().isEqualTo(expected, {kNear, kNear})) << c.name;
        }
}

TEST(Transform, LeavesAReferenceAsItIsUnderTheIdentity) {
    AcDbBlockReference insert({1, 2, 3}, {});
    insert.setScaleFactors({1, -2, 3});
    insert.setRotation(1.25);
    ASSERT_EQ(insert.transformBy(AcGeMatrix3d()), Acad::eOk);
    EXPECT_EQ(insert.scaleFactors(), AcGeScale3d(1, -2, 3));
    EXPECT_NEAR(insert.rotation(), 1.25, 1e-15);
    EXPECT_EQ(insert.position(), AcGePoint3d(1, 2, 3));
}

TEST(Transform, TurnsTheBulgesOfAMirroredPolylineRound) {
    AcDbPolyline polyline;
    polyline.addVertexAt(0, {0, 0}, 1);
    polyline.addVertexAt(1, {2, 0});
    polyline.setElevation(3);
    AcDbExtents before, after;
    polyline.getGeomExtents(before);
    const AcGeMatrix3d mirror = AcGeMatrix3d::mirroring({0, 5, 0}, AcGeVector3d::kYAxis);
    ASSERT_EQ(polyline.transformBy(mirror), Acad::eOk);
    polyline.getGeomExtents(after);
    before.transformBy(mirror);
    expectNear(after.minPoint(), before.minPoint(), "min");
    expectNear(after.maxPoint(), before.maxPoint(), "max");
}

TEST(Transform, RefusesUnevenScalingWhereTheShapeCannotFollow) {
    const std::vector<std::shared_ptr<AcDbEntity>> entities = {
        std::make_shared<AcDbCircle>(), std::make_shared<AcDbArc>(),      std::make_shared<AcDbEllipse>(),
        std::make_shared<AcDbText>(),   std::make_shared<AcDbMText>(),    std::make_shared<AcDbBlockReference>(),
        std::make_shared<AcDbSolid>(),  std::make_shared<AcDbPolyline>(),
    };
    for (const auto& entity : entities)
        EXPECT_EQ(entity->transformBy(kUneven), Acad::eCannotScaleNonUniformly) << entity->isA()->name();
    AcDbLine line({1, 1, 1}, {2, 2, 2});
    EXPECT_EQ(line.transformBy(kUneven), Acad::eOk);
    expectNear(line.endPoint(), {2, 4, 2}, "line");
}

struct BoxCase {
    const char* name;
    std::function<Acad::ErrorStatus(AcDbExtents&)> measure;
    AcGePoint3d min, max;
};

template <class T>
std::function<Acad::ErrorStatus(AcDbExtents&)> boxOf(T entity) {
    const auto shared = std::make_shared<T>(entity);
    return [shared](AcDbExtents& box) { return shared->getGeomExtents(box); };
}

AcDbPolyline halfCircle(double bulge) {
    AcDbPolyline polyline;
    polyline.addVertexAt(0, {0, 0}, bulge);
    polyline.addVertexAt(1, {2, 0});
    return polyline;
}

TEST(Extents, EncloseTheCurveAndNoMore) {
    const std::vector<BoxCase> cases = {
        {"circle in XY", boxOf(AcDbCircle({1, 1, 1}, {0, 0, 1}, 2)), {-1, -1, 1}, {3, 3, 1}},
        {"circle seen from X", boxOf(AcDbCircle({1, 1, 1}, {1, 0, 0}, 2)), {1, -1, -1}, {1, 3, 3}},
        {"arc over the top",
         boxOf(AcDbArc({0, 0, 0}, 1, kAcGePi / 4, 3 * kAcGePi / 4)),
         {-std::sqrt(0.5), std::sqrt(0.5), 0},
         {std::sqrt(0.5), 1, 0}},
        {"arc through angle 0",
         boxOf(AcDbArc({0, 0, 0}, 1, -kAcGePi / 4, kAcGePi / 4)),
         {std::sqrt(0.5), -std::sqrt(0.5), 0},
         {1, std::sqrt(0.5), 0}},
        {"whole ellipse", boxOf(AcDbEllipse({0, 0, 0}, {0, 0, 1}, {0, 4, 0}, 0.5)), {-2, -4, 0}, {2, 4, 0}},
        {"half circle to the right", boxOf(halfCircle(1)), {0, -1, 0}, {2, 0, 0}},
        {"half circle to the left", boxOf(halfCircle(-1)), {0, 0, 0}, {2, 1, 0}},
    };
    for (const BoxCase& c : cases) {
        AcDbExtents box;
        ASSERT_EQ(c.measure(box), Acad::eOk) << c.name;
        expectNear(box.minPoint(), c.min, c.name);
        expectNear(box.maxPoint(), c.max, c.name);
    }
    AcDbExtents none;
    EXPECT_EQ(AcDbXline().getGeomExtents(none), Acad::eNullExtents);
}

} // namespace
