// Finding of items in the list view, and sorting.
#include "controls/list_view.h"
#include "controls/stable_sort.h"
#include "win32/codepage.h"
#include "win32/input.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace vndk::win32 {

namespace {

bool fits(const std::string& candidate, const std::string& text, bool partial) {
    if (!partial)
        return compareNoCase(candidate, text) == 0;
    return candidate.size() >= text.size() && compareNoCase(candidate.substr(0, text.size()), text) == 0;
}

} // namespace

// ---- By text, data, place ------------------------------------------------------------------------------------------

LRESULT ListView::onFindItem(int start, const LVFINDINFOA* info) {
    if (info == nullptr || start < -1)
        return -1;
    const bool wrap = (info->flags & LVFI_WRAP) != 0;
    if (ownerData_) {
        NMLVFINDITEMA asked{};
        asked.iStart = start + 1 < count() ? start + 1 : 0;
        asked.lvfi = *info;
        const LRESULT found = notify(LVN_ODFINDITEM, asked);
        return alive() && isItem(static_cast<int>(found)) ? found : -1;
    }
    if ((info->flags & LVFI_PARAM) != 0)
        return findData(start, info->lParam, wrap);
    if ((info->flags & (LVFI_STRING | LVFI_PARTIAL | LVFI_SUBSTRING | LVFI_WRAP)) != 0) {
        const bool partial = (info->flags & (LVFI_PARTIAL | LVFI_SUBSTRING)) != 0;
        return info->psz != nullptr && info->psz != LPSTR_TEXTCALLBACK ? findText(start, info->psz, partial, wrap) : -1;
    }
    if ((info->flags & LVFI_NEARESTXY) != 0)
        return findNearest(info->pt, static_cast<int>(info->vkDirection));
    return -1;
}

int ListView::findText(int start, const std::string& text, bool partial, bool wrap) {
    for (int index = start + 1; alive() && index < count(); ++index)
        if (fits(textOf(index, 0), text, partial))
            return index;
    for (int index = 0; wrap && alive() && index <= start && index < count(); ++index)
        if (fits(textOf(index, 0), text, partial))
            return index;
    return -1;
}

int ListView::findData(int start, LPARAM data, bool wrap) const {
    int index = start + 1;
    for (const ListItem* item = items_.at(index); item != nullptr; item = ListItems::next(item), ++index)
        if (item->data == data)
            return index;
    index = 0;
    for (const ListItem* item = items_.first(); wrap && item != nullptr && index <= start;
         item = ListItems::next(item), ++index)
        if (item->data == data)
            return index;
    return -1;
}

int ListView::findNearest(POINT point, int direction) {
    if (!isIconic())
        return -1;
    int nearest = -1;
    std::int64_t best = std::numeric_limits<std::int64_t>::max();
    for (int index = 0; index < count(); ++index) {
        const POINT place = viewPosition(index);
        const std::int64_t dx = std::int64_t{place.x} - point.x;
        const std::int64_t dy = std::int64_t{place.y} - point.y;
        const bool beyond = direction == VK_LEFT    ? dx < 0
                            : direction == VK_RIGHT ? dx > 0
                            : direction == VK_UP    ? dy < 0
                            : direction == VK_DOWN  ? dy > 0
                                                    : true;
        if (const std::int64_t distance = dx * dx + dy * dy; beyond && distance < best) {
            best = distance;
            nearest = index;
        }
    }
    return nearest;
}

// ---- From an item on -----------------------------------------------------------------------------------------------

bool ListView::matches(int index, UINT flags) {
    const UINT mask = flags & (LVIS_FOCUSED | LVIS_SELECTED | LVIS_CUT | LVIS_DROPHILITED);
    return mask == 0 || fullState(index, mask) == mask;
}

LRESULT ListView::onGetNextItem(int start, UINT flags) {
    static_assert(LVNI_FOCUSED == LVIS_FOCUSED && LVNI_SELECTED == LVIS_SELECTED && LVNI_CUT == LVIS_CUT &&
                  LVNI_DROPHILITED == LVIS_DROPHILITED);
    if (start < -1 || start >= count())
        return -1;
    if (const UINT direction = flags & (LVNI_ABOVE | LVNI_BELOW | LVNI_TOLEFT | LVNI_TORIGHT); direction != 0) {
        int index = start;
        do {
            index = start >= 0 ? neighbour(index, direction) : -1;
        } while (alive() && index >= 0 && !matches(index, flags));
        return index;
    }
    if (callbackMask_ == 0 && flags == LVNI_SELECTED)
        return nextSelected(start + 1);
    if (callbackMask_ == 0 && flags == LVNI_FOCUSED)
        return focus_ > start ? focus_ : -1;
    for (int index = start + 1; alive() && index < count(); ++index)
        if (matches(index, flags))
            return index;
    return -1;
}

int ListView::neighbour(int index, UINT direction) {
    const bool backwards = (direction & (LVNI_ABOVE | LVNI_TOLEFT)) != 0;
    const bool upright = (direction & (LVNI_ABOVE | LVNI_BELOW)) != 0;
    int step = 1;
    if (isReport()) {
        if (!upright)
            return -1;
    } else if (view() == LVS_LIST) {
        step = upright ? 1 : rowsPerPage();
    } else if (arranged()) {
        step = upright == fillsDownwards() ? 1 : iconsPerLine();
    } else {
        const int key = upright ? (backwards ? VK_UP : VK_DOWN) : (backwards ? VK_LEFT : VK_RIGHT);
        return findNearest(viewPosition(index), key);
    }
    const int target = backwards ? index - step : index + step;
    return isItem(target) ? target : -1;
}

// ---- Sorting -------------------------------------------------------------------------------------------------------

LRESULT ListView::onSortItems(PFNLVCOMPARE compare, LPARAM sort, bool byIndex) {
    if (compare == nullptr || ownerData_ || sorting_)
        return FALSE;
    endLabelEdit(false);
    if (!alive())
        return FALSE;
    struct Entry {
        LPARAM key;
        ListItem* item;
    };
    std::vector<Entry> entries;
    entries.reserve(static_cast<std::size_t>(count()));
    LPARAM index = 0;
    for (ListItem* item = items_.first(); item != nullptr; item = ListItems::next(item), ++index)
        entries.push_back({byIndex ? index : item->data, item});
    const ListItem* focused = items_.at(focus_);
    const ListItem* marked = items_.at(mark_);

    sorting_ = true;
    stableSort(entries, [&](const Entry& a, const Entry& b) { return alive() ? compare(a.key, b.key, sort) : 0; });
    sorting_ = false;
    if (!alive())
        return FALSE;

    std::vector<ListItem*> sorted;
    sorted.reserve(entries.size());
    for (const Entry& entry : entries)
        sorted.push_back(entry.item);
    items_.reorder(sorted);
    focus_ = focused != nullptr ? ListItems::indexOf(focused) : -1;
    mark_ = marked != nullptr ? ListItems::indexOf(marked) : -1;
    hot_ = -1;
    if (isIconic())
        resetGrid();
    invalidateList();
    return TRUE;
}

} // namespace vndk::win32
