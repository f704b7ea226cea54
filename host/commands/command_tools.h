// Small tools that the commands share: new entities, the drawing plane, numbers as prompts show them.
#pragma once

#include "ap/document.h"
#include "commands/command_memory.h"
#include "db/entity.h"
#include "db/symbol_table.h"
#include "ed/builtin_commands.h"
#include "ed/coordinates.h"

#include <memory>
#include <string>
#include <vector>

namespace vndk::host {

/// The memory of the command's document.
CommandMemory& memoryOf(const CommandContext& ctx);

/// Appends to the current space with the drawing's defaults. The null id if the space can't be written; the context
/// has been told then.
AcDbObjectId addToSpace(const CommandContext& ctx, std::unique_ptr<AcDbEntity> entity);
/// Erases an entity that is there. False: it can't be opened.
bool eraseEntity(AcDbObjectId id);

/// What a command returns when a selection gave that instead of objects.
inline CommandResult stoppedBy(PromptStatus status) {
    return status == PromptStatus::Error ? CommandResult::Failed : CommandResult::Cancelled;
}

/// The plane in which planar entities are drawn: the XY plane of the current UCS.
class DrawingPlane {
public:
    explicit DrawingPlane(const CommandContext& ctx);
    const AcGeVector3d& normal() const { return normal_; }
    AcGePoint3d toWorld(const AcGePoint3d& ucs) const { return toWorld_ * ucs; }
    /// Object coordinates of a point of the UCS, z being the elevation.
    AcGePoint3d toObject(const AcGePoint3d& ucs) const { return toObject_ * ucs; }
    /// An angle from the x axis of the UCS as an angle from the x axis of the object coordinate system, 0 to 2 pi.
    double toObjectAngle(double ucsAngle) const;

private:
    AcGeMatrix3d toWorld_, toObject_;
    AcGeVector3d normal_;
};

// As prompts and lists show them, in the units of the drawing.
std::string shownLength(const CommandContext& ctx, double length);
std::string shownAngle(const CommandContext& ctx, double radians);
/// "X=   1.0000  Y=   2.0000  Z=   0.0000"
std::string shownPoint(const CommandContext& ctx, const AcGePoint3d& point);
/// A yes/no question; Enter is No. False also when the prompt was given up: `status` isn't Normal then.
bool askYesNo(const CommandContext& ctx, const std::string& prompt, PromptStatus& status);

/// The record of that name; null if there is none.
template <class Table>
AcDbObjectId findRecord(AcDbObjectId tableId, const std::string& name) {
    AcDbObjectId id;
    const AcDbObjectPointer<Table> table(tableId);
    if (table)
        static_cast<const AcDbSymbolTable&>(*table).getAt(name.c_str(), id);
    return id;
}

/// The name of a record; empty if it can't be opened.
std::string recordName(AcDbObjectId id);
/// The records of a table that aren't erased, in the order of their names.
std::vector<AcDbObjectId> sortedRecords(AcDbObjectId tableId);

} // namespace vndk::host
