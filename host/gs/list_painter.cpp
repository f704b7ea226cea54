#include "gs/list_painter.h"

#include "win32/glyph_outline.h"

#include <algorithm>
#include <cmath>

namespace vndk::gs {

namespace {

constexpr double kSmallestText = 2.5; // pixels; smaller text is a line
constexpr double kSmallestBlock = 1;  // pixels; what a smaller one shows is a dot

double lengthOf(const Spot& v) { return std::hypot(v.x, v.y); }
Spot sum(const Spot& a, const Spot& b) { return {a.x + b.x, a.y + b.y}; }
Spot times(const Spot& a, double factor) { return {a.x * factor, a.y * factor}; }

/// How many straight pieces look round on a radius in pixels.
int stepsFor(double radius, double sweep) {
    constexpr double kTolerance = 0.2; // pixels between the arc and its chord
    constexpr int kMost = 4096;
    if (!(radius > kTolerance))
        return 1;
    const double step = 2 * std::acos(1 - kTolerance / radius);
    return std::clamp(static_cast<int>(std::min(std::ceil(std::fabs(sweep) / step), 1e6)), 4, kMost);
}

} // namespace

void ListPainter::draw(const DisplayList& list, const AcGeMatrix3d& toDevice, const Surroundings& around) {
    const Projector projector(toDevice);
    std::vector<Style> styles;
    styles.reserve(list.looks.size());
    for (const Look& look : list.looks)
        styles.push_back(styles_.resolve(look, around));
    for (const Item& item : list.items)
        if (const Style& style = styles[item.look]; style.visible || (item.kind == Item::Kind::Block && !style.frozen))
            drawItem(list, item, projector, style);
}

void ListPainter::drawItem(const DisplayList& list, const Item& item, const Projector& projector, const Style& style) {
    const auto points = [&] { return std::span(list.points).subspan(item.first, item.count); };
    switch (item.kind) {
    case Item::Kind::Polyline:
        return Stroker(raster_, projector, style).draw(points());
    case Item::Kind::Polygon:
        return drawPolygon(points(), projector, style);
    case Item::Kind::Area: {
        const AreaShape& area = list.areas[item.first];
        return drawArea(std::span(list.points).subspan(area.first, area.count), area.ends, projector, style);
    }
    case Item::Kind::Shell: {
        const ShellShape& shell = list.shells[item.first];
        return drawShellEdges(std::span(list.points).subspan(shell.first, shell.count), shell, projector, style);
    }
    case Item::Kind::Arc:
        return drawArc(list.arcs[item.first], projector, style);
    case Item::Kind::Text:
        return drawText(list.texts[item.first], projector, style);
    case Item::Kind::Point:
        return drawMark(list.marks[item.first], projector, style);
    case Item::Kind::Endless:
        return drawEndless(list.endless[item.first], projector, style);
    case Item::Kind::Block:
        return drawBlock(list.blocks[item.first], projector, style);
    }
}

void ListPainter::drawPolygon(std::span<const AcGePoint3d> corners, const Projector& projector, const Style& style) {
    drawArea(corners, std::array{static_cast<uint32_t>(corners.size())}, projector, style);
}

/// The edge is drawn, too, so that an area thinner than a pixel is seen.
void ListPainter::drawArea(std::span<const AcGePoint3d> corners, std::span<const uint32_t> ends,
                           const Projector& projector, const Style& style) {
    outline_.clear();
    for (const AcGePoint3d& corner : corners)
        outline_.push_back(projector(corner));
    contours_.assign(ends.begin(), ends.end());
    raster_.fill(outline_, contours_, style.color);
    size_t begin = 0;
    for (const size_t end : contours_) {
        for (size_t i = begin; i < end; ++i)
            raster_.line(outline_[i], outline_[i + 1 < end ? i + 1 : begin], style.color);
        begin = end;
    }
}

void ListPainter::drawShellEdges(std::span<const AcGePoint3d> points, const ShellShape& shell,
                                 const Projector& projector, const Style& style) {
    for (const AcGiTriangle& face : shell.faces)
        for (unsigned i = 0; i < 3; ++i)
            if (face.edges >> i & 1)
                raster_.line(projector(points[face.corners[i]]), projector(points[face.corners[(i + 1) % 3]]),
                             style.color);
}

void ListPainter::drawArc(const ArcShape& arc, const Projector& projector, const Style& style) {
    const double radius = std::max(lengthOf(projector(arc.major)), lengthOf(projector(arc.minor)));
    const int steps = stepsFor(radius, arc.sweep);
    curve_.clear();
    for (int i = 0; i <= steps; ++i) {
        const double u = arc.start + arc.sweep * i / steps;
        curve_.push_back(arc.center + arc.major * std::cos(u) + arc.minor * std::sin(u));
    }
    Stroker(raster_, projector, style).draw(curve_);
}

void ListPainter::drawText(const TextShape& text, const Projector& projector, const Style& style) {
    const Spot origin = projector(text.origin), x = projector(text.x), y = projector(text.y);
    const Spot end = sum(origin, times(x, text.width));
    const PixelRect& clip = raster_.clip();
    const double margin = 2 * lengthOf(y) + lengthOf(x);
    if (std::max(origin.x, end.x) + margin < clip.left || std::min(origin.x, end.x) - margin > clip.right + 1.0 ||
        std::max(origin.y, end.y) + margin < clip.top || std::min(origin.y, end.y) - margin > clip.bottom + 1.0)
        return;
    if (lengthOf(y) < kSmallestText || lengthOf(x) == 0) {
        const Spot up = times(y, 0.5);
        return raster_.line(sum(origin, up), sum(end, up), style.color);
    }
    if (text.underlined)
        raster_.line(sum(origin, times(y, -0.2)), sum(end, times(y, -0.2)), style.color);
    if (text.overlined)
        raster_.line(sum(origin, times(y, 1.2)), sum(end, times(y, 1.2)), style.color);
    drawLetters(text, origin, x, y, style);
}

void ListPainter::drawLetters(const TextShape& text, const Spot& origin, const Spot& x, const Spot& y,
                              const Style& style) {
    double pen = 0;
    for (const char letter : text.letters) {
        const win32::GlyphOutline& glyph = win32::glyphOutline(*text.font, letter);
        outline_.clear();
        for (const win32::GlyphOutline::Point& p : glyph.points)
            outline_.push_back(sum(origin, sum(times(x, pen + p.x), times(y, p.y))));
        raster_.fillSmooth(outline_, glyph.ends, style.color);
        pen += glyph.advance;
    }
}

void ListPainter::drawMark(const PointShape& point, const Projector& projector, const Style& style) {
    enum { kDot = 0, kNone = 1, kPlus = 2, kCross = 3, kTick = 4, kFigure = 7, kCircle = 32, kSquare = 64 };
    const Spot at = projector(point.position);
    const double percent = marks_.size < 0 ? -marks_.size : 5;
    const double size = marks_.size > 0 ? marks_.size * projector.scale() : viewportHeight_ * percent / 100;
    const double half = std::min(size / 2, viewportHeight_ * 16);
    const auto line = [&](double x0, double y0, double x1, double y1) {
        const double c = std::cos(point.rotation), s = std::sin(point.rotation);
        const auto spot = [&](double x, double y) {
            return Spot{at.x + (x * c - y * s) * half, at.y - (x * s + y * c) * half};
        };
        raster_.line(spot(x0, y0), spot(x1, y1), style.color);
    };
    switch (marks_.mode & kFigure) {
    case kDot:
        raster_.dot(at, style.color);
        break;
    case kPlus:
        line(-2, 0, 2, 0);
        line(0, -2, 0, 2);
        break;
    case kCross:
        line(-2, -2, 2, 2);
        line(-2, 2, 2, -2);
        break;
    case kTick:
        line(0, 0, 0, 1);
        break;
    default:
        break;
    }
    if (marks_.mode & kCircle)
        for (int i = 0, steps = stepsFor(half, 2 * kAcGePi); i < steps; ++i) {
            const double a = 2 * kAcGePi * i / steps, b = 2 * kAcGePi * (i + 1) / steps;
            line(std::cos(a), std::sin(a), std::cos(b), std::sin(b));
        }
    if (marks_.mode & kSquare) {
        line(-1, -1, 1, -1);
        line(1, -1, 1, 1);
        line(1, 1, -1, 1);
        line(-1, 1, -1, -1);
    }
}

void ListPainter::drawEndless(const EndlessShape& line, const Projector& projector, const Style& style) {
    const Spot base = projector(line.base), along = projector(line.direction);
    const double speed = lengthOf(along);
    if (!(speed > 0) || !std::isfinite(speed))
        return raster_.dot(base, style.color);
    const PixelRect& clip = raster_.clip();
    // Far enough to leave the picture from wherever the base lies.
    const double reach =
        std::fabs(base.x) + std::fabs(base.y) + 2.0 * (std::abs(clip.right) + std::abs(clip.bottom) + 2);
    const Spot far = times(along, reach / speed);
    raster_.line(line.bothWays ? sum(base, times(far, -1)) : base, sum(base, far), style.color);
}

void ListPainter::drawBlock(const BlockShape& block, const Projector& projector, const Style& style) {
    // A block that holds itself isn't drawn within itself.
    if (path_.size() >= kDeepestNesting || std::find(path_.begin(), path_.end(), block.record) != path_.end())
        return;
    const AcGeMatrix3d toDevice = projector.matrix() * block.transform;
    if (!lists_.isEndless(block.record)) {
        const AcDbExtents& box = lists_.boxOf(block.record);
        if (box.isEmpty())
            return;
        AcDbExtents seen = box;
        seen.transformBy(toDevice);
        const AcGePoint3d &low = seen.minPoint(), &high = seen.maxPoint();
        // Marks of points reach beyond their places.
        const double margin = marks_.mode != 0 ? viewportHeight_ : 1;
        const PixelRect& clip = raster_.clip();
        if (low.x > clip.right + 1 + margin || high.x < clip.left - margin || low.y > clip.bottom + 1 + margin ||
            high.y < clip.top - margin)
            return;
        if (marks_.mode == 0 && high.x - low.x < kSmallestBlock && high.y - low.y < kSmallestBlock)
            return style.visible ? raster_.dot({low.x, low.y}, style.color) : void();
    }
    if (referencesLeft_ <= 0)
        return;
    --referencesLeft_;
    path_.push_back(block.record);
    draw(lists_.of(block.record), toDevice, style.inner);
    path_.pop_back();
}

} // namespace vndk::gs
