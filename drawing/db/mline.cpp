#include "db/mline.h"

#include "db/curves.h"
#include "db/mline_picture.h"
#include "db/plane_math.h"
#include "db/transformed_parts.h"

ACDB_DXF_DEFINE_MEMBERS(AcDbMline, AcDbEntity, "MLINE", "")

Acad::ErrorStatus AcDbMline::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    const double scale = matrix.scale();
    // Lines are counted to the left of the direction: a mirror puts them to its right.
    const double side = matrix.det() < 0 ? -1 : 1;
    data_.scale *= scale * side;
    data_.base = matrix * data_.base;
    data_.normal = (matrix * data_.normal).normal();
    for (Vertex& vertex : data_.vertices) {
        vertex.point = matrix * vertex.point;
        vertex.direction = (matrix * vertex.direction).normal();
        vertex.miter = (matrix * vertex.miter).normal() * side;
        for (Segment& segment : vertex.segments) {
            for (std::vector<double>* const places : {&segment.line, &segment.fill})
                for (double& place : *places)
                    place *= scale;
            if (!segment.line.empty())
                segment.line[0] *= side;
        }
    }
    return xDataTransformBy(matrix);
}

Acad::ErrorStatus AcDbMline::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    for (const Vertex& vertex : data_.vertices) {
        extents.addPoint(vertex.point);
        for (const Segment& segment : vertex.segments)
            if (!segment.line.empty())
                extents.addPoint(vertex.point + vertex.miter * segment.line[0]);
    }
    return extents.isEmpty() ? Acad::eNullExtents : Acad::eOk;
}

namespace {

std::unique_ptr<AcDbEntity> entityOf(const vndk::db::MlinePicture::Stroke& stroke) {
    if (!stroke.outward)
        return std::make_unique<AcDbLine>(stroke.start, stroke.end);
    const AcGeVector3d half = (stroke.end - stroke.start) * 0.5;
    // Seen against this normal the arc runs counter-clockwise from its start over `outward` to its end.
    const AcGeVector3d normal = (-half).crossProduct(*stroke.outward).normal();
    if (normal.isZeroLength())
        return nullptr;
    const AcGeVector3d inPlane = AcGeMatrix3d::worldToPlane(normal) * -half;
    const double start = vndk::db::normalizedAngle(std::atan2(inPlane.y, inPlane.x));
    auto arc =
        std::make_unique<AcDbArc>(AcGePoint3d(), half.length(), start, vndk::db::normalizedAngle(start + kAcGePi));
    arc->setNormal(normal);
    arc->setCenter(stroke.start + half);
    return arc;
}

} // namespace

Acad::ErrorStatus AcDbMline::explode(std::vector<AcDbEntity*>& parts) const {
    const vndk::db::MlinePicture picture = vndk::db::mlinePicture(*this);
    if (picture.strokes.empty())
        return Acad::eNotApplicable;
    vndk::db::Parts pieces;
    for (const vndk::db::MlinePicture::Stroke& stroke : picture.strokes) {
        std::unique_ptr<AcDbEntity> piece = entityOf(stroke);
        if (!piece)
            continue;
        piece->setPropertiesFrom(this);
        if (stroke.color != kAcDbColorByLayer && stroke.color != kAcDbColorByBlock)
            piece->setColorIndex(stroke.color);
        if (!stroke.linetype.isNull())
            piece->setLinetype(stroke.linetype);
        pieces.push_back(std::move(piece));
    }
    vndk::db::release(pieces, parts);
    return Acad::eOk;
}

void AcDbMline::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbEntity::visitReferences(visitor);
    visitor.visit(data_.style, AcDb::kHardPointer);
}
