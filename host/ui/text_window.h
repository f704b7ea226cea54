// The window with all that the host has said, for reading and copying; F2 shows and hides it.
#pragma once

#include "mfc/afx.h"

#include <string>

namespace vndk::host {

class TextWindow : public CWnd {
public:
    /// Makes the window, hidden, above the frame.
    bool create(CWnd& frame);
    bool isOpen() const { return m_hWnd && IsWindowVisible() != FALSE; }
    /// `history` has lines that end with CR LF.
    void show(const std::string& history);
    void hide();
    /// Brings an open window up to date; its end comes into sight.
    void update(const std::string& history);
    /// Copies what is selected to the clipboard.
    void copy() { edit_.Copy(); }

    BOOL PreTranslateMessage(MSG* message) override;

protected:
    int OnCreate(LPCREATESTRUCT create);
    HBRUSH OnCtlColor(CDC* dc, CWnd* control, UINT kind);
    void OnSize(UINT type, int width, int height);
    void OnSetFocus(CWnd* former);
    void OnClose();

    DECLARE_MESSAGE_MAP()

private:
    CWnd* frame_ = nullptr;
    CEdit edit_;
    CFont font_;
    std::string shown_;
};

} // namespace vndk::host
