#include "controls/header_control.h"

#include "user/window.h"
#include "win32/draw.h"
#include "win32/input.h"
#include "win32/metrics.h"
#include "win32/paint.h"

#include <algorithm>
#include <cstring>
#include <numeric>

namespace vndk::win32 {

namespace {

constexpr int verticalPadding = 4; // above and below the text together
constexpr int dividerReach = 8;    // so near to a divider the pointer takes it
constexpr int largestWidth = 0x7FFF;

void copyText(const std::string& text, LPSTR buffer, int size) {
    if (buffer == nullptr || size <= 0)
        return;
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
}

} // namespace

LRESULT HeaderControl::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message >= HDM_FIRST && message <= HDM_CLEARFILTER)
        return handleHeaderMessage(message, wParam, lParam);
    switch (message) {
    case WM_SETFONT:
        onSetFont(reinterpret_cast<HFONT>(wParam), lParam != 0);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(measure_.font());
    case WM_ERASEBKGND:
        return 1; // all of it is painted
    case WM_PAINT:
    case WM_PRINTCLIENT:
        onPaint(reinterpret_cast<HDC>(wParam));
        return 0;
    case WM_SIZE:
    case WM_STYLECHANGED:
    case WM_ENABLE:
        invalidate();
        return 0;
    case CCM_GETUNICODEFORMAT:
        return FALSE;
    default:
        return handleInput(message, wParam, lParam);
    }
}

LRESULT HeaderControl::handleHeaderMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const int index = static_cast<int>(wParam);
    switch (message) {
    case HDM_GETITEMCOUNT:
        return count();
    case HDM_INSERTITEMA:
        return onInsertItem(index, reinterpret_cast<const HDITEMA*>(lParam));
    case HDM_DELETEITEM:
        return onDeleteItem(index);
    case HDM_GETITEMA:
        return onGetItem(index, reinterpret_cast<HDITEMA*>(lParam));
    case HDM_SETITEMA:
        return onSetItem(index, reinterpret_cast<const HDITEMA*>(lParam));
    case HDM_LAYOUT:
        return onLayout(reinterpret_cast<const HDLAYOUT*>(lParam));
    case HDM_HITTEST:
        return onHitTest(reinterpret_cast<HDHITTESTINFO*>(lParam));
    case HDM_GETITEMRECT:
        return onGetItemRect(index, reinterpret_cast<RECT*>(lParam));
    case HDM_SETIMAGELIST: {
        const HIMAGELIST former = std::exchange(images_, reinterpret_cast<HIMAGELIST>(lParam));
        invalidate();
        return reinterpret_cast<LRESULT>(former);
    }
    case HDM_GETIMAGELIST:
        return reinterpret_cast<LRESULT>(images_);
    case HDM_ORDERTOINDEX:
        return isItem(index) ? order_[wParam] : index;
    case HDM_GETORDERARRAY:
        return onGetOrderArray(index, reinterpret_cast<int*>(lParam));
    case HDM_SETORDERARRAY:
        return onSetOrderArray(index, reinterpret_cast<const int*>(lParam));
    case HDM_SETHOTDIVIDER: {
        const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        hotDivider_ = wParam != 0 ? dropOrder(point) : static_cast<int>(lParam);
        invalidate();
        return hotDivider_;
    }
    case HDM_SETBITMAPMARGIN: {
        const int former = std::exchange(bitmapMargin_, std::clamp(index, 0, largestWidth));
        invalidate();
        return former;
    }
    case HDM_GETBITMAPMARGIN:
        return bitmapMargin_;
    default:
        logOnce("header control: message " + std::to_string(message) + " isn't supported");
        return 0;
    }
}

// ---- Items ---------------------------------------------------------------------------------------------------------

void HeaderControl::apply(Item& item, const HDITEMA& given) {
    if ((given.mask & HDI_WIDTH) != 0)
        item.width = std::clamp(given.cxy, 0, largestWidth);
    if ((given.mask & HDI_TEXT) != 0) {
        item.textCallback = given.pszText == LPSTR_TEXTCALLBACK;
        item.text = item.textCallback || given.pszText == nullptr ? "" : given.pszText;
    }
    if ((given.mask & HDI_FORMAT) != 0)
        item.format = given.fmt;
    if ((given.mask & HDI_LPARAM) != 0)
        item.data = given.lParam;
    if ((given.mask & HDI_BITMAP) != 0)
        item.bitmap = given.hbm;
    if ((given.mask & HDI_IMAGE) != 0)
        item.image = given.iImage;
    // Without a format of its own an item shows what it was given.
    if ((given.mask & HDI_FORMAT) == 0) {
        if ((given.mask & HDI_TEXT) != 0)
            item.format |= HDF_STRING;
        if ((given.mask & HDI_BITMAP) != 0)
            item.format |= HDF_BITMAP;
        if ((given.mask & HDI_IMAGE) != 0)
            item.format |= HDF_IMAGE;
    }
}

LRESULT HeaderControl::onInsertItem(int index, const HDITEMA* given) {
    if (given == nullptr || given->mask == 0 || index < 0)
        return -1;
    index = std::min(index, count());
    dropStaleInput();
    Item made;
    apply(made, *given);
    items_.insert(items_.begin() + index, std::move(made));
    for (int& which : order_)
        if (which >= index)
            ++which;
    const int place = (given->mask & HDI_ORDER) != 0 ? std::clamp(given->iOrder, 0, count() - 1) : index;
    order_.insert(order_.begin() + place, index);
    invalidateFrom(left(index));
    return index;
}

LRESULT HeaderControl::onDeleteItem(int index) {
    if (!isItem(index))
        return FALSE;
    dropStaleInput();
    invalidateFrom(left(index));
    items_.erase(items_.begin() + index);
    order_.erase(order_.begin() + orderOf(index));
    for (int& which : order_)
        if (which > index)
            --which;
    hotItem_ = -1;
    return TRUE;
}

LRESULT HeaderControl::onGetItem(int index, HDITEMA* wanted) {
    if (wanted == nullptr || !isItem(index))
        return FALSE;
    const UINT mask = wanted->mask;
    if ((mask & HDI_TEXT) != 0) {
        const std::string text = itemText(index);
        if (!isItem(index))
            return FALSE;
        copyText(text, wanted->pszText, wanted->cchTextMax);
    }
    if ((mask & HDI_IMAGE) != 0) {
        wanted->iImage = itemImage(index);
        if (!isItem(index))
            return FALSE;
    }
    const Item& found = item(index);
    if ((mask & HDI_WIDTH) != 0)
        wanted->cxy = found.width;
    if ((mask & HDI_FORMAT) != 0)
        wanted->fmt = found.format;
    if ((mask & HDI_LPARAM) != 0)
        wanted->lParam = found.data;
    if ((mask & HDI_BITMAP) != 0)
        wanted->hbm = found.bitmap;
    if ((mask & HDI_ORDER) != 0)
        wanted->iOrder = orderOf(index);
    return TRUE;
}

LRESULT HeaderControl::onSetItem(int index, const HDITEMA* given) {
    if (given == nullptr || given->mask == 0 || !isItem(index))
        return FALSE;
    return changeItem(index, *given) ? TRUE : FALSE;
}

bool HeaderControl::changeItem(int index, const HDITEMA& change) {
    HDITEMA told = change;
    if (notifyItem(HDN_ITEMCHANGING, index, &told) != 0 || !alive() || !isItem(index))
        return false;
    const int formerWidth = item(index).width;
    apply(item(index), told);
    if ((told.mask & HDI_ORDER) != 0)
        moveToOrder(index, told.iOrder);
    else if (item(index).width != formerWidth)
        invalidateFrom(left(index));
    else
        invalidateItem(index);
    told.mask |= (told.mask & HDI_TEXT) != 0 ? HDI_FORMAT : 0U;
    told.fmt = item(index).format;
    notifyItem(HDN_ITEMCHANGED, index, &told);
    return true;
}

void HeaderControl::moveToOrder(int index, int order) {
    const int from = orderOf(index);
    const int to = std::clamp(order, 0, count() - 1);
    if (from == to)
        return;
    order_.erase(order_.begin() + from);
    order_.insert(order_.begin() + to, index);
    invalidate();
}

LRESULT HeaderControl::onGetOrderArray(int wanted, int* order) const {
    if (order == nullptr || wanted < 0 || wanted > count())
        return FALSE;
    std::copy_n(order_.begin(), wanted, order);
    return TRUE;
}

LRESULT HeaderControl::onSetOrderArray(int given, const int* order) {
    if (order == nullptr || given != count())
        return FALSE;
    std::vector<int> wanted(order, order + given);
    std::vector<int> sorted = wanted;
    std::sort(sorted.begin(), sorted.end());
    for (int place = 0; place < given; ++place)
        if (sorted[static_cast<std::size_t>(place)] != place)
            return FALSE;
    order_ = std::move(wanted);
    invalidate();
    return TRUE;
}

void HeaderControl::dropStaleInput() {
    if (press_ != Press::none)
        onCancel();
}

// ---- Texts and images on demand ------------------------------------------------------------------------------------

NMHDDISPINFOA HeaderControl::askParent(int index, UINT mask, char* buffer, int size) {
    NMHDDISPINFOA info{};
    info.iItem = index;
    info.mask = mask;
    info.pszText = buffer;
    info.cchTextMax = size;
    info.lParam = item(index).data;
    notify(HDN_GETDISPINFO, info);
    if (alive() && isItem(index) && (info.mask & HDI_DI_SETITEM) != 0) {
        Item& kept = item(index);
        if ((mask & HDI_TEXT) != 0 && info.pszText != nullptr && info.pszText != LPSTR_TEXTCALLBACK) {
            kept.text = info.pszText;
            kept.textCallback = false;
        }
        if ((mask & HDI_IMAGE) != 0)
            kept.image = info.iImage;
    }
    return info;
}

std::string HeaderControl::itemText(int index) {
    if (!item(index).textCallback)
        return item(index).text;
    char buffer[MAX_PATH] = {};
    const NMHDDISPINFOA info = askParent(index, HDI_TEXT, buffer, MAX_PATH);
    return info.pszText != nullptr && info.pszText != LPSTR_TEXTCALLBACK ? info.pszText : "";
}

int HeaderControl::itemImage(int index) {
    if (item(index).image != I_IMAGECALLBACK || (item(index).format & HDF_IMAGE) == 0)
        return item(index).image;
    return askParent(index, HDI_IMAGE, nullptr, 0).iImage;
}

// ---- Geometry ------------------------------------------------------------------------------------------------------

int HeaderControl::orderOf(int index) const {
    return static_cast<int>(std::find(order_.begin(), order_.end(), index) - order_.begin());
}

int HeaderControl::left(int index) const {
    int x = 0;
    for (const int which : order_) {
        if (which == index)
            break;
        x += item(which).width;
    }
    return x;
}

RECT HeaderControl::itemRect(int index) const {
    const int x = left(index);
    return {x, 0, x + item(index).width, clientRect().bottom};
}

LRESULT HeaderControl::onGetItemRect(int index, RECT* rect) const {
    if (rect == nullptr || !isItem(index))
        return FALSE;
    *rect = itemRect(index);
    return TRUE;
}

LRESULT HeaderControl::onLayout(const HDLAYOUT* layout) const {
    if (layout == nullptr || layout->prc == nullptr || layout->pwpos == nullptr)
        return FALSE;
    RECT& space = *layout->prc;
    const int height = hasStyle(HDS_HIDDEN) ? 0 : measure_.lineHeight() + verticalPadding;
    WINDOWPOS& position = *layout->pwpos;
    position.hwnd = window();
    position.hwndInsertAfter = nullptr;
    position.x = space.left;
    position.y = space.top;
    position.cx = space.right - space.left;
    position.cy = height;
    position.flags = SWP_NOZORDER;
    space.top += height;
    return TRUE;
}

int HeaderControl::hitTest(POINT point, UINT& flags) const {
    const RECT client = clientRect();
    flags = 0;
    if (point.x < 0)
        flags |= HHT_TOLEFT;
    else if (point.x >= client.right)
        flags |= HHT_TORIGHT;
    if (point.y < 0)
        flags |= HHT_ABOVE;
    else if (point.y >= client.bottom)
        flags |= HHT_BELOW;
    if (flags != 0)
        return -1;
    int x = 0;
    int before = -1; // the item whose divider lies at x
    for (std::size_t place = 0; place < order_.size(); ++place) {
        const int index = order_[place];
        const int width = item(index).width;
        const int reach = std::min(dividerReach, width / 4);
        if (width != 0 && point.x < x + width) {
            if (point.x < x + reach && before >= 0) {
                flags = item(before).width == 0 ? HHT_ONDIVOPEN : HHT_ONDIVIDER;
                return before;
            }
            flags = point.x >= x + width - reach ? HHT_ONDIVIDER : HHT_ONHEADER;
            return index;
        }
        x += width;
        before = index;
    }
    if (before >= 0 && point.x < x + dividerReach) {
        flags = item(before).width == 0 ? HHT_ONDIVOPEN : HHT_ONDIVIDER;
        return before;
    }
    flags = HHT_NOWHERE;
    return -1;
}

LRESULT HeaderControl::onHitTest(HDHITTESTINFO* info) const {
    if (info == nullptr)
        return -1;
    info->iItem = hitTest(info->pt, info->flags);
    return info->iItem;
}

// ---- Other ---------------------------------------------------------------------------------------------------------

void HeaderControl::onSetFont(HFONT font, bool redraw) {
    measure_.setFont(font);
    if (redraw)
        invalidate();
}

void HeaderControl::invalidateItem(int index) const {
    const RECT rect = itemRect(index);
    invalidate(&rect, false);
}

void HeaderControl::invalidateFrom(int left) const {
    RECT rect = clientRect();
    rect.left = left;
    invalidate(&rect, false);
}

LRESULT HeaderControl::notifyItem(UINT code, int index, HDITEMA* change, int button) const {
    NMHEADERA told{};
    told.iItem = index;
    told.iButton = button;
    told.pitem = change;
    return notify(code, told);
}

void registerHeaderControl() { registerControl<HeaderControl>({.name = WC_HEADER, .style = CS_DBLCLKS}); }

} // namespace vndk::win32
