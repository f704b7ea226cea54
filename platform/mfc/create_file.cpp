#include "create_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>

namespace {

/// Closes at the end of a scope and keeps errno.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        const int error = errno;
        if (number_ >= 0)
            close(number_);
        errno = error;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    [[nodiscard]] int number() const { return number_; }
    [[nodiscard]] int release() {
        const int number = number_;
        number_ = -1;
        return number;
    }

private:
    int number_;
};

bool belongsToUserOr(const struct stat& facts, uid_t owner) {
    return facts.st_uid == geteuid() || facts.st_uid == owner;
}

bool isTrap(const struct stat& file, const struct stat& folder) {
    return !S_ISREG(file.st_mode) || !belongsToUserOr(file, folder.st_uid) || file.st_nlink > 1;
}

/// Whether the folder's name stands for a link that the user doesn't want to follow.
bool isForeignLink(int folder, const char* name, const struct stat& folderFacts) {
    struct stat link {};
    return fstatat(folder, name, &link, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(link.st_mode) &&
           !belongsToUserOr(link, folderFacts.st_uid);
}

int createInSharedFolder(int folder, const struct stat& folderFacts, const char* name, int flags, unsigned mode) {
    // A named pipe without a reader would be waited for.
    const int careful = (flags & ~O_TRUNC) | O_NONBLOCK;
    Descriptor file(openat(folder, name, careful | O_NOFOLLOW, mode));
    if (file.number() < 0 && errno == ELOOP && !isForeignLink(folder, name, folderFacts))
        return openat(folder, name, flags, mode);
    if (file.number() < 0) {
        errno = errno == ELOOP || errno == ENXIO ? EACCES : errno;
        return -1;
    }
    struct stat facts {};
    if (fstat(file.number(), &facts) != 0)
        return -1;
    if (isTrap(facts, folderFacts)) {
        errno = EACCES;
        return -1;
    }
    if ((flags & O_TRUNC) != 0 && ftruncate(file.number(), 0) != 0)
        return -1;
    return file.release();
}

} // namespace

int createFile(const std::string& path, int flags, unsigned mode) {
    const std::size_t separator = path.rfind('/');
    const std::string parent = separator == std::string::npos ? "." : path.substr(0, separator + 1);
    const std::string name = separator == std::string::npos ? path : path.substr(separator + 1);
    const Descriptor folder(open(parent.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    struct stat facts {};
    const bool shared = folder.number() >= 0 && fstat(folder.number(), &facts) == 0 && (facts.st_mode & S_IWOTH) != 0;
    if (!shared)
        return open(path.c_str(), flags, mode);
    return createInSharedFolder(folder.number(), facts, name.c_str(), flags, mode);
}
