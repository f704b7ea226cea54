// A font as text is measured and painted with it: metrics and glyphs.
#pragma once

#include "gdi/font_files.h"
#include "gdi/font_object.h"
#include "gdi/glyph_cache.h"
#include "win32/fonts.h"

#include <memory>
#include <string_view>

namespace vndk::win32 {

class DeviceContext;

/// A bar through or below the text: rows from the base line, y downward.
struct TextBar {
    int top = 0;
    int height = 0; // 0: there is none
};

class Font {
public:
    /// `files` must outlive the font.
    Font(const LOGFONTA& description, FontFiles& files);

    [[nodiscard]] const TEXTMETRICA& metrics() const { return metrics_; }
    [[nodiscard]] const Glyph& glyph(char character) const {
        return glyphs_->glyph(static_cast<std::uint8_t>(character));
    }
    [[nodiscard]] int advance(char character) const { return glyph(character).advance; }
    /// The advances together; brought back to 2^27 where there is no end.
    [[nodiscard]] int width(std::string_view text) const;
    [[nodiscard]] const QuarterTurn& turn() const { return turn_; }
    [[nodiscard]] const TextBar& underline() const { return underline_; }
    [[nodiscard]] const TextBar& strikeOut() const { return strikeOut_; }

private:
    void readMetrics(const LOGFONTA& description, FT_FaceRec_* face, int em);

    QuarterTurn turn_;
    std::unique_ptr<const GlyphCache> glyphs_;
    TEXTMETRICA metrics_{};
    TextBar underline_;
    TextBar strikeOut_;
};

/// The font of the object. Equal descriptions share one.
[[nodiscard]] const Font& fontOf(const FontObject& object);
/// The font selected into the context.
[[nodiscard]] const Font& fontOf(const DeviceContext& context);

} // namespace vndk::win32
