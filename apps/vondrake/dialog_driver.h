// Takes the lines of a script as steps for whatever waits for input: a dialog, a message box, a menu.
//
//     DialogDriver driver(host);                        // a screen in memory
//     win32::Desktop desktop(driver);
//     driver.setMainWindow(frame.m_hWnd);
//     host.commandLine().step();                        // dialogs that it opens take their steps
//     if (const auto failure = driver.takeFailure()) ...
//
// A loop that has nothing left to do waits on its screen. In batch nothing else waits there, since prompts take their
// answers from the same lines at once; so the next line is a step. Time passes between steps as if a user looked at
// what became of each: two clicks are never a double click, and what a timer does later has been done.
//
// A step that can't be done closes all that is open by its Cancel and cancels the further prompts of the command. What
// doesn't go is left as if the program quit, and what doesn't even heed that ends the program: nothing waits for ever.
#pragma once

#include "dialog_steps.h"
#include "ed/command_line.h"
#include "screen/memory.h"

#include <memory>
#include <optional>
#include <string>

namespace vndk::host {
class Host;
}

namespace vndk::app {

class DialogDriver final : public screen::MemoryScreen {
public:
    /// Takes the steps from the host's command line, and prints there what the steps are and show.
    explicit DialogDriver(host::Host& host);
    ~DialogDriver() override;

    /// The window that dialogs stand before.
    void setMainWindow(HWND window) { main_ = window; }
    /// From now on there are no steps: what waits is closed.
    void endScript() { scriptEnded_ = true; }
    /// To be called when the command has ended: what went wrong in its dialogs. Then steps are taken again.
    std::optional<host::Problem> takeFailure();

    void wait(int milliseconds) override;
    bool nextEvent(screen::Event& event) override;

private:
    [[nodiscard]] HWND dialog() const;
    [[nodiscard]] std::string dialogName() const;
    [[nodiscard]] std::string situation() const;

    bool stepRuns();
    void takeStep();
    void perform(const DialogStep& step);
    void click(const DialogStep& step);
    win32::UserPlaceFinder finder(const DialogStep& step);
    void openList(const ControlName& name);
    void show();
    void savePicture(const std::string& file, int scale);

    void fail(std::string message, size_t line);
    void pushOut();
    void pushOutBusy();
    void leave();
    [[noreturn]] void giveUp();
    void letPass(int milliseconds);

    host::Host& host_;
    HWND main_ = nullptr;
    std::unique_ptr<win32::UserScript> user_; // the step that is being done
    size_t line_ = 0;                         // of the step
    int waits_ = 0;                           // since the step began
    int rounds_ = 0;                          // looks for events since the last wait
    std::uint32_t restUntil_ = 0;
    bool scriptEnded_ = false;

    // After a failure.
    std::optional<host::Problem> failure_;
    int pushes_ = 0;
    HWND pushed_ = nullptr;
    int pushesOfOne_ = 0;
    bool left_ = false;
    bool quitPosted_ = false;
};

} // namespace vndk::app
