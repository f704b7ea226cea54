#include "objects/attribute_definition.h"

#include "db/block_table.h"
#include "src/xdata_form.h"

#include <memory>

using vndk::objects::FormReader;
using vndk::objects::FormWriter;

ACDB_DXF_DEFINE_MEMBERS(VNDKAttributeDefinition, AcDbAttributeDefinition, "VNDKATTDEF", "VNDKObjectsDbx")

namespace {
constexpr short kFormVersion = 1;
}

Acad::ErrorStatus VNDKAttributeDefinition::setConditionalPoint1(AcGePoint3d point) {
    return acdbSetMember(*this, point1_, point);
}

Acad::ErrorStatus VNDKAttributeDefinition::setConditionalPoint2(AcGePoint3d point) {
    return acdbSetMember(*this, point2_, point);
}

Acad::ErrorStatus VNDKAttributeDefinition::AddFormula(CCondFormula* formula) {
    std::unique_ptr<CCondFormula> held(formula);
    const Acad::ErrorStatus status = assertWriteEnabled();
    return status == Acad::eOk ? formulaList.append(held.release()) : status;
}

Acad::ErrorStatus VNDKAttributeDefinition::transformBy(const AcGeMatrix3d& matrix) {
    const Acad::ErrorStatus status = AcDbAttributeDefinition::transformBy(matrix);
    if (status == Acad::eOk) {
        point1_.transformBy(matrix);
        point2_.transformBy(matrix);
    }
    return status;
}

void VNDKAttributeDefinition::writeStandIn(AcDbXDataWriter& writer) const {
    FormWriter form(writer, kFormVersion);
    form.movingPoint(point1_);
    form.movingPoint(point2_);
    vndk::objects::writeFormulas(form, formulaList);
}

bool VNDKAttributeDefinition::readStandIn(AcDbXDataReader& reader, AcDbDatabase& database) {
    FormReader form(reader, database, kFormVersion);
    point1_ = form.movingPoint();
    point2_ = form.movingPoint();
    return vndk::objects::readFormulas(form, formulaList) && form.finished();
}

VNDKAttributeDefinition* vndkConvertDefinition(AcDbAttributeDefinition* plain) {
    if (plain->isA() != AcDbAttributeDefinition::desc() || !plain->isWriteEnabled())
        return nullptr;
    AcDbObjectPointer<AcDbBlockTableRecord> record(plain->ownerId(), AcDb::kForWrite);
    if (!record)
        return nullptr;
    auto made = std::make_unique<VNDKAttributeDefinition>();
    made->setPropertiesFrom(plain);
    made->setFileData(plain->data());
    made->setFileAttributeData(plain->attributeData(), plain->promptValue());
    made->setConditionalPoint1(plain->position());
    made->setConditionalPoint2(plain->position());
    if (record->appendAcDbEntity(made.get()) != Acad::eOk)
        return nullptr;
    if (resbuf* xdata = plain->xData()) {
        made->setXData(xdata);
        acutRelRb(xdata);
    }
    plain->erase();
    return made.release();
}
