// Points as users type them, and the user coordinate system of a drawing.
#pragma once

#include "ge/matrix3d.h"

#include <optional>
#include <string_view>

class AcDbDatabase;

namespace vndk::host {

/// An angle between 0 and 2 pi.
double wholeTurn(double radians);

/// From the user coordinate system of the current space to world coordinates.
AcGeMatrix3d ucsToWorld(const AcDbDatabase& database);

/// The units in which angles are typed.
struct AngleUnits {
    int mode = 0;           ///< AUNITS
    double base = 0;        ///< ANGBASE, radians
    bool clockwise = false; ///< ANGDIR
};
AngleUnits angleUnits(const AcDbDatabase& database);

/// A typed angle, turned by ANGBASE and ANGDIR: radians, counter-clockwise from the x axis.
std::optional<double> typedAngle(std::string_view text, const AngleUnits& units);

struct PointContext {
    AcGePoint3d last; ///< in the UCS
    AcGeMatrix3d worldToUcs;
    AngleUnits angles;
    double elevation = 0; ///< z of a point typed without one
};

/// A typed point in the UCS; nothing when the text is no point. The forms are those of ed/prompts.h.
std::optional<AcGePoint3d> typedPoint(std::string_view text, const PointContext& context);

} // namespace vndk::host
