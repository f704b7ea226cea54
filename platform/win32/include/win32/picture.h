// Pictures in memory, kept in PNG files and compared: what the screen shows, for programs and tests.
//
//     Picture shown = copyPicture(surface.pixels, surface.width, {10, 10, 110, 60});
//     Status status = writePng("/tmp/shown.png", shown);
//
//     PictureRead expected = readPng("/data/expected.png");
//     if (expected.status.ok() && !comparePictures(expected.picture, shown).same()) ...
#pragma once

#include "win32/status.h"
#include "win32/types.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vndk::win32 {

/// width x height pixels 0xAARRGGBB (alpha not premultiplied), top row first, without gaps between rows.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels;

    /// REQUIRES: inside of the picture.
    [[nodiscard]] std::uint32_t at(int x, int y) const {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
    }
};

/// A part of pixels in memory whose rows are `stride` pixels apart; an empty or reversed rectangle gives an empty
/// picture. REQUIRES: the rectangle lies within the pixels.
[[nodiscard]] Picture copyPicture(const std::uint32_t* pixels, int stride, const RECT& part);

/// Each pixel as scale x scale, as a screen with that scale shows it. REQUIRES: a scale of at least 1.
[[nodiscard]] Picture enlargePicture(const Picture& picture, int scale);

/// Paths are the system's own, in UTF-8. An existing file is replaced; one that can't be written completely is removed.
/// ERROR_INVALID_PARAMETER for an empty picture, else the code of the file error.
Status writePng(const std::string& hostPath, const Picture& picture);

struct [[nodiscard]] PictureRead {
    Status status;
    Picture picture; ///< empty unless status.ok()
};

/// Any kind of PNG file of up to 2^26 pixels, brought to 8 bits a channel. ERROR_INVALID_DATA when it isn't one.
PictureRead readPng(const std::string& hostPath);

struct PictureDifference {
    bool sameSize = true;
    std::size_t pixels = 0;  ///< that differ in a colour channel, in the area that both pictures have
    RECT bounds{0, 0, 0, 0}; ///< around all of them
    /// As large as the larger one in each direction: red where the pictures differ or only one of them is, else the
    /// first one's pixels, faded.
    Picture picture;

    [[nodiscard]] bool same() const { return sameSize && pixels == 0; }
};

/// Alpha isn't compared: the screen has none.
[[nodiscard]] PictureDifference comparePictures(const Picture& first, const Picture& second);

} // namespace vndk::win32
