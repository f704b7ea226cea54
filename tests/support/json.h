#pragma once
/// A small JSON reader for the facts that stand beside test drawings.
/// Text has its escapes resolved. A damaged file gives a null value.
/// Of members with the same name the first counts.

#include <cctype>
#include <charconv>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vndk::test {

class Json {
public:
    using Array = std::vector<Json>;
    using Object = std::map<std::string, Json, std::less<>>;

    Json() = default;

    bool isNull() const { return std::holds_alternative<std::monostate>(value_); }
    bool isNumber() const { return std::holds_alternative<double>(value_); }
    bool isText() const { return std::holds_alternative<std::string>(value_); }
    bool isArray() const { return std::holds_alternative<Array>(value_); }
    double number() const { return isNumber() ? std::get<double>(value_) : 0; }
    const std::string& text() const { return get<std::string>(); }
    const Array& items() const { return get<Array>(); }
    const Object& members() const { return get<Object>(); }
    size_t size() const { return isArray() ? items().size() : members().size(); }

    /// A null value when there is none.
    const Json& operator[](std::string_view name) const {
        const auto found = members().find(name);
        return found == members().end() ? none() : found->second;
    }
    const Json& operator[](size_t index) const { return index < items().size() ? items()[index] : none(); }
    bool has(std::string_view name) const { return members().find(name) != members().end(); }

    static Json parse(std::string_view text) {
        Json value;
        Parser parser{text};
        if (!parser.value(value, 0))
            return {};
        return value;
    }
    static Json read(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        return parse(text);
    }

private:
    template <class T>
    const T& get() const {
        static const T empty;
        const T* found = std::get_if<T>(&value_);
        return found ? *found : empty;
    }
    static const Json& none() {
        static const Json value;
        return value;
    }

    struct Parser {
        std::string_view rest;

        void blanks() {
            while (!rest.empty() && std::isspace(static_cast<unsigned char>(rest.front())))
                rest.remove_prefix(1);
        }
        bool take(std::string_view word) {
            blanks();
            if (!rest.starts_with(word))
                return false;
            rest.remove_prefix(word.size());
            return true;
        }
        bool value(Json& out, int depth) {
            if (depth > 100)
                return false;
            if (take("{"))
                return object(out.value_.emplace<Object>(), depth);
            if (take("["))
                return array(out.value_.emplace<Array>(), depth);
            if (take("\""))
                return text(out.value_.emplace<std::string>());
            if (take("null"))
                return true;
            if (take("true") || take("false")) {
                out.value_ = rest.data()[-2] == 'u' ? 1.0 : 0.0;
                return true;
            }
            double& number = out.value_.emplace<double>();
            const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), number);
            rest.remove_prefix(static_cast<size_t>(result.ptr - rest.data()));
            return result.ec == std::errc();
        }
        bool object(Object& out, int depth) {
            if (take("}"))
                return true;
            do {
                std::string name;
                Json member;
                if (!take("\"") || !text(name) || !take(":") || !value(member, depth + 1))
                    return false;
                out.try_emplace(std::move(name), std::move(member));
            } while (take(","));
            return take("}");
        }
        bool array(Array& out, int depth) {
            if (take("]"))
                return true;
            do {
                if (!value(out.emplace_back(), depth + 1))
                    return false;
            } while (take(","));
            return take("]");
        }
        bool text(std::string& out) {
            for (; !rest.empty() && rest.front() != '"'; rest.remove_prefix(1)) {
                if (rest.front() != '\\') {
                    out += rest.front();
                    continue;
                }
                rest.remove_prefix(1);
                if (rest.empty() || !escape(out))
                    return false;
            }
            if (rest.empty())
                return false;
            rest.remove_prefix(1);
            return true;
        }
        bool escape(std::string& out) {
            constexpr std::string_view kLetters = "nrtbf";
            constexpr std::string_view kMeanings = "\n\r\t\b\f";
            const char letter = rest.front();
            if (const size_t at = kLetters.find(letter); at != kLetters.npos) {
                out += kMeanings[at];
                return true;
            }
            if (letter != 'u') {
                out += letter;
                return true;
            }
            unsigned code = 0;
            if (rest.size() < 5 || std::from_chars(rest.data() + 1, rest.data() + 5, code, 16).ptr != rest.data() + 5)
                return false;
            rest.remove_prefix(4);
            utf8(out, code);
            return true;
        }
        static void utf8(std::string& out, unsigned code) {
            if (code < 0x80) {
                out += static_cast<char>(code);
                return;
            }
            if (code >= 0x800) {
                out += static_cast<char>(0xE0 | code >> 12);
                out += static_cast<char>(0x80 | (code >> 6 & 0x3F));
            } else {
                out += static_cast<char>(0xC0 | code >> 6);
            }
            out += static_cast<char>(0x80 | (code & 0x3F));
        }
    };

    std::variant<std::monostate, double, std::string, Array, Object> value_;
};

} // namespace vndk::test
