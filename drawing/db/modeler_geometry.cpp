#include "db/modeler_geometry.h"

#include "acis/body.h"
#include "acis/face_mesh.h"
#include "acis/sat_text.h"
#include "db/curves.h"
#include "db/plane_math.h"
#include "db/transformed_parts.h"
#include "dwg/solid_rest.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbModelerGeometry, AcDbEntity)
ACDB_DXF_DEFINE_MEMBERS(AcDbRegion, AcDbModelerGeometry, "REGION", "")
ACDB_DXF_DEFINE_MEMBERS(AcDb3dSolid, AcDbModelerGeometry, "3DSOLID", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbBody, AcDbModelerGeometry, "BODY", "")

Acad::ErrorStatus AcDbModelerGeometry::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    std::optional<std::string> moved = vndk::acis::transformed(data_.text, matrix);
    if (!moved)
        return Acad::eNotApplicable;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    data_.text = std::move(*moved);
    data_.blocks.clear();
    vndk::dwg::moveSolidRest(data_, matrix);
    return xDataTransformBy(matrix);
}

Acad::ErrorStatus AcDbModelerGeometry::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    for (const vndk::acis::Body& body : vndk::acis::Body::read(data_.text)) {
        for (const vndk::acis::EdgeCurve& edge : body.edges)
            for (const AcGePoint3d& p : edge.flattened())
                extents.addPoint(body.transform * p);
        vndk::acis::Mesh mesh;
        for (const vndk::acis::Face& face : body.faces)
            if (face.surface && face.surface->turnsInU())
                vndk::acis::FaceDomain(face).addTo(mesh);
        for (const AcGePoint3d& p : mesh.points)
            extents.addPoint(body.transform * p);
    }
    return extents.isEmpty() ? Acad::eNullExtents : Acad::eOk;
}

namespace {

/// Null for a curve without an entity of its own.
std::unique_ptr<AcDbEntity> entityOf(const vndk::acis::EdgeCurve& edge, const AcGeMatrix3d& matrix) {
    using Kind = vndk::acis::EdgeCurve::Kind;
    if (edge.kind == Kind::Straight)
        return std::make_unique<AcDbLine>(matrix * edge.start, matrix * edge.end);
    if (edge.kind == Kind::Points)
        return nullptr;
    AcGeVector3d major = matrix * edge.major, minor = matrix * edge.minor;
    double first = edge.first, sweep = edge.sweep;
    if (sweep < 0) {
        minor = -minor;
        first = -first;
        sweep = -sweep;
    }
    const AcGeVector3d normal = major.crossProduct(minor).normal();
    const AcGePoint3d center = matrix * edge.center;
    constexpr double kSame = 1e-9;
    const bool round = std::fabs(minor.length() - major.length()) < kSame * major.length();
    const bool whole = sweep > 2 * kAcGePi - kSame;
    if (!round) {
        auto ellipse = std::make_unique<AcDbEllipse>();
        if (minor.lengthSqrd() > major.lengthSqrd()) {
            std::swap(major, minor);
            minor = -minor;
            first -= kAcGePi / 2;
        }
        const Acad::ErrorStatus status = ellipse->set(center, normal, major, minor.length() / major.length(),
                                                      whole ? 0 : first, whole ? 2 * kAcGePi : first + sweep);
        return status == Acad::eOk ? std::move(ellipse) : nullptr;
    }
    if (whole)
        return std::make_unique<AcDbCircle>(center, normal, major.length());
    const AcGeVector3d inPlane = AcGeMatrix3d::worldToPlane(normal) * major;
    const double start = std::atan2(inPlane.y, inPlane.x) + first;
    auto arc = std::make_unique<AcDbArc>(AcGePoint3d(), major.length(), vndk::db::normalizedAngle(start),
                                         vndk::db::normalizedAngle(start + sweep));
    arc->setNormal(normal);
    arc->setCenter(center);
    return arc;
}

} // namespace

Acad::ErrorStatus AcDbRegion::explode(std::vector<AcDbEntity*>& parts) const {
    vndk::db::Parts pieces;
    for (const vndk::acis::Body& body : vndk::acis::Body::read(data().text))
        for (const vndk::acis::EdgeCurve& edge : body.edges) {
            pieces.push_back(entityOf(edge, body.transform));
            if (!pieces.back())
                return Acad::eNotApplicable;
            pieces.back()->setPropertiesFrom(this);
        }
    if (pieces.empty())
        return Acad::eNotApplicable;
    vndk::db::release(pieces, parts);
    return Acad::eOk;
}
