#include "gs/display_lists.h"

#include "db/database.h"
#include "db/open.h"
#include "gi/entity_drawing.h"
#include "gs/list_builder.h"

#include <cmath>

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

const DisplayList& DisplayLists::of(AcDbObjectId record, bool definitions) {
    std::unique_ptr<DisplayList>& list = lists_[{record, definitions}];
    if (!list) {
        list = std::make_unique<DisplayList>();
        if (AcDbDatabase* const database = record.database())
            watch(*database);
        if (const AcDbObjectPointer<AcDbBlockTableRecord> block(record); block) {
            ListBuilder builder(*list);
            acgiDrawBlock(*block, definitions, builder);
        }
    }
    return *list;
}

const DisplayLists::Whole& DisplayLists::wholeOf(AcDbObjectId record) {
    // The place is taken before the blocks within are looked at: one that holds itself finds it empty there.
    const auto [place, isNew] = wholes_.try_emplace(record);
    Whole& whole = place->second;
    if (!isNew)
        return whole;
    const DisplayList& list = of(record);
    whole.endless = !list.endless.empty();
    for (const AcDbExtents& box : list.boxes)
        whole.box.addExt(box);
    if (depth_ >= kDeepestNesting)
        return whole;
    ++depth_;
    for (const BlockShape& shape : list.blocks) {
        const Whole& inner = wholeOf(shape.record);
        whole.endless = whole.endless || inner.endless;
        if (inner.box.isEmpty())
            continue;
        AcDbExtents box = inner.box;
        box.transformBy(shape.transform);
        whole.box.addExt(box);
    }
    --depth_;
    return whole;
}

const AcDbExtents& DisplayLists::boxOf(AcDbObjectId record) { return wholeOf(record).box; }
bool DisplayLists::isEndless(AcDbObjectId record) { return wholeOf(record).endless; }

void DisplayLists::watch(AcDbDatabase& database) {
    std::unique_ptr<Watcher>& watcher = watchers_[&database];
    if (!watcher)
        watcher = std::make_unique<Watcher>(*this, database);
}

/// Layers and linetypes are looked up when a list is drawn; what else isn't an entity may change any picture.
void DisplayLists::changed(const AcDbObject& object) {
    if (AcDbLayerTableRecord::cast(&object) || AcDbLinetypeTableRecord::cast(&object))
        return;
    wholes_.clear();
    if (!object.isKindOf(AcDbEntity::desc()))
        return clear();
    AcDbObjectId owner = object.ownerId();
    constexpr int kDeepest = 4; // a vertex in a polyline in a block
    for (int i = 0; i < kDeepest && !owner.isNull(); ++i) {
        lists_.erase({owner, false});
        lists_.erase({owner, true});
        const AcDbObjectPointer<AcDbObject> above(owner);
        if (!above)
            return clear();
        if (!above->isKindOf(AcDbEntity::desc()))
            return;
        owner = above->ownerId();
    }
}

void DisplayLists::forget(const AcDbDatabase& database) {
    clear();
    watchers_.erase(const_cast<AcDbDatabase*>(&database));
}

} // namespace vndk::gs
