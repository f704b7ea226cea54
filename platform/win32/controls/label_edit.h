// Editing of a label in place, in lists and trees: an edit control over the item.
//
// The control that owns it sends the notifications and derives from LabelEditHost. Return and the loss of the focus
// accept, Escape cancels; the box grows with its text.
#pragma once

#include "controls/control.h"

#include <string>

namespace vndk::win32 {

class LabelEditHost {
public:
    virtual ~LabelEditHost() = default;
    LabelEditHost(const LabelEditHost&) = delete;
    LabelEditHost& operator=(const LabelEditHost&) = delete;
    /// The user has finished. The host calls `close`.
    virtual void endLabelEdit(bool accept) = 0;

protected:
    LabelEditHost() = default;
};

class LabelEdit {
public:
    struct Place {
        RECT label;     // client coordinates of the host: where the text stands
        bool wraps;     // several lines, centred
        int rightLimit; // the box doesn't grow beyond
    };

    LabelEdit() = default;

    /// Makes the box, not yet shown, with the text selected. The host is a control of this layer and a LabelEditHost.
    /// Null when the window can't be made.
    HWND open(HWND host, const std::string& text, HFONT font, const Place& place);
    /// Shows it and gives it the focus.
    void show() const;
    [[nodiscard]] HWND window() const { return window_; }
    [[nodiscard]] bool isOpen() const { return window_ != nullptr; }
    [[nodiscard]] std::string text() const;
    /// A WM_COMMAND of the host. False: it isn't from the box. `host` may be gone afterwards, and this with it.
    bool takeCommand(LabelEditHost& host, WPARAM wParam, LPARAM lParam) const;
    /// The item was scrolled.
    void move(const RECT& label);
    /// Destroys the box. The host isn't told.
    void close();
    /// The box is destroyed by others (with its host).
    void forget() { window_ = nullptr; }

private:
    /// Fits the box to the text.
    void fit() const;
    [[nodiscard]] RECT boxFor(const std::string& text) const;

    HWND window_ = nullptr;
    HFONT font_ = nullptr;
    Place place_{};
};

} // namespace vndk::win32
