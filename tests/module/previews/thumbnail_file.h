#pragma once
// Drawings' files as the reader of thumbnails sees them: a head, a preview, a picture.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <random>
#include <string>
#include <vector>

/// A number of so many bytes, the lowest first.
inline std::string little(std::uint64_t number, int bytes) {
    std::string text;
    for (; bytes > 0; --bytes, number >>= 8)
        text += static_cast<char>(number & 0xFF);
    return text;
}

struct PictureShape {
    std::int32_t width = 4, height = 2;
    int bits = 8;
    std::uint32_t used = 0, compression = 0, imageSize = 0, headerSize = 40;
};

/// The header of a packed bitmap.
inline std::string pictureHeader(const PictureShape& shape) {
    return little(shape.headerSize, 4) + little(static_cast<std::uint32_t>(shape.width), 4) +
           little(static_cast<std::uint32_t>(shape.height), 4) + little(1, 2) +
           little(static_cast<std::uint64_t>(shape.bits), 2) + little(shape.compression, 4) +
           little(shape.imageSize, 4) + little(0, 8) + little(shape.used, 4) + little(0, 4);
}

/// A picture of one colour in 256 of a table, the colour as blue, green, red.
inline std::string plainPicture(std::int32_t width, std::int32_t height, std::initializer_list<int> color) {
    std::string table(256 * 4, '\x10');
    int at = 5 * 4;
    for (const int part : color)
        table[static_cast<std::size_t>(at++)] = static_cast<char>(part);
    const auto stride = static_cast<std::size_t>((width + 3) / 4 * 4);
    return pictureHeader({.width = width, .height = height}) + table +
           std::string(stride * static_cast<std::size_t>(std::abs(height)), '\x05');
}

struct PreviewRecord {
    int type = 2;
    std::string data;
};

/// The whole file. The picture of the first record lies behind the table of records, and so on.
inline std::string thumbnailFile(const std::vector<PreviewRecord>& records, int count = -1) {
    constexpr std::size_t place = 40;
    std::string file = "AC1015" + std::string(7, '\0') + little(place, 4);
    file.resize(place, '\xCC');
    file += std::string(16, '\x5A') + little(12345, 4) +
            little(count >= 0 ? static_cast<std::uint64_t>(count) : records.size(), 1);
    std::size_t data = file.size() + records.size() * 9;
    for (const PreviewRecord& record : records) {
        file += little(static_cast<std::uint64_t>(record.type), 1) + little(data, 4) + little(record.data.size(), 4);
        data += record.data.size();
    }
    for (const PreviewRecord& record : records)
        file += record.data;
    return file + std::string(30, '\xEE');
}

/// How many damaged files a test makes; VONDRAKE_MUTATIONS asks for more.
inline int damagedFileCount(int usual) {
    const char* wanted = std::getenv("VONDRAKE_MUTATIONS");
    return wanted ? std::atoi(wanted) : usual;
}

/// One of several sound files with some of its bytes changed, mostly where the numbers stand, or cut off.
inline std::string damagedThumbnailFile(std::mt19937& random) {
    constexpr std::uint32_t runLengths = 1, bitFields = 3;
    static const std::string sound[] = {
        thumbnailFile({{1, "head"}, {2, plainPicture(30, 20, {1, 2, 3})}}),
        thumbnailFile({{2, pictureHeader({.width = 20, .height = 9, .compression = runLengths, .imageSize = 60}) +
                               std::string(1024, '\x44') + std::string(60, '\x03')},
                       {2, pictureHeader({.width = 3, .height = 3, .bits = 16, .compression = bitFields}) +
                               little(0xF800, 4) + little(0x7E0, 4) + little(0x1F, 4) + std::string(24, '\x31')}}),
        thumbnailFile({{2, pictureHeader({.width = 7, .height = -5, .bits = 4}) + std::string(64 + 20, '\x12')}}),
    };
    constexpr std::size_t numbers = 130;
    std::string file = sound[random() % 3];
    for (unsigned changes = 1 + random() % 4; changes > 0; --changes) {
        const std::size_t reach = random() % 3 == 0 ? file.size() : std::min(file.size(), numbers);
        const std::size_t at = random() % reach;
        file[at] = random() % 2 ? static_cast<char>(random()) : static_cast<char>(file[at] ^ 1 << random() % 8);
    }
    if (random() % 8 == 0)
        file.resize(random() % file.size());
    return file;
}
