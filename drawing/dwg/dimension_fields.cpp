// Fields of dimensions.
#include "db/dimensions.h"
#include "dwg/object_types.h"

namespace vndk::dwg {

namespace {

using namespace code;
using Data = AcDbDimension::Data;

constexpr FieldRow kCommonRows[] = {
    row<P3, &Data::normal>("normal"),
    row<RD2, &Data::textMiddle>("text midpoint"),
    row<BD, &Data::elevation>("elevation"),
    row<RC, &Data::flags>("flags"),
    row<TV, &Data::userText>("user text"),
    row<BD, &Data::textRotation>("text rotation"),
    row<BD, &Data::horizontalRotation>("horizontal direction"),
    row<P3, &Data::insertScale>("insertion scale"),
    row<BD, &Data::insertRotation>("insertion rotation"),
    row<BS, &Data::attachment>("attachment", kOnly15),
    row<BS, &Data::lineSpacingStyle>("line spacing style", kOnly15),
    row<BD, &Data::lineSpacingFactor>("line spacing factor", kOnly15),
    row<BD, &Data::measurement>("measurement", kOnly15),
    row<RD2, &Data::insertPoint>("insertion point"),
};

constexpr FieldRow kHandleRows[] = {
    row<H<5>, &Data::style>("style"),
    row<H<5>, &Data::block>("block"),
};

using Linear = AcDbAlignedDimension::Points;
using Rotated = AcDbRotatedDimension::Points;
using ThreePoints = AcDb3PointAngularDimension::Points;
using TwoLines = AcDb2LineAngularDimension::Points;
using Radial = AcDbRadialDimension::Points;
using Diametric = AcDbDiametricDimension::Points;
using Ordinate = AcDbOrdinateDimension::Points;

constexpr FieldRow kAlignedRows[] = {
    row<P3, &Linear::xLine1>("first extension line"),
    row<P3, &Linear::xLine2>("second extension line"),
    row<P3, &Linear::dimLine>("dimension line"),
    row<BD, &Linear::oblique>("oblique angle"),
};

constexpr FieldRow kRotatedRows[] = {
    customRow<Rotated, [](FieldReader& r, Rotated& p) { readRows(kAlignedRows, r, static_cast<Linear*>(&p)); },
              [](FieldWriter& w, const Rotated& p) { writeRows(kAlignedRows, w, static_cast<const Linear*>(&p)); }>(
        "as aligned"),
    row<BD, &Rotated::rotation>("rotation"),
};

constexpr FieldRow kThreePointRows[] = {
    row<P3, &ThreePoints::arc>("arc point"),
    row<P3, &ThreePoints::xLine1>("first side"),
    row<P3, &ThreePoints::xLine2>("second side"),
    row<P3, &ThreePoints::center>("vertex"),
};

constexpr FieldRow kTwoLineRows[] = {
    row<RD2, &TwoLines::arc>("arc point"),
    row<P3, &TwoLines::xLine1Start>("start of the first line"),
    row<P3, &TwoLines::xLine1End>("end of the first line"),
    row<P3, &TwoLines::xLine2Start>("start of the second line"),
    row<P3, &TwoLines::xLine2End>("end of the second line"),
};

constexpr FieldRow kRadialRows[] = {
    row<P3, &Radial::center>("center"),
    row<P3, &Radial::chord>("chord point"),
    row<BD, &Radial::leaderLength>("leader length"),
};

constexpr FieldRow kDiametricRows[] = {
    row<P3, &Diametric::chord>("chord point"),
    row<P3, &Diametric::farChord>("far chord point"),
    row<BD, &Diametric::leaderLength>("leader length"),
};

constexpr FieldRow kOrdinateRows[] = {
    row<P3, &Ordinate::origin>("origin"),
    row<P3, &Ordinate::feature>("feature"),
    row<P3, &Ordinate::leaderEnd>("leader end"),
    row<RC, &Ordinate::flags>("flags"),
};

template <class T, const auto& Rows>
AcDbObject* readDimension(FieldReader& r) {
    Data data;
    typename T::Points points;
    readRows(kCommonRows, r, &data);
    readRows(Rows, r, &points);
    readRows(kHandleRows, r, &data);
    auto* const dimension = new T;
    dimension->setFileData(std::move(data));
    dimension->setFilePoints(points);
    return dimension;
}

template <class T, const auto& Rows>
void writeDimension(FieldWriter& w, const AcDbObject& object) {
    const auto& dimension = static_cast<const T&>(object);
    writeRows(kCommonRows, w, &dimension.data());
    writeRows(Rows, w, &dimension.points());
    writeRows(kHandleRows, w, &dimension.data());
}

template <class T, const auto& Rows>
constexpr ObjectType dimensionType(uint16_t number) {
    return {number, "DIMENSION", &T::desc, &readDimension<T, Rows>, &writeDimension<T, Rows>, &assignBaseOf<T>};
}

constexpr ObjectType kTypes[] = {
    dimensionType<AcDbOrdinateDimension, kOrdinateRows>(20),
    dimensionType<AcDbRotatedDimension, kRotatedRows>(21),
    dimensionType<AcDbAlignedDimension, kAlignedRows>(22),
    dimensionType<AcDb3PointAngularDimension, kThreePointRows>(23),
    dimensionType<AcDb2LineAngularDimension, kTwoLineRows>(24),
    dimensionType<AcDbRadialDimension, kRadialRows>(25),
    dimensionType<AcDbDiametricDimension, kDiametricRows>(26),
};

} // namespace

std::span<const ObjectType> dimensionTypes() { return kTypes; }

} // namespace vndk::dwg
