// Which window is painted next, and what is sent to it.
#include "user/desktop_state.h"
#include "user/input_state.h"
#include "user/update_region.h"
#include "user/window_contexts.h"
#include "win32/gdi.h"

#include <utility>

namespace vndk::win32 {

namespace {

bool isInvalid(const Window& window) {
    return window.internalPaint || !window.update.empty() || !window.frameUpdate.empty();
}

bool isLockedOut(const Window& window) {
    const HWND locked = currentState()->painting->locked;
    for (const Window* outer = &window; outer != nullptr && locked != nullptr; outer = outer->parent)
        if (outer->handle == locked)
            return true;
    return false;
}

// A parent that paints over its children has to go first.
bool waitsForParent(const Window& window) {
    for (const Window* outer = window.parent; outer != nullptr && outer->parent != nullptr; outer = outer->parent)
        if ((outer->style & WS_CLIPCHILDREN) == 0 && isInvalid(*outer) && needsPaint(*outer))
            return true;
    return false;
}

HWND firstInTree(const Window& window);

// A transparent window shows what lies below it, so its siblings go first.
HWND firstOfChildren(const Window& window) {
    for (const bool transparent : {false, true})
        for (const Window* child : window.children) {
            if (((child->exStyle & WS_EX_TRANSPARENT) != 0) != transparent)
                continue;
            if (const HWND found = firstInTree(*child))
                return found;
        }
    return nullptr;
}

HWND firstInTree(const Window& window) {
    if ((window.style & WS_VISIBLE) == 0)
        return nullptr;
    if (isInvalid(window) && needsPaint(window) && !isLockedOut(window))
        return window.handle;
    return firstOfChildren(window);
}

// The desktop's own ground is painted by the way: programs see no message of it.
void paintDesktop(Window& root) {
    root.internalPaint = false;
    root.frameUpdate.clear();
    if (root.update.empty())
        return;
    const HDC dc = handOut(root, DCX_CACHE | DCX_CLIPCHILDREN, std::exchange(root.update, {}), false);
    root.eraseNeeded = false;
    if (dc == nullptr)
        return;
    callProcedure(root.procedure, root.handle, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0);
    takeBack(dc);
}

// Everything that WM_NCPAINT's region tells: the frame's invalid part and the client's, or 1 for the whole window.
void sendFramePaint(HWND handle) {
    Window* window = findWindow(handle);
    if (window == nullptr || window->frameUpdate.empty())
        return;
    Region invalid = invalidOnScreen(*window);
    window->frameUpdate.clear();
    if (invalid == outlineOf(*window)) {
        send(handle, WM_NCPAINT, 1, 0);
        return;
    }
    const HRGN region = newRegionHandle(std::move(invalid));
    DesktopState* state = currentState();
    state->painting->framePasses.push_back(region);
    send(handle, WM_NCPAINT, region != nullptr ? reinterpret_cast<WPARAM>(region) : 1, 0);
    if (currentState() == state)
        std::erase(state->painting->framePasses, region);
    DeleteObject(region);
}

void sendErase(HWND handle) {
    Window* window = findWindow(handle);
    if (window == nullptr || !window->eraseNeeded || window->update.empty())
        return;
    Region clip = window->update;
    clip.offset(window->clientRect.left - window->windowRect.left, window->clientRect.top - window->windowRect.top);
    const HDC dc = handOut(*window, contextFlagsOf(*window), std::move(clip), false);
    if (dc == nullptr)
        return;
    window->eraseNeeded = false;
    const bool erased = send(handle, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc)) != 0;
    takeBack(dc);
    if (window = findWindow(handle); window != nullptr && !erased)
        window->eraseNeeded = true;
}

} // namespace

HWND nextToPaint(HWND within) {
    DesktopState* state = currentState();
    if (state == nullptr || state->root == nullptr)
        return nullptr;
    if (state->root->handle != within && isInvalid(*state->root))
        paintDesktop(*state->root);
    if (within == nullptr)
        return firstOfChildren(*state->root);
    const Window* top = findWindow(within);
    if (top == nullptr || !isVisible(*top) || waitsForParent(*top))
        return nullptr;
    return firstInTree(*top);
}

void eraseNow(HWND window) {
    const CaretPause pause(findWindow(window));
    sendFramePaint(window);
    sendErase(window);
}

void sendPaint(HWND handle) {
    Window* window = findWindow(handle);
    if (window == nullptr)
        return;
    window->internalPaint = false;
    send(handle, WM_PAINT);
    finishPaint(handle);
}

void finishPaint(HWND handle) {
    const Window* window = findWindow(handle);
    if (window != nullptr && !window->frameUpdate.empty())
        eraseNow(handle);
}

} // namespace vndk::win32

using namespace vndk::win32;

HDC BeginPaint(HWND handle, PAINTSTRUCT* paint) {
    Window* window = findWindow(handle);
    if (window == nullptr || paint == nullptr)
        return nullptr;
    *paint = {};
    const bool caretPaused = pauseCaret(window);
    validateParents(*window, invalidOnScreen(*window));
    sendFramePaint(handle);
    window = findWindow(handle);
    if (window == nullptr) {
        if (caretPaused)
            resumeCaret();
        return nullptr;
    }
    Region clip = std::exchange(window->update, {});
    const bool erase = std::exchange(window->eraseNeeded, false) && !clip.empty();
    window->internalPaint = false;
    clip.offset(window->clientRect.left - window->windowRect.left, window->clientRect.top - window->windowRect.top);
    const HDC dc = handOut(*window, contextFlagsOf(*window), std::move(clip), false);
    HandedContext* context = handedContext(dc);
    if (context == nullptr) {
        if (caretPaused)
            resumeCaret();
        return nullptr;
    }
    context->caretPaused = caretPaused;
    paint->hdc = dc;
    if (erase && send(handle, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc)) == 0) {
        paint->fErase = TRUE;
        if (window = findWindow(handle); window != nullptr)
            window->eraseNeeded = true;
    }
    if (findWindow(handle) == nullptr)
        return nullptr; // Its contexts went with it.
    GetClipBox(dc, &paint->rcPaint);
    return dc;
}

BOOL EndPaint(HWND, const PAINTSTRUCT* paint) {
    if (paint == nullptr)
        return FALSE;
    takeBack(paint->hdc);
    return TRUE;
}
