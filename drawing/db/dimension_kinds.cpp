// What each kind of dimension measures, how its points follow a transform, and what it is drawn from.
#include "db/dimension_picture.h"
#include "db/dimensions.h"
#include "db/plane_math.h"

#include <algorithm>

using vndk::db::angleOf;
using vndk::db::AngleSide;
using vndk::db::AngularShape;
using vndk::db::DimensionPicture;
using vndk::db::directionOf;
using vndk::db::LinearShape;
using vndk::db::normalizedAngle;
using vndk::db::OrdinateShape;
using vndk::db::PlaneTransform;

ACDB_DXF_DEFINE_MEMBERS(AcDbAlignedDimension, AcDbDimension, "DIMENSION", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbRotatedDimension, AcDbDimension, "DIMENSION", "")
ACDB_DXF_DEFINE_MEMBERS(AcDb3PointAngularDimension, AcDbDimension, "DIMENSION", "")
ACDB_DXF_DEFINE_MEMBERS(AcDb2LineAngularDimension, AcDbDimension, "DIMENSION", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbRadialDimension, AcDbDimension, "DIMENSION", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbDiametricDimension, AcDbDimension, "DIMENSION", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbOrdinateDimension, AcDbDimension, "DIMENSION", "")

namespace {

void transformAll(const AcGeMatrix3d& matrix, std::initializer_list<AcGePoint3d*> points) {
    for (AcGePoint3d* const point : points)
        *point = matrix * *point;
}

/// A mirror turns the sense of angles between two directions.
double followed(double angle, const PlaneTransform& plane) { return plane.mirrors() ? -angle : angle; }

double extensionAngle(double oblique) { return oblique == 0 ? kAcGePi / 2 : oblique; }

void addPoints(DimensionPicture& picture, std::initializer_list<AcGePoint3d> points) {
    for (const AcGePoint3d& point : points)
        picture.definitionPoint(point);
}

} // namespace

// Aligned

AcDbAlignedDimension::AcDbAlignedDimension(const AcGePoint3d& xLine1Point, const AcGePoint3d& xLine2Point,
                                           const AcGePoint3d& dimLinePoint, const char* text, AcDbObjectId style) {
    points_.xLine1 = xLine1Point;
    points_.xLine2 = xLine2Point;
    points_.dimLine = dimLinePoint;
    setDimensionText(text ? text : "");
    setDimensionStyle(style);
}

double AcDbAlignedDimension::measured() const { return inPlane(points_.xLine1).distanceTo(inPlane(points_.xLine2)); }

AcGePoint3d AcDbAlignedDimension::placePoint() const { return points_.dimLine; }

void AcDbAlignedDimension::transformPoints(const AcGeMatrix3d& matrix, const PlaneTransform& plane) {
    transformAll(matrix, {&points_.xLine1, &points_.xLine2, &points_.dimLine});
    points_.oblique = followed(points_.oblique, plane);
}

void AcDbAlignedDimension::draw(DimensionPicture& picture) const {
    LinearShape shape;
    shape.first = picture.inPlane(points_.xLine1);
    shape.second = picture.inPlane(points_.xLine2);
    shape.onLine = picture.inPlane(points_.dimLine);
    shape.angle = angleOf(shape.second - shape.first);
    shape.extensionAngle = extensionAngle(points_.oblique);
    drawLinear(picture, shape);
    addPoints(picture, {points_.xLine1, points_.xLine2, points_.dimLine});
}

// Rotated

AcDbRotatedDimension::AcDbRotatedDimension(double rotation, const AcGePoint3d& xLine1Point,
                                           const AcGePoint3d& xLine2Point, const AcGePoint3d& dimLinePoint,
                                           const char* text, AcDbObjectId style) {
    points_.xLine1 = xLine1Point;
    points_.xLine2 = xLine2Point;
    points_.dimLine = dimLinePoint;
    points_.rotation = rotation;
    setDimensionText(text ? text : "");
    setDimensionStyle(style);
}

double AcDbRotatedDimension::measured() const {
    const AcGeVector2d between = inPlane(points_.xLine2) - inPlane(points_.xLine1);
    return std::fabs(between.dotProduct(directionOf(points_.rotation)));
}

AcGePoint3d AcDbRotatedDimension::placePoint() const { return points_.dimLine; }

void AcDbRotatedDimension::transformPoints(const AcGeMatrix3d& matrix, const PlaneTransform& plane) {
    transformAll(matrix, {&points_.xLine1, &points_.xLine2, &points_.dimLine});
    points_.oblique = followed(points_.oblique, plane);
    points_.rotation = plane.angle(points_.rotation);
}

void AcDbRotatedDimension::draw(DimensionPicture& picture) const {
    LinearShape shape;
    shape.first = picture.inPlane(points_.xLine1);
    shape.second = picture.inPlane(points_.xLine2);
    shape.onLine = picture.inPlane(points_.dimLine);
    shape.angle = points_.rotation;
    shape.extensionAngle = extensionAngle(points_.oblique);
    drawLinear(picture, shape);
    addPoints(picture, {points_.xLine1, points_.xLine2, points_.dimLine});
}

// Angular

namespace {

/// The angle from one side counter-clockwise to the other that holds the arc point.
AngularShape angularShape(const AcGePoint2d& vertex, AngleSide first, AngleSide second, const AcGePoint2d& arc) {
    const double at = angleOf(arc - vertex);
    if (normalizedAngle(at - first.angle) > normalizedAngle(second.angle - first.angle))
        std::swap(first, second);
    return {vertex, vertex.distanceTo(arc), first, second};
}

double sweepOf(const AngularShape& shape) { return normalizedAngle(shape.second.angle - shape.first.angle); }

AngularShape threePointShape(const AcGePoint2d& vertex, const AcGePoint2d& first, const AcGePoint2d& second,
                             const AcGePoint2d& arc) {
    const auto side = [&](const AcGePoint2d& point) {
        const double distance = vertex.distanceTo(point);
        return AngleSide{angleOf(point - vertex), distance, distance};
    };
    return angularShape(vertex, side(first), side(second), arc);
}

/// The side of a line's two directions from the vertex that is nearer to the arc point's sector.
AngleSide sideOf(const AcGePoint2d& vertex, const AcGePoint2d& start, const AcGePoint2d& end, bool reversed) {
    const AcGeVector2d along = directionOf(angleOf(end - start) + (reversed ? kAcGePi : 0));
    return {angleOf(along), (start - vertex).dotProduct(along), (end - vertex).dotProduct(along)};
}

/// Parallel lines have no angle: the shape has no radius then.
AngularShape twoLineShape(const AcGePoint2d& start1, const AcGePoint2d& end1, const AcGePoint2d& start2,
                          const AcGePoint2d& end2, const AcGePoint2d& arc) {
    constexpr double kParallel = 1e-9;
    const AcGeVector2d a = end1 - start1, b = end2 - start2;
    const double cross = a.x * b.y - a.y * b.x;
    if (!(std::fabs(cross) > kParallel * a.length() * b.length()))
        return {};
    const AcGeVector2d between = start2 - start1;
    const AcGePoint2d vertex = start1 + a * ((between.x * b.y - between.y * b.x) / cross);
    // The arc point is a sum of both directions; their signs tell the sector.
    const AcGeVector2d arm = arc - vertex;
    const double alongA = (arm.x * b.y - arm.y * b.x) / cross, alongB = (a.x * arm.y - a.y * arm.x) / cross;
    return angularShape(vertex, sideOf(vertex, start1, end1, alongA < 0), sideOf(vertex, start2, end2, alongB < 0),
                        arc);
}

} // namespace

double AcDb3PointAngularDimension::measured() const {
    return sweepOf(threePointShape(inPlane(points_.center), inPlane(points_.xLine1), inPlane(points_.xLine2),
                                   inPlane(points_.arc)));
}

AcGePoint3d AcDb3PointAngularDimension::placePoint() const { return points_.arc; }

void AcDb3PointAngularDimension::transformPoints(const AcGeMatrix3d& matrix, const PlaneTransform&) {
    transformAll(matrix, {&points_.arc, &points_.xLine1, &points_.xLine2, &points_.center});
}

void AcDb3PointAngularDimension::draw(DimensionPicture& picture) const {
    drawAngular(picture, threePointShape(picture.inPlane(points_.center), picture.inPlane(points_.xLine1),
                                         picture.inPlane(points_.xLine2), picture.inPlane(points_.arc)));
    addPoints(picture, {points_.center, points_.xLine1, points_.xLine2, points_.arc});
}

AcGePoint3d AcDb2LineAngularDimension::arcPoint() const {
    return AcGeMatrix3d::planeToWorld(normal()) * AcGePoint3d(points_.arc.x, points_.arc.y, elevation());
}

Acad::ErrorStatus AcDb2LineAngularDimension::setArcPoint(const AcGePoint3d& point) {
    return acdbSetMember(*this, points_.arc, inPlane(point));
}

double AcDb2LineAngularDimension::measured() const {
    return sweepOf(twoLineShape(inPlane(points_.xLine1Start), inPlane(points_.xLine1End), inPlane(points_.xLine2Start),
                                inPlane(points_.xLine2End), points_.arc));
}

AcGePoint3d AcDb2LineAngularDimension::placePoint() const { return arcPoint(); }

void AcDb2LineAngularDimension::transformPoints(const AcGeMatrix3d& matrix, const PlaneTransform& plane) {
    transformAll(matrix, {&points_.xLine1Start, &points_.xLine1End, &points_.xLine2Start, &points_.xLine2End});
    points_.arc = plane.point(points_.arc, elevation());
}

void AcDb2LineAngularDimension::draw(DimensionPicture& picture) const {
    drawAngular(picture,
                twoLineShape(picture.inPlane(points_.xLine1Start), picture.inPlane(points_.xLine1End),
                             picture.inPlane(points_.xLine2Start), picture.inPlane(points_.xLine2End), points_.arc));
    addPoints(picture, {arcPoint(), points_.xLine2Start, points_.xLine2End, points_.xLine1End, points_.xLine1Start});
}

// Radial and diametric

double AcDbRadialDimension::measured() const { return inPlane(points_.center).distanceTo(inPlane(points_.chord)); }

AcGePoint3d AcDbRadialDimension::placePoint() const { return points_.chord; }

void AcDbRadialDimension::transformPoints(const AcGeMatrix3d& matrix, const PlaneTransform& plane) {
    transformAll(matrix, {&points_.center, &points_.chord});
    points_.leaderLength *= plane.scale();
}

void AcDbRadialDimension::draw(DimensionPicture& picture) const {
    drawRadial(picture, {picture.inPlane(points_.center), picture.inPlane(points_.chord), false, points_.leaderLength});
    addPoints(picture, {points_.center, points_.chord});
}

double AcDbDiametricDimension::measured() const { return inPlane(points_.chord).distanceTo(inPlane(points_.farChord)); }

AcGePoint3d AcDbDiametricDimension::placePoint() const { return points_.chord; }

void AcDbDiametricDimension::transformPoints(const AcGeMatrix3d& matrix, const PlaneTransform& plane) {
    transformAll(matrix, {&points_.chord, &points_.farChord});
    points_.leaderLength *= plane.scale();
}

void AcDbDiametricDimension::draw(DimensionPicture& picture) const {
    const AcGePoint2d chord = picture.inPlane(points_.chord), far = picture.inPlane(points_.farChord);
    drawRadial(picture, {far + (chord - far) * 0.5, chord, true, points_.leaderLength});
    addPoints(picture, {points_.farChord, points_.chord});
}

// Ordinate

double AcDbOrdinateDimension::measured() const {
    const AcGeVector2d xAxis = directionOf(-horizontalRotation());
    const AcGeVector2d arm = inPlane(points_.feature) - inPlane(points_.origin);
    return std::fabs(arm.dotProduct(isUsingXAxis() ? xAxis : vndk::db::leftOf(xAxis)));
}

AcGePoint3d AcDbOrdinateDimension::placePoint() const { return points_.leaderEnd; }

void AcDbOrdinateDimension::transformPoints(const AcGeMatrix3d& matrix, const PlaneTransform& plane) {
    transformAll(matrix, {&points_.origin, &points_.feature, &points_.leaderEnd});
    // Its axes turn with it, and it measures to both sides of the origin alike.
    setHorizontalRotation(-vndk::db::readable(plane.angle(-horizontalRotation())));
}

void AcDbOrdinateDimension::draw(DimensionPicture& picture) const {
    // What is measured along one axis is written along the other.
    const AcGeVector2d xAxis = directionOf(-horizontalRotation());
    drawOrdinate(picture, {picture.inPlane(points_.feature), picture.inPlane(points_.leaderEnd),
                           isUsingXAxis() ? vndk::db::leftOf(xAxis) : xAxis});
    addPoints(picture, {points_.feature, points_.leaderEnd, points_.origin});
}
