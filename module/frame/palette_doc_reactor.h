// Documents that come, go and change places, for the Blocks tab.
#pragma once

#include "ap/document.h"

class CBlockListView;

/// Made by the block list, which owns it.
class CPaletteDocReactor : public AcApDocManagerReactor {
public:
    explicit CPaletteDocReactor(CBlockListView* pBlockList) : m_pBlockList(pBlockList) {}
    ~CPaletteDocReactor() override;

    void documentCreated(AcApDocument* pDocument) override;
    void documentDestroyed(const char* fileName) override;
    void documentActivated(AcApDocument* pDocument) override;

private:
    CBlockListView* m_pBlockList; // not owned
};
