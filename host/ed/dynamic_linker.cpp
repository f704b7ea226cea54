#include "ed/dynamic_linker.h"

#include "ads/external_functions.h"
#include "db/resbuf.h"
#include "ed/host.h"
#include "win32/codepage.h"
#include "win32/drive_map.h"
#include "win32/loader.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

ACRX_NO_CONS_DEFINE_MEMBERS(AcRxDynamicLinker, AcRxObject)

namespace fs = std::filesystem;
using vndk::host::LoadedApplication;

namespace {

std::string fileNameOf(const std::string& path) {
    const size_t cut = path.find_last_of("\\/:");
    return cut == std::string::npos ? path : path.substr(cut + 1);
}

bool endsWithNoCase(const std::string& text, std::string_view end) {
    return text.size() >= end.size() &&
           vndk::win32::compareNoCase(std::string_view(text).substr(text.size() - end.size()), end) == 0;
}

bool isObjectLibrary(const LoadedApplication& application) { return endsWithNoCase(application.name, ".dbx"); }

fs::path programFolder() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).parent_path();
}

/// A file of that name in the folder, by its exact name or by one that differs in case.
std::string fileIn(const fs::path& folder, const std::string& name) {
    std::error_code error;
    if (fs::is_regular_file(folder / name, error))
        return (folder / name).string();
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error))
        if (vndk::win32::compareNoCase(entry.path().filename().string(), name) == 0 && entry.is_regular_file(error))
            return entry.path().string();
    return {};
}

} // namespace

AcRxDynamicLinker::AcRxDynamicLinker(vndk::host::Host& host) : host_(host) {}

AcRxDynamicLinker::~AcRxDynamicLinker() = default;

LoadedApplication* AcRxDynamicLinker::find(const std::string& name) const {
    const std::string file = fileNameOf(name);
    for (const auto& application : applications_)
        if (vndk::win32::compareNoCase(application->name, file) == 0)
            return application.get();
    return nullptr;
}

// A packet is the address of the application's record.

bool AcRxDynamicLinker::unlockApplication(void* packet) {
    for (const auto& application : applications_)
        if (application.get() == packet)
            return application->locked = false, true;
    return false;
}

bool AcRxDynamicLinker::lockApplication(void* packet) {
    for (const auto& application : applications_)
        if (application.get() == packet)
            return application->locked = true;
    return false;
}

bool AcRxDynamicLinker::isApplicationLocked(const char* name) const {
    const LoadedApplication* const application = name ? find(name) : nullptr;
    return application && application->locked;
}

bool AcRxDynamicLinker::registerAppMDIAware(void* packet) {
    for (const auto& application : applications_)
        if (application.get() == packet)
            return application->mdiAware = true;
    return false;
}

bool AcRxDynamicLinker::registerAppNotMDIAware(void* packet) {
    for (const auto& application : applications_)
        if (application.get() == packet)
            return application->mdiAware = false, true;
    return false;
}

std::vector<const LoadedApplication*> AcRxDynamicLinker::applications() const {
    std::vector<const LoadedApplication*> all;
    for (const auto& application : applications_)
        all.push_back(application.get());
    return all;
}

bool AcRxDynamicLinker::fail(std::string message, bool print) {
    lastError_ = std::move(message);
    if (print) {
        host_.freshLine();
        host_.print(lastError_ + "\n");
    }
    return false;
}

std::string AcRxDynamicLinker::locate(const std::string& name) const {
    if (name.find_first_of("\\/:") != std::string::npos) {
        const auto path = vndk::win32::DriveMap::current().toHost(name);
        std::error_code error;
        return path && fs::is_regular_file(*path, error) ? *path : std::string();
    }
    std::string found = fileIn(programFolder(), vndk::win32::toUtf8(name));
    for (size_t i = 0; found.empty() && i < supportFolders_.size(); ++i)
        found = fileIn(supportFolders_[i], vndk::win32::toUtf8(name));
    return found;
}

bool AcRxDynamicLinker::loadModule(const char* moduleName, bool print, bool /*asCommand*/) {
    std::string name = moduleName ? moduleName : "";
    if (name.empty())
        return fail("Give the name of the application file to load.", print);
    if (fileNameOf(name).find('.') == std::string::npos)
        name += ".arx";
    if (LoadedApplication* const loaded = find(name))
        return ++loaded->users > 0;
    const std::string path = locate(name);
    if (path.empty())
        return fail("The file \"" + name + "\" isn't in the program's folder nor among the support files.", print);

    auto owned = std::make_unique<LoadedApplication>();
    LoadedApplication& application = *owned;
    application.name = fileNameOf(vndk::win32::fromUtf8Lossy(path));
    application.hostPath = path;
    application.users = 1;
    application.locked = !endsWithNoCase(name, ".dbx");
    // A library may load others while it attaches, so the list grows behind this entry.
    applications_.push_back(std::move(owned));
    const vndk::win32::LoadResult result = vndk::win32::loadLibrary(path);
    const auto drop = [&] {
        std::erase_if(applications_, [&application](const auto& item) { return item.get() == &application; });
    };
    if (!result.status.ok()) {
        drop();
        return fail(result.status.message(), print);
    }
    application.instance = result.instance;
    application.entry =
        reinterpret_cast<AcRxEntryPoint>(vndk::win32::getProcAddress(result.instance, "acrxEntryPoint"));
    if (!application.entry && !endsWithNoCase(name, ".dbx")) {
        vndk::win32::freeLibrary(result.instance);
        drop();
        return fail("\"" + name + "\" is no application: it has no acrxEntryPoint.", print);
    }
    start(application);
    return true;
}

void AcRxDynamicLinker::start(Application& application) {
    if (!application.entry)
        return;
    send(application, AcRx::kInitAppMsg);
    application.initialised = true;
    AcApDocManager& documents = host_.documents();
    AcApDocument* const current = documents.curDocument();
    for (const std::unique_ptr<AcApDocumentIterator> it(documents.newAcApDocumentIterator()); !it->done(); it->step()) {
        documents.setCurDocument(it->document());
        send(application, AcRx::kLoadDwgMsg);
    }
    if (current)
        documents.setCurDocument(current);
}

bool AcRxDynamicLinker::unloadModule(const char* moduleName, bool /*asCommand*/) {
    std::string name = moduleName ? moduleName : "";
    if (fileNameOf(name).find('.') == std::string::npos)
        name += ".arx";
    LoadedApplication* const application = find(name);
    if (!application)
        return fail("\"" + name + "\" isn't loaded.", false);
    if (application->users > 1)
        return --application->users > 0;
    if (application->locked)
        return fail("\"" + name + "\" is locked: it can't be unloaded while the program runs.", false);
    if (!stop(*application, false))
        return fail("\"" + name + "\" is in use: objects of its classes are in open drawings.", false);
    return true;
}

bool AcRxDynamicLinker::stop(Application& application, bool always) {
    bool inUse = false;
    if (application.entry) {
        AcApDocManager& documents = host_.documents();
        AcApDocument* const current = documents.curDocument();
        for (const std::unique_ptr<AcApDocumentIterator> it(documents.newAcApDocumentIterator()); !it->done();
             it->step()) {
            documents.setCurDocument(it->document());
            send(application, AcRx::kUnloadDwgMsg);
        }
        if (current)
            documents.setCurDocument(current);
        inUse = send(application, AcRx::kUnloadAppMsg) == AcRx::kRetError;
    }
    if (inUse && !always)
        return false;
    host_.externals().forgetApplication(application);
    // The detach may unload others, so the entry goes first.
    const HINSTANCE instance = application.instance;
    std::erase_if(applications_, [&application](const auto& item) { return item.get() == &application; });
    // What still lives needs the library's code: then it stays mapped.
    if (!inUse)
        vndk::win32::freeLibrary(instance);
    return true;
}

void AcRxDynamicLinker::unloadAll() {
    // Applications use object libraries, which they unload themselves; what is left goes last.
    for (const bool libraries : {false, true})
        while (LoadedApplication* const last = lastOf(libraries))
            stop(*last, true);
}

LoadedApplication* AcRxDynamicLinker::lastOf(bool objectLibraries) const {
    for (auto it = applications_.rbegin(); it != applications_.rend(); ++it)
        if (isObjectLibrary(**it) == objectLibraries)
            return it->get();
    return nullptr;
}

AcRx::AppRetCode AcRxDynamicLinker::send(LoadedApplication& application, AcRx::AppMsgCode message) {
    const vndk::host::ExternalFunctions::ApplicationScope scope(host_.externals(), application);
    return application.entry ? application.entry(message, &application) : AcRx::kRetOK;
}

void AcRxDynamicLinker::tellDocument(AcRx::AppMsgCode message) { tellAll(message); }

void AcRxDynamicLinker::tellAll(AcRx::AppMsgCode message) {
    // An application may load or unload others when it is told.
    std::vector<LoadedApplication*> told;
    for (const auto& application : applications_)
        if (application->initialised)
            told.push_back(application.get());
    for (LoadedApplication* application : told)
        if (std::any_of(applications_.begin(), applications_.end(),
                        [application](const auto& item) { return item.get() == application; }))
            send(*application, message);
}

bool acrxLoadModule(const char* moduleName, bool printit, bool asCmd) {
    vndk::host::Host* const host = vndk::host::Host::current();
    return host && host->linker().loadModule(moduleName, printit, asCmd);
}

bool acrxUnloadModule(const char* moduleName, bool asCmd) {
    vndk::host::Host* const host = vndk::host::Host::current();
    return host && host->linker().unloadModule(moduleName, asCmd);
}

resbuf* acrxLoadedApps() {
    vndk::host::Host* const host = vndk::host::Host::current();
    resbuf* head = nullptr;
    resbuf** tail = &head;
    if (host)
        for (const LoadedApplication* application : host->linker().applications()) {
            *tail = acutNewRb(RTSTR);
            (*tail)->resval.rstring = acutNewString(application->name.c_str());
            tail = &(*tail)->rbnext;
        }
    return head;
}
