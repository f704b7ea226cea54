// Moving and sizing by mouse or keys. The window follows at once.
#include "user/activation.h"
#include "user/default_procedure.h"
#include "user/desktop_state.h"
#include "user/frame_geometry.h"
#include "user/hooks.h"
#include "user/input_queue.h"
#include "user/window_position.h"
#include "win32/input.h"
#include "win32/metrics.h"
#include "win32/queue.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr int keyStep = 8;

/// One drag, from the button's going down to its going up.
class Drag {
public:
    Drag(HWND window, bool sizing, UINT edge, POINT start)
        : window_(window), sizing_(sizing), edge_(edge), start_(start) {
        const Window* found = findWindow(window);
        first_ = original_ = current_ = found->windowRect;
    }

    void run(bool byKeys);

private:
    [[nodiscard]] bool movesLeft() const {
        return edge_ == WMSZ_LEFT || edge_ == WMSZ_TOPLEFT || edge_ == WMSZ_BOTTOMLEFT;
    }
    [[nodiscard]] bool movesRight() const {
        return edge_ == WMSZ_RIGHT || edge_ == WMSZ_TOPRIGHT || edge_ == WMSZ_BOTTOMRIGHT;
    }
    [[nodiscard]] bool movesTop() const { return edge_ == WMSZ_TOP || edge_ == WMSZ_TOPLEFT || edge_ == WMSZ_TOPRIGHT; }
    [[nodiscard]] bool movesBottom() const {
        return edge_ == WMSZ_BOTTOM || edge_ == WMSZ_BOTTOMLEFT || edge_ == WMSZ_BOTTOMRIGHT;
    }

    [[nodiscard]] RECT limited(RECT rect) const;
    void follow(POINT point);
    void place(RECT wanted);
    /// False when the drag is over.
    bool handle(const MSG& message);
    bool handleKey(WPARAM key);
    void stepByKey(int dx, int dy);
    void loop();

    HWND window_;
    bool sizing_;
    UINT edge_; // WMSZ_*, 0 as long as a key hasn't chosen one
    POINT start_;
    RECT first_{};    // where the drag began
    RECT original_{}; // what the pointer's way is added to
    RECT current_{};
    MINMAXINFO limits_{};
    bool byKeys_ = false;
    bool cancelled_ = false;
};

/// Within the least and the largest size; the edge that is held gives way.
RECT Drag::limited(RECT rect) const {
    const int width = std::max<int>(std::min<int>(widthOf(rect), limits_.ptMaxTrackSize.x), limits_.ptMinTrackSize.x);
    const int height = std::max<int>(std::min<int>(heightOf(rect), limits_.ptMaxTrackSize.y), limits_.ptMinTrackSize.y);
    if (movesLeft())
        rect.left = rect.right - width;
    else
        rect.right = rect.left + width;
    if (movesTop())
        rect.top = rect.bottom - height;
    else
        rect.bottom = rect.top + height;
    return rect;
}

void Drag::follow(POINT point) {
    const int dx = point.x - start_.x;
    const int dy = point.y - start_.y;
    if (dx == 0 && dy == 0)
        return;
    RECT wanted = original_;
    if (!sizing_) {
        wanted = shifted(wanted, dx, dy);
    } else {
        wanted.left += movesLeft() ? dx : 0;
        wanted.right += movesRight() ? dx : 0;
        wanted.top += movesTop() ? dy : 0;
        wanted.bottom += movesBottom() ? dy : 0;
        wanted = limited(wanted);
    }
    place(wanted);
}

/// Asks the window (WM_MOVING, WM_SIZING) and puts it there.
void Drag::place(RECT wanted) {
    if (sameRect(wanted, current_))
        return;
    send(window_, sizing_ ? WM_SIZING : WM_MOVING, sizing_ ? edge_ : 0, reinterpret_cast<LPARAM>(&wanted));
    const Window* window = findWindow(window_);
    if (window == nullptr)
        return;
    const RECT local = fromScreen(*window, wanted);
    setWindowPos(window_, nullptr, local.left, local.top, widthOf(local), heightOf(local),
                 SWP_NOACTIVATE | SWP_NOZORDER | (sizing_ ? 0 : SWP_NOSIZE));
    if (const Window* placed = findWindow(window_); placed != nullptr)
        current_ = placed->windowRect;
}

void Drag::stepByKey(int dx, int dy) {
    if (sizing_ && edge_ == 0) {
        edge_ = static_cast<UINT>(dx < 0 ? WMSZ_LEFT : dx > 0 ? WMSZ_RIGHT : dy < 0 ? WMSZ_TOP : WMSZ_BOTTOM);
        return;
    }
    original_ = current_;
    follow({start_.x + dx, start_.y + dy});
}

bool Drag::handleKey(WPARAM key) {
    switch (key) {
    case VK_RETURN:
        return false;
    case VK_ESCAPE:
        cancelled_ = true;
        return false;
    case VK_LEFT:
        stepByKey(-keyStep, 0);
        return true;
    case VK_RIGHT:
        stepByKey(keyStep, 0);
        return true;
    case VK_UP:
        stepByKey(0, -keyStep);
        return true;
    case VK_DOWN:
        stepByKey(0, keyStep);
        return true;
    default:
        return true;
    }
}

bool Drag::handle(const MSG& message) {
    switch (message.message) {
    case WM_MOUSEMOVE:
        if (!byKeys_)
            follow(message.pt);
        return true;
    case WM_LBUTTONUP:
        if (!byKeys_)
            follow(message.pt);
        return false;
    case WM_LBUTTONDOWN:
        return !byKeys_;
    case WM_KEYDOWN:
        return handleKey(message.wParam);
    case WM_KEYUP:
    case WM_CHAR:
        return true;
    default:
        DispatchMessageA(&message);
        return true;
    }
}

void Drag::loop() {
    MSG message{};
    while (findWindow(window_) != nullptr && GetCapture() == window_ && nextModalMessage(message, MSGF_MOVE))
        if (!handle(message))
            break;
}

void Drag::run(bool byKeys) {
    byKeys_ = byKeys;
    limits_ = askMinMax(window_);
    SetCapture(window_);
    send(window_, WM_ENTERSIZEMOVE);
    loop();
    if (GetCapture() == window_)
        ReleaseCapture();
    if (findWindow(window_) == nullptr)
        return;
    send(window_, WM_EXITSIZEMOVE);
    if (cancelled_) {
        // The window goes back to where it came from, whatever keys have done in between.
        const Window* window = findWindow(window_);
        if (window == nullptr)
            return;
        const RECT local = fromScreen(*window, first_);
        setWindowPos(window_, nullptr, local.left, local.top, widthOf(local), heightOf(local),
                     SWP_NOACTIVATE | SWP_NOZORDER);
    }
}

} // namespace

void moveOrSize(HWND handle, UINT command, POINT point) {
    const Window* window = findWindow(handle);
    const bool sizing = (command & 0xFFF0) == SC_SIZE;
    const UINT part = command & 0x000F;
    if (window->showState == ShowState::maximized || IsWindowVisible(handle) == FALSE ||
        (sizing && ((window->style & WS_THICKFRAME) == 0 || window->showState == ShowState::minimized)))
        return;
    RECT place = window->windowRect;
    if (callHooks(WH_CBT, HCBT_MOVESIZE, reinterpret_cast<WPARAM>(handle), reinterpret_cast<LPARAM>(&place)) != 0 ||
        findWindow(handle) == nullptr)
        return;
    const bool byKeys = part == 0;
    Drag(handle, sizing, sizing ? part : 0, point).run(byKeys);
}

} // namespace vndk::win32
