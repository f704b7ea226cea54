#include "ge/extents.h"

#include <algorithm>

void AcDbExtents::addPoint(const AcGePoint3d& p) {
    min_ = {std::min(min_.x, p.x), std::min(min_.y, p.y), std::min(min_.z, p.z)};
    max_ = {std::max(max_.x, p.x), std::max(max_.y, p.y), std::max(max_.z, p.z)};
}

void AcDbExtents::addExt(const AcDbExtents& other) {
    if (other.isEmpty())
        return;
    addPoint(other.min_);
    addPoint(other.max_);
}

void AcDbExtents::expandBy(const AcGeVector3d& v) {
    if (isEmpty())
        return;
    addPoint(min_ + v);
    addPoint(max_ + v);
}

void AcDbExtents::transformBy(const AcGeMatrix3d& matrix) {
    if (isEmpty())
        return;
    AcDbExtents moved;
    for (int corner = 0; corner < 8; ++corner)
        moved.addPoint(matrix * AcGePoint3d(corner & 1 ? max_.x : min_.x, corner & 2 ? max_.y : min_.y,
                                            corner & 4 ? max_.z : min_.z));
    *this = moved;
}
