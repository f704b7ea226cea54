// Prompts that wait for the user of the main window, while the windows live on.
//
// Prompts nest: what is clicked while one waits may ask again, in the middle of a command or outside of any. The
// innermost one takes what is entered.
#pragma once

#include "ed/input.h"

namespace vndk::host {

class Host;
class MainFrame;

class WindowPrompts final : public PromptSource {
public:
    WindowPrompts(Host& host, MainFrame& frame) : host_(host), frame_(frame) {}

    bool wait(InputQueue& queue, const PromptRequest& request) override;
    /// A prompt waits: what is entered is its answer. Also where a window asks outside of any command.
    bool isWaiting() const { return waiting_ > 0; }

private:
    Host& host_;
    MainFrame& frame_;
    int waiting_ = 0;
    size_t ended_ = 0; // prompts that have waited
};

} // namespace vndk::host
