// Selection, anchor and focus item.
#include "controls/list_box.h"

#include <algorithm>
#include <utility>

namespace vndk::win32 {

ListBox::Handled ListBox::handleSelection(UINT message, WPARAM wParam, LPARAM lParam) {
    const int index = static_cast<int>(wParam);
    switch (message) {
    case LB_SETCURSEL:
        return setCurrent(index);
    case LB_GETCURSEL:
        if (singleChoice())
            return current_;
        return count() > 0 ? caret_ : LB_ERR;
    case LB_GETSEL:
        return valid(index) ? static_cast<LRESULT>(items_[index].selected) : LB_ERR;
    case LB_SELECTSTRING: {
        const auto found = singleChoice() ? static_cast<int>(findItem(index, lParam, false)) : -1;
        return found >= 0 && alive() ? setCurrent(found) : LB_ERR;
    }
    case LB_SETANCHORINDEX:
        if (!valid(index) && index != -1)
            return LB_ERR;
        anchor_ = index;
        return LB_OKAY;
    case LB_GETANCHORINDEX:
        return anchor_;
    case LB_SETCARETINDEX:
        return setCaretIndex(index, lParam != 0);
    case LB_GETCARETINDEX:
        return caret_;
    default:
        return std::nullopt;
    }
}

ListBox::Handled ListBox::handleMultipleChoice(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto bits = static_cast<DWORD_PTR>(lParam);
    switch (message) {
    case LB_SETSEL:
        return singleChoice() ? LB_ERR : setSelection(wParam != 0, static_cast<int>(lParam));
    case LB_GETSELCOUNT:
        return singleChoice() ? LB_ERR : items_.selectedCount();
    case LB_GETSELITEMS:
        return singleChoice() ? LB_ERR : getSelectedItems(static_cast<int>(wParam), reinterpret_cast<int*>(lParam));
    case LB_SELITEMRANGE:
        return selectItemRange(std::min(LOWORD(bits), HIWORD(bits)), std::max(LOWORD(bits), HIWORD(bits)), wParam != 0);
    case LB_SELITEMRANGEEX: {
        const int first = static_cast<int>(wParam);
        const int last = static_cast<int>(lParam);
        return selectItemRange(std::min(first, last), std::max(first, last), first <= last);
    }
    default:
        return std::nullopt;
    }
}

LRESULT ListBox::setCurrent(int index) {
    if (!singleChoice() || (index != -1 && !valid(index)))
        return LB_ERR;
    hideCaret();
    if (index != -1 && alive())
        ensureVisible(index);
    if (alive())
        selectSingle(index);
    if (!alive())
        return LB_ERR;
    anchor_ = index;
    caretPlaced_ = index != -1;
    showCaretAt(std::max(index, 0));
    return index == -1 ? LB_ERR : index;
}

void ListBox::selectSingle(int index) {
    if (index == current_)
        return;
    const int former = std::exchange(current_, index);
    if (valid(former))
        select(former, false);
    if (alive() && valid(index))
        select(index, true);
}

void ListBox::select(int index, bool selected) {
    if (items_.select(index, selected))
        drawNow(index, ODA_SELECT);
}

void ListBox::selectRange(int first, int last, bool selected) {
    first = std::max(first, 0);
    last = std::min(last, count() - 1);
    const int lastSeen = lastSeenItem();
    std::vector<int> seen;
    for (int index = first; index <= last; ++index)
        if (items_.select(index, selected) && index >= top_ && index <= lastSeen)
            seen.push_back(index);
    for (const int index : seen)
        if (alive() && valid(index))
            drawNow(index, ODA_SELECT);
}

/// Selects a range and nothing else.
void ListBox::selectOnly(int first, int last) {
    const int lastSeen = lastSeenItem();
    std::vector<int> seen;
    for (int index = items_.nextSelected(0); index >= 0; index = items_.nextSelected(index + 1)) {
        if (index >= first && index <= last)
            continue;
        items_.select(index, false);
        if (index >= top_ && index <= lastSeen)
            seen.push_back(index);
    }
    for (const int index : seen)
        if (alive() && valid(index))
            drawNow(index, ODA_SELECT);
    if (alive())
        selectRange(first, last, true);
}

LRESULT ListBox::setSelection(bool selected, int index) {
    if (index == -1) {
        selectRange(0, count() - 1, selected);
        return LB_OKAY;
    }
    if (!valid(index))
        return LB_ERR;
    hideCaret();
    if (selected && alive())
        ensureVisible(index);
    if (alive() && valid(index))
        select(index, selected);
    if (!alive())
        return LB_OKAY;
    anchor_ = index;
    caretPlaced_ = true;
    showCaretAt(index);
    return LB_OKAY;
}

LRESULT ListBox::selectItemRange(int first, int last, bool selected) {
    if (singleChoice())
        return LB_ERR;
    selectRange(first, last, selected);
    return LB_OKAY;
}

LRESULT ListBox::getSelectedItems(int size, int* buffer) const {
    if (size < 0 || buffer == nullptr)
        return LB_ERR;
    int written = 0;
    for (int index = items_.nextSelected(0); index >= 0 && written < size; index = items_.nextSelected(index + 1))
        buffer[written++] = index;
    return written;
}

LRESULT ListBox::setCaretIndex(int index, bool partIsEnough) {
    // In a single-choice list the focus item is the selected one, so there has to be none.
    if (!valid(index) || (singleChoice() && current_ != -1))
        return LB_ERR;
    hideCaret();
    if (alive())
        ensureVisible(index, partIsEnough);
    caretPlaced_ = true;
    if (alive())
        showCaretAt(index);
    return LB_OKAY;
}

void ListBox::selectionStyleChanged() {
    const int first = items_.nextSelected(0);
    if (singleChoice()) {
        selectOnly(first, first);
        current_ = first;
    } else {
        current_ = -1;
    }
}

void ListBox::hideCaret() {
    if (!showsFocus() || caretHidden_)
        return;
    caretHidden_ = true;
    drawNow(caret_, ODA_FOCUS);
}

void ListBox::showCaretAt(int index) {
    caret_ = std::clamp(index, 0, std::max(count() - 1, 0));
    caretHidden_ = false;
    if (showsFocus())
        drawNow(caret_, ODA_FOCUS);
}

} // namespace vndk::win32
