// Areas and surfaces, filled, hiding or shaded.
#include "gs/list_painter.h"

#include <algorithm>
#include <cmath>

namespace vndk::gs {

namespace {

/// The light comes over the viewer's left shoulder. What faces the viewer has its own colour.
double lightOn(const AcGeVector3d& normal) {
    constexpr double kAround = 0.3, kDirect = 0.8;
    static const AcGeVector3d kLight = AcGeVector3d(-0.35, -0.35, 1).normal(); // pixels grow downward
    const double length = normal.length();
    if (!(length > 0) || !std::isfinite(length))
        return kAround;
    // Surfaces have no back: what is seen of them faces the viewer.
    const double share = normal.dotProduct(kLight) / (normal.z < 0 ? -length : length);
    return std::min(kAround + kDirect * std::max(share, 0.0), 1.0);
}

AcGeVector3d from(const Spot& a, const Spot& b) { return {b.x - a.x, b.y - a.y, b.z - a.z}; }

AcGeVector3d normalOf(const Spot& a, const Spot& b, const Spot& c) { return from(a, b).crossProduct(from(a, c)); }

/// Edges beside their own colour.
std::uint32_t darker(std::uint32_t color) { return (color & 0xFF000000) | (color >> 1 & 0x7F7F7F); }

} // namespace

/// The edge is drawn, too, so that an area thinner than a pixel is seen.
void ListPainter::drawArea(std::span<const AcGePoint3d> corners, std::span<const uint32_t> ends,
                           const Projector& projector, const Style& style) {
    outline_.clear();
    for (const AcGePoint3d& corner : corners)
        outline_.push_back(projector(corner));
    contours_.assign(ends.begin(), ends.end());
    const bool outlines = painting_.strokes != Painting::kAsTheyAre;
    if (painting_.fills && !outlines)
        raster_.fill(outline_, contours_, style.color);
    const Stroker stroker(raster_, projector, style);
    size_t begin = 0;
    for (const size_t end : contours_) {
        for (size_t i = begin; i < end; ++i) {
            const Spot &a = outline_[i], &b = outline_[i + 1 < end ? i + 1 : begin];
            if (outlines)
                stroker.dashed(a, b);
            else
                raster_.edge(a, b, style.color);
        }
        begin = end;
    }
}

void ListPainter::drawShell(std::span<const AcGePoint3d> points, const ShellShape& shell, const Projector& projector,
                            const Style& style) {
    outline_.clear();
    for (const AcGePoint3d& point : points)
        outline_.push_back(projector(point));
    if (raster_.hasDepths() && painting_.surfaces != Painting::kEdgesOnly)
        drawFaces(shell, projector, style);
    if (!raster_.hasDepths() || painting_.edges)
        drawShellEdges(shell, style);
}

void ListPainter::drawFaces(const ShellShape& shell, const Projector& projector, const Style& style) {
    const bool hiding = painting_.surfaces == Painting::kHiding;
    const bool smooth = painting_.surfaces == Painting::kSmooth && !shell.normals.empty();
    for (const AcGiTriangle& face : shell.faces) {
        const std::array corners = {outline_[face.corners[0]], outline_[face.corners[1]], outline_[face.corners[2]]};
        std::array<double, 3> light{1, 1, 1};
        if (smooth)
            for (size_t i = 0; i < light.size(); ++i)
                light[i] = lightOn(projector.matrix() * shell.normals[face.corners[i]]);
        else if (!hiding)
            light.fill(lightOn(normalOf(corners[0], corners[1], corners[2])));
        raster_.shade(corners, light, hiding ? painting_.background : style.color);
    }
}

void ListPainter::drawShellEdges(const ShellShape& shell, const Style& style) {
    const bool shaded = painting_.surfaces == Painting::kFlat || painting_.surfaces == Painting::kSmooth;
    const std::uint32_t color = raster_.hasDepths() && shaded ? darker(style.color) : style.color;
    for (const AcGiTriangle& face : shell.faces)
        for (unsigned i = 0; i < 3; ++i)
            if (face.edges >> i & 1)
                raster_.line(outline_[face.corners[i]], outline_[face.corners[(i + 1) % 3]], color);
}

} // namespace vndk::gs
