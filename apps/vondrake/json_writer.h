// Writes one JSON value piece by piece, so that it never stands in memory as a whole.
//
//     JsonWriter json(sink);
//     json.beginObject();
//     json.key("layers").beginArray();
//     json.item().text("0");
//     json.end();
//     json.end();
//
// Members and items of the two outer levels stand on lines of their own, deeper ones in their line.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vndk::app {

class JsonWriter {
public:
    /// Takes what has been written, in pieces of some ten kilobytes.
    using Sink = std::function<void(std::string_view)>;

    explicit JsonWriter(Sink sink) : sink_(std::move(sink)) {}
    ~JsonWriter() { flush(); }
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;

    /// Begins a member of the open object; its value follows.
    JsonWriter& key(std::string_view name);
    /// Begins an item of the open array; its value follows.
    JsonWriter& item();

    void beginObject() { open('{', '}'); }
    void beginArray() { open('[', ']'); }
    /// Closes the open object or array.
    void end();

    /// UTF-8; invalid bytes become U+FFFD.
    void text(std::string_view utf8);
    /// With as many digits as it takes to read the same number again; null for infinities and NaN.
    void number(double value);
    void number(int64_t value);
    void boolean(bool value);
    void null() { put("null"); }

    void flush();

private:
    struct Level {
        char closing;
        bool empty = true;
    };
    void open(char opening, char closing);
    void separate();
    void newLine();
    void put(std::string_view piece);
    void escaped(std::string_view utf8);

    Sink sink_;
    std::string buffer_;
    std::vector<Level> levels_;
};

} // namespace vndk::app
