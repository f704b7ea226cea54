#pragma once
/// What all symbol table records begin with, and the record that is a topic of its own.

#include "db/block_table.h"
#include "dwg/object_types.h"

namespace vndk::dwg {

void readRecordStart(FieldReader& reader, AcDbSymbolTableRecord& record);
/// `name` as the file shall have it.
void writeRecordStart(FieldWriter& writer, const AcDbSymbolTableRecord& record, const std::string& name);

AcDbObject* readBlockHeader(FieldReader& reader);
void writeBlockHeader(FieldWriter& writer, const AcDbObject& object);

constexpr ObjectType blockHeaderType() {
    return {49,
            "BLOCK_HEADER",
            &AcDbBlockTableRecord::desc,
            readBlockHeader,
            writeBlockHeader,
            &assignBaseOf<AcDbBlockTableRecord>};
}

/// The name as a BLOCK_HEADER stores it: without the number of an anonymous block or of a further paper space,
/// which only the BLOCK entity has.
std::string blockNameStem(const std::string& name);

} // namespace vndk::dwg
