#include "gs/list_painter.h"

#include "gs/text_fonts.h"

#include <algorithm>
#include <cmath>

namespace vndk::gs {

namespace {

constexpr double kSmallestText = 2.5; // pixels; smaller text is a line
constexpr double kSmallestBlock = 1;  // pixels; what a smaller one shows is a dot

double squareOf(const Spot& v) { return v.x * v.x + v.y * v.y; }
double lengthOf(const Spot& v) { return std::sqrt(squareOf(v)); }
Spot sum(const Spot& a, const Spot& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
Spot times(const Spot& a, double factor) { return {a.x * factor, a.y * factor, a.z * factor}; }

/// How many straight pieces look round on a radius in pixels.
int computeSteps(double radius, double sweep) {
    constexpr double kTolerance = 0.2; // pixels between the arc and its chord
    constexpr int kMost = 4096;
    if (!(radius > kTolerance))
        return 1;
    const double share = kTolerance / radius, step = 2 * std::sqrt(2 * share) * (1 + share / 12); // 2 acos(1 - share)
    return std::clamp(static_cast<int>(std::min(std::ceil(std::fabs(sweep) / step), 1e6)), 4, kMost);
}

/// The same, at least; known beforehand for small circles.
int stepsFor(double radius, double sweep) {
    constexpr size_t kSmall = 8, kShares = 8;
    static const auto known = [] {
        std::array<int, kSmall * kShares> steps{};
        for (size_t i = 0; i < steps.size(); ++i)
            steps[i] = computeSteps(static_cast<double>(i + 1) / kShares, 2 * kAcGePi);
        return steps;
    }();
    if (radius < kSmall && sweep == 2 * kAcGePi)
        return known[static_cast<size_t>(radius * kShares)];
    return computeSteps(radius, sweep);
}

struct Turn {
    double cos = 1, sin = 0;
};

constexpr int kFewCorners = 64;

/// The corners of a whole circle of few, the first one again at the end. They are kept: plans are full of small ones.
const std::vector<Turn>& cornersOfCircle(int steps) {
    static std::array<std::vector<Turn>, kFewCorners + 1> known;
    std::vector<Turn>& corners = known[static_cast<size_t>(steps)];
    if (corners.empty())
        for (int i = 0; i <= steps; ++i) {
            const double angle = 2 * kAcGePi * (i % steps) / steps;
            corners.push_back({std::cos(angle), std::sin(angle)});
        }
    return corners;
}

/// The places of an arc from its start to its end. Each step turns the last one on, and rounding is kept from adding
/// up.
template <class Use>
void forEachTurn(const ArcShape& arc, int steps, Use&& use) {
    constexpr int kFreshly = 64;
    if (arc.start == 0 && arc.sweep == 2 * kAcGePi && steps <= kFewCorners) {
        for (const Turn& corner : cornersOfCircle(steps))
            use(corner);
        return;
    }
    const Turn step{std::cos(arc.sweep / steps), std::sin(arc.sweep / steps)};
    Turn at;
    for (int i = 0; i <= steps; ++i) {
        if (i % kFreshly == 0) {
            const double angle = arc.start + arc.sweep / steps * i;
            at = {std::cos(angle), std::sin(angle)};
        }
        use(at);
        at = {at.cos * step.cos - at.sin * step.sin, at.sin * step.cos + at.cos * step.sin};
    }
}

/// Which parts are drawn when not all are: the same ones each time, and fewer of them when fewer fit. Of very many,
/// runs stay together, for what isn't drawn mustn't be fetched from memory either.
class Thinning {
public:
    /// One of that many parts is kept.
    Thinning(double thinning, size_t count)
        : limit_(static_cast<uint64_t>(std::ldexp(1 / std::max(thinning, 1.0), kHashBits))),
          run_(std::clamp<size_t>(count / kRuns, 1, kLongestRun)) {}
    size_t run() const { return run_; }
    bool keepsRun(size_t number) const {
        constexpr uint32_t kShuffle = 2654435761;
        const uint32_t place = static_cast<uint32_t>(number) * kShuffle;
        return place < limit_;
    }
    bool keeps(size_t part) const { return keepsRun(part / run_); }

private:
    static constexpr int kHashBits = 32;
    static constexpr size_t kRuns = 4096, kLongestRun = 32;
    uint64_t limit_;
    size_t run_;
};

} // namespace

double ListPainter::margin() const {
    constexpr double kWidestLine = 5;
    // Marks of points reach beyond their places.
    return painting_.marks.mode != 0 ? painting_.viewportHeight : kWidestLine;
}

/// How many times as large things are seen there as the projector says; 0 before the eye.
double ListPainter::scaleAt(const Spot& place) const {
    return !lens() ? 1 : lens()->sees(place) ? lens()->scaleAt(place) : 0;
}

ListPainter::Level ListPainter::level(const DisplayList& list, const AcGeMatrix3d& toDevice,
                                      const Surroundings& around) {
    static const LinePattern kHighlight{{6, -4}, 10}; // pixels
    Level level{list, Projector(toDevice), {}};
    level.styles.reserve(list.looks.size());
    for (const Look& look : list.looks) {
        Style style = styles_.resolve(look, around);
        if (painting_.strokes != Painting::kAsTheyAre || raster_.isProbe())
            style.pattern = nullptr;
        if (painting_.strokes == Painting::kErased)
            style.color = painting_.background;
        if (const double scale = level.projector.scale(); painting_.strokes == Painting::kDashed && scale > 0) {
            style.pattern = &kHighlight;
            style.patternScale = 1 / scale;
        }
        style.thin = style.visible && !style.pattern && style.width <= 1 && !raster_.isProbe();
        level.styles.push_back(style);
    }
    return level;
}

void ListPainter::draw(const DisplayList& list, const AcGeMatrix3d& toDevice) {
    const Level whole = level(list, toDevice);
    for (size_t part = 0; part < list.parts.size(); ++part)
        drawPart(whole, static_cast<uint32_t>(part));
}

void ListPainter::draw(AcDbObjectId record, const AcGeMatrix3d& toDevice) {
    drawRecord(record, true, toDevice, styles_.outermost());
}

void ListPainter::drawRecord(AcDbObjectId record, bool definitions, const AcGeMatrix3d& toDevice,
                             const Surroundings& around) {
    constexpr size_t kMany = 256; // fewer are drawn without looking where they lie
    const Level whole = level(lists_.of(record, definitions), toDevice, around);
    const size_t count = whole.list.parts.size();
    const Thinning thinning(count > kMany ? painting_.thinning : 1, count);
    const PixelRect& clip = raster_.clip();
    const PictureBox seen{clip.left - margin(), clip.top - margin(), clip.right + 1 + margin(),
                          clip.bottom + 1 + margin()};
    if (count <= kMany || !isWorthFinding(record, definitions, toDevice, seen)) {
        for (size_t run = 0, begin = 0; begin < count; ++run, begin += thinning.run())
            if (thinning.keepsRun(run))
                for (size_t part = begin; part < std::min(begin + thinning.run(), count); ++part)
                    drawPart(whole, static_cast<uint32_t>(part));
        return;
    }
    // A drawing may be opened for a single look.
    const bool once = lists_.beginPicture(record, definitions);
    for (const uint32_t part : lists_.partsIn(record, definitions, BoxProjector(toDevice, lens()), seen, once))
        if (thinning.keeps(part))
            drawPart(whole, part);
}

/// Where most is seen, looking for it takes longer than trying all; and so does getting ready for it while the user
/// drags, or for a single picture of very much.
bool ListPainter::isWorthFinding(AcDbObjectId record, bool definitions, const AcGeMatrix3d& toDevice,
                                 const PictureBox& seen) {
    constexpr size_t kReadySoon = 200'000;
    constexpr double kSmallShare = 0.5;
    const PictureBox all = BoxProjector(toDevice, lens())(lists_.reachOf(record, definitions));
    if (!all.meets(seen) || all.common(seen).area() > all.area() * kSmallShare)
        return false;
    return lists_.canFind(record, definitions) ||
           (!painting_.hurried && lists_.of(record, definitions).parts.size() <= kReadySoon);
}

void ListPainter::drawPart(const Level& level, uint32_t part) {
    const DisplayList& list = level.list;
    const Part& drawn = list.parts[part];
    for (uint32_t i = drawn.first; i < drawn.first + drawn.count; ++i) {
        const Item& item = list.items[i];
        const Style& style = level.styles[item.look];
        if (item.kind == Item::Kind::Polyline && style.thin)
            drawThin(std::span(list.points).subspan(item.first, item.count), level.projector, style.color);
        else if (style.visible || (item.kind == Item::Kind::Block && !style.frozen))
            drawItem(list, item, level.projector, style);
    }
}

/// What most drawings consist of.
void ListPainter::drawThin(std::span<const AcGePoint3d> points, const Projector& projector, std::uint32_t color) {
    Spot last = projector(points[0]);
    if (points.size() == 1)
        return raster_.dot(last, color);
    for (const AcGePoint3d& point : points.subspan(1)) {
        const Spot next = projector(point);
        raster_.line(last, next, color);
        last = next;
    }
}

void ListPainter::drawItem(const DisplayList& list, const Item& item, const Projector& projector, const Style& style) {
    const auto points = [&](const auto& shape) { return std::span(list.points).subspan(shape.first, shape.count); };
    switch (item.kind) {
    case Item::Kind::Polyline:
        return Stroker(raster_, projector, style).draw(points(item));
    case Item::Kind::Polygon:
        return drawArea(points(item), std::array{item.count}, projector, style);
    case Item::Kind::Area:
        return drawArea(points(list.areas[item.first]), list.areas[item.first].ends, projector, style);
    case Item::Kind::Shell:
        return drawShell(points(list.shells[item.first]), list.shells[item.first], projector, style);
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

void ListPainter::drawArc(const ArcShape& arc, const Projector& projector, const Style& style) {
    constexpr double kSmallestRadius = 0.4; // pixels; what is smaller is a dot
    const Spot center = projector(arc.center), major = projector(arc.major), minor = projector(arc.minor);
    const double given = std::sqrt(std::max(squareOf(major), squareOf(minor)));
    // What comes near the eye is divided as finely as anything.
    const double scale = scaleAt(center), radius = scale > 0 ? given * scale : given * 1e3;
    if (radius < kSmallestRadius)
        return raster_.dot(center, style.color);
    const int steps = stepsFor(radius, arc.sweep);
    if (style.thin)
        return drawThinArc(arc, steps, center, major, minor, style.color);
    curve_.clear();
    forEachTurn(arc, steps,
                [&](const Turn& t) { curve_.push_back(arc.center + arc.major * t.cos + arc.minor * t.sin); });
    Stroker(raster_, projector, style).draw(curve_);
}

/// Turned in the picture itself, where its ellipse has been projected to.
void ListPainter::drawThinArc(const ArcShape& arc, int steps, const Spot& center, const Spot& major, const Spot& minor,
                              std::uint32_t color) {
    Spot last;
    bool begun = false;
    forEachTurn(arc, steps, [&](const Turn& t) {
        const Spot next = sum(center, sum(times(major, t.cos), times(minor, t.sin)));
        if (begun)
            raster_.line(last, next, color);
        begun = true;
        last = next;
    });
}

void ListPainter::drawText(const TextShape& text, const Projector& projector, const Style& style) {
    const Spot origin = projector(text.origin), x = projector(text.x), y = projector(text.y);
    const Spot end = sum(origin, times(x, text.width));
    const bool isPlain = !lens() && !raster_.isProbe() && painting_.strokes == Painting::kAsTheyAre;
    if (isPlain && squareOf(y) < 1 && squareOf(x) * text.width * text.width < 1) // far away nearly all are
        return raster_.dot(sum(origin, times(y, 0.5)), style.color);
    const PixelRect& clip = raster_.clip();
    const double margin = 2 * lengthOf(y) + lengthOf(x);
    if (!lens() &&
        (std::max(origin.x, end.x) + margin < clip.left || std::min(origin.x, end.x) - margin > clip.right + 1.0 ||
         std::max(origin.y, end.y) + margin < clip.top || std::min(origin.y, end.y) - margin > clip.bottom + 1.0))
        return raster_.noteOutside();
    if (raster_.isProbe() || painting_.strokes != Painting::kAsTheyAre) {
        const std::array frame = {origin, end, sum(end, y), sum(origin, y)};
        if (raster_.isProbe())
            return raster_.fill(frame, std::array{frame.size()}, style.color);
        const Stroker stroker(raster_, projector, style);
        for (size_t i = 0; i < frame.size(); ++i)
            stroker.dashed(frame[i], frame[(i + 1) % frame.size()]);
        return;
    }
    if (lengthOf(y) * scaleAt(origin) < kSmallestText || lengthOf(x) == 0) {
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
        const win32::GlyphOutline& glyph = outlineOf(letter, *text.font);
        outline_.clear();
        for (const win32::GlyphOutline::Point& p : glyph.points)
            outline_.push_back(sum(origin, sum(times(x, pen + p.x), times(y, p.y))));
        raster_.fillSmooth(outline_, glyph.ends, style.color);
        pen += glyph.advance;
    }
}

double ListPainter::markSize(const Projector& projector) const {
    const double size = painting_.marks.size, percent = size < 0 ? -size : 5;
    return size > 0 ? size * projector.scale() : painting_.viewportHeight * percent / 100;
}

void ListPainter::drawMark(const PointShape& point, const Projector& projector, const Style& style) {
    enum { kDot = 0, kNone = 1, kPlus = 2, kCross = 3, kTick = 4, kFigure = 7, kCircle = 32, kSquare = 64 };
    const Spot at = projector(point.position);
    const double half = std::min(markSize(projector) / 2, painting_.viewportHeight * 16);
    const auto line = [&](double x0, double y0, double x1, double y1) {
        const double c = std::cos(point.rotation), s = std::sin(point.rotation);
        const auto spot = [&](double x, double y) {
            return Spot{at.x + (x * c - y * s) * half, at.y - (x * s + y * c) * half, at.z};
        };
        raster_.line(spot(x0, y0), spot(x1, y1), style.color);
    };
    switch (painting_.marks.mode & kFigure) {
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
    if (painting_.marks.mode & kCircle)
        for (int i = 0, steps = stepsFor(half, 2 * kAcGePi); i < steps; ++i) {
            const double a = 2 * kAcGePi * i / steps, b = 2 * kAcGePi * (i + 1) / steps;
            line(std::cos(a), std::sin(a), std::cos(b), std::sin(b));
        }
    if (painting_.marks.mode & kSquare) {
        line(-1, -1, 1, -1);
        line(1, -1, 1, 1);
        line(1, 1, -1, 1);
        line(-1, 1, -1, -1);
    }
}

void ListPainter::drawEndless(const EndlessShape& line, const Projector& projector, const Style& style) {
    const Spot base = projector(line.base), along = projector(line.direction);
    // Into the depth a perspective shows lines, too.
    const double speed = lens() ? std::hypot(along.x, along.y, along.z) : lengthOf(along);
    if (!(speed > 0) || !std::isfinite(speed))
        return raster_.dot(base, style.color);
    const PixelRect& clip = raster_.clip();
    // Far enough to leave the picture from wherever the base lies.
    const double reach =
        std::fabs(base.x) + std::fabs(base.y) + 2.0 * (std::abs(clip.right) + std::abs(clip.bottom) + 2);
    constexpr double kToVanish = 1e4; // times as far, and the vanishing point is reached
    const Spot far = times(along, reach * (lens() ? kToVanish : 1) / speed);
    raster_.line(line.bothWays ? sum(base, times(far, -1)) : base, sum(base, far), style.color);
}

void ListPainter::drawBlock(const BlockShape& block, const Projector& projector, const Style& style) {
    // A block that holds itself isn't drawn within itself.
    if (path_.size() >= kDeepestNesting || std::find(path_.begin(), path_.end(), block.record) != path_.end())
        return;
    const AcGeMatrix3d toDevice = projector.matrix() * block.transform;
    if (const BlockList::Whole& whole = lists_.wholeOf(block.record); !whole.endless) {
        const PictureBox seen = BoxProjector(toDevice, lens())(whole.box);
        const PixelRect& clip = raster_.clip();
        if (!seen.meets(
                {clip.left - margin(), clip.top - margin(), clip.right + 1 + margin(), clip.bottom + 1 + margin()}))
            return raster_.noteOutside();
        if (painting_.marks.mode == 0 && seen.right - seen.left < kSmallestBlock &&
            seen.bottom - seen.top < kSmallestBlock)
            return style.visible ? drawSmall(whole.box, toDevice, style) : void();
    }
    if (referencesLeft_ <= 0)
        return;
    --referencesLeft_;
    path_.push_back(block.record);
    drawRecord(block.record, false, toDevice, style.inner);
    path_.pop_back();
}

void ListPainter::drawSmall(const AcDbExtents& box, const AcGeMatrix3d& toDevice, const Style& style) {
    const AcGePoint3d middle = box.minPoint() + (box.maxPoint() - box.minPoint()) * 0.5;
    raster_.dot(Projector(toDevice)(middle), style.color);
}

} // namespace vndk::gs
