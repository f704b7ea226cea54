// What an edit control shows of its text: by caret, scroll bars, wheel and messages.
#include "controls/edit.h"

#include "win32/metrics.h"
#include "win32/paint.h"
#include "win32/scrollbar.h"

#include <algorithm>

namespace vndk::win32 {
namespace {

bool sameInfo(HWND window, int bar, const SCROLLINFO& wanted) {
    SCROLLINFO present{};
    present.cbSize = sizeof present;
    present.fMask = SIF_ALL;
    return GetScrollInfo(window, bar, &present) != FALSE && present.nMin == wanted.nMin &&
           present.nMax == wanted.nMax && present.nPage == wanted.nPage && present.nPos == wanted.nPos;
}

/// The edit control's bars are disabled when there is nothing to scroll; they never vanish.
void setBar(HWND window, int bar, int maximum, int page, int position) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_DISABLENOSCROLL;
    info.nMax = std::max(maximum, 0);
    info.nPage = static_cast<UINT>(std::max(page, 0));
    info.nPos = position;
    if (!sameInfo(window, bar, info))
        SetScrollInfo(window, bar, &info, TRUE);
}

} // namespace

int Edit::highestLine() const { return std::max(layout_.count() - visibleLines(), 0); }

/// One pixel more than the text, so that the caret behind it shows.
int Edit::highestX() const {
    if (multiLine_ && !scrollsAcross_)
        return 0;
    return std::max(layout_.widest() + 1 - formatWidth(), 0);
}

/// True when what shows has changed.
bool Edit::scrollTo(int firstLine, int x) {
    firstLine = std::clamp(firstLine, 0, multiLine_ ? highestLine() : 0);
    x = std::clamp(x, 0, highestX());
    if (firstLine == firstLine_ && x == scrollX_)
        return false;
    firstLine_ = firstLine;
    scrollX_ = x;
    redrawAll();
    return true;
}

void Edit::updateScrollBars() {
    const DWORD bits = style();
    if (!multiLine_ || (bits & (WS_VSCROLL | WS_HSCROLL)) == 0)
        return;
    if ((bits & WS_VSCROLL) != 0)
        setBar(window(), SB_VERT, layout_.count() - 1, visibleLines(), firstLine_);
    if ((bits & WS_HSCROLL) != 0)
        setBar(window(), SB_HORZ, layout_.widest(), formatWidth(), scrollX_);
}

/// Sideways by a third of the width, so that what comes next can be seen.
void Edit::scrollToCaret() {
    const int line = caretLine();
    int first = firstLine_;
    if (line < first)
        first = line;
    else if (line >= first + visibleLines())
        first = line - visibleLines() + 1;
    const int width = std::max(formatWidth(), 1);
    const int x = xOf(line, caret_) - static_cast<int>(format_.left) + scrollX_;
    int left = scrollX_;
    if (x < left)
        left = x - width / 3;
    else if (x > left + width - 1)
        left = x - width + width / 3;
    // What was deleted at the end may leave the view beyond the text; it only goes back when the caret asks for it.
    firstLine_ = std::clamp(firstLine_, 0, multiLine_ ? highestLine() : 0);
    if (left != scrollX_ || first != firstLine_)
        scrollTo(first, left);
}

LRESULT Edit::scrollByCode(int code) {
    const int page = visibleLines();
    int first = firstLine_;
    switch (code) {
    case SB_LINEUP:
        first -= 1;
        break;
    case SB_LINEDOWN:
        first += 1;
        break;
    case SB_PAGEUP:
        first -= page;
        break;
    case SB_PAGEDOWN:
        first += page;
        break;
    default:
        return 0;
    }
    const int former = firstLine_;
    if (!scrollTo(first, scrollX_))
        return 0;
    updateScrollBars();
    placeCaret();
    return MAKELRESULT(firstLine_ - former, TRUE);
}

/// All 32 bits while the thumb is dragged; the message has 16.
int Edit::trackPosition(int bar, WPARAM wParam) const {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS | SIF_POS;
    if (GetScrollInfo(window(), bar, &info) != FALSE && info.nTrackPos != info.nPos)
        return info.nTrackPos;
    return HIWORD(wParam);
}

void Edit::onVerticalScroll(WPARAM wParam) {
    if (!multiLine_)
        return;
    const int code = LOWORD(wParam);
    const int former = firstLine_;
    switch (code) {
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK:
        scrollTo(trackPosition(SB_VERT, wParam), scrollX_);
        break;
    case SB_TOP:
        scrollTo(0, scrollX_);
        break;
    case SB_BOTTOM:
        scrollTo(highestLine(), scrollX_);
        break;
    default:
        scrollByCode(code);
        break;
    }
    updateScrollBars();
    placeCaret();
    if (former != firstLine_)
        notifyCommand(EN_VSCROLL);
}

void Edit::onHorizontalScroll(WPARAM wParam) {
    if (!multiLine_ || !scrollsAcross_)
        return;
    const int step = measure_.averageWidth;
    const int page = formatWidth() * 2 / 3;
    const int former = scrollX_;
    int x = scrollX_;
    switch (LOWORD(wParam)) {
    case SB_LINELEFT:
        x -= step;
        break;
    case SB_LINERIGHT:
        x += step;
        break;
    case SB_PAGELEFT:
        x -= page;
        break;
    case SB_PAGERIGHT:
        x += page;
        break;
    case SB_LEFT:
        x = 0;
        break;
    case SB_RIGHT:
        x = highestX();
        break;
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK:
        x = trackPosition(SB_HORZ, wParam);
        break;
    default:
        break;
    }
    scrollTo(firstLine_, x);
    updateScrollBars();
    placeCaret();
    if (former != scrollX_)
        notifyCommand(EN_HSCROLL);
}

void Edit::onWheel(WPARAM wParam) {
    UINT linesPerNotch = 3;
    SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &linesPerNotch, 0);
    wheel_ += static_cast<SHORT>(HIWORD(wParam)) * static_cast<int>(std::min(linesPerNotch, 100U));
    const int lines = wheel_ / WHEEL_DELTA;
    wheel_ %= WHEEL_DELTA;
    if (!scrollTo(firstLine_ - lines, scrollX_))
        return;
    updateScrollBars();
    placeCaret();
    notifyCommand(EN_VSCROLL);
}

Edit::Handled Edit::handleScrolling(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_VSCROLL:
        onVerticalScroll(wParam);
        return 0;
    case WM_HSCROLL:
        onHorizontalScroll(wParam);
        return 0;
    case WM_MOUSEWHEEL:
        if (!multiLine_ || (LOWORD(wParam) & (MK_SHIFT | MK_CONTROL)) != 0)
            return std::nullopt;
        onWheel(wParam);
        return TRUE;
    case EM_SCROLL: {
        if (!multiLine_)
            return 0;
        const LRESULT result = scrollByCode(static_cast<int>(wParam));
        if (result != 0)
            notifyCommand(EN_VSCROLL);
        return result;
    }
    case EM_LINESCROLL: {
        if (!multiLine_)
            return FALSE;
        // Both may be any number; in 64 bits the sums can't overflow.
        const std::int64_t line = std::int64_t{firstLine_} + static_cast<int>(lParam);
        const std::int64_t x = scrollX_ + std::int64_t{static_cast<int>(wParam)} * measure_.averageWidth;
        scrollTo(static_cast<int>(std::clamp<std::int64_t>(line, 0, highestLine())),
                 static_cast<int>(std::clamp<std::int64_t>(x, 0, highestX())));
        updateScrollBars();
        placeCaret();
        return TRUE;
    }
    case EM_SCROLLCARET:
        scrollToCaret();
        updateScrollBars();
        placeCaret();
        return TRUE;
    case EM_GETTHUMB:
        return GetScrollPos(window(), SB_VERT);
    case EM_GETFIRSTVISIBLELINE:
        return multiLine_ ? firstLine_ : measure_.nearest(text_, scrollX_);
    default:
        return std::nullopt;
    }
}

} // namespace vndk::win32
