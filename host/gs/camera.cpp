#include "gs/camera.h"

#include <algorithm>
#include <cmath>

namespace vndk::gs {

namespace {

bool isFinite(const AcGeVector3d& v) { return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z); }
bool isSize(double size) { return size > 0 && std::isfinite(size); }

} // namespace

bool Camera::set(const AcGePoint3d& position, const AcGePoint3d& target, const AcGeVector3d& upVector,
                 double fieldWidth, double fieldHeight, bool perspective) {
    const AcGeVector3d sight = position - target;
    const double distance = sight.length();
    if (!isFinite(position.asVector()) || !isFinite(target.asVector()) || !isFinite(upVector) || !isSize(fieldWidth) ||
        !isSize(fieldHeight) || !isSize(distance))
        return false;
    const AcGeVector3d back = sight * (1 / distance);
    const AcGeVector3d up = upVector.normal() - back * upVector.normal().dotProduct(back);
    if (up.isZeroLength())
        return false;
    position_ = position;
    target_ = target;
    up_ = up.normal();
    fieldWidth_ = fieldWidth;
    fieldHeight_ = fieldHeight;
    perspective_ = perspective;
    return true;
}

void Camera::dolly(const AcGeVector3d& vector) {
    const AcGeVector3d step = right() * vector.x + up_ * vector.y + back() * vector.z;
    if (!isFinite(step))
        return;
    position_ += step;
    target_ += step;
}

void Camera::turn(double angle, const AcGeVector3d& axis) {
    if (!std::isfinite(angle))
        return;
    const AcGeMatrix3d rotation = AcGeMatrix3d::rotation(angle, axis, target_);
    position_ = rotation * position_;
    up_ = rotation * up_;
    // Many small turns don't add up to a crooked frame.
    const AcGeVector3d sight = back();
    up_ = (up_ - sight * up_.dotProduct(sight)).normal();
}

void Camera::roll(double angle) { turn(-angle, back()); }

void Camera::orbit(double xOrbit, double yOrbit) {
    turn(xOrbit, up_);
    turn(-yOrbit, right());
}

void Camera::zoom(double factor) {
    if (!isSize(factor) || !isSize(fieldWidth_ / factor) || !isSize(fieldHeight_ / factor))
        return;
    fieldWidth_ /= factor;
    fieldHeight_ /= factor;
}

AcGeMatrix3d Camera::worldToView() const {
    const AcGeVector3d axes[] = {right(), up_, back()};
    AcGeMatrix3d matrix;
    for (int row = 0; row < 3; ++row) {
        const AcGeVector3d& axis = axes[row];
        matrix.entry[row][0] = axis.x;
        matrix.entry[row][1] = axis.y;
        matrix.entry[row][2] = axis.z;
        matrix.entry[row][3] = -axis.dotProduct(target_.asVector());
    }
    return matrix;
}

AcGeMatrix3d Camera::viewToDevice(const AcGsDCRect& viewport) const {
    const double width = viewport.m_max.x - viewport.m_min.x + 1.0, height = viewport.m_max.y - viewport.m_min.y + 1.0;
    const double scale = std::min(width / fieldWidth_, height / fieldHeight_);
    AcGeMatrix3d matrix;
    matrix.entry[0][0] = scale;
    matrix.entry[1][1] = -scale;
    matrix.entry[2][2] = scale;
    matrix.entry[0][3] = viewport.m_min.x + width / 2;
    matrix.entry[1][3] = viewport.m_min.y + height / 2;
    return matrix;
}

std::optional<Lens> Camera::lens(const AcGsDCRect& viewport) const {
    const AcGeMatrix3d toDevice = viewToDevice(viewport);
    const double eye = (position_ - target_).length() * toDevice.entry[0][0];
    // From too far away it is no other picture.
    return perspective_ && isSize(eye) ? std::optional(Lens{{toDevice.entry[0][3], toDevice.entry[1][3], 0}, eye})
                                       : std::nullopt;
}

} // namespace vndk::gs
