#include "win32/glyph_outline.h"

#include "gdi/font_files.h"
#include "gdi/glyph_cache.h"

#include <freetype/freetype.h>
#include <freetype/ftoutln.h>
#include <ft2build.h>

#include <array>
#include <memory>
#include <optional>

namespace vndk::win32 {

namespace {

constexpr int curveSteps = 5;              // of a quadratic piece; letters have many
constexpr double usualCapitalHeight = 0.7; // of the em
constexpr double boxAdvance = 0.9;

/// What FreeType tells piece by piece.
class Collector {
public:
    Collector(GlyphOutline& outline, double scale) : outline_(outline), scale_(scale) {}

    bool collect(FT_Outline& source) {
        FT_Outline_Funcs functions{};
        functions.move_to = [](const FT_Vector* to, void* self) { return of(self).moveTo(*to); };
        functions.line_to = [](const FT_Vector* to, void* self) { return of(self).add(of(self).point(*to)); };
        functions.conic_to = [](const FT_Vector* control, const FT_Vector* to, void* self) {
            return of(self).conicTo(*control, *to);
        };
        functions.cubic_to = [](const FT_Vector* first, const FT_Vector* second, const FT_Vector* to, void* self) {
            return of(self).cubicTo(*first, *second, *to);
        };
        const bool complete = FT_Outline_Decompose(&source, &functions, this) == 0;
        endContour();
        return complete;
    }

private:
    using Point = GlyphOutline::Point;
    static Collector& of(void* self) { return *static_cast<Collector*>(self); }
    [[nodiscard]] Point point(const FT_Vector& v) const {
        return {static_cast<double>(v.x) * scale_, static_cast<double>(v.y) * scale_};
    }
    int add(Point p) {
        outline_.points.push_back(p);
        return 0;
    }
    void endContour() {
        if (outline_.points.size() > (outline_.ends.empty() ? 0 : outline_.ends.back()))
            outline_.ends.push_back(outline_.points.size());
    }
    int moveTo(const FT_Vector& to) {
        endContour();
        return add(point(to));
    }
    int conicTo(const FT_Vector& control, const FT_Vector& to) {
        const Point a = outline_.points.back(), c = point(control), b = point(to);
        for (int i = 1; i <= curveSteps; ++i) {
            const double t = static_cast<double>(i) / curveSteps, s = 1 - t;
            add({s * s * a.x + 2 * s * t * c.x + t * t * b.x, s * s * a.y + 2 * s * t * c.y + t * t * b.y});
        }
        return 0;
    }
    int cubicTo(const FT_Vector& first, const FT_Vector& second, const FT_Vector& to) {
        const Point a = outline_.points.back(), c = point(first), d = point(second), b = point(to);
        for (int i = 1; i <= 2 * curveSteps; ++i) {
            const double t = static_cast<double>(i) / (2 * curveSteps), s = 1 - t;
            const double wa = s * s * s, wc = 3 * s * s * t, wd = 3 * s * t * t, wb = t * t * t;
            add({wa * a.x + wc * c.x + wd * d.x + wb * b.x, wa * a.y + wc * c.y + wd * d.y + wb * b.y});
        }
        return 0;
    }

    GlyphOutline& outline_;
    double scale_;
};

/// The height of an H in the face's units.
double capitalHeight(FT_Face face) {
    if (FT_Load_Glyph(face, glyphIndex(face, 'H'), FT_LOAD_NO_SCALE) == 0 && face->glyph->metrics.height > 0)
        return static_cast<double>(face->glyph->metrics.height);
    return usualCapitalHeight * face->units_per_EM;
}

GlyphOutline boxFor(char character) {
    GlyphOutline box;
    box.advance = boxAdvance;
    if (character == ' ')
        return box;
    box.points = {{0.1, 0}, {0.1, 1}, {0.8, 1}, {0.8, 0}, {0.2, 0.1}, {0.7, 0.1}, {0.7, 0.9}, {0.2, 0.9}};
    box.ends = {4, 8};
    return box;
}

GlyphOutline load(FT_Face face, double capital, char character) {
    GlyphOutline outline;
    if (face == nullptr || FT_Load_Glyph(face, glyphIndex(face, static_cast<std::uint8_t>(character)),
                                         FT_LOAD_NO_SCALE | FT_LOAD_NO_BITMAP) != 0)
        return boxFor(character);
    outline.advance = static_cast<double>(face->glyph->metrics.horiAdvance) / capital;
    if (!Collector(outline, 1 / capital).collect(face->glyph->outline))
        return boxFor(character);
    return outline;
}

/// The outlines of one face, made when they are first asked for.
struct FaceOutlines {
    FaceStyle style;
    FT_Face face = nullptr;
    double capital = 1;
    std::array<std::optional<GlyphOutline>, 256> glyphs;
};

FaceOutlines& outlinesOf(const FaceStyle& style) {
    // Never destroyed, like the font files.
    static auto& faces = *new std::vector<std::unique_ptr<FaceOutlines>>;
    for (const auto& known : faces)
        if (known->style == style)
            return *known;
    auto added = std::make_unique<FaceOutlines>();
    added->style = style;
    added->face = FontFiles::standard().face(style);
    added->capital = added->face != nullptr ? capitalHeight(added->face) : 1;
    faces.push_back(std::move(added));
    return *faces.back();
}

} // namespace

const GlyphOutline& glyphOutline(const LOGFONTA& description, char character) {
    FaceOutlines& outlines = outlinesOf(faceStyleFor(description));
    std::optional<GlyphOutline>& glyph = outlines.glyphs[static_cast<unsigned char>(character)];
    if (!glyph)
        glyph = load(outlines.face, outlines.capital, character);
    return *glyph;
}

} // namespace vndk::win32
