#include "controls/edit.h"

#include "user/window.h"
#include "win32/draw.h"
#include "win32/fonts.h"
#include "win32/icons.h"
#include "win32/input.h"
#include "win32/paint.h"

#include <algorithm>

namespace vndk::win32 {
namespace {

/// Coordinates that a program gives stay so small that their differences are numbers, too.
LONG sum(LONG first, LONG second) {
    constexpr std::int64_t largest = 0x100000;
    return static_cast<LONG>(std::clamp(std::int64_t{first} + second, -largest, largest));
}

} // namespace

// ---- Window --------------------------------------------------------------------------------------------------------

void Edit::onCreate(const CREATESTRUCTA* create) {
    const DWORD bits = style();
    multiLine_ = (bits & ES_MULTILINE) != 0;
    scrollsAcross_ = (bits & (ES_AUTOHSCROLL | WS_HSCROLL)) != 0;
    scrollsDown_ = (bits & (ES_AUTOVSCROLL | WS_VSCROLL)) != 0;
    // Lines that are not aligned at the left are always wrapped.
    if (multiLine_ && (bits & (ES_CENTER | ES_RIGHT)) != 0)
        scrollsAcross_ = false;
    if (!multiLine_ && (bits & ES_PASSWORD) != 0)
        measure_.password = '*';
    measureFont();
    placeFormat();
    if (create != nullptr && create->lpszName != nullptr)
        text_ = create->lpszName;
    foldCase(text_);
    relayout();
}

void Edit::onFocus(bool gained) {
    hasFocus_ = gained;
    if (gained) {
        CreateCaret(window(), nullptr, 0, measure_.lineHeight);
        placeCaret();
        ShowCaret(window());
    } else {
        endDrag();
        DestroyCaret();
    }
    if (selectionBegin() != selectionEnd() && !hasStyle(ES_NOHIDESEL))
        redrawLines(layout_.lineOf(selectionBegin()), layout_.lineOf(selectionEnd()));
    notifyCommand(gained ? EN_SETFOCUS : EN_KILLFOCUS);
}

void Edit::onSize() {
    ownFormat_ = false;
    placeFormat();
    relayout();
    redrawAll();
    placeCaret();
}

/// Like the platform, without the messages that SetWindowLong sends.
void Edit::setStyleBit(DWORD bit, bool on) const {
    if (Window* found = findWindow(window()); found != nullptr)
        found->style = on ? found->style | bit : found->style & ~bit;
}

/// In a dialog, a multi-line control takes all keys, so that it has to leave Tab, Return and Escape by itself.
LRESULT Edit::dialogCode(const MSG* message) {
    if (message != nullptr)
        inDialog_ = true;
    return DLGC_WANTCHARS | DLGC_HASSETSEL | DLGC_WANTARROWS | (multiLine_ ? DLGC_WANTALLKEYS : 0);
}

void Edit::setFont(HFONT font, bool redraw) {
    font_ = font;
    measureFont();
    setMargins(EC_LEFTMARGIN | EC_RIGHTMARGIN, EC_USEFONTINFO, EC_USEFONTINFO);
    placeFormat();
    relayout();
    if (hasFocus_) {
        CreateCaret(window(), nullptr, 0, measure_.lineHeight);
        placeCaret();
        ShowCaret(window());
    }
    if (redraw)
        redrawAll();
}

// ---- Layout --------------------------------------------------------------------------------------------------------

void Edit::measureFont() {
    const HDC dc = GetDC(window());
    if (dc == nullptr)
        return;
    const HGDIOBJ former = font_ != nullptr ? SelectObject(dc, font_) : nullptr;
    TEXTMETRICA metrics{};
    GetTextMetricsA(dc, &metrics);
    measure_.lineHeight = std::max<int>(metrics.tmHeight, 1);
    measure_.averageWidth = std::max<int>(metrics.tmAveCharWidth, 1);
    GetCharWidth32A(dc, 0, 255, measure_.widths.data());
    if (former != nullptr)
        SelectObject(dc, former);
    ReleaseDC(window(), dc);
}

/// The margin that a font asks for: half of its average width when it is scalable, and the control wide enough.
int Edit::fontMargin() const {
    const RECT client = clientRect();
    const int margin = font_ != nullptr ? measure_.averageWidth / 2 : 0;
    return client.right >= 2 * (margin + measure_.averageWidth) ? margin : 0;
}

void Edit::setMargins(WPARAM which, int left, int right) {
    if ((which & EC_LEFTMARGIN) != 0)
        leftMargin_ = left == static_cast<int>(EC_USEFONTINFO) ? fontMargin() : left;
    if ((which & EC_RIGHTMARGIN) != 0)
        rightMargin_ = right == static_cast<int>(EC_USEFONTINFO) ? fontMargin() : right;
}

/// One pixel inside of a border when there is room for it, less the margins; one line high in a single-line control.
void Edit::placeFormat() {
    if (ownFormat_)
        return;
    const RECT client = clientRect();
    const bool bordered =
        hasStyle(WS_BORDER) || (GetWindowLongA(window(), GWL_EXSTYLE) & static_cast<LONG>(WS_EX_CLIENTEDGE)) != 0;
    const int across = bordered && client.right > 2 ? 1 : 0;
    const int down = bordered && client.bottom >= measure_.lineHeight + 2 ? 1 : 0;
    format_ = {client.left + across, client.top + down, client.right - across, client.bottom - down};
    if (!multiLine_)
        format_.bottom = std::min(format_.bottom, format_.top + measure_.lineHeight);
    format_.left += leftMargin_;
    format_.right = std::max(format_.right - rightMargin_, format_.left);
}

void Edit::setFormat(const RECT* rect, bool relative, bool redraw) {
    if (!multiLine_)
        return;
    const RECT former = relative ? format_ : RECT{};
    ownFormat_ = false;
    placeFormat();
    if (rect != nullptr) {
        ownFormat_ = true;
        format_ = {sum(former.left, rect->left), sum(former.top, rect->top), sum(former.right, rect->right),
                   sum(former.bottom, rect->bottom)};
        format_.right = std::max(format_.right, format_.left);
        format_.bottom = std::max(format_.bottom, format_.top);
    }
    relayout();
    if (redraw)
        redrawAll();
    placeCaret();
}

EditWrap Edit::wrap() {
    EditWrap wrap;
    wrap.multiLine = multiLine_;
    wrap.width = multiLine_ && !scrollsAcross_ ? std::max(formatWidth(), 1) : 0;
    if (breakWord_ != nullptr)
        wrap.findBreak = [this](int position) { return breakWord(position, WB_LEFT); };
    return wrap;
}

void Edit::relayout() {
    layout_.rebuild(text_, measure_, wrap());
    scrollTo(firstLine_, scrollX_);
    updateScrollBars();
}

int Edit::visibleLines() const {
    return std::max(static_cast<int>(format_.bottom - format_.top) / measure_.lineHeight, 1);
}

std::string_view Edit::lineText(int index) const {
    const EditLine& line = layout_.line(index);
    return std::string_view(text_).substr(static_cast<std::size_t>(line.start), static_cast<std::size_t>(line.length));
}

int Edit::lineLeft(int index) const {
    const DWORD align = style() & (ES_CENTER | ES_RIGHT);
    const int room = std::max(formatWidth() - layout_.line(index).width, 0);
    if ((align & ES_CENTER) != 0)
        return format_.left + room / 2 - scrollX_;
    return format_.left + ((align & ES_RIGHT) != 0 ? room : 0) - scrollX_;
}

int Edit::xOf(int line, int position) const {
    const EditLine& found = layout_.line(line);
    const int count = std::clamp(position - found.start, 0, found.length);
    return lineLeft(line) + measure_.extent(lineText(line).substr(0, static_cast<std::size_t>(count)));
}

POINT Edit::pointOf(int position) const {
    const int line = position == caret_ ? caretLine() : layout_.lineOf(position);
    return {xOf(line, position), lineTop(line)};
}

// ---- Messages ------------------------------------------------------------------------------------------------------

Edit::Handled Edit::handleWindow(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        onCreate(reinterpret_cast<const CREATESTRUCTA*>(lParam));
        return 0;
    case WM_GETDLGCODE:
        return dialogCode(reinterpret_cast<const MSG*>(lParam));
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        onFocus(message == WM_SETFOCUS);
        return 0;
    case WM_ENABLE:
    case WM_SYSCOLORCHANGE:
        redrawAll();
        return 0;
    case WM_STYLECHANGED:
        redrawAll();
        return 0;
    case WM_SIZE:
        onSize();
        return 0;
    case WM_SETFONT:
        setFont(reinterpret_cast<HFONT>(wParam), LOWORD(static_cast<DWORD_PTR>(lParam)) != 0);
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(font_);
    case WM_ERASEBKGND:
        // Ground and text are painted together.
        return 1;
    case WM_PAINT:
    case WM_PRINTCLIENT:
        onPaint(reinterpret_cast<HDC>(wParam));
        return 0;
    default:
        return std::nullopt;
    }
}

LRESULT Edit::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    using Family = Handled (Edit::*)(UINT, WPARAM, LPARAM);
    constexpr Family families[] = {&Edit::handleWindow, &Edit::handleText,     &Edit::handleClipboard,
                                   &Edit::handleKey,    &Edit::handleMouse,    &Edit::handleSelection,
                                   &Edit::handleLines,  &Edit::handleSettings, &Edit::handleScrolling};
    for (const Family family : families)
        if (const Handled result = (this->*family)(message, wParam, lParam); result.has_value())
            return *result;
    return alive() ? defaultHandling(message, wParam, lParam) : 0;
}

void registerEdit() { registerControl<Edit>({.name = "EDIT", .style = CS_DBLCLKS | CS_PARENTDC, .cursor = IDC_IBEAM}); }

} // namespace vndk::win32
