// How windows come to their objects, and how both end.
#include "creation_scope.h"

#include "mfc/module_state.h"
#include "win32/dialog.h"
#include "win32/gdi.h"
#include "win32/icons.h"
#include "win32/input.h"
#include "win32/queue.h"

#include <map>
#include <string>
#include <tuple>

AfxCreationScope* AfxCreationScope::current = nullptr;

AfxCreationScope::AfxCreationScope(CWnd* made)
    : object(made), former(current),
      hook(SetWindowsHookExA(WH_CBT, &CWnd::CreationHook, nullptr, GetCurrentThreadId())) {
    current = this;
}

AfxCreationScope::~AfxCreationScope() {
    UnhookWindowsHookEx(hook);
    current = former;
}

LRESULT CALLBACK CWnd::CreationHook(int code, WPARAM wParam, LPARAM lParam) {
    AfxCreationScope* scope = AfxCreationScope::current;
    if (code == HCBT_CREATEWND && scope != nullptr && scope->object != nullptr) {
        CWnd* object = scope->object;
        scope->object = nullptr; // children that are made meanwhile aren't this object's
        object->SubclassWindow(reinterpret_cast<HWND>(wParam));
    }
    return CallNextHookEx(scope != nullptr ? scope->hook : nullptr, code, wParam, lParam);
}

BOOL CWnd::PreCreateWindow(CREATESTRUCT& create) {
    if (create.lpszClass == nullptr)
        create.lpszClass = AfxRegisterWndClass(CS_DBLCLKS, LoadCursorA(nullptr, IDC_ARROW));
    return TRUE;
}

BOOL CWnd::CreateEx(DWORD exStyle, LPCSTR className, LPCSTR name, DWORD style, int x, int y, int width, int height,
                    HWND parent, HMENU menuOrId, LPVOID parameter) {
    CREATESTRUCT create{};
    create.dwExStyle = exStyle;
    create.lpszClass = className;
    create.lpszName = name;
    create.style = static_cast<LONG>(style);
    create.x = x;
    create.y = y;
    create.cx = width;
    create.cy = height;
    create.hwndParent = parent;
    create.hMenu = menuOrId;
    create.hInstance = AfxGetInstanceHandle();
    create.lpCreateParams = parameter;
    if (PreCreateWindow(create) == FALSE) {
        PostNcDestroy();
        return FALSE;
    }
    HWND window = nullptr;
    bool attached = false;
    {
        AfxCreationScope scope(this);
        window = CreateWindowExA(create.dwExStyle, create.lpszClass, create.lpszName, static_cast<DWORD>(create.style),
                                 create.x, create.y, create.cx, create.cy, create.hwndParent, create.hMenu,
                                 create.hInstance, create.lpCreateParams);
        attached = scope.attached();
    }
    if (window == nullptr && !attached)
        PostNcDestroy();
    return window != nullptr;
}

BOOL CWnd::CreateEx(DWORD exStyle, LPCSTR className, LPCSTR name, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                    LPVOID parameter) {
    return CreateEx(exStyle, className, name, style, rect.left, rect.top, rect.right - rect.left,
                    rect.bottom - rect.top, parent != nullptr ? parent->m_hWnd : nullptr,
                    reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), parameter);
}

BOOL CWnd::Create(LPCSTR className, LPCSTR name, DWORD style, const RECT& rect, CWnd* parent, UINT id, void*) {
    return CreateEx(0, className, name, style | WS_CHILD, rect, parent, id);
}

BOOL CWnd::SubclassWindow(HWND window) {
    if (Attach(window) == FALSE)
        return FALSE;
    PreSubclassWindow();
    const auto former =
        reinterpret_cast<WNDPROC>(SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&AfxWndProc)));
    WNDPROC* super = GetSuperWndProcAddr();
    if (*super == nullptr && former != &AfxWndProc)
        *super = former;
    m_bSubclassed = true;
    return TRUE;
}

BOOL CWnd::SubclassDlgItem(UINT id, CWnd* parent) {
    const HWND control = ::GetDlgItem(parent->m_hWnd, static_cast<int>(id));
    return control != nullptr && SubclassWindow(control) != FALSE;
}

HWND CWnd::UnsubclassWindow() {
    if (m_pfnSuper != nullptr)
        SetWindowLongPtrA(m_hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_pfnSuper));
    m_pfnSuper = nullptr;
    m_bSubclassed = false;
    return Detach();
}

BOOL CWnd::DestroyWindow() {
    if (m_hWnd == nullptr)
        return FALSE;
    const bool permanent = FromHandlePermanent(m_hWnd) == this;
    const HWND window = m_hWnd;
    const BOOL destroyed = ::DestroyWindow(window);
    // An object without our procedure hears nothing of the end. A heap object may be gone by now: ask the map.
    if (permanent && FromHandlePermanent(window) == this && destroyed != FALSE)
        Detach();
    return destroyed;
}

CWnd::~CWnd() {
    const bool special = this == &wndTop || this == &wndBottom || this == &wndTopMost || this == &wndNoTopMost;
    if (!special && m_hWnd != nullptr && FromHandlePermanent(m_hWnd) == this) {
        // A window that outlives its object must not call into it.
        const HWND window = m_hWnd;
        if (m_bSubclassed)
            ::DestroyWindow(window);
        if (FromHandlePermanent(window) == this)
            Detach();
    }
}

void CWnd::OnNcDestroy() {
    const HWND window = m_hWnd;
    Default();
    const WNDPROC super = m_pfnSuper;
    if (super != nullptr && IsWindow(window) != FALSE)
        SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(super));
    m_pfnSuper = nullptr;
    m_bSubclassed = false;
    Detach();
    PostNcDestroy(); // may delete this object
}

LPCSTR AfxRegisterWndClass(UINT style, HCURSOR cursor, HBRUSH background, HICON icon) {
    using Key = std::tuple<HINSTANCE, UINT, HCURSOR, HBRUSH, HICON>;
    static std::map<Key, std::string> names;
    const HINSTANCE instance = AfxGetInstanceHandle();
    std::string& name = names[Key(instance, style, cursor, background, icon)];
    if (name.empty())
        name = "Afx:" + std::to_string(names.size());
    WNDCLASSA registered{};
    if (GetClassInfoA(instance, name.c_str(), &registered) != FALSE)
        return name.c_str();
    registered = {};
    registered.style = style;
    registered.lpfnWndProc = &DefWindowProcA;
    registered.hInstance = instance;
    registered.hCursor = cursor;
    registered.hbrBackground = background;
    registered.hIcon = icon;
    registered.lpszClassName = name.c_str();
    return RegisterClassA(&registered) != 0 ? name.c_str() : nullptr;
}
