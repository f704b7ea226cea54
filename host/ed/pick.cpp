#include "ed/pick.h"

#include "ap/document.h"
#include "ap/drawing_views.h"
#include "db/database.h"
#include "db/symbol_table.h"
#include "db/viewport.h"
#include "ed/coordinates.h"
#include "ed/hit_test.h"
#include "ed/host.h"

#include <algorithm>
#include <memory>

namespace vndk::host {

namespace {

/// The last entity of the current space for which `wanted` holds.
template <class Wanted>
AcDbObjectId lastOf(const AcDbDatabase& database, Wanted&& wanted) {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(currentSpace(database));
    AcDbBlockTableRecordIterator* raw = nullptr;
    if (!space || space->newIterator(raw, false, true) != Acad::eOk)
        return {};
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(raw);
    for (; !iterator->done(); iterator->step(false, true)) {
        AcDbObjectId id;
        iterator->getEntityId(id);
        if (wanted(id))
            return id;
    }
    return {};
}

} // namespace

AcDbObjectId currentSpace(const AcDbDatabase& database) {
    return database.tilemode() ? database.modelSpaceId() : database.paperSpaceId();
}

AcDbObjectId lastEntity(const AcDbDatabase& database) {
    return lastOf(database, [](AcDbObjectId id) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        return !entity || !isSheet(*entity);
    });
}

bool isShown(const AcDbEntity& entity) {
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(entity.layerId());
    return entity.visibility() == AcDb::kVisible && (!layer || (!layer->isOff() && !layer->isFrozen()));
}

bool isSheet(const AcDbEntity& entity) {
    if (!entity.isKindOf(AcDbViewport::desc()))
        return false;
    const AcDbObjectPointer<AcDbBlockTableRecord> space(entity.ownerId());
    if (!space)
        return false;
    const auto isViewport = [](AcDbObjectId id) { return bool(AcDbObjectPointer<AcDbViewport>(id)); };
    const auto first = std::find_if(space->entities().begin(), space->entities().end(), isViewport);
    return first != space->entities().end() && *first == entity.objectId();
}

double pickAperture(Host& host, const char* variable) {
    VariableValue screen;
    if (host.variables().get("SCREENSIZE", screen) != VariableError::None)
        return 0;
    return host.variables().getShort(variable) * host.variables().getReal("VIEWSIZE") / std::get<AcGePoint3d>(screen).y;
}

AcGeMatrix3d ucsToScreen(const AcApDocument& document) {
    return worldToView(document.views().current()) * ucsToWorld(*document.database());
}

AcDbObjectId entityAt(const AcApDocument& document, const AcGePoint3d& point, double aperture) {
    const AcGeVector3d toCorner(aperture, aperture, 0);
    const AcGePoint3d seen = ucsToScreen(document) * point;
    const SelectionRectangle box =
        SelectionRectangle::between(worldToView(document.views().current()), seen - toCorner, seen + toCorner);
    return lastOf(*document.database(), [&](AcDbObjectId id) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        return entity && isShown(*entity) && !isSheet(*entity) && touches(*entity, box);
    });
}

std::vector<AcDbObjectId> entitiesNear(const AcDbDatabase& database, const AcGePoint3d& point, double aperture) {
    std::vector<AcDbObjectId> found;
    const AcGeMatrix3d toUcs = ucsToWorld(database).inverse();
    const AcDbObjectPointer<AcDbBlockTableRecord> space(currentSpace(database));
    if (!space)
        return found;
    for (const AcDbObjectId id : space->entities()) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        AcDbExtents box;
        if (!entity || !isShown(*entity) || entity->getGeomExtents(box) != Acad::eOk || box.isEmpty())
            continue;
        box.transformBy(toUcs);
        if (box.minPoint().x <= point.x + aperture && box.maxPoint().x >= point.x - aperture &&
            box.minPoint().y <= point.y + aperture && box.maxPoint().y >= point.y - aperture)
            found.push_back(id);
    }
    return found;
}

} // namespace vndk::host
