// Fields of the symbol table records, blocks aside.
#include "db/line_weight.h"
#include "db/symbol_tables.h"
#include "dwg/object_types.h"
#include "dwg/opaque_codec.h"
#include "dwg/record_start.h"

namespace vndk::dwg {

void readRecordStart(FieldReader& r, AcDbSymbolTableRecord& record) {
    AcDbSymbolTableRecord::FileFlags flags;
    std::string name = r.text();
    flags.referenced = r.bits.B();
    flags.xrefIndex = r.bits.BS();
    const bool dependent = r.bits.B();
    flags.xrefBlock = r.id();
    record.setFromFile(std::move(name), dependent, flags);
}

void writeRecordStart(FieldWriter& w, const AcDbSymbolTableRecord& record, const std::string& name) {
    w.text(name);
    w.bits.B(record.fileFlags().referenced);
    w.bits.BS(record.fileFlags().xrefIndex);
    w.bits.B(record.isDependent());
    w.id(5, record.fileFlags().xrefBlock);
}

namespace {

using namespace code;

// Layer

using LayerData = AcDbLayerTableRecord::FileData;

enum LayerFlag : unsigned { kFrozen = 1, kOff = 2, kFrozenInNew = 4, kLocked = 8, kPlottable = 16 };
constexpr unsigned kWeightShift = 5;
constexpr unsigned kWeightMask = 31;

void readLayerFlags(FieldReader& r, LayerData& layer) {
    const unsigned flags = r.bits.BS();
    layer.frozen = flags & kFrozen;
    layer.off = flags & kOff;
    layer.frozenInNew = flags & kFrozenInNew;
    layer.locked = flags & kLocked;
    layer.plottable = flags & kPlottable;
    layer.lineWeight = static_cast<short>(acdbLineWeightOfCode(flags >> kWeightShift & kWeightMask));
}

void writeLayerFlags(FieldWriter& w, const LayerData& layer) {
    const unsigned weight = acdbLineWeightCode(static_cast<AcDb::LineWeight>(layer.lineWeight));
    const unsigned flags = (layer.frozen ? kFrozen : 0u) | (layer.off ? kOff : 0u) |
                           (layer.frozenInNew ? kFrozenInNew : 0u) | (layer.locked ? kLocked : 0u) |
                           (layer.plottable ? kPlottable : 0u) | weight << kWeightShift;
    w.bits.BS(static_cast<uint16_t>(flags));
}

constexpr FieldRow kLayerRows[] = {
    row<B, &LayerData::frozen>("frozen", kOnly1314),
    row<B, &LayerData::off>("off", kOnly1314),
    row<B, &LayerData::frozenInNew>("frozen in new viewports", kOnly1314),
    row<B, &LayerData::locked>("locked", kOnly1314),
    customRow<LayerData, readLayerFlags, writeLayerFlags>("flags", kOnly15),
    row<BS, &LayerData::color>("color"),
    row<H<5>, &LayerData::plotStyle>("plot style", kOnly15),
    row<H<5>, &LayerData::linetype>("linetype"),
};

// Text style

using StyleData = AcDbTextStyleTableRecord::Data;

constexpr FieldRow kStyleRows[] = {
    row<B, &StyleData::isShapeFile>("shape file"),
    row<B, &StyleData::isVertical>("vertical"),
    row<BD, &StyleData::textSize>("height"),
    row<BD, &StyleData::xScale>("width factor"),
    row<BD, &StyleData::oblique>("oblique angle"),
    row<RC, &StyleData::generation>("generation"),
    row<BD, &StyleData::priorSize>("last height"),
    row<TV, &StyleData::fileName>("font file"),
    row<TV, &StyleData::bigFontFileName>("big font file"),
};

// Linetype

using LinetypeData = AcDbLinetypeTableRecord::Data;

constexpr size_t kTextAreaSize = 256;

void readDashes(FieldReader& r, LinetypeData& linetype) {
    linetype.alignment = r.bits.RC();
    linetype.dashes.resize(r.bits.RC());
    for (AcDbLinetypeTableRecord::Dash& dash : linetype.dashes) {
        dash.length = BD::read<double>(r);
        dash.shapeNumber = r.bits.BS();
        dash.xOffset = r.number(r.bits.RD());
        dash.yOffset = r.number(r.bits.RD());
        dash.scale = BD::read<double>(r);
        dash.rotation = BD::read<double>(r);
        dash.flags = r.bits.BS();
        dash.style = r.id();
    }
    linetype.textArea.resize(kTextAreaSize);
    r.bits.bytes(linetype.textArea.data(), kTextAreaSize);
}

void writeDashes(FieldWriter& w, const LinetypeData& linetype) {
    w.bits.RC(linetype.alignment);
    w.bits.RC(static_cast<uint8_t>(linetype.dashes.size()));
    for (const AcDbLinetypeTableRecord::Dash& dash : linetype.dashes) {
        w.bits.BD(dash.length);
        w.bits.BS(dash.shapeNumber);
        w.bits.RD(dash.xOffset);
        w.bits.RD(dash.yOffset);
        w.bits.BD(dash.scale);
        w.bits.BD(dash.rotation);
        w.bits.BS(dash.flags);
        w.id(5, dash.style);
    }
    std::string area = linetype.textArea;
    area.resize(kTextAreaSize);
    w.bits.bytes(area.data(), kTextAreaSize);
}

constexpr FieldRow kLinetypeRows[] = {
    row<TV, &LinetypeData::description>("description"),
    row<BD, &LinetypeData::patternLength>("pattern length"),
    customRow<LinetypeData, readDashes, writeDashes>("dashes"),
};

// The rows of a record follow the common start; plain data or file data, as the class has it.

template <class Record, class Data, const auto& Rows>
AcDbObject* readRecord(FieldReader& r) {
    auto* const record = new Record;
    Data data;
    readRecordStart(r, *record);
    readRows(Rows, r, &data);
    record->setFileData(std::move(data));
    return record;
}

template <class Record, const auto& Rows, auto Get>
void writeRecord(FieldWriter& w, const AcDbObject& object) {
    const auto& record = static_cast<const Record&>(object);
    writeRecordStart(w, record, record.name());
    const auto& data = (record.*Get)();
    writeRows(Rows, w, &data);
}

template <class Record, class Data, const auto& Rows, auto Get>
constexpr ObjectType recordType(uint16_t number, const char* dxfName) {
    return {number,
            dxfName,
            &Record::desc,
            &readRecord<Record, Data, Rows>,
            &writeRecord<Record, Rows, Get>,
            &assignBaseOf<Record>};
}

AcDbObject* readApplication(FieldReader& r) {
    auto* const record = new AcDbRegAppTableRecord;
    readRecordStart(r, *record);
    r.bits.RC(); // 0 in all files
    return record;
}

void writeApplication(FieldWriter& w, const AcDbObject& object) {
    const auto& record = static_cast<const AcDbRegAppTableRecord&>(object);
    writeRecordStart(w, record, record.name());
    w.bits.RC(0);
}

// Records of which only the name is known

struct OpaqueRecordType {
    uint16_t number;
    const char* dxfName;
};

constexpr OpaqueRecordType kView = {61, "VIEW"};
constexpr OpaqueRecordType kUcs = {63, "UCS"};
constexpr OpaqueRecordType kViewport = {65, "VPORT"};
constexpr OpaqueRecordType kVx = {71, "VX_TABLE_RECORD"};

template <const OpaqueRecordType& Type>
AcDbObject* readOpaqueRecord(FieldReader& r) {
    auto* const record = new AcDbOpaqueTableRecord;
    readRecordStart(r, *record);
    AcDbOpaqueFields fields;
    fields.typeName = Type.dxfName;
    fields.fixedType = Type.number;
    readOpaqueFields(r, fields);
    record->setFields(std::move(fields));
    return record;
}

void writeOpaqueRecord(FieldWriter& w, const AcDbObject& object) {
    const auto& record = static_cast<const AcDbOpaqueTableRecord&>(object);
    writeRecordStart(w, record, record.name());
    writeOpaqueFields(w, record.fields());
}

template <const OpaqueRecordType& Type>
constexpr ObjectType opaqueRecordType() {
    return {Type.number,
            Type.dxfName,
            &AcDbOpaqueTableRecord::desc,
            &readOpaqueRecord<Type>,
            &writeOpaqueRecord,
            &assignBaseOf<AcDbOpaqueTableRecord>};
}

constexpr ObjectType kTypes[] = {
    blockHeaderType(),
    recordType<AcDbLayerTableRecord, LayerData, kLayerRows, &AcDbLayerTableRecord::fileData>(51, "LAYER"),
    recordType<AcDbTextStyleTableRecord, StyleData, kStyleRows, &AcDbTextStyleTableRecord::data>(53, "STYLE"),
    recordType<AcDbLinetypeTableRecord, LinetypeData, kLinetypeRows, &AcDbLinetypeTableRecord::data>(57, "LTYPE"),
    opaqueRecordType<kView>(),
    opaqueRecordType<kUcs>(),
    opaqueRecordType<kViewport>(),
    {67, "APPID", &AcDbRegAppTableRecord::desc, readApplication, writeApplication,
     &assignBaseOf<AcDbRegAppTableRecord>},
    dimStyleType(),
    opaqueRecordType<kVx>(),
};

} // namespace

std::span<const ObjectType> recordTypes() { return kTypes; }

} // namespace vndk::dwg
