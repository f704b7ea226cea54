#include "gdi/glyph_cache.h"

#include "win32/codepage.h"

#include <freetype/freetype.h>
#include <freetype/ftsizes.h>
#include <ft2build.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <string>

namespace vndk::win32 {

namespace {

/// The Unicode character for a byte of code page 1252.
char32_t characterOf(std::uint8_t byte) {
    const std::string utf8 = toUtf8(std::string(1, static_cast<char>(byte)));
    const auto unit = [&](std::size_t index) { return static_cast<char32_t>(static_cast<unsigned char>(utf8[index])); };
    if (utf8.size() == 3)
        return ((unit(0) & 0x0F) << 12) | ((unit(1) & 0x3F) << 6) | (unit(2) & 0x3F);
    if (utf8.size() == 2)
        return ((unit(0) & 0x1F) << 6) | (unit(1) & 0x3F);
    return utf8.empty() ? 0 : unit(0);
}

bool bitAt(const FT_Bitmap& bitmap, int x, int y) {
    const unsigned char* row = bitmap.buffer + std::ptrdiff_t{bitmap.pitch} * y;
    return (row[x >> 3] & (0x80 >> (x & 7))) != 0;
}

/// Copies the picture, turned about the pen.
void takePicture(const FT_GlyphSlotRec_& slot, const QuarterTurn& turn, Glyph& glyph) {
    const FT_Bitmap& bitmap = slot.bitmap;
    const int width = static_cast<int>(bitmap.width);
    const int height = static_cast<int>(bitmap.rows);
    int firstX = slot.bitmap_left;
    int firstY = -slot.bitmap_top;
    int lastX = slot.bitmap_left + width;
    int lastY = -slot.bitmap_top + height;
    turn.turnCorner(firstX, firstY);
    turn.turnCorner(lastX, lastY);
    glyph.left = std::min(firstX, lastX);
    glyph.top = std::min(firstY, lastY);
    glyph.width = std::abs(lastX - firstX);
    glyph.height = std::abs(lastY - firstY);
    glyph.stride = (glyph.width + 7) / 8;
    glyph.bits.assign(static_cast<std::size_t>(glyph.stride) * static_cast<std::size_t>(glyph.height), 0);
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            if (!bitAt(bitmap, column, row))
                continue;
            int x = slot.bitmap_left + column;
            int y = -slot.bitmap_top + row;
            turn.turnPixel(x, y);
            x -= glyph.left;
            y -= glyph.top;
            glyph.bits[static_cast<std::size_t>(y * glyph.stride + (x >> 3))] |=
                static_cast<std::uint8_t>(0x80 >> (x & 7));
        }
    }
}

} // namespace

unsigned glyphIndex(FT_FaceRec_* face, std::uint8_t byte) {
    const char32_t character = characterOf(byte);
    const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
    return control ? 0 : FT_Get_Char_Index(face, character);
}

QuarterTurn QuarterTurn::fromTenths(int tenths) {
    constexpr int quarter = 900;
    const int within = ((tenths % (4 * quarter)) + 4 * quarter) % (4 * quarter);
    QuarterTurn turn;
    turn.turns_ = (within + quarter / 2) / quarter % 4;
    return turn;
}

void QuarterTurn::turnPixel(int& x, int& y) const {
    for (int turn = 0; turn < turns_; ++turn) {
        const int before = x;
        x = y;
        y = -before - 1;
    }
}

void QuarterTurn::turnCorner(int& x, int& y) const {
    for (int turn = 0; turn < turns_; ++turn) {
        const int before = x;
        x = y;
        y = -before;
    }
}

GlyphCache::GlyphCache(FT_FaceRec_* face, int emWidth, int emHeight, QuarterTurn turn) : face_(face), turn_(turn) {
    if (face_ == nullptr || FT_New_Size(face_, &size_) != 0) {
        size_ = nullptr;
        return;
    }
    FT_Activate_Size(size_);
    FT_Set_Pixel_Sizes(face_, static_cast<FT_UInt>(emWidth), static_cast<FT_UInt>(emHeight));
}

GlyphCache::~GlyphCache() {
    if (size_ != nullptr)
        FT_Done_Size(size_);
}

void GlyphCache::load(std::uint8_t character, Glyph& glyph) const {
    glyph.loaded = true;
    if (size_ == nullptr)
        return;
    FT_Activate_Size(size_);
    constexpr FT_Int32 flags = FT_LOAD_TARGET_MONO | FT_LOAD_RENDER;
    if (FT_Load_Glyph(face_, glyphIndex(face_, character), flags) != 0)
        return;
    const FT_GlyphSlot slot = face_->glyph;
    glyph.advance = static_cast<int>((slot->advance.x + 32) >> 6);
    if (slot->bitmap.pixel_mode == FT_PIXEL_MODE_MONO)
        takePicture(*slot, turn_, glyph);
}

} // namespace vndk::win32
