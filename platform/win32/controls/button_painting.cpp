#include "controls/button_painting.h"

#include "win32/draw.h"
#include "win32/fonts.h"
#include "win32/icons.h"

#include <algorithm>

namespace vndk::win32 {
namespace {

constexpr int boxSize = 13;   // of a check box's or radio button's picture
constexpr int boxGap = 4;     // from there to the text
constexpr int groupInset = 9; // of a group box's caption

int widthOf(const RECT& rect) { return rect.right - rect.left; }
int heightOf(const RECT& rect) { return rect.bottom - rect.top; }

/// Where something of a size goes inside of a rectangle. Without a style bit for it, it takes the default.
POINT alignInside(const RECT& rect, SIZE size, DWORD style, DWORD horizontal, DWORD vertical) {
    const DWORD across = (style & BS_CENTER) != 0 ? style & BS_CENTER : horizontal;
    const DWORD down = (style & BS_VCENTER) != 0 ? style & BS_VCENTER : vertical;
    POINT at{rect.left, rect.top};
    if (across == BS_RIGHT)
        at.x = rect.right - size.cx;
    else if (across == BS_CENTER)
        at.x = rect.left + (widthOf(rect) - size.cx) / 2;
    if (down == BS_BOTTOM)
        at.y = rect.bottom - size.cy;
    else if (down == BS_VCENTER)
        at.y = rect.top + (heightOf(rect) - size.cy) / 2;
    return at;
}

UINT textFormat(DWORD style, DWORD horizontal) {
    const UINT lines = (style & BS_MULTILINE) != 0 ? DT_WORDBREAK : DT_SINGLELINE;
    const DWORD across = (style & BS_CENTER) != 0 ? style & BS_CENTER : horizontal;
    if (across == BS_RIGHT)
        return lines | DT_RIGHT;
    return lines | (across == BS_CENTER ? DT_CENTER : DT_LEFT);
}

bool hasImage(const ButtonLook& look) {
    return (look.style & (BS_ICON | BS_BITMAP)) != 0 && look.image.handle != nullptr;
}

SIZE measureContent(HDC dc, const ButtonLook& look, const RECT& room, UINT format) {
    return hasImage(look) ? imageSize(look.image) : measureLabel(dc, look.text, widthOf(room), format);
}

/// Picture or text; it is cut off at `room`.
void paintContent(HDC dc, const ButtonLook& look, const RECT& room, POINT at, SIZE size, UINT format) {
    const int saved = SaveDC(dc);
    IntersectClipRect(dc, room.left, room.top, room.right, room.bottom);
    if (hasImage(look)) {
        paintImage(dc, look.image, at, look.enabled);
    } else {
        const RECT place{at.x, at.y, at.x + size.cx, at.y + size.cy};
        paintLabel(dc, look.text, place, format | DT_NOCLIP, look.enabled);
    }
    RestoreDC(dc, saved);
}

// ---- Push buttons --------------------------------------------------------------------------------------------------

/// Frame and face; `rect` becomes the inside.
void paintPushFrame(HDC dc, RECT& rect, const ButtonLook& look, bool down) {
    if (kindOf(look.style) == BS_DEFPUSHBUTTON) {
        FrameRect(dc, &rect, GetSysColorBrush(COLOR_WINDOWFRAME));
        InflateRect(&rect, -1, -1);
        if (down) {
            // The default button goes down flat, inside of its dark frame.
            FillRect(dc, &rect, GetSysColorBrush(COLOR_BTNFACE));
            FrameRect(dc, &rect, GetSysColorBrush(COLOR_BTNSHADOW));
            InflateRect(&rect, -2, -2);
            return;
        }
    }
    UINT state = DFCS_BUTTONPUSH | (down ? DFCS_PUSHED : 0U);
    if ((look.style & BS_FLAT) != 0)
        state |= DFCS_MONO;
    if (look.check != BST_UNCHECKED && !look.pushed)
        state |= DFCS_CHECKED;
    DrawFrameControl(dc, &rect, DFC_BUTTON, state);
    InflateRect(&rect, -2, -2);
}

void paintPush(HDC dc, RECT rect, const ButtonLook& look) {
    const bool box = isCheckKind(kindOf(look.style)) || isRadioKind(kindOf(look.style));
    const bool down = look.pushed || (box && look.check != BST_UNCHECKED);
    paintPushFrame(dc, rect, look, down);
    const int formerMode = SetBkMode(dc, TRANSPARENT);
    const COLORREF formerColor = SetTextColor(dc, GetSysColor(COLOR_BTNTEXT));
    const UINT format = textFormat(look.style, BS_CENTER);
    const SIZE size = measureContent(dc, look, rect, format);
    // What is aligned to a side keeps off the focus rectangle there.
    RECT place = rect;
    InflateRect(&place, -2, -1);
    POINT at = alignInside(place, size, look.style, BS_CENTER, BS_VCENTER);
    if (down) {
        ++at.x;
        ++at.y;
    }
    paintContent(dc, look, rect, at, size, format);
    SetTextColor(dc, formerColor);
    SetBkMode(dc, formerMode);
    if (look.focused) {
        InflateRect(&rect, -1, -1);
        DrawFocusRect(dc, &rect);
    }
}

// ---- Boxes ---------------------------------------------------------------------------------------------------------

UINT boxState(const ButtonLook& look) {
    UINT state = DFCS_BUTTONCHECK;
    if (isRadioKind(kindOf(look.style)))
        state = DFCS_BUTTONRADIO;
    else if (look.check == BST_INDETERMINATE)
        state = DFCS_BUTTON3STATE;
    if (look.check != BST_UNCHECKED)
        state |= DFCS_CHECKED;
    if (look.pushed)
        state |= DFCS_PUSHED;
    if (!look.enabled)
        state |= DFCS_INACTIVE;
    if ((look.style & BS_FLAT) != 0)
        state |= DFCS_FLAT;
    return state;
}

void paintBox(HDC dc, const RECT& rect, const ButtonLook& look, HBRUSH ground) {
    FillRect(dc, &rect, ground);
    const bool boxRight = (look.style & BS_LEFTTEXT) != 0;
    RECT room = rect;
    RECT box = rect;
    if (boxRight) {
        box.left = rect.right - boxSize;
        room.right = box.left - boxGap;
    } else {
        box.right = rect.left + boxSize;
        room.left = box.right + boxGap;
    }
    const UINT format = textFormat(look.style, BS_LEFT);
    const SIZE size = measureContent(dc, look, room, format);
    const POINT at = alignInside(room, size, look.style, BS_LEFT, BS_VCENTER);
    box.top = alignInside(rect, {boxSize, boxSize}, look.style & BS_VCENTER, BS_LEFT, BS_VCENTER).y;
    box.bottom = box.top + boxSize;
    DrawFrameControl(dc, &box, DFC_BUTTON, boxState(look));
    paintContent(dc, look, room, at, size, format);
    if (look.focused && size.cx > 0) {
        RECT focus{at.x - 1, at.y - 1, at.x + size.cx + 1, at.y + size.cy + 1};
        IntersectRect(&focus, &focus, &rect);
        DrawFocusRect(dc, &focus);
    }
}

// ---- Group boxes ---------------------------------------------------------------------------------------------------

void paintGroup(HDC dc, const RECT& rect, const ButtonLook& look, HBRUSH ground) {
    const RECT strip = groupCaptionStrip(dc, rect);
    RECT frame = rect;
    frame.top += heightOf(strip) / 2 - 1;
    DrawEdge(dc, &frame, EDGE_ETCHED, BF_RECT | ((look.style & BS_FLAT) != 0 ? BF_FLAT | BF_MONO : 0U));
    if (look.text.empty())
        return;
    RECT room = strip;
    InflateRect(&room, -groupInset, 0);
    const SIZE size = measureLabel(dc, look.text, widthOf(room), DT_SINGLELINE);
    const POINT at = alignInside(room, size, look.style & BS_CENTER, BS_LEFT, BS_TOP);
    RECT place{at.x, at.y, std::min(at.x + size.cx, room.right), at.y + size.cy};
    RECT gap = place;
    InflateRect(&gap, 2, 0);
    FillRect(dc, &gap, ground);
    paintLabel(dc, look.text, place, DT_SINGLELINE, look.enabled);
}

/// A button whose parent paints it on notification: only ground and focus are its own.
void paintUser(HDC dc, RECT rect, const ButtonLook& look, HBRUSH ground) {
    FillRect(dc, &rect, ground);
    if (look.focused)
        DrawFocusRect(dc, &rect);
}

} // namespace

bool isCheckKind(DWORD kind) {
    return kind == BS_CHECKBOX || kind == BS_AUTOCHECKBOX || kind == BS_3STATE || kind == BS_AUTO3STATE;
}

bool isRadioKind(DWORD kind) { return kind == BS_RADIOBUTTON || kind == BS_AUTORADIOBUTTON; }

bool looksLikePush(DWORD style) {
    const DWORD kind = kindOf(style);
    if (isCheckKind(kind) || isRadioKind(kind))
        return (style & BS_PUSHLIKE) != 0;
    return kind != BS_GROUPBOX && kind != BS_USERBUTTON && kind != BS_OWNERDRAW;
}

RECT groupCaptionStrip(HDC dc, const RECT& rect) {
    TEXTMETRICA metrics{};
    GetTextMetricsA(dc, &metrics);
    return {rect.left, rect.top, rect.right, rect.top + metrics.tmHeight};
}

void paintButton(HDC dc, const RECT& rect, const ButtonLook& look, HBRUSH ground) {
    if (looksLikePush(look.style))
        paintPush(dc, rect, look);
    else if (kindOf(look.style) == BS_GROUPBOX)
        paintGroup(dc, rect, look, ground);
    else if (kindOf(look.style) == BS_USERBUTTON)
        paintUser(dc, rect, look, ground);
    else
        paintBox(dc, rect, look, ground);
}

} // namespace vndk::win32
