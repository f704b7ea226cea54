// The list of the tab "Blocks": the named blocks of the working database, each with its picture or a stock icon.
//
// It holds nothing but pictures; whenever the set of blocks may have changed it is cleared and read anew.
#pragma once

#include "frame/palette_views.h"
#include "mfc/afx.h"

#include <memory>

class AcDbBlockTable;
class AcDbBlockTableRecord;
class CBlockPaletteDlg;
class CPaletteDocReactor;

class CBlockIconList : public CListCtrl, public CBlockListView {
public:
    CBlockIconList();
    ~CBlockIconList() override;

    /// Once, when the list has its window and its colour.
    void Init(CBlockPaletteDlg* dlg);
    void Refresh() override;
    /// The index of the record's picture, which is appended to the images; 0, the stock icon, without one. The record
    /// is open for read.
    int GetBlockIcon(AcDbBlockTableRecord* record);

    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    int OnCreate(LPCREATESTRUCT lpCreateStruct);
    void OnSize(UINT nType, int cx, int cy);
    void OnDestroy();
    void OnLButtonDown(UINT nFlags, CPoint point);
    void OnLButtonUp(UINT nFlags, CPoint point);
    void OnClick(NMHDR* pNMHDR, LRESULT* pResult);
    void OnReturn(NMHDR* pNMHDR, LRESULT* pResult);

    DECLARE_MESSAGE_MAP()

private:
    void InsertBlocks(const AcDbBlockTable& table);
    void AddBlock(AcDbBlockTableRecord* record);
    void DetachImages();
    void RemoveDocReactor();

    CToolTipCtrl m_toolTip; // inactive, without tools
    std::unique_ptr<CPaletteDocReactor> m_pDocReactor;
    std::unique_ptr<CImageList> m_pImageList;
};

// Packed device-independent bitmaps: a header, the colour table, the pixel rows.

/// Of the colour table; 0 for pictures that need none.
UINT DibNumColors(const BITMAPINFOHEADER* dib);
/// A movable copy, which the caller frees; null without memory.
HGLOBAL CopyDibToGlobal(const BITMAPINFOHEADER* dib);
/// A bitmap like the screen's; null for a null handle, or when it can't be made.
HBITMAP DibToBitmap(HGLOBAL dib);
/// Whether `count` bytes hold a whole picture with a stated size, whose rows are as long as its header says.
bool IsWholeDib(const BYTE* bytes, std::size_t count);
