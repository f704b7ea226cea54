// The device behind AcGsDevice.
#pragma once

#include "gs/device.h"
#include "gs/surface.h"
#include "win32/window.h"

#include <vector>

namespace vndk::gs {

class GraphicsView;

class GraphicsDevice final : public AcGsDevice {
public:
    /// Null: in memory alone.
    explicit GraphicsDevice(HWND window) : window_(window) { onSize(1, 1); }
    ~GraphicsDevice() override { eraseAll(); }
    GraphicsDevice(const GraphicsDevice&) = delete;
    GraphicsDevice& operator=(const GraphicsDevice&) = delete;

    void onSize(int width, int height) override;
    int width() const override { return surface_.width; }
    int height() const override { return surface_.height; }

    bool add(AcGsView* view) override;
    bool erase(AcGsView* view) override;
    void eraseAll() override;

    void setBackgroundColor(COLORREF color) override;
    COLORREF backgroundColor() const override { return background_; }

    void invalidate() override;
    void update() override;
    void present() override;
    void paint(HDC dc, const RECT& part) const override;
    const win32::Picture& picture() const override;

    /// Draws one view and shows the picture.
    void show(GraphicsView& view);

private:
    void draw(GraphicsView& view);
    void highlight();
    const Surface& shown() const { return highlighted_.pixels.empty() ? surface_ : highlighted_; }

    HWND window_;
    Surface surface_;
    Surface highlighted_;            // the same with what is highlighted; empty when nothing is
    mutable win32::Picture picture_; // for who asks; empty until somebody does
    std::vector<GraphicsView*> views_;
    COLORREF background_ = 0;
};

} // namespace vndk::gs
