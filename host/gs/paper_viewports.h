// The views of the model that a sheet of paper holds.
#pragma once

#include "db/block_table.h"
#include "ge/extents.h"
#include "gs/lens.h"

#include <optional>
#include <vector>

namespace vndk::gs {

struct PaperViewport {
    AcDbExtents frame;    // on the sheet
    AcGeMatrix3d toSheet; // from the model's coordinates
    double scale = 1;     // sheet units of a model unit
    std::vector<AcDbObjectId> frozenLayers;
    double eye = 0; // model units from the middle of the view to the eye; 0: a parallel view

    std::optional<Lens> lens(const AcGeMatrix3d& sheetToDevice) const;
};

/// Those that are on and have an area, in order. None for a block that isn't a sheet.
std::vector<PaperViewport> viewportsOn(const AcDbBlockTableRecord& record);

} // namespace vndk::gs
