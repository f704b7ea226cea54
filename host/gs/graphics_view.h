// The view behind AcGsView.
#pragma once

#include "gs/camera.h"
#include "gs/list_painter.h"
#include "gs/surface.h"

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

    AcDbObjectId entityAt(const AcGsDCPoint& at, int reach) override;
    void entitiesIn(const AcGsDCRect& rectangle, bool touching, std::vector<AcDbObjectId>& found) override;
    void highlight(std::span<const AcDbObjectId> entities) override;
    void setInteractive(bool interactive) override;
    bool isInteractive() const override { return interactive_; }

    void invalidate() override { valid_ = false; }
    bool isValid() const override { return valid_; }
    void update() override;

    GraphicsDevice* device() const { return device_; }
    void setDevice(GraphicsDevice* device);
    /// Draws everything into its place in the device's picture.
    void draw(Surface& surface, std::uint32_t background);
    bool highlights() const { return !highlighted_.empty(); }
    void drawHighlighted(Surface& surface, std::uint32_t background);

private:
    /// One of the two.
    struct Shown {
        AcGiDrawable* drawable = nullptr;
        AcDbObjectId record;
        GraphicsModel* model = nullptr;
    };
    AcGsDCRect viewport() const;
    bool showsSurfaces() const { return mode_ >= kHiddenLine && mode_ < kLastRenderMode; }
    /// The part of the viewport that a surface holds; reversed where there is none.
    PixelRect clipIn(const Surface& surface) const;
    Painting paintingFor(const AcDbDatabase& database, std::uint32_t background) const;
    void drawShown(Raster& raster, std::uint32_t background);
    void drawRecord(const Shown& shown, Raster& raster, std::uint32_t background);
    void drawPaperViewports(const Shown& shown, const Raster& raster, std::uint32_t background);
    void drawDrawable(const Shown& shown, Raster& raster, std::uint32_t background);
    void adjustThinning(double milliseconds);
    template <class Use>
    void forEachRecord(Use&& use);

    Camera camera_;
    GraphicsDevice* device_ = nullptr;
    std::optional<AcGsDCRect> ownViewport_;
    std::vector<Shown> shown_;
    RenderMode mode_ = k2DOptimized;
    bool valid_ = false;
    bool interactive_ = false;
    double thinning_ = 1;       // in force while interactive
    bool thinned_ = false;      // something is left out of the picture
    std::vector<float> depths_; // beside the device's pixels, in modes that show surfaces
    std::vector<AcDbObjectId> highlighted_;
};

} // namespace vndk::gs
