#include "gs/paper_viewports.h"

#include "db/database.h"
#include "db/is_a.h"
#include "db/open.h"
#include "db/viewport.h"

#include <cmath>
#include <utility>

namespace vndk::gs {

namespace {

constexpr uint32_t kPerspective = 1, kOff = 0x20000; // in the status

/// From the model to the view's plane, its target at the view centre's origin, and from there onto the sheet.
AcGeMatrix3d toSheet(const AcDbViewport& viewport) {
    const AcDbViewport::Data& data = viewport.data();
    const AcGeMatrix3d aside = AcGeMatrix3d::translation({-data.viewCenter.x, -data.viewCenter.y, 0});
    const AcGeMatrix3d twisted = AcGeMatrix3d::rotation(data.twist, AcGeVector3d::kZAxis);
    return AcGeMatrix3d::translation(data.center.asVector()) * AcGeMatrix3d::scaling(data.height / data.viewHeight) *
           aside * twisted * AcGeMatrix3d::worldToPlane(data.direction.normal()) *
           AcGeMatrix3d::translation(-data.target.asVector());
}

bool isFinite(const AcGeMatrix3d& matrix) {
    for (const auto& row : matrix.entry)
        for (const double entry : row)
            if (!std::isfinite(entry))
                return false;
    return true;
}

} // namespace

std::vector<PaperViewport> viewportsOn(const AcDbBlockTableRecord& record) {
    std::vector<PaperViewport> found;
    if (!record.isLayout() || record.objectId() == record.database()->modelSpaceId())
        return found;
    bool isSheet = true; // the first one is the sheet itself
    for (const AcDbObjectId id : record.entities()) {
        if (!acdbIsA(id, AcDbViewport::desc()))
            continue;
        const AcDbObjectPointer<AcDbViewport> viewport(id);
        if (!viewport)
            continue;
        const AcDbViewport::Data& data = viewport->data();
        PaperViewport view;
        view.frozenLayers = data.frozenLayers;
        view.scale = data.height / data.viewHeight;
        view.eye = data.status & kPerspective ? data.direction.length() : 0;
        if (!std::exchange(isSheet, false) && !(data.status & kOff) && data.viewHeight > 0 && data.width > 0 &&
            data.height > 0 && viewport->getGeomExtents(view.frame) == Acad::eOk &&
            isFinite(view.toSheet = toSheet(*viewport)))
            found.push_back(std::move(view));
    }
    return found;
}

std::optional<Lens> PaperViewport::lens(const AcGeMatrix3d& sheetToDevice) const {
    const AcGePoint3d at = sheetToDevice * (frame.minPoint() + (frame.maxPoint() - frame.minPoint()) * 0.5);
    const double distance = eye * scale * sheetToDevice.scale();
    if (!(distance > 0) || !std::isfinite(distance))
        return std::nullopt;
    return Lens{{at.x, at.y, at.z}, distance};
}

} // namespace vndk::gs
