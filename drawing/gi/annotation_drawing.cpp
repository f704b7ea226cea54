// Marks and frames: shapes and viewports.
#include "db/block_table.h"
#include "db/is_a.h"
#include "db/open.h"
#include "db/shape.h"
#include "db/viewport.h"
#include "gi/entity_drawing_parts.h"

#include <algorithm>

namespace vndk::gi {

/// The figures of shape files aren't known here: a crossed square of the figure's size stands in its place.
void drawShape(const AcDbEntity& entity, AcGiGeometry& geometry) {
    AcGePoint3d c[4];
    static_cast<const AcDbShape&>(entity).getCorners(c);
    const AcGePoint3d outline[] = {c[0], c[1], c[2], c[3], c[0]}, rising[] = {c[0], c[2]}, falling[] = {c[1], c[3]};
    geometry.polyline(outline);
    geometry.polyline(rising);
    geometry.polyline(falling);
}

namespace {

/// The first viewport of a sheet is the sheet itself.
bool isSheet(const AcDbViewport& viewport) {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(viewport.ownerId());
    if (!space)
        return false;
    const auto& ids = space->entities();
    const auto first = std::find_if(
        ids.begin(), ids.end(), [](AcDbObjectId id) { return !id.isErased() && acdbIsA(id, AcDbViewport::desc()); });
    return first != ids.end() && *first == viewport.objectId();
}

} // namespace

/// Its frame.
void drawViewport(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const auto& viewport = static_cast<const AcDbViewport&>(entity);
    if (isSheet(viewport))
        return;
    const AcGeVector3d across(viewport.width() / 2, 0, 0), up(0, viewport.height() / 2, 0);
    const AcGePoint3d center = viewport.centerPoint();
    const AcGePoint3d corners[] = {center - across - up, center + across - up, center + across + up,
                                   center - across + up, center - across - up};
    geometry.polyline(corners);
}

} // namespace vndk::gi
