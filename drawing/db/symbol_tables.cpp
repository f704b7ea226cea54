#include "db/symbol_tables.h"

#include "db/set_member.h"

ACDB_DXF_DEFINE_MEMBERS(AcDbLayerTableRecord, AcDbSymbolTableRecord, "LAYER", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbTextStyleTableRecord, AcDbSymbolTableRecord, "STYLE", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbLinetypeTableRecord, AcDbSymbolTableRecord, "LTYPE", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbRegAppTableRecord, AcDbSymbolTableRecord, "APPID", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbOpaqueTableRecord, AcDbSymbolTableRecord, nullptr, "")
ACDB_DXF_DEFINE_MEMBERS(AcDbLayerTable, AcDbSymbolTable, "LAYER_CONTROL", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbTextStyleTable, AcDbSymbolTable, "STYLE_CONTROL", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbLinetypeTable, AcDbSymbolTable, "LTYPE_CONTROL", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbRegAppTable, AcDbSymbolTable, "APPID_CONTROL", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbViewTable, AcDbSymbolTable, "VIEW_CONTROL", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbUCSTable, AcDbSymbolTable, "UCS_CONTROL", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbViewportTable, AcDbSymbolTable, "VPORT_CONTROL", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbDimStyleTable, AcDbSymbolTable, "DIMSTYLE_CONTROL", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbVXTable, AcDbSymbolTable, "VX_CONTROL", "")

Acad::ErrorStatus AcDbLayerTableRecord::setIsFrozen(bool frozen) { return acdbSetMember(*this, frozen_, frozen); }
Acad::ErrorStatus AcDbLayerTableRecord::setIsOff(bool off) { return acdbSetMember(*this, off_, off); }
Acad::ErrorStatus AcDbLayerTableRecord::setIsLocked(bool locked) { return acdbSetMember(*this, locked_, locked); }
Acad::ErrorStatus AcDbLayerTableRecord::setIsPlottable(bool plottable) {
    return acdbSetMember(*this, plottable_, plottable);
}

Acad::ErrorStatus AcDbLayerTableRecord::setColor(short color) {
    return color >= 1 && color <= 255 ? acdbSetMember(*this, color_, color) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbLayerTableRecord::setLinetypeObjectId(AcDbObjectId linetype) {
    return linetype.isNull() ? Acad::eNullObjectId : acdbSetMember(*this, linetype_, linetype);
}

Acad::ErrorStatus AcDbLayerTableRecord::setLineWeight(short weight) {
    return acdbSetMember(*this, lineWeight_, weight);
}

void AcDbLayerTableRecord::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbSymbolTableRecord::visitReferences(visitor);
    visitor.visit(linetype_, AcDb::kHardPointer);
    visitor.visit(plotStyle_, AcDb::kHardPointer);
}

AcDbLayerTableRecord::FileData AcDbLayerTableRecord::fileData() const {
    FileData data;
    data.frozen = frozen_;
    data.off = off_;
    data.frozenInNew = frozenInNew_;
    data.locked = locked_;
    data.plottable = plottable_;
    data.color = color_;
    data.lineWeight = lineWeight_;
    data.linetype = linetype_;
    data.plotStyle = plotStyle_;
    return data;
}

void AcDbLayerTableRecord::setFileData(const FileData& data) {
    frozen_ = data.frozen;
    off_ = data.off;
    frozenInNew_ = data.frozenInNew;
    locked_ = data.locked;
    plottable_ = data.plottable;
    color_ = data.color;
    lineWeight_ = data.lineWeight;
    linetype_ = data.linetype;
    plotStyle_ = data.plotStyle;
}

Acad::ErrorStatus AcDbTextStyleTableRecord::setData(const Data& data) { return acdbSetMember(*this, data_, data); }

Acad::ErrorStatus AcDbLinetypeTableRecord::setData(const Data& data) { return acdbSetMember(*this, data_, data); }

void AcDbLinetypeTableRecord::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbSymbolTableRecord::visitReferences(visitor);
    for (Dash& dash : data_.dashes)
        visitor.visit(dash.style, AcDb::kHardPointer);
}

void AcDbOpaqueTableRecord::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbSymbolTableRecord::visitReferences(visitor);
    fields_.visit(visitor);
}
