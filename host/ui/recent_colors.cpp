#include "ui/recent_colors.h"

#include "ed/host.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace vndk::host {

namespace {

constexpr const char* kSection = "Dialogs";
constexpr const char* kKey = "RecentColors";

ProfileStore* profile() { return Host::current() ? Host::current()->profile() : nullptr; }

} // namespace

std::vector<int> recentColors() {
    std::vector<int> colors;
    const std::string text = profile() ? profile()->read(kSection, kKey).value_or("") : "";
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end && colors.size() < kMostRecentColors) {
        int color = 0;
        const auto [stop, error] = std::from_chars(at, end, color);
        if (error == std::errc() && color >= 1 && color <= 255 &&
            std::find(colors.begin(), colors.end(), color) == colors.end())
            colors.push_back(color);
        at = std::find(stop, end, ',');
        at += at != end;
    }
    return colors;
}

void rememberColor(int color) {
    if (!profile())
        return;
    std::vector<int> colors = recentColors();
    std::erase(colors, color);
    colors.insert(colors.begin(), color);
    colors.resize(std::min<size_t>(colors.size(), kMostRecentColors));
    std::string text;
    for (const int each : colors)
        text += (text.empty() ? "" : ",") + std::to_string(each);
    profile()->write(kSection, kKey, text);
}

} // namespace vndk::host
