#pragma once
/// The data of the header variables section: everything between its size field and its checksum.

#include "dwg/bit_reader.h"
#include "dwg/bit_writer.h"
#include "dwg/header_variables.h"

namespace vndk::dwg {

/// Reads the variables that `version` stores; `reader` stands at the first one. False when the data end too early
/// or hold an invalid code; the reader's position is then of no use.
[[nodiscard]] bool readHeaderVariables(BitReader& reader, Version version, HeaderVariables& variables);

/// Writes the variables that `version` stores and fills the last byte.
void writeHeaderVariables(BitWriter& writer, Version version, const HeaderVariables& variables);

} // namespace vndk::dwg
