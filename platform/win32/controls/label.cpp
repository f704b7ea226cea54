#include "controls/label.h"

#include "win32/draw.h"
#include "win32/icons.h"

namespace vndk::win32 {
namespace {

SIZE bitmapSize(HANDLE bitmap) {
    BITMAP facts{};
    if (GetObjectA(bitmap, sizeof facts, &facts) == 0)
        return {0, 0};
    return {facts.bmWidth, facts.bmHeight};
}

SIZE iconSize(HICON icon) {
    ICONINFO info{};
    if (GetIconInfo(icon, &info) == FALSE)
        return {0, 0};
    SIZE size = bitmapSize(info.hbmColor != nullptr ? info.hbmColor : info.hbmMask);
    // Without colours the mask holds two pictures, one above the other.
    if (info.hbmColor == nullptr)
        size.cy /= 2;
    DeleteObject(info.hbmMask);
    if (info.hbmColor != nullptr)
        DeleteObject(info.hbmColor);
    return size;
}

void draw(HDC dc, const std::string& text, RECT rect, UINT format) {
    DrawTextA(dc, text.c_str(), static_cast<int>(text.size()), &rect, format);
}

} // namespace

void paintLabel(HDC dc, const std::string& text, RECT rect, UINT format, bool enabled) {
    if (enabled) {
        draw(dc, text, rect, format);
        return;
    }
    const COLORREF formerColor = SetTextColor(dc, GetSysColor(COLOR_BTNHIGHLIGHT));
    const int formerMode = SetBkMode(dc, TRANSPARENT);
    RECT light = rect;
    OffsetRect(&light, 1, 1);
    draw(dc, text, light, format);
    SetTextColor(dc, GetSysColor(COLOR_BTNSHADOW));
    draw(dc, text, rect, format);
    SetBkMode(dc, formerMode);
    SetTextColor(dc, formerColor);
}

SIZE measureLabel(HDC dc, const std::string& text, int width, UINT format) {
    if (text.empty())
        return {0, 0};
    RECT rect{0, 0, width, 0};
    DrawTextA(dc, text.c_str(), static_cast<int>(text.size()), &rect, format | DT_CALCRECT);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

SIZE imageSize(const ControlImage& image) {
    if (image.handle == nullptr)
        return {0, 0};
    return image.kind == IMAGE_BITMAP ? bitmapSize(image.handle) : iconSize(static_cast<HICON>(image.handle));
}

void paintImage(HDC dc, const ControlImage& image, POINT at, bool enabled) {
    if (image.handle == nullptr)
        return;
    const UINT type = image.kind == IMAGE_BITMAP ? DST_BITMAP : DST_ICON;
    DrawStateA(dc, nullptr, nullptr, reinterpret_cast<LPARAM>(image.handle), 0, at.x, at.y, 0, 0,
               type | (enabled ? DSS_NORMAL : DSS_DISABLED));
}

} // namespace vndk::win32
