// A drawing of 150,000 objects for measurements: lines, circles, texts, 1,000 blocks with an attribute definition and
// 10,000 references with an attribute.
#pragma once

#include <string>

namespace vndk::bench {

/// Writes it, with `size` times as much in it. False, with a message on standard error, if that fails.
bool makePlanDrawing(const std::string& path, double size = 1);

} // namespace vndk::bench
