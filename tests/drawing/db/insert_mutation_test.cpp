// Sources with damage at random, of a drawing of our own and of a real one: inserted whole or not at all.
#include <gtest/gtest.h>

#include <random>

#include "drawing/db/insertion_checks.h"
#include "drawing/db/rich_drawing.h"
#include "dwg/crc.h"
#include "dwg/drawing_reader.h"
#include "dwg/drawing_writer.h"
#include "support/drawings.h"

namespace vndk::test {

namespace {

constexpr unsigned kSeed = 20261123;

/// Some bytes of some objects changed, checksums made right, so that the damage gets through to the objects.
std::vector<uint8_t> mutated(const dwg::FileImage& image, std::mt19937& random) {
    std::vector<uint8_t> bytes(image.bytes().begin(), image.bytes().end());
    for (unsigned objects = 1 + random() % 4; objects > 0; --objects) {
        const dwg::ObjectRecord& record = image.objects()[random() % image.objects().size()];
        const auto raw = image.bytesOf(record);
        const std::span<uint8_t> victim =
            std::span(bytes).subspan(static_cast<size_t>(raw.data() - image.bytes().data()), raw.size());
        for (unsigned changes = 1 + random() % 3; changes > 0; --changes)
            victim[2 + random() % (victim.size() - 4)] ^= static_cast<uint8_t>(1u << random() % 8);
        const uint16_t crc = dwg::crc16(dwg::kCrcSeed, victim.data(), victim.size() - 2);
        victim[victim.size() - 2] = static_cast<uint8_t>(crc);
        victim[victim.size() - 1] = static_cast<uint8_t>(crc >> 8);
    }
    return bytes;
}

/// Counts what was taken and what was refused.
void insertMutated(const std::vector<uint8_t>& file, int rounds, int& taken, int& refused) {
    const auto image = dwg::FileImage::parse(file, "whole");
    ASSERT_TRUE(image);
    std::mt19937 random(kSeed);
    for (int round = 0; round < rounds; ++round) {
        SCOPED_TRACE("seed " + std::to_string(kSeed) + ", round " + std::to_string(round));
        AcDbDatabase source(false), database;
        if (!dwg::readDrawing(source, mutated(**image, random), "mutated"))
            continue;
        database.undo().setEnabled(true);
        const DrawingState before(database);
        AcDbObjectId block;
        if (database.insert(block, "DETAIL", &source) != Acad::eOk) {
            ++refused;
            ASSERT_EQ(before.difference(DrawingState(database)), "");
            continue;
        }
        ++taken;
        ASSERT_EQ(strayReferences(database), std::vector<std::string>());
        const auto bytes = dwg::writeDrawing(database);
        ASSERT_TRUE(bytes) << bytes.error().message;
        const auto saved = dwg::FileImage::parse(*bytes, "saved");
        ASSERT_TRUE(saved);
        ASSERT_EQ(danglingReferences(**saved), std::set<std::string>());
        ASSERT_TRUE(database.undo().undo());
        ASSERT_EQ(digestDifference(before.digest, digestOf(database)), "");
    }
}

TEST(InsertMutated, ADrawingWithEverything) {
    RichDrawing rich;
    int taken = 0, refused = 0;
    insertMutated(*dwg::writeDrawing(rich.database), 1500, taken, refused);
    EXPECT_GT(taken, 200);
    EXPECT_GT(refused, 200);
}

TEST(InsertMutated, ARealDrawing) {
    SKIP_WITHOUT_DRAWINGS();
    for (const std::string& path : realDrawings("r2000")) {
        if (path.find("entities-2d") == path.npos)
            continue;
        const auto image = dwg::FileImage::read(path);
        ASSERT_TRUE(image);
        int taken = 0, refused = 0;
        insertMutated({(*image)->bytes().begin(), (*image)->bytes().end()}, 700, taken, refused);
        EXPECT_GT(taken, 100);
        EXPECT_GT(refused, 100);
    }
}

} // namespace

} // namespace vndk::test
