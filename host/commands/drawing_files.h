// Names of drawings as users give them.
#pragma once

#include <optional>
#include <string>

namespace vndk::host {

class CommandContext;

/// One file in both forms.
struct DrawingFile {
    std::string dosName;  ///< "C:\dwg\plan.dwg", code page 1252
    std::string hostPath; ///< "/home/me/dwg/plan.dwg", UTF-8
};

/// Either form of name, also relative to the working folder; ".dwg" is added to a name without that extension.
/// Nothing when there can be no such file.
std::optional<DrawingFile> drawingFile(const std::string& typed);

/// A drawing that is there, by either form of name with or without ".dwg". A name without a folder is looked for in the
/// working folder, then in that of the current drawing, then among the support files. Nothing when there is none.
std::optional<DrawingFile> findDrawing(const CommandContext& ctx, const std::string& typed);
/// The folders in which findDrawing looks, each on a line of its own behind a line end.
std::string searchPathText(const CommandContext& ctx);

} // namespace vndk::host
