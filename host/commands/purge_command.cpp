// PURGE: takes out named objects that nothing needs.
#include "commands/command_tools.h"
#include "commands/commands.h"
#include "commands/wildcard.h"
#include "db/usage.h"
#include "ed/host.h"

#include <unordered_set>

namespace vndk::host {

namespace {

struct Kind {
    const char* keyword;
    AcDbUsage::Kind kind;
    const char* one;
    const char* many;
};

// In the order in which All goes through them. It leaves registered applications to their own option: modules that
// aren't loaded now look for them when they are.
constexpr Kind kKinds[] = {
    {"Blocks", AcDbUsage::kBlocks, "block", "blocks"},
    {"LAyers", AcDbUsage::kLayers, "layer", "layers"},
    {"LTypes", AcDbUsage::kLinetypes, "linetype", "linetypes"},
    {"textSTyles", AcDbUsage::kTextStyles, "text style", "text styles"},
    {"SHapes", AcDbUsage::kShapeFiles, "shape file", "shape files"},
    {"Mlinestyles", AcDbUsage::kMlineStyles, "multiline style", "multiline styles"},
    {"Dimstyles", AcDbUsage::kDimStyles, "dimension style", "dimension styles"},
    {"Regapps", AcDbUsage::kRegApps, "registered application", "registered applications"},
};

constexpr const char* kKeywords = "Blocks Dimstyles LAyers LTypes SHapes textSTyles Mlinestyles Regapps All";
constexpr const char* kPrompt = "\nEnter type of unused objects to purge\n"
                                "[Blocks/Dimstyles/LAyers/LTypes/SHapes/textSTyles/Mlinestyles/Regapps/All]: ";

/// One run of the command.
class Purge {
public:
    Purge(CommandContext& ctx, std::string names, bool verify)
        : ctx_(ctx), names_(names.empty() ? "*" : std::move(names)), verify_(verify), usage_(ctx.database()) {}

    /// Goes through the kinds again and again, for what is taken out may have been the last to need something else.
    PromptStatus run(const std::vector<const Kind*>& kinds) {
        PromptStatus status = PromptStatus::Normal;
        for (bool again = true; again && status == PromptStatus::Normal;) {
            again = false;
            for (const Kind* const kind : kinds) {
                const size_t before = erased_[kind->kind];
                if (status = pass(*kind); status != PromptStatus::Normal)
                    break;
                again |= erased_[kind->kind] > before;
            }
        }
        for (const Kind* const kind : kinds)
            report(*kind);
        return status;
    }

private:
    PromptStatus pass(const Kind& kind) {
        for (const AcDbUsage::Named& named : usage_.unused(kind.kind)) {
            if (!matchesWildcard(named.name, names_) || !offered_.insert(named.id).second)
                continue;
            found_[kind.kind] = true;
            const std::string shown = std::string(kind.one) + " \"" + named.name + "\"";
            PromptStatus status = PromptStatus::Normal;
            if (verify_ && !askYesNo(ctx_, "\nPurge " + shown + "? <N>: ", status)) {
                if (status != PromptStatus::Normal)
                    return status;
                continue;
            }
            erase(kind, named, shown);
        }
        return PromptStatus::Normal;
    }

    void erase(const Kind& kind, const AcDbUsage::Named& named, const std::string& shown) {
        if (!eraseEntity(named.id)) {
            ctx_.print("\nThe " + shown + " is in use just now.");
            return;
        }
        usage_.forget(named.id);
        ++erased_[kind.kind];
        if (!verify_)
            ctx_.print("\nDeleting " + shown + ".");
    }

    void report(const Kind& kind) const {
        const size_t count = erased_[kind.kind];
        if (!found_[kind.kind])
            ctx_.print(std::string("\nNo unreferenced ") + kind.many + " found.");
        else if (count > 0)
            ctx_.print("\n" + std::to_string(count) + " " + (count == 1 ? kind.one : kind.many) + " deleted.");
    }

    CommandContext& ctx_;
    std::string names_;
    bool verify_;
    AcDbUsage usage_;
    std::unordered_set<AcDbObjectId> offered_; // nothing is asked for twice
    size_t erased_[std::size(kKinds)] = {};
    bool found_[std::size(kKinds)] = {};
};

} // namespace

CommandResult purgeCommand(CommandContext& ctx) {
    ctx.prompts().initGet(kNoEmpty, kKeywords);
    if (ctx.prompts().getKeyword(kPrompt) != PromptStatus::Normal)
        return ctx.stopped();
    const std::string chosen = ctx.prompts().keyword();
    std::string names;
    if (ctx.prompts().getString("\nEnter name(s) to purge <*>: ", TextForm::Word, names) != PromptStatus::Normal)
        return ctx.stopped();
    ctx.prompts().initGet(0, "Yes No");
    const PromptStatus verify = ctx.prompts().getKeyword("\nVerify each name to be purged? [Yes/No] <Y>: ");
    if (verify != PromptStatus::Normal && verify != PromptStatus::None)
        return ctx.stopped();
    std::vector<const Kind*> kinds;
    for (const Kind& kind : kKinds)
        if (chosen == kind.keyword || (chosen == "All" && kind.kind != AcDbUsage::kRegApps))
            kinds.push_back(&kind);
    Purge purge(ctx, names, verify == PromptStatus::None || ctx.prompts().keyword() == "Yes");
    return purge.run(kinds) == PromptStatus::Normal ? CommandResult::Done : ctx.stopped();
}

} // namespace vndk::host
