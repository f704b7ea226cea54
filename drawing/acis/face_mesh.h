// Faces of solids as triangles, and lines along their surfaces.
#pragma once

#include "acis/body.h"

#include <cstdint>

namespace vndk::acis {

struct Mesh {
    std::vector<AcGePoint3d> points;
    std::vector<AcGeVector3d> normals; // one for each point, outward
    std::vector<uint32_t> triangles;   // three places of points each, counter-clockwise seen from outside
};

/// The part of its surface's plane of parameters that a face covers.
class FaceDomain {
public:
    /// REQUIRES: face.surface.
    explicit FaceDomain(const Face& face);

    /// Adds the face's triangles. A face of too many corners to be divided in reasonable time adds none.
    void addTo(Mesh& mesh) const;
    /// Lines on a curved face: `perTurn` of them along v for each full turn in u, and across on spheres and rings.
    void addIsolines(int perTurn, std::vector<std::vector<AcGePoint3d>>& lines) const;

private:
    /// A piece of a contour, between parameters.
    struct Side {
        AcGePoint2d from, to;
    };
    struct Crossing {
        double v;
        const Side* side; // null: where the surface ends
    };

    void addContour(const std::vector<AcGePoint3d>& contour);
    void addSide(AcGePoint2d from, AcGePoint2d to);
    void addCut(const AcGePoint2d& from, const AcGePoint2d& to);
    void findEnds();
    /// Where the face begins and ends at a parameter: pairs, from below.
    void crossings(double u, std::vector<Crossing>& found) const;
    std::vector<double> breaks() const;
    void addStrip(double left, double right, const std::vector<Crossing>& at, Mesh& mesh) const;
    void addPatch(const AcGePoint2d (&corners)[4], Mesh& mesh) const;
    AcGePoint3d place(double u, double v) const;

    Surface surface_;
    bool flipped_ = false;     // what lies to the left of a side in the plane of parameters isn't the face
    bool swapped_ = false;     // u and v have changed their roles: contours run round the tube of a ring
    bool outward_ = true;      // the surface's normal is the face's
    bool plain_ = true;        // no contours: the whole surface
    bool holdsLowest_ = false; // where the surface ends below belongs to the face
    std::vector<Side> sides_;
};

} // namespace vndk::acis
