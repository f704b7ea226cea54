// The dialog manager's own data, and what its parts ask of each other.
#pragma once

#include "user/window.h"
#include "win32/dialog.h"

#include <functional>
#include <optional>
#include <vector>

namespace vndk::win32 {

struct DialogInfo {
    HFONT font = nullptr; // that of the template; null: the system font, which controls use by themselves
    bool ownsFont = false;
    SIZE units{};              // pixels of four units across and eight down
    HWND savedFocus = nullptr; // where the focus was when the dialog was left
    std::optional<int> defaultId;
    HWND defaultLook = nullptr; // the button that is drawn as the default one
    bool modal = false;
    HWND disabledOwner = nullptr; // enabled again when the dialog ends
    bool ended = false;
    INT_PTR result = 0;

    ~DialogInfo();
};

/// Null for a dead window and for one that the dialog manager never worked on.
std::shared_ptr<DialogInfo> dialogInfo(HWND dialog);
/// Makes the window one of the dialog manager's.
std::shared_ptr<DialogInfo> makeDialogInfo(Window& window);

/// Registers class "#32770" in the current desktop.
void registerDialogClass();

// Creation.

struct DialogTemplate;
struct DialogCreation {
    HINSTANCE instance = nullptr;
    HWND owner = nullptr;
    DLGPROC procedure = nullptr;
    LPARAM parameter = 0;
    bool modal = false;
    HWND disabledOwner = nullptr; // by the modal loop
};
HWND createFromTemplate(const DialogTemplate& dialog, const DialogCreation& creation);
/// Makes the dialog and waits until it ends; -1 when it can't be made. The owner is disabled meanwhile.
INT_PTR runDialog(const DialogTemplate& dialog, DialogCreation creation);
/// Four times the average width and eight times an eighth of the height: what MapDialogRect divides by 4 and 8.
[[nodiscard]] SIZE dialogUnits(HFONT font);
/// The rectangle moved so that it lies inside the work area; its upper left corner has precedence.
[[nodiscard]] RECT insideWorkArea(const RECT& rect);

// Focus and the default button.

/// Codes of WM_GETDLGCODE without a message.
[[nodiscard]] LRESULT dialogCode(HWND control);
[[nodiscard]] bool isPushButton(HWND control);
/// Gives a control the focus, its text selected when it has a selection.
void focusControl(HWND control);
/// The same, and the default look moves to it or back to the default button.
void focusInDialog(HWND dialog, HWND control);
/// The control that gets the focus when nobody chose one: the first tab stop (of radio buttons the checked one), else
/// the first control that can be used. Null in an empty dialog.
[[nodiscard]] HWND firstFocus(HWND dialog);
/// The push button that has the focus, or the one with the default id, is drawn as the default one, and no other.
void updateDefaultLook(HWND dialog, HWND focus);
void setDefaultId(HWND dialog, int id);
/// DM_GETDEFID for windows that are no dialogs as well: the first button that is drawn as the default one.
[[nodiscard]] std::optional<int> defaultIdOf(HWND dialog);
void saveFocus(HWND dialog);
enum class RestoredFocus : std::uint8_t { saved, first };
void restoreFocus(HWND dialog, RestoredFocus which);

// Keyboard.

/// IsDialogMessage for those who have asked the message filters before.
bool handleDialogMessage(HWND dialog, MSG& message);

// Order of controls.

/// All windows below `dialog` in tab order; of those with WS_EX_CONTROLPARENT that are visible and enabled also what
/// lies below them.
[[nodiscard]] std::vector<HWND> controlsInOrder(HWND dialog);
/// The window of controlsInOrder that `descendant` is or lies in (the edit of a combo box lies in the box).
[[nodiscard]] HWND controlAround(HWND dialog, HWND descendant);
[[nodiscard]] bool isUsable(const Window& window); // visible and enabled
/// The members of the group that a control belongs to, in order, usable or not.
[[nodiscard]] std::vector<HWND> groupOf(HWND control);

} // namespace vndk::win32
