#include "controls/scroll_bars.h"
#include "controls/scroll_place.h"
#include "win32/draw.h"
#include "win32/gdi.h"
#include "win32/metrics.h"

namespace vndk::win32 {
namespace {

// Fills with the opposite of the brush: a page area that is held down.
constexpr DWORD notPattern = 0x000F0001;

/// The stretch of the bar from one offset to another.
RECT stretch(const RECT& bar, bool vertical, int begin, int end) {
    if (vertical)
        return {bar.left, bar.top + begin, bar.right, bar.top + end};
    return {bar.left + begin, bar.top, bar.left + end, bar.bottom};
}

void paintArrow(HDC dc, RECT rect, UINT kind, bool pressed, bool disabled) {
    const UINT state = (pressed ? DFCS_PUSHED | DFCS_FLAT : 0U) | (disabled ? DFCS_INACTIVE : 0U);
    DrawFrameControl(dc, &rect, DFC_SCROLL, kind | state);
}

void paintShaft(HDC dc, const RECT& rect, HBRUSH ground, bool pressed) {
    if (rect.right <= rect.left || rect.bottom <= rect.top)
        return;
    const HGDIOBJ former = SelectObject(dc, ground);
    PatBlt(dc, rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top, pressed ? notPattern : PATCOPY);
    SelectObject(dc, former);
}

} // namespace

void paintScrollBar(HDC dc, const RECT& rect, bool vertical, const ScrollState& state, bool enabled, HBRUSH ground) {
    const int length = vertical ? rect.bottom - rect.top : rect.right - rect.left;
    const int arrow = GetSystemMetrics(vertical ? SM_CYVSCROLL : SM_CXHSCROLL);
    const ScrollLayout layout = layoutScrollBar(state, length, arrow, enabled);
    const auto pressed = static_cast<ScrollPart>(state.pressedPart);

    paintArrow(dc, stretch(rect, vertical, 0, layout.arrow), vertical ? DFCS_SCROLLUP : DFCS_SCROLLLEFT,
               pressed == ScrollPart::lineUp, !enabled || (state.disabledArrows & ESB_DISABLE_LTUP) != 0);
    paintArrow(dc, stretch(rect, vertical, layout.shaftEnd(), length), vertical ? DFCS_SCROLLDOWN : DFCS_SCROLLRIGHT,
               pressed == ScrollPart::lineDown, !enabled || (state.disabledArrows & ESB_DISABLE_RTDN) != 0);
    if (!layout.hasThumb) {
        paintShaft(dc, stretch(rect, vertical, layout.shaftBegin(), layout.shaftEnd()), ground, false);
        return;
    }
    paintShaft(dc, stretch(rect, vertical, layout.shaftBegin(), layout.thumbBegin), ground,
               pressed == ScrollPart::pageUp);
    paintShaft(dc, stretch(rect, vertical, layout.thumbEnd, layout.shaftEnd()), ground,
               pressed == ScrollPart::pageDown);
    RECT thumb = stretch(rect, vertical, layout.thumbBegin, layout.thumbEnd);
    DrawEdge(dc, &thumb, EDGE_RAISED, BF_RECT | BF_MIDDLE);
}

HBRUSH scrollBarGround(HDC dc) {
    SetTextColor(dc, GetSysColor(COLOR_BTNHIGHLIGHT));
    SetBkColor(dc, GetSysColor(COLOR_BTNFACE));
    // The checker of light and face exists only while bars have the face's colour; another colour is plain.
    if (GetSysColor(COLOR_SCROLLBAR) != GetSysColor(COLOR_BTNFACE))
        return GetSysColorBrush(COLOR_SCROLLBAR);
    static const HBRUSH checker = [] {
        constexpr WORD rows[8] = {0x5555, 0xAAAA, 0x5555, 0xAAAA, 0x5555, 0xAAAA, 0x5555, 0xAAAA};
        const HBITMAP pattern = CreateBitmap(8, 8, 1, 1, rows);
        const HBRUSH made = CreatePatternBrush(pattern);
        DeleteObject(pattern);
        return made;
    }();
    return checker;
}

} // namespace vndk::win32
