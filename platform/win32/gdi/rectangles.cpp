// Arithmetic with rectangles.
#include "win32/draw.h"

#include <algorithm>

namespace {

/// Wraps, where signed numbers must not.
LONG sum(LONG a, int b) { return static_cast<LONG>(static_cast<ULONG>(a) + static_cast<ULONG>(b)); }
LONG difference(LONG a, int b) { return static_cast<LONG>(static_cast<ULONG>(a) - static_cast<ULONG>(b)); }

bool empty(const RECT& rect) { return rect.left >= rect.right || rect.top >= rect.bottom; }

} // namespace

BOOL SetRect(RECT* rect, int left, int top, int right, int bottom) {
    if (rect == nullptr)
        return FALSE;
    *rect = {left, top, right, bottom};
    return TRUE;
}

BOOL SetRectEmpty(RECT* rect) { return SetRect(rect, 0, 0, 0, 0); }

BOOL CopyRect(RECT* target, const RECT* source) {
    if (target == nullptr || source == nullptr)
        return FALSE;
    *target = *source;
    return TRUE;
}

BOOL InflateRect(RECT* rect, int dx, int dy) {
    if (rect == nullptr)
        return FALSE;
    *rect = {difference(rect->left, dx), difference(rect->top, dy), sum(rect->right, dx), sum(rect->bottom, dy)};
    return TRUE;
}

BOOL OffsetRect(RECT* rect, int dx, int dy) {
    if (rect == nullptr)
        return FALSE;
    *rect = {sum(rect->left, dx), sum(rect->top, dy), sum(rect->right, dx), sum(rect->bottom, dy)};
    return TRUE;
}

BOOL IntersectRect(RECT* target, const RECT* first, const RECT* second) {
    if (target == nullptr || first == nullptr || second == nullptr)
        return FALSE;
    const RECT common{std::max(first->left, second->left), std::max(first->top, second->top),
                      std::min(first->right, second->right), std::min(first->bottom, second->bottom)};
    if (empty(*first) || empty(*second) || empty(common)) {
        SetRectEmpty(target);
        return FALSE;
    }
    *target = common;
    return TRUE;
}

BOOL UnionRect(RECT* target, const RECT* first, const RECT* second) {
    if (target == nullptr || first == nullptr || second == nullptr)
        return FALSE;
    if (empty(*first) && empty(*second)) {
        SetRectEmpty(target);
        return FALSE;
    }
    if (empty(*first))
        return CopyRect(target, second);
    if (empty(*second))
        return CopyRect(target, first);
    return SetRect(target, std::min(first->left, second->left), std::min(first->top, second->top),
                   std::max(first->right, second->right), std::max(first->bottom, second->bottom));
}

BOOL SubtractRect(RECT* target, const RECT* first, const RECT* second) {
    if (target == nullptr || first == nullptr || second == nullptr)
        return FALSE;
    RECT rest = *first;
    RECT common{};
    if (IntersectRect(&common, first, second) != FALSE) {
        const bool allRows = common.top == rest.top && common.bottom == rest.bottom;
        const bool allColumns = common.left == rest.left && common.right == rest.right;
        if (allRows && allColumns)
            rest = {};
        else if (allRows && common.left == rest.left)
            rest.left = common.right;
        else if (allRows && common.right == rest.right)
            rest.right = common.left;
        else if (allColumns && common.top == rest.top)
            rest.top = common.bottom;
        else if (allColumns && common.bottom == rest.bottom)
            rest.bottom = common.top;
    }
    const bool left = !empty(rest);
    *target = left ? rest : RECT{};
    return left ? TRUE : FALSE;
}

BOOL EqualRect(const RECT* first, const RECT* second) {
    if (first == nullptr || second == nullptr)
        return FALSE;
    return first->left == second->left && first->top == second->top && first->right == second->right &&
                   first->bottom == second->bottom
               ? TRUE
               : FALSE;
}

BOOL IsRectEmpty(const RECT* rect) { return rect == nullptr || empty(*rect) ? TRUE : FALSE; }

BOOL PtInRect(const RECT* rect, POINT point) {
    if (rect == nullptr)
        return FALSE;
    return point.x >= rect->left && point.x < rect->right && point.y >= rect->top && point.y < rect->bottom ? TRUE
                                                                                                            : FALSE;
}
