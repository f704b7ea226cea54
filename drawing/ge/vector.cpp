#include "ge/matrix3d.h"

const AcGeVector3d AcGeVector3d::kIdentity{0, 0, 0};
const AcGeVector3d AcGeVector3d::kXAxis{1, 0, 0};
const AcGeVector3d AcGeVector3d::kYAxis{0, 1, 0};
const AcGeVector3d AcGeVector3d::kZAxis{0, 0, 1};
const AcGePoint3d AcGePoint3d::kOrigin{0, 0, 0};

double AcGeVector3d::angleTo(const AcGeVector3d& v, const AcGeVector3d& reference) const {
    const double angle = angleTo(v);
    return crossProduct(v).dotProduct(reference) < 0 ? 2 * kAcGePi - angle : angle;
}

AcGeVector3d AcGeVector3d::perpVector() const {
    // The bound of the arbitrary axis rule: nearer to the Z axis than this, Y takes its place.
    constexpr double kNearZ = 1.0 / 64;
    const AcGeVector3d n = normal();
    const bool nearZ = std::abs(n.x) < kNearZ && std::abs(n.y) < kNearZ;
    return (nearZ ? kYAxis : kZAxis).crossProduct(n).normal();
}

AcGeVector3d& AcGeVector3d::transformBy(const AcGeMatrix3d& matrix) { return *this = matrix * *this; }

AcGePoint3d& AcGePoint3d::transformBy(const AcGeMatrix3d& matrix) { return *this = matrix * *this; }
