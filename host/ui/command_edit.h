// The line where commands are typed: what is pasted may have several lines.
#pragma once

#include "mfc/afx.h"

#include <functional>
#include <string>

namespace vndk::host {

class CommandEdit : public CEdit {
public:
    /// Takes what is pasted, lines ended by '\n', in place of the control.
    std::function<void(std::string)> onPaste;

    std::string text() const;

protected:
    LRESULT OnPaste(WPARAM wParam, LPARAM lParam);

    DECLARE_MESSAGE_MAP()
};

/// The clipboard's text, lines ended by '\n'; empty when there is none.
std::string clipboardText(HWND owner);

} // namespace vndk::host
