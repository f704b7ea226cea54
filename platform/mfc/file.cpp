#include "mfc/file.h"

#include "create_file.h"
#include "win32/drive_map.h"
#include "win32/error.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <optional>

using vndk::win32::DriveMap;
using vndk::win32::errorFromErrno;

IMPLEMENT_DYNAMIC(CFile, CObject)

namespace {

int systemFlags(UINT openFlags) {
    int flags = O_CLOEXEC;
    switch (openFlags & 3) {
    case CFile::modeWrite:
        flags |= O_WRONLY;
        break;
    case CFile::modeReadWrite:
        flags |= O_RDWR;
        break;
    default:
        flags |= O_RDONLY;
    }
    if ((openFlags & CFile::modeCreate) != 0)
        flags |= O_CREAT | ((openFlags & CFile::modeNoTruncate) != 0 ? 0 : O_TRUNC);
    return flags;
}

/// The descriptor, or -1 with the platform's error code in `problem`. A folder or a pipe isn't a file.
int openPath(LPCSTR fileName, UINT openFlags, LONG& problem) {
    if (fileName == nullptr) {
        problem = static_cast<LONG>(ERROR_INVALID_NAME);
        return CFile::hFileNull;
    }
    const std::optional<std::string> path = DriveMap::current().toHost(fileName);
    if (!path) {
        problem = static_cast<LONG>(GetLastError());
        return CFile::hFileNull;
    }
    const int flags = systemFlags(openFlags);
    // A pipe without a writer would keep its reader waiting for ever.
    const int file = (flags & O_CREAT) != 0 ? createFile(*path, flags, 0666) : open(path->c_str(), flags | O_NONBLOCK);
    struct stat status {};
    if (file >= 0 && fstat(file, &status) == 0 && (S_ISDIR(status.st_mode) || S_ISFIFO(status.st_mode))) {
        close(file);
        problem = static_cast<LONG>(ERROR_ACCESS_DENIED);
        return CFile::hFileNull;
    }
    if (file < 0)
        problem = static_cast<LONG>(errorFromErrno(errno));
    return file;
}

[[noreturn]] void throwSystemError(const CString& fileName) {
    const auto problem = static_cast<LONG>(errorFromErrno(errno));
    AfxThrowFileException(CFileException::OsErrorToException(problem), problem, fileName);
}

std::string requirePath(LPCSTR fileName) {
    const std::optional<std::string> path = DriveMap::current().toHost(fileName);
    if (!path)
        AfxThrowFileException(CFileException::badPath, static_cast<LONG>(GetLastError()), fileName);
    return *path;
}

} // namespace

CFile::CFile(LPCSTR fileName, UINT openFlags) {
    auto problem = std::make_unique<CFileException>();
    // In a constructor the dynamic type is CFile: an override of Open isn't meant here.
    if (CFile::Open(fileName, openFlags, problem.get()) == FALSE)
        throw problem.release();
}

CFile::~CFile() {
    if (m_hFile != hFileNull)
        close(m_hFile);
}

BOOL CFile::Open(LPCSTR fileName, UINT openFlags, CFileException* problem) {
    if (m_hFile != hFileNull)
        Close();
    m_strFileName = fileName;
    LONG systemError = -1;
    m_hFile = openPath(fileName, openFlags, systemError);
    if (m_hFile != hFileNull)
        return TRUE;
    if (problem != nullptr) {
        problem->m_cause = CFileException::OsErrorToException(systemError);
        problem->m_lOsError = systemError;
        problem->m_strFileName = fileName;
    }
    return FALSE;
}

void CFile::ThrowSystemError() const {
    if (m_hFile == hFileNull)
        AfxThrowFileException(CFileException::invalidFile, static_cast<LONG>(ERROR_INVALID_HANDLE), m_strFileName);
    throwSystemError(m_strFileName);
}

void CFile::Close() {
    const int file = m_hFile;
    m_hFile = hFileNull;
    if (file != hFileNull && close(file) != 0)
        throwSystemError(m_strFileName);
}

void CFile::Abort() {
    if (m_hFile != hFileNull)
        close(m_hFile);
    m_hFile = hFileNull;
}

UINT CFile::Read(void* buffer, UINT count) {
    UINT total = 0;
    while (total < count) {
        const ssize_t got = read(m_hFile, static_cast<char*>(buffer) + total, count - total);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0)
            ThrowSystemError();
        if (got == 0)
            break;
        total += static_cast<UINT>(got);
    }
    return total;
}

void CFile::Write(const void* buffer, UINT count) {
    UINT total = 0;
    while (total < count) {
        const ssize_t put = write(m_hFile, static_cast<const char*>(buffer) + total, count - total);
        if (put < 0 && errno == EINTR)
            continue;
        if (put < 0)
            ThrowSystemError();
        total += static_cast<UINT>(put);
    }
}

void CFile::Flush() {
    if (m_hFile != hFileNull && fsync(m_hFile) != 0 && errno != EINVAL)
        ThrowSystemError();
}

LONGLONG CFile::Seek(LONGLONG offset, UINT from) {
    const int origin = from == begin ? SEEK_SET : from == current ? SEEK_CUR : SEEK_END;
    const off_t position = lseek(m_hFile, offset, origin);
    if (position < 0) {
        if (errno == EINVAL)
            AfxThrowFileException(CFileException::badSeek, -1, m_strFileName);
        ThrowSystemError();
    }
    return position;
}

LONGLONG CFile::GetPosition() const {
    const off_t position = lseek(m_hFile, 0, SEEK_CUR);
    if (position < 0)
        ThrowSystemError();
    return position;
}

LONGLONG CFile::GetLength() const {
    struct stat status {};
    if (fstat(m_hFile, &status) != 0)
        ThrowSystemError();
    return status.st_size;
}

void CFile::SetLength(LONGLONG length) {
    if (ftruncate(m_hFile, length) != 0)
        ThrowSystemError();
    Seek(length, begin);
}

CString CFile::GetFileName() const {
    const std::string_view path = m_strFileName.View();
    const std::size_t separator = path.find_last_of("\\/:");
    return CString(separator == std::string_view::npos ? path : path.substr(separator + 1));
}

CString CFile::GetFileTitle() const {
    const CString name = GetFileName();
    const int dot = name.ReverseFind('.');
    return dot > 0 ? name.Left(dot) : name;
}

void CFile::Remove(LPCSTR fileName) {
    if (unlink(requirePath(fileName).c_str()) != 0)
        throwSystemError(fileName);
}

void CFile::Rename(LPCSTR oldName, LPCSTR newName) {
    if (rename(requirePath(oldName).c_str(), requirePath(newName).c_str()) != 0)
        throwSystemError(oldName);
}
