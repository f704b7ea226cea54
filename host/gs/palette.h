// The colours behind ACI indices.
#pragma once

#include <cstdint>

namespace vndk::gs {

/// 0xFFRRGGBB of an index 1 to 255 on a background of that colour; other indices are as 7, which is white on dark and
/// black on light.
std::uint32_t colorOfIndex(int index, std::uint32_t background);

} // namespace vndk::gs
