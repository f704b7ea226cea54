// How the entities of a database are drawn.
#pragma once

#include "gi/drawable.h"

class AcDbBlockTableRecord;

/// Draws an entity that is open for read: its properties, then its geometry; a reference with its attributes. What is
/// invisible draws nothing. False: it is of a type that has no picture here (db/opaque.h), or its data make none.
bool acgiDrawEntity(const AcDbEntity& entity, AcGiWorldDraw& context);
/// Draws what a block table record holds, in order. Attribute definitions are drawn where `definitions` says so: in a
/// space they show their tags; behind a reference only constant ones are seen, by their values.
void acgiDrawBlock(const AcDbBlockTableRecord& record, bool definitions, AcGiWorldDraw& context);
