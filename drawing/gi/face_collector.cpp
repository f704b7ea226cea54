#include "gi/face_collector.h"

namespace vndk::gi {

void FaceCollector::wall(std::span<const AcGePoint3d> foot, const AcGeVector3d& up) {
    const auto first = static_cast<uint32_t>(points_.size());
    for (const AcGePoint3d& p : foot) {
        points_.push_back(p);
        points_.push_back(p + up);
    }
    for (uint32_t i = first; i + 3 < points_.size(); i += 2)
        quad(i, i + 2, i + 3, i + 1, 0);
}

void FaceCollector::fan(std::span<const AcGePoint3d> corners) {
    const auto first = static_cast<uint32_t>(points_.size());
    points_.insert(points_.end(), corners.begin(), corners.end());
    for (uint32_t i = first + 1; i + 1 < points_.size(); ++i)
        triangle(first, i, i + 1, 0);
}

} // namespace vndk::gi
