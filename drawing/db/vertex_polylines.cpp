#include "db/database.h"
#include "db/plane_math.h"
#include "db/polylines.h"

ACDB_DXF_DEFINE_MEMBERS(AcDbSequenceEnd, AcDbEntity, "SEQEND", "")
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbVertex, AcDbEntity)
ACDB_DXF_DEFINE_MEMBERS(AcDb2dVertex, AcDbVertex, "VERTEX", "")
ACDB_DXF_DEFINE_MEMBERS(AcDb3dPolylineVertex, AcDbVertex, "VERTEX", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbPolygonMeshVertex, AcDbVertex, "VERTEX", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbPolyFaceMeshVertex, AcDbVertex, "VERTEX", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbFaceRecord, AcDbEntity, "VERTEX", "")
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbVertexOwner, AcDbCurve)
ACDB_DXF_DEFINE_MEMBERS(AcDb2dPolyline, AcDbVertexOwner, "POLYLINE", "")
ACDB_DXF_DEFINE_MEMBERS(AcDb3dPolyline, AcDbVertexOwner, "POLYLINE", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbPolygonMesh, AcDbVertexOwner, "POLYLINE", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbPolyFaceMesh, AcDbVertexOwner, "POLYLINE", "")

// Vertices

Acad::ErrorStatus AcDbVertex::transformBy(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus status = acdbSetMember(*this, data_.position, matrix * data_.position);
    return status == Acad::eOk ? xDataTransformBy(matrix) : status;
}

Acad::ErrorStatus AcDbVertex::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents(data_.position, data_.position);
    return Acad::eOk;
}

AcDb2dVertex::AcDb2dVertex(const AcGePoint3d& point, double bulge, double startWidth, double endWidth) {
    data_.position = point;
    curve_ = {startWidth, endWidth, bulge, 0};
}

Acad::ErrorStatus AcDb2dVertex::setWidths(double start, double end) {
    if (start < 0 || end < 0)
        return Acad::eInvalidInput;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    curve_.startWidth = start;
    curve_.endWidth = end;
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dVertex::transformBy(const AcGeMatrix3d&) { return Acad::eNotApplicable; }

Acad::ErrorStatus AcDbFaceRecord::getVertexAt(unsigned short index, short& vertex) const {
    if (index > 3)
        return Acad::eInvalidIndex;
    vertex = data_.vertices[index];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFaceRecord::setVertexAt(unsigned short index, short vertex) {
    return index > 3 ? Acad::eInvalidIndex : acdbSetMember(*this, data_.vertices[index], vertex);
}

// Owners of vertices

Acad::ErrorStatus AcDbVertexOwner::appendVertex(AcDbObjectId& id, AcDbEntity* vertex) {
    if (!vertex)
        return Acad::eNullObjectPointer;
    if (vertex->isResident())
        return Acad::eAlreadyInDb;
    return subentities_.append(*this, id, vertex);
}

Acad::ErrorStatus AcDbVertexOwner::appendVertex(AcDbEntity* vertex) {
    AcDbObjectId id;
    return appendVertex(id, vertex);
}

Acad::ErrorStatus AcDbVertexOwner::transformBy(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk)
        return status;
    const Acad::ErrorStatus parts = subentities_.transformBy(*this, matrix);
    return parts == Acad::eOk ? xDataTransformBy(matrix) : parts;
}

Acad::ErrorStatus AcDbVertexOwner::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    for (const AcDbObjectId id : vertices()) {
        const AcDbObjectPointer<AcDbVertex> vertex(id);
        if (vertex)
            extents.addPoint(vertex->position());
    }
    return extents.isEmpty() ? Acad::eNullExtents : Acad::eOk;
}

void AcDbVertexOwner::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbEntity::visitReferences(visitor);
    subentities_.visit(*this, visitor);
}

// Plane polyline with vertex entities

AcGePoint3d AcDb2dPolyline::vertexPosition(const AcDb2dVertex& vertex) const {
    const AcGePoint3d flat = vertex.position();
    return AcGeMatrix3d::planeToWorld(data_.normal) * AcGePoint3d(flat.x, flat.y, data_.elevation);
}

Acad::ErrorStatus AcDb2dPolyline::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    const vndk::db::PlaneTransform plane(matrix, data_.normal);
    Acad::ErrorStatus result = Acad::eOk;
    for (const AcDbObjectId id : vertices()) {
        if (id.isErased())
            continue;
        const AcDbObjectPointer<AcDb2dVertex> vertex(id, AcDb::kForWrite);
        if (!vertex) {
            result = vertex.openStatus();
            continue;
        }
        const AcGePoint3d old = vertex->position();
        vertex->setPosition(plane.point(AcGePoint3d(old.x, old.y, data_.elevation)));
        AcDb2dVertex::CurveData curve = vertex->curveData();
        curve.startWidth *= plane.scale();
        curve.endWidth *= plane.scale();
        curve.bulge = plane.mirrors() ? -curve.bulge : curve.bulge;
        curve.tangent = vertex->data().flag & 2 ? plane.angle(curve.tangent) : curve.tangent;
        vertex->setFileCurveData(curve);
    }
    data_.elevation = plane.elevation(data_.elevation);
    data_.thickness *= plane.scale();
    data_.startWidth *= plane.scale();
    data_.endWidth *= plane.scale();
    data_.normal = plane.normal();
    return result == Acad::eOk ? xDataTransformBy(matrix) : result;
}

Acad::ErrorStatus AcDb2dPolyline::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    for (const AcDbObjectId id : vertices()) {
        const AcDbObjectPointer<AcDb2dVertex> vertex(id);
        if (vertex)
            extents.addPoint(vertexPosition(*vertex));
    }
    return extents.isEmpty() ? Acad::eNullExtents : Acad::eOk;
}
