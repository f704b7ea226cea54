#include "lisp/reader.h"

#include <array>
#include <cassert>

#include "number_text.h"

namespace vndk::lisp {

namespace {

bool isBlank(char c) { return static_cast<unsigned char>(c) <= ' '; }

/// A table, because each character of a name or number asks.
constexpr std::array<bool, 256> endsAtomTable = [] {
    std::array<bool, 256> table{};
    for (int code = 0; code <= ' '; ++code)
        table[static_cast<std::size_t>(code)] = true;
    for (char c : {'(', ')', '"', '\'', ';'})
        table[static_cast<unsigned char>(c)] = true;
    return table;
}();

bool endsAtom(char c) { return endsAtomTable[static_cast<unsigned char>(c)]; }

/// Levels for which the reader makes room at once; typed expressions rarely go deeper.
constexpr std::size_t usualDepth = 8;

} // namespace

Reader::Reader(SymbolTable& symbols, std::size_t depthLimit)
    : symbols_(symbols), quote_(symbols.intern("QUOTE")), depthLimit_(depthLimit) {
    frames_.reserve(usualDepth);
}

void Reader::feed(std::string_view text) {
    assert(position_ == text_.size() && "text fed before has to be read first");
    text_ = text;
    position_ = 0;
}

void Reader::reset() {
    text_ = {};
    position_ = 0;
    frames_.clear();
    string_.clear();
    error_.clear();
    line_ = formLine_ = 1;
    inString_ = inComment_ = false;
}

std::string Reader::continuationPrompt() const {
    std::string prompt;
    for (const Frame& frame : frames_)
        if (frame.kind == FrameKind::List)
            prompt += '(';
    if (prompt.empty() && inString_)
        return "\"_> ";
    return prompt + "_> ";
}

Reader::Status Reader::next(Value& form) {
    while (position_ < text_.size()) {
        Step step = Step::Continue;
        if (inString_) {
            step = readString(form);
        } else if (inComment_) {
            skipComment();
        } else {
            const char c = text_[position_];
            if (c == '\n')
                ++line_;
            if (isBlank(c))
                ++position_;
            else
                step = readOne(c, form);
        }
        if (step == Step::Form)
            return Status::Form;
        if (step == Step::Error)
            return Status::Error;
    }
    return Status::NeedMore;
}

Reader::Status Reader::finish() {
    if (!isInsideForm())
        return Status::NeedMore;
    fail(inString_ ? "malformed string on input" : "malformed list on input");
    return Status::Error;
}

Reader::Step Reader::readOne(char first, Value& form) {
    if (first == ';') {
        inComment_ = position_ + 1 < text_.size() && text_[position_ + 1] == '|';
        const std::size_t end = inComment_ ? position_ + 2 : text_.find('\n', position_);
        position_ = end == text_.npos ? text_.size() : end;
        return Step::Continue;
    }
    if (frames_.empty())
        formLine_ = line_;
    switch (first) {
    case '(':
        return open(FrameKind::List);
    case ')':
        return close(form);
    case '\'':
        return open(FrameKind::Quote);
    case '"':
        ++position_;
        inString_ = true;
        string_.clear();
        return Step::Continue;
    default:
        return readAtom(form);
    }
}

/// Passes over a comment of the form ;| ... |; as far as it goes in this text.
void Reader::skipComment() {
    const std::size_t end = text_.find("|;", position_);
    const std::size_t stop = end == text_.npos ? text_.size() : end + 2;
    for (; position_ < stop; ++position_)
        if (text_[position_] == '\n')
            ++line_;
    inComment_ = end == text_.npos;
}

Reader::Step Reader::open(FrameKind kind) {
    ++position_;
    if (frames_.size() >= depthLimit_)
        return fail("lists are nested too deep on input");
    frames_.push_back({kind});
    return Step::Continue;
}

Reader::Step Reader::close(Value& form) {
    ++position_;
    if (frames_.empty())
        return fail("extra right paren on input");
    Frame frame = std::move(frames_.back());
    frames_.pop_back();
    if (frame.kind == FrameKind::Quote)
        return fail("malformed list on input");
    if (frame.dot == DotState::Expected)
        return fail("malformed list on input");
    return deliver(frame.items.finish(std::move(frame.tail)), form);
}

Reader::Step Reader::dot() {
    if (frames_.empty() || frames_.back().kind != FrameKind::List || frames_.back().items.empty() ||
        frames_.back().dot != DotState::None)
        return fail("misplaced dot on input");
    frames_.back().dot = DotState::Expected;
    return Step::Continue;
}

/// Puts a finished datum where it belongs: under its quotes, into the open list, or out as a form.
Reader::Step Reader::deliver(Value datum, Value& form) {
    while (!frames_.empty() && frames_.back().kind == FrameKind::Quote) {
        frames_.pop_back();
        datum = Value::list({Value::symbol(quote_), std::move(datum)});
    }
    if (frames_.empty()) {
        form = std::move(datum);
        return Step::Form;
    }
    Frame& frame = frames_.back();
    switch (frame.dot) {
    case DotState::None:
        frame.items.append(std::move(datum));
        return Step::Continue;
    case DotState::Expected:
        frame.tail = std::move(datum);
        frame.dot = DotState::Taken;
        return Step::Continue;
    case DotState::Taken:
        break;
    }
    return fail("extra cdrs in dotted pair on input");
}

Reader::Step Reader::readAtom(Value& form) {
    const std::size_t start = position_;
    while (position_ < text_.size() && !endsAtom(text_[position_]))
        ++position_;
    const std::string_view token = text_.substr(start, position_ - start);
    if (token == ".")
        return dot();
    if (token.size() > 1 && token[0] == '.' && token[1] >= '0' && token[1] <= '9')
        return fail("misplaced dot on input");
    // Only a digit, after a sign or not, begins a number.
    if (std::optional<Value> number = token[0] <= '9' ? numberFromText(token) : std::nullopt) {
        if (number->isReal() && number->real() - number->real() != 0.0)
            return fail("real number out of range on input");
        return deliver(std::move(*number), form);
    }
    if (token.size() == 3 && (token[0] | 0x20) == 'n' && (token[1] | 0x20) == 'i' && (token[2] | 0x20) == 'l')
        return deliver(Value(), form);
    return deliver(Value::symbol(symbols_.intern(token)), form);
}

Reader::Step Reader::readString(Value& form) {
    while (position_ < text_.size()) {
        const std::size_t special = text_.find_first_of("\"\\\n", position_);
        const std::size_t stop = special == text_.npos ? text_.size() : special;
        string_.append(text_, position_, stop - position_);
        position_ = stop;
        if (position_ == text_.size())
            break;
        const char c = text_[position_++];
        if (c == '"') {
            inString_ = false;
            return deliver(Value::string(string_), form);
        }
        if (c == '\n') {
            ++line_;
            string_ += c;
        } else {
            readEscape();
        }
    }
    return Step::Continue;
}

/// Reads what follows a backslash. Three octal digits name a byte; an unknown letter stands for itself.
void Reader::readEscape() {
    if (position_ == text_.size())
        return;
    const char c = text_[position_++];
    switch (c) {
    case 'n':
        string_ += '\n';
        return;
    case 'r':
        string_ += '\r';
        return;
    case 't':
        string_ += '\t';
        return;
    case 'e':
        string_ += '\x1b';
        return;
    case '\n':
        ++line_;
        string_ += c;
        return;
    default:
        break;
    }
    if (c < '0' || c > '7') {
        string_ += c;
        return;
    }
    int code = c - '0';
    for (int digits = 1; digits < 3 && position_ < text_.size(); ++digits, ++position_) {
        const char digit = text_[position_];
        if (digit < '0' || digit > '7')
            break;
        code = code * 8 + (digit - '0');
    }
    string_ += static_cast<char>(code);
}

Reader::Step Reader::fail(std::string message) {
    error_ = std::move(message);
    frames_.clear();
    inString_ = inComment_ = false;
    position_ = text_.size();
    return Step::Error;
}

} // namespace vndk::lisp
