#include "gdi/painter.h"

#include "gdi/pixel_converter.h"
#include "win32/draw.h"

#include <algorithm>
#include <bit>
#include <cassert>

namespace vndk::win32 {

namespace {

constexpr int hatchSize = 8;

std::array<std::uint8_t, hatchSize> hatchRows(int hatch) {
    constexpr int lineAt = 4; // the row or column of the lines that run straight
    std::array<std::uint8_t, hatchSize> rows{};
    for (int y = 0; y < hatchSize; ++y) {
        std::uint8_t& row = rows[static_cast<std::size_t>(y)];
        if (hatch == HS_HORIZONTAL || hatch == HS_CROSS)
            row |= y == lineAt ? 0xFF : 0;
        if (hatch == HS_VERTICAL || hatch == HS_CROSS)
            row |= 0x80 >> lineAt;
        if (hatch == HS_FDIAGONAL || hatch == HS_DIAGCROSS)
            row |= 0x80 >> y;
        if (hatch == HS_BDIAGONAL || hatch == HS_DIAGCROSS)
            row |= 0x01 << y;
    }
    return rows;
}

/// The remainder that is never negative.
int wrapped(int value, int size) {
    const int rest = value % size;
    return rest < 0 ? rest + size : rest;
}

/// `mix` where the hatch has lines, nothing between them.
void paintLinesOfHatch(const Surface& surface, const RECT& piece, const BrushPaint& paint, int rop2) {
    const PixelMix mix = mixOf(rop2, paint.pixel());
    for (int y = piece.top; y < piece.bottom; ++y)
        for (int x = piece.left; x < piece.right; ++x)
            if (paint.onLine(x, y))
                mixPixels(surface, x, y, 1, mix);
}

void paintTiles(const Surface& surface, const RECT& piece, const BrushPaint& paint, int rop2) {
    const auto width = static_cast<std::size_t>(piece.right - piece.left);
    std::vector<std::uint32_t> pattern(width);
    std::vector<std::uint32_t> old(width);
    const int count = static_cast<int>(width);
    for (int y = piece.top; y < piece.bottom; ++y) {
        paint.row(piece.left, y, count, pattern.data());
        loadPixels(surface, piece.left, y, count, old.data());
        combineRow(ternaryFromMix(rop2), {old.data(), nullptr, pattern.data(), count});
        storePixels(surface, piece.left, y, count, old.data());
    }
}

/// REQUIRES: `piece` may be painted.
void paintPiece(const Surface& surface, const RECT& piece, const BrushPaint& paint, int rop2) {
    if (paint.solid()) {
        const PixelMix mix = mixOf(rop2, paint.pixel());
        for (int y = piece.top; y < piece.bottom; ++y)
            mixPixels(surface, piece.left, y, piece.right - piece.left, mix);
    } else if (paint.hasGaps()) {
        paintLinesOfHatch(surface, piece, paint, rop2);
    } else {
        paintTiles(surface, piece, paint, rop2);
    }
}

} // namespace

BrushPaint::BrushPaint(const DeviceContext& context, const BrushObject& brush) {
    const ContextState& state = context.state;
    origin_ = {context.origin().x + state.brushOrigin.x, context.origin().y + state.brushOrigin.y};
    pixel_ = context.pixelOf(brush.fromContext ? state.brushColor : brush.color);
    switch (brush.style) {
    case BS_SOLID:
        kind_ = Kind::solid;
        break;
    case BS_HATCHED:
        kind_ = Kind::hatch;
        hatch_ = hatchRows(brush.hatch);
        gaps_ = state.backgroundMode == TRANSPARENT;
        background_ = context.pixelOf(state.backgroundColor);
        break;
    case BS_PATTERN:
        kind_ = Kind::pattern;
        readPattern(context, *brush.pattern);
        break;
    default:
        break;
    }
}

void BrushPaint::readPattern(const DeviceContext& context, const BitmapObject& pattern) {
    width_ = pattern.width();
    height_ = pattern.height();
    pattern_.resize(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_));
    const ContextState& state = context.state;
    const PixelConverter converter(pattern.surface(), context.surface(), {state.textColor, state.backgroundColor, {}});
    for (int y = 0; y < height_; ++y) {
        std::uint32_t* row = pattern_.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(width_);
        loadPixels(pattern.surface(), 0, y, width_, row);
        converter.convert(row, width_);
    }
}

bool BrushPaint::onLine(int x, int y) const {
    const auto row = hatch_[static_cast<std::size_t>(wrapped(y - origin_.y, hatchSize))];
    return (row >> (hatchSize - 1 - wrapped(x - origin_.x, hatchSize)) & 1) != 0;
}

void BrushPaint::row(int x, int y, int count, std::uint32_t* pixels) const {
    switch (kind_) {
    case Kind::hatch:
        for (int index = 0; index < count; ++index)
            pixels[index] = onLine(x + index, y) ? pixel_ : background_;
        break;
    case Kind::pattern: {
        const std::uint32_t* row = pattern_.data() + static_cast<std::size_t>(wrapped(y - origin_.y, height_)) *
                                                         static_cast<std::size_t>(width_);
        int column = wrapped(x - origin_.x, width_);
        for (int index = 0; index < count; ++index) {
            pixels[index] = row[column];
            column = column + 1 == width_ ? 0 : column + 1;
        }
        break;
    }
    default:
        std::fill_n(pixels, count, pixel_);
    }
}

void paintRect(const DeviceContext& context, const RECT& rect, const BrushPaint& paint, int rop2) {
    if (!paint.nothing())
        eachVisible(context, rect, [&](const RECT& piece) { paintPiece(context.surface(), piece, paint, rop2); });
}

void paintRegion(const DeviceContext& context, const Region& region, const BrushPaint& paint, int rop2) {
    if (paint.nothing())
        return;
    const Region visible = region & context.reach();
    for (const RECT& piece : visible.rects())
        paintPiece(context.surface(), piece, paint, rop2);
}

const BrushObject& selectedBrush(const DeviceContext& context) {
    const auto* brush = context.state.brush.get<BrushObject>();
    assert(brush != nullptr && "a context always has a brush");
    return *brush;
}

const BrushObject* brushOf(HBRUSH brush) {
    constexpr UINT_PTR mostColors = 64;
    const auto number = reinterpret_cast<UINT_PTR>(brush);
    if (number >= 1 && number <= mostColors)
        return objectOf<BrushObject>(GetSysColorBrush(static_cast<int>(number - 1)));
    return objectOf<BrushObject>(brush);
}

// ---- What text, icons and drawn parts are made of ------------------------------------------------------------------

void paintRect(DeviceContext& dc, const RECT& rect, std::uint32_t pixel) {
    eachVisible(dc, rect, [&](const RECT& piece) {
        for (int y = piece.top; y < piece.bottom; ++y)
            fillPixels(dc.surface(), piece.left, y, piece.right - piece.left, pixel);
    });
}

void paintRect(DeviceContext& dc, const RECT& rect, const BrushObject& brush) {
    paintRect(dc, rect, BrushPaint(dc, brush), R2_COPYPEN);
}

namespace {

/// A mask that lies within the clip, onto 32 bits.
void paintWholeMask(const Surface& surface, const BitMask& mask, POINT at, std::uint32_t value) {
    const unsigned lastBits = 0xFFU << ((8 - mask.width % 8) % 8); // of the row's last byte
    for (int y = 0; y < mask.height; ++y) {
        const std::uint8_t* row = mask.bits + std::ptrdiff_t{mask.stride} * y;
        std::uint32_t* out = surface.row32(at.y + y) + at.x;
        for (int left = 0; left < mask.width; left += 8) {
            unsigned bits = left + 8 >= mask.width ? row[left / 8] & lastBits : row[left / 8];
            for (; bits != 0; bits &= bits - 1)
                out[left + 7 - std::countr_zero(bits)] = value;
        }
    }
}

/// One row of a mask between two of its columns.
void paintMaskRow(const Surface& surface, const std::uint8_t* row, RECT columns, POINT at, std::uint32_t pixel) {
    const bool direct = surface.format.bits == 32;
    std::uint32_t* out = direct ? surface.row32(columns.top) : nullptr;
    const std::uint32_t value = pixel | surface.format.always;
    for (int column = columns.left - at.x; column < columns.right - at.x; ++column) {
        const std::uint8_t byte = row[column >> 3];
        if (byte == 0) {
            column |= 7; // the rest of this byte is empty
            continue;
        }
        if ((byte & (0x80 >> (column & 7))) == 0)
            continue;
        if (direct)
            out[at.x + column] = value;
        else
            fillPixels(surface, at.x + column, columns.top, 1, pixel);
    }
}

std::uint32_t blended(std::uint32_t below, std::uint32_t above) {
    const std::uint32_t alpha = above >> 24;
    std::uint32_t result = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const std::uint32_t sum = ((above >> shift) & 0xFF) * alpha + ((below >> shift) & 0xFF) * (255 - alpha);
        result |= (sum + 127) / 255 << shift;
    }
    const std::uint32_t cover = alpha * 255 + (below >> 24) * (255 - alpha);
    return result | ((cover + 127) / 255 << 24);
}

} // namespace

void paintMask(DeviceContext& dc, const BitMask& mask, POINT at, std::uint32_t pixel) {
    const RECT rect{at.x, at.y, at.x + mask.width, at.y + mask.height};
    const Surface& surface = dc.surface();
    if (surface.format.bits == 32 && dc.reach().holds(rect)) {
        paintWholeMask(surface, mask, at, pixel | surface.format.always);
        return;
    }
    eachVisible(dc, rect, [&](const RECT& piece) {
        for (int y = piece.top; y < piece.bottom; ++y)
            paintMaskRow(dc.surface(), mask.bits + std::ptrdiff_t{mask.stride} * (y - at.y),
                         {piece.left, y, piece.right, y + 1}, at, pixel);
    });
}

void blendPicture(DeviceContext& dc, const PixelTarget& picture, POINT at) {
    const RECT rect{at.x, at.y, at.x + picture.width, at.y + picture.height};
    std::vector<std::uint32_t> row(static_cast<std::size_t>(std::max(picture.width, 0)));
    eachVisible(dc, rect, [&](const RECT& piece) {
        const int count = piece.right - piece.left;
        for (int y = piece.top; y < piece.bottom; ++y) {
            const std::uint32_t* above =
                picture.pixels + std::ptrdiff_t{picture.stride} * (y - at.y) + (piece.left - at.x);
            loadArgb(dc.surface(), piece.left, y, count, row.data());
            std::transform(above, above + count, row.data(), row.data(),
                           [](std::uint32_t over, std::uint32_t under) { return blended(under, over); });
            storeArgb(dc.surface(), piece.left, y, count, row.data());
        }
    });
}

} // namespace vndk::win32
