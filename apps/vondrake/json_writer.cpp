#include "json_writer.h"

#include "utf8.h"

#include <cassert>
#include <charconv>
#include <cmath>

namespace vndk::app {

namespace {

constexpr size_t kPiece = size_t{1} << 16;
constexpr size_t kLinedLevels = 2;

} // namespace

JsonWriter& JsonWriter::key(std::string_view name) {
    separate();
    escaped(name);
    put(": ");
    return *this;
}

JsonWriter& JsonWriter::item() {
    separate();
    return *this;
}

void JsonWriter::open(char opening, char closing) {
    put(std::string_view(&opening, 1));
    levels_.push_back({closing});
}

void JsonWriter::end() {
    assert(!levels_.empty() && "something has to be open");
    const Level level = levels_.back();
    const bool lined = levels_.size() <= kLinedLevels && !level.empty;
    levels_.pop_back();
    if (lined)
        newLine();
    put(std::string_view(&level.closing, 1));
    if (levels_.empty())
        put("\n");
}

void JsonWriter::separate() {
    assert(!levels_.empty() && "members and items stand in an object or array");
    Level& level = levels_.back();
    const bool first = level.empty;
    level.empty = false;
    if (!first)
        put(",");
    if (levels_.size() <= kLinedLevels)
        newLine();
    else if (!first)
        put(" ");
}

void JsonWriter::newLine() {
    put("\n");
    for (size_t i = 0; i < levels_.size(); ++i)
        put("  ");
}

void JsonWriter::text(std::string_view utf8) { escaped(utf8); }

void JsonWriter::number(double value) {
    if (!std::isfinite(value))
        return null();
    char digits[32];
    const auto result = std::to_chars(digits, digits + sizeof digits, value);
    put(std::string_view(digits, static_cast<size_t>(result.ptr - digits)));
}

void JsonWriter::number(int64_t value) { put(std::to_string(value)); }

void JsonWriter::boolean(bool value) { put(value ? "true" : "false"); }

void JsonWriter::escaped(std::string_view utf8) {
    put("\"");
    while (!utf8.empty()) {
        const size_t length = utf8Length(utf8);
        const char c = utf8[0];
        if (length == 0) {
            put("\xEF\xBF\xBD");
        } else if (c == '"' || c == '\\') {
            const char pair[2] = {'\\', c};
            put(std::string_view(pair, 2));
        } else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
            constexpr char kDigits[] = "0123456789abcdef";
            const char code[6] = {'\\', 'u', '0', '0', kDigits[(c >> 4) & 15], kDigits[c & 15]};
            put(std::string_view(code, 6));
        } else {
            put(utf8.substr(0, length));
        }
        utf8.remove_prefix(length == 0 ? 1 : length);
    }
    put("\"");
}

void JsonWriter::put(std::string_view piece) {
    buffer_ += piece;
    if (buffer_.size() >= kPiece)
        flush();
}

void JsonWriter::flush() {
    if (!buffer_.empty())
        sink_(buffer_);
    buffer_.clear();
}

} // namespace vndk::app
