// VNDKBlockReference: the reference of an Intelligent Block.
//
// It remembers the name under which the block came in and the block's base point, and it is tied to attributes
// (objects/attribute.h) that stand beside it in the same record. The record owns those entities; the reference's
// hard-ownership ids keep them alive and take them along: erasing the reference erases them, bringing it back
// brings them back, and they follow its transforms. An attribute that is moved alone moves alone.
#pragma once

#include "db/block_reference.h"
#include "db/stand_in.h"
#include "objects/library.h"

class VNDKBlockReference : public AcDbBlockReference, public AcDbStandIn {
    ACDB_DECLARE_MEMBERS(VNDKBlockReference)
public:
    /// Most attributes that a reference can be tied to: what a file can hold.
    static constexpr size_t kMaxAttributes = 1500;

    VNDKBlockReference() = default;

    /// Sets the block and returns the id given.
    AcDbObjectId setBlockTableRecordId(AcDbObjectId block);
    /// eOutOfRange: more than 255 characters.
    Acad::ErrorStatus setOriginalBlockName(const char* name);
    /// The reference's own text, valid until the name changes or the reference is closed. Never null.
    char* originalBlockName() { return originalBlockName_.data(); }
    /// The block's base point at insertion, in the block's coordinates.
    Acad::ErrorStatus setInsBase(AcGePoint3d base);
    AcGePoint3d insBase() const { return insBase_; }

    /// Ties an attribute that is already in the database to this reference. eNullObjectId; eOutOfRange: more than
    /// kMaxAttributes.
    Acad::ErrorStatus appendAttribute(AcDbHardOwnershipId attribute);
    short attributeCount() const { return static_cast<short>(attributes_.size()); }
    /// By index from 0, in the order of appending; null outside of it.
    AcDbHardOwnershipId getAttribute(int index) const;

    /// Takes the attributes in the reference's record along. When one of them can't be opened for write nothing is
    /// changed and its status is returned. A temporary copy leaves the attributes alone, since they are its original's.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    void visitReferences(AcDbReferenceVisitor& visitor) override;
    Acad::ErrorStatus subErase(bool erasing) override;
    void writeStandIn(AcDbXDataWriter& writer) const override;
    bool readStandIn(AcDbXDataReader& reader, AcDbDatabase& database) override;

private:
    std::string originalBlockName_;
    AcGePoint3d insBase_;
    std::vector<AcDbHardOwnershipId> attributes_;
    [[no_unique_address]] vndk::objects::LiveObject live_;
};
