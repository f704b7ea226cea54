#include "mfc/gdi_object.h"

#include "mfc/dc.h"
#include "mfc/handle_map.h"
#include "mfc/module_state.h"
#include "win32/draw.h"
#include "win32/icons.h"
#include "win32/resources.h"

#include <cstring>

IMPLEMENT_DYNAMIC(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CPen, CGdiObject)
IMPLEMENT_DYNAMIC(CBrush, CGdiObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)
IMPLEMENT_DYNAMIC(CBitmap, CGdiObject)
IMPLEMENT_DYNAMIC(CRgn, CGdiObject)

namespace {

CHandleMap<CGdiObject, HGDIOBJ>& handleMap() {
    static CHandleMap<CGdiObject, HGDIOBJ> map;
    return map;
}

/// A temporary object doesn't own its handle.
void letGo(CGdiObject& temporary) { temporary.m_hObject = nullptr; }

} // namespace

BOOL CGdiObject::Attach(HGDIOBJ object) {
    if (object == nullptr || m_hObject != nullptr)
        return FALSE;
    m_hObject = object;
    handleMap().SetPermanent(object, this, letGo);
    return TRUE;
}

HGDIOBJ CGdiObject::Detach() {
    const HGDIOBJ object = m_hObject;
    if (object != nullptr && handleMap().Permanent(object) == this)
        handleMap().Remove(object);
    m_hObject = nullptr;
    return object;
}

BOOL CGdiObject::DeleteObject() {
    const HGDIOBJ object = Detach();
    return object != nullptr && ::DeleteObject(object) != FALSE;
}

CGdiObject* CGdiObject::Permanent(HGDIOBJ handle) { return handleMap().Permanent(handle); }

template <typename T>
T* CGdiObject::TemporaryFor(HGDIOBJ handle) {
    const auto make = [](HGDIOBJ made) -> std::unique_ptr<CGdiObject> {
        auto temporary = std::make_unique<T>();
        temporary->m_hObject = made;
        return temporary;
    };
    CGdiObject* object = handleMap().FromHandle(handle, make);
    if (object != nullptr && dynamic_cast<T*>(object) == nullptr && object != Permanent(handle)) {
        // Left of an object of another kind that had this handle before.
        handleMap().ForgetTemp(handle, letGo);
        object = handleMap().FromHandle(handle, make);
    }
    return static_cast<T*>(object);
}

void CGdiObject::DeleteTempMap() { handleMap().DeleteTemp(letGo); }

CPen* CPen::FromHandle(HPEN pen) { return TemporaryFor<CPen>(pen); }
CBrush* CBrush::FromHandle(HBRUSH brush) { return TemporaryFor<CBrush>(brush); }
CFont* CFont::FromHandle(HFONT font) { return TemporaryFor<CFont>(font); }
CBitmap* CBitmap::FromHandle(HBITMAP bitmap) { return TemporaryFor<CBitmap>(bitmap); }
CRgn* CRgn::FromHandle(HRGN region) { return TemporaryFor<CRgn>(region); }

BOOL CBrush::CreatePatternBrush(CBitmap* pattern) { return Attach(::CreatePatternBrush(*pattern)); }

BOOL CBrush::CreateSysColorBrush(int index) { return Attach(::CreateSolidBrush(::GetSysColor(index))); }

BOOL CFont::CreatePointFont(int pointSize, LPCSTR faceName) {
    constexpr int tenthsPerInch = 720;
    constexpr int pixelsPerInch = 96;
    LOGFONT font{};
    font.lfHeight = -MulDiv(pointSize, pixelsPerInch, tenthsPerInch);
    font.lfCharSet = DEFAULT_CHARSET;
    std::strncpy(font.lfFaceName, faceName, sizeof font.lfFaceName - 1);
    return CreateFontIndirect(&font);
}

BOOL CBitmap::LoadBitmap(UINT id) {
    const LPCSTR name = MAKEINTRESOURCE(id);
    return Attach(::LoadBitmapA(AfxFindResourceHandle(name, RT_BITMAP), name));
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* dc, int width, int height) {
    return Attach(::CreateCompatibleBitmap(dc->m_hDC, width, height));
}

int CRgn::CombineRgn(const CRgn* first, const CRgn* second, int mode) {
    return ::CombineRgn(*this, *first, second != nullptr ? HRGN(*second) : nullptr, mode);
}
