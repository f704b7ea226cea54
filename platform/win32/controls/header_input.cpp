// Mouse input of the header control: pressing items, dragging dividers, dragging items.
#include "controls/header_control.h"
#include "user/input_queue.h"
#include "win32/draw.h"
#include "win32/icons.h"
#include "win32/input.h"
#include "win32/metrics.h"
#include "win32/paint.h"

#include <algorithm>
#include <utility>

namespace vndk::win32 {

LRESULT HeaderControl::handleInput(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
    case WM_LBUTTONDOWN:
        onButtonDown(point);
        return 0;
    case WM_LBUTTONDBLCLK:
        onDoubleClick(point);
        return 0;
    case WM_MOUSEMOVE:
        onMouseMove(point);
        return 0;
    case WM_LBUTTONUP:
        onButtonUp(point);
        return 0;
    case WM_RBUTTONUP:
        if (notify(NM_RCLICK) == 0 && alive())
            return defaultHandling(message, wParam, lParam);
        return 0;
    case WM_MOUSELEAVE:
        setHot(-1);
        return 0;
    case WM_CAPTURECHANGED:
    case WM_CANCELMODE:
        if (reinterpret_cast<HWND>(lParam) != window())
            onCancel();
        return 0;
    case WM_KEYDOWN:
        if (wParam == VK_ESCAPE)
            onCancel();
        return 0;
    case WM_SETCURSOR:
        if (reinterpret_cast<HWND>(wParam) == window() && LOWORD(static_cast<DWORD_PTR>(lParam)) == HTCLIENT &&
            onSetCursor())
            return TRUE;
        return defaultHandling(message, wParam, lParam);
    default:
        return defaultHandling(message, wParam, lParam);
    }
}

bool HeaderControl::onSetCursor() const {
    POINT point{};
    GetCursorPos(&point);
    ScreenToClient(window(), &point);
    UINT flags = 0;
    static_cast<void>(hitTest(point, flags));
    if ((flags & (HHT_ONDIVIDER | HHT_ONDIVOPEN)) == 0 && press_ != Press::divider)
        return false;
    SetCursor(LoadCursorA(nullptr, IDC_SIZEWE));
    return true;
}

void HeaderControl::onButtonDown(POINT point) {
    UINT flags = 0;
    const int index = hitTest(point, flags);
    if ((flags & (HHT_ONDIVIDER | HHT_ONDIVOPEN)) != 0)
        beginTrack(index, point);
    else if ((flags & HHT_ONHEADER) != 0 && (style() & (HDS_BUTTONS | HDS_DRAGDROP)) != 0)
        pressItem(index, point);
}

void HeaderControl::onDoubleClick(POINT point) {
    UINT flags = 0;
    const int index = hitTest(point, flags);
    if ((flags & (HHT_ONDIVIDER | HHT_ONDIVOPEN)) != 0)
        notifyItem(HDN_DIVIDERDBLCLICK, index);
    else if ((flags & HHT_ONHEADER) != 0 && hasStyle(HDS_BUTTONS))
        notifyItem(HDN_ITEMDBLCLICK, index);
}

void HeaderControl::onMouseMove(POINT point) {
    switch (press_) {
    case Press::divider:
        track(point);
        break;
    case Press::item:
    case Press::drag:
        movePressed(point);
        break;
    case Press::none:
        if (hasStyle(HDS_HOTTRACK)) {
            UINT flags = 0;
            const int index = hitTest(point, flags);
            setHot((flags & HHT_ONHEADER) != 0 ? index : -1);
        }
        break;
    }
}

void HeaderControl::onButtonUp(POINT point) {
    switch (press_) {
    case Press::divider:
        track(point);
        if (alive() && press_ == Press::divider)
            endTrack(true);
        break;
    case Press::item:
        releaseItem(point);
        break;
    case Press::drag:
        dropItem(point);
        break;
    case Press::none:
        break;
    }
}

void HeaderControl::onCancel() {
    if (press_ == Press::divider) {
        endTrack(false);
        return;
    }
    if (press_ == Press::none)
        return;
    hotDivider_ = -1;
    invalidate();
    releaseMouse();
}

void HeaderControl::releaseMouse() {
    press_ = Press::none;
    pressedLooksDown_ = false;
    if (GetCapture() == window()) {
        ReleaseCapture();
        if (alive())
            notify(NM_RELEASEDCAPTURE);
    }
}

void HeaderControl::setHot(int index) {
    if (hotItem_ == index)
        return;
    if (isItem(hotItem_))
        invalidateItem(hotItem_);
    hotItem_ = index;
    if (!isItem(index))
        return;
    invalidateItem(index);
    TRACKMOUSEEVENT track{sizeof(TRACKMOUSEEVENT), TME_LEAVE, window(), 0};
    TrackMouseEvent(&track);
}

// ---- Dividers ------------------------------------------------------------------------------------------------------

void HeaderControl::beginTrack(int index, POINT point) {
    HDITEMA told{};
    told.mask = HDI_WIDTH;
    told.cxy = item(index).width;
    if (notifyItem(HDN_BEGINTRACK, index, &told) != 0 || !alive() || !isItem(index))
        return;
    press_ = Press::divider;
    pressed_ = index;
    pressPoint_ = point;
    formerWidth_ = item(index).width;
    SetCapture(window());
    if (!hasStyle(HDS_FULLDRAG)) {
        lineAt_ = left(index) + formerWidth_ - 1;
        drawTrackLine();
    }
}

int HeaderControl::trackedWidth(POINT point) const { return std::max(0, formerWidth_ + point.x - pressPoint_.x); }

void HeaderControl::track(POINT point) {
    const int width = trackedWidth(point);
    HDITEMA told{};
    told.mask = HDI_WIDTH;
    told.cxy = width;
    if (hasStyle(HDS_FULLDRAG)) {
        if (item(pressed_).width != width)
            changeItem(pressed_, told);
        return;
    }
    const bool ends = notifyItem(HDN_TRACK, pressed_, &told) != 0;
    if (!alive() || press_ != Press::divider)
        return;
    if (ends) {
        endTrack(false);
        return;
    }
    drawTrackLine();
    lineAt_ = left(pressed_) + width - 1;
    drawTrackLine();
}

void HeaderControl::endTrack(bool keep) {
    const bool follows = hasStyle(HDS_FULLDRAG);
    int width = formerWidth_;
    if (follows && keep)
        width = item(pressed_).width;
    else if (keep)
        width = std::max(0, lineAt_ + 1 - left(pressed_));
    if (lineAt_ >= 0)
        drawTrackLine();
    lineAt_ = -1;
    const int index = pressed_;
    releaseMouse();
    if (!alive() || !isItem(index))
        return;
    HDITEMA told{};
    told.mask = HDI_WIDTH;
    told.cxy = width;
    notifyItem(HDN_ENDTRACK, index, &told);
    if (alive() && isItem(index) && item(index).width != width)
        changeItem(index, told);
}

void HeaderControl::drawTrackLine() const {
    const RECT line{lineAt_, 0, lineAt_ + 1, clientRect().bottom};
    const HDC dc = GetDC(window());
    InvertRect(dc, &line);
    ReleaseDC(window(), dc);
}

// ---- Items ---------------------------------------------------------------------------------------------------------

void HeaderControl::pressItem(int index, POINT point) {
    press_ = Press::item;
    pressed_ = index;
    pressPoint_ = point;
    pressedLooksDown_ = hasStyle(HDS_BUTTONS);
    SetCapture(window());
    invalidateItem(index);
}

void HeaderControl::movePressed(POINT point) {
    if (press_ == Press::drag) {
        if (const int mark = dropOrder(point); mark != hotDivider_) {
            hotDivider_ = mark;
            invalidate();
        }
        return;
    }
    const bool moved = std::abs(point.x - pressPoint_.x) > GetSystemMetrics(SM_CXDRAG) ||
                       std::abs(point.y - pressPoint_.y) > GetSystemMetrics(SM_CYDRAG);
    if (moved && hasStyle(HDS_DRAGDROP)) {
        const int index = pressed_;
        HDITEMA told{};
        told.mask = HDI_ORDER;
        told.iOrder = orderOf(index);
        const bool refused = notifyItem(HDN_BEGINDRAG, index, &told) != 0;
        if (!alive() || press_ != Press::item)
            return;
        press_ = Press::drag;
        if (refused)
            onCancel();
        return;
    }
    UINT flags = 0;
    const bool over = hitTest(point, flags) == pressed_ && (flags & (HHT_ONHEADER | HHT_ONDIVIDER)) != 0;
    if (const bool down = over && hasStyle(HDS_BUTTONS); down != pressedLooksDown_) {
        pressedLooksDown_ = down;
        invalidateItem(pressed_);
    }
}

void HeaderControl::releaseItem(POINT point) {
    UINT flags = 0;
    const int index = pressed_;
    const bool clicked = hasStyle(HDS_BUTTONS) && hitTest(point, flags) == index;
    invalidateItem(index);
    releaseMouse();
    if (clicked && alive() && isItem(index))
        notifyItem(HDN_ITEMCLICK, index);
}

int HeaderControl::dropOrder(POINT point) const {
    int x = 0;
    for (std::size_t place = 0; place < order_.size(); ++place) {
        const int width = item(order_[place]).width;
        if (point.x < x + width / 2)
            return static_cast<int>(place);
        x += width;
    }
    return count();
}

void HeaderControl::dropItem(POINT point) {
    const int index = pressed_;
    const int from = orderOf(index);
    int to = dropOrder(point);
    if (to > from)
        --to; // it leaves its own place first
    hotDivider_ = -1;
    invalidate();
    releaseMouse();
    if (!alive() || !isItem(index))
        return;
    HDITEMA told{};
    told.mask = HDI_ORDER;
    told.iOrder = to;
    const bool refused = notifyItem(HDN_ENDDRAG, index, &told) != 0;
    if (!refused && alive() && isItem(index) && told.iOrder >= 0 && told.iOrder != from)
        changeItem(index, told);
}

} // namespace vndk::win32
