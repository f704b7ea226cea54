// Does an entity lie in a rectangle? For selecting by window and by crossing, and for picking, which is a crossing by
// the small square around the picked point.
#pragma once

#include "db/entity.h"

#include <vector>

namespace vndk::host {

/// Parallel to the axes of a plane, mostly the screen's, and seen against its z axis.
struct SelectionRectangle {
    AcGeMatrix3d toPlane; // from world coordinates
    AcGePoint2d min, max;

    static SelectionRectangle between(const AcGeMatrix3d& toPlane, const AcGePoint3d& a, const AcGePoint3d& b);
};

/// A polygon, or an open chain of lines: a fence. Seen as the rectangle is.
struct SelectionPath {
    AcGeMatrix3d toPlane;
    std::vector<AcGePoint2d> points;
};

/// True if the whole entity lies inside.
bool liesInside(const AcDbEntity& entity, const SelectionRectangle& rectangle);
bool liesInside(const AcDbEntity& entity, const SelectionPath& polygon);
/// True if some of the entity lies inside or on the edge.
bool touches(const AcDbEntity& entity, const SelectionRectangle& rectangle);
bool touches(const AcDbEntity& entity, const SelectionPath& polygon);
/// True if the fence crosses the entity.
bool crosses(const AcDbEntity& entity, const SelectionPath& fence);

} // namespace vndk::host
