#include "db/dim_style.h"

#include "db/database.h"
#include "db/entity.h"
#include "db/set_member.h"
#include "db/xdata.h"

#include <optional>
#include <variant>

ACDB_DXF_DEFINE_MEMBERS(AcDbDimStyleTableRecord, AcDbSymbolTableRecord, "DIMSTYLE", "")

Acad::ErrorStatus AcDbDimStyleTableRecord::setData(const Data& data) { return acdbSetMember(*this, data_, data); }

void AcDbDimStyleTableRecord::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbSymbolTableRecord::visitReferences(visitor);
    for (AcDbObjectId* const id : {&data_.dimtxsty, &data_.dimldrblk, &data_.dimblk, &data_.dimblk1, &data_.dimblk2})
        visitor.visit(*id, AcDb::kHardPointer);
}

namespace {

using Data = AcDbDimStyleTableRecord::Data;

/// A variable by the group code under which extended data have it.
struct Variable {
    int code;
    std::variant<double Data::*, short Data::*, bool Data::*, std::string Data::*, AcDbObjectId Data::*> member;
};

const Variable kVariables[] = {
    {3, &Data::dimpost},     {4, &Data::dimapost},   {40, &Data::dimscale},   {41, &Data::dimasz},
    {42, &Data::dimexo},     {43, &Data::dimdli},    {44, &Data::dimexe},     {45, &Data::dimrnd},
    {46, &Data::dimdle},     {47, &Data::dimtp},     {48, &Data::dimtm},      {71, &Data::dimtol},
    {72, &Data::dimlim},     {73, &Data::dimtih},    {74, &Data::dimtoh},     {75, &Data::dimse1},
    {76, &Data::dimse2},     {77, &Data::dimtad},    {78, &Data::dimzin},     {79, &Data::dimazin},
    {140, &Data::dimtxt},    {141, &Data::dimcen},   {142, &Data::dimtsz},    {143, &Data::dimaltf},
    {144, &Data::dimlfac},   {145, &Data::dimtvp},   {146, &Data::dimtfac},   {147, &Data::dimgap},
    {148, &Data::dimaltrnd}, {170, &Data::dimalt},   {171, &Data::dimaltd},   {172, &Data::dimtofl},
    {173, &Data::dimsah},    {174, &Data::dimtix},   {175, &Data::dimsoxd},   {176, &Data::dimclrd},
    {177, &Data::dimclre},   {178, &Data::dimclrt},  {179, &Data::dimadec},   {271, &Data::dimdec},
    {272, &Data::dimtdec},   {273, &Data::dimaltu},  {274, &Data::dimalttd},  {275, &Data::dimaunit},
    {276, &Data::dimfrac},   {277, &Data::dimlunit}, {278, &Data::dimdsep},   {279, &Data::dimtmove},
    {280, &Data::dimjust},   {281, &Data::dimsd1},   {282, &Data::dimsd2},    {283, &Data::dimtolj},
    {284, &Data::dimtzin},   {285, &Data::dimaltz},  {286, &Data::dimalttz},  {288, &Data::dimupt},
    {289, &Data::dimatfit},  {340, &Data::dimtxsty}, {341, &Data::dimldrblk}, {342, &Data::dimblk},
    {343, &Data::dimblk1},   {344, &Data::dimblk2},  {371, &Data::dimlwd},    {372, &Data::dimlwe},
};

/// Takes a value into the variable of a group code. A code that isn't known is passed over.
void assign(Data& data, int code, const AcDbXDataItem& value, const AcDbDatabase& database) {
    for (const Variable& variable : kVariables) {
        if (variable.code != code)
            continue;
        if (const auto* const real = std::get_if<double Data::*>(&variable.member))
            data.** real = value.real[0];
        else if (const auto* const integer = std::get_if<short Data::*>(&variable.member))
            data.** integer = static_cast<short>(value.integer);
        else if (const auto* const flag = std::get_if<bool Data::*>(&variable.member))
            data.** flag = value.integer != 0;
        else if (const auto* const text = std::get_if<std::string Data::*>(&variable.member))
            data.** text = value.text;
        else if (const auto* const id = std::get_if<AcDbObjectId Data::*>(&variable.member))
            data.** id = database.idOf(value.handle.value());
    }
}

/// The entity's own values follow the text "DSTYLE" in braces, each behind its group code.
void assignOwn(Data& data, std::string_view items, const AcDbDatabase& database) {
    AcDbXDataReader reader(items);
    AcDbXDataItem item;
    bool inside = false;
    while (!inside && reader.next(item))
        inside = item.code == 0 && item.text == "DSTYLE" && reader.next(item) && item.code == 2;
    std::optional<int> code;
    while (inside && reader.next(item) && item.code != 2) {
        if (code) {
            assign(data, *code, item, database);
            code.reset();
        } else if (item.code == 70) {
            code = item.integer;
        }
    }
}

} // namespace

Data acdbDimVariables(const AcDbEntity& entity, AcDbObjectId style) {
    Data data;
    if (const AcDbObjectPointer<AcDbDimStyleTableRecord> record(style); record)
        data = record->data();
    const AcDbXData* const own = entity.packedXData();
    AcDbDatabase* const database = entity.database() ? entity.database() : style.database();
    if (!own || !database)
        return data;
    for (const AcDbXDataGroup& group : own->groups)
        if (const AcDbObjectPointer<AcDbRegAppTableRecord> application(group.application);
            application && acdbIsSameName(application->name(), "ACAD"))
            assignOwn(data, group.items, *database);
    return data;
}
