// The part of the system's metrics that the window manager gives.
#pragma once

namespace vndk::win32 {

/// What SM_CXSCREEN, SM_CYSCREEN and all that follows from them answer from now on, in pixels.
void setScreenSize(int width, int height);

} // namespace vndk::win32
