// CMenu: a menu that is destroyed with its object, unless it was detached before.
#pragma once

#include "mfc/object.h"
#include "mfc/string.h"
#include "win32/menu.h"

class CWnd;

class CMenu : public CObject {
    DECLARE_DYNAMIC(CMenu)

public:
    CMenu() = default;
    ~CMenu() override { DestroyMenu(); }
    CMenu(const CMenu&) = delete;
    CMenu& operator=(const CMenu&) = delete;

    HMENU m_hMenu = nullptr;

    operator HMENU() const { return m_hMenu; }
    [[nodiscard]] HMENU GetSafeHmenu() const { return m_hMenu; }
    BOOL Attach(HMENU menu);
    HMENU Detach();
    BOOL DestroyMenu();
    BOOL LoadMenu(UINT id);
    BOOL CreateMenu() { return Attach(::CreateMenu()); }
    BOOL CreatePopupMenu() { return Attach(::CreatePopupMenu()); }
    static CMenu* FromHandle(HMENU menu);
    static CMenu* FromHandlePermanent(HMENU menu);
    static void DeleteTempMap();

    BOOL AppendMenu(UINT flags, UINT_PTR idOrPopup = 0, LPCSTR text = nullptr) {
        return ::AppendMenuA(m_hMenu, flags, idOrPopup, text);
    }
    BOOL InsertMenu(UINT position, UINT flags, UINT_PTR idOrPopup = 0, LPCSTR text = nullptr) {
        return ::InsertMenuA(m_hMenu, position, flags, idOrPopup, text);
    }
    BOOL ModifyMenu(UINT position, UINT flags, UINT_PTR idOrPopup = 0, LPCSTR text = nullptr) {
        return ::ModifyMenuA(m_hMenu, position, flags, idOrPopup, text);
    }
    BOOL RemoveMenu(UINT position, UINT flags) { return ::RemoveMenu(m_hMenu, position, flags); }
    BOOL DeleteMenu(UINT position, UINT flags) { return ::DeleteMenu(m_hMenu, position, flags); }
    UINT CheckMenuItem(UINT id, UINT check) { return ::CheckMenuItem(m_hMenu, id, check); }
    UINT EnableMenuItem(UINT id, UINT enable) { return static_cast<UINT>(::EnableMenuItem(m_hMenu, id, enable)); }
    [[nodiscard]] UINT GetMenuItemCount() const { return static_cast<UINT>(::GetMenuItemCount(m_hMenu)); }
    [[nodiscard]] UINT GetMenuItemID(int position) const { return ::GetMenuItemID(m_hMenu, position); }
    [[nodiscard]] UINT GetMenuState(UINT id, UINT flags) const { return ::GetMenuState(m_hMenu, id, flags); }
    [[nodiscard]] CMenu* GetSubMenu(int position) const { return FromHandle(::GetSubMenu(m_hMenu, position)); }
    int GetMenuString(UINT id, CString& text, UINT flags) const;
    BOOL TrackPopupMenu(UINT flags, int x, int y, CWnd* owner, LPCRECT rect = nullptr);
};
