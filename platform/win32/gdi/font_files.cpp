#include "gdi/font_files.h"

#include "win32/codepage.h"

#include <freetype/freetype.h>
#include <ft2build.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace vndk::win32 {

namespace {

constexpr const char* systemFolder = "/usr/share/fonts/truetype/liberation";

struct KnownFace {
    std::string_view name;
    Family family;
};

constexpr KnownFace knownFaces[] = {
    {"Arial", Family::sans},
    {"Helv", Family::sans},
    {"Helvetica", Family::sans},
    {"Liberation Sans", Family::sans},
    {"Microsoft Sans Serif", Family::sans},
    {"MS Sans Serif", Family::sans},
    {"MS Shell Dlg", Family::sans},
    {"MS Shell Dlg 2", Family::sans},
    {"Small Fonts", Family::sans},
    {"System", Family::sans},
    {"Tahoma", Family::sans},
    {"Verdana", Family::sans},
    {"Georgia", Family::serif},
    {"Liberation Serif", Family::serif},
    {"MS Serif", Family::serif},
    {"Roman", Family::serif},
    {"Times", Family::serif},
    {"Times New Roman", Family::serif},
    {"Tms Rmn", Family::serif},
    {"Courier", Family::mono},
    {"Courier New", Family::mono},
    {"Fixedsys", Family::mono},
    {"Liberation Mono", Family::mono},
    {"Lucida Console", Family::mono},
    {"Terminal", Family::mono},
};

Family familyFor(const LOGFONTA& description) {
    const char* end = std::find(std::begin(description.lfFaceName), std::end(description.lfFaceName), '\0');
    const std::string_view name(description.lfFaceName, static_cast<std::size_t>(end - description.lfFaceName));
    for (const KnownFace& known : knownFaces)
        if (compareNoCase(known.name, name) == 0)
            return known.family;
    const int family = description.lfPitchAndFamily & 0xF0;
    if ((description.lfPitchAndFamily & 0x03) == FIXED_PITCH || family == FF_MODERN)
        return Family::mono;
    return family == FF_ROMAN ? Family::serif : Family::sans;
}

std::string fileName(const FaceStyle& style) {
    constexpr const char* families[] = {"LiberationSans", "LiberationSerif", "LiberationMono"};
    constexpr const char* styles[] = {"-Regular", "-Italic", "-Bold", "-BoldItalic"};
    const std::size_t variant = (style.bold ? 2U : 0U) + (style.italic ? 1U : 0U);
    return std::string(families[static_cast<std::size_t>(style.family)]) + styles[variant] + ".ttf";
}

} // namespace

FaceStyle faceStyleFor(const LOGFONTA& description) {
    return {familyFor(description), description.lfWeight >= FW_SEMIBOLD, description.lfItalic != 0};
}

FontFiles::FontFiles(std::string folder) : folder_(std::move(folder)) {
    if (FT_Init_FreeType(&library_) != 0)
        library_ = nullptr;
}

FontFiles::~FontFiles() {
    if (library_ != nullptr)
        FT_Done_FreeType(library_); // closes its faces, too
}

FontFiles& FontFiles::standard() {
    // Never destroyed: stock fonts are drawn with until the program ends.
    static FontFiles& files = [&]() -> FontFiles& {
        const char* chosen = std::getenv("VONDRAKE_FONTS");
        return *new FontFiles(chosen != nullptr && *chosen != '\0' ? chosen : systemFolder);
    }();
    return files;
}

FT_FaceRec_* FontFiles::face(const FaceStyle& style) {
    const std::size_t index =
        static_cast<std::size_t>(style.family) * 4 + (style.bold ? 2U : 0U) + (style.italic ? 1U : 0U);
    Slot& slot = slots_[index];
    if (!slot.tried) {
        slot.tried = true;
        slot.face = open(style);
    }
    return slot.face;
}

FT_FaceRec_* FontFiles::open(const FaceStyle& style) {
    const std::string file = folder_ + "/" + fileName(style);
    FT_Face face = nullptr;
    if (library_ == nullptr || FT_New_Face(library_, file.c_str(), 0, &face) != 0) {
        complain(file);
        return nullptr;
    }
    if (FT_IS_SCALABLE(face) == 0) {
        FT_Done_Face(face);
        complain(file);
        return nullptr;
    }
    return face;
}

void FontFiles::complain(const std::string& file) {
    if (complained_)
        return;
    complained_ = true;
    std::fprintf(stderr,
                 "vondrake: the font file %s is missing or damaged, so its text can't be shown. Install the Liberation "
                 "fonts (Debian: fonts-liberation), or set VONDRAKE_FONTS to the folder that holds them.\n",
                 file.c_str());
}

} // namespace vndk::win32
