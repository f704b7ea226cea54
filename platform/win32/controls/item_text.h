// Texts of the items of lists and trees: kept here, or asked of the parent each time.
#pragma once

#include "win32/commctrl.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace vndk::win32 {

inline bool isCallback(LPCSTR text) { return text == LPSTR_TEXTCALLBACK; }

/// Cuts what has no place in `size` bytes, the closing zero among them.
inline void copyText(const std::string& text, LPSTR buffer, int size) {
    if (buffer == nullptr || isCallback(buffer) || size <= 0)
        return;
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
}

/// `item` has a `text` and a `textCallback`.
template <class Item>
void setText(Item& item, LPCSTR text) {
    item.textCallback = isCallback(text);
    if (item.textCallback || text == nullptr)
        item.text.clear();
    else
        item.text = text;
}

} // namespace vndk::win32
