// Items, selection, and the text of the field.
#include "controls/combo_box.h"

#include "controls/combo_list.h"
#include "user/window.h"
#include "win32/codepage.h"
#include "win32/edit.h"
#include "win32/input.h"
#include "win32/listbox.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <utility>

namespace vndk::win32 {

namespace {

struct SameInList {
    UINT combo;
    UINT list;
};

// What the list answers as it stands.
constexpr SameInList sameInList[] = {
    {CB_GETCOUNT, LB_GETCOUNT},
    {CB_GETCURSEL, LB_GETCURSEL},
    {CB_GETLBTEXT, LB_GETTEXT},
    {CB_GETLBTEXTLEN, LB_GETTEXTLEN},
    {CB_FINDSTRING, LB_FINDSTRING},
    {CB_FINDSTRINGEXACT, LB_FINDSTRINGEXACT},
    {CB_GETITEMDATA, LB_GETITEMDATA},
    {CB_SETITEMDATA, LB_SETITEMDATA},
    {CB_GETTOPINDEX, LB_GETTOPINDEX},
    {CB_SETTOPINDEX, LB_SETTOPINDEX},
    {CB_GETHORIZONTALEXTENT, LB_GETHORIZONTALEXTENT},
    {CB_SETHORIZONTALEXTENT, LB_SETHORIZONTALEXTENT},
    {CB_SETLOCALE, LB_SETLOCALE},
    {CB_GETLOCALE, LB_GETLOCALE},
    {CB_INITSTORAGE, LB_INITSTORAGE},
};

/// The text of an edit control is set by program while this lives, so that the parent isn't told of it.
class QuietChange {
public:
    explicit QuietChange(bool& flag) : flag_(flag), former_(std::exchange(flag, true)) {}
    ~QuietChange() { flag_ = former_; }
    QuietChange(const QuietChange&) = delete;
    QuietChange& operator=(const QuietChange&) = delete;

private:
    bool& flag_;
    bool former_;
};

} // namespace

ComboBox::Handled ComboBox::handleItems(UINT message, WPARAM wParam, LPARAM lParam) {
    for (const SameInList& same : sameInList)
        if (same.combo == message)
            return askList(same.list, wParam, lParam);
    switch (message) {
    case CB_ADDSTRING:
        return addItem(LB_ADDSTRING, wParam, lParam);
    case CB_INSERTSTRING:
        return addItem(LB_INSERTSTRING, wParam, lParam);
    case CB_DELETESTRING:
        return deleteItem(wParam);
    case CB_RESETCONTENT:
        return resetContent();
    case CB_GETITEMHEIGHT:
        return static_cast<int>(wParam) == -1 ? fieldHeight_ : askList(LB_GETITEMHEIGHT, wParam);
    case CB_SETITEMHEIGHT:
        return static_cast<int>(wParam) == -1 ? setFieldHeight(static_cast<int>(lParam))
                                              : askList(LB_SETITEMHEIGHT, wParam, lParam);
    case CB_DIR:
        logOnce("combo box: CB_DIR is not supported");
        return CB_ERR;
    default:
        return std::nullopt;
    }
}

ComboBox::Handled ComboBox::handleSelection(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case CB_SETCURSEL:
        return setCurrent(static_cast<int>(wParam));
    case CB_SELECTSTRING: {
        const LRESULT found = askList(LB_FINDSTRING, wParam, lParam);
        return found >= 0 && alive() ? setCurrent(static_cast<int>(found)) : CB_ERR;
    }
    case CB_GETEDITSEL:
        return hasEdit() ? SendMessageA(edit_, EM_GETSEL, wParam, lParam) : CB_ERR;
    case CB_SETEDITSEL:
        return setEditSelection(lParam);
    case CB_LIMITTEXT:
        if (hasEdit())
            SendMessageA(edit_, EM_LIMITTEXT, wParam, 0);
        return TRUE;
    default:
        return std::nullopt;
    }
}

LRESULT ComboBox::askList(UINT message, WPARAM wParam, LPARAM lParam) const {
    return list_ != nullptr ? SendMessageA(list_, message, wParam, lParam) : CB_ERR;
}

int ComboBox::current() const { return static_cast<int>(askList(LB_GETCURSEL)); }

std::string ComboBox::itemText(int index) const {
    const LRESULT length = hasStrings() ? askList(LB_GETTEXTLEN, static_cast<WPARAM>(index)) : CB_ERR;
    if (index < 0 || length <= 0)
        return {};
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    const LRESULT copied = askList(LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
    text.resize(copied == length ? static_cast<std::size_t>(length) : 0);
    return text;
}

LRESULT ComboBox::addItem(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT added = CB_ERR;
    if (hasStrings() && lParam != 0 && (style_ & (CBS_UPPERCASE | CBS_LOWERCASE)) != 0) {
        std::string text = reinterpret_cast<const char*>(lParam);
        for (char& each : text)
            each = (style_ & CBS_UPPERCASE) != 0 ? upper1252(each) : lower1252(each);
        added = askList(message, wParam, reinterpret_cast<LPARAM>(text.c_str()));
    } else {
        added = askList(message, wParam, lParam);
    }
    announced_ += added >= 0 && announced_ >= added ? 1 : 0;
    beforeDrop_ += added >= 0 && beforeDrop_ >= added ? 1 : 0;
    return added;
}

LRESULT ComboBox::deleteItem(WPARAM wParam) {
    const int index = static_cast<int>(wParam);
    const LRESULT left = askList(LB_DELETESTRING, wParam);
    if (left < 0 || !alive())
        return left;
    for (int* place : {&announced_, &beforeDrop_})
        *place = *place == index ? -1 : *place > index ? *place - 1 : *place;
    fieldChanged();
    return left;
}

LRESULT ComboBox::resetContent() {
    askList(LB_RESETCONTENT);
    announced_ = beforeDrop_ = -1;
    if (alive())
        showInEdit(-1);
    if (alive())
        fieldChanged();
    return CB_OKAY;
}

LRESULT ComboBox::setCurrent(int index) {
    const LRESULT count = askList(LB_GETCOUNT);
    if (index < 0 || index >= count)
        index = -1;
    askList(LB_SETCURSEL, static_cast<WPARAM>(index));
    if (!alive())
        return CB_ERR;
    announced_ = beforeDrop_ = index;
    showInEdit(index);
    if (alive())
        fieldChanged();
    return index == -1 ? CB_ERR : index;
}

/// A field without an edit control shows the selected item.
void ComboBox::fieldChanged() const {
    if (hasEdit() || !redraw_)
        return;
    const RECT field = fieldRect();
    invalidate(&field);
}

void ComboBox::showInEdit(int index) {
    if (edit_ == nullptr)
        return;
    const std::string text = itemText(index);
    const QuietChange quiet(settingEdit_);
    SendMessageA(edit_, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    if (alive() && focused_)
        SendMessageA(edit_, EM_SETSEL, 0, INT_MAX);
}

std::string ComboBox::editText() const {
    const LRESULT length = std::max<LRESULT>(SendMessageA(edit_, WM_GETTEXTLENGTH, 0, 0), 0);
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    SendMessageA(edit_, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(text.find('\0'));
    return text;
}

/// Finds the item that begins with what is in the edit control, and scrolls to it.
void ComboBox::matchListToEdit(bool select) {
    if (edit_ == nullptr || !hasStrings())
        return;
    const std::string text = editText();
    const LRESULT found = askList(LB_FINDSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text.c_str()));
    askList(LB_SETCURSEL, static_cast<WPARAM>(select ? found : -1));
    if (found >= 0 && alive()) {
        askList(LB_SETTOPINDEX, static_cast<WPARAM>(found));
        askList(LB_SETCARETINDEX, static_cast<WPARAM>(found), 0);
    }
}

// ---- Text ----------------------------------------------------------------------------------------------------------

ComboBox::Handled ComboBox::handleText(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SETTEXT:
        return setText(lParam);
    case WM_GETTEXT:
        return hasEdit()
                   ? SendMessageA(edit_, message, wParam, lParam)
                   : getText(static_cast<int>(std::min<WPARAM>(wParam, INT_MAX)), reinterpret_cast<char*>(lParam));
    case WM_GETTEXTLENGTH:
        return hasEdit() ? SendMessageA(edit_, message, wParam, lParam)
                         : static_cast<LRESULT>(itemText(current()).size());
    case WM_CUT:
    case WM_COPY:
    case WM_PASTE:
    case WM_CLEAR:
    case WM_UNDO:
        return hasEdit() ? SendMessageA(edit_, message, wParam, lParam) : CB_ERR;
    default:
        return std::nullopt;
    }
}

LRESULT ComboBox::setText(LPARAM lParam) {
    // Before its children stand it has no text; later a field without edit control takes none.
    if (edit_ == nullptr)
        return CB_ERR;
    const QuietChange quiet(settingEdit_);
    return SendMessageA(edit_, WM_SETTEXT, 0, lParam);
}

LRESULT ComboBox::getText(int size, char* buffer) const {
    if (buffer == nullptr || size <= 0)
        return 0;
    const std::string text = itemText(current());
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
    return static_cast<LRESULT>(length);
}

LRESULT ComboBox::setEditSelection(LPARAM lParam) {
    if (!hasEdit())
        return CB_ERR;
    const auto first = static_cast<SHORT>(LOWORD(static_cast<DWORD_PTR>(lParam)));
    const auto last = static_cast<SHORT>(HIWORD(static_cast<DWORD_PTR>(lParam)));
    SendMessageA(edit_, EM_SETSEL, static_cast<WPARAM>(static_cast<LPARAM>(first)), last);
    return TRUE;
}

// ---- What edit control and list tell -------------------------------------------------------------------------------

ComboBox::Handled ComboBox::handleChildren(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_COMMAND: {
        const auto sender = reinterpret_cast<HWND>(lParam);
        if (sender != nullptr && sender == edit_)
            return editNotified(HIWORD(wParam));
        if (sender != nullptr && sender == list_)
            return listNotified(HIWORD(wParam));
        return std::nullopt;
    }
    case WM_MEASUREITEM:
    case WM_DRAWITEM:
    case WM_COMPAREITEM:
    case WM_DELETEITEM:
        return lParam != 0 ? passToOwner(message, lParam) : 0;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORLISTBOX: {
        const HWND parent = GetParent(window());
        return parent != nullptr ? SendMessageA(parent, message, wParam, lParam) : 0;
    }
    default:
        return std::nullopt;
    }
}

/// Questions of owner drawing go to our own parent, in our name.
LRESULT ComboBox::passToOwner(UINT message, LPARAM lParam) const {
    const HWND parent = GetParent(window());
    if (parent == nullptr)
        return 0;
    const auto rename = [this](auto& item) {
        item.CtlType = ODT_COMBOBOX;
        item.CtlID = static_cast<UINT>(id());
    };
    const auto sign = [&](auto& item) {
        rename(item);
        item.hwndItem = window();
    };
    switch (message) {
    case WM_MEASUREITEM:
        rename(*reinterpret_cast<MEASUREITEMSTRUCT*>(lParam));
        break;
    case WM_DRAWITEM:
        sign(*reinterpret_cast<DRAWITEMSTRUCT*>(lParam));
        break;
    case WM_COMPAREITEM:
        sign(*reinterpret_cast<COMPAREITEMSTRUCT*>(lParam));
        break;
    default:
        sign(*reinterpret_cast<DELETEITEMSTRUCT*>(lParam));
        break;
    }
    return SendMessageA(parent, message, static_cast<UINT>(id()), lParam);
}

ComboBox::Handled ComboBox::editNotified(WORD code) {
    switch (code) {
    case EN_UPDATE:
        if (settingEdit_)
            return 0;
        // What is typed is no item, until the user chooses one.
        announced_ = beforeDrop_ = -1;
        matchListToEdit(dropped_);
        if (alive())
            notifyCommand(CBN_EDITUPDATE);
        return 0;
    case EN_CHANGE:
        if (!settingEdit_)
            notifyCommand(CBN_EDITCHANGE);
        return 0;
    case EN_ERRSPACE:
        notifyCommand(CBN_ERRSPACE);
        return 0;
    default:
        return 0;
    }
}

ComboBox::Handled ComboBox::listNotified(WORD code) {
    if (code == LBN_SELCHANGE)
        selectionMade();
    else if (code == LBN_DBLCLK)
        notifyCommand(CBN_DBLCLK);
    else if (code == LBN_ERRSPACE)
        notifyCommand(CBN_ERRSPACE);
    return 0;
}

/// The user chose an item. Arrow keys leave an open list open.
void ComboBox::selectionMade() {
    if (!(dropped_ && keyGoesToList_))
        finish(Close::choose);
    if (alive())
        announceSelection();
}

void ComboBox::announceSelection() {
    announced_ = current();
    fieldChanged();
    notifyCommand(CBN_SELCHANGE);
    // The handler may have chosen otherwise.
    if (alive() && current() >= 0)
        showInEdit(current());
}

} // namespace vndk::win32
