#include "gs/text_fonts.h"

#include "db/open.h"
#include "db/symbol_tables.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

namespace vndk::gs {

namespace {

/// How the names of font files begin, without folder and ending, in small letters.
struct Known {
    std::string_view start;
    const char* face;
};

constexpr Known kKnown[] = {
    {"times", "Times New Roman"},  {"georgia", "Times New Roman"}, {"garamond", "Times New Roman"},
    {"romant", "Times New Roman"}, {"cour", "Courier New"},        {"cons", "Courier New"},
    {"mono", "Courier New"},       {"lucon", "Courier New"},
};

std::string baseName(std::string_view path) {
    const size_t slash = path.find_last_of("/\\");
    if (slash != std::string_view::npos)
        path.remove_prefix(slash + 1);
    std::string name(path.substr(0, path.find_last_of('.')));
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return name;
}

bool endsWith(const std::string& text, std::string_view ending) {
    return text.size() > ending.size() && std::string_view(text).substr(text.size() - ending.size()) == ending;
}

LOGFONTA description(const char* face, bool bold, bool italic) {
    LOGFONTA font{};
    font.lfWeight = bold ? FW_BOLD : FW_NORMAL;
    font.lfItalic = italic ? 1 : 0;
    std::strncpy(font.lfFaceName, face, sizeof font.lfFaceName - 1);
    return font;
}

constexpr size_t kFonts = 12;

/// Every combination that there is, so that equal fonts are one.
const std::array<LOGFONTA, kFonts>& allFonts() {
    static const auto all = [] {
        constexpr std::array<const char*, 3> kFaces = {"Arial", "Times New Roman", "Courier New"};
        std::array<LOGFONTA, kFonts> fonts{};
        for (size_t i = 0; i < fonts.size(); ++i)
            fonts[i] = description(kFaces[i / 4], i & 2, i & 1);
        return fonts;
    }();
    return all;
}

const LOGFONTA& fontFor(size_t family, bool bold, bool italic) {
    return allFonts()[family * 4 + (bold ? 2 : 0) + (italic ? 1 : 0)];
}

/// By letter; null until it is asked for.
using Outlines = std::array<const win32::GlyphOutline*, 256>;

/// Texts ask for every letter, and the face behind a description has to be looked for.
Outlines& knownOutlines(const LOGFONTA& font) {
    static std::array<Outlines, kFonts> known{};
    return known[static_cast<size_t>(&font - allFonts().data())];
}

} // namespace

const LOGFONTA& fontOfFace(std::string_view face, bool bold, bool italic) {
    const std::string name = baseName(face);
    size_t family = 0;
    for (const Known& known : kKnown)
        if (name.compare(0, known.start.size(), known.start) == 0)
            family = std::strcmp(known.face, "Courier New") == 0 ? 2 : 1;
    return fontFor(family, bold, italic);
}

const LOGFONTA& fontOfFile(std::string_view fileName) {
    const std::string name = baseName(fileName);
    // As the usual files are named: arialbd, arialbi, ariali, timesbd, courbi.
    const bool both = endsWith(name, "bi") || endsWith(name, "z");
    const bool bold = both || endsWith(name, "bd") || endsWith(name, "bold") || endsWith(name, "b");
    const bool italic = both || endsWith(name, "italic") || endsWith(name, "ariali") || endsWith(name, "timesi") ||
                        name == "ariali" || name == "timesi" || name == "couri" || name.compare(0, 6, "italic") == 0;
    return fontOfFace(fileName, bold, italic);
}

const LOGFONTA& fontOfStyle(AcDbObjectId style) {
    const AcDbObjectPointer<AcDbTextStyleTableRecord> record(style);
    return fontOfFile(record ? std::string_view(record->data().fileName) : std::string_view());
}

const win32::GlyphOutline& outlineOf(char letter, const LOGFONTA& font) {
    const win32::GlyphOutline*& outline = knownOutlines(font)[static_cast<unsigned char>(letter)];
    if (!outline)
        outline = &win32::glyphOutline(font, letter);
    return *outline;
}

double widthOf(std::string_view letters, const LOGFONTA& font) {
    const Outlines& known = knownOutlines(font);
    double width = 0;
    for (const char letter : letters) {
        const win32::GlyphOutline* const outline = known[static_cast<unsigned char>(letter)];
        width += (outline ? *outline : outlineOf(letter, font)).advance;
    }
    return width;
}

} // namespace vndk::gs
