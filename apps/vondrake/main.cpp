// vondrake: the program's entry. See vondrake.1 for what it does.
#include "batch.h"
#include "console.h"
#include "convert_command.h"
#include "db/database.h"
#include "desktop_mode.h"
#include "drawing_picture.h"
#include "ed/host.h"
#include "facts.h"
#include "mfc/winapp.h"
#include "options.h"
#include "profile.h"
#ifdef VONDRAKE_HAS_WINDOW
#include "screen/sdl.h"
#endif
#include "ui/main_frame.h"
#include "win32/codepage.h"
#include "win32/drive_map.h"
#include "window_picture.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace vndk::app {

namespace {

constexpr int kShareWithAll = 0x40; // a look at a drawing neither waits for nor keeps out another program

/// The system's path of a drawing whose name was given in either form; nothing, after a complaint, if it has none.
std::optional<std::string> hostPathOf(const std::string& name) {
    std::error_code error;
    if (std::filesystem::exists(name, error))
        return name;
    const auto inside = win32::fromUtf8(name);
    auto path = inside ? win32::DriveMap::current().toHost(*inside) : std::nullopt;
    if (!path)
        complain("\"" + name + "\" can't be a file's name. Give a path on a mapped drive.");
    return path;
}

bool mapDrives(const Options& options) {
    for (const std::string& drive : options.drives) {
        const win32::Status status = win32::DriveMap::current().mapOption(drive);
        if (!status.ok()) {
            complain(status.message());
            return false;
        }
    }
    return true;
}

/// Reads the drawing of the options into an empty database, its Intelligent Blocks as such.
ExitStatus readDrawing(host::Host& host, const Options& options, AcDbDatabase& database, std::string& hostPath) {
    if (!host.linker().loadModule("VNDKObjectsDbx.dbx", false)) {
        complain(win32::toUtf8(host.linker().lastError()));
        return kCommandFailed;
    }
    const auto path = hostPathOf(options.drawing);
    if (!path)
        return kDrawingFailed;
    hostPath = *path;
    if (database.readDwgFile(hostPath.c_str(), kShareWithAll) == Acad::eOk)
        return kAllWell;
    complain(database.lastFileError());
    return kDrawingFailed;
}

ExitStatus showFacts(host::Host& host, const Options& options) {
    AcDbDatabase database(false, true);
    std::string path;
    if (const ExitStatus status = readDrawing(host, options, database, path); status != kAllWell)
        return status;
    JsonWriter json([](std::string_view piece) { writeOut(piece); });
    writeFacts(database, readFileStart(path), json);
    return kAllWell;
}

ExitStatus makePicture(host::Host& host, const Options& options) {
    AcDbDatabase database(false, true);
    std::string path;
    if (const ExitStatus status = readDrawing(host, options, database, path); status != kAllWell)
        return status;
    const int width = options.pictureWidth > 0 ? options.pictureWidth : 800;
    const int height = options.pictureHeight > 0 ? options.pictureHeight : 600;
    const auto inside = win32::fromUtf8(options.picture);
    const auto target = inside ? win32::DriveMap::current().toHost(*inside) : std::nullopt;
    const win32::Status status = win32::writePng(target.value_or(options.picture),
                                                 drawPicture(database, {width, height, options.view, options.shaded}));
    if (status.ok())
        return kAllWell;
    complain(status.message());
    return kDrawingFailed;
}

/// The main window looks at each message before palettes do.
class Application : public CWinApp {
public:
    BOOL PreTranslateMessage(MSG* message) override {
        auto* const frame = dynamic_cast<host::MainFrame*>(m_pMainWnd);
        return (frame && frame->takesFirst(*message)) || CWinApp::PreTranslateMessage(message);
    }
};

ExitStatus showWindow(CWinApp& application, host::Host& host, const Options& options) {
#ifdef VONDRAKE_HAS_WINDOW
    std::string error;
    const std::unique_ptr<screen::Screen> screen =
        screen::openWindow({.title = "vondrake", .scale = options.scale}, error);
    if (screen)
        return runDesktop(application, host, options, *screen);
    complain(error);
#else
    complain("This program was built without SDL and has no window. Use --batch, or build it with libsdl2-dev.");
#endif
    return kWrongUsage;
}

ExitStatus run(const Options& options) {
    switch (options.task) {
    case Options::Task::Help:
        writeOut(helpText());
        return kAllWell;
    case Options::Task::Version:
        writeOut("vondrake " VONDRAKE_VERSION "\n");
        return kAllWell;
    case Options::Task::Window:
    case Options::Task::WindowPicture:
    case Options::Task::Batch:
    case Options::Task::Facts:
    case Options::Task::Picture:
        break;
    }
    if (!mapDrives(options))
        return kWrongUsage;
    Application application;
    if (!options.profile.empty())
        application.SetProfileFile(options.profile.c_str());
    host::Host host;
    if (options.task == Options::Task::Facts)
        return showFacts(host, options);
    if (options.task == Options::Task::Picture)
        return makePicture(host, options);
    Profile profile(application);
    host.setProfile(&profile);
    addConvertCommand(host);
    if (options.task == Options::Task::WindowPicture)
        return makeWindowPicture(application, host, options);
    return options.task == Options::Task::Window ? showWindow(application, host, options)
                                                 : runBatch(application, host, options);
}

} // namespace

} // namespace vndk::app

int main(int count, char** arguments) {
    using namespace vndk::app;
    const auto parsed = parseOptions({arguments + 1, static_cast<size_t>(count > 0 ? count - 1 : 0)});
    if (const auto* const complaint = std::get_if<std::string>(&parsed)) {
        complain(*complaint + " Try vondrake --help.");
        return kWrongUsage;
    }
    const ExitStatus status = run(std::get<Options>(parsed));
    if (!finishOut() && status == kAllWell)
        return kCommandFailed;
    return status;
}
