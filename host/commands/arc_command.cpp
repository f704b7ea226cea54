// ARC: by three of start, second point, centre, end, angle, chord, radius and direction.
#include "commands/arc_shape.h"
#include "commands/command_tools.h"
#include "commands/commands.h"
#include "db/curves.h"
#include "db/database.h"
#include "ed/pick.h"

namespace vndk::host {

namespace {

using Shape = std::optional<ArcShape>;

CommandResult draw(CommandContext& ctx, const Shape& shape, const AcGePoint3d& lastPoint) {
    if (!shape)
        return ctx.fail("There is no arc with these points and values.");
    const DrawingPlane plane(ctx);
    auto arc = std::make_unique<AcDbArc>();
    arc->setNormal(plane.normal());
    arc->setCenter(plane.toWorld(shape->center));
    arc->setRadius(shape->radius);
    arc->setStartAngle(plane.toObjectAngle(shape->startAngle));
    arc->setEndAngle(plane.toObjectAngle(shape->endAngle));
    arc->setThickness(ctx.database().header().THICKNESS);
    if (addToSpace(ctx, std::move(arc)).isNull())
        return CommandResult::Failed;
    ctx.document().lastPoint = lastPoint;
    return CommandResult::Done;
}

PromptStatus askPoint(CommandContext& ctx, const char* text, AcGePoint3d& point, const AcGePoint3d* base,
                      const char* keywords = "") {
    ctx.prompts().initGet(kNoEmpty, keywords);
    return ctx.prompts().getPoint(text, point, base);
}

/// An angle that is measured, not a direction: ANGBASE doesn't count.
PromptStatus askIncludedAngle(CommandContext& ctx, const AcGePoint3d& base, double& angle) {
    ctx.prompts().initGet(kNoEmpty | kNoZero);
    return ctx.prompts().getAngle("\nSpecify included angle: ", angle, &base);
}

CommandResult fromCenter(CommandContext& ctx, const AcGePoint3d& center, const AcGePoint3d& start) {
    AcGePoint3d end;
    const PromptStatus status =
        askPoint(ctx, "\nSpecify end point of arc or [Angle/chord Length]: ", end, &center, "Angle Length");
    if (status == PromptStatus::Normal)
        return draw(ctx, arcAround(center, start, end), end);
    if (status != PromptStatus::Keyword)
        return ctx.stopped();
    double value = 0;
    if (ctx.prompts().keyword() == "Angle")
        return askIncludedAngle(ctx, center, value) == PromptStatus::Normal
                   ? draw(ctx, arcByAngle(center, start, value), start)
                   : ctx.stopped();
    ctx.prompts().initGet(kNoEmpty | kNoZero | kFlatDistance);
    return ctx.prompts().getDist("\nSpecify length of chord: ", value, &start) == PromptStatus::Normal
               ? draw(ctx, arcByChord(center, start, value), start)
               : ctx.stopped();
}

CommandResult fromEnd(CommandContext& ctx, const AcGePoint3d& start) {
    AcGePoint3d end, center;
    if (askPoint(ctx, "\nSpecify end point of arc: ", end, &start) != PromptStatus::Normal)
        return ctx.stopped();
    const PromptStatus status = askPoint(ctx, "\nSpecify center point of arc or [Angle/Direction/Radius]: ", center,
                                         &start, "Angle Direction Radius");
    if (status == PromptStatus::Normal)
        return draw(ctx, arcAround(center, start, end), end);
    if (status != PromptStatus::Keyword)
        return ctx.stopped();
    const std::string keyword = ctx.prompts().keyword();
    double value = 0;
    if (keyword == "Angle")
        return askIncludedAngle(ctx, start, value) == PromptStatus::Normal
                   ? draw(ctx, arcByEndAndAngle(start, end, value), end)
                   : ctx.stopped();
    ctx.prompts().initGet(kNoEmpty | (keyword == "Radius" ? kNoZero : 0));
    if (keyword == "Direction")
        return ctx.prompts().getOrient("\nSpecify tangent direction for the start point of arc: ", value, &start) ==
                       PromptStatus::Normal
                   ? draw(ctx, arcByEndAndDirection(start, end, value), end)
                   : ctx.stopped();
    return ctx.prompts().getDist("\nSpecify radius of arc: ", value, &end) == PromptStatus::Normal
               ? draw(ctx, arcByEndAndRadius(start, end, value), end)
               : ctx.stopped();
}

/// End and direction of the last line or arc of the space, in the UCS; false when there is none.
bool lastEnd(CommandContext& ctx, AcGePoint3d& end, double& direction) {
    const AcDbObjectPointer<AcDbCurve> curve(lastEntity(ctx.database()));
    if (!curve)
        return false;
    AcGeVector3d along;
    if (const auto* line = AcDbLine::cast(curve.object()))
        along = line->endPoint() - line->startPoint();
    else if (const auto* arc = AcDbArc::cast(curve.object()))
        along = AcGeMatrix3d::planeToWorld(arc->normal()) *
                AcGeVector3d(-std::sin(arc->endAngle()), std::cos(arc->endAngle()), 0);
    if (along.isZeroLength() || curve->getEndPoint(end) != Acad::eOk)
        return false;
    const AcGeMatrix3d toUcs = ctx.prompts().worldToUcs();
    end = toUcs * end;
    along = toUcs * along;
    direction = std::atan2(along.y, along.x);
    return true;
}

/// Enter at the first prompt goes on where the last line or arc ends.
CommandResult goOn(CommandContext& ctx) {
    AcGePoint3d start, end;
    double direction = 0;
    if (!lastEnd(ctx, start, direction))
        return ctx.fail("There is no line or arc to go on from: specify a start point.");
    return askPoint(ctx, "\nSpecify end point of arc: ", end, &start) == PromptStatus::Normal
               ? draw(ctx, arcByEndAndDirection(start, end, direction), end)
               : ctx.stopped();
}

CommandResult fromStart(CommandContext& ctx, const AcGePoint3d& start) {
    AcGePoint3d second, end;
    const PromptStatus status =
        askPoint(ctx, "\nSpecify second point of arc or [Center/End]: ", second, &start, "Center End");
    if (status == PromptStatus::Keyword && ctx.prompts().keyword() == "End")
        return fromEnd(ctx, start);
    if (status == PromptStatus::Keyword) {
        AcGePoint3d center;
        return askPoint(ctx, "\nSpecify center point of arc: ", center, &start) == PromptStatus::Normal
                   ? fromCenter(ctx, center, start)
                   : ctx.stopped();
    }
    if (status != PromptStatus::Normal ||
        askPoint(ctx, "\nSpecify end point of arc: ", end, &second) != PromptStatus::Normal)
        return ctx.stopped();
    return draw(ctx, arcThrough(start, second, end), end);
}

} // namespace

CommandResult arcCommand(CommandContext& ctx) {
    AcGePoint3d start, center;
    ctx.prompts().initGet(0, "Center");
    switch (ctx.prompts().getPoint("\nSpecify start point of arc or [Center]: ", start)) {
    case PromptStatus::Normal:
        return fromStart(ctx, start);
    case PromptStatus::None:
        return goOn(ctx);
    case PromptStatus::Keyword:
        if (askPoint(ctx, "\nSpecify center point of arc: ", center, nullptr) == PromptStatus::Normal &&
            askPoint(ctx, "\nSpecify start point of arc: ", start, &center) == PromptStatus::Normal)
            return fromCenter(ctx, center, start);
        [[fallthrough]];
    default:
        return ctx.stopped();
    }
}

} // namespace vndk::host
