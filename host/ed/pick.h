// Finding the entity at a picked point.
#pragma once

#include "db/object_id.h"
#include "ge/matrix3d.h"

#include <vector>

class AcApDocument;
class AcDbDatabase;
class AcDbEntity;

namespace vndk::host {

class Host;

/// Half the side of the pick box in drawing units: PICKBOX pixels on a screen of SCREENSIZE that shows VIEWSIZE.
/// `variable` may name another one that holds pixels.
double pickAperture(Host& host, const char* variable = "PICKBOX");

/// From the UCS to the screen that shows the document's current space: x to the right, y up.
AcGeMatrix3d ucsToScreen(const AcApDocument& document);

/// The topmost entity of the current space that touches the square with half the side `aperture` (drawing units)
/// around a point of the UCS, as it is seen on the screen; null if none. Only entities that are shown are found.
AcDbObjectId entityAt(const AcApDocument& document, const AcGePoint3d& point, double aperture);

/// The entities of the current space that are shown and whose boxes come within `aperture` of a point of the UCS; in
/// the order of the drawing.
std::vector<AcDbObjectId> entitiesNear(const AcDbDatabase& database, const AcGePoint3d& point, double aperture);

/// False for an invisible entity and for one on a layer that is off or frozen.
bool isShown(const AcDbEntity& entity);

/// True for the first viewport of a paper space: it is the sheet itself, and no user can choose it.
bool isSheet(const AcDbEntity& entity);

/// The last entity of the current space that isn't erased; null if none.
AcDbObjectId lastEntity(const AcDbDatabase& database);

/// The space that new entities go into.
AcDbObjectId currentSpace(const AcDbDatabase& database);

} // namespace vndk::host
