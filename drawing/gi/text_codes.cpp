#include "gi/text_codes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace vndk::gi {

namespace {

constexpr char kDegree = '\xB0', kPlusMinus = '\xB1', kDiameter = '\xD8';

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The byte of code page 1252 for a Unicode character; a question mark for one that it lacks.
char characterOf(unsigned unicode) {
    constexpr std::array<uint16_t, 32> kUpperHalf = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                     0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                                     0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                     0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
    constexpr unsigned kEmptySet = 0x2205; // how newer programs write the sign of diameters
    if (unicode == kEmptySet)
        return kDiameter;
    if ((unicode >= 0x20 && unicode < 0x7F) || (unicode >= 0xA0 && unicode <= 0xFF))
        return static_cast<char>(unicode);
    const auto* const found = std::find(kUpperHalf.begin(), kUpperHalf.end(), unicode);
    return unicode != 0 && found != kUpperHalf.end() ? static_cast<char>(0x80 + (found - kUpperHalf.begin())) : '?';
}

} // namespace

bool takeUnicode(std::string_view& rest, std::string& out) {
    constexpr size_t kLength = 7;
    if (rest.size() < kLength || rest.substr(0, 3) != "\\U+")
        return false;
    unsigned value = 0;
    const auto [end, error] = std::from_chars(rest.data() + 3, rest.data() + kLength, value, 16);
    if (error != std::errc() || end != rest.data() + kLength)
        return false;
    out += characterOf(value);
    rest.remove_prefix(kLength);
    return true;
}

bool takePercentCode(std::string_view& rest, PlainText& plain) {
    if (rest.size() < 3 || rest.substr(0, 2) != "%%")
        return false;
    size_t length = 3;
    switch (rest[2]) {
    case 'd':
    case 'D':
        plain.text += kDegree;
        break;
    case 'p':
    case 'P':
        plain.text += kPlusMinus;
        break;
    case 'c':
    case 'C':
        plain.text += kDiameter;
        break;
    case 'u':
    case 'U':
        plain.underlined = true;
        break;
    case 'o':
    case 'O':
        plain.overlined = true;
        break;
    case '%':
        plain.text += '%';
        break;
    default: {
        while (length < std::min<size_t>(rest.size(), 5) && isDigit(rest[length]))
            ++length;
        unsigned number = 0;
        const auto [end, error] = std::from_chars(rest.data() + 2, rest.data() + length, number);
        if (error != std::errc() || number > 255)
            return false;
        plain.text += static_cast<char>(number);
    }
    }
    rest.remove_prefix(length);
    return true;
}

PlainText withoutCodes(std::string_view text) {
    PlainText plain;
    if (std::none_of(text.begin(), text.end(), [](char c) { return c == '%' || c == '\\'; })) {
        plain.text = text; // nearly every text
        return plain;
    }
    while (!text.empty()) {
        if (takePercentCode(text, plain) || takeUnicode(text, plain.text))
            continue;
        plain.text += text.front();
        text.remove_prefix(1);
    }
    return plain;
}

} // namespace vndk::gi
