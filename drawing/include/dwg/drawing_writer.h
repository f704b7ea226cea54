#pragma once
/// Makes a drawing file from a database.
///
/// Objects that weren't changed since they were read keep their bytes and their places; of those whose neighbours
/// changed only the links are replaced. Changed objects are encoded anew in their old places, new ones follow, erased
/// ones and what they own are left out.

#include <cstdint>
#include <vector>

#include "dwg/error.h"

class AcDbDatabase;

namespace vndk::dwg {

/// The bytes of a whole file in the format of release 15. CannotWrite: the drawing is too large.
Result<std::vector<uint8_t>> writeDrawing(AcDbDatabase& database);

/// The picture that the next save puts into the file for those who list drawings, in place of the one it has: a
/// device-independent bitmap without file header. Empty: the file keeps what it has.
void setThumbnailBitmap(AcDbDatabase& database, std::vector<uint8_t> bitmap);

} // namespace vndk::dwg
