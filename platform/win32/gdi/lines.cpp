// The current position, and lines drawn with the pen.
#include "gdi/pen_paint.h"

#include <array>
#include <utility>
#include <vector>

using namespace vndk::win32;

namespace {

bool badParameter() {
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
}

std::vector<POINT> onSurface(const DeviceContext& context, std::span<const POINT> points) {
    std::vector<POINT> result;
    result.reserve(points.size() + 1);
    for (const POINT& point : points)
        result.push_back(context.toSurface(point));
    return result;
}

BOOL drawLines(HDC dc, const POINT* points, std::int64_t count) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    if (points == nullptr || count < 2)
        return badParameter();
    PenPaint(*context).polyline(onSurface(*context, {points, static_cast<std::size_t>(count)}));
    return TRUE;
}

} // namespace

BOOL MoveToEx(HDC dc, int x, int y, POINT* former) {
    DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    const POINT before = std::exchange(context->state.position, POINT{x, y});
    if (former != nullptr)
        *former = before;
    return TRUE;
}

BOOL GetCurrentPositionEx(HDC dc, POINT* position) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    if (position == nullptr)
        return badParameter();
    *position = context->state.position;
    return TRUE;
}

BOOL LineTo(HDC dc, int x, int y) {
    DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    const POINT from = context->toSurface(std::exchange(context->state.position, POINT{x, y}));
    const POINT to = context->toSurface(POINT{x, y});
    if (from.x != to.x || from.y != to.y)
        PenPaint(*context).polyline(std::array{from, to});
    return TRUE;
}

BOOL Polyline(HDC dc, const POINT* points, int count) { return drawLines(dc, points, count); }

BOOL PolylineTo(HDC dc, const POINT* points, DWORD count) {
    DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    if (points == nullptr || count == 0)
        return badParameter();
    std::vector<POINT> all = onSurface(*context, {points, count});
    all.insert(all.begin(), context->toSurface(context->state.position));
    PenPaint(*context).polyline(all);
    context->state.position = points[count - 1];
    return TRUE;
}

BOOL PolyPolyline(HDC dc, const POINT* points, const DWORD* counts, DWORD polylines) {
    if (requireContext(dc) == nullptr)
        return FALSE;
    if (points == nullptr || counts == nullptr || polylines == 0)
        return badParameter();
    for (DWORD index = 0; index < polylines; ++index)
        if (counts[index] < 2)
            return badParameter();
    for (DWORD index = 0; index < polylines; points += counts[index], ++index)
        drawLines(dc, points, counts[index]);
    return TRUE;
}
