#include "ui/text_window.h"

namespace vndk::host {

namespace {

constexpr UINT kEditId = 1001;

} // namespace

BEGIN_MESSAGE_MAP(TextWindow, CWnd)
ON_WM_CREATE()
ON_WM_SIZE()
ON_WM_CTLCOLOR()
ON_WM_SETFOCUS()
ON_WM_CLOSE()
END_MESSAGE_MAP()

bool TextWindow::create(CWnd& frame) {
    frame_ = &frame;
    CRect around;
    frame.GetWindowRect(around);
    around.DeflateRect(around.Width() / 8, around.Height() / 8);
    const LPCSTR className = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW));
    return CreateEx(0, className, "vondrake Text Window",
                    WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MAXIMIZEBOX | WS_CLIPCHILDREN, around.left,
                    around.top, around.Width(), around.Height(), frame.m_hWnd, nullptr) != FALSE;
}

int TextWindow::OnCreate(LPCREATESTRUCT create) {
    if (CWnd::OnCreate(create) == -1)
        return -1;
    font_.CreatePointFont(90, "Courier New");
    const DWORD style = WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_HSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL |
                        ES_AUTOHSCROLL | ES_NOHIDESEL;
    if (!edit_.Create(style, CRect(), this, kEditId))
        return -1;
    edit_.SetFont(&font_);
    edit_.LimitText(0);
    return 0;
}

void TextWindow::show(const std::string& history) {
    ShowWindow(SW_SHOW);
    SetForegroundWindow();
    update(history);
    edit_.SetFocus();
}

void TextWindow::hide() {
    ShowWindow(SW_HIDE);
    frame_->SetFocus();
}

void TextWindow::update(const std::string& history) {
    if (!isOpen() || history == shown_)
        return;
    const bool grows = history.starts_with(shown_) && !shown_.empty();
    const int length = edit_.GetWindowTextLength();
    if (grows) {
        edit_.SetSel(length, length);
        edit_.ReplaceSel(history.c_str() + shown_.size());
    } else {
        edit_.SetWindowText(history.c_str());
        edit_.SetSel(edit_.GetWindowTextLength(), edit_.GetWindowTextLength());
    }
    shown_ = history;
}

void TextWindow::OnSize(UINT type, int width, int height) {
    CWnd::OnSize(type, width, height);
    if (edit_.GetSafeHwnd())
        edit_.MoveWindow(0, 0, width, height);
}

/// What can't be changed is read here, not greyed.
HBRUSH TextWindow::OnCtlColor(CDC* dc, CWnd* control, UINT kind) {
    if (control->m_hWnd != edit_.m_hWnd)
        return CWnd::OnCtlColor(dc, control, kind);
    dc->SetBkColor(::GetSysColor(COLOR_WINDOW));
    return ::GetSysColorBrush(COLOR_WINDOW);
}

void TextWindow::OnSetFocus(CWnd*) {
    if (edit_.GetSafeHwnd())
        edit_.SetFocus();
}

void TextWindow::OnClose() { hide(); }

BOOL TextWindow::PreTranslateMessage(MSG* message) {
    const bool control = ::GetKeyState(VK_CONTROL) < 0;
    if (message->message == WM_KEYDOWN && message->hwnd == edit_.m_hWnd && control &&
        (message->wParam == 'C' || message->wParam == VK_INSERT || message->wParam == 'A')) {
        if (message->wParam == 'A')
            edit_.SetSel(0, -1);
        else
            edit_.Copy();
        return TRUE;
    }
    return CWnd::PreTranslateMessage(message);
}

} // namespace vndk::host
