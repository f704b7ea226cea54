#include "ed/prompts.h"

#include "db/symbol_table.h"

#include <cctype>

namespace vndk::host {

namespace {

/// The capitals (and digits) with which a keyword begins to be told apart: "LType" needs LT, "eXit" needs X.
std::string capitals(std::string_view keyword) {
    std::string result;
    for (const char c : keyword)
        if (std::isupper(static_cast<unsigned char>(c)) || std::isdigit(static_cast<unsigned char>(c)))
            result += c;
    return result;
}

/// True if `typed` (folded) abbreviates the keyword: at least its capitals, at most the whole word. Letters that are
/// no capitals may only stand in front when they are typed too.
bool abbreviates(const std::string& typed, std::string_view keyword) {
    const std::string whole = acdbFoldName(keyword);
    if (typed == whole)
        return true;
    const std::string required = capitals(keyword);
    if (required.empty() || typed.size() < required.size())
        return false;
    if (typed == required)
        return true;
    const size_t from = whole.find(required);
    if (from == std::string::npos)
        return whole.compare(0, typed.size(), typed) == 0;
    const bool fromCapitals = whole.compare(from, typed.size(), typed) == 0 && typed.size() <= whole.size() - from;
    const bool fromStart = typed.size() >= from + required.size() && whole.compare(0, typed.size(), typed) == 0;
    return fromCapitals || fromStart;
}

} // namespace

std::string matchKeyword(std::string_view typed, std::string_view keywords) {
    if (!typed.empty() && typed[0] == '_')
        typed.remove_prefix(1);
    if (typed.empty())
        return {};
    const std::string folded = acdbFoldName(typed);
    std::string found;
    while (!keywords.empty()) {
        const size_t blank = std::min(keywords.find(' '), keywords.size());
        const std::string_view keyword = keywords.substr(0, blank);
        keywords.remove_prefix(std::min(blank + 1, keywords.size()));
        if (keyword.empty() || !abbreviates(folded, keyword))
            continue;
        if (acdbFoldName(keyword) == folded)
            return std::string(keyword);
        if (!found.empty())
            return {};
        found = keyword;
    }
    return found;
}

} // namespace vndk::host
