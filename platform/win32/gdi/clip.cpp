// The clip region of device contexts.
#include "gdi/device_context.h"

#include <utility>

using namespace vndk::win32;

namespace {

int badParameter() {
    SetLastError(ERROR_INVALID_PARAMETER);
    return ERROR;
}

int setClip(DeviceContext& context, std::optional<Region> clip) {
    context.state.clip = std::move(clip);
    context.clipChanged();
    return context.state.clip ? context.state.clip->complexity() : SIMPLEREGION;
}

/// The clip, or where there is none all that could be painted on.
Region clipOrAll(const DeviceContext& context) {
    return context.state.clip ? *context.state.clip : Region(context.deviceBounds());
}

RECT deviceRect(const DeviceContext& context, int left, int top, int right, int bottom) {
    const POINT corner = context.toDevice({left, top});
    const POINT opposite = context.toDevice({right, bottom});
    return normalized({corner.x, corner.y, opposite.x, opposite.y});
}

int combineClip(DeviceContext& context, const Region& region, int mode) {
    switch (mode) {
    case RGN_COPY:
        return setClip(context, region);
    case RGN_AND:
        return setClip(context, context.state.clip ? *context.state.clip & region : region);
    case RGN_OR:
        return setClip(context, clipOrAll(context) | region);
    case RGN_DIFF:
        return setClip(context, clipOrAll(context) - region);
    case RGN_XOR: {
        Region clip = clipOrAll(context);
        clip ^= region;
        return setClip(context, std::move(clip));
    }
    default:
        return badParameter();
    }
}

} // namespace

int SelectClipRgn(HDC dc, HRGN region) { return ExtSelectClipRgn(dc, region, RGN_COPY); }

int ExtSelectClipRgn(HDC dc, HRGN region, int mode) {
    DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return ERROR;
    if (region == nullptr)
        return mode == RGN_COPY ? setClip(*context, {}) : badParameter();
    const RegionObject* object = requireObject<RegionObject>(region);
    return object == nullptr ? ERROR : combineClip(*context, object->region, mode);
}

int IntersectClipRect(HDC dc, int left, int top, int right, int bottom) {
    DeviceContext* context = requireContext(dc);
    return context == nullptr ? ERROR
                              : combineClip(*context, Region(deviceRect(*context, left, top, right, bottom)), RGN_AND);
}

int ExcludeClipRect(HDC dc, int left, int top, int right, int bottom) {
    DeviceContext* context = requireContext(dc);
    return context == nullptr ? ERROR
                              : combineClip(*context, Region(deviceRect(*context, left, top, right, bottom)), RGN_DIFF);
}

int OffsetClipRgn(HDC dc, int dx, int dy) {
    DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return ERROR;
    if (!context->state.clip)
        return SIMPLEREGION;
    Region moved = *context->state.clip;
    moved.offset(dx, dy);
    return setClip(*context, std::move(moved));
}

int GetClipBox(HDC dc, RECT* box) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return ERROR;
    if (box == nullptr)
        return badParameter();
    const RECT bounds = context->reach().bounds();
    const POINT origin = context->origin();
    const POINT corner = context->toLogical({bounds.left - origin.x, bounds.top - origin.y});
    *box = {corner.x, corner.y, corner.x + bounds.right - bounds.left, corner.y + bounds.bottom - bounds.top};
    if (context->reach().empty())
        *box = {0, 0, 0, 0};
    return context->reach().complexity();
}

int GetClipRgn(HDC dc, HRGN region) {
    const DeviceContext* context = requireContext(dc);
    RegionObject* object = requireObject<RegionObject>(region);
    if (context == nullptr || object == nullptr)
        return -1;
    if (!context->state.clip)
        return 0;
    object->region = *context->state.clip;
    return 1;
}

BOOL PtVisible(HDC dc, int x, int y) {
    const DeviceContext* context = requireContext(dc);
    return context != nullptr && context->reach().contains(context->toSurface(POINT{x, y}));
}

BOOL RectVisible(HDC dc, const RECT* rect) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    if (rect == nullptr)
        return badParameter();
    return context->reach().intersects(normalized(context->toSurface(*rect)));
}
