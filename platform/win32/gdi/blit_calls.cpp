// PatBlt, BitBlt, StretchBlt and MaskBlt.
#include "gdi/blit.h"
#include "gdi/objects.h"

using namespace vndk::win32;

namespace {

BOOL badParameter() {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
}

/// Logical places and sizes as the calls take them.
struct Part {
    int x;
    int y;
    int width;
    int height;
};

BlitJob makeJob(const DeviceContext& context, const Part& target, const DeviceContext* source, const Part& from) {
    BlitJob job;
    const POINT place = context.toSurface(POINT{target.x, target.y});
    job.columns = {place.x, limited(target.width), 0, limited(from.width)};
    job.rows = {place.y, limited(target.height), 0, limited(from.height)};
    job.rule = {context.state.textColor, context.state.backgroundColor, {}};
    job.stretchMode = context.state.stretchMode;
    if (source != nullptr) {
        const POINT fromPlace = source->toSurface(POINT{from.x, from.y});
        job.columns.source = fromPlace.x;
        job.rows.source = fromPlace.y;
        job.source = &source->surface();
        job.rule.background = source->state.backgroundColor;
    }
    return job;
}

BOOL copyPicture(HDC dc, const Part& target, HDC source, const Part& from, DWORD rop) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    const bool needsSource = usesSource(ternaryTable(rop));
    const DeviceContext* sourceContext = needsSource ? requireContext(source) : nullptr;
    if (needsSource && sourceContext == nullptr)
        return FALSE;
    if (from.width == 0 || from.height == 0)
        return TRUE;
    BlitJob job = makeJob(*context, target, sourceContext, from);
    job.table = ternaryTable(rop);
    blit(*context, job);
    return TRUE;
}

bool covers(const BlitMask& mask, const Part& target) {
    return mask.x >= 0 && mask.y >= 0 && target.width <= mask.surface.width - mask.x &&
           target.height <= mask.surface.height - mask.y;
}

} // namespace

BOOL PatBlt(HDC dc, int x, int y, int width, int height, DWORD rop) {
    if (requireContext(dc) == nullptr)
        return FALSE;
    if (usesSource(ternaryTable(rop)))
        return badParameter();
    const Part part{x, y, width, height};
    return width == 0 || height == 0 || copyPicture(dc, part, nullptr, part, rop);
}

BOOL BitBlt(HDC dc, int x, int y, int width, int height, HDC source, int sourceX, int sourceY, DWORD rop) {
    return copyPicture(dc, {x, y, width, height}, source, {sourceX, sourceY, width, height}, rop);
}

BOOL StretchBlt(HDC dc, int x, int y, int width, int height, HDC source, int sourceX, int sourceY, int sourceWidth,
                int sourceHeight, DWORD rop) {
    return copyPicture(dc, {x, y, width, height}, source, {sourceX, sourceY, sourceWidth, sourceHeight}, rop);
}

BOOL MaskBlt(HDC dc, int x, int y, int width, int height, HDC source, int sourceX, int sourceY, HBITMAP mask, int maskX,
             int maskY, DWORD rop) {
    if (mask == nullptr)
        return BitBlt(dc, x, y, width, height, source, sourceX, sourceY, rop & 0x00FFFFFF);
    const DeviceContext* context = requireContext(dc);
    const auto* bitmap = requireObject<BitmapObject>(mask);
    if (context == nullptr || bitmap == nullptr)
        return FALSE;
    const Part target{x, y, width, height};
    const BlitMask blitMask{bitmap->surface(), maskX, maskY, static_cast<TernaryTable>(rop >> 24)};
    if (width < 0 || height < 0 || bitmap->surface().format.bits != 1 || !covers(blitMask, target))
        return badParameter();
    const TernaryTable foreground = ternaryTable(rop);
    const bool needsSource = usesSource(foreground) || usesSource(blitMask.background);
    const DeviceContext* sourceContext = needsSource ? requireContext(source) : nullptr;
    if (needsSource && sourceContext == nullptr)
        return FALSE;
    BlitJob job = makeJob(*context, target, sourceContext, {sourceX, sourceY, width, height});
    job.table = foreground;
    job.mask = &blitMask;
    blit(*context, job);
    return TRUE;
}
