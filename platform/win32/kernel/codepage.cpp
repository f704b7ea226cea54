#include "win32/codepage.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace vndk::win32 {

namespace {

// Bytes 0x80 to 0x9F; all others equal their character number.
constexpr std::array<char16_t, 32> kUpperControls = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                     0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                     0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                     0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char32_t characterOf(std::uint8_t byte) { return byte >= 0x80 && byte < 0xA0 ? kUpperControls[byte - 0x80] : byte; }

void appendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

struct Decoded {
    char32_t character = 0;
    std::size_t length = 0; // 0: not valid
};

// One character at `at`; overlong forms, surrogates and what lies past U+10FFFF are refused.
Decoded decodeUtf8(std::string_view text, std::size_t at) {
    const auto lead = static_cast<std::uint8_t>(text[at]);
    if (lead < 0x80)
        return {lead, 1};
    const std::size_t length = lead >= 0xF0 && lead < 0xF8 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 0;
    if (length == 0 || lead >= 0xF8 || text.size() - at < length)
        return {};
    char32_t c = lead & (0x7F >> length);
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<std::uint8_t>(text[at + i]);
        if ((next & 0xC0) != 0x80)
            return {};
        c = (c << 6) | (next & 0x3F);
    }
    constexpr char32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (c < kSmallest[length] || c > 0x10FFFF || (c >= 0xD800 && c < 0xE000))
        return {};
    return {c, length};
}

} // namespace

std::string toUtf8(std::string_view text1252) {
    std::string out;
    out.reserve(text1252.size());
    for (const char byte : text1252)
        appendUtf8(out, characterOf(static_cast<std::uint8_t>(byte)));
    return out;
}

char32_t characterFromByte(char byte) { return characterOf(static_cast<std::uint8_t>(byte)); }

std::optional<char> byteFromCharacter(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character < 0x100))
        return static_cast<char>(character);
    const auto found = std::find(kUpperControls.begin(), kUpperControls.end(), character);
    if (found == kUpperControls.end())
        return std::nullopt;
    return static_cast<char>(0x80 + (found - kUpperControls.begin()));
}

std::optional<std::string> fromUtf8(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const Decoded next = decodeUtf8(utf8, at);
        const auto byte = next.length != 0 ? byteFromCharacter(next.character) : std::nullopt;
        if (!byte)
            return std::nullopt;
        out += *byte;
        at += next.length;
    }
    return out;
}

std::string fromUtf8Lossy(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const Decoded next = decodeUtf8(utf8, at);
        out += next.length != 0 ? byteFromCharacter(next.character).value_or('?') : '?';
        at += next.length != 0 ? next.length : 1;
    }
    return out;
}

char lower1252(char byte) {
    const auto c = static_cast<std::uint8_t>(byte);
    if ((c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7))
        return static_cast<char>(c + 0x20);
    switch (c) {
    case 0x8A: // S, O-E and Z with their marks
    case 0x8C:
    case 0x8E:
        return static_cast<char>(c + 0x10);
    case 0x9F:
        return static_cast<char>(0xFF); // Y with diaeresis
    default:
        return byte;
    }
}

char upper1252(char byte) {
    const auto c = static_cast<std::uint8_t>(byte);
    if ((c >= 'a' && c <= 'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7))
        return static_cast<char>(c - 0x20);
    switch (c) {
    case 0x9A:
    case 0x9C:
    case 0x9E:
        return static_cast<char>(c - 0x10);
    case 0xFF:
        return static_cast<char>(0x9F);
    default:
        return byte;
    }
}

int compareNoCase(std::string_view a, std::string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i) {
        const int left = static_cast<std::uint8_t>(lower1252(a[i]));
        const int right = static_cast<std::uint8_t>(lower1252(b[i]));
        if (left != right)
            return left - right;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

} // namespace vndk::win32
