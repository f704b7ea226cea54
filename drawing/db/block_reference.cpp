#include "db/block_reference.h"

#include "db/block_extents.h"
#include "db/database.h"
#include "db/plane_math.h"
#include "db/stub.h"
#include "db/text.h"

ACDB_DXF_DEFINE_MEMBERS(AcDbBlockReference, AcDbEntity, "INSERT", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbMInsertBlock, AcDbBlockReference, "INSERT", "")

AcDbBlockReference::AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRecord) {
    data_.position = position;
    data_.block = blockTableRecord;
}

void AcDbBlockReference::tellBlock() {
    AcDbStub* const stub = data_.block.stub();
    if (!stub || stub->database != database())
        return;
    if (auto* const record = AcDbBlockTableRecord::cast(stub->database->objectOf(*stub)))
        record->noteReference(objectId());
}

void AcDbBlockReference::madeResident() { tellBlock(); }

Acad::ErrorStatus AcDbBlockReference::setBlockTableRecord(AcDbObjectId block) {
    if (block.isNull())
        return Acad::eNullObjectId;
    if (block == data_.block)
        return Acad::eOk;
    const Acad::ErrorStatus status = acdbSetMember(*this, data_.block, block);
    if (status == Acad::eOk)
        tellBlock();
    return status;
}

AcGePoint3d AcDbBlockReference::position() const { return AcGeMatrix3d::planeToWorld(data_.normal) * data_.position; }

Acad::ErrorStatus AcDbBlockReference::setPosition(const AcGePoint3d& position) {
    return acdbSetMember(*this, data_.position, AcGeMatrix3d::worldToPlane(data_.normal) * position);
}

Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeScale3d& scale) {
    if (scale.sx == 0 || scale.sy == 0 || scale.sz == 0)
        return Acad::eInvalidInput;
    return acdbSetMember(*this, data_.scale, scale);
}

Acad::ErrorStatus AcDbBlockReference::setRotation(double angle) { return acdbSetMember(*this, data_.rotation, angle); }

Acad::ErrorStatus AcDbBlockReference::setNormal(const AcGeVector3d& normal) {
    Data turned = data_;
    if (const Acad::ErrorStatus status = vndk::db::unitVector(normal, turned.normal); status != Acad::eOk)
        return status;
    if (turned.normal == data_.normal)
        return assertWriteEnabled();
    turned.position = AcGeMatrix3d::worldToPlane(turned.normal) * position();
    return acdbSetMember(*this, data_, turned);
}

AcGeMatrix3d AcDbBlockReference::blockTransform() const {
    const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(data_.normal);
    const AcGeVector3d x = toWorld.xAxis(), y = toWorld.yAxis();
    const double c = std::cos(data_.rotation), s = std::sin(data_.rotation);
    return AcGeMatrix3d::coordSystem(toWorld * data_.position, (x * c + y * s) * data_.scale.sx,
                                     (y * c - x * s) * data_.scale.sy, toWorld.zAxis() * data_.scale.sz);
}

Acad::ErrorStatus AcDbBlockReference::setBlockTransform(const AcGeMatrix3d& matrix) {
    const AcGeVector3d x = matrix.xAxis(), y = matrix.yAxis(), z = matrix.zAxis();
    if (x.isZeroLength() || y.isZeroLength() || z.isZeroLength())
        return Acad::eInvalidInput;
    constexpr double kRightAngle = 1e-8;
    const auto oblique = [](const AcGeVector3d& a, const AcGeVector3d& b) {
        return std::fabs(a.normal().dotProduct(b.normal())) > kRightAngle;
    };
    if (oblique(x, y) || oblique(y, z) || oblique(z, x))
        return Acad::eCannotScaleNonUniformly;
    const double side = matrix.det() < 0 ? -1 : 1; // a mirror is told by a negative X factor
    Data placed = data_;
    placed.normal = z.normal();
    placed.scale = {side * x.length(), y.length(), z.length()};
    const AcGeMatrix3d toPlane = AcGeMatrix3d::worldToPlane(placed.normal);
    const AcGeVector3d direction = toPlane * (x * side);
    placed.rotation = vndk::db::normalizedAngle(std::atan2(direction.y, direction.x));
    placed.position = toPlane * (AcGePoint3d::kOrigin + matrix.translationPart());
    return acdbSetMember(*this, data_, placed);
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute) {
    if (!attribute)
        return Acad::eNullObjectPointer;
    if (attribute->isResident())
        return Acad::eAlreadyInDb;
    return subentities_.append(*this, id, attribute);
}

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbAttribute* attribute) {
    AcDbObjectId id;
    return appendAttribute(id, attribute);
}

Acad::ErrorStatus AcDbBlockReference::openAttribute(AcDbAttribute*& attribute, AcDbObjectId id, AcDb::OpenMode mode,
                                                    bool openErased) const {
    const Acad::ErrorStatus status = acdbOpenObject(attribute, id, mode, openErased);
    if (status != Acad::eOk || attribute->ownerId() == objectId())
        return status;
    attribute->close();
    attribute = nullptr;
    return Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbBlockReference::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    const vndk::db::PlaneTransform plane(matrix, data_.normal);
    Data moved = data_;
    moved.normal = plane.normal();
    moved.position = plane.point(data_.position);
    moved.rotation = plane.angle(plane.mirrors() ? data_.rotation + kAcGePi : data_.rotation);
    const double side = plane.mirrors() ? -1 : 1;
    moved.scale = {side * plane.scale() * data_.scale.sx, plane.scale() * data_.scale.sy,
                   plane.scale() * data_.scale.sz};
    if (const Acad::ErrorStatus status = acdbSetMember(*this, data_, moved); status != Acad::eOk)
        return status;
    const Acad::ErrorStatus status = subentities_.transformBy(*this, matrix);
    return status == Acad::eOk ? xDataTransformBy(matrix) : status;
}

Acad::ErrorStatus AcDbBlockReference::getGeomExtents(AcDbExtents& extents) const {
    extents = vndk::db::blockExtents(data_.block);
    if (!extents.isEmpty())
        extents.transformBy(blockTransform());
    for (const AcDbObjectId id : attributes()) {
        const AcDbObjectPointer<AcDbEntity> attribute(id);
        AcDbExtents box;
        if (attribute && attribute->getGeomExtents(box) == Acad::eOk)
            extents.addExt(box);
    }
    return extents.isEmpty() ? Acad::eNullExtents : Acad::eOk;
}

void AcDbBlockReference::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbEntity::visitReferences(visitor);
    visitor.visit(data_.block, AcDb::kHardPointer);
    subentities_.visit(*this, visitor);
}

Acad::ErrorStatus AcDbMInsertBlock::setArray(uint16_t columns, uint16_t rows, double columnSpacing, double rowSpacing) {
    if (columns == 0 || rows == 0)
        return Acad::eInvalidInput;
    return acdbSetMember(*this, array_, ArrayData{columns, rows, columnSpacing, rowSpacing});
}

Acad::ErrorStatus AcDbMInsertBlock::getGeomExtents(AcDbExtents& extents) const {
    const Acad::ErrorStatus status = AcDbBlockReference::getGeomExtents(extents);
    if (status != Acad::eOk)
        return status;
    const AcGeMatrix3d turn =
        AcGeMatrix3d::planeToWorld(normal()) * AcGeMatrix3d::rotation(rotation(), AcGeVector3d::kZAxis);
    AcDbExtents last = extents;
    last.transformBy(AcGeMatrix3d::translation(turn * AcGeVector3d((array_.columns - 1) * array_.columnSpacing, 0, 0)));
    extents.addExt(last);
    last = extents;
    last.transformBy(AcGeMatrix3d::translation(turn * AcGeVector3d(0, (array_.rows - 1) * array_.rowSpacing, 0)));
    extents.addExt(last);
    return Acad::eOk;
}
