#include "gdi/image_source.h"

#include "gdi/objects.h"
#include "gdi/packed_dib.h"
#include "win32/draw.h"
#include "win32/drive_map.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

namespace vndk::win32 {

namespace {

constexpr std::size_t largestFile = std::size_t{1} << 28;

std::nullopt_t damaged() {
    SetLastError(ERROR_INVALID_DATA);
    return std::nullopt;
}

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

std::optional<PackedDib> readBitmapFile(std::span<const std::uint8_t> file) {
    BITMAPFILEHEADER header;
    if (file.size() < sizeof header)
        return damaged();
    std::memcpy(&header, file.data(), sizeof header);
    constexpr WORD mark = 'B' | ('M' << 8);
    if (header.bfType != mark || header.bfOffBits < sizeof header)
        return damaged();
    return readPackedDib(file.subspan(sizeof header), header.bfOffBits - sizeof header);
}

// ---- Colours that loading replaces ---------------------------------------------------------------------------------

std::uint32_t systemArgb(int color) { return argbFromColor(GetSysColor(color)); }

/// The three grays that button pictures are drawn with.
void map3dColors(ColorTable& colors) {
    for (std::uint32_t& color : colors) {
        if (color == 0x808080)
            color = systemArgb(COLOR_3DSHADOW);
        else if (color == 0xC0C0C0)
            color = systemArgb(COLOR_3DFACE);
        else if (color == 0xDFDFDF)
            color = systemArgb(COLOR_3DLIGHT);
    }
}

void replaceColors(PackedPicture& picture, UINT flags) {
    ColorTable& colors = picture.dib().colors;
    if (colors.empty())
        return;
    if ((flags & LR_LOADTRANSPARENT) != 0) {
        std::uint32_t first = 0;
        loadPixels(picture.surface(), 0, 0, 1, &first);
        const bool onFace = (flags & LR_LOADMAP3DCOLORS) != 0;
        colors[first] = systemArgb(onFace ? COLOR_3DFACE : COLOR_WINDOW);
    } else if ((flags & LR_LOADMAP3DCOLORS) != 0) {
        map3dColors(colors);
    }
}

// ---- Bitmaps -------------------------------------------------------------------------------------------------------

/// Each pixel from the nearest one.
void copyStretched(const Surface& from, const Surface& to) {
    std::vector<std::uint32_t> source(static_cast<std::size_t>(from.width));
    std::vector<std::uint32_t> target(static_cast<std::size_t>(to.width));
    int loaded = -1;
    for (int y = 0; y < to.height; ++y) {
        const int fromY = static_cast<int>(std::int64_t{y} * from.height / to.height);
        if (fromY != loaded) {
            loadArgb(from, 0, fromY, from.width, source.data());
            for (int x = 0; x < to.width; ++x)
                target[static_cast<std::size_t>(x)] =
                    source[static_cast<std::size_t>(std::int64_t{x} * from.width / to.width)];
            loaded = fromY;
        }
        storeArgb(to, 0, y, to.width, target.data());
    }
}

std::unique_ptr<BitmapObject> emptyBitmap(Dib& dib, int width, int height, UINT flags) {
    if ((flags & LR_CREATEDIBSECTION) != 0) {
        BITMAPINFOHEADER header = dib.header;
        header.biWidth = width;
        header.biHeight = dib.bottomUp ? height : -height;
        header.biSizeImage = 0;
        return BitmapObject::createSection(header, dib.format, dib.colors);
    }
    const bool blackAndWhite = dib.colors == ColorTable{0x000000, 0xFFFFFF};
    return BitmapObject::createDevice(width, height, blackAndWhite || (flags & LR_MONOCHROME) != 0);
}

HBITMAP makeBitmap(PackedPicture& picture, int width, int height, UINT flags) {
    replaceColors(picture, flags);
    Dib& dib = picture.dib();
    const int newWidth = width > 0 ? width : dib.width;
    const int newHeight = height > 0 ? height : dib.height;
    const auto stride = dibStride(newWidth, 32);
    if (!stride || *stride > static_cast<std::size_t>(maxBitmapBytes / newHeight)) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    auto bitmap = emptyBitmap(dib, newWidth, newHeight, flags);
    if (bitmap != nullptr)
        copyStretched(picture.surface(), bitmap->surface());
    return newBitmap(std::move(bitmap));
}

} // namespace

std::optional<std::span<const std::uint8_t>> resourceBytes(HINSTANCE instance, LPCSTR name, LPCSTR type) {
    HRSRC resource = FindResourceA(instance, name, type);
    if (resource == nullptr)
        return {};
    const auto* bytes = static_cast<const std::uint8_t*>(LockResource(LoadResource(instance, resource)));
    return std::span<const std::uint8_t>(bytes, SizeofResource(instance, resource));
}

std::optional<std::vector<std::uint8_t>> fileBytes(LPCSTR path) {
    const auto hostPath = DriveMap::current().toHost(path);
    if (!hostPath)
        return {};
    const std::unique_ptr<std::FILE, CloseFile> file(std::fopen(hostPath->c_str(), "rb"));
    if (file == nullptr) {
        SetLastError(errorFromErrno(errno));
        return {};
    }
    std::vector<std::uint8_t> bytes;
    std::uint8_t block[65536];
    while (const std::size_t count = std::fread(block, 1, sizeof block, file.get())) {
        if (bytes.size() + count > largestFile) {
            SetLastError(ERROR_FILE_TOO_LARGE);
            return {};
        }
        bytes.insert(bytes.end(), block, block + count);
    }
    if (std::ferror(file.get()) != 0) {
        SetLastError(ERROR_READ_FAULT);
        return {};
    }
    return bytes;
}

HBITMAP loadBitmap(HINSTANCE instance, LPCSTR name, int width, int height, UINT flags) {
    if (width < 0 || height < 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    std::vector<std::uint8_t> file;
    std::optional<PackedDib> packed;
    if ((flags & LR_LOADFROMFILE) != 0) {
        auto bytes = fileBytes(name);
        if (!bytes)
            return nullptr;
        file = std::move(*bytes);
        packed = readBitmapFile(file);
    } else if (const auto bytes = resourceBytes(instance, name, RT_BITMAP)) {
        packed = readPackedDib(*bytes);
    }
    if (!packed)
        return nullptr;
    auto picture = PackedPicture::read(std::move(*packed));
    return picture ? makeBitmap(*picture, width, height, flags) : nullptr;
}

} // namespace vndk::win32
