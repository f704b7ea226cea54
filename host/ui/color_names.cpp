#include "ui/color_names.h"

#include "db/symbol_table.h"
#include "gs/palette.h"
#include "win32/gdi.h"

#include <charconv>

namespace vndk::host {

namespace {

constexpr const char* kNames[] = {"ByBlock", "Red", "Yellow", "Green", "Cyan", "Blue", "Magenta", "White"};
constexpr std::uint32_t kBlack = 0xFF000000;

} // namespace

std::string colorName(int color) {
    if (color == kColorByLayer)
        return "ByLayer";
    return color >= 0 && color <= kLastNamedColor ? kNames[color] : std::to_string(color);
}

std::optional<int> colorOfName(const std::string& text) {
    const size_t first = text.find_first_not_of(' ');
    const std::string name = first == text.npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
    int color = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), color);
    if (error == std::errc() && end == name.data() + name.size())
        return color >= 1 && color <= 255 ? std::optional(color) : std::nullopt;
    if (acdbIsSameName(name, "ByLayer"))
        return kColorByLayer;
    for (int i = 0; i <= kLastNamedColor; ++i)
        if (acdbIsSameName(name, kNames[i]))
            return i;
    return std::nullopt;
}

COLORREF shownColor(int color) {
    const std::uint32_t argb = gs::colorOfIndex(color, kBlack);
    const auto channel = [argb](unsigned shift) { return static_cast<int>(argb >> shift & 0xFF); };
    return RGB(channel(16), channel(8), channel(0));
}

} // namespace vndk::host
