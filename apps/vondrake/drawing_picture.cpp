#include "drawing_picture.h"

#include "ap/drawing_views.h"
#include "db/database.h"
#include "db/open.h"
#include "gs/manager.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace vndk::app {

namespace {

constexpr double kMargin = 1.04; // the field is that much larger than what is seen

struct Release {
    void operator()(AcGsDevice* device) const { acgsGetGsManager()->destroyAutoCADDevice(device); }
    void operator()(AcGsModel* model) const { acgsGetGsManager()->destroyAutoCADModel(model); }
    void operator()(AcGsView* view) const { acgsGetGsManager()->getGSClassFactory()->deleteView(view); }
};

struct NamedView {
    const char* name;
    AcGeVector3d towardsViewer, up;
};

const NamedView& viewOf(const std::string& name) {
    static const NamedView kViews[] = {
        {"top", {0, 0, 1}, {0, 1, 0}},   {"bottom", {0, 0, -1}, {0, 1, 0}}, {"front", {0, -1, 0}, {0, 0, 1}},
        {"back", {0, 1, 0}, {0, 0, 1}},  {"left", {-1, 0, 0}, {0, 0, 1}},   {"right", {1, 0, 0}, {0, 0, 1}},
        {"iso", {-1, -1, 1}, {0, 0, 1}},
    };
    const auto* const found =
        std::find_if(std::begin(kViews), std::end(kViews), [&](const NamedView& view) { return name == view.name; });
    return found == std::end(kViews) ? kViews[0] : *found;
}

void lookAt(AcGsView& view, const AcDbExtents& extents, const NamedView& from) {
    const AcGePoint3d &low = extents.minPoint(), &high = extents.maxPoint();
    const AcGePoint3d middle = low + (high - low) * 0.5;
    view.setView(middle + from.towardsViewer, middle, from.up, 1, 1);
    AcDbExtents seen = extents;
    seen.transformBy(view.viewingMatrix());
    const double width = seen.maxPoint().x - seen.minPoint().x, height = seen.maxPoint().y - seen.minPoint().y;
    // A line along an axis fills the picture by its length; a single point is seen from one unit.
    const double least = std::max(width, height) > 0 ? std::max(width, height) * 1e-6 : 1;
    view.setView(middle + from.towardsViewer, middle, from.up, std::max(width, least) * kMargin,
                 std::max(height, least) * kMargin);
}

/// False: the current space has no view.
bool lookAsSaved(AcGsView& view, const AcDbDatabase& database) {
    const std::optional<dwg::ActiveView> saved = dwg::activeView(database);
    if (!saved)
        return false;
    // The field's width never counts beside its height where the screen isn't known.
    const double aspect = std::max(dwg::activeViewAspect(database, database.tilemode()), 1e-9);
    view.setView(host::eyeOf(*saved), saved->center, saved->up, saved->height * aspect, saved->height,
                 saved->eye > 0 ? AcGsView::kPerspective : AcGsView::kParallel);
    return true;
}

bool isBlank(const win32::Picture& picture) {
    return std::all_of(picture.pixels.begin(), picture.pixels.end(), [](std::uint32_t p) { return p == 0xFFFFFFFF; });
}

} // namespace

win32::Picture drawPicture(AcDbDatabase& database, const PictureWish& wish) {
    AcGsManager& manager = *acgsGetGsManager();
    const std::unique_ptr<AcGsDevice, Release> device(manager.createAutoCADOffScreenDevice());
    const std::unique_ptr<AcGsModel, Release> model(manager.createAutoCADModel());
    const std::unique_ptr<AcGsView, Release> view(manager.getGSClassFactory()->createView());
    device->onSize(wish.width, wish.height);
    device->setBackgroundColor(RGB(255, 255, 255));
    device->add(view.get());
    const bool own = wish.view == "own";
    const AcDbObjectId shown = own && !database.tilemode() ? database.paperSpaceId() : database.modelSpaceId();
    if (const AcDbObjectPointer<AcDbBlockTableRecord> space(shown); space)
        view->add(space.object(), model.get());
    if (wish.shaded)
        view->setMode(AcGsView::kGouraudShadedWithWireframe);
    if (own && lookAsSaved(*view, database)) {
        view->update();
        if (!isBlank(device->picture()))
            return device->picture();
    }
    AcDbExtents extents;
    if (model->visibleExtents(shown, extents))
        lookAt(*view, extents, viewOf(wish.view));
    view->update();
    return device->picture();
}

} // namespace vndk::app
