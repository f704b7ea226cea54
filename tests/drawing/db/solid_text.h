// Makes the text form of solids of a few faces.
#pragma once

#include "ge/vector.h"

#include <sstream>
#include <string>
#include <vector>

namespace vndk::test {

struct SolidEdge {
    std::string curve; // its record without the name's attribute pointer: "ellipse-curve 0 0 0 ..."
    AcGePoint3d start, end;
};
struct SolidUse {
    size_t edge;
    bool reversed;
};
struct SolidFace {
    std::string surface;
    bool reversed = false;
    std::vector<std::vector<SolidUse>> loops;
};

class SolidText {
public:
    SolidText(const std::vector<SolidFace>& faces, const std::vector<SolidEdge>& edges) {
        for (const char* const first : {"body $-1 $1 $-1 $-1", "lump $-1 $-1 $2 $0", "shell $-1 $-1 $-1 $3 $-1 $1"})
            records_.push_back(first);
        std::vector<size_t> places;
        for (size_t i = 0; i < faces.size(); ++i)
            places.push_back(add(""));
        for (const SolidEdge& edge : edges)
            edges_.push_back(addEdge(edge));
        for (size_t i = 0; i < faces.size(); ++i) {
            const std::string next = i + 1 < faces.size() ? link(places[i + 1]) : " $-1";
            std::string loop = " $-1";
            for (auto uses = faces[i].loops.rbegin(); uses != faces[i].loops.rend(); ++uses)
                loop = link(addLoop(*uses, loop, places[i]));
            const std::string surface = link(addNamed(faces[i].surface));
            records_[places[i]] = "face $-1" + next + loop + " $2 $-1" + surface +
                                  (faces[i].reversed ? " reversed" : " forward") + " single";
        }
    }

    std::string text() const {
        std::string all = "400 " + std::to_string(records_.size()) +
                          " 1 0          \n5 Maker 3 One 4 Date \n1 9.9999999999999995e-007 1e-010 \n";
        for (const std::string& record : records_)
            all += record + " #\n";
        return all;
    }

private:
    static std::string link(size_t place) { return " $" + std::to_string(place); }
    static std::string shown(const AcGePoint3d& p) {
        std::ostringstream out;
        out.precision(17);
        out << " " << p.x << " " << p.y << " " << p.z;
        return out.str();
    }
    size_t add(std::string record) {
        records_.push_back(std::move(record));
        return records_.size() - 1;
    }
    size_t addNamed(const std::string& record) {
        const size_t blank = record.find(' ');
        return add(record.substr(0, blank) + " $-1" + record.substr(blank));
    }
    size_t addVertex(const AcGePoint3d& p) {
        const size_t point = add("point $-1" + shown(p));
        return add("vertex $-1 $-1" + link(point));
    }
    size_t addEdge(const SolidEdge& edge) {
        const size_t start = addVertex(edge.start), end = edge.start == edge.end ? start : addVertex(edge.end);
        return add("edge $-1" + link(start) + link(end) + " $-1" + link(addNamed(edge.curve)) + " forward");
    }
    size_t addLoop(const std::vector<SolidUse>& uses, const std::string& next, size_t face) {
        const size_t loop = add(""), first = records_.size();
        for (size_t i = 0; i < uses.size(); ++i)
            add("coedge $-1" + link(first + (i + 1) % uses.size()) + link(first + (i + uses.size() - 1) % uses.size()) +
                " $-1" + link(edges_[uses[i].edge]) + (uses[i].reversed ? " reversed" : " forward") + link(loop) +
                " $-1");
        records_[loop] = "loop $-1" + next + link(first) + link(face);
        return loop;
    }

    std::vector<std::string> records_;
    std::vector<size_t> edges_;
};

/// A box from the origin with a square hole from its top to its bottom, if it is wanted.
inline std::string boxText(double x, double y, double z, bool hole = false) {
    std::vector<SolidEdge> edges;
    std::vector<SolidFace> faces(6);
    faces[4].surface = "plane-surface 0 0 0 0 0 -1 1 0 0 forward_v I I I I";
    faces[5].surface = "plane-surface 0 0 " + std::to_string(z) + " 0 0 1 1 0 0 forward_v I I I I";
    const auto addPrism = [&](const std::vector<AcGePoint3d>& corners, size_t firstFace) {
        const size_t n = corners.size(), first = edges.size();
        const auto straight = [&](const AcGePoint3d& a, const AcGePoint3d& b) {
            std::ostringstream out;
            const AcGeVector3d d = (b - a).normal();
            out << "straight-curve " << a.x << ' ' << a.y << ' ' << a.z << ' ' << d.x << ' ' << d.y << ' ' << d.z
                << " I I";
            edges.push_back({out.str(), a, b});
        };
        const AcGeVector3d up(0, 0, z);
        for (size_t i = 0; i < n; ++i)
            straight(corners[i], corners[(i + 1) % n]);
        for (size_t i = 0; i < n; ++i)
            straight(corners[i] + up, corners[(i + 1) % n] + up);
        for (size_t i = 0; i < n; ++i)
            straight(corners[i], corners[i] + up);
        std::vector<SolidUse> bottom, top;
        for (size_t i = 0; i < n; ++i) {
            const AcGeVector3d along = (corners[(i + 1) % n] - corners[i]).normal();
            std::ostringstream out;
            out << "plane-surface " << corners[i].x << ' ' << corners[i].y << " 0 " << along.y << ' ' << -along.x
                << " 0 0 0 1 forward_v I I I I";
            faces[firstFace + i] = {out.str(),
                                    false,
                                    {{{first + i, false},
                                      {first + 2 * n + (i + 1) % n, false},
                                      {first + n + i, true},
                                      {first + 2 * n + i, true}}}};
            bottom.insert(bottom.begin(), {first + i, true});
            top.push_back({first + n + i, false});
        }
        faces[4].loops.push_back(bottom);
        faces[5].loops.push_back(top);
    };
    addPrism({{0, 0, 0}, {x, 0, 0}, {x, y, 0}, {0, y, 0}}, 0);
    if (hole) {
        faces.resize(10);
        addPrism({{x / 4, y / 4, 0}, {x / 4, y / 2, 0}, {x / 2, y / 2, 0}, {x / 2, y / 4, 0}}, 6);
    }
    return SolidText(faces, edges).text();
}

/// A round piece about the Z axis from z = 0 to 3, with radius 2 below and `top` above; 0 makes it end in a point.
inline std::string coneText(double top) {
    const double rise = (top - 2) / 3, length = std::sqrt(1 + rise * rise);
    std::ostringstream side, rim;
    side.precision(17);
    side << "cone-surface 0 0 0 0 0 1 2 0 0 1 I I " << rise / length << ' ' << 1 / length << " 2 forward I I I I";
    std::vector<SolidEdge> edges = {{"ellipse-curve 0 0 0 0 0 1 2 0 0 1 I I", {2, 0, 0}, {2, 0, 0}}};
    std::vector<SolidFace> faces = {{side.str(), false, {{{0, false}}}},
                                    {"plane-surface 0 0 0 0 0 -1 1 0 0 forward_v I I I I", false, {{{0, true}}}}};
    if (top > 0) {
        rim << "ellipse-curve 0 0 3 0 0 1 " << top << " 0 0 1 I I";
        edges.push_back({rim.str(), {top, 0, 3}, {top, 0, 3}});
        faces[0].loops.push_back({{1, true}});
        faces.push_back({"plane-surface 0 0 3 0 0 1 1 0 0 forward_v I I I I", false, {{{1, false}}}});
    }
    return SolidText(faces, edges).text();
}

} // namespace vndk::test
