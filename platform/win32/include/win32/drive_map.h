// Drive letters over the system's folders, and paths in both forms.
//
//     DriveMap drives = DriveMap::standard();                  // C: the user's home, Z: the root
//     drives.toHost("C:\\DWG\\plan.dwg")                       // "/home/me/dwg/Plan.dwg", as it is spelt on the disk
//     drives.toDos("/home/me/dwg/Plan.dwg")                    // "C:\\dwg\\Plan.dwg"
//
// Paths inside are 8-bit in code page 1252; the system's are UTF-8. Both '\' and '/' separate components, "." and ".."
// are resolved in the text, and ".." never leaves a drive's folder. Of names that exist on the disk the one with equal
// case is taken first, then one that differs in case only.
#pragma once

#include "win32/status.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace vndk::win32 {

class DriveMap {
public:
    /// `C:` is the user's home folder (HOME, or else the account's), `Z:` the root of the file system.
    [[nodiscard]] static DriveMap standard();

    /// The map that the platform's calls use; the standard one at first.
    [[nodiscard]] static DriveMap& current();

    /// Maps a letter to a folder that exists (UTF-8; a relative one counts from the working folder).
    Status map(char letter, const std::string& hostFolder);
    /// The same from the text of an option: "D=/data/blocks", also "D:=/data/blocks".
    Status mapOption(std::string_view text);

    /// The folder of a letter, without a closing slash except for the root; null when the letter isn't mapped.
    [[nodiscard]] const std::string* folder(char letter) const;

    /// System path for a path of either form. A path without drive or leading separator counts from the working folder;
    /// "C:name" counts from the drive's root, for drives have no working folder of their own. Nothing, with the last
    /// error set, for an unmapped drive (ERROR_INVALID_DRIVE), "\\server\..." (ERROR_BAD_NETPATH), or a name that
    /// cannot be (ERROR_INVALID_NAME).
    [[nodiscard]] std::optional<std::string> toHost(std::string_view path) const;

    /// Path with drive letter for an absolute system path; of several drives the one with the deepest folder. Nothing
    /// when a component cannot be held (see isHoldable).
    [[nodiscard]] std::optional<std::string> toDos(std::string_view hostPath) const;

private:
    std::array<std::string, 26> folders_; // empty: not mapped
};

/// True when a name of the system (UTF-8, one component) can exist for the platform: expressible in code page 1252,
/// without control characters and " < > | * ? : / \, not ending in a blank or a dot, shorter than MAX_PATH.
[[nodiscard]] bool isHoldable(std::string_view hostName);

} // namespace vndk::win32
