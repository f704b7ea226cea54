// The loop that shows menus and lets the user pick: mouse and keyboard, from the press or key that began it to the
// command or the end without one.
//
// The menus that are open make a chain of levels: of a bar, the bar itself and then its popup; each further level is
// the popup of the one before. The mouse is captured by the owner; keys are taken whatever has the focus.
#pragma once

#include "user/menu.h"
#include "win32/queue.h"

#include <vector>

namespace vndk::win32 {

enum class MenuKind : std::uint8_t { popup, bar, system };
enum class SelectedBy : std::uint8_t { mouse, keys };

struct MenuOutcome {
    UINT command = 0; // 0: none was picked
    bool picked = false;
    bool system = false;       // it is a system menu's command
    bool leftSideways = false; // a key went beyond the end of the menu: on to the bar or the system menu
};

class MenuTracker {
public:
    MenuTracker(HMENU menu, MenuKind kind, HWND owner, UINT flags);
    ~MenuTracker();
    MenuTracker(const MenuTracker&) = delete;
    MenuTracker& operator=(const MenuTracker&) = delete;

    [[nodiscard]] HWND owner() const { return owner_; }

    /// Sends the messages that come before anything is shown. False when tracking can't go on.
    bool begin();
    /// Opens the menu itself as a popup. False when it is empty or gone.
    bool openTop(POINT at, const RECT* exclude);
    /// A button went down at a point of the screen, before the loop began.
    void press(POINT point);
    void select(int position, SelectedBy by);
    /// Does as if the character had been typed.
    void type(char character);
    void openSelected();
    MenuOutcome run();

    /// Ends the loop soon, without a command.
    void end();

private:
    struct Level {
        HMENU menu = nullptr;
        HWND window = nullptr; // null: the bar
    };
    struct Hit {
        std::size_t level = 0;
        int item = noItem;
        bool inside = false; // in a menu, if only on its border
    };

    // Loop (menu_tracker.cpp).
    [[nodiscard]] bool alive() const;
    [[nodiscard]] bool outsidePress(const MSG& message) const;
    bool tellIdle();
    void handle(MSG& message);
    void finish();
    [[nodiscard]] bool notifies() const { return (flags_ & TPM_NONOTIFY) == 0; }
    void notify(UINT message, WPARAM wParam, LPARAM lParam) const;

    // Levels and selection (menu_levels.cpp).
    [[nodiscard]] Menu* menuAt(std::size_t level) const;
    [[nodiscard]] const MenuItem* itemAt(std::size_t level, int position) const;
    [[nodiscard]] std::size_t deepest() const { return levels_.size() - 1; }
    [[nodiscard]] Hit hitTest(POINT point) const;
    void selectAt(std::size_t level, int position, SelectedBy by);
    void tellSelected(std::size_t level, SelectedBy by) const;
    void repaintItem(std::size_t level, int position) const;
    bool openSub(std::size_t level, int position);
    bool openLevel(HMENU menu, LPARAM position, POINT at, UINT flags, const RECT* exclude);
    void closeBelow(std::size_t level);
    void pick(std::size_t level, int position);
    [[nodiscard]] bool isOpen(std::size_t level, int position) const;

    // Mouse (menu_mouse.cpp).
    bool handleMouse(const MSG& message);
    void pointerMoved(POINT point);
    void reselectParents(std::size_t level);
    void buttonDown(POINT point, bool right);
    void buttonUp(POINT point, bool right);
    void delayOpening(std::size_t level, int position);
    void cancelDelay();
    void delayPassed();

    // Keys (menu_keys.cpp).
    bool handleKey(const MSG& message);
    void moveSelection(int step);
    void selectEnd(bool last);
    void goRight();
    void goLeft();
    void goSideways(int step);
    void escape();
    void enter();
    bool changeColumn(int step);
    void openWithFirst(std::size_t level, int position);
    void selectFirst(std::size_t level);
    void typeAt(std::size_t level, char character);
    void askOwner(std::size_t level, char character);

    HMENU top_;
    MenuKind kind_;
    HWND owner_;
    UINT flags_; // TPM_
    MenuTracker* former_ = nullptr;
    std::vector<Level> levels_;
    bool begun_ = false;
    bool captured_ = false;
    bool ending_ = false;
    bool idleTold_ = false;
    MenuOutcome outcome_;

    POINT lastPoint_{-1, -1};
    bool armed_ = false;           // the pointer moved or a button went down since the menu opened
    bool pressedOnBar_ = false;    // the button that opened the bar's popup is still down
    bool closesOnRelease_ = false; // it went down on the item whose popup was open already
    UINT_PTR timer_ = 0;
    std::size_t delayedLevel_ = 0;
    int delayedItem_ = noItem;
};

/// The bar of a window as the tracker needs it (menu_bar.cpp): the item at a point of the screen, the rectangle of one,
/// painting one anew.
[[nodiscard]] int barItemAt(HWND window, POINT point);
[[nodiscard]] bool barContains(HWND window, POINT point);
[[nodiscard]] RECT barItemRect(HWND window, int position);
void repaintBarItem(HWND window, int position);

} // namespace vndk::win32
