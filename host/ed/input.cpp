#include "ed/input.h"

#include <algorithm>

namespace vndk::host {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

/// The end of the expression that begins at `from`: behind its last parenthesis, or the text's end when it isn't
/// closed. A cancel ends it where it stands.
size_t expressionEnd(const std::string& text, size_t from, bool* whole = nullptr) {
    if (whole)
        *whole = false;
    int depth = 0;
    bool inString = false;
    for (size_t i = from; i < text.size(); ++i) {
        const char c = text[i];
        if (c == InputQueue::kCancel)
            return i;
        if (inString) {
            if (c == '\\')
                ++i;
            else if (c == '"')
                inString = false;
        } else if (c == '"') {
            inString = true;
        } else if (c == ';') {
            while (i + 1 < text.size() && text[i + 1] != '\n')
                ++i;
        } else if (c == '(') {
            ++depth;
        } else if (c == ')' && --depth == 0) {
            if (whole)
                *whole = true;
            return i + 1;
        }
    }
    return text.size();
}

/// Takes text up to a character that ends it, which goes too. A cancel is all that is left of what it ends.
template <class Text, class Step, class Ends>
Answer takeUntil(Text& text, Step&& step, Ends&& ends) {
    Answer answer;
    answer.kind = Answer::Kind::Text;
    answer.line = text.line;
    while (!text.atEnd()) {
        const char c = text.characters[text.position];
        step(text);
        if (c == InputQueue::kCancel) {
            answer.kind = Answer::Kind::Cancel;
            answer.text.clear();
            // A cancel that ends its line is no answer, so the line's end isn't Enter.
            const std::string_view rest = std::string_view(text.characters).substr(text.position);
            for (size_t end = rest.starts_with("\r\n") ? 2 : rest.starts_with('\n') ? 1 : 0; end > 0; --end)
                step(text);
            return answer;
        }
        if (ends(c))
            break;
        if (c != '\r')
            answer.text += c;
    }
    return answer;
}

} // namespace

bool isWholeExpression(const std::string& text) {
    bool whole = false;
    expressionEnd(text, 0, &whole);
    return whole;
}

void InputQueue::Text::append(std::string_view text) {
    characters.erase(0, position);
    position = 0;
    characters += text;
}

void InputQueue::feed(std::string_view text) { typed_.append(text); }

void InputQueue::send(std::string_view text) {
    if (sent_.atEnd())
        sent_.lineStart = true;
    sent_.append(text);
}

/// Passes one character and keeps count of lines. A carriage return before a line feed belongs to it.
void InputQueue::step(Text& text) {
    const char c = text.characters[text.position++];
    text.lineStart = c == '\n';
    text.line += text.lineStart;
}

/// Passes comments that stand where an answer could begin, and the blanks with which a line is indented.
void InputQueue::skipComments(Text& text) {
    for (;;) {
        size_t i = text.position;
        const std::string& s = text.characters;
        while (i < s.size() && isBlank(s[i]))
            ++i;
        if (i < s.size() && s[i] == ';') {
            // What stands behind an answer on its line ends nothing; the line's end goes with the comment.
            i = std::min(s.find('\n', i), s.size() - 1) + 1;
            while (text.position < i)
                step(text);
            continue;
        }
        if (text.lineStart)
            text.position = i;
        return;
    }
}

Answer InputQueue::takeExpression(Text& text) {
    Answer answer;
    answer.kind = Answer::Kind::Expression;
    answer.line = text.line;
    const size_t end = expressionEnd(text.characters, text.position);
    answer.text = text.characters.substr(text.position, end - text.position);
    text.line += static_cast<size_t>(std::count(answer.text.begin(), answer.text.end(), '\n'));
    text.position = end;
    text.lineStart = false;
    // Blanks up to the line's end, and the line's end, belong to the expression; so does one blank before more.
    size_t i = end;
    while (i < text.characters.size() && (isBlank(text.characters[i]) || text.characters[i] == '\r'))
        ++i;
    if (i < text.characters.size() && text.characters[i] == '\n') {
        text.position = i;
        step(text);
    } else if (i > end) {
        ++text.position;
    }
    return answer;
}

Answer InputQueue::takeWord(Text& text, bool quoted) {
    skipComments(text);
    if (text.atEnd())
        return {};
    if (text.characters[text.position] == '(')
        return takeExpression(text);
    bool inQuotes = false;
    return takeUntil(text, step, [&](char c) {
        inQuotes ^= quoted && c == '"';
        return c == '\n' || (isBlank(c) && !inQuotes);
    });
}

Answer InputQueue::takeLine(Text& text) {
    return takeUntil(text, step, [](char c) { return c == '\n'; });
}

Answer InputQueue::take(AnswerForm form) {
    for (Text* text : {&sent_, &typed_}) {
        if (text == &typed_ && !picked_.empty()) {
            Answer answer;
            answer.kind = Answer::Kind::Value;
            answer.value = std::move(picked_.front());
            picked_.pop_front();
            return answer;
        }
        if (form != AnswerForm::Line && !text->atEnd())
            skipComments(*text);
        if (text->atEnd())
            continue;
        Answer answer;
        if (form == AnswerForm::Word || form == AnswerForm::Name)
            answer = takeWord(*text, form == AnswerForm::Name);
        else if (form == AnswerForm::LineOrExpression && text->characters[text->position] == '(')
            answer = takeExpression(*text);
        else
            answer = takeLine(*text);
        if (text == &sent_)
            answer.line = 0;
        return answer;
    }
    return {};
}

std::optional<Answer> InputQueue::takeTypedLine() {
    if (typed_.atEnd())
        return std::nullopt;
    Answer answer = takeLine(typed_);
    // There a cancel takes what is left of its line with it.
    while (answer.kind == Answer::Kind::Cancel && !typed_.atEnd() && !typed_.lineStart)
        step(typed_);
    return answer;
}

void InputQueue::dropLine() {
    sent_.position = sent_.characters.size();
    picked_.clear();
    while (!typed_.atEnd() && !typed_.lineStart)
        step(typed_);
}

} // namespace vndk::host
