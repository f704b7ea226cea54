// A drawing as a picture, without a window.
#pragma once

#include "win32/picture.h"

#include <string>

class AcDbDatabase;

namespace vndk::app {

struct PictureWish {
    int width = 800, height = 600; // pixels
    std::string view = "own";      // or top, bottom, front, back, left, right, iso
    bool shaded = false;
};

/// On white. The drawing's own view: the space that was current when it was saved, with all that was seen on the screen
/// then; a space without a view, or with one that shows nothing, is shown whole. The other views show what is seen in
/// model space, whole, with a small margin. White alone for an empty drawing.
win32::Picture drawPicture(AcDbDatabase& database, const PictureWish& wish);

} // namespace vndk::app
