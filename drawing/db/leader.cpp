#include "db/leader.h"

#include "db/curves.h"
#include "db/database.h"
#include "db/dimension_picture.h"
#include "db/plane_math.h"

using vndk::db::DimensionPicture;
using vndk::db::Parts;

ACDB_DXF_DEFINE_MEMBERS(AcDbLeader, AcDbEntity, "LEADER", "")

Acad::ErrorStatus AcDbLeader::getVertexAt(int index, AcGePoint3d& point) const {
    if (index < 0 || index >= numVertices())
        return Acad::eInvalidIndex;
    point = data_.vertices[static_cast<size_t>(index)];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::setVertexAt(int index, const AcGePoint3d& point) {
    if (index < 0 || index >= numVertices())
        return Acad::eInvalidIndex;
    return acdbSetMember(*this, data_.vertices[static_cast<size_t>(index)], point);
}

Acad::ErrorStatus AcDbLeader::appendVertex(const AcGePoint3d& point) {
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    data_.vertices.push_back(point);
    return Acad::eOk;
}

bool AcDbLeader::hasHookLine() const {
    constexpr double kSteep = kAcGePi / 12;
    if (annoType() != kMText || isSplined() || data_.vertices.size() < 2)
        return false;
    const AcGeVector3d last = data_.vertices.back() - data_.vertices[data_.vertices.size() - 2];
    const double angle = last.angleTo(data_.xDirection);
    return angle > kSteep && angle < kAcGePi - kSteep;
}

Acad::ErrorStatus AcDbLeader::attachAnnotation(AcDbObjectId annotation, AnnoType type) {
    if (annotation.isNull())
        return Acad::eNullObjectId;
    const Acad::ErrorStatus status = acdbSetMember(*this, data_.annotation, annotation);
    if (status == Acad::eOk)
        data_.annotationType = type;
    return status;
}

Acad::ErrorStatus AcDbLeader::detachAnnotation() {
    const Acad::ErrorStatus status = acdbSetMember(*this, data_.annotation, AcDbObjectId());
    if (status == Acad::eOk)
        data_.annotationType = kNoAnno;
    return status;
}

Parts AcDbLeader::picture() const {
    const auto& points = data_.vertices;
    if (points.size() < 2)
        return {};
    AcDbDatabase* const owner = database() ? database() : data_.style.database();
    const double height = (AcGeMatrix3d::worldToPlane(data_.normal) * points.front()).z;
    DimensionPicture picture(owner, data_.normal, height, acdbDimVariables(*this, data_.style));
    const vndk::db::DimVariables& v = picture.variables();
    const auto direction = vndk::db::unitOf(picture.inPlane(points[0]) - picture.inPlane(points[1]));
    const double head = picture.arrowSize();
    const bool hasHead = data_.hasArrowHead && direction && head > 0 && points[0].distanceTo(points[1]) > head;
    std::vector<AcGePoint3d> path = points;
    if (hasHead && !isSplined())
        path[0] = points[0] + (points[1] - points[0]).normal() * head;
    if (hasHookLine())
        path.push_back(path.back() + data_.xDirection.normal() * (data_.hookAlongX ? head : -head));
    if (isSplined()) {
        auto curve = std::make_unique<AcDbSpline>();
        AcDbSpline::Data data;
        data.scenario = 2;
        data.fitPoints = path;
        curve->setFileData(std::move(data));
        picture.add(std::move(curve), v.dimclrd, v.dimlwd);
    }
    for (size_t i = 0; i + 1 < path.size() && !isSplined(); ++i)
        picture.add(std::make_unique<AcDbLine>(path[i], path[i + 1]), v.dimclrd, v.dimlwd);
    if (hasHead)
        picture.arrow(2, picture.inPlane(points[0]), *direction);
    return vndk::db::shownBy(*this, owner, picture.take());
}

Acad::ErrorStatus AcDbLeader::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    for (AcGePoint3d& vertex : data_.vertices)
        vertex = matrix * vertex;
    data_.origin = matrix * data_.origin;
    data_.normal = (matrix * data_.normal).normal();
    data_.xDirection = (matrix * data_.xDirection).normal();
    data_.blockOffset = matrix * data_.blockOffset;
    data_.endOffset = matrix * data_.endOffset;
    data_.boxHeight *= matrix.scale();
    data_.boxWidth *= matrix.scale();
    return xDataTransformBy(matrix);
}

Acad::ErrorStatus AcDbLeader::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    for (const AcGePoint3d& vertex : data_.vertices)
        extents.addPoint(vertex);
    for (const std::unique_ptr<AcDbEntity>& part : picture()) {
        AcDbExtents box;
        if (part->getGeomExtents(box) == Acad::eOk)
            extents.addExt(box);
    }
    return extents.isEmpty() ? Acad::eNullExtents : Acad::eOk;
}

Acad::ErrorStatus AcDbLeader::explode(std::vector<AcDbEntity*>& parts) const {
    Parts pieces = picture();
    if (pieces.empty())
        return Acad::eNotApplicable;
    vndk::db::release(pieces, parts);
    return Acad::eOk;
}

void AcDbLeader::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbEntity::visitReferences(visitor);
    visitor.visit(data_.annotation, AcDb::kSoftPointer);
    visitor.visit(data_.style, AcDb::kHardPointer);
}

void AcDbLeader::madeResident() {
    if (data_.style.isNull())
        data_.style = database()->idOf(database()->header().DIMSTYLE);
}
