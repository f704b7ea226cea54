#include "window_picture.h"

#include "console.h"
#include "desktop_mode.h"
#include "screen/memory.h"
#include "win32/codepage.h"
#include "win32/drive_map.h"
#include "win32/picture.h"
#include "win32/queue.h"

namespace vndk::app {

namespace {

constexpr int kWidth = 1280;
constexpr int kHeight = 800;

/// A screen whose user only looks, and leaves.
class PictureScreen : public screen::MemoryScreen {
public:
    PictureScreen(int width, int height) : MemoryScreen(width, height) {}

    /// Whoever waits has painted everything.
    void wait(int milliseconds) override {
        if (picture.pixels.empty()) {
            const screen::Surface shown = surface();
            picture = win32::copyPicture(shown.pixels, shown.width, {0, 0, shown.width, shown.height});
        }
        // Dialogs that greet the user end, too.
        ::PostQuitMessage(0);
        MemoryScreen::wait(milliseconds);
    }

    win32::Picture picture;
};

} // namespace

ExitStatus makeWindowPicture(CWinApp& application, host::Host& host, const Options& options) {
    PictureScreen screen(options.pictureWidth > 0 ? options.pictureWidth : kWidth,
                         options.pictureHeight > 0 ? options.pictureHeight : kHeight);
    const ExitStatus status = runDesktop(application, host, options, screen);
    if (screen.picture.pixels.empty())
        return status != kAllWell ? status : kCommandFailed;
    const auto inside = win32::fromUtf8(options.picture);
    const auto target = inside ? win32::DriveMap::current().toHost(*inside) : std::nullopt;
    const win32::Status written = win32::writePng(target.value_or(options.picture), screen.picture);
    if (written.ok())
        return status;
    complain(written.message());
    return kDrawingFailed;
}

} // namespace vndk::app
