#include "commands/insert_attributes.h"

#include "db/database.h"
#include "db/text.h"
#include "ed/host.h"

#include <algorithm>

namespace vndk::host {

namespace {

/// Calls `take` with each definition that isn't constant, open for read, until it gives a failure.
template <class F>
Acad::ErrorStatus forEachDefinition(AcDbObjectId recordId, F&& take) {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(recordId);
    if (!record)
        return record.openStatus();
    for (const AcDbObjectId id : record->entities()) {
        const AcDbObjectPointer<AcDbAttributeDefinition> definition(id);
        if (!definition || definition->isConstant())
            continue;
        if (const Acad::ErrorStatus status = take(*definition); status != Acad::eOk)
            return status;
    }
    return Acad::eOk;
}

Acad::ErrorStatus appendAttribute(AcDbBlockReference& reference, const AcDbAttributeDefinition& definition,
                                  const AcGeMatrix3d& placement, const std::string& text) {
    auto attribute = std::make_unique<AcDbAttribute>();
    Acad::ErrorStatus status = attribute->setAttributeFromBlock(&definition, placement);
    if (status == Acad::eOk && text != definition.textValue()) {
        status = attribute->setTextString(text.c_str());
        if (status == Acad::eOk && !attribute->isDefaultAlignment())
            status = attribute->adjustAlignment(reference.database());
    }
    if (status == Acad::eOk)
        status = reference.appendAttribute(attribute.get());
    if (status == Acad::eOk)
        attribute.release()->close();
    return status;
}

} // namespace

InsertAttributes::InsertAttributes(AcDbObjectId record) {
    forEachDefinition(record, [this](const AcDbAttributeDefinition& definition) {
        const std::string& prompt = definition.promptValue();
        values_.push_back({prompt.empty() ? definition.tagValue() : prompt, definition.textValue(),
                           definition.isPreset(), definition.isVerifiable() && !definition.isPreset()});
        return Acad::eOk;
    });
}

PromptStatus InsertAttributes::askValue(CommandContext& ctx, Value& value) {
    const std::string standard = value.text.empty() ? "" : " <" + value.text + ">";
    constexpr size_t kLongest = 255;
    std::string text;
    const PromptStatus status =
        ctx.prompts().getString("\n" + value.prompt + standard + ": ", TextForm::Line, text, kLongest);
    if (status == PromptStatus::Normal && !text.empty())
        value.text = text;
    return status;
}

PromptStatus InsertAttributes::ask(CommandContext& ctx) {
    const auto askThose = [&](const char* heading, auto&& concerns) {
        if (std::none_of(values_.begin(), values_.end(), concerns))
            return PromptStatus::Normal;
        ctx.print(heading);
        for (Value& value : values_)
            if (concerns(value))
                if (const PromptStatus status = askValue(ctx, value); status != PromptStatus::Normal)
                    return status;
        return PromptStatus::Normal;
    };
    if (ctx.database().attreq() == 0)
        return PromptStatus::Normal;
    const PromptStatus status = askThose("\nEnter attribute values", [](const Value& value) { return !value.preset; });
    return status == PromptStatus::Normal
               ? askThose("\nVerify attribute values", [](const Value& value) { return value.verified; })
               : status;
}

Acad::ErrorStatus InsertAttributes::appendTo(AcDbBlockReference& reference) const {
    AcGePoint3d base;
    if (const AcDbObjectPointer<AcDbBlockTableRecord> record(reference.blockTableRecord()); record)
        base = record->origin();
    const AcGeMatrix3d placement = reference.blockTransform() * AcGeMatrix3d::translation(AcGePoint3d::kOrigin - base);
    auto value = values_.begin();
    return forEachDefinition(reference.blockTableRecord(), [&](const AcDbAttributeDefinition& definition) {
        const std::string& text = value != values_.end() ? (value++)->text : definition.textValue();
        return appendAttribute(reference, definition, placement, text);
    });
}

} // namespace vndk::host
