#include "frame/palette_bar.h"

#include "palette/resizable_docking_dialog.h"

#include <new>

namespace {

CResizableDockingDialog* g_pPaletteBar;

} // namespace

CResizableDockingDialog* PaletteBar() { return g_pPaletteBar; }

void CreatePaletteBar() { g_pPaletteBar = new (std::nothrow) CResizableDockingDialog; }

void DestroyPaletteBar() {
    if (!g_pPaletteBar)
        return;
    g_pPaletteBar->DestroyWindow();
    delete g_pPaletteBar;
    g_pPaletteBar = nullptr;
}
