// Popup menus that a program shows.
#include "user/menu_tracker.h"
#include "win32/error.h"

using namespace vndk::win32;

namespace {

bool mayTrack(HMENU menu, HWND owner, UINT flags) {
    if (findMenu(menu) == nullptr || findWindow(owner) == nullptr)
        return false;
    if (menuState()->tracker != nullptr && (flags & TPM_RECURSE) == 0) {
        SetLastError(ERROR_POPUP_ALREADY_ACTIVE);
        return false;
    }
    return true;
}

// A bar can be shown as a popup, for the time that it takes.
class ShownAsPopup {
public:
    explicit ShownAsPopup(HMENU menu) : menu_(menu), popup_(findMenu(menu)->popup) { findMenu(menu)->popup = true; }
    ~ShownAsPopup() {
        if (Menu* menu = findMenu(menu_))
            menu->popup = popup_;
    }
    ShownAsPopup(const ShownAsPopup&) = delete;
    ShownAsPopup& operator=(const ShownAsPopup&) = delete;

private:
    HMENU menu_;
    bool popup_;
};

} // namespace

BOOL TrackPopupMenuEx(HMENU menu, UINT flags, int x, int y, HWND owner, TPMPARAMS* parameters) {
    if (!mayTrack(menu, owner, flags))
        return FALSE;
    const RECT exclude =
        parameters != nullptr && parameters->cbSize >= sizeof *parameters ? parameters->rcExclude : RECT{};
    MenuOutcome outcome;
    bool shown = false;
    {
        const ShownAsPopup asPopup(menu);
        MenuTracker tracker(menu, findMenu(menu)->system ? MenuKind::system : MenuKind::popup, owner, flags);
        shown = tracker.begin() && tracker.openTop({x, y}, &exclude);
        if (shown)
            outcome = tracker.run();
    }
    if ((flags & TPM_RETURNCMD) != 0)
        return static_cast<BOOL>(outcome.command);
    if (outcome.picked && (flags & TPM_NONOTIFY) == 0 && IsWindow(owner) != FALSE)
        PostMessageA(owner, outcome.system ? WM_SYSCOMMAND : WM_COMMAND,
                     MAKEWPARAM(static_cast<int>(outcome.command), 0), outcome.system ? MAKELPARAM(x, y) : 0);
    return shown ? TRUE : FALSE;
}

// The rectangle that the call takes has no meaning any more.
BOOL TrackPopupMenu(HMENU menu, UINT flags, int x, int y, int /*reserved*/, HWND owner, const RECT* /*rect*/) {
    return TrackPopupMenuEx(menu, flags, x, y, owner, nullptr);
}
