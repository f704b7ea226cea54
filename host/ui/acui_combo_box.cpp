#include "mfc/dc.h"
#include "mfc/gdi_object.h"
#include "ui/acui.h"
#include "win32/metrics.h"

#include <algorithm>

IMPLEMENT_DYNAMIC(CAcUiComboBox, CComboBox)
IMPLEMENT_DYNAMIC(CAcUiPlotStyleTablesComboBox, CAcUiComboBox)

namespace {

// Pixels: beside the picture, and above and below it.
constexpr int kSideMargin = 1;
constexpr int kEdgeMargin = 2;

} // namespace

void CAcUiComboBox::PreSubclassWindow() {
    CComboBox::PreSubclassWindow();
    AddItems();
}

int CAcUiComboBox::AddItem(LPCSTR text, int cargo, int before) {
    const int item = InsertString(before, text); // never sorts
    if (item >= 0)
        SetItemData(item, static_cast<DWORD_PTR>(static_cast<LONG_PTR>(cargo)));
    return item;
}

int CAcUiComboBox::FindItemByCargo(int cargo) const {
    const int count = GetCount();
    for (int item = 0; item < count; ++item)
        if (static_cast<int>(GetItemData(item)) == cargo)
            return item;
    return CB_ERR;
}

int CAcUiComboBox::GetItemCargo(int item, int none) const {
    return item >= 0 && item < GetCount() ? static_cast<int>(GetItemData(item)) : none;
}

void CAcUiComboBox::FitDroppedWidth() {
    CClientDC dc(this);
    CFont* const pFont = GetFont();
    CFont* const pFormer = pFont ? dc.SelectObject(pFont) : nullptr;
    int widest = 0;
    for (int item = 0; item < GetCount(); ++item) {
        CString text;
        GetLBText(item, text);
        widest = std::max(widest, static_cast<int>(dc.GetTextExtent(text).cx));
    }
    if (pFormer)
        dc.SelectObject(pFormer);
    const int frame = 2 * ::GetSystemMetrics(SM_CXBORDER) + ::GetSystemMetrics(SM_CXVSCROLL);
    const int width = widest + ImageWidth() + 4 * kSideMargin + frame;
    SendMessage(CB_SETDROPPEDWIDTH, static_cast<WPARAM>(width));
}

void CAcUiComboBox::DrawItem(LPDRAWITEMSTRUCT pDraw) {
    CDC& dc = *CDC::FromHandle(pDraw->hDC);
    CRect rect(pDraw->rcItem);
    const bool disabled = (pDraw->itemState & ODS_DISABLED) != 0;
    const bool selected = !disabled && (pDraw->itemState & ODS_SELECTED) != 0;
    dc.FillSolidRect(rect, ::GetSysColor(disabled ? COLOR_3DFACE : selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
    if (pDraw->itemID == static_cast<UINT>(-1)) {
        if ((pDraw->itemState & ODS_FOCUS) != 0)
            dc.DrawFocusRect(rect);
        return;
    }
    const COLORREF color = ::GetSysColor(disabled ? COLOR_GRAYTEXT : selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
    if (const int width = ImageWidth(); width > 0) {
        CRect image(rect);
        image.DeflateRect(kSideMargin, kEdgeMargin);
        image.right = image.left + width;
        DrawItemImage(dc, image, static_cast<int>(pDraw->itemData), color);
        rect.left = image.right + kSideMargin;
    }
    CString text;
    GetLBText(static_cast<int>(pDraw->itemID), text);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(color);
    rect.left += kSideMargin;
    dc.DrawText(text, rect, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    if ((pDraw->itemState & ODS_FOCUS) != 0)
        dc.DrawFocusRect(&pDraw->rcItem);
}

void CAcUiPlotStyleTablesComboBox::AddItems() { AddItem("None", 0); }
