#include "user/template_reader.h"

#include "win32/codepage.h"
#include "win32/resources.h"

namespace vndk::win32 {

namespace {

// More than any template that a program builds by itself.
constexpr std::size_t longestUnknownTemplate = 0x100000;

constexpr std::uint16_t numberFollows = 0xFFFF;

} // namespace

bool TemplateReader::need(std::size_t count) {
    failed_ = failed_ || at_ > bytes_.size() || bytes_.size() - at_ < count;
    return !failed_;
}

std::uint8_t TemplateReader::byte() { return need(1) ? bytes_[at_++] : std::uint8_t{0}; }

std::uint16_t TemplateReader::word() {
    if (!need(2))
        return 0;
    const auto value = static_cast<std::uint16_t>(bytes_[at_] | (bytes_[at_ + 1] << 8));
    at_ += 2;
    return value;
}

std::uint32_t TemplateReader::dword() {
    const std::uint32_t low = word();
    return low | (static_cast<std::uint32_t>(word()) << 16);
}

std::string TemplateReader::text() {
    std::string result;
    for (std::uint16_t unit = word(); unit != 0 && !failed_; unit = word())
        result += byteFromCharacter(unit).value_or('?');
    return result;
}

TemplateName TemplateReader::name() {
    const std::size_t start = at_;
    const std::uint16_t first = word();
    if (first == 0)
        return {};
    if (first == numberFollows)
        return {TemplateName::Kind::number, word(), {}};
    at_ = start;
    return {TemplateName::Kind::text, 0, text()};
}

std::span<const std::uint8_t> TemplateReader::take(std::size_t count) {
    if (!need(count))
        return {};
    const auto taken = bytes_.subspan(at_, count);
    at_ += count;
    return taken;
}

void TemplateReader::alignTo(std::size_t boundary) { at_ += (boundary - at_ % boundary) % boundary; }

std::span<const std::uint8_t> templateBytes(const void* start) {
    if (start == nullptr)
        return {};
    const auto resource = resourceAt(start);
    return !resource.empty() ? resource : std::span(static_cast<const std::uint8_t*>(start), longestUnknownTemplate);
}

} // namespace vndk::win32
