#include "ui/color_grid.h"

#include "mfc/dc.h"
#include "mfc/message_map.h"
#include "ui/color_names.h"
#include "win32/input.h"

#include <algorithm>

namespace vndk::host {

IMPLEMENT_DYNAMIC(ColorGrid, CButton)

BEGIN_MESSAGE_MAP(ColorGrid, CButton)
ON_WM_LBUTTONDOWN()
ON_WM_KEYDOWN()
ON_WM_GETDLGCODE()
END_MESSAGE_MAP()

CRect ColorGrid::cell(int row, int column) const {
    CRect client;
    GetClientRect(client);
    return {client.Width() * column / columns_, client.Height() * row / rows_, client.Width() * (column + 1) / columns_,
            client.Height() * (row + 1) / rows_};
}

ColorGrid::Place ColorGrid::placeOf(int color) const {
    for (int row = 0; row < rows_; ++row)
        for (int column = 0; column < columns_; ++column)
            if (colorAt_(row, column) == color)
                return {row, column};
    return {};
}

void ColorGrid::select(int color) {
    const int former = selected_;
    selected_ = placeOf(color).row >= 0 ? color : kNone;
    if (selected_ != former)
        Invalidate();
}

void ColorGrid::DrawItem(LPDRAWITEMSTRUCT draw) {
    CDC& dc = *CDC::FromHandle(draw->hDC);
    const Place marked = placeOf(selected_);
    dc.FillSolidRect(&draw->rcItem, ::GetSysColor(COLOR_3DFACE));
    for (int row = 0; row < rows_; ++row) {
        for (int column = 0; column < columns_; ++column) {
            CRect rect = cell(row, column);
            rect.DeflateRect(1, 1);
            dc.FillSolidRect(rect, shownColor(colorAt_(row, column)));
        }
    }
    if ((draw->itemState & ODS_FOCUS) != 0)
        dc.DrawFocusRect(&draw->rcItem);
    if (marked.row < 0)
        return;
    CRect frame = cell(marked.row, marked.column);
    dc.Draw3dRect(frame, RGB(0, 0, 0), RGB(0, 0, 0));
    frame.DeflateRect(1, 1);
    dc.Draw3dRect(frame, RGB(255, 255, 255), RGB(255, 255, 255));
}

void ColorGrid::pick(Place place) {
    select(colorAt_(place.row, place.column));
    GetParent()->SendMessage(WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), BN_CLICKED), reinterpret_cast<LPARAM>(m_hWnd));
}

void ColorGrid::OnLButtonDown(UINT flags, CPoint point) {
    for (int row = 0; row < rows_; ++row)
        for (int column = 0; column < columns_; ++column)
            if (cell(row, column).PtInRect(point))
                select(colorAt_(row, column));
    CButton::OnLButtonDown(flags, point); // notifies when the mouse button goes up
}

void ColorGrid::OnKeyDown(UINT key, UINT repeat, UINT flags) {
    Place place = placeOf(selected_);
    const bool arrow = key == VK_LEFT || key == VK_RIGHT || key == VK_UP || key == VK_DOWN;
    if (!arrow) {
        CButton::OnKeyDown(key, repeat, flags);
        return;
    }
    if (place.row < 0) {
        pick({0, 0});
        return;
    }
    place.column += key == VK_RIGHT ? 1 : key == VK_LEFT ? -1 : 0;
    place.row += key == VK_DOWN ? 1 : key == VK_UP ? -1 : 0;
    pick({std::clamp(place.row, 0, rows_ - 1), std::clamp(place.column, 0, columns_ - 1)});
}

UINT ColorGrid::OnGetDlgCode() { return CButton::OnGetDlgCode() | DLGC_WANTARROWS; }

} // namespace vndk::host
