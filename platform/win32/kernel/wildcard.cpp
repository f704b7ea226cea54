#include "win32/codepage.h"
#include "win32/files.h"

namespace vndk::win32 {

namespace {

// True when the rest of a mask is nothing but wildcards, so that the dot before it may fit a name's end.
bool onlyWildcards(std::string_view mask) { return mask.find_first_not_of("*?") == std::string_view::npos; }

} // namespace

bool matchesMask(std::string_view name, std::string_view mask) {
    if (mask.size() > 1 && mask.back() == '.') {
        if (name.find('.') != std::string_view::npos)
            return false;
        mask.remove_suffix(1);
    }
    std::size_t n = 0;
    std::size_t m = 0;
    std::size_t starMask = std::string_view::npos; // place after the last '*', to come back to
    std::size_t starName = 0;
    while (n < name.size() || m < mask.size()) {
        if (m < mask.size() && mask[m] == '*') {
            starMask = ++m;
            starName = n;
        } else if (m < mask.size() && n < name.size() && mask[m] == '?' && name[n] != '.') {
            ++m;
            ++n;
        } else if (m < mask.size() && mask[m] == '?' && (n == name.size() || name[n] == '.')) {
            ++m;
        } else if (m < mask.size() && n < name.size() && lower1252(mask[m]) == lower1252(name[n])) {
            ++m;
            ++n;
        } else if (m < mask.size() && mask[m] == '.' && n == name.size() && onlyWildcards(mask.substr(m + 1))) {
            ++m;
        } else if (starMask != std::string_view::npos && starName < name.size()) {
            m = starMask;
            n = ++starName;
        } else {
            return false;
        }
    }
    return true;
}

} // namespace vndk::win32
