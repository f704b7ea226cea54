#include "desktop_mode.h"

#include "console.h"
#include "start.h"
#include "ui/main_frame.h"
#include "win32/desktop.h"

namespace vndk::app {

namespace {

/// False when one of them can't be opened. Without any a new one is begun.
bool openDrawings(host::Host& host, const std::vector<std::string>& drawings) {
    bool all = true;
    for (const std::string& drawing : drawings) {
        if (std::string error = openDrawing(host, drawing); !error.empty()) {
            all = false;
            host.alert(error);
        }
    }
    return host.documents().documentCount() > 0 ? all : openDrawing(host, {}).empty() && all;
}

} // namespace

ExitStatus runDesktop(CWinApp& application, host::Host& host, const Options& options, screen::Screen& screen) {
    win32::Desktop desktop(screen);
    host::MainFrame frame(host);
    if (!frame.open()) {
        complain("The program's window can't be made.");
        return kCommandFailed;
    }
    application.m_pMainWnd = &frame;

    ExitStatus status = loadObjectLibrary(host) ? kAllWell : kCommandFailed;
    const bool opened = status == kAllWell && openDrawings(host, options.drawings);
    // A module may have something to say at its start: it stands over a window that is whole.
    frame.showDrawings();
    if (status == kAllWell && !loadModule(host))
        status = kCommandFailed;
    if (status == kAllWell)
        frame.run(application);
    if (status == kAllWell && !opened)
        status = kDrawingFailed;
    // Modules take their windows down before the desktop ends.
    host.linker().unloadModule("VNDKKeldmoor.arx", false);
    frame.leave();
    application.m_pMainWnd = nullptr;
    return status;
}

} // namespace vndk::app
