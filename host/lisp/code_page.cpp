#include "code_page.h"

namespace vndk::lisp {

namespace {

// Letters whose two cases are not 0x20 apart.
struct CasePair {
    unsigned char upper;
    unsigned char lower;
};
constexpr CasePair oddPairs[] = {{0x8A, 0x9A}, {0x8C, 0x9C}, {0x8E, 0x9E}, {0x9F, 0xFF}};

bool isRegularUpper(unsigned char c) { return (c >= 'A' && c <= 'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7); }

} // namespace

char upperCase(char c) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && isRegularUpper(static_cast<unsigned char>(byte - 0x20)))
        return static_cast<char>(byte - 0x20);
    for (const CasePair& pair : oddPairs)
        if (byte == pair.lower)
            return static_cast<char>(pair.upper);
    return c;
}

char lowerCase(char c) {
    const auto byte = static_cast<unsigned char>(c);
    if (isRegularUpper(byte))
        return static_cast<char>(byte + 0x20);
    for (const CasePair& pair : oddPairs)
        if (byte == pair.upper)
            return static_cast<char>(pair.lower);
    return c;
}

} // namespace vndk::lisp
