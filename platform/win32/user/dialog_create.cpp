// Dialogs made from templates.
#include "user/dialog.h"
#include "user/dialog_template.h"
#include "user/frame_geometry.h"
#include "win32/button.h"
#include "win32/codepage.h"
#include "win32/error.h"
#include "win32/fonts.h"
#include "win32/gdi.h"
#include "win32/input.h"
#include "win32/menu.h"
#include "win32/metrics.h"
#include "win32/paint.h"
#include "win32/resources.h"

#include <algorithm>
#include <cstring>

namespace vndk::win32 {

namespace {

constexpr LPCSTR dialogClass = "#32770";
constexpr int unitsAcross = 4;
constexpr int unitsDown = 8;
constexpr LONG defaultPlace = -32768; // in the place of x: CW_USEDEFAULT

HFONT makeFont(const DialogFont& font) {
    NONCLIENTMETRICSA metrics{};
    metrics.cbSize = sizeof metrics;
    if (font.points == messageBoxFontSize && SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, 0, &metrics, 0) != FALSE)
        return CreateFontIndirectA(&metrics.lfMessageFont);
    LOGFONTA wanted{};
    wanted.lfHeight = -MulDiv(font.points, 96, 72);
    wanted.lfWeight = font.weight;
    wanted.lfItalic = font.italic ? TRUE : FALSE;
    wanted.lfCharSet = font.charset;
    wanted.lfPitchAndFamily = FF_SWISS;
    const std::size_t length = std::min(font.face.size(), sizeof wanted.lfFaceName - 1);
    std::memcpy(wanted.lfFaceName, font.face.data(), length);
    return CreateFontIndirectA(&wanted);
}

int toPixels(LONG units, LONG unit, int perUnit) { return MulDiv(units, unit, perUnit); }

// What is known about a dialog before its window exists.
struct Plan {
    SIZE units{};
    HFONT font = nullptr;
    DWORD style = 0;
    DWORD exStyle = 0;
    HMENU menu = nullptr;
    RECT rect{}; // of the window: screen coordinates, of a child the parent's

    [[nodiscard]] RECT pixels(const RECT& place) const {
        return {toPixels(place.left, units.cx, unitsAcross), toPixels(place.top, units.cy, unitsDown),
                toPixels(place.right, units.cx, unitsAcross), toPixels(place.bottom, units.cy, unitsDown)};
    }
};

DWORD styleFor(const DialogTemplate& dialog) {
    DWORD style = dialog.style & ~WS_VISIBLE;
    if ((style & DS_CONTROL) != 0)
        style &= ~(WS_CAPTION | WS_SYSMENU);
    return style;
}

DWORD exStyleFor(const DialogTemplate& dialog) {
    DWORD exStyle = dialog.exStyle | WS_EX_CONTROLPARENT;
    if ((dialog.style & DS_MODALFRAME) != 0)
        exStyle |= WS_EX_DLGMODALFRAME;
    if ((dialog.style & DS_CONTEXTHELP) != 0)
        exStyle |= WS_EX_CONTEXTHELP;
    if ((dialog.style & DS_SYSMODAL) != 0)
        exStyle |= WS_EX_TOPMOST;
    return exStyle;
}

LPCSTR nameOf(const TemplateName& name) {
    switch (name.kind) {
    case TemplateName::Kind::number:
        return MAKEINTRESOURCE(name.number);
    case TemplateName::Kind::text:
        return name.text.c_str();
    case TemplateName::Kind::none:
        break;
    }
    return nullptr;
}

RECT workArea() {
    RECT area{};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
    return area;
}

POINT upperLeft(const DialogTemplate& dialog, const Plan& plan, HWND owner, const RECT& place, SIZE size) {
    if ((plan.style & WS_CHILD) != 0)
        return {place.left, place.top};
    if ((dialog.style & DS_CENTER) != 0) {
        const RECT area = workArea();
        return {(area.left + area.right - size.cx) / 2, (area.top + area.bottom - size.cy) / 2};
    }
    POINT point{place.left, place.top};
    if ((dialog.style & DS_CENTERMOUSE) != 0) {
        GetCursorPos(&point);
        return {point.x - size.cx / 2, point.y - size.cy / 2};
    }
    if ((dialog.style & DS_ABSALIGN) == 0 && owner != nullptr && IsIconic(owner) == FALSE)
        ClientToScreen(owner, &point);
    return point;
}

// The template gives the client area's size.
RECT placeWindow(const DialogTemplate& dialog, const Plan& plan, HWND owner) {
    const RECT place = plan.pixels(dialog.units);
    RECT frame{0, 0, std::max<LONG>(place.right, 0), std::max<LONG>(place.bottom, 0)};
    AdjustWindowRectEx(&frame, plan.style, plan.menu != nullptr ? TRUE : FALSE, plan.exStyle);
    const SIZE size{frame.right - frame.left, frame.bottom - frame.top};
    const POINT corner = upperLeft(dialog, plan, owner, place, size);
    const RECT rect{corner.x, corner.y, corner.x + size.cx, corner.y + size.cy};
    return (plan.style & WS_CHILD) != 0 ? rect : insideWorkArea(rect);
}

Plan makePlan(const DialogTemplate& dialog, const DialogCreation& creation) {
    Plan plan;
    if (dialog.font)
        plan.font = makeFont(*dialog.font);
    plan.units = dialogUnits(plan.font);
    plan.style = styleFor(dialog);
    plan.exStyle = exStyleFor(dialog);
    if (const LPCSTR menu = nameOf(dialog.menu))
        plan.menu = LoadMenuA(creation.instance, menu);
    plan.rect = placeWindow(dialog, plan, creation.owner);
    return plan;
}

HWND makeWindow(const DialogTemplate& dialog, const Plan& plan, const DialogCreation& creation) {
    const LPCSTR named = nameOf(dialog.className);
    const bool usesDefault = dialog.units.left == defaultPlace && (plan.style & WS_CHILD) == 0;
    const HWND window =
        CreateWindowExA(plan.exStyle, named != nullptr ? named : dialogClass, dialog.caption.c_str(), plan.style,
                        usesDefault ? CW_USEDEFAULT : static_cast<int>(plan.rect.left), plan.rect.top,
                        widthOf(plan.rect), heightOf(plan.rect), creation.owner, plan.menu, creation.instance, nullptr);
    if (window != nullptr)
        return window;
    if (plan.font != nullptr)
        DeleteObject(plan.font);
    if (plan.menu != nullptr)
        DestroyMenu(plan.menu);
    return nullptr;
}

// Boxes for text and lists look sunken in a dialog.
bool takesClientEdge(const DialogControl& control) {
    return (control.style & WS_BORDER) != 0 &&
           (compareNoCase(control.className, "Edit") == 0 || compareNoCase(control.className, "ListBox") == 0);
}

HWND makeControl(HWND dialog, const DialogControl& control, const Plan& plan, HINSTANCE instance) {
    DWORD style = control.style | WS_CHILD;
    DWORD exStyle = control.exStyle | WS_EX_NOPARENTNOTIFY;
    if (takesClientEdge(control)) {
        style &= ~WS_BORDER;
        exStyle |= WS_EX_CLIENTEDGE;
    }
    const RECT place = plan.pixels(control.units);
    const std::string text =
        control.text.kind == TemplateName::Kind::number ? "#" + std::to_string(control.text.number) : control.text.text;
    return CreateWindowExA(exStyle, control.className.c_str(), text.c_str(), style, place.left, place.top, place.right,
                           place.bottom, dialog, reinterpret_cast<HMENU>(UINT_PTR{control.id}), instance,
                           const_cast<std::uint8_t*>(control.creationData));
}

// Of several default buttons the last one stays.
void noteDefaultButton(DialogInfo& info, HWND control) {
    if ((dialogCode(control) & DLGC_DEFPUSHBUTTON) == 0)
        return;
    if (info.defaultLook != nullptr)
        send(info.defaultLook, BM_SETSTYLE, BS_PUSHBUTTON, FALSE);
    info.defaultLook = control;
    info.defaultId = GetDlgCtrlID(control);
}

// False when a control couldn't be made, or the dialog is gone.
bool makeControls(HWND dialog, const DialogTemplate& described, const Plan& plan, const DialogCreation& creation) {
    for (const DialogControl& control : described.controls) {
        const HWND made = makeControl(dialog, control, plan, creation.instance);
        const auto info = dialogInfo(dialog);
        if (info == nullptr)
            return false;
        if (made == nullptr) {
            if ((described.style & DS_NOFAILCREATE) == 0)
                return false;
            continue;
        }
        if (plan.font != nullptr)
            send(made, WM_SETFONT, reinterpret_cast<WPARAM>(plan.font), FALSE);
        noteDefaultButton(*info, made);
    }
    return IsWindow(dialog) != FALSE;
}

void initialize(HWND dialog, const DialogTemplate& described, LPARAM parameter) {
    const LRESULT wanted = send(dialog, WM_INITDIALOG, reinterpret_cast<WPARAM>(firstFocus(dialog)), parameter);
    const auto info = dialogInfo(dialog);
    if (info == nullptr || info->ended)
        return;
    // A part of another dialog takes the focus only when it shows.
    if (wanted != 0 && ((described.style & DS_CONTROL) == 0 || (described.style & WS_VISIBLE) != 0)) {
        if (const HWND first = firstFocus(dialog)) {
            focusInDialog(dialog, first);
            info->savedFocus = first;
        }
    } else {
        saveFocus(dialog);
    }
}

void takePlan(HWND dialog, const Plan& plan, const DialogCreation& creation) {
    const auto info = makeDialogInfo(*findWindow(dialog));
    info->font = plan.font;
    info->ownsFont = plan.font != nullptr;
    info->units = plan.units;
    info->modal = creation.modal;
    info->disabledOwner = creation.disabledOwner;
    SetWindowLongPtrA(dialog, DWL_DLGPROC, reinterpret_cast<LONG_PTR>(creation.procedure));
}

HWND createFromBytes(std::span<const std::uint8_t> bytes, const DialogCreation& creation) {
    const auto dialog = parseDialogTemplate(bytes);
    if (!dialog) {
        SetLastError(ERROR_INVALID_DATA);
        return nullptr;
    }
    return createFromTemplate(*dialog, creation);
}

} // namespace

DialogInfo::~DialogInfo() {
    if (ownsFont)
        DeleteObject(font);
}

SIZE dialogUnits(HFONT font) {
    constexpr LPCSTR letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    constexpr int letterCount = 52;
    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ former = SelectObject(dc, font != nullptr ? font : GetStockObject(SYSTEM_FONT));
    SIZE size{};
    TEXTMETRICA metrics{};
    GetTextExtentPoint32A(dc, letters, letterCount, &size);
    GetTextMetricsA(dc, &metrics);
    SelectObject(dc, former);
    DeleteDC(dc);
    // Half the extent of both alphabets is 26 widths; rounded.
    return {(size.cx / (letterCount / 2) + 1) / 2, metrics.tmHeight};
}

RECT insideWorkArea(const RECT& rect) {
    const RECT area = workArea();
    const int width = widthOf(rect);
    const int height = heightOf(rect);
    const int x = std::max<int>(std::min<int>(rect.left, area.right - width), area.left);
    const int y = std::max<int>(std::min<int>(rect.top, area.bottom - height), area.top);
    return {x, y, x + width, y + height};
}

HWND createFromTemplate(const DialogTemplate& described, const DialogCreation& creation) {
    if (creation.owner != nullptr && findWindow(creation.owner) == nullptr)
        return nullptr;
    const Plan plan = makePlan(described, creation);
    const HWND dialog = makeWindow(described, plan, creation);
    if (dialog == nullptr)
        return nullptr;
    takePlan(dialog, plan, creation);
    if (plan.font != nullptr)
        send(dialog, WM_SETFONT, reinterpret_cast<WPARAM>(plan.font), FALSE);
    if (!makeControls(dialog, described, plan, creation)) {
        const DWORD error = GetLastError();
        DestroyWindow(dialog);
        SetLastError(error);
        return nullptr;
    }
    initialize(dialog, described, creation.parameter);
    const auto info = dialogInfo(dialog);
    if (info == nullptr)
        return nullptr;
    if (!creation.modal && !info->ended && (described.style & WS_VISIBLE) != 0) {
        ShowWindow(dialog, SW_SHOWNORMAL);
        UpdateWindow(dialog);
    }
    return IsWindow(dialog) != FALSE ? dialog : nullptr;
}

HWND createDialog(HINSTANCE instance, std::span<const std::uint8_t> dialogTemplate, HWND owner, DLGPROC procedure,
                  LPARAM parameter) {
    return createFromBytes(dialogTemplate, {instance, owner, procedure, parameter, false, nullptr});
}

} // namespace vndk::win32

using namespace vndk::win32;

HWND CreateDialogParamA(HINSTANCE instance, LPCSTR name, HWND owner, DLGPROC procedure, LPARAM parameter) {
    const HRSRC resource = FindResourceA(instance, name, RT_DIALOG);
    if (resource == nullptr)
        return nullptr;
    const auto* bytes = static_cast<const std::uint8_t*>(LockResource(LoadResource(instance, resource)));
    return createDialog(instance, {bytes, SizeofResource(instance, resource)}, owner, procedure, parameter);
}

HWND CreateDialogIndirectParamA(HINSTANCE instance, const DLGTEMPLATE* dialogTemplate, HWND owner, DLGPROC procedure,
                                LPARAM parameter) {
    return createDialog(instance, templateBytes(dialogTemplate), owner, procedure, parameter);
}
