// Keyboard and mouse of the edit control.
#include "controls/edit.h"

#include "user/message_queue.h"
#include "win32/dialog.h"
#include "win32/draw.h"
#include "win32/input.h"
#include "win32/menu.h"
#include "win32/queue.h"

#include <algorithm>

namespace vndk::win32 {
namespace {

constexpr UINT_PTR dragTimer = 1;
constexpr UINT dragPeriod = 50; // milliseconds between steps while the pointer is held outside

// Characters that the keys with Ctrl give.
constexpr WPARAM controlC = 3;
constexpr WPARAM controlV = 22;
constexpr WPARAM controlX = 24;
constexpr WPARAM controlZ = 26;
constexpr WPARAM controlBackspace = 127;

bool isDown(int key) { return GetKeyState(key) < 0; }

} // namespace

// ---- Keys ----------------------------------------------------------------------------------------------------------

/// Keys that a multi-line control in a dialog gives back to the dialog.
bool Edit::onDialogKey(WPARAM key) {
    if (!multiLine_ || !inDialog_)
        return false;
    switch (key) {
    case VK_ESCAPE:
        PostMessageA(GetParent(window()), WM_CLOSE, 0, 0);
        return true;
    case VK_TAB:
        if (!isDown(VK_CONTROL))
            SendMessageA(GetParent(window()), WM_NEXTDLGCTL, isDown(VK_SHIFT) ? TRUE : FALSE, FALSE);
        return true;
    case VK_RETURN:
        if (!isDown(VK_CONTROL) && !hasStyle(ES_WANTRETURN))
            pressDefaultButton();
        return true;
    default:
        return false;
    }
}

void Edit::pressDefaultButton() {
    const HWND dialog = GetParent(window());
    const auto answer = static_cast<DWORD_PTR>(SendMessageA(dialog, DM_GETDEFID, 0, 0));
    const int id = HIWORD(answer) == DC_HASDEFID ? LOWORD(answer) : IDOK;
    const HWND button = GetDlgItem(dialog, id);
    if (button == nullptr)
        return;
    SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(button), TRUE);
    PostMessageA(button, WM_KEYDOWN, VK_RETURN, 0);
}

bool Edit::onMovementKey(WPARAM key, bool extend, bool control) {
    const int line = caretLine();
    const EditLine row = layout_.line(line);
    switch (key) {
    case VK_LEFT:
        // Without Shift a selection collapses to its end first.
        if (!extend && !control && selectionBegin() != selectionEnd())
            moveCaret(selectionBegin(), false);
        else
            moveCaret(control ? wordLeft(caret_) : stepLeft(caret_), extend);
        break;
    case VK_RIGHT:
        if (!extend && !control && selectionBegin() != selectionEnd())
            moveCaret(selectionEnd(), false);
        else
            moveCaret(control ? wordRight(caret_) : stepRight(caret_), extend);
        break;
    case VK_HOME:
        moveCaret(control ? 0 : row.start, extend);
        break;
    case VK_END:
        moveCaret(control ? length() : row.start + row.length, extend, !control && row.soft);
        break;
    case VK_UP:
    case VK_DOWN:
        if (!multiLine_)
            moveCaret(key == VK_UP ? stepLeft(caret_) : stepRight(caret_), extend);
        else
            moveByLines(key == VK_UP ? -1 : 1, extend);
        return true;
    case VK_PRIOR:
    case VK_NEXT: {
        if (!multiLine_)
            return false;
        const int page = key == VK_PRIOR ? -visibleLines() : visibleLines();
        scrollTo(firstLine_ + page, scrollX_);
        moveByLines(page, extend);
        return true;
    }
    default:
        return false;
    }
    columnX_ = -1;
    return true;
}

void Edit::onDeleteKey(bool shift, bool control) {
    if (isReadOnly())
        return;
    if (selectionBegin() != selectionEnd()) {
        SendMessageA(window(), shift ? WM_CUT : WM_CLEAR, 0, 0);
        return;
    }
    if (shift) {
        onBackspace();
        return;
    }
    const EditLine& line = layout_.line(caretLine());
    const int lineEnd = line.start + line.length;
    deleteRange(caret_, control && caret_ < lineEnd ? lineEnd : stepRight(caret_));
}

bool Edit::onKeyDown(WPARAM key) {
    const bool shift = isDown(VK_SHIFT);
    const bool control = isDown(VK_CONTROL);
    if (onDialogKey(key) || onMovementKey(key, shift, control))
        return true;
    switch (key) {
    case VK_DELETE:
        onDeleteKey(shift, control);
        return true;
    case VK_INSERT:
        if (shift)
            SendMessageA(window(), WM_PASTE, 0, 0);
        else if (control)
            SendMessageA(window(), WM_COPY, 0, 0);
        return true;
    default:
        return false;
    }
}

// ---- Characters ----------------------------------------------------------------------------------------------------

void Edit::typeCharacter(char character) {
    if (isReadOnly())
        return;
    if (hasStyle(ES_NUMBER) && (character < '0' || character > '9')) {
        MessageBeep(0);
        return;
    }
    replaceSelection(std::string(1, character), Origin::typed, true);
}

/// Without ES_WANTRETURN the key belongs to the dialog; with Ctrl it is the text's all the same.
void Edit::onReturn(bool control) {
    if (!multiLine_ || isReadOnly())
        return;
    if (inDialog_ && !control && !hasStyle(ES_WANTRETURN))
        return;
    replaceSelection("\r\n", Origin::typed, true);
}

void Edit::onBackspace() {
    if (isReadOnly() || isDown(VK_CONTROL))
        return;
    if (selectionBegin() != selectionEnd())
        SendMessageA(window(), WM_CLEAR, 0, 0);
    else
        deleteRange(stepLeft(caret_), caret_);
}

void Edit::onCharacter(WPARAM character) {
    const bool control = isDown(VK_CONTROL);
    switch (character) {
    case VK_BACK:
        onBackspace();
        return;
    case '\r':
    case '\n':
        onReturn(control);
        return;
    case '\t':
        if (multiLine_ && (!inDialog_ || control))
            typeCharacter('\t');
        return;
    case controlC:
        SendMessageA(window(), WM_COPY, 0, 0);
        return;
    case controlV:
        SendMessageA(window(), WM_PASTE, 0, 0);
        return;
    case controlX:
        SendMessageA(window(), WM_CUT, 0, 0);
        return;
    case controlZ:
        SendMessageA(window(), WM_UNDO, 0, 0);
        return;
    default:
        if (character >= ' ' && character <= 0xFF && character != controlBackspace)
            typeCharacter(static_cast<char>(character));
        return;
    }
}

Edit::Handled Edit::handleKey(UINT message, WPARAM wParam, LPARAM lParam) {
    constexpr LPARAM altBit = 1 << 29;
    switch (message) {
    case WM_KEYDOWN:
        if (onKeyDown(wParam))
            return wParam == VK_RETURN ? 1 : 0;
        return wParam == VK_RETURN ? Handled(1) : std::nullopt;
    case WM_CHAR:
        onCharacter(wParam);
        return 0;
    case WM_SYSKEYDOWN:
        if (wParam != VK_BACK || (lParam & altBit) == 0)
            return std::nullopt;
        SendMessageA(window(), EM_UNDO, 0, 0);
        return 0;
    case WM_SYSCHAR:
        // The character of the same stroke: the dialog must not beep at it.
        return wParam == VK_BACK && (lParam & altBit) != 0 ? Handled(0) : std::nullopt;
    default:
        return std::nullopt;
    }
}

// ---- Mouse ---------------------------------------------------------------------------------------------------------

int Edit::hitTest(POINT point, bool& afterWrap) const {
    int line = 0;
    if (multiLine_) {
        const int down = static_cast<int>(point.y) - static_cast<int>(format_.top);
        const int height = measure_.lineHeight;
        line = firstLine_ + (down >= 0 ? down / height : (down - height + 1) / height);
        line = std::clamp(line, 0, layout_.count() - 1);
    }
    const EditLine& row = layout_.line(line);
    const int count = measure_.nearest(lineText(line), point.x - lineLeft(line));
    afterWrap = row.soft && count == row.length;
    return row.start + count;
}

void Edit::onButtonDown(POINT point, bool extend) {
    if (!hasFocus_)
        SetFocus(window());
    if (!alive())
        return;
    SetCapture(window());
    dragging_ = true;
    bool afterWrap = false;
    const int position = hitTest(point, afterWrap);
    columnX_ = -1;
    moveCaret(position, extend, afterWrap);
}

/// While the pointer is held outside, a timer goes on scrolling that way.
void Edit::onDrag(POINT point) {
    bool afterWrap = false;
    const int position = hitTest(point, afterWrap);
    moveCaret(position, true, afterWrap);
    const RECT client = clientRect();
    const bool outside =
        point.x < client.left || point.x >= client.right || point.y < client.top || point.y >= client.bottom;
    if (outside)
        setSystemTimer(window(), dragTimer, dragPeriod, nullptr);
    else
        killSystemTimer(window(), dragTimer);
}

void Edit::endDrag() {
    if (!dragging_)
        return;
    dragging_ = false;
    killSystemTimer(window(), dragTimer);
    if (GetCapture() == window())
        ReleaseCapture();
}

bool Edit::overClient(LPARAM place) const {
    POINT point{GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    ScreenToClient(window(), &point);
    const RECT client = clientRect();
    return PtInRect(&client, point) != FALSE;
}

/// A right click, or the menu key: then the menu stands at the control's middle.
void Edit::showMenu(LPARAM place) {
    POINT point{GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    const RECT client = clientRect();
    if (place == -1) {
        point = {client.right / 2, client.bottom / 2};
        ClientToScreen(window(), &point);
    }
    if (!hasFocus_)
        SetFocus(window());
    if (!alive())
        return;
    const bool selected = selectionBegin() != selectionEnd();
    const bool readable = selected && measure_.password == '\0';
    const bool writable = !isReadOnly();
    const bool text = IsClipboardFormatAvailable(CF_TEXT) != FALSE;
    const HMENU menu = CreatePopupMenu();
    const auto add = [menu](UINT id, const char* label, bool enabled) {
        AppendMenuA(menu, MF_STRING | (enabled ? 0U : MF_GRAYED), id, label);
    };
    add(WM_UNDO, "&Undo", writable && !undo_.isEmpty());
    AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
    add(WM_CUT, "Cu&t", readable && writable);
    add(WM_COPY, "&Copy", readable);
    add(WM_PASTE, "&Paste", writable && text);
    add(WM_CLEAR, "&Delete", selected && writable);
    AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
    add(EM_SETSEL, "Select &All", length() > 0 && selectionEnd() - selectionBegin() < length());
    const auto picked = static_cast<UINT>(
        TrackPopupMenu(menu, TPM_LEFTALIGN | TPM_RIGHTBUTTON | TPM_RETURNCMD, point.x, point.y, 0, window(), nullptr));
    DestroyMenu(menu);
    if (!alive() || picked == 0)
        return;
    SendMessageA(window(), picked, 0, picked == EM_SETSEL ? -1 : 0);
}

Edit::Handled Edit::handleMouse(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
    case WM_LBUTTONDOWN:
        onButtonDown(point, (wParam & MK_SHIFT) != 0);
        return 0;
    case WM_LBUTTONDBLCLK: {
        bool afterWrap = false;
        selectWord(hitTest(point, afterWrap));
        return 0;
    }
    case WM_MOUSEMOVE:
        if (dragging_ && GetCapture() == window())
            onDrag(point);
        return 0;
    case WM_LBUTTONUP:
        endDrag();
        return 0;
    case WM_CAPTURECHANGED:
        if (reinterpret_cast<HWND>(lParam) != window())
            endDrag();
        return 0;
    case WM_SYSTIMER:
        if (wParam == dragTimer && dragging_) {
            POINT pointer{};
            GetCursorPos(&pointer);
            ScreenToClient(window(), &pointer);
            onDrag(pointer);
            return 0;
        }
        return std::nullopt;
    case WM_CONTEXTMENU:
        // The frame's bars have menus of their own.
        if (lParam != -1 && !overClient(lParam))
            return std::nullopt;
        showMenu(lParam);
        return 0;
    default:
        return std::nullopt;
    }
}

} // namespace vndk::win32
