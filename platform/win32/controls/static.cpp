#include "controls/static.h"

#include "win32/draw.h"
#include "win32/icons.h"
#include "win32/metrics.h"
#include "win32/paint.h"
#include "win32/static.h"

#include <cstdlib>
#include <cstring>

namespace vndk::win32 {
namespace {

/// The colour of the filled and framed kinds.
int shapeColor(DWORD kind) {
    switch (kind) {
    case SS_BLACKRECT:
    case SS_BLACKFRAME:
        return COLOR_3DDKSHADOW;
    case SS_GRAYRECT:
    case SS_GRAYFRAME:
        return COLOR_3DSHADOW;
    default:
        return COLOR_3DHIGHLIGHT;
    }
}

UINT ellipsisFormat(DWORD style) {
    switch (style & SS_ELLIPSISMASK) {
    case SS_ENDELLIPSIS:
        return DT_SINGLELINE | DT_END_ELLIPSIS;
    case SS_PATHELLIPSIS:
        return DT_SINGLELINE | DT_PATH_ELLIPSIS;
    case SS_WORDELLIPSIS:
        return DT_SINGLELINE | DT_WORD_ELLIPSIS;
    default:
        return 0;
    }
}

UINT textFormat(DWORD style) {
    UINT format = DT_EXPANDTABS;
    switch (style & SS_TYPEMASK) {
    case SS_LEFT:
        format |= DT_LEFT | DT_WORDBREAK;
        break;
    case SS_CENTER:
        format |= DT_CENTER | DT_WORDBREAK;
        break;
    case SS_RIGHT:
        format |= DT_RIGHT | DT_WORDBREAK;
        break;
    case SS_SIMPLE:
        format = DT_LEFT | DT_SINGLELINE;
        break;
    default: // SS_LEFTNOWORDWRAP
        format |= DT_LEFT;
        break;
    }
    if ((style & SS_NOPREFIX) != 0)
        format |= DT_NOPREFIX;
    if ((style & SS_TYPEMASK) == SS_SIMPLE)
        return format;
    if ((style & SS_CENTERIMAGE) != 0)
        format |= DT_SINGLELINE | DT_VCENTER;
    if ((style & SS_EDITCONTROL) != 0)
        format |= DT_EDITCONTROL;
    return format | ellipsisFormat(style);
}

/// The picture that a control's title names: a resource's number or name. A template gives a number as the byte 0xFF
/// and 16 bits; "#123" is a number, too. Null for an empty title.
LPCSTR imageName(LPCSTR title) {
    if (title == nullptr || IS_INTRESOURCE(title))
        return title;
    if (static_cast<BYTE>(title[0]) == 0xFF) {
        WORD number = 0;
        std::memcpy(&number, title + 1, sizeof number);
        return MAKEINTRESOURCE(number);
    }
    if (title[0] == '#')
        return MAKEINTRESOURCE(static_cast<WORD>(std::atoi(title + 1)));
    return title[0] != '\0' ? title : nullptr;
}

} // namespace

Static::~Static() { dropLoaded(); }

DWORD Static::kind() const { return style() & SS_TYPEMASK; }

bool Static::showsText() const {
    const DWORD type = kind();
    return type <= SS_RIGHT || type == SS_SIMPLE || type == SS_LEFTNOWORDWRAP;
}

bool Static::takesImage(UINT kind) const {
    const DWORD type = this->kind();
    return (type == SS_ICON && (kind == IMAGE_ICON || kind == IMAGE_CURSOR)) ||
           (type == SS_BITMAP && kind == IMAGE_BITMAP);
}

// ---- Creation ------------------------------------------------------------------------------------------------------

/// A sunken border is the frame's, so the style for it has to stand before the frame is measured.
bool Static::onNcCreate(const CREATESTRUCTA* create) {
    if (hasStyle(SS_SUNKEN)) {
        const LONG exStyle = GetWindowLongA(window(), GWL_EXSTYLE);
        SetWindowLongA(window(), GWL_EXSTYLE, exStyle | static_cast<LONG>(WS_EX_STATICEDGE));
    }
    if (!alive())
        return false;
    const DWORD type = kind();
    if (create != nullptr && (type == SS_ICON || type == SS_BITMAP)) {
        // The title is a picture's name and no text; the window would take it for one.
        CREATESTRUCTA untitled = *create;
        untitled.lpszName = nullptr;
        return defaultHandling(WM_NCCREATE, 0, reinterpret_cast<LPARAM>(&untitled)) != 0;
    }
    return defaultHandling(WM_NCCREATE, 0, reinterpret_cast<LPARAM>(create)) != 0;
}

void Static::loadNamed(const CREATESTRUCTA& create) {
    const LPCSTR name = imageName(create.lpszName);
    if (name == nullptr)
        return;
    const DWORD bits = style();
    if ((bits & SS_TYPEMASK) == SS_BITMAP) {
        const HBITMAP bitmap = LoadBitmapA(create.hInstance, name);
        setImage(IMAGE_BITMAP, bitmap);
        loaded_ = bitmap;
    } else if ((bits & SS_TYPEMASK) == SS_ICON) {
        const UINT size = (bits & SS_REALSIZEIMAGE) != 0 ? 0U : LR_DEFAULTSIZE;
        HANDLE icon = LoadImageA(create.hInstance, name, IMAGE_ICON, 0, 0, LR_SHARED | size);
        if (icon == nullptr)
            icon = LoadImageA(create.hInstance, name, IMAGE_CURSOR, 0, 0, LR_SHARED | size);
        setImage(IMAGE_ICON, icon);
    }
}

// ---- Pictures ------------------------------------------------------------------------------------------------------

void Static::dropLoaded() {
    if (loaded_ != nullptr)
        DeleteObject(loaded_);
    loaded_ = nullptr;
}

/// A bitmap that the control loaded itself goes over to whoever gets it as the answer.
HANDLE Static::setImage(UINT kind, HANDLE handle) {
    if (!takesImage(kind))
        return nullptr;
    const HANDLE former = image_.handle;
    loaded_ = nullptr;
    image_ = {kind, handle};
    fitToImage();
    if (alive())
        paintNow();
    return former;
}

/// The control takes the picture's size, unless a style says that its own stays.
void Static::fitToImage() {
    const SIZE size = imageSize(image_);
    if (hasStyle(SS_CENTERIMAGE) || hasStyle(SS_REALSIZECONTROL) || size.cx == 0 || size.cy == 0)
        return;
    RECT outer{};
    GetWindowRect(window(), &outer);
    const RECT client = clientRect();
    const int width = size.cx + (outer.right - outer.left) - client.right;
    const int height = size.cy + (outer.bottom - outer.top) - client.bottom;
    if (hasStyle(SS_RIGHTJUST)) {
        POINT corner{outer.right - width, outer.bottom - height};
        ScreenToClient(GetParent(window()), &corner);
        SetWindowPos(window(), nullptr, corner.x, corner.y, width, height, SWP_NOACTIVATE | SWP_NOZORDER);
        return;
    }
    SetWindowPos(window(), nullptr, 0, 0, width, height, SWP_NOACTIVATE | SWP_NOZORDER | SWP_NOMOVE);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

void Static::paintNow() {
    if (IsWindowVisible(window()) == FALSE)
        return;
    const HDC dc = GetDC(window());
    if (dc == nullptr)
        return;
    paint(dc);
    ReleaseDC(window(), dc);
}

void Static::onPaint(HDC given) {
    if (given != nullptr) {
        paint(given);
        return;
    }
    PAINTSTRUCT area{};
    const HDC dc = BeginPaint(window(), &area);
    if (alive() && dc != nullptr)
        paint(dc);
    EndPaint(window(), &area);
}

void Static::paint(HDC dc) {
    const DWORD type = kind();
    const HGDIOBJ formerFont = font_ != nullptr ? SelectObject(dc, font_) : nullptr;
    const HBRUSH ground = colorBrush(WM_CTLCOLORSTATIC, dc);
    if (!alive())
        return;
    RECT rect = clientRect();
    if (type == SS_OWNERDRAW) {
        drawOwner(dc);
    } else if (type >= SS_BLACKRECT && type <= SS_WHITERECT) {
        FillRect(dc, &rect, GetSysColorBrush(shapeColor(type)));
    } else if (type >= SS_BLACKFRAME && type <= SS_WHITEFRAME) {
        FrameRect(dc, &rect, GetSysColorBrush(shapeColor(type)));
    } else if (type == SS_ETCHEDHORZ) {
        DrawEdge(dc, &rect, EDGE_ETCHED, BF_TOP | BF_BOTTOM);
    } else if (type == SS_ETCHEDVERT) {
        DrawEdge(dc, &rect, EDGE_ETCHED, BF_LEFT | BF_RIGHT);
    } else if (type == SS_ETCHEDFRAME) {
        DrawEdge(dc, &rect, EDGE_ETCHED, BF_RECT);
    } else {
        FillRect(dc, &rect, ground);
        if (showsText())
            paintText(dc, rect);
        else
            paintImageIn(dc, rect);
    }
    if (formerFont != nullptr)
        SelectObject(dc, formerFont);
}

void Static::paintText(HDC dc, const RECT& rect) const { paintLabel(dc, text(), rect, textFormat(style()), enabled()); }

void Static::paintImageIn(HDC dc, const RECT& rect) const {
    const SIZE size = imageSize(image_);
    const bool bitmap = image_.kind == IMAGE_BITMAP;
    if (hasStyle(SS_REALSIZECONTROL) && bitmap && size.cx > 0) {
        const HDC memory = CreateCompatibleDC(dc);
        const HGDIOBJ former = SelectObject(memory, image_.handle);
        StretchBlt(dc, 0, 0, rect.right, rect.bottom, memory, 0, 0, size.cx, size.cy, SRCCOPY);
        SelectObject(memory, former);
        DeleteDC(memory);
        return;
    }
    POINT at{0, 0};
    if (hasStyle(SS_CENTERIMAGE))
        at = {(rect.right - size.cx) / 2, (rect.bottom - size.cy) / 2};
    paintImage(dc, image_, at, true);
}

void Static::drawOwner(HDC dc) {
    const HWND parent = GetParent(window());
    if (parent == nullptr)
        return;
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_STATIC;
    item.CtlID = static_cast<UINT>(id());
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = enabled() ? 0 : ODS_DISABLED;
    item.hwndItem = window();
    item.hDC = dc;
    item.rcItem = clientRect();
    SendMessageA(parent, WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
}

// ---- Messages ------------------------------------------------------------------------------------------------------

void Static::notifyWhenAsked(WORD code) const {
    if (hasStyle(SS_NOTIFY))
        notifyCommand(code);
}

LRESULT Static::handleImage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case STM_SETICON:
        return reinterpret_cast<LRESULT>(setImage(IMAGE_ICON, reinterpret_cast<HANDLE>(wParam)));
    case STM_GETICON:
        return reinterpret_cast<LRESULT>(takesImage(IMAGE_ICON) ? image_.handle : nullptr);
    case STM_SETIMAGE:
        return reinterpret_cast<LRESULT>(setImage(static_cast<UINT>(wParam), reinterpret_cast<HANDLE>(lParam)));
    default: // STM_GETIMAGE
        return reinterpret_cast<LRESULT>(takesImage(static_cast<UINT>(wParam)) ? image_.handle : nullptr);
    }
}

LRESULT Static::handleText(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SETTEXT: {
        const LRESULT result = defaultHandling(message, wParam, lParam);
        if (alive() && showsText())
            paintNow();
        return result;
    }
    case WM_SETFONT:
        font_ = reinterpret_cast<HFONT>(wParam);
        if (showsText() && LOWORD(static_cast<DWORD_PTR>(lParam)) != 0)
            invalidate();
        return 0;
    default: // WM_GETFONT
        return reinterpret_cast<LRESULT>(font_);
    }
}

LRESULT Static::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_NCCREATE:
        return onNcCreate(reinterpret_cast<const CREATESTRUCTA*>(lParam)) ? TRUE : FALSE;
    case WM_CREATE:
        if (lParam != 0)
            loadNamed(*reinterpret_cast<const CREATESTRUCTA*>(lParam));
        return 0;
    case WM_GETDLGCODE:
        return DLGC_STATIC;
    case WM_NCHITTEST:
        // Without SS_NOTIFY the mouse goes through to what is behind.
        return hasStyle(SS_NOTIFY) ? HTCLIENT : HTTRANSPARENT;
    case WM_LBUTTONDOWN:
    case WM_NCLBUTTONDOWN:
        notifyWhenAsked(STN_CLICKED);
        return 0;
    case WM_LBUTTONDBLCLK:
    case WM_NCLBUTTONDBLCLK:
        notifyWhenAsked(STN_DBLCLK);
        return 0;
    case WM_ENABLE:
        notifyWhenAsked(wParam != 0 ? STN_ENABLE : STN_DISABLE);
        if (alive() && showsText())
            paintNow();
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_PAINT:
    case WM_PRINTCLIENT:
        onPaint(reinterpret_cast<HDC>(wParam));
        return 0;
    case WM_STYLECHANGED:
    case WM_SYSCOLORCHANGE:
        invalidate();
        return 0;
    case WM_SETTEXT:
    case WM_SETFONT:
    case WM_GETFONT:
        return handleText(message, wParam, lParam);
    case STM_SETICON:
    case STM_GETICON:
    case STM_SETIMAGE:
    case STM_GETIMAGE:
        return handleImage(message, wParam, lParam);
    default:
        return defaultHandling(message, wParam, lParam);
    }
}

void registerStatic() {
    registerControl<Static>({.name = "STATIC", .style = CS_DBLCLKS | CS_PARENTDC | CS_HREDRAW | CS_VREDRAW});
}

} // namespace vndk::win32
