// The items of a list view, and where icons stand that aren't arranged by their order.
#pragma once

#include "controls/order_tree.h"
#include "win32/listview.h"

#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace vndk::win32 {

struct ListCell {
    std::string text;
    bool textCallback = false;
    int image = 0;
};

struct ListItem {
    OrderHook<ListItem> hook;
    ListCell cell;
    int indent = 0;
    UINT state = 0; // without LVIS_FOCUSED, which is kept as a number
    LPARAM data = 0;
    std::vector<ListCell> subItems; // the first is sub-item 1; may be shorter than there are columns
    POINT position{};               // of the icon, in view coordinates
    bool placed = false;            // it stands in the grid of icons
};

/// Owns the items in their order.
class ListItems {
public:
    ListItems() = default;
    ~ListItems() { clear(); }
    ListItems(const ListItems&) = delete;
    ListItems& operator=(const ListItems&) = delete;

    [[nodiscard]] int count() const { return order_.size(); }
    [[nodiscard]] ListItem* at(int index) const { return order_.at(index); }
    [[nodiscard]] static ListItem* next(const ListItem* item) { return Order::next(item); }
    [[nodiscard]] static ListItem* previous(const ListItem* item) { return Order::previous(item); }
    [[nodiscard]] static int indexOf(const ListItem* item) { return Order::indexOf(item); }
    [[nodiscard]] ListItem* first() const { return order_.first(); }
    [[nodiscard]] std::vector<ListItem*> all() const { return order_.items(); }
    /// Where a text belongs in a list that is sorted by texts: behind equal ones.
    [[nodiscard]] int sortedPlace(const std::string& text, bool descending) const;

    /// REQUIRES: 0 <= index <= count().
    ListItem* insert(int index);
    void erase(ListItem* item);
    void clear();
    /// The same items in another order.
    void reorder(const std::vector<ListItem*>& items) { order_.assign(items); }
    [[nodiscard]] bool verify() const { return order_.verify(); }

private:
    using Order = OrderTree<ListItem, &ListItem::hook>;
    Order order_;
};

/// Numbers with how often each occurs: the outermost ones are known at any time.
class Extremes {
public:
    void add(int value) { ++counts_[value]; }
    void remove(int value) {
        if (const auto found = counts_.find(value); found != counts_.end() && --found->second == 0)
            counts_.erase(found);
    }
    void clear() { counts_.clear(); }
    [[nodiscard]] bool empty() const { return counts_.empty(); }
    [[nodiscard]] int lowest() const { return counts_.begin()->first; }
    [[nodiscard]] int highest() const { return counts_.rbegin()->first; }

private:
    std::map<int, int> counts_;
};

/// Places of icons, found by cells of a grid. Coordinates are those of the view.
class IconGrid {
public:
    /// Drops all; `offset` is where in a cell an icon stands.
    void reset(SIZE cell, POINT offset);
    void add(ListItem* item, POINT position);
    void remove(ListItem* item);
    /// Items whose cells touch the rectangle, in no order.
    [[nodiscard]] std::vector<ListItem*> within(const RECT& rect) const;
    /// Where the first free cell puts an icon. Cells are filled along rows of `perLine`, or down columns of it.
    [[nodiscard]] POINT firstFree(int perLine, bool downwards);
    /// Around all cells that are taken, and the origin.
    [[nodiscard]] RECT bounds() const;
    [[nodiscard]] const SIZE& cell() const { return cell_; }

private:
    struct Cell {
        int column;
        int row;
    };
    [[nodiscard]] Cell cellOf(POINT position) const;
    [[nodiscard]] static std::uint64_t keyOf(Cell cell);

    SIZE cell_{1, 1};
    POINT offset_{};
    std::unordered_multimap<std::uint64_t, ListItem*> taken_;
    Extremes columns_;
    Extremes rows_;
    // All cells before this one were taken when it was looked for with these rules.
    int searchFrom_ = 0;
    int searchPerLine_ = 0;
    bool searchDownwards_ = false;
};

} // namespace vndk::win32
