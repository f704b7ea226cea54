// How the entities of a database are drawn.
#pragma once

#include "gi/drawable.h"

/// Draws an entity that is open for read: its properties, then its geometry; a reference with its attributes. What is
/// invisible draws nothing. False: it is of a type that has no picture here (db/opaque.h), or its data make none.
bool acgiDrawEntity(const AcDbEntity& entity, AcGiWorldDraw& context);
/// Draws an entity as it is seen within its block. Attribute definitions are drawn where `definitions` says so: in a
/// space they show their tags; behind a reference only constant ones are seen, by their values.
void acgiDrawInBlock(const AcDbEntity& entity, bool definitions, AcGiWorldDraw& context);
