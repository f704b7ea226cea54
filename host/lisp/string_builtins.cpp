// Strings: 8-bit text in the host's code page, positions counted from 1 unless a function is of the vl- family.
#include <algorithm>
#include <charconv>

#include "arguments.h"
#include "code_page.h"
#include "evaluator.h"
#include "lisp/printer.h"
#include "number_text.h"

namespace vndk::lisp {

namespace {

Value strcat(Evaluator& evaluator, Arguments args) {
    std::size_t length = 0;
    for (const Value& arg : args)
        length += asString(arg).size();
    if (length > evaluator.limits().stringLength)
        throwError("string too long");
    std::string text;
    text.reserve(length);
    for (const Value& arg : args)
        text += arg.text();
    return Value::string(text);
}

Value strlen(Evaluator&, Arguments args) {
    std::size_t length = 0;
    for (const Value& arg : args)
        length += asString(arg).size();
    return Value::integer(static_cast<std::int32_t>(length));
}

Value substr(Evaluator&, Arguments args) {
    const std::string_view text = asString(args[0]);
    const std::int32_t start = asInt(args[1]);
    if (start < 1)
        throwBadArgument("fixnump:", args[1]);
    const std::size_t from = std::min(static_cast<std::size_t>(start) - 1, text.size());
    if (!given(args, 2))
        return Value::string(text.substr(from));
    const std::int32_t length = asInt(args[2]);
    if (length < 0)
        throwBadArgument("fixnump:", args[2]);
    return Value::string(text.substr(from, static_cast<std::size_t>(length)));
}

Value strcase(Evaluator&, Arguments args) {
    std::string text(asString(args[0]));
    std::transform(text.begin(), text.end(), text.begin(), given(args, 1) ? lowerCase : upperCase);
    return Value::string(text);
}

Value ascii(Evaluator&, Arguments args) {
    const std::string_view text = asString(args[0]);
    return Value::integer(text.empty() ? 0 : static_cast<unsigned char>(text[0]));
}

Value chr(Evaluator&, Arguments args) {
    const std::int32_t code = asInt(args[0]);
    if (code < 0 || code > 255)
        throwBadArgument("fixnump:", args[0]);
    const char c = static_cast<char>(code);
    return Value::string(code == 0 ? std::string_view() : std::string_view(&c, 1));
}

Value itoa(Evaluator&, Arguments args) { return Value::string(std::to_string(asInt(args[0]))); }

Value atoi(Evaluator&, Arguments args) {
    std::string_view text = asString(args[0]);
    const std::size_t start = std::min(text.find_first_not_of(" \t"), text.size());
    text.remove_prefix(start);
    if (!text.empty() && text[0] == '+')
        text.remove_prefix(1);
    std::int32_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return Value::integer(number);
}

Value atof(Evaluator&, Arguments args) { return Value::real(leadingReal(asString(args[0]))); }

/// (vl-string-search pattern text [start]): positions count from 0.
Value search(Evaluator&, Arguments args) {
    const std::string_view pattern = asString(args[0]);
    const std::int32_t start = given(args, 2) ? asInt(args[2]) : 0;
    if (start < 0)
        throwBadArgument("fixnump:", args[2]);
    const std::size_t found = asString(args[1]).find(pattern, static_cast<std::size_t>(start));
    return found == std::string_view::npos ? Value() : Value::integer(static_cast<std::int32_t>(found));
}

/// (vl-string-subst new old text [start]): replaces the first occurrence.
Value substitute(Evaluator& evaluator, Arguments args) {
    std::string text(asString(args[2]));
    const std::int32_t start = given(args, 3) ? asInt(args[3]) : 0;
    if (start < 0)
        throwBadArgument("fixnump:", args[3]);
    const std::string_view replacement = asString(args[0]);
    const std::size_t found = text.find(asString(args[1]), static_cast<std::size_t>(start));
    if (found == std::string::npos)
        return args[2];
    text.replace(found, args[1].text().size(), replacement);
    if (text.size() > evaluator.limits().stringLength)
        throwError("string too long");
    return Value::string(text);
}

Value trimmed(Arguments args, bool left, bool right) {
    const std::string_view letters = asString(args[0]);
    const std::string_view text = asString(args[1]);
    const std::size_t first = left ? text.find_first_not_of(letters) : 0;
    const std::size_t last = right ? text.find_last_not_of(letters) : text.size() - 1;
    if (text.empty() || first == text.npos || last == text.npos)
        return Value::string("");
    return Value::string(text.substr(first, last - first + 1));
}

Value trim(Evaluator&, Arguments args) { return trimmed(args, true, true); }

Value trimLeft(Evaluator&, Arguments args) { return trimmed(args, true, false); }

Value trimRight(Evaluator&, Arguments args) { return trimmed(args, false, true); }

Value printed(Evaluator& evaluator, const Value& value, PrintStyle style) {
    return Value::string(toText(value, style, evaluator.limits().stringLength));
}

Value princToString(Evaluator& evaluator, Arguments args) { return printed(evaluator, args[0], PrintStyle::Display); }

Value prin1ToString(Evaluator& evaluator, Arguments args) { return printed(evaluator, args[0], PrintStyle::Readable); }

constexpr int any = Builtin::anyNumber;
constexpr Builtin builtins[] = {
    {"STRCAT", 0, any, strcat},
    {"STRLEN", 0, any, strlen},
    {"SUBSTR", 2, 3, substr},
    {"STRCASE", 1, 2, strcase},
    {"ASCII", 1, 1, ascii},
    {"CHR", 1, 1, chr},
    {"ITOA", 1, 1, itoa},
    {"ATOI", 1, 1, atoi},
    {"ATOF", 1, 1, atof},
    {"VL-STRING-SEARCH", 2, 3, search},
    {"VL-STRING-SUBST", 3, 4, substitute},
    {"VL-STRING-TRIM", 2, 2, trim},
    {"VL-STRING-LEFT-TRIM", 2, 2, trimLeft},
    {"VL-STRING-RIGHT-TRIM", 2, 2, trimRight},
    {"VL-PRINC-TO-STRING", 1, 1, princToString},
    {"VL-PRIN1-TO-STRING", 1, 1, prin1ToString},
};

} // namespace

std::span<const Builtin> stringBuiltins() { return builtins; }

} // namespace vndk::lisp
