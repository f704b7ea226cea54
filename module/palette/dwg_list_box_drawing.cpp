// How the rows of the list of drawings look.
#include "palette/dwg_list_box.h"
#include "previews/dwg_thumbnail.h"

namespace {

constexpr int kStripe = 17;  // width of the icons' column
constexpr int kCaption = 19; // height of a drawing's name

void Fill(CDC& dc, const CRect& rc, COLORREF color) {
    CBrush brush(color);
    dc.FillRect(rc, &brush);
}

} // namespace

void CDwgListBox::DrawItem(LPDRAWITEMSTRUCT lpDrawItem) {
    CDC& dc = *CDC::FromHandle(lpDrawItem->hDC);
    const CRect rc(lpDrawItem->rcItem);
    const bool lit = (lpDrawItem->itemState & ODS_SELECTED) != 0 && ::GetFocus() == m_hWnd;
    const COLORREF backColor = ::GetSysColor(lit ? COLOR_HIGHLIGHT : COLOR_WINDOW);
    const COLORREF ground = ::GetSysColor(COLOR_WINDOW);
    dc.SetBkColor(backColor);
    const int nSaved = dc.SaveDC();
    dc.SetBkMode(TRANSPARENT);
    Fill(dc, CRect(rc.left, rc.top, rc.left + kStripe, rc.bottom), ground);
    Fill(dc, CRect(rc.left + kStripe + 1, rc.top + kCaption + 1, rc.right, rc.bottom), ground);
    Fill(dc, CRect(rc.left + kStripe + 1, rc.top, rc.right, rc.top + kCaption), backColor);
    if (GetCount() > 0)
        DrawRow(dc, rc, static_cast<int>(lpDrawItem->itemID), ::GetSysColor(lit ? COLOR_HIGHLIGHTTEXT : COLOR_BTNTEXT));
    dc.RestoreDC(nSaved);
}

void CDwgListBox::DrawRow(CDC& dc, const CRect& rc, int nRow, COLORREF textColor) {
    const CString text = RowText(nRow);
    const bool folder = GetItemData(nRow) == 0;
    CRect textRect(rc.left + kStripe + (folder ? 2 : 1), rc.top + 2, rc.right, rc.bottom);
    const CSize size = folder ? CSize() : dc.GetTextExtent(text);
    const HGDIOBJ hFormer = ::SelectObject(dc, reinterpret_cast<HFONT>(SendMessage(WM_GETFONT)));
    dc.SetTextColor(textColor);
    ::DrawTextA(dc, text, text.GetLength(), textRect, 0);
    if (folder)
        ::ImageList_Draw(m_images, 0, dc, 1, rc.top + 1, ILD_NORMAL);
    else
        DrawThumbnail(dc, rc, text, size.cy);
    if (hFormer)
        ::SelectObject(dc, hFormer);
}

void CDwgListBox::DrawThumbnail(CDC& dc, const CRect& rc, const CString& strName, int nTextHeight) {
    for (POSITION at = m_listEntries.GetHeadPosition(); at;) {
        auto* pEntry = static_cast<CDwgThumbnail*>(m_listEntries.GetNext(at));
        if (pEntry->name != strName)
            continue;
        pEntry->Paint(dc, 1, rc.top + 2 + nTextHeight + 1, rc.Width(), m_nItemHeight - kCaption);
        return;
    }
}
