#include "mfc/module_state.h"

#include "win32/windows.h"

#include <utility>

IMPLEMENT_DYNAMIC(CDynLinkLibrary, CObject)

namespace {

AFX_MODULE_STATE*& currentState() {
    static AFX_MODULE_STATE own;
    static AFX_MODULE_STATE* current = &own;
    if (current == nullptr)
        current = &own;
    return current;
}

// The first handle that `has` accepts: the resource handle in force, then plain, then system libraries.
template <class Has>
HINSTANCE searchChain(Has has) {
    const AFX_MODULE_STATE& state = *AfxGetModuleState();
    if (state.m_hCurrentResourceHandle != nullptr && has(state.m_hCurrentResourceHandle))
        return state.m_hCurrentResourceHandle;
    for (const BOOL system : {FALSE, TRUE})
        for (const CDynLinkLibrary* link = state.m_pFirstLibrary; link != nullptr; link = link->m_pNextDLL)
            if (link->m_bSystem == system && has(link->m_hResource))
                return link->m_hResource;
    return nullptr;
}

} // namespace

AFX_MODULE_STATE* AfxGetModuleState() { return currentState(); }

AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* state) { return std::exchange(currentState(), state); }

CWinApp* AfxGetApp() { return AfxGetModuleState()->m_pCurrentWinApp; }

HINSTANCE AfxGetInstanceHandle() { return AfxGetModuleState()->m_hCurrentInstanceHandle; }

HINSTANCE AfxGetResourceHandle() { return AfxGetModuleState()->m_hCurrentResourceHandle; }

void AfxSetResourceHandle(HINSTANCE instance) { AfxGetModuleState()->m_hCurrentResourceHandle = instance; }

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL bSystem)
    : m_hModule(state.hModule), m_hResource(state.hResource), m_bSystem(bSystem != FALSE),
      m_pNextDLL(AfxGetModuleState()->m_pFirstLibrary), m_pState(AfxGetModuleState()) {
    m_pState->m_pFirstLibrary = this;
}

CDynLinkLibrary::~CDynLinkLibrary() {
    CDynLinkLibrary** link = &m_pState->m_pFirstLibrary;
    while (*link != nullptr && *link != this)
        link = &(*link)->m_pNextDLL;
    if (*link == this)
        *link = m_pNextDLL;
}

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE module) {
    if (module == nullptr)
        return FALSE;
    if (state.bInitialized == FALSE)
        state = {TRUE, module, module};
    return TRUE;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL all) {
    if (state.bInitialized == FALSE)
        return;
    CDynLinkLibrary* next = nullptr;
    for (CDynLinkLibrary* link = AfxGetModuleState()->m_pFirstLibrary; link != nullptr; link = next) {
        next = link->m_pNextDLL;
        if (all != FALSE || link->m_hModule == state.hModule)
            delete link;
    }
    state = {};
}

HINSTANCE AfxFindResourceHandle(LPCSTR name, LPCSTR type) {
    const HINSTANCE found =
        searchChain([name, type](HINSTANCE instance) { return FindResourceA(instance, name, type) != nullptr; });
    return found != nullptr ? found : AfxGetResourceHandle();
}

HINSTANCE AfxFindStringHandle(UINT id) {
    return searchChain([id](HINSTANCE instance) {
        char first[2];
        return LoadStringA(instance, id, first, sizeof first) > 0;
    });
}
