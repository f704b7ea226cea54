// Fields of leaders, tolerances and shapes.
#include "db/leader.h"
#include "db/shape.h"
#include "dwg/object_types.h"

namespace vndk::dwg {

namespace {

using namespace code;
using LeaderData = AcDbLeader::Data;

constexpr VersionMask kFrom14 = kOnly15 | maskOf(Version::R14);

void readVertices(FieldReader& r, LeaderData& leader) {
    // A point takes two bits for each coordinate at least.
    leader.vertices.resize(r.count(r.bits.BL(), 6));
    for (AcGePoint3d& vertex : leader.vertices)
        vertex = P3::read<AcGePoint3d>(r);
}

void writeVertices(FieldWriter& w, const LeaderData& leader) {
    w.bits.BL(static_cast<uint32_t>(leader.vertices.size()));
    for (const AcGePoint3d& vertex : leader.vertices)
        P3::write(w, vertex);
}

void readOldTail(FieldReader& r, LeaderData& leader) {
    leader.arrowSize = BD::read<double>(r);
    leader.oldBits[0] = r.bits.B();
    leader.oldBits[1] = r.bits.B();
    leader.oldShort = r.bits.BS();
    leader.byBlockColor = r.bits.BS();
    leader.oldBits[2] = r.bits.B();
    leader.oldBits[3] = r.bits.B();
}

void writeOldTail(FieldWriter& w, const LeaderData& leader) {
    w.bits.BD(leader.arrowSize);
    w.bits.B(leader.oldBits[0]);
    w.bits.B(leader.oldBits[1]);
    w.bits.BS(leader.oldShort);
    w.bits.BS(leader.byBlockColor);
    w.bits.B(leader.oldBits[2]);
    w.bits.B(leader.oldBits[3]);
}

void readLastBits(FieldReader& r, LeaderData& leader) {
    for (bool& bit : leader.lastBits)
        bit = r.bits.B();
}

void writeLastBits(FieldWriter& w, const LeaderData& leader) {
    for (const bool bit : leader.lastBits)
        w.bits.B(bit);
}

constexpr FieldRow kLeaderRows[] = {
    row<B, &LeaderData::unknownBit>("unknown"),
    row<BS, &LeaderData::annotationType>("annotation type"),
    row<BS, &LeaderData::pathType>("path type"),
    customRow<LeaderData, readVertices, writeVertices>("vertices"),
    row<P3, &LeaderData::origin>("origin"),
    row<P3, &LeaderData::normal>("normal"),
    row<P3, &LeaderData::xDirection>("x direction"),
    row<P3, &LeaderData::blockOffset>("offset to a block"),
    row<P3, &LeaderData::endOffset>("end point projection", kFrom14),
    row<BD, &LeaderData::gap>("DIMGAP", kOnly1314),
    row<BD, &LeaderData::boxHeight>("box height"),
    row<BD, &LeaderData::boxWidth>("box width"),
    row<B, &LeaderData::hookAlongX>("hook line on x direction"),
    row<B, &LeaderData::hasArrowHead>("arrow head"),
    row<BS, &LeaderData::arrowHeadType>("arrow head type"),
    customRow<LeaderData, readOldTail, writeOldTail>("DIMASZ and more", kOnly1314),
    customRow<LeaderData, readLastBits, writeLastBits>("unknown", kOnly15),
    row<H<2>, &LeaderData::annotation>("annotation"),
    row<H<5>, &LeaderData::style>("style"),
};

using ToleranceData = AcDbFcf::Data;

constexpr FieldRow kToleranceRows[] = {
    row<BS, &ToleranceData::unknownShort>("unknown", kOnly1314),
    row<BD, &ToleranceData::height>("height", kOnly1314),
    row<BD, &ToleranceData::gap>("DIMGAP", kOnly1314),
    row<P3, &ToleranceData::location>("insertion point"),
    row<P3, &ToleranceData::direction>("x direction"),
    row<P3, &ToleranceData::normal>("normal"),
    row<TV, &ToleranceData::text>("text"),
    row<H<5>, &ToleranceData::style>("style"),
};

using ShapeData = AcDbShape::Data;

constexpr FieldRow kShapeRows[] = {
    row<P3, &ShapeData::position>("insertion point"),
    row<BD, &ShapeData::size>("scale"),
    row<BD, &ShapeData::rotation>("rotation"),
    row<BD, &ShapeData::widthFactor>("width factor"),
    row<BD, &ShapeData::oblique>("oblique angle"),
    row<BD, &ShapeData::thickness>("thickness"),
    row<BS, &ShapeData::number>("shape number"),
    row<P3, &ShapeData::normal>("normal"),
    row<H<5>, &ShapeData::style>("style"),
};

constexpr ObjectType kTypes[] = {
    dataType<AcDbShape, kShapeRows>(33, "SHAPE"),
    dataType<AcDbLeader, kLeaderRows>(45, "LEADER"),
    dataType<AcDbFcf, kToleranceRows>(46, "TOLERANCE"),
};

} // namespace

std::span<const ObjectType> annotationTypes() { return kTypes; }

} // namespace vndk::dwg
