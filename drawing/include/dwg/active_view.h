/// What a drawing shows of its current space: the view that was active when it was saved.
#pragma once

#include "ge/vector.h"

#include <optional>

class AcDbDatabase;

namespace vndk::dwg {

struct ActiveView {
    AcGePoint3d center; ///< world coordinates
    double height = 0;  ///< of the screen, in drawing units, above 0
};

/// Model space: that of the viewport table's record "*Active". Paper space: that of its first viewport, which is the
/// sheet's own. Nothing when the drawing has no such view or its numbers make none.
std::optional<ActiveView> activeView(const AcDbDatabase& database);

} // namespace vndk::dwg
