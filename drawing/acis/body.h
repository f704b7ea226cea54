// What a solid consists of, as far as it is drawn: faces, their contours, and edges.
#pragma once

#include "acis/surface.h"
#include "ge/matrix3d.h"

#include <optional>
#include <string_view>
#include <vector>

namespace vndk::acis {

/// The curve of an edge from its first to its last vertex.
struct EdgeCurve {
    enum class Kind { Straight, Oval, Points };
    Kind kind = Kind::Straight;
    AcGePoint3d start, end;
    // Oval: center + major cos u + minor sin u, from u = `first` through `sweep` radians.
    AcGePoint3d center;
    AcGeVector3d major, minor;
    double first = 0, sweep = 0;
    std::vector<AcGePoint3d> points; // of a free curve, ready to be drawn

    /// Points along the curve, both ends included.
    std::vector<AcGePoint3d> flattened() const;
};

struct Face {
    std::optional<Surface> surface; // none of a kind that isn't known
    bool reversed = false;          // the face looks to where the surface's normal doesn't point
    bool hasLoops = false;
    std::vector<std::vector<AcGePoint3d>> contours; // closed; the face lies to their left, seen from outside
};

struct Body {
    AcGeMatrix3d transform;
    std::vector<Face> faces;
    std::vector<EdgeCurve> edges;

    /// The bodies of a text; none if it isn't understood.
    static std::vector<Body> read(std::string_view text);
};

} // namespace vndk::acis
