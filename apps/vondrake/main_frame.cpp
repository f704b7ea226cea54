#include "main_frame.h"

#include <algorithm>
#include <string>

namespace vndk::app {

namespace {

constexpr UINT kHistoryId = 1001;
constexpr UINT kPromptId = 1002;
constexpr UINT kLineId = 1003;
constexpr int kLineHeight = 20;
constexpr int kMargin = 4;
constexpr int kLongestHistory = 200000; // characters; the oldest half goes then
constexpr const char* kIdlePrompt = "Command:";

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

BEGIN_MESSAGE_MAP(MainFrame, CFrameWnd)
ON_WM_CREATE()
ON_WM_SIZE()
ON_WM_SETFOCUS()
ON_WM_CLOSE()
ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

MainFrame::MainFrame(host::Host& host) : host_(host) {}

bool MainFrame::open() {
    const CRect screen(0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN));
    const LPCSTR className = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW));
    // The system's window has a caption already; ours follows its size.
    if (!CFrameWnd::Create(className, "vondrake", WS_POPUP | WS_MAXIMIZE | WS_CLIPCHILDREN, screen))
        return false;
    ShowWindow(SW_SHOWMAXIMIZED);
    UpdateWindow();
    return true;
}

int MainFrame::OnCreate(LPCREATESTRUCT create) {
    if (CFrameWnd::OnCreate(create) == -1)
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

void MainFrame::layOut() {
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

void MainFrame::OnSize(UINT type, int width, int height) {
    CFrameWnd::OnSize(type, width, height);
    layOut();
}

void MainFrame::OnSetFocus(CWnd*) {
    if (line_.GetSafeHwnd())
        line_.SetFocus();
}

BOOL MainFrame::OnEraseBkgnd(CDC* dc) {
    CRect client;
    GetClientRect(client);
    dc->FillSolidRect(client, ::GetSysColor(COLOR_3DFACE));
    return TRUE;
}

void MainFrame::print(std::string_view text) {
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

void MainFrame::showPrompt(std::string_view prompt) {
    const std::size_t begin = prompt.find_last_of('\n');
    prompt_.SetWindowText(CString(begin == std::string_view::npos ? prompt : prompt.substr(begin + 1)));
    layOut();
}

void MainFrame::enterLine() {
    CString text;
    line_.GetWindowText(text);
    line_.SetWindowText("");
    if (!text.IsEmpty())
        typed_.Add(text);
    recalled_ = typed_.GetSize();
    host_.commandLine().input().feed(std::string(text.View()) + "\n");
    runInput();
}

void MainFrame::runInput() {
    // A prompt that waits takes the line by itself.
    if (host_.commandLine().isStepping())
        return;
    host_.commandLine().run();
    host_.freshLine();
    showPrompt(kIdlePrompt);
    if (host_.quitRequested()) {
        closing_ = true;
        ::PostQuitMessage(0);
    }
}

void MainFrame::recall(int step) {
    const int wanted = std::clamp(recalled_ + step, 0, typed_.GetSize());
    if (wanted == recalled_)
        return;
    recalled_ = wanted;
    line_.SetWindowText(wanted < typed_.GetSize() ? typed_[wanted] : CString());
    line_.SetSel(line_.GetWindowTextLength(), line_.GetWindowTextLength());
}

BOOL MainFrame::PreTranslateMessage(MSG* message) {
    if (message->message == WM_KEYDOWN && message->hwnd == line_.m_hWnd) {
        switch (message->wParam) {
        case VK_RETURN:
            enterLine();
            return TRUE;
        case VK_ESCAPE:
            line_.SetWindowText("");
            host_.commandLine().input().feed(std::string(1, host::InputQueue::kCancel) + "\n");
            runInput();
            return TRUE;
        case VK_UP:
        case VK_DOWN:
            recall(message->wParam == VK_UP ? -1 : 1);
            return TRUE;
        default:
            break;
        }
    }
    return CFrameWnd::PreTranslateMessage(message);
}

/// QUIT asks about drawings that aren't saved; a command that waits for an answer is cancelled before.
void MainFrame::OnClose() {
    const bool waits = host_.commandLine().isStepping();
    host_.commandLine().input().feed(waits ? std::string(1, host::InputQueue::kCancel) + "\nQUIT\n" : "QUIT\n");
    runInput();
}

} // namespace vndk::app
