// Making, deleting, moving and copying files and folders.
#include "kernel/file_facts.h"
#include "win32/codepage.h"
#include "win32/error.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

using namespace vndk::win32;

namespace {

class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] int get() const { return number_; }
    bool close() {
        const int number = number_;
        number_ = -1;
        return number < 0 || ::close(number) == 0;
    }

private:
    int number_;
};

bool refuse(DWORD code) {
    SetLastError(code);
    return false;
}

bool writeAll(int target, const char* bytes, ssize_t count) {
    while (count > 0) {
        const ssize_t written = ::write(target, bytes, static_cast<std::size_t>(count));
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        bytes += written;
        count -= written;
    }
    return true;
}

bool copyContent(int source, int target) {
    constexpr std::size_t portion = 1 << 16;
    std::string buffer(portion, '\0');
    while (true) {
        const ssize_t count = ::read(source, buffer.data(), buffer.size());
        if (count == 0)
            return true;
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 || !writeAll(target, buffer.data(), count))
            return false;
    }
}

// Writes beside the target and renames, so that a copy that fails leaves the target as it was.
bool copyFile(const std::string& from, const std::string& to, bool replace) {
    Descriptor source(open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat facts {};
    if (source.get() < 0 || fstat(source.get(), &facts) != 0)
        return refuse(fileError(from));
    if (!S_ISREG(facts.st_mode))
        return refuse(ERROR_ACCESS_DENIED);
    std::string temporary = to + ".XXXXXX";
    Descriptor target(mkostemp(temporary.data(), O_CLOEXEC));
    if (target.get() < 0)
        return refuse(fileError(to));
    const timespec times[2] = {facts.st_atim, facts.st_mtim};
    const bool written = copyContent(source.get(), target.get()) && fchmod(target.get(), facts.st_mode & 0777) == 0 &&
                         futimens(target.get(), times) == 0 && target.close();
    const bool placed =
        written && (replace ? rename(temporary.c_str(), to.c_str()) == 0
                            : renameat2(AT_FDCWD, temporary.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0);
    if (placed)
        return true;
    const DWORD code = errno == EEXIST ? ERROR_FILE_EXISTS : fileError(to);
    unlink(temporary.c_str());
    return refuse(code);
}

// The same place with the last name as it stands in a path of the platform.
std::string respelt(const std::string& host, std::string_view path) {
    while (!path.empty() && (path.back() == '\\' || path.back() == '/'))
        path.remove_suffix(1);
    const std::string name = toUtf8(path.substr(path.find_last_of("\\/:") + 1));
    return name.empty() || name == "." || name == ".." ? host : host.substr(0, host.rfind('/') + 1) + name;
}

bool exists(const std::string& path) {
    struct stat facts {};
    return lstat(path.c_str(), &facts) == 0;
}

} // namespace

BOOL CreateDirectoryA(LPCSTR path, LPVOID) {
    const auto host = hostPathOf(path);
    if (!host)
        return FALSE;
    if (mkdir(host->c_str(), 0777) == 0)
        return TRUE;
    if (errno == EEXIST)
        return refuse(ERROR_ALREADY_EXISTS) ? TRUE : FALSE;
    // A folder can't be "not found": it is the one it should lie in that is missing.
    return errno == ENOENT ? (refuse(ERROR_PATH_NOT_FOUND) ? TRUE : FALSE) : failed(*host);
}

BOOL RemoveDirectoryA(LPCSTR path) {
    const auto host = hostPathOf(path);
    if (!host)
        return FALSE;
    if (rmdir(host->c_str()) == 0)
        return TRUE;
    if (errno == ENOTEMPTY || errno == EEXIST) {
        SetLastError(ERROR_DIR_NOT_EMPTY);
        return FALSE;
    }
    return failed(*host);
}

BOOL DeleteFileA(LPCSTR path) {
    const auto host = hostPathOf(path);
    if (!host)
        return FALSE;
    struct stat facts {};
    if (lstat(host->c_str(), &facts) != 0)
        return failed(*host);
    if (S_ISDIR(facts.st_mode) || (attributesOf(facts, lastComponent(*host)) & FILE_ATTRIBUTE_READONLY) != 0) {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    return unlink(host->c_str()) == 0 ? TRUE : failed(*host);
}

BOOL MoveFileA(LPCSTR from, LPCSTR to) {
    const auto source = hostPathOf(from);
    auto target = source ? hostPathOf(to) : std::nullopt;
    if (!target)
        return FALSE;
    if (!exists(*source)) {
        errno = ENOENT;
        return failed(*source);
    }
    // A path that differs in case only was found to be the file itself: it is to be spelt anew.
    if (*target == *source) {
        const std::string spelt = respelt(*source, to);
        return rename(source->c_str(), spelt.c_str()) == 0 ? TRUE : failed(*source);
    }
    if (renameat2(AT_FDCWD, source->c_str(), AT_FDCWD, target->c_str(), RENAME_NOREPLACE) == 0)
        return TRUE;
    if (errno == EEXIST) {
        SetLastError(ERROR_ALREADY_EXISTS);
        return FALSE;
    }
    if (errno != EXDEV)
        return failed(*target);
    if (!copyFile(*source, *target, false))
        return FALSE;
    return unlink(source->c_str()) == 0 ? TRUE : failed(*source);
}

BOOL CopyFileA(LPCSTR from, LPCSTR to, BOOL failIfExists) {
    const auto source = hostPathOf(from);
    const auto target = source ? hostPathOf(to) : std::nullopt;
    if (!target)
        return FALSE;
    struct stat facts {};
    if (lstat(target->c_str(), &facts) == 0) {
        if (failIfExists != FALSE)
            return refuse(ERROR_FILE_EXISTS) ? TRUE : FALSE;
        const bool readOnly = (attributesOf(facts, lastComponent(*target)) & FILE_ATTRIBUTE_READONLY) != 0;
        if (S_ISDIR(facts.st_mode) || readOnly || *target == *source)
            return refuse(ERROR_ACCESS_DENIED) ? TRUE : FALSE;
    }
    return copyFile(*source, *target, failIfExists == FALSE) ? TRUE : FALSE;
}

BOOL SetFileAttributesA(LPCSTR path, DWORD attributes) {
    const auto host = hostPathOf(path);
    if (!host)
        return FALSE;
    struct stat facts {};
    if (stat(host->c_str(), &facts) != 0)
        return failed(*host);
    constexpr mode_t everybody = S_IWUSR | S_IWGRP | S_IWOTH;
    const bool readOnly = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    const bool wasReadOnly = (facts.st_mode & everybody) == 0;
    if (readOnly == wasReadOnly || S_ISDIR(facts.st_mode))
        return TRUE;
    const mode_t mode = readOnly ? facts.st_mode & ~everybody : facts.st_mode | S_IWUSR;
    return chmod(host->c_str(), mode & 07777) == 0 ? TRUE : failed(*host);
}

UINT GetTempFileNameA(LPCSTR folder, LPCSTR prefix, UINT number, LPSTR name) {
    const auto host = hostPathOf(folder);
    if (!host || name == nullptr) {
        if (host)
            SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    struct stat facts {};
    if (stat(host->c_str(), &facts) != 0 || !S_ISDIR(facts.st_mode)) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return 0;
    }
    std::string start(folder);
    if (start.back() != '\\' && start.back() != '/')
        start += '\\';
    if (prefix != nullptr)
        start.append(prefix, strnlen(prefix, 3));
    constexpr std::size_t numberLength = 4 + sizeof ".tmp";
    if (start.size() + numberLength > MAX_PATH) {
        SetLastError(ERROR_FILENAME_EXCED_RANGE);
        return 0;
    }
    const auto write = [&](UINT value) { std::snprintf(name, MAX_PATH, "%s%X.tmp", start.c_str(), value & 0xFFFF); };
    if ((number & 0xFFFF) != 0) {
        write(number);
        return number;
    }
    static UINT last = static_cast<UINT>(getpid());
    for (int tries = 0; tries < 0xFFFF; ++tries) {
        last = last % 0xFFFF + 1;
        write(last);
        const auto path = hostPathOf(name);
        if (!path)
            return 0;
        const Descriptor made(open(path->c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666));
        if (made.get() >= 0)
            return last;
        if (errno != EEXIST) {
            failed(*path);
            return 0;
        }
    }
    SetLastError(ERROR_FILE_EXISTS);
    return 0;
}
