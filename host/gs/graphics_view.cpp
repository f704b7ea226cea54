#include "gs/graphics_view.h"

#include "db/block_table.h"
#include "db/database.h"
#include "gs/graphics_device.h"
#include "gs/graphics_model.h"
#include "gs/list_builder.h"
#include "gs/list_painter.h"

#include <algorithm>

namespace vndk::gs {

namespace {

/// A drawable's list for one view, and that view's camera.
class ViewportContext : public AcGiViewportDraw {
public:
    ViewportContext(ListBuilder& builder, const AcGeMatrix3d& viewing) : builder_(builder), viewing_(viewing) {}
    AcGiGeometry& geometry() override { return builder_.geometry(); }
    AcGiSubEntityTraits& subEntityTraits() override { return builder_.subEntityTraits(); }
    AcGeMatrix3d viewingMatrix() const override { return viewing_; }

private:
    ListBuilder& builder_;
    AcGeMatrix3d viewing_;
};

double heightOf(const AcGsDCRect& viewport) { return viewport.m_max.y - viewport.m_min.y + 1.0; }

PointMarks marksOf(const AcDbDatabase& database) { return {database.header().PDMODE, database.header().PDSIZE}; }

} // namespace

GraphicsView::~GraphicsView() {
    if (device_)
        device_->erase(this);
}

void GraphicsView::setView(const AcGePoint3d& position, const AcGePoint3d& target, const AcGeVector3d& upVector,
                           double fieldWidth, double fieldHeight, Projection /*projection*/) {
    camera_.set(position, target, upVector, fieldWidth, fieldHeight);
    invalidate();
}

AcGsDCRect GraphicsView::viewport() const {
    if (ownViewport_)
        return *ownViewport_;
    return device_ ? AcGsDCRect{{0, 0}, {device_->width() - 1, device_->height() - 1}} : AcGsDCRect{};
}

void GraphicsView::setViewport(const AcGsDCRect& rectangle) {
    constexpr int kFarthest = 1 << 14;
    AcGsDCRect rect = rectangle;
    for (int* const place : {&rect.m_min.x, &rect.m_min.y, &rect.m_max.x, &rect.m_max.y})
        *place = std::clamp(*place, -kFarthest, kFarthest);
    rect.m_max = {std::max(rect.m_min.x, rect.m_max.x), std::max(rect.m_min.y, rect.m_max.y)};
    ownViewport_ = rect;
    invalidate();
}

AcGeMatrix3d GraphicsView::worldToDeviceMatrix() const {
    return camera_.viewToDevice(viewport()) * camera_.worldToView();
}

void GraphicsView::dolly(const AcGeVector3d& vector) {
    camera_.dolly(vector);
    invalidate();
}

void GraphicsView::roll(double angle) {
    camera_.roll(angle);
    invalidate();
}

void GraphicsView::orbit(double xOrbit, double yOrbit) {
    camera_.orbit(xOrbit, yOrbit);
    invalidate();
}

void GraphicsView::zoom(double factor) {
    camera_.zoom(factor);
    invalidate();
}

void GraphicsView::setMode(RenderMode mode) {
    mode_ = mode;
    invalidate();
}

bool GraphicsView::add(AcGiDrawable* drawable, AcGsModel* model) {
    if (!drawable || !model)
        return false;
    shown_.push_back({drawable, AcDbObjectId(), static_cast<GraphicsModel*>(model)});
    invalidate();
    return true;
}

bool GraphicsView::add(const AcDbBlockTableRecord* record, AcGsModel* model) {
    if (!record || !model || record->objectId().isNull())
        return false;
    shown_.push_back({nullptr, record->objectId(), static_cast<GraphicsModel*>(model)});
    invalidate();
    return true;
}

bool GraphicsView::erase(AcGiDrawable* drawable) {
    const bool was = std::erase_if(shown_, [=](const Shown& shown) { return drawable && shown.drawable == drawable; });
    invalidate();
    return was;
}

void GraphicsView::eraseAll() {
    shown_.clear();
    invalidate();
}

void GraphicsView::setDevice(GraphicsDevice* device) {
    device_ = device;
    invalidate();
}

void GraphicsView::update() {
    if (device_)
        device_->show(*this);
}

void GraphicsView::draw(std::uint32_t* pixels, int width, int height, std::uint32_t background) {
    valid_ = true;
    const AcGsDCRect place = viewport();
    const PixelRect clip{std::max(place.m_min.x, 0), std::max(place.m_min.y, 0), std::min(place.m_max.x, width - 1),
                         std::min(place.m_max.y, height - 1)};
    if (clip.left > clip.right || clip.top > clip.bottom)
        return;
    Raster raster(pixels, width, clip);
    raster.clear(background);
    for (const Shown& shown : shown_)
        if (shown.drawable)
            drawDrawable(shown, raster, background);
        else
            drawRecord(shown, raster, background);
}

void GraphicsView::drawRecord(const Shown& shown, Raster& raster, std::uint32_t background) {
    AcDbDatabase& database = *shown.record.database();
    DisplayLists& lists = shown.model->lists();
    Styles styles(database, background);
    ListPainter painter(raster, lists, styles, marksOf(database), heightOf(viewport()));
    painter.draw(lists.of(shown.record, true), worldToDeviceMatrix());
}

/// A drawable stands in the working drawing, if there is one: colours by layer and point marks are that one's.
void GraphicsView::drawDrawable(const Shown& shown, Raster& raster, std::uint32_t background) {
    DisplayList list;
    ListBuilder builder(list);
    shown.drawable->setAttributes(&builder.drawableTraits());
    if (!shown.drawable->worldDraw(&builder)) {
        ViewportContext context(builder, viewingMatrix());
        shown.drawable->viewportDraw(&context);
    }
    AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    if (list.items.empty())
        return;
    AcDbDatabase empty(false, true);
    AcDbDatabase& place = database ? *database : empty;
    Styles styles(place, background);
    ListPainter painter(raster, shown.model->lists(), styles, marksOf(place), heightOf(viewport()));
    painter.draw(list, worldToDeviceMatrix());
}

} // namespace vndk::gs
