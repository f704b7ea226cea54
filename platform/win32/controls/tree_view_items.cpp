// The tree view's items: insertion, deletion, order, texts and images, given or asked for.
#include "controls/item_text.h"
#include "controls/stable_sort.h"
#include "controls/tree_view.h"
#include "win32/codepage.h"
#include "win32/metrics.h"

#include <algorithm>
#include <utility>

namespace vndk::win32 {

namespace {

constexpr int tallest = 100; // lines of one item

TreeItem::Children childrenModeOf(int cChildren) {
    if (cChildren == I_CHILDRENCALLBACK)
        return TreeItem::Children::callback;
    return cChildren == 0 ? TreeItem::Children::none : TreeItem::Children::some;
}

} // namespace

// ---- Insertion -----------------------------------------------------------------------------------------------------

TreeItem* TreeView::parentOf(HTREEITEM handle) {
    return handle == nullptr || handle == TVI_ROOT ? items_.root() : items_.find(handle);
}

/// The sibling to stand behind; null: becomes the first.
TreeItem* TreeView::placeFor(TreeItem* parent, const TVINSERTSTRUCTA& given) const {
    if (given.hInsertAfter == TVI_FIRST)
        return nullptr;
    if (given.hInsertAfter == TVI_SORT) {
        const bool known =
            (given.item.mask & TVIF_TEXT) != 0 && given.item.pszText != nullptr && !isCallback(given.item.pszText);
        return TreeItems::sortedPlace(parent, known ? given.item.pszText : "");
    }
    TreeItem* before = items_.find(given.hInsertAfter);
    return before != nullptr && before->parent == parent ? before : parent->children.last();
}

LRESULT TreeView::onInsertItem(const TVINSERTSTRUCTA* given) {
    TreeItem* parent = given != nullptr && !sorting_ ? parentOf(given->hParent) : nullptr;
    if (parent == nullptr)
        return 0;
    const bool firstChild = parent->children.empty();
    TreeItem* item = items_.insert(parent, placeFor(parent, *given));
    if (item == nullptr)
        return 0;
    const bool above = TreeItems::isRow(item) && top_ > 0 && TreeItems::lineOf(item) < top_;
    takeContent(*item, given->item);
    if ((given->item.mask & TVIF_INTEGRAL) != 0)
        items_.setHeight(item, std::clamp(given->itemex.iIntegral, 1, tallest));
    if (hasStyle(TVS_CHECKBOXES) && !item->is(TVIS_STATEIMAGEMASK))
        item->state |= INDEXTOSTATEIMAGEMASK(1);
    if ((given->item.mask & TVIF_STATE) != 0)
        setItemState(*item, given->item.state, given->item.stateMask);
    if (TreeItems::isRow(item)) {
        measureItem(*item);
        top_ += above ? item->rowHook.weight : 0; // what is in view stays there
        updateScrollBars();
        // The lines and the button of what stands above reach down to it.
        const TreeItem* before = item->previous();
        invalidateFrom(before != nullptr ? before : firstChild && parent != items_.root() ? parent : item);
    } else if (firstChild) {
        invalidateItem(parent);
    }
    return reinterpret_cast<LRESULT>(item->handle);
}

void TreeView::takeContent(TreeItem& item, const TVITEMA& given) {
    if ((given.mask & TVIF_TEXT) != 0)
        setText(item, given.pszText);
    if ((given.mask & TVIF_IMAGE) != 0)
        item.image = given.iImage;
    if ((given.mask & TVIF_SELECTEDIMAGE) != 0)
        item.selectedImage = given.iSelectedImage;
    if ((given.mask & TVIF_PARAM) != 0)
        item.data = given.lParam;
    if ((given.mask & TVIF_CHILDREN) != 0)
        item.childrenMode = childrenModeOf(given.cChildren);
}

void TreeView::setItemState(TreeItem& item, UINT state, UINT mask) {
    const UINT after = (item.state & ~mask) | (state & mask);
    const UINT changed = item.state ^ after;
    if ((changed & TVIS_EXPANDED & item.state) != 0)
        items_.hideBelow(&item);
    item.state = after;
    if ((changed & TVIS_EXPANDED & after) != 0) {
        showChildren(&item);
    }
    if ((changed & TVIS_BOLD) != 0)
        measureItem(item);
}

// ---- Deletion ------------------------------------------------------------------------------------------------------

LRESULT TreeView::onDeleteItem(HTREEITEM handle) {
    if (sorting_)
        return FALSE;
    endLabelEdit(false);
    if (!alive())
        return FALSE;
    if (handle == TVI_ROOT || handle == nullptr) {
        deleteAll();
        return TRUE;
    }
    TreeItem* item = items_.find(handle);
    if (item == nullptr)
        return FALSE;
    moveCaretFrom(item);
    item = alive() ? items_.find(handle) : nullptr;
    if (item == nullptr)
        return FALSE;
    invalidateFrom(item->previous() != nullptr ? item->previous() : item->parent);
    const int formerLine = TreeItems::isRow(item) ? TreeItems::lineOf(item) : -1;
    const int formerLines = items_.lineCount();
    const std::vector<HTREEITEM> handles = items_.detach(item);
    if (formerLine >= 0 && formerLine < top_)
        top_ = std::max(formerLine, top_ - (formerLines - items_.lineCount()));
    forgetDying();
    updateScrollBars();
    notifyDeleted(handles);
    return TRUE;
}

void TreeView::deleteAll() {
    if (items_.count() == 0)
        return; // else a handler that empties the tree while it is painted would have it painted for ever
    if (caret_ != nullptr)
        selectItem(nullptr, By::program);
    if (!alive())
        return;
    top_ = left_ = 0;
    const std::vector<HTREEITEM> handles = items_.detachChildren(items_.root());
    forgetDying();
    updateScrollBars();
    invalidate();
    notifyDeleted(handles);
}

/// The selection goes to a neighbour before its item is deleted.
void TreeView::moveCaretFrom(TreeItem* dying) {
    const TreeItem* caret = items_.find(caret_);
    if (caret == nullptr || !TreeItems::isBelow(caret, dying))
        return;
    const TreeItem* target = dying->next();
    if (target == nullptr)
        target = dying->previous();
    if (target == nullptr && dying->parent != items_.root())
        target = dying->parent;
    const HTREEITEM former = caret_;
    selectItem(target != nullptr ? target->handle : nullptr, By::program, false);
    if (alive() && caret_ == former)
        caret_ = nullptr; // a refusal can't keep it
}

void TreeView::forgetDying() {
    for (HTREEITEM* handle : {&caret_, &dropTarget_, &insertMark_, &hot_, &pressed_, &editCandidate_})
        if (*handle != nullptr && items_.find(*handle) == nullptr)
            *handle = nullptr;
}

void TreeView::notifyDeleted(const std::vector<HTREEITEM>& handles) {
    for (const HTREEITEM handle : handles) {
        const TreeItem* item = items_.findToRead(handle);
        if (item == nullptr)
            continue;
        NMTREEVIEWA told{};
        told.itemOld.mask = TVIF_HANDLE | TVIF_PARAM;
        told.itemOld.hItem = handle;
        told.itemOld.lParam = item->data;
        notify(TVN_DELETEITEM, told);
        items_.free(handle);
    }
}

void TreeView::removeChildren(TreeItem* item) {
    const std::vector<HTREEITEM> handles = items_.detachChildren(item);
    forgetDying();
    notifyDeleted(handles);
}

// ---- Texts and images on demand ------------------------------------------------------------------------------------

TVITEMA TreeView::askParent(HTREEITEM handle, UINT mask, std::string* text) {
    const TreeItem* item = items_.findToRead(handle);
    if (item == nullptr)
        return {};
    char buffer[MAX_PATH] = {};
    NMTVDISPINFOA info{};
    info.item.mask = mask;
    info.item.hItem = handle;
    info.item.state = item->state;
    info.item.pszText = buffer;
    info.item.cchTextMax = MAX_PATH;
    info.item.lParam = item->data;
    notify(TVN_GETDISPINFO, info);
    std::string answered = info.item.pszText != nullptr && !isCallback(info.item.pszText) ? info.item.pszText : "";
    TreeItem* asked = alive() ? items_.find(handle) : nullptr;
    if (asked != nullptr && (info.item.mask & TVIF_DI_SETITEM) != 0) {
        if ((mask & TVIF_TEXT) != 0) {
            asked->text = answered;
            asked->textCallback = false;
        }
        TVITEMA kept = info.item;
        kept.mask = mask & ~TVIF_TEXT;
        takeContent(*asked, kept);
    }
    if (text != nullptr)
        *text = std::move(answered);
    info.item.pszText = nullptr; // the buffer ends here
    return info.item;
}

std::string TreeView::textOf(HTREEITEM handle) {
    const TreeItem* item = items_.findToRead(handle);
    if (item == nullptr || !item->textCallback)
        return item != nullptr ? item->text : std::string();
    std::string text;
    static_cast<void>(askParent(handle, TVIF_TEXT, &text));
    return text;
}

int TreeView::imageOf(HTREEITEM handle, bool selected) {
    const TreeItem* item = items_.findToRead(handle);
    if (item == nullptr)
        return I_IMAGENONE;
    const int image = selected ? item->selectedImage : item->image;
    if (image != I_IMAGECALLBACK)
        return image;
    const TVITEMA answer = askParent(handle, selected ? TVIF_SELECTEDIMAGE : TVIF_IMAGE);
    return selected ? answer.iSelectedImage : answer.iImage;
}

bool TreeView::opens(HTREEITEM handle) {
    const TreeItem* item = items_.findToRead(handle);
    if (item == nullptr)
        return false;
    switch (item->childrenMode) {
    case TreeItem::Children::none:
        return false;
    case TreeItem::Children::some:
        return true;
    case TreeItem::Children::callback:
        return askParent(handle, TVIF_CHILDREN).cChildren != 0;
    default:
        return !item->children.empty();
    }
}

// ---- Reading and writing -------------------------------------------------------------------------------------------

LRESULT TreeView::onGetItem(TVITEMA* wanted) {
    const TreeItem* item = wanted != nullptr ? items_.findToRead(wanted->hItem) : nullptr;
    if (item == nullptr)
        return FALSE;
    const HTREEITEM handle = wanted->hItem;
    const UINT mask = wanted->mask;
    if ((mask & TVIF_PARAM) != 0)
        wanted->lParam = item->data;
    if ((mask & TVIF_STATE) != 0)
        wanted->state = item->state; // all of it: the mask counts for writing only
    if ((mask & TVIF_INTEGRAL) != 0)
        reinterpret_cast<TVITEMEXA*>(wanted)->iIntegral = item->rowHook.weight;
    if ((mask & TVIF_TEXT) != 0)
        copyText(textOf(handle), wanted->pszText, wanted->cchTextMax);
    if (alive() && (mask & TVIF_IMAGE) != 0)
        wanted->iImage = imageOf(handle, false);
    if (alive() && (mask & TVIF_SELECTEDIMAGE) != 0)
        wanted->iSelectedImage = imageOf(handle, true);
    if (alive() && (mask & TVIF_CHILDREN) != 0)
        wanted->cChildren = opens(handle) ? 1 : 0;
    return TRUE;
}

LRESULT TreeView::onSetItem(const TVITEMA* given) {
    TreeItem* item = given != nullptr ? items_.find(given->hItem) : nullptr;
    if (item == nullptr)
        return FALSE;
    takeContent(*item, *given);
    const bool opened = item->is(TVIS_EXPANDED);
    if ((given->mask & TVIF_STATE) != 0)
        setItemState(*item, given->state, given->stateMask);
    if ((given->mask & TVIF_INTEGRAL) != 0)
        items_.setHeight(item, std::clamp(reinterpret_cast<const TVITEMEXA*>(given)->iIntegral, 1, tallest));
    if (!TreeItems::isRow(item))
        return TRUE;
    if ((given->mask & (TVIF_TEXT | TVIF_STATE)) != 0)
        measureItem(*item);
    const bool moves = (given->mask & TVIF_INTEGRAL) != 0 || opened != item->is(TVIS_EXPANDED);
    if (moves)
        invalidateFrom(item);
    else if ((given->mask & ~(TVIF_PARAM | TVIF_HANDLE)) != 0)
        invalidateItem(item);
    if (moves || (given->mask & (TVIF_TEXT | TVIF_STATE)) != 0)
        updateScrollBars();
    return TRUE;
}

LRESULT TreeView::onGetItemState(HTREEITEM handle, UINT mask) const {
    const TreeItem* item = items_.findToRead(handle);
    return item != nullptr ? static_cast<LRESULT>(item->state & mask) : 0;
}

LRESULT TreeView::onGetNextItem(HTREEITEM handle, UINT which) const {
    const auto result = [](const TreeItem* item) {
        return item != nullptr ? reinterpret_cast<LRESULT>(item->handle) : 0;
    };
    switch (which) {
    case TVGN_ROOT:
        return result(items_.root()->children.first());
    case TVGN_CARET:
        return reinterpret_cast<LRESULT>(caret_);
    case TVGN_DROPHILITE:
        return reinterpret_cast<LRESULT>(dropTarget_);
    case TVGN_FIRSTVISIBLE:
        return result(items_.rowAtLine(top_));
    case TVGN_LASTVISIBLE:
        return result(items_.lastRow());
    case TVGN_CHILD:
        if (handle == nullptr || handle == TVI_ROOT)
            return result(items_.root()->children.first());
        break;
    default:
        break;
    }
    const TreeItem* item = items_.find(handle);
    if (item == nullptr)
        return 0;
    const bool row = TreeItems::isRow(item);
    switch (which) {
    case TVGN_NEXT:
        return result(item->next());
    case TVGN_PREVIOUS:
        return result(item->previous());
    case TVGN_PARENT:
        return result(item->parent); // the root has no handle
    case TVGN_CHILD:
        return result(item->children.first());
    case TVGN_NEXTVISIBLE:
        return result(row ? TreeItems::nextRow(item) : nullptr);
    case TVGN_PREVIOUSVISIBLE:
        return result(row ? TreeItems::previousRow(item) : nullptr);
    default:
        return 0;
    }
}

// ---- Order ---------------------------------------------------------------------------------------------------------

LRESULT TreeView::onSortChildren(HTREEITEM handle, bool below) {
    TreeItem* parent = sorting_ ? nullptr : parentOf(handle);
    if (parent == nullptr || parent->children.empty())
        return FALSE;
    endLabelEdit(false);
    if (!alive())
        return FALSE;
    std::vector<HTREEITEM> parents{handle};
    while (alive() && !parents.empty()) {
        TreeItem* each = parentOf(parents.back());
        parents.pop_back();
        if (each == nullptr)
            continue;
        for (TreeItem* child = each->children.first(); below && child != nullptr; child = child->next())
            if (!child->children.empty())
                parents.push_back(child->handle);
        sortByText(each);
    }
    if (!alive())
        return FALSE;
    invalidate();
    return TRUE;
}

void TreeView::sortByText(TreeItem* parent) {
    struct Entry {
        std::string text;
        TreeItem* item;
    };
    std::vector<Entry> entries;
    sorting_ = true; // the parent may be asked for texts
    for (TreeItem* child : parent->children.items()) {
        std::string text = alive() ? textOf(child->handle) : std::string();
        entries.push_back({std::move(text), child});
    }
    sorting_ = false;
    if (!alive())
        return;
    stableSort(entries, [](const Entry& a, const Entry& b) { return compareNoCase(a.text, b.text); });
    std::vector<TreeItem*> children;
    children.reserve(entries.size());
    for (const Entry& entry : entries)
        children.push_back(entry.item);
    applyOrder(parent, children);
}

LRESULT TreeView::onSortChildrenWith(const TVSORTCB* sort) {
    TreeItem* parent = sort != nullptr && sort->lpfnCompare != nullptr && !sorting_ ? parentOf(sort->hParent) : nullptr;
    if (parent == nullptr)
        return FALSE;
    const HTREEITEM handle = sort->hParent;
    endLabelEdit(false);
    parent = alive() ? parentOf(handle) : nullptr;
    if (parent == nullptr)
        return FALSE;
    struct Entry {
        LPARAM data;
        TreeItem* item;
    };
    std::vector<Entry> entries;
    for (TreeItem* child = parent->children.first(); child != nullptr; child = child->next())
        entries.push_back({child->data, child});
    const TVSORTCB how = *sort;
    sorting_ = true;
    stableSort(entries, [&](const Entry& a, const Entry& b) {
        return alive() ? how.lpfnCompare(a.data, b.data, how.lParam) : 0;
    });
    sorting_ = false;
    if (!alive())
        return FALSE;
    std::vector<TreeItem*> children;
    children.reserve(entries.size());
    for (const Entry& entry : entries)
        children.push_back(entry.item);
    applyOrder(parent, children);
    invalidate();
    return TRUE;
}

void TreeView::applyOrder(TreeItem* parent, const std::vector<TreeItem*>& children) {
    items_.hideBelow(parent);
    TreeItems::reorder(parent, children);
    items_.showBelow(parent);
}

// ---- Widths --------------------------------------------------------------------------------------------------------

void TreeView::measureItem(TreeItem& item) {
    if (!item.textCallback) // else when it is painted
        item.textWidth = measureFor(item).width(item.text);
    updateExtent(item);
}

/// Makes rows of what lies below an item that was opened.
void TreeView::showChildren(TreeItem* item) {
    items_.showBelow(item);
    if (!TreeItems::isRow(item))
        return;
    for (TreeItem* row = TreeItems::nextRow(item); row != nullptr && row->level > item->level;
         row = TreeItems::nextRow(row))
        measureItem(*row);
}

void TreeView::measureRows() {
    for (TreeItem* row = items_.firstRow(); row != nullptr; row = TreeItems::nextRow(row))
        measureItem(*row);
}

} // namespace vndk::win32
