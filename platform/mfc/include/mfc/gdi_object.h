// Pens, brushes, fonts, bitmaps and regions as objects that own their handle: it is deleted with the object, unless it
// was detached before. FromHandle answers an object that doesn't own its handle.
#pragma once

#include "mfc/geometry.h"
#include "mfc/object.h"
#include "mfc/string.h"
#include "win32/fonts.h"
#include "win32/gdi.h"

class CBitmap;
class CDC;

class CGdiObject : public CObject {
    DECLARE_DYNAMIC(CGdiObject)

public:
    CGdiObject() = default;
    ~CGdiObject() override { DeleteObject(); }
    CGdiObject(const CGdiObject&) = delete;
    CGdiObject& operator=(const CGdiObject&) = delete;

    HGDIOBJ m_hObject = nullptr;

    [[nodiscard]] HGDIOBJ GetSafeHandle() const { return m_hObject; }
    /// FALSE for null, or when something is attached already.
    BOOL Attach(HGDIOBJ object);
    HGDIOBJ Detach();
    BOOL DeleteObject();
    int GetObject(int size, LPVOID buffer) const { return ::GetObjectA(m_hObject, size, buffer); }
    BOOL CreateStockObject(int number) { return Attach(::GetStockObject(number)); }
    static void DeleteTempMap();

protected:
    /// A temporary object of T for the handle.
    template <typename T>
    static T* TemporaryFor(HGDIOBJ handle);
    static CGdiObject* Permanent(HGDIOBJ handle);
};

class CPen : public CGdiObject {
    DECLARE_DYNAMIC(CPen)

public:
    CPen() = default;
    CPen(int style, int width, COLORREF color) { CreatePen(style, width, color); }
    operator HPEN() const { return static_cast<HPEN>(m_hObject); }
    BOOL CreatePen(int style, int width, COLORREF color) { return Attach(::CreatePen(style, width, color)); }
    static CPen* FromHandle(HPEN pen);
};

class CBrush : public CGdiObject {
    DECLARE_DYNAMIC(CBrush)

public:
    CBrush() = default;
    explicit CBrush(COLORREF color) { CreateSolidBrush(color); }
    explicit CBrush(CBitmap* pattern) { CreatePatternBrush(pattern); }
    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }
    BOOL CreateSolidBrush(COLORREF color) { return Attach(::CreateSolidBrush(color)); }
    BOOL CreatePatternBrush(CBitmap* pattern);
    BOOL CreateSysColorBrush(int index);
    static CBrush* FromHandle(HBRUSH brush);
};

class CFont : public CGdiObject {
    DECLARE_DYNAMIC(CFont)

public:
    operator HFONT() const { return static_cast<HFONT>(m_hObject); }
    BOOL CreateFontIndirect(const LOGFONT* font) { return Attach(::CreateFontIndirectA(font)); }
    /// Tenths of a point at the screen's resolution.
    BOOL CreatePointFont(int pointSize, LPCSTR faceName);
    int GetLogFont(LOGFONT* font) const { return GetObject(sizeof *font, font); }
    static CFont* FromHandle(HFONT font);
};

class CBitmap : public CGdiObject {
    DECLARE_DYNAMIC(CBitmap)

public:
    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }
    BOOL LoadBitmap(UINT id);
    BOOL CreateBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits) {
        return Attach(::CreateBitmap(width, height, planes, bitsPerPixel, bits));
    }
    BOOL CreateCompatibleBitmap(CDC* dc, int width, int height);
    int GetBitmap(BITMAP* bitmap) const { return GetObject(sizeof *bitmap, bitmap); }
    static CBitmap* FromHandle(HBITMAP bitmap);
};

class CRgn : public CGdiObject {
    DECLARE_DYNAMIC(CRgn)

public:
    operator HRGN() const { return static_cast<HRGN>(m_hObject); }
    BOOL CreateRectRgn(int left, int top, int right, int bottom) {
        return Attach(::CreateRectRgn(left, top, right, bottom));
    }
    BOOL CreateRectRgnIndirect(LPCRECT rect) { return Attach(::CreateRectRgnIndirect(rect)); }
    int CombineRgn(const CRgn* first, const CRgn* second, int mode);
    [[nodiscard]] BOOL PtInRegion(POINT point) const { return ::PtInRegion(*this, point.x, point.y); }
    int GetRgnBox(LPRECT rect) const { return ::GetRgnBox(*this, rect); }
    static CRgn* FromHandle(HRGN region);
};
