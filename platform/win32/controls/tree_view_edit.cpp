// Editing of labels in the tree view.
#include "controls/tree_view.h"

#include "win32/edit.h"
#include "win32/input.h"

#include <utility>

namespace vndk::win32 {

LRESULT TreeView::onEditLabel(HTREEITEM handle) {
    endLabelEdit(true);
    if (!alive() || !hasStyle(TVS_EDITLABELS) || items_.find(handle) == nullptr)
        return 0;
    openParents(items_.find(handle));
    TreeItem* item = alive() ? items_.find(handle) : nullptr;
    if (item == nullptr || !TreeItems::isRow(item))
        return 0;
    scrollIntoView(*item, true);
    std::string text = alive() ? textOf(handle) : std::string();
    item = alive() ? items_.find(handle) : nullptr;
    if (item == nullptr || !TreeItems::isRow(item))
        return 0;
    const Parts parts = partsOf(*item);
    const LabelEdit::Place place{
        {parts.label, parts.row.top, parts.labelEnd, parts.row.bottom}, false, static_cast<int>(clientRect().right)};
    editing_ = handle;
    if (labelEdit_.open(window(), text, measureFor(*item).font(), place) == nullptr) {
        editing_ = nullptr;
        return 0;
    }
    // The box is there but not shown: the parent may prepare it.
    NMTVDISPINFOA told{};
    describe(told.item, item);
    told.item.mask |= TVIF_TEXT;
    told.item.pszText = text.data();
    told.item.cchTextMax = static_cast<int>(text.size()) + 1;
    const bool refused = notify(TVN_BEGINLABELEDIT, told) != 0;
    if (!alive() || !labelEdit_.isOpen())
        return 0;
    if (refused || items_.find(handle) == nullptr) {
        editing_ = nullptr;
        labelEdit_.close();
        return 0;
    }
    labelEdit_.show();
    if (!alive())
        return 0;
    invalidateItem(items_.find(handle));
    return reinterpret_cast<LRESULT>(labelEdit_.window());
}

void TreeView::endLabelEdit(bool accept) {
    if (!labelEdit_.isOpen() || endingEdit_)
        return;
    endingEdit_ = true;
    const HTREEITEM handle = editing_;
    std::string text = labelEdit_.text();
    NMTVDISPINFOA told{};
    describe(told.item, items_.find(handle));
    if (accept) {
        told.item.mask |= TVIF_TEXT;
        told.item.pszText = text.data();
        told.item.cchTextMax = static_cast<int>(text.size()) + 1;
    }
    const bool taken = notify(TVN_ENDLABELEDIT, told) != 0;
    if (alive() && labelEdit_.isOpen() && GetFocus() == labelEdit_.window())
        SetFocus(window());
    if (alive())
        labelEdit_.close();
    editing_ = nullptr;
    endingEdit_ = false;
    if (!alive() || items_.find(handle) == nullptr)
        return;
    invalidateItem(items_.find(handle));
    if (accept && taken)
        storeLabel(handle, text);
}

void TreeView::storeLabel(HTREEITEM handle, const std::string& text) {
    std::string label = text;
    const TreeItem* item = items_.find(handle);
    TVITEMA stored{};
    stored.mask = TVIF_TEXT | TVIF_HANDLE;
    stored.hItem = handle;
    stored.pszText = label.data();
    if (!item->textCallback) {
        onSetItem(&stored);
        return;
    }
    // The parent keeps the text.
    NMTVDISPINFOA told{};
    describe(told.item, item);
    told.item.mask = TVIF_TEXT;
    told.item.pszText = label.data();
    told.item.cchTextMax = static_cast<int>(label.size()) + 1;
    notify(TVN_SETDISPINFO, told);
    if (alive())
        invalidateItem(items_.find(handle));
}

LRESULT TreeView::onCommand(WPARAM wParam, LPARAM lParam) {
    return labelEdit_.takeCommand(*this, wParam, lParam) ? 0 : defaultHandling(WM_COMMAND, wParam, lParam);
}

} // namespace vndk::win32
