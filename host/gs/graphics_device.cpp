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
    surface_ = Surface(std::clamp(width, 1, kLargest), std::clamp(height, 1, kLargest), 0xFF000000);
    highlighted_ = {};
    picture_ = {};
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

void GraphicsDevice::draw(GraphicsView& view) {
    picture_ = {};
    view.draw(surface_, pixelOf(background_));
}

const win32::Picture& GraphicsDevice::picture() const {
    if (picture_.pixels.empty())
        picture_ = shown().picture();
    return picture_;
}

/// Over a copy: the picture itself stays for the next highlighting.
void GraphicsDevice::highlight() {
    picture_ = {};
    if (std::none_of(views_.begin(), views_.end(), [](GraphicsView* view) { return view->highlights(); })) {
        highlighted_ = {};
        return;
    }
    highlighted_ = surface_;
    for (GraphicsView* const view : views_)
        view->drawHighlighted(highlighted_, pixelOf(background_));
}

void GraphicsDevice::present() {
    const HDC dc = window_ ? ::GetDC(window_) : nullptr;
    if (!dc)
        return;
    paint(dc, {0, 0, width(), height()});
    ::ReleaseDC(window_, dc);
}

void GraphicsDevice::paint(HDC dc, const RECT& part) const {
    const Surface& surface = shown();
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = surface.stride;
    info.bmiHeader.biHeight = -surface.height; // top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    ::SetDIBitsToDevice(dc, part.left, part.top, static_cast<DWORD>(part.right - part.left),
                        static_cast<DWORD>(part.bottom - part.top), part.left, part.top, 0,
                        static_cast<UINT>(surface.height), surface.pixels.data(), &info, DIB_RGB_COLORS);
}

} // namespace vndk::gs
