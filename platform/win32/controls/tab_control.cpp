#include "controls/tab_control.h"

#include "user/window.h"
#include "win32/draw.h"
#include "win32/input.h"
#include "win32/paint.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace vndk::win32 {

// ---- Items ---------------------------------------------------------------------------------------------------------

/// The tabs look different. A page that lies behind the control isn't painted over as long as their strip keeps its
/// height.
void TabControl::changed() {
    if (!redraw_)
        return;
    if (buttons() || std::exchange(shownStrip_, stripHeight()) != stripHeight()) {
        invalidate(nullptr, false);
        return;
    }
    const RECT strip = stripRect();
    invalidate(&strip, false);
}

void TabControl::changedAll() {
    shownStrip_ = -1;
    changed();
}

void TabControl::onCreate() {
    // Pages stand in front of their tabs.
    SetWindowLongA(window(), GWL_STYLE, GetWindowLongA(window(), GWL_STYLE) | static_cast<LONG>(WS_CLIPSIBLINGS));
    if (hasStyle(TCS_VERTICAL))
        logOnce("tab control: TCS_VERTICAL isn't done; the tabs stand at the top");
    layout();
}

/// Only tabs and arrows take the mouse: what lies behind the rest, a page for one, gets it there.
LRESULT TabControl::onNcHitTest(LPARAM lParam) {
    const LRESULT part = defaultHandling(WM_NCHITTEST, 0, lParam);
    if (part != HTCLIENT || buttons())
        return part;
    POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    ScreenToClient(window(), &point);
    UINT flags = 0;
    return hitTest(point, flags) >= 0 || onArrow(point) ? HTCLIENT : HTTRANSPARENT;
}

void TabControl::take(Item& item, const TCITEM& from) const {
    if ((from.mask & TCIF_TEXT) != 0)
        item.text = from.pszText != nullptr && from.pszText != LPSTR_TEXTCALLBACK ? from.pszText : "";
    if ((from.mask & TCIF_IMAGE) != 0)
        item.image = from.iImage;
    if ((from.mask & TCIF_PARAM) != 0)
        item.parameter = from.lParam;
    if ((from.mask & TCIF_STATE) != 0)
        item.state = (item.state & ~from.dwStateMask) | (from.dwState & from.dwStateMask);
}

int TabControl::insertItem(WPARAM index, const TCITEM* from) {
    if (from == nullptr || static_cast<LPARAM>(index) < 0)
        return -1;
    const auto place = static_cast<int>(std::min<WPARAM>(index, items_.size()));
    Item item;
    take(item, *from);
    items_.insert(items_.begin() + place, std::move(item));
    if (count() == 1) {
        selected_ = 0;
        focus_ = 0;
    } else {
        if (place <= selected_)
            ++selected_;
        if (place <= focus_)
            ++focus_;
    }
    layout();
    changed();
    return place;
}

bool TabControl::deleteItem(WPARAM index) {
    if (!valid(static_cast<LPARAM>(index)))
        return false;
    const auto gone = static_cast<int>(index);
    items_.erase(items_.begin() + gone);
    if (selected_ == gone)
        selected_ = -1;
    else if (selected_ > gone)
        --selected_;
    if (focus_ == gone)
        focus_ = -1;
    else if (focus_ > gone)
        --focus_;
    pressed_ = hot_ = -1;
    layout();
    changed();
    return true;
}

void TabControl::deleteAll() {
    items_.clear();
    selected_ = focus_ = pressed_ = hot_ = -1;
    first_ = 0;
    layout();
    changed();
}

bool TabControl::giveItem(WPARAM index, TCITEM* to) const {
    if (to == nullptr || !valid(static_cast<LPARAM>(index)))
        return false;
    const Item& item = items_[index];
    if ((to->mask & TCIF_TEXT) != 0 && to->pszText != nullptr && to->cchTextMax > 0) {
        const std::size_t length = std::min(item.text.size(), static_cast<std::size_t>(to->cchTextMax) - 1);
        std::memcpy(to->pszText, item.text.data(), length);
        to->pszText[length] = '\0';
    }
    if ((to->mask & TCIF_IMAGE) != 0)
        to->iImage = item.image;
    if ((to->mask & TCIF_PARAM) != 0)
        to->lParam = item.parameter;
    if ((to->mask & TCIF_STATE) != 0)
        to->dwState = item.state & to->dwStateMask;
    return true;
}

bool TabControl::setItem(WPARAM index, const TCITEM* from) {
    if (from == nullptr || !valid(static_cast<LPARAM>(index)))
        return false;
    take(items_[index], *from);
    layout();
    changed();
    return true;
}

// ---- Selection -----------------------------------------------------------------------------------------------------

LRESULT TabControl::setSelection(int index) {
    if (index != -1 && !valid(index))
        return -1;
    const int former = selected_;
    if (index == former)
        return former;
    selected_ = index;
    // Buttons keep the focus apart from what is pressed.
    if (!buttons())
        focus_ = index;
    layout();
    showSelected();
    changed();
    return former;
}

bool TabControl::select(int index) {
    if (notify(TCN_SELCHANGING) != 0 || !alive())
        return false;
    selected_ = index;
    focus_ = index;
    layout();
    showSelected();
    changed();
    notify(TCN_SELCHANGE);
    return true;
}

void TabControl::setFocusItem(int index) {
    if (!valid(index) || index == focus_)
        return;
    if (!buttons()) {
        select(index);
        return;
    }
    focus_ = index;
    changed();
    notify(TCN_FOCUSCHANGE);
}

// ---- Messages ------------------------------------------------------------------------------------------------------

bool TabControl::handleTabMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    result = 0;
    switch (message) {
    case TCM_GETITEMCOUNT:
        result = count();
        return true;
    case TCM_INSERTITEM:
        result = insertItem(wParam, reinterpret_cast<const TCITEM*>(lParam));
        return true;
    case TCM_DELETEITEM:
        result = deleteItem(wParam);
        return true;
    case TCM_DELETEALLITEMS:
        deleteAll();
        result = TRUE;
        return true;
    case TCM_GETITEM:
        result = giveItem(wParam, reinterpret_cast<TCITEM*>(lParam));
        return true;
    case TCM_SETITEM:
        result = setItem(wParam, reinterpret_cast<const TCITEM*>(lParam));
        return true;
    case TCM_GETCURSEL:
        result = selected_;
        return true;
    case TCM_SETCURSEL:
        result = setSelection(static_cast<int>(wParam));
        return true;
    case TCM_GETCURFOCUS:
        result = focus_;
        return true;
    case TCM_SETCURFOCUS:
        setFocusItem(static_cast<int>(wParam));
        return true;
    case TCM_DESELECTALL:
        if (buttons())
            setSelection(-1);
        return true;
    case TCM_HIGHLIGHTITEM:
        if (valid(static_cast<LPARAM>(wParam))) {
            Item& item = items_[wParam];
            item.state = LOWORD(static_cast<DWORD_PTR>(lParam)) != 0 ? item.state | TCIS_HIGHLIGHTED
                                                                     : item.state & ~TCIS_HIGHLIGHTED;
            changed();
            result = TRUE;
        }
        return true;
    case TCM_GETITEMRECT:
        if (auto* rect = reinterpret_cast<RECT*>(lParam); rect != nullptr && valid(static_cast<LPARAM>(wParam))) {
            *rect = itemRect(static_cast<int>(wParam));
            result = TRUE;
        }
        return true;
    case TCM_HITTEST:
        result = -1;
        if (auto* info = reinterpret_cast<TCHITTESTINFO*>(lParam); info != nullptr)
            result = hitTest(info->pt, info->flags);
        return true;
    case TCM_ADJUSTRECT:
        if (auto* rect = reinterpret_cast<RECT*>(lParam); rect != nullptr)
            adjustRect(wParam != 0, *rect);
        return true;
    case TCM_GETROWCOUNT:
        result = rows_;
        return true;
    default:
        return false;
    }
}

bool TabControl::handleLookMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    result = 0;
    switch (message) {
    case TCM_GETIMAGELIST:
        result = reinterpret_cast<LRESULT>(images_);
        return true;
    case TCM_SETIMAGELIST:
        result = reinterpret_cast<LRESULT>(std::exchange(images_, reinterpret_cast<HIMAGELIST>(lParam)));
        break;
    case TCM_REMOVEIMAGE:
        for (Item& item : items_) {
            if (item.image == static_cast<int>(wParam))
                item.image = -1;
            else if (item.image > static_cast<int>(wParam))
                --item.image;
        }
        break;
    case TCM_SETITEMSIZE:
        result = MAKELRESULT(fixedSize_.cx, itemHeight());
        fixedSize_ = {LOWORD(static_cast<DWORD_PTR>(lParam)), HIWORD(static_cast<DWORD_PTR>(lParam))};
        fixedHeight_ = true;
        break;
    case TCM_SETPADDING:
        padding_ = {LOWORD(static_cast<DWORD_PTR>(lParam)), HIWORD(static_cast<DWORD_PTR>(lParam))};
        break;
    case TCM_SETMINTABWIDTH:
        result = std::exchange(minimumWidth_, static_cast<int>(lParam));
        break;
    case TCM_GETTOOLTIPS:
        result = reinterpret_cast<LRESULT>(toolTips_);
        return true;
    case TCM_SETTOOLTIPS:
        toolTips_ = reinterpret_cast<HWND>(wParam);
        return true;
    case WM_SETFONT:
        font_ = reinterpret_cast<HFONT>(wParam);
        break;
    case WM_GETFONT:
        result = reinterpret_cast<LRESULT>(font_);
        return true;
    case WM_SIZE:
    case WM_STYLECHANGED:
        break;
    default:
        return false;
    }
    layout();
    showSelected();
    changedAll();
    return true;
}

LRESULT TabControl::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (handleTabMessage(message, wParam, lParam, result) || handleLookMessage(message, wParam, lParam, result) ||
        handleInput(message, wParam, lParam, result))
        return result;
    switch (message) {
    case WM_CREATE:
        onCreate();
        return 0;
    case WM_NCHITTEST:
        return onNcHitTest(lParam);
    case WM_PAINT:
    case WM_PRINTCLIENT:
        paint(reinterpret_cast<HDC>(wParam));
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_ENABLE:
    case WM_SYSCOLORCHANGE:
        changedAll();
        return 0;
    case WM_SETREDRAW:
        redraw_ = wParam != 0;
        break;
    default:
        if (message >= TCM_FIRST && message < TCM_FIRST + 0x100)
            logOnce("tab control: message " + std::to_string(message) + " isn't done");
        break;
    }
    return defaultHandling(message, wParam, lParam);
}

void registerTabControl() { registerControl<TabControl>({.name = WC_TABCONTROL, .style = CS_DBLCLKS}); }

} // namespace vndk::win32
