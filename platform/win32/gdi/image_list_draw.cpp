// Painting of image lists, and icons out of them.
#include "gdi/icon.h"
#include "gdi/image_list.h"
#include "gdi/painter.h"
#include "win32/draw.h"

#include <algorithm>

using namespace vndk::win32;

namespace {

constexpr std::uint32_t white = 0x00FFFFFF;

/// One row of an image with its overlay on it.
class ImageRow {
public:
    ImageRow(const ImageList& list, int index, UINT style)
        : list_(list), index_(index), pixels_(size()), mask_(size()), overPixels_(size()), overMask_(size()) {
        const int overlay = static_cast<int>((style & ILD_OVERLAYMASK) >> 8);
        if (overlay >= 1 && overlay <= overlayCount)
            overlay_ = list.overlays[static_cast<std::size_t>(overlay - 1)] - 1;
    }

    void read(int y) {
        list_.readRow(index_, y, pixels_.data(), mask_.data());
        if (!list_.has(overlay_))
            return;
        list_.readRow(overlay_, y, overPixels_.data(), overMask_.data());
        for (std::size_t x = 0; x < pixels_.size(); ++x) {
            if (overMask_[x] != 0)
                continue;
            pixels_[x] = overPixels_[x];
            mask_[x] = 0;
        }
    }
    [[nodiscard]] std::uint32_t pixel(int x) const { return pixels_[static_cast<std::size_t>(x)] & white; }
    [[nodiscard]] bool transparent(int x) const { return mask_[static_cast<std::size_t>(x)] != 0; }

private:
    [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(list_.width()); }

    const ImageList& list_;
    int index_;
    int overlay_ = -1; // index of the image laid over
    std::vector<std::uint32_t> pixels_;
    std::vector<std::uint8_t> mask_;
    std::vector<std::uint32_t> overPixels_;
    std::vector<std::uint8_t> overMask_;
};

/// `parts` of four of the second colour.
std::uint32_t blended(std::uint32_t first, std::uint32_t second, std::uint32_t parts) {
    std::uint32_t result = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const std::uint32_t sum = ((first >> shift) & 0xFF) * (4 - parts) + ((second >> shift) & 0xFF) * parts;
        result |= (sum / 4) << shift;
    }
    return result;
}

/// What comes about where a pixel of the list is painted on what is there.
class DrawRule {
public:
    DrawRule(const ImageList& list, UINT style, COLORREF background, COLORREF foreground)
        : showsMask_((style & ILD_MASK) != 0 && list.masked()), ignoresMask_((style & ILD_IMAGE) != 0) {
        const COLORREF ground = background == CLR_DEFAULT ? list.background : background;
        if ((style & ILD_TRANSPARENT) == 0 && ground != CLR_NONE)
            ground_ = argbFromColor(ground);
        if ((style & (ILD_BLEND25 | ILD_BLEND50)) != 0)
            parts_ = (style & ILD_BLEND50) != 0 ? 2 : 1;
        if (foreground == CLR_DEFAULT)
            blendColor_ = argbFromColor(GetSysColor(COLOR_HIGHLIGHT));
        else if (foreground != CLR_NONE)
            blendColor_ = argbFromColor(foreground);
    }

    [[nodiscard]] std::uint32_t apply(std::uint32_t below, std::uint32_t pixel, bool transparent) const {
        if (showsMask_)
            return transparent ? white : 0;
        if (transparent && !ignoresMask_)
            return ground_.value_or(below);
        return parts_ == 0 ? pixel : blended(pixel, blendColor_.value_or(below), parts_);
    }

private:
    bool showsMask_;
    bool ignoresMask_;
    std::uint32_t parts_ = 0;                 // of four: how much the blend takes away
    std::optional<std::uint32_t> ground_;     // what shows where the image is transparent; nothing: what is there
    std::optional<std::uint32_t> blendColor_; // nothing: what is there
};

/// The part of an image that starts at `from` onto `place` (surface points), which is no larger.
void paintImage(DeviceContext& dc, const RECT& place, ImageRow& image, POINT from, const DrawRule& rule) {
    std::vector<std::uint32_t> row;
    eachVisible(dc, place, [&](const RECT& piece) {
        const int count = piece.right - piece.left;
        row.resize(static_cast<std::size_t>(count));
        for (int y = piece.top; y < piece.bottom; ++y) {
            image.read(y - place.top + from.y);
            loadArgb(dc.surface(), piece.left, y, count, row.data());
            for (int column = 0; column < count; ++column) {
                const int x = piece.left + column - place.left + from.x;
                std::uint32_t& pixel = row[static_cast<std::size_t>(column)];
                pixel = rule.apply(pixel, image.pixel(x), image.transparent(x));
            }
            storeArgb(dc.surface(), piece.left, y, count, row.data());
        }
    });
}

BOOL refused() {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
}

/// Of `asked` pixels (0: all) those that an image of `size` has from `start` on.
int partSize(int asked, int start, int size) { return std::min(asked > 0 ? asked : size, size - start); }

} // namespace

BOOL ImageList_Draw(HIMAGELIST list, int index, HDC dc, int x, int y, UINT style) {
    return ImageList_DrawEx(list, index, dc, x, y, 0, 0, CLR_DEFAULT, CLR_DEFAULT, style);
}

BOOL ImageList_DrawEx(HIMAGELIST list, int index, HDC dc, int x, int y, int width, int height, COLORREF background,
                      COLORREF foreground, UINT style) {
    const IMAGELISTDRAWPARAMS params{sizeof params, list, index, dc,         x,          y,     width,
                                     height,        0,    0,     background, foreground, style, 0};
    return ImageList_DrawIndirect(&params);
}

BOOL ImageList_DrawIndirect(const IMAGELISTDRAWPARAMS* params) {
    if (params == nullptr || params->cbSize != sizeof *params)
        return refused();
    const ImageList* list = requireImageList(params->himl);
    DeviceContext* dc = list == nullptr ? nullptr : requireContext(params->hdcDst);
    if (dc == nullptr)
        return FALSE;
    const bool startsInside = params->xBitmap >= 0 && params->yBitmap >= 0 && params->xBitmap < list->width() &&
                              params->yBitmap < list->height();
    if (!list->has(params->i) || !startsInside || params->cx < 0 || params->cy < 0)
        return refused();
    const POINT at = dc->toSurface(POINT{params->x, params->y});
    const RECT place{at.x, at.y, at.x + partSize(params->cx, params->xBitmap, list->width()),
                     at.y + partSize(params->cy, params->yBitmap, list->height())};
    ImageRow image(*list, params->i, params->fStyle);
    paintImage(*dc, place, image, {params->xBitmap, params->yBitmap},
               DrawRule(*list, params->fStyle, params->rgbBk, params->rgbFg));
    return TRUE;
}

HICON ImageList_GetIcon(HIMAGELIST handle, int index, UINT style) {
    const ImageList* list = requireImageList(handle);
    if (list == nullptr)
        return nullptr;
    if (!list->has(index)) {
        refused();
        return nullptr;
    }
    IconImage icon = IconImage::blank(list->width(), list->height());
    ImageRow image(*list, index, style);
    for (int y = 0; y < icon.height; ++y) {
        image.read(y);
        for (int x = 0; x < icon.width; ++x) {
            const bool transparent = image.transparent(x);
            // What is transparent must be black: other colours would invert the background.
            icon.pixels[icon.index(x, y)] = transparent ? 0 : image.pixel(x);
            icon.mask[icon.index(x, y)] = transparent ? 1 : 0;
        }
    }
    icon.hot = {icon.width / 2, icon.height / 2};
    return newIcon(std::move(icon));
}
