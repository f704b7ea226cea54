// Objects and entities of types that we don't model, and damaged ones: common data, extended data, owner and
// reactors can be worked with, the fields come through every save as they are.
#pragma once

#include "db/entity.h"
#include "db/opaque_fields.h"

class AcDbOpaqueObject : public AcDbObject {
    ACDB_DECLARE_MEMBERS(AcDbOpaqueObject)
public:
    AcDbOpaqueObject() = default;
    const char* dxfName() const override { return fields_.typeName.c_str(); }
    void visitReferences(AcDbReferenceVisitor& visitor) override;
    const AcDbOpaqueFields& fields() const { return fields_; }
    void setFields(AcDbOpaqueFields fields) { fields_ = std::move(fields); }

private:
    AcDbOpaqueFields fields_;
};

class AcDbOpaqueEntity : public AcDbEntity {
    ACDB_DECLARE_MEMBERS(AcDbOpaqueEntity)
public:
    AcDbOpaqueEntity() = default;
    const char* dxfName() const override { return fields_.typeName.c_str(); }
    /// eNotApplicable: the geometry isn't known.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d&) override { return Acad::eNotApplicable; }
    void visitReferences(AcDbReferenceVisitor& visitor) override;
    const AcDbOpaqueFields& fields() const { return fields_; }
    void setFields(AcDbOpaqueFields fields) { fields_ = std::move(fields); }

private:
    AcDbOpaqueFields fields_;
};
