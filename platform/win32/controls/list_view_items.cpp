// The list view's items: insertion, deletion, texts, images and data, given or asked for.
#include "controls/item_text.h"
#include "controls/list_view.h"

#include "win32/paint.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr int highestSubItem = 1000;
constexpr int highestCount = 100'000'000;

} // namespace

// ---- Insertion and deletion ----------------------------------------------------------------------------------------

LRESULT ListView::onInsertItem(const LVITEMA* given) {
    if (given == nullptr || ownerData_ || sorting_ || given->iSubItem != 0 || given->iItem < 0)
        return -1;
    const bool sorted = (style() & (LVS_SORTASCENDING | LVS_SORTDESCENDING)) != 0;
    const bool hasText = (given->mask & LVIF_TEXT) != 0;
    if (sorted && hasText && isCallback(given->pszText))
        return -1; // it couldn't be put in order
    int index = std::min(given->iItem, count());
    if (sorted)
        index = items_.sortedPlace(hasText && given->pszText != nullptr ? given->pszText : "",
                                   !hasStyle(LVS_SORTASCENDING));
    ListItem* item = items_.insert(index);
    takeContent(*item, *given);
    shiftIndexes(index, 1);
    placeNew(item);
    finishInsertion(index, *given);
    return alive() ? index : -1;
}

void ListView::takeContent(ListItem& item, const LVITEMA& given) {
    if ((given.mask & LVIF_TEXT) != 0)
        setText(item.cell, given.pszText);
    if ((given.mask & LVIF_IMAGE) != 0)
        item.cell.image = given.iImage;
    if ((given.mask & LVIF_PARAM) != 0)
        item.data = given.lParam;
    if ((given.mask & LVIF_INDENT) != 0)
        item.indent = given.iIndent;
}

void ListView::finishInsertion(int index, const LVITEMA& given) {
    growListColumns(index);
    updateScrollBars();
    invalidateFrom(index);
    // All of the state counts here, whatever the mask says. Check boxes begin clear.
    UINT state = (given.mask & LVIF_STATE) != 0 ? given.state : 0;
    if (hasExtended(LVS_EX_CHECKBOXES))
        state = (state & ~LVIS_STATEIMAGEMASK) | INDEXTOSTATEIMAGEMASK(1);
    if (state != 0)
        setState(index, state, ~0U);
    if (!alive() || !isItem(index))
        return;
    NMLISTVIEW told{};
    told.iItem = index;
    told.lParam = dataOf(index);
    notify(LVN_INSERTITEM, told);
}

LRESULT ListView::onDeleteItem(int index) {
    if (!isItem(index) || sorting_)
        return FALSE;
    endLabelEdit(false);
    if (!alive() || !isItem(index))
        return FALSE;
    // Watchers learn first that it is no longer selected.
    if (isSelected(index))
        setState(index, 0, LVIS_SELECTED);
    if (!alive() || !isItem(index))
        return FALSE;
    notifyItem(LVN_DELETEITEM, index, 0, 0, 0, 0);
    if (!alive() || !isItem(index))
        return FALSE;
    invalidateFrom(index);
    if (ownerData_) {
        ownerSelection_.clear();
        --ownerCount_;
    } else {
        ListItem* item = items_.at(index);
        selectedCount_ -= (item->state & LVIS_SELECTED) != 0 ? 1 : 0; // deselecting was refused
        grid_.remove(item);
        items_.erase(item);
    }
    shiftIndexes(index, -1);
    updateScrollBars();
    return TRUE;
}

void ListView::shiftIndexes(int from, int by) {
    const auto shift = [&](int& index) {
        if (by < 0 && index == from)
            index = -1;
        else if (index >= from)
            index += by;
    };
    const bool lostFocus = by < 0 && focus_ == from;
    shift(focus_);
    shift(mark_);
    shift(editing_);
    shift(editCandidate_);
    hot_ = -1;
    if (press_ == Press::item)
        shift(pressed_);
    if (lostFocus)
        focus_ = std::min(from, count() - 1); // the next one has it now
    scroll_ = clampedScroll(scroll_);
}

LRESULT ListView::onDeleteAllItems() {
    if (sorting_)
        return FALSE;
    endLabelEdit(false);
    if (!alive())
        return FALSE;
    if (count() == 0)
        return TRUE;
    NMLISTVIEW told{};
    told.iItem = -1;
    const bool eachIsTold = notify(LVN_DELETEALLITEMS, told) == 0 && !ownerData_;
    for (int index = count() - 1; eachIsTold && alive() && index >= 0; --index)
        if (isItem(index))
            notifyItem(LVN_DELETEITEM, index, 0, 0, 0, 0);
    if (!alive())
        return FALSE;
    grid_.reset(cellSize(), cellOffset()); // lets go of the items before they die
    items_.clear();
    ownerCount_ = 0;
    ownerSelection_.clear();
    selectedCount_ = 0;
    focus_ = mark_ = hot_ = editCandidate_ = -1;
    pressed_ = -1;
    scroll_ = {};
    if (!listColumnWidthSet_)
        measureRows();
    updateScrollBars();
    invalidateList();
    return TRUE;
}

LRESULT ListView::onSetItemCount(int wanted, DWORD flags) {
    if (!ownerData_)
        return TRUE; // a hint only
    const int former = ownerCount_;
    ownerCount_ = std::clamp(wanted, 0, highestCount);
    ownerSelection_.remove(ownerCount_, highestCount + 1);
    focus_ = std::min(focus_, ownerCount_ - 1);
    mark_ = std::min(mark_, ownerCount_ - 1);
    hot_ = -1;
    if ((flags & LVSICF_NOSCROLL) == 0 || scroll_.y >= ownerCount_)
        scroll_ = clampedScroll(scroll_);
    updateScrollBars();
    if ((flags & LVSICF_NOINVALIDATEALL) != 0)
        invalidateFrom(std::min(former, ownerCount_));
    else
        invalidateList();
    return TRUE;
}

// ---- Reading -------------------------------------------------------------------------------------------------------

const ListCell* ListView::cellAt(int index, int subItem) const {
    const ListItem* item = items_.at(index);
    if (item == nullptr)
        return nullptr;
    if (subItem == 0)
        return &item->cell;
    const auto place = static_cast<std::size_t>(subItem) - 1;
    return subItem > 0 && place < item->subItems.size() ? &item->subItems[place] : nullptr;
}

LPARAM ListView::dataOf(int index) const {
    const ListItem* item = items_.at(index);
    return item != nullptr ? item->data : 0;
}

std::string ListView::textOf(int index, int subItem) {
    const ListCell* cell = cellAt(index, subItem);
    if (!ownerData_ && (cell == nullptr || !cell->textCallback))
        return cell != nullptr ? cell->text : std::string();
    std::string text;
    askParent(index, subItem, LVIF_TEXT, 0, &text);
    return text;
}

int ListView::imageOf(int index, int subItem) {
    const ListCell* cell = cellAt(index, subItem);
    if (!ownerData_ && (cell == nullptr || cell->image != I_IMAGECALLBACK))
        return cell != nullptr ? cell->image : I_IMAGENONE;
    return askParent(index, subItem, LVIF_IMAGE, 0).iImage;
}

int ListView::indentOf(int index) {
    const ListItem* item = items_.at(index);
    constexpr int deepest = 1000;
    if (!ownerData_ && (item == nullptr || item->indent != I_INDENTCALLBACK))
        return item != nullptr ? std::clamp(item->indent, 0, deepest) : 0;
    return std::clamp(askParent(index, 0, LVIF_INDENT, 0).iIndent, 0, deepest);
}

LVITEMA ListView::askParent(int index, int subItem, UINT mask, UINT stateMask, std::string* text) {
    char buffer[MAX_PATH] = {};
    NMLVDISPINFOA info{};
    info.item.mask = mask;
    info.item.iItem = index;
    info.item.iSubItem = subItem;
    info.item.stateMask = stateMask;
    info.item.pszText = buffer;
    info.item.cchTextMax = MAX_PATH;
    info.item.lParam = dataOf(index);
    notify(LVN_GETDISPINFO, info);
    const LVITEMA& answer = info.item;
    if (text != nullptr)
        *text = answer.pszText != nullptr && !isCallback(answer.pszText) ? answer.pszText : "";
    if (alive() && (answer.mask & LVIF_DI_SETITEM) != 0)
        keepAnswer(index, subItem, mask, answer);
    info.item.pszText = nullptr; // the buffer ends here
    return info.item;
}

void ListView::keepAnswer(int index, int subItem, UINT mask, const LVITEMA& answer) {
    ListItem* item = items_.at(index);
    if (item == nullptr)
        return;
    ListCell* cell = const_cast<ListCell*>(cellAt(index, subItem));
    if (cell != nullptr && (mask & LVIF_TEXT) != 0 && !isCallback(answer.pszText))
        setText(*cell, answer.pszText);
    if (cell != nullptr && (mask & LVIF_IMAGE) != 0)
        cell->image = answer.iImage;
    if ((mask & LVIF_INDENT) != 0)
        item->indent = answer.iIndent;
}

LRESULT ListView::onGetItem(LVITEMA* wanted) {
    if (wanted == nullptr || !isItem(wanted->iItem) || wanted->iSubItem < 0)
        return FALSE;
    const int index = wanted->iItem;
    const int subItem = wanted->iSubItem;
    const bool ask = (wanted->mask & LVIF_NORECOMPUTE) == 0;
    if ((wanted->mask & LVIF_TEXT) != 0) {
        const ListCell* cell = cellAt(index, subItem);
        const bool callback = ownerData_ || (cell != nullptr && cell->textCallback);
        if (callback && !ask)
            wanted->pszText = LPSTR_TEXTCALLBACK;
        else
            copyText(textOf(index, subItem), wanted->pszText, wanted->cchTextMax);
    }
    if (alive() && (wanted->mask & LVIF_IMAGE) != 0) {
        const ListCell* cell = cellAt(index, subItem);
        const bool callback = ownerData_ || (cell != nullptr && cell->image == I_IMAGECALLBACK);
        wanted->iImage = callback && !ask ? I_IMAGECALLBACK : imageOf(index, subItem);
    }
    if (alive() && (wanted->mask & LVIF_INDENT) != 0)
        wanted->iIndent = subItem == 0 ? indentOf(index) : 0;
    if (alive() && (wanted->mask & LVIF_STATE) != 0)
        wanted->state = subItem == 0 ? fullState(index, wanted->stateMask) : 0;
    if ((wanted->mask & LVIF_PARAM) != 0)
        wanted->lParam = dataOf(index);
    return TRUE;
}

LRESULT ListView::onGetItemText(int index, LVITEMA* wanted) {
    if (wanted == nullptr || !isItem(index) || wanted->iSubItem < 0)
        return 0;
    const std::string text = textOf(index, wanted->iSubItem);
    copyText(text, wanted->pszText, wanted->cchTextMax);
    if (wanted->pszText == nullptr || wanted->cchTextMax <= 0)
        return 0;
    return static_cast<LRESULT>(std::min(text.size(), static_cast<std::size_t>(wanted->cchTextMax) - 1));
}

// ---- Writing -------------------------------------------------------------------------------------------------------

LRESULT ListView::onSetItemText(int index, const LVITEMA* given) {
    if (given == nullptr)
        return FALSE;
    LVITEMA item{};
    item.mask = LVIF_TEXT;
    item.iItem = index;
    item.iSubItem = given->iSubItem;
    item.pszText = given->pszText;
    return onSetItem(&item);
}

LRESULT ListView::onSetItem(const LVITEMA* given) {
    if (given == nullptr || !isItem(given->iItem) || given->iSubItem < 0 || given->iSubItem > highestSubItem)
        return FALSE;
    if (ownerData_) // the parent keeps all but selection and focus
        return (given->mask & ~LVIF_STATE) == 0 && setState(given->iItem, given->state, given->stateMask);
    return given->iSubItem != 0 ? setSubItem(*given) : setMainItem(*given);
}

bool ListView::setSubItem(const LVITEMA& given) {
    if ((given.mask & ~(LVIF_TEXT | LVIF_IMAGE | LVIF_STATE)) != 0)
        return false; // data and indent belong to the item
    const UINT changed = given.mask & (LVIF_TEXT | LVIF_IMAGE);
    if (changed == 0)
        return true;
    const int index = given.iItem;
    if (notifyItem(LVN_ITEMCHANGING, index, given.iSubItem, 0, 0, changed) != 0 || !alive() || !isItem(index))
        return false;
    ListItem& item = *items_.at(index);
    const auto place = static_cast<std::size_t>(given.iSubItem) - 1;
    while (item.subItems.size() <= place)
        item.subItems.push_back({{}, false, I_IMAGENONE});
    if ((changed & LVIF_TEXT) != 0)
        setText(item.subItems[place], given.pszText);
    if ((changed & LVIF_IMAGE) != 0)
        item.subItems[place].image = given.iImage;
    if (isReport() && given.iSubItem < columnCount()) {
        const RECT rect = cellRect(index, given.iSubItem);
        invalidate(&rect);
    }
    notifyItem(LVN_ITEMCHANGED, index, given.iSubItem, 0, 0, changed);
    return true;
}

bool ListView::setMainItem(const LVITEMA& given) {
    const int index = given.iItem;
    const UINT changed = given.mask & (LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM | LVIF_INDENT);
    if (changed != 0) {
        if (notifyItem(LVN_ITEMCHANGING, index, 0, 0, 0, changed) != 0 || !alive() || !isItem(index))
            return false;
        if ((changed & ~LVIF_PARAM) != 0)
            invalidateItem(index); // where it was
        if (!alive() || !isItem(index))
            return false;
        takeContent(*items_.at(index), given);
        if ((changed & LVIF_TEXT) != 0)
            growListColumns(index);
        if ((changed & ~LVIF_PARAM) != 0)
            invalidateItem(index);
        if (alive() && isItem(index))
            notifyItem(LVN_ITEMCHANGED, index, 0, 0, 0, changed);
    }
    if (alive() && (given.mask & LVIF_STATE) != 0)
        return setState(index, given.state, given.stateMask);
    return true;
}

} // namespace vndk::win32
