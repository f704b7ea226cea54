// The palette as the events of documents and drawings see it. The palette's own classes stand behind these while
// they live; the reactors work with or without them.
#pragma once

/// The list on the tab "Blocks".
class CBlockListView {
public:
    /// Shows the blocks of the current drawing anew.
    virtual void Refresh() = 0;

protected:
    ~CBlockListView() = default;
};

/// The dialog with the tabs.
class CPaletteView {
public:
    /// Selects a tab without telling anybody, as TCM_SETCURSEL does.
    virtual void SelectTab(int nTab) = 0;
    /// Makes the controls match the selected tab.
    virtual void ShowActivePage() = 0;

protected:
    ~CPaletteView() = default;
};
