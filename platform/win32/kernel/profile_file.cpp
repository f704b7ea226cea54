#include "win32/profile_file.h"

#include "win32/codepage.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace vndk::win32 {

namespace {

constexpr off_t kLargestFile = 16 << 20;
constexpr std::string_view kBlanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool isQuoted(std::string_view text) {
    return text.size() >= 2 && (text.front() == '"' || text.front() == '\'') && text.back() == text.front();
}

// "[name]" with blanks around; nothing for another line.
std::optional<std::string_view> sectionOf(std::string_view line) {
    line = trimmed(line);
    if (!line.starts_with('['))
        return std::nullopt;
    return trimmed(line.substr(1, line.find(']') - 1));
}

std::optional<std::string_view> keyOf(std::string_view line) {
    line = trimmed(line);
    const std::size_t sign = line.find('=');
    if (line.starts_with(';') || sign == std::string_view::npos || sign == 0)
        return std::nullopt;
    return trimmed(line.substr(0, sign));
}

bool hasControls(std::string_view text) {
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return (static_cast<unsigned char>(c) < 0x20 && c != '\t') || c == 0x7F; });
}

bool isSection(std::string_view name) {
    return !name.empty() && trimmed(name) == name && !hasControls(name) && name.find(']') == std::string_view::npos;
}

bool isKey(std::string_view name) {
    return !name.empty() && trimmed(name) == name && !hasControls(name) && name.find('=') == std::string_view::npos &&
           name.front() != ';' && name.front() != '[';
}

Status systemStatus(const std::string& what, const std::string& path) {
    const int problem = errno;
    return {errorFromErrno(problem), what + " \"" + path + "\": " + std::strerror(problem) + "."};
}

class File {
public:
    explicit File(int descriptor) : descriptor_(descriptor) {}
    ~File() { close(); }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    [[nodiscard]] int get() const { return descriptor_; }
    bool close() {
        const int descriptor = std::exchange(descriptor_, -1);
        return descriptor < 0 || ::close(descriptor) == 0;
    }

private:
    int descriptor_;
};

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

} // namespace

ProfileFile ProfileFile::parse(std::string_view text) {
    ProfileFile profile;
    if (text.find("\r\n") != std::string_view::npos)
        profile.lineEnd_ = "\r\n";
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        profile.lines_.emplace_back(line);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return profile;
}

Status ProfileFile::read(const std::string& hostPath, ProfileFile& profile) {
    profile = {};
    const File file(open(hostPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.get() < 0)
        return errno == ENOENT ? Status() : systemStatus("Cannot read the profile", hostPath);
    struct stat facts {};
    if (fstat(file.get(), &facts) != 0 || !S_ISREG(facts.st_mode) || facts.st_size > kLargestFile)
        return {ERROR_FILE_TOO_LARGE, "The profile \"" + hostPath + "\" is no file of at most 16 MiB; move it away."};
    std::string text(static_cast<std::size_t>(facts.st_size), '\0');
    std::size_t filled = 0;
    while (filled < text.size()) {
        const ssize_t count = ::read(file.get(), text.data() + filled, text.size() - filled);
        if (count < 0 && errno != EINTR)
            return systemStatus("Cannot read the profile", hostPath);
        if (count == 0)
            break;
        filled += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    text.resize(filled);
    profile = parse(text);
    return {};
}

Status ProfileFile::write(const std::string& hostPath) const {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(hostPath.c_str(), nullptr), &std::free);
    const std::string target = real ? real.get() : hostPath;
    std::string temporary = target + ".XXXXXX";
    File file(mkostemp(temporary.data(), O_CLOEXEC));
    if (file.get() < 0)
        return systemStatus("Cannot write the profile", target);
    struct stat old {};
    const mode_t mode = stat(target.c_str(), &old) == 0 ? old.st_mode & 07777 : 0644;
    const bool written = fchmod(file.get(), mode) == 0 && writeAll(file.get(), text()) && fsync(file.get()) == 0 &&
                         file.close() && rename(temporary.c_str(), target.c_str()) == 0;
    if (written)
        return {};
    Status status = systemStatus("Cannot write the profile", target);
    unlink(temporary.c_str());
    return status;
}

Status ProfileFile::change(const std::string& hostPath, LPCSTR section, LPCSTR key, LPCSTR value) {
    if (section == nullptr)
        return {ERROR_INVALID_PARAMETER, "A profile's value needs a section."};
    ProfileFile profile;
    if (Status status = read(hostPath, profile); !status.ok())
        return status;
    if (key == nullptr)
        profile.eraseSection(section);
    else if (value == nullptr)
        profile.erase(section, key);
    else if (Status status = profile.set(section, key, value); !status.ok())
        return status;
    return profile.write(hostPath);
}

std::optional<ProfileFile::Range> ProfileFile::find(std::string_view section) const {
    for (std::size_t at = 0; at < lines_.size(); ++at) {
        const auto name = sectionOf(lines_[at]);
        if (!name || compareNoCase(*name, section) != 0)
            continue;
        std::size_t end = at + 1;
        while (end < lines_.size() && !sectionOf(lines_[end]))
            ++end;
        return Range{at, end};
    }
    return std::nullopt;
}

std::optional<std::size_t> ProfileFile::find(const Range& range, std::string_view key) const {
    for (std::size_t at = range.header + 1; at < range.end; ++at)
        if (const auto name = keyOf(lines_[at]); name && compareNoCase(*name, key) == 0)
            return at;
    return std::nullopt;
}

std::optional<std::string> ProfileFile::value(std::string_view section, std::string_view key) const {
    const auto range = find(section);
    const auto at = range ? find(*range, key) : std::nullopt;
    if (!at)
        return std::nullopt;
    const std::string_view line = lines_[*at];
    const std::string_view text = trimmed(line.substr(line.find('=') + 1));
    return std::string(isQuoted(text) ? text.substr(1, text.size() - 2) : text);
}

std::optional<UINT> ProfileFile::number(std::string_view section, std::string_view key) const {
    const auto text = value(section, key);
    if (!text)
        return std::nullopt;
    std::string_view digits = *text;
    const bool negative = digits.starts_with('-');
    if (negative || digits.starts_with('+'))
        digits.remove_prefix(1);
    UINT sum = 0;
    for (; !digits.empty() && digits.front() >= '0' && digits.front() <= '9'; digits.remove_prefix(1))
        sum = sum * 10 + static_cast<UINT>(digits.front() - '0');
    return negative ? 0u - sum : sum;
}

std::vector<std::string> ProfileFile::sections() const {
    std::vector<std::string> names;
    for (const std::string& line : lines_)
        if (const auto name = sectionOf(line))
            names.emplace_back(*name);
    return names;
}

std::vector<std::string> ProfileFile::keys(std::string_view section) const {
    std::vector<std::string> names;
    const Range range = find(section).value_or(Range{0, 0});
    for (std::size_t at = range.header + 1; at < range.end; ++at)
        if (const auto name = keyOf(lines_[at]))
            names.emplace_back(*name);
    return names;
}

std::vector<std::string> ProfileFile::entries(std::string_view section) const {
    std::vector<std::string> found;
    const Range range = find(section).value_or(Range{0, 0});
    for (std::size_t at = range.header + 1; at < range.end; ++at)
        if (const auto name = keyOf(lines_[at]))
            found.push_back(std::string(*name) + '=' +
                            std::string(trimmed(std::string_view(lines_[at]).substr(lines_[at].find('=') + 1))));
    return found;
}

Status ProfileFile::set(std::string_view section, std::string_view key, std::string_view value) {
    if (!isSection(section) || !isKey(key) || hasControls(value))
        return {ERROR_INVALID_PARAMETER, "A profile cannot keep the value \"" + std::string(key) +
                                             "\": section, key and value take one line of plain text each."};
    const bool quotes = trimmed(value) != value || isQuoted(value);
    std::string line = std::string(key) + '=' + (quotes ? '"' + std::string(value) + '"' : std::string(value));
    auto range = find(section);
    if (!range) {
        if (!lines_.empty() && !trimmed(lines_.back()).empty())
            lines_.emplace_back();
        lines_.push_back('[' + std::string(section) + ']');
        range = Range{lines_.size() - 1, lines_.size()};
    }
    if (const auto at = find(*range, key)) {
        lines_[*at] = std::move(line);
        return {};
    }
    // Behind the section's last line that isn't blank, so that the gap before the next section stays.
    std::size_t place = range->end;
    while (place > range->header + 1 && trimmed(lines_[place - 1]).empty())
        --place;
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(place), std::move(line));
    return {};
}

void ProfileFile::erase(std::string_view section, std::string_view key) {
    const auto range = find(section);
    if (const auto at = range ? find(*range, key) : std::nullopt)
        lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(*at));
}

void ProfileFile::eraseSection(std::string_view section) {
    if (const auto range = find(section))
        lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(range->header),
                     lines_.begin() + static_cast<std::ptrdiff_t>(range->end));
}

void ProfileFile::clearSection(std::string_view section) {
    for (const std::string& key : keys(section))
        erase(section, key);
}

std::string ProfileFile::text() const {
    std::string all;
    for (const std::string& line : lines_)
        all.append(line).append(lineEnd_);
    return all;
}

} // namespace vndk::win32
