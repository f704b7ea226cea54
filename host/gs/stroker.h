// Lines with a pattern and a width.
#pragma once

#include "ge/matrix3d.h"
#include "gs/raster.h"
#include "gs/styles.h"

#include <span>

namespace vndk::gs {

/// From a block's coordinates to pixels.
class Projector {
public:
    explicit Projector(const AcGeMatrix3d& toDevice) : m_(toDevice) {}

    Spot operator()(const AcGePoint3d& p) const {
        const auto& e = m_.entry;
        return {e[0][0] * p.x + e[0][1] * p.y + e[0][2] * p.z + e[0][3],
                e[1][0] * p.x + e[1][1] * p.y + e[1][2] * p.z + e[1][3],
                e[2][0] * p.x + e[2][1] * p.y + e[2][2] * p.z + e[2][3]};
    }
    /// Of a vector.
    Spot operator()(const AcGeVector3d& v) const {
        const auto& e = m_.entry;
        return {e[0][0] * v.x + e[0][1] * v.y + e[0][2] * v.z, e[1][0] * v.x + e[1][1] * v.y + e[1][2] * v.z,
                e[2][0] * v.x + e[2][1] * v.y + e[2][2] * v.z};
    }
    const AcGeMatrix3d& matrix() const { return m_; }
    /// Pixels of a drawing unit in the direction in which it is longest.
    double scale() const;

private:
    AcGeMatrix3d m_;
};

class Stroker {
public:
    Stroker(Raster& raster, const Projector& projector, const Style& style);

    /// One run of the pattern along all of the points.
    void draw(std::span<const AcGePoint3d> points) const;
    /// A straight piece, unbroken.
    void piece(const Spot& a, const Spot& b) const;
    /// A straight piece with the pattern, which begins and ends with it.
    void dashed(const Spot& a, const Spot& b) const;

private:
    void drawBroken(std::span<const AcGePoint3d> points) const;
    void drawDashes(const Spot& a, const Spot& b, double length, double begin, double total) const;

    Raster& raster_;
    const Projector& projector_;
    const Style& style_;
    double period_ = 0; // drawing units; 0: unbroken
};

} // namespace vndk::gs
