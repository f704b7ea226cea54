#pragma once
/// Extended data between an object's record and db/xdata.h. The items have the same form in both but for the texts,
/// which stand in the code page that each names.

#include "db/xdata.h"
#include "dwg/fields.h"

namespace vndk::dwg {

/// Reads groups up to and including their end mark.
void readExtendedData(BitReader& reader, uint64_t own, AcDbDatabase& database, AcDbXData& data);
/// Writes groups and the end mark. A group that is too long for one is written as several of the same application.
void writeExtendedData(BitWriter& writer, const AcDbXData& data);

/// All items of one application, in order.
std::string itemsOf(const AcDbXData& data, AcDbObjectId application);

} // namespace vndk::dwg
