#pragma once
/// What a multiline style says, which is kept as it stands in a file otherwise.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "db/opaque_fields.h"

namespace vndk::dwg {

struct MlineStyle {
    /// Of the flags of the ends those for the start are here; those for the end stand four bits higher.
    enum Flag : unsigned {
        kFill = 1,
        kJoints = 2,
        kStartSquare = 16,
        kStartInnerArcs = 32,
        kStartOuterArc = 64,
        kEndSquare = 256
    };
    struct Line {
        double offset = 0;
        short color = 256;
        size_t linetypePlace = SIZE_MAX; ///< Among the table's records; none for ByLayer and ByBlock.
    };
    unsigned flags = 0;
    short fillColor = 256;
    std::vector<Line> lines;
};

bool isMlineStyle(const AcDbOpaqueFields& fields);
/// Nothing if it can't be read.
std::optional<MlineStyle> mlineStyle(const AcDbOpaqueFields& fields);

/// A multiline style names linetypes by their places in the table. How many of the table's records, from the first on,
/// have to keep their places for it; 0 when its lines are ByLayer and ByBlock. All of them when it can't be read.
size_t linetypePlaces(const AcDbOpaqueFields& style);

} // namespace vndk::dwg
