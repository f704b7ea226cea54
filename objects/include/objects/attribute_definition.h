// VNDKAttributeDefinition: an attribute definition with two conditional points and the formulas that move the
// attribute between them (objects/cond_formula.h). Points are in the coordinates of the record that holds it.
#pragma once

#include "db/stand_in.h"
#include "db/text.h"
#include "objects/cond_formula.h"
#include "objects/library.h"

class VNDKAttributeDefinition : public AcDbAttributeDefinition, public AcDbStandIn {
    ACDB_DECLARE_MEMBERS(VNDKAttributeDefinition)
public:
    VNDKAttributeDefinition() = default;

    AcGePoint3d& conditionalPoint1() { return point1_; }
    AcGePoint3d& conditionalPoint2() { return point2_; }
    const AcGePoint3d& conditionalPoint1() const { return point1_; }
    const AcGePoint3d& conditionalPoint2() const { return point2_; }
    Acad::ErrorStatus setConditionalPoint1(AcGePoint3d point);
    Acad::ErrorStatus setConditionalPoint2(AcGePoint3d point);
    /// Takes ownership, also when it fails. eNullObjectPointer; eOutOfRange: see CCondFormulaList::kMaxTotal.
    Acad::ErrorStatus AddFormula(CCondFormula* formula);

    /// Read it freely; AddFormula is what changes it.
    CCondFormulaList formulaList;

    /// Takes the conditional points along.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    void writeStandIn(AcDbXDataWriter& writer) const override;
    bool readStandIn(AcDbXDataReader& reader, AcDbDatabase& database) override;

private:
    AcGePoint3d point1_;
    AcGePoint3d point2_;
    [[no_unique_address]] vndk::objects::LiveObject live_;
};

/// Replaces a definition that stands in a block table record by a VNDKAttributeDefinition with the same properties,
/// appended behind the record's other entities, and erases the old one. Both conditional points are at its position.
/// REQUIRES: `plain` is resident and open for write; it stays open. Returns the new definition open for write; null,
/// with nothing changed, if the record can't be opened or `plain` is one already.
VNDKAttributeDefinition* vndkConvertDefinition(AcDbAttributeDefinition* plain);
