// Figures with the brush inside and the pen around.
#include "gdi/figure.h"
#include "gdi/painter.h"
#include "gdi/pen_paint.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

using namespace vndk::win32;

namespace {

bool badParameter() {
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
}

/// Pen and brush of a context at work on one figure.
class FigurePainter {
public:
    explicit FigurePainter(const DeviceContext& context)
        : context_(context), pen_(context), brush_(context, selectedBrush(context)) {}

    [[nodiscard]] const DeviceContext& context() const { return context_; }
    [[nodiscard]] PenPaint& pen() { return pen_; }
    [[nodiscard]] RECT bounds() const { return context_.reach().bounds(); }

    void fill(const Region& region) const { paintRegion(context_, region, brush_, context_.state.rop2); }
    void fill(const RECT& rect) const { paintRect(context_, rect, brush_, context_.state.rop2); }

    /// Fills an inside and draws a wide pen's edge; no pixel is painted by both.
    void fillAndEdge(const Region& inside, const Region& edge) const {
        fill(inside - edge);
        pen_.region(edge);
    }
    void fillAndStroke(const Region& inside, const std::vector<PointD>& edge) const {
        fillAndEdge(inside, pen_.nothing() ? Region() : strokeRegion(edge, pen_.width(), bounds()));
    }

    /// The rectangle of a figure as the pen needs it: smaller by one without a pen, and by the half of a wide pen that
    /// has to stay inside of the frame.
    [[nodiscard]] RECT box(int left, int top, int right, int bottom) const {
        RECT rect = normalized(context_.toSurface(RECT{left, top, right, bottom}));
        if (pen_.nothing()) {
            --rect.right;
            --rect.bottom;
        } else if (pen_.insideFrame() && pen_.width() > 1) {
            const int before = pen_.width() / 2;
            const int after = (pen_.width() - 1) / 2;
            rect = {rect.left + before, rect.top + before, rect.right - after, rect.bottom - after};
        }
        return rect;
    }

private:
    const DeviceContext& context_;
    PenPaint pen_;
    BrushPaint brush_;
};

void paintThinRectangle(FigurePainter& painter, const RECT& box) {
    painter.fill(RECT{box.left + 1, box.top + 1, box.right - 1, box.bottom - 1});
    const int right = box.right - 1;
    const int bottom = box.bottom - 1;
    if (right > box.left && bottom > box.top) {
        painter.pen().polyline(std::vector<POINT>{
            {box.left, box.top}, {right, box.top}, {right, bottom}, {box.left, bottom}, {box.left, box.top}});
        return;
    }
    // One row or one column only: there and not back again.
    const POINT end = right > box.left ? POINT{box.right, box.top} : POINT{box.left, box.bottom};
    painter.pen().polyline(std::vector<POINT>{{box.left, box.top}, end});
}

std::vector<PointD> cornersOf(const RECT& box) {
    const double right = box.right - 1;
    const double bottom = box.bottom - 1;
    const double left = box.left;
    const double top = box.top;
    return {{left, top}, {right, top}, {right, bottom}, {left, bottom}, {left, top}};
}

/// Quarters of an ellipse at the corners of a box, joined by straight lines; closed.
std::vector<PointD> roundedEdge(const RECT& box, SIZE ellipse) {
    const double spareX = box.right - box.left - ellipse.cx;
    const double spareY = box.bottom - box.top - ellipse.cy;
    const EllipseArc arc(RECT{box.left, box.top, box.left + ellipse.cx, box.top + ellipse.cy});
    std::vector<PointD> edge = arc.points();
    for (PointD& point : edge) {
        point.x += point.x > arc.center().x ? spareX : 0;
        point.y += point.y > arc.center().y ? spareY : 0;
    }
    edge.push_back(edge.front());
    return edge;
}

void paintRound(FigurePainter& painter, const RECT& box, SIZE ellipse) {
    ellipse = {std::min(std::abs(ellipse.cx), box.right - box.left),
               std::min(std::abs(ellipse.cy), box.bottom - box.top)};
    const auto shape = RoundShape::create(box, ellipse);
    if (shape && painter.pen().nothing()) {
        painter.fill(shape->region());
    } else if (shape && painter.pen().width() == 1) {
        painter.fill(shape->interior());
        painter.pen().pixels(shape->contour());
    } else if (const auto ring = shape ? roundRing(box, ellipse, painter.pen().width()) : std::nullopt) {
        painter.fillAndEdge(shape->region(), *ring);
    } else {
        const std::vector<PointD> edge = ellipse.cx > 0 && ellipse.cy > 0 ? roundedEdge(box, ellipse) : cornersOf(box);
        painter.fillAndStroke(fillOutlines({edge}, WINDING, painter.bounds()), edge);
    }
}

void paintOutlines(FigurePainter& painter, const std::vector<std::vector<POINT>>& polygons) {
    std::vector<Outline> outlines;
    for (const auto& polygon : polygons) {
        Outline outline;
        for (const POINT& corner : polygon)
            outline.push_back({double(corner.x), double(corner.y)});
        outlines.push_back(std::move(outline));
    }
    painter.fill(fillOutlines(outlines, painter.context().state.polyFillMode, painter.bounds()));
    for (std::vector<POINT> polygon : polygons) {
        polygon.push_back(polygon.front());
        painter.pen().polyline(polygon);
    }
}

enum class ArcEnds { open, center, chord };

/// What closes the arc of a pie or a chord: from its end back to its beginning.
std::vector<PointD> closing(const EllipseArc& arc, const std::vector<PointD>& edge, ArcEnds ends) {
    switch (ends) {
    case ArcEnds::center:
        return {edge.back(), arc.center(), edge.front()};
    case ArcEnds::chord:
        return {edge.back(), edge.front()};
    default:
        return {};
    }
}

std::vector<POINT> nearestPixels(const std::vector<PointD>& points) {
    std::vector<POINT> pixels(points.size());
    std::transform(points.begin(), points.end(), pixels.begin(), [](PointD point) {
        return POINT{static_cast<LONG>(std::lround(point.x)), static_cast<LONG>(std::lround(point.y))};
    });
    return pixels;
}

void drawArcThinly(FigurePainter& painter, const RECT& box, const EllipseArc& arc, const std::vector<PointD>& edge) {
    const auto shape = RoundShape::create(box, {box.right - box.left, box.bottom - box.top});
    if (!shape) {
        painter.pen().polyline(nearestPixels(edge));
        return;
    }
    std::vector<POINT> pixels;
    for (const POINT& pixel : shape->contour())
        if (arc.contains(pixel))
            pixels.push_back(pixel);
    painter.pen().pixels(pixels);
}

void paintArc(FigurePainter& painter, const RECT& box, const EllipseArc& arc, ArcEnds ends) {
    std::vector<PointD> edge = arc.points();
    const std::vector<PointD> back = closing(arc, edge, ends);
    if (ends != ArcEnds::open) {
        Outline outline = edge;
        outline.insert(outline.end(), back.begin(), back.end());
        painter.fill(fillOutlines({outline}, WINDING, painter.bounds()));
    }
    if (painter.pen().width() == 1) {
        drawArcThinly(painter, box, arc, edge);
        painter.pen().polyline(nearestPixels(back));
    } else {
        edge.insert(edge.end(), back.begin(), back.end());
        painter.pen().stroke(edge);
    }
}

struct Rays {
    int startX;
    int startY;
    int endX;
    int endY;
};

BOOL arcFigure(HDC dc, const RECT& rect, const Rays& rays, ArcEnds ends) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    FigurePainter painter(*context);
    const RECT box = painter.box(rect.left, rect.top, rect.right, rect.bottom);
    if (isEmptyRect(box))
        return TRUE;
    POINT start = context->toSurface(POINT{rays.startX, rays.startY});
    POINT end = context->toSurface(POINT{rays.endX, rays.endY});
    if (context->state.arcDirection == AD_CLOCKWISE)
        std::swap(start, end);
    paintArc(painter, box, EllipseArc(box, start, end), ends);
    return TRUE;
}

} // namespace

BOOL Rectangle(HDC dc, int left, int top, int right, int bottom) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    FigurePainter painter(*context);
    const RECT box = painter.box(left, top, right, bottom);
    if (isEmptyRect(box))
        return TRUE;
    if (painter.pen().nothing())
        painter.fill(box);
    else if (painter.pen().width() == 1)
        paintThinRectangle(painter, box);
    else
        painter.fillAndStroke(Region(box) & Region(painter.bounds()), cornersOf(box));
    return TRUE;
}

BOOL RoundRect(HDC dc, int left, int top, int right, int bottom, int ellipseWidth, int ellipseHeight) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    FigurePainter painter(*context);
    const RECT box = painter.box(left, top, right, bottom);
    if (!isEmptyRect(box))
        paintRound(painter, box, {limited(ellipseWidth), limited(ellipseHeight)});
    return TRUE;
}

BOOL Ellipse(HDC dc, int left, int top, int right, int bottom) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    FigurePainter painter(*context);
    const RECT box = painter.box(left, top, right, bottom);
    if (!isEmptyRect(box))
        paintRound(painter, box, {box.right - box.left, box.bottom - box.top});
    return TRUE;
}

BOOL Polygon(HDC dc, const POINT* points, int count) { return PolyPolygon(dc, points, &count, 1); }

BOOL PolyPolygon(HDC dc, const POINT* points, const INT* counts, int polygons) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    if (points == nullptr || counts == nullptr || polygons < 1)
        return badParameter();
    std::vector<std::vector<POINT>> outlines;
    for (int index = 0; index < polygons; ++index) {
        if (counts[index] < 2)
            return badParameter();
        std::vector<POINT> outline;
        for (int corner = 0; corner < counts[index]; ++corner, ++points)
            outline.push_back(context->toSurface(*points));
        outlines.push_back(std::move(outline));
    }
    FigurePainter painter(*context);
    paintOutlines(painter, outlines);
    return TRUE;
}

BOOL Arc(HDC dc, int left, int top, int right, int bottom, int startX, int startY, int endX, int endY) {
    return arcFigure(dc, {left, top, right, bottom}, {startX, startY, endX, endY}, ArcEnds::open);
}

BOOL Pie(HDC dc, int left, int top, int right, int bottom, int startX, int startY, int endX, int endY) {
    return arcFigure(dc, {left, top, right, bottom}, {startX, startY, endX, endY}, ArcEnds::center);
}

BOOL Chord(HDC dc, int left, int top, int right, int bottom, int startX, int startY, int endX, int endY) {
    return arcFigure(dc, {left, top, right, bottom}, {startX, startY, endX, endY}, ArcEnds::chord);
}
