#include "db/plane_math.h"
#include "db/text.h"

#include <cstring>

ACDB_DXF_DEFINE_MEMBERS(AcDbAttribute, AcDbText, "ATTRIB", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbAttributeDefinition, AcDbText, "ATTDEF", "")

namespace {

bool isValidTag(const char* tag) { return tag && *tag && !std::strpbrk(tag, " \t\r\n"); }

/// A text through a transform that changes its proportions: height, width factor and oblique angle take up what the
/// transform does to the way the text runs and to its upright strokes.
AcDbText::Data unevenlyScaled(AcDbText::Data text, const AcGeMatrix3d& transform) {
    constexpr unsigned char kBackwards = 2, kUpsideDown = 4;
    const AcGeMatrix3d toWorld = transform * AcGeMatrix3d::planeToWorld(text.normal);
    const AcGeVector3d baseline(std::cos(text.rotation), std::sin(text.rotation), 0);
    const AcGeVector3d up = AcGeVector3d::kZAxis.crossProduct(baseline);
    const double runs = text.generation & kBackwards ? -1 : 1, stands = text.generation & kUpsideDown ? -1 : 1;
    const AcGeVector3d run = toWorld * (baseline * runs);
    const AcGeVector3d stroke = toWorld * (baseline * (runs * std::tan(text.oblique)) + up * stands);

    const AcGeVector3d across = run.crossProduct(stroke).normal(), side = toWorld * AcGeVector3d::kZAxis;
    const AcGeVector3d normal = across.dotProduct(side) < 0 ? -across : across;
    const double lean = stroke.dotProduct(run.normal());
    const double rise = stroke.dotProduct(normal.crossProduct(run.normal())) * stands;
    const bool backwards = rise < 0; // mirrored: it keeps its side and runs against its baseline
    const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(normal);
    const auto placed = [&](const AcGePoint2d& p) {
        return toPlane * (toWorld * AcGePoint3d(p.x, p.y, text.elevation));
    };
    const AcGePoint3d position = placed(text.position), alignment = placed(text.alignment);
    const AcGeVector3d direction = toPlane * (backwards ? -run : run);
    text.position = {position.x, position.y};
    text.alignment = {alignment.x, alignment.y};
    text.elevation = position.z;
    text.normal = normal;
    text.rotation = vndk::db::normalizedAngle(std::atan2(direction.y, direction.x));
    text.generation = static_cast<unsigned char>((text.generation & ~kBackwards) | (backwards ? kBackwards : 0));
    text.oblique = std::atan2(lean, std::fabs(rise));
    text.height *= std::fabs(rise);
    text.widthFactor *= run.length() / std::fabs(rise);
    text.thickness *= side.length();
    return text;
}

unsigned char withFlag(unsigned char flags, unsigned char bit, bool on) {
    return static_cast<unsigned char>(on ? flags | bit : flags & ~bit);
}

} // namespace

AcDbAttribute::AcDbAttribute(const AcGePoint3d& position, const char* text, const char* tag, AcDbObjectId style)
    : AcDbText(position, text, style) {
    attribute_.tag = tag ? tag : "";
}

char* AcDbAttribute::tag() const { return acutNewString(attribute_.tag); }

Acad::ErrorStatus AcDbAttribute::setTag(const char* tag) {
    return isValidTag(tag) ? acdbSetMember(*this, attribute_.tag, tag) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbAttribute::setFlag(unsigned char bit, bool on) {
    return acdbSetMember(*this, attribute_.flags, withFlag(attribute_.flags, bit, on));
}

Acad::ErrorStatus AcDbAttribute::setAttributeFromBlock(const AcDbAttributeDefinition* definition,
                                                       const AcGeMatrix3d& blockTransform) {
    if (!definition)
        return Acad::eNullObjectPointer;
    if (blockTransform.isSingular())
        return Acad::eInvalidInput;
    if (const Acad::ErrorStatus status = setPropertiesFrom(definition); status != Acad::eOk)
        return status;
    setFileData(definition->data());
    attribute_ = definition->attributeData();
    if (blockTransform.isUniScaledOrtho())
        return transformBy(blockTransform);
    setFileData(unevenlyScaled(definition->data(), blockTransform));
    return Acad::eOk;
}

AcDbAttributeDefinition::AcDbAttributeDefinition(const AcGePoint3d& position, const char* text, const char* tag,
                                                 const char* prompt, AcDbObjectId style)
    : AcDbText(position, text, style) {
    attribute_.tag = tag ? tag : "";
    prompt_ = prompt ? prompt : "";
}

char* AcDbAttributeDefinition::tag() const { return acutNewString(attribute_.tag); }

Acad::ErrorStatus AcDbAttributeDefinition::setTag(const char* tag) {
    return isValidTag(tag) ? acdbSetMember(*this, attribute_.tag, tag) : Acad::eInvalidInput;
}

char* AcDbAttributeDefinition::prompt() const { return acutNewString(prompt_); }

Acad::ErrorStatus AcDbAttributeDefinition::setPrompt(const char* prompt) {
    return prompt ? acdbSetMember(*this, prompt_, prompt) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbAttributeDefinition::setFlag(unsigned char bit, bool on) {
    return acdbSetMember(*this, attribute_.flags, withFlag(attribute_.flags, bit, on));
}
