// A set of row numbers, kept as ranges: the selection of a list whose rows aren't stored.
#pragma once

#include <algorithm>
#include <iterator>
#include <map>

namespace vndk::win32 {

class RowRanges {
public:
    [[nodiscard]] bool contains(int row) const {
        const auto range = at(row);
        return range != ranges_.end() && row < range->second;
    }
    [[nodiscard]] int size() const { return size_; }

    /// Rows from `first` to before `end`.
    void add(int first, int end) {
        if (first >= end)
            return;
        remove(first, end);
        auto next = ranges_.lower_bound(first);
        if (next != ranges_.end() && next->first == end) {
            size_ -= next->second - next->first;
            end = next->second;
            next = ranges_.erase(next);
        }
        if (next != ranges_.begin()) {
            if (const auto before = std::prev(next); before->second == first) {
                size_ += end - first;
                before->second = end;
                return;
            }
        }
        ranges_.emplace(first, end);
        size_ += end - first;
    }

    void remove(int first, int end) {
        if (first >= end)
            return;
        auto range = at(first);
        if (range == ranges_.end())
            range = ranges_.begin();
        while (range != ranges_.end() && range->first < end) {
            const auto [begin, stop] = *range;
            if (stop <= first) {
                ++range;
                continue;
            }
            range = ranges_.erase(range);
            size_ -= stop - begin;
            if (begin < first)
                restore(begin, first);
            if (stop > end) {
                restore(end, stop);
                break;
            }
        }
    }

    void clear() {
        ranges_.clear();
        size_ = 0;
    }

    /// The first row of the set from `row` on; -1: none.
    [[nodiscard]] int nextFrom(int row) const {
        if (contains(row))
            return row;
        const auto range = ranges_.upper_bound(row);
        return range != ranges_.end() ? range->first : -1;
    }
    /// The last row of the set up to `row`; -1: none.
    [[nodiscard]] int previousFrom(int row) const {
        const auto range = at(row);
        return range != ranges_.end() ? std::min(row, range->second - 1) : -1;
    }

private:
    using Map = std::map<int, int>; // first row: row after the last

    /// The range that begins at the row or before it; the end when there is none.
    [[nodiscard]] Map::const_iterator at(int row) const {
        const auto after = ranges_.upper_bound(row);
        return after != ranges_.begin() ? std::prev(after) : ranges_.end();
    }
    [[nodiscard]] Map::iterator at(int row) {
        const auto after = ranges_.upper_bound(row);
        return after != ranges_.begin() ? std::prev(after) : ranges_.end();
    }
    void restore(int first, int end) {
        ranges_.emplace(first, end);
        size_ += end - first;
    }

    Map ranges_;
    int size_ = 0;
};

} // namespace vndk::win32
