// Loading of icons and cursors from resources, files and the system's own stock.
#include "gdi/icon_group.h"
#include "gdi/image_source.h"
#include "win32/codepage.h"
#include "win32/metrics.h"

#include <map>
#include <tuple>

namespace vndk::win32 {

namespace {

struct Request {
    HINSTANCE instance;
    LPCSTR name;
    bool cursor;
    int width;
    int height;
    UINT flags;

    [[nodiscard]] bool has(UINT flag) const { return (flags & flag) != 0; }
};

/// Sizes of 0 become the system's if that is asked for.
Request withDefaultSize(Request request) {
    if (!request.has(LR_DEFAULTSIZE))
        return request;
    if (request.width == 0)
        request.width = GetSystemMetrics(request.cursor ? SM_CXCURSOR : SM_CXICON);
    if (request.height == 0)
        request.height = GetSystemMetrics(request.cursor ? SM_CYCURSOR : SM_CYICON);
    return request;
}

IconImage fitted(const IconImage& image, const Request& request) {
    return image.stretched(request.width > 0 ? request.width : image.width,
                           request.height > 0 ? request.height : image.height);
}

std::optional<IconImage> fromStock(const Request& request) {
    auto image = IS_INTRESOURCE(request.name)
                     ? stockPicture(static_cast<int>(reinterpret_cast<ULONG_PTR>(request.name)), request.cursor)
                     : std::nullopt;
    if (!image)
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
    return image;
}

std::optional<IconImage> fromResources(const Request& request) {
    const auto group = resourceBytes(request.instance, request.name, request.cursor ? RT_GROUP_CURSOR : RT_GROUP_ICON);
    if (!group)
        return {};
    const auto entries = readIconGroup(*group, request.cursor);
    if (entries.empty())
        return {};
    const GroupEntry& entry = chooseEntry(entries, request.width, request.height, request.has(LR_MONOCHROME));
    const auto picture =
        resourceBytes(request.instance, MAKEINTRESOURCE(entry.id), request.cursor ? RT_CURSOR : RT_ICON);
    return picture ? decodeIcon(*picture, request.cursor) : std::nullopt;
}

std::optional<IconImage> fromFile(const Request& request) {
    const auto bytes = fileBytes(request.name);
    if (!bytes)
        return {};
    const std::span<const std::uint8_t> file(*bytes);
    const auto entries = readIconFileEntries(file, request.cursor);
    if (entries.empty())
        return {};
    const GroupEntry& entry = chooseEntry(entries, request.width, request.height, request.has(LR_MONOCHROME));
    if (entry.id > file.size() || entry.size > file.size() - entry.id) {
        SetLastError(ERROR_INVALID_DATA);
        return {};
    }
    auto image = decodeIcon(file.subspan(entry.id, entry.size), false);
    if (image && request.cursor) {
        image->cursor = true;
        image->hot = {std::min<LONG>(entry.hot.x, image->width - 1), std::min<LONG>(entry.hot.y, image->height - 1)};
    }
    return image;
}

std::optional<IconImage> find(const Request& request) {
    if (request.has(LR_LOADFROMFILE))
        return fromFile(request);
    return request.instance == nullptr ? fromStock(request) : fromResources(request);
}

// ---- Shared icons: one handle for each picture and size, for good. -------------------------------------------------

using SharedKey = std::tuple<HINSTANCE, std::string, bool, int, int>;

std::map<SharedKey, HICON>& sharedIcons() {
    static auto& icons = *new std::map<SharedKey, HICON>;
    return icons;
}

std::string nameKey(LPCSTR name) {
    if (IS_INTRESOURCE(name))
        return "#" + std::to_string(reinterpret_cast<ULONG_PTR>(name));
    std::string key(name);
    for (char& character : key)
        character = upper1252(character);
    return key;
}

HICON loadShared(const Request& request) {
    const SharedKey key(request.instance, nameKey(request.name), request.cursor, request.width, request.height);
    if (const auto known = sharedIcons().find(key); known != sharedIcons().end())
        return known->second;
    const auto image = find(request);
    if (!image)
        return nullptr;
    IconImage shared = fitted(*image, request);
    shared.shared = true;
    HICON icon = newIcon(std::move(shared));
    if (icon != nullptr)
        sharedIcons().emplace(key, icon);
    return icon;
}

HICON load(const Request& asked) {
    const Request request = withDefaultSize(asked);
    // The system's own pictures are always shared. Files are not: they may change.
    const bool ofSystem = request.instance == nullptr && !request.has(LR_LOADFROMFILE);
    if (ofSystem || (request.has(LR_SHARED) && !request.has(LR_LOADFROMFILE)))
        return loadShared(request);
    const auto image = find(request);
    return image ? newIcon(fitted(*image, request)) : nullptr;
}

bool refused() {
    SetLastError(ERROR_INVALID_PARAMETER);
    return true;
}

bool badSize(int width, int height) {
    return (width < 0 || height < 0 || width > largestIcon || height > largestIcon) && refused();
}

} // namespace

void forgetSharedIcons(HINSTANCE instance) {
    auto& icons = sharedIcons();
    for (auto at = icons.begin(); at != icons.end();) {
        if (std::get<HINSTANCE>(at->first) != instance) {
            ++at;
            continue;
        }
        if (IconImage* image = requireIcon(at->second); image != nullptr)
            image->shared = false;
        DestroyIcon(at->second);
        at = icons.erase(at);
    }
}

} // namespace vndk::win32

using namespace vndk::win32;

HICON CreateIconFromResourceEx(const BYTE* bits, DWORD size, BOOL icon, DWORD version, int width, int height,
                               UINT flags) {
    constexpr DWORD knownVersion = 0x00030000;
    if (bits == nullptr || version != knownVersion) {
        refused();
        return nullptr;
    }
    if (badSize(width, height))
        return nullptr;
    const Request request = withDefaultSize({nullptr, nullptr, icon == FALSE, width, height, flags});
    const auto image = decodeIcon({bits, size}, request.cursor);
    return image ? newIcon(fitted(*image, request)) : nullptr;
}

HANDLE LoadImageA(HINSTANCE instance, LPCSTR name, UINT kind, int width, int height, UINT flags) {
    const bool fromFile = (flags & LR_LOADFROMFILE) != 0;
    if (kind > IMAGE_CURSOR || (fromFile && IS_INTRESOURCE(name))) {
        refused();
        return nullptr;
    }
    if (kind == IMAGE_BITMAP)
        return loadBitmap(instance, name, width, height, flags);
    if (badSize(width, height))
        return nullptr;
    return load({instance, name, kind == IMAGE_CURSOR, width, height, flags});
}

HICON LoadIconA(HINSTANCE instance, LPCSTR name) {
    return load({instance, name, false, 0, 0, LR_DEFAULTSIZE | LR_SHARED});
}

HCURSOR LoadCursorA(HINSTANCE instance, LPCSTR name) {
    return load({instance, name, true, 0, 0, LR_DEFAULTSIZE | LR_SHARED});
}

HBITMAP LoadBitmapA(HINSTANCE instance, LPCSTR name) { return loadBitmap(instance, name, 0, 0, LR_DEFAULTCOLOR); }
