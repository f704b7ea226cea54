#pragma once
/// Opens a drawing file in a database. Objects are decoded when they are first opened, so that opening a file costs
/// little more than reading it.

#include <string>
#include <vector>

#include "dwg/error.h"

class AcDbDatabase;

namespace vndk::dwg {

/// Fills an empty database. Oddities of the file are in its warnings() afterwards. After an error the database is of
/// no use.
Result<void> readDrawing(AcDbDatabase& database, const std::string& path);
/// The same for bytes in memory; `name` is for messages.
Result<void> readDrawing(AcDbDatabase& database, std::vector<uint8_t> bytes, const std::string& name);

/// Keeps other programs from saving the drawing file while this database lives or until it is saved elsewhere. Fails
/// with Locked, or with CannotWrite where the file can only be read.
Result<void> lockDrawing(AcDbDatabase& database, const std::string& path);

} // namespace vndk::dwg
