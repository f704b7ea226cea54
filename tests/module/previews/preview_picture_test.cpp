// Where a picture goes in its box, and which pictures hold together.
#include "module/previews/thumbnail_file.h"
#include "previews/preview_picture.h"

#include <gtest/gtest.h>

namespace {

struct PlaceRow {
    const char* what;
    int W, H, x0, y0, w, h;
    int x, y, dW, dH;
};

TEST(PreviewPlace, KeepsTheProportionAndTheOddities) {
    const PlaceRow rows[] = {
        {"twice as large", 100, 50, 1, 30, 200, 140, 1, 50, 200, 100},
        {"tall, enlarged", 50, 100, 1, 30, 200, 140, 66, 30, 70, 140},
        {"tall, made smaller: centred without x0", 200, 300, 1, 30, 200, 140, 53, 30, 93, 140},
        {"as large as the box", 200, 140, 1, 30, 200, 140, 1, 30, 200, 140},
        {"as large as the box, above the floor", 200, 140, 1, 5, 200, 140, 1, 18, 200, 140},
        {"of its height, narrower: no floor", 100, 140, 1, 5, 200, 140, 51, 5, 100, 140},
        {"of its width, lower: no floor", 200, 40, 1, -60, 200, 140, 1, -10, 200, 40},
        {"of its height, wider", 400, 140, 9, 30, 200, 140, 1, 65, 200, 70},
        {"higher and much wider", 1000, 200, 9, 30, 200, 140, 1, 80, 200, 40},
        {"square and small: raised above its box, not centred again", 90, 90, 1, 30, 200, 140, 1, 0 + 18, 140, 140},
        {"halves are cut toward zero", 101, 140, 2, 30, 200, 140, 51, 30, 101, 140},
        {"a line", 300, 1, 1, 30, 200, 140, 1, 100, 200, 0},
        {"an upright line", 1, 300, 1, 30, 200, 140, 100, 30, 0, 140},
    };
    for (const PlaceRow& row : rows) {
        const CPreviewPlace place = PlacePreview(row.W, row.H, row.x0, row.y0, row.w, row.h);
        EXPECT_EQ(place.x, row.x) << row.what;
        EXPECT_EQ(place.y, row.y) << row.what;
        EXPECT_EQ(place.width, row.dW) << row.what;
        EXPECT_EQ(place.height, row.dH) << row.what;
    }
}

std::vector<BYTE> bytesOf(const std::string& text) { return {text.begin(), text.end()}; }

struct ShapeRow {
    const char* what;
    PictureShape shape;
    std::size_t rest; // bytes behind the header
    long rows;        // where the rows begin; -1: nowhere
};

TEST(PreviewPicture, FindsTheRowsOfWhatHoldsTogether) {
    const ShapeRow rows[] = {
        {"256 colours", {.width = 4, .height = 2}, 1024 + 8, 1064},
        {"a byte is missing", {.width = 4, .height = 2}, 1024 + 7, -1},
        {"from the top", {.width = 4, .height = -2}, 1024 + 8, 1064},
        {"two colours", {.width = 33, .height = 1, .bits = 1}, 8 + 8, 48},
        {"five of 256 colours", {.width = 4, .height = 1, .used = 5}, 20 + 4, 60},
        {"more than 256 colours", {.width = 4, .height = 1, .used = 257}, 1028 + 4, 1068},
        {"more colours than bytes", {.width = 4, .height = 1, .used = 0xFFFFFFFF}, 2000, -1},
        {"24 bits", {.width = 1, .height = 1, .bits = 24}, 4, 40},
        {"24 bits with a table", {.width = 1, .height = 1, .bits = 24, .used = 3}, 12 + 4, 52},
        {"16 bits with masks", {.width = 1, .height = 1, .bits = 16, .compression = BI_BITFIELDS}, 12 + 4, 52},
        {"16 bits, the masks are missing", {.width = 1, .height = 1, .bits = 16, .compression = BI_BITFIELDS}, 8, -1},
        {"32 bits", {.width = 1, .height = 1, .bits = 32}, 4, 40},
        {"run lengths", {.width = 9, .height = 9, .compression = BI_RLE8, .imageSize = 6}, 1024 + 6, 1064},
        {"run lengths cut off", {.width = 9, .height = 9, .compression = BI_RLE8, .imageSize = 7}, 1024 + 6, -1},
        {"no width", {.width = 0, .height = 2}, 2000, -1},
        {"a width below zero", {.width = -4, .height = 2}, 2000, -1},
        {"no height", {.width = 4, .height = 0}, 2000, -1},
        {"the lowest height", {.width = 4, .height = INT32_MIN}, 2000, -1},
        {"far too large", {.width = 0x7FFFFFFF, .height = 0x7FFFFFFF, .bits = 1}, 2000, -1},
        {"a bomb of run lengths", {.width = 60000, .height = 60000, .compression = BI_RLE8, .imageSize = 2}, 1100, -1},
        {"another header", {.width = 4, .height = 2, .headerSize = 12}, 2000, -1},
    };
    for (const ShapeRow& row : rows) {
        const auto found = FindPreviewRows(bytesOf(pictureHeader(row.shape) + std::string(row.rest, '\0')));
        EXPECT_EQ(found ? static_cast<long>(*found) : -1, row.rows) << row.what;
    }
    EXPECT_FALSE(FindPreviewRows(bytesOf(pictureHeader({}).substr(0, 39))));
    EXPECT_FALSE(FindPreviewRows({}));
}

TEST(PreviewPicture, ExchangesPureBlackAndWhiteOnly) {
    const std::string table = std::string("\xFF\xFF\xFF\x01", 4) + std::string("\0\0\0\x02", 4) +
                              std::string("\xFF\xFF\xFE\x03", 4) + std::string("\x01\0\0\x04", 4);
    const std::string exchanged = std::string("\0\0\0\0", 4) + std::string("\xFF\xFF\xFF\0", 4) +
                                  std::string("\xFF\xFF\xFE\0", 4) + std::string("\x01\0\0\0", 4);
    const auto after = [&](const PictureShape& shape) {
        std::vector<BYTE> picture = bytesOf(pictureHeader(shape) + table + std::string(2000, '\0'));
        ExchangeBlackAndWhite(picture);
        return std::string(picture.begin() + 40, picture.begin() + 40 + 16);
    };
    EXPECT_EQ(after({.used = 4}), exchanged);
    EXPECT_EQ(after({.used = 2}), exchanged.substr(0, 8) + table.substr(8)) << "two entries only";
    EXPECT_EQ(after({.bits = 24, .used = 4}), exchanged) << "a table that isn't needed, too";
    EXPECT_EQ(after({.bits = 24}), table);
    EXPECT_EQ(after({.bits = 32}), table) << "1 shifted by 32";
    EXPECT_EQ(after({.used = 257}), table);
    EXPECT_EQ(after({.used = 256}), exchanged);
}

} // namespace
