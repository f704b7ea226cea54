// What INSERT and MINSERT insert, from the name that a user gives:
//
//   NAME         a block of the drawing, or else a drawing file
//   PATH         a drawing file, which becomes a block of its name
//   NAME=FILE    a drawing file, which becomes the block NAME or redefines it
//   NAME=        the same with a file of the block's name
//   *NAME        one of the first two: its contents instead of a reference
//   ?            lists blocks
#pragma once

#include "commands/command_tools.h"
#include "db/database.h"

#include <memory>

namespace vndk::host {

struct InsertSource {
    std::string name;                   ///< of the block
    AcDbObjectId block;                 ///< null while the drawing has no block of that name
    std::unique_ptr<AcDbDatabase> file; ///< what the block is made of or redefined from; null: it stays as it is
    bool exploded = false;

    /// The record whose entities are inserted: the file's model space or the block.
    AcDbObjectId contents() const { return file ? file->modelSpaceId() : block; }
    /// What of it lies at the insertion point.
    AcGePoint3d origin() const;
};

/// Asks for a name until it leads to something and reads the file, if there is one. Nothing of the drawing is changed.
/// Error: what is wrong has been said. `mayExplode` allows *NAME.
PromptStatus askInsertSource(CommandContext& ctx, bool mayExplode, InsertSource& source);

/// Makes the block of the source's file, or redefines it. False, with a message: the drawing is as it was.
bool defineBlock(CommandContext& ctx, InsertSource& source);

} // namespace vndk::host
