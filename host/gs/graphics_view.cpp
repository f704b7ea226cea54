#include "gs/graphics_view.h"

#include "db/block_table.h"
#include "db/database.h"
#include "gs/graphics_device.h"
#include "gs/graphics_model.h"
#include "gs/list_builder.h"
#include "gs/paper_viewports.h"
#include "gs/selection.h"

#include <algorithm>
#include <chrono>
#include <cmath>

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

} // namespace

GraphicsView::~GraphicsView() {
    if (device_)
        device_->erase(this);
}

void GraphicsView::setView(const AcGePoint3d& position, const AcGePoint3d& target, const AcGeVector3d& upVector,
                           double fieldWidth, double fieldHeight, Projection projection) {
    camera_.set(position, target, upVector, fieldWidth, fieldHeight, projection == kPerspective);
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

PixelRect GraphicsView::clipIn(const Surface& surface) const {
    const AcGsDCRect place = viewport();
    return {std::max(place.m_min.x, 0), std::max(place.m_min.y, 0), std::min(place.m_max.x, surface.width - 1),
            std::min(place.m_max.y, surface.height - 1)};
}

void GraphicsView::draw(Surface& surface, std::uint32_t background) {
    valid_ = true;
    const PixelRect clip = clipIn(surface);
    if (clip.left > clip.right || clip.top > clip.bottom)
        return;
    depths_.resize(showsSurfaces() ? surface.pixels.size() : 0);
    Raster raster(surface.pixels.data(), surface.stride, clip, depths_.empty() ? nullptr : depths_.data());
    raster.clear(background);
    thinned_ = interactive_ && thinning_ > 1;
    const auto start = std::chrono::steady_clock::now();
    drawShown(raster, background);
    adjustThinning(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
}

void GraphicsView::drawShown(Raster& raster, std::uint32_t background) {
    for (const Shown& shown : shown_)
        if (shown.drawable)
            drawDrawable(shown, raster, background);
        else
            drawRecord(shown, raster, background);
}

/// As much as fits into a frame: from what the last picture took, how much the next one may hold. It gets more in
/// small steps, for time doesn't follow the number of parts exactly, and stays as it is when little would change.
void GraphicsView::adjustThinning(double milliseconds) {
    constexpr double kFrame = 12; // milliseconds; smooth on slower machines, too, and some are left for the window
    constexpr double kMost = 1000, kSmallestStep = 0.7, kSteady = 0.85;
    const double held = interactive_ ? thinning_ : 1, wanted = held * milliseconds / kFrame;
    const bool isSteady = interactive_ && wanted <= held && wanted >= held * kSteady;
    if (!isSteady)
        thinning_ = std::clamp(interactive_ ? std::max(wanted, held * kSmallestStep) : wanted, 1.0, kMost);
}

void GraphicsView::setInteractive(bool interactive) {
    if (!interactive && thinned_)
        invalidate();
    interactive_ = interactive;
}

Painting GraphicsView::paintingFor(const AcDbDatabase& database, std::uint32_t background) const {
    Painting painting;
    painting.marks = {database.header().PDMODE, database.header().PDSIZE};
    painting.viewportHeight = heightOf(viewport());
    painting.background = background;
    painting.fills = database.header().FILLMODE;
    painting.hurried = interactive_;
    painting.thinning = interactive_ ? thinning_ : 1;
    painting.lens = camera_.lens(viewport());
    if (mode_ == kHiddenLine)
        painting.surfaces = Painting::kHiding;
    else if (mode_ == kFlatShaded || mode_ == kFlatShadedWithWireframe)
        painting.surfaces = Painting::kFlat;
    else if (showsSurfaces())
        painting.surfaces = Painting::kSmooth;
    painting.edges = mode_ != kFlatShaded && mode_ != kGouraudShaded;
    return painting;
}

void GraphicsView::drawRecord(const Shown& shown, Raster& raster, std::uint32_t background) {
    const AcDbDatabase& database = *shown.record.database();
    drawPaperViewports(shown, raster, background);
    Styles styles(*shown.record.database(), background);
    ListPainter painter(raster, shown.model->lists(), styles, paintingFor(database, background));
    painter.draw(shown.record, worldToDeviceMatrix());
}

/// What they show of the model lies below what is drawn on the sheet.
void GraphicsView::drawPaperViewports(const Shown& shown, const Raster& raster, std::uint32_t background) {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(shown.record);
    AcDbDatabase& database = *shown.record.database();
    const AcGeMatrix3d toDevice = worldToDeviceMatrix();
    for (const PaperViewport& viewport : record ? viewportsOn(*record) : std::vector<PaperViewport>()) {
        const PixelRect& clip = raster.clip();
        const PictureBox frame =
            BoxProjector(toDevice)(viewport.frame)
                .common({double(clip.left), double(clip.top), clip.right + 1.0, clip.bottom + 1.0});
        const PixelRect part{static_cast<int>(std::floor(frame.left)), static_cast<int>(std::floor(frame.top)),
                             static_cast<int>(std::ceil(frame.right)) - 1,
                             static_cast<int>(std::ceil(frame.bottom)) - 1};
        if (!(frame.left < frame.right && frame.top < frame.bottom))
            continue;
        Raster inside = raster.within(part);
        Styles styles(database, background);
        styles.freeze(viewport.frozenLayers);
        // Dashes come out as long in all viewports as on the sheet.
        if (database.header().PSLTSCALE)
            styles.scaleLinetypes(1 / viewport.scale);
        Painting painting = paintingFor(database, background);
        painting.viewportHeight = part.bottom - part.top + 1.0;
        painting.lens = viewport.lens(toDevice);
        ListPainter(inside, shown.model->lists(), styles, painting)
            .draw(database.modelSpaceId(), toDevice * viewport.toSheet);
    }
}

/// A drawable stands in the working drawing, if there is one: colours by layer and point marks are that one's.
void GraphicsView::drawDrawable(const Shown& shown, Raster& raster, std::uint32_t background) {
    DisplayList list;
    ListBuilder builder(list);
    builder.begin(0);
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
    ListPainter painter(raster, shown.model->lists(), styles, paintingFor(place, background));
    painter.draw(list, worldToDeviceMatrix());
}

template <class Use>
void GraphicsView::forEachRecord(Use&& use) {
    for (const Shown& shown : shown_)
        if (AcDbDatabase* const database = shown.record.database())
            use(shown, *database);
}

AcDbObjectId GraphicsView::entityAt(const AcGsDCPoint& at, int reach) {
    const int side = std::max(reach, 0);
    AcDbObjectId top;
    forEachRecord([&](const Shown& shown, AcDbDatabase& database) {
        Styles styles(database, 0);
        Selection selection(shown.model->lists(), styles, paintingFor(database, 0), shown.record,
                            worldToDeviceMatrix());
        const AcDbObjectId found = selection.topAt({at.x - side, at.y - side, at.x + side, at.y + side});
        top = found.isNull() ? top : found;
    });
    return top;
}

void GraphicsView::entitiesIn(const AcGsDCRect& rectangle, bool touching, std::vector<AcDbObjectId>& found) {
    const PixelRect place{rectangle.m_min.x, rectangle.m_min.y, rectangle.m_max.x, rectangle.m_max.y};
    forEachRecord([&](const Shown& shown, AcDbDatabase& database) {
        Styles styles(database, 0);
        Selection selection(shown.model->lists(), styles, paintingFor(database, 0), shown.record,
                            worldToDeviceMatrix());
        selection.find(place, touching, found);
    });
}

void GraphicsView::highlight(std::span<const AcDbObjectId> entities) {
    highlighted_.assign(entities.begin(), entities.end());
}

/// What was there is wiped out first, so that gaps are seen.
void GraphicsView::drawHighlighted(Surface& surface, std::uint32_t background) {
    const PixelRect clip = clipIn(surface);
    if (clip.left > clip.right || clip.top > clip.bottom)
        return;
    Raster raster(surface.pixels.data(), surface.stride, clip);
    forEachRecord([&](const Shown& shown, AcDbDatabase& database) {
        DisplayLists& lists = shown.model->lists();
        Styles styles(database, background);
        Painting painting = paintingFor(database, background);
        painting.surfaces = Painting::kEdgesOnly;
        for (const Painting::Strokes strokes : {Painting::kErased, Painting::kDashed}) {
            painting.strokes = strokes;
            ListPainter painter(raster, lists, styles, painting);
            const ListPainter::Level level = painter.level(lists.of(shown.record, true), worldToDeviceMatrix());
            for (const AcDbObjectId entity : highlighted_)
                if (const uint32_t part = lists.partOf(shown.record, true, entity); part != BlockList::kNone)
                    painter.drawPart(level, part);
        }
    });
}

} // namespace vndk::gs
