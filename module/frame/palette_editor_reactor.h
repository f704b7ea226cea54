// What the host tells of commands and of work on whole drawings.
#pragma once

#include "ed/editor.h"

class CBlockListView;
class CPaletteView;

/// One instance, from process attach to process detach; it hears all documents.
class CPaletteEditorReactor : public AcEditorReactor {
public:
    ~CPaletteEditorReactor() override;

    /// The palette stores itself here while it lives; null takes it out.
    void SetPalette(CPaletteView* pPalette) { m_pPalette = pPalette; }
    void SetBlockList(CBlockListView* pBlockList) { m_pBlockList = pBlockList; }

    void endInsert(AcDbDatabase* pTo) override;
    using AcEditorReactor::beginWblock; // the form with an insertion point stays the base's
    void beginWblock(AcDbDatabase* pTo, AcDbDatabase* pFrom) override;
    void beginWblock(AcDbDatabase* pTo, AcDbDatabase* pFrom, AcDbObjectId blockId) override;
    void endDeepClone(AcDbIdMapping& mapping) override;
    void commandEnded(const char* cmdStr) override;

private:
    void RefreshBlockList();
    void ShowFirstPage();

    CBlockListView* m_pBlockList = nullptr; // not owned
    CPaletteView* m_pPalette = nullptr;     // not owned
};
