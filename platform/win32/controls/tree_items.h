// The items of a tree view: who stands below whom, and which of them make up the rows on show.
//
// A row is an item all of whose ancestors are expanded. Rows weigh as many lines as their item is high; their extent
// is where their text ends, without scrolling.
#pragma once

#include "controls/order_tree.h"
#include "kernel/handle_table.h"
#include "win32/treeview.h"

#include <string>
#include <vector>

namespace vndk::win32 {

struct TreeItem {
    /// Does an item have a button to open it?
    enum class Children : std::uint8_t { automatic, none, some, callback };

    OrderHook<TreeItem> siblingHook;
    OrderHook<TreeItem> rowHook;
    OrderTree<TreeItem, &TreeItem::siblingHook> children;
    TreeItem* parent = nullptr; // null for the root alone
    HTREEITEM handle = nullptr;
    std::string text;
    bool textCallback = false;
    bool dying = false; // being deleted: it can be read and nothing else
    Children childrenMode = Children::automatic;
    int image = 0;
    int selectedImage = 0;
    int level = 0; // 0 below the root
    int textWidth = 0;
    UINT state = 0;
    LPARAM data = 0;

    [[nodiscard]] bool is(UINT bits) const { return (state & bits) != 0; }
    [[nodiscard]] TreeItem* next() const { return OrderTree<TreeItem, &TreeItem::siblingHook>::next(this); }
    [[nodiscard]] TreeItem* previous() const { return OrderTree<TreeItem, &TreeItem::siblingHook>::previous(this); }
};

class TreeItems {
public:
    TreeItems();
    ~TreeItems();
    TreeItems(const TreeItems&) = delete;
    TreeItems& operator=(const TreeItems&) = delete;

    /// The invisible item above all; it has no handle and is always expanded.
    [[nodiscard]] TreeItem* root() { return &root_; }
    [[nodiscard]] const TreeItem* root() const { return &root_; }
    /// Null for a handle that is dead, made up, or of an item that is being deleted.
    [[nodiscard]] TreeItem* find(HTREEITEM handle) const;
    /// Also one that is being deleted.
    [[nodiscard]] TreeItem* findToRead(HTREEITEM handle) const { return table_.find(handle); }
    [[nodiscard]] int count() const { return count_; }

    /// Behind `before`, a child of the same parent; null: as the first. Null when there are too many items.
    TreeItem* insert(TreeItem* parent, TreeItem* before);
    /// Where a text belongs among children that are sorted by texts; null: first.
    [[nodiscard]] static TreeItem* sortedPlace(const TreeItem* parent, const std::string& text);
    /// Takes an item with all below it out of the tree: they are dying from now on, children before their parents in
    /// the list that is answered. Each goes with `free`.
    std::vector<HTREEITEM> detach(TreeItem* item);
    void free(HTREEITEM handle);
    /// Takes all children of an item away, as `detach` does.
    std::vector<HTREEITEM> detachChildren(TreeItem* item);
    /// Frees all, also what is dying.
    void clear();

    static void reorder(TreeItem* parent, const std::vector<TreeItem*>& children) { parent->children.assign(children); }
    /// Calls `visit(item)` for all that live.
    template <typename Visit>
    void forEach(Visit visit) {
        table_.forEach([&visit](HTREEITEM, TreeItem& item) { visit(item); });
    }
    [[nodiscard]] static bool isBelow(const TreeItem* item, const TreeItem* ancestor);

    // ---- Rows
    [[nodiscard]] static bool isRow(const TreeItem* item) { return Rows::contains(*item); }
    [[nodiscard]] int rowCount() const { return rows_.size(); }
    [[nodiscard]] int lineCount() const { return rows_.totalWeight(); }
    [[nodiscard]] int widest() const { return rows_.maxExtent(); }
    [[nodiscard]] TreeItem* firstRow() const { return rows_.first(); }
    [[nodiscard]] TreeItem* lastRow() const { return rows_.last(); }
    [[nodiscard]] static TreeItem* nextRow(const TreeItem* item) { return Rows::next(item); }
    [[nodiscard]] static TreeItem* previousRow(const TreeItem* item) { return Rows::previous(item); }
    /// The row that covers a line; null: out of range.
    [[nodiscard]] TreeItem* rowAtLine(int line) const { return rows_.atWeight(line); }
    [[nodiscard]] static int lineOf(const TreeItem* item) { return Rows::weightBefore(item); }
    void setHeight(TreeItem* item, int lines) { rows_.setWeight(item, lines); }
    void setExtent(TreeItem* item, int extent) { rows_.setExtent(item, extent); }
    /// Makes rows of all below an expanded item that is a row itself (or the root), as far as they are expanded.
    void showBelow(TreeItem* item);
    /// Takes all rows below an item away. The number of lines that went.
    int hideBelow(TreeItem* item);

    /// Levels, rows and counts agree; O(n).
    [[nodiscard]] bool verify() const;

private:
    using Rows = OrderTree<TreeItem, &TreeItem::rowHook>;

    void hide(TreeItem* item);
    void markDying(TreeItem* item, std::vector<HTREEITEM>& handles);

    HandleTable<TreeItem, HTREEITEM> table_{HandleKind::treeItem};
    TreeItem root_;
    Rows rows_;
    int count_ = 0;
};

} // namespace vndk::win32
