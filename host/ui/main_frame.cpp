#include "ui/main_frame.h"

#include "ui/canvas.h"
#include "ui/command_window.h"
#include "ui/document_tabs.h"
#include "ui/resource.h"
#include "ui/sash.h"
#include "ui/status_line.h"
#include "ui/text_window.h"
#include "ui/window_prompts.h"
#include "win32/accelerators.h"
#include "win32/loader.h"

#include <algorithm>
#include <charconv>

namespace vndk::host {

namespace {

constexpr UINT kStatusId = 0xE801; // the framework's number for status bars
constexpr UINT kCommandWindowId = 1002;
constexpr UINT kTabsId = 1003;
constexpr UINT kSashId = 1004;
constexpr UINT kRunInput = WM_USER + 1;
constexpr int kCommandWindowHeight = 84;
constexpr int kLeastCanvas = 60; // of height that the command window leaves to the drawing

constexpr const char* kSection = "Window";
constexpr const char* kHeightKey = "CommandHeight";

int heightFromProfile(const Host& host) {
    const auto text = host.profile() ? host.profile()->read(kSection, kHeightKey) : std::nullopt;
    int height = 0;
    if (text)
        std::from_chars(text->data(), text->data() + text->size(), height);
    return height > 0 ? height : kCommandWindowHeight;
}

} // namespace

BEGIN_MESSAGE_MAP(MainFrame, CFrameWnd)
ON_WM_CREATE()
ON_WM_SETFOCUS()
ON_WM_ENABLE()
ON_WM_CLOSE()
ON_WM_ERASEBKGND()
ON_MESSAGE(kRunInput, &MainFrame::OnRunInput)
ON_MESSAGE(WM_IDLEUPDATECMDUI, &MainFrame::OnIdleUpdate)
ON_COMMAND_RANGE(ID_TYPED_FIRST, ID_TYPED_LAST, &MainFrame::OnTypedCommand)
ON_UPDATE_COMMAND_UI_RANGE(ID_TYPED_FIRST, ID_TYPED_LAST, &MainFrame::OnUpdateTypedCommand)
ON_COMMAND_RANGE(ID_FRAME_FIRST, ID_FRAME_LAST, &MainFrame::OnFrameCommand)
ON_UPDATE_COMMAND_UI_RANGE(ID_FRAME_FIRST, ID_FRAME_LAST, &MainFrame::OnUpdateFrameCommand)
END_MESSAGE_MAP()

MainFrame::MainFrame(Host& host)
    : host_(host), canvas_(std::make_unique<Canvas>(host)), commandWindow_(std::make_unique<CommandWindow>()),
      tabs_(std::make_unique<DocumentTabs>(host)), sash_(std::make_unique<Sash>()),
      statusLine_(std::make_unique<StatusLine>(host)), textWindow_(std::make_unique<TextWindow>()),
      prompts_(std::make_unique<WindowPrompts>(host, *this)) {}

MainFrame::~MainFrame() { leave(); }

bool MainFrame::open() {
    const CRect screen(0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN));
    const LPCSTR className = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW));
    commandHeight_ = heightFromProfile(host_);
    // The system's window has a caption already; ours follows its size.
    if (!CFrameWnd::Create(className, "vondrake", WS_POPUP | WS_MAXIMIZE | WS_CLIPCHILDREN, screen))
        return false;
    const HINSTANCE program = ::GetModuleHandleA("Acad.exe");
    ::SetMenu(m_hWnd, ::LoadMenuA(program, MAKEINTRESOURCE(IDR_MAINFRAME)));
    keys_ = ::LoadAcceleratorsA(program, MAKEINTRESOURCE(IDR_MAINFRAME));
    SetIcon(::LoadIconA(program, MAKEINTRESOURCE(IDI_PROGRAM)), FALSE);
    connect();
    ShowWindow(SW_SHOWMAXIMIZED);
    UpdateWindow();
    return true;
}

/// From now on the host talks to this window, and the window's parts to the frame.
void MainFrame::connect() {
    host_.setMainWindow(m_hWnd);
    host_.setCommandLineWindow(commandWindow_->m_hWnd);
    host_.setPrint([this](std::string_view text) { commandWindow_->print(text); });
    host_.setAlert([this](std::string_view text) {
        commandWindow_->showHistory();
        ::MessageBoxA(m_hWnd, std::string(text).c_str(), "vondrake", MB_OK | MB_ICONEXCLAMATION);
    });
    host_.setConfirm([this](std::string_view text) {
        commandWindow_->showHistory();
        return ::MessageBoxA(m_hWnd, std::string(text).c_str(), "vondrake", MB_YESNO | MB_ICONQUESTION) == IDYES;
    });
    host_.setWake([this] {
        if (!woken_)
            woken_ = PostMessage(kRunInput) != FALSE;
    });
    host_.commandLine().setSource(prompts_.get());

    commandWindow_->onEnter = [this](const std::string& lines) {
        host_.commandLine().input().feed(lines);
        runInput();
    };
    commandWindow_->onHistory = [this] { textWindow_->update(commandWindow_->history()); };
    commandWindow_->completions = [this](std::string_view begin) { return host_.commands().namesBeginning(begin); };
    tabs_->onChoose = [this](AcApDocument* document) { whenIdle([this, document] { showDocument(document); }); };
    tabs_->onClose = [this] { type("_CLOSE\n"); };
    statusLine_->onSpace = [this](bool model) { type(model ? "TILEMODE\n1\n" : "TILEMODE\n0\n"); };
    sash_->onDrag = [this](int down) { resizeCommandWindow(down); };
    canvas_->onAnswer = [this] { runInput(); };
    canvas_->onEnter = [this] {
        host_.commandLine().input().feed("\n");
        runInput();
    };
    canvas_->onOpenEntity = [this](AcDbObjectId entity) { editAttributes(entity); };
    canvas_->onCursor = [this](const AcGePoint3d& world) { statusLine_->showCursor(world); };
}

void MainFrame::leave() {
    if (host_.mainWindow() != m_hWnd || !m_hWnd)
        return;
    host_.commandLine().setSource(nullptr);
    host_.setWake({});
    host_.setConfirm({});
    host_.setAlert({});
    host_.setPrint([](std::string_view) {});
    canvas_->detach();
    host_.setCommandLineWindow(nullptr);
    host_.setMainWindow(nullptr);
}

void MainFrame::showDrawings() {
    canvas_->follow();
    showIdle();
}

void MainFrame::run(CWinApp& application) {
    showDrawings();
    SetFocus();
    application.Run();
}

/// What is made first lies outside: the command line runs below docked bars.
bool MainFrame::createChildren() {
    if (!tabs_->create(*this, kTabsId) || !statusLine_->create(*this, kStatusId) ||
        !commandWindow_->create(*this, kCommandWindowId) || !sash_->create(*this, kSashId))
        return false;
    EnableDocking(CBRS_ALIGN_LEFT | CBRS_ALIGN_RIGHT);
    return canvas_->create(*this, AFX_IDW_PANE_FIRST) && textWindow_->create(*this);
}

int MainFrame::OnCreate(LPCREATESTRUCT create) {
    if (CFrameWnd::OnCreate(create) == -1)
        return -1;
    return createChildren() ? 0 : -1;
}

// Layout.

void MainFrame::RecalcLayout(BOOL notify) {
    CRect client;
    GetClientRect(client);
    const int room = client.Height() - DocumentTabs::kHeight - StatusLine::kHeight - Sash::kHeight;
    const int most = std::max(room - kLeastCanvas, CommandWindow::kLeastHeight);
    commandWindow_->setHeight(std::clamp(commandHeight_, CommandWindow::kLeastHeight, most));
    CFrameWnd::RecalcLayout(notify);
}

void MainFrame::resizeCommandWindow(int down) {
    CRect now;
    commandWindow_->GetWindowRect(now);
    commandHeight_ = std::max(now.Height() - down, CommandWindow::kLeastHeight);
    RecalcLayout();
    commandWindow_->GetWindowRect(now);
    if (host_.profile())
        host_.profile()->write(kSection, kHeightKey, std::to_string(now.Height()));
}

void MainFrame::OnSetFocus(CWnd*) {
    if (commandWindow_->GetSafeHwnd())
        commandWindow_->SetFocus();
}

BOOL MainFrame::OnEraseBkgnd(CDC*) { return TRUE; } // its children cover it

void MainFrame::showTitle() {
    const AcApDocument* const document = host_.documents().curDocument();
    std::string title = "vondrake";
    if (document)
        title = std::string(document->fileName()) + (document->isReadOnly() ? " (read-only)" : "") + " - " + title;
    if (title == title_)
        return;
    title_ = std::move(title);
    SetWindowText(title_.c_str());
}

void MainFrame::refresh() {
    commandWindow_->showHistory();
    tabs_->refresh();
    statusLine_->refresh();
    showTitle();
}

// Input.

bool MainFrame::isBusy() const { return host_.commandLine().isStepping() || prompts_->isWaiting(); }

void MainFrame::beginPrompt(const PromptRequest& request) {
    commandWindow_->showPrompt(request.text, request.form);
    statusLine_->showHint(hintFor(request));
    refresh();
    // What the command has done so far is seen while it asks on.
    canvas_->follow();
}

void MainFrame::endPrompt() {
    canvas_->endPrompt();
    if (GetSafeHwnd() && !isBusy())
        showIdle();
}

void MainFrame::showIdle() {
    host_.freshLine(); // only whole lines are in sight
    commandWindow_->showPrompt(CommandWindow::kIdlePrompt);
    statusLine_->showHint(hintFor({.text = {}, .kind = PromptRequest::Kind::Command}));
    refresh();
}

void MainFrame::runInput() {
    // A prompt that waits takes the line by itself.
    if (isBusy())
        return;
    if (IsWindowEnabled() != FALSE)
        runAll();
    else
        host_.pump(); // what an open dialog sends is done at once; what was typed waits until it is closed
    showIdle();
    canvas_->follow();
    if (host_.quitRequested())
        ::PostQuitMessage(0);
}

void MainFrame::runAll() {
    host_.documents().deliverSentText();
    if (!host_.commandLine().input().empty()) {
        const auto problem = host_.commandLine().run();
        host_.freshLine();
        if (problem && problem->kind == Problem::Kind::DrawingFailed)
            host_.alert(problem->message);
    }
    while (!later_.empty() && !isBusy()) {
        const auto action = std::move(later_.front());
        later_.pop_front();
        action();
    }
}

LRESULT MainFrame::OnRunInput(WPARAM, LPARAM) {
    woken_ = false;
    // A prompt that waits looks into the queue after each message.
    if (isBusy())
        host_.documents().deliverSentText();
    else
        runInput();
    return 0;
}

void MainFrame::OnEnable(BOOL enabled) {
    CFrameWnd::OnEnable(enabled);
    // What was typed while a dialog was open.
    if (enabled)
        host_.wake();
}

LRESULT MainFrame::OnIdleUpdate(WPARAM wParam, LPARAM lParam) {
    if (IsWindowEnabled() != FALSE && !isBusy() && (!host_.commandLine().input().empty() || !later_.empty()))
        runInput();
    refresh();
    return CFrameWnd::OnIdleUpdateCmdUI(wParam, lParam);
}

void MainFrame::cancelWaiting() {
    if (!prompts_->isWaiting())
        return;
    // One for each prompt that may be nested: a transparent command within another one.
    constexpr int kCancels = 3;
    commandWindow_->clearLine();
    for (int i = 0; i < kCancels; ++i)
        host_.commandLine().input().feed(std::string(1, InputQueue::kCancel) + "\n");
    host_.wake();
}

void MainFrame::type(const std::string& lines) {
    commandWindow_->clearLine();
    cancelWaiting();
    host_.commandLine().input().feed(lines);
    runInput();
}

void MainFrame::whenIdle(std::function<void()> action) {
    later_.push_back(std::move(action));
    if (isBusy())
        cancelWaiting();
    else
        runInput();
}

/// QUIT asks about drawings that aren't saved.
void MainFrame::OnClose() { type("_QUIT\n"); }

} // namespace vndk::host
