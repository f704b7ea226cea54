#include "ui/command_window.h"

#include "ui/edge_strip.h"

#include <algorithm>

namespace vndk::host {

namespace {

constexpr UINT kHistoryId = 1001;
constexpr UINT kPromptId = 1002;
constexpr UINT kLineId = 1003;
constexpr int kLineHeight = 20;
constexpr int kMargin = 4;
constexpr std::size_t kLongestHistory = 200000; // characters; the oldest half goes then
constexpr int kMostTyped = 500;                 // lines that can be recalled

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
ON_WM_CTLCOLOR()
ON_WM_SETFOCUS()
ON_WM_ERASEBKGND()
ON_MESSAGE(WM_SIZEPARENT, &CommandWindow::OnSizeParent)
END_MESSAGE_MAP()

LRESULT CommandWindow::OnSizeParent(WPARAM, LPARAM layout) { return takeStrip(*this, layout, Edge::Bottom, height_); }

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
    const DWORD label = WS_CHILD | WS_VISIBLE | SS_CENTERIMAGE | SS_NOPREFIX;
    if (!historyEdit_.Create(history, none, this, kHistoryId) ||
        !promptLabel_.Create(kIdlePrompt, label, none, this, kPromptId) ||
        !line_.Create(WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, none, this, kLineId))
        return -1;
    historyEdit_.ModifyStyleEx(0, WS_EX_CLIENTEDGE, SWP_FRAMECHANGED);
    line_.ModifyStyleEx(0, WS_EX_CLIENTEDGE, SWP_FRAMECHANGED);
    for (CWnd* child :
         {static_cast<CWnd*>(&historyEdit_), static_cast<CWnd*>(&promptLabel_), static_cast<CWnd*>(&line_)})
        child->SetFont(&font_);
    historyEdit_.LimitText(0);
    line_.LimitText(0);
    line_.onPaste = [this](const std::string& text) { paste(text); };
    return 0;
}

/// The prompt's end matters most: there stands what Enter answers.
CString CommandWindow::fittingPrompt(CDC& dc, int width) const {
    std::string_view rest = prompt_;
    CString shown(rest);
    while (!rest.empty() && dc.GetTextExtent(shown).cx > width) {
        rest.remove_prefix(1);
        shown = CString("...") + CString(rest);
    }
    return shown;
}

void CommandWindow::layOut() {
    if (!line_.GetSafeHwnd())
        return;
    CRect client;
    GetClientRect(client);
    const int top = std::max(client.Height() - kLineHeight - 2 * kMargin, 0);
    CClientDC dc(&promptLabel_);
    CFont* const former = dc.SelectObject(&font_);
    const CString shown = fittingPrompt(dc, client.Width() / 2);
    const int label = dc.GetTextExtent(shown).cx + kMargin;
    dc.SelectObject(former);
    promptLabel_.SetWindowText(shown);
    historyEdit_.MoveWindow(0, 0, client.Width(), top);
    promptLabel_.MoveWindow(kMargin, top + kMargin, label, kLineHeight);
    line_.MoveWindow(kMargin + label, top + kMargin, std::max(client.Width() - label - 2 * kMargin, 0), kLineHeight);
}

void CommandWindow::OnSize(UINT type, int width, int height) {
    CWnd::OnSize(type, width, height);
    layOut();
    // What was said last stays in sight.
    const int end = historyEdit_.GetSafeHwnd() ? historyEdit_.GetWindowTextLength() : 0;
    if (end > 0)
        historyEdit_.SetSel(end, end);
}

/// What can't be changed is read here, not greyed.
HBRUSH CommandWindow::OnCtlColor(CDC* dc, CWnd* control, UINT kind) {
    if (control->m_hWnd != historyEdit_.m_hWnd)
        return CWnd::OnCtlColor(dc, control, kind);
    dc->SetBkColor(::GetSysColor(COLOR_WINDOW));
    return ::GetSysColorBrush(COLOR_WINDOW);
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
    history_ += withCarriageReturns(text);
    if (history_.size() > kLongestHistory) {
        history_.erase(0, std::min(history_.find('\n', history_.size() / 2), history_.size() / 2) + 1);
        cut_ = true;
    }
}

/// The line that the host hasn't ended stands before the one that is typed, so it isn't shown twice.
void CommandWindow::showHistory() {
    if (!historyEdit_.GetSafeHwnd())
        return;
    const std::size_t end = history_.rfind('\n') + 1; // 0 when there is none
    if (cut_) {
        historyEdit_.SetWindowText("");
        shown_ = 0;
    }
    if (shown_ != end) {
        // The last line's end would leave an empty line at the bottom.
        const std::string before = shown_ > 0 ? "\r\n" : "";
        const std::string more = before + history_.substr(shown_, end - shown_ - std::min<std::size_t>(end, 2));
        const int length = historyEdit_.GetWindowTextLength();
        historyEdit_.SetSel(length, length);
        historyEdit_.ReplaceSel(more.c_str());
        shown_ = end;
    }
    if (onHistory)
        onHistory();
    cut_ = false;
}

void CommandWindow::showPrompt(std::string_view prompt, AnswerForm form) {
    form_ = form;
    showHistory();
    const std::size_t begin = prompt.find_last_of('\n');
    std::string last(begin == std::string_view::npos ? prompt : prompt.substr(begin + 1));
    if (last == prompt_)
        return;
    prompt_ = std::move(last);
    layOut();
}

void CommandWindow::enterLine() {
    const std::string text = line_.text();
    clearLine();
    if (!text.empty() && (typed_.GetSize() == 0 || typed_[typed_.GetSize() - 1] != CString(std::string_view(text))))
        typed_.Add(CString(std::string_view(text)));
    if (typed_.GetSize() > kMostTyped)
        typed_.RemoveAt(0);
    recalled_ = typed_.GetSize();
    if (onEnter)
        onEnter(text + "\n");
}

/// All lines but the last are entered; the last one waits for its end.
void CommandWindow::paste(const std::string& text) {
    const std::size_t end = text.rfind('\n');
    if (end == std::string::npos) {
        line_.ReplaceSel(text.c_str(), TRUE);
        return;
    }
    int from = 0, to = 0;
    line_.GetSel(from, to);
    const std::string typed = line_.text();
    setLine(CString(text.substr(end + 1) + typed.substr(static_cast<std::size_t>(to))));
    if (onEnter)
        onEnter(typed.substr(0, static_cast<std::size_t>(from)) + text.substr(0, end + 1));
}

void CommandWindow::setLine(const CString& text) {
    line_.SetWindowText(text);
    line_.SetSel(text.GetLength(), text.GetLength());
}

void CommandWindow::recall(int step) {
    const int wanted = std::clamp(recalled_ + step, 0, typed_.GetSize());
    if (wanted == recalled_)
        return;
    recalled_ = wanted;
    setLine(wanted < typed_.GetSize() ? typed_[wanted] : CString());
}

/// Each press of the tab key offers the next name.
void CommandWindow::complete() {
    const std::string typed = line_.text();
    if (typed.empty() || typed.find_first_of(" (!\"") != std::string::npos || !completions)
        return;
    if (typed != offered_)
        stem_ = typed;
    const std::vector<std::string> names = completions(stem_);
    if (names.empty())
        return;
    auto next = std::find(names.begin(), names.end(), offered_);
    next = next == names.end() || typed != offered_ || next + 1 == names.end() ? names.begin() : next + 1;
    offered_ = *next;
    setLine(CString(std::string_view(offered_)));
}

void CommandWindow::copySelection() {
    int begin = 0, end = 0;
    historyEdit_.GetSel(begin, end);
    (begin != end ? historyEdit_ : line_).Copy();
}

bool CommandWindow::blankEnds() const {
    const std::string typed = line_.text();
    if (form_ == AnswerForm::Line || form_ == AnswerForm::LineOrExpression)
        return false;
    if (typed.starts_with('('))
        return isWholeExpression(typed);
    return form_ != AnswerForm::Name || std::count(typed.begin(), typed.end(), '"') % 2 == 0;
}

bool CommandWindow::handleKey(WPARAM key) {
    switch (key) {
    case VK_RETURN:
        enterLine();
        return true;
    case VK_UP:
    case VK_DOWN:
        recall(key == VK_UP ? -1 : 1);
        return true;
    case VK_TAB:
        complete();
        return true;
    default:
        return false;
    }
}

BOOL CommandWindow::PreTranslateMessage(MSG* message) {
    if (message->hwnd == line_.m_hWnd) {
        const bool alone = ::GetKeyState(VK_CONTROL) >= 0 && ::GetKeyState(VK_MENU) >= 0;
        if (message->message == WM_KEYDOWN && alone && handleKey(message->wParam))
            return TRUE;
        if (message->message == WM_CHAR && message->wParam == ' ' && blankEnds()) {
            enterLine();
            return TRUE;
        }
    }
    return CWnd::PreTranslateMessage(message);
}

} // namespace vndk::host
