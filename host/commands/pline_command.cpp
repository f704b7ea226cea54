// PLINE: one polyline of straight and curved segments with widths.
#include "commands/arc_shape.h"
#include "commands/command_tools.h"
#include "commands/commands.h"
#include "db/database.h"
#include "db/polylines.h"

#include <cmath>
#include <limits>

namespace vndk::host {

namespace {

enum class Next { GoOn, Finished, Closed, Stopped };

/// The polyline while it is being drawn, in the UCS.
class Drawing {
public:
    Drawing(CommandContext& ctx, const AcGePoint3d& start)
        : ctx_(ctx), startWidth_(ctx.database().header().PLINEWID), endWidth_(startWidth_) {
        points_.push_back({start, 0, 0, 0});
    }

    Next step() { return arcs_ ? arcStep() : lineStep(); }
    /// Puts what has been drawn into the drawing; nothing for a single point.
    bool finish(bool closed);

private:
    struct Point {
        AcGePoint3d at;
        double bulge, startWidth, endWidth; // of the segment that begins here
    };

    Next lineStep();
    Next arcStep();
    Next keywordStep(const std::string& keyword);
    Next arcByDirection();
    Next arcBySecondPoint();
    Next arcByAngle();
    Next arcByCenter();
    Next arcByRadius();
    Next widthStep(double factor, const char* name);
    Next lengthStep();
    Next undoStep();
    Next closeStep();
    void add(const AcGePoint3d& to, double bulge);
    Next addArc(const AcGePoint3d& to, double includedAngle);
    /// The direction in which the last segment ends; along the x axis before the first one.
    double direction() const;
    std::string options(const char* open, const char* closable) const { return points_.size() > 2 ? closable : open; }
    PromptStatus askPoint(const std::string& text, AcGePoint3d& point, const char* keywords = "") {
        ctx_.prompts().initGet(*keywords ? 0 : kNoEmpty, keywords);
        return ctx_.prompts().getPoint(text, point, &last());
    }
    const AcGePoint3d& last() const { return points_.back().at; }

    CommandContext& ctx_;
    std::vector<Point> points_;
    double startWidth_, endWidth_;
    bool arcs_ = false;
};

double Drawing::direction() const {
    if (points_.size() < 2)
        return 0;
    const Point& from = points_[points_.size() - 2];
    return directionOf(from.at, last()) + 2 * std::atan(from.bulge);
}

void Drawing::add(const AcGePoint3d& to, double bulge) {
    Point& from = points_.back();
    from.bulge = bulge;
    from.startWidth = startWidth_;
    from.endWidth = endWidth_;
    startWidth_ = endWidth_; // a taper is for one segment
    points_.push_back({to, 0, 0, 0});
    ctx_.document().lastPoint = to;
}

Next Drawing::addArc(const AcGePoint3d& to, double includedAngle) {
    const double bulge = std::tan(includedAngle / 4);
    if (includedAngle == 0 || !std::isfinite(bulge) || std::abs(bulge) > 1e8 || to.isEqualTo(last()))
        ctx_.print("\nThere is no arc to that point.");
    else
        add(to, bulge);
    return Next::GoOn;
}

Next Drawing::lineStep() {
    AcGePoint3d point;
    const std::string text = "\nSpecify next point or " + options("[Arc/Halfwidth/Length/Undo/Width]: ",
                                                                  "[Arc/Close/Halfwidth/Length/Undo/Width]: ");
    switch (askPoint(text, point, "Arc Close Halfwidth Length Undo Width")) {
    case PromptStatus::Normal:
        add(point, 0);
        return Next::GoOn;
    case PromptStatus::None:
        return Next::Finished;
    case PromptStatus::Keyword:
        return keywordStep(ctx_.prompts().keyword());
    default:
        return Next::Stopped;
    }
}

Next Drawing::arcStep() {
    AcGePoint3d point;
    const std::string text = "\nSpecify endpoint of arc or " +
                             options("[Angle/CEnter/Direction/Halfwidth/Line/Radius/Second pt/Undo/Width]: ",
                                     "[Angle/CEnter/CLose/Direction/Halfwidth/Line/Radius/Second pt/Undo/Width]: ");
    switch (askPoint(text, point, "Angle CEnter CLose Direction Halfwidth Line Radius Second Undo Width")) {
    case PromptStatus::Normal:
        return addArc(point, includedAngle(last(), point, direction()));
    case PromptStatus::None:
        return Next::Finished;
    case PromptStatus::Keyword:
        return keywordStep(ctx_.prompts().keyword());
    default:
        return Next::Stopped;
    }
}

Next Drawing::keywordStep(const std::string& keyword) {
    using Step = Next (Drawing::*)();
    static constexpr struct {
        const char* keyword;
        Step step;
    } steps[] = {{"Length", &Drawing::lengthStep},        {"Undo", &Drawing::undoStep},
                 {"Close", &Drawing::closeStep},          {"CLose", &Drawing::closeStep},
                 {"Direction", &Drawing::arcByDirection}, {"Second", &Drawing::arcBySecondPoint},
                 {"CEnter", &Drawing::arcByCenter},       {"Radius", &Drawing::arcByRadius}};
    if (keyword == "Width")
        return widthStep(1, "width");
    if (keyword == "Halfwidth")
        return widthStep(2, "half-width");
    for (const auto& [name, step] : steps)
        if (keyword == name)
            return (this->*step)();
    if (keyword == "Angle")
        return arcByAngle();
    arcs_ = keyword == "Arc"; // else it is Line
    return Next::GoOn;
}

Next Drawing::widthStep(double factor, const char* name) {
    const auto ask = [&](const char* which, double standard, double& width) {
        double given = 0;
        ctx_.prompts().initGet(kNoNegative);
        const PromptStatus status = ctx_.prompts().getDist(
            std::string("\nSpecify ") + which + " " + name + " <" + shownLength(ctx_, standard / factor) + ">: ", given,
            &last());
        width = status == PromptStatus::Normal ? given * factor : standard;
        return status == PromptStatus::Normal || status == PromptStatus::None;
    };
    double start = 0, end = 0;
    if (!ask("starting", startWidth_, start) || !ask("ending", start, end))
        return Next::Stopped;
    startWidth_ = start;
    endWidth_ = end;
    ctx_.database().changeHeader("PLINEWID", [end](dwg::HeaderVariables& header) { header.PLINEWID = end; });
    return Next::GoOn;
}

Next Drawing::lengthStep() {
    double length = 0;
    ctx_.prompts().initGet(kNoEmpty);
    if (ctx_.prompts().getDist("\nSpecify length of line: ", length, &last()) != PromptStatus::Normal)
        return Next::Stopped;
    const double angle = direction();
    add(last() + AcGeVector3d(length * std::cos(angle), length * std::sin(angle), 0), 0);
    return Next::GoOn;
}

Next Drawing::undoStep() {
    if (points_.size() == 1) {
        ctx_.print("\nAll segments already undone.");
        return Next::GoOn;
    }
    points_.pop_back();
    ctx_.document().lastPoint = last();
    return Next::GoOn;
}

Next Drawing::closeStep() {
    if (points_.size() < 2) {
        ctx_.print("\nCannot close until two or more points have been given.");
        return Next::GoOn;
    }
    Point& from = points_.back();
    if (arcs_)
        from.bulge = std::tan(includedAngle(from.at, points_.front().at, direction()) / 4);
    if (!std::isfinite(from.bulge) || std::abs(from.bulge) > 1e8)
        from.bulge = 0;
    from.startWidth = startWidth_;
    from.endWidth = endWidth_;
    return Next::Closed;
}

Next Drawing::arcByDirection() {
    AcGePoint3d end;
    double angle = 0;
    ctx_.prompts().initGet(kNoEmpty);
    if (ctx_.prompts().getOrient("\nSpecify the tangent direction for the start point of arc: ", angle, &last()) !=
            PromptStatus::Normal ||
        askPoint("\nSpecify endpoint of the arc: ", end) != PromptStatus::Normal)
        return Next::Stopped;
    return addArc(end, includedAngle(last(), end, angle));
}

Next Drawing::arcBySecondPoint() {
    AcGePoint3d second, end;
    if (askPoint("\nSpecify second point on arc: ", second) != PromptStatus::Normal ||
        askPoint("\nSpecify end point of arc: ", end) != PromptStatus::Normal)
        return Next::Stopped;
    const auto center = centerOfThree(last(), second, end);
    if (!center)
        return addArc(end, 0);
    const double first = directionOf(*center, last());
    const double toEnd = wholeTurn(directionOf(*center, end) - first);
    const bool forwards = wholeTurn(directionOf(*center, second) - first) < toEnd;
    return addArc(end, forwards ? toEnd : toEnd - 2 * kAcGePi);
}

Next Drawing::arcByAngle() {
    AcGePoint3d end;
    double angle = 0;
    ctx_.prompts().initGet(kNoEmpty | kNoZero);
    if (ctx_.prompts().getAngle("\nSpecify included angle: ", angle, &last()) != PromptStatus::Normal ||
        askPoint("\nSpecify endpoint of arc: ", end) != PromptStatus::Normal)
        return Next::Stopped;
    return addArc(end, angle);
}

Next Drawing::arcByCenter() {
    AcGePoint3d center, end;
    if (askPoint("\nSpecify center point of arc: ", center) != PromptStatus::Normal ||
        askPoint("\nSpecify endpoint of arc: ", end) != PromptStatus::Normal)
        return Next::Stopped;
    const auto shape = arcAround(center, last(), end);
    if (!shape)
        return addArc(end, 0);
    const AcGePoint3d at(center.x + shape->radius * std::cos(shape->endAngle),
                         center.y + shape->radius * std::sin(shape->endAngle), last().z);
    return addArc(at, wholeTurn(shape->endAngle - shape->startAngle));
}

Next Drawing::arcByRadius() {
    AcGePoint3d end;
    double radius = 0;
    ctx_.prompts().initGet(kNoEmpty | kNoZero | kNoNegative);
    if (ctx_.prompts().getDist("\nSpecify radius of arc: ", radius, &last()) != PromptStatus::Normal ||
        askPoint("\nSpecify endpoint of arc: ", end) != PromptStatus::Normal)
        return Next::Stopped;
    const auto shape = arcByEndAndRadius(last(), end, radius);
    return addArc(end, shape ? wholeTurn(shape->endAngle - shape->startAngle) : 0);
}

bool Drawing::finish(bool closed) {
    if (points_.size() < 2)
        return true;
    const DrawingPlane plane(ctx_);
    auto polyline = std::make_unique<AcDbPolyline>();
    polyline->setNormal(plane.normal());
    polyline->setElevation(plane.toObject(points_.front().at).z);
    for (const Point& point : points_) {
        const AcGePoint3d at = plane.toObject(point.at);
        polyline->addVertexAt(polyline->numVerts(), {at.x, at.y}, point.bulge, point.startWidth, point.endWidth);
    }
    polyline->setClosed(closed);
    polyline->setThickness(ctx_.database().header().THICKNESS);
    polyline->setPlinegen(ctx_.database().header().PLINEGEN);
    return !addToSpace(ctx_, std::move(polyline)).isNull();
}

} // namespace

CommandResult plineCommand(CommandContext& ctx) {
    AcGePoint3d start;
    const PromptStatus status = ctx.prompts().getPoint("\nSpecify start point: ", start);
    if (status == PromptStatus::None)
        start = ctx.document().lastPoint;
    else if (status != PromptStatus::Normal)
        return ctx.stopped();
    ctx.print("\nCurrent line-width is " + shownLength(ctx, ctx.database().header().PLINEWID));
    Drawing drawing(ctx, start);
    Next next = Next::GoOn;
    while (next == Next::GoOn)
        next = drawing.step();
    const CommandResult stopped = next == Next::Stopped ? ctx.stopped() : CommandResult::Done;
    // What was drawn before a cancel stays.
    return drawing.finish(next == Next::Closed) ? stopped : CommandResult::Failed;
}

} // namespace vndk::host
