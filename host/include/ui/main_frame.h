// The program's main window: the drawing above, the command line below it.
//
//     MainFrame frame(host);
//     if (frame.open())
//         frame.run(application);
//
// While the frame is open it is what the user talks to: prompts take their answers from it, and what the host prints
// stands in its history.
#pragma once

#include "ed/host.h"
#include "mfc/afx.h"

#include <memory>

namespace vndk::host {

class Canvas;
class CommandWindow;
class WindowPrompts;

class MainFrame : public CFrameWnd {
public:
    /// The host must outlive the frame.
    explicit MainFrame(Host& host);
    ~MainFrame() override;

    /// Fills the screen and becomes the host's main window. False when the window can't be made.
    bool open();
    /// Lives until the user leaves.
    void run(CWinApp& application);
    /// Gives back the host; before the modules take their windows down.
    void leave();

    /// Where commands are typed; gets the focus before anything is asked or sent.
    CommandWindow& commandWindow() { return *commandWindow_; }
    Canvas& canvas() { return *canvas_; }
    Host& host() { return host_; }
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
    void layOut();

    Host& host_;
    std::unique_ptr<Canvas> canvas_;
    std::unique_ptr<CommandWindow> commandWindow_;
    std::unique_ptr<WindowPrompts> prompts_;
};

} // namespace vndk::host
