#include "controls/list_items.h"

#include "win32/codepage.h"

#include <algorithm>

namespace vndk::win32 {

ListItem* ListItems::insert(int index) {
    auto* item = new ListItem;
    order_.insert(index, item);
    return item;
}

void ListItems::erase(ListItem* item) {
    order_.remove(item);
    delete item;
}

void ListItems::clear() {
    const std::vector<ListItem*> items = order_.items();
    order_.clear();
    for (ListItem* item : items)
        delete item;
}

int ListItems::sortedPlace(const std::string& text, bool descending) const {
    const ListItem* after = order_.lowerBound([&](const ListItem& item) {
        const int order = compareNoCase(item.cell.text, text);
        return descending ? order >= 0 : order <= 0;
    });
    return after != nullptr ? indexOf(after) : count();
}

// ---- Grid ----------------------------------------------------------------------------------------------------------

namespace {

int floorDivide(int value, int by) { return value >= 0 ? value / by : -((-value + by - 1) / by); }

} // namespace

void IconGrid::reset(SIZE cell, POINT offset) {
    for (const auto& [key, item] : taken_)
        item->placed = false;
    taken_.clear();
    columns_.clear();
    rows_.clear();
    constexpr LONG smallest = 8; // keeps the number of cells in view within bounds
    cell_ = {std::max(cell.cx, smallest), std::max(cell.cy, smallest)};
    offset_ = offset;
    searchFrom_ = 0;
}

IconGrid::Cell IconGrid::cellOf(POINT position) const {
    return {floorDivide(position.x - offset_.x, cell_.cx), floorDivide(position.y - offset_.y, cell_.cy)};
}

std::uint64_t IconGrid::keyOf(Cell cell) {
    return (static_cast<std::uint64_t>(static_cast<std::uint32_t>(cell.column)) << 32U) |
           static_cast<std::uint32_t>(cell.row);
}

void IconGrid::add(ListItem* item, POINT position) {
    item->position = position;
    item->placed = true;
    const Cell cell = cellOf(position);
    taken_.emplace(keyOf(cell), item);
    columns_.add(cell.column);
    rows_.add(cell.row);
}

void IconGrid::remove(ListItem* item) {
    if (!item->placed)
        return;
    item->placed = false;
    const Cell cell = cellOf(item->position);
    const auto [begin, end] = taken_.equal_range(keyOf(cell));
    const auto found = std::find_if(begin, end, [item](const auto& entry) { return entry.second == item; });
    if (found != end)
        taken_.erase(found);
    columns_.remove(cell.column);
    rows_.remove(cell.row);
    const int along = searchDownwards_ ? cell.row : cell.column;
    const int across = searchDownwards_ ? cell.column : cell.row;
    if (along >= 0 && along < searchPerLine_ && across >= 0 && across <= searchFrom_ / searchPerLine_)
        searchFrom_ = std::min(searchFrom_, across * searchPerLine_ + along);
}

std::vector<ListItem*> IconGrid::within(const RECT& rect) const {
    std::vector<ListItem*> found;
    if (taken_.empty())
        return found;
    Cell first = cellOf({rect.left, rect.top});
    Cell last = cellOf({rect.right, rect.bottom});
    // An icon stands anywhere in its cell, so that its picture and label reach into the next ones.
    first = {std::max(first.column - 1, columns_.lowest()), std::max(first.row - 1, rows_.lowest())};
    last = {std::min(last.column + 1, columns_.highest()), std::min(last.row + 1, rows_.highest())};
    for (int row = first.row; row <= last.row; ++row)
        for (int column = first.column; column <= last.column; ++column) {
            const auto [begin, end] = taken_.equal_range(keyOf({column, row}));
            for (auto entry = begin; entry != end; ++entry)
                found.push_back(entry->second);
        }
    return found;
}

POINT IconGrid::firstFree(int perLine, bool downwards) {
    if (perLine != searchPerLine_ || downwards != searchDownwards_)
        searchFrom_ = 0;
    searchPerLine_ = perLine;
    searchDownwards_ = downwards;
    for (;; ++searchFrom_) {
        const int along = searchFrom_ % perLine;
        const int across = searchFrom_ / perLine;
        const Cell cell = downwards ? Cell{across, along} : Cell{along, across};
        if (!taken_.contains(keyOf(cell)))
            return {offset_.x + cell.column * cell_.cx, offset_.y + cell.row * cell_.cy};
    }
}

RECT IconGrid::bounds() const {
    if (taken_.empty())
        return {};
    return {std::min(0, columns_.lowest()) * cell_.cx, std::min(0, rows_.lowest()) * cell_.cy,
            (std::max(0, columns_.highest()) + 1) * cell_.cx, (std::max(0, rows_.highest()) + 1) * cell_.cy};
}

} // namespace vndk::win32
