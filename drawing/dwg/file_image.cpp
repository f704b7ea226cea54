#include "dwg/file_image.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace vndk::dwg {

namespace {

/// Addresses in a file have 32 bits, and signed ones occur.
constexpr uint64_t kLargestFile = 0x7FFFFFFF;

Error cannotOpen(const std::string& path, const std::string& why) {
    return {ErrorKind::CannotOpen, path + " can't be opened: " + why + ".", 0};
}

Result<std::vector<uint8_t>> readAll(int file, const std::string& path) {
    struct stat status;
    if (fstat(file, &status) != 0)
        return cannotOpen(path, std::strerror(errno));
    if (!S_ISREG(status.st_mode))
        return cannotOpen(path, "it isn't a file; choose a .dwg file");
    if (static_cast<uint64_t>(status.st_size) > kLargestFile)
        return cannotOpen(path, "it is larger than a drawing can be (2 GB)");
    std::vector<uint8_t> bytes(static_cast<size_t>(status.st_size));
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = ::read(file, bytes.data() + done, bytes.size() - done);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return cannotOpen(path, std::strerror(errno));
        if (count == 0)
            break;
        done += static_cast<size_t>(count);
    }
    bytes.resize(done);
    return bytes;
}

} // namespace

Result<std::shared_ptr<FileImage>> FileImage::read(const std::string& path, VersionMask accepted) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return cannotOpen(path, std::strerror(errno));
    auto bytes = readAll(file, path);
    ::close(file);
    if (!bytes)
        return bytes.error();
    return parse(std::move(*bytes), path, accepted);
}

const ObjectRecord* FileImage::find(uint64_t handle) const {
    const auto found =
        std::lower_bound(objects_.begin(), objects_.end(), handle,
                         [](const ObjectRecord& record, uint64_t value) { return record.handle < value; });
    return found != objects_.end() && found->handle == handle ? &*found : nullptr;
}

} // namespace vndk::dwg
