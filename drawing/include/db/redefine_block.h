// Redefining a block from a drawing.
#pragma once

#include "db/object_id.h"
#include "rx/status.h"

class AcDbDatabase;

/// Puts the model space of `source` in place of what a block holds, as AcDbDatabase::insert takes it into a new one.
/// The record keeps its id and name, so that its references show the new contents; they and their attributes stay as
/// they are. The base point becomes that of `source`. All or nothing: on a failure the block holds what it held. Needs
/// the record closed. eNullObjectId; eNotThatKindOfClass: no block; eNotApplicable: a space or an external reference;
/// eNoDatabase: nothing was read into `source`; eSelfReference: the block would hold itself.
Acad::ErrorStatus acdbRedefineBlock(AcDbObjectId block, AcDbDatabase& source);

/// True if an insertion of `block` stands among the entities of `record` or anywhere below them.
bool acdbBlockContains(AcDbObjectId record, AcDbObjectId block);
