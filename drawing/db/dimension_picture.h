// What dimensions, leaders and tolerances are drawn from: temporary entities in a plane, by the variables of a
// dimension style. Private to the drawing layer.
//
// Points and angles are those of the plane. All parts are on layer "0" and take what the style doesn't give from the
// entity that shows them, so that a picture in a block follows its dimension.
#pragma once

#include "db/dimension_text.h"
#include "db/entity.h"
#include "db/transformed_parts.h"

#include <optional>

class AcDbDatabase;

namespace vndk::db {

/// The layer of the points that define dimensions, which isn't plotted.
inline constexpr const char* kDefinitionLayerName = "Defpoints";

class DimensionPicture {
public:
    /// `database` may be null: then arrow heads of blocks are missing.
    DimensionPicture(AcDbDatabase* database, const AcGeVector3d& normal, double elevation,
                     const DimVariables& variables);

    const DimVariables& variables() const { return variables_; }
    AcGePoint2d inPlane(const AcGePoint3d& point) const;
    /// A length of the style in drawing units.
    double scaled(double length) const { return length * scale_; }
    double arrowSize() const { return scaled(variables_.dimasz); }
    double textHeight() const { return textHeight_; }
    double gap() const { return scaled(std::fabs(variables_.dimgap)); }
    /// Strokes across the line stand in place of arrow heads.
    bool hasTicks() const { return variables_.dimtsz > 0; }

    // What a dimension says of itself before it draws.
    void setText(std::string text);
    void setUserTextMiddle(const AcGePoint2d& middle) { userMiddle_ = middle; }
    void setHorizontal(double angle) { horizontal_ = angle; }
    void setTextRotation(double angle) { textRotation_ = angle; }

    bool hasText() const { return !text_.empty(); }
    double textWidth() const { return textWidth_; }
    double textBlockHeight() const { return textHeight_ * (1 + 5.0 / 3 * (textLines_ - 1)); }
    /// Where the user wants the text's middle.
    const std::optional<AcGePoint2d>& userTextMiddle() const { return userMiddle_; }
    double horizontal() const { return horizontal_; }
    /// The angle of the text at a line: along it, or horizontal where the style says so.
    double textAngle(double lineAngle, bool outside) const;
    /// How much room the text takes along a line.
    double textExtent(double textAngle, double lineAngle) const;
    /// From the line to the text's middle, for a text on it at that angle; zero where the line is broken for the text.
    AcGeVector2d textOffset(double textAngle, double lineAngle) const;

    void line(const AcGePoint2d& from, const AcGePoint2d& to);
    void arc(const AcGePoint2d& center, double radius, double startAngle, double endAngle);
    /// In the manner of the dimension line.
    void dimensionLine(const AcGePoint2d& from, const AcGePoint2d& to);
    void dimensionArc(const AcGePoint2d& center, double radius, double startAngle, double endAngle);
    /// The first (0) or the second (1), unless the style leaves it out.
    void extensionLine(int which, const AcGePoint2d& from, const AcGePoint2d& to);
    /// A head whose tip points that way; the first, the second, or a leader's (2).
    void arrow(int which, const AcGePoint2d& tip, const AcGeVector2d& direction);
    void text(const AcGePoint2d& middle, double angle);
    /// A point that defines the dimension, in world coordinates. Left out where its layer is missing.
    void definitionPoint(const AcGePoint3d& point);
    /// DIMCEN at a centre.
    void centerMark(const AcGePoint2d& center, double radius);
    void add(std::unique_ptr<AcDbEntity> part, short color, short lineWeight = AcDb::kLnWtByLayer);

    /// Where the text's middle has come to stand; the user's point without a text.
    const std::optional<AcGePoint2d>& textMiddle() const { return middle_; }
    const AcGeVector3d& normal() const { return normal_; }
    AcGePoint3d toWorld(const AcGePoint2d& point) const;
    Parts take() { return std::move(parts_); }

private:
    AcDbObjectId arrowBlock(int which) const;
    void tick(const AcGePoint2d& tip, const AcGeVector2d& direction);

    AcDbDatabase* database_;
    AcGeVector3d normal_;
    AcGeMatrix3d toWorld_, toPlane_;
    double elevation_;
    DimVariables variables_;
    double scale_ = 1, textHeight_ = 0, textWidth_ = 0;
    int textLines_ = 1;
    std::string text_;
    std::optional<AcGePoint2d> userMiddle_, middle_;
    double horizontal_ = 0, textRotation_ = 0;
    AcDbObjectId layerZero_, definitionLayer_;
    Parts parts_;
};

inline AcGeVector2d directionOf(double angle) { return {std::cos(angle), std::sin(angle)}; }
inline double angleOf(const AcGeVector2d& v) { return std::atan2(v.y, v.x); }
/// A quarter turn to the left.
inline AcGeVector2d leftOf(const AcGeVector2d& v) { return {-v.y, v.x}; }
/// The direction; null for what is too short to have one.
std::optional<AcGeVector2d> unitOf(const AcGeVector2d& v);
/// The angle or its opposite, whichever is read from below or from the right.
double readable(double angle);

/// What linear dimensions of both kinds have: the feet of the extension lines, a point of the dimension line, its
/// angle, and the angle of the extension lines to it.
struct LinearShape {
    AcGePoint2d first, second, onLine;
    double angle = 0, extensionAngle = kAcGePi / 2;
};
void drawLinear(DimensionPicture& picture, const LinearShape& shape);

/// A side of an angle: where the line of the side is drawn already, as distances from the vertex.
struct AngleSide {
    double angle = 0, from = 0, to = 0;
};
struct AngularShape {
    AcGePoint2d vertex;
    double radius = 0;
    AngleSide first, second; // counter-clockwise from the first to the second
};
void drawAngular(DimensionPicture& picture, const AngularShape& shape);

struct RadialShape {
    AcGePoint2d center, chord;
    bool diameter = false;
    double leaderLength = 0;
};
void drawRadial(DimensionPicture& picture, const RadialShape& shape);

/// `axis` is the direction along which the leader runs.
struct OrdinateShape {
    AcGePoint2d feature, leaderEnd;
    AcGeVector2d axis;
};
void drawOrdinate(DimensionPicture& picture, const OrdinateShape& shape);

} // namespace vndk::db
