// External references: blocks that show the model space of another drawing. Nothing of it is in this one but the path.
#pragma once

#include "db/object_id.h"
#include "rx/status.h"

#include <memory>
#include <string>
#include <vector>

class AcDbDatabase;

/// Makes a block that refers to the drawing of that path; an overlay isn't shown where the drawing is itself attached
/// to another one. What it shows is read by whoever knows where files are. eDuplicateRecordName,
/// eInvalidSymbolTableName; eWasOpenForWrite and the like when the table can't be opened.
Acad::ErrorStatus acdbMakeXref(AcDbObjectId& block, AcDbDatabase& database, const char* name, const char* path,
                               bool overlay);

/// The external references of a drawing, in the order of its block table.
std::vector<AcDbObjectId> acdbXrefBlocks(const AcDbDatabase& database);

/// Gives an external reference the drawing that it shows, or takes it away with null. The record must not be open. No
/// undo: what is on the disk isn't this drawing's. eNotApplicable: it is none.
Acad::ErrorStatus acdbSetXrefDatabase(AcDbObjectId block, std::shared_ptr<AcDbDatabase> shown);

/// Another path; the drawing that is shown stays until another one is set. eNotApplicable: it is none.
Acad::ErrorStatus acdbSetXrefPath(AcDbObjectId block, const char* path);

/// Erases the block and all its references. eNotApplicable: it is none.
Acad::ErrorStatus acdbDetachXref(AcDbObjectId block);
