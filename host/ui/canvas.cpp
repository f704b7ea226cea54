#include "ui/canvas.h"

#include "db/block_table.h"
#include "db/open.h"
#include "ed/host.h"
#include "ed/pick.h"

#include <algorithm>

namespace vndk::host {

namespace {

constexpr double kMargin = 1.04;    // the field is that much larger than what is seen
constexpr double kWheelStep = 1.25; // closer by that for each notch

} // namespace

BEGIN_MESSAGE_MAP(Canvas, CWnd)
ON_WM_PAINT()
ON_WM_ERASEBKGND()
ON_WM_SIZE()
ON_WM_MOUSEWHEEL()
ON_WM_MBUTTONDOWN()
ON_WM_MBUTTONUP()
ON_WM_MBUTTONDBLCLK()
ON_WM_MOUSEMOVE()
ON_WM_DESTROY()
END_MESSAGE_MAP()

bool Canvas::create(CWnd& parent, UINT id) {
    const LPCSTR className = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_CROSS));
    if (!Create(className, "", WS_CHILD | WS_VISIBLE, CRect(), &parent, id))
        return false;
    device_ = acgsGetGsManager()->createAutoCADDevice(m_hWnd);
    return true;
}

void Canvas::detach() {
    AcGsManager& manager = *acgsGetGsManager();
    manager.getGSClassFactory()->deleteView(view_);
    manager.destroyAutoCADModel(model_);
    manager.destroyAutoCADDevice(device_);
    view_ = nullptr;
    model_ = nullptr;
    device_ = nullptr;
    shown_ = nullptr;
    space_ = {};
}

void Canvas::follow() {
    AcApDocument* const current = host_.documents().curDocument();
    const AcDbObjectId space = current ? currentSpace(*current->database()) : AcDbObjectId();
    if (!device_)
        return;
    if (space != space_) {
        AcGsClassFactory& factory = *acgsGetGsManager()->getGSClassFactory();
        factory.deleteView(view_);
        view_ = nullptr;
        if (!model_)
            model_ = acgsGetGsManager()->createAutoCADModel();
        if (const AcDbObjectPointer<AcDbBlockTableRecord> record(space); record) {
            view_ = factory.createView();
            view_->add(record.object(), model_);
            device_->add(view_);
        }
        shown_ = current;
        space_ = space;
        zoomExtents();
    }
    if (view_)
        view_->invalidate();
    if (GetSafeHwnd())
        Invalidate(FALSE);
}

void Canvas::zoomExtents() {
    AcDbExtents extents;
    if (!view_ || !model_->visibleExtents(space_, extents))
        return;
    const AcGePoint3d &low = extents.minPoint(), &high = extents.maxPoint();
    const AcGePoint3d middle = low + (high - low) * 0.5;
    const double width = high.x - low.x, height = high.y - low.y;
    // A line along an axis fills the window by its length; a single point is seen from one unit.
    const double least = std::max(width, height) > 0 ? std::max(width, height) * 1e-6 : 1;
    view_->setView(middle + AcGeVector3d::kZAxis, middle, AcGeVector3d::kYAxis, std::max(width, least) * kMargin,
                   std::max(height, least) * kMargin);
    Invalidate(FALSE);
}

AcGePoint3d Canvas::worldAt(CPoint pixel) const {
    if (!view_)
        return {};
    const AcGeMatrix3d toDevice = view_->worldToDeviceMatrix();
    const double depth = (toDevice * view_->target()).z;
    return toDevice.inverse() * AcGePoint3d(pixel.x + 0.5, pixel.y + 0.5, depth);
}

void Canvas::OnPaint() {
    CPaintDC dc(this);
    if (view_) {
        view_->update();
        return;
    }
    CRect client;
    GetClientRect(client);
    dc.FillSolidRect(client, ::GetSysColor(COLOR_APPWORKSPACE));
}

BOOL Canvas::OnEraseBkgnd(CDC*) { return TRUE; }

void Canvas::OnSize(UINT type, int width, int height) {
    CWnd::OnSize(type, width, height);
    if (device_)
        device_->onSize(width, height);
}

void Canvas::moveBy(CPoint from, CPoint to) {
    const AcGeMatrix3d viewing = view_->viewingMatrix();
    view_->dolly(viewing * worldAt(from) - viewing * worldAt(to));
    Invalidate(FALSE);
}

BOOL Canvas::OnMouseWheel(UINT, short delta, CPoint screen) {
    if (!view_)
        return FALSE;
    ScreenToClient(&screen);
    const AcGeMatrix3d viewing = view_->viewingMatrix();
    const AcGePoint3d before = viewing * worldAt(screen);
    view_->zoom(delta > 0 ? kWheelStep : 1 / kWheelStep);
    view_->dolly(before - viewing * worldAt(screen));
    Invalidate(FALSE);
    return TRUE;
}

void Canvas::OnMButtonDown(UINT, CPoint point) {
    panning_ = view_ != nullptr;
    lastPoint_ = point;
    SetCapture();
}

void Canvas::OnMButtonUp(UINT, CPoint) {
    panning_ = false;
    ::ReleaseCapture();
}

void Canvas::OnMButtonDblClk(UINT, CPoint) { zoomExtents(); }

void Canvas::OnMouseMove(UINT flags, CPoint point) {
    if (view_ && onCursor)
        onCursor(worldAt(point));
    if (panning_ && view_ && (flags & MK_MBUTTON)) {
        moveBy(lastPoint_, point);
        lastPoint_ = point;
    }
}

void Canvas::OnDestroy() {
    detach();
    CWnd::OnDestroy();
}

} // namespace vndk::host
