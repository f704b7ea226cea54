// What programs put on the clipboard. Text is shared with the screen's own clipboard, all else stays inside.
#pragma once

#include "win32/input.h"

#include <map>
#include <string>

namespace vndk::win32 {

struct ClipboardState {
    bool open = false;
    HWND opener = nullptr;
    HWND owner = nullptr;
    std::map<UINT, HANDLE> data;
    std::string ownText;                 // UTF-8, as last given to the screen: a different text there came from outside
    std::map<std::string, UINT> formats; // registered ones, names in lower case

    ~ClipboardState();
};

/// The window is being destroyed: it no longer holds the clipboard.
void forgetClipboard(HWND window);

} // namespace vndk::win32
