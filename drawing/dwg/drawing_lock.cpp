#include "dwg/drawing_lock.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

namespace vndk::dwg {

namespace {

std::string lockPathFor(const std::string& drawingPath) {
    char target[PATH_MAX];
    // All names of one drawing have to lead to one lock.
    const std::string path = realpath(drawingPath.c_str(), target) ? target : drawingPath;
    const size_t slash = path.rfind('/');
    const size_t nameAt = slash == std::string::npos ? 0 : slash + 1;
    return path.substr(0, nameAt) + "." + path.substr(nameAt) + ".lock";
}

/// What the owner wrote about itself; only plain characters, since the file may be anything.
std::string ownerFrom(int file) {
    char text[200];
    const ssize_t count = ::pread(file, text, sizeof text, 0);
    std::string owner;
    for (ssize_t i = 0; i < count && text[i] != '\n'; ++i)
        owner += text[i] >= ' ' && text[i] <= '~' ? text[i] : '?';
    return owner.empty() ? "another program" : owner;
}

std::string describeSelf() {
    char host[HOST_NAME_MAX + 1] = "";
    ::gethostname(host, sizeof host - 1);
    const passwd* user = ::getpwuid(::getuid());
    const std::string name = user && user->pw_name ? user->pw_name : std::to_string(::getuid());
    return name + " on " + host + ", process " + std::to_string(::getpid());
}

void writeOwner(int file) {
    const std::string owner = describeSelf() + "\n";
    // The line is for messages; a lock without it is as good.
    if (::ftruncate(file, 0) == 0 && ::pwrite(file, owner.data(), owner.size(), 0) < 0)
        return;
}

Error lockedBy(const std::string& owner, const std::string& drawingPath, const char* advice) {
    return {ErrorKind::Locked, drawingPath + " is open for writing by " + owner + ". Close it there, " + advice + ".",
            0};
}

/// Whether the path still names the locked file: its former owner may have removed it while we waited to open it.
bool isStillNamed(int file, const std::string& path) {
    struct stat opened;
    struct stat named;
    return ::fstat(file, &opened) == 0 && ::stat(path.c_str(), &named) == 0 && opened.st_ino == named.st_ino &&
           opened.st_dev == named.st_dev;
}

} // namespace

Result<std::unique_ptr<DrawingLock>> DrawingLock::acquire(const std::string& drawingPath) {
    const std::string lockPath = lockPathFor(drawingPath);
    constexpr int kTries = 100;
    for (int i = 0; i < kTries; ++i) {
        const int file = ::open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0644);
        if (file < 0)
            return Error{ErrorKind::CannotWrite,
                         drawingPath + " can't be locked for writing: " + std::strerror(errno) +
                             ". Save it in a folder that is there and in which you may write.",
                         0};
        if (::flock(file, LOCK_EX | LOCK_NB) != 0) {
            const std::string owner = ownerFrom(file);
            ::close(file);
            return lockedBy(owner, drawingPath, "or save under another name");
        }
        if (isStillNamed(file, lockPath)) {
            writeOwner(file);
            return std::unique_ptr<DrawingLock>(new DrawingLock(lockPath, file));
        }
        ::close(file);
    }
    return Error{ErrorKind::Locked, drawingPath + " is being opened and closed by another program. Try again.", 0};
}

Result<void> DrawingLock::check(const std::string& drawingPath) {
    const int file = ::open(lockPathFor(drawingPath).c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (file < 0)
        return {}; // whoever locks a drawing leaves a file that others can read
    // A shared lock keeps no other reader out, and a writer only for this moment.
    const bool free = ::flock(file, LOCK_SH | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    const std::string owner = free ? std::string() : ownerFrom(file);
    ::close(file);
    return free ? Result<void>() : lockedBy(owner, drawingPath, "then try again");
}

DrawingLock::~DrawingLock() {
    // Removed while it is still locked, so that nobody locks a file that then loses its name unnoticed.
    ::unlink(lockPath_.c_str());
    ::close(file_);
}

} // namespace vndk::dwg
