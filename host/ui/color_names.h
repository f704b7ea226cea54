// Colours as people read them.
#pragma once

#include "win32/types.h"

#include <optional>
#include <string>

namespace vndk::host {

constexpr int kColorByBlock = 0;
constexpr int kColorByLayer = 256;
constexpr int kLastNamedColor = 7;

/// "ByLayer", "ByBlock", "Red" ... "White", "8" ... "255".
std::string colorName(int color);
/// The colour of such a text, without regard to case; of a number 1 to 255, too. Nothing when it is none.
std::optional<int> colorOfName(const std::string& text);
/// How a colour looks in a dialog; 7 is white.
COLORREF shownColor(int color);

} // namespace vndk::host
