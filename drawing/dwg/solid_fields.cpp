// Fields of solids, regions and bodies.
#include "acis/sat_text.h"
#include "db/modeler_geometry.h"
#include "dwg/object_types.h"
#include "dwg/opaque_codec.h"
#include "dwg/solid_rest.h"

namespace vndk::dwg {

namespace {

using Data = AcDbModelerGeometry::Data;

constexpr uint16_t kTextForm = 1;
constexpr uint32_t kLargestBlock = 4096;

/// Blocks, each with its size, up to one of size 0.
void readText(FieldReader& r, Data& solid) {
    std::string stored;
    while (const uint32_t size = r.count(r.bits.BL(), 8)) {
        const size_t place = stored.size();
        stored.resize(place + size);
        r.bits.bytes(stored.data() + place, size);
        solid.blocks.push_back(size);
    }
    solid.text = acis::scrambled(stored);
}

void writeText(FieldWriter& w, const Data& solid) {
    const std::string stored = acis::scrambled(solid.text);
    std::vector<uint32_t> blocks = solid.blocks;
    if (blocks.empty())
        for (size_t left = stored.size(); left > 0; left -= blocks.back())
            blocks.push_back(static_cast<uint32_t>(std::min<size_t>(left, kLargestBlock)));
    size_t place = 0;
    for (const uint32_t size : blocks) {
        w.bits.BL(size);
        w.bits.bytes(stored.data() + place, size);
        place += size;
    }
    w.bits.BL(0);
}

void readSolid(FieldReader& r, Data& solid) {
    solid.empty = r.bits.B();
    if (!solid.empty) {
        solid.unknownBit = r.bits.B();
        solid.version = r.bits.BS();
        if (solid.version == kTextForm)
            readText(r, solid);
    }
    solid.restBits = static_cast<uint32_t>(r.bits.remaining());
    solid.rest = remainingBits(r.bits);
}

void writeSolid(FieldWriter& w, const Data& solid) {
    w.bits.B(solid.empty);
    if (!solid.empty) {
        w.bits.B(solid.unknownBit);
        w.bits.BS(solid.version);
        if (solid.version == kTextForm)
            writeText(w, solid);
    }
    w.bits.copyBits(reinterpret_cast<const uint8_t*>(solid.rest.data()), 0, solid.restBits);
}

constexpr FieldRow kSolidRows[] = {customRow<Data, readSolid, writeSolid>("solid")};

constexpr ObjectType kTypes[] = {
    dataType<AcDbRegion, kSolidRows>(37, "REGION"),
    dataType<AcDb3dSolid, kSolidRows>(38, "3DSOLID"),
    dataType<AcDbBody, kSolidRows>(39, "BODY"),
};

} // namespace

// A picture begins with a bit whether there is one, a point if the next bit says so, and how many isolines its curved
// faces have. Then come its wires and silhouettes, and a bit that says that there is no second text.
void moveSolidRest(AcDbModelerGeometry::Data& solid, const AcGeMatrix3d& matrix) {
    BitReader r(reinterpret_cast<const uint8_t*>(solid.rest.data()), 0, solid.restBits);
    const bool pictured = r.B(), placed = pictured && r.B();
    AcGePoint3d point;
    if (placed) {
        point.x = r.BD();
        point.y = r.BD();
        point.z = r.BD();
    }
    const uint32_t isolines = pictured ? r.BL() : 0;
    BitWriter w;
    w.B(pictured && !r.failed());
    if (pictured && !r.failed()) {
        w.B(placed);
        if (placed) {
            point = matrix * point;
            for (const double value : {point.x, point.y, point.z})
                w.BD(value);
        }
        w.BL(isolines);
        w.B(true); // isolines are wanted
        w.BL(0);   // wires
        w.BL(0);   // silhouettes
    }
    w.B(true); // no second text
    solid.restBits = static_cast<uint32_t>(w.position());
    solid.rest.assign(w.data().begin(), w.data().end());
}

std::span<const ObjectType> solidTypes() { return kTypes; }

} // namespace vndk::dwg
