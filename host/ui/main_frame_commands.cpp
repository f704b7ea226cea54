// The frame's menu and its keys.
#include "db/block_reference.h"
#include "db/open.h"
#include "ui/canvas.h"
#include "ui/command_window.h"
#include "ui/document_tabs.h"
#include "ui/main_frame.h"
#include "ui/menu_commands.h"
#include "ui/resource.h"
#include "ui/status_line.h"
#include "ui/text_window.h"
#include "win32/accelerators.h"

#include <array>
#include <memory>
#include <string_view>

namespace vndk::host {

namespace {

constexpr const char* kAbout = "vondrake\n\n"
                               "Intelligent Blocks in drawings of release 2000.\n"
                               "Free software under the MIT licence.";

std::string classOf(HWND window) {
    std::array<char, 64> name{};
    ::GetClassNameA(window, name.data(), static_cast<int>(name.size()));
    return name.data();
}

bool isDown(int key) { return ::GetKeyState(key) < 0; }

} // namespace

// Menu.

void MainFrame::OnTypedCommand(UINT id) {
    if (const MenuCommand* const row = findMenuCommand(id))
        type(row->text);
}

void MainFrame::OnUpdateTypedCommand(CCmdUI* state) {
    const MenuCommand* const row = findMenuCommand(state->m_nID);
    state->Enable(row && canAct(*row, host_));
}

void MainFrame::OnFrameCommand(UINT id) {
    switch (id) {
    case ID_VIEW_TEXT_WINDOW:
        if (textWindow_->isOpen())
            textWindow_->hide();
        else
            textWindow_->show(commandWindow_->history());
        break;
    case ID_EDIT_COPY_TEXT:
        if (textWindow_->isOpen())
            textWindow_->copy();
        else
            commandWindow_->copySelection();
        break;
    case ID_EDIT_PASTE_TEXT:
        commandWindow_->line().SetFocus();
        commandWindow_->line().Paste();
        break;
    case ID_WINDOW_NEXT:
        return step(1);
    case ID_WINDOW_PREVIOUS:
        return step(-1);
    case ID_HELP_COMMANDS:
        return showHelp();
    case ID_HELP_PROGRAM:
        ::MessageBoxA(m_hWnd, kAbout, "About vondrake", MB_OK | MB_ICONINFORMATION);
        break;
    case ID_MODE_ORTHO:
        statusLine_->toggle(0);
        break;
    case ID_MODE_SNAP:
        statusLine_->toggle(1);
        break;
    default:
        break;
    }
}

void MainFrame::OnUpdateFrameCommand(CCmdUI* state) {
    switch (state->m_nID) {
    case ID_WINDOW_NEXT:
    case ID_WINDOW_PREVIOUS:
        state->Enable(tabs_->neighbour(1) != nullptr);
        break;
    case ID_EDIT_PASTE_TEXT:
        state->Enable(::IsClipboardFormatAvailable(CF_TEXT));
        break;
    case ID_MODE_ORTHO:
    case ID_MODE_SNAP:
        state->Enable(host_.documents().curDocument() != nullptr);
        break;
    case ID_VIEW_TEXT_WINDOW:
        state->SetCheck(textWindow_->isOpen() ? 1 : 0);
        break;
    default:
        state->Enable(TRUE);
        break;
    }
}

void MainFrame::step(int tabs) {
    if (AcApDocument* const document = tabs_->neighbour(tabs))
        whenIdle([this, document] { showDocument(document); });
}

void MainFrame::showDocument(AcApDocument* document) {
    const std::unique_ptr<AcApDocumentIterator> open(host_.documents().newAcApDocumentIterator());
    for (; !open->done(); open->step())
        if (open->document() == document)
            host_.documents().activateDocument(document);
    canvas_->follow();
    refresh();
}

void MainFrame::showHelp() {
    host_.freshLine();
    host_.print(commandsAndKeys(host_));
    commandWindow_->showHistory();
    textWindow_->show(commandWindow_->history());
}

// Keys.

/// What a key means depends on where it arrives.
MainFrame::KeyPlace MainFrame::placeOf(HWND window) const {
    if (!window)
        return KeyPlace::Elsewhere;
    if (window == commandWindow_->line().m_hWnd)
        return KeyPlace::Line;
    if (::IsChild(textWindow_->m_hWnd, window) || commandWindow_->isHistory(window))
        return KeyPlace::Reading;
    const HWND top = ::GetAncestor(window, GA_ROOT);
    if (top != m_hWnd && classOf(top) == "#32770")
        return KeyPlace::Elsewhere; // a dialog has its keys for itself
    const std::string name = classOf(window);
    if (name == "Edit" || name == "EDIT" || name.starts_with("RichEdit") || name.starts_with("RICHEDIT"))
        return KeyPlace::Edit;
    for (const CWnd* part : {static_cast<const CWnd*>(canvas_.get()), static_cast<const CWnd*>(tabs_.get()),
                             static_cast<const CWnd*>(statusLine_.get()),
                             static_cast<const CWnd*>(commandWindow_.get()), static_cast<const CWnd*>(this)})
        if (window == part->m_hWnd || (part != this && ::IsChild(part->m_hWnd, window)))
            return KeyPlace::Drawing;
    return KeyPlace::Bar;
}

/// Typing anywhere reaches the command line. True when the line has taken the key already; else it is on its way.
bool MainFrame::giveToLine(MSG& message, KeyPlace place) {
    const bool typed = message.message == WM_CHAR && message.wParam > (place == KeyPlace::Bar ? ' ' : ' ' - 1) &&
                       message.wParam != 127;
    const bool enters = message.message == WM_KEYDOWN && message.wParam == VK_RETURN && place == KeyPlace::Reading;
    const bool any = place == KeyPlace::Drawing &&
                     (message.message == WM_KEYDOWN || message.message == WM_CHAR || message.message == WM_KEYUP);
    if (!typed && !enters && !any)
        return false;
    commandWindow_->line().SetFocus();
    message.hwnd = commandWindow_->line().m_hWnd;
    return commandWindow_->PreTranslateMessage(&message) != FALSE;
}

/// Del erases unless the line has something to be deleted or a command waits for another answer.
bool MainFrame::erases(const MSG& message, KeyPlace place) const {
    return message.message == WM_KEYDOWN && message.wParam == VK_DELETE && !isDown(VK_CONTROL) && !isDown(VK_SHIFT) &&
           (place == KeyPlace::Drawing || place == KeyPlace::Reading ||
            (place == KeyPlace::Line && commandWindow_->line().text().empty())) &&
           host_.documents().curDocument() && !isBusy();
}

/// A block with attributes is opened by a double click; other entities have nothing to be opened for.
void MainFrame::editAttributes(AcDbObjectId entity) {
    const AcDbObjectPointer<AcDbBlockReference> reference(entity);
    if (!reference || reference->attributes().empty() || isBusy())
        return;
    host_.commandLine().input().send("_EATTEDIT\n");
    host_.commandLine().input().pick(lisp::Value::ename(static_cast<std::uint64_t>(entity.asOldId())));
    host_.wake();
}

/// The wheel is for what lies under the mouse, whatever has the focus.
bool MainFrame::takesWheel(const MSG& message) const {
    if (message.message != WM_MOUSEWHEEL || IsWindowEnabled() == FALSE)
        return false;
    const HWND under = ::WindowFromPoint(message.pt);
    if (!under || under == message.hwnd || placeOf(under) == KeyPlace::Elsewhere)
        return false;
    ::SendMessageA(under, WM_MOUSEWHEEL, message.wParam, message.lParam);
    return true;
}

bool MainFrame::takesFirst(MSG& message) {
    if (takesWheel(message))
        return true;
    return keys_ && (message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN) && IsWindowEnabled() != FALSE &&
           placeOf(message.hwnd) == KeyPlace::Bar && ::TranslateAcceleratorA(m_hWnd, keys_, &message) != 0;
}

BOOL MainFrame::PreTranslateMessage(MSG* message) {
    if (takesWheel(*message))
        return TRUE;
    // Who points into the drawing goes on there by keys, too.
    const bool press = message->message == WM_LBUTTONDOWN || message->message == WM_RBUTTONDOWN;
    if (press && message->hwnd == canvas_->m_hWnd && placeOf(::GetFocus()) == KeyPlace::Bar)
        commandWindow_->line().SetFocus();
    if (message->message < WM_KEYFIRST || message->message > WM_KEYLAST || IsWindowEnabled() == FALSE)
        return CFrameWnd::PreTranslateMessage(message);
    const KeyPlace place = placeOf(message->hwnd);
    if (place == KeyPlace::Elsewhere)
        return CFrameWnd::PreTranslateMessage(message);
    if (message->message == WM_KEYDOWN && message->wParam == VK_ESCAPE && place != KeyPlace::Edit) {
        commandWindow_->clearLine();
        canvas_->cancelSelection();
        host_.commandLine().input().feed(std::string(1, InputQueue::kCancel) + "\n");
        runInput();
        return TRUE;
    }
    if (erases(*message, place)) {
        OnTypedCommand(ID_EDIT_ERASE);
        return TRUE;
    }
    // An edit keeps its own undo and the clipboard.
    const bool letter = message->wParam >= 'A' && message->wParam <= 'Z';
    const bool kept = place == KeyPlace::Edit && letter && isDown(VK_CONTROL);
    if (keys_ && !kept && ::TranslateAcceleratorA(m_hWnd, keys_, message) != 0)
        return TRUE;
    if ((place == KeyPlace::Drawing || place == KeyPlace::Reading || place == KeyPlace::Bar) &&
        giveToLine(*message, place))
        return TRUE;
    return CFrameWnd::PreTranslateMessage(message);
}

} // namespace vndk::host
