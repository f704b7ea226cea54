#pragma once
/// The object map: which handle stands where in the file.

#include <span>
#include <vector>

#include "dwg/file_image.h"

namespace vndk::dwg {

/// Where and why a map can't be used.
struct MapFault {
    ErrorKind kind = ErrorKind::Damaged;
    uint64_t offset = 0;
    const char* what = nullptr; ///< Null when all is well.
};

/// What reading the map found out besides the entries.
struct MapNotes {
    std::vector<ObjectRecord> wrongChecksums; ///< The first few objects whose checksum doesn't fit.
    size_t wrongChecksumCount = 0;
    bool unordered = false;    ///< Handles didn't ascend; they do now.
    size_t duplicateCount = 0; ///< Entries of a handle that was there already; dropped.
};

/// Reads the map at `address` and frames every object that it names, checking its checksum on the way.
/// Entries come out ascending by handle, each handle once.
MapFault readObjectMap(std::span<const uint8_t> file, size_t address, size_t size, std::vector<ObjectRecord>& objects,
                       MapNotes& notes);

/// Appends the map of `objects`, which ascend by handle.
void appendObjectMap(std::vector<uint8_t>& out, std::span<const ObjectRecord> objects);

} // namespace vndk::dwg
