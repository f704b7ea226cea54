// TrackMouseEvent and DragDetect.
#include "user/desktop_state.h"
#include "user/input_queue.h"
#include "user/input_state.h"
#include "win32/error.h"
#include "win32/metrics.h"

#include <cstdlib>

namespace vndk::win32 {

namespace {

constexpr DWORD defaultHoverTime = 400;

POINT clientPoint(HWND window, POINT point) {
    ScreenToClient(window, &point);
    return point;
}

void stopHovering(InputState& input) {
    killSystemTimer(input.tracking.window, hoverTimer);
    input.tracking.flags &= ~TME_HOVER;
    if (input.tracking.flags == 0)
        input.tracking = {};
}

void CALLBACK hoverTimeIsUp(HWND window, UINT, UINT_PTR, DWORD) {
    DesktopState* state = currentState();
    if (state == nullptr || state->input->tracking.window != window)
        return;
    const POINT inside = clientPoint(window, state->input->pointer);
    stopHovering(*state->input);
    postInput(window, WM_MOUSEHOVER, heldKeys(), MAKELPARAM(inside.x, inside.y));
}

void restartHovering(InputState& input, POINT point) {
    input.tracking.hoverPoint = point;
    setSystemTimer(input.tracking.window, hoverTimer, input.tracking.hoverTime, &hoverTimeIsUp);
}

bool hasMovedAway(const InputState& input, POINT point) {
    return std::abs(point.x - input.tracking.hoverPoint.x) * 2 > GetSystemMetrics(SM_CXDRAG) ||
           std::abs(point.y - input.tracking.hoverPoint.y) * 2 > GetSystemMetrics(SM_CYDRAG);
}

bool pointerIsOver(const InputState& input, HWND window) {
    if (input.capture != nullptr)
        return input.capture == window;
    LRESULT hitTest = HTNOWHERE;
    return windowAt(input.pointer, hitTest) == window && hitTest == HTCLIENT;
}

void cancelTracking(InputState& input, const TRACKMOUSEEVENT& track) {
    if (input.tracking.window != track.hwndTrack)
        return;
    if ((track.dwFlags & TME_HOVER) != 0 && (input.tracking.flags & TME_HOVER) != 0)
        stopHovering(input);
    if ((track.dwFlags & TME_LEAVE) != 0) {
        input.tracking.flags &= ~TME_LEAVE;
        if (input.tracking.flags == 0)
            input.tracking = {};
    }
}

void beginTracking(InputState& input, const TRACKMOUSEEVENT& track) {
    if (input.tracking.window != track.hwndTrack) {
        killSystemTimer(input.tracking.window, hoverTimer);
        input.tracking = {};
    }
    input.tracking.window = track.hwndTrack;
    input.tracking.flags |= track.dwFlags & (TME_LEAVE | TME_HOVER);
    if ((track.dwFlags & TME_HOVER) != 0) {
        const bool standard = track.dwHoverTime == HOVER_DEFAULT || track.dwHoverTime == 0;
        input.tracking.hoverTime = standard ? defaultHoverTime : track.dwHoverTime;
        restartHovering(input, input.pointer);
    }
}

void queryTracking(const InputState& input, TRACKMOUSEEVENT& track) {
    track.dwFlags = input.tracking.flags;
    track.hwndTrack = input.tracking.window;
    track.dwHoverTime = (input.tracking.flags & TME_HOVER) != 0 ? input.tracking.hoverTime : 0;
}

} // namespace

void trackPointer(HWND over, LRESULT hitTest, POINT point) {
    DesktopState* state = currentState();
    if (state == nullptr || state->input->tracking.window == nullptr)
        return;
    InputState& input = *state->input;
    if (over == input.tracking.window && hitTest == HTCLIENT) {
        if ((input.tracking.flags & TME_HOVER) != 0 && hasMovedAway(input, point))
            restartHovering(input, point);
        return;
    }
    const MouseTracking left = input.tracking;
    killSystemTimer(left.window, hoverTimer);
    input.tracking = {};
    if ((left.flags & TME_LEAVE) != 0)
        postInput(left.window, WM_MOUSELEAVE, 0, 0);
}

} // namespace vndk::win32

using namespace vndk::win32;

BOOL TrackMouseEvent(TRACKMOUSEEVENT* track) {
    DesktopState* state = currentState();
    if (state == nullptr || track == nullptr || track->cbSize < sizeof(TRACKMOUSEEVENT)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    InputState& input = *state->input;
    if ((track->dwFlags & TME_QUERY) != 0) {
        queryTracking(input, *track);
        return TRUE;
    }
    const TRACKMOUSEEVENT wanted = *track;
    if (findWindow(wanted.hwndTrack) == nullptr)
        return FALSE;
    if ((wanted.dwFlags & TME_CANCEL) != 0) {
        cancelTracking(input, wanted);
        return TRUE;
    }
    collectScreenEvents();
    const bool over = pointerIsOver(input, wanted.hwndTrack);
    if (findWindow(wanted.hwndTrack) == nullptr)
        return FALSE;
    if (over)
        beginTracking(input, wanted);
    else if ((wanted.dwFlags & TME_LEAVE) != 0)
        postInput(wanted.hwndTrack, WM_MOUSELEAVE, 0, 0);
    return TRUE;
}

BOOL DragDetect(HWND window, POINT point) {
    if (findWindow(window) == nullptr)
        return FALSE;
    const int width = GetSystemMetrics(SM_CXDRAG);
    const int height = GetSystemMetrics(SM_CYDRAG);
    SetCapture(window);
    MSG message{};
    while (GetCapture() == window && GetMessageA(&message, nullptr, 0, 0) > 0) {
        const bool mouse = message.message >= WM_MOUSEFIRST && message.message <= WM_MOUSELAST;
        const bool moved = std::abs(message.pt.x - point.x) > width || std::abs(message.pt.y - point.y) > height;
        const bool ended = message.message == WM_LBUTTONUP ||
                           (message.message == WM_KEYDOWN && message.wParam == static_cast<WPARAM>(VK_ESCAPE));
        if (ended || (message.message == WM_MOUSEMOVE && moved)) {
            ReleaseCapture();
            return ended ? FALSE : TRUE;
        }
        if (!mouse)
            DispatchMessageA(&message);
    }
    if (message.message == WM_QUIT)
        PostQuitMessage(static_cast<int>(message.wParam));
    if (GetCapture() == window)
        ReleaseCapture();
    return FALSE;
}
