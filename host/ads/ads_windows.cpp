// The program's windows and the program itself, for modules.
#include "ads/ads.h"

#include "ap/automation.h"
#include "ed/host.h"
#include "mfc/afx.h"

using vndk::host::Host;

HWND adsw_acadMainWnd() { return Host::current() ? Host::current()->mainWindow() : nullptr; }

CFrameWnd* acedGetAcadFrame() { return dynamic_cast<CFrameWnd*>(CWnd::FromHandlePermanent(adsw_acadMainWnd())); }

CWnd* acedGetAcadDockCmdLine() {
    const HWND window = Host::current() ? Host::current()->commandLineWindow() : nullptr;
    return ::IsWindow(window) ? CWnd::FromHandle(window) : nullptr;
}

CWinApp* acedGetAcadWinApp() {
    CWinApp* const application = AfxGetApp();
    if (application)
        application->EnableAutomation(vndk::host::applicationObject());
    return application;
}

BOOL acedGetCurrentColors(AcColorSettings* colors) {
    if (!colors)
        return FALSE;
    colors->dwGfxModelBkColor = RGB(0, 0, 0); // what a device begins with
    return TRUE;
}

void InitAcUiDLL() {}
