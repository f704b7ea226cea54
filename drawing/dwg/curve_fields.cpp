// Fields of lines, circles, arcs, ellipses, rays, construction lines, splines and points.
#include "db/curves.h"
#include "db/helix.h"
#include "db/point.h"
#include "dwg/object_types.h"

namespace vndk::dwg {

namespace {

using namespace code;

// In release 15 the second point is stored by its difference to the first, and z only if it isn't 0.
void readLineEnds(FieldReader& r, AcDbLine::Data& line) {
    const bool flat = r.bits.B();
    line.start.x = r.number(r.bits.RD());
    line.end.x = r.number(r.bits.DD(line.start.x));
    line.start.y = r.number(r.bits.RD());
    line.end.y = r.number(r.bits.DD(line.start.y));
    if (flat)
        return;
    line.start.z = r.number(r.bits.RD());
    line.end.z = r.number(r.bits.DD(line.start.z));
}

void writeLineEnds(FieldWriter& w, const AcDbLine::Data& line) {
    const bool flat = line.start.z == 0 && line.end.z == 0;
    w.bits.B(flat);
    w.bits.RD(line.start.x);
    w.bits.DD(line.end.x, line.start.x);
    w.bits.RD(line.start.y);
    w.bits.DD(line.end.y, line.start.y);
    if (flat)
        return;
    w.bits.RD(line.start.z);
    w.bits.DD(line.end.z, line.start.z);
}

constexpr FieldRow kLineRows[] = {
    row<P3, &AcDbLine::Data::start>("start", kOnly1314),
    row<P3, &AcDbLine::Data::end>("end", kOnly1314),
    customRow<AcDbLine::Data, readLineEnds, writeLineEnds>("ends", kOnly15),
    row<BD, &AcDbLine::Data::thickness>("thickness", kOnly1314),
    row<P3, &AcDbLine::Data::normal>("normal", kOnly1314),
    row<BT, &AcDbLine::Data::thickness>("thickness", kOnly15),
    row<BE, &AcDbLine::Data::normal>("normal", kOnly15),
};

constexpr FieldRow kCircleRows[] = {
    row<P3, &AcDbCircle::Data::center>("center"),
    row<BD, &AcDbCircle::Data::radius>("radius"),
    row<BD, &AcDbCircle::Data::thickness>("thickness", kOnly1314),
    row<P3, &AcDbCircle::Data::normal>("normal", kOnly1314),
    row<BT, &AcDbCircle::Data::thickness>("thickness", kOnly15),
    row<BE, &AcDbCircle::Data::normal>("normal", kOnly15),
};

constexpr FieldRow kArcRows[] = {
    row<P3, &AcDbArc::Data::center>("center"),
    row<BD, &AcDbArc::Data::radius>("radius"),
    row<BD, &AcDbArc::Data::thickness>("thickness", kOnly1314),
    row<P3, &AcDbArc::Data::normal>("normal", kOnly1314),
    row<BT, &AcDbArc::Data::thickness>("thickness", kOnly15),
    row<BE, &AcDbArc::Data::normal>("normal", kOnly15),
    row<BD, &AcDbArc::Data::startAngle>("start angle"),
    row<BD, &AcDbArc::Data::endAngle>("end angle"),
};

constexpr FieldRow kEllipseRows[] = {
    row<P3, &AcDbEllipse::Data::center>("center"),
    row<P3, &AcDbEllipse::Data::majorAxis>("major axis"),
    row<P3, &AcDbEllipse::Data::normal>("normal"),
    row<BD, &AcDbEllipse::Data::ratio>("ratio"),
    row<BD, &AcDbEllipse::Data::startParam>("start parameter"),
    row<BD, &AcDbEllipse::Data::endParam>("end parameter"),
};

constexpr FieldRow kRayRows[] = {
    row<P3, &AcDbRay::Data::base>("point"),
    row<P3, &AcDbRay::Data::direction>("direction"),
};

constexpr FieldRow kPointRows[] = {
    row<P3, &AcDbPoint::Data::position>("position"),
    row<BD, &AcDbPoint::Data::thickness>("thickness", kOnly1314),
    row<P3, &AcDbPoint::Data::normal>("normal", kOnly1314),
    row<BT, &AcDbPoint::Data::thickness>("thickness", kOnly15),
    row<BE, &AcDbPoint::Data::normal>("normal", kOnly15),
    row<BD, &AcDbPoint::Data::ecsRotation>("x axis angle"),
};

constexpr int kByControlPoints = 1;
constexpr int kByFitPoints = 2;

void readFit(FieldReader& r, AcDbSpline::Data& s) {
    s.fitTolerance = BD::read<double>(r);
    s.startTangent = P3::read<AcGeVector3d>(r);
    s.endTangent = P3::read<AcGeVector3d>(r);
    s.fitPoints.resize(r.count(r.bits.BL(), 6));
    for (AcGePoint3d& point : s.fitPoints)
        point = P3::read<AcGePoint3d>(r);
}

void readControl(FieldReader& r, AcDbSpline::Data& s) {
    s.rational = r.bits.B();
    s.closed = r.bits.B();
    s.periodic = r.bits.B();
    s.knotTolerance = BD::read<double>(r);
    s.controlTolerance = BD::read<double>(r);
    const uint32_t knots = r.count(r.bits.BL(), 2);
    const uint32_t points = r.count(r.bits.BL(), 6);
    s.weighted = r.bits.B();
    s.knots.resize(knots);
    for (double& knot : s.knots)
        knot = BD::read<double>(r);
    s.controlPoints.resize(points);
    s.weights.resize(s.weighted ? points : 0);
    for (uint32_t i = 0; i < points; ++i) {
        s.controlPoints[i] = P3::read<AcGePoint3d>(r);
        if (s.weighted)
            s.weights[i] = BD::read<double>(r);
    }
}

void readSpline(FieldReader& r, AcDbSpline::Data& s) {
    s.scenario = BL::read<int>(r);
    s.degree = BL::read<int>(r);
    if (s.scenario == kByFitPoints)
        readFit(r, s);
    else if (s.scenario == kByControlPoints)
        readControl(r, s);
    else
        r.bits.fail();
}

void writeSpline(FieldWriter& w, const AcDbSpline::Data& s) {
    w.bits.BL(static_cast<uint32_t>(s.scenario));
    w.bits.BL(static_cast<uint32_t>(s.degree));
    if (s.scenario == kByFitPoints) {
        w.bits.BD(s.fitTolerance);
        P3::write(w, s.startTangent);
        P3::write(w, s.endTangent);
        w.bits.BL(static_cast<uint32_t>(s.fitPoints.size()));
        for (const AcGePoint3d& point : s.fitPoints)
            P3::write(w, point);
        return;
    }
    for (const bool flag : {s.rational, s.closed, s.periodic})
        w.bits.B(flag);
    w.bits.BD(s.knotTolerance);
    w.bits.BD(s.controlTolerance);
    w.bits.BL(static_cast<uint32_t>(s.knots.size()));
    w.bits.BL(static_cast<uint32_t>(s.controlPoints.size()));
    w.bits.B(s.weighted);
    for (const double knot : s.knots)
        w.bits.BD(knot);
    for (size_t i = 0; i < s.controlPoints.size(); ++i) {
        P3::write(w, s.controlPoints[i]);
        if (s.weighted)
            w.bits.BD(s.weights[i]);
    }
}

constexpr FieldRow kSplineRows[] = {customRow<AcDbSpline::Data, readSpline, writeSpline>("curve")};

using HelixData = AcDbHelix::HelixData;

constexpr FieldRow kHelixRows[] = {
    row<BL, &HelixData::majorRelease>("major release"),
    row<BL, &HelixData::maintenanceRelease>("maintenance release"),
    row<P3, &HelixData::axisBase>("axis base point"),
    row<P3, &HelixData::start>("start point"),
    row<P3, &HelixData::axis>("axis vector"),
    row<BD, &HelixData::radius>("radius"),
    row<BD, &HelixData::turns>("turns"),
    row<BD, &HelixData::turnHeight>("turn height"),
    row<B, &HelixData::counterClockwise>("handedness"),
    row<RC, &HelixData::constraint>("constraint"),
};

AcDbObject* readHelix(FieldReader& r) {
    AcDbSpline::Data curve;
    HelixData helix;
    readRows(kSplineRows, r, &curve);
    readRows(kHelixRows, r, &helix);
    auto* const object = new AcDbHelix;
    object->setFileData(std::move(curve));
    object->setFileHelixData(helix);
    return object;
}

void writeHelix(FieldWriter& w, const AcDbObject& object) {
    const auto& helix = static_cast<const AcDbHelix&>(object);
    writeRows(kSplineRows, w, &helix.data());
    writeRows(kHelixRows, w, &helix.helixData());
}

constexpr ObjectType kTypes[] = {
    dataType<AcDbArc, kArcRows>(17, "ARC"),
    dataType<AcDbCircle, kCircleRows>(18, "CIRCLE"),
    dataType<AcDbLine, kLineRows>(19, "LINE"),
    dataType<AcDbPoint, kPointRows>(27, "POINT"),
    dataType<AcDbEllipse, kEllipseRows>(35, "ELLIPSE"),
    dataType<AcDbSpline, kSplineRows>(36, "SPLINE"),
    {0, "HELIX", &AcDbHelix::desc, readHelix, writeHelix, &assignBaseOf<AcDbHelix>},
    dataType<AcDbRay, kRayRows>(40, "RAY"),
    dataType<AcDbXline, kRayRows>(41, "XLINE"),
};

} // namespace

std::span<const ObjectType> curveTypes() { return kTypes; }

} // namespace vndk::dwg
