#include "insertion/make_attribute.h"

#include "objects/attribute.h"
#include "objects/attribute_definition.h"
#include "objects/block_reference.h"

namespace {

VNDKAttributeDefinition* ConditionalDefinition(AcDbAttributeDefinition* pDefinition) {
    return pDefinition->isA() == VNDKAttributeDefinition::desc() ? static_cast<VNDKAttributeDefinition*>(pDefinition)
                                                                 : nullptr;
}

void CopyTag(AcDbAttributeDefinition* pDefinition, VNDKAttribute* pAttribute) {
    char* pTag = pDefinition->tag();
    pAttribute->setTag(pTag);
    acutDelString(pTag);
}

/// The text is the value and the default value alike.
void CopyText(AcDbAttributeDefinition* pDefinition, VNDKAttribute* pAttribute) {
    char* pText = pDefinition->textString();
    pAttribute->setTextString(pText);
    pAttribute->setDefaultValue(pText);
    acutDelString(pText);
}

} // namespace

VNDKAttribute* MakeAttribute(AcDbAttributeDefinition* pDefinition, VNDKBlockReference* pReference) {
    const AcGeVector3d offset = pReference->position().asVector();
    auto* pAttribute = new VNDKAttribute;
    pAttribute->setPropertiesFrom(pDefinition, true);
    CopyFormulas(pDefinition, pAttribute);
    pAttribute->setInvisible(pDefinition->isInvisible());
    pAttribute->setPosition(pDefinition->position() + offset);
    pAttribute->setHeight(pDefinition->height());
    pAttribute->setHorizontalMode(pDefinition->horizontalMode());
    CopyTag(pDefinition, pAttribute);
    pAttribute->setFieldLength(pDefinition->fieldLength());
    CopyText(pDefinition, pAttribute);
    pAttribute->setVerticalMode(pDefinition->verticalMode());
    pAttribute->setVerifiable(pDefinition->isVerifiable());
    pAttribute->setPreset(pDefinition->isPreset());
    pAttribute->setConstant(pDefinition->isConstant());
    if (VNDKAttributeDefinition* pConditional = ConditionalDefinition(pDefinition)) {
        // These take the place of the unmoved points that came with the formulas.
        pAttribute->setConditionalPoint1(pConditional->conditionalPoint1() + offset);
        pAttribute->setConditionalPoint2(pConditional->conditionalPoint2() + offset);
    }
    pAttribute->setDefinitionId(AcDbSoftPointerId(pDefinition->objectId()));
    pAttribute->setAlignmentPoint(pDefinition->alignmentPoint() + offset);
    return pAttribute;
}

void CopyFormulas(AcDbAttributeDefinition* pDefinition, VNDKAttribute* pAttribute) {
    VNDKAttributeDefinition* pConditional = ConditionalDefinition(pDefinition);
    if (!pConditional)
        return;
    pAttribute->setConditionalPoint1(pConditional->conditionalPoint1());
    pAttribute->setConditionalPoint2(pConditional->conditionalPoint2());
    for (const auto* pNode = pConditional->formulaList.head(); pNode; pNode = pNode->next)
        pAttribute->AddFormula(new CCondFormula(pNode->formula));
}
