// Items: adding, removing, finding, texts and data.
#include "controls/list_box.h"

#include "user/window.h"
#include "win32/codepage.h"
#include "win32/input.h"

#include <algorithm>
#include <cstring>

namespace vndk::win32 {

namespace {

// Beyond these a request is taken for a mistake and answered with LB_ERRSPACE.
constexpr int storageLimit = 100'000'000;
constexpr int bareItemLimit = 1'000'000'000;
constexpr int itemHeightLimit = 0xFFFF;

std::string_view textOf(LPARAM value) {
    const auto* text = reinterpret_cast<const char*>(value);
    return text != nullptr ? std::string_view(text) : std::string_view();
}

bool beginsWith(std::string_view text, std::string_view begin) {
    return text.size() >= begin.size() && compareNoCase(text.substr(0, begin.size()), begin) == 0;
}

LRESULT notSupported(const char* name) {
    logOnce(std::string("list box: ") + name + " is not supported");
    return LB_ERR;
}

} // namespace

ListBox::Handled ListBox::handleItems(UINT message, WPARAM wParam, LPARAM lParam) {
    const int index = static_cast<int>(wParam);
    switch (message) {
    case LB_ADDSTRING:
        return addItem(lParam);
    case LB_INSERTSTRING:
        return index == -1 ? insertItem(count(), lParam) : insertItem(index, lParam);
    case LB_DELETESTRING:
        return deleteItem(index);
    case LB_RESETCONTENT:
        return resetContent();
    case LB_GETCOUNT:
        return count();
    case LB_SETCOUNT:
        return setItemCount(index);
    case LB_INITSTORAGE:
        return initStorage(index);
    case LB_DIR:
        return notSupported("LB_DIR");
    case LB_ADDFILE:
        return notSupported("LB_ADDFILE");
    default:
        return std::nullopt;
    }
}

ListBox::Handled ListBox::handleItemText(UINT message, WPARAM wParam, LPARAM lParam) {
    const int index = static_cast<int>(wParam);
    switch (message) {
    case LB_GETTEXT:
        return getText(index, reinterpret_cast<char*>(lParam));
    case LB_GETTEXTLEN:
        return getTextLength(index);
    case LB_GETITEMDATA:
        return valid(index) ? static_cast<LRESULT>(items_[index].data) : LB_ERR;
    case LB_SETITEMDATA:
        return setItemData(index, static_cast<ULONG_PTR>(lParam));
    case LB_FINDSTRING:
        return findItem(index, lParam, false);
    case LB_FINDSTRINGEXACT:
        return findItem(index, lParam, true);
    case LB_GETLOCALE:
        return static_cast<LRESULT>(locale_);
    case LB_SETLOCALE:
        return static_cast<LRESULT>(std::exchange(locale_, static_cast<DWORD>(wParam)));
    default:
        return std::nullopt;
    }
}

LRESULT ListBox::addItem(LPARAM value) {
    if (!hasBits(LBS_SORT))
        return insertItem(count(), value);
    const int place = hasStrings() ? items_.placeOf(textOf(value)) : sortedPlace(value);
    return place < 0 ? LB_ERR : insertItem(place, value);
}

int ListBox::sortedPlace(LPARAM value) {
    int first = 0;
    int last = count() - 1;
    const int before = count();
    while (first <= last) {
        const int middle = (first + last) / 2;
        const int order = compareByOwner(middle, value);
        if (!alive() || count() != before)
            return -1;
        if (order > 0)
            last = middle - 1;
        else
            first = middle + 1;
    }
    return first;
}

int ListBox::compareByOwner(int index, LPARAM value) const {
    COMPAREITEMSTRUCT compared{};
    compared.CtlType = ODT_LISTBOX;
    compared.CtlID = static_cast<UINT>(id());
    compared.hwndItem = window();
    compared.itemID1 = static_cast<UINT>(index);
    compared.itemData1 = items_[index].data;
    compared.itemID2 = static_cast<UINT>(-1);
    compared.itemData2 = static_cast<ULONG_PTR>(value);
    compared.dwLocaleId = locale_;
    return static_cast<int>(askOwner(WM_COMPAREITEM, compared.CtlID, reinterpret_cast<LPARAM>(&compared)));
}

LRESULT ListBox::insertItem(int index, LPARAM value) {
    if (index < 0 || index > count())
        return LB_ERR;
    ListBoxItem item;
    if (hasStrings())
        item.text = textOf(value);
    else
        item.data = static_cast<ULONG_PTR>(value);
    item.height = itemHeight_;
    items_.insert(index, std::move(item));
    if (current_ >= index)
        ++current_;
    if (anchor_ >= index)
        ++anchor_;
    if (caretPlaced_ && caret_ >= index && count() > 1)
        ++caret_;
    if (variable())
        measureItem(index);
    if (alive())
        layoutChanged(index);
    return index;
}

/// The owner can ask for the item's text and data meanwhile: it is in the list already.
void ListBox::measureItem(int index) {
    const int before = count();
    const int height = measuredHeight(static_cast<UINT>(index), items_[index].data);
    if (alive() && count() == before)
        items_.setHeight(index, height);
}

int ListBox::measuredHeight(UINT itemId, ULONG_PTR data) const {
    MEASUREITEMSTRUCT measured{};
    measured.CtlType = ODT_LISTBOX;
    measured.CtlID = static_cast<UINT>(id());
    measured.itemID = itemId;
    measured.itemHeight = static_cast<UINT>(lineHeight_);
    measured.itemData = data;
    askOwner(WM_MEASUREITEM, measured.CtlID, reinterpret_cast<LPARAM>(&measured));
    const bool sensible = measured.itemHeight >= 1 && measured.itemHeight <= itemHeightLimit;
    return sensible ? static_cast<int>(measured.itemHeight) : lineHeight_;
}

LRESULT ListBox::deleteItem(int index) {
    if (!valid(index) || deleting_)
        return LB_ERR;
    if (count() == 1) {
        SendMessageA(window(), LB_RESETCONTENT, 0, 0);
        return 0;
    }
    deleting_ = true;
    notifyDeleted(index);
    deleting_ = false;
    if (!alive() || !valid(index))
        return LB_ERR;
    items_.erase(index);
    const auto moveUp = [index](int& place) { place -= place > index ? 1 : 0; };
    current_ = current_ == index ? -1 : current_;
    moveUp(current_);
    moveUp(anchor_);
    moveUp(caret_);
    anchor_ = std::min(anchor_, count() - 1);
    caret_ = std::clamp(caret_, 0, std::max(count() - 1, 0));
    top_ = std::min(top_, count() - 1);
    const int left = count();
    layoutChanged(index);
    return left;
}

void ListBox::notifyDeleted(int index) const {
    if (!ownerDrawn() || hasBits(LBS_NODATA))
        return;
    DELETEITEMSTRUCT deleted{};
    deleted.CtlType = ODT_LISTBOX;
    deleted.CtlID = static_cast<UINT>(id());
    deleted.itemID = static_cast<UINT>(index);
    deleted.hwndItem = window();
    deleted.itemData = items_[index].data;
    askOwner(WM_DELETEITEM, deleted.CtlID, reinterpret_cast<LPARAM>(&deleted));
}

void ListBox::forgetItems() {
    if (deleting_)
        return;
    // What was pressed is gone: the button that goes up later must not choose among items that come now.
    const bool hadMouse = tracking() && GetCapture() == window();
    stopTracking();
    if (hadMouse)
        ReleaseCapture();
    deleting_ = true;
    if (ownerDrawn() && !hasBits(LBS_NODATA))
        for (int index = count() - 1; index >= 0 && alive(); --index)
            if (valid(index))
                notifyDeleted(index);
    deleting_ = false;
    items_.clear();
    top_ = 0;
    caret_ = 0;
    anchor_ = -1;
    current_ = -1;
    caretPlaced_ = false;
}

LRESULT ListBox::resetContent() {
    if (deleting_)
        return LB_ERR;
    forgetItems();
    if (alive())
        layoutChanged(0);
    return LB_OKAY;
}

LRESULT ListBox::setItemCount(int newCount) {
    if (!hasBits(LBS_NODATA) || newCount < 0)
        return LB_ERR;
    if (newCount > bareItemLimit)
        return LB_ERRSPACE;
    forgetItems();
    items_.setBareCount(newCount);
    layoutChanged(0);
    return LB_OKAY;
}

LRESULT ListBox::initStorage(int more) {
    if (more < 0 || more > storageLimit - storage_)
        return LB_ERRSPACE;
    storage_ += more;
    return storage_;
}

LRESULT ListBox::getText(int index, char* buffer) const {
    if (!valid(index) || buffer == nullptr)
        return LB_ERR;
    const ListBoxItem& item = items_[index];
    if (!hasStrings()) {
        std::memcpy(buffer, &item.data, sizeof(item.data));
        return sizeof(item.data);
    }
    std::memcpy(buffer, item.text.c_str(), item.text.size() + 1);
    return static_cast<LRESULT>(item.text.size());
}

LRESULT ListBox::getTextLength(int index) const {
    if (!valid(index))
        return LB_ERR;
    return static_cast<LRESULT>(hasStrings() ? items_[index].text.size() : sizeof(ULONG_PTR));
}

LRESULT ListBox::setItemData(int index, ULONG_PTR data) {
    if (index == -1)
        for (int i = 0; i < count(); ++i)
            items_.setData(i, data);
    else if (valid(index))
        items_.setData(index, data);
    else
        return LB_ERR;
    return TRUE;
}

LRESULT ListBox::findItem(int after, LPARAM sought, bool exact) {
    if (hasStrings() && textOf(sought).empty())
        return LB_ERR;
    const int before = count();
    const int first = after >= 0 && after < before - 1 ? after + 1 : 0;
    for (int tried = 0; tried < before; ++tried) {
        const int index = first + tried < before ? first + tried : first + tried - before;
        const bool found = matches(index, sought, exact);
        if (!alive() || count() != before)
            return LB_ERR;
        if (found)
            return index;
    }
    return LB_ERR;
}

bool ListBox::matches(int index, LPARAM sought, bool exact) {
    if (hasStrings()) {
        const std::string& text = items_[index].text;
        return exact ? compareNoCase(text, textOf(sought)) == 0 : beginsWith(text, textOf(sought));
    }
    if (hasBits(LBS_SORT))
        return compareByOwner(index, sought) == 0;
    return items_[index].data == static_cast<ULONG_PTR>(sought);
}

} // namespace vndk::win32
