#include "mfc/pointer_tracking.h"

#include "mfc/wnd.h"
#include "win32/gdi.h"
#include "win32/input.h"
#include "win32/queue.h"

#include <algorithm>

bool AfxTrackPointer(HWND window, const std::function<void(CPoint)>& follow) {
    const CWnd* const object = CWnd::FromHandlePermanent(window);
    ::SetCapture(window);
    bool released = false;
    while (!released && ::GetCapture() == window) {
        MSG message{};
        if (::GetMessageA(&message, nullptr, 0, 0) <= 0) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        const bool key = message.message == WM_KEYDOWN || message.message == WM_KEYUP;
        if (message.message == WM_RBUTTONDOWN || (key && message.wParam == VK_ESCAPE))
            break;
        released = message.message == WM_LBUTTONUP;
        if (released || key || message.message == WM_MOUSEMOVE)
            follow(message.pt);
        else if (message.message != WM_CHAR)
            ::DispatchMessageA(&message);
        if (CWnd::FromHandlePermanent(window) != object)
            return false;
    }
    if (::GetCapture() == window)
        ::ReleaseCapture();
    return released;
}

AfxScreenOutline::AfxScreenOutline() {
    ::LockWindowUpdate(::GetDesktopWindow());
    m_dc.Attach(::GetDCEx(nullptr, nullptr, DCX_CACHE | DCX_LOCKWINDOWUPDATE));
}

AfxScreenOutline::~AfxScreenOutline() {
    Hide();
    ::ReleaseDC(nullptr, m_dc.Detach());
    ::LockWindowUpdate(nullptr);
}

void AfxScreenOutline::Show(const CRect& rect, int width) {
    Hide();
    m_rect = rect;
    m_width = width;
    Invert();
    m_shown = true;
}

void AfxScreenOutline::Hide() {
    if (m_shown)
        Invert();
    m_shown = false;
}

void AfxScreenOutline::Invert() {
    const int width = std::min(m_width, m_rect.Width());
    const int inner = std::max(m_rect.Height() - 2 * m_width, 0);
    m_dc.PatBlt(m_rect.left, m_rect.top, m_rect.Width(), m_width, DSTINVERT);
    m_dc.PatBlt(m_rect.left, m_rect.top + m_width, width, inner, DSTINVERT);
    if (m_rect.Width() > m_width)
        m_dc.PatBlt(m_rect.right - m_width, m_rect.top + m_width, m_width, inner, DSTINVERT);
    m_dc.PatBlt(m_rect.left, m_rect.bottom - m_width, m_rect.Width(), m_width, DSTINVERT);
}
