// The messages that ask and set a rich edit's text, lines, selection and formats.
#include "controls/rich_edit.h"
#include "win32/draw.h"
#include "win32/error.h"
#include "win32/fonts.h"
#include "win32/icons.h"
#include "win32/input.h"

#include <algorithm>
#include <cstring>

namespace vndk::win32 {
namespace {

constexpr int twipsPerInch = 1440;
constexpr int pixelsPerInch = 96;

/// Copies into a buffer of `size` characters, NUL included; the length without it.
LRESULT copyTo(std::string_view text, LPSTR buffer, std::size_t size) {
    if (buffer == nullptr || size == 0)
        return 0;
    const std::size_t length = std::min(text.size(), size - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
    return static_cast<LRESULT>(length);
}

/// The caller's buffer holds the text and its NUL.
LRESULT copyWhole(std::string_view text, LPSTR buffer) { return copyTo(text, buffer, text.size() + 1); }

void applyFormat(CharStyle& style, const CHARFORMAT& format) {
    const auto flag = [&format](DWORD mask, DWORD effect, bool& value) {
        if ((format.dwMask & mask) != 0)
            value = (format.dwEffects & effect) != 0;
    };
    flag(CFM_BOLD, CFE_BOLD, style.bold);
    flag(CFM_ITALIC, CFE_ITALIC, style.italic);
    flag(CFM_UNDERLINE, CFE_UNDERLINE, style.underline);
    flag(CFM_STRIKEOUT, CFE_STRIKEOUT, style.strikeOut);
    if ((format.dwMask & CFM_SIZE) != 0)
        style.height = std::clamp(static_cast<int>(format.yHeight), 20, 32760);
    if ((format.dwMask & CFM_FACE) != 0)
        style.face.assign(format.szFaceName, strnlen(format.szFaceName, sizeof format.szFaceName));
    if ((format.dwMask & CFM_COLOR) != 0) {
        style.autoColor = (format.dwEffects & CFE_AUTOCOLOR) != 0;
        style.color = style.autoColor ? 0 : format.crTextColor & 0xFFFFFF;
    }
}

void giveFormat(const CharStyle& style, CHARFORMAT& format) {
    format.dwMask = CFM_BOLD | CFM_ITALIC | CFM_UNDERLINE | CFM_STRIKEOUT | CFM_SIZE | CFM_FACE | CFM_COLOR;
    format.dwEffects = (style.bold ? CFE_BOLD : 0) | (style.italic ? CFE_ITALIC : 0) |
                       (style.underline ? CFE_UNDERLINE : 0) | (style.strikeOut ? CFE_STRIKEOUT : 0) |
                       (style.autoColor ? CFE_AUTOCOLOR : 0);
    format.yHeight = style.height;
    format.crTextColor = style.color;
    copyTo(style.face, format.szFaceName, sizeof format.szFaceName);
}

} // namespace

RichEdit::RichEdit(HWND window) : Control(window) {}
RichEdit::~RichEdit() = default;

// ---- Text and lines ------------------------------------------------------------------------------------------------

LRESULT RichEdit::getLine(int index, LPSTR buffer) const {
    if (buffer == nullptr || index < 0 || index >= layout_.lineCount())
        return 0;
    WORD size = 0;
    std::memcpy(&size, buffer, sizeof size);
    const RichLayout::Line& line = layout_.line(index);
    const auto text =
        document_.text().substr(static_cast<std::size_t>(line.begin), static_cast<std::size_t>(line.end - line.begin));
    const std::size_t length = std::min<std::size_t>(text.size(), size);
    std::memcpy(buffer, text.data(), length);
    if (length < size)
        buffer[length] = '\0';
    return static_cast<LRESULT>(length);
}

bool RichEdit::handleTextMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    result = 0;
    switch (message) {
    case WM_SETTEXT:
        setText(reinterpret_cast<LPCSTR>(lParam));
        result = TRUE;
        return true;
    case WM_GETTEXT:
        result = copyTo(document_.plainText(0, document_.length()), reinterpret_cast<LPSTR>(lParam), wParam);
        return true;
    case WM_GETTEXTLENGTH:
        result = static_cast<LRESULT>(document_.plainText(0, document_.length()).size());
        return true;
    case EM_GETSELTEXT: {
        const Range range = selection();
        result = copyWhole(document_.plainText(range.begin, range.end), reinterpret_cast<LPSTR>(lParam));
        return true;
    }
    case EM_GETTEXTRANGE:
        if (const auto* asked = reinterpret_cast<const TEXTRANGE*>(lParam); asked != nullptr) {
            const Range range = clipped(asked->chrg.cpMin, asked->chrg.cpMax);
            result = copyWhole(document_.text().substr(static_cast<std::size_t>(range.begin),
                                                       static_cast<std::size_t>(range.end - range.begin)),
                               asked->lpstrText);
        }
        return true;
    case EM_FINDTEXT:
        result = findText(wParam, reinterpret_cast<const FINDTEXTA*>(lParam));
        return true;
    case EM_STREAMIN:
        result = streamIn(wParam, reinterpret_cast<EDITSTREAM*>(lParam));
        return true;
    case EM_STREAMOUT:
        result = streamOut(wParam, reinterpret_cast<EDITSTREAM*>(lParam));
        return true;
    default:
        return false;
    }
}

LRESULT RichEdit::findText(WPARAM flags, const FINDTEXTA* find) const {
    constexpr WPARAM matchCase = 4;
    if (find == nullptr || find->lpstrText == nullptr || *find->lpstrText == '\0')
        return -1;
    const Range range = clipped(find->chrg.cpMin, find->chrg.cpMax);
    std::string haystack(document_.text().substr(0, static_cast<std::size_t>(range.end)));
    std::string needle = find->lpstrText;
    if ((flags & matchCase) == 0)
        for (std::string* text : {&haystack, &needle})
            std::transform(text->begin(), text->end(), text->begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
    const std::size_t at = haystack.find(needle, static_cast<std::size_t>(range.begin));
    return at == std::string::npos ? -1 : static_cast<LRESULT>(at);
}

LRESULT RichEdit::positionFromChar(WPARAM wParam, LPARAM lParam) const {
    // Of the two forms of this message the older hands over a structure: no position is as large as an address.
    constexpr WPARAM largestPosition = 0x7FFFFFFF;
    if (wParam > largestPosition) {
        *reinterpret_cast<POINT*>(wParam) = clientPlace(static_cast<int>(lParam));
        return 0;
    }
    if (static_cast<int>(wParam) > document_.length())
        return -1;
    const POINT place = clientPlace(static_cast<int>(wParam));
    return MAKELRESULT(place.x, place.y);
}

LRESULT RichEdit::charFromPosition(LPARAM lParam) const {
    const auto* point = reinterpret_cast<const POINT*>(lParam);
    return point != nullptr ? positionAt(*point) : -1;
}

bool RichEdit::handleLineMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    const auto position = static_cast<int>(wParam);
    result = 0;
    switch (message) {
    case EM_GETLINECOUNT:
        result = layout_.lineCount();
        return true;
    case EM_LINEINDEX: {
        const int line = position == -1 ? layout_.lineOf(caret_) : position;
        result = line >= 0 && line < layout_.lineCount() ? layout_.line(line).begin : -1;
        return true;
    }
    case EM_LINELENGTH: {
        const int of = position < 0 ? caret_ : position;
        if (of <= document_.length()) {
            const int line = layout_.lineOf(of);
            result = layout_.visibleEnd(document_, line) - layout_.line(line).begin;
        }
        return true;
    }
    case EM_LINEFROMCHAR:
        result = layout_.lineOf(position < 0 ? selection().begin : std::min(position, document_.length()));
        return true;
    case EM_EXLINEFROMCHAR:
        result = layout_.lineOf(lParam < 0 ? selection().begin
                                           : static_cast<int>(std::min<LPARAM>(lParam, document_.length())));
        return true;
    case EM_GETLINE:
        result = getLine(position, reinterpret_cast<LPSTR>(lParam));
        return true;
    case EM_GETFIRSTVISIBLELINE:
        result = layout_.lineAtHeight(scroll_.y);
        return true;
    case EM_POSFROMCHAR:
        result = positionFromChar(wParam, lParam);
        return true;
    case EM_CHARFROMPOS:
        result = charFromPosition(lParam);
        return true;
    case EM_LINESCROLL:
        scrollLines(static_cast<int>(lParam));
        result = multiLine();
        return true;
    case EM_SCROLL:
        onScroll(true, static_cast<int>(wParam));
        return true;
    case EM_SCROLLCARET:
        showCaret();
        return true;
    case EM_GETRECT:
        if (auto* rect = reinterpret_cast<RECT*>(lParam); rect != nullptr)
            *rect = clientRect();
        return true;
    default:
        return false;
    }
}

// ---- Selection -----------------------------------------------------------------------------------------------------

bool RichEdit::handleSelectionMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    const Range range = selection();
    result = 0;
    switch (message) {
    case EM_GETSEL:
        if (auto* begin = reinterpret_cast<DWORD*>(wParam); begin != nullptr)
            *begin = static_cast<DWORD>(range.begin);
        if (auto* end = reinterpret_cast<DWORD*>(lParam); end != nullptr)
            *end = static_cast<DWORD>(range.end);
        result = range.end > 0xFFFF ? -1 : MAKELRESULT(range.begin, range.end);
        return true;
    case EM_SETSEL: {
        const auto begin = static_cast<LONG>(wParam);
        if (begin < 0) {
            select(caret_, caret_, true);
            return true;
        }
        const Range wanted = clipped(begin, static_cast<LONG>(lParam));
        select(wanted.begin, wanted.end, true);
        result = wanted.end;
        return true;
    }
    case EM_EXGETSEL:
        if (auto* asked = reinterpret_cast<CHARRANGE*>(lParam); asked != nullptr)
            *asked = {range.begin, range.end};
        return true;
    case EM_EXSETSEL:
        if (const auto* wanted = reinterpret_cast<const CHARRANGE*>(lParam); wanted != nullptr) {
            const Range clippedRange = clipped(wanted->cpMin, wanted->cpMax);
            select(clippedRange.begin, clippedRange.end, true);
            result = caret_;
        }
        return true;
    case EM_SELECTIONTYPE:
        result = range.empty() ? SEL_EMPTY : range.end - range.begin > 1 ? SEL_TEXT | SEL_MULTICHAR : SEL_TEXT;
        return true;
    case EM_HIDESELECTION:
        hideSelection_ = wParam != 0;
        invalidate(nullptr, false);
        return true;
    default:
        return false;
    }
}

// ---- Formats -------------------------------------------------------------------------------------------------------

LRESULT RichEdit::setCharFormat(WPARAM scope, const CHARFORMAT* format) {
    if (format == nullptr || format->cbSize < sizeof(CHARFORMAT))
        return 0;
    const auto changedStyle = [&](StyleIndex index) {
        CharStyle style = document_.style(index);
        applyFormat(style, *format);
        return style;
    };
    if ((scope & (SCF_SELECTION | SCF_ALL)) == 0) {
        document_.setDefaultStyle(changedStyle(document_.defaultStyle()), false);
        return TRUE;
    }
    const Range range = (scope & SCF_ALL) != 0 ? Range{0, document_.length()} : selection();
    if (range.empty()) {
        nextStyle_ = document_.intern(changedStyle(typingStyle()));
        nextStyleSet_ = true;
        return TRUE;
    }
    for (int position = range.begin; position < range.end; ++position)
        document_.setStyle(position, position + 1, document_.intern(changedStyle(document_.styleAt(position))));
    changed();
    return TRUE;
}

LRESULT RichEdit::getCharFormat(bool ofSelection, CHARFORMAT* format) const {
    if (format == nullptr || format->cbSize < sizeof(CHARFORMAT))
        return 0;
    const CharStyle& first = document_.style(ofSelection ? typingStyle() : document_.defaultStyle());
    giveFormat(first, *format);
    if (!ofSelection)
        return static_cast<LRESULT>(format->dwMask);
    // The mask names what all of the selection shares.
    const Range range = selection();
    for (int position = range.begin; position < range.end; ++position) {
        const CharStyle& style = document_.style(document_.styleAt(position));
        const auto differs = [format](bool unequal, DWORD mask) { format->dwMask &= unequal ? ~mask : ~DWORD{0}; };
        differs(style.bold != first.bold, CFM_BOLD);
        differs(style.italic != first.italic, CFM_ITALIC);
        differs(style.underline != first.underline, CFM_UNDERLINE);
        differs(style.strikeOut != first.strikeOut, CFM_STRIKEOUT);
        differs(style.height != first.height, CFM_SIZE);
        differs(style.face != first.face, CFM_FACE);
        differs(style.color != first.color || style.autoColor != first.autoColor, CFM_COLOR);
    }
    return static_cast<LRESULT>(format->dwMask);
}

LRESULT RichEdit::setParaFormat(const PARAFORMAT* format) {
    if (format == nullptr || format->cbSize < sizeof(PARAFORMAT))
        return 0;
    const Range range = selection();
    const int last = document_.paragraphAt(range.end);
    for (int index = document_.paragraphAt(range.begin); index <= last; ++index) {
        ParagraphStyle style = document_.paragraph(index);
        if ((format->dwMask & PFM_ALIGNMENT) != 0)
            style.alignment = format->wAlignment == PFA_RIGHT    ? Alignment::right
                              : format->wAlignment == PFA_CENTER ? Alignment::center
                                                                 : Alignment::left;
        // The platform's offset is that of all lines but the first.
        if ((format->dwMask & PFM_STARTINDENT) != 0)
            style.leftIndent = std::clamp<int>(format->dxStartIndent, 0, 0x7FFF);
        if ((format->dwMask & PFM_OFFSET) != 0) {
            style.firstIndent = -std::clamp<int>(format->dxOffset, -0x7FFF, 0x7FFF);
            style.leftIndent -= style.firstIndent;
        }
        if ((format->dwMask & PFM_RIGHTINDENT) != 0)
            style.rightIndent = std::clamp<int>(format->dxRightIndent, 0, 0x7FFF);
        if ((format->dwMask & PFM_TABSTOPS) != 0)
            style.tabs.assign(format->rgxTabs, format->rgxTabs + std::clamp<int>(format->cTabCount, 0, MAX_TAB_STOPS));
        document_.setParagraph(index, style);
    }
    changed();
    return TRUE;
}

LRESULT RichEdit::getParaFormat(PARAFORMAT* format) const {
    if (format == nullptr || format->cbSize < sizeof(PARAFORMAT))
        return 0;
    const ParagraphStyle& style = document_.paragraph(document_.paragraphAt(selection().begin));
    format->dwMask = PFM_ALIGNMENT | PFM_STARTINDENT | PFM_OFFSET | PFM_RIGHTINDENT | PFM_TABSTOPS;
    format->wAlignment = style.alignment == Alignment::right    ? PFA_RIGHT
                         : style.alignment == Alignment::center ? PFA_CENTER
                                                                : PFA_LEFT;
    format->dxStartIndent = style.leftIndent + style.firstIndent;
    format->dxOffset = -style.firstIndent;
    format->dxRightIndent = style.rightIndent;
    const auto tabs = std::min<std::size_t>(style.tabs.size(), MAX_TAB_STOPS);
    format->cTabCount = static_cast<SHORT>(tabs);
    std::copy_n(style.tabs.begin(), tabs, format->rgxTabs);
    return static_cast<LRESULT>(format->dwMask);
}

bool RichEdit::handleFormatMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    result = 0;
    switch (message) {
    case EM_SETCHARFORMAT:
        result = setCharFormat(wParam, reinterpret_cast<const CHARFORMAT*>(lParam));
        return true;
    case EM_GETCHARFORMAT:
        result = getCharFormat(wParam != 0, reinterpret_cast<CHARFORMAT*>(lParam));
        return true;
    case EM_SETPARAFORMAT:
        result = setParaFormat(reinterpret_cast<const PARAFORMAT*>(lParam));
        return true;
    case EM_GETPARAFORMAT:
        result = getParaFormat(reinterpret_cast<PARAFORMAT*>(lParam));
        return true;
    case EM_SETBKGNDCOLOR:
        result = static_cast<LRESULT>(systemBackground_ ? GetSysColor(COLOR_WINDOW) : background_);
        systemBackground_ = wParam != 0;
        background_ = static_cast<COLORREF>(lParam) & 0xFFFFFF;
        invalidate(nullptr, false);
        return true;
    case WM_SETFONT: {
        font_ = reinterpret_cast<HFONT>(wParam);
        LOGFONTA font{};
        CharStyle style;
        if (GetObjectA(font_, sizeof font, &font) == sizeof font && font.lfHeight != 0) {
            style.face.assign(font.lfFaceName, strnlen(font.lfFaceName, sizeof font.lfFaceName));
            style.height = MulDiv(std::abs(font.lfHeight), twipsPerInch, pixelsPerInch);
            style.bold = font.lfWeight >= FW_BOLD;
            style.italic = font.lfItalic != 0;
            style.underline = font.lfUnderline != 0;
            style.strikeOut = font.lfStrikeOut != 0;
        }
        document_.setDefaultStyle(style, true);
        relayout();
        return true;
    }
    case WM_GETFONT:
        result = reinterpret_cast<LRESULT>(font_);
        return true;
    default:
        return false;
    }
}

// ---- Editing -------------------------------------------------------------------------------------------------------

bool RichEdit::handleEditMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    result = 0;
    switch (message) {
    case EM_REPLACESEL:
        if (const auto* text = reinterpret_cast<LPCSTR>(lParam); text != nullptr)
            replaceSelection(RichDocument::plain(text, typingStyle()), wParam != 0, false);
        return true;
    case WM_CLEAR:
        if (!readOnly() && !selection().empty())
            replaceSelection({}, true, false);
        return true;
    case WM_COPY:
        copy();
        return true;
    case WM_CUT:
        if (!readOnly()) {
            copy();
            if (!selection().empty())
                replaceSelection({}, true, false);
        }
        return true;
    case WM_PASTE:
        if (!readOnly())
            paste();
        return true;
    case EM_CANPASTE:
        result = !readOnly() && IsClipboardFormatAvailable(CF_TEXT) != FALSE;
        return true;
    case EM_CANUNDO:
        result = !undo_.empty();
        return true;
    case EM_UNDO:
    case WM_UNDO:
        result = !undo_.empty();
        undo();
        return true;
    case EM_EMPTYUNDOBUFFER:
        undo_.clear();
        return true;
    case EM_GETMODIFY:
        result = modified_;
        return true;
    case EM_SETMODIFY:
        modified_ = wParam != 0;
        return true;
    case EM_SETREADONLY: {
        const DWORD bits = wParam != 0 ? style() | ES_READONLY : style() & ~ES_READONLY;
        SetWindowLongA(window(), GWL_STYLE, static_cast<LONG>(bits));
        result = TRUE;
        return true;
    }
    case EM_LIMITTEXT:
        limit_ = wParam == 0 ? 0x7FFFFFFF : static_cast<DWORD>(wParam);
        return true;
    case EM_EXLIMITTEXT:
        limit_ = lParam == 0 ? 0x10000 : static_cast<DWORD>(lParam);
        return true;
    case EM_GETLIMITTEXT:
        result = static_cast<LRESULT>(limit_);
        return true;
    case EM_SETEVENTMASK:
        result = static_cast<LRESULT>(std::exchange(eventMask_, static_cast<DWORD>(lParam)));
        return true;
    case EM_GETEVENTMASK:
        result = static_cast<LRESULT>(eventMask_);
        return true;
    default:
        return false;
    }
}

LRESULT RichEdit::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (handleTextMessage(message, wParam, lParam, result) || handleLineMessage(message, wParam, lParam, result) ||
        handleSelectionMessage(message, wParam, lParam, result) ||
        handleFormatMessage(message, wParam, lParam, result) || handleEditMessage(message, wParam, lParam, result) ||
        handleInput(message, wParam, lParam, result))
        return result;
    switch (message) {
    case WM_CREATE:
        relayout();
        if (const auto* create = reinterpret_cast<const CREATESTRUCT*>(lParam); create->lpszName != nullptr)
            setText(create->lpszName);
        return 0;
    case WM_SIZE:
    case WM_STYLECHANGED:
        relayout();
        return 0;
    case WM_PAINT:
    case WM_PRINTCLIENT:
        paint(reinterpret_cast<HDC>(wParam));
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_ENABLE:
        invalidate(nullptr, false);
        return 0;
    case WM_SETREDRAW:
        redraw_ = wParam != 0;
        break;
    default:
        break;
    }
    return defaultHandling(message, wParam, lParam);
}

void registerRichEdit() {
    for (const LPCSTR name : {RICHEDIT_CLASS10A, RICHEDIT_CLASSA})
        registerControl<RichEdit>({.name = name, .style = CS_DBLCLKS, .cursor = IDC_IBEAM});
}

} // namespace vndk::win32
