// The button control. Styles, messages and notifications: win32/button.h.
//
// Not done: hiding of mnemonic underlines until a key is pressed (WM_UPDATEUISTATE): they always show.
#pragma once

#include "controls/button_painting.h"
#include "controls/control.h"

namespace vndk::win32 {

class Button : public Control {
public:
    using Control::Control;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    enum class Press { none, mouse, key };

    LRESULT handleButtonMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handleMouse(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handleKey(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handleText(UINT message, WPARAM wParam, LPARAM lParam);

    [[nodiscard]] DWORD kind() const { return kindOf(style()); }
    [[nodiscard]] LRESULT dialogCode() const;

    // State.
    void setCheck(WPARAM check);
    void setPushed(bool pushed);
    void setKind(DWORD kind, bool redraw);
    HANDLE setImage(UINT kind, HANDLE image);
    void onFocus(bool gained);
    void onEnable(bool enable);

    // A press: the mouse button or the space bar is held.
    void beginPress(Press how);
    void movePress(POINT point);
    void endPress(bool click);
    void onButtonDown();
    void onDoubleClick();
    bool onCharacter(WPARAM character);
    void click();
    void clicked();
    void checkInGroup();
    [[nodiscard]] bool notifiesDoubleClick() const;
    void notifyWhenAsked(WORD code) const;

    // Painting.
    void paintNow(UINT action);
    void onPaint(HDC given);
    void paint(HDC dc, UINT action);
    void drawOwner(HDC dc, UINT action);
    void eraseOwner(HDC dc);
    void exposeCaption() const;
    [[nodiscard]] UINT colorMessage() const;

    LRESULT check_ = BST_UNCHECKED;
    bool pushed_ = false;
    bool hasFocus_ = false;
    bool inClick_ = false; // a click is being carried out: gaining the focus isn't one
    Press press_ = Press::none;
    HFONT font_ = nullptr;
    ControlImage image_;
};

void registerButton();

} // namespace vndk::win32
