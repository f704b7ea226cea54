#include "db/curves.h"
#include "db/plane_math.h"

using vndk::db::normalizedAngle;

ACDB_DXF_DEFINE_MEMBERS(AcDbEllipse, AcDbCurve, "ELLIPSE", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbSpline, AcDbCurve, "SPLINE", "")

// Ellipse

AcDbEllipse::AcDbEllipse(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& majorAxis,
                         double radiusRatio, double startParam, double endParam) {
    set(center, normal, majorAxis, radiusRatio, startParam, endParam);
}

AcGeVector3d AcDbEllipse::minorAxis() const { return data_.normal.crossProduct(data_.majorAxis) * data_.ratio; }

Acad::ErrorStatus AcDbEllipse::setRadiusRatio(double ratio) {
    return ratio > 0 && ratio <= 1 ? acdbSetMember(*this, data_.ratio, ratio) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbEllipse::set(const AcGePoint3d& center, const AcGeVector3d& normal, const AcGeVector3d& majorAxis,
                                   double radiusRatio, double startParam, double endParam) {
    constexpr double kRightAngle = 1e-6;
    if (normal.isZeroLength() || majorAxis.isZeroLength() ||
        std::fabs(normal.normal().dotProduct(majorAxis.normal())) > kRightAngle)
        return Acad::eDegenerateGeometry;
    if (!(radiusRatio > 0 && radiusRatio <= 1))
        return Acad::eInvalidInput;
    return acdbSetMember(*this, data_, Data{center, majorAxis, normal.normal(), radiusRatio, startParam, endParam});
}

bool AcDbEllipse::isClosed() const {
    const double sweep = std::fabs(data_.endParam - data_.startParam);
    return std::fabs(sweep - 2 * kAcGePi) < AcGeTol().equalVector;
}

AcGePoint3d AcDbEllipse::pointAt(double parameter) const {
    return data_.center + data_.majorAxis * std::cos(parameter) + minorAxis() * std::sin(parameter);
}

Acad::ErrorStatus AcDbEllipse::getStartPoint(AcGePoint3d& point) const {
    point = pointAt(data_.startParam);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::getEndPoint(AcGePoint3d& point) const {
    point = pointAt(data_.endParam);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbEllipse::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    Data moved = data_;
    moved.center = matrix * data_.center;
    moved.majorAxis = matrix * data_.majorAxis;
    moved.normal = (matrix * data_.normal).normal();
    if (matrix.det() < 0) { // the minor axis now points the other way, so parameters count backwards
        moved.startParam = 2 * kAcGePi - data_.endParam;
        moved.endParam = 2 * kAcGePi - data_.startParam;
    }
    const Acad::ErrorStatus status = acdbSetMember(*this, data_, moved);
    return status == Acad::eOk ? xDataTransformBy(matrix) : status;
}

Acad::ErrorStatus AcDbEllipse::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    extents.addPoint(pointAt(data_.startParam));
    extents.addPoint(pointAt(data_.endParam));
    const AcGeVector3d a = data_.majorAxis, b = minorAxis();
    const double sweep = isClosed() ? 2 * kAcGePi : normalizedAngle(data_.endParam - data_.startParam);
    for (const double extreme : {std::atan2(b.x, a.x), std::atan2(b.y, a.y), std::atan2(b.z, a.z)})
        for (const double parameter : {extreme, extreme + kAcGePi})
            if (normalizedAngle(parameter - data_.startParam) <= sweep)
                extents.addPoint(pointAt(parameter));
    return Acad::eOk;
}

// Spline

namespace {

Acad::ErrorStatus pointOf(const std::vector<AcGePoint3d>& points, int index, AcGePoint3d& point) {
    if (index < 0 || static_cast<size_t>(index) >= points.size())
        return Acad::eInvalidIndex;
    point = points[static_cast<size_t>(index)];
    return Acad::eOk;
}

const std::vector<AcGePoint3d>& shapePoints(const AcDbSpline::Data& data) {
    return data.controlPoints.empty() ? data.fitPoints : data.controlPoints;
}

} // namespace

Acad::ErrorStatus AcDbSpline::getControlPointAt(int index, AcGePoint3d& point) const {
    return pointOf(data_.controlPoints, index, point);
}

Acad::ErrorStatus AcDbSpline::getFitPointAt(int index, AcGePoint3d& point) const {
    return pointOf(data_.fitPoints, index, point);
}

double AcDbSpline::weightAt(int index) const {
    return index >= 0 && static_cast<size_t>(index) < data_.weights.size() ? data_.weights[static_cast<size_t>(index)]
                                                                           : 1.0;
}

Acad::ErrorStatus AcDbSpline::getStartPoint(AcGePoint3d& point) const { return pointOf(shapePoints(data_), 0, point); }

Acad::ErrorStatus AcDbSpline::getEndPoint(AcGePoint3d& point) const {
    return pointOf(shapePoints(data_), static_cast<int>(shapePoints(data_).size()) - 1, point);
}

Acad::ErrorStatus AcDbSpline::transformBy(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk)
        return status;
    for (AcGePoint3d& point : data_.controlPoints)
        point = matrix * point;
    for (AcGePoint3d& point : data_.fitPoints)
        point = matrix * point;
    data_.startTangent = matrix * data_.startTangent;
    data_.endTangent = matrix * data_.endTangent;
    return xDataTransformBy(matrix);
}

Acad::ErrorStatus AcDbSpline::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    for (const AcGePoint3d& point : shapePoints(data_))
        extents.addPoint(point);
    return extents.isEmpty() ? Acad::eNullExtents : Acad::eOk;
}
