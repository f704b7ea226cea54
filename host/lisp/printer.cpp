#include "lisp/printer.h"

#include <charconv>
#include <cmath>
#include <vector>

#include "builtin.h"
#include "heap.h"

namespace vndk::lisp {

namespace {

constexpr std::string_view cut = "...";

void appendOctal(std::string& out, unsigned char byte) {
    out += '\\';
    out += static_cast<char>('0' + (byte >> 6));
    out += static_cast<char>('0' + ((byte >> 3) & 7));
    out += static_cast<char>('0' + (byte & 7));
}

void appendReadable(std::string& out, std::string_view text) {
    out += '"';
    for (char c : text) {
        switch (c) {
        case '"':
        case '\\':
            out += '\\';
            out += c;
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        case '\x1b':
            out += "\\e";
            break;
        default:
            if (static_cast<unsigned char>(c) < 0x20)
                appendOctal(out, static_cast<unsigned char>(c));
            else
                out += c;
        }
    }
    out += '"';
}

std::string hexText(std::uint64_t id) {
    char digits[16];
    return std::string(digits, std::to_chars(digits, digits + sizeof digits, id, 16).ptr);
}

void appendAtom(std::string& out, const Value& value, PrintStyle style) {
    switch (value.type()) {
    case Type::Nil:
        out += "nil";
        break;
    case Type::Symbol:
        out += value.symbol().name();
        break;
    case Type::Int:
        out += std::to_string(value.integer());
        break;
    case Type::Real:
        out += realText(value.real());
        break;
    case Type::String:
        if (style == PrintStyle::Readable)
            appendReadable(out, value.text());
        else
            out += value.text();
        break;
    case Type::Ename:
        out += "<Entity name: " + hexText(value.id()) + ">";
        break;
    case Type::PickSet:
        out += "<Selection set: " + hexText(value.id()) + ">";
        break;
    case Type::Builtin:
        out += "#<SUBR ";
        out += value.builtin().name;
        out += ">";
        break;
    case Type::Lambda:
        out += "#<USUBR " + value.lambda().name + ">";
        break;
    case Type::External:
        out += "#<EXRXSUBR " + value.external().name + ">";
        break;
    case Type::CaughtError:
        out += "#<%catch-all-apply-error%>";
        break;
    case Type::Cons:
        break;
    }
}

/// Prints without recursion: the stack holds what is left of each open list.
void appendValue(std::string& out, const Value& value, PrintStyle style, std::size_t limit) {
    std::vector<const Value*> open;
    const Value* current = &value;
    for (;;) {
        while (current->isCons()) {
            out += '(';
            open.push_back(&current->cdr());
            current = &current->car();
            if (out.size() > limit)
                return;
        }
        appendAtom(out, *current, style);
        for (; !open.empty(); open.pop_back()) {
            const Value*& rest = open.back();
            if (rest->isCons())
                break;
            if (!rest->isNil()) {
                out += " . ";
                appendAtom(out, *rest, style);
            }
            out += ')';
        }
        if (open.empty() || out.size() > limit)
            return;
        out += ' ';
        current = &open.back()->car();
        open.back() = &open.back()->cdr();
    }
}

} // namespace

std::string realText(double number) {
    if (std::isnan(number))
        return "1.#QNAN";
    if (std::isinf(number))
        return number < 0 ? "-1.#INF" : "1.#INF";
    char digits[32];
    const auto result = std::to_chars(digits, digits + sizeof digits, number, std::chars_format::general, 6);
    std::string text(digits, result.ptr);
    if (text.find('.') == text.npos)
        text.insert(std::min(text.find('e'), text.size()), ".0");
    return text;
}

std::string toText(const Value& value, PrintStyle style, std::size_t limit) {
    std::string out;
    appendValue(out, value, style, limit);
    if (out.size() > limit) {
        out.resize(limit);
        out += cut;
    }
    return out;
}

} // namespace vndk::lisp
