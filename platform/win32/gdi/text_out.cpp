#include "gdi/text_out.h"

#include <algorithm>
#include <vector>

namespace vndk::win32 {

namespace {

/// A line of text in its place. All rectangles are in surface points.
class Line {
public:
    Line(const Font& font, POINT pen, int left, int base, const TextRun& run)
        : font_(font), pen_(pen), left_(left), base_(base), run_(run) {}

    /// The turned form of a rectangle of the upright text.
    [[nodiscard]] RECT place(RECT upright) const {
        font_.turn().turnCorner(upright.left, upright.top);
        font_.turn().turnCorner(upright.right, upright.bottom);
        const RECT turned = normalized(upright);
        return {turned.left + pen_.x, turned.top + pen_.y, turned.right + pen_.x, turned.bottom + pen_.y};
    }

    /// Calls `visit(glyph, box)` for all glyphs that have a picture.
    template <typename Visit>
    void eachGlyph(Visit visit) const {
        std::int64_t along = left_;
        for (std::size_t index = 0; index < run_.text.size(); ++index) {
            const Glyph& glyph = font_.glyph(run_.text[index]);
            if (glyph.width > 0) {
                int x = limited(along);
                int y = base_;
                font_.turn().turnCorner(x, y);
                const int left = pen_.x + x + glyph.left;
                const int top = pen_.y + y + glyph.top;
                visit(glyph, RECT{left, top, left + glyph.width, top + glyph.height});
            }
            along += run_.advances != nullptr ? run_.advances[index] : glyph.advance;
        }
    }

    /// Around all glyphs, within `bounds`; empty when none shows there.
    [[nodiscard]] RECT inkBox(const RECT& bounds) const {
        RECT box{bounds.right, bounds.bottom, bounds.left, bounds.top};
        eachGlyph([&](const Glyph&, const RECT& glyph) {
            box = {std::min(box.left, glyph.left), std::min(box.top, glyph.top), std::max(box.right, glyph.right),
                   std::max(box.bottom, glyph.bottom)};
        });
        return intersected(box, bounds);
    }

private:
    const Font& font_;
    POINT pen_;
    int left_;
    int base_;
    TextRun run_;
};

/// A picture of one bit for each pixel that glyphs are put together in: one pass through the clip for a whole line.
class Plate {
public:
    explicit Plate(const RECT& box) : box_(box), stride_((box.right - box.left + 7) / 8) {
        bits().assign(static_cast<std::size_t>(stride_) * static_cast<std::size_t>(box.bottom - box.top), 0);
    }

    void add(const Glyph& glyph, const RECT& place) {
        const RECT piece = intersected(place, box_);
        if (isEmptyRect(piece))
            return;
        for (int y = piece.top; y < piece.bottom; ++y) {
            const std::uint8_t* from = glyph.bits.data() + std::ptrdiff_t{glyph.stride} * (y - place.top);
            std::uint8_t* to = bits().data() + std::ptrdiff_t{stride_} * (y - box_.top);
            if (piece.left == place.left && piece.right == place.right)
                addRow(from, glyph.stride, to, place.left - box_.left);
            else
                addPiece(from, to, place.left, piece.left, piece.right);
        }
    }

    [[nodiscard]] BitMask mask() const {
        return {bits().data(), static_cast<int>(box_.right - box_.left), static_cast<int>(box_.bottom - box_.top),
                stride_};
    }

private:
    /// Kept from line to line, so that painting text takes no memory. Only one plate is in use at a time.
    static std::vector<std::uint8_t>& bits() {
        static std::vector<std::uint8_t>& memory = *new std::vector<std::uint8_t>;
        return memory;
    }

    /// A row that lies in the plate as a whole.
    static void addRow(const std::uint8_t* from, int bytes, std::uint8_t* to, int column) {
        const int shift = column & 7;
        to += column >> 3;
        for (int index = 0; index < bytes; ++index) {
            to[index] |= static_cast<std::uint8_t>(from[index] >> shift);
            // Bits beyond the glyph's width are 0: where there are none left, the next byte need not be there.
            if (const auto rest = static_cast<std::uint8_t>(from[index] << (8 - shift)); shift != 0 && rest != 0)
                to[index + 1] |= rest;
        }
    }

    /// The columns `left` to `right` (surface) of a row that begins at `start`.
    void addPiece(const std::uint8_t* from, std::uint8_t* to, int start, int left, int right) const {
        for (int x = left; x < right; ++x) {
            if ((from[(x - start) >> 3] & (0x80 >> ((x - start) & 7))) == 0)
                continue;
            const int column = x - box_.left;
            to[column >> 3] |= static_cast<std::uint8_t>(0x80 >> (column & 7));
        }
    }

    RECT box_;
    int stride_;
};

} // namespace

int TextRun::width(const Font& font) const {
    if (advances == nullptr)
        return font.width(text);
    std::int64_t sum = 0;
    for (std::size_t index = 0; index < text.size(); ++index)
        sum += advances[index];
    return limited(sum);
}

void paintRun(DeviceContext& dc, POINT at, const TextRun& run, const RECT* clip) {
    paintRunFromPen(dc, at, 0, 0, run, clip);
}

void paintRunFromPen(DeviceContext& dc, POINT pen, int left, int top, const TextRun& run, const RECT* clip) {
    const Region& reach = dc.reach();
    const RECT bounds = clip == nullptr ? reach.bounds() : intersected(reach.bounds(), *clip);
    if (isEmptyRect(bounds))
        return;
    const Font& font = fontOf(dc);
    const TEXTMETRICA& metrics = font.metrics();
    const int base = top + metrics.tmAscent;
    const int right = limited(std::int64_t{left} + run.width(font));
    const Line line(font, pen, left, base, run);
    if (dc.state.backgroundMode == OPAQUE)
        paintRect(dc, intersected(line.place({left, top, right, top + metrics.tmHeight}), bounds),
                  dc.pixelOf(dc.state.backgroundColor));

    const std::uint32_t pixel = dc.pixelOf(dc.state.textColor);
    if (const RECT ink = line.inkBox(bounds); !isEmptyRect(ink)) {
        Plate plate(ink);
        line.eachGlyph([&](const Glyph& glyph, const RECT& place) { plate.add(glyph, place); });
        paintMask(dc, plate.mask(), {ink.left, ink.top}, pixel);
    }
    for (const TextBar& bar : {font.underline(), font.strikeOut()})
        if (bar.height > 0)
            paintRect(dc, intersected(line.place({left, base + bar.top, right, base + bar.top + bar.height}), bounds),
                      pixel);
}

} // namespace vndk::win32
