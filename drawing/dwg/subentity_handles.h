#pragma once
/// The three handles by which a complex entity tells its subentities: first, last, sequence end.

#include "db/subentities.h"
#include "dwg/fields.h"

namespace vndk::dwg {

void readSubentityHandles(FieldReader& reader, AcDbSubentities& list);
/// Those of the subentities that aren't erased. A list that was never loaded is written as the file had it.
void writeSubentityHandles(FieldWriter& writer, const AcDbObject& owner, const AcDbSubentities& list);
bool hasLiveSubentities(const AcDbObject& owner, const AcDbSubentities& list);

/// The first and last object of a list that aren't erased; null ids when there is none.
struct LiveEnds {
    AcDbObjectId first, last;
};
LiveEnds liveEnds(const std::vector<AcDbObjectId>& ids);

} // namespace vndk::dwg
