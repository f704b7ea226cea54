// What a drawing shows of model space and of paper space while it is open.
//
// Each space begins with the view that the file has; on a window that is narrower than the one it was saved in, with
// all that was seen there. Views change by ZOOM, PAN and in the window; that isn't undone
// with the drawing and doesn't make it one to be saved. A save writes them into the file where they have changed.
#pragma once

#include "dwg/active_view.h"
#include "ge/extents.h"

#include <deque>

class AcDbDatabase;

namespace vndk::host {

class DrawingViews {
public:
    using View = dwg::ActiveView;

    /// The database outlives it.
    explicit DrawingViews(AcDbDatabase& database) : database_(database) {}

    /// That of the current space.
    const View& current();
    /// False until the current space has had a view, of the file or of this session.
    bool isKnown();
    /// Shows the current space so; the window follows. Views that are none (numbers that aren't finite, a height that
    /// isn't positive) are ignored.
    void show(const View& view);
    /// The same, keeping the view so far for goBack().
    void goTo(const View& view);
    /// Shows what was shown before the last goTo(). False: there was none.
    bool goBack();

    /// Before a save: gives the database the views that differ from its own. `aspect` is width by height.
    void store(double aspect);

private:
    struct Space {
        std::optional<View> view, stored; // as it is, as the file has it
        std::deque<View> former;
    };
    Space& space();
    std::optional<View> firstView(bool model) const;

    AcDbDatabase& database_;
    Space spaces_[2]; // model, paper
};

/// The view in the same direction that shows the box, world coordinates, on a screen so many times as wide as it is
/// high, with a field that is `margin` times as large.
dwg::ActiveView fittingView(const dwg::ActiveView& like, AcDbExtents box, double aspect, double margin);
/// The limits of the current space; empty if they make no area.
AcDbExtents limitsOf(const AcDbDatabase& database);
/// Where the view is seen from; for a parallel one somewhere before it.
AcGePoint3d eyeOf(const dwg::ActiveView& view);
/// From world coordinates to those of the view: x to the right, y up, z to the viewer, the origin at the centre.
AcGeMatrix3d worldToView(const dwg::ActiveView& view);

} // namespace vndk::host
