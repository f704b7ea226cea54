#include "db/block_extents.h"

#include "db/block_table.h"
#include "db/open.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vndk::db {

namespace {

/// Blocks within blocks nest this deep at most when their box is measured.
constexpr size_t kDeepest = 32;
thread_local std::vector<AcDbObjectId> measuring;

struct NestingScope {
    explicit NestingScope(AcDbObjectId block) { measuring.push_back(block); }
    ~NestingScope() { measuring.pop_back(); }
};

/// A block that holds itself ends there.
bool mayMeasure(AcDbObjectId block) {
    return measuring.size() <= kDeepest && std::find(measuring.begin(), measuring.end(), block) == measuring.end();
}

AcDbExtents measure(AcDbObjectId block) {
    AcDbExtents all;
    const AcDbObjectPointer<AcDbBlockTableRecord> named(block);
    if (!named || !mayMeasure(block))
        return all;
    const NestingScope scope(block);
    const AcDbBlockTableRecord::Shown shown = named->shown();
    const AcDbObjectPointer<AcDbBlockTableRecord> record(shown.record);
    if (!record)
        return all;
    for (const AcDbObjectId id : record->entities()) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        AcDbExtents box;
        if (entity && entity->getGeomExtents(box) == Acad::eOk)
            all.addExt(box);
    }
    if (!all.isEmpty())
        all.transformBy(AcGeMatrix3d::translation(AcGePoint3d::kOrigin - shown.base));
    return all;
}

thread_local BlockExtentsMemory* memory = nullptr;

} // namespace

BlockExtentsMemory::BlockExtentsMemory() : former_(std::exchange(memory, this)) {}

BlockExtentsMemory::~BlockExtentsMemory() { memory = former_; }

AcDbExtents blockExtents(AcDbObjectId block) {
    // A block within itself is measured anew: what it is then isn't what it is elsewhere.
    if (!memory || !measuring.empty())
        return measure(block);
    const auto found = memory->known_.find(block);
    return found != memory->known_.end() ? found->second : memory->known_.emplace(block, measure(block)).first->second;
}

} // namespace vndk::db
