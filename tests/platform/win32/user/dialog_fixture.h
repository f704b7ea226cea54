// Dialogs made from templates, with a procedure that a test fills in.
#pragma once

#include "support/desktop_fixture.h"
#include "support/message_recorder.h"
#include "template_builder.h"
#include "user/window_position.h"
#include "win32/button.h"
#include "win32/dialog.h"
#include "win32/edit.h"
#include "win32/error.h"

#include <functional>
#include <vector>

namespace vndk::test {

class DialogFixture : public DesktopFixture {
protected:
    /// What the dialog procedure answers; null: FALSE to everything but WM_INITDIALOG.
    using Answer = std::function<INT_PTR(HWND, UINT, WPARAM, LPARAM)>;

    void TearDown() override {
        EXPECT_EQ(win32::verifyWindows(), "");
        // What the answer refers to may be gone already; dialogs that are left get no more of it.
        answers = nullptr;
        desktop.reset();
    }

    HWND create(const DialogBuilder& builder, HWND owner = nullptr, Answer answer = nullptr) {
        bytes = builder.bytes();
        answers = std::move(answer);
        return win32::createDialog(nullptr, bytes, owner, &procedure, reinterpret_cast<LPARAM>(this));
    }
    INT_PTR runModal(const DialogBuilder& builder, HWND owner, Answer answer) {
        bytes = builder.bytes();
        answers = std::move(answer);
        return DialogBoxIndirectParam(nullptr, reinterpret_cast<const DLGTEMPLATE*>(bytes.data()), owner, &procedure,
                                      reinterpret_cast<LPARAM>(this));
    }
    HWND createOwner() {
        WNDCLASSA plain{};
        plain.lpfnWndProc = &DefWindowProc;
        plain.lpszClassName = "DialogOwner";
        RegisterClass(&plain);
        const HWND owner = CreateWindow("DialogOwner", "owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 60, 500, 400,
                                        nullptr, nullptr, nullptr, nullptr);
        settle();
        return owner;
    }
    /// Runs a message loop over what is queued, with IsDialogMessage in front.
    void settleDialog(HWND dialog) {
        MSG message{};
        while (PeekMessage(&message, nullptr, 0, 0, PM_REMOVE) != FALSE)
            if (IsDialogMessage(dialog, &message) == FALSE) {
                TranslateMessage(&message);
                DispatchMessage(&message);
            }
    }
    void pressIn(HWND dialog, int key, int modifier = 0) {
        if (modifier != 0)
            user.keyWith(modifier, key);
        else
            user.key(key);
        settleDialog(dialog);
    }
    static int focusId() { return GetDlgCtrlID(GetFocus()); }
    static bool looksDefault(HWND dialog, int id) {
        return (SendDlgItemMessage(dialog, id, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON) != 0;
    }

    std::vector<std::uint8_t> bytes;
    Answer answers;

private:
    static INT_PTR CALLBACK procedure(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_INITDIALOG)
            SetWindowLongPtr(dialog, DWL_USER, lParam);
        // Before WM_INITDIALOG only WM_SETFONT comes, of which no test here needs to know.
        auto* self = reinterpret_cast<DialogFixture*>(GetWindowLongPtr(dialog, DWL_USER));
        if (self == nullptr)
            return FALSE;
        if (self->answers)
            return self->answers(dialog, message, wParam, lParam);
        return message == WM_INITDIALOG ? TRUE : FALSE;
    }
};

} // namespace vndk::test
