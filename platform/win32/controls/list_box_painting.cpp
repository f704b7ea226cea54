// Painting: the items that are seen, by the list box itself or by its owner.
#include "controls/list_box.h"

#include "controls/paint_session.h"
#include "win32/draw.h"
#include "win32/fonts.h"

namespace vndk::win32 {

namespace {

constexpr int textIndent = 2;

/// A context of the client area for painting outside of WM_PAINT.
class ClientContext {
public:
    explicit ClientContext(HWND window) : window_(window), dc_(GetDC(window)) {}
    ~ClientContext() {
        if (dc_ != nullptr)
            ReleaseDC(window_, dc_);
    }
    ClientContext(const ClientContext&) = delete;
    ClientContext& operator=(const ClientContext&) = delete;

    [[nodiscard]] HDC dc() const { return dc_; }

private:
    HWND window_;
    HDC dc_;
};

} // namespace

ListBox::Handled ListBox::handlePainting(UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    switch (message) {
    case WM_PAINT: {
        settleLayout();
        if (barsUnpainted_ && alive()) {
            barsUnpainted_ = false;
            SendMessageA(window(), WM_NCPAINT, 1, 0);
        }
        if (!alive())
            return 0;
        const PaintSession session(window(), reinterpret_cast<HDC>(wParam));
        if (redraw_ && session.dc() != nullptr)
            paint(session.dc(), session.area());
        return 0;
    }
    case WM_PRINTCLIENT: {
        const PaintSession session(window(), reinterpret_cast<HDC>(wParam));
        if (wParam != 0)
            paint(session.dc(), session.area());
        return 0;
    }
    case WM_ERASEBKGND:
        if (redraw_)
            erase(reinterpret_cast<HDC>(wParam));
        return 1;
    default:
        return std::nullopt;
    }
}

HFONT ListBox::usedFont() const { return font_ != nullptr ? font_ : static_cast<HFONT>(GetStockObject(SYSTEM_FONT)); }

/// The brush of the ground; the owner may set the context's colours on the way.
HBRUSH ListBox::askColors(HDC dc) const {
    const auto wParam = reinterpret_cast<WPARAM>(dc);
    const auto lParam = reinterpret_cast<LPARAM>(window());
    LRESULT brush = askOwner(WM_CTLCOLORLISTBOX, wParam, lParam);
    if (brush == 0)
        brush = defaultHandling(WM_CTLCOLORLISTBOX, wParam, lParam);
    return reinterpret_cast<HBRUSH>(brush);
}

void ListBox::erase(HDC dc) const {
    const SavedContext saved(dc);
    const HBRUSH ground = askColors(dc);
    const RECT client = clientRect();
    if (ground != nullptr)
        FillRect(dc, &client, ground);
}

void ListBox::paint(HDC dc, const RECT& area) {
    const SavedContext saved(dc);
    SelectObject(dc, usedFont());
    const HBRUSH ground = askColors(dc);
    if (!alive())
        return;
    if (count() == 0) {
        if (showsFocus() && !caretHidden_)
            drawItem(dc, ground, -1, itemRect(0), ODA_FOCUS);
        return;
    }
    // The owner may change the list while it draws: count and place are asked for anew each time.
    for (int index = top_; alive() && index < count() && index <= lastSeenItem(); ++index) {
        const RECT rect = itemRect(index);
        RECT seen{};
        if (IntersectRect(&seen, &rect, &area) != FALSE)
            drawItem(dc, ground, index, rect, ODA_DRAWENTIRE);
    }
}

/// Shows a change of an item at once: of its selection (ODA_SELECT) or its focus mark (ODA_FOCUS).
void ListBox::drawNow(int index, UINT action) const {
    if (!redraw_ || index < top_ || IsWindowVisible(window()) == FALSE)
        return;
    if (count() == 0)
        index = -1;
    else if (!valid(index) || index > lastSeenItem())
        return;
    const ClientContext context(window());
    if (context.dc() == nullptr)
        return;
    const SavedContext saved(context.dc());
    SelectObject(context.dc(), usedFont());
    const HBRUSH ground = askColors(context.dc());
    if (alive() && (valid(index) || count() == 0))
        drawItem(context.dc(), ground, index, itemRect(index < 0 ? 0 : index), action);
}

UINT ListBox::stateOf(int index) const {
    UINT state = 0;
    if (valid(index) && items_[index].selected && !hasBits(LBS_NOSEL))
        state |= ODS_SELECTED;
    if (showsFocus() && !caretHidden_ && (index == caret_ || count() == 0))
        state |= ODS_FOCUS;
    if (!enabled())
        state |= ODS_DISABLED;
    return state;
}

/// Index -1 stands for the place of the first item in an empty list, which can have the focus mark.
void ListBox::drawItem(HDC dc, HBRUSH ground, int index, const RECT& rect, UINT action) const {
    const UINT state = stateOf(index);
    if (ownerDrawn())
        drawByOwner(dc, index, rect, action, state);
    else
        drawTextItem(dc, ground, index, rect, state);
}

void ListBox::drawByOwner(HDC dc, int index, const RECT& rect, UINT action, UINT state) const {
    DRAWITEMSTRUCT drawn{};
    drawn.CtlType = ODT_LISTBOX;
    drawn.CtlID = static_cast<UINT>(id());
    drawn.itemID = static_cast<UINT>(index);
    drawn.itemAction = action;
    drawn.itemState = state;
    drawn.hwndItem = window();
    drawn.hDC = dc;
    drawn.rcItem = rect;
    drawn.itemData = index >= 0 ? items_[index].data : 0;
    const SavedContext saved(dc);
    askOwner(WM_DRAWITEM, drawn.CtlID, reinterpret_cast<LPARAM>(&drawn));
}

void ListBox::drawTextItem(HDC dc, HBRUSH ground, int index, const RECT& rect, UINT state) const {
    const SavedContext saved(dc);
    const bool selected = (state & ODS_SELECTED) != 0;
    if (selected) {
        SetTextColor(dc, GetSysColor(COLOR_HIGHLIGHTTEXT));
        SetBkColor(dc, GetSysColor(COLOR_HIGHLIGHT));
    } else if ((state & ODS_DISABLED) != 0) {
        SetTextColor(dc, GetSysColor(COLOR_GRAYTEXT));
    }
    const HBRUSH fill = selected ? GetSysColorBrush(COLOR_HIGHLIGHT) : ground;
    if (fill != nullptr)
        FillRect(dc, &rect, fill);
    if (index >= 0) {
        const std::string& text = items_[index].text;
        const int length = static_cast<int>(text.size());
        SetBkMode(dc, TRANSPARENT);
        IntersectClipRect(dc, rect.left, rect.top, rect.right, rect.bottom);
        if (hasBits(LBS_USETABSTOPS))
            TabbedTextOutA(dc, rect.left + textIndent, rect.top, text.data(), length, static_cast<int>(tabs_.size()),
                           tabs_.data(), rect.left + textIndent);
        else
            ExtTextOutA(dc, rect.left + textIndent, rect.top, 0, nullptr, text.data(), static_cast<UINT>(length),
                        nullptr);
    }
    if ((state & ODS_FOCUS) != 0)
        DrawFocusRect(dc, &rect);
}

} // namespace vndk::win32
