#include "insertion/insert_block.h"

#include "ads/ads.h"
#include "frame/module.h"
#include "insertion/make_attribute.h"
#include "insertion/open_records.h"
#include "objects/attribute.h"
#include "objects/block_reference.h"
#include "resources/resource.h"
#include "rx/registry.h"

#include <memory>

namespace {

void Tell(UINT id, const CString& name) {
    CString text;
    text.Format(LoadResString(id), static_cast<LPCSTR>(name));
    acutPrintf("%s", static_cast<LPCSTR>(text));
}

VNDKBlockReference* MakeReference(AcDbObjectId blockId, const CString& name, const AcGePoint3d& position,
                                  const AcGeScale3d& scale, double rotation, const AcGePoint3d& base) {
    auto* pReference = new VNDKBlockReference;
    pReference->setBlockTableRecordId(blockId);
    pReference->setOriginalBlockName(name);
    pReference->setPosition(position);
    pReference->setRotation(rotation);
    pReference->setScaleFactors(scale);
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

/// Does the definition get an attribute? Derived classes don't on this road.
bool IsTaken(AcDbEntity* pEntity) {
    return pEntity->isA() == AcDbAttributeDefinition::desc() &&
           !static_cast<AcDbAttributeDefinition*>(pEntity)->isConstant();
}

/// Puts the attribute of one definition into the space and ties it to the reference.
void AddAttribute(AcDbAttributeDefinition* pDefinition, VNDKBlockReference* pReference, AcDbBlockTableRecord* pSpace) {
    const COpened<VNDKAttribute> attribute(MakeAttribute(pDefinition, pReference));
    AcDbObjectId attributeId;
    pSpace->appendAcDbEntity(attributeId, attribute.get());
    pReference->appendAttribute(AcDbHardOwnershipId(attributeId));
}

void AddAttributes(AcDbBlockTableRecordIterator* pIterator, VNDKBlockReference* pReference,
                   AcDbBlockTableRecord* pSpace) {
    for (pIterator->start(true, true); !pIterator->done(); pIterator->step(true, true)) {
        AcDbEntity* pOpened = nullptr;
        if (pIterator->getEntity(pOpened, AcDb::kForWrite, false) != Acad::eOk)
            continue;
        const COpened<AcDbEntity> entity(pOpened);
        if (IsTaken(pOpened))
            AddAttribute(static_cast<AcDbAttributeDefinition*>(pOpened), pReference, pSpace);
    }
}

} // namespace

/// Holders let go in the opposite order: the space first, the reference last.
void InsertBlockByName(CString name, AcGePoint3d position, AcGeScale3d scale, double rotation) {
    COpened<VNDKBlockReference> reference;
    const COpened<AcDbBlockTableRecord> block(OpenBlockForRead(name));
    if (!block)
        return Tell(IDS_NO_SUCH_BLOCK, name);
    reference.Attach(MakeReference(block->objectId(), name, position, scale, rotation, block->origin()));
    COpened<AcDbBlockTableRecord> definition;
    std::unique_ptr<AcDbBlockTableRecordIterator> iterator;
    const COpened<AcDbBlockTableRecord> space(OpenCurrentSpace());
    if (!space || space->appendAcDbEntity(reference.get()) != Acad::eOk)
        return Tell(IDS_SPACE_NOT_WRITABLE, name);
    definition.Attach(OpenDefinition(block->objectId()));
    if (!definition) {
        reference->erase();
        return Tell(IDS_BLOCK_NOT_READABLE, name);
    }
    AcDbBlockTableRecordIterator* pIterator = nullptr;
    definition->newIterator(pIterator, true, true);
    iterator.reset(pIterator);
    AddAttributes(pIterator, reference.get(), space.get());
}

int InsertBlockFunction() {
    CString name;
    AcGePoint3d position;
    const resbuf* pArgument = acedGetArgs();
    if (!pArgument)
        return 0;
    if (pArgument->restype == RTSTR) {
        name = pArgument->resval.rstring;
        pArgument = pArgument->rbnext;
    }
    if (!pArgument)
        return 0;
    if (pArgument->restype == RT3DPOINT)
        position = AcGePoint3d(pArgument->resval.rpoint[0], pArgument->resval.rpoint[1], pArgument->resval.rpoint[2]);
    InsertBlockByName(name, position, AcGeScale3d(1.0, 1.0, 1.0), 0.0);
    acedRetVoid();
    return 0;
}
