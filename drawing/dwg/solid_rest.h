#pragma once
/// What stands behind a solid's text in a file.

#include "db/modeler_geometry.h"

namespace vndk::dwg {

/// Replaces the picture by none, and moves the point that is kept with it.
void moveSolidRest(AcDbModelerGeometry::Data& solid, const AcGeMatrix3d& matrix);

} // namespace vndk::dwg
