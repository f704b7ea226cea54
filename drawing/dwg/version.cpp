#include "dwg/version.h"

#include <iterator>

namespace vndk::dwg {

namespace {

struct VersionRow {
    std::string_view magic;
    std::string_view name;
};

// In the order of the enumerators.
constexpr VersionRow kVersions[] = {
    {"AC1012", "release 13"},
    {"AC1014", "release 14"},
    {"AC1015", "release 15 (2000 format)"},
};

} // namespace

std::string_view magicOf(Version version) { return kVersions[static_cast<unsigned>(version)].magic; }

std::string_view nameOf(Version version) { return kVersions[static_cast<unsigned>(version)].name; }

std::optional<Version> versionOfMagic(std::string_view magic) {
    for (unsigned i = 0; i < std::size(kVersions); ++i)
        if (kVersions[i].magic == magic)
            return static_cast<Version>(i);
    return std::nullopt;
}

} // namespace vndk::dwg
