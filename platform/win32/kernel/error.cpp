#include "win32/error.h"

#include <cerrno>

namespace {

thread_local DWORD t_lastError = ERROR_SUCCESS;

} // namespace

DWORD GetLastError() { return t_lastError; }

void SetLastError(DWORD code) { t_lastError = code; }

DWORD vndk::win32::errorFromErrno(int systemError) {
    switch (systemError) {
    case 0:
        return ERROR_SUCCESS;
    case ENOENT:
        return ERROR_FILE_NOT_FOUND;
    case ENOTDIR:
        return ERROR_PATH_NOT_FOUND;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
        return ERROR_ACCESS_DENIED;
    case ENAMETOOLONG:
    case EINVAL:
    case ELOOP:
        return ERROR_INVALID_NAME;
    case ENOSPC:
    case EDQUOT:
        return ERROR_DISK_FULL;
    default:
        return ERROR_READ_FAULT;
    }
}
