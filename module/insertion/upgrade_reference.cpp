// The upgrade of a plain reference: an Intelligent Block takes its place.
#include "ads/ads.h"
#include "attributes/edit_attribute_dlg.h"
#include "frame/doc_data.h"
#include "frame/palette_editor_reactor.h"
#include "insertion/prompt_attribute.h"
#include "insertion/reference_builder.h"
#include "objects/attribute.h"
#include "objects/attribute_definition.h"
#include "rx/registry.h"

namespace {

AcDbDatabase* WorkingDatabase() { return acdbHostApplicationServices()->workingDatabase(); }

/// Definitions of both classes, asked for at the command line where the host would have asked.
class CUpgradeRoad : public CAttributeRoad {
public:
    CUpgradeRoad(bool bDialog, bool bAsking) : m_bDialog(bDialog), m_bAsking(bAsking && !bDialog) {}

    bool Takes(AcDbAttributeDefinition* pDefinition) override {
        return pDefinition->isA() == AcDbAttributeDefinition::desc() ||
               pDefinition->isA() == VNDKAttributeDefinition::desc();
    }

    /// After a cancel the rest of the attributes come out with the definitions' texts.
    void OnMade(AcDbAttributeDefinition* pDefinition, VNDKAttribute* pAttribute) override {
        if (m_bAsking)
            m_bAsking = PromptAttribute(pDefinition, pAttribute);
    }

    void OnAppended(AcDbAttributeDefinition* pDefinition, VNDKAttribute* pAttribute) override {
        if (pDefinition->isA() == VNDKAttributeDefinition::desc() && !m_bDialog)
            pAttribute->CheckFormulaForStretch();
    }

private:
    bool m_bDialog;
    bool m_bAsking;
};

CString BlockNameOf(AcDbObjectId id) {
    AcDbBlockTableRecord* pRecord = nullptr;
    if (!WorkingDatabase() || acdbOpenObject(pRecord, id, AcDb::kForRead) != Acad::eOk)
        return CString();
    const COpened<AcDbBlockTableRecord> record(pRecord);
    char* pName = nullptr;
    if (record->getName(pName) != Acad::eOk)
        return CString();
    CString name(pName);
    acutDelString(pName);
    return name;
}

/// An object that isn't an entity is left as it is.
void EraseEntity(AcDbObjectId id) {
    AcDbObject* pObject = nullptr;
    if (acdbOpenAcDbObject(pObject, id, AcDb::kForWrite) != Acad::eOk)
        return;
    if (AcDbEntity* pEntity = AcDbEntity::cast(pObject)) {
        pEntity->erase(true);
        pEntity->close();
    } else if (pObject->close() != Acad::eOk) {
        acrx_abort("Failed AcDbObject::close()");
    }
}

} // namespace

void CPaletteEditorReactor::UpgradeReference(AcDbBlockTableRecord* pSpace, AcDbBlockReference* pPlain) {
    COpened<AcDbBlockReference> plain(pPlain);
    if (plain->isA() != AcDbBlockReference::desc())
        return;
    const AcDbObjectId id = plain->objectId();
    if (c5ObjIdIsEqualTo(DocDataManager().docData().lastUpgradedRef(), id))
        return;
    if (!BuildIntelligentReference(pSpace, plain.Detach()))
        return;
    DocDataManager().docData().SetLastUpgradedRef(id);
    EraseEntity(id);
}

/// Holders let go in the opposite order: the new reference first, the definition last.
bool CPaletteEditorReactor::BuildIntelligentReference(AcDbBlockTableRecord* pSpace, AcDbBlockReference* pPlain) {
    COpened<AcDbBlockTableRecord> definition;
    const COpened<AcDbBlockReference> plain(pPlain);
    COpened<VNDKBlockReference> reference(new VNDKBlockReference);
    reference->setPropertiesFrom(plain.get(), true);
    reference->setBlockTransform(plain->blockTransform());
    const AcDbObjectId blockId = reference->setBlockTableRecordId(plain->blockTableRecord());
    reference->setOriginalBlockName(BlockNameOf(plain->blockTableRecord()));
    definition.Attach(OpenDefinition(blockId));
    if (!definition)
        return false;
    reference->setInsBase(definition->origin());
    const Acad::ErrorStatus appended = pSpace->appendAcDbEntity(reference.get());
    const bool bDialog = WorkingDatabase()->attdia();
    const bool bAsking = m_nSavedAttreq == 1;
    CUpgradeRoad road(bDialog, bAsking);
    const Acad::ErrorStatus status = AddAttributes(definition.get(), reference.get(), pSpace, road, appended);
    if (bDialog && bAsking && reference->isResident()) {
        CEditAttributeDlg dlg(CWnd::FromHandle(adsw_acadMainWnd()));
        if (dlg.SelectBlock(reference.Detach()))
            dlg.DoModal();
    }
    return status == Acad::eOk;
}
