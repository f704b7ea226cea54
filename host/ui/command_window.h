// What the host has said, and below it the line where commands are typed.
#pragma once

#include "mfc/afx.h"

#include <functional>
#include <string>
#include <string_view>

namespace vndk::host {

class CommandWindow : public CWnd {
public:
    static constexpr const char* kIdlePrompt = "Command:";

    bool create(CWnd& parent, UINT id);
    /// Adds to the history; code page 1252, lines end with '\n'.
    void print(std::string_view text);
    /// What stands before the line that is typed: the prompt's last line.
    void showPrompt(std::string_view prompt);
    void clearLine() { line_.SetWindowText(""); }

    /// Told of each line that is entered, without its end.
    std::function<void(std::string)> onEnter;

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    int OnCreate(LPCREATESTRUCT create);
    void OnSize(UINT type, int width, int height);
    void OnSetFocus(CWnd* former);
    BOOL OnEraseBkgnd(CDC* dc);

    DECLARE_MESSAGE_MAP()

private:
    void enterLine();
    void recall(int step);
    void layOut();

    CEdit history_;
    CStatic prompt_;
    CEdit line_;
    CFont font_;
    CStringArray typed_; // earlier lines, oldest first
    int recalled_ = 0;   // index into typed_ of the line on show; its size: a new one
};

} // namespace vndk::host
