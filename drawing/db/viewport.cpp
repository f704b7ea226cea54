#include "db/viewport.h"

#include "db/block_ends.h"
#include "ge/matrix3d.h"

ACDB_DXF_DEFINE_MEMBERS(AcDbViewport, AcDbEntity, "VIEWPORT", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbBlockBegin, AcDbEntity, "BLOCK", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbBlockEnd, AcDbEntity, "ENDBLK", "")

Acad::ErrorStatus AcDbViewport::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    data_.center = matrix * data_.center;
    data_.width *= matrix.scale();
    data_.height *= matrix.scale();
    return xDataTransformBy(matrix);
}

Acad::ErrorStatus AcDbViewport::getGeomExtents(AcDbExtents& extents) const {
    const AcGeVector3d half(data_.width / 2, data_.height / 2, 0);
    extents = AcDbExtents(data_.center + (-half), data_.center + half);
    return Acad::eOk;
}

void AcDbViewport::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbEntity::visitReferences(visitor);
    for (AcDbObjectId& layer : data_.frozenLayers)
        visitor.visit(layer, AcDb::kHardPointer);
    for (AcDbObjectId* id : {&data_.clipBoundary, &data_.vxRecord, &data_.namedUcs, &data_.baseUcs})
        visitor.visit(*id, AcDb::kHardPointer);
}
