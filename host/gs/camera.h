// A camera: the arithmetic of a view. Matrices are those of a parallel projection; a perspective shows what lies at
// the target as they do, and the rest through a lens.
#pragma once

#include "ge/matrix3d.h"
#include "gs/lens.h"
#include "gs/view.h"

#include <optional>

namespace vndk::gs {

class Camera {
public:
    /// False, and nothing changes: the values make no camera (gs/view.h tells which).
    bool set(const AcGePoint3d& position, const AcGePoint3d& target, const AcGeVector3d& upVector, double fieldWidth,
             double fieldHeight, bool perspective = false);
    const AcGePoint3d& position() const { return position_; }
    const AcGePoint3d& target() const { return target_; }
    AcGeVector3d upVector() const { return up_; }
    double fieldWidth() const { return fieldWidth_; }
    double fieldHeight() const { return fieldHeight_; }

    void dolly(const AcGeVector3d& vector);
    void roll(double angle);
    void orbit(double xOrbit, double yOrbit);
    void zoom(double factor);

    AcGeMatrix3d worldToView() const;
    AcGeMatrix3d viewToDevice(const AcGsDCRect& viewport) const;
    /// Nothing for a parallel projection.
    std::optional<Lens> lens(const AcGsDCRect& viewport) const;

private:
    AcGeVector3d back() const { return (position_ - target_).normal(); }
    AcGeVector3d right() const { return up_.crossProduct(back()); }
    void turn(double angle, const AcGeVector3d& axis);

    AcGePoint3d position_{0, 0, 1};
    AcGePoint3d target_;
    AcGeVector3d up_{0, 1, 0}; // length 1, at right angles to the line of sight
    double fieldWidth_ = 1, fieldHeight_ = 1;
    bool perspective_ = false;
};

} // namespace vndk::gs
