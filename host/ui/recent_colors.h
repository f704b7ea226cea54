// The colours that the user has chosen lately, kept in his profile.
#pragma once

#include <vector>

namespace vndk::host {

constexpr int kMostRecentColors = 8;

/// Indices 1 to 255, the latest first, each once. What the profile holds besides is left out.
std::vector<int> recentColors();
/// Puts a colour first.
void rememberColor(int color);

} // namespace vndk::host
