#pragma once
/// Fields that aren't modelled, between the streams of a record and db/opaque_fields.h.

#include "db/opaque_fields.h"
#include "dwg/fields.h"

namespace vndk::dwg {

/// All bits that are left, the last byte filled up with zeros.
std::string remainingBits(BitReader& bits);

/// Takes all that is left of both streams. The type is the caller's to tell.
void readOpaqueFields(FieldReader& reader, AcDbOpaqueFields& fields);
void writeOpaqueFields(FieldWriter& writer, const AcDbOpaqueFields& fields);

/// The type number in a framed record; 0 when it can't be read.
uint16_t peekType(const AcDbStub& stub);

} // namespace vndk::dwg
