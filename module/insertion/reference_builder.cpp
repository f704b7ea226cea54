#include "insertion/reference_builder.h"

#include "ads/ads.h"
#include "insertion/make_attribute.h"
#include "objects/attribute.h"
#include "resources/resource.h"
#include "rx/registry.h"

#include <memory>

namespace {

VNDKBlockReference* MakeReference(AcDbObjectId blockId, const CString& name, const CPlacement& placement,
                                  const AcGePoint3d& base) {
    auto* pReference = new VNDKBlockReference;
    pReference->setBlockTableRecordId(blockId);
    pReference->setOriginalBlockName(name);
    pReference->setPosition(placement.position);
    pReference->setRotation(placement.rotation);
    pReference->setScaleFactors(placement.scale);
    pReference->setInsBase(base);
    pReference->setNormal(AcGeVector3d(0.0, 0.0, 1.0));
    return pReference;
}

/// Puts the attribute of one definition into the space and ties it to the reference.
Acad::ErrorStatus AddAttribute(AcDbAttributeDefinition* pDefinition, VNDKBlockReference* pReference,
                               AcDbBlockTableRecord* pSpace, CAttributeRoad& road) {
    const COpened<VNDKAttribute> attribute(MakeAttribute(pDefinition, pReference));
    road.OnMade(pDefinition, attribute.get());
    AcDbObjectId attributeId;
    const Acad::ErrorStatus status = pSpace->appendAcDbEntity(attributeId, attribute.get());
    road.OnAppended(pDefinition, attribute.get());
    pReference->appendAttribute(AcDbHardOwnershipId(attributeId));
    return status;
}

} // namespace

AcDbBlockTableRecord* OpenDefinition(AcDbObjectId blockId) {
    AcDbObject* pObject = nullptr;
    if (acdbOpenAcDbObject(pObject, blockId, AcDb::kForRead, false) != Acad::eOk)
        return nullptr;
    if (AcDbBlockTableRecord* pRecord = AcDbBlockTableRecord::cast(pObject))
        return pRecord;
    if (pObject->close() != Acad::eOk)
        acrx_abort("Failed AcDbObject::close()");
    return nullptr;
}

bool ReadInsertionArguments(CString& name, AcGePoint3d& position) {
    const resbuf* pArgument = acedGetArgs();
    if (!pArgument)
        return false;
    if (pArgument->restype == RTSTR) {
        name = pArgument->resval.rstring;
        pArgument = pArgument->rbnext;
    }
    if (!pArgument)
        return false;
    if (pArgument->restype == RT3DPOINT)
        position = AcGePoint3d(pArgument->resval.rpoint[0], pArgument->resval.rpoint[1], pArgument->resval.rpoint[2]);
    return true;
}

UINT CReferenceBuilder::Build(AcDbObjectId blockId, const CString& name, const CPlacement& placement,
                              const AcGePoint3d& base) {
    m_reference.Attach(MakeReference(blockId, name, placement, base));
    m_space.Attach(OpenCurrentSpace());
    if (!m_space || m_space->appendAcDbEntity(m_reference.get()) != Acad::eOk)
        return IDS_SPACE_NOT_WRITABLE;
    m_definition.Attach(OpenDefinition(blockId));
    if (!m_definition) {
        m_reference->erase();
        return IDS_BLOCK_NOT_READABLE;
    }
    return 0;
}

Acad::ErrorStatus AddAttributes(AcDbBlockTableRecord* pDefinition, VNDKBlockReference* pReference,
                                AcDbBlockTableRecord* pSpace, CAttributeRoad& road, Acad::ErrorStatus status) {
    AcDbBlockTableRecordIterator* pIterator = nullptr;
    pDefinition->newIterator(pIterator, true, true);
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(pIterator);
    for (iterator->start(true, true); !iterator->done(); iterator->step(true, true)) {
        AcDbEntity* pOpened = nullptr;
        if (iterator->getEntity(pOpened, AcDb::kForWrite, false) != Acad::eOk)
            continue;
        const COpened<AcDbEntity> entity(pOpened);
        AcDbAttributeDefinition* pFound = AcDbAttributeDefinition::cast(pOpened);
        if (pFound && road.Takes(pFound) && !pFound->isConstant())
            status = AddAttribute(pFound, pReference, pSpace, road);
    }
    return status;
}

void CReferenceBuilder::CloseDefinition() {
    CloseSpace();
    m_definition.Attach(nullptr);
}
