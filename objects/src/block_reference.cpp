#include "objects/block_reference.h"

#include "db/open.h"
#include "src/xdata_form.h"

#include <deque>

using vndk::objects::FormReader;
using vndk::objects::FormWriter;

ACDB_DXF_DEFINE_MEMBERS(VNDKBlockReference, AcDbBlockReference, "VNDKINSERT", "VNDKObjectsDbx")

namespace {
constexpr short kFormVersion = 1;
constexpr size_t kMaxNameLength = 255;
} // namespace

AcDbObjectId VNDKBlockReference::setBlockTableRecordId(AcDbObjectId block) {
    setBlockTableRecord(block);
    return block;
}

Acad::ErrorStatus VNDKBlockReference::setOriginalBlockName(const char* name) {
    const std::string_view text = name ? name : "";
    if (text.size() > kMaxNameLength)
        return Acad::eOutOfRange;
    return acdbSetMember(*this, originalBlockName_, text);
}

Acad::ErrorStatus VNDKBlockReference::setInsBase(AcGePoint3d base) { return acdbSetMember(*this, insBase_, base); }

Acad::ErrorStatus VNDKBlockReference::appendAttribute(AcDbHardOwnershipId attribute) {
    if (attribute.isNull())
        return Acad::eNullObjectId;
    if (attributes_.size() >= kMaxAttributes)
        return Acad::eOutOfRange;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk)
        attributes_.push_back(attribute);
    return status;
}

AcDbHardOwnershipId VNDKBlockReference::getAttribute(int index) const {
    if (index < 0 || static_cast<size_t>(index) >= attributes_.size())
        return {};
    return attributes_[static_cast<size_t>(index)];
}

Acad::ErrorStatus VNDKBlockReference::transformBy(const AcGeMatrix3d& matrix) {
    std::deque<AcDbObjectPointer<AcDbEntity>> followers;
    for (const AcDbHardOwnershipId& id : attributes_) {
        if (!isResident() || id.isNull() || id.isErased())
            continue;
        const AcDbObjectPointer<AcDbEntity>& attribute = followers.emplace_back(id, AcDb::kForWrite);
        if (!attribute)
            return attribute.openStatus();
        if (attribute->ownerId() != ownerId())
            followers.pop_back();
    }
    Acad::ErrorStatus status = AcDbBlockReference::transformBy(matrix);
    for (auto attribute = followers.begin(); attribute != followers.end() && status == Acad::eOk; ++attribute)
        status = (*attribute)->transformBy(matrix);
    return status;
}

void VNDKBlockReference::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbBlockReference::visitReferences(visitor);
    for (AcDbHardOwnershipId& attribute : attributes_)
        visitor.visit(attribute, AcDb::kHardOwner);
}

Acad::ErrorStatus VNDKBlockReference::subErase(bool erasing) {
    const Acad::ErrorStatus status = AcDbBlockReference::subErase(erasing);
    if (status != Acad::eOk)
        return status;
    for (const AcDbHardOwnershipId& id : attributes_) {
        // One that somebody holds open stays as it is; that is no reason to keep the reference.
        const AcDbObjectPointer<AcDbEntity> attribute(id, AcDb::kForWrite, true);
        if (attribute && attribute->isErased() != erasing)
            attribute->erase(erasing);
    }
    return Acad::eOk;
}

void VNDKBlockReference::writeStandIn(AcDbXDataWriter& writer) const {
    FormWriter form(writer, kFormVersion);
    form.text(originalBlockName_);
    form.fixedPoint(insBase_);
    form.references(attributes_);
}

bool VNDKBlockReference::readStandIn(AcDbXDataReader& reader, AcDbDatabase& database) {
    FormReader form(reader, database, kFormVersion);
    originalBlockName_ = form.text(kMaxNameLength);
    insBase_ = form.fixedPoint();
    attributes_ = form.references<AcDbHardOwnershipId>(kMaxAttributes);
    return form.finished();
}
