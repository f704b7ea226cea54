#include "gs/display_lists.h"

#include "db/database.h"
#include "db/dictionary.h"
#include "db/symbol_tables.h"

namespace vndk::gs {

/// Told of every change in a database that lists were made of.
class DisplayLists::Watcher : public AcDbDatabaseReactor {
public:
    Watcher(DisplayLists& lists, AcDbDatabase& database) : lists_(lists), database_(database) {
        database_.addReactor(this);
    }
    ~Watcher() override { database_.removeReactor(this); }

    void objectAppended(const AcDbDatabase*, const AcDbObject* object) override { lists_.changed(*object); }
    void objectUnAppended(const AcDbDatabase*, const AcDbObject* object) override { lists_.changed(*object); }
    void objectReAppended(const AcDbDatabase*, const AcDbObject* object) override { lists_.changed(*object); }
    void objectModified(const AcDbDatabase*, const AcDbObject* object) override { lists_.changed(*object); }
    void objectErased(const AcDbDatabase*, const AcDbObject* object, bool) override { lists_.changed(*object); }
    void goodbye(const AcDbDatabase* database) override { lists_.forget(*database); }

private:
    DisplayLists& lists_;
    AcDbDatabase& database_;
};

DisplayLists::DisplayLists() = default;
DisplayLists::~DisplayLists() = default;

void DisplayLists::clear() {
    lists_.clear();
    wholes_.clear();
}

BlockList& DisplayLists::listOf(AcDbObjectId record, bool definitions) {
    std::unique_ptr<BlockList>& list = lists_[{record, definitions}];
    if (!list) {
        list = std::make_unique<BlockList>(record, definitions);
        if (AcDbDatabase* const database = record.database())
            watch(*database);
    }
    return *list;
}

const AcDbExtents& DisplayLists::reachOf(AcDbObjectId record, bool definitions) {
    return listOf(record, definitions).reach([this](AcDbObjectId id) -> auto& { return wholeOf(id); });
}

const std::vector<uint32_t>& DisplayLists::partsIn(AcDbObjectId record, bool definitions, const BoxProjector& projector,
                                                   const PictureBox& seen, bool once) {
    const BlockList::WholeOf whole = [this](AcDbObjectId id) -> auto& { return wholeOf(id); };
    return listOf(record, definitions).partsIn(seen, projector, whole, once);
}

uint32_t DisplayLists::partOf(AcDbObjectId record, bool definitions, AcDbObjectId entity) {
    BlockList& list = listOf(record, definitions);
    list.list();
    return list.partOf(entity);
}

const BlockList::Whole& DisplayLists::wholeOf(AcDbObjectId record) {
    // The place is taken before the blocks within are looked at: one that holds itself finds it empty there.
    const auto [place, isNew] = wholes_.try_emplace(record.stub());
    BlockList::Whole& whole = place->second;
    if (!isNew)
        return whole;
    const DisplayList& list = of(record);
    whole.endless = !list.endless.empty();
    for (const AcDbExtents& box : list.boxes)
        whole.box.addExt(box);
    if (depth_ >= kDeepestNesting)
        return whole;
    ++depth_;
    for (const Part& part : list.parts)
        for (uint32_t i = part.first; i < part.first + part.count; ++i) {
            if (list.items[i].kind != Item::Kind::Block)
                continue;
            const BlockShape& shape = list.blocks[list.items[i].first];
            const BlockList::Whole& inner = wholeOf(shape.record);
            whole.endless = whole.endless || inner.endless;
            AcDbExtents box = inner.box;
            box.transformBy(shape.transform);
            whole.box.addExt(box);
        }
    --depth_;
    return whole;
}

void DisplayLists::watch(AcDbDatabase& database) {
    std::unique_ptr<Watcher>& watcher = watchers_[&database];
    if (!watcher)
        watcher = std::make_unique<Watcher>(*this, database);
}

/// Layers and linetypes are looked up when a list is drawn, tables say nothing of their records, and records that
/// aren't known here (views, coordinate systems) aren't seen; what else isn't an entity may change any picture.
void DisplayLists::changed(const AcDbObject& object) {
    if (const auto* const entity = AcDbEntity::cast(&object))
        return entityChanged(*entity);
    if (const auto* const record = AcDbBlockTableRecord::cast(&object))
        return recordChanged(*record);
    if (!AcDbLayerTableRecord::cast(&object) && !AcDbLinetypeTableRecord::cast(&object) &&
        !AcDbOpaqueTableRecord::cast(&object) && !AcDbSymbolTable::cast(&object) && !AcDbDictionary::cast(&object))
        clear();
}

/// Owners are looked at whether they are open or not: who appends an entity has its block open for write.
void DisplayLists::entityChanged(const AcDbEntity& entity) {
    AcDbObjectId id = entity.objectId(), owner = entity.ownerId();
    constexpr int kDeepest = 4; // a vertex in a polyline in a block
    for (int i = 0; i < kDeepest && !owner.isNull(); ++i) {
        const AcDbObject* const above = owner.database()->objectOf(*owner.stub());
        if (const auto* const record = above ? AcDbBlockTableRecord::cast(above) : nullptr) {
            for (const bool definitions : {false, true})
                if (const auto list = lists_.find({owner, definitions}); list != lists_.end())
                    list->second->entityChanged(id);
            wholes_.erase(owner.stub());
            if (record->isLayout())
                return; // nothing refers to it
            wholes_.clear();
            for (auto& [key, list] : lists_)
                list->blocksChanged();
            return;
        }
        if (!above)
            return clear();
        id = owner;
        owner = above->ownerId();
    }
}

/// References begin at the origin of their block; what else a block has isn't seen, or comes with its entities.
void DisplayLists::recordChanged(const AcDbBlockTableRecord& record) {
    const auto [place, isNew] = origins_.try_emplace(record.objectId(), record.origin());
    if (record.isLayout() || (!isNew && place->second == record.origin()))
        return;
    place->second = record.origin();
    clear();
}

void DisplayLists::forget(const AcDbDatabase& database) {
    clear();
    origins_.clear();
    watchers_.erase(const_cast<AcDbDatabase*>(&database));
}

} // namespace vndk::gs
