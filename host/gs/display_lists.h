// The display lists of blocks, made when they are first needed and given up when something changes.
#pragma once

#include "db/reactors.h"
#include "gs/display_list.h"

#include <map>
#include <memory>

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
    const DisplayList& of(AcDbObjectId record, bool definitions = false);
    /// The box around all of the block and what it refers to, seen or not. Empty: nothing, or nothing but endless
    /// lines.
    const AcDbExtents& boxOf(AcDbObjectId record);
    /// Whether endless lines are in it.
    bool isEndless(AcDbObjectId record);
    void clear();

private:
    class Watcher;
    struct Whole {
        AcDbExtents box;
        bool endless = false;
    };
    struct Key {
        AcDbObjectId record;
        bool definitions;
        auto operator<=>(const Key&) const = default;
    };

    const Whole& wholeOf(AcDbObjectId record);
    void watch(AcDbDatabase& database);
    void changed(const AcDbObject& object);
    void forget(const AcDbDatabase& database);

    std::map<Key, std::unique_ptr<DisplayList>> lists_;
    std::map<AcDbObjectId, Whole> wholes_;
    std::map<AcDbDatabase*, std::unique_ptr<Watcher>> watchers_;
    size_t depth_ = 0; // of wholeOf
};

} // namespace vndk::gs
