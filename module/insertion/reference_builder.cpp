#include "insertion/reference_builder.h"

#include "ads/ads.h"
#include "insertion/make_attribute.h"
#include "objects/attribute.h"
#include "resources/resource.h"
#include "rx/registry.h"

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

/// The record of that id, open for read. Null if it doesn't open or is something else.
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

} // namespace

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
    AcDbBlockTableRecordIterator* pIterator = nullptr;
    m_definition->newIterator(pIterator, true, true);
    m_iterator.reset(pIterator);
    return 0;
}

void CReferenceBuilder::AddAttributes(CAttributeRoad& road) {
    for (m_iterator->start(true, true); !m_iterator->done(); m_iterator->step(true, true)) {
        AcDbEntity* pOpened = nullptr;
        if (m_iterator->getEntity(pOpened, AcDb::kForWrite, false) != Acad::eOk)
            continue;
        const COpened<AcDbEntity> entity(pOpened);
        AcDbAttributeDefinition* pDefinition = AcDbAttributeDefinition::cast(pOpened);
        if (pDefinition && road.Takes(pDefinition) && !pDefinition->isConstant())
            AddAttribute(pDefinition, road);
    }
}

/// Puts the attribute of one definition into the space and ties it to the reference.
void CReferenceBuilder::AddAttribute(AcDbAttributeDefinition* pDefinition, CAttributeRoad& road) {
    const COpened<VNDKAttribute> attribute(MakeAttribute(pDefinition, m_reference.get()));
    road.OnMade(pDefinition, attribute.get());
    AcDbObjectId attributeId;
    m_space->appendAcDbEntity(attributeId, attribute.get());
    road.OnAppended(pDefinition, attribute.get());
    m_reference->appendAttribute(AcDbHardOwnershipId(attributeId));
}

void CReferenceBuilder::CloseDefinition() {
    CloseSpace();
    m_iterator.reset();
    m_definition.Attach(nullptr);
}
