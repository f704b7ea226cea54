// What is in a drawing, as one JSON object for people and scripts.
//
// The members: version, codepage, counts, layers, linetypes, styles, blocks, references, texts, mtexts, warnings; the
// manual page (vondrake.1) tells what each holds. Objects come in the order of their handles, subentities in their
// own order, counts by name. Text is UTF-8, angles are radians, points are world coordinates or, within a block, the
// block's.
#pragma once

#include "json_writer.h"

#include <string>

class AcDbDatabase;

namespace vndk::app {

/// What the first bytes of a drawing tell.
struct FileStart {
    std::string version;  ///< "AC1015"
    std::string codePage; ///< "ANSI_1252"; "unknown (99)" for a number without meaning
};

/// Of a file that has been read as a drawing; `path` is the system's.
FileStart readFileStart(const std::string& path);

/// Decodes all objects of the drawing. Damaged ones are counted by their type and told among the warnings.
void writeFacts(AcDbDatabase& database, const FileStart& start, JsonWriter& json);

} // namespace vndk::app
