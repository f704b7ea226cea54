// Text and pictures in a state: as they are, embossed, dithered or in one colour.
#include "gdi/device_context.h"
#include "gdi/draw_text.h"
#include "win32/draw.h"
#include "win32/icons.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <vector>

using namespace vndk::win32;

namespace {

constexpr UINT kindBits = 0x000F;
constexpr int largestPicture = 16384; // pixels each way of what is drawn aside first

/// What is to be drawn, however it is to look.
struct Subject {
    UINT kind;
    DRAWSTATEPROC procedure;
    LPARAM data;
    WPARAM extra;
    UINT flags;
    SIZE size{};

    [[nodiscard]] bool isText() const { return kind == DST_TEXT || kind == DST_PREFIXTEXT; }
    [[nodiscard]] LPCSTR text() const { return reinterpret_cast<LPCSTR>(data); }
    [[nodiscard]] int textLength() const {
        return extra == 0 ? static_cast<int>(std::min<std::size_t>(std::strlen(text()), 1U << 27))
                          : static_cast<int>(std::min<WPARAM>(extra, 1U << 27));
    }
    [[nodiscard]] UINT textFormat() const {
        UINT format = DT_SINGLELINE | DT_NOCLIP | (kind == DST_TEXT ? DT_NOPREFIX : 0U);
        format |= (flags & DSS_HIDEPREFIX) != 0 ? DT_HIDEPREFIX : 0U;
        format |= (flags & DSS_PREFIXONLY) != 0 ? DT_PREFIXONLY : 0U;
        format |= (flags & DSS_RIGHT) != 0 ? DT_RIGHT : 0U;
        return format;
    }
};

bool measureText(HDC dc, Subject& subject) {
    RECT box{};
    DrawTextA(dc, subject.text(), subject.textLength(), &box, subject.textFormat() | DT_CALCRECT);
    subject.size = {box.right, box.bottom};
    return true;
}

bool measureIcon(Subject& subject) {
    ICONINFO info{};
    if (GetIconInfo(reinterpret_cast<HICON>(subject.data), &info) == FALSE)
        return false;
    BITMAP bitmap{};
    GetObjectA(info.hbmColor != nullptr ? info.hbmColor : info.hbmMask, sizeof bitmap, &bitmap);
    subject.size = {bitmap.bmWidth, info.hbmColor != nullptr ? bitmap.bmHeight : bitmap.bmHeight / 2};
    DeleteObject(info.hbmMask);
    if (info.hbmColor != nullptr)
        DeleteObject(info.hbmColor);
    return true;
}

bool measureBitmap(Subject& subject) {
    const auto* bitmap = requireObject<BitmapObject>(reinterpret_cast<HGDIOBJ>(subject.data));
    if (bitmap == nullptr)
        return false;
    subject.size = {bitmap->width(), bitmap->height()};
    return true;
}

/// The subject's own size; false, with the error set, when it isn't what it is said to be.
bool measure(HDC dc, Subject& subject) {
    switch (subject.kind) {
    case DST_TEXT:
    case DST_PREFIXTEXT:
        if (subject.data != 0)
            return measureText(dc, subject);
        break;
    case DST_ICON:
        return measureIcon(subject);
    case DST_BITMAP:
        return measureBitmap(subject);
    case DST_COMPLEX:
        if (subject.procedure != nullptr)
            return true;
        break;
    default:
        break;
    }
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
}

bool drawBitmap(HDC dc, const Subject& subject, POINT at) {
    HDC source = CreateCompatibleDC(nullptr);
    HGDIOBJ before = SelectObject(source, reinterpret_cast<HGDIOBJ>(subject.data));
    const bool drawn =
        before != nullptr && BitBlt(dc, at.x, at.y, subject.size.cx, subject.size.cy, source, 0, 0, SRCCOPY) != FALSE;
    if (before != nullptr)
        SelectObject(source, before);
    DeleteDC(source);
    return drawn;
}

/// As it is.
bool drawPlain(HDC dc, const Subject& subject, POINT at) {
    switch (subject.kind) {
    case DST_ICON:
        return DrawIconEx(dc, at.x, at.y, reinterpret_cast<HICON>(subject.data), subject.size.cx, subject.size.cy, 0,
                          nullptr, DI_NORMAL) != FALSE;
    case DST_BITMAP:
        return drawBitmap(dc, subject, at);
    case DST_COMPLEX: {
        POINT before{};
        OffsetViewportOrgEx(dc, at.x, at.y, &before);
        const BOOL drawn = subject.procedure(dc, subject.data, subject.extra, subject.size.cx, subject.size.cy);
        SetViewportOrgEx(dc, before.x, before.y, nullptr);
        return drawn != FALSE;
    }
    default: {
        RECT box{at.x, at.y, at.x + subject.size.cx, at.y + subject.size.cy};
        DrawTextA(dc, subject.text(), subject.textLength(), &box, subject.textFormat());
        return true;
    }
    }
}

/// Which pixels of the subject aren't white when it is drawn black on white: its shape in one bit.
class Shape {
public:
    explicit Shape(const SIZE& size)
        : width_(size.cx), height_(size.cy), stride_((width_ + 7) / 8),
          bits_(static_cast<std::size_t>(stride_) * static_cast<std::size_t>(height_)) {}

    bool draw(HDC model, const Subject& subject) {
        HDC dc = CreateCompatibleDC(nullptr);
        HBITMAP bitmap = CreateBitmap(width_, height_, 1, 1, nullptr);
        HGDIOBJ before = SelectObject(dc, bitmap);
        PatBlt(dc, 0, 0, width_, height_, WHITENESS);
        SelectObject(dc, GetCurrentObject(model, OBJ_FONT));
        SetBkMode(dc, TRANSPARENT);
        const bool drawn = drawPlain(dc, subject, {0, 0});
        if (drawn)
            readInverse(objectOf<BitmapObject>(bitmap)->surface());
        SelectObject(dc, before);
        DeleteDC(dc);
        DeleteObject(bitmap);
        return drawn;
    }

    /// Leaves every second pixel.
    void thinOut() {
        for (int y = 0; y < height_; ++y)
            for (int index = 0; index < stride_; ++index)
                bits_[static_cast<std::size_t>(y * stride_ + index)] &= y % 2 == 0 ? 0x55 : 0xAA;
    }

    [[nodiscard]] BitMask mask() const { return {bits_.data(), width_, height_, stride_}; }

    /// Calls `visit(x, y)` for each pixel of the shape.
    template <typename Visit>
    void eachPixel(Visit visit) const {
        for (int y = 0; y < height_; ++y)
            for (int x = 0; x < width_; ++x)
                if ((bits_[static_cast<std::size_t>(y * stride_ + x / 8)] & (0x80 >> (x % 8))) != 0)
                    visit(x, y);
    }

private:
    void readInverse(const Surface& surface) {
        std::vector<std::uint32_t> row(static_cast<std::size_t>(width_));
        for (int y = 0; y < height_; ++y) {
            loadPixels(surface, 0, y, width_, row.data());
            for (int x = 0; x < width_; ++x)
                if (row[static_cast<std::size_t>(x)] == 0)
                    bits_[static_cast<std::size_t>(y * stride_ + x / 8)] |= static_cast<std::uint8_t>(0x80 >> (x % 8));
        }
    }

    int width_;
    int height_;
    int stride_;
    std::vector<std::uint8_t> bits_;
};

void paintWithBrush(DeviceContext& context, const Shape& shape, POINT at, const BrushObject& brush) {
    if (brush.style == BS_SOLID) {
        paintMask(context, shape.mask(), at,
                  context.pixelOf(brush.fromContext ? context.state.brushColor : brush.color));
        return;
    }
    shape.eachPixel([&](int x, int y) { paintRect(context, {at.x + x, at.y + y, at.x + x + 1, at.y + y + 1}, brush); });
}

/// `at` is in surface points. Embossed is a shadow with its light below and to the right.
void paintShape(DeviceContext& context, Shape& shape, POINT at, HBRUSH brush, UINT flags) {
    if ((flags & DSS_UNION) != 0)
        shape.thinOut();
    if ((flags & DSS_DISABLED) != 0) {
        paintMask(context, shape.mask(), {at.x + 1, at.y + 1}, context.pixelOf(GetSysColor(COLOR_3DHILIGHT)));
        paintMask(context, shape.mask(), at, context.pixelOf(GetSysColor(COLOR_3DSHADOW)));
        return;
    }
    const BrushObject* with = (flags & DSS_MONO) != 0 && brush != nullptr ? brushOf(brush) : nullptr;
    if (with != nullptr)
        paintWithBrush(context, shape, at, *with);
    else
        paintMask(context, shape.mask(), at, context.pixelOf(context.state.textColor));
}

bool drawInState(HDC dc, HBRUSH brush, const Subject& subject, POINT at) {
    if (subject.size.cx <= 0 || subject.size.cy <= 0)
        return true;
    if (subject.size.cx > largestPicture || subject.size.cy > largestPicture) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return false;
    }
    Shape shape(subject.size);
    if (!shape.draw(dc, subject))
        return false;
    // A procedure of the program's own has run in the meantime.
    DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return false;
    paintShape(*context, shape, context->toSurface(at), brush, subject.flags);
    return true;
}

} // namespace

BOOL DrawStateA(HDC dc, HBRUSH brush, DRAWSTATEPROC procedure, LPARAM data, WPARAM wData, int x, int y, int width,
                int height, UINT flags) {
    if (requireContext(dc) == nullptr)
        return FALSE;
    Subject subject{flags & kindBits, procedure, data, wData, flags};
    if (subject.isText() && procedure != nullptr)
        subject.kind = DST_COMPLEX;
    if (!measure(dc, subject))
        return FALSE;
    if (width > 0)
        subject.size.cx = width;
    if (height > 0)
        subject.size.cy = height;
    const POINT at{limited(x), limited(y)};
    if ((flags & (DSS_UNION | DSS_DISABLED | DSS_MONO)) == 0)
        return drawPlain(dc, subject, at) ? TRUE : FALSE;
    return drawInState(dc, brush, subject, at) ? TRUE : FALSE;
}
