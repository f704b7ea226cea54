// Inserting a drawing file as an Intelligent Block.
#pragma once

#include "ge/matrix3d.h"
#include "ge/vector.h"
#include "mfc/afx.h"

/// The LISP function (c:_bInsertFile "path" (list x y z)).
int InsertFileFunction();

/// Makes the file a block of the drawing, unless the drawing has a block of the file's name already, and builds a
/// reference to that block in the current space, with an attribute beside it for each definition that isn't constant.
/// Coordinates are world coordinates. Values are asked for on the command line, or in a dialog while ATTDIA is on; a
/// user who cancels gets the whole reference with the definitions' texts for what wasn't answered. A file that can't
/// become a block is told in an alert and leaves the drawing as it was.
void InsertDrawingFile(CString path, AcGePoint3d position, AcGeScale3d scale, double rotation);
