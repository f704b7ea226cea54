#include "ap/drawing_views.h"

#include "db/database.h"
#include "ed/display.h"
#include "ed/host.h"

#include <algorithm>
#include <cmath>

namespace vndk::host {

namespace {

constexpr double kLeastHeight = 1e-9, kMostHeight = 1e15;
constexpr size_t kMostFormer = 10;
/// Of an empty drawing.
const dwg::ActiveView kStandard{{6, 4.5, 0}, 9};

bool isView(const dwg::ActiveView& view) {
    return std::isfinite(view.center.x + view.center.y + view.center.z) && view.height >= kLeastHeight &&
           view.height <= kMostHeight;
}

} // namespace

AcGePoint3d eyeOf(const dwg::ActiveView& view) {
    return view.center + view.direction * (view.eye > 0 ? view.eye : view.height);
}

AcGeMatrix3d worldToView(const dwg::ActiveView& view) {
    const AcGeVector3d right = view.up.crossProduct(view.direction);
    return AcGeMatrix3d::coordSystem(view.center, right, view.up, view.direction).inverse();
}

dwg::ActiveView fittingView(const dwg::ActiveView& like, AcDbExtents box, double aspect, double margin) {
    const AcGeMatrix3d toView = worldToView(like);
    box.transformBy(toView);
    const AcGeVector3d span = box.maxPoint() - box.minPoint();
    const double height = std::max(span.y, span.x / aspect);
    dwg::ActiveView view = like;
    view.center = toView.inverse() * (box.minPoint() + span * 0.5);
    // A single point is seen from one unit.
    view.height = height > kLeastHeight ? height * margin : 1;
    return view;
}

AcDbExtents limitsOf(const AcDbDatabase& database) {
    const dwg::HeaderVariables& header = database.header();
    const auto& low = database.tilemode() ? header.LIMMIN : header.PLIMMIN;
    const auto& high = database.tilemode() ? header.LIMMAX : header.PLIMMAX;
    return {{low.x, low.y, 0}, {high.x, high.y, 0}};
}

DrawingViews::Space& DrawingViews::space() {
    const bool model = database_.tilemode();
    Space& space = spaces_[model ? 0 : 1];
    if (!space.view)
        space.view = space.stored = firstView(model);
    return space;
}

std::optional<DrawingViews::View> DrawingViews::firstView(bool model) const {
    std::optional<View> view = dwg::activeView(database_, model);
    const Host* const host = Host::current();
    if (const Display* const display = host ? host->display() : nullptr; view && display)
        if (const double narrower = dwg::activeViewAspect(database_, model) * display->height() / display->width();
            narrower > 1 && isView({view->center, view->height * narrower}))
            view->height *= narrower;
    return view;
}

const DrawingViews::View& DrawingViews::current() {
    const Space& shown = space();
    return shown.view ? *shown.view : kStandard;
}

bool DrawingViews::isKnown() { return space().view.has_value(); }

void DrawingViews::show(const View& view) {
    if (!isView(view))
        return;
    space().view = view;
    Host* const host = Host::current();
    if (host && host->display())
        host->display()->viewChanged();
}

void DrawingViews::goTo(const View& view) {
    if (!isView(view))
        return;
    std::deque<View>& former = space().former;
    former.push_back(current());
    if (former.size() > kMostFormer)
        former.pop_front();
    show(view);
}

bool DrawingViews::goBack() {
    std::deque<View>& former = space().former;
    if (former.empty())
        return false;
    const View view = former.back();
    former.pop_back();
    show(view);
    return true;
}

void DrawingViews::store(double aspect) {
    const bool recording = database_.undoRecording();
    database_.disableUndoRecording(true);
    for (const bool model : {true, false}) {
        Space& space = spaces_[model ? 0 : 1];
        if (space.view == space.stored)
            continue;
        // A drawing without a place for its view is saved without one.
        (void)dwg::setActiveView(database_, model, *space.view, aspect);
        space.stored = space.view;
    }
    database_.disableUndoRecording(!recording);
}

} // namespace vndk::host
