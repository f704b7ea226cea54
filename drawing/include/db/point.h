// A point, drawn as the drawing's PDMODE and PDSIZE say.
#pragma once

#include "db/entity.h"
#include "db/set_member.h"

class AcDbPoint : public AcDbEntity {
    ACDB_DECLARE_MEMBERS(AcDbPoint)
public:
    AcDbPoint() = default;
    explicit AcDbPoint(const AcGePoint3d& position) : data_{position} {}

    /// World coordinates.
    AcGePoint3d position() const { return data_.position; }
    Acad::ErrorStatus setPosition(const AcGePoint3d& point) { return acdbSetMember(*this, data_.position, point); }
    double thickness() const { return data_.thickness; }
    Acad::ErrorStatus setThickness(double thickness) { return acdbSetMember(*this, data_.thickness, thickness); }
    AcGeVector3d normal() const { return data_.normal; }
    Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
    /// The angle of the mark's X axis, radians in the object coordinate system.
    double ecsRotation() const { return data_.ecsRotation; }
    Acad::ErrorStatus setEcsRotation(double angle) { return acdbSetMember(*this, data_.ecsRotation, angle); }

    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;

    struct Data {
        AcGePoint3d position;
        double thickness = 0;
        AcGeVector3d normal{0, 0, 1};
        double ecsRotation = 0;
    };
    const Data& data() const { return data_; }
    void setFileData(const Data& data) { data_ = data; }

private:
    Data data_;
};
