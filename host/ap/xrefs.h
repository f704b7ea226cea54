// The drawings behind external references: found, read, and told of when they are missing.
#pragma once

#include "db/object_id.h"

#include <optional>
#include <string>

class AcDbDatabase;

namespace vndk::host {

class Host;

/// Where the drawing of an external reference is (UTF-8): at its path, in the folder of the drawing that refers to it,
/// or among the support files. Both in the DOS form, `holder` empty for a drawing without a file.
std::optional<std::string> findXref(Host& host, const std::string& path, const std::string& holder);

/// Reads the drawing that an external reference of `holder`'s shows, with all that it refers to itself. Empty, or a
/// sentence that tells why it can't be shown; what it showed before stays then.
std::string loadXref(Host& host, AcDbObjectId block, const std::string& holder);

/// The same for all of a drawing that haven't been read yet; what is missing is printed.
void loadXrefs(Host& host, AcDbDatabase& database, const std::string& holder);

/// Makes an external reference that shows the drawing of a path, or takes the one that is there. Empty, or why not.
std::string attachXref(Host& host, AcDbDatabase& database, const std::string& path, const std::string& name,
                       bool overlay, const std::string& holder, AcDbObjectId& block);

} // namespace vndk::host
