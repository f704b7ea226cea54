// The contours of a hatch as polygons, and what of its pattern lies within them. Private to the drawing layer.
#pragma once

#include "db/hatch.h"

namespace vndk::db {

using Contour = std::vector<AcGePoint2d>;

/// The corners of a polygon that looks like the loop; each one once. Empty for one without an area.
Contour contourOf(const AcDbHatch::Loop& loop);

/// The contours between which the hatch's style fills: those outside run counter-clockwise, those directly within them
/// clockwise, and so on.
std::vector<Contour> filledContours(const AcDbHatch::Data& hatch);

/// A dash in object coordinates; a dot has equal ends.
struct Dash {
    AcGePoint2d start, end;
};

/// The dashes of the pattern. A pattern that has more than `most` is thinned out: then lines are left out, then the
/// rest is drawn without gaps, and `complete` is false.
struct PatternDashes {
    std::vector<Dash> dashes;
    bool complete = true;
};
PatternDashes patternDashes(const AcDbHatch::Data& hatch, size_t most);

} // namespace vndk::db
