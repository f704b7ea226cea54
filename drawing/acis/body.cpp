#include "acis/body.h"

#include "acis/sat_text.h"
#include "db/bspline.h"

#include <algorithm>
#include <map>
#include <set>

namespace vndk::acis {

namespace {

constexpr double kTurn = 2 * kAcGePi;
constexpr int kStepsPerTurn = 64;
constexpr int kStepsPerSpan = 12;

/// The numbers of a record one after another. One that isn't there makes all of them unusable.
class Numbers {
public:
    Numbers(const SatRecord& record, size_t token) : record_(record), token_(token) {}

    double next() {
        const std::optional<double> value = record_.number(token_++);
        good_ = good_ && value;
        return value.value_or(0);
    }
    AcGePoint3d point() {
        const double x = next(), y = next(), z = next();
        return {x, y, z};
    }
    AcGeVector3d vector() { return point().asVector(); }
    /// A bound of a range: "I" or "F" and a number.
    void skipBound() {
        const std::string_view token = token_ < record_.tokens.size() ? record_.tokens[token_] : "";
        token_ += token == "F" ? 2 : 1;
    }
    size_t token() const { return token_; }
    bool good() const { return good_; }

private:
    const SatRecord& record_;
    size_t token_;
    bool good_ = true;
};

bool isReversed(std::string_view sense) { return sense == "reversed" || sense == "1"; }

/// Records that name each other over and over don't make a body without end.
constexpr int kMostSteps = 500'000;

class BodyReader {
public:
    BodyReader(const SatText& sat, int& stepsLeft) : sat_(sat), stepsLeft_(stepsLeft) {}
    /// With `all` edges that no face has are the body's, too.
    Body read(const SatRecord& body, bool all);

private:
    /// The records of a chain: the first of that name that `from` names, and what each one names as the next.
    std::vector<const SatRecord*> chain(const SatRecord& from, std::string_view name) const;
    void readFace(const SatRecord& face, Body& body);
    std::optional<Surface> surfaceOf(const SatRecord& record) const;
    std::vector<AcGePoint3d> contourOf(const SatRecord& loop, Body& body);
    const EdgeCurve* edgeOf(const SatRecord& edge, Body& body);
    std::optional<EdgeCurve> readEdge(const SatRecord& edge) const;
    bool setOval(const SatRecord& curve, bool reversed, EdgeCurve& edge) const;
    bool setFree(const SatRecord& curve, bool reversed, EdgeCurve& edge) const;
    std::optional<AcGePoint3d> vertexAt(const SatRecord* vertex) const;
    std::string_view tokenBehind(const SatRecord& record, const SatRecord* target) const;

    const SatText& sat_;
    int& stepsLeft_;
    std::map<const SatRecord*, std::optional<size_t>> edges_; // their places in the body
};

std::vector<const SatRecord*> BodyReader::chain(const SatRecord& from, std::string_view name) const {
    std::vector<const SatRecord*> found;
    std::set<const SatRecord*> seen;
    for (const SatRecord* record = sat_.find(from, name); record && seen.insert(record).second && stepsLeft_-- > 0;) {
        found.push_back(record);
        const SatRecord* const next = sat_.at(record->pointer(sat_.firstToken()));
        record = next && next->name == name ? next : nullptr;
    }
    return found;
}

std::string_view BodyReader::tokenBehind(const SatRecord& record, const SatRecord* target) const {
    for (size_t i = sat_.firstToken(); i + 1 < record.tokens.size(); ++i)
        if (target && sat_.at(record.pointer(i)) == target)
            return record.tokens[i + 1];
    return {};
}

Body BodyReader::read(const SatRecord& record, bool all) {
    Body body;
    body.transform = sat_.transformOf(record);
    std::set<const SatRecord*> seen;
    for (const SatRecord* const lump : chain(record, "lump"))
        for (const SatRecord* const shell : chain(*lump, "shell"))
            for (const SatRecord* const face : chain(*shell, "face"))
                if (seen.insert(face).second)
                    readFace(*face, body);
    // Edges of wires have no face.
    for (const SatRecord& other : sat_.records)
        if (all && other.name == "edge" && !edges_.contains(&other))
            edgeOf(other, body);
    return body;
}

void BodyReader::readFace(const SatRecord& record, Body& body) {
    Face face;
    const SatRecord* const surface = sat_.find(record, "-surface");
    if (surface) {
        face.surface = surfaceOf(*surface);
        face.reversed = isReversed(tokenBehind(record, surface));
    }
    for (const SatRecord* const loop : chain(record, "loop")) {
        face.hasLoops = true;
        if (std::vector<AcGePoint3d> contour = contourOf(*loop, body); contour.size() > 1)
            face.contours.push_back(std::move(contour));
    }
    body.faces.push_back(std::move(face));
}

std::optional<Surface> BodyReader::surfaceOf(const SatRecord& record) const {
    Numbers numbers(record, sat_.firstToken());
    Surface surface;
    surface.origin = numbers.point();
    if (record.name == "plane-surface") {
        surface.axis = numbers.vector().normal();
        surface.x = surface.axis.perpVector().normal();
        surface.y = surface.axis.crossProduct(surface.x);
    } else if (record.name == "cone-surface") {
        surface.kind = Surface::Kind::Cone;
        surface.axis = numbers.vector().normal();
        surface.x = numbers.vector();
        surface.y = surface.axis.crossProduct(surface.x) * numbers.next();
        numbers.skipBound();
        numbers.skipBound();
        const double sine = numbers.next(), cosine = numbers.next(), base = surface.x.length();
        if (cosine == 0 || base == 0)
            return std::nullopt;
        surface.slope = sine / cosine / base;
        surface.inwards = cosine < 0;
    } else if (record.name == "sphere-surface") {
        surface.kind = Surface::Kind::Sphere;
        const double radius = numbers.next();
        surface.inwards = radius < 0;
        surface.radius = std::fabs(radius);
        surface.x = numbers.vector().normal();
        surface.axis = numbers.vector().normal();
        surface.y = surface.axis.crossProduct(surface.x);
    } else if (record.name == "torus-surface") {
        surface.kind = Surface::Kind::Torus;
        surface.axis = numbers.vector().normal();
        surface.radius = numbers.next();
        const double tube = numbers.next();
        surface.inwards = tube < 0;
        surface.tube = std::fabs(tube);
        surface.x = numbers.vector().normal();
        surface.y = surface.axis.crossProduct(surface.x);
    } else {
        return std::nullopt;
    }
    const bool lies =
        numbers.good() && !surface.axis.isZeroLength() && !surface.x.isZeroLength() && !surface.y.isZeroLength();
    return lies ? std::optional(surface) : std::nullopt;
}

/// Coedges stand in a ring; each names the next one, the one before, its partner and its edge, in this order.
std::vector<AcGePoint3d> BodyReader::contourOf(const SatRecord& loop, Body& body) {
    std::vector<AcGePoint3d> contour;
    std::set<const SatRecord*> seen;
    const SatRecord* coedge = sat_.find(loop, "coedge");
    while (coedge && coedge->name == "coedge" && seen.insert(coedge).second && stepsLeft_ > 0) {
        const SatRecord* const edge = sat_.find(*coedge, "edge");
        if (const EdgeCurve* const curve = edge ? edgeOf(*edge, body) : nullptr) {
            std::vector<AcGePoint3d> points = curve->flattened();
            stepsLeft_ -= static_cast<int>(points.size());
            if (isReversed(tokenBehind(*coedge, edge)))
                std::reverse(points.begin(), points.end());
            contour.insert(contour.end(), points.begin() + (contour.empty() ? 0 : 1), points.end());
        }
        coedge = sat_.at(coedge->pointer(sat_.firstToken()));
    }
    return contour;
}

const EdgeCurve* BodyReader::edgeOf(const SatRecord& edge, Body& body) {
    const auto [entry, isNew] = edges_.try_emplace(&edge);
    if (isNew)
        if (std::optional<EdgeCurve> curve = readEdge(edge)) {
            entry->second = body.edges.size();
            body.edges.push_back(std::move(*curve));
        }
    return entry->second ? &body.edges[*entry->second] : nullptr;
}

std::optional<AcGePoint3d> BodyReader::vertexAt(const SatRecord* vertex) const {
    const SatRecord* const point = vertex ? sat_.find(*vertex, "point") : nullptr;
    if (!point)
        return std::nullopt;
    Numbers numbers(*point, sat_.firstToken());
    const AcGePoint3d place = numbers.point();
    return numbers.good() ? std::optional(place) : std::nullopt;
}

/// An edge without a curve is a point, as at the apex of a cone.
std::optional<EdgeCurve> BodyReader::readEdge(const SatRecord& record) const {
    std::vector<const SatRecord*> ends;
    for (size_t i = sat_.firstToken(); i < record.tokens.size(); ++i)
        if (const SatRecord* const other = sat_.at(record.pointer(i)); other && other->name == "vertex")
            ends.push_back(other);
    const SatRecord* const curve = sat_.find(record, "-curve");
    if (ends.size() < 2 || !curve)
        return std::nullopt;
    const std::optional<AcGePoint3d> start = vertexAt(ends[0]), end = vertexAt(ends[1]);
    if (!start || !end)
        return std::nullopt;
    EdgeCurve edge;
    edge.start = *start;
    edge.end = *end;
    const bool reversed = isReversed(tokenBehind(record, curve));
    const bool known =
        curve->name == "straight-curve" ||
        (curve->name == "ellipse-curve" ? setOval(*curve, reversed, edge) : setFree(*curve, reversed, edge));
    return known ? std::optional(std::move(edge)) : std::nullopt;
}

bool BodyReader::setOval(const SatRecord& curve, bool reversed, EdgeCurve& edge) const {
    Numbers numbers(curve, sat_.firstToken());
    edge.kind = EdgeCurve::Kind::Oval;
    edge.center = numbers.point();
    const AcGeVector3d normal = numbers.vector().normal();
    edge.major = numbers.vector();
    edge.minor = normal.crossProduct(edge.major) * numbers.next();
    if (!numbers.good() || edge.major.isZeroLength() || edge.minor.isZeroLength())
        return false;
    const auto angleAt = [&](const AcGePoint3d& p) {
        const AcGeVector3d arm = p - edge.center;
        return std::atan2(arm.dotProduct(edge.minor) / edge.minor.lengthSqrd(),
                          arm.dotProduct(edge.major) / edge.major.lengthSqrd());
    };
    edge.first = angleAt(edge.start);
    double sweep = angleAt(edge.end) - edge.first;
    constexpr double kSame = 1e-9;
    if (edge.start.distanceTo(edge.end) < kSame * (1 + edge.major.length()))
        sweep = 0;
    if (reversed)
        edge.sweep = sweep < -kSame ? sweep : sweep - kTurn;
    else
        edge.sweep = sweep > kSame ? sweep : sweep + kTurn;
    return true;
}

/// Free curves keep a spline: "nubs" or "nurbs", the degree, how it closes, and knots with how often each one counts.
bool BodyReader::setFree(const SatRecord& curve, bool reversed, EdgeCurve& edge) const {
    const auto kind = std::find_if(curve.tokens.begin(), curve.tokens.end(),
                                   [](std::string_view token) { return token == "nubs" || token == "nurbs"; });
    const auto place = static_cast<size_t>(kind - curve.tokens.begin());
    const size_t left = curve.tokens.size() - place;
    if (left < 4)
        return false;
    Numbers numbers(curve, place + 1);
    db::BSpline spline;
    spline.degree = static_cast<size_t>(std::clamp(numbers.next(), 0.0, 100.0));
    Numbers list(curve, place + 3);
    const double distinct = list.next();
    if (!numbers.good() || !list.good() || !(distinct >= 2) || distinct * 2 > static_cast<double>(left))
        return false;
    for (double i = 0; i < distinct; ++i) {
        const double knot = list.next(), times = list.next();
        if (!list.good() || !(times >= 1) || times > static_cast<double>(spline.degree + 1))
            return false;
        spline.knots.insert(spline.knots.end(), static_cast<size_t>(times), knot);
    }
    // The first and the last knot are told once less often than the scheme needs them.
    spline.knots.insert(spline.knots.begin(), spline.knots.front());
    spline.knots.push_back(spline.knots.back());
    if (spline.knots.size() < 2 * spline.degree + 2)
        return false;
    for (size_t i = 0; i + spline.degree + 1 < spline.knots.size() && list.good(); ++i) {
        spline.points.push_back(list.point());
        if (*kind == "nurbs")
            spline.weights.push_back(list.next());
    }
    edge.points = list.good() ? spline.flattened(kStepsPerSpan) : std::vector<AcGePoint3d>();
    if (edge.points.size() < 2)
        return false;
    if (reversed != (curve.tokens.size() > sat_.firstToken() && isReversed(curve.tokens[sat_.firstToken()])))
        std::reverse(edge.points.begin(), edge.points.end());
    edge.kind = EdgeCurve::Kind::Points;
    return true;
}

} // namespace

std::vector<AcGePoint3d> EdgeCurve::flattened() const {
    if (kind == Kind::Points)
        return points;
    if (kind == Kind::Straight)
        return {start, end};
    std::vector<AcGePoint3d> flat;
    const int steps = std::max(2, static_cast<int>(std::ceil(std::fabs(sweep) / kTurn * kStepsPerTurn - 1e-6)));
    for (int i = 0; i <= steps; ++i) {
        const double u = first + sweep * i / steps;
        flat.push_back(center + major * std::cos(u) + minor * std::sin(u));
    }
    return flat;
}

std::vector<Body> Body::read(std::string_view text) {
    std::vector<Body> bodies;
    const std::optional<SatText> sat = SatText::parse(text);
    if (!sat)
        return bodies;
    std::vector<const SatRecord*> records;
    for (const SatRecord& record : sat->records)
        if (record.name == "body")
            records.push_back(&record);
    constexpr size_t kMostBodies = 1000;
    int stepsLeft = kMostSteps;
    if (records.size() > kMostBodies)
        return bodies;
    for (const SatRecord* const record : records)
        bodies.push_back(BodyReader(*sat, stepsLeft).read(*record, records.size() == 1));
    return bodies;
}

} // namespace vndk::acis
