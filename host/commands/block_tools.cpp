#include "commands/block_tools.h"

#include "ap/drawing_preview.h"
#include "commands/wildcard.h"
#include "db/database.h"
#include "db/id_mapping.h"
#include "db/tied_entities.h"

namespace vndk::host {

PromptStatus listBlocks(CommandContext& ctx) {
    std::string pattern;
    const PromptStatus status = ctx.prompts().getString("\nEnter block(s) to list <*>: ", TextForm::Word, pattern);
    if (status != PromptStatus::Normal)
        return status;
    ctx.print("\nDefined blocks.");
    size_t user = 0, unnamed = 0;
    for (const AcDbObjectId id : sortedRecords(ctx.database().blockTableId())) {
        const AcDbObjectPointer<AcDbBlockTableRecord> record(id);
        if (!record || record->isLayout())
            continue;
        const bool anonymous = record->name().starts_with('*');
        ++(anonymous ? unnamed : user);
        if (!anonymous && matchesWildcard(record->name(), pattern.empty() ? "*" : pattern))
            ctx.print("\n  \"" + record->name() + "\"");
    }
    ctx.print("\nUser blocks: " + std::to_string(user) + "  Unnamed blocks: " + std::to_string(unnamed));
    return status;
}

bool askRedefine(const CommandContext& ctx, const std::string& name, PromptStatus& status) {
    return askYesNo(ctx, "\nBlock \"" + name + "\" already exists.  Redefine it? [Yes/No] <N>: ", status);
}

Acad::ErrorStatus copyInto(AcDbDatabase& database, const std::vector<AcDbObjectId>& objects, AcDbObjectId record,
                           const AcGeMatrix3d& move) {
    AcDbIdMapping mapping(&database, &database);
    Acad::ErrorStatus status = database.deepCloneObjects(objects, record, mapping);
    const std::vector<AcDbObjectId> independent = acdbWithoutTied(objects);
    for (size_t i = 0; i < independent.size() && status == Acad::eOk; ++i) {
        const AcDbObjectPointer<AcDbEntity> copy(mapping.lookUp(independent[i]), AcDb::kForWrite);
        status = copy ? copy->transformBy(move) : copy.openStatus();
    }
    if (status != Acad::eOk)
        for (const AcDbObjectId id : objects)
            if (const AcDbObjectId copy = mapping.lookUp(id); !copy.isNull())
                eraseEntity(copy);
    return status;
}

bool giveIcon(AcDbObjectId block) {
    const std::vector<uint8_t> icon = iconOf(block);
    if (icon.empty())
        return false;
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
    return record && record->setPreviewIcon(icon) == Acad::eOk;
}

} // namespace vndk::host
