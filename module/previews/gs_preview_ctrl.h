// A child window that shows a block of the current drawing, or the model space of a drawing file, through the host's
// graphics system; zoom, pan and orbit by the mouse.
//
//     CGsPreviewCtrl ctrl;
//     ctrl.Create("", WS_CHILD | WS_VISIBLE, rect, this, 1100);
//     ctrl.LoadBlock("DOOR");
//     ctrl.mMode = CGsPreviewCtrl::kOrbit;
//
// Graphics objects live from one load to the next, or to the window's end. No object of a drawing stays open. The
// control doesn't follow changes of the drawing.
#pragma once

#include "db/database.h"
#include "gs/manager.h"
#include "mfc/afx.h"
#include "previews/preview_gadget.h"

#include <memory>

class AcDbBlockTableRecord;

class CGsPreviewCtrl : public CStatic {
public:
    /// What the left button does.
    enum Mode { kOrbit = 1, kPan = 2, kZoom = 3 };

    CGsPreviewCtrl();
    ~CGsPreviewCtrl() override;

    /// Shows the model space of a drawing file. The user is told when that can't be done.
    void LoadDrawing(CString strPath);
    /// Shows a block of the working database, or of the drawing file that was loaded before. A name that isn't one
    /// shows nothing.
    void LoadBlock(CString strName);
    /// Gives back every graphics object. Nothing is on show.
    virtual void clearAll();
    /// Paints the gadget over the picture at once.
    void DrawOrbitGadgetNow(bool bWanted);

    const CString& ShownName() const { return mShownName; }
    const CString& DrawingPath() const { return mDrawingPath; }

    int mMode = kPan;

protected:
    void OnPaint();
    void OnSize(UINT nType, int cx, int cy);
    BOOL OnMouseWheel(UINT nFlags, short zDelta, CPoint point);
    void OnLButtonDown(UINT nFlags, CPoint point);
    void OnLButtonUp(UINT nFlags, CPoint point);
    void OnLButtonDblClk(UINT nFlags, CPoint point);
    void OnMButtonDown(UINT nFlags, CPoint point);
    void OnMButtonUp(UINT nFlags, CPoint point);
    void OnRButtonUp(UINT nFlags, CPoint point);
    void OnRButtonDblClk(UINT nFlags, CPoint point);
    void OnMouseMove(UINT nFlags, CPoint point);
    LRESULT OnNcHitTest(CPoint point);
    void OnSetFocus(CWnd* pOldWnd);
    void OnKillFocus(CWnd* pNewWnd);
    void OnDestroy();

    DECLARE_MESSAGE_MAP()

private:
    void SetUpGraphics(HINSTANCE hResources, bool bMakeModel);
    /// Takes the record, open for read, and closes it.
    void SetUpView(AcDbBlockTableRecord* pRecord, bool bDrawing);
    void SetCamera(const AcDbExtents& extents);
    [[nodiscard]] AcDbExtents ExtentsOf(const AcDbBlockTableRecord& record) const;
    void ApplyRenderMode();
    void ReadDrawing(const CString& strPath);
    /// The record, open for read; null when it can't be had.
    [[nodiscard]] static AcDbBlockTableRecord* OpenRecord(AcDbDatabase* pDatabase, const CString& strName);
    /// Null: the window's own context.
    void DrawOrbitGadget(CDC* pDC);
    void UpdateFocusRect();
    void DrawFocusRect();

    void BeginDrag(CPoint point, HCURSOR hCursor);
    void ShowCursorOf(HCURSOR hCursor);
    [[nodiscard]] HCURSOR ModeCursor() const;
    void ZoomStep(CPoint point);
    void PanStep(CPoint point);
    void OrbitStep(CPoint point);
    void RedrawNow();

    std::unique_ptr<AcDbDatabase> mpDatabase; ///< read from a drawing file; null while a block is shown
    CString mShownName;                       ///< a block's, or that of model space; empty: nothing is on show
    CString mDrawingPath;                     ///< full; empty for a block
    double mZoomFactor = 1.0;                 ///< of the last step of a zoom drag
    std::unique_ptr<CBrush> mBackBrush;       ///< fills the window while nothing is on show
    HCURSOR mhZoomCursor = nullptr;
    HCURSOR mhPanCursor = nullptr;
    HCURSOR mhOrbitCursor = nullptr;
    AcGsManager* mpManager = nullptr;
    AcGsClassFactory* mpFactory = nullptr;
    AcGsDevice* mpDevice = nullptr;
    AcGsView* mpView = nullptr;
    AcGsModel* mpModel = nullptr;
    AcGsModel* mpDirectModel = nullptr; ///< for the gadget
    CPreviewGadget mGadget;
    BYTE mOwnsModel = 0;
    BYTE mZooming = 0; ///< which drags run
    BYTE mPanning = 0;
    BYTE mOrbiting = 0;
    CPoint mLastPoint; ///< of the last step of a drag, client coordinates
    BYTE mShowGadget = 1;
    int mRenderMode = AcGsView::kFlatShadedWithWireframe;
    CRect mFocusRect;
};
