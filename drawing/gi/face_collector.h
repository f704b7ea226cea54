// Gathers the faces of a surface, which is drawn as one shell. Private to this room.
#pragma once

#include "gi/geometry.h"

#include <vector>

namespace vndk::gi {

class FaceCollector {
public:
    /// Points are shared by the faces that are smooth with each other where they meet.
    uint32_t point(const AcGePoint3d& p) {
        points_.push_back(p);
        return static_cast<uint32_t>(points_.size() - 1);
    }
    void triangle(uint32_t a, uint32_t b, uint32_t c, unsigned edges) {
        faces_.push_back({{a, b, c}, static_cast<unsigned char>(edges & 7)});
    }
    /// Bit i of `edges`: the side behind corner i is an edge.
    void quad(uint32_t a, uint32_t b, uint32_t c, uint32_t d, unsigned edges) {
        triangle(a, b, c, edges & 3);
        triangle(a, c, d, edges >> 1 & 6);
    }
    /// What a line leaves behind it when it is moved: no edge of it counts.
    void wall(std::span<const AcGePoint3d> foot, const AcGeVector3d& up);
    /// The area of a corner and all others around it.
    void fan(std::span<const AcGePoint3d> corners);

    const std::vector<AcGePoint3d>& points() const { return points_; }
    void draw(AcGiGeometry& geometry) const {
        if (!faces_.empty())
            geometry.shell(points_, faces_, {});
    }

private:
    std::vector<AcGePoint3d> points_;
    std::vector<AcGiTriangle> faces_;
};

} // namespace vndk::gi
