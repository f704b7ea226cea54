// SetWindowPos: from the wish to the messages and the pixels.
#include "user/window_position.h"

#include "user/activation.h"
#include "user/desktop_state.h"
#include "user/frame_geometry.h"
#include "user/painting.h"
#include "win32/error.h"
#include "win32/input.h"
#include "win32/metrics.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr UINT noPlaceChange = SWP_NOSIZE | SWP_NOMOVE | SWP_NOCLIENTSIZE | SWP_NOCLIENTMOVE;
constexpr UINT stateFlags = SWP_SHOWWINDOW | SWP_HIDEWINDOW | SWP_FRAMECHANGED | SWP_STATECHANGED;

bool isSpecialPlace(HWND insertAfter) {
    return insertAfter == HWND_TOP || insertAfter == HWND_BOTTOM || insertAfter == HWND_TOPMOST ||
           insertAfter == HWND_NOTOPMOST;
}

/// A place behind a window that isn't there, or has another parent, can't be taken.
bool validPlace(const Window& window, const WINDOWPOS& position) {
    if ((position.flags & SWP_NOZORDER) != 0 || isSpecialPlace(position.hwndInsertAfter) ||
        position.hwndInsertAfter == window.handle)
        return true;
    const Window* after = findWindow(position.hwndInsertAfter);
    if (after == nullptr)
        return false;
    if (after->parent != window.parent) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return false;
    }
    return true;
}

void clampPlace(WINDOWPOS& position) {
    position.x = clampCoordinate(position.x);
    position.y = clampCoordinate(position.y);
    position.cx = std::max(clampCoordinate(position.cx), 0);
    position.cy = std::max(clampCoordinate(position.cy), 0);
}

/// Fills in what isn't to change, and drops wishes for what is already so.
void completePosition(const Window& window, WINDOWPOS& position) {
    clampPlace(position);
    const RECT now = fromScreen(window, window.windowRect);
    if ((position.flags & SWP_NOMOVE) != 0 || (position.x == now.left && position.y == now.top)) {
        position.flags |= SWP_NOMOVE;
        position.x = now.left;
        position.y = now.top;
    }
    if ((position.flags & SWP_NOSIZE) != 0 || (position.cx == widthOf(now) && position.cy == heightOf(now))) {
        position.flags |= SWP_NOSIZE;
        position.cx = widthOf(now);
        position.cy = heightOf(now);
    }
    const bool visible = (window.style & WS_VISIBLE) != 0;
    position.flags &= ~(visible ? SWP_SHOWWINDOW : SWP_HIDEWINDOW);
}

/// What is left to do of the order and the activation. The window isn't told of it.
struct Order {
    bool activate = false;
    bool change = false;
    HWND insertAfter = HWND_TOP;
};

Order orderFor(const Window& window, const WINDOWPOS& position) {
    const bool shown = (position.flags & SWP_HIDEWINDOW) == 0 &&
                       ((window.style & WS_VISIBLE) != 0 || (position.flags & SWP_SHOWWINDOW) != 0);
    Order order;
    order.activate = (position.flags & (SWP_NOACTIVATE | SWP_HIDEWINDOW)) == 0;
    order.change = (position.flags & SWP_NOZORDER) == 0;
    order.insertAfter = position.hwndInsertAfter;
    if (order.activate && !isChild(window) && shown && GetActiveWindow() != window.handle) {
        // What becomes active comes to the front.
        if (!order.change || (order.insertAfter != HWND_TOPMOST && order.insertAfter != HWND_NOTOPMOST))
            order.insertAfter = HWND_TOP;
        order.change = true;
    }
    order.change = order.change && !inPlace(window, order.insertAfter);
    return order;
}

struct Areas {
    RECT window;
    RECT client;
};

/// The client area at the new place. Children's rectangles travel in their parent's coordinates. `keepPixels` becomes
/// false when the window wants to be painted anew.
RECT askClient(HWND handle, const RECT& windowRect, WINDOWPOS& position, bool& keepPixels) {
    const Window* window = findWindow(handle);
    NCCALCSIZE_PARAMS parameters{};
    parameters.rgrc[0] = fromScreen(*window, windowRect);
    parameters.rgrc[1] = fromScreen(*window, window->windowRect);
    parameters.rgrc[2] = fromScreen(*window, window->clientRect);
    WINDOWPOS told = position;
    parameters.lppos = &told;
    const LRESULT result = send(handle, WM_NCCALCSIZE, TRUE, reinterpret_cast<LPARAM>(&parameters));
    window = findWindow(handle);
    if (window == nullptr)
        return {};
    RECT client = toScreen(*window, parameters.rgrc[0]);
    client.right = std::max(client.left, client.right);
    client.bottom = std::max(client.top, client.bottom);
    const bool widthChanged = widthOf(client) != widthOf(window->clientRect);
    const bool heightChanged = heightOf(client) != heightOf(window->clientRect);
    if (((result & WVR_HREDRAW) != 0 && widthChanged) || ((result & WVR_VREDRAW) != 0 && heightChanged))
        keepPixels = false;
    // Valid rectangles that the window names and that don't overlap mean that nothing of the old picture is of use.
    if ((result & WVR_VALIDRECTS) != 0 && (widthOf(parameters.rgrc[1]) <= 0 || heightOf(parameters.rgrc[1]) <= 0 ||
                                           widthOf(parameters.rgrc[2]) <= 0 || heightOf(parameters.rgrc[2]) <= 0))
        keepPixels = false;
    return client;
}

void setVisibleBit(Window& window, UINT flags) {
    if ((flags & SWP_SHOWWINDOW) != 0)
        window.style |= WS_VISIBLE;
    if ((flags & SWP_HIDEWINDOW) != 0)
        window.style &= ~WS_VISIBLE;
}

void takeAreas(Window& window, const Areas& areas) {
    shiftChildren(window, areas.client.left - window.clientRect.left, areas.client.top - window.clientRect.top);
    window.windowRect = areas.window;
    window.clientRect = areas.client;
    if (window.showState == ShowState::normal)
        window.normalRect = areas.window;
}

bool frameDiffers(const Window& window, const Areas& areas) {
    return widthOf(areas.window) != widthOf(window.windowRect) ||
           heightOf(areas.window) != heightOf(window.windowRect) ||
           areas.client.left - areas.window.left != window.clientRect.left - window.windowRect.left ||
           areas.client.top - areas.window.top != window.clientRect.top - window.windowRect.top;
}

using AreaChanges = std::vector<std::unique_ptr<AreaChange>>;

/// Owners and owned windows change their places in the order together.
AreaChanges changesOfGroup(const Window& window) {
    AreaChanges changes;
    const HWND root = GetAncestor(window.handle, GA_ROOTOWNER);
    for (Window* each : window.parent->children)
        if (each != &window && (each->owner != nullptr || each->handle == root) && (each->style & WS_VISIBLE) != 0 &&
            GetAncestor(each->handle, GA_ROOTOWNER) == root)
            changes.push_back(std::make_unique<AreaChange>(*each));
    return changes;
}

/// Takes the new areas, the order and the visibility, pixels included.
void apply(Window& window, const Areas& areas, const WINDOWPOS& position, const Order& order, bool keepPixels) {
    AreaChange change(window);
    AreaChanges group;
    if (order.change && isTopLevel(window))
        group = changesOfGroup(window);
    const bool frameChanged = (position.flags & SWP_FRAMECHANGED) != 0 || frameDiffers(window, areas);
    takeAreas(window, areas);
    if (order.change)
        reorder(window, order.insertAfter, (position.flags & SWP_NOOWNERZORDER) == 0);
    setVisibleBit(window, position.flags);
    change.commit(keepPixels, frameChanged, position.flags);
    for (const auto& each : group)
        each->commit(true, false, position.flags & SWP_NOREDRAW);
}

/// Which of the four areas stayed as they were, for WM_WINDOWPOSCHANGED.
UINT unchangedClient(const Window& window, const Areas& areas) {
    const RECT before = fromScreen(window, window.clientRect);
    const RECT after = fromScreen(window, areas.client);
    UINT flags = 0;
    if (before.left == after.left && before.top == after.top)
        flags |= SWP_NOCLIENTMOVE;
    if (widthOf(before) == widthOf(after) && heightOf(before) == heightOf(after))
        flags |= SWP_NOCLIENTSIZE;
    return flags;
}

void activateAfter(HWND handle) {
    const Window* window = findWindow(handle);
    if (window == nullptr)
        return;
    if (isChild(*window))
        send(handle, WM_CHILDACTIVATE);
    else if (isTopLevel(*window) && (window->style & WS_VISIBLE) != 0)
        activate(handle, ActivationCause::program);
}

/// WM_WINDOWPOSCHANGING; what the window made of it. False when the window is gone.
bool askWindow(HWND handle, WINDOWPOS& position) {
    if ((position.flags & SWP_NOSENDCHANGING) == 0)
        send(handle, WM_WINDOWPOSCHANGING, 0, reinterpret_cast<LPARAM>(&position));
    return findWindow(handle) != nullptr;
}

bool carryOut(HWND handle, WINDOWPOS& position, Order& order) {
    Window* window = findWindow(handle);
    Areas areas{toScreen(*window, {position.x, position.y, position.x + position.cx, position.y + position.cy}), {}};
    bool keepPixels = (position.flags & SWP_NOCOPYBITS) == 0;
    if ((position.flags & (SWP_FRAMECHANGED | SWP_NOSIZE)) != SWP_NOSIZE) {
        areas.client = askClient(handle, areas.window, position, keepPixels);
        window = findWindow(handle);
        if (window == nullptr)
            return false;
        // A handler can have moved the parent.
        areas.window = toScreen(*window, {position.x, position.y, position.x + position.cx, position.y + position.cy});
    } else {
        areas.client = shifted(window->clientRect, areas.window.left - window->windowRect.left,
                               areas.window.top - window->windowRect.top);
    }
    position.flags |= unchangedClient(*window, areas);
    order = orderFor(*window, position);
    apply(*window, areas, position, order, keepPixels);
    return true;
}

} // namespace

int clampCoordinate(long long value) {
    return static_cast<int>(std::clamp<long long>(value, -coordinateLimit - 1, coordinateLimit));
}

bool setWindowPos(HWND handle, HWND insertAfter, int x, int y, int width, int height, UINT flags) {
    Window* window = findWindow(handle);
    if (window == nullptr)
        return false;
    if (window->parent == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return false;
    }
    WINDOWPOS position{handle, insertAfter, x, y, width, height, flags & ~(SWP_NOCLIENTSIZE | SWP_NOCLIENTMOVE)};
    if (!validPlace(*window, position))
        return false;
    clampPlace(position);
    if (!askWindow(handle, position))
        return true;
    window = findWindow(handle);
    if (!validPlace(*window, position))
        return false;
    completePosition(*window, position);
    Order order;
    if (!carryOut(handle, position, order))
        return true;
    if (order.activate)
        activateAfter(handle);
    if (order.change || (position.flags & noPlaceChange) != noPlaceChange || (position.flags & stateFlags) != 0)
        send(handle, WM_WINDOWPOSCHANGED, 0, reinterpret_cast<LPARAM>(&position));
    assertWindows();
    return true;
}

void calculateClient(HWND handle) {
    const Window* window = findWindow(handle);
    if (window == nullptr)
        return;
    RECT rect = fromScreen(*window, window->windowRect);
    send(handle, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&rect));
    if (Window* asked = findWindow(handle); asked != nullptr) {
        RECT client = toScreen(*asked, rect);
        client.right = std::max(client.left, client.right);
        client.bottom = std::max(client.top, client.bottom);
        shiftChildren(*asked, client.left - asked->clientRect.left, client.top - asked->clientRect.top);
        asked->clientRect = client;
    }
}

void shiftChildren(Window& window, int dx, int dy) {
    if (dx == 0 && dy == 0)
        return;
    for (Window* child : window.children) {
        child->windowRect = shifted(child->windowRect, dx, dy);
        child->clientRect = shifted(child->clientRect, dx, dy);
        child->normalRect = shifted(child->normalRect, dx, dy);
        shiftChildren(*child, dx, dy);
    }
}

MINMAXINFO askMinMax(HWND handle) {
    MINMAXINFO info{};
    const Window* window = findWindow(handle);
    if (window == nullptr || window->parent == nullptr)
        return info;
    const int border = borderWidth(window->style, window->exStyle);
    const RECT area = window->parent->clientRect;
    info.ptMaxSize = {widthOf(area) + 2 * border, heightOf(area) + 2 * border};
    info.ptMaxPosition = {-border, -border};
    info.ptMaxTrackSize = {GetSystemMetrics(SM_CXMAXTRACK), GetSystemMetrics(SM_CYMAXTRACK)};
    info.ptMinTrackSize = hasCaption(window->style)
                              ? POINT{GetSystemMetrics(SM_CXMINTRACK), GetSystemMetrics(SM_CYMINTRACK)}
                              : POINT{2 * border, 2 * border};
    if (window->maximizedPosition.x != -1 || window->maximizedPosition.y != -1)
        info.ptMaxPosition = window->maximizedPosition;
    send(handle, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
    info.ptMaxTrackSize.x = std::max(info.ptMaxTrackSize.x, info.ptMinTrackSize.x);
    info.ptMaxTrackSize.y = std::max(info.ptMaxTrackSize.y, info.ptMinTrackSize.y);
    return info;
}

} // namespace vndk::win32

using vndk::win32::findWindow;
using vndk::win32::Window;

BOOL SetWindowPos(HWND window, HWND insertAfter, int x, int y, int width, int height, UINT flags) {
    return vndk::win32::setWindowPos(window, insertAfter, x, y, width, height, flags & ~SWP_STATECHANGED) ? TRUE
                                                                                                          : FALSE;
}

BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint) {
    return SetWindowPos(window, nullptr, x, y, width, height,
                        SWP_NOZORDER | SWP_NOACTIVATE | (repaint != FALSE ? 0 : SWP_NOREDRAW));
}

BOOL BringWindowToTop(HWND window) { return SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE); }
