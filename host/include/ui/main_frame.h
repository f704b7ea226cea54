// The program's main window: menu, a tab for each drawing, the drawing, the command line, the status line.
//
//     MainFrame frame(host);
//     if (frame.open())
//         frame.run(application);
//
// While the frame is open it is what the user talks to: prompts take their answers from it, and what the host prints
// stands in its history. Whatever wants to act while a prompt waits, a menu or another tab, cancels that prompt first
// and acts when the command has ended.
#pragma once

#include "ed/host.h"
#include "mfc/afx.h"

#include <deque>
#include <functional>
#include <memory>
#include <string>

namespace vndk::host {

class Canvas;
class CommandWindow;
class DocumentTabs;
class Sash;
class StatusLine;
class TextWindow;
class WindowPrompts;

class MainFrame : public CFrameWnd {
public:
    /// The host must outlive the frame.
    explicit MainFrame(Host& host);
    ~MainFrame() override;

    /// Fills the screen and becomes the host's main window. False when the window can't be made.
    bool open();
    /// Shows what is open, and that a command is waited for.
    void showDrawings();
    /// Lives until the user leaves.
    void run(CWinApp& application);
    /// Gives back the host; before the modules take their windows down.
    void leave();

    /// Where commands are typed; gets the focus before anything is asked or sent.
    CommandWindow& commandWindow() { return *commandWindow_; }
    Canvas& canvas() { return *canvas_; }
    DocumentTabs& tabs() { return *tabs_; }
    StatusLine& statusLine() { return *statusLine_; }
    TextWindow& textWindow() { return *textWindow_; }
    Host& host() { return host_; }
    /// Runs what is in the host's input, unless it is running already; while a dialog is open only what was sent.
    void runInput();
    /// Types lines for the user; a prompt that waits is cancelled first.
    void type(const std::string& lines);
    /// Does something when no command runs and no prompt waits: at once, or after cancelling what waits.
    void whenIdle(std::function<void()> action);
    /// Makes a drawing the current one, for the user's sight too. A drawing that has gone meanwhile is left alone.
    void showDocument(AcApDocument* document);
    /// Brings tabs, title, status line and history up to date.
    void refresh();
    /// Brings the frame into the state in which a prompt waits: what was said is in sight, and what it wants.
    void beginPrompt(const PromptRequest& request);
    /// A prompt has had its answer. Outside of any command nothing is wanted then.
    void endPrompt();

    /// Asked before anything else sees a message; true: done. A palette's dialog would keep the keys that are the
    /// frame's shortcuts, and the wheel.
    bool takesFirst(MSG& message);
    BOOL PreTranslateMessage(MSG* message) override;
    void RecalcLayout(BOOL notify = TRUE) override;

protected:
    int OnCreate(LPCREATESTRUCT create);
    void OnSetFocus(CWnd* former);
    void OnEnable(BOOL enabled);
    void OnClose();
    BOOL OnEraseBkgnd(CDC* dc);
    LRESULT OnRunInput(WPARAM wParam, LPARAM lParam);
    LRESULT OnIdleUpdate(WPARAM wParam, LPARAM lParam);
    void OnTypedCommand(UINT id);
    void OnUpdateTypedCommand(CCmdUI* state);
    void OnFrameCommand(UINT id);
    void OnUpdateFrameCommand(CCmdUI* state);

    DECLARE_MESSAGE_MAP()

private:
    enum class KeyPlace { Line, Drawing, Reading, Edit, Bar, Elsewhere };

    bool createChildren();
    void connect();
    void resizeCommandWindow(int down);
    bool isBusy() const;
    void runAll();
    void cancelWaiting();
    void showTitle();
    void showIdle();
    void step(int tabs);
    void showHelp();
    void editAttributes(AcDbObjectId entity);
    KeyPlace placeOf(HWND window) const;
    bool takesWheel(const MSG& message) const;
    bool giveToLine(MSG& message, KeyPlace place);
    bool erases(const MSG& message, KeyPlace place) const;

    Host& host_;
    std::unique_ptr<Canvas> canvas_;
    std::unique_ptr<CommandWindow> commandWindow_;
    std::unique_ptr<DocumentTabs> tabs_;
    std::unique_ptr<Sash> sash_;
    std::unique_ptr<StatusLine> statusLine_;
    std::unique_ptr<TextWindow> textWindow_;
    std::unique_ptr<WindowPrompts> prompts_;
    std::deque<std::function<void()>> later_; // for whenIdle
    std::string title_;
    HACCEL keys_ = nullptr;
    int commandHeight_ = 0; // pixels; 0: from the profile
    bool woken_ = false;    // a message to run the input is under way
};

} // namespace vndk::host
