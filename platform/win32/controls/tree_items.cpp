#include "controls/tree_items.h"

#include "win32/codepage.h"

#include <algorithm>
#include <cassert>

namespace vndk::win32 {

namespace {

constexpr std::size_t mostItems = 1'000'000; // what the handles can tell apart

/// The item below, or else beside, or else beside the nearest ancestor; null when all below `top` was walked.
TreeItem* nextBelow(const TreeItem* item, const TreeItem* top, bool intoChildren) {
    if (intoChildren)
        if (TreeItem* child = item->children.first(); child != nullptr)
            return child;
    for (; item != top; item = item->parent)
        if (TreeItem* beside = item->next(); beside != nullptr)
            return beside;
    return nullptr;
}

} // namespace

TreeItems::TreeItems() {
    root_.level = -1;
    root_.state = TVIS_EXPANDED;
}

TreeItems::~TreeItems() { clear(); }

TreeItem* TreeItems::find(HTREEITEM handle) const {
    TreeItem* item = table_.find(handle);
    return item != nullptr && !item->dying ? item : nullptr;
}

TreeItem* TreeItems::insert(TreeItem* parent, TreeItem* before) {
    assert((before == nullptr || before->parent == parent) && "items are put in beside children of the same parent");
    if (table_.size() >= mostItems)
        return nullptr;
    const HTREEITEM handle = table_.add(std::make_unique<TreeItem>());
    TreeItem* item = table_.find(handle);
    item->handle = handle;
    item->parent = parent;
    item->level = parent->level + 1;
    parent->children.insertAfter(before, item);
    ++count_;
    const bool shown = parent->is(TVIS_EXPANDED) && (parent == &root_ || isRow(parent));
    if (!shown)
        return item;
    // The row above is the last one shown below the sibling before, or the parent.
    TreeItem* above = before;
    while (above != nullptr && above->is(TVIS_EXPANDED) && !above->children.empty())
        above = above->children.last();
    if (above == nullptr && parent != &root_)
        above = parent;
    rows_.insertAfter(above, item);
    return item;
}

TreeItem* TreeItems::sortedPlace(const TreeItem* parent, const std::string& text) {
    const TreeItem* after =
        parent->children.lowerBound([&](const TreeItem& item) { return compareNoCase(item.text, text) <= 0; });
    return after != nullptr ? after->previous() : parent->children.last();
}

// ---- Taking away ---------------------------------------------------------------------------------------------------

void TreeItems::hide(TreeItem* item) {
    if (isRow(item))
        rows_.remove(item);
}

void TreeItems::markDying(TreeItem* item, std::vector<HTREEITEM>& handles) {
    const std::size_t begin = handles.size();
    for (TreeItem* each = item; each != nullptr; each = nextBelow(each, item, true)) {
        hide(each);
        count_ -= each->dying ? 0 : 1;
        each->dying = true;
        handles.push_back(each->handle);
    }
    // Parents came before their children on the way down.
    std::reverse(handles.begin() + static_cast<std::ptrdiff_t>(begin), handles.end());
}

std::vector<HTREEITEM> TreeItems::detach(TreeItem* item) {
    std::vector<HTREEITEM> handles;
    markDying(item, handles);
    item->parent->children.remove(item);
    return handles;
}

std::vector<HTREEITEM> TreeItems::detachChildren(TreeItem* item) {
    std::vector<HTREEITEM> handles;
    for (TreeItem* child = item->children.first(); child != nullptr; child = child->next())
        markDying(child, handles);
    item->children.clear();
    return handles;
}

void TreeItems::free(HTREEITEM handle) {
    TreeItem* item = table_.find(handle);
    if (item == nullptr)
        return;
    // Of a subtree that goes the children go first, so that nobody is left below.
    if (decltype(item->children)::contains(*item))
        item->parent->children.remove(item);
    table_.remove(handle);
}

void TreeItems::clear() {
    rows_.clear();
    root_.children.clear();
    std::vector<HTREEITEM> handles;
    table_.forEach([&](HTREEITEM handle, TreeItem& item) {
        handles.push_back(handle);
        item.siblingHook = {};
    });
    for (const HTREEITEM handle : handles)
        table_.remove(handle);
    count_ = 0;
}

bool TreeItems::isBelow(const TreeItem* item, const TreeItem* ancestor) {
    while (item != nullptr && item->level > ancestor->level)
        item = item->parent;
    return item == ancestor;
}

// ---- Rows ----------------------------------------------------------------------------------------------------------

void TreeItems::showBelow(TreeItem* item) {
    if (!item->is(TVIS_EXPANDED) || (item != &root_ && !isRow(item)))
        return;
    TreeItem* above = item != &root_ ? item : nullptr;
    for (TreeItem* each = nextBelow(item, item, true); each != nullptr;
         each = nextBelow(each, item, each->is(TVIS_EXPANDED))) {
        if (!isRow(each))
            rows_.insertAfter(above, each);
        above = each;
    }
}

int TreeItems::hideBelow(TreeItem* item) {
    int lines = 0;
    TreeItem* row = item == &root_ ? rows_.first() : isRow(item) ? nextRow(item) : nullptr;
    while (row != nullptr && row->level > item->level) {
        TreeItem* following = nextRow(row);
        lines += row->rowHook.weight;
        rows_.remove(row);
        row = following;
    }
    return lines;
}

bool TreeItems::verify() const {
    if (!rows_.verify() || !root_.children.verify())
        return false;
    int seen = 0;
    const TreeItem* row = rows_.first();
    for (const TreeItem* item = nextBelow(&root_, &root_, true); item != nullptr;
         item = nextBelow(item, &root_, true)) {
        ++seen;
        const TreeItem* parent = item->parent;
        const bool shown = parent->is(TVIS_EXPANDED) && (parent == &root_ || isRow(parent));
        if (item->dying || item->level != parent->level + 1 || shown != isRow(item) ||
            table_.find(item->handle) != item)
            return false;
        if (shown) {
            if (row != item)
                return false;
            row = nextRow(row);
        }
    }
    return seen == count_ && row == nullptr;
}

} // namespace vndk::win32
