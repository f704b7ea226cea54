// CFile: a file on the disk, unbuffered. Paths as everywhere: drive letters, code page 1252.
//
// Constructors and Open with a null exception pointer differ: the constructor throws a CFileException, Open answers
// FALSE. All other members throw.
//
// In a folder that everybody may write, as the one for temporary files, modeCreate refuses (accessDenied) links and
// files of other users, files with a second name and what is no plain file: writing there must not reach a file that
// somebody else has chosen.
#pragma once

#include "mfc/exception.h"

#include <cstdint>

class CFile : public CObject {
    DECLARE_DYNAMIC(CFile)

public:
    enum OpenFlags {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareCompat = 0x0000,
        shareExclusive = 0x0010,
        shareDenyWrite = 0x0020,
        shareDenyRead = 0x0030,
        shareDenyNone = 0x0040,
        modeNoInherit = 0x0080,
        modeCreate = 0x1000,     ///< an earlier file is emptied
        modeNoTruncate = 0x2000, ///< with modeCreate: it keeps its content
        typeText = 0x4000,
        typeBinary = 0x8000
    };
    enum SeekPosition { begin = 0, current = 1, end = 2 };

    CFile() = default;
    CFile(LPCSTR fileName, UINT openFlags);
    ~CFile() override;
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;

    virtual BOOL Open(LPCSTR fileName, UINT openFlags, CFileException* problem = nullptr);
    virtual void Close();
    /// Closes without a word about what may fail.
    virtual void Abort();

    /// Returns the bytes read; fewer than asked for at the end.
    virtual UINT Read(void* buffer, UINT count);
    virtual void Write(const void* buffer, UINT count);
    virtual void Flush();

    virtual LONGLONG Seek(LONGLONG offset, UINT from);
    void SeekToBegin() { Seek(0, begin); }
    LONGLONG SeekToEnd() { return Seek(0, end); }
    [[nodiscard]] virtual LONGLONG GetPosition() const;
    [[nodiscard]] virtual LONGLONG GetLength() const;
    virtual void SetLength(LONGLONG length);

    [[nodiscard]] CString GetFilePath() const { return m_strFileName; }
    [[nodiscard]] CString GetFileName() const;
    [[nodiscard]] CString GetFileTitle() const;

    static void Remove(LPCSTR fileName);
    static void Rename(LPCSTR oldName, LPCSTR newName);

    static constexpr int hFileNull = -1;
    int m_hFile = hFileNull; ///< descriptor of the system
    CString m_strFileName;

private:
    [[noreturn]] void ThrowSystemError() const;
};
