#pragma once
// Short ways to make the library's objects.

#include "drawing/db/database_fixture.h"
#include "objects/attribute.h"
#include "objects/attribute_definition.h"
#include "objects/block_reference.h"
#include "objects/grip_point.h"

inline CCondFormula* newFormula(const char* text) {
    auto* formula = new CCondFormula;
    EXPECT_EQ(formula->setText(text), Acad::eOk) << text;
    return formula;
}

/// An attribute with tag, value and formulas, conditional points (10,0,0) and (20,10,0).
inline VNDKAttribute* newAttribute(const char* tag, const char* value,
                                   std::initializer_list<const char*> formulas = {}) {
    auto* attribute = new VNDKAttribute;
    attribute->setTag(tag);
    attribute->setTextString(value);
    attribute->setDefaultValue(value);
    attribute->setHeight(2.5);
    if (formulas.size() == 0)
        return attribute;
    attribute->setConditionalPoint1({10, 0, 0});
    attribute->setConditionalPoint2({20, 10, 0});
    for (const char* text : formulas)
        EXPECT_EQ(attribute->AddFormula(newFormula(text)), Acad::eOk);
    return attribute;
}
