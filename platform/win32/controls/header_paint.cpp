// Painting of the header control.
#include "controls/header_control.h"
#include "controls/paint_session.h"
#include "win32/draw.h"
#include "win32/imagelist.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr int textMargin = 6; // from an item's sides to its text

UINT stateOf(bool pressed, bool hot) { return (pressed ? CDIS_SELECTED : 0U) | (hot ? CDIS_HOT : 0U); }

} // namespace

void HeaderControl::onPaint(HDC given) {
    const PaintSession session(window(), given);
    if (session.dc() != nullptr)
        drawAll(session.dc(), session.area());
}

void HeaderControl::drawAll(HDC dc, const RECT& area) {
    const SavedContext saved(dc);
    SelectObject(dc, measure_.font());
    NMCUSTOMDRAW draw{};
    draw.dwDrawStage = CDDS_PREPAINT;
    draw.hdc = dc;
    draw.rc = area;
    const LRESULT answer = notify(NM_CUSTOMDRAW, draw);
    if (!alive() || (answer & CDRF_SKIPDEFAULT) != 0)
        return;
    const RECT client = clientRect();
    int x = 0;
    const std::vector<int> order = order_; // handlers may change it
    for (const int index : order) {
        if (!isItem(index))
            break;
        const RECT rect{x, 0, x + item(index).width, client.bottom};
        x = rect.right;
        if (rect.right > area.left && rect.left < area.right && rect.right > rect.left)
            drawItem(dc, index, rect, answer);
        if (!alive())
            return;
    }
    if (x < area.right && x < client.right)
        drawRest(dc, {x, 0, client.right, client.bottom});
    drawDropMark(dc);
    if ((answer & CDRF_NOTIFYPOSTPAINT) != 0) {
        draw.dwDrawStage = CDDS_POSTPAINT;
        notify(NM_CUSTOMDRAW, draw);
    }
}

void HeaderControl::drawItem(HDC dc, int index, RECT rect, LRESULT controlAnswer) {
    const SavedContext saved(dc);
    IntersectClipRect(dc, rect.left, rect.top, rect.right, rect.bottom);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(hotItem_ == index ? COLOR_HOTLIGHT : COLOR_BTNTEXT));
    NMCUSTOMDRAW draw{};
    draw.hdc = dc;
    draw.rc = rect;
    draw.dwItemSpec = static_cast<DWORD_PTR>(index);
    draw.uItemState = stateOf(press_ == Press::item && pressed_ == index && pressedLooksDown_, hotItem_ == index);
    draw.lItemlParam = item(index).data;
    LRESULT answer = CDRF_DODEFAULT;
    if ((controlAnswer & CDRF_NOTIFYITEMDRAW) != 0) {
        draw.dwDrawStage = CDDS_ITEMPREPAINT;
        answer = notify(NM_CUSTOMDRAW, draw);
        if (!alive() || !isItem(index) || (answer & CDRF_SKIPDEFAULT) != 0)
            return;
    }
    drawFace(dc, index, rect);
    if ((item(index).format & HDF_OWNERDRAW) != 0)
        sendDrawItem(dc, index, rect);
    else
        drawContent(dc, index, rect);
    if (alive() && (answer & CDRF_NOTIFYPOSTPAINT) != 0) {
        draw.dwDrawStage = CDDS_ITEMPOSTPAINT;
        notify(NM_CUSTOMDRAW, draw);
    }
}

void HeaderControl::drawFace(HDC dc, int index, RECT rect) {
    FillRect(dc, &rect, GetSysColorBrush(COLOR_BTNFACE));
    if (!hasStyle(HDS_BUTTONS))
        DrawEdge(dc, &rect, EDGE_ETCHED, BF_BOTTOM | BF_RIGHT);
    else if (press_ == Press::item && pressed_ == index && pressedLooksDown_)
        DrawEdge(dc, &rect, BDR_SUNKENOUTER, BF_RECT | BF_FLAT);
    else
        DrawEdge(dc, &rect, EDGE_RAISED, BF_RECT | BF_SOFT);
}

void HeaderControl::drawRest(HDC dc, const RECT& rect) const {
    RECT rest = rect;
    FillRect(dc, &rest, GetSysColorBrush(COLOR_BTNFACE));
    if (hasStyle(HDS_BUTTONS))
        DrawEdge(dc, &rest, EDGE_RAISED, BF_RECT | BF_SOFT);
    else
        DrawEdge(dc, &rest, EDGE_ETCHED, BF_BOTTOM);
}

void HeaderControl::drawContent(HDC dc, int index, RECT rect) {
    if (press_ == Press::item && pressed_ == index && pressedLooksDown_)
        OffsetRect(&rect, 1, 1);
    InflateRect(&rect, -textMargin, 0);
    const int format = item(index).format;
    const std::string text = (format & HDF_STRING) != 0 ? itemText(index) : std::string();
    if (!alive() || !isItem(index))
        return;
    const int textWidth = measure_.width(text);
    const int taken = drawPicture(dc, index, rect, textWidth);
    if (!alive() || text.empty())
        return;
    UINT align = DT_LEFT;
    if ((format & HDF_JUSTIFYMASK) == HDF_RIGHT)
        align = DT_RIGHT;
    else if ((format & HDF_JUSTIFYMASK) == HDF_CENTER)
        align = DT_CENTER;
    if ((format & HDF_BITMAP_ON_RIGHT) != 0) {
        if (align == DT_LEFT)
            rect.right = std::min<LONG>(rect.right, rect.left + std::max<int>(0, rect.right - rect.left - taken));
        else
            rect.right -= taken;
    } else {
        rect.left += taken;
    }
    if (rect.right > rect.left)
        DrawTextA(dc, text.data(), static_cast<int>(text.size()), &rect,
                  align | DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
}

int HeaderControl::drawPicture(HDC dc, int index, const RECT& rect, int textWidth) {
    const int format = item(index).format;
    SIZE size{};
    int image = -1;
    BITMAP bitmap{};
    if ((format & HDF_IMAGE) != 0 && images_ != nullptr) {
        image = itemImage(index);
        if (!alive() || !isItem(index) || image < 0)
            return 0;
        int width = 0;
        int height = 0;
        ImageList_GetIconSize(images_, &width, &height);
        size = {width, height};
    } else if ((format & HDF_BITMAP) != 0 && item(index).bitmap != nullptr &&
               GetObjectA(item(index).bitmap, sizeof(bitmap), &bitmap) != 0) {
        size = {bitmap.bmWidth, bitmap.bmHeight};
    } else {
        return 0;
    }
    const int space = rect.right - rect.left;
    const int margin = textWidth > 0 ? bitmapMargin_ : 0;
    int x = rect.left;
    if ((format & HDF_BITMAP_ON_RIGHT) != 0)
        x = rect.left + std::min<int>(textWidth + margin, std::max<int>(0, space - size.cx));
    else if ((format & HDF_JUSTIFYMASK) == HDF_RIGHT)
        x = std::max<int>(rect.left, rect.right - textWidth - margin - size.cx);
    const int y = rect.top + (rect.bottom - rect.top - size.cy) / 2;
    if (image >= 0) {
        ImageList_Draw(images_, image, dc, x, y, ILD_TRANSPARENT);
    } else {
        const HDC memory = CreateCompatibleDC(dc);
        {
            const SelectedObject selected(memory, item(index).bitmap);
            BitBlt(dc, x, y, size.cx, size.cy, memory, 0, 0, SRCCOPY);
        }
        DeleteDC(memory);
    }
    return size.cx + margin;
}

void HeaderControl::sendDrawItem(HDC dc, int index, const RECT& rect) const {
    DRAWITEMSTRUCT draw{};
    draw.CtlType = ODT_HEADER;
    draw.CtlID = static_cast<UINT>(id());
    draw.itemID = static_cast<UINT>(index);
    draw.itemAction = ODA_DRAWENTIRE;
    draw.itemState = press_ == Press::item && pressed_ == index && pressedLooksDown_ ? ODS_SELECTED : 0U;
    draw.hwndItem = window();
    draw.hDC = dc;
    draw.rcItem = rect;
    draw.itemData = static_cast<ULONG_PTR>(item(index).data);
    SendMessageA(GetParent(window()), WM_DRAWITEM, draw.CtlID, reinterpret_cast<LPARAM>(&draw));
}

void HeaderControl::drawDropMark(HDC dc) const {
    if (hotDivider_ < 0 || hotDivider_ > count())
        return;
    int x = 0;
    for (int place = 0; place < hotDivider_; ++place)
        x += item(order_[static_cast<std::size_t>(place)]).width;
    const RECT mark{x - 1, 0, x + 1, clientRect().bottom};
    FillRect(dc, &mark, GetSysColorBrush(COLOR_HIGHLIGHT));
}

} // namespace vndk::win32
