#include "ui/canvas.h"

#include "ed/coordinates.h"
#include "ed/host.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace vndk::host {

namespace {

constexpr double kWheelStep = 1.25; // closer by that for each notch

} // namespace

BEGIN_MESSAGE_MAP(Canvas, CWnd)
ON_WM_PAINT()
ON_WM_ERASEBKGND()
ON_WM_SIZE()
ON_WM_SETCURSOR()
ON_WM_MOUSEWHEEL()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_LBUTTONDBLCLK()
ON_WM_RBUTTONDOWN()
ON_WM_MBUTTONDOWN()
ON_WM_MBUTTONUP()
ON_WM_MBUTTONDBLCLK()
ON_WM_MOUSEMOVE()
ON_MESSAGE(WM_MOUSELEAVE, &Canvas::OnMouseLeave)
ON_WM_CAPTURECHANGED()
ON_WM_DESTROY()
END_MESSAGE_MAP()

bool Canvas::create(CWnd& parent, UINT id) {
    const LPCSTR className = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_CROSS));
    if (!Create(className, "", WS_CHILD | WS_VISIBLE, CRect(), &parent, id))
        return false;
    picture_ = std::make_unique<DrawingPicture>();
    tool_ = std::make_unique<PointerTool>(host_, *picture_);
    tool_->onAnswer = [this] {
        if (onAnswer)
            onAnswer();
    };
    watcher_ = std::make_unique<DrawingWatcher>(
        host_.documents(), [this] { drawingChanged(); }, [this] { follow(); });
    host_.setDisplay(this);
    return true;
}

void Canvas::detach() {
    if (host_.display() == this)
        host_.setDisplay(nullptr);
    watcher_.reset();
    tool_.reset();
    picture_.reset();
    overlay_.clear();
}

// What is shown.

void Canvas::follow() {
    if (!picture_)
        return;
    AcApDocument* const former = picture_->document();
    picture_->show(host_.documents().curDocument());
    if (picture_->document() != former)
        tool_->drawingChanged();
    refreshMarks();
    if (GetSafeHwnd())
        Invalidate(FALSE);
}

/// Painted when nothing else is left to do.
void Canvas::drawingChanged() {
    picture_->forgetOutlines();
    viewChanged();
}

void Canvas::viewChanged() {
    if (!picture_)
        return;
    picture_->invalidate();
    if (GetSafeHwnd())
        Invalidate(FALSE);
}

void Canvas::update() {
    follow();
    if (GetSafeHwnd())
        UpdateWindow();
}

void Canvas::regenerate() {
    if (!picture_)
        return;
    picture_->model().invalidate();
    drawingChanged();
    update();
}

void Canvas::highlight(std::vector<AcDbObjectId> entities) {
    if (!tool_)
        return;
    tool_->highlight(std::move(entities));
    refreshMarks();
}

void Canvas::refreshMarks() {
    if (picture_->mark(tool_->marked()) && GetSafeHwnd())
        Invalidate(FALSE);
}

void Canvas::refreshOverlay() {
    overlay_.invalidate(*this);
    overlay_.clear();
    tool_->draw(overlay_);
    overlay_.invalidate(*this);
}

void Canvas::zoomExtents() {
    if (picture_)
        picture_->zoomExtents();
}

AcGePoint3d Canvas::worldAt(CPoint pixel) const {
    if (!picture_ || !picture_->document())
        return {};
    const AcGeMatrix3d toDevice = picture_->worldToDevice();
    const double depth = (toDevice * picture_->document()->views().current().center).z;
    return toDevice.inverse() * AcGePoint3d(pixel.x + 0.5, pixel.y + 0.5, depth);
}

// Prompts.

void Canvas::beginPrompt(const PromptRequest& request) {
    if (!tool_)
        return;
    tool_->begin(request);
    refreshMarks();
    refreshOverlay();
}

void Canvas::endPrompt() {
    if (!tool_)
        return;
    tool_->end();
    refreshMarks();
    refreshOverlay();
}

void Canvas::cancelSelection() {
    if (!tool_)
        return;
    tool_->cancel();
    refreshMarks();
    refreshOverlay();
}

// Painting.

void Canvas::OnPaint() {
    CPaintDC dc(this);
    const CRect part(dc.m_ps.rcPaint);
    if (!picture_ || !picture_->document()) {
        dc.FillSolidRect(part, ::GetSysColor(COLOR_APPWORKSPACE));
        return;
    }
    if (picture_->refresh()) {
        // The mouse may point at something else now.
        overlay_.clear();
        tool_->pictureChanged();
        if (onCursor && tool_->isInside())
            onCursor(tool_->place());
        tool_->draw(overlay_);
        overlay_.invalidate(*this);
        // What waited until it could be drawn is due everywhere.
        if (part.Width() < picture_->width() || part.Height() < picture_->height())
            Invalidate(FALSE);
    }
    picture_->paint(dc, part);
    Overlay axes;
    drawAxes(axes);
    axes.paint(dc);
    overlay_.paint(dc);
}

/// The axes of the UCS in the lower left corner, as long as they are seen.
void Canvas::drawAxes(Overlay& overlay) const {
    constexpr double kLength = 36, kWithName = kLength + 14;
    const AcGeMatrix3d toView =
        worldToView(picture_->document()->views().current()) * ucsToWorld(*picture_->document()->database());
    // Axes that run to the left or down take their room too.
    const auto least = [&](double AcGeVector3d::*way) {
        return std::lround(kWithName * std::min({0.0, toView.xAxis().*way, toView.yAxis().*way}));
    };
    const CPoint origin(20 - static_cast<int>(least(&AcGeVector3d::x)),
                        picture_->height() - 20 + static_cast<int>(least(&AcGeVector3d::y)));
    const COLORREF ink = picture_->background() == RGB(0, 0, 0) ? RGB(192, 192, 192) : RGB(64, 64, 64);
    const auto axis = [&](const AcGeVector3d& way, const char* name) {
        const CPoint end(origin.x + static_cast<int>(std::lround(way.x * kLength)),
                         origin.y - static_cast<int>(std::lround(way.y * kLength)));
        overlay.line(origin, end, ink);
        if (std::hypot(way.x, way.y) > 0.3)
            overlay.letter({end.x + static_cast<int>(way.x * 8), end.y - static_cast<int>(way.y * 8)}, name, ink);
    };
    axis(toView.xAxis(), "X");
    axis(toView.yAxis(), "Y");
    overlay.frame({origin.x - 3, origin.y - 3, origin.x + 3, origin.y + 3}, ink);
}

BOOL Canvas::OnEraseBkgnd(CDC*) { return TRUE; }

void Canvas::OnSize(UINT type, int width, int height) {
    CWnd::OnSize(type, width, height);
    if (!picture_ || width <= 0 || height <= 0)
        return;
    picture_->resize(width, height);
    Invalidate(FALSE);
}

/// The cross-hair is the cursor.
BOOL Canvas::OnSetCursor(CWnd* window, UINT hitTest, UINT message) {
    if (hitTest != HTCLIENT || !picture_ || !picture_->document())
        return CWnd::OnSetCursor(window, hitTest, message);
    ::SetCursor(panning_ ? ::LoadCursorA(nullptr, IDC_HAND) : nullptr);
    return TRUE;
}

// The view by mouse.

void Canvas::moveView(const AcGeVector3d& offset) {
    DrawingViews::View view = picture_->document()->views().current();
    view.center = view.center + offset;
    picture_->document()->views().show(view);
}

BOOL Canvas::OnMouseWheel(UINT, short delta, CPoint screen) {
    if (!view())
        return FALSE;
    ScreenToClient(&screen);
    DrawingViews& views = picture_->document()->views();
    const AcGePoint3d before = worldAt(screen);
    DrawingViews::View next = views.current();
    next.height *= std::pow(kWheelStep, -delta / static_cast<double>(WHEEL_DELTA));
    // One turning of the wheel is one view to go back to.
    std::exchange(wheeling_, true) ? views.show(next) : views.goTo(next);
    moveView(before - worldAt(screen));
    return TRUE;
}

void Canvas::OnMButtonDown(UINT, CPoint point) {
    if (!view())
        return;
    picture_->document()->views().goTo(picture_->document()->views().current());
    panning_ = true;
    wheeling_ = false;
    lastPoint_ = point;
    picture_->view()->setInteractive(true);
    SetCapture();
    ::SetCursor(::LoadCursorA(nullptr, IDC_HAND));
}

void Canvas::OnMButtonUp(UINT, CPoint) {
    if (panning_)
        ::ReleaseCapture();
}

void Canvas::OnCaptureChanged(CWnd*) {
    if (!std::exchange(panning_, false) || !view())
        return;
    view()->setInteractive(false);
    viewChanged();
    ::SetCursor(nullptr);
}

void Canvas::OnMButtonDblClk(UINT, CPoint) { zoomExtents(); }

// The mouse that points.

void Canvas::OnMouseMove(UINT flags, CPoint point) {
    if (!view())
        return;
    if (panning_ && (flags & MK_MBUTTON)) {
        moveView(worldAt(lastPoint_) - worldAt(point));
        lastPoint_ = point;
    }
    TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, m_hWnd, 0};
    ::TrackMouseEvent(&track);
    tool_->moveTo(point);
    refreshMarks();
    refreshOverlay();
    if (onCursor)
        onCursor(tool_->place());
}

LRESULT Canvas::OnMouseLeave(WPARAM, LPARAM) {
    if (!tool_)
        return 0;
    tool_->leave();
    refreshMarks();
    refreshOverlay();
    return 0;
}

void Canvas::OnLButtonDown(UINT flags, CPoint point) {
    if (!view())
        return;
    wheeling_ = false;
    tool_->press(point, (flags & MK_SHIFT) != 0);
    if (!tool_)
        return;
    refreshMarks();
    refreshOverlay();
}

void Canvas::OnLButtonUp(UINT flags, CPoint point) {
    if (!view())
        return;
    tool_->release(point, (flags & MK_SHIFT) != 0);
    if (!tool_)
        return;
    refreshMarks();
    refreshOverlay();
}

/// While something is asked it is a second click.
void Canvas::OnLButtonDblClk(UINT flags, CPoint point) {
    const AcDbObjectId id = view() ? tool_->entityToOpen(point) : AcDbObjectId();
    if (!id.isNull() && onOpenEntity)
        onOpenEntity(id);
    else
        OnLButtonDown(flags, point);
}

void Canvas::OnRButtonDown(UINT, CPoint) {
    if (onEnter)
        onEnter();
}

void Canvas::OnDestroy() {
    detach();
    CWnd::OnDestroy();
}

} // namespace vndk::host
