#pragma once
/// Puts a whole drawing file together, in the layout of release 15.
///
///     FileParts parts = partsOf(*image);         // everything as it was, objects in their order
///     parts.header.HANDSEED = nextHandle;
///     parts.objects.push_back({handle, record}); // a whole record, with size field and checksum
///     auto bytes = writeFile(parts);
///
/// A section whose contents are those of the source is written with the source's bytes.

#include <cstdint>
#include <span>
#include <vector>

#include "dwg/file_image.h"

namespace vndk::dwg {

/// One object's record. The bytes have to stay until the file is written.
struct ObjectBytes {
    uint64_t handle = 0;
    std::span<const uint8_t> bytes;
};

struct FileParts {
    FileIdentity identity;
    HeaderVariables header;
    std::vector<ClassRecord> classes;
    std::vector<PreviewRecord> preview;
    uint16_t measurement = 0;          ///< 0 inches, 1 metric.
    std::vector<ObjectBytes> objects;  ///< In the order in which they are to stand in the file; each handle once.
    const FileImage* source = nullptr; ///< Where the drawing came from; null for a new one.
};

/// The parts of a file that was read: written unchanged they give the same drawing. The image has to outlive them.
FileParts partsOf(const FileImage& image);

/// The bytes of the file. Fails with CannotWrite when the identity asks for another version than release 15, when the
/// drawing is larger than addresses in a file can tell, or when a handle stands twice.
Result<std::vector<uint8_t>> writeFile(const FileParts& parts);

} // namespace vndk::dwg
