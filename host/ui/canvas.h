// The window that shows the current document's current space through the graphics system.
//
// Pixels are those of the client area, y downward. The wheel zooms at the cursor, the middle button pans, its double
// click shows all.
#pragma once

#include "ge/extents.h"
#include "gs/manager.h"
#include "mfc/afx.h"

#include <functional>

class AcApDocument;

namespace vndk::host {

class Host;

class Canvas : public CWnd {
public:
    explicit Canvas(Host& host) : host_(host) {}
    ~Canvas() override { detach(); }

    bool create(CWnd& parent, UINT id);
    /// Shows what the current document is like now; another document than before begins with all of it.
    void follow();
    /// Gives back the graphics objects. Nothing is shown from then on.
    void detach();

    /// Null while no drawing is shown.
    AcGsView* view() { return view_; }
    void zoomExtents();
    /// Where the line of sight through a pixel meets the target's plane; world coordinates.
    AcGePoint3d worldAt(CPoint pixel) const;
    /// Told where the cursor is as it moves over the drawing; world coordinates.
    std::function<void(const AcGePoint3d&)> onCursor;

protected:
    void OnPaint();
    BOOL OnEraseBkgnd(CDC* dc);
    void OnSize(UINT type, int width, int height);
    BOOL OnMouseWheel(UINT flags, short delta, CPoint screen);
    void OnMButtonDown(UINT flags, CPoint point);
    void OnMButtonUp(UINT flags, CPoint point);
    void OnMButtonDblClk(UINT flags, CPoint point);
    void OnMouseMove(UINT flags, CPoint point);
    void OnDestroy();

    DECLARE_MESSAGE_MAP()

private:
    void moveBy(CPoint from, CPoint to);

    Host& host_;
    AcApDocument* shown_ = nullptr;
    AcDbObjectId space_;
    AcGsDevice* device_ = nullptr;
    AcGsView* view_ = nullptr;
    AcGsModel* model_ = nullptr;
    bool panning_ = false;
    CPoint lastPoint_;
};

} // namespace vndk::host
