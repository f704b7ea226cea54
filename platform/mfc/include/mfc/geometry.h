// CPoint, CSize, CRect: the platform's structures with operations. Pixels; rectangles are half open.
#pragma once

#include "win32/types.h"

class CSize : public SIZE {
public:
    CSize() : SIZE{0, 0} {}
    CSize(int width, int height) : SIZE{width, height} {}
    CSize(SIZE size) : SIZE(size) {}
    bool operator==(const CSize& other) const { return cx == other.cx && cy == other.cy; }
    CSize operator+(SIZE other) const { return {cx + other.cx, cy + other.cy}; }
    CSize operator-(SIZE other) const { return {cx - other.cx, cy - other.cy}; }
    CSize operator-() const { return {-cx, -cy}; }
};

class CPoint : public POINT {
public:
    CPoint() : POINT{0, 0} {}
    CPoint(int pointX, int pointY) : POINT{pointX, pointY} {}
    CPoint(POINT point) : POINT(point) {}
    /// x in the low word, y in the high one, as mouse messages carry them.
    explicit CPoint(LPARAM packed) : POINT{GET_X_LPARAM(packed), GET_Y_LPARAM(packed)} {}
    void Offset(int dx, int dy) {
        x += dx;
        y += dy;
    }
    bool operator==(const CPoint& other) const { return x == other.x && y == other.y; }
    CPoint operator+(SIZE size) const { return {x + size.cx, y + size.cy}; }
    CPoint operator-(SIZE size) const { return {x - size.cx, y - size.cy}; }
    CSize operator-(POINT other) const { return {x - other.x, y - other.y}; }
    CPoint operator+(POINT other) const { return {x + other.x, y + other.y}; }
};

class CRect : public RECT {
public:
    CRect() : RECT{0, 0, 0, 0} {}
    CRect(int l, int t, int r, int b) : RECT{l, t, r, b} {}
    CRect(const RECT& rect) : RECT(rect) {}
    explicit CRect(LPCRECT rect) : RECT(*rect) {}
    CRect(POINT topLeft, SIZE size) : RECT{topLeft.x, topLeft.y, topLeft.x + size.cx, topLeft.y + size.cy} {}
    CRect(POINT topLeft, POINT bottomRight) : RECT{topLeft.x, topLeft.y, bottomRight.x, bottomRight.y} {}

    operator LPRECT() { return this; }
    operator LPCRECT() const { return this; }

    [[nodiscard]] int Width() const { return right - left; }
    [[nodiscard]] int Height() const { return bottom - top; }
    [[nodiscard]] CSize Size() const { return {Width(), Height()}; }
    [[nodiscard]] CPoint TopLeft() const { return {left, top}; }
    [[nodiscard]] CPoint BottomRight() const { return {right, bottom}; }
    [[nodiscard]] CPoint CenterPoint() const { return {(left + right) / 2, (top + bottom) / 2}; }
    [[nodiscard]] BOOL IsRectEmpty() const { return left >= right || top >= bottom; }
    [[nodiscard]] BOOL IsRectNull() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }
    [[nodiscard]] BOOL PtInRect(POINT point) const {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }
    void SetRect(int l, int t, int r, int b) { *this = CRect(l, t, r, b); }
    void SetRectEmpty() { *this = CRect(); }
    void CopyRect(LPCRECT rect) { *this = CRect(*rect); }
    void InflateRect(int x, int y) { SetRect(left - x, top - y, right + x, bottom + y); }
    void InflateRect(int l, int t, int r, int b) { SetRect(left - l, top - t, right + r, bottom + b); }
    void DeflateRect(int x, int y) { InflateRect(-x, -y); }
    void DeflateRect(int l, int t, int r, int b) { InflateRect(-l, -t, -r, -b); }
    void OffsetRect(int x, int y) { SetRect(left + x, top + y, right + x, bottom + y); }
    void OffsetRect(POINT by) { OffsetRect(by.x, by.y); }
    /// Exchanges sides so that width and height aren't negative.
    void NormalizeRect();
    /// Both return FALSE and give the empty rectangle when nothing is left.
    BOOL IntersectRect(LPCRECT a, LPCRECT b);
    BOOL UnionRect(LPCRECT a, LPCRECT b);
    bool operator==(const CRect& other) const {
        return left == other.left && top == other.top && right == other.right && bottom == other.bottom;
    }
};
