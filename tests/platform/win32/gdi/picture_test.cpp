#include "win32/picture.h"

#include "platform/temp_folder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace vndk::win32;

Picture samplePicture() {
    std::vector<std::uint32_t> pixels(30);
    for (std::size_t index = 0; index < pixels.size(); ++index)
        pixels[index] = 0xFF000000 | static_cast<std::uint32_t>(index * 0x070503);
    pixels[7] = 0x80402010;
    return copyPicture(pixels.data(), 6, {1, 1, 5, 5});
}

TEST(Picture, IsTheSameAfterWritingAndReading) {
    const TempFolder folder;
    const std::string path = folder / "picture.png";
    const Picture picture = samplePicture();
    ASSERT_EQ(picture.at(0, 0), 0x80402010);
    const Status status = writePng(path, picture);
    ASSERT_TRUE(status.ok()) << status.message();
    const PictureRead read = readPng(path);
    ASSERT_TRUE(read.status.ok()) << read.status.message();
    EXPECT_EQ(read.picture.width, 4);
    EXPECT_EQ(read.picture.pixels, picture.pixels);
}

TEST(Picture, GrowsByWholePixels) {
    const Picture picture = samplePicture();
    const Picture large = enlargePicture(picture, 3);
    ASSERT_EQ(large.width, 12);
    ASSERT_EQ(large.height, 12);
    for (int y = 0; y < large.height; ++y)
        for (int x = 0; x < large.width; ++x)
            ASSERT_EQ(large.at(x, y), picture.at(x / 3, y / 3)) << x << ',' << y;
    EXPECT_TRUE(enlargePicture({}, 2).pixels.empty());
}

TEST(Picture, TroubleWithFilesIsTold) {
    const TempFolder folder;
    EXPECT_EQ(readPng(folder / "missing.png").status.code(), ERROR_FILE_NOT_FOUND);
    EXPECT_FALSE(writePng(folder / "no/such/folder.png", samplePicture()).ok());
    EXPECT_EQ(writePng(folder / "empty.png", {}).code(), ERROR_INVALID_PARAMETER);

    const std::string path = folder / "whole.png";
    ASSERT_TRUE(writePng(path, samplePicture()).ok());
    const std::string bytes = folder.read("whole.png");
    for (std::size_t length = 0; length < bytes.size() - 12; ++length) { // the last 12 are the end mark
        const std::string cut = folder.write("cut.png", bytes.substr(0, length));
        const PictureRead read = readPng(cut);
        ASSERT_EQ(read.status.code(), ERROR_INVALID_DATA) << length;
        ASSERT_TRUE(read.picture.pixels.empty()) << length;
    }
}

TEST(Picture, DifferencesAreCountedBoundedAndShown) {
    const Picture first = samplePicture();
    Picture second = first;
    EXPECT_TRUE(comparePictures(first, second).same());
    second.pixels[5] ^= 0xFF000000; // alpha doesn't count
    EXPECT_TRUE(comparePictures(first, second).same());
    second.pixels[5] ^= 0x000001;
    second.pixels[10] ^= 0x800000;
    const PictureDifference difference = comparePictures(first, second);
    EXPECT_FALSE(difference.same());
    EXPECT_EQ(difference.pixels, 2U);
    EXPECT_EQ(difference.bounds.left, 1);
    EXPECT_EQ(difference.bounds.bottom, 3);
    EXPECT_EQ(difference.picture.at(1, 1), 0xFFFF0000);
    EXPECT_NE(difference.picture.at(0, 1), 0xFFFF0000);
    EXPECT_FALSE(comparePictures(first, copyPicture(first.pixels.data(), 4, {0, 0, 3, 4})).same());
    const Picture smaller = copyPicture(first.pixels.data(), 4, {0, 0, 4, 3});
    const PictureDifference sizes = comparePictures(first, smaller);
    EXPECT_FALSE(sizes.same());
    EXPECT_EQ(sizes.picture.height, 4);
    EXPECT_EQ(sizes.picture.at(0, 3), 0xFFFF0000);
}

} // namespace
