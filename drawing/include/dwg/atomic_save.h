#pragma once
/// Puts a file in the place of another so that, whatever happens, the old or the new one is whole.

#include <functional>
#include <span>
#include <string>

#include "dwg/error.h"

namespace vndk::dwg {

/// The steps of a save, in their order.
enum class SaveStep { CreateTemporary, Write, SyncFile, Backup, Replace, SyncFolder };

/// Asked before each step; a number other than 0 makes the step fail with that errno. For tests of failures.
using SaveFault = std::function<int(SaveStep)>;

/// Writes the bytes to a temporary file beside `path`, syncs it, makes the old file known as `backupPath` (replacing
/// an older backup; no backup for an empty path or when there was no old file), renames the new file to `path` and
/// syncs the folder. A symbolic link at `path` stays, its target is replaced. The new file gets the old one's
/// permissions. When a step before the renaming fails the old file is untouched and the temporary file is gone.
Result<void> saveAtomically(const std::string& path, std::span<const uint8_t> bytes, const std::string& backupPath,
                            const SaveFault& fault = {});

/// "plan.dwg" becomes "plan.bak"; another ending is kept and ".bak" put behind it.
std::string backupPathFor(const std::string& path);

} // namespace vndk::dwg
