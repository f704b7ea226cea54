#include "user/menu_popup.h"

#include "user/frame_geometry.h"
#include "user/menu_layout.h"
#include "user/menu_tracker.h"
#include "win32/gdi.h"
#include "win32/icons.h"
#include "win32/input.h"
#include "win32/metrics.h"
#include "win32/paint.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr LPCSTR popupClass = "#32768";
constexpr int menuIndex = 0; // of the menu's handle in the window's extra bytes

HMENU menuOf(HWND window) { return reinterpret_cast<HMENU>(GetWindowLongPtrA(window, menuIndex)); }

LRESULT paint(HWND window) {
    PAINTSTRUCT painting{};
    const HDC dc = BeginPaint(window, &painting);
    const MenuState* state = menuState();
    if (dc != nullptr)
        drawPopup(menuOf(window), dc, state->tracker != nullptr ? state->tracker->owner() : nullptr);
    EndPaint(window, &painting);
    return 0;
}

LRESULT CALLBACK popupProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_PAINT:
        return paint(window);
    case WM_ERASEBKGND:
        return TRUE;
    case WM_MOUSEACTIVATE:
        return MA_NOACTIVATE;
    case MN_GETHMENU:
        return reinterpret_cast<LRESULT>(menuOf(window));
    case WM_NCDESTROY:
        if (Menu* menu = findMenu(menuOf(window)); menu != nullptr && menu->window == window)
            menu->window = nullptr;
        break;
    default:
        break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

// One direction of placePopup: `size` long, at `at` plus what the alignment takes off; beyond the screen it turns over
// to the other side of the point, if there is room.
int placeAlong(int at, int size, int aligned, int screen) {
    const int wanted = at - aligned;
    if (wanted + size > screen && aligned == 0 && at - size >= 0)
        return at - size;
    if (wanted < 0 && aligned == size && at + size <= screen)
        return at;
    return wanted;
}

// Out of the way of an excluded stretch: behind it, else before it.
int besideStretch(int wanted, int size, int from, int to, int screen) {
    if (wanted >= to || wanted + size <= from)
        return wanted;
    if (to + size <= screen)
        return to;
    return from - size >= 0 ? from - size : wanted;
}

int keepInside(int wanted, int size, int screen) { return std::max(std::min(wanted, screen - size), 0); }

} // namespace

void registerMenuClass() {
    WNDCLASSA popups{};
    popups.style = CS_GLOBALCLASS | CS_DBLCLKS | CS_SAVEBITS;
    popups.lpfnWndProc = &popupProcedure;
    popups.cbWndExtra = sizeof(HMENU);
    popups.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    popups.lpszClassName = popupClass;
    RegisterClassA(&popups);
}

POINT placePopup(SIZE size, POINT at, UINT flags, const RECT* exclude) {
    const int screenWidth = GetSystemMetrics(SM_CXSCREEN);
    const int screenHeight = GetSystemMetrics(SM_CYSCREEN);
    const int width = size.cx;
    const int height = size.cy;
    const int alignedX = (flags & TPM_RIGHTALIGN) != 0 ? width : (flags & TPM_CENTERALIGN) != 0 ? width / 2 : 0;
    const int alignedY = (flags & TPM_BOTTOMALIGN) != 0 ? height : (flags & TPM_VCENTERALIGN) != 0 ? height / 2 : 0;
    if (exclude == nullptr || exclude->right <= exclude->left || exclude->bottom <= exclude->top)
        return {keepInside(placeAlong(at.x, width, alignedX, screenWidth), width, screenWidth),
                keepInside(placeAlong(at.y, height, alignedY, screenHeight), height, screenHeight)};
    int x = at.x - alignedX;
    int y = at.y - alignedY;
    if ((flags & TPM_VERTICAL) != 0) {
        x = keepInside(x, width, screenWidth);
        if (y + height > screenHeight)
            y = exclude->top - height;
        if (x < exclude->right && x + width > exclude->left)
            y = besideStretch(y, height, exclude->top, exclude->bottom, screenHeight);
    } else {
        y = keepInside(y, height, screenHeight);
        if (x + width > screenWidth)
            x = exclude->left - width;
        if (y < exclude->bottom && y + height > exclude->top)
            x = besideStretch(x, width, exclude->left, exclude->right, screenWidth);
    }
    return {keepInside(x, width, screenWidth), keepInside(y, height, screenHeight)};
}

HWND showPopup(HMENU handle, HWND owner, POINT at) {
    const Menu* menu = findMenu(handle);
    if (menu == nullptr)
        return nullptr;
    const SIZE size = menu->size;
    const HWND window = CreateWindowExA(WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_NOACTIVATE, popupClass, nullptr,
                                        WS_POPUP, at.x, at.y, size.cx, size.cy, owner, nullptr, nullptr, nullptr);
    Menu* shown = window != nullptr ? findMenu(handle) : nullptr;
    if (shown == nullptr) {
        DestroyWindow(window);
        return nullptr;
    }
    shown->window = window;
    SetWindowLongPtrA(window, menuIndex, reinterpret_cast<LONG_PTR>(handle));
    SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    UpdateWindow(window);
    return IsWindow(window) != FALSE ? window : nullptr;
}

void hidePopup(HMENU handle) {
    Menu* menu = findMenu(handle);
    if (menu == nullptr)
        return;
    const HWND window = menu->window;
    menu->selected = noItem;
    menu->window = nullptr;
    if (window != nullptr)
        DestroyWindow(window);
}

int popupItemAt(const Menu& menu, POINT point) {
    ScreenToClient(menu.window, &point);
    for (std::size_t i = 0; i < menu.items.size(); ++i)
        if (containsPoint(menu.items[i].rect, point))
            return static_cast<int>(i);
    return noItem;
}

void repaintPopupItem(const Menu& menu, int position) {
    if (menu.window != nullptr && position >= 0 && static_cast<std::size_t>(position) < menu.items.size())
        InvalidateRect(menu.window, &menu.items[static_cast<std::size_t>(position)].rect, FALSE);
}

} // namespace vndk::win32
