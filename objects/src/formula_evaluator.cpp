#include "src/formula_evaluator.h"

#include "db/symbol_table.h"

#include <charconv>
#include <cmath>
#include <vector>

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool sameText(std::string_view a, std::string_view b) { return acdbFoldName(a) == acdbFoldName(b); }

/// -1, 0 or 1.
int compare(const CCondValue& a, const CCondValue& b) {
    if (a.isNumber && b.isNumber)
        return a.number < b.number ? -1 : a.number > b.number;
    const int order = acdbFoldName(a.text).compare(acdbFoldName(b.text));
    return order < 0 ? -1 : order > 0;
}

std::string textOf(double number) {
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, number);
    return std::string(buffer, end.ptr);
}

} // namespace

CCondValue CCondValue::fromNumber(double number) {
    number += 0.0; // no negative zero
    return {true, number, textOf(number)};
}

CCondValue CCondValue::fromText(std::string text) {
    size_t begin = 0, end = text.size();
    while (begin < end && isBlank(text[begin]))
        ++begin;
    while (end > begin && isBlank(text[end - 1]))
        --end;
    if (end - begin > 1 && text[begin] == '+' && text[begin + 1] != '-')
        ++begin;
    CCondValue value{false, 0, {}};
    const auto read = std::from_chars(text.data() + begin, text.data() + end, value.number);
    value.isNumber =
        begin < end && read.ec == std::errc() && read.ptr == text.data() + end && std::isfinite(value.number);
    if (!value.isNumber)
        value.number = 0;
    value.text = std::move(text);
    return value;
}

namespace vndk::objects {

class FormulaEvaluator::Deeper {
public:
    explicit Deeper(FormulaEvaluator& evaluator) : evaluator_(evaluator) {
        if (++evaluator_.depth_ > kMaxDepth)
            evaluator_.syntaxError();
    }
    ~Deeper() { --evaluator_.depth_; }

private:
    FormulaEvaluator& evaluator_;
};

FormulaEvaluator::FormulaEvaluator(std::string_view expression, const CCondFormula::Lookup* lookup)
    : text_(expression), lookup_(lookup), live_(lookup != nullptr) {}

Acad::ErrorStatus FormulaEvaluator::run(CCondValue& result) {
    CCondValue value = alternatives();
    if (!atEnd())
        syntaxError();
    if (status_ == Acad::eOk)
        result = std::move(value);
    return status_;
}

CCondValue FormulaEvaluator::alternatives() {
    CCondValue left = conjunction();
    while (acceptWord("or")) {
        const CCondValue right = conjunction();
        left = CCondValue::fromNumber(left.isTrue() || right.isTrue());
    }
    return left;
}

CCondValue FormulaEvaluator::conjunction() {
    CCondValue left = negation();
    while (acceptWord("and")) {
        const CCondValue right = negation();
        left = CCondValue::fromNumber(left.isTrue() && right.isTrue());
    }
    return left;
}

CCondValue FormulaEvaluator::negation() {
    if (!acceptWord("not"))
        return comparison();
    const Deeper deeper(*this);
    return status_ == Acad::eOk ? CCondValue::fromNumber(!negation().isTrue()) : CCondValue();
}

CCondValue FormulaEvaluator::comparison() {
    CCondValue left = sum();
    // Two-character signs first: "<" would take half of them.
    if (accept("<>"))
        return CCondValue::fromNumber(compare(left, sum()) != 0);
    if (accept("<="))
        return CCondValue::fromNumber(compare(left, sum()) <= 0);
    if (accept(">="))
        return CCondValue::fromNumber(compare(left, sum()) >= 0);
    if (accept("<"))
        return CCondValue::fromNumber(compare(left, sum()) < 0);
    if (accept(">"))
        return CCondValue::fromNumber(compare(left, sum()) > 0);
    if (accept("="))
        return CCondValue::fromNumber(compare(left, sum()) == 0);
    return left;
}

CCondValue FormulaEvaluator::sum() {
    CCondValue left = product();
    for (;;) {
        if (accept("+"))
            left = checked(number(left) + number(product()));
        else if (accept("-"))
            left = checked(number(left) - number(product()));
        else if (accept("&"))
            left = CCondValue::fromText(left.text + product().text);
        else
            return left;
    }
}

CCondValue FormulaEvaluator::product() {
    CCondValue left = sign();
    for (;;) {
        if (accept("*")) {
            left = checked(number(left) * number(sign()));
        } else if (accept("/")) {
            const double divisor = number(sign());
            left = divisor != 0 ? checked(number(left) / divisor) : valueError(Acad::eOutOfRange);
        } else {
            return left;
        }
    }
}

CCondValue FormulaEvaluator::sign() {
    if (!accept("-"))
        return primary();
    const Deeper deeper(*this);
    return status_ == Acad::eOk ? CCondValue::fromNumber(-number(sign())) : CCondValue();
}

CCondValue FormulaEvaluator::primary() {
    const Deeper deeper(*this);
    if (status_ != Acad::eOk || atEnd())
        return syntaxError();
    const char first = text_[position_];
    if (isDigit(first) || first == '.')
        return literalNumber();
    if (first == '"')
        return quotedText();
    if (accept("(")) {
        CCondValue inner = alternatives();
        expect(")");
        return inner;
    }
    if (accept("[")) {
        const size_t end = text_.find(']', position_);
        if (end == std::string_view::npos || end == position_)
            return syntaxError();
        const std::string_view tag = text_.substr(position_, end - position_);
        position_ = end + 1;
        skipBlanks();
        return lookedUp(tag);
    }
    if (acceptWord("value"))
        return lookedUp({});
    return call(word());
}

CCondValue FormulaEvaluator::literalNumber() {
    double number = 0;
    const auto read = std::from_chars(text_.data() + position_, text_.data() + text_.size(), number);
    if (read.ec != std::errc())
        return syntaxError();
    position_ = static_cast<size_t>(read.ptr - text_.data());
    skipBlanks();
    return CCondValue::fromNumber(number);
}

CCondValue FormulaEvaluator::quotedText() {
    std::string text;
    for (++position_; !atEnd(); ++position_) {
        if (text_[position_] != '"') {
            text += text_[position_];
        } else if (position_ + 1 < text_.size() && text_[position_ + 1] == '"') {
            text += '"';
            ++position_;
        } else {
            ++position_;
            skipBlanks();
            return CCondValue::fromText(std::move(text));
        }
    }
    return syntaxError();
}

CCondValue FormulaEvaluator::lookedUp(std::string_view tag) {
    std::string text;
    if (live_ && !(*lookup_)(tag, text))
        return valueError(Acad::eKeyNotFound);
    return CCondValue::fromText(std::move(text));
}

CCondValue FormulaEvaluator::call(std::string_view name) {
    if (sameText(name, "if"))
        return conditional();
    const bool least = sameText(name, "min"), most = sameText(name, "max");
    const bool single = sameText(name, "abs") || sameText(name, "round") || sameText(name, "len");
    if (!least && !most && !single)
        return syntaxError();
    const std::vector<CCondValue> given = arguments();
    if (status_ != Acad::eOk || given.empty() || (single && given.size() != 1))
        return syntaxError();
    if (sameText(name, "len"))
        return CCondValue::fromNumber(static_cast<double>(given[0].text.size()));
    double result = number(given[0]);
    if (sameText(name, "abs"))
        result = std::fabs(result);
    else if (sameText(name, "round"))
        result = std::round(result);
    for (const CCondValue& value : given)
        if (least || most)
            result = least ? std::fmin(result, number(value)) : std::fmax(result, number(value));
    return CCondValue::fromNumber(result);
}

/// Only the branch that is taken is worked out, so that the other one may divide by zero.
CCondValue FormulaEvaluator::conditional() {
    const bool live = live_;
    expect("(");
    const bool taken = alternatives().isTrue();
    expect(",");
    live_ = live && taken;
    CCondValue first = alternatives();
    expect(",");
    live_ = live && !taken;
    CCondValue second = alternatives();
    live_ = live;
    expect(")");
    return taken ? first : second;
}

std::vector<CCondValue> FormulaEvaluator::arguments() {
    std::vector<CCondValue> values;
    expect("(");
    do {
        values.push_back(alternatives());
    } while (status_ == Acad::eOk && accept(","));
    expect(")");
    return values;
}

CCondValue FormulaEvaluator::checked(double number) {
    return std::isfinite(number) ? CCondValue::fromNumber(number) : valueError(Acad::eOutOfRange);
}

double FormulaEvaluator::number(const CCondValue& value) {
    if (!value.isNumber)
        valueError(Acad::eInvalidInput);
    return value.number;
}

void FormulaEvaluator::skipBlanks() {
    while (!atEnd() && isBlank(text_[position_]))
        ++position_;
}

bool FormulaEvaluator::accept(std::string_view sign) {
    skipBlanks();
    if (status_ != Acad::eOk || text_.substr(position_, sign.size()) != sign)
        return false;
    position_ += sign.size();
    skipBlanks();
    return true;
}

bool FormulaEvaluator::acceptWord(std::string_view wanted) {
    skipBlanks();
    const size_t before = position_;
    if (status_ == Acad::eOk && sameText(word(), wanted))
        return true;
    position_ = before;
    return false;
}

std::string_view FormulaEvaluator::word() {
    const size_t begin = position_;
    while (!atEnd() && isLetter(text_[position_]))
        ++position_;
    const std::string_view found = text_.substr(begin, position_ - begin);
    skipBlanks();
    return found;
}

void FormulaEvaluator::expect(std::string_view sign) {
    if (!accept(sign))
        syntaxError();
}

CCondValue FormulaEvaluator::syntaxError() {
    if (status_ == Acad::eOk)
        status_ = Acad::eInvalidInput;
    return {};
}

CCondValue FormulaEvaluator::valueError(Acad::ErrorStatus status) {
    if (live_ && status_ == Acad::eOk)
        status_ = status;
    return {};
}

} // namespace vndk::objects
