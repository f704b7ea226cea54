// One object of a small drawing with other bytes: read, decoded, measured, written. What was written must be readable
// again, each object as one of its class. The first byte chooses the object, the second whether the rest is its data
// or changes bits of them.

#include <cstdio>
#include <cstdlib>

#include "db/block_reference.h"
#include "db/curves.h"
#include "db/database.h"
#include "db/dimensions.h"
#include "db/hatch.h"
#include "db/hatch_contours.h"
#include "db/helix.h"
#include "db/leader.h"
#include "db/mline.h"
#include "db/modeler_geometry.h"
#include "db/polylines.h"
#include "db/raster_image.h"
#include "db/shape.h"
#include "db/stub.h"
#include "db/text.h"
#include "dwg/bit_writer.h"
#include "dwg/crc.h"
#include "dwg/drawing_reader.h"
#include "dwg/drawing_writer.h"
#include "dwg/file_writer.h"

using namespace vndk::dwg;

namespace {

constexpr size_t kMostDashes = 1000;

AcDbObjectId append(AcDbObjectId block, AcDbEntity* entity) {
    AcDbObjectId id;
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
    record->appendAcDbEntity(id, entity);
    entity->close();
    return id;
}

/// One of each kind, with its picture.
void appendDimensions(AcDbObjectId space) {
    append(space, new AcDbAlignedDimension({0, 0, 0}, {2, 0, 0}, {2, 1, 0}));
    append(space, new AcDbRotatedDimension(0.5, {0, 0, 0}, {2, 0, 0}, {2, 1, 0}, "<> wide"));
    auto* const corner = new AcDb3PointAngularDimension;
    corner->setXLine1Point({1, 0, 0});
    corner->setXLine2Point({0, 1, 0});
    corner->setArcPoint({1, 1, 0});
    append(space, corner);
    auto* const lines = new AcDb2LineAngularDimension;
    lines->setXLine1End({1, 0, 0});
    lines->setXLine2End({0, 1, 0});
    lines->setArcPoint({1, 1, 0});
    append(space, lines);
    auto* const radius = new AcDbRadialDimension;
    radius->setChordPoint({1, 1, 0});
    append(space, radius);
    auto* const diameter = new AcDbDiametricDimension;
    diameter->setChordPoint({1, 1, 0});
    append(space, diameter);
    auto* const ordinate = new AcDbOrdinateDimension;
    ordinate->setLeaderEndPoint({3, 1, 0});
    append(space, ordinate);
}

void appendAreasAndSolids(AcDbObjectId space) {
    AcDbHatch::Data area;
    AcDbHatch::Loop loop;
    loop.flags = AcDbHatch::kPolyline | AcDbHatch::kDerived;
    loop.bulges = true;
    loop.vertices = {{{0, 0}, 0.5}, {{4, 0}, 0}, {{0, 4}, 0}};
    area.loops = {loop, {}};
    area.loops[1].edges = {
        AcDbHatch::LineEdge{{1, 1}, {2, 1}}, AcDbHatch::ArcEdge{{1, 1}, 1, 0, 1, false},
        AcDbHatch::EllipseEdge{{1, 1}, {1, 0}, 0.5, 0, 1, true},
        AcDbHatch::SplineEdge{2, true, false, {0, 0, 0, 1, 1, 1}, {{0, 0}, {1, 1}, {2, 0}}, {1, 2, 1}}};
    area.lines = {{0.5, {0, 0}, {0, 0.25}, {1, -0.5}}};
    area.seeds = {{1, 1}};
    auto* const hatch = new AcDbHatch;
    hatch->setFileData(area);
    append(space, hatch);
    AcDbMline::Data lines;
    lines.lines = 2;
    lines.vertices.resize(2);
    for (AcDbMline::Vertex& vertex : lines.vertices)
        vertex = {{1, 2, 0}, {1, 0, 0}, {0, 1, 0}, {{{0.5, 0, 1}, {1}}, {{-0.5, 0}, {}}}};
    auto* const mline = new AcDbMline;
    mline->setFileData(lines);
    append(space, mline);
    AcDbModelerGeometry::Data body;
    body.empty = false;
    body.text = "106 5 1 0\nbody $-1 $1 $-1 $-1 #\nlump $-1 $-1 $2 $0 #\nshell $-1 $-1 $-1 $3 $1 #\n"
                "face $-1 $-1 $-1 $2 $-1 $4 0 0 #\nsphere-surface $-1 0 0 0 2 1 0 0 0 0 1 0 I I I I #\n";
    auto* const solid = new AcDb3dSolid;
    solid->setFileData(body);
    append(space, solid);
    append(space, new AcDbWipeout);
    append(space, new AcDbHelix);
}

/// A drawing with an object of most kinds.
std::shared_ptr<FileImage> smallDrawing() {
    AcDbDatabase database;
    AcDbObjectId block;
    {
        const AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId(), AcDb::kForWrite);
        auto* const record = new AcDbBlockTableRecord;
        record->setName("B");
        table->add(block, record);
        record->close();
    }
    append(block, new AcDbAttributeDefinition({1, 1, 0}, "text", "TAG", "prompt"));
    const AcDbObjectId space = database.modelSpaceId();
    const AcDbObjectId insert = append(space, new AcDbBlockReference({1, 2, 3}, block));
    {
        const AcDbObjectPointer<AcDbBlockReference> open(insert, AcDb::kForWrite);
        for (const char* const tag : {"A", "B"}) {
            auto* const attribute = new AcDbAttribute({1, 2, 0}, "value", tag);
            open->appendAttribute(attribute);
            attribute->close();
        }
    }
    auto* const flat = new AcDbPolyline;
    for (unsigned i = 0; i < 3; ++i)
        flat->addVertexAt(i, {i * 1.5, i * 0.25}, 0.5, i, 2);
    append(space, flat);
    append(space, new AcDbText({0, 0, 1}, "a text"));
    append(space, new AcDbMText);
    append(space, new AcDbSpline);
    append(space, new AcDbEllipse);
    append(space, new AcDb3dPolyline);
    append(space, new AcDbMInsertBlock);
    appendDimensions(space);
    append(space, new AcDbFcf("{\\Fgdt;j}%%v0.5%%vA", {1, 2, 0}, AcGeVector3d::kZAxis, AcGeVector3d::kXAxis));
    append(space, new AcDbShape);
    auto* const leader = new AcDbLeader;
    for (const double x : {1.0, 2.5, 4.0})
        leader->appendVertex({x, x * x, 0});
    append(space, leader);
    appendAreasAndSolids(space);
    return *FileImage::parse(*writeDrawing(database), "small drawing");
}

/// A whole record around the data.
std::vector<uint8_t> framed(std::span<const uint8_t> data) {
    BitWriter writer;
    writer.MS(static_cast<uint32_t>(data.size()));
    writer.bytes(data.data(), data.size());
    const uint16_t crc = crc16(kCrcSeed, writer.data().data(), writer.data().size());
    writer.RS(crc);
    return writer.data();
}

std::vector<uint8_t> otherData(std::span<const uint8_t> record, bool whole, std::span<const uint8_t> input) {
    if (whole)
        return {input.begin(), input.end()};
    // Small records have a size field of two bytes.
    std::vector<uint8_t> data(record.begin() + 2, record.end() - 2);
    for (size_t i = 0; i < std::min(data.size(), input.size()); ++i)
        data[i] ^= input[i];
    return data;
}

/// Opens everything and writes all of it anew.
std::vector<uint8_t> encodeAll(AcDbDatabase& database) {
    for (size_t i = 0; i < database.stubs().size(); ++i) {
        AcDbStub& stub = database.stubs()[i];
        AcDbObject* const object = database.objectOf(stub);
        AcDbExtents box;
        if (const auto* const entity = AcDbEntity::cast(object))
            entity->getGeomExtents(box);
        if (const auto* const hatch = AcDbHatch::cast(object))
            vndk::db::patternDashes(hatch->data(), kMostDashes);
        if (const auto* const record = AcDbBlockTableRecord::cast(object))
            record->entities();
        if (const auto* const reference = AcDbBlockReference::cast(object))
            reference->attributes();
        stub.set(kStubModified);
    }
    const auto bytes = writeDrawing(database);
    if (!bytes)
        std::abort();
    return *bytes;
}

[[noreturn]] void complain(const AcDbStub& stub, const char* what) {
    std::fprintf(stderr, "object %llX: %s\n", static_cast<unsigned long long>(stub.handle.value()), what);
    std::abort();
}

void compare(AcDbDatabase& former, AcDbDatabase& later) {
    for (AcDbStub& stub : former.stubs()) {
        AcDbStub* const again = later.findStub(stub.handle);
        if (stub.has(kStubDecodeFailed) || !again)
            continue;
        if (again->has(kStubDecodeFailed) || later.objectOf(*again)->isA() != former.objectOf(stub)->isA())
            complain(stub, "isn't of its class any more");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::shared_ptr<FileImage> whole = smallDrawing();
    if (size < 3 || size > 2000)
        return 0;
    FileParts parts = partsOf(*whole);
    ObjectBytes& victim = parts.objects[data[0] % parts.objects.size()];
    const std::vector<uint8_t> record = framed(otherData(victim.bytes, data[1] & 1, {data + 2, size - 2}));
    victim.bytes = record;
    AcDbDatabase first(false), second(false), third(false);
    if (!readDrawing(first, *writeFile(parts), "damaged"))
        return 0;
    const bool again =
        readDrawing(second, encodeAll(first), "written") && readDrawing(third, encodeAll(second), "again");
    if (!again)
        std::abort();
    encodeAll(third);
    compare(second, third);
    return 0;
}
