// Asking for the name of a drawing, and what is to become of changes, in dialogs where somebody sits at a window and by
// prompts elsewhere.
#pragma once

#include "ed/builtin_commands.h"

#include <optional>
#include <string>

namespace vndk::host {

struct FileQuestion {
    bool save = false;
    const char* title = "";
    std::string start = {}; ///< a name to begin with, may have a folder
    const char* extension = "dwg";
};

/// True when a name is to be asked for in a dialog: the user sits at a window and FILEDIA is on.
bool wantsFileDialog(const CommandContext& ctx);
/// The dialog. Nothing when the user gave up. A file that is chosen for saving may be replaced: that was asked.
std::optional<std::string> askFileName(Host& host, const FileQuestion& question);

/// Of the flags with which LISP and modules ask for a file: it is to be written.
constexpr int kNewFile = 1;

/// What a user types at a prompt for a file's name to be asked in the dialog all the same.
constexpr const char* kAskInDialog = "~";

enum class Changes { Save, Discard, Keep };
/// Whether to save a drawing's changes before it closes. Asks in a box.
Changes askAboutChanges(const CommandContext& ctx, const AcApDocument& document);

} // namespace vndk::host
