// The class of an object that isn't opened.
#pragma once

#include "db/object_id.h"
#include "rx/class.h"

/// What isA() of the object would say. An object of a file is decoded only where its record leaves that open; one that
/// is damaged may turn out as another class when it is opened. Null for the null id and for a slot without an object.
AcRxClass* acdbClassOf(AcDbObjectId id);
