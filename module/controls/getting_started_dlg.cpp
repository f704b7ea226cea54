#include "controls/getting_started_dlg.h"

#include "frame/module.h"
#include "resources/resource.h"

#include <algorithm>
#include <cstring>

namespace {

const char* const kRichTextType = "RTF";
const char* const kReadmeName = "readme.rtf";

struct ResourceBytes {
    const BYTE* pData = nullptr;
    DWORD nSize = 0;
};

ResourceBytes FindTips() {
    const HRSRC hResource = ::FindResourceA(ModuleInstance(), MAKEINTRESOURCE(IDR_TIPS), kRichTextType);
    ResourceBytes tips;
    if (!hResource)
        return tips;
    tips.pData = static_cast<const BYTE*>(::LockResource(::LoadResource(ModuleInstance(), hResource)));
    if (tips.pData)
        tips.nSize = ::SizeofResource(ModuleInstance(), hResource);
    return tips;
}

/// Nothing may throw through the control, so a failing read ends the text there.
DWORD CALLBACK ReadFromFile(DWORD_PTR dwCookie, LPBYTE pBuffer, LONG nCount, LONG* pnRead) {
    try {
        *pnRead = static_cast<LONG>(reinterpret_cast<CFile*>(dwCookie)->Read(pBuffer, static_cast<UINT>(nCount)));
    } catch (CFileException* e) {
        e->Delete();
        *pnRead = 0;
    }
    return 0;
}

DWORD CALLBACK ReadFromResource(DWORD_PTR dwCookie, LPBYTE pBuffer, LONG nCount, LONG* pnRead) {
    auto& rest = *reinterpret_cast<ResourceBytes*>(dwCookie);
    const DWORD nPart = std::min(rest.nSize, static_cast<DWORD>(nCount));
    std::memcpy(pBuffer, rest.pData, nPart);
    rest.pData += nPart;
    rest.nSize -= nPart;
    *pnRead = static_cast<LONG>(nPart);
    return 0;
}

} // namespace

BEGIN_MESSAGE_MAP(CGettingStartedDlg, CDialog)
ON_BN_CLICKED(IDC_DO_NOT_SHOW, &CGettingStartedDlg::OnDoNotShow)
END_MESSAGE_MAP()

CGettingStartedDlg::CGettingStartedDlg(CWnd* pParent) : CDialog(IDD_GETTING_STARTED, pParent) {}

void CGettingStartedDlg::DoDataExchange(CDataExchange* pDX) {
    CDialog::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_DO_NOT_SHOW, m_checkDoNotShow);
    DDX_Control(pDX, IDC_TIPS_TEXT, m_richText);
}

CString CGettingStartedDlg::WriteReadmeFile() {
    char folder[MAX_PATH] = "";
    const DWORD nLength = ::GetTempPathA(sizeof folder, folder);
    if (nLength == 0 || nLength >= sizeof folder)
        AfxThrowFileException(CFileException::badPath, -1, kReadmeName);
    CString strPath(folder);
    if (strPath.GetAt(strPath.GetLength() - 1) != '\\')
        strPath += '\\';
    strPath += kReadmeName;

    if (const ResourceBytes tips = FindTips(); tips.pData) {
        CFile file(strPath, CFile::modeCreate | CFile::modeWrite);
        file.Write(tips.pData, tips.nSize);
        file.Close();
    }
    return strPath;
}

BOOL CGettingStartedDlg::OnInitDialog() {
    CDialog::OnInitDialog();
    try {
        CFile file(WriteReadmeFile(), CFile::modeRead);
        ShowReadme(file);
        file.Close();
    } catch (CFileException* e) {
        e->Delete();
        ShowResource();
    }
    return TRUE;
}

void CGettingStartedDlg::ShowReadme(CFile& file) {
    EDITSTREAM stream{};
    stream.dwCookie = reinterpret_cast<DWORD_PTR>(&file);
    stream.pfnCallback = ReadFromFile;
    m_richText.SendMessage(EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
}

void CGettingStartedDlg::ShowResource() {
    ResourceBytes tips = FindTips();
    if (!tips.pData)
        return;
    EDITSTREAM stream{};
    stream.dwCookie = reinterpret_cast<DWORD_PTR>(&tips);
    stream.pfnCallback = ReadFromResource;
    m_richText.SendMessage(EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
}

void CGettingStartedDlg::OnDoNotShow() {
    const auto nCheck = static_cast<int>(m_checkDoNotShow.SendMessage(BM_GETCHECK));
    if (CWinApp* pApp = AfxGetModuleState()->m_pCurrentWinApp)
        pApp->WriteProfileInt(LoadResString(IDS_VONDRAKE), "DoNotShow", nCheck);
}
