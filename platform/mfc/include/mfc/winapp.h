// CWinThread and CWinApp: the one thread's message loop, and the one application object with its profile.
//
// The profile is an INI file (see win32/profile_file.h): `vondrake/<application name>.ini` in the user's configuration
// folder (XDG_CONFIG_HOME, or else ~/.config) unless another file is set.
#pragma once

#include "mfc/cmd_target.h"
#include "mfc/string.h"

class CException;

class CWinThread : public CCmdTarget {
    DECLARE_DYNAMIC(CWinThread)

public:
    CWinThread() = default;

    CWnd* m_pMainWnd = nullptr; ///< not owned

    virtual BOOL InitInstance() { return FALSE; }
    virtual int ExitInstance() { return 0; }
    /// The message loop; returns WM_QUIT's exit code.
    virtual int Run();
    /// One message through filters and maps. FALSE for WM_QUIT.
    virtual BOOL PumpMessage();
    /// From the message's window up to the main window's, then the main window's own.
    virtual BOOL PreTranslateMessage(MSG* message);
    /// TRUE asks for more idle time.
    virtual BOOL OnIdle(LONG count);
};

class CWinApp : public CWinThread {
    DECLARE_DYNAMIC(CWinApp)

public:
    /// Becomes the current state's application; the state must outlive it.
    explicit CWinApp(LPCSTR appName = "vondrake");
    ~CWinApp() override;

    /// Another profile file, as a path of the system (UTF-8). It need not exist.
    void SetProfileFile(LPCSTR hostPath) { m_strProfilePath = hostPath; }
    [[nodiscard]] const CString& GetProfileFile() const { return m_strProfilePath; }

    [[nodiscard]] UINT GetProfileInt(LPCSTR section, LPCSTR entry, int fallback) const;
    [[nodiscard]] CString GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR fallback = nullptr) const;
    /// Both make the folder when it is missing, and return FALSE with the last error set when the file cannot be
    /// written. A null text removes the entry, a null entry the section.
    BOOL WriteProfileInt(LPCSTR section, LPCSTR entry, int value);
    BOOL WriteProfileString(LPCSTR section, LPCSTR entry, LPCSTR value);

    /// What a handler threw and nobody caught: told to the user, unless he knows (CUserException). The caller deletes
    /// it.
    virtual void ProcessWndProcException(CException* problem);

    [[nodiscard]] HICON LoadIcon(UINT id) const;
    [[nodiscard]] HCURSOR LoadCursor(UINT id) const;
    [[nodiscard]] HCURSOR LoadStandardCursor(LPCSTR name) const;

    CString m_strAppName;
    HINSTANCE m_hInstance = nullptr;

private:
    CString m_strProfilePath; // UTF-8
};

/// One message through the application's filters, or without an application through the windows' own. False for
/// WM_QUIT, which is posted again for the loop outside.
bool AfxPumpMessage();
/// The message that AfxPumpMessage or PumpMessage handled last.
[[nodiscard]] const MSG* AfxGetLastPumped();
