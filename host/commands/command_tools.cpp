#include "commands/command_tools.h"

#include "db/database.h"
#include "ed/host.h"
#include "ge/unit_text.h"

#include <algorithm>
#include <cmath>

namespace vndk::host {

CommandMemory& memoryOf(const CommandContext& ctx) {
    std::shared_ptr<CommandMemory>& memory = ctx.document().commandMemory;
    if (!memory)
        memory = std::make_shared<CommandMemory>();
    return *memory;
}

AcDbObjectId addToSpace(const CommandContext& ctx, std::unique_ptr<AcDbEntity> entity) {
    AcDbObjectId id;
    const AcDbObjectPointer<AcDbBlockTableRecord> space(ctx.currentSpace(), AcDb::kForWrite);
    const Acad::ErrorStatus status = space ? space->appendAcDbEntity(id, entity.get()) : space.openStatus();
    if (status != Acad::eOk) {
        ctx.fail(std::string("The current space can't be written: ") + acadErrorStatusText(status) + '.');
        return {};
    }
    entity.release()->close();
    return id;
}

bool eraseEntity(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
    return object && object->erase() == Acad::eOk;
}

DrawingPlane::DrawingPlane(const CommandContext& ctx)
    : toWorld_(ucsToWorld(ctx.database())), normal_(toWorld_.zAxis().normal()) {
    toObject_ = AcGeMatrix3d::worldToPlane(normal_) * toWorld_;
}

double DrawingPlane::toObjectAngle(double ucsAngle) const {
    const AcGeVector3d direction = toObject_ * AcGeVector3d(std::cos(ucsAngle), std::sin(ucsAngle), 0);
    // Without a turn the angle is kept to its last bit.
    if (toObject_.xAxis().isEqualTo(AcGeVector3d::kXAxis, {0, 0}))
        return wholeTurn(ucsAngle);
    return wholeTurn(std::atan2(direction.y, direction.x));
}

std::string shownLength(const CommandContext& ctx, double length) {
    const dwg::HeaderVariables& header = ctx.database().header();
    const auto text = ge::lengthText(length, header.LUNITS, header.LUPREC, 0);
    return text ? *text : std::to_string(length);
}

std::string shownAngle(const CommandContext& ctx, double radians) {
    const dwg::HeaderVariables& header = ctx.database().header();
    const double fromBase = header.ANGDIR ? header.ANGBASE - radians : radians - header.ANGBASE;
    const auto text = ge::angleText(fromBase, header.AUNITS, header.AUPREC);
    return text ? *text : std::to_string(radians);
}

std::string shownPoint(const CommandContext& ctx, const AcGePoint3d& point) {
    const auto column = [&](double number) {
        std::string text = shownLength(ctx, number);
        text.insert(0, text.size() < 9 ? 9 - text.size() : 0, ' ');
        return text;
    };
    return "X=" + column(point.x) + "  Y=" + column(point.y) + "  Z=" + column(point.z);
}

bool askYesNo(const CommandContext& ctx, const std::string& prompt, PromptStatus& status) {
    ctx.prompts().initGet(0, "Yes No");
    status = ctx.prompts().getKeyword(prompt);
    if (status == PromptStatus::None)
        status = PromptStatus::Normal;
    return status == PromptStatus::Normal && ctx.prompts().keyword() == "Yes";
}

std::string recordName(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbSymbolTableRecord> record(id);
    return record ? record->name() : std::string();
}

std::vector<AcDbObjectId> sortedRecords(AcDbObjectId tableId) {
    std::vector<std::pair<std::string, AcDbObjectId>> named;
    const AcDbObjectPointer<AcDbSymbolTable> table(tableId);
    if (table)
        for (const AcDbObjectId id : table->records())
            if (!id.isNull() && !id.isErased())
                named.emplace_back(acdbFoldName(recordName(id)), id);
    std::sort(named.begin(), named.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<AcDbObjectId> ids;
    ids.reserve(named.size());
    for (const auto& [name, id] : named)
        ids.push_back(id);
    return ids;
}

} // namespace vndk::host
