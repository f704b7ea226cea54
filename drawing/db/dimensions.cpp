#include "db/dimensions.h"

#include "db/block_extents.h"
#include "db/database.h"
#include "db/dimension_picture.h"
#include "db/plane_math.h"
#include "db/stub.h"

#include <algorithm>
#include <string>

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDimension, AcDbEntity)

using vndk::db::DimensionPicture;
using vndk::db::Parts;

// Data

AcGePoint2d AcDbDimension::inPlane(const AcGePoint3d& point) const {
    const AcGePoint3d p = AcGeMatrix3d::worldToPlane(data_.normal) * point;
    return {p.x, p.y};
}

double AcDbDimension::heightInPlane(const AcGePoint3d& point) const {
    return (AcGeMatrix3d::worldToPlane(data_.normal) * point).z;
}

AcGePoint3d AcDbDimension::textPosition() const {
    return AcGeMatrix3d::planeToWorld(data_.normal) *
           AcGePoint3d(data_.textMiddle.x, data_.textMiddle.y, data_.elevation);
}

Acad::ErrorStatus AcDbDimension::setTextPosition(const AcGePoint3d& point) {
    return acdbSetMember(*this, data_.textMiddle, inPlane(point));
}

char* AcDbDimension::dimensionText() const { return acutNewString(data_.userText); }

Acad::ErrorStatus AcDbDimension::setDimensionText(const char* text) {
    constexpr size_t kLongest = 65000;
    if (!text || std::string_view(text).size() > kLongest)
        return Acad::eInvalidInput;
    return acdbSetMember(*this, data_.userText, text);
}

Acad::ErrorStatus AcDbDimension::setFlag(unsigned char flag, bool on) {
    return acdbSetMember(*this, data_.flags, static_cast<unsigned char>(on ? data_.flags | flag : data_.flags & ~flag));
}

AcGeMatrix3d AcDbDimension::dimBlockTransform() const {
    const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(data_.normal);
    const AcGePoint3d& scale = data_.insertScale;
    return plane * AcGeMatrix3d::translation({data_.insertPoint.x, data_.insertPoint.y, 0}) *
           AcGeMatrix3d::rotation(data_.insertRotation, AcGeVector3d::kZAxis) *
           AcGeMatrix3d::scaling(AcGeScale3d(scale.x, scale.y, scale.z)) * AcGeMatrix3d::worldToPlane(data_.normal);
}

Acad::ErrorStatus AcDbDimension::measurement(double& value) const {
    value = measured();
    return Acad::eOk;
}

std::string AcDbDimension::shownText() const {
    return vndk::db::dimensionText(data_.userText, {measured(), measuresAngle(), prefix()},
                                   acdbDimVariables(*this, data_.style));
}

void AcDbDimension::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbEntity::visitReferences(visitor);
    visitor.visit(data_.style, AcDb::kHardPointer);
    visitor.visit(data_.block, AcDb::kHardPointer);
}

void AcDbDimension::madeResident() {
    if (data_.style.isNull())
        data_.style = database()->idOf(database()->header().DIMSTYLE);
    // A copy from another drawing still has what it refers to there.
    if (data_.block.isNull() && (data_.style.isNull() || data_.style.database() == database()))
        recomputeDimBlock();
}

// The picture

std::vector<std::unique_ptr<AcDbEntity>> AcDbDimension::picture() const {
    AcGePoint2d textMiddle;
    return picture(textMiddle);
}

Parts AcDbDimension::picture(AcGePoint2d& textMiddle) const {
    const vndk::db::DimVariables variables = acdbDimVariables(*this, data_.style);
    DimensionPicture picture(database() ? database() : data_.style.database(), data_.normal,
                             heightInPlane(placePoint()), variables);
    picture.setHorizontal(-data_.horizontalRotation);
    picture.setTextRotation(data_.textRotation);
    picture.setText(vndk::db::dimensionText(data_.userText, {measured(), measuresAngle(), prefix()}, variables));
    if (!isUsingDefaultTextPosition())
        picture.setUserTextMiddle(data_.textMiddle);
    draw(picture);
    textMiddle = picture.textMiddle().value_or(data_.textMiddle);
    return picture.take();
}

namespace {

/// Everything of a block opened for write, so that changing it can't fail half-way.
class OpenContents {
public:
    explicit OpenContents(AcDbObjectId block) : record_(block, AcDb::kForWrite), status_(record_.openStatus()) {
        if (!record_)
            return;
        for (const AcDbObjectId id : record_->entities()) {
            if (id.isErased())
                continue;
            entities_.push_back(std::make_unique<AcDbObjectPointer<AcDbEntity>>(id, AcDb::kForWrite));
            if (status_ == Acad::eOk)
                status_ = entities_.back()->openStatus();
        }
    }
    Acad::ErrorStatus status() const { return status_; }
    AcDbBlockTableRecord& record() const { return *record_; }
    template <class F>
    Acad::ErrorStatus each(F&& f) const {
        for (const auto& entity : entities_)
            if (const Acad::ErrorStatus status = f(**entity); status != Acad::eOk)
                return status;
        return Acad::eOk;
    }

private:
    AcDbObjectPointer<AcDbBlockTableRecord> record_;
    std::vector<std::unique_ptr<AcDbObjectPointer<AcDbEntity>>> entities_;
    Acad::ErrorStatus status_;
};

Acad::ErrorStatus appendAll(AcDbBlockTableRecord& record, Parts& parts) {
    for (std::unique_ptr<AcDbEntity>& part : parts) {
        if (const Acad::ErrorStatus status = record.appendAcDbEntity(part.get()); status != Acad::eOk)
            return status;
        part.release()->close();
    }
    return Acad::eOk;
}

/// A new anonymous block with these contents.
Acad::ErrorStatus addPictureBlock(AcDbDatabase& database, Parts& parts, AcDbObjectId& id) {
    const AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId(), AcDb::kForWrite);
    if (!table)
        return table.openStatus();
    std::string name;
    size_t number = table->records().size();
    do
        name = "*D" + std::to_string(number++);
    while (table->has(name.c_str()));
    auto record = std::make_unique<AcDbBlockTableRecord>();
    AcDbBlockTableRecord::Data data;
    data.anonymous = true;
    record->setFileData(std::move(data));
    Acad::ErrorStatus status = record->setName(name.c_str());
    if (status == Acad::eOk)
        status = table->add(id, record.get());
    if (status != Acad::eOk)
        return status;
    AcDbBlockTableRecord* const added = record.release();
    status = appendAll(*added, parts);
    added->close();
    return status;
}

/// Without the layer, the points that define a dimension are left out of its picture.
void addDefinitionLayer(AcDbDatabase& database) {
    const AcDbObjectPointer<AcDbLayerTable> layers(database.layerTableId(), AcDb::kForWrite);
    if (!layers || layers->has(vndk::db::kDefinitionLayerName))
        return;
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    layer->setName(vndk::db::kDefinitionLayerName);
    layer->setIsPlottable(false);
    layer->setLinetypeObjectId(database.continuousLinetypeId());
    if (layers->add(layer.get()) == Acad::eOk)
        layer.release()->close();
}

bool isShift(const AcGeMatrix3d& matrix) {
    return AcGeMatrix3d::translation(matrix.translationPart()).isEqualTo(matrix);
}

} // namespace

bool AcDbDimension::ownsBlock() const {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(data_.block);
    return record && data_.flags & kOwnBlock && record->isAnonymous() && !record->isLayout() &&
           data_.block != ownerId();
}

Acad::ErrorStatus AcDbDimension::replacePicture(Parts parts) {
    if (!ownsBlock()) {
        AcDbObjectId block;
        const Acad::ErrorStatus status = addPictureBlock(*database(), parts, block);
        if (status != Acad::eOk)
            return status;
        data_.block = block;
        data_.flags |= kOwnBlock;
        return Acad::eOk;
    }
    const OpenContents contents(data_.block);
    if (contents.status() != Acad::eOk)
        return contents.status();
    const Acad::ErrorStatus status = contents.each([](AcDbEntity& entity) { return entity.erase(); });
    return status == Acad::eOk ? appendAll(contents.record(), parts) : status;
}

Acad::ErrorStatus AcDbDimension::recomputeDimBlock() {
    if (!database())
        return Acad::eNotInDatabase;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    addDefinitionLayer(*database());
    AcGePoint2d textMiddle;
    Parts parts = picture(textMiddle);
    if (const Acad::ErrorStatus status = replacePicture(std::move(parts)); status != Acad::eOk)
        return status;
    data_.textMiddle = textMiddle;
    data_.measurement = measured();
    data_.insertPoint = {};
    data_.insertScale = {1, 1, 1};
    data_.insertRotation = 0;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::shiftPicture(const AcGeMatrix3d& shift) {
    if (!ownsBlock()) {
        const AcDbObjectPointer<AcDbBlockTableRecord> shared(data_.block);
        if (!shared)
            return Acad::eOk;
        Parts parts;
        for (const AcDbObjectId id : shared->entities()) {
            const AcDbObjectPointer<AcDbEntity> entity(id);
            if (!id.isErased() && entity)
                if (const Acad::ErrorStatus status = vndk::db::addTransformed(*entity, shift, parts);
                    status != Acad::eOk)
                    return status;
        }
        return replacePicture(std::move(parts));
    }
    const OpenContents contents(data_.block);
    if (contents.status() != Acad::eOk)
        return contents.status();
    return contents.each([&](AcDbEntity& entity) { return entity.transformBy(shift); });
}

Acad::ErrorStatus AcDbDimension::moveData(const AcGeMatrix3d& matrix) {
    const vndk::db::PlaneTransform plane(matrix, data_.normal);
    transformPoints(matrix, plane);
    data_.textMiddle = plane.point(data_.textMiddle, data_.elevation);
    data_.elevation = plane.elevation(data_.elevation);
    if (data_.textRotation != 0)
        data_.textRotation = vndk::db::readable(plane.angle(data_.textRotation));
    data_.normal = plane.normal();
    data_.measurement = measured();
    return xDataTransformBy(matrix);
}

Acad::ErrorStatus AcDbDimension::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    // A temporary dimension leaves the picture of the one that it was copied from alone.
    if (!database()) {
        data_.block.setNull();
        return moveData(matrix);
    }
    const bool takesPicture = isShift(matrix) && !data_.block.isNull() && !data_.block.isErased();
    if (takesPicture)
        if (const Acad::ErrorStatus status = shiftPicture(matrix); status == Acad::eOk)
            return moveData(matrix);
    const std::unique_ptr<AcDbObject> former(copyData());
    Acad::ErrorStatus status = moveData(matrix);
    if (status == Acad::eOk)
        status = recomputeDimBlock();
    if (status != Acad::eOk)
        assignData(*former);
    return status;
}

Acad::ErrorStatus AcDbDimension::getGeomExtents(AcDbExtents& extents) const {
    extents = vndk::db::blockExtents(data_.block);
    if (!extents.isEmpty()) {
        extents.transformBy(dimBlockTransform());
        return Acad::eOk;
    }
    for (const std::unique_ptr<AcDbEntity>& part : picture()) {
        AcDbExtents box;
        if (part->getGeomExtents(box) == Acad::eOk)
            extents.addExt(box);
    }
    return extents.isEmpty() ? Acad::eNullExtents : Acad::eOk;
}

Acad::ErrorStatus AcDbDimension::explode(std::vector<AcDbEntity*>& parts) const {
    Parts pieces;
    if (const AcDbObjectPointer<AcDbBlockTableRecord> block(data_.block); block) {
        const AcGeMatrix3d place = dimBlockTransform();
        for (const AcDbObjectId id : block->entities()) {
            const AcDbObjectPointer<AcDbEntity> entity(id);
            if (id.isErased())
                continue;
            const Acad::ErrorStatus status =
                entity ? vndk::db::addTransformed(*entity, place, pieces) : entity.openStatus();
            if (status != Acad::eOk)
                return status;
        }
    } else {
        pieces = picture();
    }
    AcDbDatabase* const owner = database() ? database() : data_.style.database();
    pieces = vndk::db::shownBy(*this, owner, std::move(pieces));
    vndk::db::release(pieces, parts);
    return Acad::eOk;
}
