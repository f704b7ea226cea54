#include "previews/dwg_thumbnail.h"

#include "previews/preview_picture.h"

#include <climits>
#include <cstdlib>
#include <cstring>

namespace {

/// Place of the number that tells where the preview begins.
constexpr DWORD kPlaceOfPreview = 13;
/// The preview begins with a mark of 16 bytes, its size in 4, and the number of its records.
constexpr int kCountAt = 20;
constexpr int kHeadSize = kCountAt + 1;

/// A record: its type, where its data begin in the file, their size.
constexpr int kRecordSize = 9;
constexpr BYTE kBitmapRecord = 2;

DWORD NumberAt(const BYTE* pBytes) {
    return pBytes[0] | pBytes[1] << 8 | pBytes[2] << 16 | static_cast<DWORD>(pBytes[3]) << 24;
}

bool ReadAll(CFile& file, void* pBuffer, UINT size) { return file.Read(pBuffer, size) == size; }

CString Joined(const CString& strFolder, const CString& strName) {
    const bool closed = !strFolder.IsEmpty() && strFolder[strFolder.GetLength() - 1] == '\\';
    return closed ? strFolder + strName : strFolder + "\\" + strName;
}

void FillBand(CDC& dc, CBrush& brush, int left, int top, int right, int bottom) {
    if (right - left >= 1 && bottom - top >= 1)
        dc.FillRect(CRect(left, top, right, bottom), &brush);
}

} // namespace

CDwgThumbnail::~CDwgThumbnail() { FreePicture(); }

void CDwgThumbnail::FreePicture() {
    if (dib)
        ::GlobalFree(dib);
    if (bitmap)
        ::DeleteObject(bitmap);
    dib = nullptr;
    bitmap = nullptr;
}

CString CDwgThumbnail::FilePath() const { return Joined(*folder, name); }

void CDwgThumbnail::LoadPreview() {
    if (loaded == 1 || !folder)
        return;
    CFile file;
    CFileException problem;
    if (!file.Open(FilePath(), CFile::modeRead | CFile::typeBinary, &problem))
        return;
    try {
        if (!ReadPreview(file))
            return;
    } catch (CFileException* pProblem) {
        pProblem->Delete();
    }
    loaded = 1;
}

bool CDwgThumbnail::ReadPreview(CFile& file) {
    BYTE place[4];
    file.Seek(kPlaceOfPreview, CFile::begin);
    if (!ReadAll(file, place, sizeof place))
        return false;
    BYTE head[kHeadSize];
    file.Seek(NumberAt(place), CFile::begin);
    if (!ReadAll(file, head, sizeof head))
        return false;
    // A signed byte: what looks like more than 127 is none.
    const int count = head[kCountAt] <= SCHAR_MAX ? head[kCountAt] : 0;
    for (int i = 0; i < count; ++i) {
        BYTE record[kRecordSize];
        if (!ReadAll(file, record, sizeof record))
            return false;
        if (record[0] != kBitmapRecord)
            continue;
        const LONGLONG next = file.GetPosition();
        if (!ReadPicture(file, NumberAt(record + 1), NumberAt(record + 5)))
            return false;
        file.Seek(next, CFile::begin);
    }
    return true;
}

bool CDwgThumbnail::ReadPicture(CFile& file, DWORD offset, DWORD size) {
    if (size > file.GetLength() - offset)
        return false;
    HGLOBAL hBlock = size <= kMostPreviewBytes ? ::GlobalAlloc(GMEM_FIXED, size) : nullptr;
    if (!hBlock)
        return true;
    file.Seek(offset, CFile::begin);
    UINT read = 0;
    try {
        read = file.Read(hBlock, size);
    } catch (...) {
        ::GlobalFree(hBlock);
        throw;
    }
    if (read == size)
        MakeBitmap(hBlock, size);
    else
        ::GlobalFree(hBlock);
    return read == size;
}

void CDwgThumbnail::MakeBitmap(HGLOBAL hBlock, DWORD size) {
    BYTE* pBytes = static_cast<BYTE*>(hBlock); // a fixed block's handle is its address
    const std::span<BYTE> picture(pBytes, size);
    const auto rows = FindPreviewRows(picture);
    if (!rows) {
        ::GlobalFree(hBlock);
        return;
    }
    ExchangeBlackAndWhite(picture);
    FreePicture();
    CClientDC dc(nullptr);
    const auto* pHeader = reinterpret_cast<const BITMAPINFOHEADER*>(pBytes);
    bitmap = ::CreateDIBitmap(dc, pHeader, CBM_INIT, pBytes + *rows, reinterpret_cast<const BITMAPINFO*>(pBytes),
                              DIB_RGB_COLORS);
    dib = hBlock;
    height = pHeader->biHeight;
    width = pHeader->biWidth;
}

void CDwgThumbnail::Paint(CDC& dc, int x0, int y0, int w, int h) {
    if (w <= 0 || h <= 0)
        return;
    LoadPreview();
    if (!bitmap) {
        PaintCross(dc, x0, y0, w, h);
        return;
    }
    const int W = width;
    const int H = std::abs(height);
    const CPreviewPlace place = PlacePreview(W, H, x0, y0, w, h);
    CDC memory;
    memory.CreateCompatibleDC(&dc);
    CBitmap* pFormer = memory.SelectObject(CBitmap::FromHandle(bitmap));
    dc.StretchBlt(place.x, place.y, place.width, place.height, &memory, 0, 0, W, H, SRCCOPY);
    memory.SelectObject(pFormer);

    CBrush ground(::GetSysColor(COLOR_WINDOW));
    FillBand(dc, ground, x0, y0, x0 + w, place.y);
    FillBand(dc, ground, x0, place.y + place.height, x0 + w, y0 + h);
    FillBand(dc, ground, x0, y0, place.x, y0 + h);
    FillBand(dc, ground, place.x + place.width, y0, x0 + w, y0 + h);
}

void CDwgThumbnail::PaintCross(CDC& dc, int x0, int y0, int w, int h) {
    CBrush ground(::GetSysColor(COLOR_WINDOW));
    dc.FillRect(CRect(x0, y0, x0 + w, y0 + h), &ground);
    CPen pen(PS_SOLID, 1, RGB(255, 0, 0));
    CPen* pFormer = dc.SelectObject(&pen);
    const int right = x0 + w - 2;
    const int bottom = y0 + h;
    dc.MoveTo(x0, y0);
    dc.LineTo(x0, bottom);
    dc.LineTo(right, bottom);
    dc.LineTo(right, y0);
    dc.LineTo(x0, y0);
    dc.LineTo(right, bottom);
    dc.MoveTo(x0, bottom);
    dc.LineTo(right, y0);
    dc.SelectObject(pFormer);
}
