#pragma once
/// What a drawing holds, object by object, to compare two states of it or a drawing with its file.

#include <map>
#include <memory>
#include <string>

#include "db/block_reference.h"
#include "db/polylines.h"
#include "db/stand_in.h"
#include "db/stub.h"
#include "dwg/drawing_source.h"
#include "dwg/header_section.h"

namespace vndk::test {

/// By handle: class, owner and fields of every object that isn't erased or owned by an erased one. Under 0 the header's
/// variables, but for the next free handle and the time of the last change.
using DrawingDigest = std::map<uint64_t, std::string>;

namespace detail {

inline std::string handlesOf(const std::vector<AcDbObjectId>& ids) {
    std::string text;
    for (const AcDbObjectId id : ids)
        if (!id.isNull() && !id.isErased())
            text += " " + std::to_string(id.handle().value());
    return text;
}

/// The order of what an object holds, which stands in its neighbours' links in a file.
inline std::string contentsOf(const AcDbObject& object) {
    if (const auto* const record = AcDbBlockTableRecord::cast(&object))
        return handlesOf(record->entities());
    if (const auto* const reference = AcDbBlockReference::cast(&object))
        return handlesOf(reference->attributes());
    const auto* const polyline = AcDbVertexOwner::cast(&object);
    return polyline ? handlesOf(polyline->vertices()) : std::string();
}

/// Whether the object is erased or one of its owners is.
inline bool goesWithErased(AcDbDatabase& database, AcDbStub* stub) {
    constexpr int kDeepest = 16;
    for (int depth = 0; stub && depth < kDeepest; ++depth) {
        if (stub->has(kStubErased))
            return true;
        const AcDbObject* const object = database.objectOf(*stub);
        stub = object ? object->ownerId().stub() : nullptr;
    }
    return false;
}

inline std::string fieldsOf(const AcDbObject& object, dwg::ObjectCodec& codec) {
    std::vector<uint8_t> bytes;
    std::string items;
    if (const AcDbStandInClass* const standIn = acdbStandInOf(object.isA())) {
        // As the ordinary object with its own items: encoding the object itself would register the application.
        const std::unique_ptr<AcRxObject> made(standIn->ordinary->create());
        auto* const ordinary = AcDbObject::cast(made.get());
        dwg::findTypeOf(standIn->ordinary, nullptr)->assignBase(*ordinary, object);
        AcDbXDataWriter writer(items);
        dynamic_cast<const AcDbStandIn&>(object).writeStandIn(writer);
        codec.encode(*ordinary, {}, bytes);
    } else if (!codec.encode(object, {}, bytes)) {
        const AcDbStub& stub = *object.objectId().stub();
        bytes.assign(stub.bytes, stub.bytes + stub.byteCount);
    }
    return std::string(bytes.begin(), bytes.end()) + items;
}

} // namespace detail

/// Decodes everything; changes nothing.
inline DrawingDigest digestOf(AcDbDatabase& database) {
    DrawingDigest digest;
    dwg::ObjectCodec codec(database, dwg::Version::R15, dwg::TextForm(), dwg::sourceOf(database).codec().classes());
    // What names an erased object, or what one owns, names nothing, as in a file.
    for (AcDbStub& stub : database.stubs())
        if (detail::goesWithErased(database, &stub))
            stub.set(kStubLeftOut);
    for (AcDbStub& stub : database.stubs()) {
        const AcDbObject* const object = stub.has(kStubLeftOut) ? nullptr : database.objectOf(stub);
        if (!object)
            continue;
        const std::string contents = detail::contentsOf(*object);
        digest[stub.handle.value()] = std::string(object->isA()->name()) + " of " +
                                      std::to_string(object->ownerId().handle().value()) + ":" + contents + " | " +
                                      detail::fieldsOf(*object, codec);
    }
    for (AcDbStub& stub : database.stubs())
        stub.clear(kStubLeftOut);
    dwg::HeaderVariables header = database.header();
    header.HANDSEED = 0;
    header.TDUPDATE = {};
    // A save tells them anew, and they never shrink.
    header.EXTMIN = header.EXTMAX = header.PEXTMIN = header.PEXTMAX = {};
    dwg::BitWriter writer;
    dwg::writeHeaderVariables(writer, dwg::Version::R15, header);
    digest[0].assign(writer.data().begin(), writer.data().end());
    return digest;
}

/// What differs first, for people; empty for nothing.
inline std::string digestDifference(const DrawingDigest& a, const DrawingDigest& b) {
    const auto shown = [](const std::string& text) { return text.substr(0, text.find(" | ")); };
    auto left = a.begin();
    auto right = b.begin();
    for (; left != a.end() && right != b.end() && *left == *right; ++left, ++right) {
    }
    if (left == a.end() && right == b.end())
        return {};
    std::string text;
    if (left != a.end())
        text += "first has " + std::to_string(left->first) + " " + shown(left->second);
    if (right != b.end())
        text += ", second has " + std::to_string(right->first) + " " + shown(right->second);
    return text + ", of " + std::to_string(a.size()) + " and " + std::to_string(b.size());
}

} // namespace vndk::test
