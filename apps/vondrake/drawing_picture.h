// A drawing as a picture, without a window.
#pragma once

#include "win32/picture.h"

class AcDbDatabase;

namespace vndk::app {

/// What is seen in model space from above, whole, with a small margin, on white. White alone for an empty drawing.
win32::Picture drawPicture(AcDbDatabase& database, int width, int height);

} // namespace vndk::app
