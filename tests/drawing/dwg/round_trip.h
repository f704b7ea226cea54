#pragma once
/// Compares an object's record with the one that the codec makes of it again.

#include <string>
#include <vector>

#include "db/database.h"
#include "db/stub.h"
#include "dwg/drawing_source.h"

namespace vndk::test {

/// Two records say the same: every data bit agrees, and every handle means the same object. How a handle is stored
/// (absolute or relative to the own one) may differ. Returns what differs, empty for nothing.
inline std::string recordDifference(std::span<const uint8_t> a, std::span<const uint8_t> b,
                                    const dwg::FrameContext& context) {
    dwg::ObjectFrame fa, fb;
    if (!dwg::parseFrame(a, context, fa) || !dwg::parseFrame(b, context, fb))
        return "a frame can't be read";
    const size_t bits = fa.handlesBit - fa.dataBit;
    if (bits != fb.handlesBit - fb.dataBit)
        return "data of " + std::to_string(bits) + " and " + std::to_string(fb.handlesBit - fb.dataBit) + " bits";
    dwg::BitReader ra(a.data(), fa.dataBit, fa.handlesBit), rb(b.data(), fb.dataBit, fb.handlesBit);
    for (size_t i = 0; i < bits; ++i)
        if (ra.B() != rb.B())
            return "data bit " + std::to_string(i) + " of " + std::to_string(bits) + ", fields begin at " +
                   std::to_string(fa.fieldsBit - fa.dataBit);
    dwg::BitReader ha(a.data(), fa.handlesBit, fa.endBit), hb(b.data(), fb.handlesBit, fb.endBit);
    for (int i = 0; ha.remaining() >= 8 || hb.remaining() >= 8; ++i) {
        const uint64_t va = ha.H().absolute(fa.handle), vb = hb.H().absolute(fb.handle);
        if (va != vb || ha.failed() != hb.failed())
            return "handle " + std::to_string(i) + ": " + std::to_string(va) + " and " + std::to_string(vb);
    }
    return {};
}

/// Decodes an object of a file and encodes it again. Returns what differs; "opaque" objects are compared too.
inline std::string roundTripDifference(AcDbDatabase& database, AcDbStub& stub) {
    dwg::ObjectCodec& codec = dwg::sourceOf(database).codec();
    const AcDbObject* const object = database.objectOf(stub);
    const std::span<const uint8_t> record(stub.bytes, stub.byteCount);
    dwg::ObjectFrame frame;
    dwg::CommonHandles handles;
    if (!dwg::parseFrame(record, codec.context(), frame) || !dwg::readCommonHandles(record, frame, handles))
        return "the frame can't be read";
    std::vector<uint8_t> encoded;
    if (!codec.encode(*object, {handles.previous, handles.next, frame.entity.nolinks}, encoded))
        return "it isn't encoded";
    return recordDifference(record, encoded, codec.context());
}

} // namespace vndk::test
