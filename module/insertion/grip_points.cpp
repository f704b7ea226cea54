#include "insertion/grip_points.h"

#include "db/is_a.h"
#include "insertion/open_records.h"
#include "objects/grip_point.h"

#include <memory>

namespace {

std::unique_ptr<AcDbBlockTableRecordIterator> NewIterator(const AcDbBlockTableRecord* pSpace) {
    AcDbBlockTableRecordIterator* pIterator = nullptr;
    pSpace->newIterator(pIterator, true, true);
    return std::unique_ptr<AcDbBlockTableRecordIterator>(pIterator);
}

/// The grip point at which the iterator stands, open for write. Null for everything else.
VNDKGripPoint* OpenGripPoint(const AcDbBlockTableRecordIterator& iterator) {
    AcDbObjectId id;
    AcDbEntity* pEntity = nullptr;
    if (iterator.getEntityId(id) != Acad::eOk || !acdbIsA(id, VNDKGripPoint::desc()) ||
        iterator.getEntity(pEntity, AcDb::kForRead, false) != Acad::eOk)
        return nullptr;
    if (pEntity->isA() == VNDKGripPoint::desc() && pEntity->upgradeOpen() == Acad::eOk)
        return static_cast<VNDKGripPoint*>(pEntity);
    pEntity->close();
    return nullptr;
}

} // namespace

void RelinkGripPoints() {
    const COpened<AcDbBlockTableRecord> space(OpenCurrentSpace());
    if (!space)
        return;
    const auto iterator = NewIterator(space.get());
    if (!iterator)
        return;
    for (iterator->start(true, true); !iterator->done(); iterator->step(true, true)) {
        VNDKGripPoint* const pGrip = OpenGripPoint(*iterator);
        if (!pGrip)
            continue;
        const auto children = NewIterator(space.get());
        if (children)
            pGrip->setInsBase(space->database()->insbase());
        pGrip->close();
        if (!children)
            return;
        setChildEntities(pGrip, children.get());
        setFormulaChildEntities(pGrip, children.get());
    }
}
