#include "objects/grip_point.h"

#include "db/open.h"
#include "objects/attribute.h"
#include "objects/attribute_definition.h"
#include "src/entity_points.h"
#include "src/xdata_form.h"

#include <algorithm>

using vndk::objects::FormReader;
using vndk::objects::FormWriter;

ACDB_DXF_DEFINE_MEMBERS(VNDKGripPoint, AcDbPoint, "VNDKGRIPPOINT", "VNDKObjectsDbx")

namespace {

constexpr short kFormVersion = 1;

using Ids = std::vector<AcDbSoftPointerId>;

void visitAll(Ids& ids, AcDbReferenceVisitor& visitor) {
    for (AcDbSoftPointerId& id : ids)
        visitor.visit(id, AcDb::kSoftPointer);
}

/// Does the attribute or definition have formulas and a conditional point there?
bool stretchesTo(const AcDbEntity& entity, const AcGePoint3d& place) {
    if (const auto* attribute = VNDKAttribute::cast(&entity))
        return attribute->formulas() &&
               (attribute->conditionalPoint1().isEqualTo(place) || attribute->conditionalPoint2().isEqualTo(place));
    if (const auto* definition = VNDKAttributeDefinition::cast(&entity))
        return definition->formulaList.head() &&
               (definition->conditionalPoint1().isEqualTo(place) || definition->conditionalPoint2().isEqualTo(place));
    return false;
}

bool hangsOn(const AcDbEntity& entity, const AcGePoint3d& place) {
    if (entity.isKindOf(VNDKGripPoint::desc()))
        return false;
    const std::vector<AcGePoint3d> points = vndk::objects::definingPoints(entity);
    return std::any_of(points.begin(), points.end(), [&](const AcGePoint3d& p) { return p.isEqualTo(place); });
}

/// The ids of the entities that `belongs` holds for, with the place of the grip point.
template <class Predicate>
Ids findChildren(const AcGePoint3d& place, AcDbBlockTableRecordIterator& entities, Predicate belongs) {
    Ids ids;
    for (entities.start(); !entities.done(); entities.step()) {
        AcDbEntity* entity = nullptr;
        if (entities.getEntity(entity, AcDb::kForRead) != Acad::eOk)
            continue;
        if (belongs(*entity, place))
            ids.push_back(entity->objectId());
        entity->close();
    }
    return ids;
}

} // namespace

Acad::ErrorStatus VNDKGripPoint::setInsBase(AcGePoint3d base) { return acdbSetMember(*this, insBase_, base); }

Acad::ErrorStatus VNDKGripPoint::setChildEntityIds(Ids ids) {
    return ids.size() > kMaxChildren ? Acad::eOutOfRange : acdbSetMember(*this, children_, std::move(ids));
}

Acad::ErrorStatus VNDKGripPoint::setFormulaChildEntityIds(Ids ids) {
    return ids.size() > kMaxChildren ? Acad::eOutOfRange : acdbSetMember(*this, formulaChildren_, std::move(ids));
}

void VNDKGripPoint::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbPoint::visitReferences(visitor);
    visitAll(children_, visitor);
    visitAll(formulaChildren_, visitor);
}

void VNDKGripPoint::writeStandIn(AcDbXDataWriter& writer) const {
    FormWriter form(writer, kFormVersion);
    form.fixedPoint(insBase_);
    form.references(children_);
    form.references(formulaChildren_);
}

bool VNDKGripPoint::readStandIn(AcDbXDataReader& reader, AcDbDatabase& database) {
    FormReader form(reader, database, kFormVersion);
    insBase_ = form.fixedPoint();
    children_ = form.references<AcDbSoftPointerId>(kMaxChildren);
    formulaChildren_ = form.references<AcDbSoftPointerId>(kMaxChildren);
    return form.finished();
}

bool setChildEntities(VNDKGripPoint* grip, AcDbBlockTableRecordIterator* entities) {
    if (!grip || !entities)
        return false;
    Ids ids = findChildren(grip->position(), *entities, hangsOn);
    const AcDbObjectPointer<VNDKGripPoint> opened(grip->objectId(), AcDb::kForWrite);
    return opened && opened->setChildEntityIds(std::move(ids)) == Acad::eOk;
}

bool setFormulaChildEntities(VNDKGripPoint* grip, AcDbBlockTableRecordIterator* entities) {
    if (!grip || !entities)
        return false;
    Ids ids = findChildren(grip->position(), *entities, stretchesTo);
    const AcDbObjectPointer<VNDKGripPoint> opened(grip->objectId(), AcDb::kForWrite);
    return opened && opened->setFormulaChildEntityIds(std::move(ids)) == Acad::eOk;
}
