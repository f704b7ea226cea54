// Glyphs of one face at one size, as one-bit pictures, made when they are first asked for.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

struct FT_FaceRec_;
struct FT_SizeRec_;

namespace vndk::win32 {

/// Places count from the pen on the base line, y downward.
struct Glyph {
    bool loaded = false;
    int advance = 0; // pixels along the line
    int left = 0;    // where the picture's left column lies
    int top = 0;     // and its top row
    int width = 0;
    int height = 0;
    int stride = 0;                 // bytes
    std::vector<std::uint8_t> bits; // one bit for each pixel, the leftmost in bit 7
};

/// How a line of text is turned: quarter turns counterclockwise, 0 to 3.
class QuarterTurn {
public:
    QuarterTurn() = default;
    /// From tenths of a degree, rounded to a quarter turn.
    static QuarterTurn fromTenths(int tenths);

    [[nodiscard]] int turns() const { return turns_; }
    /// The place of a pixel of the upright text.
    void turnPixel(int& x, int& y) const;
    /// A corner between pixels of the upright text.
    void turnCorner(int& x, int& y) const;

private:
    int turns_ = 0;
};

/// The face's number for a character of code page 1252. Control characters have that of the box for missing ones, as
/// on the platform.
[[nodiscard]] unsigned glyphIndex(FT_FaceRec_* face, std::uint8_t byte);

class GlyphCache {
public:
    /// `face` may be null: all glyphs are empty then. It must outlive the cache. `emWidth` 0 is as `emHeight`.
    GlyphCache(FT_FaceRec_* face, int emWidth, int emHeight, QuarterTurn turn);
    ~GlyphCache();
    GlyphCache(const GlyphCache&) = delete;
    GlyphCache& operator=(const GlyphCache&) = delete;

    /// Of a character of code page 1252. Valid as long as the cache.
    [[nodiscard]] const Glyph& glyph(std::uint8_t character) const {
        Glyph& found = glyphs_[character];
        if (!found.loaded)
            load(character, found);
        return found;
    }
    /// Null without a face. Its metrics are those of this cache's size.
    [[nodiscard]] FT_SizeRec_* size() const { return size_; }

private:
    void load(std::uint8_t character, Glyph& glyph) const;

    FT_FaceRec_* face_;
    FT_SizeRec_* size_ = nullptr;
    QuarterTurn turn_;
    mutable std::array<Glyph, 256> glyphs_;
};

} // namespace vndk::win32
