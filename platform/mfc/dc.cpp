#include "mfc/dc.h"

#include "mfc/handle_map.h"
#include "mfc/wnd.h"
#include "win32/icons.h"

#include <cstring>

IMPLEMENT_DYNAMIC(CDC, CObject)
IMPLEMENT_DYNAMIC(CPaintDC, CDC)
IMPLEMENT_DYNAMIC(CClientDC, CDC)
IMPLEMENT_DYNAMIC(CWindowDC, CDC)

namespace {

CHandleMap<CDC, HDC>& handleMap() {
    static CHandleMap<CDC, HDC> map;
    return map;
}

HWND handleOf(CWnd* window) { return window != nullptr ? window->m_hWnd : nullptr; }

/// A temporary object doesn't own its handle.
void letGo(CDC& temporary) { temporary.m_hDC = nullptr; }

} // namespace

CDC::~CDC() {
    if (m_hDC != nullptr)
        ::DeleteDC(Detach());
}

BOOL CDC::Attach(HDC dc) {
    if (dc == nullptr || m_hDC != nullptr)
        return FALSE;
    m_hDC = dc;
    handleMap().SetPermanent(dc, this, letGo);
    return TRUE;
}

HDC CDC::Detach() {
    const HDC dc = m_hDC;
    if (dc != nullptr && handleMap().Permanent(dc) == this)
        handleMap().Remove(dc);
    m_hDC = nullptr;
    return dc;
}

BOOL CDC::DeleteDC() { return m_hDC != nullptr && ::DeleteDC(Detach()) != FALSE; }

CDC* CDC::FromHandle(HDC dc) {
    return handleMap().FromHandle(dc, [](HDC made) {
        auto temporary = std::make_unique<CDC>();
        temporary->m_hDC = made;
        return temporary;
    });
}

void CDC::DeleteTempMap() { handleMap().DeleteTemp(letGo); }

CWnd* CDC::GetWindow() const { return CWnd::FromHandle(::WindowFromDC(m_hDC)); }

CPen* CDC::SelectObject(CPen* pen) {
    return CPen::FromHandle(static_cast<HPEN>(::SelectObject(m_hDC, pen->GetSafeHandle())));
}
CBrush* CDC::SelectObject(CBrush* brush) {
    return CBrush::FromHandle(static_cast<HBRUSH>(::SelectObject(m_hDC, brush->GetSafeHandle())));
}
CFont* CDC::SelectObject(CFont* font) {
    return CFont::FromHandle(static_cast<HFONT>(::SelectObject(m_hDC, font->GetSafeHandle())));
}
CBitmap* CDC::SelectObject(CBitmap* bitmap) {
    return CBitmap::FromHandle(static_cast<HBITMAP>(::SelectObject(m_hDC, bitmap->GetSafeHandle())));
}
int CDC::SelectObject(CRgn* region) { return ::SelectClipRgn(m_hDC, *region); }

CGdiObject* CDC::SelectStockObject(int number) {
    const HGDIOBJ stock = ::GetStockObject(number);
    const DWORD kind = ::GetObjectType(stock);
    const HGDIOBJ former = ::SelectObject(m_hDC, stock);
    if (kind == OBJ_PEN)
        return CPen::FromHandle(static_cast<HPEN>(former));
    if (kind == OBJ_FONT)
        return CFont::FromHandle(static_cast<HFONT>(former));
    return CBrush::FromHandle(static_cast<HBRUSH>(former));
}

CPoint CDC::SetViewportOrg(int x, int y) {
    CPoint former;
    ::SetViewportOrgEx(m_hDC, x, y, &former);
    return former;
}

int CDC::SelectClipRgn(CRgn* region) { return ::SelectClipRgn(m_hDC, region != nullptr ? HRGN(*region) : nullptr); }

CPoint CDC::MoveTo(int x, int y) {
    CPoint former;
    ::MoveToEx(m_hDC, x, y, &former);
    return former;
}

void CDC::FillSolidRect(LPCRECT rect, COLORREF color) {
    ::SetBkColor(m_hDC, color);
    ::ExtTextOutA(m_hDC, 0, 0, ETO_OPAQUE, rect, nullptr, 0, nullptr);
}

void CDC::FillSolidRect(int x, int y, int width, int height, COLORREF color) {
    const CRect rect(x, y, x + width, y + height);
    FillSolidRect(&rect, color);
}

void CDC::Draw3dRect(LPCRECT rect, COLORREF topLeft, COLORREF bottomRight) {
    const int width = rect->right - rect->left;
    const int height = rect->bottom - rect->top;
    FillSolidRect(rect->left, rect->top, width - 1, 1, topLeft);
    FillSolidRect(rect->left, rect->top, 1, height - 1, topLeft);
    FillSolidRect(rect->right - 1, rect->top, 1, height, bottomRight);
    FillSolidRect(rect->left, rect->bottom - 1, width, 1, bottomRight);
}

BOOL CDC::DrawIcon(int x, int y, HICON icon) { return ::DrawIcon(m_hDC, x, y, icon); }

BOOL CDC::DrawState(POINT point, SIZE size, HICON icon, UINT flags) {
    return ::DrawStateA(m_hDC, nullptr, nullptr, reinterpret_cast<LPARAM>(icon), 0, point.x, point.y, size.cx, size.cy,
                        flags | DST_ICON);
}

BOOL CDC::DrawState(POINT point, SIZE size, LPCSTR text, UINT flags, BOOL prefixText, int length) {
    const UINT kind = prefixText != FALSE ? DST_PREFIXTEXT : DST_TEXT;
    return ::DrawStateA(m_hDC, nullptr, nullptr, reinterpret_cast<LPARAM>(text), static_cast<WPARAM>(length), point.x,
                        point.y, size.cx, size.cy, flags | kind);
}

CSize CDC::GetTextExtent(LPCSTR text, int count) const {
    CSize extent;
    ::GetTextExtentPoint32A(m_hDC, text, count, &extent);
    return extent;
}

CPaintDC::CPaintDC(CWnd* window) : m_hWnd(handleOf(window)) { Attach(::BeginPaint(m_hWnd, &m_ps)); }

CPaintDC::~CPaintDC() {
    Detach();
    ::EndPaint(m_hWnd, &m_ps);
}

CClientDC::CClientDC(CWnd* window) : m_hWnd(handleOf(window)) { Attach(::GetDC(m_hWnd)); }
CClientDC::~CClientDC() { ::ReleaseDC(m_hWnd, Detach()); }

CWindowDC::CWindowDC(CWnd* window) : m_hWnd(handleOf(window)) { Attach(::GetWindowDC(m_hWnd)); }
CWindowDC::~CWindowDC() { ::ReleaseDC(m_hWnd, Detach()); }
