// A view of the model on a sheet of paper.
#pragma once

#include "db/entity.h"
#include "db/set_member.h"

class AcDbViewport : public AcDbEntity {
    ACDB_DECLARE_MEMBERS(AcDbViewport)
public:
    /// On the sheet, in drawing units.
    AcGePoint3d centerPoint() const { return data_.center; }
    Acad::ErrorStatus setCenterPoint(const AcGePoint3d& center) { return acdbSetMember(*this, data_.center, center); }
    double width() const { return data_.width; }
    Acad::ErrorStatus setWidth(double width) { return acdbSetMember(*this, data_.width, width); }
    double height() const { return data_.height; }
    Acad::ErrorStatus setHeight(double height) { return acdbSetMember(*this, data_.height, height); }
    AcGePoint3d viewTarget() const { return data_.target; }
    AcGeVector3d viewDirection() const { return data_.direction; }
    AcGePoint2d viewCenter() const { return data_.viewCenter; }
    double viewHeight() const { return data_.viewHeight; }
    double twistAngle() const { return data_.twist; }
    const std::vector<AcDbObjectId>& frozenLayers() const { return data_.frozenLayers; }

    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    void visitReferences(AcDbReferenceVisitor& visitor) override;

    struct Data {
        AcGePoint3d center;
        double width = 0, height = 0;
        AcGePoint3d target;
        AcGeVector3d direction{0, 0, 1};
        double twist = 0, viewHeight = 0, lens = 50, frontClip = 0, backClip = 0, snapAngle = 0;
        AcGePoint2d viewCenter, snapBase, snapSpacing, gridSpacing;
        uint16_t circleZoom = 1000;
        uint32_t status = 0;
        std::string styleSheet;
        unsigned char renderMode = 0;
        bool ucsAtOrigin = false, ucsPerViewport = false;
        AcGePoint3d ucsOrigin;
        AcGeVector3d ucsXAxis{1, 0, 0}, ucsYAxis{0, 1, 0};
        double ucsElevation = 0;
        uint16_t ucsOrthoType = 0;
        std::vector<AcDbObjectId> frozenLayers;
        AcDbObjectId clipBoundary, vxRecord, namedUcs, baseUcs;
    };
    const Data& data() const { return data_; }
    void setFileData(Data data) { data_ = std::move(data); }

private:
    Data data_;
};
