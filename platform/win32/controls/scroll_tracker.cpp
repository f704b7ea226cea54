#include "controls/scroll_tracker.h"

#include "controls/scroll_place.h"
#include "user/input_queue.h"
#include "win32/input.h"
#include "win32/queue.h"

#include <algorithm>

namespace vndk::win32 {
namespace {

constexpr UINT repeatPeriod = 50; // milliseconds

UINT repeatDelay() { return GetDoubleClickTime() * 4 / 5; }

/// The mouse is captured and a timer may run for as long as this lives.
class TrackingLease {
public:
    explicit TrackingLease(HWND window) : window_(window) { SetCapture(window); }
    ~TrackingLease() {
        stopTimer();
        if (held())
            ReleaseCapture();
    }
    TrackingLease(const TrackingLease&) = delete;
    TrackingLease& operator=(const TrackingLease&) = delete;

    [[nodiscard]] bool held() const { return GetCapture() == window_; }
    void startTimer(UINT milliseconds) {
        stopTimer();
        // A timer without a window can't meet one of the window's own.
        timer_ = SetTimer(nullptr, 0, milliseconds, nullptr);
    }
    void stopTimer() {
        if (timer_ != 0)
            KillTimer(nullptr, timer_);
        timer_ = 0;
    }
    [[nodiscard]] bool isTimer(const MSG& message) const {
        return message.message == WM_TIMER && message.hwnd == nullptr && timer_ != 0 && message.wParam == timer_;
    }

private:
    HWND window_;
    UINT_PTR timer_ = 0;
};

class ScrollTracker {
public:
    ScrollTracker(HWND window, int bar) : window_(window), bar_(bar) {}

    void run(POINT point);

private:
    [[nodiscard]] bool alive() const { return IsWindow(window_) != FALSE; }
    [[nodiscard]] bool reacts(ScrollPart part) const;
    void send(int code, int position = 0) const { sendScroll(window_, bar_, code, position); }

    void begin(TrackingLease& lease, POINT point);
    void loop(TrackingLease& lease);
    bool handle(const MSG& message, TrackingLease& lease);
    void movePointer(POINT point, TrackingLease& lease);
    void dragThumb(POINT point);
    void repeat(TrackingLease& lease);
    void press(ScrollPart part);
    void end(bool cancelled);

    [[nodiscard]] bool pointerOnPart() const;
    [[nodiscard]] int codeOfPart() const;

    HWND window_;
    int bar_;
    ScrollPart part_ = ScrollPart::none;
    POINT pointer_{};
    int grabOffset_ = 0;    // pointer from the thumb's begin
    int startOffset_ = 0;   // of the thumb, from the begin of its way
    int startPosition_ = 0; // of the bar
};

/// Arrows that are disabled don't react, nor does anything when both are.
bool ScrollTracker::reacts(ScrollPart part) const {
    const ScrollState* state = scrollStateOf(window_, bar_);
    if (state == nullptr || state->tracking || state->disabledArrows == ESB_DISABLE_BOTH)
        return false;
    if (part == ScrollPart::lineUp)
        return (state->disabledArrows & ESB_DISABLE_LTUP) == 0;
    if (part == ScrollPart::lineDown)
        return (state->disabledArrows & ESB_DISABLE_RTDN) == 0;
    return part != ScrollPart::none;
}

int ScrollTracker::codeOfPart() const {
    switch (part_) {
    case ScrollPart::lineUp:
        return SB_LINEUP;
    case ScrollPart::lineDown:
        return SB_LINEDOWN;
    case ScrollPart::pageUp:
        return SB_PAGEUP;
    default:
        return SB_PAGEDOWN;
    }
}

bool ScrollTracker::pointerOnPart() const {
    ScrollPlace place;
    return locateScrollBar(window_, bar_, place) && place.partAtPoint(pointer_) == part_;
}

void ScrollTracker::press(ScrollPart part) {
    ScrollState* state = scrollStateOf(window_, bar_);
    if (state == nullptr || state->pressedPart == static_cast<int>(part))
        return;
    state->pressedPart = static_cast<int>(part);
    repaintScrollBar(window_, bar_);
}

void ScrollTracker::run(POINT point) {
    ScrollPlace place;
    if (!locateScrollBar(window_, bar_, place))
        return;
    part_ = place.partAtPoint(point);
    if (!reacts(part_))
        return;
    TrackingLease lease(window_);
    begin(lease, point);
    loop(lease);
}

void ScrollTracker::begin(TrackingLease& lease, POINT point) {
    pointer_ = point;
    ScrollPlace place;
    ScrollState* state = scrollStateOf(window_, bar_);
    if (!locateScrollBar(window_, bar_, place) || state == nullptr)
        return;
    state->tracking = true;
    state->trackPosition = startPosition_ = state->position;
    if (part_ == ScrollPart::thumb) {
        grabOffset_ = place.offsetOf(point) - place.layout.thumbBegin;
        startOffset_ = state->thumbOffset = place.layout.thumbBegin - place.layout.shaftBegin();
        return;
    }
    press(part_);
    lease.startTimer(repeatDelay());
    if (alive())
        send(codeOfPart());
}

void ScrollTracker::loop(TrackingLease& lease) {
    bool cancelled = true;
    while (alive() && lease.held()) {
        MSG message{};
        if (!nextModalMessage(message, MSGF_SCROLLBAR))
            break;
        if (!handle(message, lease)) {
            cancelled = message.message != WM_LBUTTONUP;
            break;
        }
    }
    lease.stopTimer();
    if (alive())
        end(cancelled);
}

/// False when it is over.
bool ScrollTracker::handle(const MSG& message, TrackingLease& lease) {
    if (lease.isTimer(message)) {
        repeat(lease);
        return true;
    }
    if (message.message == WM_LBUTTONUP) {
        movePointer(message.pt, lease);
        return false;
    }
    if (message.message == WM_MOUSEMOVE) {
        movePointer(message.pt, lease);
        return true;
    }
    const bool key = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    const bool mouse = message.message >= WM_MOUSEFIRST && message.message <= WM_MOUSELAST;
    if (key || mouse)
        return message.message != WM_KEYDOWN || message.wParam != static_cast<WPARAM>(VK_ESCAPE);
    DispatchMessageA(&message);
    return true;
}

void ScrollTracker::movePointer(POINT point, TrackingLease& lease) {
    pointer_ = point;
    if (part_ == ScrollPart::thumb) {
        dragThumb(point);
        return;
    }
    const bool on = pointerOnPart();
    const ScrollState* state = scrollStateOf(window_, bar_);
    const bool cameBack = on && state != nullptr && state->pressedPart == 0;
    press(on ? part_ : ScrollPart::none);
    if (cameBack)
        lease.startTimer(repeatPeriod);
}

/// The thumb follows until the pointer is too far away; then it goes back to where it came from.
void ScrollTracker::dragThumb(POINT point) {
    ScrollPlace place;
    ScrollState* state = scrollStateOf(window_, bar_);
    if (!locateScrollBar(window_, bar_, place) || state == nullptr)
        return;
    const int breadth = place.breadth();
    const RECT& bar = place.rect;
    const int across = 8 * breadth;
    const int along = 2 * breadth;
    const int dx = place.vertical ? across : along;
    const int dy = place.vertical ? along : across;
    const bool near =
        point.x >= bar.left - dx && point.x < bar.right + dx && point.y >= bar.top - dy && point.y < bar.bottom + dy;
    const int wanted = place.offsetOf(point) - grabOffset_ - place.layout.shaftBegin();
    const int offset = near ? std::clamp(wanted, 0, std::max(place.layout.travel(), 0)) : startOffset_;
    // Where the thumb stood at first stands for the position it stood for, which rounding may not give back.
    const int position = offset == startOffset_ ? startPosition_ : positionAt(*state, place.layout, offset);
    const bool moved = offset != state->thumbOffset;
    const bool changed = position != state->trackPosition;
    state->thumbOffset = offset;
    state->trackPosition = position;
    if (moved)
        repaintScrollBar(window_, bar_);
    if (changed && alive())
        send(SB_THUMBTRACK, position);
}

void ScrollTracker::repeat(TrackingLease& lease) {
    lease.startTimer(repeatPeriod);
    const bool on = pointerOnPart();
    press(on ? part_ : ScrollPart::none);
    if (on && alive())
        send(codeOfPart());
}

void ScrollTracker::end(bool cancelled) {
    ScrollState* state = scrollStateOf(window_, bar_);
    if (state == nullptr)
        return;
    const int position = cancelled ? startPosition_ : state->trackPosition;
    state->trackPosition = position;
    if (GetCapture() == window_)
        ReleaseCapture();
    if (part_ == ScrollPart::thumb && alive())
        send(SB_THUMBPOSITION, position);
    // Only now the thumb goes to the position that was set for it.
    state = scrollStateOf(window_, bar_);
    if (state == nullptr)
        return;
    state->tracking = false;
    state->pressedPart = 0;
    state->thumbOffset = -1;
    repaintScrollBar(window_, bar_);
    if (alive())
        send(SB_ENDSCROLL);
}

} // namespace

void sendScroll(HWND window, int bar, int code, int position) {
    const bool control = bar == SB_CTL;
    const bool vertical = control ? (GetWindowLongA(window, GWL_STYLE) & SBS_VERT) != 0 : bar == SB_VERT;
    const HWND receiver = control ? GetParent(window) : window;
    if (receiver != nullptr)
        SendMessageA(receiver, vertical ? WM_VSCROLL : WM_HSCROLL, MAKEWPARAM(code, position),
                     control ? reinterpret_cast<LPARAM>(window) : 0);
}

void trackScrollBar(HWND window, int bar, POINT point) { ScrollTracker(window, bar).run(point); }

} // namespace vndk::win32
