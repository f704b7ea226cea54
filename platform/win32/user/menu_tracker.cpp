#include "user/menu_tracker.h"

#include "user/desktop_state.h"
#include "user/input_queue.h"
#include "user/menu_popup.h"
#include "win32/icons.h"
#include "win32/input.h"

namespace vndk::win32 {

namespace {

bool isMouseMessage(UINT message) {
    return (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
           (message >= WM_NCMOUSEMOVE && message <= WM_NCMBUTTONDBLCLK);
}

bool isPress(UINT message) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
    case WM_NCLBUTTONDOWN:
    case WM_NCLBUTTONDBLCLK:
    case WM_NCRBUTTONDOWN:
    case WM_NCRBUTTONDBLCLK:
    case WM_NCMBUTTONDOWN:
    case WM_NCMBUTTONDBLCLK:
        return true;
    default:
        return false;
    }
}

} // namespace

MenuTracker::MenuTracker(HMENU menu, MenuKind kind, HWND owner, UINT flags)
    : top_(menu), kind_(kind), owner_(owner), flags_(flags) {
    MenuState* state = menuState();
    former_ = state->tracker;
    state->tracker = this;
}

MenuTracker::~MenuTracker() {
    finish();
    if (MenuState* state = menuState(); state != nullptr && state->tracker == this)
        state->tracker = former_;
}

void MenuTracker::notify(UINT message, WPARAM wParam, LPARAM lParam) const {
    if (notifies() && IsWindow(owner_) != FALSE)
        send(owner_, message, wParam, lParam);
}

bool MenuTracker::begin() {
    begun_ = true;
    notify(WM_ENTERMENULOOP, kind_ == MenuKind::popup ? TRUE : FALSE, 0);
    SetCursor(LoadCursorA(nullptr, IDC_ARROW));
    notify(WM_INITMENU, reinterpret_cast<WPARAM>(top_), 0);
    if (ending_ || IsWindow(owner_) == FALSE || findMenu(top_) == nullptr)
        return false;
    SetCapture(owner_);
    captured_ = true;
    if (kind_ == MenuKind::bar)
        levels_.push_back({top_, nullptr});
    return !ending_ && IsWindow(owner_) != FALSE && GetCapture() == owner_;
}

bool MenuTracker::alive() const {
    if (ending_ || IsWindow(owner_) == FALSE || findMenu(top_) == nullptr || GetCapture() != owner_)
        return false;
    for (const Level& level : levels_)
        if (menuAt(&level - levels_.data()) == nullptr || (level.window != nullptr && IsWindow(level.window) == FALSE))
            return false;
    return !levels_.empty();
}

// A press outside of all menus ends them and then goes its own way, so it has to stay in the queue.
bool MenuTracker::outsidePress(const MSG& message) const {
    return isPress(message.message) && !hitTest(message.pt).inside;
}

bool MenuTracker::tellIdle() {
    if (idleTold_)
        return false;
    idleTold_ = true;
    const HWND window = levels_.back().window;
    notify(WM_ENTERIDLE, static_cast<WPARAM>(MSGF_MENU), reinterpret_cast<LPARAM>(window));
    return true;
}

MenuOutcome MenuTracker::run() {
    while (alive()) {
        MSG message{};
        if (PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) == FALSE) {
            if (!tellIdle() && WaitMessage() == FALSE)
                break;
            continue;
        }
        if (outsidePress(message) || !nextModalMessage(message, MSGF_MENU))
            break;
        idleTold_ = false;
        handle(message);
    }
    finish();
    return outcome_;
}

void MenuTracker::handle(MSG& message) {
    if (message.message == WM_TIMER && message.hwnd == nullptr && message.wParam == timer_ && timer_ != 0) {
        delayPassed();
        return;
    }
    if (isMouseMessage(message.message) && handleMouse(message))
        return;
    if (message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST && handleKey(message))
        return;
    TranslateMessage(&message);
    // Characters of keys come back to us; the keys themselves are nobody else's.
    if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST)
        DispatchMessageA(&message);
}

void MenuTracker::end() {
    ending_ = true;
    // The loop may be waiting.
    if (IsWindow(owner_) != FALSE)
        PostMessageA(owner_, WM_NULL, 0, 0);
}

void MenuTracker::finish() {
    if (!begun_)
        return;
    begun_ = false;
    ending_ = true;
    cancelDelay();
    while (!levels_.empty()) {
        const std::size_t last = deepest();
        if (levels_[last].window != nullptr) {
            closeBelow(last);
            const HMENU menu = levels_[last].menu;
            levels_.pop_back();
            hidePopup(menu);
            notify(WM_UNINITMENUPOPUP, reinterpret_cast<WPARAM>(menu), 0);
            continue;
        }
        if (Menu* bar = menuAt(last)) {
            const int selected = bar->selected;
            bar->selected = noItem;
            repaintItem(last, selected);
        }
        levels_.pop_back();
    }
    notify(WM_MENUSELECT, MAKEWPARAM(0, 0xFFFF), 0);
    if (captured_ && GetCapture() == owner_)
        ReleaseCapture();
    notify(WM_EXITMENULOOP, kind_ == MenuKind::popup ? TRUE : FALSE, 0);
    if (IsWindow(owner_) == FALSE)
        outcome_ = {};
}

} // namespace vndk::win32

BOOL EndMenu() {
    const vndk::win32::MenuState* state = vndk::win32::menuState();
    if (state == nullptr || state->tracker == nullptr)
        return FALSE;
    state->tracker->end();
    return TRUE;
}
