// Whole files: written and read back, cut off at every place, damaged at every byte.

#include "dwg/file_image.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>

#include "drawing/dwg/small_file.h"
#include "dwg/crc.h"
#include "dwg/file_format.h"
#include "dwg/object_frame.h"

using namespace vndk::dwg;
using vndk::test::makeSmallFile;
using vndk::test::SmallFile;

namespace {

std::vector<uint8_t> mustWrite(const FileParts& parts) {
    auto bytes = writeFile(parts);
    EXPECT_TRUE(bytes) << bytes.error().message;
    return bytes ? std::move(*bytes) : std::vector<uint8_t>();
}

/// Walks everything that can be walked, as a program opening the file would.
size_t walk(const FileImage& image) {
    const FrameContext context(image.version(), image.classes());
    size_t readable = 0;
    for (const ObjectRecord& record : image.objects()) {
        ObjectFrame frame;
        CommonHandles handles;
        const auto raw = image.bytesOf(record);
        if (!parseFrame(raw, context, frame) || !readCommonHandles(raw, frame, handles))
            continue;
        ++readable;
        if (frame.isEntity)
            patchLinks(raw, context, handles.next, handles.previous);
    }
    return readable;
}

/// The locator record of a section in the bytes of a file.
size_t locatorAt(unsigned section) { return kLocatorsAt + section * kLocatorSize + 1; }

void setRL(std::vector<uint8_t>& bytes, size_t at, uint32_t value) {
    for (unsigned i = 0; i < 4; ++i)
        bytes[at + i] = static_cast<uint8_t>(value >> (8 * i));
}

ErrorKind kindOf(std::vector<uint8_t> bytes) {
    const auto image = FileImage::parse(std::move(bytes), "test.dwg");
    EXPECT_FALSE(image);
    return image ? ErrorKind::Locked : image.error().kind;
}

} // namespace

TEST(File, ComesBackWithAllItsParts) {
    for (const unsigned lines : {0u, 1u, 1000u}) {
        const SmallFile file = makeSmallFile(lines);
        auto image = FileImage::parse(mustWrite(file.parts), "test.dwg");
        ASSERT_TRUE(image) << image.error().message;
        const FileImage& read = **image;
        EXPECT_TRUE(read.warnings().empty()) << read.warnings().front();
        EXPECT_EQ(read.header(), file.parts.header);
        EXPECT_EQ(read.classes(), file.parts.classes);
        EXPECT_EQ(read.identity(), file.parts.identity);
        EXPECT_EQ(read.measurement(), 1);
        ASSERT_EQ(read.preview().size(), 2u);
        EXPECT_TRUE(std::ranges::equal(read.preview()[1].data, file.bitmap));
        EXPECT_EQ(read.auxHeader().size(), kAuxHeaderSize);
        ASSERT_EQ(read.objects().size(), lines + 2);
        for (const ObjectBytes& object : file.parts.objects) {
            const ObjectRecord* record = read.find(object.handle);
            ASSERT_TRUE(record) << object.handle;
            EXPECT_TRUE(std::ranges::equal(read.bytesOf(*record), object.bytes)) << object.handle;
        }
        EXPECT_EQ(walk(read), lines + 2);
        // Objects stand in the order in which they were given, not in that of their handles.
        EXPECT_LT(read.find(0x123456789A)->offset, read.find(0x20)->offset);
        EXPECT_EQ(mustWrite(partsOf(read)), std::vector<uint8_t>(read.bytes().begin(), read.bytes().end()));
    }
}

TEST(File, SecondHeaderRepeatsAddressesAndHandles) {
    const SmallFile file = makeSmallFile(3);
    const std::vector<uint8_t> bytes = mustWrite(file.parts);
    const auto found = std::search(bytes.begin(), bytes.end(), kSecondHeaderBegin.begin(), kSecondHeaderBegin.end());
    ASSERT_NE(found, bytes.end());
    const auto address = static_cast<size_t>(found - bytes.begin());
    const size_t size = littleRL(&bytes[address + 16]);
    const Sentinel end = complementOf(kSecondHeaderBegin);
    EXPECT_TRUE(std::equal(end.begin(), end.end(), &bytes[address + 16 + size]));
    const size_t crcAt = address + 16 + size - kSecondHeaderTailSize - 2;
    EXPECT_EQ(crc16(kCrcSeed, &bytes[address + 16], crcAt - address - 16), littleRS(&bytes[crcAt]));
    BitReader reader(bytes.data(), (address + 20) * 8, crcAt * 8);
    EXPECT_EQ(reader.BL(), address);
    reader.skip(11 * 8 + 2 * 8);
    EXPECT_EQ(reader.BS(), 0x0617);
    EXPECT_EQ(reader.RS(), 30);
    ASSERT_EQ(reader.BS(), 6);
    for (unsigned section = 0; section < 6; ++section) {
        EXPECT_EQ(reader.RC(), section);
        EXPECT_EQ(reader.BL(), section == kTemplateSection ? 0 : littleRL(&bytes[locatorAt(section)])) << section;
        EXPECT_EQ(reader.BL(), section == kTemplateSection ? 0 : littleRL(&bytes[locatorAt(section) + 4])) << section;
    }
    ASSERT_EQ(reader.BS(), 14);
    EXPECT_EQ(reader.RC(), 1);
    EXPECT_EQ(reader.RC(), 0);
    EXPECT_EQ(reader.RC(), file.parts.header.HANDSEED);
}

TEST(File, ChangedHeaderReachesTheOtherPlacesOfItsValues) {
    SmallFile file = makeSmallFile(2);
    auto image = FileImage::parse(mustWrite(file.parts), "test.dwg");
    ASSERT_TRUE(image);
    FileParts parts = partsOf(**image);
    parts.header.HANDSEED = 0x777;
    parts.header.TDUPDATE = {2460000, 1234};
    auto again = FileImage::parse(mustWrite(parts), "test.dwg");
    ASSERT_TRUE(again);
    EXPECT_EQ((*again)->header(), parts.header);
    const auto aux = (*again)->auxHeader();
    EXPECT_EQ(littleRL(&aux[71]), 2460000u);
    EXPECT_EQ(littleRL(&aux[79]), 0x777u);
}

TEST(File, RefusesWhatTheFormatCannotHold) {
    SmallFile file = makeSmallFile(2);
    FileParts parts = file.parts;
    parts.objects.push_back(parts.objects.front());
    EXPECT_FALSE(writeFile(parts));
    parts.objects.back().handle = 0;
    EXPECT_FALSE(writeFile(parts));
    parts.objects.pop_back();
    EXPECT_TRUE(writeFile(parts));
    parts.identity.version = Version::R14;
    EXPECT_FALSE(writeFile(parts));
}

TEST(File, EveryTruncationIsToldOrOnlyCostsTheTail) {
    const SmallFile file = makeSmallFile(20);
    const std::vector<uint8_t> bytes = mustWrite(file.parts);
    const size_t mapEnd = littleRL(&bytes[locatorAt(kMapSection)]) + littleRL(&bytes[locatorAt(kMapSection) + 4]);
    for (size_t size = 0; size<bytes.size(); size += size> 2000 && size < 40000 ? 97 : 1) {
        // The exact size lets the address sanitizer see one byte too many.
        const auto image = FileImage::parse(std::vector<uint8_t>(bytes.begin(), bytes.begin() + size), "cut.dwg");
        if (image) {
            // Behind the map stand only things that the drawing can do without.
            ASSERT_GE(size, mapEnd);
            EXPECT_EQ(walk(**image), 22u);
            continue;
        }
        ASSERT_LT(size, mapEnd);
        const Error& error = image.error();
        EXPECT_EQ(error.kind, size < 6 ? ErrorKind::NotADrawing : ErrorKind::Truncated) << size << error.message;
        EXPECT_NE(error.message.find("cut.dwg"), std::string::npos);
    }
}

TEST(File, NoFlippedByteDoesHarm) {
    const SmallFile file = makeSmallFile(6);
    const std::vector<uint8_t> bytes = mustWrite(file.parts);
    std::mt19937 random(5);
    size_t unnoticed = 0;
    for (size_t at = 0; at<bytes.size(); at += at> 2000 && at < 40000 ? 211 : 1)
        for (const uint8_t flip : {uint8_t{0x01}, uint8_t{0x80}, uint8_t{0xFF}, static_cast<uint8_t>(random() | 1)}) {
            std::vector<uint8_t> damaged = bytes;
            damaged[at] ^= flip;
            const auto image = FileImage::parse(std::move(damaged), "test.dwg");
            if (!image)
                continue;
            walk(**image);
            unnoticed += (*image)->warnings().empty();
        }
    // Without a checksum stand only the auxiliary header, the preview, the second header and the template.
    EXPECT_LT(unnoticed, 4 * (kAuxHeaderSize + 400 + 200));
}

TEST(File, RandomDamageNeverCrashesAndStaysFast) {
    const SmallFile file = makeSmallFile(300);
    const std::vector<uint8_t> bytes = mustWrite(file.parts);
    std::mt19937 random(17);
    const auto begin = std::chrono::steady_clock::now();
    for (int round = 0; round < 3000; ++round) {
        std::vector<uint8_t> damaged = bytes;
        for (unsigned i = 0, count = 1 + random() % 8; i < count; ++i) {
            // Half of the damage goes to the header and the map, which steer everything else.
            const size_t map = littleRL(&bytes[locatorAt(kMapSection)]);
            const size_t place = random() % 4 == 0   ? random() % 100
                                 : random() % 2 == 0 ? map + random() % (bytes.size() - map)
                                                     : random() % bytes.size();
            damaged[place] = static_cast<uint8_t>(random());
        }
        if (const auto image = FileImage::parse(std::move(damaged), "test.dwg"))
            walk(**image);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(60));
}

TEST(File, MapThatNamesOneObjectOverAndOverIsRefusedQuickly) {
    // A large object named a million times would take hours if each name were followed.
    SmallFile file;
    file.records.push_back(vndk::test::makeXrecord(1, 1000000));
    file.parts.objects.push_back({1, file.records[0]});
    std::vector<uint8_t> bytes = mustWrite(file.parts);
    const auto object = static_cast<uint32_t>(
        std::search(bytes.begin(), bytes.end(), file.records[0].begin(), file.records[0].end()) - bytes.begin());
    const auto map = static_cast<uint32_t>(bytes.size());
    for (int page = 0; page < 500; ++page) {
        const size_t begin = bytes.size();
        BitWriter writer;
        writer.RS(0);
        writer.UMC(static_cast<uint64_t>(page) * 1000 + 2);
        writer.MC(object);
        while (writer.data().size() < 2000) {
            writer.UMC(1);
            writer.MC(0);
        }
        bytes.insert(bytes.end(), writer.data().begin(), writer.data().end());
        const size_t size = bytes.size() - begin;
        bytes[begin] = static_cast<uint8_t>(size >> 8);
        bytes[begin + 1] = static_cast<uint8_t>(size);
        const uint16_t crc = crc16(kCrcSeed, &bytes[begin], size);
        bytes.push_back(static_cast<uint8_t>(crc >> 8));
        bytes.push_back(static_cast<uint8_t>(crc));
    }
    setRL(bytes, locatorAt(kMapSection), map);
    setRL(bytes, locatorAt(kMapSection) + 4, static_cast<uint32_t>(bytes.size()) - map);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(kindOf(std::move(bytes)), ErrorKind::Damaged);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
}

TEST(File, WrongObjectChecksumIsAWarningThatNamesTheObject) {
    const SmallFile file = makeSmallFile(2);
    std::vector<uint8_t> bytes = mustWrite(file.parts);
    const auto& record = file.records[1];
    const auto found = std::search(bytes.begin(), bytes.end(), record.begin(), record.end());
    found[static_cast<ptrdiff_t>(record.size()) - 1] ^= 1;
    const auto image = FileImage::parse(std::move(bytes), "test.dwg");
    ASSERT_TRUE(image);
    ASSERT_EQ((*image)->warnings().size(), 1u);
    EXPECT_NE((*image)->warnings()[0].find("object 20 "), std::string::npos) << (*image)->warnings()[0];
}

TEST(File, ImpossibleSectionsAreDamagedOrTruncated) {
    const SmallFile file = makeSmallFile(2);
    const std::vector<uint8_t> good = mustWrite(file.parts);
    const struct {
        const char* what;
        size_t at;
        uint32_t value;
        ErrorKind kind;
    } cases[] = {
        {"no sections", kLocatorCountAt, 0, ErrorKind::Damaged},
        {"too many sections", kLocatorCountAt, 0xFFFFFFFF, ErrorKind::Damaged},
        {"header behind the end", locatorAt(kHeaderSection), 0xFFFFFFF0, ErrorKind::Truncated},
        {"header elsewhere", locatorAt(kHeaderSection), 200, ErrorKind::Damaged},
        {"classes behind the end", locatorAt(kClassesSection), static_cast<uint32_t>(good.size()),
         ErrorKind::Truncated},
        {"map behind the end", locatorAt(kMapSection), 0x7FFFFFFF, ErrorKind::Truncated},
        {"map too long", locatorAt(kMapSection) + 4, 0x7FFFFFFF, ErrorKind::Truncated},
        {"map without pages", locatorAt(kMapSection) + 4, 0, ErrorKind::Damaged},
    };
    for (const auto& each : cases) {
        std::vector<uint8_t> bytes = good;
        setRL(bytes, each.at, each.value);
        EXPECT_EQ(kindOf(std::move(bytes)), each.kind) << each.what;
    }
}

TEST(File, OtherFilesAreRefusedWithAReason) {
    const struct {
        const char* begin;
        ErrorKind kind;
        const char* mentions;
    } cases[] = {
        {"", ErrorKind::NotADrawing, "isn't a drawing"},
        {"GIF89a", ErrorKind::NotADrawing, "isn't a drawing"},
        {"AC1014 and more", ErrorKind::UnsupportedVersion, "release 14"},
        {"AC1012 and more", ErrorKind::UnsupportedVersion, "release 13"},
        {"AC1018 and more", ErrorKind::UnsupportedVersion, "release 2004"},
        {"AC\x01\x02\x03\x04", ErrorKind::UnsupportedVersion, "AC????"},
        {"AC1015", ErrorKind::Truncated, "incomplete"},
    };
    for (const auto& each : cases) {
        const std::string_view text = each.begin;
        const auto image = FileImage::parse(std::vector<uint8_t>(text.begin(), text.end()), "x.dwg");
        ASSERT_FALSE(image) << text;
        EXPECT_EQ(image.error().kind, each.kind) << text;
        EXPECT_NE(image.error().message.find(each.mentions), std::string::npos) << image.error().message;
    }
    const auto folder = FileImage::read("/");
    ASSERT_FALSE(folder);
    EXPECT_EQ(folder.error().kind, ErrorKind::CannotOpen);
    const auto missing = FileImage::read("/no/such/drawing.dwg");
    ASSERT_FALSE(missing);
    EXPECT_NE(missing.error().message.find("/no/such/drawing.dwg"), std::string::npos);
}
