// References to blocks: what the command INSERT makes.
//
// The position is world coordinates; the rotation is radians in the object coordinate system of the normal.
#pragma once

#include "db/entity.h"
#include "db/set_member.h"
#include "db/subentities.h"

class AcDbAttribute;

class AcDbBlockReference : public AcDbEntity {
    ACDB_DECLARE_MEMBERS(AcDbBlockReference)
public:
    AcDbBlockReference() = default;
    AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId blockTableRecord);

    AcDbObjectId blockTableRecord() const { return data_.block; }
    /// The block's record learns of the reference when this is resident, else when it is appended.
    /// eNullObjectId.
    virtual Acad::ErrorStatus setBlockTableRecord(AcDbObjectId block);
    AcGePoint3d position() const;
    virtual Acad::ErrorStatus setPosition(const AcGePoint3d& position);
    AcGeScale3d scaleFactors() const { return data_.scale; }
    /// eInvalidInput: a factor of 0.
    virtual Acad::ErrorStatus setScaleFactors(const AcGeScale3d& scale);
    double rotation() const { return data_.rotation; }
    virtual Acad::ErrorStatus setRotation(double angle);
    AcGeVector3d normal() const { return data_.normal; }
    /// Keeps the position. eInvalidInput: no length.
    virtual Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    /// From the block's coordinates to world coordinates; the block's base point isn't in it.
    AcGeMatrix3d blockTransform() const;
    /// eCannotScaleNonUniformly: its axes aren't at right angles; eInvalidInput: an axis has no length.
    virtual Acad::ErrorStatus setBlockTransform(const AcGeMatrix3d& matrix);

    /// Makes a temporary attribute resident, owned by this reference; it stays open for write. Needs this open for
    /// write. eNotInDatabase: append the reference to a block first; eAlreadyInDb.
    Acad::ErrorStatus appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute);
    Acad::ErrorStatus appendAttribute(AcDbAttribute* attribute);
    /// Opens an attribute of this reference. eInvalidInput: it is another's.
    Acad::ErrorStatus openAttribute(AcDbAttribute*& attribute, AcDbObjectId id, AcDb::OpenMode mode,
                                    bool openErased = false) const;
    /// A new iterator over the attributes, owned by the caller; valid while the reference's database lives.
    AcDbObjectIterator* attributeIterator() const { return new AcDbObjectIterator(attributes()); }
    /// All attributes in order, erased ones included; with `decoding` read along, for who opens all of them.
    const std::vector<AcDbObjectId>& attributes(bool decoding = false) const {
        return subentities_.ids(*this, decoding);
    }

    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    /// Temporary copies of the block's entities where they are seen. What owns entities of its own can't be one: nested
    /// references come without attributes, polylines with vertex entities in pieces. What takes colour, linetype,
    /// lineweight or, on layer "0", the layer from the reference has them for itself then.
    Acad::ErrorStatus explode(std::vector<AcDbEntity*>& parts) const override;
    /// The same as entities of the record that this reference stands in, with all that they own; the record mustn't be
    /// open. The reference stays. All or nothing. eNotInDatabase; eNotApplicable: something in the block can't be
    /// transformed, or the reference repeats; eCannotScaleNonUniformly: something can't follow uneven scaling.
    virtual Acad::ErrorStatus explodeToOwnerSpace() const;
    Acad::ErrorStatus subErase(bool erasing) override { return subentities_.eraseWithOwner(*this, erasing); }
    void madeResident() override;
    void visitReferences(AcDbReferenceVisitor& visitor) override;

    struct Data {
        AcGePoint3d position; // object coordinates
        AcGeScale3d scale;
        double rotation = 0;
        AcGeVector3d normal{0, 0, 1};
        AcDbObjectId block;
    };
    const Data& data() const { return data_; }
    void setFileData(const Data& data) { data_ = data; }
    /// Lets the block's record know of this reference, once both are in one drawing.
    void tellBlock();
    AcDbSubentities& subentities() { return subentities_; }
    const AcDbSubentities& subentities() const { return subentities_; }

private:
    Data data_;
    AcDbSubentities subentities_;
};

/// A reference that repeats in rows and columns.
class AcDbMInsertBlock : public AcDbBlockReference {
    ACDB_DECLARE_MEMBERS(AcDbMInsertBlock)
public:
    uint16_t columns() const { return array_.columns; }
    uint16_t rows() const { return array_.rows; }
    double columnSpacing() const { return array_.columnSpacing; }
    double rowSpacing() const { return array_.rowSpacing; }
    /// eInvalidInput: no rows or no columns.
    Acad::ErrorStatus setArray(uint16_t columns, uint16_t rows, double columnSpacing, double rowSpacing);

    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus explode(std::vector<AcDbEntity*>&) const override { return Acad::eNotApplicable; }
    Acad::ErrorStatus explodeToOwnerSpace() const override { return Acad::eNotApplicable; }

    /// Spacings are drawing units along the rotated axes.
    struct ArrayData {
        uint16_t columns = 1, rows = 1;
        double columnSpacing = 0, rowSpacing = 0;
    };
    const ArrayData& arrayData() const { return array_; }
    void setFileArrayData(const ArrayData& data) { array_ = data; }

private:
    ArrayData array_;
};
