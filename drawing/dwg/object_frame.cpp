#include "dwg/object_frame.h"

#include <algorithm>

#include "dwg/crc.h"

namespace vndk::dwg {

namespace {

/// What differs between versions in the frame, as one row for each version.
struct FrameRow {
    bool bitSizeBehindType;   ///< Else it stands behind the extended data and the graphic.
    bool linetypeByLayerBit;  ///< Else there are flags for linetype and plot style, and a line weight.
    bool linksBehindLinetype; ///< Else they stand before the layer.
};

constexpr FrameRow kFrameRows[] = {
    {false, true, true},  // R13
    {false, true, true},  // R14
    {true, false, false}, // R15
};

const FrameRow& rowOf(Version version) { return kFrameRows[static_cast<unsigned>(version)]; }

/// Fixed type numbers that are entities, as ranges.
struct TypeRange {
    uint16_t first;
    uint16_t last;
};

constexpr TypeRange kEntityTypes[] = {
    {1, 8},     // texts, block ends, inserts
    {10, 41},   // vertices, polylines, curves, dimensions, solids, viewport
    {43, 47},   // OLE frame, mtext, leader, tolerance, mline
    {74, 74},   // OLE2 frame
    {77, 78},   // lwpolyline, hatch
    {498, 498}, // proxy entity
};

bool isFixedEntity(uint16_t type) {
    return std::any_of(std::begin(kEntityTypes), std::end(kEntityTypes),
                       [type](const TypeRange& range) { return type >= range.first && type <= range.last; });
}

void skipEed(BitReader& reader) {
    while (const uint16_t size = reader.BS()) {
        reader.H();
        reader.skip(size_t{size} * 8);
    }
}

void skipGraphic(BitReader& reader, ObjectFrame& frame) {
    frame.graphicBit = reader.position();
    if (!reader.B())
        return;
    frame.graphicSize = reader.RL();
    frame.graphicBit = reader.position();
    reader.skip(frame.graphicSize * 8);
}

void readBitSize(BitReader& reader, ObjectFrame& frame) {
    frame.bitSizeBit = reader.position();
    frame.handlesBit = frame.dataBit + reader.RL();
}

/// Who owns an entity, and whether its neighbours are stored.
void readBonds(BitReader& reader, const FrameRow& row, ObjectFrame& frame) {
    CommonEntity& entity = frame.entity;
    entity.mode = static_cast<EntityMode>(reader.BB());
    frame.reactorCount = reader.BL();
    if (row.linetypeByLayerBit)
        entity.linetypeByLayer = reader.B();
    frame.nolinksBit = reader.position();
    entity.nolinks = reader.B();
}

void readCommonEntity(BitReader& reader, const FrameRow& row, ObjectFrame& frame) {
    CommonEntity& entity = frame.entity;
    readBonds(reader, row, frame);
    entity.color = reader.BS();
    entity.linetypeScale = reader.BD();
    if (!row.linetypeByLayerBit) {
        entity.linetypeFlags = static_cast<uint8_t>(reader.BB());
        entity.plotStyleFlags = static_cast<uint8_t>(reader.BB());
    }
    entity.invisible = reader.BS();
    if (!row.linetypeByLayerBit)
        entity.lineWeight = reader.RC();
}

/// Reads previous and next where they are stored; else they are the neighbours by number.
void readLinks(BitReader& reader, const ObjectFrame& frame, CommonHandles& handles) {
    handles.linksBit = reader.position();
    if (frame.entity.nolinks) {
        handles.previous = frame.handle - 1;
        handles.next = frame.handle + 1;
    } else {
        handles.previous = reader.H().absolute(frame.handle);
        handles.next = reader.H().absolute(frame.handle);
    }
    handles.linksEndBit = reader.position();
}

void readEntityHandles(BitReader& reader, const ObjectFrame& frame, CommonHandles& handles) {
    const FrameRow& row = rowOf(frame.version);
    const CommonEntity& entity = frame.entity;
    if (!row.linksBehindLinetype)
        readLinks(reader, frame, handles);
    handles.layer = reader.H().absolute(frame.handle);
    const bool ownLinetype = row.linetypeByLayerBit ? !entity.linetypeByLayer : entity.linetypeFlags == 3;
    if (ownLinetype)
        handles.linetype = reader.H().absolute(frame.handle);
    if (row.linksBehindLinetype)
        readLinks(reader, frame, handles);
    if (entity.plotStyleFlags == 3)
        handles.plotStyle = reader.H().absolute(frame.handle);
}

/// What comes before the common data; `reader` stands behind it then. False when it isn't that of one record.
bool readStart(std::span<const uint8_t> record, const FrameContext& context, ObjectFrame& frame, BitReader& reader) {
    constexpr size_t kShortest = 4, kChecksum = 2;
    if (record.size() < kShortest)
        return false;
    const size_t endBit = (record.size() - kChecksum) * 8;
    reader = BitReader(record.data(), 0, endBit);
    const uint32_t size = reader.MS();
    if (reader.failed() || reader.remaining() != size_t{size} * 8)
        return false;
    // One by one: to clear the whole of it first takes as long as reading it.
    frame.entity = {};
    frame.reactorCount = 0;
    frame.graphicBit = frame.graphicSize = frame.nolinksBit = frame.fieldsBit = 0;
    frame.version = context.version();
    frame.endBit = endBit;
    frame.dataBit = reader.position();
    const FrameRow& row = rowOf(frame.version);
    frame.type = reader.BS();
    frame.isEntity = context.isEntity(frame.type);
    if (row.bitSizeBehindType)
        readBitSize(reader, frame);
    frame.handle = reader.H().value;
    frame.eedBit = reader.position();
    skipEed(reader);
    frame.eedEndBit = reader.position();
    if (frame.isEntity)
        skipGraphic(reader, frame);
    if (!row.bitSizeBehindType)
        readBitSize(reader, frame);
    frame.commonBit = reader.position();
    return true;
}

/// Notes where the fields begin, and tells whether they can lie between that and the handles.
bool endsWell(const BitReader& reader, ObjectFrame& frame) {
    frame.fieldsBit = reader.position();
    return !reader.failed() && frame.fieldsBit <= frame.handlesBit && frame.handlesBit <= frame.endBit;
}

void appendRecord(const BitWriter& data, std::vector<uint8_t>& out) {
    const size_t begin = out.size();
    BitWriter size;
    size.MS(static_cast<uint32_t>(data.data().size()));
    out.insert(out.end(), size.data().begin(), size.data().end());
    out.insert(out.end(), data.data().begin(), data.data().end());
    const uint16_t crc = crc16(kCrcSeed, out.data() + begin, out.size() - begin);
    out.push_back(static_cast<uint8_t>(crc));
    out.push_back(static_cast<uint8_t>(crc >> 8));
}

} // namespace

FrameContext::FrameContext(Version version, std::span<const ClassRecord> classes) : version_(version) {
    for (const ClassRecord& record : classes) {
        if (!record.isEntity() || record.number < kFirstClassNumber)
            continue;
        const size_t index = record.number - kFirstClassNumber;
        if (index >= entityClasses_.size())
            entityClasses_.resize(index + 1);
        entityClasses_[index] = true;
    }
}

bool FrameContext::isEntity(uint16_t type) const {
    if (type < kFirstClassNumber)
        return isFixedEntity(type);
    const size_t index = type - kFirstClassNumber;
    return index < entityClasses_.size() && entityClasses_[index];
}

bool parseFrame(std::span<const uint8_t> record, const FrameContext& context, ObjectFrame& frame) {
    BitReader reader(nullptr, 0, 0);
    if (!readStart(record, context, frame, reader))
        return false;
    if (frame.isEntity)
        readCommonEntity(reader, rowOf(frame.version), frame);
    else
        frame.reactorCount = reader.BL();
    return endsWell(reader, frame);
}

bool readNeighbours(std::span<const uint8_t> record, const FrameContext& context, Neighbours& neighbours) {
    ObjectFrame frame;
    BitReader reader(nullptr, 0, 0);
    if (!readStart(record, context, frame, reader) || !frame.isEntity)
        return false;
    // Of the common data these alone say where the links stand.
    readBonds(reader, rowOf(frame.version), frame);
    if (!endsWell(reader, frame))
        return false;
    if (frame.entity.nolinks) {
        neighbours = {frame.entity.mode, 0, frame.handle - 1, frame.handle + 1};
        BitReader references(record.data(), frame.handlesBit, frame.endBit);
        if (frame.entity.mode == EntityMode::OwnerStored)
            neighbours.owner = references.H().absolute(frame.handle);
        return !references.failed();
    }
    CommonHandles handles;
    if (!readCommonHandles(record, frame, handles))
        return false;
    neighbours = {frame.entity.mode, handles.owner, handles.previous, handles.next};
    return true;
}

bool readCommonHandles(std::span<const uint8_t> record, const ObjectFrame& frame, CommonHandles& handles) {
    // One by one, as in readStart; the others are set in any case.
    handles.owner = handles.previous = handles.next = handles.layer = handles.linetype = handles.plotStyle = 0;
    handles.linksBit = handles.linksEndBit = 0;
    BitReader reader(record.data(), frame.handlesBit, frame.endBit);
    if (!frame.isEntity || frame.entity.mode == EntityMode::OwnerStored)
        handles.owner = reader.H().absolute(frame.handle);
    handles.reactorsBit = reader.position();
    // A reference takes a byte at least, so a count beyond the record ends here and not in a long loop.
    if (frame.reactorCount > reader.remaining() / 8)
        return false;
    for (uint32_t i = 0; i < frame.reactorCount; ++i)
        reader.H();
    handles.xdictionary = reader.H().absolute(frame.handle);
    if (frame.isEntity)
        readEntityHandles(reader, frame, handles);
    handles.typeBit = reader.position();
    return !reader.failed();
}

std::optional<std::vector<uint8_t>> patchLinks(std::span<const uint8_t> record, const FrameContext& context,
                                               uint64_t previous, uint64_t next) {
    ObjectFrame frame;
    CommonHandles handles;
    if (!parseFrame(record, context, frame) || !frame.isEntity || !readCommonHandles(record, frame, handles))
        return std::nullopt;
    if (handles.previous == previous && handles.next == next)
        return std::vector<uint8_t>(record.begin(), record.end());
    const uint8_t* bits = record.data();
    BitWriter data;
    data.reserve(record.size() + 16);
    data.copyBits(bits, frame.dataBit, frame.nolinksBit);
    data.B(false);
    // References are whole bytes, so the bits behind them keep their places in the last byte.
    data.copyBits(bits, frame.nolinksBit + 1, handles.linksBit);
    data.H(4, previous);
    data.H(4, next);
    data.copyBits(bits, handles.linksEndBit, frame.endBit);
    data.alignByte();
    std::vector<uint8_t> patched;
    patched.reserve(data.data().size() + 6);
    appendRecord(data, patched);
    return patched;
}

void sealObject(BitWriter& data, size_t bitSizeBit, const BitWriter& handles, std::vector<uint8_t>& out) {
    data.patchRL(bitSizeBit, static_cast<uint32_t>(data.position()));
    data.copyBits(handles.data().data(), 0, handles.position());
    data.alignByte();
    appendRecord(data, out);
}

} // namespace vndk::dwg
