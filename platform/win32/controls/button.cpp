#include "controls/button.h"

#include "win32/dialog.h"
#include "win32/draw.h"
#include "win32/icons.h"
#include "win32/input.h"
#include "win32/paint.h"

namespace vndk::win32 {
namespace {

/// The highest check that a kind can hold.
LRESULT highestCheck(DWORD kind) {
    if (kind == BS_3STATE || kind == BS_AUTO3STATE)
        return BST_INDETERMINATE;
    return isCheckKind(kind) || isRadioKind(kind) ? BST_CHECKED : BST_UNCHECKED;
}

} // namespace

LRESULT Button::dialogCode() const {
    switch (kind()) {
    case BS_DEFPUSHBUTTON:
        return DLGC_BUTTON | DLGC_DEFPUSHBUTTON;
    case BS_PUSHBUTTON:
    case BS_USERBUTTON:
    case BS_PUSHBOX:
        return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
        return DLGC_BUTTON | DLGC_RADIOBUTTON;
    case BS_GROUPBOX:
        return DLGC_STATIC;
    default:
        return DLGC_BUTTON;
    }
}

// ---- State ---------------------------------------------------------------------------------------------------------

void Button::setCheck(WPARAM check) {
    const DWORD bits = style();
    const LRESULT highest = highestCheck(kindOf(bits));
    const LRESULT wanted = check > static_cast<WPARAM>(highest) ? highest : static_cast<LRESULT>(check);
    // The tab key goes to the radio button that is checked.
    if (isRadioKind(kindOf(bits))) {
        const DWORD style = wanted != BST_UNCHECKED ? bits | WS_TABSTOP : bits & ~WS_TABSTOP;
        SetWindowLongA(window(), GWL_STYLE, static_cast<LONG>(style));
        if (!alive())
            return;
    }
    if (check_ == wanted)
        return;
    check_ = wanted;
    paintNow(ODA_SELECT);
}

void Button::setPushed(bool pushed) {
    if (pushed_ == pushed)
        return;
    pushed_ = pushed;
    paintNow(ODA_SELECT);
    if (alive() && kind() == BS_USERBUTTON)
        notifyCommand(pushed ? BN_HILITE : BN_UNHILITE);
}

void Button::setKind(DWORD kind, bool redraw) {
    const DWORD bits = (style() & ~BS_TYPEMASK) | (kind & BS_TYPEMASK);
    SetWindowLongA(window(), GWL_STYLE, static_cast<LONG>(bits));
    if (redraw && alive())
        invalidate();
}

/// A picture of another kind than the style names is refused, and so is any without such a style.
HANDLE Button::setImage(UINT kind, HANDLE image) {
    const DWORD bits = style() & (BS_ICON | BS_BITMAP);
    const bool fits = (kind == IMAGE_ICON && bits == BS_ICON) || (kind == IMAGE_BITMAP && bits == BS_BITMAP);
    if (!fits)
        return nullptr;
    const HANDLE former = image_.handle;
    image_ = {kind, image};
    invalidate();
    return former;
}

void Button::onFocus(bool gained) {
    hasFocus_ = gained;
    if (!gained && press_ != Press::none)
        endPress(false);
    if (alive())
        paintNow(ODA_FOCUS);
    if (alive())
        notifyWhenAsked(gained ? BN_SETFOCUS : BN_KILLFOCUS);
    // A radio button that the keyboard goes to is chosen by that.
    if (alive() && gained && !inClick_ && check_ == BST_UNCHECKED && isRadioKind(kind())) {
        inClick_ = true;
        clicked();
        inClick_ = false;
    }
}

void Button::onEnable(bool enable) {
    if (!enable)
        endPress(false);
    if (alive() && !enable && kind() == BS_USERBUTTON)
        notifyCommand(BN_DISABLE);
    if (alive())
        paintNow(ODA_DRAWENTIRE);
}

// ---- Presses and clicks --------------------------------------------------------------------------------------------

void Button::notifyWhenAsked(WORD code) const {
    if (hasStyle(BS_NOTIFY))
        notifyCommand(code);
}

bool Button::notifiesDoubleClick() const {
    const DWORD type = kind();
    return hasStyle(BS_NOTIFY) || type == BS_USERBUTTON || type == BS_RADIOBUTTON || type == BS_OWNERDRAW;
}

void Button::beginPress(Press how) {
    press_ = how;
    if (GetCapture() != window())
        SetCapture(window());
    SendMessageA(window(), BM_SETSTATE, TRUE, 0);
}

void Button::movePress(POINT point) {
    if (press_ != Press::mouse)
        return;
    const RECT client = clientRect();
    const bool over = PtInRect(&client, point) != FALSE;
    if (over != pushed_)
        SendMessageA(window(), BM_SETSTATE, over ? TRUE : FALSE, 0);
}

void Button::endPress(bool click) {
    if (press_ == Press::none)
        return;
    const bool released = pushed_;
    press_ = Press::none;
    if (pushed_)
        SendMessageA(window(), BM_SETSTATE, FALSE, 0);
    if (alive() && GetCapture() == window())
        ReleaseCapture();
    if (alive() && click && released)
        clicked();
}

void Button::onButtonDown() {
    const bool outer = inClick_;
    inClick_ = true;
    if (!focused())
        SetFocus(window());
    inClick_ = outer;
    if (alive())
        beginPress(Press::mouse);
}

void Button::onDoubleClick() {
    if (notifiesDoubleClick())
        notifyCommand(BN_DOUBLECLICKED);
    else
        onButtonDown();
}

/// What the button does by itself when it is clicked, and the parent's word of it.
void Button::clicked() {
    switch (kind()) {
    case BS_AUTOCHECKBOX:
        SendMessageA(window(), BM_SETCHECK, check_ == BST_UNCHECKED ? BST_CHECKED : BST_UNCHECKED, 0);
        break;
    case BS_AUTO3STATE:
        SendMessageA(window(), BM_SETCHECK, static_cast<WPARAM>((check_ + 1) % 3), 0);
        break;
    case BS_AUTORADIOBUTTON:
        checkInGroup();
        break;
    default:
        break;
    }
    if (alive())
        notifyCommand(BN_CLICKED);
}

void Button::checkInGroup() {
    const HWND parent = GetParent(window());
    // A limit, because the windows may change while they are told.
    int left = 1000;
    for (HWND other = GetNextDlgGroupItem(parent, window(), FALSE);
         alive() && other != nullptr && other != window() && left > 0;
         other = GetNextDlgGroupItem(parent, other, FALSE), --left)
        if ((SendMessageA(other, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) != 0)
            SendMessageA(other, BM_SETCHECK, BST_UNCHECKED, 0);
    if (alive())
        SendMessageA(window(), BM_SETCHECK, BST_CHECKED, 0);
}

void Button::click() {
    if (inClick_)
        return;
    inClick_ = true;
    SendMessageA(window(), WM_LBUTTONDOWN, MK_LBUTTON, 0);
    if (alive())
        SendMessageA(window(), WM_LBUTTONUP, 0, 0);
    inClick_ = false;
}

/// '+' and '=' check a box, '-' takes the check away.
bool Button::onCharacter(WPARAM character) {
    const DWORD type = kind();
    if (press_ != Press::none || (type != BS_CHECKBOX && type != BS_AUTOCHECKBOX))
        return false;
    if (character != '+' && character != '=' && character != '-')
        return false;
    const LRESULT wanted = character == '-' ? BST_UNCHECKED : BST_CHECKED;
    if (wanted == check_)
        return true;
    if (type == BS_AUTOCHECKBOX)
        SendMessageA(window(), BM_SETCHECK, static_cast<WPARAM>(wanted), 0);
    if (alive())
        notifyCommand(BN_CLICKED);
    return true;
}

// ---- Painting ------------------------------------------------------------------------------------------------------

UINT Button::colorMessage() const {
    const DWORD bits = style();
    const DWORD type = kindOf(bits);
    return looksLikePush(bits) || type == BS_OWNERDRAW || type == BS_USERBUTTON ? WM_CTLCOLORBTN : WM_CTLCOLORSTATIC;
}

void Button::paintNow(UINT action) {
    if (IsWindowVisible(window()) == FALSE)
        return;
    const HDC dc = GetDC(window());
    if (dc == nullptr)
        return;
    paint(dc, action);
    ReleaseDC(window(), dc);
}

void Button::onPaint(HDC given) {
    if (given != nullptr) {
        paint(given, ODA_DRAWENTIRE);
        return;
    }
    PAINTSTRUCT area{};
    const HDC dc = BeginPaint(window(), &area);
    if (alive() && dc != nullptr)
        paint(dc, ODA_DRAWENTIRE);
    EndPaint(window(), &area);
}

void Button::paint(HDC dc, UINT action) {
    const HGDIOBJ formerFont = font_ != nullptr ? SelectObject(dc, font_) : nullptr;
    const HBRUSH ground = colorBrush(colorMessage(), dc);
    if (alive()) {
        if (kind() == BS_OWNERDRAW) {
            drawOwner(dc, action);
        } else {
            const ButtonLook look{style(), check_, pushed_, hasFocus_, enabled(), text(), image_};
            paintButton(dc, clientRect(), look, ground);
        }
    }
    if (alive() && action == ODA_DRAWENTIRE && kind() == BS_USERBUTTON)
        notifyCommand(BN_PAINT);
    if (formerFont != nullptr)
        SelectObject(dc, formerFont);
}

void Button::drawOwner(HDC dc, UINT action) {
    const HWND parent = GetParent(window());
    if (parent == nullptr)
        return;
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_BUTTON;
    item.CtlID = static_cast<UINT>(id());
    item.itemAction = action;
    item.itemState = (pushed_ ? ODS_SELECTED : 0U) | (hasFocus_ ? ODS_FOCUS : 0U) | (enabled() ? 0U : ODS_DISABLED);
    item.hwndItem = window();
    item.hDC = dc;
    item.rcItem = clientRect();
    const int saved = SaveDC(dc);
    IntersectClipRect(dc, item.rcItem.left, item.rcItem.top, item.rcItem.right, item.rcItem.bottom);
    SendMessageA(parent, WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
    RestoreDC(dc, saved);
}

void Button::eraseOwner(HDC dc) {
    const HBRUSH ground = colorBrush(WM_CTLCOLORBTN, dc);
    if (!alive())
        return;
    const RECT client = clientRect();
    FillRect(dc, &client, ground);
}

/// A group box is only its frame; what its former caption leaves behind is the parent's to paint.
void Button::exposeCaption() const {
    const HDC dc = GetDC(window());
    if (dc == nullptr)
        return;
    const HGDIOBJ formerFont = font_ != nullptr ? SelectObject(dc, font_) : nullptr;
    RECT strip = groupCaptionStrip(dc, clientRect());
    if (formerFont != nullptr)
        SelectObject(dc, formerFont);
    ReleaseDC(window(), dc);
    const HWND parent = GetParent(window());
    MapWindowPoints(window(), parent, reinterpret_cast<POINT*>(&strip), 2);
    InvalidateRect(parent, &strip, TRUE);
}

// ---- Messages ------------------------------------------------------------------------------------------------------

LRESULT Button::handleButtonMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case BM_GETCHECK:
        return check_;
    case BM_SETCHECK:
        setCheck(wParam);
        return 0;
    case BM_GETSTATE:
        return check_ | (pushed_ ? BST_PUSHED : 0) | (hasFocus_ ? BST_FOCUS : 0);
    case BM_SETSTATE:
        setPushed(wParam != 0);
        return 0;
    case BM_SETSTYLE:
        setKind(static_cast<DWORD>(wParam), lParam != 0);
        return 0;
    case BM_CLICK:
        click();
        return 0;
    case BM_GETIMAGE:
        return reinterpret_cast<LRESULT>(image_.kind == wParam ? image_.handle : nullptr);
    default:
        return reinterpret_cast<LRESULT>(setImage(static_cast<UINT>(wParam), reinterpret_cast<HANDLE>(lParam)));
    }
}

LRESULT Button::handleMouse(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
    case WM_NCHITTEST:
        // The controls inside of a group box lie behind it.
        return kind() == BS_GROUPBOX ? HTTRANSPARENT : defaultHandling(message, wParam, lParam);
    case WM_LBUTTONDOWN:
        onButtonDown();
        return 0;
    case WM_LBUTTONDBLCLK:
        onDoubleClick();
        return 0;
    case WM_MOUSEMOVE:
        if (press_ == Press::none || GetCapture() != window())
            return defaultHandling(message, wParam, lParam);
        movePress(point);
        return 0;
    case WM_LBUTTONUP:
        if (press_ != Press::mouse)
            return defaultHandling(message, wParam, lParam);
        movePress(point);
        if (alive())
            endPress(true);
        return 0;
    default: // WM_CAPTURECHANGED
        if (reinterpret_cast<HWND>(lParam) != window())
            endPress(false);
        return 0;
    }
}

LRESULT Button::handleKey(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_KEYDOWN && press_ != Press::mouse) {
        if (wParam == static_cast<WPARAM>(VK_SPACE)) {
            if (press_ == Press::none)
                beginPress(Press::key);
            return 0;
        }
        endPress(false);
    }
    if (message == WM_KEYUP && wParam == static_cast<WPARAM>(VK_SPACE) && press_ == Press::key) {
        endPress(true);
        return 0;
    }
    if (message == WM_CHAR && onCharacter(wParam))
        return 0;
    return alive() ? defaultHandling(message, wParam, lParam) : 0;
}

LRESULT Button::handleText(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SETTEXT: {
        const LRESULT result = defaultHandling(message, wParam, lParam);
        if (kind() == BS_GROUPBOX)
            exposeCaption();
        invalidate();
        return result;
    }
    case WM_SETFONT:
        if (kind() == BS_GROUPBOX && LOWORD(static_cast<DWORD_PTR>(lParam)) != 0)
            exposeCaption();
        font_ = reinterpret_cast<HFONT>(wParam);
        if (LOWORD(static_cast<DWORD_PTR>(lParam)) != 0)
            invalidate();
        return 0;
    default: // WM_GETFONT
        return reinterpret_cast<LRESULT>(font_);
    }
}

LRESULT Button::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_GETDLGCODE:
        return dialogCode();
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        onFocus(message == WM_SETFOCUS);
        return 0;
    case WM_ENABLE:
        onEnable(wParam != 0);
        return 0;
    case WM_ERASEBKGND:
        if (kind() == BS_OWNERDRAW)
            eraseOwner(reinterpret_cast<HDC>(wParam));
        return 1;
    case WM_PAINT:
    case WM_PRINTCLIENT:
        onPaint(reinterpret_cast<HDC>(wParam));
        return 0;
    case WM_SYSCOLORCHANGE:
        invalidate();
        return 0;
    case WM_SETTEXT:
    case WM_SETFONT:
    case WM_GETFONT:
        return handleText(message, wParam, lParam);
    case WM_KEYDOWN:
    case WM_KEYUP:
    case WM_CHAR:
        return handleKey(message, wParam, lParam);
    case WM_NCHITTEST:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_MOUSEMOVE:
    case WM_LBUTTONUP:
    case WM_CAPTURECHANGED:
        return handleMouse(message, wParam, lParam);
    case BM_GETCHECK:
    case BM_SETCHECK:
    case BM_GETSTATE:
    case BM_SETSTATE:
    case BM_SETSTYLE:
    case BM_CLICK:
    case BM_GETIMAGE:
    case BM_SETIMAGE:
        return handleButtonMessage(message, wParam, lParam);
    default:
        return defaultHandling(message, wParam, lParam);
    }
}

void registerButton() {
    registerControl<Button>({.name = "BUTTON", .style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW | CS_PARENTDC});
}

} // namespace vndk::win32
