// The list view. Styles, messages and notifications: win32/listview.h.
//
// Not done: tips for labels that are cut (LVS_EX_INFOTIP, LVS_EX_LABELTIP, LVM_GETTOOLTIPS answers what was set), flat
// scroll bars, underlined labels, background pictures, work areas, messages with 16-bit text. While LVS_AUTOARRANGE is
// set icons stand in the order of their indexes, wherever they are dragged.
#pragma once

#include "controls/control.h"
#include "controls/label_edit.h"
#include "controls/list_items.h"
#include "controls/row_ranges.h"
#include "controls/text_measure.h"
#include "controls/type_ahead.h"
#include "win32/listview.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vndk::win32 {

/// A hundred million rows can be longer than a coordinate reaches: what is that far away only has to stay there.
inline int lengthOf(std::int64_t lines, LONG size) {
    constexpr std::int64_t end = 0x3FFFFFFF;
    return static_cast<int>(std::clamp(lines * size, -end, end));
}

class ListView : public Control, public LabelEditHost {
public:
    explicit ListView(HWND window) : Control(window) {}
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;
    void endLabelEdit(bool accept) override;

private:
    struct Column {
        int format = LVCFMT_LEFT;
        int subItem = 0; // as given; sub-items are shown by the columns' indexes
        int image = 0;
        int left = 0; // without scrolling
        int width = 0;
    };
    /// Parts of an item in client coordinates.
    struct ItemRects {
        RECT bounds{};
        RECT state{};
        RECT icon{};
        RECT label{};
    };
    enum class Press : std::uint8_t { none, item, ground, band };

    // ---- list_view.cpp: dispatch, life, looks
    LRESULT handleListMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handleItemMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handleColumnMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handlePlaceMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handleLookMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handleWindowMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT onCreate(const CREATESTRUCTA* create);
    void onDestroy();
    void onFinalDestroy();
    void onSize();
    void onSetFont(HFONT font, bool redraw);
    void onSetRedraw(bool redraw);
    void onStyleChanging(STYLESTRUCT* styles) const;
    void onStyleChanged(const STYLESTRUCT& styles);
    LRESULT onSetImageList(int which, HIMAGELIST images);
    LRESULT onSetExtendedStyle(DWORD mask, DWORD styles);
    LRESULT onSetBackground(COLORREF color);
    void measureRows();
    [[nodiscard]] DWORD view() const { return style() & LVS_TYPEMASK; }
    [[nodiscard]] bool isReport() const { return view() == LVS_REPORT; }
    [[nodiscard]] bool isIconic() const { return view() == LVS_ICON || view() == LVS_SMALLICON; }
    [[nodiscard]] bool ownerData() const { return ownerData_; }
    [[nodiscard]] bool hasExtended(DWORD bits) const { return (extended_ & bits) != 0; }
    [[nodiscard]] COLORREF backgroundColor() const;
    [[nodiscard]] COLORREF textColor() const;
    [[nodiscard]] COLORREF textBackgroundColor() const;
    void verify();

    // ---- list_view_items.cpp: items and what they hold
    LRESULT onInsertItem(const LVITEMA* given);
    LRESULT onDeleteItem(int index);
    LRESULT onDeleteAllItems();
    LRESULT onGetItem(LVITEMA* wanted);
    LRESULT onSetItem(const LVITEMA* given);
    LRESULT onGetItemText(int index, LVITEMA* wanted);
    LRESULT onSetItemText(int index, const LVITEMA* given);
    LRESULT onSetItemCount(int count, DWORD flags);
    bool setSubItem(const LVITEMA& given);
    bool setMainItem(const LVITEMA& given);
    void takeContent(ListItem& item, const LVITEMA& given);
    void finishInsertion(int index, const LVITEMA& given);
    [[nodiscard]] int count() const { return ownerData_ ? ownerCount_ : items_.count(); }
    [[nodiscard]] bool isItem(int index) const { return index >= 0 && index < count(); }
    [[nodiscard]] const ListCell* cellAt(int index, int subItem) const;
    [[nodiscard]] std::string textOf(int index, int subItem);
    [[nodiscard]] int imageOf(int index, int subItem);
    [[nodiscard]] int indentOf(int index);
    [[nodiscard]] LPARAM dataOf(int index) const;
    /// Asks the parent. The text, when it is asked for, comes back in `text`.
    LVITEMA askParent(int index, int subItem, UINT mask, UINT stateMask, std::string* text = nullptr);
    void keepAnswer(int index, int subItem, UINT mask, const LVITEMA& answer);
    void shiftIndexes(int from, int by);

    // ---- list_view_state.cpp: selection, focus, states
    LRESULT onSetItemState(int index, const LVITEMA* given);
    LRESULT onGetItemState(int index, UINT mask);
    LRESULT onSetSelectionMark(int index);
    bool setState(int index, UINT state, UINT mask);
    bool setStateOfAll(UINT state, UINT mask);
    bool setOwnerState(int index, UINT state, UINT mask);
    bool setOwnerStateOfAll(UINT state, UINT mask);
    void changeFocus(int index, bool on);
    void deselectAll(int except = -1);
    void selectRange(int from, int to, bool keepOthers);
    [[nodiscard]] UINT storedState(int index, UINT mask) const;
    [[nodiscard]] UINT fullState(int index, UINT mask);
    [[nodiscard]] bool isSelected(int index) const { return (storedState(index, LVIS_SELECTED)) != 0; }
    [[nodiscard]] int selectedCount() const { return ownerData_ ? ownerSelection_.size() : selectedCount_; }
    LRESULT notifyItem(UINT code, int index, int subItem, UINT newState, UINT oldState, UINT changed) const;
    void notifyStateRange(int from, int to, UINT newState, UINT oldState) const;
    void toggleCheck(int index);

    // ---- list_view_find.cpp: searching, next items, sorting
    LRESULT onFindItem(int start, const LVFINDINFOA* info);
    LRESULT onGetNextItem(int start, UINT flags);
    LRESULT onSortItems(PFNLVCOMPARE compare, LPARAM sort, bool byIndex);
    [[nodiscard]] int findText(int start, const std::string& text, bool partial, bool wrap);
    [[nodiscard]] int findNearest(POINT point, int direction);
    [[nodiscard]] int findData(int start, LPARAM data, bool wrap) const;
    [[nodiscard]] int neighbour(int index, UINT direction);
    [[nodiscard]] bool matches(int index, UINT flags);
    [[nodiscard]] int nextSelected(int start) const;

    // ---- list_view_columns.cpp: columns and the header
    LRESULT onInsertColumn(int index, const LVCOLUMNA* given);
    LRESULT onDeleteColumn(int index);
    LRESULT onGetColumn(int index, LVCOLUMNA* wanted);
    LRESULT onSetColumn(int index, const LVCOLUMNA* given);
    LRESULT onGetColumnWidth(int index);
    LRESULT onSetColumnWidth(int index, int width);
    LRESULT onHeaderNotify(NMHDR& header, WPARAM wParam, LPARAM lParam);
    LRESULT forwardToParent(WPARAM wParam, LPARAM lParam) const;
    void makeHeader();
    void placeHeader();
    void refreshColumns();
    void shiftSubItems(int from, int by);
    [[nodiscard]] int columnCount() const { return static_cast<int>(columns_.size()); }
    [[nodiscard]] const Column& column(int index) const { return columns_[static_cast<std::size_t>(index)]; }
    [[nodiscard]] int columnsWidth() const;
    [[nodiscard]] int bestColumnWidth(int index, bool withHeader);
    [[nodiscard]] bool headerShown() const;

    // ---- list_view_layout.cpp: where things are
    LRESULT onGetItemRect(int index, RECT* rect);
    LRESULT onGetSubItemRect(int index, RECT* rect);
    LRESULT onGetItemPosition(int index, POINT* point);
    LRESULT onSetItemPosition(int index, POINT point);
    LRESULT onGetViewRect(RECT* rect);
    LRESULT onGetOrigin(POINT* point) const;
    LRESULT onSetIconSpacing(int cx, int cy);
    LRESULT onArrange(UINT how);
    LRESULT onApproximateViewRect(int items, int cx, int cy);
    [[nodiscard]] int listTop() const { return headerShown() ? headerHeight_ : 0; }
    [[nodiscard]] RECT listArea() const;
    [[nodiscard]] SIZE iconSize() const;
    [[nodiscard]] SIZE smallSize() const;
    [[nodiscard]] SIZE stateSize() const;
    [[nodiscard]] SIZE spacing() const;
    [[nodiscard]] SIZE cellSize() const;
    [[nodiscard]] POINT cellOffset() const;
    [[nodiscard]] int iconsPerLine() const;
    [[nodiscard]] bool fillsDownwards() const { return (style() & LVS_ALIGNMASK) == LVS_ALIGNLEFT; }
    [[nodiscard]] bool arranged() const { return ownerData_ || hasStyle(LVS_AUTOARRANGE); }
    [[nodiscard]] POINT slotPosition(int slot) const;
    [[nodiscard]] POINT viewPosition(int index) const;
    [[nodiscard]] int rowsPerPage() const;
    [[nodiscard]] int columnsPerPage() const;
    [[nodiscard]] RECT rowRect(int index) const;
    [[nodiscard]] ItemRects itemRects(int index);
    void reportRects(int index, ItemRects& rects);
    void listRects(int index, ItemRects& rects);
    void iconRects(int index, ItemRects& rects);
    void smallRects(int index, ItemRects& rects);
    [[nodiscard]] RECT selectRect(int index, const ItemRects& rects);
    /// `subItem` from 0; 0 is the whole width of column 0.
    [[nodiscard]] RECT cellRect(int index, int subItem) const;
    [[nodiscard]] SIZE iconLabelSize(const std::string& text, bool unfolded) const;
    [[nodiscard]] UINT iconLabelFormat(bool unfolded) const;
    /// Indexes of the items that may touch a rectangle of the client area, rising.
    [[nodiscard]] std::vector<int> itemsTouching(const RECT& rect) const;
    void resetGrid();
    void placeNew(ListItem* item);
    void growListColumns(int index);
    void growListColumns(const std::string& text);

    // ---- list_view_hit.cpp
    LRESULT onHitTest(LVHITTESTINFO* info, bool withSubItem);
    [[nodiscard]] int hitTest(POINT point, UINT& flags);
    [[nodiscard]] int hitItem(int index, POINT point, UINT& flags);
    [[nodiscard]] int rowAt(int y) const;
    [[nodiscard]] int columnAt(int x) const;

    // ---- list_view_scroll.cpp
    LRESULT onScroll(int dx, int dy);
    LRESULT onEnsureVisible(int index, bool partialIsEnough);
    void onScrollBar(int bar, int code);
    void onWheel(int delta);
    void updateScrollBars();
    struct Bar {
        int minimum = 0;
        int maximum = 0;
        int page = 0;
        int position = 0;
        bool operator==(const Bar&) const = default;
    };
    void setBar(int which, const Bar& bar);
    void showBars();
    [[nodiscard]] bool fitsInto(SIZE space, bool across) const;
    [[nodiscard]] RECT contentBounds() const;
    [[nodiscard]] SIZE contentSize(SIZE space) const;
    [[nodiscard]] int pageTrack(int bar, int code, int position, int line, int page) const;
    void scrollTo(POINT position);
    [[nodiscard]] POINT clampedScroll(POINT position) const;
    void moveContent(int dx, int dy);

    // ---- list_view_paint.cpp
    void onPaint(HDC given);
    LRESULT onEraseBackground(HDC dc);
    void drawAll(HDC dc, const RECT& area);
    void drawItems(HDC dc, const RECT& area, LRESULT answer);
    void focusedLast(std::vector<int>& items) const;
    void drawItem(HDC dc, int index, const RECT& area, LRESULT controlAnswer);
    struct ItemLook {
        int index = 0;
        UINT state = 0;
        ItemRects rects{};
        COLORREF text = 0;
        COLORREF background = 0; // CLR_NONE: what is there shows
        bool highlighted = false;
        bool listFocused = false;
        UINT drawState = 0; // CDIS_
    };
    void drawReportRow(HDC dc, const ItemLook& look, const RECT& area, LRESULT answer);
    void drawCell(HDC dc, const ItemLook& row, int subItem, LRESULT rowAnswer);
    void drawSubItem(HDC dc, const ItemLook& look, int subItem);
    void drawRowFocus(HDC dc, const ItemLook& look) const;
    void drawMainItem(HDC dc, const ItemLook& look);
    void drawStateImage(HDC dc, const ItemLook& look, const RECT& rect) const;
    void drawImage(HDC dc, const ItemLook& look, HIMAGELIST images, int image, const RECT& rect) const;
    void drawLabel(HDC dc, const ItemLook& look, const std::string& text, const RECT& rect, UINT format) const;
    void fillGround(HDC dc, const ItemLook& look, const RECT& rect) const;
    void resolveHighlight(ItemLook& look) const;
    void drawGridLines(HDC dc, const RECT& area) const;
    void drawBand(HDC dc) const;
    void sendDrawItem(HDC dc, const ItemLook& look) const;
    LRESULT notifyDraw(DWORD stage, HDC dc, const RECT& rect, ItemLook* look, int subItem);
    [[nodiscard]] ItemLook lookOf(int index);
    /// Takes in more than the item where the exact place depends on texts that only the parent knows.
    [[nodiscard]] RECT roughBounds(int index) const;
    /// Nothing while redrawing is off.
    void invalidate(const RECT* rect = nullptr, bool erase = true) const;
    void invalidateItem(int index) const;
    void invalidateFrom(int index) const;
    void invalidateList() const;
    LRESULT onRedrawItems(int first, int last);
    LRESULT onCreateDragImage(int index, POINT* origin);

    // ---- list_view_mouse.cpp
    LRESULT handleMouse(UINT message, WPARAM wParam, LPARAM lParam);
    void onButtonDown(POINT point, WPARAM keys);
    void pressOnItem(int index, UINT flags, WPARAM keys);
    void pressOnGround(WPARAM keys);
    void onDoubleClick(POINT point, UINT code);
    void onMouseMove(POINT point, WPARAM keys);
    void onButtonUp(POINT point);
    void releaseOnItem();
    void onRightButtonDown(POINT point);
    void onCaptureLost();
    void endPress();
    void beginDrag(UINT code);
    void beginBand();
    void moveBand(POINT point);
    void endBand();
    void selectBand();
    void setHot(int index, POINT point);
    void onHover(POINT point);
    LRESULT notifyClick(UINT code, POINT point);
    void activate(int index, POINT point);
    void onTimer(UINT_PTR timer);
    void scrollWithBand();
    void invalidateBand() const;
    [[nodiscard]] RECT bandRect() const;
    [[nodiscard]] POINT viewOffset() const;

    // ---- list_view_keys.cpp
    LRESULT handleKeys(UINT message, WPARAM wParam, LPARAM lParam);
    void onKeyDown(int key);
    void moveFocusTo(int index);
    void selectOnly(int index);
    [[nodiscard]] int targetOf(int key);
    [[nodiscard]] int pageTarget(bool down);
    void onSpace();
    void onChar(char character);
    void onSetFocus();
    void onKillFocus();
    void adjustAllColumns();

    // ---- list_view_edit.cpp
    LRESULT onEditLabel(int index);
    LRESULT onCommand(WPARAM wParam, LPARAM lParam);
    void storeLabel(int index, const std::string& text);
    void cancelEditTimer();

    ListItems items_;
    bool ownerData_ = false; // LVS_OWNERDATA, which can't be changed later
    int ownerCount_ = 0;
    RowRanges ownerSelection_;
    int selectedCount_ = 0;
    int focus_ = -1;
    int mark_ = -1;
    UINT callbackMask_ = 0; // state bits that the parent keeps
    bool sorting_ = false;  // a comparison runs: items stay as they are

    HWND header_ = nullptr;
    int headerHeight_ = 0;
    std::vector<Column> columns_;

    DWORD extended_ = 0;
    std::optional<COLORREF> background_; // nothing: the system's
    std::optional<COLORREF> text_;
    std::optional<COLORREF> textBackground_;
    HIMAGELIST images_[3] = {}; // by LVSIL_ number
    bool ownStateImages_ = false;
    TextMeasure measure_;
    int rowHeight_ = 1;
    int ownerDrawHeight_ = 0;
    int listColumnWidth_ = 0;
    bool listColumnWidthSet_ = false;
    SIZE givenSpacing_{};
    IconGrid grid_;
    bool redraw_ = true;
    Bar bars_[2]; // as set, by SB_HORZ and SB_VERT
    bool updatingBars_ = false;
    bool barsStale_ = false;   // they show an older state until the next painting
    SIZE headerPlace_{-1, -1}; // width of the client area and scrolling that the header was placed for

    POINT scroll_{}; // report: pixels, rows; list: columns, 0; icons: pixels

    Press press_ = Press::none;
    int pressed_ = -1;
    POINT pressPoint_{};
    bool pressedRight_ = false;
    bool deselectOnRelease_ = false; // the other items, when the press doesn't become a drag
    bool toggleOnRelease_ = false;
    bool editOnRelease_ = false;
    int editCandidate_ = -1; // its label is edited when no second click comes
    POINT bandFrom_{};       // in view coordinates
    POINT bandTo_{};
    std::vector<int> bandBefore_; // selected before it began, with Ctrl
    int hot_ = -1;
    HCURSOR hotCursor_ = nullptr;
    DWORD hoverTime_ = 0xFFFFFFFF;

    TypeAhead typeAhead_;
    LabelEdit labelEdit_;
    int editing_ = -1;
    bool endingEdit_ = false;
    HWND toolTips_ = nullptr;
    int checksSinceVerify_ = 0;
};

void registerListView();

} // namespace vndk::win32
