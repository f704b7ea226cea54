// Draws display lists through a camera.
#pragma once

#include "gs/display_lists.h"
#include "gs/lens.h"
#include "gs/raster.h"
#include "gs/stroker.h"
#include "gs/styles.h"

#include <array>
#include <optional>

namespace vndk::gs {

/// How points are marked.
struct PointMarks {
    int mode = 0;    // PDMODE
    double size = 0; // PDSIZE: drawing units, or below 0 percent of the viewport's height; 0 is 5 percent
};

/// How a view wants its lists drawn.
struct Painting {
    enum Surfaces : unsigned char { kEdgesOnly, kHiding, kFlat, kSmooth };
    enum Strokes : unsigned char { kAsTheyAre, kErased, kDashed };

    PointMarks marks;
    double viewportHeight = 1; // pixels
    std::uint32_t background = 0xFF000000;
    bool fills = true;              // else areas are outlines
    Surfaces surfaces = kEdgesOnly; // others need a raster with depths
    bool edges = true;              // of surfaces
    Strokes strokes = kAsTheyAre;   // with another one areas and texts are outlines
    bool hurried = false;           // nothing is prepared for later pictures
    double thinning = 1;            // one of that many parts is drawn, the same ones each time
    std::optional<Lens> lens;       // of a perspective
};

class ListPainter {
public:
    ListPainter(Raster& raster, DisplayLists& lists, Styles& styles, const Painting& painting)
        : raster_(raster), lists_(lists), styles_(styles), painting_(painting) {
        raster_.setLens(lens());
    }
    ~ListPainter() { raster_.setLens(nullptr); }
    ListPainter(const ListPainter&) = delete;
    ListPainter& operator=(const ListPainter&) = delete;

    /// A list where it is drawn.
    struct Level {
        const DisplayList& list;
        Projector projector; // from the list's coordinates to pixels
        std::vector<Style> styles;
    };
    /// Valid as long as the list.
    Level level(const DisplayList& list, const AcGeMatrix3d& toDevice) {
        return level(list, toDevice, styles_.outermost());
    }
    void draw(const DisplayList& list, const AcGeMatrix3d& toDevice);
    /// All of a block as it looks by itself.
    void draw(AcDbObjectId record, const AcGeMatrix3d& toDevice);
    void drawPart(const Level& level, uint32_t part);

    /// How far around its place something may be drawn, in pixels.
    double margin() const;

private:
    const Lens* lens() const { return painting_.lens ? &*painting_.lens : nullptr; }
    double scaleAt(const Spot& place) const;
    Level level(const DisplayList& list, const AcGeMatrix3d& toDevice, const Surroundings& around);
    void drawRecord(AcDbObjectId record, bool definitions, const AcGeMatrix3d& toDevice, const Surroundings& around);
    bool isWorthFinding(AcDbObjectId record, bool definitions, const AcGeMatrix3d& toDevice, const PictureBox& seen);
    void drawItem(const DisplayList& list, const Item& item, const Projector& projector, const Style& style);
    void drawThin(std::span<const AcGePoint3d> points, const Projector& projector, std::uint32_t color);
    void drawArc(const ArcShape& arc, const Projector& projector, const Style& style);
    void drawThinArc(const ArcShape& arc, int steps, const Spot& center, const Spot& major, const Spot& minor,
                     std::uint32_t color);
    void drawText(const TextShape& text, const Projector& projector, const Style& style);
    void drawLetters(const TextShape& text, const Spot& origin, const Spot& x, const Spot& y, const Style& style);
    void drawMark(const PointShape& point, const Projector& projector, const Style& style);
    void drawEndless(const EndlessShape& line, const Projector& projector, const Style& style);
    void drawSmall(const AcDbExtents& box, const AcGeMatrix3d& toDevice, const Style& style);
    void drawBlock(const BlockShape& block, const Projector& projector, const Style& style);

    void drawArea(std::span<const AcGePoint3d> corners, std::span<const uint32_t> ends, const Projector& projector,
                  const Style& style);
    void drawShell(std::span<const AcGePoint3d> points, const ShellShape& shell, const Projector& projector,
                   const Style& style);
    void drawFaces(const ShellShape& shell, const Projector& projector, const Style& style);
    void drawShellEdges(std::span<const AcGePoint3d> points, const ShellShape& shell, const Projector& projector,
                        const Style& style);
    double markSize(const Projector& projector) const;

    Raster& raster_;
    DisplayLists& lists_;
    Styles& styles_;
    Painting painting_;
    std::vector<AcDbObjectId> path_; // the blocks around what is drawn
    // References within references multiply. No drawing that can be read on a screen comes near this.
    int referencesLeft_ = 1'000'000;
    std::vector<AcGePoint3d> curve_;
    std::vector<Spot> outline_;
    std::vector<size_t> contours_;
};

} // namespace vndk::gs
