#include "ui/window_prompts.h"

#include "ui/canvas.h"
#include "ui/main_frame.h"

namespace vndk::host {

bool WindowPrompts::wait(InputQueue& queue, const PromptRequest& request) {
    // The command prompt is the frame's own: its loop goes on, and starts what is entered.
    if (request.kind == PromptRequest::Kind::Command)
        return false;
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
    frame_.canvas().endPrompt();
    return more;
}

} // namespace vndk::host
