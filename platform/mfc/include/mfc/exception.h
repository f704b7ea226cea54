// Exceptions of the framework: thrown as pointers, deleted by whoever catches them.
//
//     try { file.Write(bytes, count); }
//     catch (CFileException* problem) { ...; problem->Delete(); }
#pragma once

#include "mfc/object.h"
#include "mfc/string.h"

class CException : public CObject {
    DECLARE_DYNAMIC(CException)

public:
    void Delete() { delete this; }
    /// A sentence for the user, cut to the buffer. FALSE when there is none.
    virtual BOOL GetErrorMessage(LPSTR buffer, UINT size, UINT* helpContext = nullptr) const;
    virtual int ReportError(UINT type = 0, UINT messageId = 0);
};

/// Ends an action; the user has been told.
class CUserException : public CException {
    DECLARE_DYNAMIC(CUserException)
};

class CMemoryException : public CException {
    DECLARE_DYNAMIC(CMemoryException)
};

class CNotSupportedException : public CException {
    DECLARE_DYNAMIC(CNotSupportedException)
};

class CResourceException : public CException {
    DECLARE_DYNAMIC(CResourceException)

public:
    BOOL GetErrorMessage(LPSTR buffer, UINT size, UINT* helpContext = nullptr) const override;
};

class CFileException : public CException {
    DECLARE_DYNAMIC(CFileException)

public:
    enum {
        none,
        generic,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        removeCurrentDir,
        directoryFull,
        badSeek,
        hardIO,
        sharingViolation,
        lockViolation,
        diskFull,
        endOfFile
    };

    explicit CFileException(int cause = none, LONG systemError = -1, LPCSTR fileName = nullptr);
    BOOL GetErrorMessage(LPSTR buffer, UINT size, UINT* helpContext = nullptr) const override;
    /// The cause that stands for an error code of the platform.
    [[nodiscard]] static int OsErrorToException(LONG systemError);

    int m_cause;
    LONG m_lOsError; ///< of the platform; -1 when there is none
    CString m_strFileName;
};

[[noreturn]] void AfxThrowUserException();
[[noreturn]] void AfxThrowMemoryException();
[[noreturn]] void AfxThrowNotSupportedException();
[[noreturn]] void AfxThrowResourceException();
[[noreturn]] void AfxThrowFileException(int cause, LONG systemError = -1, LPCSTR fileName = nullptr);
