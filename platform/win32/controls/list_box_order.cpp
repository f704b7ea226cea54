// The order of texts in sorted lists. Each character of code page 1252 has a place by its letter, and after that by its
// accent and its case; a text is compared by all places first, then by all accents, then by case.
#include "controls/list_box_store.h"
#include "win32/codepage.h"

#include <array>
#include <cstdint>

namespace vndk::win32 {

namespace {

struct Weight {
    std::uint8_t place = 0; // 0: left out at first sight
    std::uint8_t accent = 0;
    bool capital = false;
};

using Weights = std::array<Weight, 256>;

/// Letters with accents: the plain letter, then what stands for it.
constexpr const char* accented[] = {
    "a\xE0\xE1\xE2\xE3\xE4\xE5\xE6",
    "c\xE7",
    "d\xF0",
    "e\xE8\xE9\xEA\xEB",
    "f\x83",
    "i\xEC\xED\xEE\xEF",
    "n\xF1",
    "o\xF2\xF3\xF4\xF5\xF6\xF8\x9C",
    "s\x9A\xDF",
    "t\xFE",
    "u\xF9\xFA\xFB\xFC",
    "y\xFD\xFF",
    "z\x9E",
};

constexpr const char* symbols = " _,;:!?.\x85\xB7\"\x93\x94\x84\x91\x92\x82\x8B\x9B\xAB\xBB()[]{}\xA7\xB6@*/\\&#%\x89"
                                "\x86\x87\x95`^\xB4\xA8\xB8\xAF~\x98\xB0\xA9\xAE+\xB1\xF7\xD7<=>|\xA6\xAC\xA2\xA3\xA4"
                                "\xA5\x80$\x99";

Weights makeWeights() {
    Weights weights{};
    std::uint8_t place = 1;
    for (const char* symbol = symbols; *symbol != '\0'; ++symbol)
        weights[static_cast<std::uint8_t>(*symbol)].place = place++;
    for (int byte = 0; byte < 256; ++byte) {
        const bool ignored = byte == '-' || byte == '\'' || byte == 0x96 || byte == 0x97 || byte == 0xAD || byte < 32;
        const bool alphanumeric =
            (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
        if (!ignored && !alphanumeric && byte < 0xC0 && weights[static_cast<std::size_t>(byte)].place == 0)
            weights[static_cast<std::size_t>(byte)].place = place++;
    }
    for (char digit = '0'; digit <= '9'; ++digit)
        weights[static_cast<std::uint8_t>(digit)].place = place++;
    for (char letter = 'a'; letter <= 'z'; ++letter)
        weights[static_cast<std::uint8_t>(letter)].place = place++;
    for (const char* group : accented)
        for (std::uint8_t accent = 1; group[accent] != '\0'; ++accent)
            weights[static_cast<std::uint8_t>(group[accent])] = {weights[static_cast<std::uint8_t>(group[0])].place,
                                                                 accent, false};
    for (int byte = 0; byte < 256; ++byte) {
        const auto small = static_cast<std::uint8_t>(lower1252(static_cast<char>(byte)));
        if (small != byte) {
            weights[static_cast<std::size_t>(byte)] = weights[small];
            weights[static_cast<std::size_t>(byte)].capital = true;
        }
    }
    return weights;
}

const Weight& weightOf(char byte) {
    static const Weights weights = makeWeights();
    return weights[static_cast<std::uint8_t>(byte)];
}

/// Compares what `value` gives for the characters of two texts, those passed over that have no place.
template <typename Value>
int compareBy(std::string_view a, std::string_view b, Value value) {
    std::size_t i = 0;
    std::size_t j = 0;
    for (;;) {
        while (i < a.size() && weightOf(a[i]).place == 0)
            ++i;
        while (j < b.size() && weightOf(b[j]).place == 0)
            ++j;
        if (i == a.size() || j == b.size())
            return (i < a.size() ? 1 : 0) - (j < b.size() ? 1 : 0);
        const int left = value(weightOf(a[i++]));
        const int right = value(weightOf(b[j++]));
        if (left != right)
            return left - right;
    }
}

} // namespace

int compareListTexts(std::string_view a, std::string_view b) {
    if (const int places = compareBy(a, b, [](const Weight& weight) { return weight.place; }); places != 0)
        return places;
    if (const int accents = compareBy(a, b, [](const Weight& weight) { return weight.accent; }); accents != 0)
        return accents;
    if (const int cases = compareBy(a, b, [](const Weight& weight) { return weight.capital ? 1 : 0; }); cases != 0)
        return cases;
    return a.compare(b);
}

} // namespace vndk::win32
