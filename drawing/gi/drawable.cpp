#include "gi/drawable.h"

#include "ge/extents.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcGiDrawable, AcRxObject)

bool AcGiDrawable::bounds(AcDbExtents& /*extents*/) const { return false; }
