// A drawing of the list with the picture that was stored in its file when it was saved last.
//
// The file is read when the picture is first painted, and only the few bytes that lead to it and the picture itself.
// What can't be read, and what has no picture, shows a red cross.
#pragma once

#include "mfc/afx.h"

class CDwgThumbnail : public CObject {
public:
    /// `pFolder` (not owned, outliving this object) holds the folder of the file `strName`; null for an entry that
    /// stands for no file.
    CDwgThumbnail(const CString* pFolder, const CString& strName) : name(strName), folder(pFolder) {}
    ~CDwgThumbnail() override;
    CDwgThumbnail(const CDwgThumbnail&) = delete;
    CDwgThumbnail& operator=(const CDwgThumbnail&) = delete;

    /// Reads the file unless that has been done. A file that can't be opened, and one that ends too early, is tried
    /// again with the next call; any other is read for good.
    void LoadPreview();
    /// Paints the picture as large as it goes into the box at (x0, y0), in device units, and the ground around it. A
    /// box without width or height gets nothing, and the file isn't read for it.
    void Paint(CDC& dc, int x0, int y0, int w, int h);

    CString name;             ///< of the file, without its folder
    HGLOBAL dib = nullptr;    ///< owned; the picture as it was read, black and white exchanged in its colour table
    HBITMAP bitmap = nullptr; ///< owned; null: there is nothing to show
    BYTE loaded = 0;          ///< 1: the file has been read
    const CString* folder;    ///< not owned
    LONG height = 0;          ///< of the picture as its header has it: below 0 when its rows begin at the top
    LONG width = 0;

private:
    [[nodiscard]] CString FilePath() const;
    /// False when the file ends before what it announces.
    bool ReadPreview(CFile& file);
    bool ReadPicture(CFile& file, DWORD offset, DWORD size);
    void MakeBitmap(HGLOBAL hBlock, DWORD size);
    void FreePicture();
    static void PaintCross(CDC& dc, int x0, int y0, int w, int h);
};
