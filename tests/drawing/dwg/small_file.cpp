#include "drawing/dwg/small_file.h"

#include <utility>

#include "dwg/object_frame.h"

namespace vndk::test {

using namespace dwg;

namespace {

constexpr uint64_t kOwner = 0x1F;
constexpr uint64_t kLayer = 0x10;
constexpr uint64_t kFirstLine = 0x90;

/// Writes what stands before the common data; returns where the bit size is.
size_t beginObject(BitWriter& data, uint16_t type, uint64_t handle) {
    data.BS(type);
    const size_t bitSizeBit = data.position();
    data.RL(0);
    data.H(0, handle);
    data.BS(0);
    return bitSizeBit;
}

} // namespace

std::vector<uint8_t> makeLine(uint64_t handle, uint64_t previous, uint64_t next) {
    BitWriter data;
    BitWriter handles;
    const size_t bitSizeBit = beginObject(data, 19, handle);
    data.B(false); // no graphic
    data.BB(2);    // model space
    data.BL(1);    // one reactor
    data.B(false); // links are stored
    data.BS(256);
    data.BD(1.0);
    data.BB(0);
    data.BB(0);
    data.BS(0);
    data.RC(29);
    data.B(true); // no z
    data.RD(static_cast<double>(handle));
    data.DD(2.5, static_cast<double>(handle));
    data.RD(1.0);
    data.DD(1.0, 1.0);
    data.B(true);
    data.B(true);
    handles.H(4, kOwner);
    handles.H(3, 0);
    handles.H(4, previous);
    handles.H(4, next);
    handles.H(5, kLayer);
    std::vector<uint8_t> record;
    sealObject(data, bitSizeBit, handles, record);
    return record;
}

std::vector<uint8_t> makeXrecord(uint64_t handle, uint32_t size) {
    BitWriter data;
    BitWriter handles;
    const size_t bitSizeBit = beginObject(data, 79, handle);
    data.BL(0);
    data.BL(size);
    for (uint32_t i = 0; i < size; ++i)
        data.RC(static_cast<uint8_t>(i * 7));
    data.BS(1);
    handles.H(4, kOwner);
    handles.H(3, 0);
    std::vector<uint8_t> record;
    sealObject(data, bitSizeBit, handles, record);
    return record;
}

SmallFile makeSmallFile(unsigned lines) {
    SmallFile file;
    FileParts& parts = file.parts;
    parts.header.HANDSEED = kFirstLine + lines;
    parts.header.CLAYER = kLayer;
    parts.header.MODEL_SPACE = kOwner;
    parts.header.TDUPDATE = {2451545, 43200000};
    parts.header.CEPSNTYPE = 3;
    parts.header.CPSNID = 0xF00F;
    parts.header.DIMPOST = "<> mm";
    parts.classes = {{500, 0, "ObjectDBX Classes", "AcDbLayout", "LAYOUT", false, kObjectClassId},
                     {501, 0x7F, "Some Application", "AcDbThing", "THING", true, kEntityClassId}};
    parts.measurement = 1;
    file.bitmap.assign(300, 0x5A);
    parts.preview = {{1, {}}, {2, file.bitmap}};
    std::vector<uint64_t> handles;
    const auto add = [&](uint64_t handle, std::vector<uint8_t> record) {
        handles.push_back(handle);
        file.records.push_back(std::move(record));
    };
    // Its size needs two words, and the high handle a long step of the map; both stand first in the file.
    add(0x123456789A, makeXrecord(0x123456789A, 40000));
    add(0x20, makeXrecord(0x20, 3));
    for (unsigned i = 0; i < lines; ++i) {
        const uint64_t handle = kFirstLine + i;
        add(handle, makeLine(handle, i > 0 ? handle - 1 : 0, i + 1 < lines ? handle + 1 : 0));
    }
    for (size_t i = 0; i < handles.size(); ++i)
        parts.objects.push_back({handles[i], file.records[i]});
    return file;
}

} // namespace vndk::test
