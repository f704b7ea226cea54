// DIMLINEAR and DIMALIGNED: by two points and a place for the dimension line.
#include "commands/command_tools.h"
#include "commands/commands.h"
#include "db/database.h"
#include "db/dimensions.h"
#include "ed/host.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace vndk::host {

namespace {

/// What the prompts gave; points in the UCS.
struct LinearAnswers {
    AcGePoint3d first, second, place;
    std::string text;
    double textAngle = 0;
    std::optional<double> lineAngle; // in the UCS
};

PromptStatus askText(CommandContext& ctx, LinearAnswers& answers) {
    std::string text;
    const PromptStatus status =
        ctx.prompts().getString("\nEnter dimension text <the measurement>: ", TextForm::Line, text);
    if (status == PromptStatus::Normal)
        answers.text = text;
    return status;
}

PromptStatus askOption(CommandContext& ctx, LinearAnswers& answers) {
    const std::string& keyword = ctx.prompts().keyword();
    if (keyword == "Text")
        return askText(ctx, answers);
    if (keyword == "Angle")
        return ctx.prompts().getAngle("\nSpecify angle of dimension text: ", answers.textAngle);
    double angle = keyword == "Vertical" ? std::numbers::pi / 2 : 0;
    PromptStatus status = PromptStatus::Normal;
    if (keyword == "Rotated")
        status = ctx.prompts().getAngle("\nSpecify angle of dimension line <0>: ", angle);
    if (status == PromptStatus::Normal || status == PromptStatus::None)
        answers.lineAngle = angle;
    return status;
}

/// Options until a place is given.
PromptStatus askPlace(CommandContext& ctx, const char* prompt, const char* keywords, LinearAnswers& answers) {
    for (;;) {
        ctx.prompts().initGet(kNoEmpty, keywords);
        PromptStatus status = ctx.prompts().getPoint(prompt, answers.place, &answers.second);
        if (status != PromptStatus::Keyword)
            return status;
        status = askOption(ctx, answers);
        if (status != PromptStatus::Normal && status != PromptStatus::None)
            return status;
    }
}

PromptStatus askLinear(CommandContext& ctx, const char* prompt, const char* keywords, LinearAnswers& answers) {
    ctx.prompts().initGet(kNoEmpty);
    PromptStatus status = ctx.prompts().getPoint("\nSpecify first extension line origin: ", answers.first);
    if (status != PromptStatus::Normal)
        return status;
    ctx.prompts().initGet(kNoEmpty);
    status = ctx.prompts().getPoint("\nSpecify second extension line origin: ", answers.second, &answers.first);
    return status == PromptStatus::Normal ? askPlace(ctx, prompt, keywords, answers) : status;
}

/// How far a value is outside a range; within it less than 0.
double outside(double value, double a, double b) { return std::max(std::min(a, b) - value, value - std::max(a, b)); }

/// Horizontal for a place above or below the points, vertical beside them.
double angleFor(const LinearAnswers& answers) {
    const double beside = outside(answers.place.x, answers.first.x, answers.second.x);
    const double above = outside(answers.place.y, answers.first.y, answers.second.y);
    return beside > above ? std::numbers::pi / 2 : 0;
}

CommandResult addDimension(CommandContext& ctx, std::unique_ptr<AcDbDimension> dimension,
                           const LinearAnswers& answers) {
    const DrawingPlane plane(ctx);
    AcDbDimension::Data data = dimension->data();
    data.normal = plane.normal();
    data.userText = answers.text;
    data.textRotation = answers.textAngle;
    data.horizontalRotation = -plane.toObjectAngle(0);
    dimension->setFileData(std::move(data));
    const AcDbObjectId id = addToSpace(ctx, std::move(dimension));
    if (id.isNull())
        return CommandResult::Failed;
    if (const AcDbObjectPointer<AcDbDimension> added(id); added)
        ctx.print("\nDimension text = " + added->shownText());
    ctx.document().lastPoint = answers.place;
    return CommandResult::Done;
}

} // namespace

CommandResult dimLinearCommand(CommandContext& ctx) {
    LinearAnswers answers;
    const PromptStatus status =
        askLinear(ctx, "\nSpecify dimension line location or [Text/Angle/Horizontal/Vertical/Rotated]: ",
                  "Text Angle Horizontal Vertical Rotated", answers);
    if (status != PromptStatus::Normal)
        return ctx.stopped();
    const DrawingPlane plane(ctx);
    const double angle = plane.toObjectAngle(answers.lineAngle.value_or(angleFor(answers)));
    return addDimension(ctx,
                        std::make_unique<AcDbRotatedDimension>(angle, plane.toWorld(answers.first),
                                                               plane.toWorld(answers.second),
                                                               plane.toWorld(answers.place)),
                        answers);
}

CommandResult dimAlignedCommand(CommandContext& ctx) {
    LinearAnswers answers;
    const PromptStatus status =
        askLinear(ctx, "\nSpecify dimension line location or [Text/Angle]: ", "Text Angle", answers);
    if (status != PromptStatus::Normal)
        return ctx.stopped();
    const AcGeVector3d span = answers.second - answers.first;
    if (AcGeVector3d(span.x, span.y, 0).isZeroLength())
        return ctx.fail("The points are the same: there is nothing to measure.");
    const DrawingPlane plane(ctx);
    return addDimension(ctx,
                        std::make_unique<AcDbAlignedDimension>(
                            plane.toWorld(answers.first), plane.toWorld(answers.second), plane.toWorld(answers.place)),
                        answers);
}

} // namespace vndk::host
