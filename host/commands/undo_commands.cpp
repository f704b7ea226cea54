// U, UNDO and REDO.
#include "commands/command_tools.h"
#include "commands/commands.h"
#include "db/database.h"

namespace vndk::host {

namespace {

/// Takes back up to `count` groups and says which.
CommandResult takeBack(CommandContext& ctx, size_t count) {
    AcDbUndoController& undo = ctx.database().undo();
    if (undo.inGroup())
        return ctx.fail("A group of commands is open: end it with UNDO End first.");
    std::string names;
    size_t taken = 0;
    while (taken < count && undo.undoCount() > 0) {
        const std::string name = undo.undoName();
        if (!undo.undo())
            break;
        names += (taken++ > 0 ? " " : "") + (name.empty() ? "Command" : name);
    }
    if (taken > 0) {
        // A redo reaches back only over what hasn't been overtaken by other changes.
        if (undo.redoCount() == taken)
            memoryOf(ctx).undone.clear();
        memoryOf(ctx).undone.push_back(taken);
        ctx.print("\n" + names);
    }
    if (taken < count)
        ctx.print("\nEverything has been undone");
    return CommandResult::Done;
}

CommandResult undoAuto(CommandContext& ctx) {
    // Only macros of menus make a difference, and there are none.
    ctx.prompts().initGet(0, "ON OFF");
    const PromptStatus status = ctx.prompts().getKeyword("\nEnter UNDO Auto mode [ON/OFF] <ON>: ");
    return status == PromptStatus::Normal || status == PromptStatus::None ? CommandResult::Done : ctx.stopped();
}

CommandResult undoControl(CommandContext& ctx) {
    ctx.prompts().initGet(0, "All None");
    const PromptStatus status = ctx.prompts().getKeyword("\nEnter an UNDO control option [All/None] <All>: ");
    if (status != PromptStatus::Normal && status != PromptStatus::None)
        return ctx.stopped();
    const bool none = status == PromptStatus::Normal && ctx.prompts().keyword() == "None";
    if (none)
        ctx.database().undo().clear();
    ctx.database().disableUndoRecording(none);
    return CommandResult::Done;
}

CommandResult endGroup(CommandContext& ctx) {
    CommandMemory& memory = memoryOf(ctx);
    for (; memory.openUndoGroups > 0; --memory.openUndoGroups)
        ctx.database().undo().endGroup();
    return CommandResult::Done;
}

CommandResult beginGroup(CommandContext& ctx) {
    endGroup(ctx); // a group doesn't stand within another
    ctx.database().undo().beginGroup("GROUP");
    ++memoryOf(ctx).openUndoGroups;
    return CommandResult::Done;
}

CommandResult undoBack(CommandContext& ctx) {
    AcDbUndoController& undo = ctx.database().undo();
    if (undo.inGroup())
        return ctx.fail("A group of commands is open: end it with UNDO End first.");
    const size_t before = undo.undoCount();
    if (undo.undoToMark()) {
        ctx.print("\nMark encountered");
    } else {
        ctx.prompts().initGet(0, "Yes No");
        const PromptStatus status = ctx.prompts().getKeyword("\nThis will undo everything. OK? <Y> ");
        if (status != PromptStatus::Normal && status != PromptStatus::None)
            return ctx.stopped();
        return ctx.prompts().keyword() == "No" ? CommandResult::Done : takeBack(ctx, before);
    }
    if (const size_t taken = before - undo.undoCount(); taken > 0)
        memoryOf(ctx).undone.push_back(taken);
    return CommandResult::Done;
}

} // namespace

CommandResult uCommand(CommandContext& ctx) { return takeBack(ctx, 1); }

CommandResult undoCommand(CommandContext& ctx) {
    int count = 1;
    ctx.prompts().initGet(kNoZero | kNoNegative, "Auto Control BEgin End Mark Back");
    const PromptStatus status = ctx.prompts().getInt(
        "\nEnter the number of operations to undo or [Auto/Control/BEgin/End/Mark/Back] <1>: ", count);
    if (status == PromptStatus::Normal || status == PromptStatus::None)
        return takeBack(ctx, static_cast<size_t>(count));
    if (status != PromptStatus::Keyword)
        return ctx.stopped();
    const std::string keyword = ctx.prompts().keyword();
    if (keyword == "Auto")
        return undoAuto(ctx);
    if (keyword == "Control")
        return undoControl(ctx);
    if (keyword == "BEgin")
        return beginGroup(ctx);
    if (keyword == "End")
        return endGroup(ctx);
    if (keyword == "Back")
        return undoBack(ctx);
    ctx.database().undo().setMark();
    return CommandResult::Done;
}

CommandResult redoCommand(CommandContext& ctx) {
    AcDbUndoController& undo = ctx.database().undo();
    std::vector<size_t>& undone = memoryOf(ctx).undone;
    if (undo.inGroup())
        return ctx.fail("A group of commands is open: end it with UNDO End first.");
    if (undo.redoCount() == 0) {
        undone.clear();
        ctx.print("\nNothing to redo");
        return CommandResult::Done;
    }
    size_t count = 1;
    if (!undone.empty()) {
        count = undone.back();
        undone.pop_back();
    }
    std::string names;
    for (; count > 0 && undo.redoCount() > 0; --count) {
        names += (names.empty() ? "" : " ") + undo.redoName();
        if (!undo.redo())
            break;
    }
    ctx.print("\n" + names);
    return CommandResult::Done;
}

} // namespace vndk::host
