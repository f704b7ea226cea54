// Leaders and geometric tolerances: what points at things in a drawing and tells their limits.
//
// Points are world coordinates. Both are drawn from the variables of a dimension style (db/dim_style.h).
#pragma once

#include "db/entity.h"
#include "db/set_member.h"

#include <memory>

/// A line or a curve from an arrow head to what is said, its annotation.
class AcDbLeader : public AcDbEntity {
    ACDB_DECLARE_MEMBERS(AcDbLeader)
public:
    enum AnnoType : uint16_t { kMText = 0, kFcf = 1, kBlockRef = 2, kNoAnno = 3 };

    int numVertices() const { return static_cast<int>(data_.vertices.size()); }
    /// eInvalidIndex.
    Acad::ErrorStatus getVertexAt(int index, AcGePoint3d& point) const;
    Acad::ErrorStatus setVertexAt(int index, const AcGePoint3d& point);
    Acad::ErrorStatus appendVertex(const AcGePoint3d& point);
    bool isSplined() const { return data_.pathType == 1; }
    Acad::ErrorStatus setToSpline() { return acdbSetMember(*this, data_.pathType, uint16_t{1}); }
    Acad::ErrorStatus setToStraight() { return acdbSetMember(*this, data_.pathType, uint16_t{0}); }
    bool hasArrowHead() const { return data_.hasArrowHead; }
    Acad::ErrorStatus enableArrowHead() { return acdbSetMember(*this, data_.hasArrowHead, true); }
    Acad::ErrorStatus disableArrowHead() { return acdbSetMember(*this, data_.hasArrowHead, false); }
    /// A short piece leads to a text where the last segment is steeper than 15 degrees.
    bool hasHookLine() const;
    AnnoType annoType() const { return static_cast<AnnoType>(data_.annotationType); }
    /// The annotation; may be null.
    AcDbObjectId annotationObjId() const { return data_.annotation; }
    Acad::ErrorStatus attachAnnotation(AcDbObjectId annotation, AnnoType type);
    Acad::ErrorStatus detachAnnotation();
    AcGeVector3d normal() const { return data_.normal; }
    AcDbObjectId dimensionStyle() const { return data_.style; }
    Acad::ErrorStatus setDimensionStyle(AcDbObjectId style) { return acdbSetMember(*this, data_.style, style); }

    /// How it looks, as temporary entities.
    std::vector<std::unique_ptr<AcDbEntity>> picture() const;
    /// eCannotScaleNonUniformly. The annotation is an entity of its own, which doesn't follow.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus explode(std::vector<AcDbEntity*>& parts) const override;
    /// The annotation is taken along when it is copied too.
    void visitReferences(AcDbReferenceVisitor& visitor) override;
    void madeResident() override;

    struct Data {
        bool unknownBit = false;
        uint16_t annotationType = kNoAnno;
        uint16_t pathType = 0;
        std::vector<AcGePoint3d> vertices;
        AcGePoint3d origin;
        AcGeVector3d normal{0, 0, 1}, xDirection{1, 0, 0};
        AcGeVector3d blockOffset, endOffset; // from the last vertex to the annotation
        double boxHeight = 0, boxWidth = 0;  // of the annotation's text
        bool hookAlongX = false;
        bool hasArrowHead = true;
        uint16_t arrowHeadType = 0;
        uint16_t byBlockColor = 0;
        double gap = 0.09, arrowSize = 0.18; // releases 13 and 14 keep them here
        bool oldBits[4] = {};
        uint16_t oldShort = 0;
        bool lastBits[2] = {};
        AcDbObjectId annotation, style;
    };
    const Data& data() const { return data_; }
    void setFileData(Data data) { data_ = std::move(data); }

private:
    Data data_;
};

/// A feature control frame. Its text has `%%v` between cells, a line break between rows, and symbols as letters of the
/// font gdt.
class AcDbFcf : public AcDbEntity {
    ACDB_DECLARE_MEMBERS(AcDbFcf)
public:
    AcDbFcf() = default;
    AcDbFcf(const char* text, const AcGePoint3d& location, const AcGeVector3d& normal, const AcGeVector3d& direction);

    /// The middle of the first row's left edge.
    AcGePoint3d location() const { return data_.location; }
    Acad::ErrorStatus setLocation(const AcGePoint3d& point) { return acdbSetMember(*this, data_.location, point); }
    AcGeVector3d direction() const { return data_.direction; }
    AcGeVector3d normal() const { return data_.normal; }
    /// A copy, released by the caller with acutDelString.
    char* text() const;
    const std::string& textValue() const { return data_.text; }
    Acad::ErrorStatus setText(const char* text);
    AcDbObjectId dimensionStyle() const { return data_.style; }
    Acad::ErrorStatus setDimensionStyle(AcDbObjectId style) { return acdbSetMember(*this, data_.style, style); }

    /// How it looks, as temporary entities.
    std::vector<std::unique_ptr<AcDbEntity>> picture() const;
    /// eCannotScaleNonUniformly. It stays readable under a mirror, and keeps the style's size under a scale.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    Acad::ErrorStatus explode(std::vector<AcDbEntity*>& parts) const override;
    void visitReferences(AcDbReferenceVisitor& visitor) override;
    void madeResident() override;

    struct Data {
        uint16_t unknownShort = 0;
        double height = 0, gap = 0; // releases 13 and 14 keep them here; 0 leaves them to the style
        AcGePoint3d location;
        AcGeVector3d direction{1, 0, 0}, normal{0, 0, 1};
        std::string text;
        AcDbObjectId style;
    };
    const Data& data() const { return data_; }
    void setFileData(Data data) { data_ = std::move(data); }

private:
    Data data_;
};
