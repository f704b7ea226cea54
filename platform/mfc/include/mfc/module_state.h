// The framework's state: the running application object, the resource handle in force, and the chain of extension
// libraries whose resources are searched after the application's own.
//
// An extension library holds one static, zeroed AFX_EXTENSION_MODULE. At process attach it calls
// AfxInitExtensionModule and puts `new CDynLinkLibrary(record, 0)` into the chain; at process detach
// AfxTermExtensionModule takes its links out of the chain and deletes them.
#pragma once

#include "mfc/object.h"

class CDynLinkLibrary;
class CWinApp;

struct AFX_MODULE_STATE {
    CWinApp* m_pCurrentWinApp = nullptr; ///< not owned
    HINSTANCE m_hCurrentInstanceHandle = nullptr;
    HINSTANCE m_hCurrentResourceHandle = nullptr;
    CDynLinkLibrary* m_pFirstLibrary = nullptr; ///< newest first; each link owned by its library
};

struct AFX_EXTENSION_MODULE {
    BOOL bInitialized;
    HMODULE hModule;
    HMODULE hResource;
};

/// A library's place in the resource chain of the state that is current when it is made. Made with `new`.
class CDynLinkLibrary : public CObject {
    DECLARE_DYNAMIC(CDynLinkLibrary)

public:
    /// System libraries are searched after all others.
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL bSystem = FALSE);
    ~CDynLinkLibrary() override;
    CDynLinkLibrary(const CDynLinkLibrary&) = delete;
    CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;

    HMODULE m_hModule;
    HMODULE m_hResource;
    BOOL m_bSystem;
    CDynLinkLibrary* m_pNextDLL;

private:
    AFX_MODULE_STATE* m_pState;
};

/// The current state; never null.
[[nodiscard]] AFX_MODULE_STATE* AfxGetModuleState();
/// Makes another state current (null: the program's own one) and returns the former. The caller owns both.
AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* state);

[[nodiscard]] CWinApp* AfxGetApp();
[[nodiscard]] HINSTANCE AfxGetInstanceHandle();
[[nodiscard]] HINSTANCE AfxGetResourceHandle();
void AfxSetResourceHandle(HINSTANCE instance);

/// Marks the record as initialised for this library. FALSE, with the record left as it was, for a null handle.
BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE module);
/// Removes the library's links from the chain, or all links with `all`, and clears the record.
void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL all = FALSE);

/// The handle whose resources hold the one asked for: the current resource handle, then the chain (system libraries
/// last). The current resource handle when nobody has it.
[[nodiscard]] HINSTANCE AfxFindResourceHandle(LPCSTR name, LPCSTR type);
/// As AfxFindResourceHandle for one string of the string table; null when nobody has it.
[[nodiscard]] HINSTANCE AfxFindStringHandle(UINT id);
