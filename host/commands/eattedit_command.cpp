// EATTEDIT: the values of a block reference's attributes, one after the other at the command line.
#include "commands/commands.h"
#include "commands/selection.h"
#include "db/block_reference.h"
#include "db/text.h"

#include <optional>

namespace vndk::host {

namespace {

/// The attributes that can be edited; nothing when the object is no block reference.
std::optional<std::vector<AcDbObjectId>> attributesOf(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbBlockReference> reference(id);
    if (!reference)
        return std::nullopt;
    std::vector<AcDbObjectId> attributes;
    for (const AcDbObjectId attribute : reference->attributes())
        if (!attribute.isErased())
            attributes.push_back(attribute);
    return attributes;
}

/// Asks for one value; an empty answer keeps it.
PromptStatus editValue(CommandContext& ctx, AcDbObjectId id) {
    std::string prompt;
    {
        const AcDbObjectPointer<AcDbAttribute> attribute(id);
        if (!attribute)
            return PromptStatus::Normal;
        prompt = "\nEnter value for " + attribute->tagValue() + " <" + attribute->textValue() + ">: ";
    }
    std::string value;
    const PromptStatus status = ctx.prompts().getString(prompt, TextForm::Line, value);
    if (status != PromptStatus::Normal || value.empty())
        return status;
    const AcDbObjectPointer<AcDbAttribute> attribute(id, AcDb::kForWrite);
    if (attribute && attribute->setTextString(value.c_str()) == Acad::eOk)
        attribute->adjustAlignment();
    else
        ctx.print("\nThis value can't be set.");
    return status;
}

} // namespace

CommandResult eatteditCommand(CommandContext& ctx) {
    AcDbObjectId id;
    AcGePoint3d point;
    const PromptStatus status = ctx.prompts().entSel("\nSelect a block: ", id, point);
    if (status == PromptStatus::Error)
        return ctx.fail("No object was selected: pick a block.");
    if (status != PromptStatus::Normal)
        return ctx.stopped();
    const auto attributes = attributesOf(id);
    if (!attributes)
        return ctx.fail("The object is not a block.");
    if (attributes->empty())
        return ctx.fail("The selected block has no editable attributes.");
    if (isOnLockedLayer(id))
        return ctx.fail("The block is on a locked layer: unlock the layer first.");
    for (const AcDbObjectId attribute : *attributes)
        if (editValue(ctx, attribute) != PromptStatus::Normal)
            return ctx.stopped();
    return CommandResult::Done;
}

} // namespace vndk::host
