// The host: everything that a module sees around the drawing. One object, that a test makes and throws away.
//
//     Host host;
//     host.setPrint([](std::string_view text) { std::cout << text; });
//     host.documents().appContextNewDocument(nullptr);
//     host.runText("LINE 0,0 10,0\n\n");
//
// There is one current host at a time; the global functions of ads/ads.h and the services in acrxSysRegistry() reach
// it. All calls belong to one thread.
#pragma once

#include "ap/document.h"
#include "ed/command_line.h"
#include "ed/command_stack.h"
#include "ed/dynamic_linker.h"
#include "ed/editor.h"
#include "ed/prompts.h"
#include "ed/system_variables.h"
#include "win32/types.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class AcDbHostApplicationServices;
class AcRxObject;

namespace vndk::host {

class Display;
class ExternalFunctions;
class HostServices;
class ProgramResources;

/// A registry of the user's settings, section by section; the app hands in the real one.
class ProfileStore {
public:
    virtual ~ProfileStore() = default;
    virtual std::optional<std::string> read(std::string_view section, std::string_view key) = 0;
    virtual void write(std::string_view section, std::string_view key, std::string_view value) = 0;
};

class Host {
public:
    /// Becomes the current host, registers the services and the host's own commands. No document is open yet.
    Host();
    /// Closes all documents without saving, then unloads all modules.
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    /// The current host; null if there is none.
    static Host* current();

    AcApDocManager& documents() { return *documents_; }
    AcEdCommandStack& commands() { return commands_; }
    AcEditor& editor() { return editor_; }
    AcRxDynamicLinker& linker() { return linker_; }
    SystemVariables& variables() { return variables_; }
    Prompts& prompts() { return prompts_; }
    CommandLine& commandLine() { return commandLine_; }
    ExternalFunctions& externals() { return *externals_; }

    /// Where the command line's output goes, in code page 1252. By default nowhere.
    void setPrint(std::function<void(std::string_view)> print) { print_ = std::move(print); }
    void print(std::string_view text);
    /// True when the last character that was printed ended a line.
    bool atLineStart() const { return atLineStart_; }
    /// Begins a new line unless the output is at the beginning of one.
    void freshLine();
    /// What acedAlert does; by default prints the message on lines of its own.
    void setAlert(std::function<void(std::string_view)> alert) { alert_ = std::move(alert); }
    void alert(std::string_view message);
    /// A question to the user that is answered by yes or no; nobody to ask says yes.
    void setConfirm(std::function<bool(std::string_view)> confirm) { confirm_ = std::move(confirm); }
    bool confirm(std::string_view question) const { return !confirm_ || confirm_(question); }
    /// Told when text has been queued for a command line, which may sit in a loop that waits for the user.
    void setWake(std::function<void()> wake) { wake_ = std::move(wake); }
    void wake() const {
        if (wake_)
            wake_();
    }
    /// Not owned; null keeps settings for this session only.
    void setProfile(ProfileStore* profile) {
        profile_ = profile;
        variables_.loadProfile();
    }
    ProfileStore* profile() const { return profile_; }

    /// The program's main window, for the dialogs of modules; null without a screen.
    void setMainWindow(HWND window) { mainWindow_ = window; }
    HWND mainWindow() const { return mainWindow_; }
    /// The command line docked in it.
    void setCommandLineWindow(HWND window) { commandLineWindow_ = window; }
    HWND commandLineWindow() const { return commandLineWindow_; }
    /// Not owned; null while no window shows drawings.
    void setDisplay(Display* display) { display_ = display; }
    Display* display() const { return display_; }

    /// Feeds whole lines of typed text and runs them. The first problem, if any; the rest is run all the same.
    std::optional<Problem> runText(std::string_view typed);
    /// Runs what sendStringToExecute has queued.
    void pump();

    /// QUIT asks for it; the program leaves its loop when it sees the mark.
    void requestQuit() { quit_ = true; }
    bool quitRequested() const { return quit_; }

private:
    void registerServices();
    void removeServices();

    Host* former_;
    std::unique_ptr<ProgramResources> resources_;
    std::unique_ptr<HostServices> services_;
    AcDbHostApplicationServices* formerServices_;
    std::function<void(std::string_view)> print_;
    std::function<void(std::string_view)> alert_;
    std::function<bool(std::string_view)> confirm_;
    std::function<void()> wake_;
    ProfileStore* profile_ = nullptr;
    AcEdCommandStack commands_;
    AcEditor editor_;
    AcRxDynamicLinker linker_;
    SystemVariables variables_;
    Prompts prompts_;
    CommandLine commandLine_;
    std::unique_ptr<ExternalFunctions> externals_;
    std::unique_ptr<AcApDocManager> documents_;
    std::map<std::string, AcRxObject*> formerEntries_;
    bool atLineStart_ = true;
    bool quit_ = false;
    HWND mainWindow_ = nullptr;
    HWND commandLineWindow_ = nullptr;
    Display* display_ = nullptr;
};

} // namespace vndk::host
