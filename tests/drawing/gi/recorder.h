// What entities ask to be drawn, kept for looking.
#pragma once

#include "gi/drawable.h"

#include <vector>

namespace vndk::test {

/// Keeps what it is asked to draw. Letters are as wide as half their height.
class Recorder : public AcGiWorldDraw, private AcGiGeometry, private AcGiSubEntityTraits {
public:
    AcGiGeometry& geometry() override { return *this; }
    AcGiSubEntityTraits& subEntityTraits() override { return *this; }

    std::vector<std::vector<AcGePoint3d>> lines, areas;
    std::vector<AcGiText> texts;
    struct Arc {
        AcGePoint3d center;
        AcGeVector3d major;
        double sweep;
    };
    std::vector<Arc> arcs;
    std::vector<AcCmEntityColor> colors; // in the order in which they were set
    size_t triangles = 0;                // of shells

private:
    void polyline(std::span<const AcGePoint3d> p) override { lines.emplace_back(p.begin(), p.end()); }
    void polygon(std::span<const AcGePoint3d> p) override { areas.emplace_back(p.begin(), p.end()); }
    void polyPolygon(std::span<const AcGePoint3d> p, std::span<const uint32_t>) override {
        areas.emplace_back(p.begin(), p.end());
    }
    void shell(std::span<const AcGePoint3d> p, std::span<const AcGiTriangle> faces,
               std::span<const AcGeVector3d>) override {
        triangles += faces.size();
        for (const AcGiTriangle& face : faces)
            for (unsigned i = 0; i < 3; ++i)
                if (face.edges >> i & 1)
                    lines.push_back({p[face.corners[i]], p[face.corners[(i + 1) % 3]]});
    }
    void ellipArc(const AcGePoint3d& center, const AcGeVector3d& major, const AcGeVector3d&, double,
                  double sweep) override {
        arcs.push_back({center, major, sweep});
    }
    void text(const AcGiText& t) override { texts.push_back(t); }
    double textWidth(const AcGiText& t) override { return static_cast<double>(t.text.size()) * t.height / 2; }
    void ray(const AcGePoint3d&, const AcGeVector3d&) override {}
    void xline(const AcGePoint3d&, const AcGeVector3d&) override {}
    void point(const AcGePoint3d&, double) override {}
    void block(AcDbObjectId, const AcGeMatrix3d&) override {}
    void setTrueColor(const AcCmEntityColor& color) override { colors.push_back(color); }
    void setLayer(AcDbObjectId) override {}
    void setLineType(AcDbObjectId) override {}
    void setLineTypeScale(double) override {}
    void setLineWeight(AcDb::LineWeight) override {}
};

} // namespace vndk::test
