#include "gs/block_list.h"

#include "db/block_table.h"
#include "db/database.h"
#include "db/open.h"
#include "dwg/draw_order.h"
#include "gi/entity_drawing.h"
#include "gs/list_builder.h"

#include <algorithm>
#include <unordered_set>

namespace vndk::gs {

namespace {

constexpr double kEndless = 1e100;
const AcDbExtents kEverywhere({-kEndless, -kEndless, -kEndless}, {kEndless, kEndless, kEndless});
constexpr size_t kFewItems = 1024;

} // namespace

const DisplayList& BlockList::list() {
    const AcDbDatabase* const database = record_.database();
    const int attributes = database ? database->header().ATTMODE : attributes_;
    // With half of it left over, or much to do, it is time to begin anew.
    const size_t few = list_.items.size() / 2 + kFewItems;
    if (!built_ || attributes != attributes_ || left_ > few || changed_.size() > few) {
        attributes_ = attributes;
        buildAll();
    } else {
        refreshChanged();
    }
    return list_;
}

void BlockList::refreshChanged() {
    if (changed_.empty())
        return;
    ListBuilder builder(list_);
    std::unordered_set<const AcDbStub*> done;
    for (const AcDbObjectId entity : changed_)
        if (done.insert(entity.stub()).second)
            refresh(builder, entity);
    changed_.clear();
}

void BlockList::buildAll() {
    list_ = DisplayList();
    box_ = AcDbExtents();
    left_ = 0;
    wasDrawn_ = false;
    changed_.clear();
    numbers_.clear();
    blocksChanged();
    const AcDbObjectPointer<AcDbBlockTableRecord> block(record_);
    // One that is open for write is looked at again the next time.
    built_ = block || block.openStatus() != Acad::eWasOpenForWrite;
    if (!block)
        return;
    block->entities(true);
    const std::vector<AcDbObjectId> entities = dwg::drawOrder(*block);
    list_.parts.resize(entities.size());
    list_.boxes.resize(entities.size());
    list_.items.reserve(entities.size());
    list_.points.reserve(2 * entities.size()); // lines, mostly
    ListBuilder builder(list_);
    for (size_t i = 0; i < entities.size(); ++i)
        buildPart(builder, entities[i], i);
}

/// Nothing is drawn of an entity that doesn't stand in the block, or can't be read now.
void BlockList::buildPart(ListBuilder& builder, AcDbObjectId id, size_t part) {
    builder.begin(part);
    list_.parts[part].entity = id;
    if (const AcDbObjectPointer<AcDbEntity> entity(id); entity && entity->ownerId() == record_)
        acgiDrawInBlock(*entity, definitions_, builder);
    box_.addExt(list_.boxes[part]);
}

void BlockList::refresh(ListBuilder& builder, AcDbObjectId entity) {
    uint32_t part = partOf(entity);
    const bool isNew = part == kNone;
    if (isNew)
        part = static_cast<uint32_t>(list_.parts.size());
    else
        left_ += list_.parts[part].count;
    buildPart(builder, entity, part);
    if (isNew)
        numbers_.emplace(entity.stub(), part);
    if (part < reached_)
        stale_.push_back(part);
}

uint32_t BlockList::partOf(AcDbObjectId entity) {
    if (numbers_.empty()) {
        numbers_.reserve(list_.parts.size());
        for (size_t i = 0; i < list_.parts.size(); ++i)
            numbers_.emplace(list_.parts[i].entity.stub(), static_cast<uint32_t>(i));
    }
    const auto found = numbers_.find(entity.stub());
    return found == numbers_.end() ? kNone : found->second;
}

AcDbExtents BlockList::reachOf(size_t part, const WholeOf& wholeOf) const {
    AcDbExtents box = list_.boxes[part];
    for (uint32_t i = 0; i < list_.parts[part].count; ++i) {
        const Item& item = list_.items[list_.parts[part].first + i];
        if (item.kind == Item::Kind::Endless)
            return kEverywhere;
        if (item.kind != Item::Kind::Block)
            continue;
        const BlockShape& shape = list_.blocks[item.first];
        const Whole& inner = wholeOf(shape.record);
        if (inner.endless)
            return kEverywhere;
        AcDbExtents moved = inner.box;
        moved.transformBy(shape.transform);
        box.addExt(moved);
    }
    return box;
}

/// The same of all parts at once; what has gone counts as well.
AcDbExtents BlockList::reachOfAll(const WholeOf& wholeOf) const {
    AcDbExtents all = box_;
    bool endless = !list_.endless.empty();
    for (const BlockShape& shape : list_.blocks) {
        const Whole& inner = wholeOf(shape.record);
        endless = endless || inner.endless;
        AcDbExtents moved = inner.box;
        moved.transformBy(shape.transform);
        all.addExt(moved);
    }
    return endless ? kEverywhere : all;
}

void BlockList::blocksChanged() {
    reach_ = AcDbExtents();
    reached_ = 0;
    stale_.clear();
    reaches_.clear();
    tree_ = PartTree();
}

void BlockList::followReach(const WholeOf& wholeOf) {
    const size_t count = list().parts.size();
    if (reached_ == 0)
        reach_ = reachOfAll(wholeOf);
    const bool keeps = !reaches_.empty();
    for (size_t part = reached_ == 0 ? count : reached_; part < count; ++part) {
        const AcDbExtents box = reachOf(part, wholeOf);
        reach_.addExt(box);
        if (keeps)
            reaches_.push_back(box);
    }
    reached_ = count;
    for (const uint32_t part : stale_) {
        const AcDbExtents box = reachOf(part, wholeOf);
        reach_.addExt(box);
        if (keeps) {
            reaches_[part] = box;
            tree_.update(reaches_, part);
        }
    }
    stale_.clear();
}

std::span<const AcDbExtents> BlockList::reaches(const WholeOf& wholeOf) {
    followReach(wholeOf);
    reaches_.reserve(reached_);
    for (size_t part = reaches_.size(); part < reached_; ++part)
        reaches_.push_back(reachOf(part, wholeOf));
    return reaches_;
}

const AcDbExtents& BlockList::reach(const WholeOf& wholeOf) {
    followReach(wholeOf);
    return reach_;
}

const std::vector<uint32_t>& BlockList::partsIn(const PictureBox& seen, const BoxProjector& projector,
                                                const WholeOf& wholeOf, bool once) {
    if (once && !canFind())
        return scan(seen, projector, wholeOf);
    const std::span<const AcDbExtents> boxes = reaches(wholeOf);
    // New ones are looked at one by one until they are many.
    if (boxes.size() > tree_.size() + tree_.size() / 8 + kFewItems)
        tree_.build(boxes);
    found_.clear();
    tree_.find(boxes, projector, seen, found_);
    for (size_t part = tree_.size(); part < boxes.size(); ++part)
        if (projector(boxes[part]).meets(seen))
            found_.push_back(static_cast<uint32_t>(part));
    sortFound();
    return found_;
}

const std::vector<uint32_t>& BlockList::scan(const PictureBox& seen, const BoxProjector& projector,
                                             const WholeOf& wholeOf) {
    found_.clear();
    const size_t count = list().parts.size();
    for (size_t part = 0; part < count; ++part)
        if (projector(reachOf(part, wholeOf)).meets(seen))
            found_.push_back(static_cast<uint32_t>(part));
    return found_;
}

/// Many are put in order by marking them among all.
void BlockList::sortFound() {
    constexpr size_t kShareOfMany = 32;
    if (found_.size() < reaches_.size() / kShareOfMany)
        return std::sort(found_.begin(), found_.end());
    isFound_.assign(reaches_.size(), false);
    for (const uint32_t part : found_)
        isFound_[part] = true;
    found_.clear();
    for (size_t part = 0; part < isFound_.size(); ++part)
        if (isFound_[part])
            found_.push_back(static_cast<uint32_t>(part));
}

} // namespace vndk::gs
