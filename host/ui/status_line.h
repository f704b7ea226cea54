// The line at the bottom of the frame: where the cursor is, what the prompt takes, the modes.
//
// A mode is pressed while it is on; a click turns it.
#pragma once

#include "ed/input.h"
#include "ge/vector.h"
#include "mfc/afx.h"

#include <array>
#include <optional>
#include <string>

namespace vndk::host {

class Host;

class StatusLine : public CWnd {
public:
    static constexpr int kHeight = 22; // pixels

    explicit StatusLine(Host& host) : host_(host) {}

    bool create(CWnd& parent, UINT id);
    /// World coordinates; shown in the drawing's units and the user's coordinate system. Nothing: away from the
    /// drawing, the last ones stay.
    void showCursor(const AcGePoint3d& world);
    /// What a prompt takes; the frame tells it while one waits.
    void showHint(const std::string& hint);
    /// Brings modes and coordinates up to date with the current drawing.
    void refresh();

    /// The cursor's place as it is shown; empty without a drawing.
    std::string coordinates() const;
    /// The mode's part of the line; in its order ORTHO, OSNAP, MODEL or PAPER.
    CRect modeRect(int mode) const;
    /// Turns ORTHO (0) or OSNAP (1) on or off.
    void toggle(int mode);

    /// Told when the user wants the other space; true: model space.
    std::function<void(bool)> onSpace;

protected:
    void OnPaint();
    BOOL OnEraseBkgnd(CDC* dc);
    void OnLButtonDown(UINT flags, CPoint point);
    int OnCreate(LPCREATESTRUCT create);

    LRESULT OnSizeParent(WPARAM wParam, LPARAM lParam);

    DECLARE_MESSAGE_MAP()

private:
    static constexpr int kModes = 3;
    struct Mode {
        const char* text = "";
        bool on = false;
        bool operator==(const Mode&) const = default;
    };
    struct Look {
        std::string coordinates;
        std::string hint;
        std::array<Mode, kModes> modes{};
        bool hasDrawing = false;
        bool operator==(const Look&) const = default;
    };
    Look currentLook() const;
    void drawPane(CDC& dc, CRect rect, const std::string& text, bool sunken, bool centred, bool enabled) const;

    Host& host_;
    Look look_;
    std::optional<AcGePoint3d> cursor_;
    std::string hint_;
    CFont font_;
};

/// What the user can do at a prompt of that kind, in a sentence.
std::string hintFor(const PromptRequest& request);

} // namespace vndk::host
