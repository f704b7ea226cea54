// Shapes: figures of a shape file.
#pragma once

#include "db/entity.h"
#include "db/set_member.h"

/// The insertion point is world coordinates; angles are radians in the object coordinate system of the normal.
class AcDbShape : public AcDbEntity {
    ACDB_DECLARE_MEMBERS(AcDbShape)
public:
    AcGePoint3d position() const { return data_.position; }
    Acad::ErrorStatus setPosition(const AcGePoint3d& point) { return acdbSetMember(*this, data_.position, point); }
    /// The height of a figure that is one unit high in its file.
    double size() const { return data_.size; }
    Acad::ErrorStatus setSize(double size) { return acdbSetMember(*this, data_.size, size); }
    double rotation() const { return data_.rotation; }
    Acad::ErrorStatus setRotation(double angle) { return acdbSetMember(*this, data_.rotation, angle); }
    double widthFactor() const { return data_.widthFactor; }
    double oblique() const { return data_.oblique; }
    double thickness() const { return data_.thickness; }
    AcGeVector3d normal() const { return data_.normal; }
    /// The number of the figure in the file of the style.
    int shapeNumber() const { return data_.number; }
    AcDbObjectId shapeStyle() const { return data_.style; }
    /// The corners of the figure's square, from the insertion point on.
    void getCorners(AcGePoint3d (&corners)[4]) const;

    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    /// The box of the figure's square: how far the figure reaches is known to its file alone.
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    void visitReferences(AcDbReferenceVisitor& visitor) override;

    struct Data {
        AcGePoint3d position;
        double size = 1, rotation = 0, widthFactor = 1, oblique = 0, thickness = 0;
        uint16_t number = 0;
        AcGeVector3d normal{0, 0, 1};
        AcDbObjectId style;
    };
    const Data& data() const { return data_; }
    void setFileData(const Data& data) { data_ = data; }

private:
    Data data_;
};
