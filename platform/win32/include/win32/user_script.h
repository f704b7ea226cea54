// A user made of steps: finds windows and controls, clicks, drags, types and picks menu items, by events on the screen
// and nothing else. Steps run while the program waits for input, in whatever loop it waits: its main loop, a modal
// dialog, a menu, a prompt.
//
//     UserScript user(screen);
//     user.in("Edit Attribute").type("42").click(IDOK);
//     DialogBoxParam(...);                 // the steps run inside
//     if (!user.finish()) report(user.failure());
//
// A step waits until it can be done: the window is there, the control is visible, enabled and not covered. What can't
// be done within the patience ends the script: the rest is dropped, open menus and modal dialogs are left with
// Escape-like means, so that no loop waits for ever, and `failure` names the step.
#pragma once

#include "screen/memory.h"
#include "win32/types.h"

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

namespace vndk::win32 {

struct UserKeys {
    bool shift = false;
    bool control = false;
    bool alt = false;
};

struct UserClick {
    bool right = false;
    bool twice = false;
    UserKeys keys{};
};

/// A place to point at, in client coordinates of a window; without a window what is in the way.
struct UserPlace {
    HWND window = nullptr;
    POINT point{0, 0};
    std::string trouble{};
};
using UserPlaceFinder = std::function<UserPlace()>;

class UserScript {
public:
    /// Works on the current desktop, which has to stand on this screen and outlive the script.
    explicit UserScript(screen::MemoryScreen& screen);
    ~UserScript();
    UserScript(const UserScript&) = delete;
    UserScript& operator=(const UserScript&) = delete;

    /// The window that the following steps mean, found when each of them runs: the topmost visible top-level window
    /// with this title, or of the class ("#32770") when the text begins with '#'. Empty: the active one.
    UserScript& in(std::string_view titleOrClass);
    UserScript& inWindow(HWND window);

    /// Milliseconds of the screen's clock that a step waits for what it needs; 2000 at first.
    UserScript& patience(std::uint32_t milliseconds);

    // Controls are named by id, searched depth first below the window; 0 is the window itself. Points are client
    // coordinates of the control; without one its middle is meant.
    UserScript& click(int control);
    UserScript& clickAt(int control, POINT point, UserKeys keys = {});
    UserScript& doubleClick(int control);
    UserScript& doubleClickAt(int control, POINT point);
    UserScript& rightClick(int control);
    UserScript& rightClickAt(int control, POINT point);
    UserScript& drag(int control, POINT from, POINT to, UserKeys keys = {});
    UserScript& moveTo(int control, POINT point);
    /// Positive: away from the user.
    UserScript& wheel(int control, int notches);

    // The same on a place that code of the caller finds: it is asked until the place can be pointed at. Failures name
    // the place by `name`.
    UserScript& clickPlace(std::string_view name, UserPlaceFinder find, UserClick how = {});
    /// By `way` from the place.
    UserScript& dragPlace(std::string_view name, UserPlaceFinder find, POINT way, UserKeys keys = {});
    UserScript& wheelPlace(std::string_view name, UserPlaceFinder find, int notches);

    /// Keys for each character of the text (code page 1252), to whatever has the focus.
    UserScript& type(std::string_view text);
    /// Presses and releases a key (VK_).
    UserScript& press(int key, UserKeys keys = {});

    /// Clicks from text to text through the open popup menu or, when none is open, the bar of the window. Mnemonic
    /// marks and what follows a tab don't count.
    UserScript& pick(std::initializer_list<std::string_view> texts);

    /// Waits until the window that is meant is there, or is gone.
    UserScript& waitForWindow();
    UserScript& waitUntilGone();
    /// Lets the screen's clock go on; timers that come due meanwhile are delivered before the next step.
    UserScript& pause(std::uint32_t milliseconds);
    /// Runs code of the caller between steps.
    UserScript& call(std::function<void()> action);
    /// Waits until the condition holds; `what` names it in the failure.
    UserScript& expect(std::string_view what, std::function<bool()> condition);

    /// Runs a message loop until all steps are done or one has failed. True when all were done.
    bool finish();
    [[nodiscard]] bool done() const;
    /// Empty while nothing failed.
    [[nodiscard]] const std::string& failure() const;

private:
    struct Impl;
    std::shared_ptr<Impl> impl_;
};

} // namespace vndk::win32
