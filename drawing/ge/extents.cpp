#include "ge/extents.h"

void AcDbExtents::expandBy(const AcGeVector3d& v) {
    if (isEmpty())
        return;
    addPoint(min_ + v);
    addPoint(max_ + v);
}

/// Along each axis the sums of the smaller and of the greater shares are what the outermost corners come to.
void AcDbExtents::transformBy(const AcGeMatrix3d& matrix) {
    if (isEmpty())
        return;
    double low[3], high[3];
    for (int row = 0; row < 3; ++row) {
        const double* const m = matrix.entry[row];
        const double from[] = {m[0] * min_.x, m[1] * min_.y, m[2] * min_.z};
        const double to[] = {m[0] * max_.x, m[1] * max_.y, m[2] * max_.z};
        low[row] = std::min(from[0], to[0]) + std::min(from[1], to[1]) + std::min(from[2], to[2]) + m[3];
        high[row] = std::max(from[0], to[0]) + std::max(from[1], to[1]) + std::max(from[2], to[2]) + m[3];
    }
    // What isn't a number is left out, as with points.
    *this = AcDbExtents();
    addPoint({low[0], low[1], low[2]});
    addPoint({high[0], high[1], high[2]});
}
