#pragma once
/// What all symbol table records begin with, and the records that are topics of their own.

#include "db/block_table.h"
#include "db/dim_style.h"
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

AcDbObject* readDimStyle(FieldReader& reader);
void writeDimStyle(FieldWriter& writer, const AcDbObject& object);

constexpr ObjectType dimStyleType() {
    return {69,           "DIMSTYLE",    &AcDbDimStyleTableRecord::desc,
            readDimStyle, writeDimStyle, &assignBaseOf<AcDbDimStyleTableRecord>};
}

/// The name as a BLOCK_HEADER stores it: without the number of an anonymous block or of a further paper space,
/// which only the BLOCK entity has.
std::string blockNameStem(const std::string& name);

} // namespace vndk::dwg
