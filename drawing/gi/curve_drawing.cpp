#include "db/bspline.h"
#include "db/plane_math.h"
#include "gi/entity_drawing_parts.h"
#include "gi/face_collector.h"

#include <algorithm>
#include <array>

namespace vndk::gi {

namespace {

constexpr double kTurn = 2 * kAcGePi;
constexpr double kStepOfWall = kAcGePi / 32; // along a round wall
constexpr int kStepsOfSpan = 16;             // of a spline, between two knots or points

/// A circle is closed at both ends.
void drawRoundWall(const AcGePoint3d& middle, const AcGeVector3d& x, const AcGeVector3d& y, double start, double sweep,
                   const AcGeVector3d& up, AcGiGeometry& geometry) {
    FaceCollector faces;
    std::vector<AcGePoint3d> foot;
    const int steps = std::max(2, static_cast<int>(std::ceil(sweep / kStepOfWall)));
    for (int i = 0; i <= steps; ++i) {
        const double angle = start + sweep * i / steps;
        foot.push_back(middle + x * std::cos(angle) + y * std::sin(angle));
    }
    faces.wall(foot, up);
    if (sweep >= kTurn) {
        faces.fan(foot);
        for (AcGePoint3d& p : foot)
            p += up;
        faces.fan(foot);
    }
    faces.draw(geometry);
}

/// A round piece in the plane of a normal, at its foot and, with a thickness, at its top with the walls' ends between.
void drawRound(const AcGePoint3d& center, double radius, const AcGeVector3d& normal, double start, double sweep,
               double thickness, AcGiGeometry& geometry) {
    const AcGePoint3d middle = AcGeMatrix3d::planeToWorld(normal, center);
    const AcGeVector3d x = AcGeMatrix3d::planeToWorld(normal, AcGeVector3d(radius, 0, 0));
    const AcGeVector3d y = AcGeMatrix3d::planeToWorld(normal, AcGeVector3d(0, radius, 0));
    geometry.ellipArc(middle, x, y, start, sweep);
    if (thickness == 0)
        return;
    const AcGeVector3d up = extrusion(thickness, normal);
    geometry.ellipArc(middle + up, x, y, start, sweep);
    for (const double angle : {start, start + sweep}) {
        const AcGePoint3d end = middle + x * std::cos(angle) + y * std::sin(angle);
        geometry.polyline(std::array{end, end + up});
    }
    drawRoundWall(middle, x, y, start, sweep, up, geometry);
}

/// A smooth curve through points, where a file gives nothing else: cubic pieces whose tangents lie along the
/// neighbours.
std::vector<AcGePoint3d> fittedPoints(const AcDbSpline::Data& data) {
    const std::vector<AcGePoint3d>& fit = data.fitPoints;
    std::vector<AcGePoint3d> points;
    const auto tangent = [&](size_t i) {
        if (i == 0 && !data.startTangent.isZeroLength())
            return data.startTangent.normal() * fit[1].distanceTo(fit[0]);
        if (i + 1 == fit.size() && !data.endTangent.isZeroLength())
            return data.endTangent.normal() * fit[i].distanceTo(fit[i - 1]);
        const size_t before = i == 0 ? 0 : i - 1, behind = std::min(i + 1, fit.size() - 1);
        return (fit[behind] - fit[before]) * (1.0 / static_cast<double>(behind - before));
    };
    for (size_t i = 0; i + 1 < fit.size(); ++i) {
        const AcGeVector3d from = tangent(i), to = tangent(i + 1), chord = fit[i + 1] - fit[i];
        for (int step = i == 0 ? 0 : 1; step <= kStepsOfSpan; ++step) {
            const double t = static_cast<double>(step) / kStepsOfSpan;
            points.push_back(fit[i] + chord * (t * t * (3 - 2 * t)) + from * (t * (1 - t) * (1 - t)) +
                             to * (t * t * (t - 1)));
        }
    }
    return points;
}

} // namespace

double sweepOf(double start, double end) {
    const double sweep = db::normalizedAngle(end - start);
    return sweep > 0 ? sweep : kTurn;
}

void drawLine(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const AcDbLine::Data& data = static_cast<const AcDbLine&>(entity).data();
    geometry.polyline(std::array{data.start, data.end});
    if (data.thickness == 0)
        return;
    const AcGeVector3d up = extrusion(data.thickness, data.normal);
    geometry.polyline(std::array{data.start, data.start + up, data.end + up, data.end});
    FaceCollector faces;
    faces.wall(std::array{data.start, data.end}, up);
    faces.draw(geometry);
}

void drawCircle(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const AcDbCircle::Data& data = static_cast<const AcDbCircle&>(entity).data();
    drawRound(data.center, data.radius, data.normal, 0, kTurn, data.thickness, geometry);
}

void drawArc(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const AcDbArc::Data& data = static_cast<const AcDbArc&>(entity).data();
    drawRound(data.center, data.radius, data.normal, data.startAngle, sweepOf(data.startAngle, data.endAngle),
              data.thickness, geometry);
}

void drawEllipse(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const auto& ellipse = static_cast<const AcDbEllipse&>(entity);
    geometry.ellipArc(ellipse.center(), ellipse.majorAxis(), ellipse.minorAxis(), ellipse.startParam(),
                      sweepOf(ellipse.startParam(), ellipse.endParam()));
}

void drawRay(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const auto& ray = static_cast<const AcDbRay&>(entity);
    geometry.ray(ray.basePoint(), ray.unitDir());
}

void drawXline(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const auto& line = static_cast<const AcDbXline&>(entity);
    geometry.xline(line.basePoint(), line.unitDir());
}

void drawSpline(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const auto& spline = static_cast<const AcDbSpline&>(entity);
    const AcDbSpline::Data& data = spline.data();
    const db::BSpline curve{static_cast<size_t>(std::max(data.degree, 0)), data.knots, data.controlPoints,
                            data.weighted ? data.weights : std::vector<double>()};
    const std::vector<AcGePoint3d> points = curve.flattened(kStepsOfSpan);
    geometry.polyline(points.empty() ? fittedPoints(data) : points);
}

} // namespace vndk::gi
