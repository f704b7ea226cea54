// Mouse input of the list view: clicks, drags, the rubber band, tracking of what is under the pointer.
#include "controls/list_view.h"

#include "win32/draw.h"
#include "win32/input.h"
#include "win32/metrics.h"
#include "win32/paint.h"
#include "win32/queue.h"

#include <algorithm>
#include <cstdlib>

namespace vndk::win32 {

namespace {

constexpr UINT_PTR editTimer = 0x2B;
constexpr UINT_PTR bandTimer = 0x2C;
constexpr UINT bandScrollPeriod = 50; // milliseconds
constexpr DWORD hotStyles = LVS_EX_TRACKSELECT | LVS_EX_ONECLICKACTIVATE | LVS_EX_TWOCLICKACTIVATE;

UINT keyFlags() {
    return (GetKeyState(VK_SHIFT) < 0 ? LVKF_SHIFT : 0U) | (GetKeyState(VK_CONTROL) < 0 ? LVKF_CONTROL : 0U) |
           (GetKeyState(VK_MENU) < 0 ? LVKF_ALT : 0U);
}

} // namespace

LRESULT ListView::handleMouse(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
    case WM_LBUTTONDOWN:
        onButtonDown(point, wParam);
        return 0;
    case WM_LBUTTONUP:
        if (!pressedRight_)
            onButtonUp(point);
        return 0;
    case WM_LBUTTONDBLCLK:
        onDoubleClick(point, NM_DBLCLK);
        return 0;
    case WM_RBUTTONDOWN:
        onRightButtonDown(point);
        return 0;
    case WM_RBUTTONUP:
        endPress();
        if (alive() && notifyClick(NM_RCLICK, point) == 0 && alive())
            return defaultHandling(message, wParam, lParam); // asks for a context menu
        return 0;
    case WM_RBUTTONDBLCLK:
        onDoubleClick(point, NM_RDBLCLK);
        return 0;
    case WM_MOUSEMOVE:
        onMouseMove(point, wParam);
        return 0;
    case WM_MOUSEWHEEL:
        if (!hasStyle(WS_VSCROLL) && !hasStyle(WS_HSCROLL))
            break;
        onWheel(static_cast<SHORT>(HIWORD(wParam)));
        return 0;
    default:
        break;
    }
    return defaultHandling(message, wParam, lParam);
}

// ---- Left button ---------------------------------------------------------------------------------------------------

void ListView::onButtonDown(POINT point, WPARAM keys) {
    cancelEditTimer();
    endLabelEdit(true);
    const bool hadFocus = alive() && focused();
    if (alive() && !hadFocus)
        SetFocus(window());
    if (!alive())
        return;
    UINT flags = 0;
    const int index = hitTest(point, flags);
    if (!alive())
        return;
    pressPoint_ = point;
    pressed_ = index;
    pressedRight_ = deselectOnRelease_ = toggleOnRelease_ = editOnRelease_ = false;
    press_ = index >= 0 ? Press::item : Press::ground;
    if (index < 0) {
        pressOnGround(keys);
    } else {
        const bool plain = (keys & (MK_SHIFT | MK_CONTROL)) == 0;
        editOnRelease_ = plain && hadFocus && hasStyle(LVS_EDITLABELS) && flags == LVHT_ONITEMLABEL &&
                         storedState(index, LVIS_SELECTED | LVIS_FOCUSED) == (LVIS_SELECTED | LVIS_FOCUSED);
        pressOnItem(index, flags, keys);
    }
    // A handler may have ended the press, by a dialog for example.
    if (alive() && press_ != Press::none)
        SetCapture(window());
}

void ListView::pressOnItem(int index, UINT flags, WPARAM keys) {
    if (flags == LVHT_ONITEMSTATEICON && hasExtended(LVS_EX_CHECKBOXES)) {
        toggleCheck(index);
        return;
    }
    const bool multiple = !hasStyle(LVS_SINGLESEL);
    const bool control = multiple && (keys & MK_CONTROL) != 0;
    if (multiple && (keys & MK_SHIFT) != 0) {
        if (!isItem(mark_))
            mark_ = std::max(focus_, 0);
        selectRange(mark_, index, control);
        if (alive() && isItem(index))
            setState(index, LVIS_FOCUSED, LVIS_FOCUSED);
        return;
    }
    mark_ = index;
    if (control) {
        toggleOnRelease_ = isSelected(index); // a drag takes it along
        setState(index, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
        return;
    }
    deselectOnRelease_ = isSelected(index) && selectedCount() > 1;
    if (!deselectOnRelease_)
        deselectAll(index);
    if (alive() && isItem(index))
        setState(index, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
}

void ListView::pressOnGround(WPARAM keys) {
    bandBefore_.clear();
    if ((keys & (MK_SHIFT | MK_CONTROL)) == 0) {
        deselectAll();
        return;
    }
    for (int index = nextSelected(0); index >= 0; index = nextSelected(index + 1))
        bandBefore_.push_back(index);
}

void ListView::onDoubleClick(POINT point, UINT code) {
    cancelEditTimer();
    endLabelEdit(true);
    if (alive() && !focused())
        SetFocus(window());
    if (!alive())
        return;
    UINT flags = 0;
    const int index = hitTest(point, flags);
    if (alive() && index >= 0 && flags == LVHT_ONITEMSTATEICON && hasExtended(LVS_EX_CHECKBOXES))
        toggleCheck(index);
    if (!alive())
        return;
    notifyClick(code, point);
    if (alive() && code == NM_DBLCLK && isItem(index) && !hasExtended(LVS_EX_ONECLICKACTIVATE))
        activate(index, point);
}

void ListView::onButtonUp(POINT point) {
    const Press former = press_;
    if (former == Press::none)
        return;
    if (former == Press::band) {
        endBand();
        return;
    }
    const int index = pressed_;
    const bool edit = editOnRelease_;
    if (former == Press::item)
        releaseOnItem();
    if (alive())
        endPress();
    if (!alive())
        return;
    notifyClick(NM_CLICK, point);
    if (!alive() || former != Press::item || !isItem(index))
        return;
    if (hasExtended(LVS_EX_ONECLICKACTIVATE)) {
        activate(index, point);
    } else if (edit && focused() && isSelected(index)) {
        editCandidate_ = index;
        SetTimer(window(), editTimer, GetDoubleClickTime(), nullptr);
    }
}

void ListView::releaseOnItem() {
    if (!isItem(pressed_))
        return;
    if (toggleOnRelease_)
        setState(pressed_, 0, LVIS_SELECTED);
    else if (deselectOnRelease_)
        deselectAll(pressed_);
}

void ListView::endPress() {
    press_ = Press::none;
    pressed_ = -1;
    pressedRight_ = false;
    if (GetCapture() != window())
        return;
    ReleaseCapture();
    if (alive())
        notify(NM_RELEASEDCAPTURE);
}

void ListView::onCaptureLost() {
    if (press_ == Press::band)
        endBand();
    press_ = Press::none;
    pressed_ = -1;
    pressedRight_ = false;
}

void ListView::onMouseMove(POINT point, WPARAM /*keys*/) {
    if (press_ == Press::band) {
        moveBand(point);
        return;
    }
    if (press_ == Press::none) {
        if (hasExtended(hotStyles)) {
            UINT flags = 0;
            const int index = hitTest(point, flags);
            if (alive())
                setHot(index, point);
        }
        return;
    }
    const bool moved = std::abs(point.x - pressPoint_.x) >= GetSystemMetrics(SM_CXDRAG) ||
                       std::abs(point.y - pressPoint_.y) >= GetSystemMetrics(SM_CYDRAG);
    if (!moved)
        return;
    if (press_ == Press::item)
        beginDrag(pressedRight_ ? LVN_BEGINRDRAG : LVN_BEGINDRAG);
    else if (!hasStyle(LVS_SINGLESEL) && !pressedRight_)
        beginBand();
}

void ListView::beginDrag(UINT code) {
    const int index = pressed_;
    endPress(); // the parent takes the mouse from here
    if (!alive() || !isItem(index))
        return;
    NMLISTVIEW told{};
    told.iItem = index;
    told.ptAction = pressPoint_;
    told.lParam = dataOf(index);
    notify(code, told);
}

// ---- Right button --------------------------------------------------------------------------------------------------

void ListView::onRightButtonDown(POINT point) {
    cancelEditTimer();
    endLabelEdit(true);
    if (alive() && !focused())
        SetFocus(window());
    if (!alive())
        return;
    UINT flags = 0;
    const int index = hitTest(point, flags);
    if (!alive())
        return;
    pressPoint_ = point;
    pressed_ = index;
    pressedRight_ = true;
    press_ = index >= 0 ? Press::item : Press::ground;
    if (index < 0 || !isSelected(index))
        deselectAll(index);
    if (alive() && isItem(index))
        setState(index, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
    if (!alive())
        return;
    if (isItem(index))
        mark_ = index;
    if (press_ != Press::none)
        SetCapture(window());
}

// ---- Rubber band ---------------------------------------------------------------------------------------------------

void ListView::beginBand() {
    NMLISTVIEW told{};
    told.iItem = -1;
    if (notify(LVN_MARQUEEBEGIN, told) != 0 || !alive() || press_ != Press::ground) {
        if (alive() && press_ == Press::ground)
            endPress();
        return;
    }
    press_ = Press::band;
    const POINT offset = viewOffset();
    bandFrom_ = bandTo_ = {pressPoint_.x + offset.x, pressPoint_.y + offset.y};
    SetTimer(window(), bandTimer, bandScrollPeriod, nullptr);
}

/// From client to view coordinates, in pixels.
POINT ListView::viewOffset() const {
    if (isReport())
        return {scroll_.x, lengthOf(scroll_.y, rowHeight_)};
    return view() == LVS_LIST ? POINT{lengthOf(scroll_.x, listColumnWidth_), 0} : scroll_;
}

RECT ListView::bandRect() const {
    const POINT offset = viewOffset();
    RECT rect{std::min(bandFrom_.x, bandTo_.x), std::min(bandFrom_.y, bandTo_.y), std::max(bandFrom_.x, bandTo_.x) + 1,
              std::max(bandFrom_.y, bandTo_.y) + 1};
    OffsetRect(&rect, -offset.x, -offset.y);
    return rect;
}

void ListView::invalidateBand() const {
    const RECT band = bandRect();
    for (const RECT& side : {RECT{band.left, band.top, band.right, band.top + 1},
                             RECT{band.left, band.bottom - 1, band.right, band.bottom},
                             RECT{band.left, band.top, band.left + 1, band.bottom},
                             RECT{band.right - 1, band.top, band.right, band.bottom}})
        invalidate(&side);
}

void ListView::moveBand(POINT point) {
    const POINT offset = viewOffset();
    invalidateBand();
    bandTo_ = {point.x + offset.x, point.y + offset.y};
    invalidateBand();
    selectBand();
}

void ListView::selectBand() {
    const RECT band = bandRect();
    std::vector<int> inside;
    for (const int index : itemsTouching(band)) {
        if (!alive() || !isItem(index))
            return;
        const ItemRects rects = itemRects(index);
        const RECT label = selectRect(index, rects);
        RECT common{};
        if (IntersectRect(&common, &band, &rects.icon) != FALSE || IntersectRect(&common, &band, &label) != FALSE)
            inside.push_back(index);
    }
    const auto wasSelected = [this](int index) {
        return std::binary_search(bandBefore_.begin(), bandBefore_.end(), index);
    };
    const auto isInside = [&inside](int index) { return std::binary_search(inside.begin(), inside.end(), index); };
    for (int index = nextSelected(0); alive() && index >= 0; index = nextSelected(index + 1))
        if (isInside(index) == wasSelected(index))
            setState(index, 0, LVIS_SELECTED);
    for (const int index : inside)
        if (alive() && isItem(index) && !wasSelected(index))
            setState(index, LVIS_SELECTED, LVIS_SELECTED);
    for (const int index : bandBefore_)
        if (alive() && isItem(index) && !isInside(index))
            setState(index, LVIS_SELECTED, LVIS_SELECTED);
}

void ListView::endBand() {
    KillTimer(window(), bandTimer);
    invalidateBand();
    bandBefore_.clear();
    endPress();
}

void ListView::scrollWithBand() {
    POINT point{};
    GetCursorPos(&point);
    ScreenToClient(window(), &point);
    const RECT area = listArea();
    const auto beyond = [](LONG at, LONG low, LONG high) { return at < low ? -1 : at >= high ? 1 : 0; };
    const int across = beyond(point.x, area.left, area.right);
    const int down = beyond(point.y, area.top, area.bottom);
    if (across == 0 && down == 0)
        return;
    const bool pixels = isIconic();
    scrollTo(
        {scroll_.x + across * (pixels || isReport() ? rowHeight_ : 1), scroll_.y + down * (pixels ? rowHeight_ : 1)});
    if (alive())
        moveBand(point);
}

void ListView::onTimer(UINT_PTR timer) {
    if (timer == bandTimer && press_ == Press::band)
        scrollWithBand();
    if (timer != editTimer)
        return;
    const int index = editCandidate_;
    cancelEditTimer();
    if (isItem(index) && isSelected(index) && focused())
        onEditLabel(index);
}

void ListView::cancelEditTimer() {
    if (editCandidate_ >= 0)
        KillTimer(window(), editTimer);
    editCandidate_ = -1;
}

// ---- What lies under the pointer -----------------------------------------------------------------------------------

void ListView::setHot(int index, POINT point) {
    if (index >= 0 && hasExtended(hotStyles)) {
        TRACKMOUSEEVENT track{sizeof(TRACKMOUSEEVENT), TME_LEAVE | TME_HOVER, window(), hoverTime_};
        TrackMouseEvent(&track);
    }
    if (index == hot_)
        return;
    NMLISTVIEW told{};
    told.iItem = index;
    told.ptAction = point;
    if (notify(LVN_HOTTRACK, told) != 0)
        index = -1;
    if (!alive())
        return;
    invalidateItem(hot_);
    hot_ = isItem(index) ? index : -1;
    invalidateItem(hot_);
}

void ListView::onHover(POINT point) {
    if (notify(NM_HOVER) != 0 || !alive() || !hasExtended(LVS_EX_TRACKSELECT))
        return;
    UINT flags = 0;
    const int index = hitTest(point, flags);
    if (!alive() || !isItem(index))
        return;
    if (!focused())
        SetFocus(window());
    if (alive() && isItem(index))
        selectOnly(index);
}

// ---- Telling -------------------------------------------------------------------------------------------------------

LRESULT ListView::notifyClick(UINT code, POINT point) {
    LVHITTESTINFO hit{};
    hit.pt = point;
    onHitTest(&hit, true);
    if (!alive())
        return 0;
    NMITEMACTIVATE told{};
    told.iItem = hit.iItem;
    told.iSubItem = std::max(hit.iSubItem, 0);
    told.ptAction = point;
    told.uKeyFlags = keyFlags();
    return notify(code, told);
}

void ListView::activate(int index, POINT point) {
    NMITEMACTIVATE told{};
    told.iItem = index;
    told.ptAction = point;
    told.lParam = dataOf(index);
    told.uKeyFlags = keyFlags();
    notify(LVN_ITEMACTIVATE, told);
}

} // namespace vndk::win32
