#include "controls/scroll_menu.h"

#include "controls/scroll_bars.h"
#include "controls/scroll_place.h"
#include "controls/scroll_tracker.h"
#include "win32/menu.h"

namespace vndk::win32 {
namespace {

struct MenuRow {
    int code; // SB_*; below 0: a separator
    LPCSTR across;
    LPCSTR down;
};

constexpr MenuRow rows[] = {
    {SB_THUMBPOSITION, "Scroll Here", "Scroll Here"},
    {-1, nullptr, nullptr},
    {SB_TOP, "Left Edge", "Top"},
    {SB_BOTTOM, "Right Edge", "Bottom"},
    {-1, nullptr, nullptr},
    {SB_PAGEUP, "Page Left", "Page Up"},
    {SB_PAGEDOWN, "Page Right", "Page Down"},
    {-1, nullptr, nullptr},
    {SB_LINEUP, "Scroll Left", "Scroll Up"},
    {SB_LINEDOWN, "Scroll Right", "Scroll Down"},
};

constexpr int firstId = 1; // of an item: its code and this, as 0 stands for no choice

HMENU makeMenu(bool vertical) {
    const HMENU menu = CreatePopupMenu();
    for (const MenuRow& row : rows) {
        if (row.code < 0)
            AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
        else
            AppendMenuA(menu, MF_STRING, static_cast<UINT_PTR>(row.code + firstId), vertical ? row.down : row.across);
    }
    return menu;
}

} // namespace

void showScrollMenu(HWND window, int bar, POINT point) {
    ScrollPlace place;
    const ScrollState* state = scrollStateOf(window, bar);
    if (!locateScrollBar(window, bar, place) || state == nullptr || state->tracking || !place.layout.hasThumb)
        return;
    // The middle of the thumb goes where the click was.
    const int thumb = place.layout.thumbEnd - place.layout.thumbBegin;
    const int here = positionAt(*state, place.layout, place.offsetOf(point) - place.layout.shaftBegin() - thumb / 2);
    const HMENU menu = makeMenu(place.vertical);
    const int picked = TrackPopupMenu(menu, TPM_LEFTALIGN | TPM_RIGHTBUTTON | TPM_RETURNCMD | TPM_NONOTIFY, point.x,
                                      point.y, 0, window, nullptr);
    DestroyMenu(menu);
    if (picked == 0 || IsWindow(window) == FALSE)
        return;
    const int code = picked - firstId;
    sendScroll(window, bar, code, code == SB_THUMBPOSITION ? here : 0);
    if (IsWindow(window) != FALSE)
        sendScroll(window, bar, SB_ENDSCROLL, 0);
}

bool showFrameScrollMenu(HWND window, POINT point) {
    for (const int bar : {SB_VERT, SB_HORZ}) {
        ScrollPlace place;
        if (!locateScrollBar(window, bar, place) || place.partAtPoint(point) == ScrollPart::none)
            continue;
        showScrollMenu(window, bar, point);
        return true;
    }
    return false;
}

} // namespace vndk::win32
