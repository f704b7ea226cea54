#include "mfc/winapp.h"

#include "mfc/exception.h"
#include "mfc/module_state.h"

#include "win32/profile_file.h"
#include "win32/windows.h"

#include <cstdlib>
#include <filesystem>
#include <string>

using vndk::win32::ProfileFile;
using vndk::win32::Status;

IMPLEMENT_DYNAMIC(CWinApp, CWinThread)

namespace {

CString configurationFolder() {
    if (const char* folder = std::getenv("XDG_CONFIG_HOME"); folder != nullptr && *folder == '/')
        return folder;
    const char* home = std::getenv("HOME");
    return CString(home != nullptr && *home == '/' ? home : "") + "/.config";
}

BOOL answer(const Status& status) {
    if (!status.ok())
        SetLastError(status.code());
    return status.ok();
}

bool readProfile(const CString& path, ProfileFile& profile) {
    return answer(ProfileFile::read(std::string(path.View()), profile)) != FALSE;
}

} // namespace

CWinApp::CWinApp(LPCSTR appName)
    : m_strAppName(appName), m_strProfilePath(configurationFolder() + "/vondrake/" + m_strAppName + ".ini") {
    AfxGetModuleState()->m_pCurrentWinApp = this;
}

CWinApp::~CWinApp() {
    if (AfxGetModuleState()->m_pCurrentWinApp == this)
        AfxGetModuleState()->m_pCurrentWinApp = nullptr;
}

void CWinApp::ProcessWndProcException(CException* problem) {
    if (dynamic_cast<CUserException*>(problem) == nullptr)
        problem->ReportError();
}

UINT CWinApp::GetProfileInt(LPCSTR section, LPCSTR entry, int fallback) const {
    ProfileFile profile;
    if (!readProfile(m_strProfilePath, profile))
        return static_cast<UINT>(fallback);
    return profile.number(section, entry).value_or(static_cast<UINT>(fallback));
}

CString CWinApp::GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR fallback) const {
    ProfileFile profile;
    readProfile(m_strProfilePath, profile);
    const auto value = profile.value(section, entry);
    return value ? CString(std::string_view(*value)) : CString(fallback);
}

BOOL CWinApp::WriteProfileInt(LPCSTR section, LPCSTR entry, int value) {
    CString text;
    text.Format("%d", value);
    return WriteProfileString(section, entry, text);
}

BOOL CWinApp::WriteProfileString(LPCSTR section, LPCSTR entry, LPCSTR value) {
    const std::string path(m_strProfilePath.View());
    std::error_code problem; // A folder that cannot be made shows in the write below.
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), problem);
    return answer(ProfileFile::change(path, section, entry, value));
}
