// The program's window: what the host has said, and below it the line where commands are typed.
#pragma once

#include "ed/host.h"
#include "mfc/afx.h"

#include <string_view>

namespace vndk::app {

class MainFrame : public CFrameWnd {
public:
    /// The host must outlive the frame.
    explicit MainFrame(host::Host& host);

    /// Fills the screen. False when the window can't be made.
    bool open();
    /// Adds to the history; code page 1252, lines end with '\n'.
    void print(std::string_view text);
    /// What stands before the line that is typed.
    void showPrompt(std::string_view prompt);
    /// True once the user has closed the window and nothing stands against it.
    [[nodiscard]] bool closing() const { return closing_; }
    /// Runs what is in the host's input, unless it is running already.
    void runInput();

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    int OnCreate(LPCREATESTRUCT create);
    void OnSize(UINT type, int width, int height);
    void OnSetFocus(CWnd* former);
    void OnClose();
    BOOL OnEraseBkgnd(CDC* dc);

    DECLARE_MESSAGE_MAP()

private:
    void enterLine();
    void recall(int step);
    void layOut();

    host::Host& host_;
    CEdit history_;
    CStatic prompt_;
    CEdit line_;
    CFont font_;
    CStringArray typed_; // earlier lines, oldest first
    int recalled_ = 0;   // index into typed_ of the line on show; its size: a new one
    bool closing_ = false;
};

} // namespace vndk::app
