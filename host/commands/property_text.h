// Colours and lineweights as users type them and prompts show them.
#pragma once

#include "db/entity.h"

#include <optional>
#include <string>

namespace vndk::host {

/// "1 (red)", "30".
std::string colorText(short color);
/// 1 to 255, or a standard colour's name or its first letter; 0 for anything else.
short colorOf(const std::string& text);

/// "0.25 mm"; "Default" for the special values.
std::string lineWeightText(short weight);
/// A width from 0 to 2.11 in millimetres, with or without "mm", as the nearest one below that can be kept.
std::optional<AcDb::LineWeight> widthOf(std::string text);

} // namespace vndk::host
