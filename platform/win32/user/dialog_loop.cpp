// Dialogs that are waited for.
#include "user/activation.h"
#include "user/dialog.h"
#include "user/dialog_template.h"
#include "user/input_queue.h"
#include "win32/error.h"
#include "win32/input.h"
#include "win32/paint.h"
#include "win32/queue.h"
#include "win32/resources.h"

namespace vndk::win32 {

namespace {

constexpr INT_PTR notMade = -1;

// The top-level window that stays disabled while a dialog is waited for; null when it was disabled before.
class DisabledOwner {
public:
    explicit DisabledOwner(HWND owner) {
        const HWND top = owner != nullptr ? GetAncestor(owner, GA_ROOT) : nullptr;
        if (top != nullptr && top != GetDesktopWindow() && IsWindowEnabled(top) != FALSE) {
            EnableWindow(top, FALSE);
            window_ = top;
        }
    }
    ~DisabledOwner() {
        if (window_ != nullptr && IsWindow(window_) != FALSE)
            EnableWindow(window_, TRUE);
    }
    DisabledOwner(const DisabledOwner&) = delete;
    DisabledOwner& operator=(const DisabledOwner&) = delete;

    [[nodiscard]] HWND window() const { return window_; }

private:
    HWND window_ = nullptr;
};

class ModalLoop {
public:
    ModalLoop(HWND dialog, HWND owner) : dialog_(dialog), owner_(owner), info_(dialogInfo(dialog)) {}

    INT_PTR run() {
        MSG message{};
        while (running() && next(message)) {
            idleTold_ = false;
            // A queue that timers never let run empty must not keep the dialog hidden.
            if (message.message == WM_TIMER)
                show();
            if (running() && !handleDialogMessage(dialog_, message)) {
                TranslateMessage(&message);
                DispatchMessageA(&message);
            }
        }
        return info_->result;
    }

private:
    [[nodiscard]] bool running() const { return !info_->ended && IsWindow(dialog_) != FALSE; }

    // The next message that no filter ate. False when the loop has to end.
    bool next(MSG& message) {
        while (running()) {
            if (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) == FALSE) {
                if (whenIdle())
                    continue;
                return nextModalMessage(message, MSGF_DIALOGBOX);
            }
            if (message.message == WM_QUIT) {
                PostQuitMessage(static_cast<int>(message.wParam));
                return false;
            }
            if (CallMsgFilterA(&message, MSGF_DIALOGBOX) == FALSE)
                return true;
        }
        return false;
    }

    void show() {
        if (shown_ || !running())
            return;
        shown_ = true;
        ShowWindow(dialog_, SW_SHOWNORMAL);
        UpdateWindow(dialog_);
    }

    // True when something was done, so that the queue has to be looked at again.
    bool whenIdle() {
        if (!shown_) {
            show();
            return true;
        }
        const auto style = static_cast<DWORD>(GetWindowLongA(dialog_, GWL_STYLE));
        if (idleTold_ || owner_ == nullptr || (style & DS_NOIDLEMSG) != 0)
            return false;
        idleTold_ = true;
        send(owner_, WM_ENTERIDLE, static_cast<WPARAM>(MSGF_DIALOGBOX), reinterpret_cast<LPARAM>(dialog_));
        return true;
    }

    HWND dialog_;
    HWND owner_;
    std::shared_ptr<DialogInfo> info_; // lives on when the window doesn't
    bool shown_ = false;
    bool idleTold_ = false;
};

INT_PTR runBytes(HINSTANCE instance, std::span<const std::uint8_t> bytes, HWND owner, DLGPROC procedure,
                 LPARAM parameter) {
    if (owner != nullptr && findWindow(owner) == nullptr)
        return 0;
    const auto described = parseDialogTemplate(bytes);
    if (!described) {
        SetLastError(ERROR_INVALID_DATA);
        return notMade;
    }
    return runDialog(*described, {instance, owner, procedure, parameter, true, nullptr});
}

} // namespace

INT_PTR runDialog(const DialogTemplate& described, DialogCreation creation) {
    if (const HWND capture = GetCapture())
        send(capture, WM_CANCELMODE);
    const DisabledOwner disabled(creation.owner);
    creation.modal = true;
    creation.disabledOwner = disabled.window();
    const HWND dialog = createFromTemplate(described, creation);
    if (dialog == nullptr)
        return notMade;
    ModalLoop loop(dialog, creation.owner);
    const INT_PTR result = loop.run();
    // WM_QUIT ends the loop without EndDialog.
    if (const auto info = dialogInfo(dialog); info != nullptr && !info->ended)
        EndDialog(dialog, result);
    DestroyWindow(dialog);
    return result;
}

} // namespace vndk::win32

using namespace vndk::win32;

INT_PTR DialogBoxParamA(HINSTANCE instance, LPCSTR name, HWND owner, DLGPROC procedure, LPARAM parameter) {
    if (owner != nullptr && findWindow(owner) == nullptr)
        return 0;
    const HRSRC resource = FindResourceA(instance, name, RT_DIALOG);
    if (resource == nullptr)
        return notMade;
    const auto* bytes = static_cast<const std::uint8_t*>(LockResource(LoadResource(instance, resource)));
    return runBytes(instance, {bytes, SizeofResource(instance, resource)}, owner, procedure, parameter);
}

INT_PTR DialogBoxIndirectParamA(HINSTANCE instance, const DLGTEMPLATE* dialogTemplate, HWND owner, DLGPROC procedure,
                                LPARAM parameter) {
    return runBytes(instance, templateBytes(dialogTemplate), owner, procedure, parameter);
}

BOOL EndDialog(HWND dialog, INT_PTR result) {
    const auto info = dialogInfo(dialog);
    if (info == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    info->ended = true;
    info->result = result;
    // The owner first: nothing else could become active otherwise.
    if (info->disabledOwner != nullptr && IsWindow(info->disabledOwner) != FALSE)
        EnableWindow(info->disabledOwner, TRUE);
    const bool active = GetActiveWindow() == dialog;
    SetWindowPos(dialog, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_HIDEWINDOW);
    if (active && GetActiveWindow() == dialog)
        activateOther(dialog);
    // What ran inside of a dialog that was never shown, a message box say, found no window to leave the activation to.
    if (GetActiveWindow() == nullptr && IsWindowVisible(info->disabledOwner) != FALSE)
        SetActiveWindow(info->disabledOwner);
    // The loop may be waiting for a message.
    if (info->modal && IsWindow(dialog) != FALSE)
        PostMessageA(dialog, WM_NULL, 0, 0);
    return TRUE;
}
