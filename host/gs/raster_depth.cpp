// What is drawn with depths.
#include "gs/raster.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace vndk::gs {

namespace {

// Planes that are seen nearly from their side run from front to back within a pixel; no more than this of it counts.
constexpr double kSteepest = 32;
// What rounding makes of equal depths, in pixels.
constexpr double kEqual = 0.01;

std::uint32_t lighted(std::uint32_t color, double light) {
    const auto share = static_cast<std::uint32_t>(std::lround(std::clamp(light, 0.0, 1.0) * 65536));
    std::uint32_t result = color & 0xFF000000;
    for (const int shift : {0, 8, 16})
        result |= ((color >> shift & 0xFF) * share + 32768) >> 16 << shift;
    return result;
}

} // namespace

/// The plane through the corners, put back by what it changes from pixel to pixel. False: it is seen from its side.
bool Raster::setPlane(std::span<const Spot> corners, std::span<const std::size_t> ends) {
    // The normal by the areas of the three shadows, taken about a corner, since depths may be far from 0.
    double nx = 0, ny = 0, nz = 0;
    std::size_t begin = 0;
    for (const std::size_t end : ends) {
        for (std::size_t i = begin; i < end; ++i) {
            const Spot &a = corners[i], &b = corners[i + 1 < end ? i + 1 : begin], &o = corners[0];
            const double ax = a.x - o.x, ay = a.y - o.y, az = a.z - o.z, bx = b.x - o.x, by = b.y - o.y, bz = b.z - o.z;
            nx += ay * bz - az * by;
            ny += az * bx - ax * bz;
            nz += ax * by - ay * bx;
        }
        begin = end;
    }
    if (nz == 0 || !std::isfinite(nx / nz) || !std::isfinite(ny / nz))
        return false;
    plane_.perX = -nx / nz;
    plane_.perY = -ny / nz;
    const double back = kAreaDepth + std::min(std::max(std::fabs(plane_.perX), std::fabs(plane_.perY)), kSteepest);
    plane_.start = corners[0].z + (0.5 - corners[0].x) * plane_.perX + (0.5 - corners[0].y) * plane_.perY - back;
    return true;
}

void Raster::deepSpan(int first, int last, int y, std::uint32_t color) {
    double z = plane_.at(first, y);
    std::uint32_t* pixel = &at(first, y);
    float* depth = &depthAt(first, y);
    for (int x = first; x <= last; ++x, ++pixel, ++depth, z += plane_.perX)
        if (z + kEqual >= *depth) {
            *pixel = color;
            *depth = static_cast<float>(z);
        }
}

/// Pixels of a row in the same depth.
void Raster::deepRow(int first, int last, int y, double z, std::uint32_t color) {
    std::uint32_t* const pixels = &at(first, y);
    float* const depths = &depthAt(first, y);
    const auto own = static_cast<float>(z), farthest = static_cast<float>(z + kEqual);
    for (int i = 0; i <= last - first; ++i) {
        const bool seen = depths[i] <= farthest;
        pixels[i] = seen ? color : pixels[i];
        depths[i] = seen ? own : depths[i];
    }
}

void Raster::deepLine(int x0, int y0, int x1, int y1, double z0, double z1, std::uint32_t color) {
    const int dx = std::abs(x1 - x0), dy = std::abs(y1 - y0);
    if (dy == 0 && z0 == z1) // as in a plan seen from above
        return deepRow(std::min(x0, x1), std::max(x0, x1), y0, z0, color);
    const std::ptrdiff_t stepX = x0 < x1 ? 1 : -1, stepY = y0 < y1 ? stride_ : -std::ptrdiff_t{stride_};
    const bool flat = dx >= dy;
    const int longer = flat ? dx : dy, shorter = flat ? dy : dx;
    const std::ptrdiff_t along = flat ? stepX : stepY, aside = flat ? stepY : stepX;
    std::ptrdiff_t place = static_cast<std::ptrdiff_t>(y0) * stride_ + x0;
    int error = longer - 2 * shorter - 1;
    const double step = longer > 0 ? (z1 - z0) / longer : 0;
    double z = longer > 0 ? z0 : std::max(z0, z1);
    for (int i = 0; i <= longer; ++i, z += step) {
        // Without a branch: what lies in front of a line is anybody's guess.
        std::uint32_t& pixel = pixels_[place];
        float& depth = depths_[place];
        const std::uint32_t seen = 0U - static_cast<std::uint32_t>(z + kEqual >= depth);
        pixel ^= (pixel ^ color) & seen;
        const auto former = std::bit_cast<std::uint32_t>(depth);
        depth = std::bit_cast<float>(former ^ ((former ^ std::bit_cast<std::uint32_t>(static_cast<float>(z))) & seen));
        const int turns = error >> 31;
        error += (turns & 2 * longer) - 2 * shorter;
        place += along + (turns & aside);
    }
}

void Raster::shade(const std::array<Spot, 3>& corners, const std::array<double, 3>& light, std::uint32_t color) {
    if (lens_)
        return shadeThroughLens(corners, light, color);
    constexpr std::size_t kEnds[] = {3};
    const auto [high, low] =
        std::minmax_element(corners.begin(), corners.end(), [](const Spot& a, const Spot& b) { return a.y < b.y; });
    if (!depths_)
        return fill(corners, kEnds, lighted(color, light[0]));
    const Spot &a = corners[0], &b = corners[1], &c = corners[2];
    const double area = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
    if (!setPlane(corners, kEnds) || !std::isfinite(1 / area))
        return;
    const double top = std::max(std::ceil(high->y - 0.5), static_cast<double>(clip_.top));
    const double bottom = std::min(std::ceil(low->y - 0.5) - 1, static_cast<double>(clip_.bottom));
    if (!(top <= bottom))
        return;
    Ramp ramp;
    ramp.perX = ((light[1] - light[0]) * (c.y - a.y) - (light[2] - light[0]) * (b.y - a.y)) / area;
    ramp.perY = ((light[2] - light[0]) * (b.x - a.x) - (light[1] - light[0]) * (c.x - a.x)) / area;
    ramp.start = light[0] + (0.5 - a.x) * ramp.perX + (0.5 - a.y) * ramp.perY;
    const bool even = light[0] == light[1] && light[0] == light[2];
    const std::uint32_t flat = lighted(color, light[0]);
    for (int y = static_cast<int>(top); y <= static_cast<int>(bottom); ++y) {
        double from = right_, to = clip_.left;
        for (std::size_t i = 0; i < 3; ++i) {
            const Spot &p = corners[i], &q = corners[(i + 1) % 3];
            const double row = y + 0.5;
            if ((p.y <= row) == (q.y <= row))
                continue;
            const double x = p.x + (q.x - p.x) * ((row - p.y) / (q.y - p.y));
            from = std::min(from, x);
            to = std::max(to, x);
        }
        const double first = std::max(std::ceil(from - 0.5), static_cast<double>(clip_.left));
        const double last = std::min(std::ceil(to - 0.5) - 1, static_cast<double>(clip_.right));
        if (!(first <= last))
            continue;
        if (even) {
            deepSpan(static_cast<int>(first), static_cast<int>(last), y, flat);
            continue;
        }
        for (int x = static_cast<int>(first); x <= static_cast<int>(last); ++x)
            if (const double z = plane_.at(x, y); z + kEqual >= depthAt(x, y)) {
                at(x, y) = lighted(color, ramp.at(x, y));
                depthAt(x, y) = static_cast<float>(z);
            }
    }
}

} // namespace vndk::gs
