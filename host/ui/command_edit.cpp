#include "ui/command_edit.h"

#include <algorithm>

namespace vndk::host {

std::string clipboardText(HWND owner) {
    std::string text;
    if (::OpenClipboard(owner) == FALSE)
        return text;
    const HGLOBAL block = ::GetClipboardData(CF_TEXT);
    if (const void* const bytes = block ? ::GlobalLock(block) : nullptr) {
        text = static_cast<const char*>(bytes);
        ::GlobalUnlock(block);
    }
    ::CloseClipboard();
    std::erase(text, '\r');
    return text;
}

BEGIN_MESSAGE_MAP(CommandEdit, CEdit)
ON_MESSAGE(WM_PASTE, &CommandEdit::OnPaste)
END_MESSAGE_MAP()

std::string CommandEdit::text() const {
    CString text;
    GetWindowText(text);
    return std::string(text.View());
}

LRESULT CommandEdit::OnPaste(WPARAM, LPARAM) {
    if (onPaste)
        onPaste(clipboardText(m_hWnd));
    return 0;
}

} // namespace vndk::host
