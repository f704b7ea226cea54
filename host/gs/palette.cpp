#include "gs/palette.h"

#include <array>
#include <cmath>

namespace vndk::gs {

namespace {

constexpr std::uint32_t kOpaque = 0xFF000000;
constexpr int kFirstHue = 10, kFirstGray = 250, kLast = 255;

constexpr std::uint32_t rgb(unsigned red, unsigned green, unsigned blue) {
    return kOpaque | red << 16 | green << 8 | blue;
}

bool isLight(std::uint32_t color) {
    const unsigned red = color >> 16 & 0xFF, green = color >> 8 & 0xFF, blue = color & 0xFF;
    return 299 * red + 587 * green + 114 * blue > 500 * 255;
}

/// The share of a channel, 0 to 1, in a pure hue of 24 around the circle.
double shareOf(int hue, int channel) {
    // Each channel is full for a third of the circle about its own hue, and fades within a sixth on both sides.
    const int distance = std::abs((hue - 8 * channel + 36) % 24 - 12);
    return distance <= 4 ? 1 : distance >= 8 ? 0 : (8 - distance) / 4.0;
}

std::uint32_t hueColor(int index) {
    constexpr std::array<double, 5> kBrightness = {255, 165, 127, 76, 38};
    const int hue = index / 10 - 1;
    const double full = kBrightness[static_cast<std::size_t>(index % 10 / 2)];
    const bool pale = index % 2 != 0; // half way to grey
    std::array<unsigned, 3> channels{};
    for (int channel = 0; channel < 3; ++channel) {
        const double share = shareOf(hue, channel);
        channels[static_cast<std::size_t>(channel)] = static_cast<unsigned>(full * (pale ? (1 + share) / 2 : share));
    }
    return rgb(channels[0], channels[1], channels[2]);
}

} // namespace

std::uint32_t colorOfIndex(int index, std::uint32_t background) {
    constexpr std::array<std::uint32_t, 10> kFirst = {
        0, rgb(255, 0, 0),     rgb(255, 255, 0),  rgb(0, 255, 0), rgb(0, 255, 255), rgb(0, 0, 255), rgb(255, 0, 255),
        0, rgb(128, 128, 128), rgb(192, 192, 192)};
    constexpr std::array<unsigned, 6> kGrays = {51, 91, 132, 173, 214, 255};
    if (index < 1 || index > kLast || index == 7)
        return isLight(background) ? rgb(0, 0, 0) : rgb(255, 255, 255);
    if (index < kFirstHue)
        return kFirst[static_cast<std::size_t>(index)];
    if (index < kFirstGray)
        return hueColor(index);
    const unsigned gray = kGrays[static_cast<std::size_t>(index - kFirstGray)];
    return rgb(gray, gray, gray);
}

} // namespace vndk::gs
