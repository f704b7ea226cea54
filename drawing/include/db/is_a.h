// The class of an object that isn't opened.
#pragma once

#include "db/object_id.h"
#include "rx/class.h"

/// Whether isA() of the object would say exactly `cls`, open or erased as it may be. An object of a file is decoded
/// only where its record leaves that open. False for the null id and for a slot without an object.
bool acdbIsA(AcDbObjectId id, const AcRxClass* cls);
