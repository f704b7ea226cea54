// What the host tells of commands and of work on whole drawings.
#pragma once

#include "db/object_id.h"
#include "ed/editor.h"

class AcDbBlockReference;
class AcDbBlockTableRecord;
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
    // The commands; module/insertion has these and what follows from them.
    void commandWillStart(const char* cmdStr) override;
    void commandEnded(const char* cmdStr) override;
    void commandCancelled(const char* cmdStr) override;
    void commandFailed(const char* cmdStr) override;

    /// Puts an Intelligent Block in the place of a plain reference, unless it is the one that was replaced last in this
    /// document. The space is open for write and stays so; the reference is open for read and is closed here. Where the
    /// last new entity can't be appended the plain reference stays.
    virtual void UpgradeReference(AcDbBlockTableRecord* pSpace, AcDbBlockReference* pPlain);

private:
    void RefreshBlockList();
    void ShowFirstPage();

    void StartInsertion();
    void EndInsertion();
    void GiveUp(const char* cmdStr);
    /// Builds what takes the plain reference's place, and closes that. False: it has to stay.
    bool BuildIntelligentReference(AcDbBlockTableRecord* pSpace, AcDbBlockReference* pPlain);

    CBlockListView* m_pBlockList = nullptr; // not owned
    CPaletteView* m_pPalette = nullptr;     // not owned
    int m_nSavedAttreq = 0;                 // ATTREQ before the watched command
    AcDbObjectId m_lastPlainRef;            // the space's last entity then, if it was a plain reference
};
