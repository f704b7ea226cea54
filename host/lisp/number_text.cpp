#include "number_text.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace vndk::lisp {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Parses digits with a point or exponent; `end` tells how far. A number too large gives infinity, one too small 0.
double parseReal(std::string_view text, const char*& end) {
    double number = 0.0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    end = result.ptr;
    if (result.ec == std::errc::result_out_of_range) {
        // Out of range to which side? Scanning for a significant digit before the point or a negative exponent tells.
        const std::string_view token(text.data(), static_cast<std::size_t>(end - text.data()));
        const std::size_t exponent = token.find_first_of("eE");
        const bool tiny = exponent != token.npos ? token.substr(exponent).find('-') != token.npos
                                                 : token.find_first_of("123456789") > token.find('.');
        return tiny ? 0.0 : std::numeric_limits<double>::infinity();
    }
    return number;
}

} // namespace

std::optional<Value> numberFromText(std::string_view token) {
    const bool negative = !token.empty() && token[0] == '-';
    std::string_view digits = token;
    if (!digits.empty() && (digits[0] == '+' || digits[0] == '-'))
        digits.remove_prefix(1);
    // The first digit keeps words that the standard library takes for numbers (inf, nan) symbols.
    if (digits.empty() || !isDigit(digits[0]))
        return std::nullopt;
    const char* const last = digits.data() + digits.size();
    std::int64_t whole = 0;
    const auto asInt = std::from_chars(digits.data(), last, whole);
    if (asInt.ptr == last && asInt.ec == std::errc()) {
        whole = negative ? -whole : whole;
        if (whole >= std::numeric_limits<std::int32_t>::min() && whole <= std::numeric_limits<std::int32_t>::max())
            return Value::integer(static_cast<std::int32_t>(whole));
        return Value::real(static_cast<double>(whole));
    }
    const char* end = nullptr;
    const double number = parseReal(digits, end);
    if (end != last)
        return std::nullopt;
    return Value::real(negative ? -number : number);
}

double leadingReal(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t");
    if (start == text.npos)
        return 0.0;
    text.remove_prefix(start);
    const bool negative = text[0] == '-';
    if (text[0] == '-' || text[0] == '+')
        text.remove_prefix(1);
    if (text.empty() || !(isDigit(text[0]) || (text.size() > 1 && text[0] == '.' && isDigit(text[1]))))
        return 0.0;
    const char* end = nullptr;
    const double number = parseReal(text, end);
    return negative ? -number : number;
}

} // namespace vndk::lisp
