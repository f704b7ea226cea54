#include "support/message_recorder.h"

#include "win32/messages.h"

#include <algorithm>
#include <cassert>
#include <sstream>

namespace vndk::test {

namespace {

MessageRecorder* current = nullptr;

const std::map<UINT, const char*>& messageNames() {
#define VNDK_NAME(message)                                                                                             \
    { message, #message }
    static const std::map<UINT, const char*> names{VNDK_NAME(WM_NULL),
                                                   VNDK_NAME(WM_CREATE),
                                                   VNDK_NAME(WM_DESTROY),
                                                   VNDK_NAME(WM_MOVE),
                                                   VNDK_NAME(WM_SIZE),
                                                   VNDK_NAME(WM_ACTIVATE),
                                                   VNDK_NAME(WM_SETFOCUS),
                                                   VNDK_NAME(WM_KILLFOCUS),
                                                   VNDK_NAME(WM_ENABLE),
                                                   VNDK_NAME(WM_SETREDRAW),
                                                   VNDK_NAME(WM_SETTEXT),
                                                   VNDK_NAME(WM_GETTEXT),
                                                   VNDK_NAME(WM_GETTEXTLENGTH),
                                                   VNDK_NAME(WM_PAINT),
                                                   VNDK_NAME(WM_CLOSE),
                                                   VNDK_NAME(WM_QUERYOPEN),
                                                   VNDK_NAME(WM_QUIT),
                                                   VNDK_NAME(WM_ERASEBKGND),
                                                   VNDK_NAME(WM_SHOWWINDOW),
                                                   VNDK_NAME(WM_ACTIVATEAPP),
                                                   VNDK_NAME(WM_CANCELMODE),
                                                   VNDK_NAME(WM_SETCURSOR),
                                                   VNDK_NAME(WM_MOUSEACTIVATE),
                                                   VNDK_NAME(WM_CHILDACTIVATE),
                                                   VNDK_NAME(WM_GETMINMAXINFO),
                                                   VNDK_NAME(WM_NEXTDLGCTL),
                                                   VNDK_NAME(WM_DRAWITEM),
                                                   VNDK_NAME(WM_MEASUREITEM),
                                                   VNDK_NAME(WM_DELETEITEM),
                                                   VNDK_NAME(WM_VKEYTOITEM),
                                                   VNDK_NAME(WM_CHARTOITEM),
                                                   VNDK_NAME(WM_SETFONT),
                                                   VNDK_NAME(WM_GETFONT),
                                                   VNDK_NAME(WM_COMPAREITEM),
                                                   VNDK_NAME(WM_WINDOWPOSCHANGING),
                                                   VNDK_NAME(WM_WINDOWPOSCHANGED),
                                                   VNDK_NAME(WM_NOTIFY),
                                                   VNDK_NAME(WM_HELP),
                                                   VNDK_NAME(WM_CONTEXTMENU),
                                                   VNDK_NAME(WM_STYLECHANGING),
                                                   VNDK_NAME(WM_STYLECHANGED),
                                                   VNDK_NAME(WM_GETICON),
                                                   VNDK_NAME(WM_SETICON),
                                                   VNDK_NAME(WM_NCCREATE),
                                                   VNDK_NAME(WM_NCDESTROY),
                                                   VNDK_NAME(WM_NCCALCSIZE),
                                                   VNDK_NAME(WM_NCHITTEST),
                                                   VNDK_NAME(WM_NCPAINT),
                                                   VNDK_NAME(WM_NCACTIVATE),
                                                   VNDK_NAME(WM_GETDLGCODE),
                                                   VNDK_NAME(WM_NCMOUSEMOVE),
                                                   VNDK_NAME(WM_NCLBUTTONDOWN),
                                                   VNDK_NAME(WM_NCLBUTTONUP),
                                                   VNDK_NAME(WM_NCLBUTTONDBLCLK),
                                                   VNDK_NAME(WM_NCRBUTTONDOWN),
                                                   VNDK_NAME(WM_NCRBUTTONUP),
                                                   VNDK_NAME(WM_KEYDOWN),
                                                   VNDK_NAME(WM_KEYUP),
                                                   VNDK_NAME(WM_CHAR),
                                                   VNDK_NAME(WM_SYSKEYDOWN),
                                                   VNDK_NAME(WM_SYSKEYUP),
                                                   VNDK_NAME(WM_SYSCHAR),
                                                   VNDK_NAME(WM_INITDIALOG),
                                                   VNDK_NAME(WM_COMMAND),
                                                   VNDK_NAME(WM_SYSCOMMAND),
                                                   VNDK_NAME(WM_TIMER),
                                                   VNDK_NAME(WM_HSCROLL),
                                                   VNDK_NAME(WM_VSCROLL),
                                                   VNDK_NAME(WM_INITMENU),
                                                   VNDK_NAME(WM_INITMENUPOPUP),
                                                   VNDK_NAME(WM_MENUSELECT),
                                                   VNDK_NAME(WM_MENUCHAR),
                                                   VNDK_NAME(WM_ENTERIDLE),
                                                   VNDK_NAME(WM_UNINITMENUPOPUP),
                                                   VNDK_NAME(WM_CTLCOLORMSGBOX),
                                                   VNDK_NAME(WM_CTLCOLOREDIT),
                                                   VNDK_NAME(WM_CTLCOLORLISTBOX),
                                                   VNDK_NAME(WM_CTLCOLORBTN),
                                                   VNDK_NAME(WM_CTLCOLORDLG),
                                                   VNDK_NAME(WM_CTLCOLORSCROLLBAR),
                                                   VNDK_NAME(WM_CTLCOLORSTATIC),
                                                   VNDK_NAME(WM_MOUSEMOVE),
                                                   VNDK_NAME(WM_LBUTTONDOWN),
                                                   VNDK_NAME(WM_LBUTTONUP),
                                                   VNDK_NAME(WM_LBUTTONDBLCLK),
                                                   VNDK_NAME(WM_RBUTTONDOWN),
                                                   VNDK_NAME(WM_RBUTTONUP),
                                                   VNDK_NAME(WM_RBUTTONDBLCLK),
                                                   VNDK_NAME(WM_MBUTTONDOWN),
                                                   VNDK_NAME(WM_MBUTTONUP),
                                                   VNDK_NAME(WM_MOUSEWHEEL),
                                                   VNDK_NAME(WM_PARENTNOTIFY),
                                                   VNDK_NAME(WM_ENTERMENULOOP),
                                                   VNDK_NAME(WM_EXITMENULOOP),
                                                   VNDK_NAME(WM_SIZING),
                                                   VNDK_NAME(WM_CAPTURECHANGED),
                                                   VNDK_NAME(WM_MOVING),
                                                   VNDK_NAME(WM_ENTERSIZEMOVE),
                                                   VNDK_NAME(WM_EXITSIZEMOVE),
                                                   VNDK_NAME(WM_MOUSEHOVER),
                                                   VNDK_NAME(WM_MOUSELEAVE),
                                                   VNDK_NAME(WM_PRINT),
                                                   VNDK_NAME(WM_PRINTCLIENT)};
#undef VNDK_NAME
    return names;
}

std::string nameOfHook(UINT code) {
    switch (static_cast<int>(code)) {
    case HCBT_MOVESIZE:
        return "HCBT_MOVESIZE";
    case HCBT_MINMAX:
        return "HCBT_MINMAX";
    case HCBT_CREATEWND:
        return "HCBT_CREATEWND";
    case HCBT_DESTROYWND:
        return "HCBT_DESTROYWND";
    case HCBT_ACTIVATE:
        return "HCBT_ACTIVATE";
    case HCBT_SYSCOMMAND:
        return "HCBT_SYSCOMMAND";
    case HCBT_SETFOCUS:
        return "HCBT_SETFOCUS";
    default:
        return "hook code " + std::to_string(code);
    }
}

/// Messages that say nothing about the order of things, and come whenever something looks at a window.
const std::set<UINT> silent{WM_NCHITTEST, WM_GETTEXT, WM_GETTEXTLENGTH, WM_GETICON, WM_NULL, WM_GETDLGCODE};

} // namespace

std::string nameOfMessage(UINT message) {
    if (const auto found = messageNames().find(message); found != messageNames().end())
        return found->second;
    std::ostringstream text;
    text << "0x" << std::hex << message;
    return text.str();
}

MessageRecorder::MessageRecorder() : ignored_(silent) {
    assert(current == nullptr && "there is one recorder at a time");
    current = this;
    getMessageHook_ = SetWindowsHookExA(WH_GETMESSAGE, &MessageRecorder::onGetMessage, nullptr, GetCurrentThreadId());
}

MessageRecorder::~MessageRecorder() {
    UnhookWindowsHookEx(getMessageHook_);
    if (cbtHook_ != nullptr)
        UnhookWindowsHookEx(cbtHook_);
    for (const auto& [window, procedure] : watched_)
        if (IsWindow(window) != FALSE)
            SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
    current = nullptr;
}

void MessageRecorder::registerClass(LPCSTR name, UINT style) {
    WNDCLASSA recorded{};
    recorded.style = style;
    recorded.lpfnWndProc = &MessageRecorder::recordingProcedure;
    recorded.lpszClassName = name;
    RegisterClassA(&recorded);
}

void MessageRecorder::watch(HWND window) {
    const LONG_PTR former =
        SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&MessageRecorder::recordingProcedure));
    if (former != 0)
        watched_[window] = reinterpret_cast<WNDPROC>(former);
}

void MessageRecorder::watchHooks() {
    if (cbtHook_ == nullptr)
        cbtHook_ = SetWindowsHookExA(WH_CBT, &MessageRecorder::onCbt, nullptr, GetCurrentThreadId());
}

void MessageRecorder::onMessage(UINT message, Handler handler) {
    if (handler)
        handlers_[message] = std::move(handler);
    else
        handlers_.erase(message);
}

int MessageRecorder::count(UINT message, HWND window) const {
    return static_cast<int>(std::count_if(messages_.begin(), messages_.end(), [&](const RecordedMessage& each) {
        return !each.hook && each.message == message && (window == nullptr || each.window == window);
    }));
}

LRESULT CALLBACK MessageRecorder::recordingProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    // Windows outlive the recorder when a test leaves them to the desktop.
    if (current == nullptr)
        return DefWindowProcA(window, message, wParam, lParam);
    return current->handle(window, message, wParam, lParam);
}

LRESULT CALLBACK MessageRecorder::onGetMessage(int code, WPARAM wParam, LPARAM lParam) {
    if (code == HC_ACTION && wParam == PM_REMOVE && current != nullptr)
        current->taken_.push_back(*reinterpret_cast<const MSG*>(lParam));
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

LRESULT CALLBACK MessageRecorder::onCbt(int code, WPARAM wParam, LPARAM lParam) {
    if (current != nullptr) {
        RecordedMessage record;
        record.message = static_cast<UINT>(code);
        record.wParam = wParam;
        record.lParam = lParam;
        record.hook = true;
        current->messages_.push_back(record);
    }
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

bool MessageRecorder::wasPosted(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto found = std::find_if(taken_.begin(), taken_.end(), [&](const MSG& each) {
        return each.hwnd == window && each.message == message && each.wParam == wParam && each.lParam == lParam;
    });
    if (found == taken_.end())
        return false;
    // What was taken before it never reached a recorded window.
    taken_.erase(taken_.begin(), found + 1);
    return true;
}

LRESULT MessageRecorder::handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const bool fromQueue = wasPosted(window, message, wParam, lParam);
    const std::size_t index = messages_.size();
    const bool recorded = ignored_.count(message) == 0;
    if (recorded) {
        RecordedMessage record{window, message, wParam, lParam, 0, fromQueue, inDefault_ > 0, false};
        if ((message == WM_WINDOWPOSCHANGING || message == WM_WINDOWPOSCHANGED) && lParam != 0)
            record.wParam = reinterpret_cast<const WINDOWPOS*>(lParam)->flags;
        messages_.push_back(record);
    }
    const LRESULT result = passOn(window, message, wParam, lParam);
    // A handler may have cleared the list meanwhile.
    if (current == this && recorded && index < messages_.size() && messages_[index].message == message &&
        messages_[index].window == window)
        messages_[index].result = result;
    return result;
}

LRESULT MessageRecorder::passOn(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (const auto found = handlers_.find(message); found != handlers_.end()) {
        // The handler may replace itself.
        const Handler handler = found->second;
        const int outer = inDefault_;
        inDefault_ = 0;
        const std::optional<LRESULT> answered = handler(window, message, wParam, lParam);
        inDefault_ = outer;
        if (answered.has_value())
            return *answered;
    }
    const auto watched = watched_.find(window);
    const WNDPROC procedure = watched != watched_.end() ? watched->second : &DefWindowProcA;
    ++inDefault_;
    const LRESULT result = CallWindowProcA(procedure, window, message, wParam, lParam);
    --inDefault_;
    if (message == WM_NCDESTROY)
        watched_.erase(window);
    return result;
}

bool MessageRecorder::fits(const ExpectedMessage& expected, const RecordedMessage& recorded) const {
    const unsigned flags = expected.flags;
    if (expected.message != recorded.message || ((flags & hook) != 0) != recorded.hook)
        return false;
    if (!recorded.hook && ((flags & parent) != 0) != (parent_ != nullptr && recorded.window == parent_))
        return false;
    if (((flags & sent) != 0 && recorded.posted) || ((flags & posted) != 0 && !recorded.posted))
        return false;
    if ((flags & defwinproc) != 0 && !recorded.byDefault)
        return false;
    return ((flags & wparam) == 0 || expected.wParam == recorded.wParam) &&
           ((flags & lparam) == 0 || expected.lParam == recorded.lParam) &&
           ((flags & answer) == 0 || expected.result == recorded.result);
}

std::string MessageRecorder::listOf(const std::vector<ExpectedMessage>& expected, std::size_t mismatch) const {
    std::ostringstream text;
    for (std::size_t index = 0; index < expected.size(); ++index) {
        const ExpectedMessage& each = expected[index];
        text << (index == mismatch ? "  > " : "    ")
             << ((each.flags & hook) != 0 ? nameOfHook(each.message) : nameOfMessage(each.message)) << std::hex;
        if ((each.flags & wparam) != 0)
            text << " wParam 0x" << each.wParam;
        if ((each.flags & lparam) != 0)
            text << " lParam 0x" << each.lParam;
        if ((each.flags & parent) != 0)
            text << " at the parent";
        if ((each.flags & posted) != 0)
            text << " posted";
        if ((each.flags & optional) != 0)
            text << " (optional)";
        text << std::dec << "\n";
    }
    return text.str();
}

std::string MessageRecorder::listOfRecorded(std::size_t mismatch) const {
    std::ostringstream text;
    for (std::size_t index = 0; index < messages_.size(); ++index) {
        const RecordedMessage& each = messages_[index];
        text << (index == mismatch ? "  > " : "    ")
             << (each.hook ? nameOfHook(each.message) : nameOfMessage(each.message)) << std::hex << " wParam 0x"
             << each.wParam << " lParam 0x" << each.lParam << " window 0x" << reinterpret_cast<UINT_PTR>(each.window)
             << (parent_ != nullptr && each.window == parent_ ? " (parent)" : "") << (each.posted ? " posted" : "")
             << (each.byDefault ? " by default" : "") << std::dec << "\n";
    }
    return text.str();
}

testing::AssertionResult MessageRecorder::saw(const std::vector<ExpectedMessage>& expected) {
    std::size_t at = 0;
    std::size_t row = 0;
    for (; row < expected.size(); ++row) {
        if (at < messages_.size() && fits(expected[row], messages_[at]))
            ++at;
        else if ((expected[row].flags & optional) == 0)
            break;
    }
    if (row == expected.size() && at == messages_.size()) {
        clear();
        return testing::AssertionSuccess();
    }
    const testing::AssertionResult result = testing::AssertionFailure() << "expected:\n"
                                                                        << listOf(expected, row) << "came:\n"
                                                                        << listOfRecorded(at);
    clear();
    return result;
}

} // namespace vndk::test
