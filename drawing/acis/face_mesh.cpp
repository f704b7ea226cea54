#include "acis/face_mesh.h"

#include <algorithm>
#include <tuple>

namespace vndk::acis {

namespace {

constexpr double kTurn = 2 * kAcGePi;
constexpr double kSame = 1e-9;
constexpr int kStripsPerTurn = 32;
constexpr double kMostWork = 4e6; // strips times sides

double reaching(const std::vector<AcGePoint2d>& points, double AcGePoint2d::*member) {
    return points.back().*member - points.front().*member;
}

/// The same angle, within half a turn of another one.
double near(double angle, double other) { return angle + std::round((other - angle) / kTurn) * kTurn; }

} // namespace

FaceDomain::FaceDomain(const Face& face) : surface_(*face.surface) {
    outward_ = face.reversed == surface_.inwards;
    flipped_ = !outward_;
    plain_ = !face.hasLoops || (surface_.turnsInU() && face.contours.empty());
    for (const std::vector<AcGePoint3d>& contour : face.contours)
        addContour(contour);
    if (plain_ || !surface_.turnsInV() || !sides_.empty()) {
        findEnds();
        return;
    }
    swapped_ = true;
    flipped_ = !flipped_;
    for (const std::vector<AcGePoint3d>& contour : face.contours)
        addContour(contour);
    findEnds();
}

/// Follows angles over the seam of the surface. Sides along v bound nothing and aren't kept.
void FaceDomain::addContour(const std::vector<AcGePoint3d>& contour) {
    std::vector<AcGePoint2d> path;
    const double least = surface_.turnsInU() ? 1e-7 : 0;
    bool atPole = false;
    for (const AcGePoint3d& p : contour) {
        AcGePoint2d at = surface_.parameters(p);
        if (swapped_)
            std::swap(at.x, at.y);
        // At a pole every angle is right: the path runs along it from one angle to the next.
        const bool wasAtPole = atPole;
        atPole = surface_.turnsInU() && !surface_.turnsInV() &&
                 surface_.point(at.x, at.y).distanceTo(surface_.point(at.x + 1, at.y)) < 1e-9;
        if (!path.empty() && surface_.turnsInU())
            at.x = atPole ? path.back().x : near(at.x, path.back().x);
        if (!path.empty() && surface_.turnsInV())
            at.y = near(at.y, path.back().y);
        if (wasAtPole && !atPole)
            path.push_back({at.x, path.back().y});
        path.push_back(at);
    }
    const bool turns = surface_.turnsInV() && std::fabs(reaching(path, &AcGePoint2d::x)) < kSame &&
                       std::fabs(reaching(path, &AcGePoint2d::y)) > 1;
    if (turns && !swapped_)
        return; // round the tube: seen the other way
    for (size_t i = 0; i + 1 < path.size(); ++i)
        if (std::fabs(path[i + 1].x - path[i].x) > least)
            addSide(path[i], path[i + 1]);
}

/// Cuts a side at the seams, so that every piece lies within one turn.
void FaceDomain::addSide(AcGePoint2d from, AcGePoint2d to) {
    if (!surface_.turnsInU())
        return sides_.push_back({from, to});
    const double low = std::floor(std::min(from.x, to.x) / kTurn), high = std::ceil(std::max(from.x, to.x) / kTurn);
    for (double turn = low; turn < high && turn < low + 3; ++turn) {
        const auto cut = [&](double share) {
            return AcGePoint2d(from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share);
        };
        double a = (turn * kTurn - from.x) / (to.x - from.x), b = ((turn + 1) * kTurn - from.x) / (to.x - from.x);
        a = std::clamp(a, 0.0, 1.0);
        b = std::clamp(b, 0.0, 1.0);
        AcGePoint2d start = cut(std::min(a, b)), end = cut(std::max(a, b));
        start.x -= turn * kTurn;
        end.x -= turn * kTurn;
        if (std::fabs(end.x - start.x) > kSame)
            addCut(start, end);
    }
}

/// On a ring the other angle has a seam, too. Sides are short there, so that its middle tells the turn.
void FaceDomain::addCut(const AcGePoint2d& from, const AcGePoint2d& to) {
    double shift = 0;
    if (surface_.turnsInV())
        shift = std::floor((from.y + to.y) / 2 / kTurn) * kTurn;
    sides_.push_back({{from.x, from.y - shift}, {to.x, to.y - shift}});
}

/// A contour that the face lies below shows that the surface's lower end is a part of it.
void FaceDomain::findEnds() {
    if (plain_ || sides_.empty())
        return;
    const Side* lowest = &sides_[0];
    for (const Side& side : sides_)
        if (side.from.y + side.to.y < lowest->from.y + lowest->to.y)
            lowest = &side;
    holdsLowest_ = ((lowest->to.x > lowest->from.x) == flipped_);
}

void FaceDomain::crossings(double u, std::vector<Crossing>& found) const {
    found.clear();
    const auto isAbove = [&](const Side& side) { return (side.to.x > side.from.x) != flipped_; };
    for (const Side& side : sides_)
        if ((side.from.x <= u) != (side.to.x <= u))
            found.push_back(
                {side.from.y + (side.to.y - side.from.y) * ((u - side.from.x) / (side.to.x - side.from.x)), &side});
    std::sort(found.begin(), found.end(), [](const Crossing& a, const Crossing& b) { return a.v < b.v; });
    if (!surface_.turnsInU())
        return found.size() % 2 ? found.clear() : void();
    const std::optional<double> low = swapped_ ? 0 : surface_.lowestV();
    const std::optional<double> high = swapped_ ? kTurn : surface_.highestV();
    const bool all = found.empty() && low && high && (plain_ || holdsLowest_);
    if (low && (all || (!found.empty() && !isAbove(*found.front().side))))
        found.insert(found.begin(), {*low, nullptr});
    if (high && !found.empty() && (all || (found.back().side && isAbove(*found.back().side))))
        found.push_back({*high, nullptr});
    if (found.size() % 2)
        found.clear();
}

std::vector<double> FaceDomain::breaks() const {
    std::vector<double> places;
    for (const Side& side : sides_) {
        places.push_back(side.from.x);
        places.push_back(side.to.x);
    }
    if (surface_.turnsInU())
        for (int i = 0; i <= kStripsPerTurn; ++i)
            places.push_back(kTurn * i / kStripsPerTurn);
    std::sort(places.begin(), places.end());
    const double least = surface_.turnsInU() ? 1e-7 : 0;
    places.erase(std::unique(places.begin(), places.end(), [=](double a, double b) { return b - a <= least; }),
                 places.end());
    return places;
}

AcGePoint3d FaceDomain::place(double u, double v) const {
    return swapped_ ? surface_.point(v, u) : surface_.point(u, v);
}

void FaceDomain::addTo(Mesh& mesh) const {
    const std::vector<double> places = breaks();
    if (static_cast<double>(places.size()) * static_cast<double>(sides_.size()) > kMostWork)
        return;
    std::vector<Crossing> at;
    for (size_t i = 0; i + 1 < places.size(); ++i) {
        crossings((places[i] + places[i + 1]) / 2, at);
        addStrip(places[i], places[i + 1], at, mesh);
    }
}

void FaceDomain::addStrip(double left, double right, const std::vector<Crossing>& at, Mesh& mesh) const {
    const auto heightAt = [](const Crossing& crossing, double u) {
        if (!crossing.side)
            return crossing.v;
        const Side& side = *crossing.side;
        const double share = (u - side.from.x) / (side.to.x - side.from.x);
        return side.from.y + (side.to.y - side.from.y) * std::clamp(share, 0.0, 1.0);
    };
    const bool bends = surface_.kind == Surface::Kind::Sphere || surface_.kind == Surface::Kind::Torus;
    for (size_t i = 0; i + 1 < at.size(); i += 2) {
        const double low[2] = {heightAt(at[i], left), heightAt(at[i], right)};
        const double high[2] = {heightAt(at[i + 1], left), heightAt(at[i + 1], right)};
        const double tallest = std::max(high[0] - low[0], high[1] - low[1]);
        const int rows = bends ? std::clamp(static_cast<int>(std::ceil(tallest / kTurn * kStripsPerTurn)), 1, 64) : 1;
        for (int row = 0; row < rows; ++row) {
            const double a = static_cast<double>(row) / rows, b = static_cast<double>(row + 1) / rows;
            const auto between = [&](int side, double share) { return low[side] + (high[side] - low[side]) * share; };
            addPatch({{left, between(0, a)}, {right, between(1, a)}, {right, between(1, b)}, {left, between(0, b)}},
                     mesh);
        }
    }
}

void FaceDomain::addPatch(const AcGePoint2d (&corners)[4], Mesh& mesh) const {
    const auto first = static_cast<uint32_t>(mesh.points.size());
    for (const AcGePoint2d& corner : corners) {
        mesh.points.push_back(place(corner.x, corner.y));
        const AcGeVector3d normal =
            swapped_ ? surface_.normal(corner.y, corner.x) : surface_.normal(corner.x, corner.y);
        mesh.normals.push_back(outward_ ? normal : -normal);
    }
    const bool clockwise = outward_ == swapped_;
    for (const auto& [a, b, c] : {std::tuple(0U, 1U, 2U), std::tuple(0U, 2U, 3U)}) {
        const AcGePoint3d &p = mesh.points[first + a], &q = mesh.points[first + b], &r = mesh.points[first + c];
        if ((q - p).crossProduct(r - p).lengthSqrd() == 0)
            continue; // at a pole
        for (const uint32_t corner : {a, clockwise ? c : b, clockwise ? b : c})
            mesh.triangles.push_back(first + corner);
    }
}

void FaceDomain::addIsolines(int perTurn, std::vector<std::vector<AcGePoint3d>>& lines) const {
    if (!surface_.turnsInU() || perTurn <= 0 || static_cast<double>(sides_.size()) * kStripsPerTurn > kMostWork)
        return;
    const bool straight = surface_.kind == Surface::Kind::Cone;
    constexpr int kSteps = 32;
    std::vector<Crossing> at;
    for (int i = 0; i < std::min(perTurn, 64); ++i) {
        const double u = kTurn * i / perTurn;
        // Just beside the seam, where pieces meet.
        crossings(u + 1e-6, at);
        for (size_t pair = 0; pair + 1 < at.size(); pair += 2) {
            const int steps = straight ? 1 : kSteps;
            std::vector<AcGePoint3d>& line = lines.emplace_back();
            for (int step = 0; step <= steps; ++step)
                line.push_back(place(u, at[pair].v + (at[pair + 1].v - at[pair].v) * step / steps));
        }
    }
    if (straight)
        return;
    std::vector<std::vector<Crossing>> columns(2 * kSteps + 1);
    for (size_t i = 0; i < columns.size(); ++i)
        crossings(std::min(kTurn * static_cast<double>(i) / (2 * kSteps) + 1e-6, kTurn - 1e-6), columns[i]);
    const double low = surface_.lowestV().value_or(0), high = surface_.highestV().value_or(0);
    const int rows = surface_.turnsInV() ? perTurn : std::max(1, perTurn / 2);
    for (int row = surface_.turnsInV() ? 0 : 1; row < std::min(rows, 64); ++row) {
        const double v = low + (high - low) * row / rows;
        bool open = false;
        for (size_t i = 0; i < columns.size(); ++i) {
            bool inside = false;
            for (size_t pair = 0; pair + 1 < columns[i].size(); pair += 2)
                inside = inside || (columns[i][pair].v <= v && v <= columns[i][pair + 1].v);
            if (inside && !open)
                lines.emplace_back();
            if (inside)
                lines.back().push_back(place(kTurn * static_cast<double>(i) / (2 * kSteps), v));
            open = inside;
        }
    }
}

} // namespace vndk::acis
