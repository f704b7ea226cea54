// What the attribute dialogs do with the drawing: the pick, checked opening, the walk over a block's definitions and
// over a plain reference's attributes, the lock around a commit.
#pragma once

#include "ap/document.h"
#include "db/block_reference.h"
#include "db/block_table.h"
#include "db/text.h"
#include "mfc/string.h"
#include "objects/attribute_definition.h"
#include "rx/registry.h"

#include <memory>

/// Takes over a text that the host gave.
CString TakeText(char* pszText);

/// Asks until something is picked. The reference, open for read, and its name; null when the user cancels or picks
/// something else than a reference of exactly one of the two classes, which he is told.
AcDbBlockReference* PickBlockReference(ads_name name);

/// The object of an id, derived classes included. Null when it doesn't open or is something else, which is closed.
template <class T>
T* OpenChecked(AcDbObjectId id, AcDb::OpenMode mode) {
    AcDbObject* pObject = nullptr;
    if (acdbOpenAcDbObject(pObject, id, mode, false) != Acad::eOk)
        return nullptr;
    if (T* pWanted = T::cast(pObject))
        return pWanted;
    if (pObject->close() != Acad::eOk)
        acrx_abort("Failed AcDbObject::close()");
    return nullptr;
}

/// True for a definition that is a row of the dialogs: not constant, and of exactly one of the two classes.
inline bool IsRowDefinition(const AcDbEntity* pEntity) {
    return (pEntity->isA() == VNDKAttributeDefinition::desc() || pEntity->isA() == AcDbAttributeDefinition::desc()) &&
           !static_cast<const AcDbAttributeDefinition*>(pEntity)->isConstant();
}

/// Calls `take` with each definition that is a row, open for read, in the block's order.
template <class Take>
void ForEachRowDefinition(const AcDbBlockTableRecord* pBlock, Take take) {
    AcDbBlockTableRecordIterator* pIterator = nullptr;
    if (pBlock->newIterator(pIterator, true, true) != Acad::eOk)
        return;
    const std::unique_ptr<AcDbBlockTableRecordIterator> iterator(pIterator);
    AcDbObjectId previousId;
    for (pIterator->start(true, true); !pIterator->done(); pIterator->step(true, true)) {
        AcDbEntity* pEntity = nullptr;
        if (pIterator->getEntity(pEntity, AcDb::kForRead) != Acad::eOk)
            continue;
        if (pEntity->objectId() != previousId && IsRowDefinition(pEntity))
            take(static_cast<const AcDbAttributeDefinition*>(pEntity));
        previousId = pEntity->objectId();
        pEntity->close();
    }
}

/// Calls `take` with each attribute of a plain reference that isn't constant. What doesn't open is passed over.
template <class Take>
void ForEachRowAttribute(const AcDbBlockReference* pReference, AcDb::OpenMode mode, Take take) {
    const std::unique_ptr<AcDbObjectIterator> iterator(pReference->attributeIterator());
    for (iterator->start(false); !iterator->done(); iterator->step(false, true)) {
        AcDbAttribute* pAttribute = OpenChecked<AcDbAttribute>(iterator->objectId(), mode);
        if (!pAttribute)
            continue;
        if (!pAttribute->isConstant())
            take(pAttribute);
        pAttribute->close();
    }
}

/// Locks the current document for writing as long as it lives.
class CDocumentLock {
public:
    CDocumentLock() : m_pDocument(acDocManagerPtr()->curDocument()) {
        m_bLocked = acDocManagerPtr()->lockDocument(m_pDocument, AcAp::kWrite, nullptr, nullptr, true) == Acad::eOk;
    }
    ~CDocumentLock() {
        if (m_bLocked)
            acDocManagerPtr()->unlockDocument(m_pDocument);
    }
    CDocumentLock(const CDocumentLock&) = delete;
    CDocumentLock& operator=(const CDocumentLock&) = delete;

    /// False when somebody else has the document for himself; nothing must be written then.
    [[nodiscard]] bool IsLocked() const { return m_bLocked; }

private:
    AcApDocument* m_pDocument;
    bool m_bLocked;
};
