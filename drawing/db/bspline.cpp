#include "db/bspline.h"

#include <algorithm>

namespace vndk::db {

namespace {

/// A point of a rational curve: coordinates times weight, and the weight.
struct Weighted {
    AcGeVector3d sum;
    double weight = 0;
};

} // namespace

bool BSpline::isCurve() const {
    constexpr size_t kHighestDegree = 25;
    return degree >= 1 && degree <= kHighestDegree && points.size() > degree &&
           knots.size() == points.size() + degree + 1 && std::is_sorted(knots.begin(), knots.end()) &&
           (weights.empty() || weights.size() == points.size());
}

/// By the scheme of de Boor. `span` is the knot interval that holds `u`.
AcGePoint3d BSpline::at(size_t span, double u) const {
    std::vector<Weighted> column(degree + 1);
    for (size_t j = 0; j <= degree; ++j) {
        const size_t index = span - degree + j;
        const double weight = weights.empty() ? 1 : weights[index];
        column[j] = {points[index].asVector() * weight, weight};
    }
    for (size_t level = 1; level <= degree; ++level)
        for (size_t j = degree; j >= level; --j) {
            const double low = knots[span - degree + j], high = knots[span + 1 + j - level];
            const double share = high > low ? (u - low) / (high - low) : 0;
            column[j] = {column[j - 1].sum * (1 - share) + column[j].sum * share,
                         column[j - 1].weight * (1 - share) + column[j].weight * share};
        }
    const Weighted& result = column[degree];
    const AcGeVector3d place = result.weight != 0 ? result.sum * (1 / result.weight) : result.sum;
    return {place.x, place.y, place.z};
}

AcGePoint3d BSpline::at(double u) const {
    const double inside = std::clamp(u, knots[degree], knots[points.size()]);
    const auto behind = std::upper_bound(knots.begin() + static_cast<std::ptrdiff_t>(degree) + 1,
                                         knots.begin() + static_cast<std::ptrdiff_t>(points.size()), inside);
    return at(static_cast<size_t>(behind - knots.begin()) - 1, inside);
}

std::vector<AcGePoint3d> BSpline::flattened(int steps) const {
    std::vector<AcGePoint3d> flat;
    if (!isCurve())
        return flat;
    for (size_t span = degree; span < points.size(); ++span) {
        const double low = knots[span], high = knots[span + 1];
        if (!(high > low))
            continue;
        for (int i = flat.empty() ? 0 : 1; i <= steps; ++i)
            flat.push_back(at(span, low + (high - low) * i / steps));
    }
    return flat;
}

} // namespace vndk::db
