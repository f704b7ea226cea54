// Editing of labels in the list view.
#include "controls/list_view.h"

#include "win32/draw.h"
#include "win32/edit.h"
#include "win32/input.h"

#include <utility>
#include <vector>

namespace vndk::win32 {

LRESULT ListView::onEditLabel(int index) {
    endLabelEdit(index >= 0);
    if (!alive() || !isItem(index) || !hasStyle(LVS_EDITLABELS) || !focused())
        return 0;
    selectOnly(index);
    if (!alive() || !isItem(index))
        return 0;
    std::string text = textOf(index, 0);
    const ItemRects rects = itemRects(index);
    if (!alive() || !isItem(index))
        return 0;
    LabelEdit::Place place{rects.label, view() == LVS_ICON, clientRect().right};
    if (place.wraps) {
        const int middle = (rects.icon.left + rects.icon.right) / 2;
        place.label.left = middle - spacing().cx / 2;
        place.label.right = middle + spacing().cx / 2;
    }
    editing_ = index;
    if (labelEdit_.open(window(), text, measure_.font(), place) == nullptr) {
        editing_ = -1;
        return 0;
    }
    // The box is there but not shown: the parent may prepare it.
    NMLVDISPINFOA told{};
    told.item.mask = LVIF_TEXT | LVIF_PARAM;
    told.item.iItem = index;
    told.item.pszText = text.data();
    told.item.cchTextMax = static_cast<int>(text.size()) + 1;
    told.item.lParam = dataOf(index);
    const bool refused = notify(LVN_BEGINLABELEDIT, told) != 0;
    if (!alive() || !labelEdit_.isOpen())
        return 0;
    if (refused || !isItem(index)) {
        editing_ = -1;
        labelEdit_.close();
        return 0;
    }
    labelEdit_.show();
    if (!alive())
        return 0;
    invalidateItem(index);
    return reinterpret_cast<LRESULT>(labelEdit_.window());
}

void ListView::endLabelEdit(bool accept) {
    if (!labelEdit_.isOpen() || endingEdit_)
        return;
    endingEdit_ = true;
    const int index = editing_;
    std::string text = labelEdit_.text();
    NMLVDISPINFOA told{};
    told.item.mask = accept ? LVIF_TEXT : 0U;
    told.item.iItem = index;
    told.item.pszText = accept ? text.data() : nullptr;
    told.item.cchTextMax = accept ? static_cast<int>(text.size()) + 1 : 0;
    told.item.lParam = dataOf(index);
    const bool taken = notify(LVN_ENDLABELEDIT, told) != 0;
    if (alive() && labelEdit_.isOpen() && GetFocus() == labelEdit_.window())
        SetFocus(window());
    if (alive())
        labelEdit_.close();
    const int edited = std::exchange(editing_, -1); // it moves with the item
    endingEdit_ = false;
    if (!alive() || !isItem(edited))
        return;
    invalidateItem(edited);
    if (accept && taken)
        storeLabel(edited, text);
}

void ListView::storeLabel(int index, const std::string& text) {
    std::string label = text;
    const ListCell* cell = cellAt(index, 0);
    LVITEMA item{};
    item.mask = LVIF_TEXT;
    item.iItem = index;
    item.pszText = label.data();
    if (cell != nullptr && !cell->textCallback) {
        onSetItem(&item);
        return;
    }
    // The parent keeps the text.
    NMLVDISPINFOA told{};
    told.item = item;
    told.item.lParam = dataOf(index);
    notify(LVN_SETDISPINFO, told);
    if (alive())
        invalidateItem(index);
}

LRESULT ListView::onCommand(WPARAM wParam, LPARAM lParam) {
    return labelEdit_.takeCommand(*this, wParam, lParam) ? 0 : defaultHandling(WM_COMMAND, wParam, lParam);
}

} // namespace vndk::win32
