// Device contexts. A CDC owns the context that CreateCompatibleDC made for it; CPaintDC, CClientDC and CWindowDC give
// theirs back when they end. Select the former object back before an object that is selected ends.
#pragma once

#include "mfc/gdi_object.h"
#include "win32/draw.h"
#include "win32/paint.h"

class CWnd;

class CDC : public CObject {
    DECLARE_DYNAMIC(CDC)

public:
    CDC() = default;
    ~CDC() override;
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;

    HDC m_hDC = nullptr;

    operator HDC() const { return m_hDC; }
    [[nodiscard]] HDC GetSafeHdc() const { return m_hDC; }
    BOOL Attach(HDC dc);
    HDC Detach();
    BOOL CreateCompatibleDC(CDC* dc) { return Attach(::CreateCompatibleDC(dc != nullptr ? dc->m_hDC : nullptr)); }
    BOOL DeleteDC();
    static CDC* FromHandle(HDC dc);
    static void DeleteTempMap();

    int SaveDC() { return ::SaveDC(m_hDC); }
    BOOL RestoreDC(int level) { return ::RestoreDC(m_hDC, level); }
    [[nodiscard]] int GetDeviceCaps(int index) const { return ::GetDeviceCaps(m_hDC, index); }
    [[nodiscard]] CWnd* GetWindow() const;

    CPen* SelectObject(CPen* pen);
    CBrush* SelectObject(CBrush* brush);
    CFont* SelectObject(CFont* font);
    CBitmap* SelectObject(CBitmap* bitmap);
    int SelectObject(CRgn* region);
    CGdiObject* SelectStockObject(int number);

    COLORREF SetBkColor(COLORREF color) { return ::SetBkColor(m_hDC, color); }
    [[nodiscard]] COLORREF GetBkColor() const { return ::GetBkColor(m_hDC); }
    int SetBkMode(int mode) { return ::SetBkMode(m_hDC, mode); }
    COLORREF SetTextColor(COLORREF color) { return ::SetTextColor(m_hDC, color); }
    [[nodiscard]] COLORREF GetTextColor() const { return ::GetTextColor(m_hDC); }
    int SetROP2(int mode) { return ::SetROP2(m_hDC, mode); }
    int SetStretchBltMode(int mode) { return ::SetStretchBltMode(m_hDC, mode); }
    CPoint SetViewportOrg(int x, int y);

    int GetClipBox(LPRECT rect) const { return ::GetClipBox(m_hDC, rect); }
    int SelectClipRgn(CRgn* region);
    int IntersectClipRect(LPCRECT rect) {
        return ::IntersectClipRect(m_hDC, rect->left, rect->top, rect->right, rect->bottom);
    }
    int ExcludeClipRect(LPCRECT rect) {
        return ::ExcludeClipRect(m_hDC, rect->left, rect->top, rect->right, rect->bottom);
    }
    [[nodiscard]] BOOL RectVisible(LPCRECT rect) const { return ::RectVisible(m_hDC, rect); }

    CPoint MoveTo(int x, int y);
    CPoint MoveTo(POINT point) { return MoveTo(point.x, point.y); }
    BOOL LineTo(int x, int y) { return ::LineTo(m_hDC, x, y); }
    BOOL LineTo(POINT point) { return LineTo(point.x, point.y); }
    BOOL Polyline(const POINT* points, int count) { return ::Polyline(m_hDC, points, count); }
    BOOL Polygon(const POINT* points, int count) { return ::Polygon(m_hDC, points, count); }
    BOOL Rectangle(LPCRECT rect) { return ::Rectangle(m_hDC, rect->left, rect->top, rect->right, rect->bottom); }
    BOOL Ellipse(LPCRECT rect) { return ::Ellipse(m_hDC, rect->left, rect->top, rect->right, rect->bottom); }
    BOOL Arc(LPCRECT rect, POINT start, POINT end) {
        return ::Arc(m_hDC, rect->left, rect->top, rect->right, rect->bottom, start.x, start.y, end.x, end.y);
    }
    void FillRect(LPCRECT rect, CBrush* brush) { ::FillRect(m_hDC, rect, *brush); }
    void FrameRect(LPCRECT rect, CBrush* brush) { ::FrameRect(m_hDC, rect, *brush); }
    void InvertRect(LPCRECT rect) { ::InvertRect(m_hDC, rect); }
    void FillSolidRect(LPCRECT rect, COLORREF color);
    void FillSolidRect(int x, int y, int width, int height, COLORREF color);
    /// A frame one pixel wide: left and top in one colour, right and bottom in the other.
    void Draw3dRect(LPCRECT rect, COLORREF topLeft, COLORREF bottomRight);
    void DrawFocusRect(LPCRECT rect) { ::DrawFocusRect(m_hDC, rect); }
    BOOL DrawEdge(LPRECT rect, UINT edge, UINT flags) { return ::DrawEdge(m_hDC, rect, edge, flags); }
    BOOL DrawFrameControl(LPRECT rect, UINT kind, UINT state) { return ::DrawFrameControl(m_hDC, rect, kind, state); }
    BOOL DrawIcon(int x, int y, HICON icon);
    BOOL DrawIcon(POINT point, HICON icon) { return DrawIcon(point.x, point.y, icon); }
    /// `flags`: DSS_ bits; an icon, or text with prefix characters.
    BOOL DrawState(POINT point, SIZE size, HICON icon, UINT flags);
    BOOL DrawState(POINT point, SIZE size, LPCSTR text, UINT flags, BOOL prefixText = TRUE, int length = 0);

    BOOL PatBlt(int x, int y, int width, int height, DWORD rop) { return ::PatBlt(m_hDC, x, y, width, height, rop); }
    BOOL BitBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, DWORD rop) {
        return ::BitBlt(m_hDC, x, y, width, height, *source, sourceX, sourceY, rop);
    }
    BOOL StretchBlt(int x, int y, int width, int height, CDC* source, int sourceX, int sourceY, int sourceWidth,
                    int sourceHeight, DWORD rop) {
        return ::StretchBlt(m_hDC, x, y, width, height, *source, sourceX, sourceY, sourceWidth, sourceHeight, rop);
    }
    COLORREF SetPixel(int x, int y, COLORREF color) { return ::SetPixel(m_hDC, x, y, color); }
    [[nodiscard]] COLORREF GetPixel(int x, int y) const { return ::GetPixel(m_hDC, x, y); }

    BOOL TextOut(int x, int y, const CString& text) { return ::TextOutA(m_hDC, x, y, text, text.GetLength()); }
    BOOL ExtTextOut(int x, int y, UINT options, LPCRECT rect, LPCSTR text, UINT count, const int* widths) {
        return ::ExtTextOutA(m_hDC, x, y, options, rect, text, count, widths);
    }
    int DrawText(LPCSTR text, int count, LPRECT rect, UINT format) {
        return ::DrawTextA(m_hDC, text, count, rect, format);
    }
    int DrawText(const CString& text, LPRECT rect, UINT format) {
        return DrawText(text, text.GetLength(), rect, format);
    }
    [[nodiscard]] CSize GetTextExtent(LPCSTR text, int count) const;
    [[nodiscard]] CSize GetTextExtent(const CString& text) const { return GetTextExtent(text, text.GetLength()); }
    BOOL GetTextMetrics(TEXTMETRIC* metrics) const { return ::GetTextMetricsA(m_hDC, metrics); }
};

/// The client area between BeginPaint and EndPaint.
class CPaintDC : public CDC {
    DECLARE_DYNAMIC(CPaintDC)

public:
    explicit CPaintDC(CWnd* window);
    ~CPaintDC() override;

    PAINTSTRUCT m_ps{};

private:
    HWND m_hWnd;
};

/// The client area at any time; of a null window, the screen.
class CClientDC : public CDC {
    DECLARE_DYNAMIC(CClientDC)

public:
    explicit CClientDC(CWnd* window);
    ~CClientDC() override;

private:
    HWND m_hWnd;
};

/// The whole window.
class CWindowDC : public CDC {
    DECLARE_DYNAMIC(CWindowDC)

public:
    explicit CWindowDC(CWnd* window);
    ~CWindowDC() override;

private:
    HWND m_hWnd;
};
