#include "ui/window_prompts.h"

#include "ui/canvas.h"
#include "ui/main_frame.h"

namespace vndk::host {

namespace {

/// A modal dialog that hid to let the user answer leaves the frame disabled: until he has, it isn't.
class EnabledFrame {
public:
    EnabledFrame(Host& host, MainFrame& frame) : frame_(frame), wasEnabled_(frame.IsWindowEnabled() != FALSE) {
        if (wasEnabled_)
            return;
        frame_.EnableWindow(TRUE);
        ::SetActiveWindow(frame_.m_hWnd);
        ::SetFocus(host.commandLineWindow());
    }
    ~EnabledFrame() {
        if (!wasEnabled_ && frame_.GetSafeHwnd())
            frame_.EnableWindow(FALSE);
    }
    EnabledFrame(const EnabledFrame&) = delete;
    EnabledFrame& operator=(const EnabledFrame&) = delete;

private:
    MainFrame& frame_;
    bool wasEnabled_;
};

} // namespace

bool WindowPrompts::wait(InputQueue& queue, const PromptRequest& request) {
    // The command prompt is the frame's own: its loop goes on, and starts what is entered.
    if (request.kind == PromptRequest::Kind::Command)
        return false;
    const EnabledFrame enabled(host_, frame_);
    frame_.beginPrompt(request);
    frame_.canvas().beginPrompt(request);
    ++waiting_;
    const AcApDocument* const document = host_.documents().curDocument();
    bool more = true;
    while (more && queue.empty()) {
        const size_t ended = ended_;
        more = !host_.quitRequested() && AfxPumpMessage() != FALSE;
        host_.documents().deliverSentText();
        if (!more || !queue.empty())
            break;
        // One within this one has left its own text there.
        if (ended_ != ended)
            frame_.beginPrompt(request);
        // The answer was to be for the drawing that was current.
        if (host_.documents().curDocument() != document)
            queue.feed(std::string(1, InputQueue::kCancel) + "\n");
    }
    --waiting_;
    ++ended_;
    frame_.endPrompt();
    return more;
}

} // namespace vndk::host
