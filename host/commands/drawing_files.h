// Names of drawings as users give them.
#pragma once

#include <optional>
#include <string>

namespace vndk::host {

/// One file in both forms.
struct DrawingFile {
    std::string dosName;  ///< "C:\dwg\plan.dwg", code page 1252
    std::string hostPath; ///< "/home/me/dwg/plan.dwg", UTF-8
};

/// Either form of name, also relative to the working folder; ".dwg" is added to a name without that extension.
/// Nothing when there can be no such file.
std::optional<DrawingFile> drawingFile(const std::string& typed);

} // namespace vndk::host
