// Hatches: areas filled with lines of a pattern, or solid.
//
// Contours are object coordinates of the normal, at the elevation; angles are radians. An arc of an ellipse or a circle
// runs from its start to its end angle, counter-clockwise or, with `ccw` false, by the negative of these angles. The
// pattern's lines stand ready to be drawn, with the hatch's angle and scale applied.
#pragma once

#include "db/entity.h"
#include "db/set_member.h"

#include <variant>

class AcDbHatch : public AcDbEntity {
    ACDB_DECLARE_MEMBERS(AcDbHatch)
public:
    /// Which areas are filled where contours lie within each other.
    enum HatchStyle : unsigned char { kNormal = 0, kOuter = 1, kIgnore = 2 };
    enum LoopFlag : uint32_t { kExternal = 1, kPolyline = 2, kDerived = 4, kTextbox = 8, kOutermost = 16 };

    struct Vertex {
        AcGePoint2d point;
        double bulge = 0;
    };
    struct LineEdge {
        AcGePoint2d start, end;
    };
    struct ArcEdge {
        AcGePoint2d center;
        double radius = 1, start = 0, end = 0;
        bool ccw = true;
    };
    struct EllipseEdge {
        AcGePoint2d center;
        AcGeVector2d major;
        double ratio = 1, start = 0, end = 0;
        bool ccw = true;
    };
    struct SplineEdge {
        uint32_t degree = 3;
        bool rational = false, periodic = false;
        std::vector<double> knots;
        std::vector<AcGePoint2d> points;
        std::vector<double> weights; // as many as points if rational
    };
    using Edge = std::variant<LineEdge, ArcEdge, EllipseEdge, SplineEdge>;

    /// A contour: vertices if the flags say kPolyline, else edges.
    struct Loop {
        uint32_t flags = kExternal;
        bool bulges = false, closed = true;
        std::vector<Vertex> vertices;
        std::vector<Edge> edges;
        std::vector<AcDbObjectId> boundary; // the objects that it was made of
    };
    /// Parallel lines: one through `base`, each next one shifted by `offset`. Dashes are lengths, negative for gaps,
    /// 0 for dots; none makes it unbroken.
    struct PatternLine {
        double angle = 0;
        AcGePoint2d base;
        AcGeVector2d offset;
        std::vector<double> dashes;
    };

    std::string patternName() const { return data_.name; }
    bool isSolidFill() const { return data_.solid; }
    bool associative() const { return data_.associative; }
    HatchStyle hatchStyle() const { return static_cast<HatchStyle>(data_.style); }
    int numLoops() const { return static_cast<int>(data_.loops.size()); }
    double patternAngle() const { return data_.angle; }
    double patternScale() const { return data_.scale; }
    double elevation() const { return data_.elevation; }
    AcGeVector3d normal() const { return data_.normal; }

    /// The pattern follows the contours. eCannotScaleNonUniformly.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const override;
    /// A line or a point for each dash. eNotApplicable: a solid one, and one whose pattern is too dense for that.
    Acad::ErrorStatus explode(std::vector<AcDbEntity*>& parts) const override;
    void visitReferences(AcDbReferenceVisitor& visitor) override;

    struct Data {
        double elevation = 0;
        AcGeVector3d normal{0, 0, 1};
        std::string name;
        bool solid = false, associative = false;
        std::vector<Loop> loops;
        uint16_t style = kNormal, patternType = 1;
        // Of patterns only.
        double angle = 0, scale = 1;
        bool doubled = false;
        std::vector<PatternLine> lines;
        double pixelSize = 0; // stored with a derived contour only
        std::vector<AcGePoint2d> seeds;
    };
    const Data& data() const { return data_; }
    void setFileData(Data data) { data_ = std::move(data); }

private:
    Data data_;
};
