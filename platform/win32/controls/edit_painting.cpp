#include "controls/edit.h"

#include "win32/draw.h"
#include "win32/fonts.h"
#include "win32/paint.h"

#include <algorithm>

namespace vndk::win32 {

void Edit::redrawLines(int first, int last) const {
    RECT band = clientRect();
    band.top = std::max<LONG>(lineTop(first), band.top);
    band.bottom = std::min<LONG>(lineTop(last + 1), band.bottom);
    if (band.top < band.bottom)
        invalidate(&band, false);
}

void Edit::onPaint(HDC given) {
    if (given != nullptr) {
        paint(given, clientRect());
        return;
    }
    PAINTSTRUCT area{};
    const HDC dc = BeginPaint(window(), &area);
    if (alive() && dc != nullptr)
        paint(dc, area.rcPaint);
    EndPaint(window(), &area);
}

void Edit::paint(HDC dc, const RECT& part) {
    const HGDIOBJ formerFont = font_ != nullptr ? SelectObject(dc, font_) : nullptr;
    const bool dimmed = isReadOnly() || !enabled();
    const HBRUSH ground = colorBrush(dimmed ? WM_CTLCOLORSTATIC : WM_CTLCOLOREDIT, dc);
    if (!alive())
        return;
    FillRect(dc, &part, ground);
    if (!enabled())
        SetTextColor(dc, GetSysColor(COLOR_GRAYTEXT));
    SetBkMode(dc, TRANSPARENT);
    const int saved = SaveDC(dc);
    // Of many lines, one that would show in part only isn't painted.
    const LONG bottom = multiLine_ ? format_.top + visibleLines() * measure_.lineHeight : clientRect().bottom;
    IntersectClipRect(dc, format_.left, format_.top, format_.right, bottom);
    const int first = std::max(firstLine_, firstLine_ + (static_cast<int>(part.top) - static_cast<int>(format_.top)) /
                                                            measure_.lineHeight);
    for (int index = first; index < layout_.count() && lineTop(index) < std::min(part.bottom, bottom); ++index)
        paintLine(dc, index, lineTop(index));
    RestoreDC(dc, saved);
    if (formerFont != nullptr)
        SelectObject(dc, formerFont);
}

/// Up to three runs: before, inside and behind the selection.
void Edit::paintLine(HDC dc, int index, int y) const {
    const EditLine& line = layout_.line(index);
    const int end = line.start + line.length;
    int begin = showsSelection() ? std::clamp(selectionBegin(), line.start, end) : end;
    const int behind = showsSelection() ? std::clamp(selectionEnd(), line.start, end) : end;
    begin = std::min(begin, behind);
    paintRun(dc, index, line.start, begin, y, false);
    paintRun(dc, index, begin, behind, y, true);
    paintRun(dc, index, behind, end, y, false);
}

void Edit::paintRun(HDC dc, int index, int from, int to, int y, bool selected) const {
    if (from >= to)
        return;
    const COLORREF formerColor = GetTextColor(dc);
    const RECT box{xOf(index, from), y, xOf(index, to), y + measure_.lineHeight};
    if (selected) {
        FillRect(dc, &box, GetSysColorBrush(COLOR_HIGHLIGHT));
        SetTextColor(dc, GetSysColor(COLOR_HIGHLIGHTTEXT));
    }
    const auto count = static_cast<std::size_t>(to - from);
    std::string shown = measure_.password != '\0' ? std::string(count, measure_.password)
                                                  : text_.substr(static_cast<std::size_t>(from), count);
    // Text goes out in pieces between tabs, each where the layout has it.
    int x = box.left;
    const int lineBegin = lineLeft(index);
    for (std::size_t piece = 0; piece < shown.size();) {
        const std::size_t tab = std::min(shown.find('\t', piece), shown.size());
        const std::string_view part = std::string_view(shown).substr(piece, tab - piece);
        ExtTextOutA(dc, x, y, 0, nullptr, part.data(), static_cast<UINT>(part.size()), nullptr);
        for (const char character : part)
            x += measure_.advance(character, x - lineBegin);
        if (tab < shown.size())
            x += measure_.advance('\t', x - lineBegin);
        piece = tab + 1;
    }
    SetTextColor(dc, formerColor);
}

} // namespace vndk::win32
