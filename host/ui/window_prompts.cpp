#include "ui/window_prompts.h"

#include "ui/main_frame.h"

namespace vndk::host {

bool WindowPrompts::wait(InputQueue& queue, const PromptRequest& request) {
    // The command prompt is the frame's own: its loop goes on, and starts what is entered.
    if (request.kind == PromptRequest::Kind::Command)
        return false;
    frame_.beginPrompt(request);
    ++waiting_;
    bool more = true;
    while (more && queue.empty())
        more = !host_.quitRequested() && AfxPumpMessage() != FALSE;
    --waiting_;
    return more;
}

} // namespace vndk::host
