// The edit control's selection and caret, and how they move.
#include "controls/edit.h"

#include "win32/input.h"

#include <algorithm>

namespace vndk::win32 {
namespace {

bool isBlank(char character) { return character == ' ' || character == '\t'; }
bool isBreak(char character) { return character == '\r' || character == '\n'; }

/// The built-in rule: words are separated by blanks, and a line's end is a word of its own.
int defaultWordLeft(std::string_view text, int position) {
    auto at = static_cast<std::size_t>(position);
    while (at > 0 && isBlank(text[at - 1]))
        --at;
    if (at > 0 && isBreak(text[at - 1]))
        return static_cast<int>(at > 1 && text[at - 1] == '\n' && text[at - 2] == '\r' ? at - 2 : at - 1);
    while (at > 0 && !isBlank(text[at - 1]) && !isBreak(text[at - 1]))
        --at;
    return static_cast<int>(at);
}

int defaultWordRight(std::string_view text, int position) {
    auto at = static_cast<std::size_t>(position);
    if (at < text.size() && isBreak(text[at]))
        return static_cast<int>(text.substr(at, 2) == "\r\n" ? at + 2 : at + 1);
    while (at < text.size() && !isBlank(text[at]) && !isBreak(text[at]))
        ++at;
    while (at < text.size() && isBlank(text[at]))
        ++at;
    return static_cast<int>(at);
}

} // namespace

// ---- Selection -----------------------------------------------------------------------------------------------------

/// Repaints only the lines whose look changes.
void Edit::select(int anchor, int caret) {
    const int formerBegin = selectionBegin();
    const int formerEnd = selectionEnd();
    anchor_ = std::clamp(anchor, 0, length());
    caret_ = std::clamp(caret, 0, length());
    const bool same = formerBegin == selectionBegin() && formerEnd == selectionEnd();
    if (!same && showsSelection()) {
        // Where both ends have moved, all between the outermost ends; else between the old and the new end.
        int from = std::min(formerBegin, selectionBegin());
        int to = std::max(formerEnd, selectionEnd());
        if (formerBegin == selectionBegin())
            from = std::min(formerEnd, selectionEnd());
        else if (formerEnd == selectionEnd())
            to = std::max(formerBegin, selectionBegin());
        redrawLines(layout_.lineOf(from), layout_.lineOf(to));
    }
    placeCaret();
}

void Edit::moveCaret(int position, bool extend, bool afterWrap) {
    afterWrap_ = afterWrap;
    select(extend ? anchor_ : position, position);
    scrollToCaret();
    updateScrollBars();
    placeCaret();
}

/// The caret stays inside of the formatting rectangle sideways: at a line's very end it covers the last pixel.
void Edit::placeCaret() const {
    if (!hasFocus_)
        return;
    POINT point = pointOf(caret_);
    const LONG right = std::max<LONG>(format_.right - 1, format_.left);
    if (point.x > right && point.x <= right + 1)
        point.x = right;
    SetCaretPos(point.x, point.y);
}

int Edit::caretLine() const {
    const int line = layout_.lineOf(caret_);
    const bool hangs = afterWrap_ && line > 0 && layout_.line(line).start == caret_ && layout_.line(line - 1).soft;
    return hangs ? line - 1 : line;
}

// ---- Steps ---------------------------------------------------------------------------------------------------------

/// CR LF is one step.
int Edit::stepLeft(int position) const {
    if (position <= 0)
        return 0;
    const auto at = static_cast<std::size_t>(position);
    const bool full = multiLine_ && at >= 2 && text_[at - 1] == '\n' && text_[at - 2] == '\r';
    return position - (full ? 2 : 1);
}

int Edit::stepRight(int position) const {
    if (position >= length())
        return length();
    const bool full = multiLine_ && text_.compare(static_cast<std::size_t>(position), 2, "\r\n") == 0;
    return position + (full ? 2 : 1);
}

int Edit::breakWord(int position, int code) {
    return std::clamp(breakWord_(text_.data(), position, length(), code), 0, length());
}

int Edit::wordLeft(int position) {
    return breakWord_ != nullptr ? breakWord(position, WB_LEFT) : defaultWordLeft(text_, position);
}

int Edit::wordRight(int position) {
    return breakWord_ != nullptr ? breakWord(position, WB_RIGHT) : defaultWordRight(text_, position);
}

/// The word around a position, with the blanks behind it. A password shows nothing of its words.
void Edit::selectWord(int position) {
    if (measure_.password != '\0') {
        select(0, length());
        return;
    }
    const EditLine& line = layout_.line(layout_.lineOf(position));
    const int end = line.start + line.length;
    const int right = std::min(wordRight(position), end);
    const int left = std::max(wordLeft(right), line.start);
    select(std::min(left, position), std::max(right, position));
}

/// Up and down keep to the column where the movement began.
void Edit::moveByLines(int lines, bool extend) {
    const int from = caretLine();
    const int to = std::clamp(from + lines, 0, layout_.count() - 1);
    const int x = columnX_ >= 0 ? columnX_ : pointOf(caret_).x + scrollX_;
    if (to == from) {
        if (!extend)
            moveCaret(caret_, false, afterWrap_);
        return;
    }
    const EditLine& line = layout_.line(to);
    const int count = measure_.nearest(lineText(to), x - (lineLeft(to) + scrollX_));
    moveCaret(line.start + count, extend, line.soft && count == line.length);
    columnX_ = x;
}

} // namespace vndk::win32
