// Regions behind handles.
#include "gdi/figure.h"
#include "gdi/objects.h"
#include "gdi/painter.h"

#include <algorithm>
#include <cstring>

namespace vndk::win32 {

HRGN newRegionHandle(Region region) { return static_cast<HRGN>(newObject({RegionObject{std::move(region)}})); }

Region* regionOf(HRGN handle) {
    RegionObject* object = objectOf<RegionObject>(handle);
    return object == nullptr ? nullptr : &object->region;
}

} // namespace vndk::win32

using namespace vndk::win32;

namespace {

Region* requireRegion(HRGN handle) {
    RegionObject* object = requireObject<RegionObject>(handle);
    return object == nullptr ? nullptr : &object->region;
}

template <typename Result>
Result badParameter(Result failure) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return failure;
}

RECT limitedRect(int left, int top, int right, int bottom) {
    return normalized({limited(left), limited(top), limited(right), limited(bottom)});
}

/// The shape's own limit of size: a region keeps each of its rows.
HRGN newShape(const std::optional<Region>& region) {
    return region ? newRegionHandle(*region) : badParameter<HRGN>(nullptr);
}

Region inner(const Region& region, int width, int height) {
    // A pixel belongs to the border when one of its neighbours within reach doesn't belong to the region, so what is
    // left inside is the region met with itself moved to each side, step by step for thick borders.
    Region result = region;
    const auto shrink = [&result](int dx, int dy) {
        Region back = result;
        back.offset(dx, dy);
        Region forth = result;
        forth.offset(-dx, -dy);
        result &= back;
        result &= forth;
    };
    // No border is thicker than the region itself.
    const RECT bounds = region.bounds();
    const int columns = std::min(width, bounds.right - bounds.left);
    const int rows = std::min(height, bounds.bottom - bounds.top);
    for (int step = 0; step < columns && !result.empty(); ++step)
        shrink(1, 0);
    for (int step = 0; step < rows && !result.empty(); ++step)
        shrink(0, 1);
    return result;
}

/// The region in surface points.
Region onSurface(const DeviceContext& context, Region region) {
    const POINT zero = context.toSurface(POINT{0, 0});
    region.offset(zero.x, zero.y);
    return region;
}

} // namespace

HRGN CreateRectRgn(int left, int top, int right, int bottom) {
    return newRegionHandle(Region(limitedRect(left, top, right, bottom)));
}

HRGN CreateRectRgnIndirect(const RECT* rect) {
    if (rect == nullptr)
        return badParameter<HRGN>(nullptr);
    return CreateRectRgn(rect->left, rect->top, rect->right, rect->bottom);
}

HRGN CreateEllipticRgn(int left, int top, int right, int bottom) {
    return newShape(ellipseRegion(limitedRect(left, top, right, bottom)));
}

HRGN CreateEllipticRgnIndirect(const RECT* rect) {
    if (rect == nullptr)
        return badParameter<HRGN>(nullptr);
    return CreateEllipticRgn(rect->left, rect->top, rect->right, rect->bottom);
}

HRGN CreateRoundRectRgn(int left, int top, int right, int bottom, int ellipseWidth, int ellipseHeight) {
    return newShape(
        roundRectRegion(limitedRect(left, top, right, bottom), {limited(ellipseWidth), limited(ellipseHeight)}));
}

HRGN CreatePolygonRgn(const POINT* points, int count, int fillMode) {
    return CreatePolyPolygonRgn(points, &count, 1, fillMode);
}

HRGN CreatePolyPolygonRgn(const POINT* points, const INT* counts, int polygons, int fillMode) {
    if (points == nullptr || counts == nullptr || polygons < 1 || (fillMode != ALTERNATE && fillMode != WINDING))
        return badParameter<HRGN>(nullptr);
    std::vector<Outline> outlines;
    for (int index = 0; index < polygons; ++index) {
        if (counts[index] < 2)
            return badParameter<HRGN>(nullptr);
        Outline outline;
        for (int corner = 0; corner < counts[index]; ++corner, ++points)
            outline.push_back({double(limited(points->x)), double(limited(points->y))});
        outlines.push_back(std::move(outline));
    }
    const RECT bounds = boundsOf(outlines);
    constexpr int mostRows = 1 << 20;
    if (bounds.bottom - bounds.top > mostRows)
        return badParameter<HRGN>(nullptr);
    return newRegionHandle(fillOutlines(outlines, fillMode, bounds));
}

HRGN ExtCreateRegion(const void* transform, DWORD size, const RGNDATA* data) {
    if (transform != nullptr || data == nullptr || size < sizeof(RGNDATAHEADER) ||
        data->rdh.dwSize != sizeof(RGNDATAHEADER) || data->rdh.iType != RDH_RECTANGLES ||
        data->rdh.nCount > (size - sizeof(RGNDATAHEADER)) / sizeof(RECT))
        return badParameter<HRGN>(nullptr);
    Region region;
    for (DWORD index = 0; index < data->rdh.nCount; ++index) {
        RECT rect;
        std::memcpy(&rect, data->Buffer + index * sizeof(RECT), sizeof rect);
        region |= Region(limitedRect(rect.left, rect.top, rect.right, rect.bottom));
    }
    return newRegionHandle(std::move(region));
}

BOOL SetRectRgn(HRGN region, int left, int top, int right, int bottom) {
    Region* own = requireRegion(region);
    if (own == nullptr)
        return FALSE;
    *own = Region(limitedRect(left, top, right, bottom));
    return TRUE;
}

int CombineRgn(HRGN target, HRGN first, HRGN second, int mode) {
    Region* own = requireRegion(target);
    const Region* a = requireRegion(first);
    const Region* b = mode == RGN_COPY ? a : requireRegion(second);
    if (own == nullptr || a == nullptr || b == nullptr)
        return ERROR;
    Region result = *a;
    switch (mode) {
    case RGN_AND:
        result &= *b;
        break;
    case RGN_OR:
        result |= *b;
        break;
    case RGN_XOR:
        result ^= *b;
        break;
    case RGN_DIFF:
        result -= *b;
        break;
    case RGN_COPY:
        break;
    default:
        return badParameter(ERROR);
    }
    *own = std::move(result);
    return own->complexity();
}

BOOL EqualRgn(HRGN first, HRGN second) {
    const Region* a = requireRegion(first);
    const Region* b = requireRegion(second);
    return a != nullptr && b != nullptr && *a == *b;
}

int OffsetRgn(HRGN region, int dx, int dy) {
    Region* own = requireRegion(region);
    if (own == nullptr)
        return ERROR;
    const RECT bounds = own->bounds();
    const auto staysWithin = [](int low, int high, int step) {
        return limited(std::int64_t{low} + step) == std::int64_t{low} + step &&
               limited(std::int64_t{high} + step) == std::int64_t{high} + step;
    };
    if (!staysWithin(bounds.left, bounds.right, dx) || !staysWithin(bounds.top, bounds.bottom, dy))
        return badParameter(ERROR);
    own->offset(dx, dy);
    return own->complexity();
}

BOOL PtInRegion(HRGN region, int x, int y) {
    const Region* own = requireRegion(region);
    return own != nullptr && own->contains({x, y});
}

BOOL RectInRegion(HRGN region, const RECT* rect) {
    const Region* own = requireRegion(region);
    if (own == nullptr)
        return FALSE;
    if (rect == nullptr)
        return badParameter(FALSE);
    return own->intersects(normalized(*rect));
}

int GetRgnBox(HRGN region, RECT* box) {
    const Region* own = requireRegion(region);
    if (own == nullptr)
        return ERROR;
    if (box == nullptr)
        return badParameter(ERROR);
    *box = own->bounds();
    return own->complexity();
}

DWORD GetRegionData(HRGN region, DWORD size, RGNDATA* data) {
    const Region* own = requireRegion(region);
    if (own == nullptr)
        return 0;
    const auto rects = own->rects();
    const auto needed = static_cast<DWORD>(sizeof(RGNDATAHEADER) + rects.size_bytes());
    if (data == nullptr)
        return needed;
    if (size < needed)
        return badParameter<DWORD>(0);
    data->rdh = {sizeof(RGNDATAHEADER), RDH_RECTANGLES, static_cast<DWORD>(rects.size()),
                 static_cast<DWORD>(rects.size_bytes()), own->bounds()};
    if (!rects.empty())
        std::memcpy(reinterpret_cast<char*>(data) + sizeof(RGNDATAHEADER), rects.data(), rects.size_bytes());
    return needed;
}

namespace {

/// Paints the part of a region that `choose` gives.
template <typename Choose>
BOOL paintPart(HDC dc, HRGN region, const BrushObject* brush, int rop2, Choose choose) {
    const DeviceContext* context = requireContext(dc);
    const Region* own = requireRegion(region);
    if (context == nullptr || own == nullptr)
        return FALSE;
    if (brush == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    paintRegion(*context, onSurface(*context, choose(*own)), BrushPaint(*context, *brush), rop2);
    return TRUE;
}

Region whole(const Region& region) { return region; }

int mixModeOf(HDC dc) {
    const DeviceContext* context = contextOf(dc);
    return context == nullptr ? R2_COPYPEN : context->state.rop2;
}

} // namespace

BOOL FillRgn(HDC dc, HRGN region, HBRUSH brush) { return paintPart(dc, region, brushOf(brush), mixModeOf(dc), whole); }

BOOL FrameRgn(HDC dc, HRGN region, HBRUSH brush, int width, int height) {
    if (width < 1 || height < 1)
        return badParameter(FALSE);
    return paintPart(dc, region, brushOf(brush), mixModeOf(dc),
                     [=](const Region& own) { return own - inner(own, width, height); });
}

BOOL PaintRgn(HDC dc, HRGN region) {
    const DeviceContext* context = requireContext(dc);
    return context != nullptr && paintPart(dc, region, &selectedBrush(*context), context->state.rop2, whole);
}

BOOL InvertRgn(HDC dc, HRGN region) {
    return paintPart(dc, region, objectOf<BrushObject>(GetStockObject(BLACK_BRUSH)), R2_NOT, whole);
}
