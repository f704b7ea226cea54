#pragma once
// Drawings' files as the reader of thumbnails sees them: a head, a preview, a picture.

#include <cstdint>
#include <initializer_list>
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
