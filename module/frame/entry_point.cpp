// What the host calls: the two names that the module exports.
#include "ads/ads.h"
#include "ed/dynamic_linker.h"
#include "frame/commands.h"
#include "frame/doc_data.h"
#include "frame/functions.h"
#include "frame/palette_bar.h"
#include "rx/app_codes.h"
#include "rx/registry.h"

namespace {

/// The level of the host's interface: release 15 in the upper 16 bits.
constexpr int kApiLevel = 0xF0000;

void AllowUnloading(void* pkt) {
    auto* pLinker = AcRxDynamicLinker::cast(acrxSysRegistry()->at("DynamicLinker"));
    if (!pLinker)
        return;
    pLinker->unlockApplication(pkt);
    pLinker->registerAppMDIAware(pkt);
}

/// The host's own attribute editor gives way to the module's, under each name by which it can be called.
void UndefineHostEditor() {
    for (const char* name : {"EATTEDIT", "c:EATTEDIT", "_EATTEDIT", ".EATTEDIT", "-EATTEDIT", "_.EATTEDIT"})
        acedCmdUndefine(name, 1);
}

void InitApp(void* pkt) {
    AllowUnloading(pkt);
    RegisterCommands();
    UndefineHostEditor();
    DocDataManager().docData().AttachWatcher();
}

void UnloadApp() {
    DocDataManager().docData().DetachWatcher();
    UnregisterCommands();
    DestroyPaletteBar();
}

} // namespace

extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* pkt) {
    switch (msg) {
    case AcRx::kInitAppMsg:
        InitApp(pkt);
        break;
    case AcRx::kUnloadAppMsg:
        UnloadApp();
        break;
    case AcRx::kLoadDwgMsg:
        RegisterFunctions();
        break;
    case AcRx::kInvkSubrMsg:
        DispatchFunction();
        break;
    default:
        break;
    }
    return AcRx::kRetOK;
}

extern "C" int acrxGetApiVersion() { return kApiLevel; }
