// Inserting a block of the drawing as an Intelligent Block.
#pragma once

#include "ge/matrix3d.h"
#include "ge/vector.h"
#include "mfc/afx.h"

/// The LISP function (c:_bInsert "name" (list x y z)).
int InsertBlockFunction();

/// Builds a reference to the block in the current space, with an attribute beside it for each plain, non-constant
/// definition of the block. Coordinates are world coordinates. Asks nothing. A block that isn't in the drawing, or that
/// can't be read now, is told to the user and inserts nothing.
void InsertBlockByName(CString name, AcGePoint3d position, AcGeScale3d scale, double rotation);
