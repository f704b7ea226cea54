// Object snap: places of entities near the cursor that a point is meant to be.
#pragma once

#include "ed/outline.h"

#include <optional>
#include <string_view>

namespace vndk::host {

/// Bits of OSMODE.
enum SnapMode : int {
    kSnapEnd = 1,
    kSnapMid = 2,
    kSnapCenter = 4,
    kSnapNode = 8,
    kSnapQuadrant = 16,
    kSnapIntersection = 32,
    kSnapInsertion = 64,
    kSnapPerpendicular = 128,
    kSnapTangent = 256,
    kSnapNearest = 512,
    kSnapOff = 16384, ///< the others don't count
};

/// The modes that a user types ahead of one point: "end", "mid,cen", "non". Nothing when the text names none.
std::optional<int> snapModesOf(std::string_view text);
/// As tool tips name it: "Endpoint".
const char* snapName(int mode);

struct Snap {
    AcGePoint3d point; ///< world coordinates
    int mode = 0;      ///< one bit
};

/// What is looked for, in the coordinates in which the drawing is seen: pixels, mostly.
struct SnapQuery {
    AcGeMatrix3d worldToSeen;
    AcGePoint2d at;
    double aperture = 0; ///< half the side of the square in which lines and places count
    int modes = 0;
    std::optional<AcGePoint3d> base = {}; ///< of perpendiculars and tangents; world coordinates
};

/// The nearest place that one of the modes offers; the nearest point of a line only where nothing else is.
std::optional<Snap> findSnap(std::span<const Outline* const> outlines, const SnapQuery& query);

} // namespace vndk::host
