#include "batch.h"

#include "console.h"
#include "dialog_driver.h"
#include "dialog_steps.h"
#include "dwg/codepage.h"
#include "ed/host.h"
#include "mfc/afx.h"
#include "start.h"
#include "utf8.h"
#include "win32/codepage.h"
#include "win32/desktop.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <optional>
#include <utility>

namespace vndk::app {

namespace {

constexpr size_t kLongestScript = size_t{256} << 20; // more isn't a script, or has no end

using host::Host;
using host::Problem;

/// Reads the whole script. On failure `error` is the system's number.
std::optional<std::string> readScript(const std::string& path, int& error) {
    std::FILE* const file = path == "-" ? stdin : std::fopen(path.c_str(), "rb");
    if (!file) {
        error = errno;
        return std::nullopt;
    }
    std::string text;
    char piece[1 << 16];
    size_t count = 0;
    while (text.size() <= kLongestScript && (count = std::fread(piece, 1, sizeof piece, file)) > 0)
        text.append(piece, count);
    error = std::ferror(file) ? errno : text.size() > kLongestScript ? EFBIG : 0;
    if (file != stdin)
        std::fclose(file);
    if (error != 0)
        return std::nullopt;
    return text;
}

/// Scripts are UTF-8; one that isn't comes from a system of code page 1252 and is taken as it is.
std::string scriptText(std::string text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (isUtf8(text))
        text = dwg::textFromUtf8(text.starts_with(kByteOrderMark) ? std::string_view(text).substr(3) : text);
    if (!text.empty() && text.back() != '\n')
        text += '\n';
    return text;
}

ExitStatus statusOf(const Problem& problem) {
    return problem.kind == Problem::Kind::DrawingFailed ? kDrawingFailed : kCommandFailed;
}

void complainAbout(const Problem& problem, const Options& options) {
    const std::string script = options.script == "-" ? "standard input" : options.script;
    complain(script + ", line " + std::to_string(problem.line) + ": " + win32::toUtf8(problem.message));
}

/// Notices a step that stands in the script where no dialog is open, and so was taken for a command.
class StepsWithoutDialog : public AcEditorReactor {
public:
    explicit StepsWithoutDialog(Host& host) : host_(host) { host_.editor().addReactor(this); }
    ~StepsWithoutDialog() override { host_.editor().removeReactor(this); }
    StepsWithoutDialog(const StepsWithoutDialog&) = delete;
    StepsWithoutDialog& operator=(const StepsWithoutDialog&) = delete;

    void unknownCommand(const char* cmdStr) override { met_ = isDialogStepKeyword(cmdStr); }

    void explain(Problem& problem) {
        if (std::exchange(met_, false) && problem.kind == Problem::Kind::UnknownCommand)
            problem.message += " It is a step in a dialog, and no dialog is open here.";
    }

private:
    Host& host_;
    bool met_ = false;
};

ExitStatus runScript(Host& host, const Options& options, const std::string& text, DialogDriver& driver) {
    ExitStatus worst = kAllWell;
    StepsWithoutDialog misplaced(host);
    host.commandLine().setInvalidAnswers(host::InvalidAnswers::FailCommand);
    host.commandLine().input().feed(text);
    for (;;) {
        host::StepResult result = host.commandLine().step();
        win32::Desktop::current()->settle();
        // What a command makes of a dialog that was closed under it matters less than why.
        if (auto failure = driver.takeFailure())
            result.problem = std::move(failure);
        if (result.problem) {
            misplaced.explain(*result.problem);
            host.freshLine();
            complainAbout(*result.problem, options);
            worst = std::max(worst, statusOf(*result.problem));
            if (!options.keepGoing)
                return worst;
        }
        if (!result.ran || host.quitRequested())
            return worst;
    }
}

/// Runs the script before a window that nobody sees, so that commands can open their dialogs.
ExitStatus runOnDesktop(CWinApp& application, Host& host, const Options& options, const std::string& text) {
    DialogDriver driver(host);
    win32::Desktop desktop(driver);
    CFrameWnd frame;
    const CRect all(0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN));
    const LPCSTR className = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW));
    if (!frame.Create(className, "vondrake", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN, all)) {
        complain("The window that dialogs stand before can't be made.");
        return kCommandFailed;
    }
    driver.setMainWindow(frame.m_hWnd);
    application.m_pMainWnd = &frame;
    host.setMainWindow(frame.m_hWnd);
    ExitStatus status = runScript(host, options, text, driver);
    // Modules take their windows down before the desktop ends.
    driver.endScript();
    host.linker().unloadModule("VNDKKeldmoor.arx", false);
    host.setMainWindow(nullptr);
    application.m_pMainWnd = nullptr;
    if (const auto failure = driver.takeFailure()) {
        host.freshLine();
        complainAbout(*failure, options);
        status = std::max(status, kCommandFailed);
    }
    return status;
}

} // namespace

ExitStatus runBatch(CWinApp& application, Host& host, const Options& options) {
    int error = 0;
    auto script = readScript(options.script, error);
    if (!script) {
        complain("The script \"" + options.script + "\" can't be read: " + std::strerror(error) + ".");
        return kWrongUsage;
    }
    host.setPrint([](std::string_view text) { writeOut(win32::toUtf8(text)); });
    // The classes of Intelligent objects are there before a drawing that holds some is read; the module finds its
    // first drawing open when it starts, as it would in a running host.
    if (!loadObjectLibrary(host))
        return kCommandFailed;
    if (!openDrawing(host, options.drawing).empty())
        return kDrawingFailed;
    if (!loadModule(host))
        return kCommandFailed;
    const ExitStatus status = runOnDesktop(application, host, options, scriptText(std::move(*script)));
    host.freshLine();
    return status;
}

} // namespace vndk::app
