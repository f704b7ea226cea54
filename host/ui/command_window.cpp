#include "ui/command_window.h"

#include <algorithm>

namespace vndk::host {

namespace {

constexpr UINT kHistoryId = 1001;
constexpr UINT kPromptId = 1002;
constexpr UINT kLineId = 1003;
constexpr int kLineHeight = 20;
constexpr int kMargin = 4;
constexpr int kLongestHistory = 200000; // characters; the oldest half goes then

/// Edit controls want CR LF.
std::string withCarriageReturns(std::string_view text) {
    std::string lines;
    for (const char c : text) {
        if (c == '\n')
            lines.push_back('\r');
        lines.push_back(c);
    }
    return lines;
}

} // namespace

BEGIN_MESSAGE_MAP(CommandWindow, CWnd)
ON_WM_CREATE()
ON_WM_SIZE()
ON_WM_SETFOCUS()
ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

bool CommandWindow::create(CWnd& parent, UINT id) {
    const LPCSTR className = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW));
    return Create(className, "", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, CRect(), &parent, id) != FALSE;
}

int CommandWindow::OnCreate(LPCREATESTRUCT create) {
    if (CWnd::OnCreate(create) == -1)
        return -1;
    font_.CreatePointFont(80, "MS Sans Serif");
    const CRect none;
    const DWORD history = WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL;
    if (!history_.Create(history, none, this, kHistoryId) ||
        !prompt_.Create(kIdlePrompt, WS_CHILD | WS_VISIBLE | SS_CENTERIMAGE | SS_NOPREFIX, none, this, kPromptId) ||
        !line_.Create(WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, none, this, kLineId))
        return -1;
    line_.ModifyStyleEx(0, WS_EX_CLIENTEDGE, SWP_FRAMECHANGED);
    for (CWnd* child : {static_cast<CWnd*>(&history_), static_cast<CWnd*>(&prompt_), static_cast<CWnd*>(&line_)})
        child->SetFont(&font_);
    history_.LimitText(0);
    return 0;
}

void CommandWindow::layOut() {
    if (!line_.GetSafeHwnd())
        return;
    CRect client;
    GetClientRect(client);
    const int top = std::max(client.Height() - kLineHeight - 2 * kMargin, 0);
    CClientDC dc(&prompt_);
    CFont* former = dc.SelectObject(&font_);
    CString prompt;
    prompt_.GetWindowText(prompt);
    const int label = std::min(static_cast<int>(dc.GetTextExtent(prompt).cx) + kMargin, client.Width() * 2 / 3);
    dc.SelectObject(former);
    history_.MoveWindow(0, 0, client.Width(), top);
    prompt_.MoveWindow(kMargin, top + kMargin, label, kLineHeight);
    line_.MoveWindow(kMargin + label, top + kMargin, std::max(client.Width() - label - 2 * kMargin, 0), kLineHeight);
}

void CommandWindow::OnSize(UINT type, int width, int height) {
    CWnd::OnSize(type, width, height);
    layOut();
}

void CommandWindow::OnSetFocus(CWnd*) {
    if (line_.GetSafeHwnd())
        line_.SetFocus();
}

BOOL CommandWindow::OnEraseBkgnd(CDC* dc) {
    CRect client;
    GetClientRect(client);
    dc->FillSolidRect(client, ::GetSysColor(COLOR_3DFACE));
    return TRUE;
}

void CommandWindow::print(std::string_view text) {
    if (!history_.GetSafeHwnd())
        return;
    int length = history_.GetWindowTextLength();
    if (length > kLongestHistory) {
        history_.SetSel(0, length / 2, TRUE);
        history_.ReplaceSel("");
        length = history_.GetWindowTextLength();
    }
    history_.SetSel(length, length);
    history_.ReplaceSel(withCarriageReturns(text).c_str());
}

void CommandWindow::showPrompt(std::string_view prompt) {
    if (!prompt_.GetSafeHwnd())
        return;
    const std::size_t begin = prompt.find_last_of('\n');
    prompt_.SetWindowText(CString(begin == std::string_view::npos ? prompt : prompt.substr(begin + 1)));
    layOut();
}

void CommandWindow::enterLine() {
    CString text;
    line_.GetWindowText(text);
    clearLine();
    if (!text.IsEmpty())
        typed_.Add(text);
    recalled_ = typed_.GetSize();
    if (onEnter)
        onEnter(std::string(text.View()));
}

void CommandWindow::recall(int step) {
    const int wanted = std::clamp(recalled_ + step, 0, typed_.GetSize());
    if (wanted == recalled_)
        return;
    recalled_ = wanted;
    line_.SetWindowText(wanted < typed_.GetSize() ? typed_[wanted] : CString());
    line_.SetSel(line_.GetWindowTextLength(), line_.GetWindowTextLength());
}

BOOL CommandWindow::PreTranslateMessage(MSG* message) {
    if (message->message == WM_KEYDOWN && message->hwnd == line_.m_hWnd) {
        switch (message->wParam) {
        case VK_RETURN:
            enterLine();
            return TRUE;
        case VK_UP:
        case VK_DOWN:
            recall(message->wParam == VK_UP ? -1 : 1);
            return TRUE;
        default:
            break;
        }
    }
    return CWnd::PreTranslateMessage(message);
}

} // namespace vndk::host
