// UCS: the user coordinate system of the current space.
#include "commands/command_tools.h"
#include "commands/commands.h"
#include "db/database.h"
#include "ed/coordinates.h"

#include <cmath>

namespace vndk::host {

namespace {

constexpr size_t kFormerKept = 10;

dwg::Point3 stored(const AcGeVector3d& v) { return {v.x, v.y, v.z}; }

/// Makes `toWorld` the coordinate system; the last point keeps its place in the world.
void setUcs(CommandContext& ctx, const AcGeMatrix3d& toWorld) {
    AcDbDatabase& database = ctx.database();
    const AcGePoint3d last = ucsToWorld(database) * ctx.document().lastPoint;
    database.changeHeader("UCSORG", [&](dwg::HeaderVariables& h) {
        const bool model = h.TILEMODE;
        (model ? h.UCSORG : h.PUCSORG) = stored(toWorld.translationPart());
        (model ? h.UCSXDIR : h.PUCSXDIR) = stored(toWorld.xAxis());
        (model ? h.UCSYDIR : h.PUCSYDIR) = stored(toWorld.yAxis());
        (model ? h.UCSNAME : h.PUCSNAME) = 0;
    });
    ctx.document().lastPoint = toWorld.inverse() * last;
}

/// The same, and Previous leads back.
CommandResult change(CommandContext& ctx, const AcGeMatrix3d& toWorld) {
    std::vector<AcGeMatrix3d>& former = memoryOf(ctx).formerUcs;
    if (former.size() == kFormerKept)
        former.erase(former.begin());
    former.push_back(ucsToWorld(ctx.database()));
    setUcs(ctx, toWorld);
    return CommandResult::Done;
}

/// A system with the z axis of `xAxis` x `inPlane`; points are in the current UCS.
CommandResult changeToAxes(CommandContext& ctx, const AcGePoint3d& origin, const AcGeVector3d& xAxis,
                           const AcGeVector3d& inPlane) {
    const AcGeVector3d z = xAxis.crossProduct(inPlane);
    if (xAxis.isZeroLength() || z.isZeroLength())
        return ctx.fail("The points lie on a line: give three that don't.");
    const AcGeVector3d x = xAxis.normal(), zUnit = z.normal();
    const AcGeMatrix3d inUcs = AcGeMatrix3d::coordSystem(origin, x, zUnit.crossProduct(x), zUnit);
    return change(ctx, ucsToWorld(ctx.database()) * inUcs);
}

/// A point with a default that Enter takes.
PromptStatus askPoint(CommandContext& ctx, const std::string& text, const AcGePoint3d& standard, AcGePoint3d& point,
                      const AcGePoint3d* base = nullptr) {
    const std::string shown =
        shownLength(ctx, standard.x) + ',' + shownLength(ctx, standard.y) + ',' + shownLength(ctx, standard.z);
    const PromptStatus status = ctx.prompts().getPoint("\n" + text + " <" + shown + ">: ", point, base);
    if (status != PromptStatus::None)
        return status;
    point = standard;
    return PromptStatus::Normal;
}

CommandResult moveOrigin(CommandContext& ctx) {
    AcGePoint3d origin;
    if (askPoint(ctx, "Specify new origin point", AcGePoint3d::kOrigin, origin) != PromptStatus::Normal)
        return ctx.stopped();
    return change(ctx, ucsToWorld(ctx.database()) * AcGeMatrix3d::translation(origin.asVector()));
}

CommandResult byThreePoints(CommandContext& ctx) {
    AcGePoint3d origin, onX, inPlane;
    if (askPoint(ctx, "Specify new origin point", AcGePoint3d::kOrigin, origin) != PromptStatus::Normal ||
        askPoint(ctx, "Specify point on positive portion of X-axis", origin + AcGeVector3d::kXAxis, onX, &origin) !=
            PromptStatus::Normal ||
        askPoint(ctx, "Specify point on positive-Y portion of the UCS XY plane", origin + AcGeVector3d::kYAxis, inPlane,
                 &origin) != PromptStatus::Normal)
        return ctx.stopped();
    return changeToAxes(ctx, origin, onX - origin, inPlane - origin);
}

CommandResult byZAxis(CommandContext& ctx) {
    AcGePoint3d origin, onZ;
    if (askPoint(ctx, "Specify new origin point", AcGePoint3d::kOrigin, origin) != PromptStatus::Normal ||
        askPoint(ctx, "Specify point on positive portion of Z-axis", origin + AcGeVector3d::kZAxis, onZ, &origin) !=
            PromptStatus::Normal)
        return ctx.stopped();
    const AcGeVector3d z = onZ - origin;
    if (z.isZeroLength())
        return ctx.fail("The two points are the same: give two points of the Z axis.");
    const AcGeMatrix3d turned = AcGeMatrix3d::planeToWorld(z.normal());
    return changeToAxes(ctx, origin, turned.xAxis(), turned.yAxis());
}

CommandResult turn(CommandContext& ctx, const std::string& axis) {
    double angle = 0;
    const PromptStatus status =
        ctx.prompts().getAngle("\nSpecify rotation angle about " + axis + " axis <90>: ", angle);
    if (status == PromptStatus::None)
        angle = kAcGePi / 2;
    else if (status != PromptStatus::Normal)
        return ctx.stopped();
    const AcGeVector3d about = axis == "X"   ? AcGeVector3d::kXAxis
                               : axis == "Y" ? AcGeVector3d::kYAxis
                                             : AcGeVector3d::kZAxis;
    return change(ctx, ucsToWorld(ctx.database()) * AcGeMatrix3d::rotation(angle, about));
}

CommandResult goBack(CommandContext& ctx) {
    std::vector<AcGeMatrix3d>& former = memoryOf(ctx).formerUcs;
    if (former.empty())
        return ctx.fail("No previous coordinate system saved.");
    setUcs(ctx, former.back());
    former.pop_back();
    return CommandResult::Done;
}

CommandResult takeNew(CommandContext& ctx) {
    AcGePoint3d origin;
    ctx.prompts().initGet(0, "ZAxis 3point X Y Z");
    switch (ctx.prompts().getPoint("\nSpecify origin of new UCS or [ZAxis/3point/X/Y/Z] <0,0,0>: ", origin)) {
    case PromptStatus::Normal:
    case PromptStatus::None:
        return change(ctx, ucsToWorld(ctx.database()) * AcGeMatrix3d::translation(origin.asVector()));
    case PromptStatus::Keyword:
        break;
    default:
        return ctx.stopped();
    }
    const std::string keyword = ctx.prompts().keyword();
    return keyword == "ZAxis" ? byZAxis(ctx) : keyword == "3point" ? byThreePoints(ctx) : turn(ctx, keyword);
}

} // namespace

CommandResult ucsCommand(CommandContext& ctx) {
    ctx.prompts().initGet(0, "New Move Origin ZAxis 3point X Y Z Prev World");
    const PromptStatus status =
        ctx.prompts().getKeyword("\nEnter an option [New/Move/Origin/ZAxis/3point/X/Y/Z/Prev/World] <World>: ");
    if (status != PromptStatus::Normal && status != PromptStatus::None)
        return ctx.stopped();
    const std::string keyword = status == PromptStatus::None ? "World" : ctx.prompts().keyword();
    if (keyword == "World")
        return change(ctx, AcGeMatrix3d());
    if (keyword == "New")
        return takeNew(ctx);
    if (keyword == "Move" || keyword == "Origin")
        return moveOrigin(ctx);
    if (keyword == "ZAxis")
        return byZAxis(ctx);
    if (keyword == "3point")
        return byThreePoints(ctx);
    return keyword == "Prev" ? goBack(ctx) : turn(ctx, keyword);
}

} // namespace vndk::host
