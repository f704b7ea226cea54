// Reads dialog, menu and accelerator templates without ever leaving their bytes. A read past the end answers zero and
// marks the reader as failed for good, so that a parser may check once for each item.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace vndk::win32 {

/// A name in a template: nothing, a number, or text.
struct TemplateName {
    enum class Kind : std::uint8_t { none, number, text };
    Kind kind = Kind::none;
    std::uint16_t number = 0;
    std::string text; // code page 1252
};

class TemplateReader {
public:
    explicit TemplateReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::uint8_t byte();
    std::uint16_t word();
    std::int16_t shortInteger() { return static_cast<std::int16_t>(word()); }
    std::uint32_t dword();
    /// UTF-16 that ends in zero, as code page 1252 with '?' for what it lacks.
    std::string text();
    /// Text, or a number behind 0xFFFF; no text is `none`.
    TemplateName name();
    /// The next bytes; empty, and failed, when there are fewer.
    std::span<const std::uint8_t> take(std::size_t count);
    void alignTo(std::size_t boundary);

    [[nodiscard]] std::size_t at() const { return at_; }
    [[nodiscard]] bool failed() const { return failed_; }

private:
    bool need(std::size_t count);

    std::span<const std::uint8_t> bytes_;
    std::size_t at_ = 0;
    bool failed_ = false;
};

/// The bytes behind a template's address: a resource ends where it ends; other memory is taken to be whole.
[[nodiscard]] std::span<const std::uint8_t> templateBytes(const void* start);

} // namespace vndk::win32
