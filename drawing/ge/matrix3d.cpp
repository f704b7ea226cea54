#include "ge/matrix3d.h"

#include <cassert>

const AcGeMatrix3d AcGeMatrix3d::kIdentity;

bool AcGeScale3d::isProportional(const AcGeTol& tol) const {
    return std::abs(std::abs(sx) - std::abs(sy)) <= tol.equalVector &&
           std::abs(std::abs(sx) - std::abs(sz)) <= tol.equalVector;
}

AcGeMatrix3d::AcGeMatrix3d() {
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            entry[row][column] = row == column ? 1.0 : 0.0;
}

AcGeMatrix3d AcGeMatrix3d::translation(const AcGeVector3d& offset) {
    return coordSystem(AcGePoint3d(offset.x, offset.y, offset.z), AcGeVector3d::kXAxis, AcGeVector3d::kYAxis,
                       AcGeVector3d::kZAxis);
}

AcGeMatrix3d AcGeMatrix3d::coordSystem(const AcGePoint3d& origin, const AcGeVector3d& x, const AcGeVector3d& y,
                                       const AcGeVector3d& z) {
    AcGeMatrix3d m;
    const AcGeVector3d columns[] = {x, y, z, origin.asVector()};
    for (int column = 0; column < 4; ++column) {
        m.entry[0][column] = columns[column].x;
        m.entry[1][column] = columns[column].y;
        m.entry[2][column] = columns[column].z;
    }
    return m;
}

AcGeMatrix3d AcGeMatrix3d::rotation(double angle, const AcGeVector3d& axis, const AcGePoint3d& center) {
    const AcGeVector3d u = axis.normal();
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double t = 1 - c;
    const AcGeMatrix3d turn =
        coordSystem(AcGePoint3d::kOrigin, {t * u.x * u.x + c, t * u.x * u.y + s * u.z, t * u.x * u.z - s * u.y},
                    {t * u.x * u.y - s * u.z, t * u.y * u.y + c, t * u.y * u.z + s * u.x},
                    {t * u.x * u.z + s * u.y, t * u.y * u.z - s * u.x, t * u.z * u.z + c});
    return translation(center.asVector()) * turn * translation(-center.asVector());
}

AcGeMatrix3d AcGeMatrix3d::scaling(double factor, const AcGePoint3d& center) {
    return translation(center.asVector()) * scaling(AcGeScale3d(factor)) * translation(-center.asVector());
}

AcGeMatrix3d AcGeMatrix3d::scaling(const AcGeScale3d& scale) {
    return coordSystem(AcGePoint3d::kOrigin, {scale.sx, 0, 0}, {0, scale.sy, 0}, {0, 0, scale.sz});
}

AcGeMatrix3d AcGeMatrix3d::mirroring(const AcGePoint3d& point, const AcGeVector3d& normal) {
    const AcGeVector3d n = normal.normal();
    const AcGeMatrix3d flip = coordSystem(AcGePoint3d::kOrigin, AcGeVector3d::kXAxis - n * (2 * n.x),
                                          AcGeVector3d::kYAxis - n * (2 * n.y), AcGeVector3d::kZAxis - n * (2 * n.z));
    return translation(point.asVector()) * flip * translation(-point.asVector());
}

AcGeMatrix3d AcGeMatrix3d::planeToWorld(const AcGeVector3d& normal) {
    if (normal == AcGeVector3d::kZAxis)
        return kIdentity; // nearly every entity of a plan
    const AcGeVector3d z = normal.normal();
    const AcGeVector3d x = z.perpVector();
    return coordSystem(AcGePoint3d::kOrigin, x, z.crossProduct(x).normal(), z);
}

AcGeMatrix3d AcGeMatrix3d::worldToPlane(const AcGeVector3d& normal) {
    return normal == AcGeVector3d::kZAxis ? kIdentity : planeToWorld(normal).inverse();
}

AcGeMatrix3d AcGeMatrix3d::operator*(const AcGeMatrix3d& right) const {
    AcGeMatrix3d product;
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column) {
            double sum = 0;
            for (int k = 0; k < 4; ++k)
                sum += entry[row][k] * right.entry[k][column];
            product.entry[row][column] = sum;
        }
    return product;
}

double AcGeMatrix3d::det() const { return xAxis().dotProduct(yAxis().crossProduct(zAxis())); }

bool AcGeMatrix3d::isSingular(const AcGeTol& tol) const {
    const double size = xAxis().length() * yAxis().length() * zAxis().length();
    return !(std::abs(det()) > tol.equalVector * size) || !std::isfinite(det());
}

AcGeMatrix3d AcGeMatrix3d::inverse() const {
    const double d = det();
    assert(d != 0 && "the inverse of a singular matrix was asked for");
    const AcGeVector3d x = xAxis();
    const AcGeVector3d y = yAxis();
    const AcGeVector3d z = zAxis();
    // The rows of the inverse are the cross products of the columns.
    const AcGeVector3d rows[] = {y.crossProduct(z) * (1 / d), z.crossProduct(x) * (1 / d), x.crossProduct(y) * (1 / d)};
    const AcGeVector3d offset = translationPart();
    AcGeMatrix3d m;
    for (int row = 0; row < 3; ++row) {
        m.entry[row][0] = rows[row].x;
        m.entry[row][1] = rows[row].y;
        m.entry[row][2] = rows[row].z;
        m.entry[row][3] = -rows[row].dotProduct(offset);
    }
    return m;
}

bool AcGeMatrix3d::isUniScaledOrtho(const AcGeTol& tol) const {
    const AcGeVector3d axes[] = {xAxis(), yAxis(), zAxis()};
    const double size = axes[0].length();
    if (!(size > 0))
        return false;
    for (int i = 0; i < 3; ++i) {
        const AcGeVector3d& a = axes[i];
        const AcGeVector3d& b = axes[(i + 1) % 3];
        if (std::abs(a.length() - size) > tol.equalVector * size ||
            std::abs(a.dotProduct(b)) > tol.equalVector * size * size)
            return false;
    }
    return true;
}

double AcGeMatrix3d::scale() const { return std::cbrt(std::abs(det())); }

bool AcGeMatrix3d::isEqualTo(const AcGeMatrix3d& other, const AcGeTol& tol) const {
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            if (std::abs(entry[row][column] - other.entry[row][column]) > tol.equalVector)
                return false;
    return true;
}
