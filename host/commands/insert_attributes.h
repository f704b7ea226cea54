// The attributes of a new block reference: asked for, then made.
#pragma once

#include "commands/command_tools.h"
#include "db/block_reference.h"

namespace vndk::host {

class InsertAttributes {
public:
    /// The definitions of a record, constant ones left out, with their defaults as values. The record may belong to a
    /// drawing that is yet to be inserted.
    explicit InsertAttributes(AcDbObjectId record);

    /// Asks for the values at the command line as ATTREQ says, and once more for those that are to be verified. ATTDIA
    /// makes no difference: the host has no dialog of its own for them.
    PromptStatus ask(CommandContext& ctx);
    /// Gives a reference that is resident and open for write an attribute for each definition of its block.
    Acad::ErrorStatus appendTo(AcDbBlockReference& reference) const;

private:
    struct Value {
        std::string prompt, text;
        bool preset, verified;
    };
    static PromptStatus askValue(CommandContext& ctx, Value& value);

    std::vector<Value> values_; // in the order of the definitions
};

} // namespace vndk::host
