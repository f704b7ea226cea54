// Loading modules (.arx) and object libraries (.dbx) into the host.
//
// Load: the library is mapped (its statics are built), its process attach runs, then acrxEntryPoint gets kInitAppMsg,
// then kLoadDwgMsg once for each open document, that document being current. Unload: kUnloadDwgMsg for each document,
// kUnloadAppMsg, process detach, unmapped. A document opened later brings kLoadDwgMsg, one that closes kUnloadDwgMsg.
// A library loaded twice is counted; only the last unload takes effect. A library without acrxEntryPoint (an object
// library may do without) is mapped and gets no messages; an .arx without it is refused.
//
// An application is locked when it begins: it can't be unloaded until it unlocks itself with the packet that came
// with kInitAppMsg. Object libraries (.dbx) begin unlocked; one that answers kUnloadAppMsg with kRetError has objects
// in use and stays loaded.
//
// Names: a path in either form, or a file name, which is looked for in the program's folder and then in the support
// folders. All calls belong to the host's one thread.
#pragma once

#include "rx/app_codes.h"
#include "rx/class.h"
#include "win32/types.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class AcApDocument;

namespace vndk::host {

class Host;

/// One loaded library.
struct LoadedApplication {
    std::string name;     // file name as it was found, for example "VNDKKeldmoor.arx"
    std::string hostPath; // system path, UTF-8
    HINSTANCE instance = nullptr;
    AcRxEntryPoint entry = nullptr; // null without acrxEntryPoint
    int users = 0;
    bool locked = false;
    bool mdiAware = false;
    bool initialised = false; // kInitAppMsg has been answered
};

} // namespace vndk::host

/// Registered in acrxSysRegistry() as "DynamicLinker".
class AcRxDynamicLinker : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcRxDynamicLinker)
public:
    explicit AcRxDynamicLinker(vndk::host::Host& host);
    ~AcRxDynamicLinker() override;

    /// Both take the packet of kInitAppMsg. False: no application has that packet.
    bool unlockApplication(void* packet);
    bool lockApplication(void* packet);
    bool isApplicationLocked(const char* name) const;
    bool registerAppMDIAware(void* packet);
    bool registerAppNotMDIAware(void* packet);

    /// False with a message on the command line if `print` is set; lastError() has it in any case.
    bool loadModule(const char* name, bool print, bool asCommand = false);
    /// False: not loaded, locked, or in use.
    bool unloadModule(const char* name, bool asCommand = false);
    const std::string& lastError() const { return lastError_; }
    /// In the order of loading.
    std::vector<const vndk::host::LoadedApplication*> applications() const;

    // For the host.
    /// Sends kLoadDwgMsg or kUnloadDwgMsg of one document to every application.
    void tellDocument(AcRx::AppMsgCode message);
    void tellAll(AcRx::AppMsgCode message);
    /// Sends one message to one application, with acedDefun and its kin working for it meanwhile.
    AcRx::AppRetCode send(vndk::host::LoadedApplication& application, AcRx::AppMsgCode message);
    /// Unloads everything, the last one first, locks or not.
    void unloadAll();
    void addSupportFolder(std::string hostPath) { supportFolders_.push_back(std::move(hostPath)); }
    const std::vector<std::string>& supportFolders() const { return supportFolders_; }

private:
    using Application = vndk::host::LoadedApplication;
    Application* find(const std::string& name) const;
    Application* lastOf(bool objectLibraries) const;
    std::string locate(const std::string& name) const;
    void start(Application& application);
    bool stop(Application& application, bool always);
    bool fail(std::string message, bool print);

    vndk::host::Host& host_;
    std::vector<std::unique_ptr<Application>> applications_;
    std::vector<std::string> supportFolders_;
    std::string lastError_;
};

/// The same through the host's one linker. True on success.
bool acrxLoadModule(const char* moduleName, bool printit, bool asCmd = false);
bool acrxUnloadModule(const char* moduleName, bool asCmd = false);
/// Names of the loaded libraries as a list of RTSTR, owned by the caller; null if none.
struct resbuf* acrxLoadedApps();
