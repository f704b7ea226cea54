#include "win32/user_script.h"

#include "user/desktop_state.h"
#include "user/dialog.h"
#include "user/menu.h"
#include "user/menu_bar.h"
#include "user/user_events.h"
#include "user/user_search.h"
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

    [[nodiscard]] std::string controlName(int id) const {
        return id == 0 ? windowName() : "control " + std::to_string(id) + " of " + windowName();
    }

    [[nodiscard]] UserPlace placeOf(int id, std::optional<POINT> point) const {
        const HWND top = window();
        if (top == nullptr)
            return {.trouble = windowName() + " isn't there"};
        const HWND control = findControl(top, id);
        if (control == nullptr)
            return {.trouble = controlName(id) + " isn't there"};
        RECT client{};
        GetClientRect(control, &client);
        return {.window = control, .point = point.value_or(middleOf(client))};
    }

    /// Where on the screen a place is, or why it can't be pointed at.
    static Attempt locate(const UserPlace& place, const std::string& name, POINT& found) {
        if (IsWindow(place.window) == FALSE)
            return Attempt::notYet(place.trouble);
        if (IsWindowVisible(place.window) == FALSE)
            return Attempt::notYet(name + " is hidden");
        if (!enabledWithParents(place.window))
            return Attempt::notYet(name + " is disabled");
        found = place.point;
        ClientToScreen(place.window, &found);
        if (!reachable(place.window, found))
            return Attempt::notYet(name + " is covered, or the point lies outside of it");
        return {};
    }

    void addAtPlace(std::string step, std::string name, UserPlaceFinder find, std::function<void(POINT)> action) {
        add(std::move(step), [place = std::move(find), named = std::move(name), act = std::move(action)] {
            POINT at{};
            Attempt located = locate(place(), named, at);
            if (located.done)
                act(at);
            return located;
        });
    }

    void addAtPoint(std::string step, int id, std::optional<POINT> point, std::function<void(POINT)> action) {
        add(std::move(step), [this, id, point, act = std::move(action)] {
            POINT at{};
            Attempt located = locate(placeOf(id, point), controlName(id), at);
            if (located.done)
                act(at);
            return located;
        });
    }

    void clickWith(POINT at, UserClick how) {
        const auto button = how.right ? screen::MouseButton::right : screen::MouseButton::left;
        events.holdKeys(how.keys);
        events.moveTo(at, how.keys);
        events.click(button, how.keys);
        if (how.twice)
            events.click(button, how.keys);
        events.releaseKeys(how.keys);
    }

    void dragWith(POINT at, POINT way, UserKeys keys) {
        const POINT end{at.x + way.x, at.y + way.y};
        const POINT middle{(at.x + end.x) / 2, (at.y + end.y) / 2};
        events.holdKeys(keys);
        events.moveTo(at, keys);
        events.press(screen::MouseButton::left, keys);
        // Each move by itself, since moves that wait together become one.
        addNext({[this, middle, keys] { events.moveTo(middle, keys); }, [this, end, keys] { events.moveTo(end, keys); },
                 [this, keys] {
                     events.release(screen::MouseButton::left, keys);
                     events.releaseKeys(keys);
                 }});
    }

    void turnWheel(POINT at, int notches) {
        events.moveTo(at, {});
        events.turnWheel(notches * WHEEL_DELTA);
    }

    Attempt pickItem(const std::string& text) {
        const HWND top = window();
        const FoundMenuItem found = shownItem(top, text);
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
    impl_->addAtPoint("click on " + std::to_string(control), control, std::nullopt,
                      [impl = impl_.get()](POINT at) { impl->clickWith(at, {}); });
    return *this;
}

UserScript& UserScript::clickAt(int control, POINT point, UserKeys keys) {
    impl_->addAtPoint("click on " + std::to_string(control), control, point,
                      [impl = impl_.get(), keys](POINT at) { impl->clickWith(at, {.keys = keys}); });
    return *this;
}

UserScript& UserScript::doubleClick(int control) {
    impl_->addAtPoint("double click on " + std::to_string(control), control, std::nullopt,
                      [impl = impl_.get()](POINT at) { impl->clickWith(at, {.twice = true}); });
    return *this;
}

UserScript& UserScript::doubleClickAt(int control, POINT point) {
    impl_->addAtPoint("double click on " + std::to_string(control), control, point,
                      [impl = impl_.get()](POINT at) { impl->clickWith(at, {.twice = true}); });
    return *this;
}

UserScript& UserScript::rightClick(int control) {
    impl_->addAtPoint("right click on " + std::to_string(control), control, std::nullopt,
                      [impl = impl_.get()](POINT at) { impl->clickWith(at, {.right = true}); });
    return *this;
}

UserScript& UserScript::rightClickAt(int control, POINT point) {
    impl_->addAtPoint("right click on " + std::to_string(control), control, point,
                      [impl = impl_.get()](POINT at) { impl->clickWith(at, {.right = true}); });
    return *this;
}

UserScript& UserScript::drag(int control, POINT from, POINT to, UserKeys keys) {
    impl_->addAtPoint("drag on " + std::to_string(control), control, from,
                      [impl = impl_.get(), way = POINT{to.x - from.x, to.y - from.y}, keys](POINT at) {
                          impl->dragWith(at, way, keys);
                      });
    return *this;
}

UserScript& UserScript::clickPlace(std::string_view name, UserPlaceFinder find, UserClick how) {
    impl_->addAtPlace("click on " + std::string(name), std::string(name), std::move(find),
                      [impl = impl_.get(), how](POINT at) { impl->clickWith(at, how); });
    return *this;
}

UserScript& UserScript::dragPlace(std::string_view name, UserPlaceFinder find, POINT way, UserKeys keys) {
    impl_->addAtPlace("drag on " + std::string(name), std::string(name), std::move(find),
                      [impl = impl_.get(), way, keys](POINT at) { impl->dragWith(at, way, keys); });
    return *this;
}

UserScript& UserScript::wheelPlace(std::string_view name, UserPlaceFinder find, int notches) {
    impl_->addAtPlace("turn the wheel over " + std::string(name), std::string(name), std::move(find),
                      [impl = impl_.get(), notches](POINT at) { impl->turnWheel(at, notches); });
    return *this;
}

UserScript& UserScript::moveTo(int control, POINT point) {
    impl_->addAtPoint("move to " + std::to_string(control), control, point,
                      [impl = impl_.get()](POINT at) { impl->events.moveTo(at, {}); });
    return *this;
}

UserScript& UserScript::wheel(int control, int notches) {
    impl_->addAtPoint("turn the wheel over " + std::to_string(control), control, std::nullopt,
                      [impl = impl_.get(), notches](POINT at) { impl->turnWheel(at, notches); });
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
