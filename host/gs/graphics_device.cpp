#include "gs/graphics_device.h"

#include "gs/graphics_view.h"
#include "win32/gdi.h"
#include "win32/paint.h"

#include <algorithm>

namespace vndk::gs {

namespace {

std::uint32_t pixelOf(COLORREF color) {
    return 0xFF000000U | std::uint32_t{GetRValue(color)} << 16 | std::uint32_t{GetGValue(color)} << 8 |
           GetBValue(color);
}

} // namespace

void GraphicsDevice::onSize(int width, int height) {
    constexpr int kLargest = 1 << 14;
    picture_.width = std::clamp(width, 1, kLargest);
    picture_.height = std::clamp(height, 1, kLargest);
    highlighted_ = {};
    picture_.pixels.assign(static_cast<size_t>(picture_.width) * static_cast<size_t>(picture_.height), 0xFF000000);
    invalidate();
}

bool GraphicsDevice::add(AcGsView* view) {
    auto* const added = static_cast<GraphicsView*>(view);
    if (!added || added->device())
        return false;
    views_.push_back(added);
    added->setDevice(this);
    return true;
}

bool GraphicsDevice::erase(AcGsView* view) {
    const auto found = std::find(views_.begin(), views_.end(), view);
    if (found == views_.end())
        return false;
    (*found)->setDevice(nullptr);
    views_.erase(found);
    return true;
}

void GraphicsDevice::eraseAll() {
    for (GraphicsView* const view : views_)
        view->setDevice(nullptr);
    views_.clear();
}

void GraphicsDevice::setBackgroundColor(COLORREF color) {
    background_ = color;
    invalidate();
}

void GraphicsDevice::invalidate() {
    for (GraphicsView* const view : views_)
        view->invalidate();
}

void GraphicsDevice::update() {
    for (GraphicsView* const view : views_)
        if (!view->isValid())
            draw(*view);
    highlight();
    present();
}

void GraphicsDevice::show(GraphicsView& view) {
    draw(view);
    highlight();
    present();
}

void GraphicsDevice::draw(GraphicsView& view) { view.draw(picture_, pixelOf(background_)); }

/// Over a copy: the picture itself stays for the next highlighting.
void GraphicsDevice::highlight() {
    if (std::none_of(views_.begin(), views_.end(), [](GraphicsView* view) { return view->highlights(); })) {
        highlighted_ = {};
        return;
    }
    highlighted_ = picture_;
    for (GraphicsView* const view : views_)
        view->drawHighlighted(highlighted_, pixelOf(background_));
}

void GraphicsDevice::present() {
    const win32::Picture& shown = picture();
    const HDC dc = window_ ? ::GetDC(window_) : nullptr;
    if (!dc)
        return;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = shown.width;
    info.bmiHeader.biHeight = -shown.height; // top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    ::SetDIBitsToDevice(dc, 0, 0, static_cast<DWORD>(shown.width), static_cast<DWORD>(shown.height), 0, 0, 0,
                        static_cast<UINT>(shown.height), shown.pixels.data(), &info, DIB_RGB_COLORS);
    ::ReleaseDC(window_, dc);
}

} // namespace vndk::gs
