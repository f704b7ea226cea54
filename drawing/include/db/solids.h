// Filled areas of three or four corners, and faces in space.
#pragma once

#include "db/entity.h"
#include "db/set_member.h"

/// What solids and traces have: corners are object coordinates of the normal, at the elevation; the third and the
/// fourth stand crosswise.
class AcDbFilledArea : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbFilledArea)
public:
    /// World coordinates. eInvalidIndex: not 0 to 3.
    Acad::ErrorStatus getPointAt(unsigned short index, AcGePoint3d& point) const;
    /// The point's height over the plane becomes the elevation of all corners.
    Acad::ErrorStatus setPointAt(unsigned short index, const AcGePoint3d& point);
    double thickness() const { return data_.thickness; }
    Acad::ErrorStatus setThickness(double thickness) { return acdbSetMember(*this, data_.thickness, thickness); }
    double elevation() const { return data_.elevation; }
    AcGeVector3d normal() const { return data_.normal; }

    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;

    struct Data {
        double thickness = 0, elevation = 0;
        AcGePoint2d corners[4];
        AcGeVector3d normal{0, 0, 1};
    };
    const Data& data() const { return data_; }
    void setFileData(const Data& data) { data_ = data; }

protected:
    AcDbFilledArea() = default;

private:
    Data data_;
};

class AcDbSolid : public AcDbFilledArea {
    ACDB_DECLARE_MEMBERS(AcDbSolid)
};

class AcDbTrace : public AcDbFilledArea {
    ACDB_DECLARE_MEMBERS(AcDbTrace)
};

/// Corners in world coordinates; a triangle repeats the third one.
class AcDbFace : public AcDbEntity {
    ACDB_DECLARE_MEMBERS(AcDbFace)
public:
    /// eInvalidIndex: not 0 to 3.
    Acad::ErrorStatus getVertexAt(unsigned short index, AcGePoint3d& point) const;
    Acad::ErrorStatus setVertexAt(unsigned short index, const AcGePoint3d& point);
    bool isEdgeVisibleAt(unsigned short index) const { return !(data_.invisibleEdges >> index & 1); }

    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;

    struct Data {
        AcGePoint3d corners[4];
        uint16_t invisibleEdges = 0; // bits 0 to 3
    };
    const Data& data() const { return data_; }
    void setFileData(const Data& data) { data_ = data; }

private:
    Data data_;
};
