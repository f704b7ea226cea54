#include "desktop_mode.h"

#include "console.h"
#include "main_frame.h"
#include "start.h"
#include "win32/codepage.h"
#include "win32/desktop.h"

namespace vndk::app {

namespace {

/// Prompts wait for the line that the user types, while the windows live on.
class TypedLines final : public host::PromptSource {
public:
    TypedLines(host::Host& host, MainFrame& frame) : host_(host), frame_(frame) {}

    bool wait(host::InputQueue& queue, std::string_view prompt) override {
        frame_.showPrompt(prompt);
        while (queue.empty())
            if (host_.quitRequested() || !AfxPumpMessage())
                return false;
        return true;
    }

private:
    host::Host& host_;
    MainFrame& frame_;
};

} // namespace

ExitStatus runDesktop(CWinApp& application, host::Host& host, const Options& options, screen::Screen& screen) {
    win32::Desktop desktop(screen);
    MainFrame frame(host);
    if (!frame.open()) {
        complain("The program's window can't be made.");
        return kCommandFailed;
    }
    application.m_pMainWnd = &frame;
    host.setMainWindow(frame.m_hWnd);
    host.setPrint([&frame](std::string_view text) { frame.print(text); });
    host.setAlert([&frame](std::string_view text) {
        ::MessageBoxA(frame.m_hWnd, std::string(text).c_str(), "vondrake", MB_OK | MB_ICONEXCLAMATION);
    });
    TypedLines lines(host, frame);
    host.commandLine().setSource(&lines);

    ExitStatus status = loadObjectLibrary(host) ? kAllWell : kCommandFailed;
    if (status == kAllWell && !openDrawing(host, options.drawing))
        status = kDrawingFailed;
    if (status == kAllWell && !loadModule(host))
        status = kCommandFailed;
    if (status == kAllWell) {
        frame.showPrompt("Command:");
        frame.SetFocus();
        application.Run();
    }
    host.commandLine().setSource(nullptr);
    host.setAlert({});
    host.setPrint([](std::string_view) {});
    // Modules take their windows down before the desktop ends.
    host.linker().unloadModule("VNDKKeldmoor.arx", false);
    host.setMainWindow(nullptr);
    application.m_pMainWnd = nullptr;
    return status;
}

} // namespace vndk::app
