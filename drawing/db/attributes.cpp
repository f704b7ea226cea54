#include "db/plane_math.h"
#include "db/text.h"

#include <cstring>

ACDB_DXF_DEFINE_MEMBERS(AcDbAttribute, AcDbText, "ATTRIB", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbAttributeDefinition, AcDbText, "ATTDEF", "")

namespace {

bool isValidTag(const char* tag) { return tag && *tag && !std::strpbrk(tag, " \t\r\n"); }

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
    if (!blockTransform.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    if (const Acad::ErrorStatus status = setPropertiesFrom(definition); status != Acad::eOk)
        return status;
    setFileData(definition->data());
    attribute_ = definition->attributeData();
    return transformBy(blockTransform);
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
