// The header control. Styles, messages and notifications: win32/header.h.
//
// Not done: HDS_FILTERBAR and its messages; the picture while an item is dragged (the place where it would go is
// marked, and HDM_CREATEDRAGIMAGE answers null); messages with 16-bit text.
#pragma once

#include "controls/control.h"
#include "controls/text_measure.h"
#include "win32/header.h"

#include <string>
#include <vector>

namespace vndk::win32 {

class HeaderControl : public Control {
public:
    using Control::Control;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Item {
        std::string text;
        bool textCallback = false;
        int width = 10;
        int format = HDF_LEFT;
        int image = I_IMAGECALLBACK;
        HBITMAP bitmap = nullptr;
        LPARAM data = 0;
    };
    enum class Press : std::uint8_t { none, item, divider, drag };

    // header_control.cpp: items and messages
    LRESULT handleHeaderMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT onInsertItem(int index, const HDITEMA* given);
    LRESULT onDeleteItem(int index);
    LRESULT onGetItem(int index, HDITEMA* wanted);
    LRESULT onSetItem(int index, const HDITEMA* given);
    LRESULT onGetItemRect(int index, RECT* rect) const;
    LRESULT onLayout(const HDLAYOUT* layout) const;
    LRESULT onHitTest(HDHITTESTINFO* info) const;
    LRESULT onGetOrderArray(int count, int* order) const;
    LRESULT onSetOrderArray(int count, const int* order);
    void onSetFont(HFONT font, bool redraw);
    void apply(Item& item, const HDITEMA& given);
    void moveToOrder(int index, int order);
    void dropStaleInput();

    [[nodiscard]] bool isItem(int index) const { return index >= 0 && index < count(); }
    [[nodiscard]] int count() const { return static_cast<int>(items_.size()); }
    [[nodiscard]] Item& item(int index) { return items_[static_cast<std::size_t>(index)]; }
    [[nodiscard]] const Item& item(int index) const { return items_[static_cast<std::size_t>(index)]; }
    [[nodiscard]] int orderOf(int index) const;
    [[nodiscard]] int left(int index) const;
    [[nodiscard]] RECT itemRect(int index) const;
    [[nodiscard]] int hitTest(POINT point, UINT& flags) const;
    [[nodiscard]] std::string itemText(int index);
    [[nodiscard]] int itemImage(int index);
    NMHDDISPINFOA askParent(int index, UINT mask, char* buffer, int size);
    void invalidateItem(int index) const;
    void invalidateFrom(int left) const;
    LRESULT notifyItem(UINT code, int index, HDITEMA* change = nullptr, int button = 0) const;
    /// With HDN_ITEMCHANGING and HDN_ITEMCHANGED. False when it was refused.
    bool changeItem(int index, const HDITEMA& change);

    // header_input.cpp
    LRESULT handleInput(UINT message, WPARAM wParam, LPARAM lParam);
    void onButtonDown(POINT point);
    void onDoubleClick(POINT point);
    void onMouseMove(POINT point);
    void onButtonUp(POINT point);
    void onCancel();
    bool onSetCursor() const;
    void beginTrack(int index, POINT point);
    void track(POINT point);
    void endTrack(bool keep);
    void pressItem(int index, POINT point);
    void movePressed(POINT point);
    void releaseItem(POINT point);
    void dropItem(POINT point);
    void setHot(int index);
    void releaseMouse();
    [[nodiscard]] int trackedWidth(POINT point) const;
    [[nodiscard]] int dropOrder(POINT point) const;
    void drawTrackLine() const;

    // header_paint.cpp
    void onPaint(HDC given);
    void drawAll(HDC dc, const RECT& area);
    void drawItem(HDC dc, int index, RECT rect, LRESULT answer);
    void drawFace(HDC dc, int index, RECT rect);
    void drawContent(HDC dc, int index, RECT rect);
    int drawPicture(HDC dc, int index, const RECT& rect, int textWidth);
    void sendDrawItem(HDC dc, int index, const RECT& rect) const;
    void drawRest(HDC dc, const RECT& rect) const;
    void drawDropMark(HDC dc) const;

    std::vector<Item> items_;
    std::vector<int> order_; // place from the left: index
    TextMeasure measure_;
    HIMAGELIST images_ = nullptr; // the caller's
    int bitmapMargin_ = 6;
    int hotDivider_ = -1;
    int hotItem_ = -1;

    Press press_ = Press::none;
    int pressed_ = -1;
    bool pressedLooksDown_ = false;
    POINT pressPoint_{};
    int formerWidth_ = 0; // of the item whose divider is dragged
    int lineAt_ = -1;     // where the divider's line is drawn while it isn't followed at once
};

void registerHeaderControl();

} // namespace vndk::win32
