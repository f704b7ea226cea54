#include "db/plane_math.h"
#include "db/polylines.h"

ACDB_DXF_DEFINE_MEMBERS(AcDbPolyline, AcDbCurve, "LWPOLYLINE", "")

Acad::ErrorStatus AcDbPolyline::addVertexAt(unsigned int index, const AcGePoint2d& point, double bulge,
                                            double startWidth, double endWidth) {
    if (index > data_.vertices.size())
        return Acad::eInvalidIndex;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    const double start = startWidth < 0 ? data_.constantWidth : startWidth;
    const double end = endWidth < 0 ? data_.constantWidth : endWidth;
    data_.vertices.insert(data_.vertices.begin() + index, Vertex{point, bulge, start, end});
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::removeVertexAt(unsigned int index) {
    if (index >= data_.vertices.size())
        return Acad::eInvalidIndex;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    data_.vertices.erase(data_.vertices.begin() + index);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint2d& point) const {
    if (index >= data_.vertices.size())
        return Acad::eInvalidIndex;
    point = data_.vertices[index].point;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::getPointAt(unsigned int index, AcGePoint3d& point) const {
    AcGePoint2d flat;
    const Acad::ErrorStatus status = getPointAt(index, flat);
    if (status == Acad::eOk)
        point = AcGeMatrix3d::planeToWorld(data_.normal) * AcGePoint3d(flat.x, flat.y, data_.elevation);
    return status;
}

Acad::ErrorStatus AcDbPolyline::setPointAt(unsigned int index, const AcGePoint2d& point) {
    if (index >= data_.vertices.size())
        return Acad::eInvalidIndex;
    return acdbSetMember(*this, data_.vertices[index].point, point);
}

Acad::ErrorStatus AcDbPolyline::getBulgeAt(unsigned int index, double& bulge) const {
    if (index >= data_.vertices.size())
        return Acad::eInvalidIndex;
    bulge = data_.vertices[index].bulge;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setBulgeAt(unsigned int index, double bulge) {
    if (index >= data_.vertices.size())
        return Acad::eInvalidIndex;
    return acdbSetMember(*this, data_.vertices[index].bulge, bulge);
}

Acad::ErrorStatus AcDbPolyline::getWidthsAt(unsigned int index, double& startWidth, double& endWidth) const {
    if (index >= data_.vertices.size())
        return Acad::eInvalidIndex;
    startWidth = data_.vertices[index].startWidth;
    endWidth = data_.vertices[index].endWidth;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setWidthsAt(unsigned int index, double startWidth, double endWidth) {
    if (index >= data_.vertices.size())
        return Acad::eInvalidIndex;
    if (startWidth < 0 || endWidth < 0)
        return Acad::eInvalidInput;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    data_.vertices[index].startWidth = startWidth;
    data_.vertices[index].endWidth = endWidth;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setConstantWidth(double width) {
    if (width < 0)
        return Acad::eInvalidInput;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    data_.constantWidth = width;
    for (Vertex& vertex : data_.vertices)
        vertex.startWidth = vertex.endWidth = width;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyline::setNormal(const AcGeVector3d& normal) {
    AcGeVector3d unit;
    const Acad::ErrorStatus status = vndk::db::unitVector(normal, unit);
    return status == Acad::eOk ? acdbSetMember(*this, data_.normal, unit) : status;
}

Acad::ErrorStatus AcDbPolyline::getStartPoint(AcGePoint3d& point) const { return getPointAt(0, point); }

Acad::ErrorStatus AcDbPolyline::getEndPoint(AcGePoint3d& point) const {
    return getPointAt(data_.closed || data_.vertices.empty() ? 0 : numVerts() - 1, point);
}

Acad::ErrorStatus AcDbPolyline::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    const vndk::db::PlaneTransform plane(matrix, data_.normal);
    for (Vertex& vertex : data_.vertices) {
        vertex.point = plane.point(vertex.point, data_.elevation);
        vertex.bulge = plane.mirrors() ? -vertex.bulge : vertex.bulge;
        vertex.startWidth *= plane.scale();
        vertex.endWidth *= plane.scale();
    }
    data_.elevation = plane.elevation(data_.elevation);
    data_.constantWidth *= plane.scale();
    data_.thickness *= plane.scale();
    data_.normal = plane.normal();
    return xDataTransformBy(matrix);
}

namespace {

/// Adds the piece between two vertices, half of the greatest width on each side aside.
void addPiece(AcDbExtents& extents, const AcGeMatrix3d& toWorld, const AcGePoint2d& a, const AcGePoint2d& b,
              double bulge, double elevation) {
    extents.addPoint(toWorld * AcGePoint3d(b.x, b.y, elevation));
    if (bulge == 0 || a.distanceTo(b) == 0)
        return;
    const vndk::db::BulgeArc arc = vndk::db::bulgeArc(a, b, bulge);
    vndk::db::addArc(extents, toWorld, {arc.center.x, arc.center.y, elevation}, arc.radius, arc.startAngle,
                     arc.endAngle);
}

} // namespace

Acad::ErrorStatus AcDbPolyline::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    if (data_.vertices.empty())
        return Acad::eNullExtents;
    const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(data_.normal);
    const Vertex* previous = data_.closed ? &data_.vertices.back() : nullptr;
    double halfWidth = 0;
    for (const Vertex& vertex : data_.vertices) {
        addPiece(extents, toWorld, previous ? previous->point : vertex.point, vertex.point,
                 previous ? previous->bulge : 0, data_.elevation);
        halfWidth = std::max({halfWidth, vertex.startWidth / 2, vertex.endWidth / 2});
        previous = &vertex;
    }
    if (halfWidth > 0)
        extents = AcDbExtents(extents.minPoint() + AcGeVector3d(-halfWidth, -halfWidth, 0),
                              extents.maxPoint() + AcGeVector3d(halfWidth, halfWidth, 0));
    AcDbExtents top = extents;
    top.transformBy(AcGeMatrix3d::translation(data_.normal * data_.thickness));
    extents.addExt(top);
    return Acad::eOk;
}
