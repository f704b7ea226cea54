// The display lists of blocks, made when they are first needed. They follow what changes in their blocks.
#pragma once

#include "db/reactors.h"
#include "gs/block_list.h"

#include <map>
#include <memory>
#include <unordered_map>

class AcDbBlockTableRecord;

namespace vndk::gs {

/// References within references are followed that far.
inline constexpr size_t kDeepestNesting = 64;

class DisplayLists {
public:
    DisplayLists();
    ~DisplayLists();
    DisplayLists(const DisplayLists&) = delete;
    DisplayLists& operator=(const DisplayLists&) = delete;

    /// With `definitions` as the block looks by itself, else as behind a reference. Valid until something changes.
    const DisplayList& of(AcDbObjectId record, bool definitions = false) { return listOf(record, definitions).list(); }
    /// The box around all that is drawn by it; it may be larger for what has gone.
    const AcDbExtents& reachOf(AcDbObjectId record, bool definitions);
    /// Whether partsIn answers at once, without preparing anything.
    bool canFind(AcDbObjectId record, bool definitions) { return listOf(record, definitions).canFind(); }
    /// Parts of the same list that come out within a part of the picture, in the order in which they are drawn. Valid
    /// until it is asked again.
    const std::vector<uint32_t>& partsIn(AcDbObjectId record, bool definitions, const BoxProjector& projector,
                                         const PictureBox& seen, bool once = false);
    /// Notes that a picture of a part of it is being drawn. True: it is the first one of the list as it was made.
    bool beginPicture(AcDbObjectId record, bool definitions) { return listOf(record, definitions).beginPicture(); }
    /// BlockList::kNone: the entity isn't in the block.
    uint32_t partOf(AcDbObjectId record, bool definitions, AcDbObjectId entity);
    /// All of the block and what it refers to, seen or not. The box is empty where there is nothing, or nothing but
    /// endless lines.
    const BlockList::Whole& wholeOf(AcDbObjectId record);
    void clear();

private:
    class Watcher;
    struct Key {
        AcDbObjectId record;
        bool definitions;
        bool operator==(const Key&) const = default;
    };
    struct KeyHash {
        size_t operator()(const Key& key) const {
            return std::hash<const AcDbStub*>()(key.record.stub()) * 2 + key.definitions;
        }
    };

    BlockList& listOf(AcDbObjectId record, bool definitions);
    void watch(AcDbDatabase& database);
    void changed(const AcDbObject& object);
    void entityChanged(const AcDbEntity& entity);
    void recordChanged(const AcDbBlockTableRecord& record);
    void forget(const AcDbDatabase& database);

    std::unordered_map<Key, std::unique_ptr<BlockList>, KeyHash> lists_;
    std::unordered_map<const AcDbStub*, BlockList::Whole> wholes_;
    std::map<AcDbObjectId, AcGePoint3d> origins_; // of blocks that have been changed, as they were then
    std::map<AcDbDatabase*, std::unique_ptr<Watcher>> watchers_;
    size_t depth_ = 0; // of wholeOf
};

} // namespace vndk::gs
