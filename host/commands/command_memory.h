// What the host's own commands remember of a document from one run to the next, as defaults of their prompts.
#pragma once

#include "db/object_id.h"
#include "ge/matrix3d.h"

#include <vector>

namespace vndk::host {

struct CommandMemory {
    std::vector<AcDbObjectId> previousSelection; ///< for the answer Previous
    std::vector<AcGeMatrix3d> formerUcs;         ///< for UCS Previous, the last one at the end
    std::vector<size_t> undone;                  ///< groups that each U or UNDO took back, for REDO
    size_t openUndoGroups = 0;                   ///< UNDO BEgin without UNDO End
    int attributeModes = 0;                      ///< of ATTDEF: 1 invisible, 2 constant, 4 verify, 8 preset
    double circleRadius = 0;                     ///< drawing units, 0 for none yet
    double textRotation = 0;                     ///< radians
    AcDbObjectId lastText;                       ///< the text below which an Enter puts the next one
};

} // namespace vndk::host
