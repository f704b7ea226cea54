// INSERT and MINSERT: a block of the drawing, or a drawing file as a block, by prompts.
//
// Nothing is changed before the last prompt has been answered: who cancels leaves the drawing as it was.
#include "commands/block_tools.h"
#include "commands/commands.h"
#include "commands/insert_attributes.h"
#include "commands/insert_placement.h"
#include "commands/insert_source.h"
#include "ed/host.h"

#include <cmath>
#include <optional>

namespace vndk::host {

namespace {

/// Rows and columns of MINSERT.
struct Grid {
    int rows = 1, columns = 1;
    double rowSpacing = 0, columnSpacing = 0;
};

PromptStatus askCount(CommandContext& ctx, const char* prompt, int& count) {
    constexpr int kMost = 32767;
    for (;;) {
        ctx.prompts().initGet(kNoZero | kNoNegative);
        const PromptStatus status = ctx.prompts().getInt(prompt, count);
        if (status == PromptStatus::None)
            return PromptStatus::Normal;
        if (status != PromptStatus::Normal || count <= kMost)
            return status;
        if (!ctx.host().commandLine().complain("Requires an integer between 1 and 32767.", std::to_string(count)))
            return PromptStatus::Error;
    }
}

/// Both distances from a rectangle.
PromptStatus askCell(CommandContext& ctx, const AcGePoint3d& first, Grid& grid) {
    AcGePoint3d second;
    ctx.prompts().initGet(kNoEmpty);
    const PromptStatus status = ctx.prompts().getCorner("\nSpecify opposite corner: ", second, first);
    grid.rowSpacing = second.y - first.y;
    grid.columnSpacing = second.x - first.x;
    return status;
}

PromptStatus askGrid(CommandContext& ctx, Grid& grid) {
    PromptStatus status = askCount(ctx, "\nEnter number of rows (---) <1>: ", grid.rows);
    if (status == PromptStatus::Normal)
        status = askCount(ctx, "\nEnter number of columns (|||) <1>: ", grid.columns);
    if (status == PromptStatus::Normal && grid.rows > 1) {
        std::optional<AcGePoint3d> first;
        ctx.prompts().initGet(kNoEmpty | kNoZero);
        status = ctx.prompts().getRealOrPoint(
            "\nEnter distance between rows or specify unit cell (---): ", grid.rowSpacing, first);
        if (status == PromptStatus::Normal && first)
            return askCell(ctx, *first, grid);
    }
    if (status != PromptStatus::Normal || grid.columns == 1)
        return status;
    ctx.prompts().initGet(kNoEmpty | kNoZero);
    return ctx.prompts().getDist("\nSpecify distance between columns (|||): ", grid.columnSpacing);
}

/// Gives the reference its place; it has its block already.
void place(const CommandContext& ctx, const InsertPlacement& placement, AcDbBlockReference& reference) {
    const DrawingPlane plane(ctx);
    reference.setNormal(plane.normal());
    reference.setPosition(plane.toWorld(placement.point()));
    reference.setScaleFactors(placement.scale());
    reference.setRotation(plane.toObjectAngle(placement.rotation()));
}

std::unique_ptr<AcDbBlockReference> makeReference(const Grid& grid) {
    if (grid.rows == 1 && grid.columns == 1)
        return std::make_unique<AcDbBlockReference>();
    auto reference = std::make_unique<AcDbMInsertBlock>();
    reference->setArray(static_cast<uint16_t>(grid.columns), static_cast<uint16_t>(grid.rows), grid.columnSpacing,
                        grid.rowSpacing);
    return reference;
}

CommandResult finish(CommandContext& ctx, const InsertSource& source, const InsertPlacement& placement) {
    ctx.host().variables().force("INSNAME", source.name);
    ctx.document().lastPoint = placement.point();
    return CommandResult::Done;
}

CommandResult insertReference(CommandContext& ctx, InsertSource& source, const InsertPlacement& placement,
                              const Grid& grid, const InsertAttributes& attributes) {
    if (!defineBlock(ctx, source))
        return CommandResult::Failed;
    auto temporary = makeReference(grid);
    temporary->setBlockTableRecord(source.block);
    place(ctx, placement, *temporary);
    const AcDbObjectId id = addToSpace(ctx, std::move(temporary));
    if (id.isNull())
        return CommandResult::Failed;
    Acad::ErrorStatus status;
    {
        const AcDbObjectPointer<AcDbBlockReference> reference(id, AcDb::kForWrite);
        status = reference ? attributes.appendTo(*reference) : reference.openStatus();
    }
    if (status != Acad::eOk) {
        eraseEntity(id);
        return ctx.fail(std::string("The attributes can't be made: ") + acadErrorStatusText(status) + '.');
    }
    return finish(ctx, source, placement);
}

/// A name that no block has.
std::string freeName(AcDbDatabase& database) {
    const AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId());
    for (size_t number = table ? table->records().size() : 0;; ++number) {
        std::string name = "*U" + std::to_string(number);
        if (!table || !table->has(name.c_str()))
            return name;
    }
}

/// Copies what the block holds into the current space. A file's block lives only as long as that takes.
CommandResult insertContents(CommandContext& ctx, InsertSource& source, const InsertPlacement& placement) {
    const std::string shown = source.name;
    if (source.file)
        source.name = freeName(ctx.database());
    if (!defineBlock(ctx, source))
        return CommandResult::Failed;
    source.name = shown;
    AcDbBlockReference reference;
    reference.setBlockTableRecord(source.block);
    place(ctx, placement, reference);
    AcGePoint3d base;
    std::vector<AcDbObjectId> entities;
    if (const AcDbObjectPointer<AcDbBlockTableRecord> record(source.block); record) {
        base = record->origin();
        std::copy_if(record->entities().begin(), record->entities().end(), std::back_inserter(entities),
                     [](AcDbObjectId id) { return !id.isErased(); });
    }
    const Acad::ErrorStatus status =
        copyInto(ctx.database(), entities, ctx.currentSpace(),
                 reference.blockTransform() * AcGeMatrix3d::translation(AcGePoint3d::kOrigin - base));
    if (source.file)
        eraseEntity(source.block);
    if (status != Acad::eOk)
        return ctx.fail("\"" + shown + "\" can't be inserted in pieces: " + acadErrorStatusText(status) +
                        ". Insert it without the asterisk.");
    return finish(ctx, source, placement);
}

CommandResult insert(CommandContext& ctx, bool arrayed) {
    InsertSource source;
    if (const PromptStatus status = askInsertSource(ctx, !arrayed, source); status != PromptStatus::Normal)
        return stoppedBy(status);
    InsertPlacement placement(ctx, source.contents(), source.origin());
    if (source.exploded) {
        const PromptStatus status = placement.askForContents();
        return status == PromptStatus::Normal ? insertContents(ctx, source, placement) : stoppedBy(status);
    }
    PromptStatus status = placement.ask();
    Grid grid;
    if (status == PromptStatus::Normal && arrayed)
        status = askGrid(ctx, grid);
    InsertAttributes attributes(source.contents());
    if (status == PromptStatus::Normal)
        status = attributes.ask(ctx);
    return status == PromptStatus::Normal ? insertReference(ctx, source, placement, grid, attributes)
                                          : stoppedBy(status);
}

} // namespace

CommandResult insertCommand(CommandContext& ctx) { return insert(ctx, false); }

CommandResult minsertCommand(CommandContext& ctx) { return insert(ctx, true); }

} // namespace vndk::host
