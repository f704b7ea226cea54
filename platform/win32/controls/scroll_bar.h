// The scroll bar control. Styles, messages and notifications: win32/scrollbar.h.
//
// Not done: size boxes (SBS_SIZEBOX, SBS_SIZEGRIP) size the top-level window from its lower right corner only.
#pragma once

#include "controls/control.h"
#include "controls/scroll_model.h"

namespace vndk::win32 {

class ScrollBar : public Control {
public:
    explicit ScrollBar(HWND window);
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;

    [[nodiscard]] ScrollState& state() { return state_; }
    /// Paints without waiting for WM_PAINT, as the calls with a redraw flag do.
    void paintNow();

    // What the messages of the same names do; the calls of win32/scrollbar.h come here for a window that is one of
    // ours.
    int setPosition(int position, bool redraw);
    bool setRange(int minimum, int maximum, bool redraw);
    int setInfo(const SCROLLINFO& info, bool redraw);
    bool enableArrows(UINT arrows);

private:
    LRESULT handleScrollMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handleInput(UINT message, WPARAM wParam, LPARAM lParam);

    [[nodiscard]] bool isSizeBox() const { return (style() & (SBS_SIZEBOX | SBS_SIZEGRIP)) != 0; }
    [[nodiscard]] bool isVertical() const { return (style() & SBS_VERT) != 0; }

    void onCreate();
    void align(const RECT& client) const;
    void onEnable(bool enable);
    void onPaint(HDC given);
    void paint(HDC dc);
    void onButtonDown(LPARAM lParam);
    void onContextMenu(LPARAM lParam);
    bool onKey(WPARAM key, bool down);
    bool onSetCursor(LPARAM lParam) const;
    void onSetFocus();
    void placeCaret() const;
    void refresh(bool redraw);

    ScrollState state_;
};

void registerScrollBar();

} // namespace vndk::win32
