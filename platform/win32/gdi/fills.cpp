// Rectangles and areas filled with brushes, and single pixels.
#include "gdi/painter.h"

#include <vector>

using namespace vndk::win32;

namespace {

template <typename Result>
Result badParameter(Result failure) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return failure;
}

const BrushObject* requireBrush(HBRUSH brush) {
    const BrushObject* object = brushOf(brush);
    if (object == nullptr)
        SetLastError(ERROR_INVALID_HANDLE);
    return object;
}

/// The pixel (x, y) of a rectangle in a context with its surface's pixel, or nothing outside of the clip.
std::optional<std::uint32_t> pixelAt(const DeviceContext& context, POINT place) {
    if (!context.reach().contains(place))
        return {};
    std::uint32_t pixel = 0;
    loadPixels(context.surface(), place.x, place.y, 1, &pixel);
    return pixel;
}

/// Finds the area of like pixels around a point.
class FloodArea {
public:
    /// `belongs(rgb)`: may this colour be filled?
    template <typename Belongs>
    FloodArea(const DeviceContext& context, Belongs belongs) : bounds_(context.reach().bounds()) {
        width_ = bounds_.right - bounds_.left;
        open_.assign(static_cast<std::size_t>(width_) * static_cast<std::size_t>(bounds_.bottom - bounds_.top), 0);
        std::vector<std::uint32_t> row(static_cast<std::size_t>(width_));
        for (const RECT& part : context.reach().rects()) {
            for (int y = part.top; y < part.bottom; ++y) {
                loadArgb(context.surface(), part.left, y, part.right - part.left, row.data());
                for (int x = part.left; x < part.right; ++x)
                    open(x, y) = belongs(row[static_cast<std::size_t>(x - part.left)] & 0x00FFFFFF) ? 1 : 0;
            }
        }
    }

    /// REQUIRES: the point lies within the clip.
    Region from(POINT seed) {
        SpanSet spans(bounds_);
        std::vector<POINT> seeds{seed};
        while (!seeds.empty()) {
            const POINT at = seeds.back();
            seeds.pop_back();
            if (open(at.x, at.y) == 0)
                continue;
            int left = at.x;
            while (left > bounds_.left && open(left - 1, at.y) != 0)
                --left;
            int right = at.x + 1;
            while (right < bounds_.right && open(right, at.y) != 0)
                ++right;
            spans.add(at.y, left, right);
            for (int x = left; x < right; ++x)
                open(x, at.y) = 0;
            addSeeds(seeds, at.y - 1, left, right);
            addSeeds(seeds, at.y + 1, left, right);
        }
        return spans.take();
    }

private:
    std::uint8_t& open(int x, int y) {
        return open_[static_cast<std::size_t>(y - bounds_.top) * static_cast<std::size_t>(width_) +
                     static_cast<std::size_t>(x - bounds_.left)];
    }
    /// One for each piece of the row that can be filled.
    void addSeeds(std::vector<POINT>& seeds, int y, int left, int right) {
        if (y < bounds_.top || y >= bounds_.bottom)
            return;
        for (int x = left; x < right; ++x)
            if (open(x, y) != 0 && (x == left || open(x - 1, y) == 0))
                seeds.push_back({x, y});
    }

    RECT bounds_;
    int width_ = 0;
    std::vector<std::uint8_t> open_; // 1: can be filled and hasn't been yet
};

} // namespace

int FillRect(HDC dc, const RECT* rect, HBRUSH brush) {
    const DeviceContext* context = requireContext(dc);
    const BrushObject* object = context == nullptr ? nullptr : requireBrush(brush);
    if (object == nullptr)
        return 0;
    if (rect == nullptr)
        return badParameter(0);
    paintRect(*context, context->toSurface(*rect), BrushPaint(*context, *object), R2_COPYPEN);
    return 1;
}

int FrameRect(HDC dc, const RECT* rect, HBRUSH brush) {
    const DeviceContext* context = requireContext(dc);
    const BrushObject* object = context == nullptr ? nullptr : requireBrush(brush);
    if (object == nullptr)
        return 0;
    if (rect == nullptr)
        return badParameter(0);
    const RECT frame = context->toSurface(*rect);
    if (isEmptyRect(frame))
        return 0;
    const BrushPaint paint(*context, *object);
    paintRect(*context, {frame.left, frame.top, frame.right, frame.top + 1}, paint, R2_COPYPEN);
    paintRect(*context, {frame.left, frame.bottom - 1, frame.right, frame.bottom}, paint, R2_COPYPEN);
    paintRect(*context, {frame.left, frame.top, frame.left + 1, frame.bottom}, paint, R2_COPYPEN);
    paintRect(*context, {frame.right - 1, frame.top, frame.right, frame.bottom}, paint, R2_COPYPEN);
    return 1;
}

BOOL InvertRect(HDC dc, const RECT* rect) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    if (rect == nullptr)
        return badParameter(FALSE);
    paintRect(*context, context->toSurface(*rect), BrushPaint(*context, BrushObject{}), R2_NOT);
    return TRUE;
}

COLORREF SetPixel(HDC dc, int x, int y, COLORREF color) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return CLR_INVALID;
    const POINT place = context->toSurface(POINT{x, y});
    if (!context->reach().contains(place))
        return badParameter(CLR_INVALID);
    const std::uint32_t pixel = context->pixelOf(color);
    fillPixels(context->surface(), place.x, place.y, 1, pixel);
    return colorFromArgb(argbFromPixel(context->surface(), pixel));
}

BOOL SetPixelV(HDC dc, int x, int y, COLORREF color) { return SetPixel(dc, x, y, color) != CLR_INVALID; }

COLORREF GetPixel(HDC dc, int x, int y) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return CLR_INVALID;
    const auto pixel = pixelAt(*context, context->toSurface(POINT{x, y}));
    return pixel ? colorFromArgb(argbFromPixel(context->surface(), *pixel)) : badParameter(CLR_INVALID);
}

BOOL ExtFloodFill(HDC dc, int x, int y, COLORREF color, UINT kind) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    const POINT seed = context->toSurface(POINT{x, y});
    const auto pixel = pixelAt(*context, seed);
    if (!pixel || (kind != FLOODFILLBORDER && kind != FLOODFILLSURFACE))
        return badParameter(FALSE);
    const std::uint32_t wanted = argbFromPixel(context->surface(), context->pixelOf(color)) & 0x00FFFFFF;
    const auto belongs = [=](std::uint32_t rgb) { return (rgb == wanted) == (kind == FLOODFILLSURFACE); };
    if (!belongs(argbFromPixel(context->surface(), *pixel) & 0x00FFFFFF))
        return badParameter(FALSE);
    const Region area = FloodArea(*context, belongs).from(seed);
    paintRegion(*context, area, BrushPaint(*context, selectedBrush(*context)), context->state.rop2);
    return TRUE;
}

BOOL FloodFill(HDC dc, int x, int y, COLORREF borderColor) {
    return ExtFloodFill(dc, x, y, borderColor, FLOODFILLBORDER);
}
