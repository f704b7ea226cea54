// EM_ messages on selection, lines and settings.
#include "controls/edit.h"

#include "user/window.h"

#include <algorithm>
#include <cstring>

namespace vndk::win32 {
namespace {

constexpr int largestWord = 0xFFFF;

constexpr int largestStop = 0x7FFF; // pixels

LRESULT wordsOrError(int low, int high) {
    return low > largestWord || high > largestWord ? -1 : MAKELRESULT(low, high);
}

} // namespace

bool Edit::setTabStops(std::size_t count, const int* stops) {
    if (!multiLine_ || (count != 0 && stops == nullptr) || count > 0x10000)
        return false;
    measure_.tabs.clear();
    for (std::size_t index = 0; index < count; ++index) {
        const std::int64_t pixels = std::int64_t{stops[index]} * measure_.averageWidth / 4;
        measure_.tabs.push_back(static_cast<int>(std::clamp<std::int64_t>(pixels, 0, largestStop)));
    }
    std::sort(measure_.tabs.begin(), measure_.tabs.end());
    relayout();
    return true;
}

Edit::Handled Edit::handleSelection(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case EM_GETSEL: {
        const int begin = selectionBegin();
        const int end = selectionEnd();
        if (wParam != 0)
            *reinterpret_cast<DWORD*>(wParam) = static_cast<DWORD>(begin);
        if (lParam != 0)
            *reinterpret_cast<DWORD*>(lParam) = static_cast<DWORD>(end);
        return wordsOrError(begin, end);
    }
    case EM_SETSEL: {
        // Numbers below 0 stand for the text's end; -1 as begin takes the selection off.
        const int begin = static_cast<int>(wParam);
        const int end = static_cast<int>(lParam);
        afterWrap_ = false;
        columnX_ = -1;
        if (begin == -1)
            select(caret_, caret_);
        else
            select(begin < 0 ? length() : begin, end < 0 ? length() : end);
        return 1;
    }
    case EM_POSFROMCHAR: {
        const auto position = static_cast<int>(wParam);
        if (wParam >= static_cast<WPARAM>(length()))
            return -1;
        const int line = layout_.lineOf(position);
        return MAKELRESULT(xOf(line, position), lineTop(line));
    }
    case EM_CHARFROMPOS: {
        const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        const RECT client = clientRect();
        if (point.x < 0 || point.y < 0 || point.x >= client.right || point.y >= client.bottom)
            return -1;
        bool afterWrap = false;
        const int position = hitTest(point, afterWrap);
        return MAKELRESULT(position, layout_.lineOf(position) - (afterWrap ? 1 : 0));
    }
    default:
        return std::nullopt;
    }
}

Edit::Handled Edit::handleLines(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto number = static_cast<int>(wParam);
    switch (message) {
    case EM_GETLINECOUNT:
        return layout_.count();
    case EM_LINEINDEX:
        if (number == -1)
            return layout_.line(caretLine()).start;
        return number >= 0 && number < layout_.count() ? layout_.line(number).start : -1;
    case EM_LINEFROMCHAR:
        return layout_.lineOf(number == -1 ? selectionBegin() : std::max(number, 0));
    case EM_LINELENGTH: {
        if (number == -1 && multiLine_) {
            const EditLine& first = layout_.line(layout_.lineOf(selectionBegin()));
            const EditLine& last = layout_.line(layout_.lineOf(selectionEnd()));
            const int lastEnd = last.start + last.length;
            return selectionBegin() - first.start + std::max(lastEnd - selectionEnd(), 0);
        }
        if (!multiLine_)
            return length();
        return number >= 0 && number <= length() ? layout_.line(layout_.lineOf(number)).length : 0;
    }
    case EM_GETLINE: {
        auto* buffer = reinterpret_cast<char*>(lParam);
        const int index = multiLine_ ? number : 0;
        if (buffer == nullptr || index < 0 || index >= layout_.count())
            return 0;
        WORD size = 0;
        std::memcpy(&size, buffer, sizeof size);
        const std::string_view text = lineText(index);
        const std::size_t count = std::min<std::size_t>(text.size(), size);
        std::memcpy(buffer, text.data(), count);
        return static_cast<LRESULT>(count);
    }
    case EM_FMTLINES:
        softBreaks_ = wParam != 0;
        return static_cast<LRESULT>(wParam);
    default:
        return std::nullopt;
    }
}

Edit::Handled Edit::handleSettings(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case EM_GETRECT:
        if (auto* rect = reinterpret_cast<RECT*>(lParam); rect != nullptr)
            *rect = format_;
        return 0;
    case EM_SETRECT:
    case EM_SETRECTNP:
        setFormat(reinterpret_cast<const RECT*>(lParam), wParam == 1, message == EM_SETRECT);
        return 0;
    case EM_SETMARGINS:
        // The whole parameter can be EC_USEFONTINFO: then both margins are the font's.
        if (wParam == EC_USEFONTINFO)
            setMargins(EC_LEFTMARGIN | EC_RIGHTMARGIN, EC_USEFONTINFO, EC_USEFONTINFO);
        else
            setMargins(wParam, LOWORD(static_cast<DWORD_PTR>(lParam)), HIWORD(static_cast<DWORD_PTR>(lParam)));
        placeFormat();
        relayout();
        redrawAll();
        placeCaret();
        return 0;
    case EM_GETMARGINS:
        return MAKELRESULT(leftMargin_, rightMargin_);
    case EM_SETTABSTOPS:
        return setTabStops(wParam, reinterpret_cast<const int*>(lParam)) ? TRUE : FALSE;
    case EM_SETPASSWORDCHAR:
        if (multiLine_)
            return 0;
        measure_.password = static_cast<char>(wParam);
        setStyleBit(ES_PASSWORD, wParam != 0);
        relayout();
        redrawAll();
        placeCaret();
        return 1;
    case EM_GETPASSWORDCHAR:
        return static_cast<unsigned char>(measure_.password);
    case EM_SETREADONLY:
        setStyleBit(ES_READONLY, wParam != 0);
        redrawAll();
        return 1;
    case EM_SETWORDBREAKPROC:
        breakWord_ = reinterpret_cast<EDITWORDBREAKPROC>(lParam);
        relayout();
        redrawAll();
        return 0;
    case EM_GETWORDBREAKPROC:
        return reinterpret_cast<LRESULT>(breakWord_);
    case EM_GETHANDLE:
        return reinterpret_cast<LRESULT>(textBlock());
    case EM_SETHANDLE:
        setTextBlock(reinterpret_cast<HLOCAL>(wParam));
        return 0;
    case EM_GETIMESTATUS:
    case EM_SETIMESTATUS:
        logOnce("edit control: message " + std::to_string(message) + " is not done");
        return 0;
    default:
        return std::nullopt;
    }
}

} // namespace vndk::win32
