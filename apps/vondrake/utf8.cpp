#include "utf8.h"

namespace vndk::app {

size_t utf8Length(std::string_view text) {
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    const size_t length = lead < 0x80 ? 1 : lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
    if (length == 0 || length > text.size())
        return 0;
    for (size_t i = 1; i < length; ++i)
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
    // Overlong forms, surrogates, and what lies beyond the last character.
    if ((lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xED && byte(1) > 0x9F) || (lead == 0xF0 && byte(1) < 0x90) ||
        (lead == 0xF4 && byte(1) > 0x8F))
        return 0;
    return length;
}

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const size_t length = utf8Length(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

} // namespace vndk::app
