// The view behind AcGsView.
#pragma once

#include "gs/camera.h"
#include "gs/raster.h"

#include <optional>
#include <vector>

namespace vndk::gs {

class GraphicsDevice;
class GraphicsModel;

class GraphicsView final : public AcGsView {
public:
    ~GraphicsView() override;

    void setView(const AcGePoint3d& position, const AcGePoint3d& target, const AcGeVector3d& upVector,
                 double fieldWidth, double fieldHeight, Projection projection) override;
    AcGePoint3d position() const override { return camera_.position(); }
    AcGePoint3d target() const override { return camera_.target(); }
    AcGeVector3d upVector() const override { return camera_.upVector(); }
    double fieldWidth() const override { return camera_.fieldWidth(); }
    double fieldHeight() const override { return camera_.fieldHeight(); }

    void getViewport(AcGsDCRect& rectangle) const override { rectangle = viewport(); }
    void setViewport(const AcGsDCRect& rectangle) override;
    AcGeMatrix3d viewingMatrix() const override { return camera_.worldToView(); }
    AcGeMatrix3d worldToDeviceMatrix() const override;

    void dolly(const AcGeVector3d& vector) override;
    void roll(double angle) override;
    void orbit(double xOrbit, double yOrbit) override;
    void zoom(double factor) override;

    void setMode(RenderMode mode) override;
    RenderMode mode() const override { return mode_; }

    bool add(AcGiDrawable* drawable, AcGsModel* model) override;
    bool add(const AcDbBlockTableRecord* record, AcGsModel* model) override;
    bool erase(AcGiDrawable* drawable) override;
    void eraseAll() override;

    void invalidate() override { valid_ = false; }
    bool isValid() const override { return valid_; }
    void update() override;

    GraphicsDevice* device() const { return device_; }
    void setDevice(GraphicsDevice* device);
    /// Draws everything into the device's pixels; the viewport lies in them at least in part.
    void draw(std::uint32_t* pixels, int width, int height, std::uint32_t background);

private:
    /// One of the two.
    struct Shown {
        AcGiDrawable* drawable = nullptr;
        AcDbObjectId record;
        GraphicsModel* model = nullptr;
    };
    AcGsDCRect viewport() const;
    void drawRecord(const Shown& shown, Raster& raster, std::uint32_t background);
    void drawDrawable(const Shown& shown, Raster& raster, std::uint32_t background);

    Camera camera_;
    GraphicsDevice* device_ = nullptr;
    std::optional<AcGsDCRect> ownViewport_;
    std::vector<Shown> shown_;
    RenderMode mode_ = k2DOptimized;
    bool valid_ = false;
};

} // namespace vndk::gs
