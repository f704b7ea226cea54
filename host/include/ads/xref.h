// External references from modules.
#pragma once

#include "db/object_id.h"
#include "ge/matrix3d.h"
#include "rx/status.h"

/// Attaches a drawing under that name and puts a reference to it into the current space of the current drawing: at
/// `position` in the UCS (null: its origin), with these factors (null: 1) and that angle in radians (null: 0). Gives
/// the ids of block and reference where they are asked for. One undo step. What goes wrong is told on the command line:
/// eFileNotFound, eDuplicateRecordName, eNoDocument; eInvalidInput for the rest.
Acad::ErrorStatus acedXrefAttach(const char* path, const char* name, AcDbObjectId* blockId, AcDbObjectId* referenceId,
                                 const AcGePoint3d* position, const AcGeScale3d* scale, const double* rotation,
                                 bool overlay);
