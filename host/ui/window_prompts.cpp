#include "ui/window_prompts.h"

#include "ui/canvas.h"
#include "ui/command_window.h"
#include "ui/main_frame.h"

namespace vndk::host {

bool WindowPrompts::wait(InputQueue& queue, const PromptRequest& request) {
    frame_.commandWindow().showPrompt(request.text);
    // What the command has done so far is seen while it asks on.
    frame_.canvas().follow();
    ++waiting_;
    bool more = true;
    while (more && queue.empty())
        more = !host_.quitRequested() && AfxPumpMessage() != FALSE;
    --waiting_;
    return more;
}

} // namespace vndk::host
