// How the host's own commands are written and registered.
//
//     CommandResult circle(CommandContext& ctx) {
//         AcGePoint3d centre;
//         if (ctx.prompts().getPoint("\nSpecify center point for circle: ", centre) != PromptStatus::Normal)
//             return ctx.stopped();
//         ...
//         return CommandResult::Done;
//     }
//     inline constexpr BuiltInCommand rows[] = {{"CIRCLE", ACRX_CMD_MODAL, circle}};
//
// A command runs on the host's one thread, inside one undo group that bears its name, between commandWillStart and
// one of commandEnded, commandCancelled and commandFailed. What it changed before it was cancelled stays.
#pragma once

#include "ap/document.h"
#include "ed/command_stack.h"
#include "ed/prompts.h"

#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace vndk::host {

class Host;

enum class CommandResult {
    Done,
    Cancelled, ///< the user gave up at a prompt
    Failed,    ///< something went wrong; CommandContext::fail has said what
};

/// Kinds of failure that a batch run tells apart.
enum class FailureKind {
    Command, ///< a command couldn't do its work
    Drawing, ///< a drawing couldn't be read or written
};

class CommandContext {
public:
    CommandContext(Host& host, AcApDocument* document, std::string variable = {})
        : host_(host), document_(document), variable_(std::move(variable)) {}

    Host& host() const { return host_; }
    /// The document that the command began in. It stays valid to the end of the command, closed or not.
    /// REQUIRES: there is one, which is certain unless the row says worksWithoutDrawing.
    AcApDocument& document() const { return *document_; }
    bool hasDocument() const { return document_ != nullptr; }
    AcDbDatabase& database() const;
    Prompts& prompts() const;
    /// For SETVAR: the variable whose name was typed in place of the command's; empty when it has to ask.
    const std::string& variable() const { return variable_; }
    /// To the command line's output; brings its own line ends, in code page 1252. A line end in front is left out at
    /// the beginning of a line.
    void print(std::string_view text) const;
    /// Prints the message on a line of its own, keeps it for a batch run, and returns Failed.
    CommandResult fail(std::string message, FailureKind kind = FailureKind::Command) const;
    /// What to return when a prompt gave something else than an answer: Cancelled, or Failed when the answer was one
    /// that can't be taken.
    CommandResult stopped() const;
    /// The space that new entities go into: model space while TILEMODE is on, else paper space.
    AcDbObjectId currentSpace() const;

private:
    Host& host_;
    AcApDocument* document_;
    std::string variable_;
};

/// One of the host's own commands.
struct BuiltInCommand {
    const char* name; ///< global and local name
    int flags;
    CommandResult (*run)(CommandContext&);
    /// Commands that steer the undo history or change documents (U, UNDO, REDO, OPEN ...) run without a group.
    enum class Undo { Group, None } undo = Undo::Group;
    /// Commands such as NEW, OPEN and QUIT run without an open drawing too.
    bool worksWithoutDrawing = false;
};

/// All of them. Defined in commands/.
std::span<const BuiltInCommand> builtInCommands();

} // namespace vndk::host
