// The box that a drawing tells of its spaces.
#pragma once

#include "ge/extents.h"

class AcDbDatabase;
class AcDbObjectId;

/// The box `told` so far, grown by what has come to the space or been changed in it since its file was read. It never
/// shrinks: nothing that is unchanged is looked at.
AcDbExtents acdbGrownExtents(AcDbDatabase& database, AcDbObjectId space, const AcDbExtents& told);
