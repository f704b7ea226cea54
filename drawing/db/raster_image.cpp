#include "db/raster_image.h"

ACDB_DXF_DEFINE_MEMBERS(AcDbRasterImage, AcDbEntity, "IMAGE", "ISM")
ACDB_DXF_DEFINE_MEMBERS(AcDbWipeout, AcDbRasterImage, "WIPEOUT", "WipeOut")

void AcDbRasterImage::getOrientation(AcGePoint3d& origin, AcGeVector3d& u, AcGeVector3d& v) const {
    origin = data_.origin;
    u = data_.u;
    v = data_.v;
}

std::vector<AcGePoint3d> AcDbRasterImage::frame() const {
    const AcGeVector2d& size = data_.size;
    std::vector<AcGePoint2d> corners = {{-0.5, -0.5}, {size.x - 0.5, size.y - 0.5}};
    if (data_.clipping && data_.clip.size() >= 2)
        corners = data_.clip;
    if (corners.size() == 2) {
        const AcGePoint2d a = corners[0], b = corners[1];
        corners = {a, {b.x, a.y}, b, {a.x, b.y}};
    }
    std::vector<AcGePoint3d> places;
    for (const AcGePoint2d& p : corners)
        places.push_back(data_.origin + data_.u * (p.x + 0.5) + data_.v * (size.y - 0.5 - p.y));
    return places;
}

Acad::ErrorStatus AcDbRasterImage::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    data_.origin = matrix * data_.origin;
    data_.u = matrix * data_.u;
    data_.v = matrix * data_.v;
    setProxyGraphics({}); // shows it where it was
    return xDataTransformBy(matrix);
}

Acad::ErrorStatus AcDbRasterImage::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    for (const AcGePoint3d& p : frame())
        extents.addPoint(p);
    return Acad::eOk;
}

void AcDbRasterImage::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbEntity::visitReferences(visitor);
    visitor.visit(data_.definition, AcDb::kHardPointer);
    visitor.visit(data_.reactor, AcDb::kHardOwner);
}
