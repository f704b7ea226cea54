/// What a drawing shows of its spaces: the views that were active when it was saved.
#pragma once

#include "ge/vector.h"

#include <optional>

class AcDbDatabase;

namespace vndk::dwg {

struct ActiveView {
    AcGePoint3d center;              ///< world coordinates
    double height = 0;               ///< of the screen, in drawing units, above 0
    AcGeVector3d direction{0, 0, 1}; ///< towards the viewer, length 1
    AcGeVector3d up{0, 1, 0};        ///< on the screen, length 1
    double eye = 0; ///< perspective: from the centre to the eye, the height being that at the centre; 0: none
    bool operator==(const ActiveView&) const = default;
};

/// Model space: that of the viewport table's record "*Active". Paper space: that of its first viewport, which is the
/// sheet's own. Nothing when the drawing has no such view or its numbers make none.
std::optional<ActiveView> activeView(const AcDbDatabase& database, bool modelSpace);
/// That of the current space.
std::optional<ActiveView> activeView(const AcDbDatabase& database);

/// How many times as wide as high the screen was that the view was saved on. 0 where that isn't known.
double activeViewAspect(const AcDbDatabase& database, bool modelSpace);

/// Makes the view the one that the space is shown with, on a screen so many times as wide as it is high. Nothing else
/// of the record or viewport changes. False: there is none, it can't be opened, or its fields can't be read.
bool setActiveView(AcDbDatabase& database, bool modelSpace, const ActiveView& view, double aspect);

} // namespace vndk::dwg
