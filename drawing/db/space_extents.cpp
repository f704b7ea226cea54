#include "db/space_extents.h"

#include "db/block_extents.h"
#include "db/database.h"
#include "db/entity.h"
#include "db/stub.h"

#include <cmath>

namespace {

bool isFinite(const AcGePoint3d& point) {
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

} // namespace

AcDbExtents acdbGrownExtents(AcDbDatabase& database, AcDbObjectId space, const AcDbExtents& told) {
    const vndk::db::BlockExtentsMemory memory; // many references of large blocks
    AcDbExtents grown;
    grown.addExt(told);
    for (const AcDbStub& stub : database.stubs()) {
        if (!(stub.flags & (kStubModified | kStubNew)) || stub.has(kStubErased))
            continue;
        const auto* const entity = AcDbEntity::cast(stub.object);
        AcDbExtents extents;
        if (entity && entity->ownerId() == space && entity->getGeomExtents(extents) == Acad::eOk &&
            isFinite(extents.minPoint()) && isFinite(extents.maxPoint()))
            grown.addExt(extents);
    }
    return grown;
}
