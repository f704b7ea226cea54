#include "dwg/codepage.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <optional>

namespace vndk::dwg {

namespace {

struct CodePageRow {
    uint16_t number;
    std::string_view name;
    const char* converter; ///< The system converter's name.
};

constexpr CodePageRow kCodePages[] = {
    {11, "DOS437", "CP437"},     {12, "DOS850", "CP850"},     {28, "ANSI_1250", "CP1250"}, {29, "ANSI_1251", "CP1251"},
    {30, "ANSI_1252", "CP1252"}, {31, "GB2312", "CP936"},     {32, "ANSI_1253", "CP1253"}, {33, "ANSI_1254", "CP1254"},
    {34, "ANSI_1255", "CP1255"}, {35, "ANSI_1256", "CP1256"}, {36, "ANSI_1257", "CP1257"}, {37, "ANSI_874", "CP874"},
    {38, "ANSI_932", "CP932"},   {39, "ANSI_936", "CP936"},   {40, "ANSI_949", "CP949"},   {41, "ANSI_950", "CP950"},
    {44, "ANSI_1258", "CP1258"},
};

/// Bytes 0x80 to 0x9F of code page 1252; the five that it doesn't define stand for themselves, as everywhere else.
constexpr std::array<uint16_t, 32> kUpper1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

/// Where bytes without a meaning in their code page are kept: a private area of Unicode.
constexpr char32_t kRawByteBase = 0xF700;
constexpr size_t kEscapeLength = 7;

const CodePageRow* findRow(uint16_t codePage) {
    const auto found = std::find_if(std::begin(kCodePages), std::end(kCodePages),
                                    [codePage](const CodePageRow& row) { return row.number == codePage; });
    return found == std::end(kCodePages) ? nullptr : found;
}

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char32_t unicodeOf1252(unsigned char byte) { return byte >= 0x80 && byte < 0xA0 ? kUpper1252[byte - 0x80] : byte; }

/// The byte of code page 1252; nothing when it has none.
std::optional<char> byteOf1252(char32_t character) {
    if (character < 0x80 || (character >= 0xA0 && character <= 0xFF))
        return static_cast<char>(character);
    const auto found = std::find(kUpper1252.begin(), kUpper1252.end(), character);
    if (found == kUpper1252.end())
        return std::nullopt;
    return static_cast<char>(0x80 + (found - kUpper1252.begin()));
}

/// The character of a \U+XXXX at the start of the text.
std::optional<char32_t> escapedCharacter(std::string_view text) {
    if (text.size() < kEscapeLength || text[0] != '\\' || (text[1] != 'U' && text[1] != 'u') || text[2] != '+')
        return std::nullopt;
    char32_t value = 0;
    for (const char c : text.substr(3, 4)) {
        const unsigned digit = c >= '0' && c <= '9'   ? static_cast<unsigned>(c - '0')
                               : c >= 'A' && c <= 'F' ? static_cast<unsigned>(c - 'A' + 10)
                               : c >= 'a' && c <= 'f' ? static_cast<unsigned>(c - 'a' + 10)
                                                      : 16;
        if (digit > 15)
            return std::nullopt;
        value = value * 16 + digit;
    }
    return value;
}

void appendEscape(std::string& out, char32_t character) {
    char text[16];
    // Four digits are all that the notation has; characters beyond them are written as two halves.
    if (character > 0xFFFF) {
        character -= 0x10000;
        appendEscape(out, 0xD800 + (character >> 10));
        character = 0xDC00 + (character & 0x3FF);
    }
    std::snprintf(text, sizeof text, "\\U+%04X", static_cast<unsigned>(character));
    out += text;
}

void appendUtf8(std::string& out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
        return;
    }
    const unsigned more = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    constexpr unsigned kLead[] = {0, 0xC0, 0xE0, 0xF0};
    out += static_cast<char>(kLead[more] | c >> (6 * more));
    for (unsigned i = more; i-- > 0;)
        out += static_cast<char>(0x80 | ((c >> (6 * i)) & 0x3F));
}

/// Takes one character off the front; nothing (and one byte) when the bytes are no valid UTF-8.
std::optional<char32_t> takeUtf8(std::string_view& text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const unsigned more = lead < 0x80 ? 0 : lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
    constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    char32_t value = more == 0 ? lead : lead & (0x3Fu >> more);
    bool valid = (lead < 0x80 || (lead >= 0xC2 && lead < 0xF5)) && text.size() > more;
    for (unsigned i = 1; valid && i <= more; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        valid = (byte & 0xC0) == 0x80;
        value = value << 6 | (byte & 0x3F);
    }
    valid = valid && value >= kSmallest[more] && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
    text.remove_prefix(valid ? more + 1 : 1);
    return valid ? std::optional(value) : std::nullopt;
}

/// The system's converter between a code page and UTF-32, one character at a time.
class Converter {
public:
    Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
    ~Converter() {
        if (usable())
            iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool usable() const { return handle_ != reinterpret_cast<iconv_t>(-1); }
    /// The number of bytes written to `out`, 0 when the input is no whole character of the source.
    size_t convert(const char* in, size_t size, char* out, size_t room) {
        char* source = const_cast<char*>(in);
        char* target = out;
        size_t left = room;
        iconv(handle_, nullptr, nullptr, nullptr, nullptr);
        const size_t result = iconv(handle_, &source, &size, &target, &left);
        // Some converters hold the last character back until they know that nothing combines with it.
        iconv(handle_, nullptr, nullptr, &target, &left);
        return result == static_cast<size_t>(-1) || size > 0 ? 0 : room - left;
    }

private:
    iconv_t handle_;
};

void append1252(std::string& out, char32_t character) {
    if (const auto byte = byteOf1252(character))
        out += *byte;
    else
        appendEscape(out, character);
}

} // namespace

bool isKnownCodePage(uint16_t codePage) { return findRow(codePage) != nullptr; }

std::string_view codePageName(uint16_t codePage) {
    const CodePageRow* row = findRow(codePage);
    return row ? row->name : std::string_view();
}

std::string textFromDrawing(std::string_view text, uint16_t codePage) {
    const CodePageRow* row = findRow(codePage);
    if (!row || codePage == kCodePage1252 || isAscii(text))
        return std::string(text);
    Converter converter("UTF-32LE", row->converter);
    if (!converter.usable())
        return std::string(text);
    std::string out;
    out.reserve(text.size() * 2);
    while (!text.empty()) {
        char32_t character = static_cast<unsigned char>(text[0]);
        size_t length = 1;
        // A character of these code pages has one byte or two.
        if (character >= 0x80 && converter.convert(text.data(), 1, reinterpret_cast<char*>(&character), 4) != 4) {
            length = 2;
            if (text.size() < 2 || converter.convert(text.data(), 2, reinterpret_cast<char*>(&character), 4) != 4) {
                length = 1;
                character = kRawByteBase + static_cast<unsigned char>(text[0]);
            }
        }
        append1252(out, character);
        text.remove_prefix(length);
    }
    return out;
}

std::string textToDrawing(std::string_view text, uint16_t codePage) {
    const CodePageRow* row = findRow(codePage);
    if (!row || codePage == kCodePage1252 || (isAscii(text) && text.find("\\U+") == text.npos))
        return std::string(text);
    Converter converter(row->converter, "UTF-32LE");
    if (!converter.usable())
        return std::string(text);
    std::string out;
    out.reserve(text.size() * 2);
    while (!text.empty()) {
        const auto escaped = escapedCharacter(text);
        const char32_t character = escaped ? *escaped : unicodeOf1252(static_cast<unsigned char>(text[0]));
        text.remove_prefix(escaped ? kEscapeLength : 1);
        char bytes[8];
        size_t count = 0;
        // An escaped ASCII character stays escaped: it may be written so on purpose.
        if (character >= 0x80)
            count = converter.convert(reinterpret_cast<const char*>(&character), 4, bytes, sizeof bytes);
        if (character < 0x80 && !escaped)
            out += static_cast<char>(character);
        else if (count > 0)
            out.append(bytes, count);
        else if (character > kRawByteBase + 0x7F && character <= kRawByteBase + 0xFF)
            out += static_cast<char>(character - kRawByteBase);
        else
            appendEscape(out, character);
    }
    return out;
}

std::string utf8FromText(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        if (const auto escaped = escapedCharacter(text)) {
            char32_t character = *escaped;
            size_t length = kEscapeLength;
            const auto second = escapedCharacter(text.substr(length));
            if ((character & 0xFC00) == 0xD800 && second && (*second & 0xFC00) == 0xDC00) {
                character = 0x10000 + ((character & 0x3FF) << 10) + (*second & 0x3FF);
                length *= 2;
            }
            // Half a pair is no character, and a zero would end the text.
            if ((character & 0xF800) == 0xD800 || character == 0)
                out.append(text.substr(0, length));
            else
                appendUtf8(out, character);
            text.remove_prefix(length);
            continue;
        }
        appendUtf8(out, unicodeOf1252(static_cast<unsigned char>(text[0])));
        text.remove_prefix(1);
    }
    return out;
}

std::string textFromUtf8(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    while (!utf8.empty()) {
        const auto character = takeUtf8(utf8);
        if (character)
            append1252(out, *character);
        else
            out += '?';
    }
    return out;
}

} // namespace vndk::dwg
