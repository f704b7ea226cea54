// Selection in the tree view, and opening and closing of items.
//
// Every notification can delete items or the window: items are kept by handle and found again after each.
#include "controls/tree_view.h"

#include "win32/input.h"
#include "win32/paint.h"

#include <algorithm>
#include <vector>

namespace vndk::win32 {

// ---- What is told --------------------------------------------------------------------------------------------------

void TreeView::describe(TVITEMA& told, const TreeItem* item) {
    if (item == nullptr)
        return;
    told.mask = TVIF_HANDLE | TVIF_PARAM | TVIF_STATE | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    told.hItem = item->handle;
    told.lParam = item->data;
    told.state = item->state;
    told.stateMask = ~0U;
    told.iImage = item->image;
    told.iSelectedImage = item->selectedImage;
}

NMTREEVIEWA TreeView::noteOf(UINT action) const {
    NMTREEVIEWA note{};
    note.action = action;
    return note;
}

// ---- Selection -----------------------------------------------------------------------------------------------------

LRESULT TreeView::onSelectItem(HTREEITEM handle, UINT which) {
    if (handle != nullptr && items_.find(handle) == nullptr)
        return FALSE;
    switch (which & ~TVSI_NOSINGLEEXPAND) {
    case TVGN_CARET:
        return selectItem(handle, By::program, (which & TVSI_NOSINGLEEXPAND) == 0) ? TRUE : FALSE;
    case TVGN_DROPHILITE:
        return setDropTarget(handle) ? TRUE : FALSE;
    case TVGN_FIRSTVISIBLE: {
        TreeItem* item = items_.find(handle);
        if (item == nullptr)
            return FALSE;
        openParents(item);
        item = alive() ? items_.find(handle) : nullptr;
        if (item != nullptr && TreeItems::isRow(item))
            scrollTo(TreeItems::lineOf(item), left_);
        return item != nullptr ? TRUE : FALSE;
    }
    default:
        return FALSE;
    }
}

bool TreeView::setDropTarget(HTREEITEM handle) {
    if (TreeItem* former = items_.find(dropTarget_); former != nullptr) {
        former->state &= ~TVIS_DROPHILITED;
        invalidateItem(former);
    }
    dropTarget_ = handle;
    if (TreeItem* item = items_.find(handle); item != nullptr) {
        item->state |= TVIS_DROPHILITED;
        invalidateItem(item);
    }
    return true;
}

bool TreeView::selectItem(HTREEITEM handle, By by, bool expandSingle) {
    if (handle == caret_)
        return true;
    const HTREEITEM former = caret_;
    const UINT action = by == By::mouse ? TVC_BYMOUSE : by == By::keyboard ? TVC_BYKEYBOARD : TVC_UNKNOWN;
    NMTREEVIEWA note = noteOf(action);
    describe(note.itemOld, items_.find(former));
    describe(note.itemNew, items_.find(handle));
    if (notify(TVN_SELCHANGING, note) != 0 || !alive())
        return false;
    if (handle != nullptr && items_.find(handle) == nullptr)
        return false;
    if (TreeItem* left = items_.find(caret_); left != nullptr) {
        left->state &= ~TVIS_SELECTED;
        invalidateItem(left);
    }
    caret_ = handle;
    if (TreeItem* entered = items_.find(handle); entered != nullptr) {
        entered->state |= TVIS_SELECTED;
        openParents(entered);
        entered = alive() ? items_.find(handle) : nullptr;
        if (entered != nullptr)
            scrollIntoView(*entered, false);
        entered = alive() ? items_.find(handle) : nullptr;
        invalidateItem(entered);
    }
    if (!alive())
        return true;
    note = noteOf(action);
    describe(note.itemOld, items_.find(former));
    describe(note.itemNew, items_.find(handle));
    notify(TVN_SELCHANGED, note);
    if (alive() && expandSingle && hasStyle(TVS_SINGLEEXPAND))
        singleExpand(former, handle);
    return true;
}

/// The item that was left closes, the one that was entered opens.
void TreeView::singleExpand(HTREEITEM former, HTREEITEM selected) {
    NMTREEVIEWA note = noteOf(TVC_UNKNOWN);
    describe(note.itemOld, items_.find(former));
    describe(note.itemNew, items_.find(selected));
    const LRESULT answer = notify(TVN_SINGLEEXPAND, note);
    if (!alive())
        return;
    if ((answer & TVNRET_SKIPOLD) == 0 && GetKeyState(VK_CONTROL) >= 0) {
        // Up to where both branches meet.
        std::vector<HTREEITEM> branch;
        const TreeItem* entered = items_.find(selected);
        for (const TreeItem* item = items_.find(former);
             item != nullptr && item != items_.root() && (entered == nullptr || !TreeItems::isBelow(entered, item));
             item = item->parent)
            branch.push_back(item->handle);
        for (const HTREEITEM each : branch)
            if (alive())
                expand(each, TVE_COLLAPSE, true);
    }
    if (alive() && (answer & TVNRET_SKIPNEW) == 0)
        expand(selected, TVE_EXPAND, true);
}

// ---- Opening and closing -------------------------------------------------------------------------------------------

LRESULT TreeView::onExpand(HTREEITEM handle, UINT code) {
    const TreeItem* item = items_.find(handle);
    // After the first time the program isn't told what it does itself.
    return item != nullptr && expand(handle, code, !item->is(TVIS_EXPANDEDONCE)) ? TRUE : FALSE;
}

/// True when something has changed.
bool TreeView::expand(HTREEITEM handle, UINT code, bool tell) {
    const TreeItem* item = items_.find(handle);
    if (item == nullptr || sorting_)
        return false;
    switch (code & TVE_TOGGLE) {
    case TVE_EXPAND:
        return open(handle, code, tell);
    case TVE_COLLAPSE:
        return close(handle, (code & TVE_COLLAPSERESET) != 0, tell);
    case TVE_TOGGLE:
        return item->is(TVIS_EXPANDED) ? close(handle, false, tell) : open(handle, code, tell);
    default:
        return false;
    }
}

/// True when the parent doesn't refuse.
bool TreeView::notifyExpand(UINT code, UINT action, HTREEITEM handle) {
    NMTREEVIEWA note = noteOf(action);
    describe(note.itemNew, items_.find(handle));
    return notify(code, note) == 0 && alive() && items_.find(handle) != nullptr;
}

bool TreeView::open(HTREEITEM handle, UINT code, bool tell) {
    TreeItem* item = items_.find(handle);
    const bool wasOpen = item->is(TVIS_EXPANDED);
    if (!opens(handle) || !alive() || (wasOpen && !tell))
        return false;
    if (tell && !notifyExpand(TVN_ITEMEXPANDING, TVE_EXPAND, handle))
        return false;
    item = items_.find(handle);
    if (item == nullptr || item->children.empty())
        return false; // nothing has come to be shown
    item->state |= TVIS_EXPANDED | ((code & TVE_EXPANDPARTIAL) != 0 ? TVIS_EXPANDPARTIAL : 0U);
    if (!wasOpen) {
        showChildren(item);
        updateScrollBars();
        invalidateFrom(item);
    }
    if (tell)
        notifyExpand(TVN_ITEMEXPANDED, TVE_EXPAND, handle);
    item = alive() ? items_.find(handle) : nullptr;
    if (item == nullptr)
        return true;
    item->state |= TVIS_EXPANDEDONCE;
    if (!wasOpen)
        scrollChildrenIn(item);
    return !wasOpen;
}

bool TreeView::close(HTREEITEM handle, bool reset, bool tell) {
    TreeItem* item = items_.find(handle);
    const bool wasOpen = item->is(TVIS_EXPANDED);
    if (!wasOpen && !tell && !reset)
        return false;
    if (tell && opens(handle) && alive() && !notifyExpand(TVN_ITEMEXPANDING, TVE_COLLAPSE, handle))
        return false;
    item = alive() ? items_.find(handle) : nullptr;
    if (item == nullptr || (!wasOpen && !reset))
        return false;
    // The selection can't stay on a row that goes.
    if (const TreeItem* caret = items_.find(caret_);
        caret != nullptr && caret != item && TreeItems::isBelow(caret, item))
        selectItem(handle, By::program, false);
    item = alive() ? items_.find(handle) : nullptr;
    if (item == nullptr)
        return true;
    const int gone = items_.hideBelow(item);
    item->state &= ~(TVIS_EXPANDED | TVIS_EXPANDPARTIAL);
    if (TreeItems::isRow(item) && TreeItems::lineOf(item) < top_)
        top_ = std::max(TreeItems::lineOf(item), top_ - gone);
    invalidateFrom(item);
    if (reset) {
        item->state &= ~TVIS_EXPANDEDONCE;
        removeChildren(item);
    }
    if (alive())
        updateScrollBars();
    if (alive() && tell && wasOpen)
        notifyExpand(TVN_ITEMEXPANDED, TVE_COLLAPSE, handle);
    return true;
}

void TreeView::openAll(HTREEITEM handle) {
    std::vector<HTREEITEM> waiting{handle};
    while (alive() && !waiting.empty()) {
        const HTREEITEM each = waiting.back();
        waiting.pop_back();
        if (items_.find(each) == nullptr)
            continue;
        expand(each, TVE_EXPAND, true);
        const TreeItem* item = alive() ? items_.find(each) : nullptr;
        for (const TreeItem* child = item != nullptr ? item->children.last() : nullptr; child != nullptr;
             child = child->previous())
            waiting.push_back(child->handle);
    }
}

/// True when an item had to be opened.
bool TreeView::openParents(TreeItem* item) {
    std::vector<HTREEITEM> closed;
    for (const TreeItem* parent = item->parent; parent != items_.root(); parent = parent->parent)
        if (!parent->is(TVIS_EXPANDED))
            closed.push_back(parent->handle);
    for (auto handle = closed.rbegin(); alive() && handle != closed.rend(); ++handle)
        if (const TreeItem* parent = items_.find(*handle); parent != nullptr)
            expand(*handle, TVE_EXPAND, !parent->is(TVIS_EXPANDEDONCE));
    return !closed.empty();
}

/// As many of an item's children as fit below it come into view.
void TreeView::scrollChildrenIn(const TreeItem* item) {
    if (!TreeItems::isRow(item) || !redraw_)
        return;
    const int line = TreeItems::lineOf(item);
    if (line < top_ || line >= top_ + visibleLines())
        return;
    const TreeItem* last = item;
    for (const TreeItem* row = item; row != nullptr; row = TreeItems::nextRow(row)) {
        if (row != item && row->level <= item->level)
            break;
        if (TreeItems::lineOf(row) >= line + visibleLines())
            break;
        last = row;
    }
    const int end = TreeItems::lineOf(last) + last->rowHook.weight;
    if (end > top_ + visibleLines())
        scrollTo(std::min(line, end - visibleLines()), left_);
}

LRESULT TreeView::onEnsureVisible(HTREEITEM handle) {
    TreeItem* item = items_.find(handle);
    if (item == nullptr)
        return FALSE;
    const bool opened = openParents(item);
    item = alive() ? items_.find(handle) : nullptr;
    return item != nullptr && scrollIntoView(*item, true) && !opened ? TRUE : FALSE;
}

} // namespace vndk::win32
