#include "db/opaque.h"

ACDB_DXF_DEFINE_MEMBERS(AcDbOpaqueObject, AcDbObject, "", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbOpaqueEntity, AcDbEntity, "", "")

void AcDbOpaqueFields::visit(AcDbReferenceVisitor& visitor) {
    for (Reference& reference : references) {
        if (reference.id.isNull())
            continue;
        switch (reference.code) {
        case 2:
            visitor.visit(reference.id, AcDb::kSoftOwner);
            break;
        case 3:
            visitor.visit(reference.id, AcDb::kHardOwner);
            break;
        case 5:
            visitor.visit(reference.id, AcDb::kHardPointer);
            break;
        default:
            visitor.visit(reference.id, AcDb::kSoftPointer);
        }
    }
}

void AcDbOpaqueObject::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbObject::visitReferences(visitor);
    fields_.visit(visitor);
}

void AcDbOpaqueEntity::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbEntity::visitReferences(visitor);
    fields_.visit(visitor);
}
