// What the host has said, and below it the line where commands are typed.
//
// The history shows whole lines; what the host has begun to say, a prompt, stands before the line that is typed. A
// blank ends an answer as Enter does, but for texts, where it is one.
#pragma once

#include "ed/input.h"
#include "ui/command_edit.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vndk::host {

class CommandWindow : public CWnd {
public:
    static constexpr const char* kIdlePrompt = "Command:";
    /// Pixels that the line and one line of history need.
    static constexpr int kLeastHeight = 48;

    bool create(CWnd& parent, UINT id);
    /// Adds to the history; code page 1252, lines end with '\n'.
    void print(std::string_view text);
    /// Everything that was printed and is still kept; lines end with CR LF.
    const std::string& history() const { return history_; }
    /// What stands before the line that is typed: the prompt's last line. `form` tells what ends the answer.
    void showPrompt(std::string_view prompt, AnswerForm form = AnswerForm::Word);
    void clearLine() { line_.SetWindowText(""); }
    CommandEdit& line() { return line_; }
    /// Pixels that it takes of the frame at the next layout.
    void setHeight(int height) { height_ = height; }
    bool isHistory(HWND window) const { return window && window == historyEdit_.m_hWnd; }
    /// Copies what is selected, in the history or in the line, to the clipboard.
    void copySelection();
    /// Shows what was printed since; called before the user is waited for.
    void showHistory();

    /// Told of what is entered: whole lines, with their ends.
    std::function<void(std::string)> onEnter;
    /// The names of commands that begin with the text, for the tab key.
    std::function<std::vector<std::string>(std::string_view)> completions;
    /// Told of what was added to the history, and of text that left it at its front.
    std::function<void()> onHistory;

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    int OnCreate(LPCREATESTRUCT create);
    HBRUSH OnCtlColor(CDC* dc, CWnd* control, UINT kind);
    void OnSize(UINT type, int width, int height);
    void OnSetFocus(CWnd* former);
    BOOL OnEraseBkgnd(CDC* dc);

    LRESULT OnSizeParent(WPARAM wParam, LPARAM lParam);

    DECLARE_MESSAGE_MAP()

private:
    bool handleKey(WPARAM key);
    bool blankEnds() const;
    void enterLine();
    void paste(const std::string& text);
    void recall(int step);
    void complete();
    void setLine(const CString& text);
    CString fittingPrompt(CDC& dc, int width) const;
    void layOut();

    int height_ = kLeastHeight;
    CEdit historyEdit_;
    CStatic promptLabel_;
    CommandEdit line_;
    CFont font_;
    std::string history_;
    std::size_t shown_ = 0; // characters of history_ that the control has
    bool cut_ = false;      // the history lost its oldest part
    std::string prompt_ = kIdlePrompt;
    AnswerForm form_ = AnswerForm::Word;
    CStringArray typed_; // earlier lines, oldest first
    int recalled_ = 0;   // index into typed_ of the line on show; its size: a new one
    std::string stem_;   // what the user had typed when the tab key was pressed first
    std::string offered_;
};

} // namespace vndk::host
