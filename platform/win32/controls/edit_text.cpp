// The edit control's text: setting, typing, limits, undo, clipboard.
#include "controls/edit.h"

#include "win32/codepage.h"
#include "win32/input.h"
#include "win32/memory.h"
#include "win32/paint.h"

#include <algorithm>
#include <cstring>

namespace vndk::win32 {
namespace {

constexpr UINT unlimitedSingle = 0x7FFFFFFE;
constexpr UINT unlimitedMulti = 0xFFFFFFFF;

/// Clipboard text may come with single LF or CR as line ends.
std::string withFullBreaks(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char character = text[index];
        if (character != '\r' && character != '\n') {
            result += character;
            continue;
        }
        if (character == '\r' && index + 1 < text.size() && text[index + 1] == '\n')
            ++index;
        result += "\r\n";
    }
    return result;
}

std::string clipboardText(HWND window) {
    std::string text;
    if (OpenClipboard(window) == FALSE)
        return text;
    const HANDLE block = GetClipboardData(CF_TEXT);
    if (const auto* bytes = static_cast<const char*>(block != nullptr ? GlobalLock(block) : nullptr);
        bytes != nullptr) {
        text.assign(bytes, strnlen(bytes, GlobalSize(block)));
        GlobalUnlock(block);
    }
    CloseClipboard();
    return text;
}

void putOnClipboard(HWND window, std::string_view text) {
    if (OpenClipboard(window) == FALSE)
        return;
    EmptyClipboard();
    const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    if (auto* bytes = static_cast<char*>(block != nullptr ? GlobalLock(block) : nullptr); bytes != nullptr) {
        std::memcpy(bytes, text.data(), text.size());
        bytes[text.size()] = '\0';
        GlobalUnlock(block);
        SetClipboardData(CF_TEXT, block);
    }
    CloseClipboard();
}

} // namespace

// ---- Changing ------------------------------------------------------------------------------------------------------

void Edit::foldCase(std::string& text) const {
    if (hasStyle(ES_UPPERCASE))
        std::transform(text.begin(), text.end(), text.begin(), upper1252);
    else if (hasStyle(ES_LOWERCASE))
        std::transform(text.begin(), text.end(), text.begin(), lower1252);
}

/// The limit doesn't count here: it is for what the user types.
bool Edit::setWholeText(const char* text) {
    text_ = text != nullptr ? text : "";
    foldCase(text_);
    undo_.clear();
    modified_ = false;
    anchor_ = caret_ = 0;
    afterWrap_ = false;
    columnX_ = -1;
    firstLine_ = scrollX_ = 0;
    relayout();
    redrawAll();
    placeCaret();
    if (!multiLine_)
        announceChange();
    return true;
}

/// EN_UPDATE before the change shows, EN_CHANGE after that.
void Edit::announceChange() {
    notifyCommand(EN_UPDATE);
    if (alive())
        UpdateWindow(window());
    if (alive())
        notifyCommand(EN_CHANGE);
}

void Edit::change(int begin, int end, std::string_view text, bool canUndo, EditUndo::Join join) {
    const int removed = end - begin;
    const int inserted = static_cast<int>(text.size());
    const auto at = static_cast<std::size_t>(begin);
    if (canUndo)
        undo_.record(begin, std::string_view(text_).substr(at, static_cast<std::size_t>(removed)), inserted, join);
    else
        undo_.clear();
    text_.replace(at, static_cast<std::size_t>(removed), text);
    layout_.update(text_, measure_, wrap(), begin, removed, inserted);
    modified_ = true;
    anchor_ = caret_ = begin + inserted;
    afterWrap_ = false;
    columnX_ = -1;
    scrollToCaret();
    updateScrollBars();
    redrawLines(std::max(layout_.lineOf(begin) - 1, 0), std::max(layout_.count(), firstLine_ + visibleLines() + 1));
    placeCaret();
    announceChange();
}

/// What is left of `text` when limits have been kept. True when something was cut off.
bool Edit::cutToLimits(std::string& text, Origin origin) {
    const std::size_t before = text.size();
    const auto kept = static_cast<std::size_t>(length() - (selectionEnd() - selectionBegin()));
    const std::size_t room = limit_ > kept ? limit_ - kept : 0;
    if (text.size() > room)
        text.resize(room);
    if (!multiLine_ && !scrollsAcross_) {
        std::string rest = text_;
        rest.erase(static_cast<std::size_t>(selectionBegin()),
                   static_cast<std::size_t>(selectionEnd() - selectionBegin()));
        const int width = formatWidth() - measure_.extent(rest);
        text.resize(static_cast<std::size_t>(measure_.fit(text, std::max(width, 0))));
    }
    if (multiLine_ && !scrollsDown_ && origin == Origin::typed && tooManyLines(text))
        text.clear();
    return text.size() < before;
}

/// More lines than show, and more than there are now.
bool Edit::tooManyLines(std::string_view text) {
    std::string trial = text_;
    trial.replace(static_cast<std::size_t>(selectionBegin()),
                  static_cast<std::size_t>(selectionEnd() - selectionBegin()), text);
    EditLayout lines;
    lines.rebuild(trial, measure_, wrap());
    return lines.count() > visibleLines() && lines.count() > layout_.count();
}

void Edit::replaceSelection(std::string text, Origin origin, bool canUndo) {
    foldCase(text);
    const bool wanted = !text.empty();
    if (cutToLimits(text, origin)) {
        notifyCommand(EN_MAXTEXT);
        if (!alive())
            return;
        if (origin == Origin::typed)
            MessageBeep(0);
        // Nothing of it fits: what is selected stays as well.
        if (text.empty() && wanted)
            return;
    }
    // The notification may have changed the text.
    const bool typed = origin == Origin::typed && text.size() <= 2;
    change(selectionBegin(), selectionEnd(), text, canUndo, typed ? EditUndo::Join::withFormer : EditUndo::Join::no);
}

void Edit::deleteRange(int begin, int end) {
    if (begin < end)
        change(begin, end, {}, true, EditUndo::Join::withFormer);
}

/// Takes the last change back; what it had taken away is selected again.
bool Edit::undo() {
    if (undo_.isEmpty() || isReadOnly())
        return false;
    const EditUndo step = undo_;
    const int begin = step.position();
    const int end = std::min(begin + step.inserted(), length());
    const int restored = static_cast<int>(step.removed().size());
    anchor_ = caret_ = begin;
    change(begin, end, step.removed(), true, EditUndo::Join::no);
    if (alive() && restored > 0 && begin + restored <= length())
        select(begin, begin + restored);
    return true;
}

// ---- Clipboard -----------------------------------------------------------------------------------------------------

void Edit::copy() {
    if (measure_.password != '\0' || selectionBegin() == selectionEnd())
        return;
    putOnClipboard(window(),
                   std::string_view(text_).substr(static_cast<std::size_t>(selectionBegin()),
                                                  static_cast<std::size_t>(selectionEnd() - selectionBegin())));
}

void Edit::cut() {
    if (measure_.password != '\0')
        return;
    SendMessageA(window(), WM_COPY, 0, 0);
    if (alive())
        SendMessageA(window(), WM_CLEAR, 0, 0);
}

/// A single-line control takes the first line only.
void Edit::paste() {
    if (isReadOnly())
        return;
    std::string text = clipboardText(window());
    if (multiLine_)
        text = withFullBreaks(text);
    else
        text.resize(std::min(text.find_first_of("\r\n"), text.size()));
    if (!text.empty())
        replaceSelection(std::move(text), Origin::typed, true);
}

// ---- Messages ------------------------------------------------------------------------------------------------------

/// With EM_FMTLINES, wrapped lines end in CR CR LF.
std::string Edit::textForReading() const {
    if (!softBreaks_ || !multiLine_)
        return text_;
    std::string result;
    for (int index = 0; index < layout_.count(); ++index) {
        const EditLine& line = layout_.line(index);
        result.append(text_, static_cast<std::size_t>(line.start), static_cast<std::size_t>(line.end - line.start));
        if (line.soft)
            result += "\r\r\n";
    }
    return result;
}

Edit::~Edit() {
    if (block_ != nullptr)
        LocalFree(block_);
}

/// A memory block with the text; null in a single-line control, which has none.
HLOCAL Edit::textBlock() {
    if (!multiLine_)
        return nullptr;
    if (block_ != nullptr && LocalSize(block_) != text_.size() + 1) {
        const HLOCAL resized = LocalReAlloc(block_, text_.size() + 1, LMEM_MOVEABLE);
        if (resized == nullptr)
            return nullptr;
        block_ = resized;
    }
    if (block_ == nullptr)
        block_ = LocalAlloc(LMEM_MOVEABLE, text_.size() + 1);
    if (auto* bytes = static_cast<char*>(LocalLock(block_)); bytes != nullptr) {
        std::memcpy(bytes, text_.c_str(), text_.size() + 1);
        LocalUnlock(block_);
    }
    return block_;
}

/// The block becomes the control's; the former one goes back to the program, which asked for it and frees it.
void Edit::setTextBlock(HLOCAL block) {
    if (!multiLine_ || block == nullptr)
        return;
    const auto* bytes = static_cast<const char*>(LocalLock(block));
    if (bytes == nullptr)
        return;
    const std::string text(bytes, strnlen(bytes, LocalSize(block)));
    LocalUnlock(block);
    block_ = block;
    setWholeText(text.c_str());
}

Edit::Handled Edit::handleText(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SETTEXT:
        return setWholeText(reinterpret_cast<const char*>(lParam)) ? TRUE : FALSE;
    case WM_GETTEXTLENGTH:
        return softBreaks_ ? static_cast<LRESULT>(textForReading().size()) : length();
    case WM_GETTEXT: {
        auto* buffer = reinterpret_cast<char*>(lParam);
        if (buffer == nullptr || wParam == 0)
            return 0;
        const std::string text = textForReading();
        const std::size_t count = std::min<std::size_t>(text.size(), wParam - 1);
        std::memcpy(buffer, text.data(), count);
        buffer[count] = '\0';
        return static_cast<LRESULT>(count);
    }
    case EM_REPLACESEL:
        replaceSelection(lParam != 0 ? reinterpret_cast<const char*>(lParam) : "", Origin::program, wParam != 0);
        return 0;
    case EM_LIMITTEXT:
        limit_ = static_cast<UINT>(wParam);
        if (limit_ == 0)
            limit_ = multiLine_ ? unlimitedMulti : unlimitedSingle;
        else
            limit_ = std::min(limit_, multiLine_ ? unlimitedMulti : unlimitedSingle);
        return 0;
    case EM_GETLIMITTEXT:
        return static_cast<LRESULT>(limit_);
    case EM_GETMODIFY:
        return modified_ ? TRUE : FALSE;
    case EM_SETMODIFY:
        modified_ = wParam != 0;
        return 0;
    default:
        return std::nullopt;
    }
}

Edit::Handled Edit::handleClipboard(UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
    switch (message) {
    case WM_COPY:
        copy();
        return 0;
    case WM_CUT:
        if (isReadOnly())
            copy();
        else
            cut();
        return 0;
    case WM_PASTE:
        paste();
        return 0;
    case WM_CLEAR:
        if (!isReadOnly())
            deleteRange(selectionBegin(), selectionEnd());
        return 0;
    case WM_UNDO:
    case EM_UNDO: {
        const bool done = undo();
        return done || !multiLine_ ? TRUE : FALSE;
    }
    case EM_CANUNDO:
        return undo_.isEmpty() ? FALSE : TRUE;
    case EM_EMPTYUNDOBUFFER:
        undo_.clear();
        return 0;
    default:
        return std::nullopt;
    }
}

} // namespace vndk::win32
