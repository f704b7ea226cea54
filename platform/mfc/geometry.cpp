#include "mfc/geometry.h"

#include <algorithm>
#include <utility>

void CRect::NormalizeRect() {
    if (left > right)
        std::swap(left, right);
    if (top > bottom)
        std::swap(top, bottom);
}

BOOL CRect::IntersectRect(LPCRECT a, LPCRECT b) {
    const CRect common(std::max(a->left, b->left), std::max(a->top, b->top), std::min(a->right, b->right),
                       std::min(a->bottom, b->bottom));
    *this = common.IsRectEmpty() != FALSE ? CRect() : common;
    return IsRectEmpty() == FALSE;
}

BOOL CRect::UnionRect(LPCRECT a, LPCRECT b) {
    const CRect first(*a);
    const CRect second(*b);
    if (first.IsRectEmpty() != FALSE)
        *this = second.IsRectEmpty() != FALSE ? CRect() : second;
    else if (second.IsRectEmpty() != FALSE)
        *this = first;
    else
        SetRect(std::min(a->left, b->left), std::min(a->top, b->top), std::max(a->right, b->right),
                std::max(a->bottom, b->bottom));
    return IsRectEmpty() == FALSE;
}
