// The text of a profile (INI) file: sections of `key=value` lines.
//
// Sections and keys compare without regard to case; the first of equal ones counts. Changing a value touches its line
// only: comments (';'), order, blank lines, unknown lines and line ends stay. Values lose the blanks around them and
// one pair of quotes around the whole; a value that needs them gets the quotes when it is written.
#pragma once

#include "win32/status.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vndk::win32 {

class ProfileFile {
public:
    static ProfileFile parse(std::string_view text);

    /// Reads a file (system path). A missing file is an empty profile. Files beyond 16 MiB are refused.
    static Status read(const std::string& hostPath, ProfileFile& profile);

    /// Writes a new file beside the old one and renames it, so that at each moment the old or the new one is whole.
    /// The folder must exist; a link is followed; the old file's permissions stay.
    Status write(const std::string& hostPath) const;

    /// Reads, changes and writes in one go. A null value removes the key, a null key the section. A profile that cannot
    /// be read isn't replaced.
    static Status change(const std::string& hostPath, LPCSTR section, LPCSTR key, LPCSTR value);

    [[nodiscard]] std::optional<std::string> value(std::string_view section, std::string_view key) const;
    /// The decimal number, with an optional sign, that the value begins with; 0 when it begins with none. A number too
    /// large wraps at 32 bits.
    [[nodiscard]] std::optional<UINT> number(std::string_view section, std::string_view key) const;
    [[nodiscard]] std::vector<std::string> sections() const;
    [[nodiscard]] std::vector<std::string> keys(std::string_view section) const;
    /// The section's lines as "key=value", without comments and blank lines.
    [[nodiscard]] std::vector<std::string> entries(std::string_view section) const;

    /// Sets a value, adding key and section as needed. Refuses (ERROR_INVALID_PARAMETER) text that would change the
    /// file's structure: control characters other than tab anywhere, ']' in a section, '=' in a key or ';' or '[' at
    /// its start, and empty names.
    Status set(std::string_view section, std::string_view key, std::string_view value);
    void erase(std::string_view section, std::string_view key);
    void eraseSection(std::string_view section);
    /// Takes all keys out; the section and its comments stay.
    void clearSection(std::string_view section);

    [[nodiscard]] std::string text() const;

private:
    struct Range {
        std::size_t header; // line of "[section]"
        std::size_t end;    // one past its last line
    };
    [[nodiscard]] std::optional<Range> find(std::string_view section) const;
    [[nodiscard]] std::optional<std::size_t> find(const Range& range, std::string_view key) const;

    std::vector<std::string> lines_; // without line ends
    std::string lineEnd_ = "\n";
};

} // namespace vndk::win32
