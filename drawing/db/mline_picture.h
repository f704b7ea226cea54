// What a multiline looks like with its style. Private to the drawing layer.
#pragma once

#include "db/mline.h"

#include <optional>

namespace vndk::db {

struct MlinePicture {
    /// Straight, or half a circle whose ends are the points, bulging along `outward`.
    struct Stroke {
        AcGePoint3d start, end;
        short color = kAcDbColorByLayer; // ByLayer and ByBlock: the multiline's own
        AcDbObjectId linetype;           // null: the multiline's own
        std::optional<AcGeVector3d> outward;
    };
    std::vector<Stroke> strokes;
    std::vector<std::vector<AcGePoint3d>> fills;
    short fillColor = kAcDbColorByLayer;
};

/// Lines without colours and ends if the style can't be read.
MlinePicture mlinePicture(const AcDbMline& mline);

} // namespace vndk::db
