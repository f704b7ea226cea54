#pragma once
/// A small drawing file of our own: a few tables, a chain of lines, a large record, handles with gaps.

#include <cstdint>
#include <vector>

#include "dwg/file_writer.h"

namespace vndk::test {

/// Records have to live while FileParts name them.
struct SmallFile {
    std::vector<std::vector<uint8_t>> records;
    std::vector<uint8_t> bitmap;
    dwg::FileParts parts;
};

/// `lines` entities and a handful of other objects, in an order that isn't that of their handles.
SmallFile makeSmallFile(unsigned lines);

/// One LINE in model space, ByLayer, with stored links.
std::vector<uint8_t> makeLine(uint64_t handle, uint64_t previous, uint64_t next);

/// An XRECORD with `size` bytes of contents.
std::vector<uint8_t> makeXrecord(uint64_t handle, uint32_t size);

} // namespace vndk::test
