#include "db/text.h"

#include "db/database.h"
#include "db/plane_math.h"

#include <cstring>

ACDB_DXF_DEFINE_MEMBERS(AcDbText, AcDbEntity, "TEXT", "")

namespace {

/// Characters are about this much of the height wide. Only boxes and alignment estimates use it.
constexpr double kMeanCharacterWidth = 0.8;
constexpr size_t kLongestText = 32000;

} // namespace

AcDbText::AcDbText(const AcGePoint3d& position, const char* text, AcDbObjectId style, double height, double rotation) {
    data_.position = {position.x, position.y};
    data_.elevation = position.z;
    data_.text = text ? text : "";
    data_.style = style;
    if (height > 0)
        data_.height = height;
    data_.rotation = rotation;
}

AcGePoint3d AcDbText::position() const {
    return AcGeMatrix3d::planeToWorld(data_.normal, AcGePoint3d(data_.position.x, data_.position.y, data_.elevation));
}

Acad::ErrorStatus AcDbText::setPosition(const AcGePoint3d& point) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk)
        return status;
    const AcGePoint3d inPlane = AcGeMatrix3d::worldToPlane(data_.normal) * point;
    data_.position = {inPlane.x, inPlane.y};
    data_.elevation = inPlane.z;
    return Acad::eOk;
}

AcGePoint3d AcDbText::alignmentPoint() const {
    return AcGeMatrix3d::planeToWorld(data_.normal, AcGePoint3d(data_.alignment.x, data_.alignment.y, data_.elevation));
}

Acad::ErrorStatus AcDbText::setAlignmentPoint(const AcGePoint3d& point) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk)
        return status;
    const AcGePoint3d inPlane = AcGeMatrix3d::worldToPlane(data_.normal) * point;
    data_.alignment = {inPlane.x, inPlane.y};
    if (!isDefaultAlignment())
        data_.elevation = inPlane.z;
    return Acad::eOk;
}

char* AcDbText::textString() const { return acutNewString(data_.text); }

Acad::ErrorStatus AcDbText::setTextString(const char* text) {
    if (!text || std::strlen(text) > kLongestText)
        return Acad::eInvalidInput;
    return acdbSetMember(*this, data_.text, text);
}

Acad::ErrorStatus AcDbText::setHeight(double height) {
    return height > 0 ? acdbSetMember(*this, data_.height, height) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbText::setWidthFactor(double factor) {
    return factor > 0 ? acdbSetMember(*this, data_.widthFactor, factor) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbText::setNormal(const AcGeVector3d& normal) {
    AcGeVector3d unit;
    if (const Acad::ErrorStatus status = vndk::db::unitVector(normal, unit); status != Acad::eOk)
        return status;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    const AcGePoint3d oldPosition = position(), oldAlignment = alignmentPoint();
    data_.normal = unit;
    setAlignmentPoint(oldAlignment);
    return setPosition(oldPosition);
}

Acad::ErrorStatus AcDbText::setGeneration(unsigned char bit, bool on) {
    return acdbSetMember(*this, data_.generation,
                         static_cast<unsigned char>(on ? data_.generation | bit : data_.generation & ~bit));
}

Acad::ErrorStatus AcDbText::setHorizontalMode(AcDb::TextHorzMode mode) {
    if (mode < AcDb::kTextLeft || mode > AcDb::kTextFit)
        return Acad::eInvalidInput;
    return acdbSetMember(*this, data_.horizontal, static_cast<unsigned char>(mode));
}

Acad::ErrorStatus AcDbText::setVerticalMode(AcDb::TextVertMode mode) {
    if (mode < AcDb::kTextBase || mode > AcDb::kTextTop)
        return Acad::eInvalidInput;
    return acdbSetMember(*this, data_.vertical, static_cast<unsigned char>(mode));
}

Acad::ErrorStatus AcDbText::adjustAlignment(const AcDbDatabase* /*database*/) {
    if (isDefaultAlignment() || data_.horizontal == AcDb::kTextAlign || data_.horizontal == AcDb::kTextFit)
        return Acad::eOk;
    const double width =
        static_cast<double>(data_.text.size()) * kMeanCharacterWidth * data_.height * data_.widthFactor;
    const bool centered = data_.horizontal == AcDb::kTextCenter || data_.horizontal == AcDb::kTextMid;
    const double along = centered ? width / 2 : data_.horizontal == AcDb::kTextRight ? width : 0;
    const bool middle = data_.horizontal == AcDb::kTextMid || data_.vertical == AcDb::kTextVertMid;
    const double up = middle ? data_.height / 2 : data_.vertical == AcDb::kTextTop ? data_.height : 0;
    const double c = std::cos(data_.rotation), s = std::sin(data_.rotation);
    const AcGePoint2d position(data_.alignment.x - along * c + up * s, data_.alignment.y - along * s - up * c);
    return acdbSetMember(*this, data_.position, position);
}

Acad::ErrorStatus AcDbText::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    const vndk::db::PlaneTransform plane(matrix, data_.normal);
    data_.position = plane.point(data_.position, data_.elevation);
    data_.alignment = plane.point(data_.alignment, data_.elevation);
    data_.elevation = plane.elevation(data_.elevation);
    data_.normal = plane.normal();
    data_.height *= plane.scale();
    data_.thickness *= plane.scale();
    // Mirrored text runs backwards: its direction is turned round, so that the mark "backwards" turns it back.
    data_.rotation = plane.angle(plane.mirrors() ? data_.rotation + kAcGePi : data_.rotation);
    if (plane.mirrors())
        data_.generation ^= 2;
    return xDataTransformBy(matrix);
}

Acad::ErrorStatus AcDbText::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    const double width =
        static_cast<double>(data_.text.size()) * kMeanCharacterWidth * data_.height * data_.widthFactor;
    const double reach = isMirroredInX() ? -width : width;
    const double up = isMirroredInY() ? -data_.height : data_.height;
    const double c = std::cos(data_.rotation), s = std::sin(data_.rotation);
    const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(data_.normal);
    for (const double x : {0.0, reach})
        for (const double y : {0.0, up})
            extents.addPoint(toWorld * AcGePoint3d(data_.position.x + x * c - y * s, data_.position.y + x * s + y * c,
                                                   data_.elevation));
    return Acad::eOk;
}

void AcDbText::madeResident() {
    if (data_.style.isNull())
        data_.style = database()->textstyle();
}

void AcDbText::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbEntity::visitReferences(visitor);
    visitor.visit(data_.style, AcDb::kHardPointer);
}
