#include "ui/main_frame.h"

#include "ui/canvas.h"
#include "ui/command_window.h"
#include "ui/window_prompts.h"

#include <algorithm>
#include <string>

namespace vndk::host {

namespace {

constexpr UINT kCanvasId = 0xE900; // the framework's number for what fills the middle
constexpr UINT kCommandWindowId = 1002;
constexpr int kCommandWindowHeight = 76;

} // namespace

BEGIN_MESSAGE_MAP(MainFrame, CFrameWnd)
ON_WM_CREATE()
ON_WM_SIZE()
ON_WM_SETFOCUS()
ON_WM_CLOSE()
ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

MainFrame::MainFrame(Host& host)
    : host_(host), canvas_(std::make_unique<Canvas>(host)), commandWindow_(std::make_unique<CommandWindow>()),
      prompts_(std::make_unique<WindowPrompts>(host, *this)) {}

MainFrame::~MainFrame() { leave(); }

bool MainFrame::open() {
    const CRect screen(0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN));
    const LPCSTR className = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW));
    // The system's window has a caption already; ours follows its size.
    if (!CFrameWnd::Create(className, "vondrake", WS_POPUP | WS_MAXIMIZE | WS_CLIPCHILDREN, screen))
        return false;
    host_.setMainWindow(m_hWnd);
    host_.setCommandLineWindow(commandWindow_->m_hWnd);
    host_.setPrint([this](std::string_view text) { commandWindow_->print(text); });
    host_.setAlert([this](std::string_view text) {
        ::MessageBoxA(m_hWnd, std::string(text).c_str(), "vondrake", MB_OK | MB_ICONEXCLAMATION);
    });
    host_.commandLine().setSource(prompts_.get());
    ShowWindow(SW_SHOWMAXIMIZED);
    UpdateWindow();
    return true;
}

void MainFrame::leave() {
    if (host_.mainWindow() != m_hWnd || !m_hWnd)
        return;
    host_.commandLine().setSource(nullptr);
    host_.setAlert({});
    host_.setPrint([](std::string_view) {});
    canvas_->detach();
    host_.setCommandLineWindow(nullptr);
    host_.setMainWindow(nullptr);
}

void MainFrame::run(CWinApp& application) {
    canvas_->follow();
    commandWindow_->showPrompt(CommandWindow::kIdlePrompt);
    SetFocus();
    application.Run();
}

int MainFrame::OnCreate(LPCREATESTRUCT create) {
    if (CFrameWnd::OnCreate(create) == -1)
        return -1;
    if (!canvas_->create(*this, kCanvasId) || !commandWindow_->create(*this, kCommandWindowId))
        return -1;
    commandWindow_->onEnter = [this](std::string line) {
        host_.commandLine().input().feed(line + "\n");
        runInput();
    };
    return 0;
}

void MainFrame::layOut() {
    if (!commandWindow_->GetSafeHwnd())
        return;
    CRect client;
    GetClientRect(client);
    const int top = std::max(client.Height() - kCommandWindowHeight, 0);
    canvas_->MoveWindow(0, 0, client.Width(), top);
    commandWindow_->MoveWindow(0, top, client.Width(), client.Height() - top);
}

void MainFrame::OnSize(UINT type, int width, int height) {
    CFrameWnd::OnSize(type, width, height);
    layOut();
}

void MainFrame::OnSetFocus(CWnd*) {
    if (commandWindow_->GetSafeHwnd())
        commandWindow_->SetFocus();
}

BOOL MainFrame::OnEraseBkgnd(CDC*) { return TRUE; } // its children cover it

void MainFrame::runInput() {
    // A prompt that waits takes the line by itself.
    if (host_.commandLine().isStepping() || prompts_->isWaiting())
        return;
    host_.commandLine().run();
    host_.freshLine();
    commandWindow_->showPrompt(CommandWindow::kIdlePrompt);
    canvas_->follow();
    if (host_.quitRequested())
        ::PostQuitMessage(0);
}

BOOL MainFrame::PreTranslateMessage(MSG* message) {
    if (message->message == WM_KEYDOWN && message->wParam == VK_ESCAPE && ::IsChild(m_hWnd, message->hwnd) != FALSE) {
        commandWindow_->clearLine();
        host_.commandLine().input().feed(std::string(1, InputQueue::kCancel) + "\n");
        runInput();
        return TRUE;
    }
    return CFrameWnd::PreTranslateMessage(message);
}

/// QUIT asks about drawings that aren't saved; a command that waits for an answer is cancelled before.
void MainFrame::OnClose() {
    const bool waits = host_.commandLine().isStepping() || prompts_->isWaiting();
    host_.commandLine().input().feed(waits ? std::string(1, InputQueue::kCancel) + "\nQUIT\n" : "QUIT\n");
    runInput();
}

} // namespace vndk::host
