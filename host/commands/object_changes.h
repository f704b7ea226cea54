// What the commands share that change objects of the drawing: choosing them, transforming and copying them.
#pragma once

#include "commands/command_tools.h"

namespace vndk::host {

/// Asks for objects. Those on locked layers are left out, and counted in a message.
PromptStatus askForObjects(CommandContext& ctx, std::vector<AcDbObjectId>& objects);
/// The same for objects that will be transformed: those whose geometry isn't known are left out, and a message names
/// them. `objects` comes in the order of the drawing.
PromptStatus askForMovableObjects(CommandContext& ctx, std::vector<AcDbObjectId>& objects);

/// Transforms objects; those that another one of them ties to itself go along with it. Failed when some can't be
/// changed, after the others have been; the context has been told then.
CommandResult transformObjects(CommandContext& ctx, const std::vector<AcDbObjectId>& objects,
                               const AcGeMatrix3d& matrix);
/// Copies objects of the current space into it and transforms the copies, which come in the order of the originals.
/// All or nothing: Failed leaves no copy.
CommandResult copyObjects(CommandContext& ctx, const std::vector<AcDbObjectId>& objects, const AcGeMatrix3d& matrix,
                          std::vector<AcDbObjectId>& copies);
CommandResult copyObjects(CommandContext& ctx, const std::vector<AcDbObjectId>& objects, const AcGeMatrix3d& matrix);

/// Asks for the second point of a displacement: Enter takes the first one as the displacement. Points are in the UCS,
/// `offset` in world coordinates.
PromptStatus askDisplacement(CommandContext& ctx, const AcGePoint3d& base, AcGeVector3d& offset);

/// Turns text that has just been mirrored so that it can be read from where it could be read before, in its mirrored
/// place. Other entities are left alone; of a reference the attributes are turned.
void keepReadable(AcDbObjectId entity, const AcGeMatrix3d& mirror);

} // namespace vndk::host
