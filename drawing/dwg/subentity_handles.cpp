#include "dwg/subentity_handles.h"

#include <algorithm>

namespace vndk::dwg {

LiveEnds liveEnds(const std::vector<AcDbObjectId>& ids) {
    const auto alive = [](AcDbObjectId id) { return !id.isErased(); };
    const auto first = std::find_if(ids.begin(), ids.end(), alive);
    if (first == ids.end())
        return {};
    return {*first, *std::find_if(ids.rbegin(), ids.rend(), alive)};
}

void readSubentityHandles(FieldReader& reader, AcDbSubentities& list) {
    const AcDbObjectId first = reader.id();
    const AcDbObjectId last = reader.id();
    list.setFileChain(first, last, reader.id());
}

void writeSubentityHandles(FieldWriter& writer, const AcDbObject& owner, const AcDbSubentities& list) {
    const LiveEnds ends = list.loaded() ? liveEnds(list.ids(owner)) : LiveEnds{list.fileFirst(), list.fileLast()};
    writer.id(4, ends.first);
    writer.id(4, ends.last);
    writer.id(3, list.sequenceEnd());
}

bool hasLiveSubentities(const AcDbObject& owner, const AcDbSubentities& list) {
    return list.loaded() ? !liveEnds(list.ids(owner)).first.isNull() : !list.fileFirst().isNull();
}

} // namespace vndk::dwg
