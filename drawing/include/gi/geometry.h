// What things are drawn with. Whoever draws gives points in its own coordinates, in drawing units; where they come
// out, and how fine curves are divided, is the affair of what stands behind this interface.
//
// Numbers that are no numbers and pieces without length are accepted and draw nothing.
#pragma once

#include "db/object_id.h"
#include "ge/matrix3d.h"

#include <cstdint>
#include <span>
#include <string>

/// A line of text in its place. Its width is known where its font is.
struct AcGiText {
    enum Along : unsigned char { kLeft, kCenter, kRight };
    enum Across : unsigned char { kBaseLine, kBottom, kMiddle, kTop };

    std::string text;       // code page 1252, without codes
    AcDbObjectId style;     // a text style: the font
    AcGePoint3d position;   // the point that `along` and `across` name
    AcGeVector3d direction; // of the base line, length 1
    AcGeVector3d up;        // of letters that don't lean, length 1
    double height = 1;      // of capital letters
    double widthFactor = 1;
    double oblique = 0;     // radians, positive leans to the right
    double fitWidth = 0;    // above 0: the text is made that wide
    bool fitHeight = false; // ... by its height, keeping the proportions
    Along along = kLeft;
    Across across = kBaseLine;
    bool backward = false, upsideDown = false;
    bool underlined = false, overlined = false;
    // In place of what the style and the properties say:
    std::string face; // the name of a face or a font file; empty: the style's
    bool bold = false, italic = false;
    uint32_t color = 0; // the four bytes of an AcCmEntityColor; 0: the colour that is set
};

/// A face of a shell: places of its corners among the shell's points, counter-clockwise as seen from outside.
struct AcGiTriangle {
    /// Bit i of `edges`: the side from corner i to the next one is an edge of the thing, not just one between two
    /// pieces of the same surface.
    uint32_t corners[3] = {0, 0, 0};
    unsigned char edges = 0;
    bool operator==(const AcGiTriangle&) const = default;
};

class AcGiGeometry {
public:
    virtual ~AcGiGeometry() = default;

    virtual void polyline(std::span<const AcGePoint3d> points) = 0;
    /// A filled area; its edge may cross itself.
    virtual void polygon(std::span<const AcGePoint3d> corners) = 0;
    /// A filled area of several contours in one plane; `ends` are the places behind the last corner of each. Holes run
    /// around the other way than what holds them.
    virtual void polyPolygon(std::span<const AcGePoint3d> corners, std::span<const uint32_t> ends) = 0;
    /// The surface of a thing, for the modes that shade or hide. A wireframe shows no more of it than its edges: what
    /// else is to be seen there (isolines, exact curves) is drawn beside it. `normals` point outward, one for each
    /// point, or there are none: then each face is flat.
    virtual void shell(std::span<const AcGePoint3d> points, std::span<const AcGiTriangle> faces,
                       std::span<const AcGeVector3d> normals) = 0;
    /// The points center + major cos u + minor sin u, u from `start` on through `sweep` radians.
    virtual void ellipArc(const AcGePoint3d& center, const AcGeVector3d& major, const AcGeVector3d& minor, double start,
                          double sweep) = 0;
    virtual void text(const AcGiText& text) = 0;
    /// How wide the text comes out, in drawing units, without regard to `fitWidth`.
    virtual double textWidth(const AcGiText& text) = 0;
    virtual void ray(const AcGePoint3d& base, const AcGeVector3d& direction) = 0;
    virtual void xline(const AcGePoint3d& base, const AcGeVector3d& direction) = 0;
    /// A point in the drawing's style for points, its mark's axes turned by `rotation` radians.
    virtual void point(const AcGePoint3d& position, double rotation) = 0;
    /// The contents of a block, in its own coordinates, through a transform. What they take from the reference they
    /// take from the properties that are set.
    virtual void block(AcDbObjectId record, const AcGeMatrix3d& transform) = 0;
};
