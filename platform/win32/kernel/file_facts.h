// What the system tells about a file, in the platform's terms.
#pragma once

#include "win32/files.h"

#include <sys/stat.h>
#include <optional>
#include <string>
#include <string_view>

namespace vndk::win32 {

[[nodiscard]] FILETIME fileTime(const timespec& time);
/// FILE_ATTRIBUTE_*; the name tells whether it is hidden.
[[nodiscard]] DWORD attributesOf(const struct stat& facts, std::string_view name);
/// The system path of a path that module code gave; nothing, with the last error set, when it can't be or is null.
[[nodiscard]] std::optional<std::string> hostPathOf(LPCSTR path);
/// The code for the current `errno` of a call on `hostPath`: what is missing may be the file or its folder.
[[nodiscard]] DWORD fileError(const std::string& hostPath);
/// FALSE, with the last error set from `errno`.
BOOL failed(const std::string& hostPath);
[[nodiscard]] std::string_view lastComponent(std::string_view hostPath);

} // namespace vndk::win32
