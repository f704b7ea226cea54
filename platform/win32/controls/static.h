// The static control. Styles, messages and notifications: win32/static.h.
//
// Not done: SS_ENHMETAFILE (there are no metafiles): such a control shows its ground.
#pragma once

#include "controls/control.h"
#include "controls/label.h"

namespace vndk::win32 {

class Static : public Control {
public:
    using Control::Control;
    ~Static() override;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    LRESULT handleImage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handleText(UINT message, WPARAM wParam, LPARAM lParam);

    [[nodiscard]] DWORD kind() const;
    [[nodiscard]] bool showsText() const;
    [[nodiscard]] bool takesImage(UINT kind) const;

    bool onNcCreate(const CREATESTRUCTA* create);
    void loadNamed(const CREATESTRUCTA& create);
    void notifyWhenAsked(WORD code) const;

    HANDLE setImage(UINT kind, HANDLE handle);
    void dropLoaded();
    void fitToImage();

    void paintNow();
    void onPaint(HDC given);
    void paint(HDC dc);
    void paintText(HDC dc, const RECT& rect) const;
    void paintImageIn(HDC dc, const RECT& rect) const;
    void drawOwner(HDC dc);

    HFONT font_ = nullptr;
    ControlImage image_;
    HBITMAP loaded_ = nullptr; // a bitmap that the control loaded by itself and therefore deletes
};

void registerStatic();

} // namespace vndk::win32
