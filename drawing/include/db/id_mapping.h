// Copying objects: which original became which copy.
#pragma once

#include "db/object_id.h"

#include <unordered_map>
#include <vector>

class AcDbIdMapping {
public:
    AcDbDatabase* origDb() const { return origin_; }
    AcDbDatabase* destDb() const { return destination_; }
    AcDbIdMapping(AcDbDatabase* origin, AcDbDatabase* destination) : origin_(origin), destination_(destination) {}

    /// The copy of an object, or null.
    AcDbObjectId lookUp(AcDbObjectId original) const {
        const auto it = map_.find(original);
        return it == map_.end() ? AcDbObjectId() : it->second;
    }
    void assign(AcDbObjectId original, AcDbObjectId copy) { map_[original] = copy; }
    const std::unordered_map<AcDbObjectId, AcDbObjectId>& pairs() const { return map_; }

private:
    AcDbDatabase* origin_;
    AcDbDatabase* destination_;
    std::unordered_map<AcDbObjectId, AcDbObjectId> map_;
};
