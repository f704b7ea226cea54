#pragma once
/// The data of the classes section: everything between its size field and its checksum.

#include <vector>

#include "dwg/bit_reader.h"
#include "dwg/bit_writer.h"
#include "dwg/class_table.h"

namespace vndk::dwg {

/// Reads records until less than a byte is left. False when a record is cut off.
[[nodiscard]] bool readClasses(BitReader& reader, std::vector<ClassRecord>& classes);

/// Writes the records in the given order and fills the last byte.
void writeClasses(BitWriter& writer, const std::vector<ClassRecord>& classes);

} // namespace vndk::dwg
