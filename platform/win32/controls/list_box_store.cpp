#include "controls/list_box_store.h"

#include <algorithm>
#include <cassert>

namespace vndk::win32 {

namespace {

constexpr std::size_t blockLimit = 256;

} // namespace

ListBoxStore::Place ListBoxStore::find(int index) const {
    assert(index >= 0 && index < count_ && "the list box asks for an item that isn't there");
    Place place = last_;
    while (index < place.first) {
        --place.block;
        place.first -= static_cast<int>(blocks_[place.block]->items.size());
    }
    while (index >= place.first + static_cast<int>(blocks_[place.block]->items.size())) {
        place.first += static_cast<int>(blocks_[place.block]->items.size());
        ++place.block;
    }
    last_ = place;
    return place;
}

ListBoxItem& ListBoxStore::item(int index) {
    const Place place = find(index);
    return blocks_[place.block]->items[static_cast<std::size_t>(index - place.first)];
}

const ListBoxItem& ListBoxStore::operator[](int index) const {
    if (bare_) {
        bareItem_.selected = !bareSelected_.empty() && bareSelected_[static_cast<std::size_t>(index)];
        return bareItem_;
    }
    const Place place = find(index);
    return blocks_[place.block]->items[static_cast<std::size_t>(index - place.first)];
}

void ListBoxStore::insert(int index, ListBoxItem item) {
    assert(index >= 0 && index <= count_ && "an item goes in behind the end");
    if (bare_) {
        ++count_;
        if (!bareSelected_.empty())
            bareSelected_.insert(bareSelected_.begin() + index, false);
        return;
    }
    if (blocks_.empty())
        blocks_.push_back(std::make_unique<Block>());
    // At the end the last block grows; before that, the block of the item that makes room.
    const Place place = count_ == 0 ? Place{} : find(index == count_ ? count_ - 1 : index);
    Block& block = *blocks_[place.block];
    block.height += item.height;
    block.selected += item.selected ? 1 : 0;
    selected_ += item.selected ? 1 : 0;
    ++count_;
    block.items.insert(block.items.begin() + (index - place.first), std::move(item));
    if (block.items.size() > blockLimit)
        split(place.block);
}

void ListBoxStore::split(std::size_t block) {
    Block& full = *blocks_[block];
    // What is appended item by item leaves well filled blocks behind.
    const std::size_t kept = block + 1 == blocks_.size() ? blockLimit * 3 / 4 : blockLimit / 2;
    auto rest = std::make_unique<Block>();
    rest->items.assign(std::make_move_iterator(full.items.begin() + static_cast<std::ptrdiff_t>(kept)),
                       std::make_move_iterator(full.items.end()));
    full.items.resize(kept);
    for (const ListBoxItem& moved : rest->items) {
        rest->height += moved.height;
        rest->selected += moved.selected ? 1 : 0;
    }
    full.height -= rest->height;
    full.selected -= rest->selected;
    blocks_.insert(blocks_.begin() + static_cast<std::ptrdiff_t>(block) + 1, std::move(rest));
}

void ListBoxStore::erase(int index) {
    if (bare_) {
        select(index, false);
        --count_;
        if (!bareSelected_.empty())
            bareSelected_.erase(bareSelected_.begin() + index);
        return;
    }
    const Place place = find(index);
    Block& block = *blocks_[place.block];
    const auto gone = block.items.begin() + (index - place.first);
    block.height -= gone->height;
    block.selected -= gone->selected ? 1 : 0;
    selected_ -= gone->selected ? 1 : 0;
    block.items.erase(gone);
    --count_;
    if (block.items.empty()) {
        blocks_.erase(blocks_.begin() + static_cast<std::ptrdiff_t>(place.block));
        last_ = {};
    }
}

void ListBoxStore::clear() {
    blocks_.clear();
    count_ = 0;
    selected_ = 0;
    last_ = {};
    bare_ = false;
    bareSelected_.clear();
}

void ListBoxStore::setBareCount(int count) {
    clear();
    bare_ = true;
    count_ = count;
}

void ListBoxStore::setData(int index, ULONG_PTR data) {
    if (!bare_)
        item(index).data = data;
}

void ListBoxStore::setHeight(int index, int height) {
    if (bare_)
        return;
    ListBoxItem& changed = item(index);
    blocks_[last_.block]->height += height - changed.height;
    changed.height = height;
}

bool ListBoxStore::select(int index, bool selected) {
    if (bare_) {
        if (bareSelected_.empty() && selected)
            bareSelected_.resize(static_cast<std::size_t>(count_));
        if (bareSelected_.empty() || bareSelected_[static_cast<std::size_t>(index)] == selected)
            return false;
        bareSelected_[static_cast<std::size_t>(index)] = selected;
        selected_ += selected ? 1 : -1;
        return true;
    }
    ListBoxItem& changed = item(index);
    if (changed.selected == selected)
        return false;
    changed.selected = selected;
    blocks_[last_.block]->selected += selected ? 1 : -1;
    selected_ += selected ? 1 : -1;
    return true;
}

std::int64_t ListBoxStore::heightBefore(int index) const {
    std::int64_t height = 0;
    int first = 0;
    for (const std::unique_ptr<Block>& block : blocks_) {
        const int size = static_cast<int>(block->items.size());
        if (index < first + size) {
            for (int i = 0; i < index - first; ++i)
                height += block->items[static_cast<std::size_t>(i)].height;
            break;
        }
        height += block->height;
        first += size;
    }
    return height;
}

int ListBoxStore::nextSelected(int index) const {
    if (index >= count_ || selected_ == 0)
        return -1;
    if (bare_) {
        const auto from = bareSelected_.begin() + std::max(index, 0);
        const auto found = std::find(from, bareSelected_.end(), true);
        return found == bareSelected_.end() ? -1 : static_cast<int>(found - bareSelected_.begin());
    }
    Place place = find(std::max(index, 0));
    for (; place.block < blocks_.size(); ++place.block) {
        const Block& block = *blocks_[place.block];
        const int size = static_cast<int>(block.items.size());
        for (int i = std::max(index - place.first, 0); block.selected > 0 && i < size; ++i)
            if (block.items[static_cast<std::size_t>(i)].selected)
                return place.first + i;
        place.first += size;
    }
    return -1;
}

int ListBoxStore::placeOf(std::string_view text) const {
    const auto after = [text](const ListBoxItem& item) { return compareListTexts(item.text, text) > 0; };
    // The last block that begins at or before the text: the place is in it or right behind it.
    const auto begin = std::partition_point(blocks_.begin(), blocks_.end(), [&](const std::unique_ptr<Block>& block) {
        return !after(block->items.front());
    });
    if (begin == blocks_.begin())
        return 0;
    const std::size_t block = static_cast<std::size_t>(begin - blocks_.begin()) - 1;
    const std::vector<ListBoxItem>& items = blocks_[block]->items;
    const auto place =
        std::partition_point(items.begin(), items.end(), [&](const ListBoxItem& item) { return !after(item); });
    int first = 0;
    for (std::size_t i = 0; i < block; ++i)
        first += static_cast<int>(blocks_[i]->items.size());
    return first + static_cast<int>(place - items.begin());
}

} // namespace vndk::win32
