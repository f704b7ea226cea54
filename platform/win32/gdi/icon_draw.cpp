// Painting of icons and cursors.
#include "gdi/cursor_image.h"
#include "gdi/icon.h"
#include "gdi/painter.h"
#include "win32/metrics.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr std::uint32_t white = 0x00FFFFFF;

std::uint32_t blendedOver(std::uint32_t below, std::uint32_t above) {
    const std::uint32_t alpha = above >> 24;
    std::uint32_t result = below & 0xFF000000;
    for (int shift = 0; shift < 24; shift += 8) {
        const std::uint32_t sum = ((above >> shift) & 0xFF) * alpha + ((below >> shift) & 0xFF) * (255 - alpha);
        result |= (sum + 127) / 255 << shift;
    }
    return result;
}

/// What comes about where a picture's pixel is painted on what is there.
class PixelRule {
public:
    PixelRule(const IconImage& icon, const Surface& target, UINT flags)
        : alpha_(icon.alpha), monochrome_(target.format.monochrome), image_((flags & DI_IMAGE) != 0),
          mask_((flags & DI_MASK) != 0) {}

    [[nodiscard]] std::uint32_t apply(std::uint32_t below, std::uint32_t pixel, std::uint8_t masked) const {
        if (!image_)
            return masked != 0 ? white : 0;
        // A monochrome bitmap takes all that isn't white as black.
        const std::uint32_t color = monochrome_ && (pixel & white) != white ? 0 : pixel & white;
        if (!mask_)
            return color;
        if (alpha_)
            return monochrome_ ? (pixel >> 24 >= 0x80 ? color : below) : blendedOver(below, pixel);
        return masked != 0 ? below ^ color : color;
    }

private:
    bool alpha_;
    bool monochrome_;
    bool image_;
    bool mask_;
};

} // namespace

void paintIcon(DeviceContext& dc, const IconImage& icon, const RECT& place, UINT flags) {
    const std::int64_t width = std::int64_t{place.right} - place.left;
    const std::int64_t height = std::int64_t{place.bottom} - place.top;
    if (width <= 0 || height <= 0)
        return;
    const PixelRule rule(icon, dc.surface(), flags);
    std::vector<std::uint32_t> row;
    eachVisible(dc, place, [&](const RECT& piece) {
        const int count = piece.right - piece.left;
        row.resize(static_cast<std::size_t>(count));
        for (int y = piece.top; y < piece.bottom; ++y) {
            const int fromY = static_cast<int>((y - place.top) * icon.height / height);
            loadArgb(dc.surface(), piece.left, y, count, row.data());
            for (int column = 0; column < count; ++column) {
                const std::int64_t x = std::int64_t{piece.left} + column - place.left;
                const std::size_t from = icon.index(static_cast<int>(x * icon.width / width), fromY);
                std::uint32_t& pixel = row[static_cast<std::size_t>(column)];
                pixel = rule.apply(pixel, icon.pixels[from], icon.mask[from]);
            }
            storeArgb(dc.surface(), piece.left, y, count, row.data());
        }
    });
}

std::optional<screen::CursorImage> cursorImage(HCURSOR cursor) {
    constexpr std::uint32_t opaque = 0xFF000000;
    const IconImage* icon = requireIcon(cursor);
    if (icon == nullptr)
        return {};
    screen::CursorImage image;
    image.width = icon->width;
    image.height = icon->height;
    image.hotX = icon->hot.x;
    image.hotY = icon->hot.y;
    image.pixels = icon->pixels;
    if (icon->alpha)
        return image;
    std::vector<bool> inverted(icon->pixels.size());
    for (std::size_t index = 0; index < icon->pixels.size(); ++index) {
        const std::uint32_t color = icon->pixels[index] & white;
        const bool masked = icon->mask[index] != 0;
        image.pixels[index] = masked ? 0 : opaque | color;
        inverted[index] = masked && color != 0;
    }
    if (std::find(inverted.begin(), inverted.end(), true) != inverted.end())
        image.inverted = std::move(inverted);
    return image;
}

} // namespace vndk::win32

using namespace vndk::win32;

BOOL DrawIcon(HDC dc, int x, int y, HICON icon) {
    return DrawIconEx(dc, x, y, icon, 0, 0, 0, nullptr, DI_NORMAL | DI_DEFAULTSIZE);
}

BOOL DrawIconEx(HDC dc, int x, int y, HICON icon, int width, int height, UINT step, HBRUSH brush, UINT flags) {
    DeviceContext* context = requireContext(dc);
    const IconImage* image = context == nullptr ? nullptr : requireIcon(icon);
    if (image == nullptr)
        return FALSE;
    if (step != 0 || width < 0 || height < 0 || (flags & DI_NORMAL) == 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const bool systemSize = (flags & DI_DEFAULTSIZE) != 0;
    if (width == 0)
        width = systemSize ? GetSystemMetrics(image->cursor ? SM_CXCURSOR : SM_CXICON) : image->width;
    if (height == 0)
        height = systemSize ? GetSystemMetrics(image->cursor ? SM_CYCURSOR : SM_CYICON) : image->height;
    const POINT at = context->toSurface(POINT{x, y});
    const RECT place{at.x, at.y, limited(std::int64_t{at.x} + width), limited(std::int64_t{at.y} + height)};
    if (const BrushObject* ground = brush == nullptr ? nullptr : brushOf(brush); ground != nullptr)
        paintRect(*context, place, *ground);
    paintIcon(*context, *image, place, flags & DI_NORMAL);
    return TRUE;
}
