// Painting: edge, button, and the field of the style without edit control.
#include "controls/combo_box.h"

#include "controls/paint_session.h"
#include "win32/draw.h"
#include "win32/fonts.h"
#include "win32/listbox.h"

namespace vndk::win32 {

ComboBox::Handled ComboBox::handlePainting(UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    switch (message) {
    case WM_PAINT:
    case WM_PRINTCLIENT: {
        const PaintSession session(window(), reinterpret_cast<HDC>(wParam));
        if (session.dc() != nullptr && redraw_)
            paint(session.dc());
        return 0;
    }
    case WM_ERASEBKGND:
        return 1;
    default:
        return std::nullopt;
    }
}

HFONT ComboBox::usedFont() const { return font_ != nullptr ? font_ : static_cast<HFONT>(GetStockObject(SYSTEM_FONT)); }

void ComboBox::paint(HDC dc) {
    const SavedContext saved(dc);
    SelectObject(dc, usedFont());
    const HBRUSH ground = colorBrush(enabled() ? WM_CTLCOLOREDIT : WM_CTLCOLORSTATIC, dc);
    if (!alive())
        return;
    RECT rect = clientRect();
    rect.bottom = comboHeight();
    DrawEdge(dc, &rect, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    RECT button = buttonRect();
    if (dropsDown()) {
        UINT state = DFCS_SCROLLCOMBOBOX;
        state |= enabled() ? 0 : DFCS_INACTIVE;
        state |= buttonDown_ ? DFCS_PUSHED : 0;
        DrawFrameControl(dc, &button, DFC_SCROLL, state);
        rect.right = button.left;
    }
    const RECT field = fieldRect();
    if (hasEdit())
        ExcludeClipRect(dc, field.left, field.top, field.right, field.bottom);
    if (ground != nullptr)
        FillRect(dc, &rect, ground);
    if (!hasEdit())
        paintField(dc);
}

void ComboBox::paintField(HDC dc) {
    const RECT field = fieldRect();
    UINT state = ODS_COMBOBOXEDIT;
    state |= focused_ && !dropped_ ? ODS_SELECTED | ODS_FOCUS : 0;
    state |= enabled() ? 0 : ODS_DISABLED;
    IntersectClipRect(dc, field.left, field.top, field.right, field.bottom);
    if (ownerDrawn()) {
        drawFieldByOwner(dc, field, state);
        return;
    }
    const std::string text = itemText(current());
    if ((state & ODS_SELECTED) != 0) {
        SetTextColor(dc, GetSysColor(COLOR_HIGHLIGHTTEXT));
        SetBkColor(dc, GetSysColor(COLOR_HIGHLIGHT));
        FillRect(dc, &field, GetSysColorBrush(COLOR_HIGHLIGHT));
    } else if ((state & ODS_DISABLED) != 0) {
        SetTextColor(dc, GetSysColor(COLOR_GRAYTEXT));
    }
    SetBkMode(dc, TRANSPARENT);
    ExtTextOutA(dc, field.left + 1, field.top + 1, 0, nullptr, text.data(), static_cast<UINT>(text.size()), nullptr);
    if ((state & ODS_FOCUS) != 0)
        DrawFocusRect(dc, &field);
}

void ComboBox::drawFieldByOwner(HDC dc, const RECT& field, UINT state) const {
    const int index = current();
    if ((state & ODS_SELECTED) != 0) {
        SetTextColor(dc, GetSysColor(COLOR_HIGHLIGHTTEXT));
        SetBkColor(dc, GetSysColor(COLOR_HIGHLIGHT));
    }
    DRAWITEMSTRUCT drawn{};
    drawn.itemID = static_cast<UINT>(index);
    drawn.itemAction = ODA_DRAWENTIRE;
    drawn.itemState = state;
    drawn.hDC = dc;
    drawn.rcItem = field;
    drawn.itemData =
        index >= 0 ? static_cast<ULONG_PTR>(askList(LB_GETITEMDATA, static_cast<WPARAM>(index))) : ULONG_PTR{0};
    passToOwner(WM_DRAWITEM, reinterpret_cast<LPARAM>(&drawn));
}

} // namespace vndk::win32
