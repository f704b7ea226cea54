// ZOOM, PAN, PLAN, VPOINT, REDRAW, REGEN: how the drawing is looked at. Without a window they set the view that the
// drawing is saved with.
#include "ads/ads.h"
#include "ap/drawing_views.h"
#include "commands/command_tools.h"
#include "commands/commands.h"
#include "db/database.h"
#include "ed/display.h"
#include "ed/host.h"
#include "gs/manager.h"

#include <charconv>
#include <memory>
#include <optional>

namespace vndk::host {

namespace {

using View = DrawingViews::View;

constexpr double kMargin = 1.04; // what is shown whole stays off the screen's edge

double aspectOf(const CommandContext& ctx) {
    VariableValue screen;
    if (ctx.host().variables().get("SCREENSIZE", screen) != VariableError::None)
        return 1;
    const AcGePoint3d& size = std::get<AcGePoint3d>(screen);
    return size.x / size.y;
}

CommandResult show(const CommandContext& ctx, const View& view) {
    ctx.document().views().goTo(view);
    return CommandResult::Done;
}

CommandResult showBox(const CommandContext& ctx, const AcDbExtents& box, double margin = kMargin) {
    return show(ctx, fittingView(ctx.document().views().current(), box, aspectOf(ctx), margin));
}

/// The box around what is visible of the current space. False: nothing is.
bool visibleBox(const CommandContext& ctx, AcDbExtents& box) {
    if (Display* const display = ctx.host().display())
        return display->model().visibleExtents(ctx.currentSpace(), box);
    AcGsManager& manager = *acgsGetGsManager();
    AcGsModel* const model = manager.createAutoCADModel();
    const bool found = model->visibleExtents(ctx.currentSpace(), box);
    manager.destroyAutoCADModel(model);
    return found;
}

CommandResult zoomExtents(const CommandContext& ctx) {
    AcDbExtents box;
    return showBox(ctx, visibleBox(ctx, box) ? box : limitsOf(ctx.database()));
}

/// The limits, and what lies outside of them.
CommandResult zoomAll(const CommandContext& ctx) {
    AcDbExtents box, limits = limitsOf(ctx.database());
    visibleBox(ctx, box);
    if (!limits.isEmpty())
        box.addExt(limits);
    return showBox(ctx, box, 1);
}

CommandResult zoomPrevious(const CommandContext& ctx) {
    if (ctx.document().views().goBack())
        return CommandResult::Done;
    ctx.print("\nNo previous view saved.");
    return CommandResult::Done;
}

/// A number, with an x behind it or not.
struct Scale {
    double factor;
    bool relative; // to the view now, not to the limits
};
std::optional<Scale> scaleOf(std::string_view text) {
    const bool relative = text.ends_with('x') || text.ends_with('X');
    if (relative)
        text.remove_suffix(1);
    double factor = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), factor);
    if (error != std::errc() || end != text.data() + text.size() || !(factor > 0))
        return std::nullopt;
    return Scale{factor, relative};
}

CommandResult zoomScale(const CommandContext& ctx, const Scale& scale) {
    View view = ctx.document().views().current();
    if (scale.relative) {
        view.height /= scale.factor;
        return show(ctx, view);
    }
    View whole = fittingView(view, limitsOf(ctx.database()), aspectOf(ctx), 1);
    view.height = whole.height / scale.factor;
    return show(ctx, view);
}

CommandResult zoomWindow(CommandContext& ctx, const AcGePoint3d& first) {
    AcGePoint3d second;
    ctx.prompts().initGet(kNoEmpty);
    if (ctx.prompts().getCorner("\nSpecify opposite corner: ", second, first) != PromptStatus::Normal)
        return ctx.stopped();
    const AcGeMatrix3d toWorld = ctx.prompts().ucsToWorld();
    AcDbExtents box;
    for (const AcGePoint3d& corner : {first, {second.x, first.y, first.z}, second, {first.x, second.y, first.z}})
        box.addPoint(toWorld * corner);
    return showBox(ctx, box, 1);
}

CommandResult zoomAskedWindow(CommandContext& ctx) {
    AcGePoint3d first;
    ctx.prompts().initGet(kNoEmpty);
    return ctx.prompts().getPoint("\nSpecify first corner: ", first) == PromptStatus::Normal ? zoomWindow(ctx, first)
                                                                                             : ctx.stopped();
}

PromptStatus askScale(CommandContext& ctx, const std::string& prompt, std::optional<Scale>& scale) {
    for (;;) {
        std::string text;
        const PromptStatus status = ctx.prompts().getString(prompt, TextForm::Word, text);
        if (status != PromptStatus::Normal || text.empty())
            return text.empty() && status == PromptStatus::Normal ? PromptStatus::None : status;
        scale = scaleOf(text);
        if (scale)
            return PromptStatus::Normal;
        if (!ctx.host().commandLine().complain("Requires a positive number, with or without an X behind it.", text))
            return PromptStatus::Error;
    }
}

CommandResult zoomAskedScale(CommandContext& ctx) {
    std::optional<Scale> scale;
    const PromptStatus status = askScale(ctx, "\nEnter a scale factor (nX): ", scale);
    return status == PromptStatus::Normal ? zoomScale(ctx, *scale)
           : status == PromptStatus::None ? CommandResult::Done
                                          : stoppedBy(status);
}

CommandResult zoomCenter(CommandContext& ctx) {
    View view = ctx.document().views().current();
    AcGePoint3d center = ctx.prompts().worldToUcs() * view.center;
    const PromptStatus status = ctx.prompts().getPoint("\nSpecify center point: ", center);
    if (status != PromptStatus::Normal && status != PromptStatus::None)
        return ctx.stopped();
    view.center = ctx.prompts().ucsToWorld() * center;
    std::optional<Scale> scale;
    const PromptStatus next =
        askScale(ctx, "\nEnter magnification or height <" + shownLength(ctx, view.height) + ">: ", scale);
    if (next != PromptStatus::Normal && next != PromptStatus::None)
        return stoppedBy(next);
    if (scale)
        view.height = scale->relative ? view.height / scale->factor : scale->factor;
    return show(ctx, view);
}

CommandResult zoomByKeyword(CommandContext& ctx, const std::string& keyword) {
    if (keyword == "All")
        return zoomAll(ctx);
    if (keyword == "Center")
        return zoomCenter(ctx);
    if (keyword == "Extents")
        return zoomExtents(ctx);
    if (keyword == "Previous")
        return zoomPrevious(ctx);
    return keyword == "Scale" ? zoomAskedScale(ctx) : zoomAskedWindow(ctx);
}

/// All from another side, world coordinates; of those sides of the screen that go with it, the one whose top is `up`
/// or comes closest to it.
CommandResult lookFrom(const CommandContext& ctx, const AcGeVector3d& towardsViewer, const AcGeVector3d& up) {
    View view = ctx.document().views().current();
    view.direction = towardsViewer.normal();
    view.up = (up - view.direction * up.dotProduct(view.direction)).normal();
    view.eye = 0;
    AcDbExtents box;
    const bool found = visibleBox(ctx, box);
    return show(ctx, fittingView(view, found ? box : limitsOf(ctx.database()), aspectOf(ctx), kMargin));
}

/// Sheets are always looked at from above.
bool inModelSpace(const CommandContext& ctx) {
    if (!ctx.database().tilemode())
        ctx.print("\n** Command only valid in Model space **");
    return ctx.database().tilemode();
}

} // namespace

CommandResult planCommand(CommandContext& ctx) {
    if (!inModelSpace(ctx))
        return CommandResult::Done;
    ctx.prompts().initGet(0, "Current World");
    const PromptStatus status = ctx.prompts().getKeyword("\nEnter an option [Current ucs/World] <Current>: ");
    if (status != PromptStatus::Normal && status != PromptStatus::None)
        return ctx.stopped();
    const bool world = status == PromptStatus::Normal && ctx.prompts().keyword() == "World";
    const AcGeMatrix3d plane = world ? AcGeMatrix3d() : ctx.prompts().ucsToWorld();
    return lookFrom(ctx, plane.zAxis(), plane.yAxis());
}

CommandResult vpointCommand(CommandContext& ctx) {
    if (!inModelSpace(ctx))
        return CommandResult::Done;
    // View points are the world's, whatever the coordinate system (WORLDVIEW 1).
    if (!ctx.prompts().ucsToWorld().isEqualTo(AcGeMatrix3d()))
        ctx.print("\n*** Switching to the WCS ***");
    const AcGeVector3d now = ctx.document().views().current().direction;
    ctx.print("\nCurrent view direction:  VIEWDIR=" + shownLength(ctx, now.x) + ',' + shownLength(ctx, now.y) + ',' +
              shownLength(ctx, now.z));
    AcGePoint3d from;
    const PromptStatus status = ctx.prompts().getPoint("\nSpecify a view point: ", from);
    if (status == PromptStatus::None)
        return CommandResult::Done;
    if (status != PromptStatus::Normal)
        return ctx.stopped();
    const AcGeVector3d towardsViewer = from.asVector();
    if (towardsViewer.isZeroLength())
        return ctx.fail("The view point is the direction to look from: give one beside the origin.");
    const bool steep = towardsViewer.crossProduct(AcGeVector3d::kZAxis).length() < 1e-9 * towardsViewer.length();
    return lookFrom(ctx, towardsViewer, steep ? AcGeVector3d::kYAxis : AcGeVector3d::kZAxis);
}

CommandResult zoomCommand(CommandContext& ctx) {
    constexpr const char* kKeywords = "All Center Extents Previous Scale Window";
    for (;;) {
        AcGePoint3d corner;
        ctx.prompts().initGet(kAnyText, kKeywords);
        const PromptStatus status = ctx.prompts().getPoint("\nSpecify corner of window, enter a scale factor (nX), or "
                                                           "[All/Center/Extents/Previous/Scale/Window]: ",
                                                           corner);
        if (status == PromptStatus::Normal)
            return zoomWindow(ctx, corner);
        if (status == PromptStatus::None)
            return CommandResult::Done;
        if (status != PromptStatus::Keyword)
            return ctx.stopped();
        const std::string typed = ctx.prompts().keyword();
        if (const auto scale = scaleOf(typed))
            return zoomScale(ctx, *scale);
        if (const std::string keyword = matchKeyword(typed, kKeywords); !keyword.empty())
            return zoomByKeyword(ctx, keyword);
        if (!ctx.host().commandLine().complain("Requires a point, a scale factor or an option keyword.", typed))
            return CommandResult::Failed;
    }
}

CommandResult panCommand(CommandContext& ctx) {
    AcGePoint3d base;
    ctx.prompts().initGet(kNoEmpty);
    if (ctx.prompts().getPoint("\nSpecify base point or displacement: ", base) != PromptStatus::Normal)
        return ctx.stopped();
    AcGePoint3d second;
    const PromptStatus status = ctx.prompts().getPoint("\nSpecify second point: ", second, &base);
    if (status != PromptStatus::Normal && status != PromptStatus::None)
        return ctx.stopped();
    const AcGeVector3d way = status == PromptStatus::None ? base.asVector() : second - base;
    View view = ctx.document().views().current();
    view.center = view.center - ctx.prompts().ucsToWorld() * way;
    return show(ctx, view);
}

CommandResult redrawCommand(CommandContext&) {
    acedUpdateDisplay();
    return CommandResult::Done;
}

CommandResult regenCommand(CommandContext& ctx) {
    ctx.print(ctx.database().tilemode() ? "\nRegenerating model.\n" : "\nRegenerating layout.\n");
    ads_regen();
    return CommandResult::Done;
}

} // namespace vndk::host
