// CWinApp: the one application object, known to the framework's state, and its profile.
//
// The profile is an INI file (see win32/profile_file.h): `vondrake/<application name>.ini` in the user's configuration
// folder (XDG_CONFIG_HOME, or else ~/.config) unless another file is set.
#pragma once

#include "mfc/object.h"
#include "mfc/string.h"

class CWinApp : public CObject {
    DECLARE_DYNAMIC(CWinApp)

public:
    /// Becomes the current state's application; the state must outlive it.
    explicit CWinApp(LPCSTR appName = "vondrake");
    ~CWinApp() override;
    CWinApp(const CWinApp&) = delete;
    CWinApp& operator=(const CWinApp&) = delete;

    /// Another profile file, as a path of the system (UTF-8). It need not exist.
    void SetProfileFile(LPCSTR hostPath) { m_strProfilePath = hostPath; }
    [[nodiscard]] const CString& GetProfileFile() const { return m_strProfilePath; }

    [[nodiscard]] UINT GetProfileInt(LPCSTR section, LPCSTR entry, int fallback) const;
    [[nodiscard]] CString GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR fallback = nullptr) const;
    /// Both make the folder when it is missing, and return FALSE with the last error set when the file cannot be
    /// written. A null text removes the entry, a null entry the section.
    BOOL WriteProfileInt(LPCSTR section, LPCSTR entry, int value);
    BOOL WriteProfileString(LPCSTR section, LPCSTR entry, LPCSTR value);

    CString m_strAppName;
    HINSTANCE m_hInstance = nullptr;

private:
    CString m_strProfilePath; // UTF-8
};
