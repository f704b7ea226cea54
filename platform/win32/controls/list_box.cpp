#include "controls/list_box.h"

#include "controls/paint_session.h"
#include "user/window.h"
#include "win32/fonts.h"
#include "win32/input.h"
#include "win32/paint.h"

namespace vndk::win32 {

namespace {

/// Bits that contradict each other are settled once, so that nobody has to ask for the combination.
DWORD settledStyle(DWORD style) {
    if ((style & LBS_MULTICOLUMN) != 0) {
        style &= ~WS_VSCROLL;
        if ((style & LBS_OWNERDRAWVARIABLE) != 0)
            style = (style & ~LBS_OWNERDRAWVARIABLE) | LBS_OWNERDRAWFIXED;
    }
    if ((style & LBS_EXTENDEDSEL) != 0)
        style &= ~LBS_MULTIPLESEL;
    const bool bareAllowed =
        (style & LBS_OWNERDRAWFIXED) != 0 && (style & (LBS_HASSTRINGS | LBS_SORT | LBS_OWNERDRAWVARIABLE)) == 0;
    return bareAllowed ? style : style & ~LBS_NODATA;
}

/// Messages that change or read items without asking where they lie: they come in long series, and what the series
/// does to the layout is settled afterwards.
bool leavesLayoutAlone(UINT message) {
    switch (message) {
    case LB_SETITEMHEIGHT:
    case LB_GETITEMHEIGHT:
    case LB_SETITEMDATA:
    case LB_GETITEMDATA:
    case LB_GETTEXT:
    case LB_GETTEXTLEN:
    case LB_GETCOUNT:
        return true;
    default:
        return false;
    }
}

} // namespace

void registerListBox() { registerControl<ListBox>({.name = "ListBox", .style = CS_DBLCLKS}); }

LRESULT ListBox::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    using Family = Handled (ListBox::*)(UINT, WPARAM, LPARAM);
    static constexpr Family own[] = {&ListBox::handleItems, &ListBox::handleItemText, &ListBox::handleSelection,
                                     &ListBox::handleMultipleChoice, &ListBox::handleGeometry};
    static constexpr Family general[] = {&ListBox::handlePainting, &ListBox::handleMouse, &ListBox::handleKeys,
                                         &ListBox::handleScrolling, &ListBox::handleWindow};
    const auto tryAll = [&](const auto& families) -> Handled {
        for (const Family family : families)
            if (const Handled handled = (this->*family)(message, wParam, lParam))
                return handled;
        return std::nullopt;
    };
    const bool ownMessage = message >= LB_ADDSTRING && message <= LB_ITEMFROMPOINT;
    if (ownMessage && !leavesLayoutAlone(message))
        settleLayout();
    if (const Handled handled = ownMessage ? tryAll(own) : tryAll(general))
        return *handled;
    return defaultHandling(message, wParam, lParam);
}

ListBox::Handled ListBox::handleWindow(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        return create();
    case WM_DESTROY:
        destroyed();
        return 0;
    case WM_STYLECHANGED:
        if (wParam == static_cast<WPARAM>(GWL_STYLE))
            styleChanged(reinterpret_cast<const STYLESTRUCT*>(lParam));
        return 0;
    case WM_SETFONT:
        setFont(reinterpret_cast<HFONT>(wParam), LOWORD(static_cast<DWORD_PTR>(lParam)) != 0);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(font_);
    case WM_SETREDRAW:
        setRedraw(wParam != 0);
        return 0;
    case WM_SETFOCUS:
        setFocused(true);
        return 0;
    case WM_KILLFOCUS:
        setFocused(false);
        return 0;
    case WM_ENABLE:
    case WM_SYSCOLORCHANGE:
        invalidate();
        return 0;
    case WM_SIZE:
        sized();
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    default:
        return std::nullopt;
    }
}

LRESULT ListBox::create() {
    style_ = settledStyle(style());
    redraw_ = !hasBits(LBS_NOREDRAW);
    RECT rect{};
    GetWindowRect(window(), &rect);
    askedHeight_ = rect.bottom - rect.top;
    measureFont();
    itemHeight_ = lineHeight_;
    columnWidth_ = 15 * averageWidth_;
    if (ownerDrawn() && !variable())
        itemHeight_ = measuredHeight(0, 0);
    if (alive() && multiColumn())
        ShowScrollBar(window(), SB_VERT, FALSE);
    if (alive())
        updateScrollBars();
    return alive() ? 0 : -1;
}

void ListBox::destroyed() {
    release();
    if (alive())
        forgetItems();
}

void ListBox::styleChanged(const STYLESTRUCT* change) {
    if (change == nullptr)
        return;
    const bool wasSingle = singleChoice();
    // A bar that is hidden now has no bit, but stays asked for until somebody takes the bit away.
    DWORD bars = style_ & (WS_VSCROLL | WS_HSCROLL);
    bars &= ~(change->styleOld & ~change->styleNew);
    style_ = settledStyle((change->styleNew & ~(WS_VSCROLL | WS_HSCROLL)) | bars |
                          (change->styleNew & (WS_VSCROLL | WS_HSCROLL)));
    if (singleChoice() != wasSingle)
        selectionStyleChanged();
    if (alive())
        layoutChanged(0);
}

void ListBox::measureFont() {
    const HDC dc = CreateCompatibleDC(nullptr);
    if (dc == nullptr)
        return;
    {
        const SelectedObject font(dc, usedFont());
        TEXTMETRICA metrics{};
        if (GetTextMetricsA(dc, &metrics) != FALSE && metrics.tmHeight > 0) {
            lineHeight_ = metrics.tmHeight;
            averageWidth_ = metrics.tmAveCharWidth > 0 ? metrics.tmAveCharWidth : 1;
        }
    }
    DeleteDC(dc);
}

void ListBox::setFont(HFONT font, bool repaint) {
    font_ = font;
    measureFont();
    if (!ownerDrawn()) {
        itemHeight_ = lineHeight_;
        fitWholeItems();
    }
    updateScrollBars();
    if (repaint && redraw_ && alive())
        invalidate();
}

void ListBox::setRedraw(bool on) {
    redraw_ = on;
    if (!on)
        return;
    updateScrollBars();
    if (alive())
        invalidate();
}

void ListBox::setFocused(bool focused) {
    if (!focused) {
        release();
        if (!alive())
            return;
        hideCaret();
    }
    focused_ = focused;
    if (focused)
        showCaretAt(caret_);
    caretHidden_ = false;
    if (alive())
        notifyOwner(focused ? LBN_SETFOCUS : LBN_KILLFOCUS);
}

LRESULT ListBox::askOwner(UINT message, WPARAM wParam, LPARAM lParam) const {
    const HWND asked = owner();
    return asked != nullptr ? SendMessageA(asked, message, wParam, lParam) : 0;
}

void ListBox::notifyOwner(WORD code) const {
    if (hasBits(LBS_NOTIFY))
        askOwner(WM_COMMAND, MAKEWPARAM(id(), code), reinterpret_cast<LPARAM>(window()));
}

} // namespace vndk::win32
