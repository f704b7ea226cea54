// The dock bar of the palette. There is at most one; it lives from the first BLOCKS until the module unloads.
#pragma once

#include "palette/block_palette_dlg.h"
#include "ui/adui_dock_control_bar.h"

class CResizableDockingDialog : public CAdUiDockControlBar {
    DECLARE_DYNAMIC(CResizableDockingDialog)

public:
    CResizableDockingDialog();
    ~CResizableDockingDialog() override;

    using CAdUiDockControlBar::Create;
    virtual BOOL Create(CWnd* pParent, LPCSTR title, CRect rect);
    /// Escape in the bar itself ends here.
    BOOL PreTranslateMessage(MSG* pMsg) override;

    CBlockPaletteDlg m_dlg;

protected:
    bool CanFrameworkTakeFocus() override;
    void SizeChanged(CRect* lpRect, BOOL bFloating, int flags) override;
    void OnUserSizing(UINT nSide, LPRECT pRect) override;
    /// A palette that is on show is neither hidden by its menu nor kept from docking.
    BOOL AddCustomMenuItems(LPARAM hMenu) override;
    void GetFloatingMinSize(long* pWidth, long* pHeight) override;

    int OnCreate(LPCREATESTRUCT lpCreateStruct);

    DECLARE_MESSAGE_MAP()
};

/// The command BLOCKS: makes the bar, or brings it back to sight.
void ShowPalette();
