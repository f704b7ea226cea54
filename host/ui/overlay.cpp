#include "ui/overlay.h"

#include <algorithm>
#include <cstdlib>

namespace vndk::host {

namespace {

constexpr int kFarthest = 1 << 14; // pixels; what lies farther away is brought there
constexpr int kPieces = 12;        // of a slanting line, each with an area of its own
constexpr COLORREF kTipText = RGB(0, 0, 0), kTipFill = RGB(255, 255, 225);

CPoint near(CPoint point) {
    return {std::clamp<LONG>(point.x, -kFarthest, kFarthest), std::clamp<LONG>(point.y, -kFarthest, kFarthest)};
}

CRect around(CPoint a, CPoint b) {
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x) + 1, std::max(a.y, b.y) + 1};
}

HFONT tipFont() { return static_cast<HFONT>(::GetStockObject(DEFAULT_GUI_FONT)); }

} // namespace

void Overlay::clear() {
    lines_.clear();
    labels_.clear();
    areas_.clear();
    grouping_ = false;
}

void Overlay::line(CPoint a, CPoint b, COLORREF color, Look look) {
    a = near(a);
    b = near(b);
    lines_.push_back({a, b, color, look});
    if (grouping_)
        group_.UnionRect(group_, around(a, b));
    else
        coverLine(a, b);
}

void Overlay::coverLine(CPoint a, CPoint b) {
    const int pieces = a.x == b.x || a.y == b.y ? 1 : kPieces;
    for (int i = 0; i < pieces; ++i) {
        const auto at = [&](int part) {
            return CPoint(a.x + (b.x - a.x) * part / pieces, a.y + (b.y - a.y) * part / pieces);
        };
        CRect area = around(at(i), at(i + 1));
        if (pieces > 1)
            area.InflateRect(1, 1);
        areas_.push_back(area);
    }
}

void Overlay::frame(const CRect& rect, COLORREF color) {
    const CPoint corners[] = {
        {rect.left, rect.top}, {rect.right, rect.top}, {rect.right, rect.bottom}, {rect.left, rect.bottom}};
    for (int i = 0; i < 4; ++i)
        line(corners[i], corners[(i + 1) % 4], color);
}

void Overlay::label(CPoint at, const std::string& text, const CRect& bounds) {
    CDC dc;
    dc.CreateCompatibleDC(nullptr);
    const HGDIOBJ former = ::SelectObject(dc, tipFont());
    const CSize size = dc.GetTextExtent(CString(text));
    ::SelectObject(dc, former);
    CRect place(at, CSize(size.cx + 8, size.cy + 4));
    place.OffsetRect(std::min<LONG>(bounds.right - place.right, 0), std::min<LONG>(bounds.bottom - place.bottom, 0));
    labels_.push_back({place, text, kTipText, true});
    areas_.push_back(place);
}

void Overlay::letter(CPoint middle, const char* letter, COLORREF color) {
    const CRect place(middle.x - 8, middle.y - 8, middle.x + 8, middle.y + 8);
    labels_.push_back({place, letter, color, false});
    areas_.push_back(place);
}

void Overlay::beginGroup() {
    grouping_ = true;
    group_ = CRect();
}

void Overlay::endGroup() {
    grouping_ = false;
    if (!group_.IsRectEmpty())
        areas_.push_back(group_);
}

void Overlay::paint(CDC& dc) const {
    CPen* former = nullptr;
    CPen pen;
    COLORREF color = 0;
    Look look = Look::Solid;
    dc.SetBkMode(TRANSPARENT);
    for (const Line& each : lines_) {
        if (!pen.m_hObject || each.color != color || each.look != look) {
            if (former)
                dc.SelectObject(former);
            pen.DeleteObject();
            color = each.color;
            look = each.look;
            pen.CreatePen(static_cast<int>(look == Look::Dashed ? PS_DASH : PS_SOLID), 1, color);
            former = dc.SelectObject(&pen);
        }
        dc.MoveTo(each.a);
        dc.LineTo(each.b);
        dc.SetPixel(each.b.x, each.b.y, color); // a line ends before its last pixel
    }
    if (former)
        dc.SelectObject(former);
    if (labels_.empty())
        return;
    const HGDIOBJ font = ::SelectObject(dc, tipFont());
    for (const Label& each : labels_) {
        if (each.filled)
            dc.FillSolidRect(each.place, kTipFill);
        dc.SetBkMode(TRANSPARENT);
        dc.SetTextColor(each.color);
        CRect place = each.place;
        dc.DrawText(CString(each.text), place, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
    }
    ::SelectObject(dc, font);
}

void Overlay::invalidate(CWnd& window) const {
    for (const CRect& area : areas_)
        window.InvalidateRect(area, FALSE);
}

} // namespace vndk::host
