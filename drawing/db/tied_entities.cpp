#include "db/tied_entities.h"

#include "db/entity.h"
#include "db/open.h"

#include <unordered_set>

namespace {

class TiedCollector : public AcDbReferenceVisitor {
public:
    explicit TiedCollector(AcDbObjectId block) : block_(block) {}
    void visit(AcDbObjectId& id, AcDb::ReferenceKind kind) override {
        if (kind != AcDb::kHardOwner || id.isNull() || id.isErased())
            return;
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (entity && entity->ownerId() == block_)
            found.push_back(id);
    }
    std::vector<AcDbObjectId> found;

private:
    AcDbObjectId block_;
};

} // namespace

std::vector<AcDbObjectId> acdbTiedEntities(AcDbEntity& entity) {
    TiedCollector collector(entity.ownerId());
    entity.visitReferences(collector);
    return std::move(collector.found);
}

std::vector<AcDbObjectId> acdbWithoutTied(const std::vector<AcDbObjectId>& entities) {
    std::unordered_set<AcDbObjectId> tied;
    for (const AcDbObjectId id : entities) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (!entity)
            continue;
        const std::vector<AcDbObjectId> own = acdbTiedEntities(*entity);
        tied.insert(own.begin(), own.end());
    }
    std::vector<AcDbObjectId> left = entities;
    std::erase_if(left, [&](AcDbObjectId id) { return tied.contains(id); });
    return left;
}
