#include "gdi/font.h"

#include "gdi/device_context.h"

#include <freetype/freetype.h>
#include <freetype/tttables.h>
#include <ft2build.h>

#include <algorithm>
#include <cassert>
#include <cstring>
#include <list>

namespace vndk::win32 {

namespace {

constexpr int defaultCellHeight = 16;
constexpr int largestEm = 1024; // a glyph of that size takes 128 KB
constexpr int dotsPerInch = 96;

/// What a face says of itself, in its own units.
struct Design {
    int unitsPerEm = 2048;
    int ascent = 1854; // of the cell
    int descent = 434;
    int lineHeight = 2288;
    int averageWidth = 1208;
    int underlineThickness = 150;
    int strikeOutTop = 530; // above the base line
    int strikeOutThickness = 102;
};

Design designOf(FT_Face face) {
    Design design;
    if (face == nullptr)
        return design;
    design.unitsPerEm = std::max<int>(face->units_per_EM, 1);
    design.ascent = face->ascender;
    design.descent = -face->descender;
    design.lineHeight = face->height;
    design.underlineThickness = face->underline_thickness;
    if (const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2)); os2 != nullptr) {
        design.ascent = os2->usWinAscent;
        design.descent = os2->usWinDescent;
        design.averageWidth = os2->xAvgCharWidth;
        design.strikeOutTop = os2->yStrikeoutPosition;
        design.strikeOutThickness = os2->yStrikeoutSize;
    }
    return design;
}

int scaledUp(int units, int em, const Design& design) {
    return (units * em + design.unitsPerEm - 1) / design.unitsPerEm;
}
int scaled(int units, int em, const Design& design) { return (units * em + design.unitsPerEm / 2) / design.unitsPerEm; }
int cellHeight(int em, const Design& design) {
    return scaledUp(design.ascent, em, design) + scaledUp(design.descent, em, design);
}

/// The em in pixels for lfHeight: of those whose cell isn't higher than asked for, the largest.
int emFor(int height, const Design& design) {
    if (height < 0)
        return static_cast<int>(std::min<std::int64_t>(-std::int64_t{height}, largestEm));
    const int cell = height == 0 ? defaultCellHeight : std::min(height, 2 * largestEm);
    int em = std::min(largestEm, cell);
    while (em > 1 && cellHeight(em, design) > cell)
        --em;
    return em;
}

/// The em's width for an average width of characters; 0 stands for the natural one.
int emWidthFor(int averageWidth, const Design& design) {
    if (averageWidth == 0 || design.averageWidth <= 0)
        return 0;
    const std::int64_t wanted = std::abs(std::int64_t{averageWidth});
    return static_cast<int>(std::clamp<std::int64_t>(wanted * design.unitsPerEm / design.averageWidth, 1, largestEm));
}

BYTE familyBits(Family family) {
    constexpr BYTE common = TMPF_VECTOR | TMPF_TRUETYPE;
    switch (family) {
    case Family::serif:
        return common | TMPF_FIXED_PITCH | FF_ROMAN;
    case Family::mono:
        return common | FF_MODERN;
    default:
        return common | TMPF_FIXED_PITCH | FF_SWISS;
    }
}

bool sameLook(const LOGFONTA& a, const LOGFONTA& b) {
    return a.lfHeight == b.lfHeight && a.lfWidth == b.lfWidth && a.lfEscapement == b.lfEscapement &&
           (a.lfUnderline != 0) == (b.lfUnderline != 0) && (a.lfStrikeOut != 0) == (b.lfStrikeOut != 0) &&
           faceStyleFor(a) == faceStyleFor(b);
}

/// The fonts used last stay alive though no object holds them: code that makes a font for each painting is common.
class RecentFonts {
public:
    std::shared_ptr<const Font> take(const LOGFONTA& description) {
        const auto found = std::find_if(entries_.begin(), entries_.end(),
                                        [&](const Entry& entry) { return sameLook(entry.description, description); });
        if (found != entries_.end()) {
            entries_.splice(entries_.begin(), entries_, found);
        } else {
            entries_.push_front({description, std::make_shared<const Font>(description, FontFiles::standard())});
            if (entries_.size() > most)
                entries_.pop_back();
        }
        return entries_.front().font;
    }

private:
    static constexpr std::size_t most = 32;
    struct Entry {
        LOGFONTA description;
        std::shared_ptr<const Font> font;
    };
    std::list<Entry> entries_; // used last first
};

} // namespace

Font::Font(const LOGFONTA& description, FontFiles& files) : turn_(QuarterTurn::fromTenths(description.lfEscapement)) {
    FT_Face face = files.face(faceStyleFor(description));
    const Design design = designOf(face);
    const int em = std::max(emFor(description.lfHeight, design), 1);
    glyphs_ = std::make_unique<const GlyphCache>(face, emWidthFor(description.lfWidth, design), em, turn_);
    readMetrics(description, face, em);
}

void Font::readMetrics(const LOGFONTA& description, FT_FaceRec_* face, int em) {
    const Design design = designOf(face);
    const FaceStyle style = faceStyleFor(description);
    metrics_.tmAscent = scaledUp(design.ascent, em, design);
    metrics_.tmDescent = scaledUp(design.descent, em, design);
    metrics_.tmHeight = metrics_.tmAscent + metrics_.tmDescent;
    metrics_.tmInternalLeading = std::max(metrics_.tmHeight - em, 0);
    metrics_.tmExternalLeading = std::max(scaled(design.lineHeight, em, design) - metrics_.tmHeight, 0);
    const int emWidth = emWidthFor(description.lfWidth, design);
    metrics_.tmAveCharWidth = scaled(design.averageWidth, emWidth == 0 ? em : emWidth, design);
    metrics_.tmMaxCharWidth =
        glyphs_->size() == nullptr ? 0 : static_cast<int>((glyphs_->size()->metrics.max_advance + 63) >> 6);
    metrics_.tmWeight = style.bold ? FW_BOLD : FW_NORMAL;
    metrics_.tmDigitizedAspectX = dotsPerInch;
    metrics_.tmDigitizedAspectY = dotsPerInch;
    metrics_.tmFirstChar = 0x20;
    metrics_.tmLastChar = 0xFF;
    metrics_.tmDefaultChar = 0x1F;
    metrics_.tmBreakChar = 0x20;
    metrics_.tmItalic = style.italic ? 1 : 0;
    metrics_.tmUnderlined = description.lfUnderline != 0 ? 1 : 0;
    metrics_.tmStruckOut = description.lfStrikeOut != 0 ? 1 : 0;
    metrics_.tmPitchAndFamily = familyBits(style.family);
    metrics_.tmCharSet = ANSI_CHARSET;
    if (description.lfUnderline != 0)
        underline_ = {1, std::max(scaled(design.underlineThickness, em, design), 1)};
    if (description.lfStrikeOut != 0)
        strikeOut_ = {-std::max(scaled(design.strikeOutTop, em, design), 1),
                      std::max(scaled(design.strikeOutThickness, em, design), 1)};
}

int Font::width(std::string_view text) const {
    std::int64_t sum = 0;
    for (char character : text)
        sum += advance(character);
    return limited(sum);
}

const Font& fontOf(const FontObject& object) {
    // Never destroyed, like the font files.
    static RecentFonts& recent = *new RecentFonts;
    if (object.realized == nullptr)
        object.realized = recent.take(object.description);
    return *object.realized;
}

const Font& fontOf(const DeviceContext& context) {
    const auto* object = context.state.font.get<FontObject>();
    assert(object != nullptr && "a context always has a font");
    return fontOf(*object);
}

LOGFONTA stockFontDescription(int number) {
    struct Row {
        int number;
        const char* face;
        int height;
        int weight;
        BYTE pitchAndFamily;
    };
    constexpr Row rows[] = {
        {OEM_FIXED_FONT, "Terminal", 12, FW_NORMAL, FIXED_PITCH | FF_MODERN},
        {ANSI_FIXED_FONT, "Courier", 12, FW_NORMAL, FIXED_PITCH | FF_MODERN},
        {ANSI_VAR_FONT, "MS Sans Serif", -11, FW_NORMAL, VARIABLE_PITCH | FF_SWISS},
        {SYSTEM_FONT, "System", 16, FW_BOLD, VARIABLE_PITCH | FF_SWISS},
        {DEVICE_DEFAULT_FONT, "System", 16, FW_BOLD, VARIABLE_PITCH | FF_SWISS},
        {SYSTEM_FIXED_FONT, "Fixedsys", 15, FW_NORMAL, FIXED_PITCH | FF_MODERN},
        {DEFAULT_GUI_FONT, "MS Shell Dlg", -11, FW_NORMAL, VARIABLE_PITCH | FF_SWISS},
    };
    const Row* row = std::find_if(std::begin(rows), std::end(rows), [=](const Row& r) { return r.number == number; });
    assert(row != std::end(rows) && "only the stock fonts' numbers are asked for");
    LOGFONTA description{};
    description.lfHeight = row->height;
    description.lfWeight = row->weight;
    description.lfPitchAndFamily = row->pitchAndFamily;
    std::strcpy(description.lfFaceName, row->face);
    return description;
}

} // namespace vndk::win32
