#include "win32/loader.h"

#include "win32/codepage.h"
#include "win32/error.h"
#include "win32/resources.h"

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

namespace vndk::win32 {

namespace {

struct Library {
    std::string path;
    link_map* map = nullptr;
    void* handle = nullptr; // one reference of the system's loader, given back by unmap()
    const ModuleRecord* record = nullptr;
    HINSTANCE instance = nullptr;
    int users = 0;
    std::vector<Library*> dependencies; // each counts as one user of that library
};

// Never destroyed: libraries withdraw their records while the program ends, after all statics are gone.
std::vector<const ModuleRecord*>& records() {
    static auto& all = *new std::vector<const ModuleRecord*>;
    return all;
}

std::vector<std::unique_ptr<Library>>& libraries() {
    static auto& all = *new std::vector<std::unique_ptr<Library>>;
    return all;
}

Library* findLibrary(HINSTANCE instance) {
    for (const auto& library : libraries())
        if (library->instance == instance)
            return library.get();
    return nullptr;
}

Library* findLibrary(const link_map* map) {
    for (const auto& library : libraries())
        if (library->map == map)
            return library.get();
    return nullptr;
}

struct Program {
    std::string name;
    HINSTANCE instance = nullptr;
};

// In the order of registration.
std::vector<Program>& programs() {
    static auto& all = *new std::vector<Program>;
    return all;
}

// The mapped file that an address lies in.
link_map* mapOfAddress(const void* address) {
    Dl_info info{};
    void* map = nullptr;
    return dladdr1(address, &info, &map, RTLD_DL_LINKMAP) != 0 ? static_cast<link_map*>(map) : nullptr;
}

const ModuleRecord* recordOf(const link_map* map) {
    for (const ModuleRecord* record : records())
        if (mapOfAddress(record->anchor) == map)
            return record;
    return nullptr;
}

const char* fileName(const char* path) {
    const char* slash = std::strrchr(path, '/');
    return slash != nullptr ? slash + 1 : path;
}

// A name as a module's file would have it.
std::string moduleFileName(std::string_view name) {
    return std::string(name) + (name.find('.') == std::string_view::npos ? ".dll" : "");
}

// Calls `visit` with each file name that the mapped file says it needs.
template <class Visit>
void forEachNeeded(const link_map& map, Visit visit) {
    const char* names = nullptr;
    for (const ElfW(Dyn)* row = map.l_ld; row->d_tag != DT_NULL; ++row)
        if (row->d_tag == DT_STRTAB)
            names = reinterpret_cast<const char*>(row->d_un.d_ptr);
    for (const ElfW(Dyn)* row = map.l_ld; names != nullptr && row->d_tag != DT_NULL; ++row)
        if (row->d_tag == DT_NEEDED)
            visit(fileName(names + row->d_un.d_val));
}

std::string besideProgram(const std::string& name) {
    std::string path(4096, '\0');
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    path.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return path.substr(0, path.rfind('/') + 1) + name;
}

BOOL callEntry(const Library& library, DWORD reason) {
    try {
        return library.record->entry(library.instance, reason, nullptr);
    } catch (...) {
        return FALSE;
    }
}

void release(Library& library);

// Forgets a library that is detached already and unmaps it.
void unmap(Library& library) {
    const std::vector<Library*> dependencies = library.dependencies;
    for (auto at = dependencies.rbegin(); at != dependencies.rend(); ++at)
        release(**at);
    void* handle = library.handle;
    unregisterInstance(library.instance);
    std::erase_if(libraries(), [&library](const auto& own) { return own.get() == &library; });
    dlclose(handle);
}

void release(Library& library) {
    // The last user stays counted during the detach, so that a release from within cannot do it twice.
    if (library.users > 1) {
        --library.users;
        return;
    }
    callEntry(library, DLL_PROCESS_DETACH);
    unmap(library);
}

LoadResult attach(const std::string& path, void* handle, const ModuleRecord& record);

// Attaches, or holds, every library with a record that `library` links.
Status holdDependencies(Library& library) {
    Status status;
    forEachNeeded(*library.map, [&](const char* name) {
        for (const ModuleRecord* record : records()) {
            link_map* map = mapOfAddress(record->anchor);
            if (!status.ok() || map == nullptr || std::strcmp(fileName(map->l_name), name) != 0)
                continue;
            LoadResult held = loadLibrary(map->l_name);
            status = held.status;
            if (Library* dependency = findLibrary(held.instance))
                library.dependencies.push_back(dependency);
            return;
        }
    });
    return status;
}

LoadResult fail(Library& library, Status status) {
    unmap(library);
    return {std::move(status), nullptr};
}

// Makes a mapped library one of ours and tells its entry. Takes over `handle`.
LoadResult attach(const std::string& path, void* handle, const ModuleRecord& record) {
    const std::span<const std::uint8_t> resources(record.resourcesBegin, record.resourcesEnd);
    HINSTANCE instance = nullptr;
    if (Status status = registerInstance(resources, instance); !status.ok()) {
        dlclose(handle);
        return {Status(status.code(), "Cannot load " + path + ". " + status.message()), nullptr};
    }
    libraries().push_back(std::make_unique<Library>());
    Library& library = *libraries().back();
    library.path = path;
    library.handle = handle;
    library.record = &record;
    library.instance = instance;
    library.map = mapOfAddress(record.anchor);
    library.users = 1;

    if (Status status = holdDependencies(library); !status.ok())
        return fail(library, status);
    if (callEntry(library, DLL_PROCESS_ATTACH) == FALSE) {
        callEntry(library, DLL_PROCESS_DETACH);
        return fail(library, {ERROR_DLL_INIT_FAILED, "Cannot load " + path + ": its start-up refused. " +
                                                         "The messages above it, if any, tell why."});
    }
    return {Status(), instance};
}

} // namespace

void announceModule(const ModuleRecord& record) { records().push_back(&record); }

void withdrawModule(const ModuleRecord& record) { std::erase(records(), &record); }

LoadResult loadLibrary(const std::string& hostPath) {
    const std::string path = hostPath.find('/') == std::string::npos ? besideProgram(hostPath) : hostPath;
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        const char* reason = dlerror();
        const bool missing = access(path.c_str(), F_OK) != 0;
        return {Status(missing ? ERROR_MOD_NOT_FOUND : ERROR_BAD_EXE_FORMAT,
                       "Cannot load " + path + ": " + (missing ? "there is no such file." : reason)),
                nullptr};
    }
    void* map = nullptr;
    dlinfo(handle, RTLD_DI_LINKMAP, &map);
    if (Library* loaded = findLibrary(static_cast<link_map*>(map))) {
        dlclose(handle); // The library keeps the reference of its first load.
        ++loaded->users;
        return {Status(), loaded->instance};
    }
    const ModuleRecord* record = recordOf(static_cast<link_map*>(map));
    if (record == nullptr) {
        dlclose(handle);
        return {Status(ERROR_BAD_EXE_FORMAT, "Cannot load " + path +
                                                 ": it is a shared library, but none made for this "
                                                 "program (it announces no entry)."),
                nullptr};
    }
    return attach(path, handle, *record);
}

BOOL freeLibrary(HINSTANCE instance) {
    Library* library = findLibrary(instance);
    if (library == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    release(*library);
    return TRUE;
}

void* getProcAddress(HINSTANCE instance, const char* name) {
    const Library* library = findLibrary(instance);
    if (library == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    void* address = dlsym(library->handle, name);
    if (address == nullptr || mapOfAddress(address) != library->map) {
        SetLastError(ERROR_PROC_NOT_FOUND);
        return nullptr;
    }
    return address;
}

std::string libraryPath(HINSTANCE instance) {
    const Library* library = findLibrary(instance);
    return library != nullptr ? library->path : std::string();
}

} // namespace vndk::win32

namespace vndk::win32 {

Status registerProgram(const std::string& name, std::span<const std::uint8_t> compiledResources, HINSTANCE& instance) {
    Status status = registerInstance(compiledResources, instance);
    if (status.ok())
        programs().push_back({name, instance});
    return status;
}

void unregisterProgram(HINSTANCE instance) {
    std::erase_if(programs(), [instance](const Program& program) { return program.instance == instance; });
    unregisterInstance(instance);
}

} // namespace vndk::win32

HMODULE GetModuleHandleA(LPCSTR name) {
    using namespace vndk::win32;
    const std::string wanted = name != nullptr ? moduleFileName(name) : std::string();
    const auto isWanted = [&wanted](std::string_view own) { return compareNoCase(own, wanted) == 0; };
    for (auto program = programs().rbegin(); program != programs().rend(); ++program)
        if (name == nullptr || isWanted(program->name))
            return program->instance;
    for (const auto& library : libraries())
        if (name != nullptr && isWanted(fileName(library->path.c_str())))
            return library->instance;
    SetLastError(ERROR_MOD_NOT_FOUND);
    return nullptr;
}
