#include "ads/entity_data.h"

#include "ads/dxf_lists.h"
#include "db/block_reference.h"
#include "db/database.h"
#include "db/polylines.h"
#include "ed/pick.h"

#include <algorithm>
#include <memory>

namespace vndk::host {

namespace {

/// The ids among which an entity stands, if its owner is a complex entity.
const std::vector<AcDbObjectId>* subentitiesOf(const AcDbObject& owner) {
    if (const auto* reference = AcDbBlockReference::cast(&owner))
        return &reference->attributes();
    if (const auto* polyline = AcDbVertexOwner::cast(&owner))
        return &polyline->vertices();
    return nullptr;
}

AcDbObjectId firstLive(const std::vector<AcDbObjectId>& ids, size_t from) {
    for (size_t i = from; i < ids.size(); ++i)
        if (!ids[i].isErased())
            return ids[i];
    return {};
}

AcDbObjectId behindInSpace(AcDbObjectId spaceId, AcDbObjectId id) {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(spaceId);
    if (!space)
        return {};
    const auto& entities = space->entities();
    // New entities stand at the end, where scripts look most often.
    const auto place = std::find(entities.rbegin(), entities.rend(), id);
    return place == entities.rend() ? AcDbObjectId()
                                    : firstLive(entities, static_cast<size_t>(place.base() - entities.begin()));
}

} // namespace

AcDbObjectId nextEntity(const AcDbDatabase& database, AcDbObjectId id) {
    if (id.isNull()) {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(currentSpace(database));
        return space ? firstLive(space->entities(), 0) : AcDbObjectId();
    }
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead, true);
    if (!entity)
        return {};
    const AcDbObjectId ownerId = entity->ownerId();
    if (const auto* parts = subentitiesOf(*entity))
        if (const AcDbObjectId first = firstLive(*parts, 0); !first.isNull())
            return first;
    const AcDbObjectPointer<AcDbEntity> owner(ownerId, AcDb::kForRead, true);
    const auto* const siblings = owner ? subentitiesOf(*owner) : nullptr;
    if (!siblings)
        return behindInSpace(ownerId, id);
    const auto place = std::find(siblings->begin(), siblings->end(), id);
    if (place != siblings->end())
        if (const auto next = firstLive(*siblings, static_cast<size_t>(place - siblings->begin()) + 1); !next.isNull())
            return next;
    return behindInSpace(owner->ownerId(), ownerId);
}

bool toggleErased(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite, true);
    return entity && entity->erase(!entity->isErased()) == Acad::eOk;
}

resbuf* entityData(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbObject> object(id);
    if (!object)
        return nullptr;
    DxfList list;
    writeDxfList(*object, list);
    return list.release();
}

} // namespace vndk::host
