// The tree view. Styles, messages and notifications: win32/treeview.h.
//
// Not done: tips for labels that are cut (TVM_GETTOOLTIPS answers what was set), right-to-left reading, smooth
// scrolling (TVM_SETSCROLLTIME is kept), messages with 16-bit text.
#pragma once

#include "controls/control.h"
#include "controls/label_edit.h"
#include "controls/text_measure.h"
#include "controls/tree_items.h"
#include "controls/type_ahead.h"
#include "win32/treeview.h"

#include <optional>
#include <string>
#include <vector>

namespace vndk::win32 {

class TreeView : public Control, public LabelEditHost {
public:
    explicit TreeView(HWND window) : Control(window) {}
    ~TreeView() override;
    LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;
    void endLabelEdit(bool accept) override;

private:
    enum class By : std::uint8_t { program, mouse, keyboard };
    enum class Press : std::uint8_t { none, item, other };

    // ---- tree_view.cpp: dispatch, life, looks
    LRESULT handleTreeMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handleLookMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handleWindowMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT onCreate();
    void onDestroy();
    void onFinalDestroy();
    void onSetFont(HFONT font, bool redraw);
    void onStyleChanged(const STYLESTRUCT& styles);
    LRESULT onSetImageList(int which, HIMAGELIST images);
    LRESULT onSetItemHeight(int height);
    LRESULT onSetIndent(int indent);
    LRESULT onSetInsertMark(bool after, HTREEITEM item);
    void makeCheckBoxes();
    void measureLines();
    void dropBoldFont();
    void verify();
    [[nodiscard]] const TextMeasure& measureFor(const TreeItem& item);
    [[nodiscard]] COLORREF backgroundColor() const;
    [[nodiscard]] COLORREF textColor() const;

    // ---- tree_view_items.cpp: items and what they hold
    LRESULT onInsertItem(const TVINSERTSTRUCTA* given);
    LRESULT onDeleteItem(HTREEITEM handle);
    LRESULT onGetItem(TVITEMA* wanted);
    LRESULT onSetItem(const TVITEMA* given);
    LRESULT onGetItemState(HTREEITEM handle, UINT mask) const;
    LRESULT onGetNextItem(HTREEITEM handle, UINT which) const;
    LRESULT onSortChildren(HTREEITEM parent, bool below);
    LRESULT onSortChildrenWith(const TVSORTCB* sort);
    void takeContent(TreeItem& item, const TVITEMA& given);
    void setItemState(TreeItem& item, UINT state, UINT mask);
    [[nodiscard]] TreeItem* placeFor(TreeItem* parent, const TVINSERTSTRUCTA& given) const;
    void deleteAll();
    void notifyDeleted(const std::vector<HTREEITEM>& handles);
    void moveCaretFrom(TreeItem* dying);
    void forgetDying();
    void removeChildren(TreeItem* item);
    void applyOrder(TreeItem* parent, const std::vector<TreeItem*>& children);
    void sortByText(TreeItem* parent);
    [[nodiscard]] TreeItem* parentOf(HTREEITEM handle);
    [[nodiscard]] TVITEMA askParent(HTREEITEM handle, UINT mask, std::string* text = nullptr);
    [[nodiscard]] std::string textOf(HTREEITEM handle);
    [[nodiscard]] int imageOf(HTREEITEM handle, bool selected);
    [[nodiscard]] bool opens(HTREEITEM handle);
    void measureItem(TreeItem& item);
    void updateExtent(TreeItem& item);
    void showChildren(TreeItem* item);
    void measureRows();

    // ---- tree_view_select.cpp: selection, opening and closing
    LRESULT onSelectItem(HTREEITEM handle, UINT which);
    LRESULT onExpand(HTREEITEM handle, UINT code);
    LRESULT onEnsureVisible(HTREEITEM handle);
    bool selectItem(HTREEITEM handle, By by, bool singleExpand = true);
    void singleExpand(HTREEITEM former, HTREEITEM selected);
    bool setDropTarget(HTREEITEM handle);
    bool expand(HTREEITEM handle, UINT code, bool tell);
    bool open(HTREEITEM handle, UINT code, bool tell);
    bool close(HTREEITEM handle, bool reset, bool tell);
    void openAll(HTREEITEM handle);
    bool openParents(TreeItem* item);
    void scrollChildrenIn(const TreeItem* item);
    [[nodiscard]] NMTREEVIEWA noteOf(UINT action) const;
    static void describe(TVITEMA& told, const TreeItem* item);
    bool notifyExpand(UINT code, UINT action, HTREEITEM handle);

    // ---- tree_view_layout.cpp: geometry, hit test, scrolling
    struct Parts {
        RECT row{};
        int button = 0; // left of the cell that holds button and lines
        int state = 0;
        int icon = 0;
        int label = 0;
        int labelEnd = 0;
    };
    LRESULT onGetItemRect(WPARAM textOnly, RECT* rect);
    LRESULT onHitTest(TVHITTESTINFO* info);
    [[nodiscard]] TreeItem* hitTest(POINT point, UINT& flags);
    [[nodiscard]] Parts partsOf(TreeItem& item);
    [[nodiscard]] int contentLeft(const TreeItem& item) const;
    [[nodiscard]] bool hasRootCell() const;
    [[nodiscard]] SIZE imageSize() const;
    [[nodiscard]] SIZE stateSize() const;
    [[nodiscard]] int visibleLines() const;
    [[nodiscard]] RECT rowRect(const TreeItem& item) const;
    void onScrollBar(int bar, int code);
    void onWheel(int delta);
    void scrollTo(int line, int x);
    [[nodiscard]] int clampedTop(int line) const;
    [[nodiscard]] int clampedLeft(int x) const;
    bool scrollIntoView(TreeItem& item, bool across);
    void updateScrollBars();
    void setBar(int bar, int maximum, int page, int position);
    void invalidateItem(const TreeItem* item) const;
    void invalidateFrom(const TreeItem* item) const;

    // ---- tree_view_paint.cpp
    struct ItemLook {
        HTREEITEM handle = nullptr;
        Parts parts{};
        COLORREF text = 0;
        COLORREF background = 0;
        bool highlighted = false;
        bool images = true;
        UINT drawState = 0; // CDIS_
    };
    void onPaint(HDC given);
    LRESULT onEraseBackground(HDC dc) const;
    void drawAll(HDC dc, const RECT& area);
    void drawRows(HDC dc, const RECT& area, LRESULT answer);
    void drawRow(HDC dc, HTREEITEM handle, LRESULT controlAnswer);
    void drawItem(HDC dc, const ItemLook& look);
    void drawLines(HDC dc, const TreeItem& item, const Parts& parts);
    void drawDotted(HDC dc, const RECT& line);
    void drawButton(HDC dc, const TreeItem& item, const Parts& parts) const;
    void drawImages(HDC dc, const ItemLook& look, const TreeItem& item, int image) const;
    void drawLabel(HDC dc, const ItemLook& look, const TreeItem& item, const std::string& text);
    void drawInsertMark(HDC dc) const;
    LRESULT notifyDraw(DWORD stage, HDC dc, const RECT& rect, ItemLook* look);
    [[nodiscard]] ItemLook lookOf(TreeItem& item);
    [[nodiscard]] bool looksSelected(const TreeItem& item) const;
    LRESULT onCreateDragImage(HTREEITEM handle);

    // ---- tree_view_input.cpp
    LRESULT handleMouse(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT handleKeys(UINT message, WPARAM wParam, LPARAM lParam);
    void onButtonDown(POINT point, bool right);
    void onDoubleClick(POINT point);
    void onMouseMove(POINT point);
    void onButtonUp(POINT point);
    LRESULT onRightButtonUp(WPARAM wParam, LPARAM lParam);
    void click(HTREEITEM handle, UINT flags, bool hadFocus);
    void beginDrag();
    void endPress();
    void onCaptureLost();
    void setHot(HTREEITEM handle);
    void onKeyDown(int key);
    void moveCaret(const TreeItem* item);
    [[nodiscard]] TreeItem* targetOf(int key, TreeItem* caret);
    void scrollByKey(int key);
    void onChar(char character);
    void toggleCheck(HTREEITEM handle);
    void onSetFocus();
    void onKillFocus();
    void onTimer(UINT_PTR timer);
    void cancelEditTimer();

    // ---- tree_view_edit.cpp
    LRESULT onEditLabel(HTREEITEM handle);
    LRESULT onCommand(WPARAM wParam, LPARAM lParam);
    void storeLabel(HTREEITEM handle, const std::string& text);

    TreeItems items_;
    HTREEITEM caret_ = nullptr;
    HTREEITEM dropTarget_ = nullptr;
    HTREEITEM insertMark_ = nullptr;
    bool insertMarkAfter_ = false;
    HTREEITEM hot_ = nullptr;
    bool sorting_ = false; // a comparison runs: items stay as they are

    std::optional<COLORREF> background_;
    std::optional<COLORREF> text_;
    COLORREF lineColor_ = CLR_DEFAULT;
    COLORREF markColor_ = CLR_DEFAULT;
    HIMAGELIST images_ = nullptr;
    HIMAGELIST stateImages_ = nullptr;
    HIMAGELIST checkImages_ = nullptr; // our own
    TextMeasure measure_;
    TextMeasure boldMeasure_;
    HFONT boldFont_ = nullptr; // our own
    HBRUSH dots_ = nullptr;
    int lineHeight_ = 16;
    bool lineHeightSet_ = false;
    int indent_ = 19;
    DWORD scrollTime_ = 100;
    HWND toolTips_ = nullptr;

    int top_ = 0;  // line at the upper edge
    int left_ = 0; // pixels
    bool redraw_ = true;
    bool updatingBars_ = false;
    bool barsStale_ = false;
    int barMaximum_[2] = {-1, -1};
    int barPage_[2] = {0, 0};
    int barPosition_[2] = {0, 0};

    Press press_ = Press::none;
    HTREEITEM pressed_ = nullptr; // looks selected while the button is held
    UINT pressedFlags_ = 0;
    bool pressedRight_ = false;
    bool pressHadFocus_ = false;
    POINT pressPoint_{};
    HTREEITEM editCandidate_ = nullptr;
    TypeAhead typeAhead_;
    bool dropCharacter_ = false; // the parent took the key
    LabelEdit labelEdit_;
    HTREEITEM editing_ = nullptr;
    bool endingEdit_ = false;
    int checksSinceVerify_ = 0;
};

void registerTreeView();

} // namespace vndk::win32
