// BLOCK: makes a block of objects of the drawing, which go into it.
#include "commands/block_tools.h"
#include "commands/commands.h"
#include "commands/selection.h"
#include "db/block_reference.h"
#include "db/database.h"
#include "ed/host.h"

#include <algorithm>

namespace vndk::host {

namespace {

/// Asks until there is a name that can be used; `existing` is the block that is to be redefined.
PromptStatus askName(CommandContext& ctx, std::string& name, AcDbObjectId& existing) {
    for (;;) {
        PromptStatus status = ctx.prompts().getString("\nEnter block name or [?]: ", TextForm::Word, name);
        if (status != PromptStatus::Normal)
            return status;
        if (name == "?") {
            status = listBlocks(ctx);
            if (status != PromptStatus::Normal)
                return status;
            continue;
        }
        if (name.empty() || name.starts_with('*') || !acdbIsValidSymbolName(name.c_str())) {
            ctx.print("\nInvalid block name.");
            continue;
        }
        existing = findRecord<AcDbBlockTable>(ctx.database().blockTableId(), name);
        if (existing.isNull() || ctx.host().variables().getShort("EXPERT") >= 2)
            return status;
        const bool redefine = askRedefine(ctx, name, status);
        if (status != PromptStatus::Normal || redefine)
            return status;
    }
}

/// True if an insertion of `block` stands among the objects or anywhere below them.
bool contains(const std::vector<AcDbObjectId>& objects, AcDbObjectId block) {
    std::vector<AcDbObjectId> open = objects;
    std::unordered_set<AcDbObjectId> seen;
    while (!open.empty()) {
        const AcDbObjectPointer<AcDbBlockReference> reference(open.back());
        open.pop_back();
        if (!reference || !seen.insert(reference->blockTableRecord()).second)
            continue;
        if (reference->blockTableRecord() == block)
            return true;
        const AcDbObjectPointer<AcDbBlockTableRecord> record(reference->blockTableRecord());
        if (record)
            std::copy_if(record->entities().begin(), record->entities().end(), std::back_inserter(open),
                         [](AcDbObjectId id) { return !id.isErased(); });
    }
    return false;
}

AcDbObjectId addRecord(AcDbDatabase& database, const std::string& name) {
    AcDbObjectId id;
    auto record = std::make_unique<AcDbBlockTableRecord>();
    const AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId(), AcDb::kForWrite);
    if (!table || record->setName(name.c_str()) != Acad::eOk || table->add(id, record.get()) != Acad::eOk)
        return {};
    record.release()->close();
    return id;
}

/// What stood in a block before it was redefined.
std::vector<AcDbObjectId> contents(AcDbObjectId recordId) {
    std::vector<AcDbObjectId> ids;
    const AcDbObjectPointer<AcDbBlockTableRecord> record(recordId);
    if (record)
        std::copy_if(record->entities().begin(), record->entities().end(), std::back_inserter(ids),
                     [](AcDbObjectId id) { return !id.isErased(); });
    return ids;
}

CommandResult define(CommandContext& ctx, const std::string& name, AcDbObjectId existing, const AcGePoint3d& base,
                     const std::vector<AcDbObjectId>& objects) {
    AcDbDatabase& database = ctx.database();
    if (!existing.isNull() && contains(objects, existing))
        return ctx.fail("Block \"" + name + "\" references itself: leave its own insertions out.");
    const AcDbObjectId record = existing.isNull() ? addRecord(database, name) : existing;
    if (record.isNull())
        return ctx.fail("Block \"" + name + "\" can't be added to the drawing.");
    const std::vector<AcDbObjectId> former = contents(record);
    // The block's origin is its base point, its axes are those of the UCS.
    const AcGeMatrix3d toBlock = AcGeMatrix3d::translation(AcGePoint3d::kOrigin - base) * ctx.prompts().worldToUcs();
    const Acad::ErrorStatus status = copyInto(database, objects, record, toBlock);
    if (status != Acad::eOk) {
        if (existing.isNull())
            eraseEntity(record);
        return ctx.fail(std::string("These objects can't go into a block: ") + acadErrorStatusText(status) + '.');
    }
    std::for_each(former.begin(), former.end(), eraseEntity);
    std::for_each(objects.begin(), objects.end(), eraseEntity);
    if (!existing.isNull()) {
        const AcDbObjectPointer<AcDbBlockTableRecord> redefined(record, AcDb::kForWrite);
        if (redefined)
            redefined->setOrigin(AcGePoint3d::kOrigin);
        ctx.print("\nBlock \"" + name + "\" redefined.");
    }
    giveIcon(record);
    return CommandResult::Done;
}

} // namespace

CommandResult blockCommand(CommandContext& ctx) {
    std::string name;
    AcDbObjectId existing;
    if (askName(ctx, name, existing) != PromptStatus::Normal)
        return ctx.stopped();
    AcGePoint3d base;
    if (ctx.prompts().getPoint("\nSpecify insertion base point: ", base) != PromptStatus::Normal &&
        ctx.prompts().lastStatus() != PromptStatus::None)
        return ctx.stopped();
    std::vector<AcDbObjectId> objects;
    if (const PromptStatus status = SelectionPrompt(ctx).ask(objects); status != PromptStatus::Normal)
        return stoppedBy(status);
    std::erase_if(objects, isOnLockedLayer);
    return define(ctx, name, existing, base, objects);
}

} // namespace vndk::host
