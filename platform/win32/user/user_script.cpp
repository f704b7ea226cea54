#include "win32/user_script.h"

#include "user/desktop_state.h"
#include "user/dialog.h"
#include "user/frame_geometry.h"
#include "user/menu.h"
#include "user/menu_bar.h"
#include "user/user_events.h"
#include "win32/button.h"
#include "win32/codepage.h"
#include "win32/desktop.h"
#include "win32/input.h"
#include "win32/queue.h"

#include <algorithm>
#include <deque>
#include <map>
#include <utility>

namespace vndk::win32 {

namespace {

constexpr UINT period = 10; // milliseconds between looks at the next step
constexpr std::uint32_t firstPatience = 2000;
// After a failure: how often we try to get the program out of whatever it waits in.
constexpr int mostRescues = 40;

/// What came of trying a step: done, or the reason why not yet.
struct Attempt {
    bool done = true;
    std::string reason;

    static Attempt notYet(std::string why) { return {false, std::move(why)}; }
};

using Try = std::function<Attempt()>;

struct Step {
    std::string name;
    Try attempt;
};

std::string quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

std::string className(HWND window) {
    const Window* found = findWindow(window);
    return found != nullptr ? found->windowClass->name : std::string();
}

HWND topLevelWindow(const std::string& titleOrClass) {
    if (titleOrClass.empty())
        return GetActiveWindow();
    for (HWND window = GetTopWindow(nullptr); window != nullptr; window = GetWindow(window, GW_HWNDNEXT)) {
        if (IsWindowVisible(window) == FALSE)
            continue;
        const bool matches = titleOrClass.front() == '#' ? compareNoCase(className(window), titleOrClass) == 0
                                                         : findWindow(window)->text == titleOrClass;
        if (matches)
            return window;
    }
    return nullptr;
}

// Depth first; a visible one goes before all hidden ones.
HWND findControl(const Window& parent, int id, bool visibleOnly) {
    for (const Window* child : parent.children) {
        if (visibleOnly && (child->style & WS_VISIBLE) == 0)
            continue;
        if (isChild(*child) && static_cast<int>(child->id) == id)
            return child->handle;
        if (const HWND found = findControl(*child, id, visibleOnly))
            return found;
    }
    return nullptr;
}

HWND findControl(HWND window, int id) {
    if (id == 0)
        return window;
    const Window* parent = findWindow(window);
    if (parent == nullptr)
        return nullptr;
    const HWND visible = findControl(*parent, id, true);
    return visible != nullptr ? visible : findControl(*parent, id, false);
}

bool enabledWithParents(HWND window) {
    for (const Window* found = findWindow(window); found != nullptr; found = found->parent)
        if ((found->style & WS_DISABLED) != 0)
            return false;
    return true;
}

// Labels let clicks through to what they stand on.
bool reachable(HWND control, POINT point) {
    const HWND there = WindowFromPoint(point);
    return there == control || IsChild(control, there) != FALSE || there == GetAncestor(control, GA_PARENT);
}

std::string plainLabel(const std::string& itemText) {
    std::string label;
    const std::string marked = splitMenuText(itemText).label;
    for (std::size_t i = 0; i < marked.size(); ++i) {
        if (marked[i] == '&' && ++i == marked.size())
            break;
        label += marked[i];
    }
    return label;
}

struct FoundItem {
    HMENU menu = nullptr;
    UINT position = 0;
};

FoundItem itemWithText(HMENU menu, const std::string& text) {
    MenuState* state = menuState();
    const Menu* found = state != nullptr ? state->menus.find(menu) : nullptr;
    for (std::size_t i = 0; found != nullptr && i < found->items.size(); ++i)
        if (!found->items[i].separator() && plainLabel(found->items[i].text) == text)
            return {menu, static_cast<UINT>(i)};
    return {};
}

// In the popups that are open, the newest first; else in the bar.
FoundItem shownItem(HWND window, const std::string& text) {
    bool popups = false;
    for (HWND popup = GetTopWindow(nullptr); popup != nullptr; popup = GetWindow(popup, GW_HWNDNEXT)) {
        if (className(popup) != "#32768" || IsWindowVisible(popup) == FALSE)
            continue;
        popups = true;
        if (const FoundItem found = itemWithText(reinterpret_cast<HMENU>(send(popup, MN_GETHMENU)), text); found.menu)
            return found;
    }
    return popups || window == nullptr ? FoundItem{} : itemWithText(GetMenu(window), text);
}

POINT middleOf(const RECT& rect) { return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2}; }

} // namespace

struct UserScript::Impl : std::enable_shared_from_this<UserScript::Impl> {
    explicit Impl(screen::MemoryScreen& usedScreen) : screen(usedScreen), events(usedScreen) {}

    screen::MemoryScreen& screen;
    UserEvents events;
    Desktop* desktop = nullptr;
    UINT_PTR timer = 0;
    std::deque<Step> steps;
    std::string failure;
    int rescues = 0;
    // As of the step that runs.
    std::string windowText;
    HWND windowHandle = nullptr;
    std::uint32_t patience = firstPatience;
    std::optional<std::uint32_t> waitingSince;

    // ---- Running ---------------------------------------------------------------------------------------------------

    static std::map<std::pair<Desktop*, UINT_PTR>, std::weak_ptr<Impl>>& running() {
        static std::map<std::pair<Desktop*, UINT_PTR>, std::weak_ptr<Impl>> scripts;
        return scripts;
    }

    static void CALLBACK tick(HWND /*window*/, UINT /*message*/, UINT_PTR id, DWORD /*time*/) {
        const auto found = running().find({Desktop::current(), id});
        const auto script = found != running().end() ? found->second.lock() : nullptr;
        if (script != nullptr)
            script->advance();
    }

    void start() {
        if (timer != 0 || Desktop::current() == nullptr)
            return;
        desktop = Desktop::current();
        timer = SetTimer(nullptr, 0, period, &tick);
        running()[{desktop, timer}] = weak_from_this();
    }

    void stop() {
        if (timer == 0)
            return;
        running().erase({desktop, timer});
        if (Desktop::current() == desktop)
            KillTimer(nullptr, timer);
        timer = 0;
    }

    [[nodiscard]] bool finished() const { return steps.empty() && (failure.empty() || rescues >= mostRescues); }

    void advance() {
        if (!failure.empty())
            rescue();
        else if (!steps.empty())
            tryNext();
        if (finished())
            stop();
    }

    // The step is taken out before it runs: its action may run a loop in which the next steps come up.
    void tryNext() {
        const Step step = std::move(steps.front());
        steps.pop_front();
        if (!waitingSince)
            waitingSince = screen.clock();
        const std::uint32_t since = *waitingSince;
        waitingSince.reset();
        const Attempt attempt = step.attempt();
        if (attempt.done || !failure.empty())
            return;
        if (screen.clock() - since >= patience) {
            fail(step.name + ": " + attempt.reason);
            return;
        }
        waitingSince = since;
        steps.push_front(step);
    }

    void fail(std::string message) {
        failure = std::move(message);
        steps.clear();
        rescues = 0;
    }

    // One push out of whatever loop the program waits in, the innermost first.
    void rescue() {
        ++rescues;
        if (menuTracked()) {
            EndMenu();
            return;
        }
        for (HWND window = GetTopWindow(nullptr); window != nullptr; window = GetWindow(window, GW_HWNDNEXT)) {
            const auto info = dialogInfo(window);
            if (info == nullptr || info->ended || IsWindowEnabled(window) == FALSE)
                continue;
            const HWND owner = GetWindow(window, GW_OWNER);
            if (info->modal) {
                EndDialog(window, IDCANCEL);
                return;
            }
            // A dialog that something else waits for has disabled its owner.
            if (IsWindowVisible(window) != FALSE && owner != nullptr && IsWindowEnabled(owner) == FALSE) {
                PostMessageA(window, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
                return;
            }
        }
        events.pressKey(VK_ESCAPE, {});
    }

    // ---- Steps -----------------------------------------------------------------------------------------------------

    void add(std::string name, Try attempt) {
        if (!failure.empty())
            return;
        steps.push_back({std::move(name), std::move(attempt)});
        start();
    }

    // In the order given, before all other steps.
    void addNext(std::initializer_list<std::function<void()>> actions) {
        for (auto action = std::rbegin(actions); action != std::rend(actions); ++action)
            steps.push_front({"", [run = *action] {
                                  run();
                                  return Attempt{};
                              }});
    }

    // Bit by bit, so that other timers that come due meanwhile are not overtaken by the next step.
    void letPass(std::uint32_t milliseconds) {
        const std::uint32_t now = std::min(milliseconds, std::uint32_t{period});
        screen.advance(now);
        if (const std::uint32_t rest = milliseconds - now; rest > 0)
            addNext({[this, rest] { letPass(rest); }});
    }

    [[nodiscard]] HWND window() const {
        if (windowHandle != nullptr)
            return IsWindow(windowHandle) != FALSE ? windowHandle : nullptr;
        return topLevelWindow(windowText);
    }

    [[nodiscard]] std::string windowName() const {
        return windowText.empty() ? "the active window" : "the window " + quoted(windowText);
    }

    /// Where on the screen a point of a control is, or why it can't be pointed at.
    Attempt locate(int id, std::optional<POINT> point, POINT& found) const {
        const HWND top = window();
        if (top == nullptr)
            return Attempt::notYet(windowName() + " isn't there");
        const HWND control = findControl(top, id);
        const std::string name = id == 0 ? windowName() : "control " + std::to_string(id) + " of " + windowName();
        if (control == nullptr)
            return Attempt::notYet(name + " isn't there");
        if (IsWindowVisible(control) == FALSE)
            return Attempt::notYet(name + " is hidden");
        if (!enabledWithParents(control))
            return Attempt::notYet(name + " is disabled");
        RECT client{};
        GetClientRect(control, &client);
        found = point.value_or(middleOf(client));
        ClientToScreen(control, &found);
        if (!reachable(control, found))
            return Attempt::notYet(name + " is covered, or the point lies outside of it");
        return {};
    }

    void addAtPoint(std::string name, int id, std::optional<POINT> point, std::function<void(POINT)> action) {
        add(std::move(name), [this, id, point, act = std::move(action)] {
            POINT at{};
            Attempt located = locate(id, point, at);
            if (located.done)
                act(at);
            return located;
        });
    }

    Attempt pickItem(const std::string& text) {
        const HWND top = window();
        const FoundItem found = shownItem(top, text);
        if (found.menu == nullptr)
            return Attempt::notYet("no menu that is open has such an item");
        if ((GetMenuState(found.menu, found.position, MF_BYPOSITION) & (MF_GRAYED | MF_DISABLED)) != 0 &&
            GetSubMenu(found.menu, static_cast<int>(found.position)) == nullptr)
            return Attempt::notYet("the item is disabled");
        RECT rect{};
        if (GetMenuItemRect(top, found.menu, found.position, &rect) == FALSE)
            return Attempt::notYet("the item isn't shown");
        const POINT at = middleOf(rect);
        events.moveTo(at, {});
        events.click(screen::MouseButton::left, {});
        return {};
    }
};

UserScript::UserScript(screen::MemoryScreen& screen) : impl_(std::make_shared<Impl>(screen)) {}
UserScript::~UserScript() { impl_->stop(); }

UserScript& UserScript::in(std::string_view titleOrClass) {
    impl_->add("choose a window", [impl = impl_.get(), text = std::string(titleOrClass)] {
        impl->windowText = text;
        impl->windowHandle = nullptr;
        return Attempt{};
    });
    return *this;
}

UserScript& UserScript::inWindow(HWND window) {
    impl_->add("choose a window", [impl = impl_.get(), window] {
        impl->windowText = "that was given";
        impl->windowHandle = window;
        return Attempt{};
    });
    return *this;
}

UserScript& UserScript::patience(std::uint32_t milliseconds) {
    impl_->add("be patient", [impl = impl_.get(), milliseconds] {
        impl->patience = milliseconds;
        return Attempt{};
    });
    return *this;
}

UserScript& UserScript::click(int control) {
    impl_->addAtPoint("click on " + std::to_string(control), control, std::nullopt, [impl = impl_.get()](POINT at) {
        impl->events.moveTo(at, {});
        impl->events.click(screen::MouseButton::left, {});
    });
    return *this;
}

UserScript& UserScript::clickAt(int control, POINT point, UserKeys keys) {
    impl_->addAtPoint("click on " + std::to_string(control), control, point, [impl = impl_.get(), keys](POINT at) {
        impl->events.holdKeys(keys);
        impl->events.moveTo(at, keys);
        impl->events.click(screen::MouseButton::left, keys);
        impl->events.releaseKeys(keys);
    });
    return *this;
}

UserScript& UserScript::doubleClick(int control) {
    impl_->addAtPoint("double click on " + std::to_string(control), control, std::nullopt,
                      [impl = impl_.get()](POINT at) { impl->events.doubleClick(at); });
    return *this;
}

UserScript& UserScript::doubleClickAt(int control, POINT point) {
    impl_->addAtPoint("double click on " + std::to_string(control), control, point,
                      [impl = impl_.get()](POINT at) { impl->events.doubleClick(at); });
    return *this;
}

UserScript& UserScript::rightClick(int control) {
    impl_->addAtPoint("right click on " + std::to_string(control), control, std::nullopt,
                      [impl = impl_.get()](POINT at) {
                          impl->events.moveTo(at, {});
                          impl->events.click(screen::MouseButton::right, {});
                      });
    return *this;
}

UserScript& UserScript::rightClickAt(int control, POINT point) {
    impl_->addAtPoint("right click on " + std::to_string(control), control, point, [impl = impl_.get()](POINT at) {
        impl->events.moveTo(at, {});
        impl->events.click(screen::MouseButton::right, {});
    });
    return *this;
}

UserScript& UserScript::drag(int control, POINT from, POINT to, UserKeys keys) {
    impl_->addAtPoint("drag on " + std::to_string(control), control, from,
                      [impl = impl_.get(), from, to, keys](POINT at) {
                          const POINT end{at.x + to.x - from.x, at.y + to.y - from.y};
                          const POINT middle{(at.x + end.x) / 2, (at.y + end.y) / 2};
                          impl->events.holdKeys(keys);
                          impl->events.moveTo(at, keys);
                          impl->events.press(screen::MouseButton::left, keys);
                          // Each move by itself, since moves that wait together become one.
                          impl->addNext({[impl, middle, keys] { impl->events.moveTo(middle, keys); },
                                         [impl, end, keys] { impl->events.moveTo(end, keys); },
                                         [impl, keys] {
                                             impl->events.release(screen::MouseButton::left, keys);
                                             impl->events.releaseKeys(keys);
                                         }});
                      });
    return *this;
}

UserScript& UserScript::moveTo(int control, POINT point) {
    impl_->addAtPoint("move to " + std::to_string(control), control, point,
                      [impl = impl_.get()](POINT at) { impl->events.moveTo(at, {}); });
    return *this;
}

UserScript& UserScript::wheel(int control, int notches) {
    impl_->addAtPoint("turn the wheel over " + std::to_string(control), control, std::nullopt,
                      [impl = impl_.get(), notches](POINT at) {
                          impl->events.moveTo(at, {});
                          impl->events.turnWheel(notches * WHEEL_DELTA);
                      });
    return *this;
}

UserScript& UserScript::type(std::string_view text) {
    impl_->add("type " + quoted(text), [impl = impl_.get(), typed = std::string(text)] {
        for (const char character : typed)
            impl->events.typeCharacter(character);
        return Attempt{};
    });
    return *this;
}

UserScript& UserScript::press(int key, UserKeys keys) {
    impl_->add("press key " + std::to_string(key), [impl = impl_.get(), key, keys] {
        impl->events.pressKey(key, keys);
        return Attempt{};
    });
    return *this;
}

UserScript& UserScript::pick(std::initializer_list<std::string_view> texts) {
    for (const std::string_view text : texts)
        impl_->add("pick " + quoted(text),
                   [impl = impl_.get(), wanted = std::string(text)] { return impl->pickItem(wanted); });
    return *this;
}

UserScript& UserScript::waitForWindow() {
    impl_->add("wait for a window", [impl = impl_.get()] {
        return impl->window() != nullptr ? Attempt{} : Attempt::notYet(impl->windowName() + " isn't there");
    });
    return *this;
}

UserScript& UserScript::waitUntilGone() {
    impl_->add("wait for the end of a window", [impl = impl_.get()] {
        return impl->window() == nullptr ? Attempt{} : Attempt::notYet(impl->windowName() + " is still there");
    });
    return *this;
}

UserScript& UserScript::pause(std::uint32_t milliseconds) {
    impl_->add("pause", [impl = impl_.get(), milliseconds] {
        impl->letPass(milliseconds);
        return Attempt{};
    });
    return *this;
}

UserScript& UserScript::call(std::function<void()> action) {
    impl_->add("call", [run = std::move(action)] {
        run();
        return Attempt{};
    });
    return *this;
}

UserScript& UserScript::expect(std::string_view what, std::function<bool()> condition) {
    impl_->add("expect " + quoted(what),
               [holds = std::move(condition)] { return holds() ? Attempt{} : Attempt::notYet("it didn't come true"); });
    return *this;
}

bool UserScript::finish() {
    const auto impl = impl_;
    while (!done()) {
        MSG message{};
        const BOOL got = GetMessageA(&message, nullptr, 0, 0);
        if (got <= 0) {
            if (got == 0)
                PostQuitMessage(static_cast<int>(message.wParam));
            if (!impl->steps.empty())
                impl->fail(impl->steps.front().name + ": the program ended before");
            impl->rescues = mostRescues;
            impl->stop();
            break;
        }
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    if (Desktop* desktop = Desktop::current())
        desktop->settle();
    return impl->failure.empty();
}

bool UserScript::done() const { return impl_->steps.empty(); }
const std::string& UserScript::failure() const { return impl_->failure; }

} // namespace vndk::win32
