// Fields of multilines.
#include "db/mline.h"
#include "dwg/object_types.h"

namespace vndk::dwg {

namespace {

using namespace code;
using Mline = AcDbMline;

void readPlaces(FieldReader& r, std::vector<double>& places) {
    places.resize(r.count(r.bits.BS(), 2));
    for (double& place : places)
        place = BD::read<double>(r);
}

void writePlaces(FieldWriter& w, const std::vector<double>& places) {
    w.bits.BS(static_cast<uint16_t>(places.size()));
    for (const double place : places)
        w.bits.BD(place);
}

void readVertices(FieldReader& r, Mline::Data& mline) {
    mline.lines = r.bits.RC();
    constexpr size_t kLeastBits = 18; // nine numbers of two bits
    mline.vertices.resize(r.count(r.bits.BS(), kLeastBits + size_t{mline.lines} * 4));
    for (Mline::Vertex& vertex : mline.vertices) {
        vertex.point = P3::read<AcGePoint3d>(r);
        vertex.direction = P3::read<AcGeVector3d>(r);
        vertex.miter = P3::read<AcGeVector3d>(r);
        vertex.segments.resize(mline.lines);
        for (Mline::Segment& segment : vertex.segments) {
            readPlaces(r, segment.line);
            readPlaces(r, segment.fill);
        }
    }
}

void writeVertices(FieldWriter& w, const Mline::Data& mline) {
    w.bits.RC(mline.lines);
    w.bits.BS(static_cast<uint16_t>(mline.vertices.size()));
    for (const Mline::Vertex& vertex : mline.vertices) {
        P3::write(w, vertex.point);
        P3::write(w, vertex.direction);
        P3::write(w, vertex.miter);
        for (const Mline::Segment& segment : vertex.segments) {
            writePlaces(w, segment.line);
            writePlaces(w, segment.fill);
        }
    }
}

constexpr FieldRow kMlineRows[] = {
    row<BD, &Mline::Data::scale>("scale"),     row<RC, &Mline::Data::justification>("justification"),
    row<P3, &Mline::Data::base>("base point"), row<P3, &Mline::Data::normal>("normal"),
    row<BS, &Mline::Data::flags>("flags"),     customRow<Mline::Data, readVertices, writeVertices>("vertices"),
    row<H<5>, &Mline::Data::style>("style"),
};

constexpr ObjectType kTypes[] = {dataType<AcDbMline, kMlineRows>(47, "MLINE")};

} // namespace

std::span<const ObjectType> mlineTypes() { return kTypes; }

} // namespace vndk::dwg
