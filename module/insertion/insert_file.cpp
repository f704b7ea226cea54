#include "insertion/insert_file.h"

#include "ads/ads.h"
#include "ap/document.h"
#include "attributes/edit_attribute_dlg.h"
#include "frame/module.h"
#include "insertion/prompt_attribute.h"
#include "insertion/reference_builder.h"
#include "objects/attribute.h"
#include "objects/attribute_definition.h"
#include "resources/resource.h"

namespace {

constexpr int kDenyWrite = 0x20;

AcDbDatabase* WorkingDatabase() { return acdbHostApplicationServices()->workingDatabase(); }

/// Definitions of all kinds, each asked for at the command line unless a dialog will ask for all of them.
class CFileRoad : public CAttributeRoad {
public:
    explicit CFileRoad(const AcDbDatabase* pDatabase) : m_pDatabase(pDatabase) {}

    bool Takes(AcDbAttributeDefinition*) override { return true; }

    void OnMade(AcDbAttributeDefinition* pDefinition, VNDKAttribute* pAttribute) override {
        if (!m_pDatabase->attdia() && m_bAsking)
            m_bAsking = PromptAttribute(pDefinition, pAttribute);
    }

    void OnAppended(AcDbAttributeDefinition* pDefinition, VNDKAttribute* pAttribute) override {
        if (pDefinition->isA() == VNDKAttributeDefinition::desc() && !m_pDatabase->attdia())
            pAttribute->CheckFormulaForStretch();
    }

private:
    const AcDbDatabase* m_pDatabase;
    bool m_bAsking = true;
};

CString Named(UINT id, const CString& name) {
    CString text;
    text.Format(LoadResString(id), static_cast<LPCSTR>(name));
    return text;
}

CString BlockNameFromPath(const CString& path) {
    CString name = path.Mid(path.ReverseFind('\\') + 1);
    name = name.Mid(name.ReverseFind('/') + 1);
    const int nExtension = name.Find(".dwg");
    return nExtension < 0 ? name : name.Left(nExtension);
}

/// Could a reference be put there? Found out before the drawing gets a block that nothing would refer to.
bool IsSpaceWritable() {
    const COpened<AcDbBlockTableRecord> space(OpenCurrentSpace());
    return static_cast<bool>(space);
}

/// Why the file didn't become a block; empty where the alert says it all.
CString FailureText(Acad::ErrorStatus status, const AcDbDatabase& source, const CString& name) {
    switch (status) {
    case Acad::eNoDatabase:
        return CString("\n") + AcApDocManager::fileErrorOf(source).c_str();
    case Acad::eInvalidSymbolTableName:
        return Named(IDS_NOT_A_BLOCK_NAME, name);
    case Acad::eSelfReference:
        return Named(IDS_HOLDS_OWN_NAME, name);
    case Acad::eDwgNeedsRecovery:
        return CString("\n") + AcApDocManager::fileErrorOf(*WorkingDatabase()).c_str();
    default:
        return CString();
    }
}

/// Makes the file a block of the working database. False after an alert.
bool LoadBlock(const CString& path, const CString& name, AcDbObjectId& blockId, AcGePoint3d& base) {
    AcDbDatabase source(false, false);
    source.readDwgFile(path, kDenyWrite, false);
    const Acad::ErrorStatus status = WorkingDatabase()->insert(blockId, name, &source, false);
    if (status != Acad::eOk) {
        acedAlert(LoadResString(IDS_COULD_NOT_LOAD_DRAWING));
        acutPrintf("%s", static_cast<LPCSTR>(FailureText(status, source, name)));
        return false;
    }
    base = source.insbase();
    return true;
}

/// The block of that name, read from the file if the drawing doesn't hold it. False after an alert.
bool FindOrLoadBlock(const CString& path, const CString& name, AcDbObjectId& blockId, AcGePoint3d& base) {
    if (!BlockExists(name))
        return LoadBlock(path, name, blockId, base);
    const COpened<AcDbBlockTableRecord> block(OpenBlockForRead(name));
    if (!block) {
        acedAlert(Named(IDS_BLOCK_NOT_READABLE, name));
        return false;
    }
    blockId = block->objectId();
    base = block->origin();
    return true;
}

/// Lets the user fill in the new reference, and closes it.
void EditValues(VNDKBlockReference* pReference) {
    CEditAttributeDlg dlg(CWnd::FromHandle(adsw_acadMainWnd()));
    if (dlg.SelectBlock(pReference))
        dlg.DoModal();
}

} // namespace

void InsertDrawingFile(CString path, AcGePoint3d position, AcGeScale3d scale, double rotation) {
    const AcDbDatabase* pDatabase = WorkingDatabase();
    const CString name = BlockNameFromPath(path);
    if (!IsSpaceWritable()) {
        acedAlert(Named(IDS_SPACE_NOT_WRITABLE, name));
        return;
    }
    AcDbObjectId blockId;
    AcGePoint3d base;
    if (!FindOrLoadBlock(path, name, blockId, base))
        return;
    CReferenceBuilder builder;
    if (const UINT failure = builder.Build(blockId, name, {position, scale, rotation}, base)) {
        acedAlert(Named(failure, name));
        return;
    }
    CFileRoad road(pDatabase);
    builder.AddAttributes(road);
    builder.CloseSpace();
    if (pDatabase->attdia())
        EditValues(builder.DetachReference());
    builder.CloseDefinition();
}

int InsertFileFunction() {
    CString path;
    AcGePoint3d position;
    if (!ReadInsertionArguments(path, position))
        return 0;
    InsertDrawingFile(path, position, AcGeScale3d(1.0, 1.0, 1.0), 0.0);
    acedRetVoid();
    return 0;
}
