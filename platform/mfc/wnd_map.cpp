// Which object belongs to which window.
#include "mfc/wnd.h"

#include "mfc/module_state.h"

#include <map>
#include <memory>

IMPLEMENT_DYNAMIC(CWnd, CCmdTarget)

namespace {

std::map<HWND, CWnd*>& permanentMap() {
    static std::map<HWND, CWnd*> map;
    return map;
}

std::map<HWND, std::unique_ptr<CWnd>>& temporaryMap() {
    static std::map<HWND, std::unique_ptr<CWnd>> map;
    return map;
}

} // namespace

const CWnd CWnd::wndTop(HWND_TOP);
const CWnd CWnd::wndBottom(HWND_BOTTOM);
const CWnd CWnd::wndTopMost(HWND_TOPMOST);
const CWnd CWnd::wndNoTopMost(HWND_NOTOPMOST);

CWnd* CWnd::FromHandlePermanent(HWND window) {
    const auto found = permanentMap().find(window);
    return found != permanentMap().end() ? found->second : nullptr;
}

CWnd* CWnd::FromHandle(HWND window) {
    return FromHandle(window, RUNTIME_CLASS(CWnd), [] { return std::make_unique<CWnd>(); });
}

CWnd* CWnd::FromHandle(HWND window, const CRuntimeClass* wanted, std::unique_ptr<CWnd> (*make)()) {
    if (window == nullptr)
        return nullptr;
    if (CWnd* permanent = FromHandlePermanent(window))
        return permanent->IsKindOf(wanted) != FALSE ? permanent : nullptr;
    std::unique_ptr<CWnd>& temporary = temporaryMap()[window];
    if (temporary == nullptr || temporary->IsKindOf(wanted) == FALSE) {
        temporary = make();
        temporary->m_hWnd = window;
    }
    return temporary.get();
}

void CWnd::DeleteTempMap() {
    for (auto& [window, object] : temporaryMap())
        object->m_hWnd = nullptr;
    temporaryMap().clear();
}

BOOL CWnd::Attach(HWND window) {
    if (window == nullptr || m_hWnd != nullptr || FromHandlePermanent(window) != nullptr)
        return FALSE;
    permanentMap()[window] = this;
    m_hWnd = window;
    return TRUE;
}

HWND CWnd::Detach() {
    const HWND window = m_hWnd;
    if (FromHandlePermanent(window) == this)
        permanentMap().erase(window);
    m_hWnd = nullptr;
    return window;
}
