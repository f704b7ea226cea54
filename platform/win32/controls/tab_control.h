// Tab control: tabs at the top or the bottom, buttons, one row that scrolls or many rows.
//
// Not done: TCS_VERTICAL, TCS_MULTISELECT, texts asked from the parent, TCM_SETEXTENDEDSTYLE's separators, tips of its
// own (TCS_TOOLTIPS; a tip that was given is kept and gets the mouse messages).
#pragma once

#include "controls/control.h"
#include "win32/tab.h"

#include <vector>

namespace vndk::win32 {

class TabControl : public Control {
public:
    using Control::Control;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Item {
        std::string text;
        int image = -1;
        LPARAM parameter = 0;
        DWORD state = 0; // TCIS_
        RECT rect{};     // as if nothing were scrolled
        int row = 0;
    };

    // Geometry (tab_layout.cpp). The side that the tabs stand at is `strip`; rows count from the display area.
    [[nodiscard]] bool buttons() const { return hasStyle(TCS_BUTTONS); }
    [[nodiscard]] bool atBottom() const { return hasStyle(TCS_BOTTOM) && !hasStyle(TCS_VERTICAL); }
    [[nodiscard]] int itemHeight() const;
    [[nodiscard]] int itemWidth(HDC dc, const Item& item) const;
    [[nodiscard]] int stripHeight() const;
    void layout();
    void breakIntoRows();
    void fillRows();
    [[nodiscard]] int scrollShift() const;
    [[nodiscard]] bool scrolls() const;
    [[nodiscard]] RECT arrowRect(bool right) const;
    [[nodiscard]] bool onArrow(POINT point) const;
    [[nodiscard]] RECT stripRect() const; // with the border that a selected tab covers
    [[nodiscard]] RECT itemRect(int index) const;
    [[nodiscard]] RECT bodyRect() const;
    [[nodiscard]] int hitTest(POINT point, UINT& flags) const;
    void adjustRect(bool larger, RECT& rect) const;
    void scrollTo(int first);
    void showSelected();

    // Painting (tab_painting.cpp).
    void paint(HDC given);
    void paintItem(HDC dc, int index);
    void paintFrame(HDC dc, const RECT& rect, bool selected) const;
    void paintButtonFrame(HDC dc, const RECT& rect, int index) const;
    void paintContent(HDC dc, RECT rect, int index);
    void paintArrows(HDC dc) const;

    // Items and selection.
    [[nodiscard]] bool valid(LPARAM index) const { return index >= 0 && index < count(); }
    [[nodiscard]] int count() const { return static_cast<int>(items_.size()); }
    void take(Item& item, const TCITEM& from) const;
    int insertItem(WPARAM index, const TCITEM* from);
    bool deleteItem(WPARAM index);
    void deleteAll();
    bool giveItem(WPARAM index, TCITEM* to) const;
    bool setItem(WPARAM index, const TCITEM* from);
    LRESULT setSelection(int index);
    void setFocusItem(int index);
    /// With the notifications, as a user selects. False when the parent refused.
    bool select(int index);
    void changed();
    void changedAll();
    void onCreate();
    LRESULT onNcHitTest(LPARAM lParam);

    // Input (tab_input.cpp).
    void onButtonDown(POINT point);
    void onButtonUp(POINT point);
    void onMouseMove(POINT point);
    void onKey(WPARAM key, LPARAM lParam);
    void pressArrow(bool right);
    void setHot(int index);
    bool handleInput(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    bool handleTabMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    bool handleLookMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);

    std::vector<Item> items_;
    int selected_ = -1;
    int focus_ = -1;
    int hot_ = -1;
    int pressed_ = -1; // button that the mouse holds
    bool pressedOver_ = false;
    int rows_ = 0;
    int first_ = 0;         // leftmost item of a row that scrolls
    SIZE padding_{6, 3};    // pixels around image and text
    SIZE fixedSize_{96, 0}; // width with TCS_FIXEDWIDTH; height 0: from font and images
    bool fixedHeight_ = false;
    int minimumWidth_ = -1;
    HIMAGELIST images_ = nullptr;
    HFONT font_ = nullptr;
    HWND toolTips_ = nullptr;
    bool redraw_ = true;
    int shownStrip_ = -1; // height of the strip at the last change
};

void registerTabControl();

} // namespace vndk::win32
