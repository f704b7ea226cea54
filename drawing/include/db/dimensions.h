// Dimensions of all kinds.
//
// What a dimension measures between are world coordinates in this interface. It is drawn in the plane of its normal,
// at the height of the point that the dimension line passes; angles are radians in that plane.
//
// A dimension shows itself by an anonymous block of its own, the picture, whose contents stand where they are seen.
// The picture follows each transform: a shift takes it along as it is, anything else draws it anew by the variables of
// the style (db/dim_style.h). Setters don't draw; recomputeDimBlock() does.
#pragma once

#include "db/dim_style.h"
#include "db/entity.h"
#include "db/set_member.h"

#include <memory>

namespace vndk::db {
class DimensionPicture;
class PlaneTransform;
} // namespace vndk::db

class AcDbDimension : public AcDbEntity {
    ACRX_DECLARE_MEMBERS(AcDbDimension)
public:
    /// The middle of the text.
    AcGePoint3d textPosition() const;
    /// Takes effect with useSetTextPosition().
    Acad::ErrorStatus setTextPosition(const AcGePoint3d& point);
    bool isUsingDefaultTextPosition() const { return data_.flags & kDefaultTextPosition; }
    Acad::ErrorStatus useSetTextPosition() { return setFlag(kDefaultTextPosition, false); }
    Acad::ErrorStatus useDefaultTextPosition() { return setFlag(kDefaultTextPosition, true); }
    AcGeVector3d normal() const { return data_.normal; }
    double elevation() const { return data_.elevation; }
    /// What stands in place of the measurement; within it `<>` is the measurement. Empty shows the measurement, one
    /// blank shows nothing. A copy, released by the caller with acutDelString.
    char* dimensionText() const;
    const std::string& dimensionTextValue() const { return data_.userText; }
    Acad::ErrorStatus setDimensionText(const char* text);
    /// The text's angle in place of the one that follows from the dimension line; 0 leaves it to the line.
    double textRotation() const { return data_.textRotation; }
    Acad::ErrorStatus setTextRotation(double angle) { return acdbSetMember(*this, data_.textRotation, angle); }
    /// The negative angle of the horizontal direction.
    double horizontalRotation() const { return data_.horizontalRotation; }
    Acad::ErrorStatus setHorizontalRotation(double angle) {
        return acdbSetMember(*this, data_.horizontalRotation, angle);
    }
    AcDbObjectId dimensionStyle() const { return data_.style; }
    Acad::ErrorStatus setDimensionStyle(AcDbObjectId style) { return acdbSetMember(*this, data_.style, style); }
    /// The picture; may be null or erased.
    AcDbObjectId dimBlockId() const { return data_.block; }
    Acad::ErrorStatus setDimBlockId(AcDbObjectId block) { return acdbSetMember(*this, data_.block, block); }
    /// From the picture to the place where it is seen.
    AcGeMatrix3d dimBlockTransform() const;

    /// In drawing units, or radians for an angle.
    Acad::ErrorStatus measurement(double& value) const;
    /// The text as it is shown: the measurement in the form of the style, within the user's text.
    std::string shownText() const;
    /// Draws the picture anew, in the own block or a new one. eNotInDatabase; an open status if the block table or
    /// something of the picture is held open.
    Acad::ErrorStatus recomputeDimBlock();
    /// What the picture shows when it is drawn anew, as temporary entities.
    std::vector<std::unique_ptr<AcDbEntity>> picture() const;

    /// eCannotScaleNonUniformly; an open status if the picture can't follow: nothing is changed then.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    /// The entities of the picture.
    Acad::ErrorStatus explode(std::vector<AcDbEntity*>& parts) const override;
    void visitReferences(AcDbReferenceVisitor& visitor) override;
    /// One without style gets the drawing's current one, one without picture a picture.
    void madeResident() override;

    struct Data {
        AcGeVector3d normal{0, 0, 1};
        AcGePoint2d textMiddle; // object coordinates, at the elevation
        double elevation = 0;
        unsigned char flags = kDefaultTextPosition | kOwnBlock | 8;
        std::string userText;
        double textRotation = 0, horizontalRotation = 0;
        AcGePoint3d insertScale{1, 1, 1};
        double insertRotation = 0;
        uint16_t attachment = 5, lineSpacingStyle = 1;
        double lineSpacingFactor = 1, measurement = 0;
        AcGePoint2d insertPoint; // of the picture, object coordinates
        AcDbObjectId style, block;
    };
    const Data& data() const { return data_; }
    void setFileData(Data data) { data_ = std::move(data); }

protected:
    AcDbDimension() = default;

    AcGePoint2d inPlane(const AcGePoint3d& point) const;
    double heightInPlane(const AcGePoint3d& point) const;

private:
    static constexpr unsigned char kDefaultTextPosition = 1, kOwnBlock = 2;

    virtual double measured() const = 0;
    virtual bool measuresAngle() const { return false; }
    /// What stands before a measurement.
    virtual const char* prefix() const { return ""; }
    /// Which point's height the picture has.
    virtual AcGePoint3d placePoint() const = 0;
    virtual void transformPoints(const AcGeMatrix3d& matrix, const vndk::db::PlaneTransform& plane) = 0;
    virtual void draw(vndk::db::DimensionPicture& picture) const = 0;

    Acad::ErrorStatus setFlag(unsigned char flag, bool on);
    bool ownsBlock() const;
    std::vector<std::unique_ptr<AcDbEntity>> picture(AcGePoint2d& textMiddle) const;
    Acad::ErrorStatus shiftPicture(const AcGeMatrix3d& shift);
    Acad::ErrorStatus replacePicture(std::vector<std::unique_ptr<AcDbEntity>> parts);
    Acad::ErrorStatus moveData(const AcGeMatrix3d& matrix);

    Data data_;
};

/// Members for a point of a dimension in world coordinates.
#define VNDK_DIMENSION_POINT(getter, setter, member)                                                                   \
    AcGePoint3d getter() const { return points_.member; }                                                              \
    Acad::ErrorStatus setter(const AcGePoint3d& point) { return acdbSetMember(*this, points_.member, point); }

/// What each kind declares beside its points.
#define VNDK_DIMENSION_MEMBERS                                                                                         \
    const Points& points() const { return points_; }                                                                   \
    void setFilePoints(const Points& points) { points_ = points; }                                                     \
                                                                                                                       \
private:                                                                                                               \
    double measured() const override;                                                                                  \
    AcGePoint3d placePoint() const override;                                                                           \
    void transformPoints(const AcGeMatrix3d& matrix, const vndk::db::PlaneTransform& plane) override;                  \
    void draw(vndk::db::DimensionPicture& picture) const override;                                                     \
                                                                                                                       \
    Points points_;

/// Measures the distance of two points along their connection.
class AcDbAlignedDimension : public AcDbDimension {
    ACDB_DECLARE_MEMBERS(AcDbAlignedDimension)
public:
    AcDbAlignedDimension() = default;
    AcDbAlignedDimension(const AcGePoint3d& xLine1Point, const AcGePoint3d& xLine2Point,
                         const AcGePoint3d& dimLinePoint, const char* text = nullptr,
                         AcDbObjectId style = AcDbObjectId::kNull);
    VNDK_DIMENSION_POINT(xLine1Point, setXLine1Point, xLine1)
    VNDK_DIMENSION_POINT(xLine2Point, setXLine2Point, xLine2)
    VNDK_DIMENSION_POINT(dimLinePoint, setDimLinePoint, dimLine)
    /// Of the extension lines to the dimension line; 0 is a right angle.
    double oblique() const { return points_.oblique; }
    Acad::ErrorStatus setOblique(double angle) { return acdbSetMember(*this, points_.oblique, angle); }

    struct Points {
        AcGePoint3d xLine1, xLine2, dimLine;
        double oblique = 0;
    };
    VNDK_DIMENSION_MEMBERS
};

/// Measures the distance of two points in a given direction.
class AcDbRotatedDimension : public AcDbDimension {
    ACDB_DECLARE_MEMBERS(AcDbRotatedDimension)
public:
    AcDbRotatedDimension() = default;
    AcDbRotatedDimension(double rotation, const AcGePoint3d& xLine1Point, const AcGePoint3d& xLine2Point,
                         const AcGePoint3d& dimLinePoint, const char* text = nullptr,
                         AcDbObjectId style = AcDbObjectId::kNull);
    VNDK_DIMENSION_POINT(xLine1Point, setXLine1Point, xLine1)
    VNDK_DIMENSION_POINT(xLine2Point, setXLine2Point, xLine2)
    VNDK_DIMENSION_POINT(dimLinePoint, setDimLinePoint, dimLine)
    double oblique() const { return points_.oblique; }
    Acad::ErrorStatus setOblique(double angle) { return acdbSetMember(*this, points_.oblique, angle); }
    /// Of the dimension line.
    double rotation() const { return points_.rotation; }
    Acad::ErrorStatus setRotation(double angle) { return acdbSetMember(*this, points_.rotation, angle); }

    struct Points : AcDbAlignedDimension::Points {
        double rotation = 0;
    };
    VNDK_DIMENSION_MEMBERS
};

/// Measures an angle by its vertex and a point on each side; the arc point tells which of both angles.
class AcDb3PointAngularDimension : public AcDbDimension {
    ACDB_DECLARE_MEMBERS(AcDb3PointAngularDimension)
public:
    VNDK_DIMENSION_POINT(arcPoint, setArcPoint, arc)
    VNDK_DIMENSION_POINT(xLine1Point, setXLine1Point, xLine1)
    VNDK_DIMENSION_POINT(xLine2Point, setXLine2Point, xLine2)
    VNDK_DIMENSION_POINT(centerPoint, setCenterPoint, center)

    struct Points {
        AcGePoint3d arc, xLine1, xLine2, center;
    };
    VNDK_DIMENSION_MEMBERS
    bool measuresAngle() const override { return true; }
};

/// Measures the angle of two lines; the arc point tells which of the four.
class AcDb2LineAngularDimension : public AcDbDimension {
    ACDB_DECLARE_MEMBERS(AcDb2LineAngularDimension)
public:
    AcGePoint3d arcPoint() const;
    Acad::ErrorStatus setArcPoint(const AcGePoint3d& point);
    VNDK_DIMENSION_POINT(xLine1Start, setXLine1Start, xLine1Start)
    VNDK_DIMENSION_POINT(xLine1End, setXLine1End, xLine1End)
    VNDK_DIMENSION_POINT(xLine2Start, setXLine2Start, xLine2Start)
    VNDK_DIMENSION_POINT(xLine2End, setXLine2End, xLine2End)

    struct Points {
        AcGePoint2d arc; // object coordinates
        AcGePoint3d xLine1Start, xLine1End, xLine2Start, xLine2End;
    };
    VNDK_DIMENSION_MEMBERS
    bool measuresAngle() const override { return true; }
};

/// Measures a radius.
class AcDbRadialDimension : public AcDbDimension {
    ACDB_DECLARE_MEMBERS(AcDbRadialDimension)
public:
    VNDK_DIMENSION_POINT(center, setCenter, center)
    VNDK_DIMENSION_POINT(chordPoint, setChordPoint, chord)
    double leaderLength() const { return points_.leaderLength; }
    Acad::ErrorStatus setLeaderLength(double length) { return acdbSetMember(*this, points_.leaderLength, length); }

    struct Points {
        AcGePoint3d center, chord;
        double leaderLength = 0;
    };
    VNDK_DIMENSION_MEMBERS
    const char* prefix() const override { return "R"; }
};

/// Measures a diameter.
class AcDbDiametricDimension : public AcDbDimension {
    ACDB_DECLARE_MEMBERS(AcDbDiametricDimension)
public:
    VNDK_DIMENSION_POINT(chordPoint, setChordPoint, chord)
    VNDK_DIMENSION_POINT(farChordPoint, setFarChordPoint, farChord)
    double leaderLength() const { return points_.leaderLength; }
    Acad::ErrorStatus setLeaderLength(double length) { return acdbSetMember(*this, points_.leaderLength, length); }

    struct Points {
        AcGePoint3d chord, farChord;
        double leaderLength = 0;
    };
    VNDK_DIMENSION_MEMBERS
    const char* prefix() const override { return "\xD8"; }
};

/// Measures how far a feature is from an origin along one axis.
class AcDbOrdinateDimension : public AcDbDimension {
    ACDB_DECLARE_MEMBERS(AcDbOrdinateDimension)
public:
    VNDK_DIMENSION_POINT(origin, setOrigin, origin)
    VNDK_DIMENSION_POINT(definingPoint, setDefiningPoint, feature)
    VNDK_DIMENSION_POINT(leaderEndPoint, setLeaderEndPoint, leaderEnd)
    bool isUsingXAxis() const { return points_.flags & 1; }
    Acad::ErrorStatus useXAxis() { return acdbSetMember(*this, points_.flags, uint8_t(points_.flags | 1)); }
    Acad::ErrorStatus useYAxis() { return acdbSetMember(*this, points_.flags, uint8_t(points_.flags & ~1)); }

    struct Points {
        AcGePoint3d origin, feature, leaderEnd;
        unsigned char flags = 0;
    };
    VNDK_DIMENSION_MEMBERS
};
