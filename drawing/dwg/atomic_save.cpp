#include "dwg/atomic_save.h"

#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace vndk::dwg {

namespace {

std::string resolved(const std::string& path) {
    char target[PATH_MAX];
    return realpath(path.c_str(), target) ? std::string(target) : path;
}

std::string folderOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

/// A name beside `path` that begins with a dot, so that file lists don't show it.
std::vector<char> temporaryNameFor(const std::string& path) {
    const size_t slash = path.rfind('/');
    const size_t nameAt = slash == std::string::npos ? 0 : slash + 1;
    // Names have an end; the random letters have to fit in.
    const std::string name = path.substr(0, nameAt) + "." + path.substr(nameAt, 200) + ".XXXXXX";
    return std::vector<char>(name.c_str(), name.c_str() + name.size() + 1);
}

bool writeAll(int file, std::span<const uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        bytes = bytes.subspan(static_cast<size_t>(count));
    }
    return true;
}

bool copyInto(const std::string& from, int target) {
    const int source = ::open(from.c_str(), O_RDONLY | O_CLOEXEC);
    if (source < 0)
        return false;
    std::vector<uint8_t> block(1 << 16);
    ssize_t count;
    while ((count = ::read(source, block.data(), block.size())) > 0 || (count < 0 && errno == EINTR))
        if (count > 0 && !writeAll(target, std::span(block.data(), static_cast<size_t>(count)))) {
            count = -1;
            break;
        }
    const int cause = errno;
    ::close(source);
    errno = cause;
    return count == 0;
}

/// A file that is removed when the holder goes, unless it was renamed.
class TemporaryFile {
public:
    ~TemporaryFile() {
        close();
        if (!name_.empty())
            ::unlink(name_.data());
    }
    bool create(const std::string& path, mode_t mode) {
        name_ = temporaryNameFor(path);
        file_ = ::mkostemp(name_.data(), O_CLOEXEC);
        if (file_ < 0) {
            name_.clear();
            return false;
        }
        return ::fchmod(file_, mode) == 0;
    }
    int file() const { return file_; }
    bool close() {
        const int file = file_;
        file_ = -1;
        return file < 0 || ::close(file) == 0;
    }
    bool renameTo(const std::string& path) {
        if (::rename(name_.data(), path.c_str()) != 0)
            return false;
        name_.clear();
        return true;
    }
    const char* name() const { return name_.data(); }

private:
    std::vector<char> name_;
    int file_ = -1;
};

/// Each step does one thing and leaves errno when it fails.
class AtomicSave {
public:
    AtomicSave(const std::string& path, std::span<const uint8_t> bytes, const std::string& backup)
        : path_(resolved(path)), bytes_(bytes), backup_(backup) {
        struct stat status;
        old_ = ::stat(path_.c_str(), &status) == 0;
        if (old_) {
            mode_ = status.st_mode & 0777;
        } else {
            const mode_t mask = ::umask(0);
            ::umask(mask);
            mode_ = 0666 & ~mask;
        }
    }

    bool perform(SaveStep step) {
        switch (step) {
        case SaveStep::CreateTemporary:
            return temporary_.create(path_, mode_);
        case SaveStep::Write:
            return writeAll(temporary_.file(), bytes_);
        case SaveStep::SyncFile:
            return ::fsync(temporary_.file()) == 0 && temporary_.close();
        case SaveStep::Backup:
            return backup_.empty() || !old_ || makeBackup();
        case SaveStep::Replace:
            return temporary_.renameTo(path_);
        case SaveStep::SyncFolder:
            return syncFolder();
        }
        return false;
    }

private:
    /// The old file under a second name first, so that `path` is never without a file. Where a file system has no
    /// second names a copy is made.
    bool makeBackup() {
        TemporaryFile copy;
        if (!copy.create(backup_, mode_))
            return false;
        ::unlink(copy.name());
        if (::link(path_.c_str(), copy.name()) == 0)
            return copy.renameTo(backup_);
        TemporaryFile full;
        return full.create(backup_, mode_) && copyInto(path_, full.file()) && ::fsync(full.file()) == 0 &&
               full.close() && full.renameTo(backup_);
    }

    bool syncFolder() const {
        const int folder = ::open(folderOf(path_).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (folder < 0)
            return false;
        // Some file systems can't sync a folder and say so; they have nothing to be synced then.
        const bool good = ::fsync(folder) == 0 || errno == EINVAL;
        ::close(folder);
        return good;
    }

    std::string path_;
    std::span<const uint8_t> bytes_;
    std::string backup_;
    bool old_ = false;
    mode_t mode_ = 0644;
    TemporaryFile temporary_;
};

struct StepRow {
    SaveStep step;
    const char* what;
};

constexpr StepRow kSteps[] = {
    {SaveStep::CreateTemporary, "no file can be made in its folder"},
    {SaveStep::Write, "writing failed"},
    {SaveStep::SyncFile, "writing failed"},
    {SaveStep::Backup, "the old file can't be kept as its backup"},
    {SaveStep::Replace, "the new file can't take the old one's place"},
    {SaveStep::SyncFolder, "it is saved, but the disk didn't confirm it"},
};

std::string messageFor(const std::string& path, const StepRow& row, int cause) {
    const bool saved = row.step == SaveStep::SyncFolder;
    return path + (saved ? ": " : " wasn't saved: ") + row.what + " (" + std::strerror(cause) + "). " +
           (saved ? "Save again." : "The file on disk is as it was. Make room or save under another name or folder.");
}

} // namespace

Result<void> saveAtomically(const std::string& path, std::span<const uint8_t> bytes, const std::string& backupPath,
                            const SaveFault& fault) {
    AtomicSave save(path, bytes, backupPath);
    for (const StepRow& row : kSteps) {
        const int injected = fault ? fault(row.step) : 0;
        if (injected == 0 && save.perform(row.step))
            continue;
        const int cause = injected != 0 ? injected : errno;
        return Error{ErrorKind::CannotWrite, messageFor(path, row, cause), 0};
    }
    return {};
}

std::string backupPathFor(const std::string& path) {
    const size_t dot = path.size() - 4;
    if (path.size() > 4 && ::strcasecmp(path.c_str() + dot, ".dwg") == 0 && path[dot - 1] != '/')
        return path.substr(0, dot) + ".bak";
    return path + ".bak";
}

} // namespace vndk::dwg
