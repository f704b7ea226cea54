#include "mfc/image_list.h"

#include "mfc/dc.h"
#include "mfc/handle_map.h"
#include "mfc/module_state.h"
#include "win32/resources.h"

IMPLEMENT_DYNAMIC(CImageList, CObject)

namespace {

CHandleMap<CImageList, HIMAGELIST>& handleMap() {
    static CHandleMap<CImageList, HIMAGELIST> map;
    return map;
}

/// A temporary object doesn't own its handle.
void letGo(CImageList& temporary) { temporary.m_hImageList = nullptr; }

} // namespace

BOOL CImageList::Attach(HIMAGELIST list) {
    if (list == nullptr || m_hImageList != nullptr)
        return FALSE;
    m_hImageList = list;
    handleMap().SetPermanent(list, this, letGo);
    return TRUE;
}

HIMAGELIST CImageList::Detach() {
    const HIMAGELIST list = m_hImageList;
    if (list != nullptr && handleMap().Permanent(list) == this)
        handleMap().Remove(list);
    m_hImageList = nullptr;
    return list;
}

BOOL CImageList::DeleteImageList() { return m_hImageList != nullptr && ::ImageList_Destroy(Detach()) != FALSE; }

BOOL CImageList::Create(UINT bitmapId, int width, int grow, COLORREF mask) {
    const LPCSTR name = MAKEINTRESOURCE(bitmapId);
    return Attach(::ImageList_LoadBitmap(AfxFindResourceHandle(name, RT_BITMAP), name, width, grow, mask));
}

CImageList* CImageList::FromHandle(HIMAGELIST list) {
    return handleMap().FromHandle(list, [](HIMAGELIST made) {
        auto temporary = std::make_unique<CImageList>();
        temporary->m_hImageList = made;
        return temporary;
    });
}

void CImageList::DeleteTempMap() { handleMap().DeleteTemp(letGo); }

int CImageList::Add(CBitmap* image, CBitmap* mask) {
    return ::ImageList_Add(m_hImageList, *image, mask != nullptr ? HBITMAP(*mask) : nullptr);
}

int CImageList::Add(CBitmap* image, COLORREF mask) { return ::ImageList_AddMasked(m_hImageList, *image, mask); }

BOOL CImageList::Draw(CDC* dc, int index, POINT point, UINT style) {
    return ::ImageList_Draw(m_hImageList, index, *dc, point.x, point.y, style);
}
