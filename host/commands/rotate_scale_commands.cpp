// ROTATE and SCALE.
#include "commands/commands.h"
#include "commands/object_changes.h"
#include "db/database.h"
#include "ed/host.h"
#include "ge/unit_text.h"

namespace vndk::host {

namespace {

void printPositiveAngle(const CommandContext& ctx) {
    const dwg::HeaderVariables& header = ctx.database().header();
    const auto base = ge::angleText(header.ANGBASE, header.AUNITS, header.AUPREC);
    ctx.print(std::string("\nCurrent positive angle in UCS:  ANGDIR=") +
              (header.ANGDIR ? "clockwise" : "counterclockwise") + "  ANGBASE=" + base.value_or("0"));
}

/// Objects and base point, as ROTATE and SCALE ask for them.
PromptStatus askAroundPoint(CommandContext& ctx, std::vector<AcDbObjectId>& objects, AcGePoint3d& base) {
    const PromptStatus status = askForMovableObjects(ctx, objects);
    if (status != PromptStatus::Normal || objects.empty())
        return status;
    ctx.prompts().initGet(kNoEmpty);
    return ctx.prompts().getPoint("\nSpecify base point: ", base);
}

/// From the reference angle to the new one.
PromptStatus askAngleByReference(CommandContext& ctx, const AcGePoint3d& base, double& angle) {
    Prompts& prompts = ctx.prompts();
    double reference = 0, wanted = 0;
    PromptStatus status = prompts.getAngle("\nSpecify the reference angle <0>: ", reference);
    if (status != PromptStatus::Normal && status != PromptStatus::None)
        return status;
    prompts.initGet(kNoEmpty);
    status = prompts.getAngle("\nSpecify the new angle: ", wanted, &base);
    angle = wanted - reference;
    return status;
}

PromptStatus askFactorByReference(CommandContext& ctx, const AcGePoint3d& base, double& factor) {
    Prompts& prompts = ctx.prompts();
    double reference = 1, wanted = 1;
    prompts.initGet(kNoZero | kNoNegative);
    PromptStatus status = prompts.getDist("\nSpecify reference length <1>: ", reference);
    if (status != PromptStatus::Normal && status != PromptStatus::None)
        return status;
    prompts.initGet(kNoEmpty | kNoZero | kNoNegative);
    status = prompts.getDist("\nSpecify new length: ", wanted, &base);
    factor = wanted / reference;
    return status;
}

} // namespace

CommandResult rotateCommand(CommandContext& ctx) {
    printPositiveAngle(ctx);
    std::vector<AcDbObjectId> objects;
    AcGePoint3d base;
    PromptStatus status = askAroundPoint(ctx, objects, base);
    if (status != PromptStatus::Normal || objects.empty())
        return status == PromptStatus::Normal ? CommandResult::Done : stoppedBy(status);
    double angle = 0;
    ctx.prompts().initGet(kNoEmpty, "Reference");
    status = ctx.prompts().getAngle("\nSpecify rotation angle or [Reference]: ", angle, &base);
    if (status == PromptStatus::Keyword)
        status = askAngleByReference(ctx, base, angle);
    if (status != PromptStatus::Normal)
        return ctx.stopped();
    const AcGeMatrix3d toWorld = ctx.prompts().ucsToWorld();
    return transformObjects(ctx, objects, AcGeMatrix3d::rotation(angle, toWorld.zAxis().normal(), toWorld * base));
}

CommandResult scaleCommand(CommandContext& ctx) {
    std::vector<AcDbObjectId> objects;
    AcGePoint3d base;
    PromptStatus status = askAroundPoint(ctx, objects, base);
    if (status != PromptStatus::Normal || objects.empty())
        return status == PromptStatus::Normal ? CommandResult::Done : stoppedBy(status);
    double factor = 1;
    ctx.prompts().initGet(kNoEmpty | kNoZero | kNoNegative, "Reference");
    status = ctx.prompts().getDist("\nSpecify scale factor or [Reference]: ", factor, &base);
    if (status == PromptStatus::Keyword)
        status = askFactorByReference(ctx, base, factor);
    if (status != PromptStatus::Normal)
        return ctx.stopped();
    return transformObjects(ctx, objects, AcGeMatrix3d::scaling(factor, ctx.prompts().ucsToWorld() * base));
}

} // namespace vndk::host
