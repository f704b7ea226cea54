// States of the list view's items: selection, focus, check boxes.
#include "controls/list_view.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr UINT ownerBits = LVIS_SELECTED | LVIS_FOCUSED; // what a list keeps of rows that the parent keeps

} // namespace

// ---- Reading -------------------------------------------------------------------------------------------------------

UINT ListView::storedState(int index, UINT mask) const {
    UINT state = index == focus_ ? LVIS_FOCUSED : 0U;
    if (ownerData_)
        state |= ownerSelection_.contains(index) ? LVIS_SELECTED : 0U;
    else if (const ListItem* item = items_.at(index); item != nullptr)
        state |= item->state;
    return state & mask;
}

UINT ListView::fullState(int index, UINT mask) {
    const UINT asked = mask & callbackMask_;
    const UINT own = storedState(index, mask & ~asked);
    return asked != 0 ? own | (askParent(index, 0, LVIF_STATE, asked).state & asked) : own;
}

LRESULT ListView::onGetItemState(int index, UINT mask) {
    return isItem(index) ? static_cast<LRESULT>(fullState(index, mask)) : 0;
}

LRESULT ListView::onSetSelectionMark(int index) {
    const int former = mark_;
    if (index == -1 || isItem(index))
        mark_ = index;
    return former;
}

int ListView::nextSelected(int start) const {
    if (selectedCount() == 0 || start >= count())
        return -1;
    if (ownerData_)
        return ownerSelection_.nextFrom(start);
    for (const ListItem* item = items_.at(std::max(start, 0)); item != nullptr; item = ListItems::next(item))
        if ((item->state & LVIS_SELECTED) != 0)
            return ListItems::indexOf(item);
    return -1;
}

// ---- Changing ------------------------------------------------------------------------------------------------------

LRESULT ListView::onSetItemState(int index, const LVITEMA* given) {
    if (given == nullptr)
        return FALSE;
    if (index == -1)
        return setStateOfAll(given->state, given->stateMask) ? TRUE : FALSE;
    return isItem(index) && setState(index, given->state, given->stateMask) ? TRUE : FALSE;
}

bool ListView::setState(int index, UINT state, UINT mask) {
    if (ownerData_)
        return setOwnerState(index, state, mask);
    const UINT ownMask = mask & ~callbackMask_;
    const UINT before = storedState(index, ~0U);
    const UINT after = (before & ~ownMask) | (state & ownMask);
    if (before == after)
        return true;
    if (notifyItem(LVN_ITEMCHANGING, index, 0, after, before, LVIF_STATE) != 0 || !alive() || !isItem(index))
        return false;
    const UINT gained = after & ~before;
    if ((gained & LVIS_SELECTED) != 0 && hasStyle(LVS_SINGLESEL))
        deselectAll(index);
    if (alive() && ((before ^ after) & LVIS_FOCUSED) != 0)
        changeFocus(index, (gained & LVIS_FOCUSED) != 0);
    if (!alive() || !isItem(index))
        return false;
    ListItem& item = *items_.at(index);
    const bool wasSelected = (item.state & LVIS_SELECTED) != 0;
    item.state = after & ~LVIS_FOCUSED;
    selectedCount_ += ((after & LVIS_SELECTED) != 0 ? 1 : 0) - (wasSelected ? 1 : 0);
    invalidateItem(index);
    if (alive() && isItem(index))
        notifyItem(LVN_ITEMCHANGED, index, 0, after, before, LVIF_STATE);
    return true;
}

void ListView::changeFocus(int index, bool on) {
    if (!on) {
        focus_ = -1;
        return;
    }
    if (focus_ == -1 && mark_ == -1)
        mark_ = index;
    if (isItem(focus_) && focus_ != index)
        setState(focus_, 0, LVIS_FOCUSED);
    if (alive() && isItem(index))
        focus_ = index;
}

bool ListView::setStateOfAll(UINT state, UINT mask) {
    const UINT gained = state & mask;
    if ((gained & LVIS_FOCUSED) != 0 || ((gained & LVIS_SELECTED) != 0 && hasStyle(LVS_SINGLESEL)))
        return false; // only one item can have it
    if (ownerData_)
        return setOwnerStateOfAll(state, mask);
    bool done = true;
    for (int index = 0; alive() && index < count(); ++index)
        done = setState(index, state, mask) && done;
    return done;
}

bool ListView::setOwnerState(int index, UINT state, UINT mask) {
    const UINT before = storedState(index, ~0U);
    const UINT ownMask = mask & ownerBits;
    const UINT after = (before & ~ownMask) | (state & ownMask);
    if (before == after)
        return true;
    if ((after & ~before & LVIS_SELECTED) != 0 && hasStyle(LVS_SINGLESEL))
        deselectAll(index);
    if (alive() && ((before ^ after) & LVIS_FOCUSED) != 0)
        changeFocus(index, (after & LVIS_FOCUSED) != 0);
    if (!alive() || !isItem(index))
        return false;
    if ((after & LVIS_SELECTED) != 0)
        ownerSelection_.add(index, index + 1);
    else
        ownerSelection_.remove(index, index + 1);
    invalidateItem(index);
    if (alive())
        notifyItem(LVN_ITEMCHANGED, index, 0, after, before, LVIF_STATE);
    return true;
}

bool ListView::setOwnerStateOfAll(UINT state, UINT mask) {
    if ((mask & LVIS_FOCUSED) != 0)
        focus_ = -1;
    if ((mask & LVIS_SELECTED) != 0) {
        ownerSelection_.clear();
        if ((state & LVIS_SELECTED) != 0)
            ownerSelection_.add(0, count());
    }
    invalidateList();
    const UINT told = mask & ownerBits;
    notifyItem(LVN_ITEMCHANGED, -1, 0, state & told, ~state & told, LVIF_STATE);
    return true;
}

void ListView::deselectAll(int except) {
    if (ownerData_) {
        const bool keep = isItem(except) && ownerSelection_.contains(except);
        if (ownerSelection_.size() == (keep ? 1 : 0))
            return;
        ownerSelection_.clear();
        if (keep)
            ownerSelection_.add(except, except + 1);
        invalidateList();
        notifyItem(LVN_ITEMCHANGED, -1, 0, 0, LVIS_SELECTED, LVIF_STATE);
        return;
    }
    for (int index = nextSelected(0); alive() && index >= 0; index = nextSelected(index + 1))
        if (index != except)
            setState(index, 0, LVIS_SELECTED);
}

void ListView::selectRange(int from, int to, bool keepOthers) {
    const int first = std::clamp(std::min(from, to), 0, count() - 1);
    const int last = std::clamp(std::max(from, to), 0, count() - 1);
    if (ownerData_) {
        if (!keepOthers)
            deselectAll();
        if (!alive() || !isItem(last))
            return;
        ownerSelection_.add(first, last + 1);
        invalidateList();
        notifyStateRange(first, last, LVIS_SELECTED, 0);
        return;
    }
    for (int index = keepOthers ? -1 : nextSelected(0); alive() && index >= 0; index = nextSelected(index + 1))
        if (index < first || index > last)
            setState(index, 0, LVIS_SELECTED);
    for (int index = first; alive() && index <= last && isItem(index); ++index)
        setState(index, LVIS_SELECTED, LVIS_SELECTED);
}

void ListView::toggleCheck(int index) {
    const UINT now = (fullState(index, LVIS_STATEIMAGEMASK) & LVIS_STATEIMAGEMASK) >> 12U;
    if (!alive() || now == 0 || images_[LVSIL_STATE] == nullptr)
        return;
    const auto images = static_cast<UINT>(ImageList_GetImageCount(images_[LVSIL_STATE]));
    setState(index, INDEXTOSTATEIMAGEMASK(now < images ? now + 1 : 1), LVIS_STATEIMAGEMASK);
}

// ---- Telling -------------------------------------------------------------------------------------------------------

LRESULT ListView::notifyItem(UINT code, int index, int subItem, UINT newState, UINT oldState, UINT changed) const {
    NMLISTVIEW told{};
    told.iItem = index;
    told.iSubItem = subItem;
    told.uNewState = newState;
    told.uOldState = oldState;
    told.uChanged = changed;
    told.lParam = dataOf(index);
    return notify(code, told);
}

void ListView::notifyStateRange(int from, int to, UINT newState, UINT oldState) const {
    NMLVODSTATECHANGE told{};
    told.iFrom = from;
    told.iTo = to;
    told.uNewState = newState;
    told.uOldState = oldState;
    notify(LVN_ODSTATECHANGED, told);
}

} // namespace vndk::win32
