// Draws display lists through a camera.
#pragma once

#include "gs/display_lists.h"
#include "gs/raster.h"
#include "gs/stroker.h"
#include "gs/styles.h"

#include <array>

class AcDbDatabase;

namespace vndk::gs {

/// How points are marked.
struct PointMarks {
    int mode = 0;    // PDMODE
    double size = 0; // PDSIZE: drawing units, or below 0 percent of the viewport's height; 0 is 5 percent
};

class ListPainter {
public:
    ListPainter(Raster& raster, DisplayLists& lists, Styles& styles, const PointMarks& marks, double viewportHeight)
        : raster_(raster), lists_(lists), styles_(styles), marks_(marks), viewportHeight_(viewportHeight) {}

    /// `toDevice` is from the list's coordinates to pixels.
    void draw(const DisplayList& list, const AcGeMatrix3d& toDevice) { draw(list, toDevice, styles_.outermost()); }

private:
    void draw(const DisplayList& list, const AcGeMatrix3d& toDevice, const Surroundings& around);
    void drawItem(const DisplayList& list, const Item& item, const Projector& projector, const Style& style);
    void drawPolygon(std::span<const AcGePoint3d> corners, const Projector& projector, const Style& style);
    void drawArea(std::span<const AcGePoint3d> corners, std::span<const uint32_t> ends, const Projector& projector,
                  const Style& style);
    void drawShellEdges(std::span<const AcGePoint3d> points, const ShellShape& shell, const Projector& projector,
                        const Style& style);
    void drawArc(const ArcShape& arc, const Projector& projector, const Style& style);
    void drawText(const TextShape& text, const Projector& projector, const Style& style);
    void drawLetters(const TextShape& text, const Spot& origin, const Spot& x, const Spot& y, const Style& style);
    void drawMark(const PointShape& point, const Projector& projector, const Style& style);
    void drawEndless(const EndlessShape& line, const Projector& projector, const Style& style);
    void drawBlock(const BlockShape& block, const Projector& projector, const Style& style);

    Raster& raster_;
    DisplayLists& lists_;
    Styles& styles_;
    PointMarks marks_;
    double viewportHeight_;
    std::vector<AcDbObjectId> path_; // the blocks around what is drawn
    // References within references multiply. No drawing that can be read on a screen comes near this.
    int referencesLeft_ = 1'000'000;
    std::vector<AcGePoint3d> curve_;
    std::vector<Spot> outline_;
    std::vector<size_t> contours_;
};

} // namespace vndk::gs
