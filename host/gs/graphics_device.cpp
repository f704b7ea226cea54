#include "gs/graphics_device.h"

#include "gs/graphics_view.h"
#include "win32/gdi.h"
#include "win32/paint.h"

#include <algorithm>

namespace vndk::gs {

void GraphicsDevice::onSize(int width, int height) {
    constexpr int kLargest = 1 << 14;
    picture_.width = std::clamp(width, 1, kLargest);
    picture_.height = std::clamp(height, 1, kLargest);
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
    present();
}

void GraphicsDevice::show(GraphicsView& view) {
    draw(view);
    present();
}

void GraphicsDevice::draw(GraphicsView& view) {
    const std::uint32_t background = 0xFF000000U | std::uint32_t{GetRValue(background_)} << 16 |
                                     std::uint32_t{GetGValue(background_)} << 8 | GetBValue(background_);
    view.draw(picture_.pixels.data(), picture_.width, picture_.height, background);
}

void GraphicsDevice::present() {
    const HDC dc = window_ ? ::GetDC(window_) : nullptr;
    if (!dc)
        return;
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = picture_.width;
    info.bmiHeader.biHeight = -picture_.height; // top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    ::SetDIBitsToDevice(dc, 0, 0, static_cast<DWORD>(picture_.width), static_cast<DWORD>(picture_.height), 0, 0, 0,
                        static_cast<UINT>(picture_.height), picture_.pixels.data(), &info, DIB_RGB_COLORS);
    ::ReleaseDC(window_, dc);
}

} // namespace vndk::gs
