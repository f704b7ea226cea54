// Images and wipeouts: a rectangle of pixels in space, and the part of it that is shown.
//
// What the pixels are stands in an object that the image refers to, and in a file that isn't read here.
#pragma once

#include "db/entity.h"
#include "db/set_member.h"

class AcDbRasterImage : public AcDbEntity {
    ACDB_DECLARE_MEMBERS(AcDbRasterImage)
public:
    enum ClipBoundaryType : uint16_t { kRect = 1, kPoly = 2 };
    enum ImageDisplayOpt : uint16_t { kShow = 1, kShowUnAligned = 2, kClip = 4, kTransparent = 8 };

    /// Its lower left corner, and the sides of one pixel there.
    void getOrientation(AcGePoint3d& origin, AcGeVector3d& u, AcGeVector3d& v) const;
    AcGeVector2d imageSize() const { return data_.size; }
    AcDbObjectId imageDefId() const { return data_.definition; }
    bool isClipped() const { return data_.clipping; }
    /// The corners of what is shown, in world coordinates: of the part that is clipped, else of all.
    std::vector<AcGePoint3d> frame() const;

    /// eCannotScaleNonUniformly.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    void visitReferences(AcDbReferenceVisitor& visitor) override;

    struct Data {
        uint32_t classVersion = 0;
        AcGePoint3d origin;
        AcGeVector3d u{1, 0, 0}, v{0, 1, 0}; // of one pixel
        AcGeVector2d size{1, 1};             // in pixels
        uint16_t display = kShow | kShowUnAligned | kClip;
        bool clipping = false;
        unsigned char brightness = 50, contrast = 50, fade = 0;
        uint16_t clipType = kRect;
        std::vector<AcGePoint2d>
            clip; // in pixels, y downwards, 0 in the middle of the first one; a rectangle's two corners
        AcDbObjectId definition, reactor;
    };
    const Data& data() const { return data_; }
    void setFileData(Data data) { data_ = std::move(data); }

private:
    Data data_;
};

/// Hides what lies behind it.
class AcDbWipeout : public AcDbRasterImage {
    ACDB_DECLARE_MEMBERS(AcDbWipeout)
};
