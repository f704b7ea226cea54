#include "mfc/exception.h"

#include "mfc/wnd.h"
#include "win32/error.h"
#include "win32/messagebox.h"

#include <cstring>
#include <utility>

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CUserException, CException)
IMPLEMENT_DYNAMIC(CMemoryException, CException)
IMPLEMENT_DYNAMIC(CNotSupportedException, CException)
IMPLEMENT_DYNAMIC(CResourceException, CException)
IMPLEMENT_DYNAMIC(CFileException, CException)

namespace {

BOOL copyMessage(const CString& text, LPSTR buffer, UINT size) {
    if (buffer == nullptr || size == 0)
        return FALSE;
    const std::string_view shown = text.View().substr(0, size - 1);
    std::memcpy(buffer, shown.data(), shown.size());
    buffer[shown.size()] = '\0';
    return TRUE;
}

constexpr std::pair<int, LPCSTR> fileMessages[] = {
    {CFileException::fileNotFound, "%s was not found. Check the name and the folder."},
    {CFileException::badPath, "%s contains a folder that does not exist."},
    {CFileException::tooManyOpenFiles, "%s could not be opened because too many files are open."},
    {CFileException::accessDenied, "Access to %s was denied. Check its permissions, or choose another folder."},
    {CFileException::invalidFile, "%s is not open."},
    {CFileException::directoryFull, "The folder of %s can't take another file."},
    {CFileException::badSeek, "A position outside %s was asked for."},
    {CFileException::hardIO, "Reading or writing %s failed. The disk may be damaged."},
    {CFileException::sharingViolation, "%s is in use by another program."},
    {CFileException::lockViolation, "A part of %s is locked by another program."},
    {CFileException::diskFull, "The disk is full while writing %s. Make room and try again."},
    {CFileException::endOfFile, "%s ended before it should."},
};

} // namespace

BOOL CException::GetErrorMessage(LPSTR buffer, UINT size, UINT* helpContext) const {
    if (helpContext != nullptr)
        *helpContext = 0;
    if (buffer != nullptr && size > 0)
        buffer[0] = '\0';
    return FALSE;
}

int CException::ReportError(UINT type, UINT messageId) {
    char text[512];
    if (GetErrorMessage(text, sizeof text) != FALSE)
        return AfxMessageBox(text, type != 0 ? type : MB_OK | MB_ICONEXCLAMATION);
    return messageId != 0 ? AfxMessageBox(messageId, type) : IDOK;
}

BOOL CResourceException::GetErrorMessage(LPSTR buffer, UINT size, UINT*) const {
    return copyMessage("A part of the program's resources is missing. Install it again.", buffer, size);
}

CFileException::CFileException(int cause, LONG systemError, LPCSTR fileName)
    : m_cause(cause), m_lOsError(systemError), m_strFileName(fileName) {}

BOOL CFileException::GetErrorMessage(LPSTR buffer, UINT size, UINT*) const {
    LPCSTR format = "%s: the file could not be used.";
    for (const auto& [cause, text] : fileMessages)
        if (cause == m_cause)
            format = text;
    CString sentence(format);
    sentence.Replace("%s", m_strFileName.IsEmpty() != FALSE ? "An unnamed file" : LPCSTR(m_strFileName));
    return copyMessage(sentence, buffer, size);
}

int CFileException::OsErrorToException(LONG systemError) {
    switch (static_cast<DWORD>(systemError)) {
    case ERROR_SUCCESS:
        return none;
    case ERROR_FILE_NOT_FOUND:
        return fileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_INVALID_NAME:
        return badPath;
    case ERROR_ACCESS_DENIED:
        return accessDenied;
    case ERROR_INVALID_HANDLE:
        return invalidFile;
    case ERROR_DISK_FULL:
        return diskFull;
    case ERROR_READ_FAULT:
    case ERROR_WRITE_FAULT:
        return hardIO;
    default:
        return generic;
    }
}

void AfxThrowUserException() { throw new CUserException; }
void AfxThrowMemoryException() { throw new CMemoryException; }
void AfxThrowNotSupportedException() { throw new CNotSupportedException; }
void AfxThrowResourceException() { throw new CResourceException; }

void AfxThrowFileException(int cause, LONG systemError, LPCSTR fileName) {
    throw new CFileException(cause, systemError, fileName);
}
