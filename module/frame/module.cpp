#include "frame/module.h"

#include "ads/ads.h"
#include "ed/dynamic_linker.h"
#include "frame/palette_bar.h"
#include "frame/palette_editor_reactor.h"
#include "rx/registry.h"

namespace {

const char* const kObjectLibrary = "VNDKObjectsDbx.dbx";

struct ExtensionModuleRecord {
    BOOL attached;
    HINSTANCE hDefaultResource;
    HINSTANCE hModuleResource;
    AFX_EXTENSION_MODULE extension;
};

HINSTANCE g_hInstance;
ExtensionModuleRecord g_module;
CPaletteEditorReactor* g_pEditorReactor;

void InitExtensionModule() {
    if (g_module.attached)
        return;
    g_module.attached = AfxInitExtensionModule(g_module.extension, g_hInstance);
    if (!g_module.attached)
        return;
    g_module.hDefaultResource = AfxGetModuleState()->m_hCurrentResourceHandle;
    g_module.hModuleResource = g_hInstance;
    new CDynLinkLibrary(g_module.extension, 0); // deleted by AfxTermExtensionModule
}

void TermExtensionModule() {
    if (!g_module.attached)
        return;
    AfxTermExtensionModule(g_module.extension, 0);
    g_module.attached = FALSE;
}

AcEditor* Editor() { return AcEditor::cast(acrxSysRegistry()->at("AcEditor")); }

/// The object library is there before the reactor that uses its classes, and goes after it.
void AttachModule(HINSTANCE hInstance) {
    g_hInstance = hInstance;
    InitExtensionModule();
    InitAcUiDLL();
    acrxLoadModule(kObjectLibrary, false, false);
    g_pEditorReactor = new CPaletteEditorReactor;
    if (AcEditor* pEditor = Editor())
        pEditor->addReactor(g_pEditorReactor);
}

void DetachModule() {
    TermExtensionModule();
    DestroyPaletteBar();
    if (AcEditor* pEditor = Editor())
        pEditor->removeReactor(g_pEditorReactor);
    delete g_pEditorReactor;
    g_pEditorReactor = nullptr;
    acrxUnloadModule(kObjectLibrary, false);
}

} // namespace

HINSTANCE ModuleInstance() { return g_hInstance; }

HINSTANCE ModuleResourceHandle() { return g_module.hModuleResource; }

CPaletteEditorReactor* EditorReactor() { return g_pEditorReactor; }

CString LoadResString(UINT id) {
    char text[1000];
    return LoadStringA(ModuleInstance(), id, text, sizeof text) > 0 ? CString(text) : CString();
}

extern "C" BOOL APIENTRY DllMain(HINSTANCE hInstance, DWORD reason, LPVOID /*reserved*/) {
    if (reason == DLL_PROCESS_ATTACH)
        AttachModule(hInstance);
    else if (reason == DLL_PROCESS_DETACH)
        DetachModule();
    return TRUE;
}
