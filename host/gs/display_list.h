// The contents of a block, ready to be drawn through any camera and any reference.
//
// Colours, layers, linetypes and lineweights are kept as the entities have them: what they take from a reference or a
// layer is known only where the list is drawn.
#pragma once

#include "ge/extents.h"
#include "gi/geometry.h"
#include "gi/traits.h"
#include "win32/fonts.h"

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace vndk::gs {

/// Properties as they are given.
struct Look {
    AcCmEntityColor color;
    AcDbObjectId layer, linetype;
    double linetypeScale = 1;
    AcDb::LineWeight weight = AcDb::kLnWtByLayer;
    bool operator==(const Look&) const = default;
};

struct LookHash {
    size_t operator()(const Look& look) const {
        size_t hash = look.color.value;
        for (const size_t part :
             {std::hash<const void*>()(look.layer.stub()), std::hash<const void*>()(look.linetype.stub()),
              std::hash<double>()(look.linetypeScale), static_cast<size_t>(look.weight)})
            hash = hash * 1000003 ^ part;
        return hash;
    }
};

/// One thing; `first` and `count` are places in the vector of its kind.
struct Item {
    enum class Kind : unsigned char { Polyline, Polygon, Area, Shell, Arc, Text, Point, Endless, Block };
    Kind kind = Kind::Polyline;
    uint32_t look = 0;
    uint32_t first = 0, count = 1;
};

/// Contours one after another; `ends` count from the first point.
struct AreaShape {
    uint32_t first = 0, count = 0;
    std::vector<uint32_t> ends;
};

/// Triangles whose corners count from the first point.
struct ShellShape {
    uint32_t first = 0, count = 0;
    std::vector<AcGiTriangle> faces;
    std::vector<AcGeVector3d> normals; // one for each point, of any length
};

/// center + major cos u + minor sin u.
struct ArcShape {
    AcGePoint3d center;
    AcGeVector3d major, minor;
    double start = 0, sweep = 0;
};

/// Letters whose outlines stand in units of their height: `x` and `y` are those units in the block's coordinates.
struct TextShape {
    AcGePoint3d origin;
    AcGeVector3d x, y;
    std::string letters;
    const LOGFONTA* font = nullptr; // lives as long as the program
    double width = 0;               // in units
    bool underlined = false, overlined = false;
};

struct PointShape {
    AcGePoint3d position;
    double rotation = 0;
};

struct EndlessShape {
    AcGePoint3d base;
    AcGeVector3d direction;
    bool bothWays = false;
};

struct BlockShape {
    AcDbObjectId record;
    AcGeMatrix3d transform; // into the coordinates of this list
};

/// What one entity of the block shows: items one after another, none while it is erased.
struct Part {
    AcDbObjectId entity;
    uint32_t first = 0, count = 0;
};

/// Items that belong to no part are what is left of entities that have changed since.
struct DisplayList {
    std::vector<Look> looks; // all different
    std::unordered_map<Look, uint32_t, LookHash> lookNumbers;
    std::vector<Part> parts;        // in the order in which they are drawn
    std::vector<AcDbExtents> boxes; // around each part, what it takes from blocks and endless lines aside
    std::vector<Item> items;
    std::vector<AcGePoint3d> points;
    std::vector<AreaShape> areas;
    std::vector<ShellShape> shells;
    std::vector<ArcShape> arcs;
    std::vector<TextShape> texts;
    std::vector<PointShape> marks;
    std::vector<EndlessShape> endless;
    std::vector<BlockShape> blocks;
};

} // namespace vndk::gs
