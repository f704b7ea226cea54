// Fields of block table records.
#include "db/block_ends.h"
#include "db/block_reference.h"
#include "db/stub.h"
#include "db/text.h"
#include "dwg/opaque_codec.h"
#include "dwg/record_start.h"
#include "dwg/subentity_handles.h"

#include <unordered_set>

namespace vndk::dwg {

namespace {

using namespace code;
using BlockData = AcDbBlockTableRecord::Data;

constexpr uint16_t kAttdefType = 3;
constexpr uint16_t kBlockType = 4;

/// What the rows work on: the record's data, and what is found in its contents.
struct HeaderFields {
    BlockData data;
    bool hasDefinitions = false;
    uint32_t referenceCount = 0;
};

template <bool BlockData::*Member>
constexpr FieldRow flagRow(const char* name, VersionMask versions = kEveryVersion) {
    return {name, versions, [](FieldReader& r, void* f) { static_cast<HeaderFields*>(f)->data.*Member = r.bits.B(); },
            [](FieldWriter& w, const void* f) { w.bits.B(static_cast<const HeaderFields*>(f)->data.*Member); }};
}

template <class Code, auto Member>
constexpr FieldRow dataRow(const char* name) {
    using Type = typename MemberOf<decltype(Member)>::Type;
    return {name, kEveryVersion,
            [](FieldReader& r, void* f) { static_cast<HeaderFields*>(f)->data.*Member = Code::template read<Type>(r); },
            [](FieldWriter& w, const void* f) {
                Code::template write<Type>(w, static_cast<const HeaderFields*>(f)->data.*Member);
            }};
}

// One byte that isn't zero for each reference, and a zero.
void readReferenceCount(FieldReader& r, HeaderFields& f) {
    while (r.bits.RC() != 0)
        ++f.referenceCount;
}

void writeReferenceCount(FieldWriter& w, const HeaderFields& f) {
    for (uint32_t i = 0; i < f.referenceCount; ++i)
        w.bits.RC(1);
    w.bits.RC(0);
}

void readPreview(FieldReader& r, HeaderFields& f) {
    f.data.previewIcon.resize(r.count(r.bits.BL(), 8));
    r.bits.bytes(f.data.previewIcon.data(), f.data.previewIcon.size());
}

void writePreview(FieldWriter& w, const HeaderFields& f) {
    w.bits.BL(static_cast<uint32_t>(f.data.previewIcon.size()));
    w.bits.bytes(f.data.previewIcon.data(), f.data.previewIcon.size());
}

constexpr FieldRow kRows[] = {
    flagRow<&BlockData::anonymous>("anonymous"),
    row<B, &HeaderFields::hasDefinitions>("has attribute definitions"),
    flagRow<&BlockData::isXref>("external reference"),
    flagRow<&BlockData::xrefOverlaid>("overlaid"),
    flagRow<&BlockData::xrefLoaded>("loaded", kOnly15),
    dataRow<P3, &BlockData::origin>("base point"),
    dataRow<TV, &BlockData::xrefPath>("path"),
    customRow<HeaderFields, readReferenceCount, writeReferenceCount>("references", kOnly15),
    dataRow<TV, &BlockData::description>("description"),
    customRow<HeaderFields, readPreview, writePreview>("preview icon"),
};

/// Only an ordinary block's header names its first and last entity.
bool namesEntities(const BlockData& data) { return !data.isXref && !data.xrefOverlaid; }

void readHandles(FieldReader& r, AcDbBlockTableRecord& record, HeaderFields& f) {
    f.data.blockBegin = r.id();
    if (namesEntities(f.data)) {
        const AcDbObjectId first = r.id();
        record.setFileChain(first, r.id());
    }
    f.data.blockEnd = r.id();
    if (f.referenceCount > r.handles.remaining() / 8) {
        r.bits.fail();
        return;
    }
    std::vector<AcDbObjectId> references(f.referenceCount);
    for (AcDbObjectId& reference : references)
        reference = r.id();
    record.setFileReferences(std::move(references));
    if (kOnly15 & maskOf(r.version))
        f.data.layout = r.id();
}

/// Anonymous blocks and further paper spaces have their whole name in the BLOCK entity.
void completeName(FieldReader& r, AcDbBlockTableRecord& record, AcDbObjectId begin) {
    AcDbStub* const stub = begin.stub();
    if (!record.name().starts_with('*') || !stub)
        return;
    // Only the right type is decoded here: a damaged file's handle may lead anywhere, also back to here.
    if (!stub->object && peekType(*stub) != kBlockType)
        return;
    const auto* const entity = AcDbBlockBegin::cast(r.database.objectOf(*stub));
    if (entity && entity->fileName().starts_with(record.name()))
        record.setFromFile(entity->fileName(), record.isDependent(), record.fileFlags());
}

bool isDefinition(AcDbObjectId id) {
    const AcDbStub* const stub = id.stub();
    if (!stub || stub->has(kStubErased))
        return false;
    return stub->object ? AcDbAttributeDefinition::cast(stub->object) != nullptr : peekType(*stub) == kAttdefType;
}

/// The references that still are ones, each once. Of those that weren't opened the file is believed.
std::vector<AcDbObjectId> liveReferences(const AcDbBlockTableRecord& record) {
    std::vector<AcDbObjectId> live;
    std::unordered_set<AcDbObjectId> seen;
    for (const AcDbObjectId id : record.references()) {
        if (id.isErased() || (!id.isNull() && writtenHandle(id) == 0) || (!id.isNull() && !seen.insert(id).second))
            continue;
        const auto* const reference = id.isNull() ? nullptr : AcDbBlockReference::cast(id.stub()->object);
        if (!reference || reference->blockTableRecord() == record.objectId())
            live.push_back(id);
    }
    return live;
}

} // namespace

std::string blockNameStem(const std::string& name) {
    if (!name.starts_with('*'))
        return name;
    const size_t last = name.find_last_not_of("0123456789");
    return name.substr(0, last + 1);
}

AcDbObject* readBlockHeader(FieldReader& r) {
    auto* const record = new AcDbBlockTableRecord;
    readRecordStart(r, *record);
    HeaderFields fields;
    readRows(kRows, r, &fields);
    readHandles(r, *record, fields);
    completeName(r, *record, fields.data.blockBegin);
    record->setFileDefinitions(fields.hasDefinitions);
    record->setFileData(std::move(fields.data));
    return record;
}

void writeBlockHeader(FieldWriter& w, const AcDbObject& object) {
    const auto& record = static_cast<const AcDbBlockTableRecord&>(object);
    writeRecordStart(w, record, blockNameStem(record.name()));
    HeaderFields fields;
    fields.data = record.data();
    LiveEnds ends{record.fileFirst(), record.fileLast()};
    fields.hasDefinitions = record.fileHasDefinitions();
    if (record.entitiesLoaded()) {
        const auto& ids = record.entities();
        ends = liveEnds(ids);
        fields.hasDefinitions = std::any_of(ids.begin(), ids.end(), isDefinition);
    }
    const std::vector<AcDbObjectId> references = liveReferences(record);
    fields.referenceCount = static_cast<uint32_t>(references.size());
    writeRows(kRows, w, &fields);
    w.id(3, fields.data.blockBegin);
    if (namesEntities(fields.data)) {
        w.id(4, ends.first);
        w.id(4, ends.last);
    }
    w.id(3, fields.data.blockEnd);
    for (const AcDbObjectId id : references)
        w.id(4, id);
    if (kOnly15 & maskOf(w.version))
        w.id(5, fields.data.layout);
}

} // namespace vndk::dwg
