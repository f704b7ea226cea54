#include "controls/list_view.h"

#include "controls/check_images.h"
#include "user/window.h"
#include "win32/draw.h"
#include "win32/header.h"
#include "win32/input.h"
#include "win32/paint.h"
#include "win32/queue.h"
#include "win32/scrollbar.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <utility>

namespace vndk::win32 {

namespace {

constexpr UINT lastListMessage = LVM_GETBKIMAGEW;

POINT pointIn(LPARAM lParam) { return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}; }

template <typename T>
T* structureAt(LPARAM lParam) {
    return reinterpret_cast<T*>(lParam);
}

} // namespace

LRESULT ListView::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    verify();
    if (message >= LVM_FIRST && message <= lastListMessage)
        return handleListMessage(message, wParam, lParam);
    if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST)
        return handleMouse(message, wParam, lParam);
    if (message >= WM_KEYFIRST && message <= WM_KEYLAST)
        return handleKeys(message, wParam, lParam);
    return handleWindowMessage(message, wParam, lParam);
}

LRESULT ListView::handleListMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case LVM_GETITEMCOUNT:
    case LVM_GETITEMA:
    case LVM_SETITEMA:
    case LVM_INSERTITEMA:
    case LVM_DELETEITEM:
    case LVM_DELETEALLITEMS:
    case LVM_GETCALLBACKMASK:
    case LVM_SETCALLBACKMASK:
    case LVM_GETNEXTITEM:
    case LVM_FINDITEMA:
    case LVM_SETITEMSTATE:
    case LVM_GETITEMSTATE:
    case LVM_GETITEMTEXTA:
    case LVM_SETITEMTEXTA:
    case LVM_SETITEMCOUNT:
    case LVM_SORTITEMS:
    case LVM_SORTITEMSEX:
    case LVM_GETSELECTEDCOUNT:
    case LVM_GETSELECTIONMARK:
    case LVM_SETSELECTIONMARK:
    case LVM_EDITLABELA:
    case LVM_GETEDITCONTROL:
    case LVM_GETISEARCHSTRINGA:
        return handleItemMessage(message, wParam, lParam);
    case LVM_GETCOLUMNA:
    case LVM_SETCOLUMNA:
    case LVM_INSERTCOLUMNA:
    case LVM_DELETECOLUMN:
    case LVM_GETCOLUMNWIDTH:
    case LVM_SETCOLUMNWIDTH:
    case LVM_GETHEADER:
    case LVM_SETCOLUMNORDERARRAY:
    case LVM_GETCOLUMNORDERARRAY:
        return handleColumnMessage(message, wParam, lParam);
    case LVM_GETITEMRECT:
    case LVM_GETSUBITEMRECT:
    case LVM_SETITEMPOSITION:
    case LVM_SETITEMPOSITION32:
    case LVM_GETITEMPOSITION:
    case LVM_HITTEST:
    case LVM_SUBITEMHITTEST:
    case LVM_ENSUREVISIBLE:
    case LVM_SCROLL:
    case LVM_ARRANGE:
    case LVM_GETVIEWRECT:
    case LVM_GETTOPINDEX:
    case LVM_GETCOUNTPERPAGE:
    case LVM_GETORIGIN:
    case LVM_GETITEMSPACING:
    case LVM_SETICONSPACING:
    case LVM_APPROXIMATEVIEWRECT:
    case LVM_GETSTRINGWIDTHA:
        return handlePlaceMessage(message, wParam, lParam);
    default:
        return handleLookMessage(message, wParam, lParam);
    }
}

LRESULT ListView::handleItemMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const int index = static_cast<int>(wParam);
    switch (message) {
    case LVM_GETITEMCOUNT:
        return count();
    case LVM_GETITEMA:
        return onGetItem(structureAt<LVITEMA>(lParam));
    case LVM_SETITEMA:
        return onSetItem(structureAt<LVITEMA>(lParam));
    case LVM_INSERTITEMA:
        return onInsertItem(structureAt<LVITEMA>(lParam));
    case LVM_DELETEITEM:
        return onDeleteItem(index);
    case LVM_DELETEALLITEMS:
        return onDeleteAllItems();
    case LVM_GETCALLBACKMASK:
        return callbackMask_;
    case LVM_SETCALLBACKMASK:
        callbackMask_ = static_cast<UINT>(wParam);
        return TRUE;
    case LVM_GETNEXTITEM:
        return onGetNextItem(index, LOWORD(static_cast<DWORD_PTR>(lParam)));
    case LVM_FINDITEMA:
        return onFindItem(index, structureAt<LVFINDINFOA>(lParam));
    case LVM_SETITEMSTATE:
        return onSetItemState(index, structureAt<LVITEMA>(lParam));
    case LVM_GETITEMSTATE:
        return onGetItemState(index, static_cast<UINT>(lParam));
    case LVM_GETITEMTEXTA:
        return onGetItemText(index, structureAt<LVITEMA>(lParam));
    case LVM_SETITEMTEXTA:
        return onSetItemText(index, structureAt<LVITEMA>(lParam));
    case LVM_SETITEMCOUNT:
        return onSetItemCount(index, static_cast<DWORD>(lParam));
    case LVM_SORTITEMS:
        return onSortItems(reinterpret_cast<PFNLVCOMPARE>(lParam), static_cast<LPARAM>(wParam), false);
    case LVM_SORTITEMSEX:
        return onSortItems(reinterpret_cast<PFNLVCOMPARE>(lParam), static_cast<LPARAM>(wParam), true);
    case LVM_GETSELECTEDCOUNT:
        return selectedCount();
    case LVM_GETSELECTIONMARK:
        return mark_;
    case LVM_SETSELECTIONMARK:
        return onSetSelectionMark(static_cast<int>(lParam));
    case LVM_EDITLABELA:
        return onEditLabel(index);
    case LVM_GETEDITCONTROL:
        return reinterpret_cast<LRESULT>(labelEdit_.window());
    default: { // LVM_GETISEARCHSTRINGA
        if (!typeAhead_.isRunning(GetTickCount()))
            return 0;
        if (auto* buffer = reinterpret_cast<LPSTR>(lParam); buffer != nullptr)
            std::strcpy(buffer, typeAhead_.text().c_str());
        return static_cast<LRESULT>(typeAhead_.text().size());
    }
    }
}

LRESULT ListView::handleColumnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const int index = static_cast<int>(wParam);
    switch (message) {
    case LVM_GETCOLUMNA:
        return onGetColumn(index, structureAt<LVCOLUMNA>(lParam));
    case LVM_SETCOLUMNA:
        return onSetColumn(index, structureAt<LVCOLUMNA>(lParam));
    case LVM_INSERTCOLUMNA:
        return onInsertColumn(index, structureAt<LVCOLUMNA>(lParam));
    case LVM_DELETECOLUMN:
        return onDeleteColumn(index);
    case LVM_GETCOLUMNWIDTH:
        return onGetColumnWidth(index);
    case LVM_SETCOLUMNWIDTH:
        return onSetColumnWidth(index, GET_X_LPARAM(lParam));
    case LVM_GETHEADER:
        return reinterpret_cast<LRESULT>(header_);
    case LVM_SETCOLUMNORDERARRAY: {
        const LRESULT done = header_ != nullptr ? SendMessageA(header_, HDM_SETORDERARRAY, wParam, lParam) : FALSE;
        if (done != FALSE) {
            refreshColumns();
            invalidateList();
        }
        return done;
    }
    default: // LVM_GETCOLUMNORDERARRAY
        return header_ != nullptr ? SendMessageA(header_, HDM_GETORDERARRAY, wParam, lParam) : FALSE;
    }
}

LRESULT ListView::handlePlaceMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const int index = static_cast<int>(wParam);
    switch (message) {
    case LVM_GETITEMRECT:
        return onGetItemRect(index, structureAt<RECT>(lParam));
    case LVM_GETSUBITEMRECT:
        return onGetSubItemRect(index, structureAt<RECT>(lParam));
    case LVM_SETITEMPOSITION:
        return onSetItemPosition(index, pointIn(lParam));
    case LVM_SETITEMPOSITION32:
        return lParam != 0 ? onSetItemPosition(index, *structureAt<POINT>(lParam)) : FALSE;
    case LVM_GETITEMPOSITION:
        return onGetItemPosition(index, structureAt<POINT>(lParam));
    case LVM_HITTEST:
        return onHitTest(structureAt<LVHITTESTINFO>(lParam), false);
    case LVM_SUBITEMHITTEST:
        return onHitTest(structureAt<LVHITTESTINFO>(lParam), true);
    case LVM_ENSUREVISIBLE:
        return onEnsureVisible(index, lParam != 0);
    case LVM_SCROLL:
        return onScroll(index, static_cast<int>(lParam));
    case LVM_ARRANGE:
        return onArrange(static_cast<UINT>(wParam));
    case LVM_GETVIEWRECT:
        return onGetViewRect(structureAt<RECT>(lParam));
    case LVM_GETTOPINDEX:
        if (isReport())
            return scroll_.y;
        return view() == LVS_LIST ? LRESULT{scroll_.x} * rowsPerPage() : 0;
    case LVM_GETCOUNTPERPAGE:
        if (isReport())
            return rowsPerPage();
        return view() == LVS_LIST ? LRESULT{rowsPerPage()} * columnsPerPage() : count();
    case LVM_GETORIGIN:
        return onGetOrigin(structureAt<POINT>(lParam));
    case LVM_GETITEMSPACING: {
        const SIZE cell = wParam != 0 ? SIZE{listColumnWidth_, rowHeight_} : spacing();
        return MAKELRESULT(cell.cx, cell.cy);
    }
    case LVM_SETICONSPACING:
        return onSetIconSpacing(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
    case LVM_APPROXIMATEVIEWRECT:
        return onApproximateViewRect(index, GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam));
    default: // LVM_GETSTRINGWIDTHA
        return lParam != 0 ? measure_.width(reinterpret_cast<LPCSTR>(lParam)) : 0;
    }
}

LRESULT ListView::handleLookMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto color = static_cast<COLORREF>(lParam);
    const auto given = [color] { return color == CLR_DEFAULT ? std::nullopt : std::optional<COLORREF>(color); };
    switch (message) {
    case LVM_GETBKCOLOR:
        return background_.value_or(GetSysColor(COLOR_WINDOW));
    case LVM_SETBKCOLOR:
        return onSetBackground(color);
    case LVM_GETTEXTCOLOR:
        return text_.value_or(GetSysColor(COLOR_WINDOWTEXT));
    case LVM_SETTEXTCOLOR:
        text_ = given();
        invalidateList();
        return TRUE;
    case LVM_GETTEXTBKCOLOR:
        return textBackground_.value_or(GetSysColor(COLOR_WINDOW));
    case LVM_SETTEXTBKCOLOR:
        textBackground_ = given();
        invalidateList();
        return TRUE;
    case LVM_GETIMAGELIST:
        return wParam <= LVSIL_STATE ? reinterpret_cast<LRESULT>(images_[wParam]) : 0;
    case LVM_SETIMAGELIST:
        return onSetImageList(static_cast<int>(wParam), reinterpret_cast<HIMAGELIST>(lParam));
    case LVM_GETEXTENDEDLISTVIEWSTYLE:
        return extended_;
    case LVM_SETEXTENDEDLISTVIEWSTYLE:
        return onSetExtendedStyle(static_cast<DWORD>(wParam), static_cast<DWORD>(lParam));
    case LVM_REDRAWITEMS:
        return onRedrawItems(static_cast<int>(wParam), static_cast<int>(lParam));
    case LVM_UPDATE:
        updateScrollBars();
        if (isIconic() && arranged())
            invalidateList();
        return onRedrawItems(static_cast<int>(wParam), static_cast<int>(wParam));
    case LVM_CREATEDRAGIMAGE:
        return onCreateDragImage(static_cast<int>(wParam), structureAt<POINT>(lParam));
    case LVM_SETHOTITEM: {
        const int former = hot_;
        setHot(static_cast<int>(wParam), {});
        return former;
    }
    case LVM_GETHOTITEM:
        return hot_;
    case LVM_SETHOTCURSOR:
        return reinterpret_cast<LRESULT>(std::exchange(hotCursor_, reinterpret_cast<HCURSOR>(lParam)));
    case LVM_GETHOTCURSOR:
        return reinterpret_cast<LRESULT>(hotCursor_);
    case LVM_SETHOVERTIME:
        return std::exchange(hoverTime_, static_cast<DWORD>(lParam));
    case LVM_GETHOVERTIME:
        return hoverTime_;
    case LVM_SETTOOLTIPS:
        return reinterpret_cast<LRESULT>(std::exchange(toolTips_, reinterpret_cast<HWND>(wParam)));
    case LVM_GETTOOLTIPS:
        return reinterpret_cast<LRESULT>(toolTips_);
    case LVM_SETBKIMAGEA: {
        const auto* image = structureAt<LVBKIMAGEA>(lParam);
        if (image != nullptr && (image->ulFlags & LVBKIF_SOURCE_MASK) != LVBKIF_SOURCE_NONE)
            logOnce("list view: background pictures aren't supported");
        return image != nullptr && (image->ulFlags & LVBKIF_SOURCE_MASK) == LVBKIF_SOURCE_NONE;
    }
    case LVM_GETBKIMAGEA:
        if (lParam != 0)
            structureAt<LVBKIMAGEA>(lParam)->ulFlags = LVBKIF_SOURCE_NONE;
        return lParam != 0;
    case LVM_GETNUMBEROFWORKAREAS:
        if (lParam != 0)
            *structureAt<UINT>(lParam) = 0;
        return 0;
    default:
        logOnce("list view: message " + std::to_string(message) + " isn't supported");
        return 0;
    }
}

LRESULT ListView::handleWindowMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        return onCreate(structureAt<CREATESTRUCTA>(lParam));
    case WM_DESTROY:
        onDestroy();
        return 0;
    case WM_NCDESTROY:
        onFinalDestroy();
        break;
    case WM_SIZE:
        onSize();
        return 0;
    case WM_SETFONT:
        onSetFont(reinterpret_cast<HFONT>(wParam), lParam != 0);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(measure_.font());
    case WM_SETREDRAW:
        onSetRedraw(wParam != 0);
        return 0;
    case WM_STYLECHANGING:
        if (static_cast<int>(wParam) == GWL_STYLE && lParam != 0)
            onStyleChanging(structureAt<STYLESTRUCT>(lParam));
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
    case WM_NOTIFY:
        if (lParam != 0 && header_ != nullptr && structureAt<NMHDR>(lParam)->hwndFrom == header_)
            return onHeaderNotify(*structureAt<NMHDR>(lParam), wParam, lParam);
        break;
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
    case WM_MOUSEHOVER:
        onHover(pointIn(lParam));
        return 0;
    case WM_MOUSELEAVE:
        setHot(-1, {});
        return 0;
    case WM_SETCURSOR:
        if (hot_ >= 0 && hasExtended(LVS_EX_ONECLICKACTIVATE | LVS_EX_TWOCLICKACTIVATE) && hotCursor_ != nullptr &&
            LOWORD(static_cast<DWORD_PTR>(lParam)) == HTCLIENT) {
            SetCursor(hotCursor_);
            return TRUE;
        }
        break;
    default:
        break;
    }
    return defaultHandling(message, wParam, lParam);
}

// ---- Life ----------------------------------------------------------------------------------------------------------

LRESULT ListView::onCreate(const CREATESTRUCTA* create) {
    ownerData_ = create != nullptr && (static_cast<DWORD>(create->style) & LVS_OWNERDATA) != 0;
    SendMessageA(GetParent(window()), WM_NOTIFYFORMAT, reinterpret_cast<WPARAM>(window()), NF_QUERY);
    measureRows();
    resetGrid();
    if (alive() && isReport())
        makeHeader();
    return alive() ? 0 : -1;
}

void ListView::onDestroy() {
    labelEdit_.forget(); // it goes with us
    if (count() > 0)
        onDeleteAllItems();
}

void ListView::onFinalDestroy() {
    items_.clear();
    ownerCount_ = 0;
    if (hasStyle(LVS_SHAREIMAGELISTS))
        return;
    std::sort(std::begin(images_), std::end(images_));
    const auto end = std::unique(std::begin(images_), std::end(images_));
    for (auto list = std::begin(images_); list != end; ++list)
        if (*list != nullptr)
            ImageList_Destroy(*list);
    std::fill(std::begin(images_), std::end(images_), nullptr);
}

void ListView::onSize() {
    updateScrollBars();
    if (!alive())
        return;
    if (isIconic() && arranged())
        invalidateList();
}

void ListView::onSetFont(HFONT font, bool redraw) {
    measure_.setFont(font);
    if (header_ != nullptr)
        SendMessageA(header_, WM_SETFONT, reinterpret_cast<WPARAM>(font), redraw ? TRUE : FALSE);
    measureRows();
    updateScrollBars();
    if (redraw)
        invalidate();
}

/// Unlike other windows a list view stays as visible, or as hidden, as it was.
void ListView::onSetRedraw(bool redraw) {
    redraw_ = redraw;
    if (!redraw)
        return;
    updateScrollBars();
    invalidate();
}

void ListView::onStyleChanging(STYLESTRUCT* styles) const {
    styles->styleNew = (styles->styleNew & ~LVS_OWNERDATA) | (ownerData_ ? LVS_OWNERDATA : 0U);
}

void ListView::onStyleChanged(const STYLESTRUCT& styles) {
    const DWORD changed = styles.styleOld ^ styles.styleNew;
    if ((changed & (LVS_TYPEMASK | LVS_AUTOARRANGE | LVS_ALIGNMASK | LVS_NOCOLUMNHEADER | LVS_OWNERDRAWFIXED |
                    LVS_NOLABELWRAP | LVS_NOSCROLL)) == 0)
        return;
    if ((changed & LVS_TYPEMASK) != 0) {
        endLabelEdit(false);
        if (!alive())
            return;
        scroll_ = {};
        measureRows();
        if (isReport())
            makeHeader();
    } else if ((changed & LVS_OWNERDRAWFIXED) != 0) {
        measureRows();
    }
    if (!alive())
        return;
    if ((changed & (LVS_TYPEMASK | LVS_AUTOARRANGE | LVS_ALIGNMASK)) != 0)
        resetGrid();
    updateScrollBars();
    placeHeader();
    invalidate();
    if ((changed & LVS_TYPEMASK) != 0 && isItem(focus_))
        onEnsureVisible(focus_, false);
}

// ---- Looks ---------------------------------------------------------------------------------------------------------

void ListView::measureRows() {
    const int content = std::max<int>({measure_.lineHeight(), smallSize().cy, stateSize().cy});
    rowHeight_ = content + 1;
    if (!listColumnWidthSet_)
        listColumnWidth_ = std::max<int>(1, 16 * measure_.width("0") + smallSize().cx + stateSize().cx);
    if (!hasStyle(LVS_OWNERDRAWFIXED) || !isReport())
        return;
    MEASUREITEMSTRUCT measured{};
    measured.CtlType = ODT_LISTVIEW;
    measured.CtlID = static_cast<UINT>(id());
    measured.itemHeight = static_cast<UINT>(rowHeight_);
    SendMessageA(GetParent(window()), WM_MEASUREITEM, measured.CtlID, reinterpret_cast<LPARAM>(&measured));
    constexpr UINT highest = 0x7FFF;
    rowHeight_ = static_cast<int>(std::clamp(measured.itemHeight, 1U, highest));
}

COLORREF ListView::backgroundColor() const {
    if (!enabled() && !background_)
        return GetSysColor(COLOR_BTNFACE);
    return background_.value_or(GetSysColor(COLOR_WINDOW));
}

COLORREF ListView::textColor() const {
    return enabled() ? text_.value_or(GetSysColor(COLOR_WINDOWTEXT)) : GetSysColor(COLOR_GRAYTEXT);
}

COLORREF ListView::textBackgroundColor() const {
    if (!textBackground_ && !enabled())
        return backgroundColor();
    return textBackground_.value_or(GetSysColor(COLOR_WINDOW));
}

LRESULT ListView::onSetBackground(COLORREF color) {
    background_ = color == CLR_DEFAULT ? std::nullopt : std::optional<COLORREF>(color);
    invalidateList();
    return TRUE;
}

LRESULT ListView::onSetImageList(int which, HIMAGELIST images) {
    if (which < LVSIL_NORMAL || which > LVSIL_STATE)
        return 0;
    const HIMAGELIST former = std::exchange(images_[which], images);
    if (which == LVSIL_SMALL && header_ != nullptr)
        SendMessageA(header_, HDM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images));
    const int formerHeight = rowHeight_;
    measureRows();
    if (!alive())
        return reinterpret_cast<LRESULT>(former);
    const bool moved = which == LVSIL_NORMAL ? view() == LVS_ICON : rowHeight_ != formerHeight;
    if (isIconic() && moved)
        resetGrid();
    updateScrollBars();
    invalidateList();
    return reinterpret_cast<LRESULT>(former);
}

LRESULT ListView::onSetExtendedStyle(DWORD mask, DWORD styles) {
    const DWORD former = extended_;
    extended_ = mask != 0 ? (extended_ & ~mask) | (styles & mask) : styles;
    const DWORD changed = former ^ extended_;
    if ((changed & LVS_EX_HEADERDRAGDROP) != 0 && header_ != nullptr) {
        const auto headerStyle = static_cast<DWORD>(GetWindowLongA(header_, GWL_STYLE));
        SetWindowLongA(header_, GWL_STYLE,
                       static_cast<LONG>(hasExtended(LVS_EX_HEADERDRAGDROP) ? headerStyle | HDS_DRAGDROP
                                                                            : headerStyle & ~HDS_DRAGDROP));
    }
    if ((changed & LVS_EX_CHECKBOXES) != 0) {
        const HIMAGELIST checks = hasExtended(LVS_EX_CHECKBOXES) ? createCheckImages(false) : nullptr;
        const auto images = reinterpret_cast<HIMAGELIST>(onSetImageList(LVSIL_STATE, checks));
        if (std::exchange(ownStateImages_, checks != nullptr) && images != nullptr)
            ImageList_Destroy(images);
        if (checks != nullptr && !ownerData_)
            setStateOfAll(INDEXTOSTATEIMAGEMASK(1), LVIS_STATEIMAGEMASK);
    }
    if (alive() && changed != 0)
        invalidateList();
    return former;
}

void ListView::verify() {
#ifndef NDEBUG
    // The walk costs as much as there are items, so it runs once for so many messages.
    if (++checksSinceVerify_ < count())
        return;
    checksSinceVerify_ = 0;
    assert(items_.verify() && "the sequence of items is sound");
    assert(focus_ < count() && mark_ < count() && "focus and selection mark are items or none");
    int selected = 0;
    for (const ListItem* item = items_.first(); item != nullptr; item = ListItems::next(item))
        selected += (item->state & LVIS_SELECTED) != 0 ? 1 : 0;
    assert((ownerData_ || selected == selectedCount_) && "the number of selected items is known");
#endif
}

void registerListView() { registerControl<ListView>({.name = WC_LISTVIEW, .style = CS_DBLCLKS}); }

} // namespace vndk::win32
