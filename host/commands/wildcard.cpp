#include "commands/wildcard.h"

#include "db/symbol_table.h"

#include <cctype>
#include <string>

namespace vndk::host {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// Letters of code page 1252 beyond ASCII have a capital form of their own or stand in its upper half.
bool isLetter(char c) {
    const auto code = static_cast<unsigned char>(c);
    return std::isalpha(code) || (code >= 0xC0 && code != 0xD7 && code != 0xF7);
}

/// A pattern's first element: what one character it takes, and the rest of the pattern.
struct Element {
    bool fits;
    std::string_view rest;
};

Element bracket(std::string_view pattern, char c) {
    const size_t end = pattern.find(']', 1);
    if (end == std::string_view::npos)
        return {c == '[', pattern.substr(1)};
    std::string_view set = pattern.substr(1, end - 1);
    const bool negated = set.starts_with('~');
    if (negated)
        set.remove_prefix(1);
    bool found = false;
    for (size_t i = 0; i < set.size(); ++i) {
        if (i + 2 < set.size() && set[i + 1] == '-') {
            found = found || (static_cast<unsigned char>(c) >= static_cast<unsigned char>(set[i]) &&
                              static_cast<unsigned char>(c) <= static_cast<unsigned char>(set[i + 2]));
            i += 2;
        } else {
            found = found || set[i] == c;
        }
    }
    return {found != negated, pattern.substr(end + 1)};
}

Element takeElement(std::string_view pattern, char c) {
    switch (pattern[0]) {
    case '#':
        return {isDigit(c), pattern.substr(1)};
    case '@':
        return {isLetter(c), pattern.substr(1)};
    case '.':
        return {!isDigit(c) && !isLetter(c), pattern.substr(1)};
    case '?':
        return {true, pattern.substr(1)};
    case '[':
        return bracket(pattern, c);
    case '`':
        if (pattern.size() > 1)
            return {pattern[1] == c, pattern.substr(2)};
        [[fallthrough]];
    default:
        return {pattern[0] == c, pattern.substr(1)};
    }
}

/// One pattern, both folded. Goes back to the last star only, so that the time stays the product of the lengths.
bool fits(std::string_view name, std::string_view pattern) {
    std::string_view afterStar, nameAtStar;
    bool starred = false;
    for (;;) {
        if (!pattern.empty() && pattern[0] == '*') {
            starred = true;
            pattern.remove_prefix(1);
            afterStar = pattern;
            nameAtStar = name;
            continue;
        }
        if (name.empty() && pattern.empty())
            return true;
        if (!name.empty() && !pattern.empty()) {
            const Element element = takeElement(pattern, name[0]);
            if (element.fits) {
                name.remove_prefix(1);
                pattern = element.rest;
                continue;
            }
        }
        if (!starred || nameAtStar.empty())
            return false;
        nameAtStar.remove_prefix(1);
        name = nameAtStar;
        pattern = afterStar;
    }
}

/// The length of the pattern that `patterns` begins with: up to a comma that is no part of it.
size_t firstPatternLength(std::string_view patterns) {
    bool inBracket = false;
    for (size_t i = 0; i < patterns.size(); ++i) {
        if (patterns[i] == '`')
            ++i;
        else if (patterns[i] == '[')
            inBracket = true;
        else if (patterns[i] == ']')
            inBracket = false;
        else if (patterns[i] == ',' && !inBracket)
            return i;
    }
    return patterns.size();
}

} // namespace

bool matchesWildcard(std::string_view name, std::string_view patterns) {
    const std::string foldedName = acdbFoldName(name), folded = acdbFoldName(patterns);
    std::string_view rest = folded;
    for (;;) {
        const size_t length = firstPatternLength(rest);
        std::string_view pattern = rest.substr(0, length);
        const bool negated = pattern.starts_with('~');
        if (negated)
            pattern.remove_prefix(1);
        if (fits(foldedName, pattern) != negated)
            return true;
        if (length >= rest.size())
            return false;
        rest.remove_prefix(length + 1);
    }
}

bool hasWildcard(std::string_view text) {
    return text.find_first_of("#@*?[`") != std::string_view::npos || text.starts_with('~');
}

} // namespace vndk::host
