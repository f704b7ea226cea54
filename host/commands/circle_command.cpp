// CIRCLE: by centre and radius or diameter, by two or by three points, or by two tangents and the radius.
#include "commands/arc_shape.h"
#include "commands/command_tools.h"
#include "commands/commands.h"
#include "commands/tangent_circle.h"
#include "db/curves.h"
#include "db/database.h"
#include "ed/host.h"
#include "ed/pick.h"

namespace vndk::host {

namespace {

CommandResult draw(CommandContext& ctx, const AcGePoint3d& center, double radius) {
    const DrawingPlane plane(ctx);
    auto circle = std::make_unique<AcDbCircle>(plane.toWorld(center), plane.normal(), radius);
    circle->setThickness(ctx.database().header().THICKNESS);
    if (addToSpace(ctx, std::move(circle)).isNull())
        return CommandResult::Failed;
    memoryOf(ctx).circleRadius = radius;
    ctx.document().lastPoint = center;
    return CommandResult::Done;
}

std::string withDefault(CommandContext& ctx, std::string prompt, double value) {
    if (value > 0)
        prompt += " <" + shownLength(ctx, value) + ">";
    return prompt + ": ";
}

/// Asks for a length above 0 that Enter takes from the last circle.
PromptStatus askSize(CommandContext& ctx, const char* text, const char* keywords, double former,
                     const AcGePoint3d& center, double& size) {
    ctx.prompts().initGet(kNoZero | kNoNegative | kFlatDistance | (former > 0 ? 0 : kNoEmpty), keywords);
    const PromptStatus status = ctx.prompts().getDist(withDefault(ctx, text, former), size, &center);
    if (status != PromptStatus::None)
        return status;
    size = former;
    return PromptStatus::Normal;
}

CommandResult byCenter(CommandContext& ctx, const AcGePoint3d& center) {
    const double former = memoryOf(ctx).circleRadius;
    double radius = 0;
    PromptStatus status = askSize(ctx, "\nSpecify radius of circle or [Diameter]", "Diameter", former, center, radius);
    if (status == PromptStatus::Keyword) {
        status = askSize(ctx, "\nSpecify diameter of circle", "", 2 * former, center, radius);
        radius /= 2;
    }
    return status == PromptStatus::Normal ? draw(ctx, center, radius) : ctx.stopped();
}

CommandResult byTwoPoints(CommandContext& ctx) {
    AcGePoint3d first, second;
    ctx.prompts().initGet(kNoEmpty);
    if (ctx.prompts().getPoint("\nSpecify first end point of circle's diameter: ", first) != PromptStatus::Normal)
        return ctx.stopped();
    ctx.prompts().initGet(kNoEmpty);
    if (ctx.prompts().getPoint("\nSpecify second end point of circle's diameter: ", second, &first) !=
        PromptStatus::Normal)
        return ctx.stopped();
    const AcGeVector3d span = second - first;
    const double radius = std::hypot(span.x, span.y) / 2;
    if (!(radius > 0))
        return ctx.fail("The two points are the same: give two ends of a diameter.");
    return draw(ctx, first + AcGeVector3d(span.x / 2, span.y / 2, 0), radius);
}

CommandResult byThreePoints(CommandContext& ctx) {
    static constexpr const char* texts[] = {
        "\nSpecify first point on circle: ", "\nSpecify second point on circle: ", "\nSpecify third point on circle: "};
    AcGePoint3d points[3];
    for (int i = 0; i < 3; ++i) {
        ctx.prompts().initGet(kNoEmpty);
        if (ctx.prompts().getPoint(texts[i], points[i], i > 0 ? &points[i - 1] : nullptr) != PromptStatus::Normal)
            return ctx.stopped();
    }
    const auto center = centerOfThree(points[0], points[1], points[2]);
    if (!center)
        return ctx.fail("The three points lie on a line: no circle passes through them.");
    return draw(ctx, *center, std::hypot(points[0].x - center->x, points[0].y - center->y));
}

struct Tangent {
    TangentTarget target;
    double elevation = 0; // in the UCS
};

/// The entity as something that a circle in the plane of the UCS can touch; nothing when it is none.
std::optional<Tangent> tangentOf(CommandContext& ctx, AcDbObjectId id, const AcGePoint3d& picked) {
    const AcGeMatrix3d toUcs = ctx.prompts().worldToUcs();
    const auto isFlat = [&](const AcGeVector3d& normal) { return (toUcs * normal).isParallelTo(AcGeVector3d::kZAxis); };
    const auto round = [&](const AcGePoint3d& worldCenter, double radius) {
        const AcGePoint3d center = toUcs * worldCenter;
        return Tangent{{{center.x, center.y}, {}, radius, {picked.x, picked.y}}, center.z};
    };
    const AcDbObjectPointer<AcDbEntity> entity(id);
    if (!entity)
        return std::nullopt;
    if (const auto* circle = AcDbCircle::cast(&*entity); circle && isFlat(circle->normal()))
        return round(circle->center(), circle->radius());
    if (const auto* arc = AcDbArc::cast(&*entity); arc && isFlat(arc->normal()))
        return round(arc->center(), arc->radius());
    const auto* line = AcDbLine::cast(&*entity);
    if (!line)
        return std::nullopt;
    const AcGePoint3d start = toUcs * line->startPoint(), end = toUcs * line->endPoint();
    const double length = std::hypot(end.x - start.x, end.y - start.y);
    if (!(length > 0) || std::abs(end.z - start.z) > 1e-9 * length)
        return std::nullopt;
    const AcGeVector2d direction((end.x - start.x) / length, (end.y - start.y) / length);
    return Tangent{{{start.x, start.y}, direction, 0, {picked.x, picked.y}}, start.z};
}

PromptStatus askTangent(CommandContext& ctx, const char* text, Tangent& tangent) {
    for (;;) {
        AcGePoint3d point;
        ctx.prompts().initGet(kNoEmpty);
        const PromptStatus status = ctx.prompts().getPoint(text, point);
        if (status != PromptStatus::Normal)
            return status;
        if (const auto found = tangentOf(ctx, entityAt(ctx.document(), point, pickAperture(ctx.host())), point)) {
            tangent = *found;
            return status;
        }
        if (!ctx.host().commandLine().complain("Select a circle, an arc or a line that is parallel to the UCS.",
                                               shownPoint(ctx, point)))
            return PromptStatus::Error;
    }
}

CommandResult byTangents(CommandContext& ctx) {
    Tangent first, second;
    PromptStatus status = askTangent(ctx, "\nSpecify point on object for first tangent of circle: ", first);
    if (status == PromptStatus::Normal)
        status = askTangent(ctx, "\nSpecify point on object for second tangent of circle: ", second);
    if (status != PromptStatus::Normal)
        return stoppedBy(status);
    const AcGePoint3d from(second.target.picked.x, second.target.picked.y, second.elevation);
    double radius = 0;
    status = askSize(ctx, "\nSpecify radius of circle", "", memoryOf(ctx).circleRadius, from, radius);
    if (status != PromptStatus::Normal)
        return stoppedBy(status);
    const auto center = tangentCircle(first.target, second.target, radius);
    if (!center)
        return ctx.fail("Circle does not exist.");
    return draw(ctx, {center->x, center->y, first.elevation}, radius);
}

} // namespace

CommandResult circleCommand(CommandContext& ctx) {
    AcGePoint3d center;
    ctx.prompts().initGet(kNoEmpty, "3P 2P Ttr");
    const PromptStatus status =
        ctx.prompts().getPoint("\nSpecify center point for circle or [3P/2P/Ttr (tan tan radius)]: ", center);
    if (status == PromptStatus::Keyword) {
        const std::string& keyword = ctx.prompts().keyword();
        return keyword == "3P" ? byThreePoints(ctx) : keyword == "2P" ? byTwoPoints(ctx) : byTangents(ctx);
    }
    return status == PromptStatus::Normal ? byCenter(ctx, center) : ctx.stopped();
}

} // namespace vndk::host
