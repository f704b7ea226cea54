// LINE: segments one after the other, each a line of its own.
#include "commands/command_tools.h"
#include "commands/commands.h"
#include "db/curves.h"
#include "db/database.h"
#include "ed/host.h"

namespace vndk::host {

namespace {

const char* nextPointPrompt(size_t segments) {
    return segments >= 2 ? "\nSpecify next point or [Close/Undo]: " : "\nSpecify next point or [Undo]: ";
}

} // namespace

CommandResult lineCommand(CommandContext& ctx) {
    Prompts& prompts = ctx.prompts();
    std::vector<AcGePoint3d> points(1);
    const PromptStatus first = prompts.getPoint("\nSpecify first point: ", points[0]);
    if (first == PromptStatus::None)
        points[0] = ctx.document().lastPoint; // goes on from where the last command ended
    else if (first != PromptStatus::Normal)
        return ctx.stopped();

    const DrawingPlane plane(ctx);
    std::vector<AcDbObjectId> segments;
    const auto draw = [&](const AcGePoint3d& from, const AcGePoint3d& to) {
        auto line = std::make_unique<AcDbLine>(plane.toWorld(from), plane.toWorld(to));
        line->setNormal(plane.normal());
        line->setThickness(ctx.database().header().THICKNESS);
        segments.push_back(addToSpace(ctx, std::move(line)));
        return !segments.back().isNull();
    };
    for (;;) {
        prompts.initGet(0, segments.size() >= 2 ? "Close Undo" : "Undo");
        AcGePoint3d next;
        const PromptStatus status = prompts.getPoint(nextPointPrompt(segments.size()), next, &points.back());
        if (status == PromptStatus::None)
            return CommandResult::Done;
        if (status == PromptStatus::Normal) {
            if (!draw(points.back(), next))
                return CommandResult::Failed;
            points.push_back(next);
        } else if (status != PromptStatus::Keyword) {
            return ctx.stopped();
        } else if (prompts.keyword() == "Close") {
            return draw(points.back(), points.front()) ? CommandResult::Done : CommandResult::Failed;
        } else if (segments.empty()) {
            ctx.print("\nAll line segments already undone.");
        } else {
            eraseEntity(segments.back());
            segments.pop_back();
            points.pop_back();
            ctx.document().lastPoint = points.back();
        }
    }
}

} // namespace vndk::host
