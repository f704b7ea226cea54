// Where the user left a dock bar, as the profile keeps it: section "DockBars", one entry for each tool id.
#pragma once

#include "mfc/afx.h"

#include <optional>

namespace vndk::host {

struct DockPlace {
    UINT dockBarId = 0; // AFX_IDW_DOCKBAR_
    CSize docked;       // width left or right, height at top or bottom
    CRect floating;     // the window, screen; empty: it never floated
    bool mayDock = true;
};

/// Nothing when the profile has no entry or one that makes no sense.
std::optional<DockPlace> readDockPlace(const CString& toolId);
/// Does nothing without an application or a tool id.
void writeDockPlace(const CString& toolId, const DockPlace& place);

/// The same size, moved so far that the caption can be reached by mouse.
CRect withinReach(CRect window);

} // namespace vndk::host
