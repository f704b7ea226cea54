// Keyboard and mouse of a rich edit.
#include "controls/rich_edit.h"
#include "win32/dialog.h"
#include "win32/input.h"
#include "win32/scrollbar.h"

#include <algorithm>

namespace vndk::win32 {
namespace {

constexpr int linesPerNotch = 3;

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\v'; }
bool down(int key) { return GetKeyState(key) < 0; }

} // namespace

int RichEdit::wordStart(int position) const {
    while (position > 0 && isBlank(document_.at(position - 1)))
        --position;
    while (position > 0 && !isBlank(document_.at(position - 1)))
        --position;
    return position;
}

int RichEdit::wordEnd(int position) const {
    const int length = document_.length();
    while (position < length && !isBlank(document_.at(position)))
        ++position;
    while (position < length && isBlank(document_.at(position)))
        ++position;
    return position;
}

void RichEdit::moveCaret(int position, bool extend) {
    wishedX_ = -1;
    select(extend ? anchor_ : position, position, true);
}

void RichEdit::moveVertically(int lines, bool extend) {
    const int from = layout_.lineOf(caret_);
    const int to = std::clamp(from + lines, 0, layout_.lineCount() - 1);
    const int column = wishedX_ >= 0 ? wishedX_ : static_cast<int>(layout_.placeOf(document_, caret_).x);
    const int position = layout_.positionAt(document_, {column, layout_.line(to).top});
    moveCaret(to == from ? (lines < 0 ? 0 : document_.length()) : position, extend);
    wishedX_ = column;
}

/// In a text that can only be read, the keys that would move the caret move the view.
void RichEdit::scrollByKey(WPARAM key) {
    switch (key) {
    case VK_UP:
        scrollLines(-1);
        break;
    case VK_DOWN:
        scrollLines(1);
        break;
    case VK_PRIOR:
        onScroll(true, SB_PAGEUP);
        break;
    case VK_NEXT:
        onScroll(true, SB_PAGEDOWN);
        break;
    case VK_HOME:
        onScroll(true, SB_TOP);
        break;
    case VK_END:
        onScroll(true, SB_BOTTOM);
        break;
    default:
        break;
    }
}

bool RichEdit::onShortcut(WPARAM key) {
    switch (key) {
    case 'A':
        select(0, document_.length(), false);
        return true;
    case 'C':
    case VK_INSERT:
        copy();
        return true;
    case 'X':
        if (!refuses()) {
            copy();
            if (!selection().empty())
                replaceSelection({}, true, true);
        }
        return true;
    case 'V':
        paste();
        return true;
    case 'Z':
        if (!refuses())
            undo();
        return true;
    default:
        return false;
    }
}

bool RichEdit::onKey(WPARAM key) {
    const bool shift = down(VK_SHIFT);
    const bool control = down(VK_CONTROL);
    if (control && !shift && onShortcut(key))
        return true;
    if (readOnly() && !shift && multiLine() &&
        (key == VK_UP || key == VK_DOWN || key == VK_PRIOR || key == VK_NEXT || key == VK_HOME || key == VK_END)) {
        scrollByKey(key);
        return true;
    }
    const int line = layout_.lineOf(caret_);
    const int page = std::max(static_cast<int>(clientRect().bottom) / std::max(lineHeightAt(scroll_.y), 1) - 1, 1);
    switch (key) {
    case VK_LEFT:
        moveCaret(control ? wordStart(caret_) : !shift && !selection().empty() ? selection().begin : caret_ - 1, shift);
        return true;
    case VK_RIGHT:
        moveCaret(control ? wordEnd(caret_) : !shift && !selection().empty() ? selection().end : caret_ + 1, shift);
        return true;
    case VK_UP:
        moveVertically(-1, shift);
        return true;
    case VK_DOWN:
        moveVertically(1, shift);
        return true;
    case VK_PRIOR:
        moveVertically(-page, shift);
        return true;
    case VK_NEXT:
        moveVertically(page, shift);
        return true;
    case VK_HOME:
        moveCaret(control ? 0 : layout_.line(line).begin, shift);
        return true;
    case VK_END:
        moveCaret(control ? document_.length() : layout_.visibleEnd(document_, line), shift);
        return true;
    case VK_BACK:
        eraseBeside(true, control);
        return true;
    case VK_DELETE:
        if (shift)
            return onShortcut('X');
        eraseBeside(false, control);
        return true;
    case VK_INSERT:
        if (shift)
            paste();
        return true;
    case VK_RETURN:
        // In a dialog the default button takes it, unless the control wants it for itself.
        return false;
    default:
        return false;
    }
}

void RichEdit::onButtonDown(POINT point, bool extend) {
    if (!focused())
        SetFocus(window());
    if (!alive())
        return;
    selecting_ = true;
    SetCapture(window());
    moveCaret(positionAt(point), extend);
}

void RichEdit::onDoubleClick(POINT point) {
    const int position = positionAt(point);
    const int begin = position < document_.length() && !isBlank(document_.at(position)) ? wordStart(position + 1)
                                                                                        : wordStart(position);
    select(begin, wordEnd(begin), true);
}

void RichEdit::onMouseMove(POINT point) {
    if (selecting_)
        moveCaret(positionAt(point), true);
}

void RichEdit::onWheel(int delta) { scrollLines(-delta * linesPerNotch / WHEEL_DELTA); }

void RichEdit::onFocus(bool gained) {
    if (gained && !readOnly()) {
        CreateCaret(window(), nullptr, 1, layout_.line(layout_.lineOf(caret_)).height);
        placeCaret();
        ShowCaret(window());
    } else if (!gained) {
        DestroyCaret();
    }
    if (!selection().empty())
        invalidate(nullptr, false);
    notifyCommand(gained ? EN_SETFOCUS : EN_KILLFOCUS);
}

LRESULT RichEdit::dialogCode(const MSG* message) const {
    LRESULT code = DLGC_WANTCHARS | DLGC_WANTARROWS | DLGC_HASSETSEL;
    if (!multiLine() || message == nullptr || message->message != WM_KEYDOWN)
        return multiLine() ? code | DLGC_WANTALLKEYS : code;
    const WPARAM key = message->wParam;
    if (key == VK_RETURN && hasStyle(ES_WANTRETURN) && !readOnly())
        return code | DLGC_WANTMESSAGE;
    const bool forDialog = key == VK_RETURN || key == VK_ESCAPE || key == VK_TAB;
    return forDialog ? code : code | DLGC_WANTMESSAGE;
}

bool RichEdit::handleInput(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    result = 0;
    switch (message) {
    case WM_GETDLGCODE:
        result = dialogCode(reinterpret_cast<const MSG*>(lParam));
        return true;
    case WM_KEYDOWN:
        return onKey(wParam);
    case WM_CHAR:
        if (wParam != VK_BACK)
            typeCharacter(wParam);
        return true;
    case WM_LBUTTONDOWN:
        onButtonDown(point, (wParam & MK_SHIFT) != 0);
        return true;
    case WM_LBUTTONDBLCLK:
        onDoubleClick(point);
        return true;
    case WM_LBUTTONUP:
        if (selecting_) {
            selecting_ = false;
            ReleaseCapture();
        }
        return true;
    case WM_CAPTURECHANGED:
        selecting_ = false;
        return true;
    case WM_MOUSEMOVE:
        onMouseMove(point);
        return true;
    case WM_MOUSEWHEEL:
        onWheel(static_cast<SHORT>(HIWORD(wParam)));
        return true;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        onFocus(message == WM_SETFOCUS);
        return true;
    case WM_VSCROLL:
    case WM_HSCROLL:
        onScroll(message == WM_VSCROLL, LOWORD(wParam));
        return true;
    default:
        return false;
    }
}

} // namespace vndk::win32
