// CImageList: an image list that is destroyed with its object, unless it was detached before.
#pragma once

#include "mfc/object.h"
#include "win32/imagelist.h"

class CBitmap;
class CDC;

class CImageList : public CObject {
    DECLARE_DYNAMIC(CImageList)

public:
    CImageList() = default;
    ~CImageList() override { DeleteImageList(); }
    CImageList(const CImageList&) = delete;
    CImageList& operator=(const CImageList&) = delete;

    HIMAGELIST m_hImageList = nullptr;

    operator HIMAGELIST() const { return m_hImageList; }
    [[nodiscard]] HIMAGELIST GetSafeHandle() const { return m_hImageList; }
    BOOL Attach(HIMAGELIST list);
    HIMAGELIST Detach();
    BOOL Create(int width, int height, UINT flags, int initial, int grow) {
        return Attach(::ImageList_Create(width, height, flags, initial, grow));
    }
    BOOL Create(UINT bitmapId, int width, int grow, COLORREF mask);
    BOOL DeleteImageList();
    static CImageList* FromHandle(HIMAGELIST list);
    static void DeleteTempMap();

    [[nodiscard]] int GetImageCount() const { return ::ImageList_GetImageCount(m_hImageList); }
    COLORREF SetBkColor(COLORREF color) { return ::ImageList_SetBkColor(m_hImageList, color); }
    [[nodiscard]] COLORREF GetBkColor() const { return ::ImageList_GetBkColor(m_hImageList); }
    int Add(CBitmap* image, CBitmap* mask);
    int Add(CBitmap* image, COLORREF mask);
    int Add(HICON icon) { return ::ImageList_AddIcon(m_hImageList, icon); }
    int Replace(int index, HICON icon) { return ::ImageList_ReplaceIcon(m_hImageList, index, icon); }
    BOOL Remove(int index) { return ::ImageList_Remove(m_hImageList, index); }
    BOOL Draw(CDC* dc, int index, POINT point, UINT style);
    BOOL GetImageInfo(int index, IMAGEINFO* info) const { return ::ImageList_GetImageInfo(m_hImageList, index, info); }
    HICON ExtractIcon(int index) { return ::ImageList_ExtractIcon(nullptr, m_hImageList, index); }
};
