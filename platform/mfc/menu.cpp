#include "mfc/menu.h"

#include "mfc/handle_map.h"
#include "mfc/module_state.h"
#include "mfc/wnd.h"
#include "win32/resources.h"

IMPLEMENT_DYNAMIC(CMenu, CObject)

namespace {

CHandleMap<CMenu, HMENU>& handleMap() {
    static CHandleMap<CMenu, HMENU> map;
    return map;
}

/// A temporary object doesn't own its handle.
void letGo(CMenu& temporary) { temporary.m_hMenu = nullptr; }

} // namespace

BOOL CMenu::Attach(HMENU menu) {
    if (menu == nullptr || m_hMenu != nullptr)
        return FALSE;
    m_hMenu = menu;
    handleMap().SetPermanent(menu, this, letGo);
    return TRUE;
}

HMENU CMenu::Detach() {
    const HMENU menu = m_hMenu;
    if (menu != nullptr && handleMap().Permanent(menu) == this)
        handleMap().Remove(menu);
    m_hMenu = nullptr;
    return menu;
}

BOOL CMenu::DestroyMenu() { return m_hMenu != nullptr && ::DestroyMenu(Detach()) != FALSE; }

BOOL CMenu::LoadMenu(UINT id) {
    const LPCSTR name = MAKEINTRESOURCE(id);
    return Attach(::LoadMenuA(AfxFindResourceHandle(name, RT_MENU), name));
}

CMenu* CMenu::FromHandle(HMENU menu) {
    return handleMap().FromHandle(menu, [](HMENU made) {
        auto temporary = std::make_unique<CMenu>();
        temporary->m_hMenu = made;
        return temporary;
    });
}

CMenu* CMenu::FromHandlePermanent(HMENU menu) { return handleMap().Permanent(menu); }

void CMenu::DeleteTempMap() { handleMap().DeleteTemp(letGo); }

int CMenu::GetMenuString(UINT id, CString& text, UINT flags) const {
    const int length = ::GetMenuStringA(m_hMenu, id, nullptr, 0, flags);
    text.Empty();
    if (length > 0) {
        ::GetMenuStringA(m_hMenu, id, text.GetBuffer(length + 1), length + 1, flags);
        text.ReleaseBuffer();
    }
    return text.GetLength();
}

BOOL CMenu::TrackPopupMenu(UINT flags, int x, int y, CWnd* owner, LPCRECT rect) {
    return ::TrackPopupMenu(m_hMenu, flags, x, y, 0, owner != nullptr ? owner->m_hWnd : nullptr, rect);
}
