#include "dwg/bit_reader.h"

namespace vndk::dwg {

std::string BitReader::TV() {
    const size_t length = BS();
    if (length * 8 > remaining()) {
        fail();
        return {};
    }
    std::string text(length, '\0');
    bytes(text.data(), length);
    if (!text.empty() && text.back() == '\0')
        text.pop_back();
    return text;
}

void BitReader::bytes(void* out, size_t count) {
    auto* target = static_cast<uint8_t*>(out);
    if (count > remaining() / 8) {
        std::memset(target, 0, count);
        fail();
        return;
    }
    if (position_ % 8 == 0) {
        if (count > 0)
            std::memcpy(target, data_ + position_ / 8, count);
        position_ += count * 8;
        return;
    }
    for (; count >= 4; count -= 4, target += 4) {
        const uint32_t group = RL();
        std::memcpy(target, &group, 4);
    }
    while (count-- > 0)
        *target++ = RC();
}

} // namespace vndk::dwg
