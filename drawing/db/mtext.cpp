#include "db/database.h"
#include "db/plane_math.h"
#include "db/text.h"

ACDB_DXF_DEFINE_MEMBERS(AcDbMText, AcDbEntity, "MTEXT", "")

Acad::ErrorStatus AcDbMText::setNormal(const AcGeVector3d& normal) {
    AcGeVector3d unit;
    const Acad::ErrorStatus status = vndk::db::unitVector(normal, unit);
    return status == Acad::eOk ? acdbSetMember(*this, data_.normal, unit) : status;
}

Acad::ErrorStatus AcDbMText::setDirection(const AcGeVector3d& direction) {
    AcGeVector3d unit;
    const Acad::ErrorStatus status = vndk::db::unitVector(direction, unit);
    return status == Acad::eOk ? acdbSetMember(*this, data_.direction, unit) : status;
}

double AcDbMText::rotation() const {
    const AcGeVector3d inPlane = AcGeMatrix3d::worldToPlane(data_.normal) * data_.direction;
    return vndk::db::normalizedAngle(std::atan2(inPlane.y, inPlane.x));
}

Acad::ErrorStatus AcDbMText::setRotation(double angle) {
    return setDirection(AcGeMatrix3d::planeToWorld(data_.normal) * AcGeVector3d(std::cos(angle), std::sin(angle), 0));
}

Acad::ErrorStatus AcDbMText::setTextHeight(double height) {
    return height > 0 ? acdbSetMember(*this, data_.height, height) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbMText::setAttachment(int attachment) {
    if (attachment < 1 || attachment > 9)
        return Acad::eInvalidInput;
    return acdbSetMember(*this, data_.attachment, static_cast<uint16_t>(attachment));
}

char* AcDbMText::contents() const { return acutNewString(data_.contents); }

Acad::ErrorStatus AcDbMText::setContents(const char* text) {
    constexpr size_t kLongest = 65000;
    if (!text || std::string_view(text).size() > kLongest)
        return Acad::eInvalidInput;
    return acdbSetMember(*this, data_.contents, text);
}

Acad::ErrorStatus AcDbMText::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    const double scale = matrix.scale();
    data_.location = matrix * data_.location;
    data_.direction = (matrix * data_.direction).normal();
    data_.normal = (matrix * data_.normal).normal();
    // A paragraph can't be mirrored: it stays readable, its frame is that of the turned text.
    if (matrix.det() < 0)
        data_.normal = -data_.normal;
    data_.width *= scale;
    data_.height *= scale;
    data_.extentsWidth *= scale;
    data_.extentsHeight *= scale;
    return xDataTransformBy(matrix);
}

Acad::ErrorStatus AcDbMText::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    const int column = (data_.attachment - 1) % 3, row = (data_.attachment - 1) / 3;
    const double left = -data_.extentsWidth * column / 2, top = data_.extentsHeight * row / 2;
    const AcGeVector3d across = data_.direction, up = data_.normal.crossProduct(data_.direction);
    for (const double x : {left, left + data_.extentsWidth})
        for (const double y : {top, top - data_.extentsHeight})
            extents.addPoint(data_.location + across * x + up * y);
    return Acad::eOk;
}

void AcDbMText::madeResident() {
    if (data_.style.isNull())
        data_.style = database()->textstyle();
}

void AcDbMText::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbEntity::visitReferences(visitor);
    visitor.visit(data_.style, AcDb::kHardPointer);
}
