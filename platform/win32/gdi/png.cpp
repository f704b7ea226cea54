#include "win32/picture.h"

#include <png.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstdio>
#include <memory>

namespace vndk::win32 {

namespace {

constexpr std::uint64_t mostPixels = std::uint64_t{1} << 26;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// Frees what libpng keeps for an image.
struct Image {
    Image() {
        data.version = PNG_IMAGE_VERSION;
        data.format = PNG_FORMAT_BGRA; // in memory: 0xAARRGGBB on this processor
    }
    ~Image() { png_image_free(&data); }
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    png_image data{};
};

Status fileTrouble(const std::string& path, const char* action) {
    const int code = errno;
    return {errorFromErrno(code), "The picture " + path + " can't be " + action + ". Check the folder and its rights."};
}

Status notAPicture(const std::string& path, const char* why) {
    return {ERROR_INVALID_DATA, path + " isn't a PNG file that can be read: " + why + "."};
}

std::uint32_t faded(std::uint32_t argb) {
    const std::uint32_t half = ((argb >> 1) & 0x7F7F7F) + 0x808080;
    return 0xFF000000 | half;
}

bool holds(const Picture& picture, int x, int y) { return x < picture.width && y < picture.height; }

bool sameColor(std::uint32_t a, std::uint32_t b) { return (a & 0xFFFFFF) == (b & 0xFFFFFF); }

} // namespace

Picture copyPicture(const std::uint32_t* pixels, int stride, const RECT& part) {
    Picture picture;
    if (part.left >= part.right || part.top >= part.bottom)
        return picture;
    picture.width = part.right - part.left;
    picture.height = part.bottom - part.top;
    for (int y = part.top; y < part.bottom; ++y) {
        const std::uint32_t* row = pixels + std::ptrdiff_t{stride} * y;
        picture.pixels.insert(picture.pixels.end(), row + part.left, row + part.right);
    }
    return picture;
}

Picture enlargePicture(const Picture& picture, int scale) {
    assert(scale >= 1 && "a picture isn't made smaller");
    Picture large{picture.width * scale, picture.height * scale, {}};
    large.pixels.reserve(picture.pixels.size() * static_cast<std::size_t>(scale) * static_cast<std::size_t>(scale));
    for (int y = 0; y < large.height; ++y)
        for (int x = 0; x < large.width; ++x)
            large.pixels.push_back(picture.at(x / scale, y / scale));
    return large;
}

Status writePng(const std::string& hostPath, const Picture& picture) {
    if (picture.width < 1 || picture.height < 1)
        return {ERROR_INVALID_PARAMETER, "An empty picture can't be kept in " + hostPath + "."};
    assert(picture.pixels.size() ==
               static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height) &&
           "a picture has all its pixels");
    File file(std::fopen(hostPath.c_str(), "wb"));
    if (file == nullptr)
        return fileTrouble(hostPath, "written");
    Image image;
    image.data.width = static_cast<png_uint_32>(picture.width);
    image.data.height = static_cast<png_uint_32>(picture.height);
    const bool written = png_image_write_to_stdio(&image.data, file.get(), 0, picture.pixels.data(), 0, nullptr) != 0;
    if (written && std::fflush(file.get()) == 0)
        return {};
    Status status = fileTrouble(hostPath, "written");
    std::remove(hostPath.c_str());
    return status;
}

PictureRead readPng(const std::string& hostPath) {
    const File file(std::fopen(hostPath.c_str(), "rb"));
    if (file == nullptr)
        return {fileTrouble(hostPath, "read"), {}};
    Image image;
    if (png_image_begin_read_from_stdio(&image.data, file.get()) == 0)
        return {notAPicture(hostPath, image.data.message), {}};
    if (std::uint64_t{image.data.width} * image.data.height > mostPixels)
        return {notAPicture(hostPath, "it has too many pixels"), {}};
    image.data.format = PNG_FORMAT_BGRA;
    Picture picture;
    picture.width = static_cast<int>(image.data.width);
    picture.height = static_cast<int>(image.data.height);
    picture.pixels.resize(std::size_t{image.data.width} * image.data.height);
    if (png_image_finish_read(&image.data, nullptr, picture.pixels.data(), 0, nullptr) == 0)
        return {notAPicture(hostPath, image.data.message), {}};
    return {{}, std::move(picture)};
}

PictureDifference comparePictures(const Picture& first, const Picture& second) {
    PictureDifference result;
    result.sameSize = first.width == second.width && first.height == second.height;
    result.picture.width = std::max(first.width, second.width);
    result.picture.height = std::max(first.height, second.height);
    for (int y = 0; y < result.picture.height; ++y) {
        for (int x = 0; x < result.picture.width; ++x) {
            constexpr std::uint32_t red = 0xFFFF0000;
            const bool inBoth = holds(first, x, y) && holds(second, x, y);
            const bool differs = inBoth && !sameColor(first.at(x, y), second.at(x, y));
            result.picture.pixels.push_back(inBoth && !differs ? faded(first.at(x, y)) : red);
            if (!differs)
                continue;
            const RECT old = result.pixels == 0 ? RECT{x, y, x + 1, y + 1} : result.bounds;
            result.bounds = {std::min(old.left, x), std::min(old.top, y), std::max(old.right, x + 1),
                             std::max(old.bottom, y + 1)};
            ++result.pixels;
        }
    }
    return result;
}

} // namespace vndk::win32
