// A drawing as a picture, without a window.
#pragma once

#include "win32/picture.h"

#include <string>

class AcDbDatabase;

namespace vndk::app {

struct PictureWish {
    int width = 800, height = 600; // pixels
    std::string view = "top";      // or bottom, front, back, left, right, iso
    bool shaded = false;
};

/// What is seen in model space, whole, with a small margin, on white. White alone for an empty drawing.
win32::Picture drawPicture(AcDbDatabase& database, const PictureWish& wish);

} // namespace vndk::app
