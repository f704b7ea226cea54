#include "controls/combo_box.h"

#include "controls/combo_list.h"
#include "controls/paint_session.h"
#include "user/window.h"
#include "win32/edit.h"
#include "win32/error.h"
#include "win32/fonts.h"
#include "win32/input.h"
#include "win32/listbox.h"
#include "win32/metrics.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr int editId = 1001;
constexpr int listId = 1000;
constexpr int edgeWidth = 2;
constexpr int fieldInset = 3; // edge and one pixel of ground
constexpr int heightLimit = 0xFFFF;

HMENU menuOf(int id) { return reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)); }

struct StyleBits {
    DWORD combo;
    DWORD child;
};

DWORD translated(DWORD style, std::initializer_list<StyleBits> table) {
    DWORD bits = 0;
    for (const StyleBits& each : table)
        if ((style & each.combo) != 0)
            bits |= each.child;
    return bits;
}

} // namespace

void registerComboBox() {
    registerControl<ComboBox>({.name = "ComboBox", .style = CS_DBLCLKS | CS_VREDRAW | CS_HREDRAW});
    registerControl<ComboList>({.name = "ComboLBox", .style = CS_DBLCLKS | CS_SAVEBITS});
}

LRESULT ComboBox::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    using Family = Handled (ComboBox::*)(UINT, WPARAM, LPARAM);
    static constexpr Family own[] = {&ComboBox::handleItems, &ComboBox::handleSelection, &ComboBox::handleDropping};
    static constexpr Family general[] = {&ComboBox::handleText,  &ComboBox::handleChildren, &ComboBox::handlePainting,
                                         &ComboBox::handleMouse, &ComboBox::handleKeys,     &ComboBox::handleWindow};
    const auto tryAll = [&](const auto& families) -> Handled {
        for (const Family family : families)
            if (const Handled handled = (this->*family)(message, wParam, lParam))
                return handled;
        return std::nullopt;
    };
    const bool ownMessage = message >= CB_GETEDITSEL && message <= CB_GETCOMBOBOXINFO;
    if (const Handled handled = ownMessage ? tryAll(own) : tryAll(general))
        return *handled;
    return defaultHandling(message, wParam, lParam);
}

ComboBox::Handled ComboBox::handleWindow(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_NCCREATE:
        // Scroll bars and borders are meant for the list and the field, not for the frame around both.
        style_ = style();
        SetWindowLongA(window(), GWL_STYLE, static_cast<LONG>(style_ & ~(WS_BORDER | WS_HSCROLL | WS_VSCROLL)));
        SetWindowLongA(window(), GWL_EXSTYLE,
                       GetWindowLongA(window(), GWL_EXSTYLE) & ~static_cast<LONG>(WS_EX_CLIENTEDGE));
        return std::nullopt;
    case WM_CREATE:
        return create(reinterpret_cast<const CREATESTRUCTA*>(lParam));
    case WM_DESTROY:
        destroyed();
        return 0;
    case WM_SETFONT:
        setFont(reinterpret_cast<HFONT>(wParam), LOWORD(static_cast<DWORD_PTR>(lParam)) != 0);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(font_);
    case WM_WINDOWPOSCHANGING:
        positionChanging(reinterpret_cast<WINDOWPOS*>(lParam));
        return std::nullopt;
    case WM_SIZE:
        layOut();
        return 0;
    case WM_ENABLE:
        enableChildren(wParam != 0);
        return 0;
    case WM_SHOWWINDOW:
        if (wParam == 0 && dropped_)
            close(Close::leave);
        return std::nullopt;
    case WM_SETREDRAW:
        return setRedraw(wParam != 0);
    case WM_SYSCOLORCHANGE:
        invalidate();
        return 0;
    default:
        return std::nullopt;
    }
}

// ---- Creation ------------------------------------------------------------------------------------------------------

LRESULT ComboBox::create(const CREATESTRUCTA* data) {
    if (kind() == 0)
        style_ |= CBS_SIMPLE;
    measureFont();
    fieldHeight_ = lineHeight_ + 2;
    if (ownerDrawn())
        measureField();
    if (!alive())
        return -1;
    listHeight_ = (data != nullptr ? data->cy : 0) - comboHeight();
    if (hasEdit())
        createEdit();
    if (alive())
        createList();
    if (!alive() || list_ == nullptr || (hasEdit() && edit_ == nullptr))
        return -1;
    takeFieldHeight();
    return alive() ? 0 : -1;
}

void ComboBox::createEdit() {
    const DWORD bits = WS_CHILD | WS_VISIBLE | ES_NOHIDESEL | (style_ & WS_DISABLED) |
                       translated(style_, {{CBS_AUTOHSCROLL, ES_AUTOHSCROLL},
                                           {CBS_UPPERCASE, ES_UPPERCASE},
                                           {CBS_LOWERCASE, ES_LOWERCASE},
                                           {CBS_OEMCONVERT, ES_OEMCONVERT}});
    const RECT field = fieldRect();
    edit_ =
        CreateWindowExA(WS_EX_NOPARENTNOTIFY, "Edit", nullptr, bits, field.left, field.top, field.right - field.left,
                        field.bottom - field.top, window(), menuOf(editId), nullptr, nullptr);
    if (edit_ != nullptr)
        formerEditProcedure_ = reinterpret_cast<WNDPROC>(
            SetWindowLongPtrA(edit_, GWL_WNDPROC, reinterpret_cast<LONG_PTR>(&ComboBox::editProcedure)));
}

void ComboBox::createList() {
    DWORD bits = WS_CHILD | WS_CLIPSIBLINGS | LBS_COMBOBOX | LBS_NOTIFY |
                 (style_ & (WS_VSCROLL | WS_HSCROLL | WS_DISABLED)) |
                 translated(style_, {{CBS_SORT, LBS_SORT},
                                     {CBS_OWNERDRAWFIXED, LBS_OWNERDRAWFIXED},
                                     {CBS_OWNERDRAWVARIABLE, LBS_OWNERDRAWVARIABLE},
                                     {CBS_NOINTEGRALHEIGHT, LBS_NOINTEGRALHEIGHT},
                                     {CBS_DISABLENOSCROLL, LBS_DISABLENOSCROLL}});
    bits |= hasStrings() ? LBS_HASSTRINGS : 0;
    bits |= dropsDown() ? WS_BORDER : WS_VISIBLE;
    const DWORD exBits = dropsDown() ? WS_EX_TOOLWINDOW : WS_EX_CLIENTEDGE | WS_EX_NOPARENTNOTIFY;
    const HWND parent = dropsDown() ? GetDesktopWindow() : window();
    list_ = CreateWindowExA(exBits, "ComboLBox", nullptr, bits, 0, 0, 0, 0, parent, menuOf(listId), nullptr, window());
}

void ComboBox::destroyed() {
    dropped_ = false;
    if (GetCapture() == window())
        ReleaseCapture();
    if (list_ != nullptr)
        DestroyWindow(list_);
    list_ = nullptr;
}

// ---- Sizes ---------------------------------------------------------------------------------------------------------

void ComboBox::measureFont() {
    const HDC dc = CreateCompatibleDC(nullptr);
    if (dc == nullptr)
        return;
    {
        const SelectedObject font(dc, usedFont());
        TEXTMETRICA metrics{};
        if (GetTextMetricsA(dc, &metrics) != FALSE && metrics.tmHeight > 0)
            lineHeight_ = metrics.tmHeight;
    }
    DeleteDC(dc);
}

void ComboBox::measureField() {
    MEASUREITEMSTRUCT measured{};
    measured.itemID = static_cast<UINT>(-1);
    measured.itemHeight = static_cast<UINT>(fieldHeight_);
    passToOwner(WM_MEASUREITEM, reinterpret_cast<LPARAM>(&measured));
    if (measured.itemHeight >= 1 && measured.itemHeight <= heightLimit)
        fieldHeight_ = static_cast<int>(measured.itemHeight);
}

int ComboBox::comboHeight() const { return fieldHeight_ + 2 * fieldInset; }

void ComboBox::setFont(HFONT font, bool repaint) {
    font_ = font;
    measureFont();
    if (edit_ != nullptr)
        SendMessageA(edit_, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    askList(WM_SETFONT, reinterpret_cast<WPARAM>(font), repaint ? TRUE : FALSE);
    if (!ownerDrawn() && alive()) {
        fieldHeight_ = lineHeight_ + 2;
        takeFieldHeight();
    }
    if (repaint && redraw_ && alive())
        invalidate();
}

LRESULT ComboBox::setFieldHeight(int height) {
    if (height < 1 || height > heightLimit)
        return CB_ERR;
    fieldHeight_ = height;
    takeFieldHeight();
    return CB_OKAY;
}

/// The window follows the height of its field.
void ComboBox::takeFieldHeight() {
    RECT rect{};
    GetWindowRect(window(), &rect);
    const int height = rect.bottom - rect.top;
    const int wanted = dropsDown() ? comboHeight() : simpleHeight(height);
    if (height != wanted)
        SetWindowPos(window(), nullptr, 0, 0, rect.right - rect.left, wanted,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    if (alive())
        layOut();
}

/// Whatever height is asked for belongs to the list that drops down; the window has the height of its field. A list
/// that stands below takes whole items.
void ComboBox::positionChanging(WINDOWPOS* position) {
    if (position == nullptr || list_ == nullptr || (position->flags & SWP_NOSIZE) != 0)
        return;
    if (!dropsDown()) {
        position->cy = simpleHeight(position->cy);
        return;
    }
    if (position->cy > comboHeight())
        listHeight_ = position->cy - comboHeight();
    position->cy = comboHeight();
}

int ComboBox::simpleHeight(int asked) const {
    const auto item = static_cast<int>(askList(LB_GETITEMHEIGHT));
    const int frame = comboHeight() + 2 * GetSystemMetrics(SM_CYEDGE);
    const bool whole = (style_ & (CBS_NOINTEGRALHEIGHT | CBS_OWNERDRAWVARIABLE)) == 0;
    return whole && item > 0 && asked - frame > item ? asked - (asked - frame) % item : asked;
}

RECT ComboBox::buttonRect() const {
    if (!dropsDown())
        return {};
    const RECT client = clientRect();
    const int width = GetSystemMetrics(SM_CXVSCROLL);
    const int left = std::max<int>(client.right - edgeWidth - width, edgeWidth);
    return {left, edgeWidth, std::max<int>(client.right - edgeWidth, left), comboHeight() - edgeWidth};
}

RECT ComboBox::fieldRect() const {
    const int end = dropsDown() ? buttonRect().left - 1 : clientRect().right - fieldInset;
    return {fieldInset, fieldInset, std::max(end, fieldInset), fieldInset + fieldHeight_};
}

void ComboBox::layOut() {
    constexpr UINT flags = SWP_NOZORDER | SWP_NOACTIVATE;
    const RECT field = fieldRect();
    if (edit_ != nullptr)
        SetWindowPos(edit_, nullptr, field.left, field.top, field.right - field.left, field.bottom - field.top, flags);
    if (!alive() || list_ == nullptr)
        return;
    if (dropped_) {
        placeList();
    } else if (dropsDown()) {
        // Paging keys go by its height also while it is closed.
        SetWindowPos(list_, nullptr, 0, 0, droppedWidth(), std::max(listHeight_, 0), flags | SWP_NOMOVE);
    } else {
        const RECT client = clientRect();
        SetWindowPos(list_, nullptr, 0, comboHeight(), client.right, std::max<int>(client.bottom - comboHeight(), 0),
                     flags);
    }
    if (redraw_ && alive())
        invalidate();
}

// ---- State ---------------------------------------------------------------------------------------------------------

void ComboBox::enableChildren(bool enable) {
    if (!enable && dropped_)
        close(Close::leave);
    for (const HWND child : {edit_, list_})
        if (alive() && child != nullptr)
            EnableWindow(child, enable ? TRUE : FALSE);
    if (alive())
        invalidate();
}

LRESULT ComboBox::setRedraw(bool on) {
    redraw_ = on;
    askList(WM_SETREDRAW, on ? TRUE : FALSE);
    if (edit_ != nullptr && alive())
        SendMessageA(edit_, WM_SETREDRAW, on ? TRUE : FALSE, 0);
    if (on && alive())
        RedrawWindow(window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    return 0;
}

LRESULT ComboBox::fillInfo(COMBOBOXINFO* info) const {
    if (info == nullptr || info->cbSize != sizeof(COMBOBOXINFO)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    info->rcItem = fieldRect();
    info->rcButton = buttonRect();
    info->stateButton = !dropsDown() ? STATE_SYSTEM_INVISIBLE : buttonDown_ ? STATE_SYSTEM_PRESSED : 0;
    info->hwndCombo = window();
    info->hwndItem = hasEdit() ? edit_ : window();
    info->hwndList = list_;
    return TRUE;
}

} // namespace vndk::win32

BOOL GetComboBoxInfo(HWND combo, COMBOBOXINFO* info) {
    if (IsWindow(combo) == FALSE) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    if (vndk::win32::controlOf<vndk::win32::ComboBox>(combo) == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    return SendMessageA(combo, CB_GETCOMBOBOXINFO, 0, reinterpret_cast<LPARAM>(info)) != 0 ? TRUE : FALSE;
}
