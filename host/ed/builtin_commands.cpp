#include "ed/builtin_commands.h"

#include "ed/host.h"
#include "ed/pick.h"

namespace vndk::host {

AcDbDatabase& CommandContext::database() const { return *document_->database(); }

Prompts& CommandContext::prompts() const { return host_.prompts(); }

void CommandContext::print(std::string_view text) const {
    host_.print(text.substr(host_.atLineStart() && text.starts_with('\n') ? 1 : 0));
}

CommandResult CommandContext::fail(std::string message, FailureKind kind) const {
    host_.freshLine();
    host_.print(message + "\n");
    host_.commandLine().report(
        kind == FailureKind::Drawing ? Problem::Kind::DrawingFailed : Problem::Kind::CommandFailed, std::move(message));
    return CommandResult::Failed;
}

CommandResult CommandContext::stopped() const {
    return host_.prompts().lastStatus() == PromptStatus::Error ? CommandResult::Failed : CommandResult::Cancelled;
}

AcDbObjectId CommandContext::currentSpace() const { return host::currentSpace(database()); }

} // namespace vndk::host
