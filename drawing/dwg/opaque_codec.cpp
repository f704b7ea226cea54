#include "dwg/opaque_codec.h"

#include "db/stub.h"

namespace vndk::dwg {

namespace {

constexpr unsigned kFirstRelativeCode = 6;

} // namespace

std::string remainingBits(BitReader& bits) {
    std::string bytes;
    bytes.reserve((bits.remaining() + 7) / 8);
    while (bits.remaining() >= 8)
        bytes.push_back(static_cast<char>(bits.RC()));
    if (const auto rest = static_cast<unsigned>(bits.remaining()))
        bytes.push_back(static_cast<char>(bits.take(rest) << (8 - rest)));
    return bytes;
}

void readOpaqueFields(FieldReader& reader, AcDbOpaqueFields& fields) {
    fields.bitCount = static_cast<uint32_t>(reader.bits.remaining());
    fields.bits = remainingBits(reader.bits);
    // The last byte is filled up, so less than a byte is no reference any more.
    while (reader.handles.remaining() >= 8) {
        const HandleRef stored = reader.handles.H();
        if (reader.handles.failed())
            return;
        AcDbOpaqueFields::Reference reference;
        // A relative code doesn't tell its kind.
        reference.code = stored.code >= kFirstRelativeCode ? 4 : stored.code;
        const uint64_t handle = stored.absolute(reader.own);
        reference.id = reader.database.idOf(handle);
        reference.danglingHandle = reference.id.isNull() ? handle : 0;
        fields.references.push_back(reference);
    }
}

void writeOpaqueFields(FieldWriter& writer, const AcDbOpaqueFields& fields) {
    writer.bits.copyBits(reinterpret_cast<const uint8_t*>(fields.bits.data()), 0, fields.bitCount);
    for (const AcDbOpaqueFields::Reference& reference : fields.references)
        writer.handles.H(reference.code,
                         reference.id.isNull() ? reference.danglingHandle : writtenHandle(reference.id));
}

uint16_t peekType(const AcDbStub& stub) {
    if (!stub.bytes || stub.byteCount < 4)
        return 0;
    BitReader reader(stub.bytes, 0, size_t{stub.byteCount} * 8);
    reader.MS();
    const uint16_t type = reader.BS();
    return reader.failed() ? uint16_t{0} : type;
}

} // namespace vndk::dwg
