// Mouse and keyboard input of the tree view.
#include "controls/tree_view.h"

#include "win32/codepage.h"
#include "win32/draw.h"
#include "win32/icons.h"
#include "win32/input.h"
#include "win32/metrics.h"
#include "win32/paint.h"
#include "win32/queue.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace vndk::win32 {

namespace {

constexpr UINT_PTR editTimer = 0x2B;

} // namespace

// ---- Mouse ---------------------------------------------------------------------------------------------------------

LRESULT TreeView::handleMouse(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
    case WM_LBUTTONDOWN:
        onButtonDown(point, false);
        return 0;
    case WM_RBUTTONDOWN:
        onButtonDown(point, true);
        return 0;
    case WM_LBUTTONDBLCLK:
        onDoubleClick(point);
        return 0;
    case WM_RBUTTONDBLCLK:
        notify(NM_RDBLCLK);
        return 0;
    case WM_MOUSEMOVE:
        onMouseMove(point);
        return 0;
    case WM_LBUTTONUP:
        if (!pressedRight_)
            onButtonUp(point);
        return 0;
    case WM_RBUTTONUP:
        return onRightButtonUp(wParam, lParam);
    case WM_MOUSEWHEEL:
        if (!hasStyle(WS_VSCROLL))
            break;
        onWheel(static_cast<SHORT>(HIWORD(wParam)));
        return 0;
    default:
        break;
    }
    return defaultHandling(message, wParam, lParam);
}

void TreeView::onButtonDown(POINT point, bool right) {
    cancelEditTimer();
    endLabelEdit(true);
    const bool hadFocus = alive() && focused();
    if (alive() && !hadFocus)
        SetFocus(window());
    if (!alive())
        return;
    UINT flags = 0;
    const TreeItem* item = hitTest(point, flags);
    if (!alive())
        return;
    const HTREEITEM handle = item != nullptr ? item->handle : nullptr;
    if (!right && (flags & TVHT_ONITEMBUTTON) != 0) {
        if (notify(NM_CLICK) == 0 && alive())
            expand(handle, TVE_TOGGLE, true);
        return;
    }
    const bool onItem = (flags & TVHT_ONITEM) != 0 ||
                        (handle != nullptr && hasStyle(TVS_FULLROWSELECT) && (flags & TVHT_ONITEMRIGHT) != 0);
    if (!right && onItem && hasStyle(TVS_DISABLEDRAGDROP)) { // there is nothing to wait for
        click(handle, flags, hadFocus);
        return;
    }
    press_ = onItem ? Press::item : Press::other;
    pressed_ = onItem ? handle : nullptr;
    pressedFlags_ = flags;
    pressedRight_ = right;
    pressHadFocus_ = hadFocus;
    pressPoint_ = point;
    invalidateItem(items_.find(caret_));
    invalidateItem(items_.find(pressed_));
    SetCapture(window());
}

/// The button went down and up on an item, or anywhere else (null).
void TreeView::click(HTREEITEM handle, UINT flags, bool hadFocus) {
    if (notify(NM_CLICK) != 0 || !alive() || items_.find(handle) == nullptr)
        return;
    if ((flags & TVHT_ONITEMSTATEICON) != 0 && hasStyle(TVS_CHECKBOXES)) {
        toggleCheck(handle);
        return;
    }
    if (handle != caret_) {
        selectItem(handle, By::mouse);
        return;
    }
    if (hasStyle(TVS_SINGLEEXPAND)) {
        const TreeItem* item = items_.find(handle);
        if (!item->is(TVIS_EXPANDED))
            expand(handle, TVE_EXPAND, true);
        return;
    }
    if (hadFocus && hasStyle(TVS_EDITLABELS) && (flags & TVHT_ONITEMLABEL) != 0) {
        editCandidate_ = handle;
        SetTimer(window(), editTimer, GetDoubleClickTime(), nullptr);
    }
}

void TreeView::onButtonUp(POINT /*point*/) {
    if (press_ == Press::none)
        return;
    const HTREEITEM handle = pressed_;
    const UINT flags = pressedFlags_;
    endPress();
    if (alive())
        click(handle, flags, pressHadFocus_);
}

LRESULT TreeView::onRightButtonUp(WPARAM wParam, LPARAM lParam) {
    endPress();
    if (alive() && notify(NM_RCLICK) == 0 && alive())
        return defaultHandling(WM_RBUTTONUP, wParam, lParam); // asks for a context menu
    return 0;
}

void TreeView::onDoubleClick(POINT point) {
    cancelEditTimer();
    UINT flags = 0;
    const TreeItem* item = hitTest(point, flags);
    const HTREEITEM handle = alive() && item != nullptr ? item->handle : nullptr;
    if (!alive() || notify(NM_DBLCLK) != 0 || !alive() || items_.find(handle) == nullptr)
        return;
    if ((flags & TVHT_ONITEMSTATEICON) != 0 && hasStyle(TVS_CHECKBOXES))
        toggleCheck(handle);
    else if ((flags & (TVHT_ONITEM | TVHT_ONITEMBUTTON)) != 0)
        expand(handle, TVE_TOGGLE, true);
}

void TreeView::onMouseMove(POINT point) {
    if (press_ == Press::none) {
        if (hasStyle(TVS_TRACKSELECT)) {
            UINT flags = 0;
            const TreeItem* item = hitTest(point, flags);
            if (alive())
                setHot(item != nullptr && (flags & TVHT_ONITEM) != 0 ? item->handle : nullptr);
        }
        return;
    }
    const bool moved = std::abs(point.x - pressPoint_.x) >= GetSystemMetrics(SM_CXDRAG) ||
                       std::abs(point.y - pressPoint_.y) >= GetSystemMetrics(SM_CYDRAG);
    if (moved && press_ == Press::item && !hasStyle(TVS_DISABLEDRAGDROP))
        beginDrag();
}

void TreeView::beginDrag() {
    const HTREEITEM handle = pressed_;
    const UINT code = pressedRight_ ? TVN_BEGINRDRAG : TVN_BEGINDRAG;
    endPress(); // the parent takes the mouse from here
    if (!alive() || items_.find(handle) == nullptr)
        return;
    NMTREEVIEWA note = noteOf(0);
    describe(note.itemNew, items_.find(handle));
    note.ptDrag = pressPoint_;
    notify(code, note);
}

void TreeView::endPress() {
    const bool held = press_ != Press::none;
    press_ = Press::none;
    invalidateItem(items_.find(pressed_));
    invalidateItem(items_.find(caret_));
    pressed_ = nullptr;
    pressedRight_ = false;
    if (!held || GetCapture() != window())
        return;
    ReleaseCapture();
    if (alive())
        notify(NM_RELEASEDCAPTURE);
}

void TreeView::onCaptureLost() {
    press_ = Press::none;
    invalidateItem(items_.find(pressed_));
    invalidateItem(items_.find(caret_));
    pressed_ = nullptr;
    pressedRight_ = false;
}

void TreeView::setHot(HTREEITEM handle) {
    if (handle == hot_)
        return;
    invalidateItem(items_.find(hot_));
    hot_ = handle;
    invalidateItem(items_.find(hot_));
    if (hot_ == nullptr)
        return;
    TRACKMOUSEEVENT track{sizeof(TRACKMOUSEEVENT), TME_LEAVE, window(), 0};
    TrackMouseEvent(&track);
    SetCursor(LoadCursorA(nullptr, IDC_HAND));
}

void TreeView::toggleCheck(HTREEITEM handle) {
    TreeItem* item = items_.find(handle);
    const UINT now = item != nullptr ? (item->state & TVIS_STATEIMAGEMASK) >> 12U : 0;
    if (now == 0 || stateImages_ == nullptr)
        return;
    const auto images = static_cast<UINT>(ImageList_GetImageCount(stateImages_)); // the first isn't used
    item->state = (item->state & ~TVIS_STATEIMAGEMASK) | INDEXTOSTATEIMAGEMASK(now + 1 < images ? now + 1 : 1);
    invalidateItem(item);
}

// ---- Keyboard ------------------------------------------------------------------------------------------------------

LRESULT TreeView::handleKeys(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_KEYDOWN: {
        NMTVKEYDOWN told{};
        told.wVKey = static_cast<WORD>(wParam);
        dropCharacter_ = notify(TVN_KEYDOWN, told) != 0;
        if (alive())
            onKeyDown(static_cast<int>(wParam));
        return 0;
    }
    case WM_CHAR:
        if (!std::exchange(dropCharacter_, false))
            onChar(static_cast<char>(wParam));
        return 0;
    default:
        return defaultHandling(message, wParam, lParam);
    }
}

void TreeView::onKeyDown(int key) {
    cancelEditTimer();
    TreeItem* caret = items_.find(caret_);
    switch (key) {
    case VK_RETURN:
        notify(NM_RETURN);
        return;
    case VK_SPACE:
        if (hasStyle(TVS_CHECKBOXES) && !typeAhead_.isRunning(GetTickCount()))
            toggleCheck(caret_);
        return;
    case VK_ADD:
        expand(caret_, TVE_EXPAND, true);
        return;
    case VK_SUBTRACT:
        expand(caret_, TVE_COLLAPSE, true);
        return;
    case VK_MULTIPLY:
        openAll(caret_);
        return;
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN:
    case VK_HOME:
    case VK_END:
    case VK_PRIOR:
    case VK_NEXT:
    case VK_BACK:
        break;
    default:
        return;
    }
    if (GetKeyState(VK_CONTROL) < 0 && key != VK_BACK) {
        scrollByKey(key);
        return;
    }
    typeAhead_.clear();
    if (caret == nullptr) {
        moveCaret(items_.firstRow());
    } else if (key == VK_LEFT && caret->is(TVIS_EXPANDED)) {
        expand(caret_, TVE_COLLAPSE, true);
    } else if (key == VK_RIGHT && !caret->is(TVIS_EXPANDED)) {
        expand(caret_, TVE_EXPAND, true);
    } else {
        moveCaret(targetOf(key, caret));
    }
}

TreeItem* TreeView::targetOf(int key, TreeItem* caret) {
    const auto up = [this](TreeItem* item) { return item->parent != items_.root() ? item->parent : nullptr; };
    if (!TreeItems::isRow(caret))
        return items_.firstRow();
    const int line = TreeItems::lineOf(caret);
    const int page = std::max(1, visibleLines() - 1);
    switch (key) {
    case VK_LEFT:
    case VK_BACK:
        return up(caret);
    case VK_RIGHT:
        return caret->children.first();
    case VK_UP:
        return TreeItems::previousRow(caret);
    case VK_DOWN:
        return TreeItems::nextRow(caret);
    case VK_HOME:
        return items_.firstRow();
    case VK_END:
        return items_.lastRow();
    case VK_PRIOR:
        return items_.rowAtLine(std::max(0, line - page));
    default: // VK_NEXT
        return items_.rowAtLine(std::min(items_.lineCount() - 1, line + page));
    }
}

void TreeView::moveCaret(const TreeItem* item) {
    if (item != nullptr)
        selectItem(item->handle, By::keyboard);
}

/// With Ctrl the view moves and the selection stays.
void TreeView::scrollByKey(int key) {
    switch (key) {
    case VK_UP:
        scrollTo(top_ - 1, left_);
        break;
    case VK_DOWN:
        scrollTo(top_ + 1, left_);
        break;
    case VK_PRIOR:
        scrollTo(top_ - visibleLines(), left_);
        break;
    case VK_NEXT:
        scrollTo(top_ + visibleLines(), left_);
        break;
    case VK_HOME:
        scrollTo(0, left_);
        break;
    case VK_END:
        scrollTo(items_.lineCount(), left_);
        break;
    default:
        scrollTo(top_, left_ + (key == VK_LEFT ? -1 : 1) * measure_.lineHeight());
        break;
    }
}

void TreeView::onChar(char character) {
    const DWORD now = GetTickCount();
    const bool control = static_cast<unsigned char>(character) < ' ';
    if (control || (character == ' ' && !typeAhead_.isRunning(now)) || items_.rowCount() == 0)
        return;
    typeAhead_.add(character, now);
    // One character, also repeated, goes on to the next match; more of them may fit where we are.
    const bool steps = typeAhead_.repeatsOneCharacter();
    const std::string wanted = steps ? std::string(1, character) : typeAhead_.text();
    const TreeItem* caret = items_.find(caret_);
    const TreeItem* row = caret != nullptr && TreeItems::isRow(caret) ? caret : nullptr;
    if (row == nullptr)
        row = items_.firstRow();
    else if (steps)
        row = TreeItems::nextRow(row);
    for (int left = items_.rowCount(); left > 0; --left) {
        if (row == nullptr)
            row = items_.firstRow();
        const HTREEITEM handle = row->handle;
        const std::string text = textOf(handle);
        row = alive() ? items_.find(handle) : nullptr;
        if (row == nullptr || !TreeItems::isRow(row))
            return;
        if (compareNoCase(text.substr(0, wanted.size()), wanted) == 0) {
            selectItem(handle, By::keyboard);
            return;
        }
        row = TreeItems::nextRow(row);
    }
    MessageBeep(0);
}

// ---- Focus and timer -----------------------------------------------------------------------------------------------

void TreeView::onSetFocus() {
    if (caret_ == nullptr) {
        if (const TreeItem* first = items_.rowAtLine(top_); first != nullptr)
            selectItem(first->handle, By::program, false);
    } else {
        invalidateItem(items_.find(caret_));
    }
    if (alive())
        notify(NM_SETFOCUS);
}

void TreeView::onKillFocus() {
    typeAhead_.clear();
    cancelEditTimer();
    invalidateItem(items_.find(caret_));
    notify(NM_KILLFOCUS);
}

void TreeView::onTimer(UINT_PTR timer) {
    if (timer != editTimer)
        return;
    const HTREEITEM handle = editCandidate_;
    cancelEditTimer();
    if (handle != nullptr && handle == caret_ && focused())
        onEditLabel(handle);
}

void TreeView::cancelEditTimer() {
    if (editCandidate_ != nullptr)
        KillTimer(window(), editTimer);
    editCandidate_ = nullptr;
}

} // namespace vndk::win32
