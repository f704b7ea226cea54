// Bars around the middle of a window.
#include "mfc/wnd.h"

#include "win32/dialog.h"

#include <vector>

void CWnd::RepositionBars(UINT first, UINT last, UINT leftOver, UINT flag, LPRECT result, BOOL stretch) {
    AFX_SIZEPARENTPARAMS layout;
    layout.bStretch = stretch;
    GetClientRect(&layout.rect);
    if (flag != reposQuery)
        layout.hDWP = ::BeginDeferWindowPos(8);
    HWND middle = nullptr;
    std::vector<HWND> bars;
    for (HWND child = ::GetTopWindow(m_hWnd); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        const auto id = static_cast<UINT>(::GetDlgCtrlID(child));
        if (id == leftOver)
            middle = child;
        else if (id >= first && id <= last)
            bars.push_back(child);
    }
    for (const HWND bar : bars)
        ::SendMessageA(bar, WM_SIZEPARENT, 0, reinterpret_cast<LPARAM>(&layout));
    if (result != nullptr)
        *result = layout.rect;
    if (flag == reposQuery)
        return;
    const RECT& rest = layout.rect;
    if (middle != nullptr && layout.hDWP != nullptr)
        layout.hDWP = ::DeferWindowPos(layout.hDWP, middle, nullptr, rest.left, rest.top, rest.right - rest.left,
                                       rest.bottom - rest.top, SWP_NOACTIVATE | SWP_NOZORDER);
    if (layout.hDWP != nullptr)
        ::EndDeferWindowPos(layout.hDWP);
}
