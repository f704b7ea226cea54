// Drawing in perspective: everything is cut off before the eye and put where it is seen, then drawn as ever.
#include "gs/lens.h"

#include <algorithm>

namespace vndk::gs {

void Lens::appendContour(std::span<const Spot> corners, std::vector<Spot>& seen) const {
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const Spot &a = corners[i], &b = corners[i + 1 < corners.size() ? i + 1 : 0];
        if (sees(a))
            seen.push_back((*this)(a));
        if (sees(a) != sees(b))
            seen.push_back((*this)(between(a, b, cut(a, b))));
    }
}

template <class Draw>
void Raster::throughLens(Draw&& draw) {
    const Lens* const lens = lens_;
    setLens(nullptr);
    draw(*lens);
    setLens(lens);
}

void Raster::dotThroughLens(const Spot& at, std::uint32_t color) {
    throughLens([&](const Lens& lens) {
        if (lens.sees(at))
            dot(lens(at), color);
        else
            noteOutside();
    });
}

void Raster::lineThroughLens(Spot a, Spot b, std::uint32_t color, double behind) {
    throughLens([&](const Lens& lens) {
        if (!lens.sees(a) || !lens.sees(b))
            noteOutside();
        if (!lens.sees(a) && !lens.sees(b))
            return;
        if (!lens.sees(a))
            a = between(a, b, lens.cut(a, b));
        else if (!lens.sees(b))
            b = between(a, b, lens.cut(a, b));
        clipped(lens(a), lens(b), color, behind);
    });
}

void Raster::fillThroughLens(std::span<const Spot> corners, std::span<const std::size_t> ends, std::uint32_t color,
                             bool smooth) {
    throughLens([&](const Lens& lens) {
        std::vector<Spot> seen;
        std::vector<std::size_t> seenEnds;
        std::size_t begin = 0;
        for (const std::size_t end : ends) {
            lens.appendContour(corners.subspan(begin, end - begin), seen);
            seenEnds.push_back(seen.size());
            begin = end;
        }
        if (!std::all_of(corners.begin(), corners.end(), [&](const Spot& corner) { return lens.sees(corner); }))
            noteOutside();
        if (seen.empty())
            return;
        smooth ? fillSmooth(seen, seenEnds, color) : fill(seen, seenEnds, color);
    });
}

/// A corner before the eye is cut off, which leaves a triangle or two.
void Raster::shadeThroughLens(const std::array<Spot, 3>& corners, const std::array<double, 3>& light,
                              std::uint32_t color) {
    throughLens([&](const Lens& lens) {
        std::vector<Spot> seen;
        std::vector<double> seenLight;
        for (std::size_t i = 0; i < 3; ++i) {
            const std::size_t next = (i + 1) % 3;
            const Spot &a = corners[i], &b = corners[next];
            if (lens.sees(a)) {
                seen.push_back(lens(a));
                seenLight.push_back(light[i]);
            }
            if (lens.sees(a) != lens.sees(b)) {
                const double share = lens.cut(a, b);
                seen.push_back(lens(between(a, b, share)));
                seenLight.push_back(light[i] + (light[next] - light[i]) * share);
            }
        }
        for (std::size_t i = 2; i < seen.size(); ++i)
            shade({seen[0], seen[i - 1], seen[i]}, {seenLight[0], seenLight[i - 1], seenLight[i]}, color);
    });
}

} // namespace vndk::gs
