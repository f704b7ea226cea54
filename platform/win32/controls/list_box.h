// The list box, class "LISTBOX", and what the list of a combo box shares with it.
//
// Files: list_box.cpp has creation and messages, list_box_items.cpp the items, list_box_selection.cpp selection and
// focus item, list_box_layout.cpp geometry and scrolling, list_box_painting.cpp, list_box_mouse.cpp, list_box_keys.cpp.
//
// Not done: LB_DIR, LB_ADDFILE (logged, LB_ERR), locales beyond keeping the number, right-to-left layout.
// Open in the documentation, and done so here: a press on the ground below the last item does nothing; LBN_DBLCLK comes
// with the second press; item heights may go up to 65535.
#pragma once

#include "controls/control.h"
#include "controls/list_box_store.h"
#include "controls/type_ahead.h"
#include "win32/gdi.h"
#include "win32/listbox.h"
#include "win32/scrollbar.h"

#include <optional>

namespace vndk::win32 {

void registerListBox();

class ListBox : public Control {
public:
    using Control::Control;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;

protected:
    using Handled = std::optional<LRESULT>;

    // What the list of a combo box does in another way.

    /// Who gets notifications and draws the items; may be null.
    [[nodiscard]] virtual HWND owner() const { return GetParent(window()); }
    /// The focus item is marked.
    [[nodiscard]] virtual bool showsFocus() const { return focused_; }
    /// A press wants the focus.
    virtual void takeFocus();
    virtual Handled handleMouse(UINT message, WPARAM wParam, LPARAM lParam);

    // list_box.cpp
    [[nodiscard]] bool hasBits(DWORD bits) const { return (style_ & bits) != 0; }
    [[nodiscard]] bool ownerDrawn() const { return hasBits(LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE); }
    [[nodiscard]] bool hasStrings() const { return !ownerDrawn() || hasBits(LBS_HASSTRINGS); }
    [[nodiscard]] bool variable() const { return hasBits(LBS_OWNERDRAWVARIABLE) && !hasBits(LBS_MULTICOLUMN); }
    [[nodiscard]] bool multiColumn() const { return hasBits(LBS_MULTICOLUMN); }
    [[nodiscard]] bool singleChoice() const {
        return !hasBits(LBS_MULTIPLESEL | LBS_EXTENDEDSEL) || hasBits(LBS_NOSEL);
    }
    [[nodiscard]] int count() const { return items_.count(); }
    [[nodiscard]] bool valid(int index) const { return index >= 0 && index < count(); }
    /// 0 without an owner.
    LRESULT askOwner(UINT message, WPARAM wParam, LPARAM lParam) const;
    /// LBN_ code, when the style wants notifications. The window may be gone afterwards.
    void notifyOwner(WORD code) const;

    // list_box_selection.cpp
    [[nodiscard]] int current() const { return current_; }
    void selectSingle(int index); // -1: none
    LRESULT setCurrent(int index);
    /// Takes the mark of the focus item away while selection and focus item change, and shows it on the new one.
    void hideCaret();
    void showCaretAt(int index);

    // list_box_layout.cpp
    [[nodiscard]] RECT itemRect(int index) const;
    /// The item under a point, or -1.
    [[nodiscard]] int itemAt(POINT point) const;
    [[nodiscard]] int nearestItem(POINT point) const;
    void scrollTo(int top);
    void ensureVisible(int index, bool partIsEnough = false);
    [[nodiscard]] int top() const { return top_; }
    /// The last item that is seen whole, from the top one on.
    [[nodiscard]] int lastWholeItem() const;

    [[nodiscard]] int heightOf(int index) const;

    // list_box_mouse.cpp
    void press(POINT point, WPARAM keys, bool twice);
    void drag(POINT point);
    [[nodiscard]] bool tracking() const { return tracking_.active; }
    /// Without a notification; the capture stays.
    void stopTracking();

private:
    Handled handleItems(UINT message, WPARAM wParam, LPARAM lParam);
    Handled handleItemText(UINT message, WPARAM wParam, LPARAM lParam);
    Handled handleSelection(UINT message, WPARAM wParam, LPARAM lParam);
    Handled handleMultipleChoice(UINT message, WPARAM wParam, LPARAM lParam);
    Handled handleGeometry(UINT message, WPARAM wParam, LPARAM lParam);
    Handled handleWindow(UINT message, WPARAM wParam, LPARAM lParam);
    Handled handlePainting(UINT message, WPARAM wParam, LPARAM lParam);
    Handled handleKeys(UINT message, WPARAM wParam, LPARAM lParam);
    Handled handleScrolling(UINT message, WPARAM wParam, LPARAM lParam);

    // list_box.cpp
    LRESULT create();
    void styleChanged(const STYLESTRUCT* change);
    void setFont(HFONT font, bool repaint);
    void measureFont();
    void setRedraw(bool on);
    void setFocused(bool focused);
    void destroyed();

    // list_box_items.cpp
    LRESULT addItem(LPARAM value);
    LRESULT insertItem(int index, LPARAM value);
    LRESULT deleteItem(int index);
    LRESULT resetContent();
    LRESULT setItemCount(int newCount);
    LRESULT initStorage(int more);
    LRESULT getText(int index, char* buffer) const;
    LRESULT getTextLength(int index) const;
    LRESULT setItemData(int index, ULONG_PTR data);
    LRESULT findItem(int after, LPARAM sought, bool exact);
    [[nodiscard]] bool matches(int index, LPARAM sought, bool exact);
    /// Where an item belongs in a sorted list; -1 when the list was changed while its owner was asked.
    int sortedPlace(LPARAM value);
    int compareByOwner(int index, LPARAM value) const;
    void measureItem(int index);
    [[nodiscard]] int measuredHeight(UINT itemId, ULONG_PTR data) const;
    void notifyDeleted(int index) const;
    void forgetItems();

    // list_box_selection.cpp
    void select(int index, bool selected);
    void selectRange(int first, int last, bool selected);
    void selectOnly(int first, int last);
    LRESULT setSelection(bool selected, int index);
    LRESULT selectItemRange(int first, int last, bool selected);
    LRESULT getSelectedItems(int size, int* buffer) const;
    LRESULT setCaretIndex(int index, bool partIsEnough);
    void selectionStyleChanged();

    // list_box_layout.cpp
    [[nodiscard]] int rowsPerColumn() const;
    [[nodiscard]] int itemsPerPage() const;
    [[nodiscard]] int lastTop() const;
    [[nodiscard]] int topThatShows(int last) const;
    [[nodiscard]] int lastSeenItem() const;
    [[nodiscard]] int wholeColumns() const;
    void sized();
    void fitWholeItems();
    void updateScrollBars();
    void settleLayout();
    void applyScrollBars(DWORD& shown);
    void applyScrollBar(int bar, SCROLLINFO info, DWORD& shown);
    [[nodiscard]] SCROLLINFO wantedVertical() const;
    [[nodiscard]] SCROLLINFO wantedHorizontal() const;
    [[nodiscard]] int offsetOf(int index) const;
    void layoutChanged(int from);
    void invalidateFrom(int index) const;
    LRESULT setItemHeight(int index, int height);
    LRESULT setTabStops(int tabCount, const int* stops);
    LRESULT setColumnWidth(int width);
    LRESULT setHorizontalExtent(int extent);
    [[nodiscard]] int scrollTarget(int bar, WPARAM wParam, int position, int page, int end) const;
    void verticalScroll(WPARAM wParam);
    void horizontalScroll(WPARAM wParam);
    void scrollSideways(int position);
    Handled wheel(WPARAM wParam);

    // list_box_painting.cpp
    void paint(HDC dc, const RECT& area);
    void erase(HDC dc) const;
    [[nodiscard]] HBRUSH askColors(HDC dc) const;
    void drawNow(int index, UINT action) const;
    void drawItem(HDC dc, HBRUSH ground, int index, const RECT& rect, UINT action) const;
    void drawTextItem(HDC dc, HBRUSH ground, int index, const RECT& rect, UINT state) const;
    void drawByOwner(HDC dc, int index, const RECT& rect, UINT action, UINT state) const;
    [[nodiscard]] UINT stateOf(int index) const;
    [[nodiscard]] HFONT usedFont() const;

    // list_box_mouse.cpp
    enum class DragScroll : std::uint8_t { none, back, forward };
    bool pressSelects(int index, WPARAM keys);
    void pressExtended(int index, WPARAM keys);
    void dragTo(int index);
    [[nodiscard]] DragScroll dragScrollAt(POINT point) const;
    void watchDragScroll(POINT point);
    void stopDragScroll();
    void dragTick();
    void release();

    // list_box_keys.cpp
    void keyDown(int key);
    [[nodiscard]] int keyTarget(int key) const;
    void moveByKey(int index);
    void toggleByKey();
    bool shortcutKey(int key);
    void typeCharacter(char character);
    [[nodiscard]] int searchTyped(char character);

    DWORD style_ = 0; // with the scroll bars that were asked for, whether they show now or not
    HFONT font_ = nullptr;
    int lineHeight_ = 16;
    int averageWidth_ = 8;
    ListBoxStore items_;
    int itemHeight_ = 16; // of all items; with heights of their own, what they begin with
    int columnWidth_ = 120;
    int horizontalExtent_ = 0;
    int horizontalPosition_ = 0;
    std::vector<int> tabs_; // pixels
    int top_ = 0;
    int current_ = -1; // single choice: the selected item
    int caret_ = 0;    // the item with the focus
    int anchor_ = -1;  // where a selection with Shift begins
    bool caretPlaced_ = false;
    bool caretHidden_ = false;
    bool addMode_ = false; // extended selection: arrows move the focus only
    bool focused_ = false;
    bool redraw_ = true;
    bool deleting_ = false; // the owner is being told of items that go
    bool fitting_ = false;  // our own change of height
    bool updatingBars_ = false;
    bool layoutPending_ = false;
    bool barsUnpainted_ = false;
    int askedHeight_ = 0;     // of the window, before it shrank to whole items
    int fittedHeight_ = 0;    // of the window since then
    int seenWidth_ = -1;      // of the client area as of the last WM_SIZE
    SCROLLINFO setBars_[2]{}; // what SB_HORZ and SB_VERT were given last
    int storage_ = 0;
    DWORD locale_ = 0x0409;

    struct Tracking {
        bool active = false;
        WORD notification = 0;
        bool additive = false;    // Ctrl: what was selected before stays
        bool selects = true;      // the range gets selected, else deselected
        bool range = false;       // extended selection
        std::vector<int> before;  // additive: items that were selected when it began
        POINT point{0, 0};        // where the mouse was last
        bool scrollTimer = false; // runs
    };
    Tracking tracking_;
    TypeAhead typed_;
    int wheelRest_ = 0;
};

} // namespace vndk::win32
