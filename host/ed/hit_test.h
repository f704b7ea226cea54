// Does an entity lie in a rectangle? For selecting by window and by crossing, and for picking, which is a crossing by
// the small square around the picked point.
#pragma once

#include "db/entity.h"

namespace vndk::host {

/// Parallel to the axes of the user coordinate system, seen against its z axis.
struct SelectionRectangle {
    AcGeMatrix3d worldToUcs;
    AcGePoint2d min, max;

    static SelectionRectangle between(const AcGeMatrix3d& worldToUcs, const AcGePoint3d& a, const AcGePoint3d& b);
};

/// True if the whole entity lies inside.
bool liesInside(const AcDbEntity& entity, const SelectionRectangle& rectangle);
/// True if some of the entity lies inside or on the edge.
bool touches(const AcDbEntity& entity, const SelectionRectangle& rectangle);

} // namespace vndk::host
