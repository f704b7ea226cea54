#include "controls/tree_view.h"

#include "controls/check_images.h"
#include "user/window.h"
#include "win32/draw.h"
#include "win32/fonts.h"
#include "win32/input.h"
#include "win32/metrics.h"
#include "win32/paint.h"
#include "win32/queue.h"
#include "win32/scrollbar.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <utility>

namespace vndk::win32 {

namespace {

constexpr UINT lastTreeMessage = TVM_EDITLABELW;
constexpr int linePadding = 3; // of a text's height
constexpr int indentGap = 3;   // beyond the picture
constexpr int smallestIndent = 5;
constexpr int largest = 0x7FFF;

template <typename T>
T* structureAt(LPARAM lParam) {
    return reinterpret_cast<T*>(lParam);
}

HTREEITEM itemIn(LPARAM lParam) { return reinterpret_cast<HTREEITEM>(lParam); }
LRESULT colorResult(const std::optional<COLORREF>& color) {
    constexpr LRESULT fromSystem = -1;
    return color ? static_cast<LRESULT>(*color) : fromSystem;
}
std::optional<COLORREF> colorGiven(LPARAM lParam) {
    const auto color = static_cast<COLORREF>(lParam);
    return color == CLR_NONE || color == CLR_DEFAULT ? std::nullopt : std::optional<COLORREF>(color);
}

} // namespace

TreeView::~TreeView() { onFinalDestroy(); }

LRESULT TreeView::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    verify();
    if (message >= TV_FIRST && message <= lastTreeMessage)
        return handleTreeMessage(message, wParam, lParam);
    if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST)
        return handleMouse(message, wParam, lParam);
    if (message >= WM_KEYFIRST && message <= WM_KEYLAST)
        return handleKeys(message, wParam, lParam);
    return handleWindowMessage(message, wParam, lParam);
}

LRESULT TreeView::handleTreeMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case TVM_INSERTITEMA:
        return onInsertItem(structureAt<TVINSERTSTRUCTA>(lParam));
    case TVM_DELETEITEM:
        return onDeleteItem(itemIn(lParam));
    case TVM_EXPAND:
        return onExpand(itemIn(lParam), static_cast<UINT>(wParam));
    case TVM_GETITEMRECT:
        return onGetItemRect(wParam, structureAt<RECT>(lParam));
    case TVM_GETCOUNT:
        return items_.count();
    case TVM_GETNEXTITEM:
        return onGetNextItem(itemIn(lParam), static_cast<UINT>(wParam));
    case TVM_SELECTITEM:
        return onSelectItem(itemIn(lParam), static_cast<UINT>(wParam));
    case TVM_GETITEMA:
        return onGetItem(structureAt<TVITEMA>(lParam));
    case TVM_SETITEMA:
        return onSetItem(structureAt<TVITEMA>(lParam));
    case TVM_GETITEMSTATE:
        return onGetItemState(reinterpret_cast<HTREEITEM>(wParam), static_cast<UINT>(lParam));
    case TVM_EDITLABELA:
        return onEditLabel(itemIn(lParam));
    case TVM_GETEDITCONTROL:
        return reinterpret_cast<LRESULT>(labelEdit_.window());
    case TVM_ENDEDITLABELNOW: {
        const bool wasOpen = labelEdit_.isOpen();
        endLabelEdit(wParam == 0);
        return wasOpen ? TRUE : FALSE;
    }
    case TVM_GETVISIBLECOUNT:
        return visibleLines();
    case TVM_HITTEST:
        return onHitTest(structureAt<TVHITTESTINFO>(lParam));
    case TVM_CREATEDRAGIMAGE:
        return onCreateDragImage(itemIn(lParam));
    case TVM_SORTCHILDREN:
        return onSortChildren(itemIn(lParam), wParam != 0);
    case TVM_SORTCHILDRENCB:
        return onSortChildrenWith(structureAt<TVSORTCB>(lParam));
    case TVM_ENSUREVISIBLE:
        return onEnsureVisible(itemIn(lParam));
    case TVM_GETISEARCHSTRINGA: {
        if (!typeAhead_.isRunning(GetTickCount()))
            return 0;
        if (auto* buffer = reinterpret_cast<LPSTR>(lParam); buffer != nullptr)
            std::strcpy(buffer, typeAhead_.text().c_str());
        return static_cast<LRESULT>(typeAhead_.text().size());
    }
    default:
        return handleLookMessage(message, wParam, lParam);
    }
}

LRESULT TreeView::handleLookMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case TVM_GETINDENT:
        return indent_;
    case TVM_SETINDENT:
        return onSetIndent(static_cast<int>(wParam));
    case TVM_GETIMAGELIST:
        return reinterpret_cast<LRESULT>(static_cast<int>(wParam) == TVSIL_STATE    ? stateImages_
                                         : static_cast<int>(wParam) == TVSIL_NORMAL ? images_
                                                                                    : nullptr);
    case TVM_SETIMAGELIST:
        return onSetImageList(static_cast<int>(wParam), reinterpret_cast<HIMAGELIST>(lParam));
    case TVM_SETTOOLTIPS:
        return reinterpret_cast<LRESULT>(std::exchange(toolTips_, reinterpret_cast<HWND>(wParam)));
    case TVM_GETTOOLTIPS:
        return reinterpret_cast<LRESULT>(toolTips_);
    case TVM_SETINSERTMARK:
        return onSetInsertMark(wParam != 0, itemIn(lParam));
    case TVM_SETITEMHEIGHT:
        return onSetItemHeight(static_cast<int>(wParam));
    case TVM_GETITEMHEIGHT:
        return lineHeight_;
    case TVM_SETBKCOLOR: {
        const LRESULT former = colorResult(std::exchange(background_, colorGiven(lParam)));
        invalidate();
        return former;
    }
    case TVM_GETBKCOLOR:
        return colorResult(background_);
    case TVM_SETTEXTCOLOR: {
        const LRESULT former = colorResult(std::exchange(text_, colorGiven(lParam)));
        invalidate();
        return former;
    }
    case TVM_GETTEXTCOLOR:
        return colorResult(text_);
    case TVM_SETLINECOLOR: {
        const COLORREF former = std::exchange(lineColor_, static_cast<COLORREF>(lParam));
        invalidate();
        return static_cast<LRESULT>(former);
    }
    case TVM_GETLINECOLOR:
        return static_cast<LRESULT>(lineColor_);
    case TVM_SETINSERTMARKCOLOR: {
        const COLORREF former = std::exchange(markColor_, static_cast<COLORREF>(lParam));
        invalidate();
        return static_cast<LRESULT>(former);
    }
    case TVM_GETINSERTMARKCOLOR:
        return static_cast<LRESULT>(markColor_);
    case TVM_SETSCROLLTIME:
        return static_cast<LRESULT>(std::exchange(scrollTime_, static_cast<DWORD>(wParam)));
    case TVM_GETSCROLLTIME:
        return static_cast<LRESULT>(scrollTime_);
    default:
        logOnce("tree view: message " + std::to_string(message) + " isn't supported");
        return 0;
    }
}

LRESULT TreeView::handleWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        return onCreate();
    case WM_DESTROY:
        onDestroy();
        return 0;
    case WM_NCDESTROY:
        onFinalDestroy();
        break;
    case WM_SIZE:
        updateScrollBars();
        if (hasStyle(TVS_FULLROWSELECT))
            invalidate();
        return 0;
    case WM_SETFONT:
        onSetFont(reinterpret_cast<HFONT>(wParam), lParam != 0);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(measure_.font());
    case WM_SETREDRAW:
        static_cast<void>(defaultHandling(message, wParam, lParam));
        redraw_ = wParam != 0;
        updateScrollBars();
        return 0;
    case WM_STYLECHANGED:
        if (static_cast<int>(wParam) == GWL_STYLE && lParam != 0)
            onStyleChanged(*structureAt<STYLESTRUCT>(lParam));
        return 0;
    case WM_ENABLE:
    case WM_SYSCOLORCHANGE:
        invalidate();
        return 0;
    case WM_ERASEBKGND:
        return onEraseBackground(reinterpret_cast<HDC>(wParam));
    case WM_PAINT:
    case WM_PRINTCLIENT:
        onPaint(reinterpret_cast<HDC>(wParam));
        return 0;
    case WM_GETDLGCODE:
        return DLGC_WANTCHARS | DLGC_WANTARROWS;
    case WM_NOTIFYFORMAT:
        return NFR_ANSI;
    case CCM_GETUNICODEFORMAT:
        return FALSE;
    case WM_HSCROLL:
        onScrollBar(SB_HORZ, LOWORD(wParam));
        return 0;
    case WM_VSCROLL:
        onScrollBar(SB_VERT, LOWORD(wParam));
        return 0;
    case WM_SETFOCUS:
        onSetFocus();
        return 0;
    case WM_KILLFOCUS:
        onKillFocus();
        return 0;
    case WM_COMMAND:
        return onCommand(wParam, lParam);
    case WM_TIMER:
        onTimer(wParam);
        return 0;
    case WM_CAPTURECHANGED:
        if (reinterpret_cast<HWND>(lParam) != window())
            onCaptureLost();
        return 0;
    case WM_CANCELMODE:
        onCaptureLost();
        return 0;
    case WM_MOUSELEAVE:
        setHot(nullptr);
        return 0;
    default:
        break;
    }
    return defaultHandling(message, wParam, lParam);
}

// ---- Life ----------------------------------------------------------------------------------------------------------

LRESULT TreeView::onCreate() {
    SendMessageA(GetParent(window()), WM_NOTIFYFORMAT, reinterpret_cast<WPARAM>(window()), NF_QUERY);
    if (!alive())
        return -1;
    measureLines();
    if (hasStyle(TVS_CHECKBOXES))
        makeCheckBoxes();
    return 0;
}

void TreeView::onDestroy() {
    labelEdit_.forget(); // it goes with us
    caret_ = nullptr;
    notifyDeleted(items_.detachChildren(items_.root()));
}

void TreeView::onFinalDestroy() {
    items_.clear();
    dropBoldFont();
    if (checkImages_ != nullptr)
        ImageList_Destroy(std::exchange(checkImages_, nullptr));
    if (dots_ != nullptr)
        DeleteObject(std::exchange(dots_, nullptr));
}

// ---- Looks ---------------------------------------------------------------------------------------------------------

COLORREF TreeView::backgroundColor() const {
    if (!background_ && !enabled())
        return GetSysColor(COLOR_BTNFACE);
    return background_.value_or(GetSysColor(COLOR_WINDOW));
}

COLORREF TreeView::textColor() const {
    return enabled() ? text_.value_or(GetSysColor(COLOR_WINDOWTEXT)) : GetSysColor(COLOR_GRAYTEXT);
}

void TreeView::dropBoldFont() {
    boldMeasure_.setFont(nullptr);
    if (boldFont_ != nullptr)
        DeleteObject(std::exchange(boldFont_, nullptr));
}

const TextMeasure& TreeView::measureFor(const TreeItem& item) {
    if (!item.is(TVIS_BOLD))
        return measure_;
    if (boldFont_ == nullptr) {
        LOGFONTA description{};
        GetObjectA(measure_.font(), sizeof(description), &description);
        description.lfWeight = FW_BOLD;
        boldFont_ = CreateFontIndirectA(&description);
        boldMeasure_.setFont(boldFont_);
    }
    return boldMeasure_;
}

void TreeView::onSetFont(HFONT font, bool redraw) {
    measure_.setFont(font);
    dropBoldFont();
    measureLines();
    measureRows();
    updateScrollBars();
    if (redraw)
        invalidate();
}

void TreeView::measureLines() {
    if (lineHeightSet_)
        return;
    const int height = std::max<int>(measure_.lineHeight() + linePadding, imageSize().cy);
    lineHeight_ = hasStyle(TVS_NONEVENHEIGHT) ? height : height & ~1;
}

LRESULT TreeView::onSetItemHeight(int height) {
    const int former = lineHeight_;
    constexpr int fromFont = -1;
    lineHeightSet_ = height != fromFont;
    if (lineHeightSet_) {
        height = std::clamp(height, 1, largest);
        lineHeight_ = hasStyle(TVS_NONEVENHEIGHT) ? height : std::max(height & ~1, 1);
    } else {
        measureLines();
    }
    updateScrollBars();
    invalidate();
    return former;
}

LRESULT TreeView::onSetIndent(int indent) {
    indent_ = std::clamp(indent, smallestIndent, largest);
    measureRows();
    updateScrollBars();
    invalidate();
    return 0;
}

LRESULT TreeView::onSetImageList(int which, HIMAGELIST images) {
    if (which != TVSIL_NORMAL && which != TVSIL_STATE)
        return 0;
    HIMAGELIST& list = which == TVSIL_NORMAL ? images_ : stateImages_;
    const HIMAGELIST former = std::exchange(list, images);
    if (which == TVSIL_NORMAL) {
        const int width = images != nullptr ? static_cast<int>(imageSize().cx) : GetSystemMetrics(SM_CXSMICON);
        indent_ = std::max(width + indentGap, smallestIndent);
        measureLines();
    }
    measureRows();
    updateScrollBars();
    invalidate();
    return reinterpret_cast<LRESULT>(former);
}

void TreeView::makeCheckBoxes() {
    if (checkImages_ == nullptr)
        checkImages_ = createCheckImages(true);
    if (stateImages_ == nullptr)
        onSetImageList(TVSIL_STATE, checkImages_);
}

void TreeView::onStyleChanged(const STYLESTRUCT& styles) {
    const DWORD changed = styles.styleOld ^ styles.styleNew;
    constexpr DWORD looks = TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_CHECKBOXES | TVS_FULLROWSELECT |
                            TVS_NOSCROLL | TVS_NONEVENHEIGHT | TVS_NOHSCROLL | TVS_SHOWSELALWAYS;
    if ((changed & looks) == 0)
        return;
    if ((changed & styles.styleNew & TVS_CHECKBOXES) != 0) {
        makeCheckBoxes();
        items_.forEach(
            [](TreeItem& item) { item.state = (item.state & ~TVIS_STATEIMAGEMASK) | INDEXTOSTATEIMAGEMASK(1); });
    }
    measureLines();
    measureRows();
    updateScrollBars();
    invalidate();
}

LRESULT TreeView::onSetInsertMark(bool after, HTREEITEM handle) {
    const TreeItem* item = items_.find(handle);
    if (handle != nullptr && item == nullptr)
        return FALSE;
    insertMark_ = handle;
    insertMarkAfter_ = after;
    invalidate();
    return TRUE;
}

void TreeView::verify() {
#ifndef NDEBUG
    // The walk costs as much as there are items, so it runs once for so many messages.
    if (++checksSinceVerify_ < items_.count())
        return;
    checksSinceVerify_ = 0;
    assert(items_.verify() && "levels and rows of the tree are sound");
    assert((caret_ == nullptr || items_.findToRead(caret_) != nullptr) && "the caret is an item or none");
#endif
}

void registerTreeView() { registerControl<TreeView>({.name = WC_TREEVIEW, .style = CS_DBLCLKS}); }

} // namespace vndk::win32
