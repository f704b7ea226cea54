#include "desktop_mode.h"

#include "console.h"
#include "start.h"
#include "ui/main_frame.h"
#include "win32/desktop.h"

namespace vndk::app {

ExitStatus runDesktop(CWinApp& application, host::Host& host, const Options& options, screen::Screen& screen) {
    win32::Desktop desktop(screen);
    host::MainFrame frame(host);
    if (!frame.open()) {
        complain("The program's window can't be made.");
        return kCommandFailed;
    }
    application.m_pMainWnd = &frame;

    ExitStatus status = loadObjectLibrary(host) ? kAllWell : kCommandFailed;
    if (status == kAllWell && !openDrawing(host, options.drawing))
        status = kDrawingFailed;
    if (status == kAllWell && !loadModule(host))
        status = kCommandFailed;
    if (status == kAllWell)
        frame.run(application);
    // Modules take their windows down before the desktop ends.
    host.linker().unloadModule("VNDKKeldmoor.arx", false);
    frame.leave();
    application.m_pMainWnd = nullptr;
    return status;
}

} // namespace vndk::app
