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

/// Whether a face bends over to its neighbours, whose mean normal is known, rather than meet them at an edge.
bool isSmooth(const AcGeVector3d& normal, const AcGeVector3d& mean) {
    constexpr double kSharpest = 0.766; // the cosine of 40 degrees
    return std::fabs(normal.dotProduct(mean)) > kSharpest * normal.length() * mean.length();
}

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
        drawShellEdges(points, shell, projector, style);
}

void ListPainter::drawFaces(const ShellShape& shell, const Projector& projector, const Style& style) {
    const bool hiding = painting_.surfaces == Painting::kHiding;
    for (const AcGiTriangle& face : shell.faces) {
        const std::array corners = {outline_[face.corners[0]], outline_[face.corners[1]], outline_[face.corners[2]]};
        std::array<double, 3> light{1, 1, 1};
        if (!hiding) {
            const AcGeVector3d normal = normalOf(corners[0], corners[1], corners[2]);
            light.fill(lightOn(normal));
            if (painting_.surfaces == Painting::kSmooth)
                for (size_t i = 0; i < light.size(); ++i)
                    if (const AcGeVector3d mean = projector.matrix() * shell.normals[face.corners[i]];
                        isSmooth(normal, mean))
                        light[i] = lightOn(mean);
        }
        raster_.shade(corners, light, hiding ? painting_.background : style.color);
    }
}

void ListPainter::drawShellEdges(std::span<const AcGePoint3d> points, const ShellShape& shell,
                                 const Projector& projector, const Style& style) {
    const bool shaded = painting_.surfaces == Painting::kFlat || painting_.surfaces == Painting::kSmooth;
    Style edges = style;
    if (raster_.hasDepths() && shaded)
        edges.color = darker(style.color);
    const Stroker stroker(raster_, projector, edges);
    for (const AcGiTriangle& face : shell.faces)
        for (unsigned i = 0; i < 3; ++i)
            if (face.edges >> i & 1)
                stroker.draw(std::array{points[face.corners[i]], points[face.corners[(i + 1) % 3]]});
}

} // namespace vndk::gs
