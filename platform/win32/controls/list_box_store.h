// The items of a list box, in blocks: inserting, deleting and measuring stay cheap with 100,000 of them.
#pragma once

#include "win32/types.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vndk::win32 {

struct ListBoxItem {
    std::string text;
    ULONG_PTR data = 0;
    int height = 0; // of lists whose items have heights of their own
    bool selected = false;
};

/// REQUIRES of all calls: indexes from 0 to count() - 1, of insert to count().
class ListBoxStore {
public:
    [[nodiscard]] int count() const { return count_; }
    [[nodiscard]] int selectedCount() const { return selected_; }

    [[nodiscard]] const ListBoxItem& operator[](int index) const;
    void insert(int index, ListBoxItem item);
    void erase(int index);
    void clear();
    /// From now on, until clear(): so many items of which only the selection is kept, in a bit for each.
    void setBareCount(int count);
    void setData(int index, ULONG_PTR data);
    void setHeight(int index, int height);
    /// True when that changed something.
    bool select(int index, bool selected);

    /// The heights of all items before this one together; count() is allowed.
    [[nodiscard]] std::int64_t heightBefore(int index) const;
    /// The first selected item from `index` on; -1 without any.
    [[nodiscard]] int nextSelected(int index) const;
    /// Where a text belongs in items that are in order: behind those that are equal.
    [[nodiscard]] int placeOf(std::string_view text) const;

private:
    struct Block {
        std::vector<ListBoxItem> items;
        std::int64_t height = 0;
        int selected = 0;
    };
    struct Place {
        std::size_t block = 0;
        int first = 0; // index of the block's first item
    };

    /// The block that holds an item. Walks from where the last search ended.
    [[nodiscard]] Place find(int index) const;
    ListBoxItem& item(int index);
    void split(std::size_t block);

    std::vector<std::unique_ptr<Block>> blocks_; // none is empty
    int count_ = 0;
    int selected_ = 0;
    mutable Place last_;
    bool bare_ = false;
    std::vector<bool> bareSelected_; // empty as long as nothing was selected
    mutable ListBoxItem bareItem_;
};

/// The order of sorted lists, below, at or above zero: symbols, digits, letters; accents and case only decide between
/// texts that are otherwise equal, and so do hyphens and apostrophes.
[[nodiscard]] int compareListTexts(std::string_view a, std::string_view b);

} // namespace vndk::win32
