#include "drawing_picture.h"

#include "db/database.h"
#include "db/open.h"
#include "gs/manager.h"

#include <algorithm>
#include <memory>

namespace vndk::app {

namespace {

constexpr double kMargin = 1.04; // the field is that much larger than what is seen

struct Release {
    void operator()(AcGsDevice* device) const { acgsGetGsManager()->destroyAutoCADDevice(device); }
    void operator()(AcGsModel* model) const { acgsGetGsManager()->destroyAutoCADModel(model); }
    void operator()(AcGsView* view) const { acgsGetGsManager()->getGSClassFactory()->deleteView(view); }
};

void lookAt(AcGsView& view, const AcDbExtents& extents) {
    const AcGePoint3d &low = extents.minPoint(), &high = extents.maxPoint();
    const AcGePoint3d middle = low + (high - low) * 0.5;
    const double width = high.x - low.x, height = high.y - low.y;
    // A line along an axis fills the picture by its length; a single point is seen from one unit.
    const double least = std::max(width, height) > 0 ? std::max(width, height) * 1e-6 : 1;
    view.setView(middle + AcGeVector3d::kZAxis, middle, AcGeVector3d::kYAxis, std::max(width, least) * kMargin,
                 std::max(height, least) * kMargin);
}

} // namespace

win32::Picture drawPicture(AcDbDatabase& database, int width, int height) {
    AcGsManager& manager = *acgsGetGsManager();
    const std::unique_ptr<AcGsDevice, Release> device(manager.createAutoCADOffScreenDevice());
    const std::unique_ptr<AcGsModel, Release> model(manager.createAutoCADModel());
    const std::unique_ptr<AcGsView, Release> view(manager.getGSClassFactory()->createView());
    device->onSize(width, height);
    device->setBackgroundColor(RGB(255, 255, 255));
    device->add(view.get());
    AcDbExtents extents;
    if (model->visibleExtents(database.modelSpaceId(), extents))
        lookAt(*view, extents);
    if (const AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId()); space)
        view->add(space.object(), model.get());
    view->update();
    return device->picture();
}

} // namespace vndk::app
