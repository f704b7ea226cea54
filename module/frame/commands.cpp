#include "frame/commands.h"

#include "ads/ads.h"
#include "attributes/edit_attribute_dlg.h"
#include "attributes/enhanced_attribute_dlg.h"
#include "controls/getting_started_dlg.h"
#include "ed/command_stack.h"
#include "frame/module.h"
#include "palette/resizable_docking_dialog.h"
#include "resources/resource.h"
#include "rx/registry.h"

namespace {

const char* const kGroup = "VNDKCOMMANDS";

constexpr int kPalette = ACRX_CMD_USEPICKSET | ACRX_CMD_REDRAW;
constexpr int kDialog = ACRX_CMD_USEPICKSET;
constexpr int kEditor = ACRX_CMD_TRANSPARENT | ACRX_CMD_USEPICKSET | ACRX_CMD_REDRAW;

struct CommandRow {
    const char* name;
    int flags;
    AcRxFunctionPtr function;
};

const CommandRow g_commandTable[] = {
    {"BLOCKS", kPalette, ShowPalette},
    {"DDATTE2", kDialog, EditAttributes},
    {"DDATTE", kDialog, EditAttributes},
    {"EATTEDIT", kEditor, EditAttributesEnhanced},
    {"-EATTEDIT", kEditor, EditAttributesEnhanced},
    {"_EATTEDIT", kEditor, EditAttributesEnhanced},
    {"EA", kEditor, EditAttributesEnhanced},
};

AcEdCommandStack* CommandStack() { return AcEdCommandStack::cast(acrxSysRegistry()->at("ACAD_REGISTERED_COMMANDS")); }

/// Unless the user has turned the tips off. Without a screen the dialog can't come up, and nothing is shown.
void ShowTips() {
    const CWinApp* pApp = AfxGetModuleState()->m_pCurrentWinApp;
    if (!pApp || pApp->GetProfileInt(LoadResString(IDS_VONDRAKE), "DoNotShow", 0) != 0)
        return;
    AfxInitRichEdit();
    CGettingStartedDlg dlg(CWnd::FromHandle(adsw_acadMainWnd()));
    dlg.DoModal();
}

} // namespace

void RegisterCommands() {
    if (AcEdCommandStack* pStack = CommandStack())
        for (const CommandRow& row : g_commandTable)
            pStack->addCommand(kGroup, row.name, row.name, row.flags, row.function, nullptr, -1, nullptr, nullptr);
    ShowTips();
    acutPrintf("\nVondrake Free version loaded.");
    acutPrintf("\nType BLOCKS to activate the dockable dialog box.");
}

void UnregisterCommands() {
    if (AcEdCommandStack* pStack = CommandStack())
        pStack->removeGroup(kGroup);
}
