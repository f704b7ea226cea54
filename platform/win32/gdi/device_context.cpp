// Device contexts: how they are made and moved, and what goes into them by SelectObject.
#include "gdi/device_context.h"

#include "kernel/handle_table.h"

#include <algorithm>
#include <string_view>
#include <type_traits>

namespace vndk::win32 {

namespace {

constexpr std::size_t mostContexts = 65536;

struct Contexts {
    HandleTable<DeviceContext, HDC> table{HandleKind::dc};
    PixelTarget screen;
};

/// Never destroyed, as the objects that contexts hold on to.
Contexts& contexts() {
    static Contexts& instance = *new Contexts;
    return instance;
}

HDC addContext(std::unique_ptr<DeviceContext> context) {
    if (contexts().table.size() >= mostContexts) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return contexts().table.add(std::move(context));
}

ContextState defaultState(DeviceContext::Kind kind) {
    ContextState state;
    state.pen = Selection(GetStockObject(BLACK_PEN));
    state.brush = Selection(GetStockObject(WHITE_BRUSH));
    state.font = Selection(GetStockObject(SYSTEM_FONT));
    if (kind == DeviceContext::Kind::memory)
        state.bitmap = Selection(stockBitmap());
    return state;
}

void showScreen(DeviceContext& context) {
    const Surface surface = surfaceOf(contexts().screen);
    context.moveTo(surface, {0, 0}, Region(surface.bounds()));
}

} // namespace

RECT normalized(const RECT& rect) {
    return {std::min(rect.left, rect.right), std::min(rect.top, rect.bottom), std::max(rect.left, rect.right),
            std::max(rect.top, rect.bottom)};
}

RECT intersected(const RECT& a, const RECT& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
}

int limited(std::int64_t coordinate) {
    constexpr std::int64_t limit = std::int64_t{1} << 27;
    return static_cast<int>(std::clamp(coordinate, -limit, limit));
}

DeviceContext::DeviceContext(Kind kind) : state(defaultState(kind)), kind_(kind) { bitmapChanged(); }

const Region& DeviceContext::reach() const {
    if (!reachValid_) {
        reach_ = visible_;
        if (state.clip) {
            Region clip = *state.clip;
            clip.offset(origin_.x, origin_.y);
            reach_ &= clip;
        }
        reachValid_ = true;
    }
    return reach_;
}

RECT DeviceContext::deviceBounds() const {
    return {-origin_.x, -origin_.y, surface_.width - origin_.x, surface_.height - origin_.y};
}

void DeviceContext::bitmapChanged() {
    const auto* bitmap = state.bitmap.get<BitmapObject>();
    if (bitmap == nullptr)
        return;
    surface_ = bitmap->surface();
    visible_ = Region(surface_.bounds());
    reachValid_ = false;
}

void DeviceContext::moveTo(const Surface& surface, POINT origin, Region visible) {
    surface_ = surface;
    origin_ = origin;
    visible_ = std::move(visible);
    visible_ &= Region(surface.bounds());
    reachValid_ = false;
}

void DeviceContext::reset() {
    saved.clear();
    state = defaultState(kind_);
    bitmapChanged();
    reachValid_ = false;
}

POINT DeviceContext::toDevice(POINT logical) const {
    return {limited(std::int64_t{logical.x} - state.windowOrigin.x + state.viewportOrigin.x),
            limited(std::int64_t{logical.y} - state.windowOrigin.y + state.viewportOrigin.y)};
}

POINT DeviceContext::toLogical(POINT device) const {
    return {limited(std::int64_t{device.x} - state.viewportOrigin.x + state.windowOrigin.x),
            limited(std::int64_t{device.y} - state.viewportOrigin.y + state.windowOrigin.y)};
}

POINT DeviceContext::toSurface(POINT logical) const {
    const POINT device = toDevice(logical);
    return {limited(std::int64_t{device.x} + origin_.x), limited(std::int64_t{device.y} + origin_.y)};
}

RECT DeviceContext::toSurface(const RECT& logical) const {
    const POINT corner = toSurface(POINT{logical.left, logical.top});
    const POINT opposite = toSurface(POINT{logical.right, logical.bottom});
    return {corner.x, corner.y, opposite.x, opposite.y};
}

DeviceContext* contextOf(HDC dc) { return contexts().table.find(dc); }

DeviceContext* requireContext(HDC dc) {
    DeviceContext* context = contextOf(dc);
    if (context == nullptr)
        SetLastError(ERROR_INVALID_HANDLE);
    return context;
}

// ---- The window manager's side -------------------------------------------------------------------------------------

HDC createWindowDC(const PixelTarget& target, POINT origin, Region visible, HWND window) {
    auto context = std::make_unique<DeviceContext>(DeviceContext::Kind::window);
    context->setWindow(window);
    context->moveTo(surfaceOf(target), origin, std::move(visible));
    return addContext(std::move(context));
}

void moveWindowDC(HDC dc, const PixelTarget& target, POINT origin, Region visible) {
    DeviceContext* context = contextOf(dc);
    if (context != nullptr && context->kind() == DeviceContext::Kind::window)
        context->moveTo(surfaceOf(target), origin, std::move(visible));
}

bool hasScreenContexts() {
    bool found = false;
    contexts().table.forEach(
        [&found](HDC, const DeviceContext& context) { found |= context.kind() == DeviceContext::Kind::screen; });
    return found;
}

bool deleteWindowDC(HDC dc) {
    const DeviceContext* context = contextOf(dc);
    if (context == nullptr || context->kind() != DeviceContext::Kind::window)
        return false;
    contexts().table.remove(dc);
    return true;
}

HWND windowOfDC(HDC dc) {
    const DeviceContext* context = contextOf(dc);
    return context == nullptr ? nullptr : context->window();
}

void resetWindowDC(HDC dc) {
    DeviceContext* context = contextOf(dc);
    if (context != nullptr && context->kind() == DeviceContext::Kind::window)
        context->reset();
}

void setScreenTarget(const PixelTarget& target) {
    contexts().screen = target;
    contexts().table.forEach([](HDC /*dc*/, DeviceContext& context) {
        if (context.kind() == DeviceContext::Kind::screen)
            showScreen(context);
    });
}

PixelTarget screenTarget() { return contexts().screen; }

namespace {

bool selectedElsewhere(HGDIOBJ bitmap, const DeviceContext& here) {
    bool found = false;
    contexts().table.forEach([&](HDC /*dc*/, const DeviceContext& context) {
        found = found || (&context != &here && context.state.bitmap.handle() == bitmap);
    });
    return found;
}

HGDIOBJ selectBitmap(DeviceContext& context, HGDIOBJ bitmap, bool shared) {
    if (context.kind() != DeviceContext::Kind::memory || (!shared && selectedElsewhere(bitmap, context))) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const HGDIOBJ former = context.state.bitmap.handle();
    context.state.bitmap = Selection(bitmap);
    context.bitmapChanged();
    return former;
}

HGDIOBJ replace(Selection& selection, HGDIOBJ object) {
    const HGDIOBJ former = selection.handle();
    selection = Selection(object);
    return former;
}

const Selection* selectionOf(const ContextState& state, UINT type) {
    switch (type) {
    case OBJ_PEN:
        return &state.pen;
    case OBJ_BRUSH:
        return &state.brush;
    case OBJ_FONT:
        return &state.font;
    case OBJ_BITMAP:
        return &state.bitmap;
    default:
        return nullptr;
    }
}

} // namespace

} // namespace vndk::win32

using namespace vndk::win32;

HDC CreateCompatibleDC(HDC dc) {
    if (dc != nullptr && requireContext(dc) == nullptr)
        return nullptr;
    return addContext(std::make_unique<DeviceContext>(DeviceContext::Kind::memory));
}

HDC CreateDCA(LPCSTR driver, LPCSTR /*device*/, LPCSTR /*output*/, const DEVMODEA* /*mode*/) {
    if (driver == nullptr || std::string_view(driver) != "DISPLAY") {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    auto context = std::make_unique<DeviceContext>(DeviceContext::Kind::screen);
    showScreen(*context);
    return addContext(std::move(context));
}

BOOL DeleteDC(HDC dc) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    if (context->kind() == DeviceContext::Kind::window) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    contexts().table.remove(dc);
    return TRUE;
}

DWORD GetObjectType(HGDIOBJ object) {
    if (const DeviceContext* context = contextOf(static_cast<HDC>(object)))
        return context->kind() == DeviceContext::Kind::memory ? OBJ_MEMDC : OBJ_DC;
    if (const GdiObject* found = findObject(object)) {
        constexpr DWORD types[] = {OBJ_PEN, OBJ_BRUSH, OBJ_FONT, OBJ_BITMAP, OBJ_REGION};
        static_assert(std::variant_size_v<decltype(GdiObject::body)> == std::size(types));
        return types[found->body.index()];
    }
    SetLastError(ERROR_INVALID_HANDLE);
    return 0;
}

HGDIOBJ SelectObject(HDC dc, HGDIOBJ object) {
    DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return nullptr;
    switch (GetObjectType(object)) {
    case OBJ_PEN:
        return replace(context->state.pen, object);
    case OBJ_BRUSH:
        return replace(context->state.brush, object);
    case OBJ_FONT:
        return replace(context->state.font, object);
    case OBJ_BITMAP:
        return selectBitmap(*context, object, findObject(object)->stock);
    case OBJ_REGION: {
        const int kind = SelectClipRgn(dc, static_cast<HRGN>(object));
        return kind == ERROR ? HGDI_ERROR : reinterpret_cast<HGDIOBJ>(static_cast<UINT_PTR>(kind));
    }
    default:
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
}

HGDIOBJ GetCurrentObject(HDC dc, UINT type) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return nullptr;
    const Selection* selection = selectionOf(context->state, type);
    if (selection == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return selection->handle();
}

int SaveDC(HDC dc) {
    constexpr std::size_t mostLevels = 1024;
    DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return 0;
    if (context->saved.size() >= mostLevels) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return 0;
    }
    context->saved.push_back(context->state);
    return static_cast<int>(context->saved.size());
}

BOOL RestoreDC(HDC dc, int level) {
    DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    const auto levels = static_cast<std::int64_t>(context->saved.size());
    const std::int64_t wanted = level < 0 ? levels + level + 1 : level;
    if (wanted < 1 || wanted > levels) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    context->state = context->saved[static_cast<std::size_t>(wanted - 1)];
    context->saved.resize(static_cast<std::size_t>(wanted - 1));
    context->bitmapChanged();
    context->clipChanged();
    return TRUE;
}
