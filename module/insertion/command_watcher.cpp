// The watch on the host's commands that insert, make and write out blocks. While one that inserts runs the host asks
// for no attribute values: the upgrade asks, when the command has ended.
#include "ads/ads.h"
#include "db/block_reference.h"
#include "db/is_a.h"
#include "frame/palette_editor_reactor.h"
#include "insertion/grip_points.h"
#include "insertion/open_records.h"

#include <cstring>
#include <memory>

namespace {

/// Names of commands count byte by byte.
bool IsNamed(const char* cmdStr, std::initializer_list<const char*> names) {
    for (const char* name : names)
        if (std::strcmp(cmdStr, name) == 0)
            return true;
    return false;
}

bool IsInsertion(const char* cmdStr) { return IsNamed(cmdStr, {"INSERT", "DDINSERT", "BLOCK"}); }

void SetAttreq(int nValue) {
    resbuf value{};
    value.restype = RTSHORT;
    value.resval.rint = static_cast<short>(nValue);
    acedSetVar("ATTREQ", &value);
}

/// The entity at which the iterator stands, open for read, if its class is exactly AcDbBlockReference.
AcDbBlockReference* OpenPlainReference(const AcDbBlockTableRecordIterator& iterator) {
    AcDbObjectId id;
    AcDbEntity* pEntity = nullptr;
    // Spaces are large and seldom looked through otherwise: what is known to be something else isn't opened.
    if (iterator.getEntityId(id) != Acad::eOk || !acdbIsA(id, AcDbBlockReference::desc()) ||
        iterator.getEntity(pEntity, AcDb::kForRead, false) != Acad::eOk)
        return nullptr;
    if (pEntity->isA() == AcDbBlockReference::desc())
        return static_cast<AcDbBlockReference*>(pEntity);
    pEntity->close();
    return nullptr;
}

std::unique_ptr<AcDbBlockTableRecordIterator> IteratorAtEnd(const AcDbBlockTableRecord* pSpace) {
    AcDbBlockTableRecordIterator* pIterator = nullptr;
    pSpace->newIterator(pIterator, false, true);
    return std::unique_ptr<AcDbBlockTableRecordIterator>(pIterator);
}

/// The space's last plain reference, open for read: the first that is met from the end.
AcDbBlockReference* OpenLastPlainReference(const AcDbBlockTableRecord* pSpace) {
    const auto iterator = IteratorAtEnd(pSpace);
    for (; !iterator->done(); iterator->step(false, true))
        if (AcDbBlockReference* pReference = OpenPlainReference(*iterator))
            return pReference;
    return nullptr;
}

} // namespace

void CPaletteEditorReactor::commandWillStart(const char* cmdStr) {
    if (IsNamed(cmdStr, {"BLOCK", "WBLOCK"}))
        RelinkGripPoints();
    if (IsInsertion(cmdStr))
        StartInsertion();
}

void CPaletteEditorReactor::commandEnded(const char* cmdStr) {
    if (IsInsertion(cmdStr))
        EndInsertion();
    if (CString(cmdStr).CompareNoCase("PURGE") == 0)
        RefreshBlockList();
}

void CPaletteEditorReactor::commandCancelled(const char* cmdStr) { GiveUp(cmdStr); }

void CPaletteEditorReactor::commandFailed(const char* cmdStr) { GiveUp(cmdStr); }

void CPaletteEditorReactor::StartInsertion() {
    resbuf value{};
    acedGetVar("ATTREQ", &value);
    m_nSavedAttreq = value.resval.rint;
    SetAttreq(0);
    m_lastPlainRef.setNull();
    const COpened<AcDbBlockTableRecord> space(OpenCurrentSpace());
    if (!space)
        return;
    const auto iterator = IteratorAtEnd(space.get());
    if (const COpened<AcDbBlockReference> last(OpenPlainReference(*iterator)); last)
        m_lastPlainRef = last->objectId();
}

void CPaletteEditorReactor::EndInsertion() {
    if (const COpened<AcDbBlockTableRecord> space(OpenCurrentSpace()); space) {
        COpened<AcDbBlockReference> candidate(OpenLastPlainReference(space.get()));
        if (candidate && !c5ObjIdIsEqualTo(candidate->objectId(), m_lastPlainRef))
            UpgradeReference(space.get(), candidate.Detach());
    }
    SetAttreq(m_nSavedAttreq);
}

void CPaletteEditorReactor::GiveUp(const char* cmdStr) {
    m_lastPlainRef.setNull();
    if (IsInsertion(cmdStr))
        SetAttreq(m_nSavedAttreq);
}
