#include "commands/property_text.h"

#include "db/line_weight.h"
#include "db/symbol_table.h"

#include <charconv>
#include <cmath>

namespace vndk::host {

namespace {

constexpr const char* kColorNames[] = {"red", "yellow", "green", "cyan", "blue", "magenta", "white"};

} // namespace

std::string colorText(short color) {
    std::string text = std::to_string(color);
    if (color >= 1 && color <= 7)
        text += std::string(" (") + kColorNames[color - 1] + ")";
    return text;
}

short colorOf(const std::string& text) {
    short color = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), color);
    if (error == std::errc() && end == text.data() + text.size())
        return color >= 1 && color <= 255 ? color : short{0};
    const std::string folded = acdbFoldName(text);
    for (short i = 0; i < 7 && !folded.empty(); ++i) {
        const std::string name = acdbFoldName(kColorNames[i]);
        if (folded == name || (folded.size() == 1 && folded[0] == name[0]))
            return static_cast<short>(i + 1);
    }
    return 0;
}

std::string lineWeightText(short weight) {
    if (weight < 0)
        return "Default";
    const std::string hundredths = std::to_string(weight % 100);
    return std::to_string(weight / 100) + (weight % 100 < 10 ? ".0" : ".") + hundredths + " mm";
}

std::optional<AcDb::LineWeight> widthOf(std::string text) {
    double millimetres = 0;
    if (text.ends_with("mm"))
        text.resize(text.size() - 2);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), millimetres);
    if (error != std::errc() || end != text.data() + text.size() || !(millimetres >= 0 && millimetres <= 2.11))
        return std::nullopt;
    // Only the widths of the table can be kept.
    const auto wanted = static_cast<AcDb::LineWeight>(std::lround(millimetres * 100));
    return acdbLineWeightOfCode(acdbLineWeightCode(wanted));
}

} // namespace vndk::host
