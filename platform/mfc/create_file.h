// Making a file, or emptying one that is there.
#pragma once

#include <string>

/// The descriptor, or -1 with errno set. In a folder where everybody may put files, as in /tmp, it takes nothing that
/// somebody else may have put there for a trap: a link that is another user's, a file that is another user's or has a
/// second name, and what is no file at all give EACCES, and nothing is changed.
[[nodiscard]] int createFile(const std::string& path, int flags, unsigned mode);
