// Edges in the classic look, and the focus rectangle.
#include "gdi/draw_edge.h"

#include "gdi/painter.h"
#include "win32/draw.h"

#include <optional>

namespace vndk::win32 {

namespace {

/// System colours of the two sides that light falls on, and of the two in the shadow.
struct EdgeColors {
    int topLeft;
    int bottomRight;
};

std::optional<EdgeColors> outerColors(UINT edge, UINT flags) {
    const UINT outer = edge & BDR_OUTER;
    if (outer == 0 || outer == BDR_OUTER)
        return {};
    if ((flags & BF_MONO) != 0)
        return EdgeColors{COLOR_WINDOWFRAME, COLOR_WINDOWFRAME};
    if ((flags & BF_FLAT) != 0)
        return EdgeColors{COLOR_3DSHADOW, COLOR_3DSHADOW};
    const bool soft = (flags & BF_SOFT) != 0;
    if (outer == BDR_RAISEDOUTER)
        return EdgeColors{soft ? COLOR_3DHILIGHT : COLOR_3DLIGHT, COLOR_3DDKSHADOW};
    return EdgeColors{soft ? COLOR_3DDKSHADOW : COLOR_3DSHADOW, COLOR_3DHILIGHT};
}

std::optional<EdgeColors> innerColors(UINT edge, UINT flags) {
    const UINT inner = edge & BDR_INNER;
    if (inner == 0 || inner == BDR_INNER)
        return {};
    if ((flags & BF_MONO) != 0)
        return EdgeColors{COLOR_WINDOW, COLOR_WINDOW};
    if ((flags & BF_FLAT) != 0)
        return EdgeColors{COLOR_3DFACE, COLOR_3DFACE};
    const bool soft = (flags & BF_SOFT) != 0;
    if (inner == BDR_RAISEDINNER)
        return EdgeColors{soft ? COLOR_3DLIGHT : COLOR_3DHILIGHT, COLOR_3DSHADOW};
    return EdgeColors{soft ? COLOR_3DSHADOW : COLOR_3DDKSHADOW, COLOR_3DLIGHT};
}

/// Lines along the sides asked for, which are then taken off the rectangle. Shadow wins at the corners.
void paintSides(DeviceContext& dc, RECT& rect, const EdgeColors& colors, UINT sides) {
    const std::uint32_t light = dc.pixelOf(GetSysColor(colors.topLeft));
    const std::uint32_t shadow = dc.pixelOf(GetSysColor(colors.bottomRight));
    const auto line = [&](const RECT& where, std::uint32_t pixel) { paintRect(dc, intersected(where, rect), pixel); };
    if ((sides & BF_LEFT) != 0)
        line({rect.left, rect.top, rect.left + 1, rect.bottom}, light);
    if ((sides & BF_TOP) != 0)
        line({rect.left, rect.top, rect.right, rect.top + 1}, light);
    if ((sides & BF_RIGHT) != 0)
        line({rect.right - 1, rect.top, rect.right, rect.bottom}, shadow);
    if ((sides & BF_BOTTOM) != 0)
        line({rect.left, rect.bottom - 1, rect.right, rect.bottom}, shadow);
    rect.left += (sides & BF_LEFT) != 0 ? 1 : 0;
    rect.top += (sides & BF_TOP) != 0 ? 1 : 0;
    rect.right -= (sides & BF_RIGHT) != 0 ? 1 : 0;
    rect.bottom -= (sides & BF_BOTTOM) != 0 ? 1 : 0;
}

/// Turns every second pixel of the rectangle (surface) into its opposite.
void invertDots(DeviceContext& dc, const RECT& rect) {
    constexpr std::uint32_t colorBits = 0x00FFFFFF;
    const POINT origin{dc.origin().x + dc.state.brushOrigin.x, dc.origin().y + dc.state.brushOrigin.y};
    eachVisible(dc, rect, [&](const RECT& piece) {
        for (int y = piece.top; y < piece.bottom; ++y) {
            for (int x = piece.left; x < piece.right; ++x) {
                if (((x - origin.x + y - origin.y) & 1) == 0)
                    continue;
                std::uint32_t pixel = 0;
                loadPixels(dc.surface(), x, y, 1, &pixel);
                pixel ^= colorBits;
                storePixels(dc.surface(), x, y, 1, &pixel);
            }
        }
    });
}

} // namespace

RECT paintEdge(DeviceContext& dc, const RECT& rect, UINT edge, UINT flags) {
    RECT inside = rect;
    if (const auto colors = outerColors(edge, flags))
        paintSides(dc, inside, *colors, flags);
    if (const auto colors = innerColors(edge, flags))
        paintSides(dc, inside, *colors, flags);
    if ((flags & BF_MIDDLE) != 0)
        paintRect(dc, inside, dc.pixelOf(GetSysColor((flags & BF_MONO) != 0 ? COLOR_WINDOW : COLOR_3DFACE)));
    return inside;
}

} // namespace vndk::win32

using namespace vndk::win32;

BOOL DrawEdge(HDC dc, RECT* rect, UINT edge, UINT flags) {
    DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    if (rect == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const RECT before = context->toSurface(*rect);
    const RECT inside = paintEdge(*context, before, edge, flags);
    if ((flags & BF_ADJUST) != 0)
        SetRect(rect, rect->left + inside.left - before.left, rect->top + inside.top - before.top,
                rect->right + inside.right - before.right, rect->bottom + inside.bottom - before.bottom);
    return TRUE;
}

BOOL DrawFocusRect(HDC dc, const RECT* rect) {
    DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    if (rect == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const RECT frame = context->toSurface(*rect);
    if (isEmptyRect(frame))
        return TRUE;
    // No pixel is inverted twice, however thin the rectangle is.
    invertDots(*context, {frame.left, frame.top, frame.right, frame.top + 1});
    if (frame.bottom - frame.top > 1)
        invertDots(*context, {frame.left, frame.bottom - 1, frame.right, frame.bottom});
    invertDots(*context, {frame.left, frame.top + 1, frame.left + 1, frame.bottom - 1});
    if (frame.right - frame.left > 1)
        invertDots(*context, {frame.right - 1, frame.top + 1, frame.right, frame.bottom - 1});
    return TRUE;
}
