// Frames of single records, taken from real files byte by byte.

#include "dwg/object_frame.h"

#include <gtest/gtest.h>

#include "dwg/crc.h"

using namespace vndk::dwg;

namespace {

std::vector<uint8_t> fromHex(std::string_view text) {
    std::vector<uint8_t> bytes;
    for (size_t i = 0; i + 1 < text.size(); i += 3) {
        const auto digit = [](char c) { return c <= '9' ? c - '0' : c - 'a' + 10; };
        bytes.push_back(static_cast<uint8_t>(digit(text[i]) << 4 | digit(text[i + 1])));
    }
    return bytes;
}

const std::vector<uint8_t> kLine = fromHex(
    "3f 00 44 f7 40 40 00 00 4b 25 74 21 d0 00 00 00 00 00 00 02 06 00 00 00 00 00 00 10 80 00 00 00 00 00 00 10 81 80 "
    "00 00 00 00 00 08 20 00 00 00 00 00 00 08 20 60 00 00 00 00 00 02 88 19 82 88 87 da 59");
const std::vector<uint8_t> kText = fromHex(
    "3f 00 40 73 80 40 00 00 4b e5 74 21 db c0 00 00 00 00 00 00 04 00 00 00 00 00 00 0f 03 f0 00 00 00 00 00 01 04 0c "
    "00 00 00 00 00 00 21 00 c0 00 00 00 00 00 3a 0f d0 34 64 f4 f4 0c c1 44 41 44 47 ce 06");
const std::vector<uint8_t> kInsert = fromHex(
    "3c 00 41 d9 40 40 00 00 50 65 34 21 d0 00 00 00 00 00 00 21 01 00 00 00 00 00 00 00 10 20 00 00 00 00 00 0e 03 f1 "
    "95 cc b4 e1 4b 07 80 fe 99 86 08 35 08 1a 88 82 89 ea 0a 12 0a 11 8a 1f 42 8b");
const std::vector<uint8_t> kAttrib = fromHex(
    "56 00 40 9c 00 80 00 00 50 a1 34 21 df 40 00 00 00 00 00 00 04 00 00 00 00 00 00 00 84 00 00 00 00 00 00 0f 03 fc "
    "00 00 00 00 00 00 00 03 00 00 00 00 00 00 00 00 c5 cb 51 15 3e c8 7e 4f e6 e6 66 66 66 66 6e 4f d0 13 44 15 05 51 "
    "51 48 ca 00 80 30 40 40 51 10 51 11 30 61");
const std::vector<uint8_t> kBlockHeader =
    fromHex("23 00 4c 67 40 00 00 00 4c a9 06 42 4c 4f 43 4b 31 c0 55 00 80 52 08 09 "
            "82 81 89 9a 09 a2 09 a1 89 aa 09 b2 82 c9 73");
const std::vector<uint8_t> kLayer =
    fromHex("16 00 4c dc 00 00 00 00 44 29 01 30 c3 c0 0d 07 41 02 30 50 51 0f 51 16 bd 12");
const std::vector<uint8_t> kLine14 = fromHex(
    "31 00 44 c0 49 22 e8 08 00 05 5b 07 e2 53 f7 ca ac 67 28 06 aa 4f aa eb 6e f2 16 04 1f 89 4f df 2a b1 9c a0 11 9b "
    "dd d1 32 36 28 c8 15 49 82 89 d2 03 01 65 f4");
const std::vector<uint8_t> kLayer14 = fromHex("13 00 4c c0 43 a6 20 00 00 09 01 30 c0 41 d0 40 8c 14 14 44 c1 25 7a");

struct Expected {
    const char* what;
    const std::vector<uint8_t>& record;
    Version version;
    uint16_t type;
    uint64_t handle;
    bool isEntity;
    EntityMode mode;
    uint64_t owner, previous, next, layer;
    /// Handles of the type, in their order.
    std::vector<uint64_t> typeHandles;
};

const Expected kExpected[] = {
    {"line", kLine, Version::R15, 19, 0x2C, true, EntityMode::ModelSpace, 0, 0x2B, 0x2D, 0x10, {}},
    {"text", kText, Version::R15, 1, 0x2F, true, EntityMode::ModelSpace, 0, 0x2E, 0x30, 0x10, {0x11}},
    {"insert",
     kInsert,
     Version::R15,
     7,
     0x41,
     true,
     EntityMode::ModelSpace,
     0,
     0x3B,
     0x44,
     0x10,
     {0x3D, 0x42, 0x42, 0x43}},
    {"attrib", kAttrib, Version::R15, 2, 0x42, true, EntityMode::OwnerStored, 0x41, 0, 0, 0x10, {0x11}},
    {"block header",
     kBlockHeader,
     Version::R15,
     49,
     0x32,
     false,
     EntityMode::OwnerStored,
     1,
     0,
     0,
     0,
     {0, 0x33, 0x34, 0x34, 0x35, 0x36, 0}},
    {"layer", kLayer, Version::R15, 51, 0x10, false, EntityMode::OwnerStored, 2, 0, 0, 0, {0, 0xF, 0x16}},
    {"line of 14", kLine14, Version::R14, 19, 0x24, true, EntityMode::ModelSpace, 0, 0, 0x25, 0x3A, {}},
    {"layer of 14", kLayer14, Version::R14, 51, 0xE, false, EntityMode::OwnerStored, 2, 0, 0, 0, {0, 0x13}},
};

const FrameContext k15(Version::R15, {});

} // namespace

TEST(ObjectFrame, TellsWhatRealRecordsHold) {
    for (const Expected& each : kExpected) {
        SCOPED_TRACE(each.what);
        const size_t size = each.record.size();
        ASSERT_EQ(crc16(kCrcSeed, each.record.data(), size - 2), each.record[size - 2] | each.record[size - 1] << 8);
        ObjectFrame frame;
        CommonHandles handles;
        ASSERT_TRUE(parseFrame(each.record, FrameContext(each.version, {}), frame));
        ASSERT_TRUE(readCommonHandles(each.record, frame, handles));
        EXPECT_EQ(frame.type, each.type);
        EXPECT_EQ(frame.handle, each.handle);
        EXPECT_EQ(frame.isEntity, each.isEntity);
        EXPECT_EQ(frame.entity.mode, each.mode);
        EXPECT_EQ(handles.owner, each.owner);
        EXPECT_EQ(handles.xdictionary, 0u);
        EXPECT_EQ(handles.previous, each.previous);
        EXPECT_EQ(handles.next, each.next);
        EXPECT_EQ(handles.layer, each.layer);
        Neighbours neighbours;
        ASSERT_EQ(readNeighbours(each.record, FrameContext(each.version, {}), neighbours), each.isEntity);
        if (each.isEntity) {
            EXPECT_EQ(neighbours.mode, each.mode);
            EXPECT_EQ(neighbours.owner, each.owner);
            EXPECT_EQ(neighbours.previous, each.previous);
            EXPECT_EQ(neighbours.next, each.next);
        }
        BitReader reader(each.record.data(), handles.typeBit, frame.endBit);
        for (const uint64_t handle : each.typeHandles)
            EXPECT_EQ(reader.H().absolute(frame.handle), handle);
        EXPECT_LT(reader.remaining(), 8u);
    }
}

TEST(ObjectFrame, FieldsOfTheLineBeginWhereTheFrameSays) {
    ObjectFrame frame;
    ASSERT_TRUE(parseFrame(kLine, k15, frame));
    BitReader reader(kLine.data(), frame.fieldsBit, frame.handlesBit);
    EXPECT_FALSE(reader.B());
    for (const double expected : {2.0, 3.0, 4.0}) {
        const double first = reader.RD();
        EXPECT_EQ(first, expected);
        EXPECT_EQ(reader.DD(first), expected + 1);
    }
    EXPECT_TRUE(reader.B());
    EXPECT_TRUE(reader.B());
    EXPECT_EQ(reader.remaining(), 0u);
    EXPECT_FALSE(reader.failed());
}

TEST(ObjectFrame, TypesOfClassesAreWhatTheirClassSays) {
    const ClassRecord classes[] = {{500, 0, "", "", "LAYOUT", false, kObjectClassId},
                                   {507, 0, "", "", "WIPEOUT", false, kEntityClassId}};
    const FrameContext context(Version::R15, classes);
    EXPECT_TRUE(context.isEntity(507));
    for (const uint16_t type : {0, 9, 42, 48, 500, 506, 508, 65535})
        EXPECT_FALSE(context.isEntity(type)) << type;
}

TEST(PatchLinks, ReplacesOnlyTheLinks) {
    for (const Expected& each : kExpected) {
        SCOPED_TRACE(each.what);
        const FrameContext context(each.version, {});
        const auto same = patchLinks(each.record, context, each.previous, each.next);
        ASSERT_EQ(same.has_value(), each.isEntity);
        if (!each.isEntity)
            continue;
        EXPECT_EQ(*same, each.record);
        const auto patched = patchLinks(each.record, context, 0xABCDEF, 0x99);
        ASSERT_TRUE(patched);
        const size_t size = patched->size();
        EXPECT_EQ(crc16(kCrcSeed, patched->data(), size - 2), (*patched)[size - 2] | (*patched)[size - 1] << 8);
        ObjectFrame before, after;
        CommonHandles handles;
        ASSERT_TRUE(parseFrame(each.record, context, before) && parseFrame(*patched, context, after));
        ASSERT_TRUE(readCommonHandles(*patched, after, handles));
        EXPECT_EQ(handles.previous, 0xABCDEFu);
        EXPECT_EQ(handles.next, 0x99u);
        EXPECT_EQ(handles.owner, each.owner);
        EXPECT_EQ(handles.layer, each.layer);
        ASSERT_EQ(after.handlesBit, before.handlesBit);
        for (size_t bit = before.dataBit; bit < before.handlesBit; ++bit)
            if (bit != before.nolinksBit) {
                ASSERT_EQ(BitReader(patched->data(), bit, bit + 1).B(),
                          BitReader(each.record.data(), bit, bit + 1).B());
            }
        BitReader reader(patched->data(), handles.typeBit, after.endBit);
        for (const uint64_t handle : each.typeHandles)
            EXPECT_EQ(reader.H().absolute(after.handle), handle);
        EXPECT_LT(reader.remaining(), 8u);
    }
}

TEST(PatchLinks, GrowsTheSizeFieldWhenARecordPassesItsLimit) {
    BitWriter data;
    BitWriter handles;
    data.BS(19);
    data.RL(0);
    data.H(0, 0x50);
    data.BS(0x7FC0);
    data.H(5, 0x12);
    for (unsigned i = 0; i < 0x7FC0; ++i)
        data.RC(static_cast<uint8_t>(i));
    data.BS(0);
    data.B(false);
    data.BB(2);
    data.BL(0);
    data.B(true);
    data.BS(256);
    data.BD(1.0);
    data.BB(0);
    data.BB(0);
    data.BS(0);
    data.RC(29);
    handles.H(3, 0);
    handles.H(5, 0x10);
    // The last handle is padding that brings the record right below the limit of a one-word size.
    while ((data.position() + handles.position() + 7) / 8 < 0x7FFF)
        handles.H(5, 0);
    std::vector<uint8_t> record;
    sealObject(data, 10, handles, record);
    ASSERT_EQ(record.size(), 2u + 0x7FFF + 2);
    const auto patched = patchLinks(record, k15, 0x1111, 0x2222);
    ASSERT_TRUE(patched);
    EXPECT_EQ(patched->size(), record.size() + 2 + 6);
    ObjectFrame frame;
    CommonHandles common;
    ASSERT_TRUE(parseFrame(*patched, k15, frame) && readCommonHandles(*patched, frame, common));
    EXPECT_EQ(common.next, 0x2222u);
    EXPECT_EQ(common.layer, 0x10u);
}

TEST(ObjectFrame, DamagedRecordsAreRefusedOrStayInside) {
    for (const Expected& each : kExpected)
        for (size_t at = 0; at < each.record.size(); ++at)
            for (unsigned flip = 1; flip < 256; ++flip) {
                std::vector<uint8_t> damaged = each.record;
                damaged[at] ^= static_cast<uint8_t>(flip);
                const FrameContext context(each.version, {});
                ObjectFrame frame;
                CommonHandles handles;
                Neighbours neighbours;
                const bool chained = readNeighbours(damaged, context, neighbours);
                if (!parseFrame(damaged, context, frame))
                    continue;
                ASSERT_LE(frame.fieldsBit, frame.handlesBit) << each.what;
                ASSERT_LE(frame.handlesBit, frame.endBit) << each.what;
                if (readCommonHandles(damaged, frame, handles)) {
                    ASSERT_LE(handles.typeBit, frame.endBit) << each.what;
                    ASSERT_EQ(chained, frame.isEntity) << each.what;
                    if (chained) {
                        ASSERT_EQ(neighbours.previous, handles.previous) << each.what;
                        ASSERT_EQ(neighbours.next, handles.next) << each.what;
                        ASSERT_EQ(neighbours.owner, handles.owner) << each.what;
                    }
                }
                patchLinks(damaged, context, 1, 2);
            }
}

TEST(ObjectFrame, EveryTruncationIsRefused) {
    for (const Expected& each : kExpected)
        for (size_t size = 0; size < each.record.size(); ++size) {
            ObjectFrame frame;
            const std::vector<uint8_t> cut(each.record.begin(), each.record.begin() + static_cast<ptrdiff_t>(size));
            EXPECT_FALSE(parseFrame(cut, FrameContext(each.version, {}), frame)) << each.what << " " << size;
        }
}
