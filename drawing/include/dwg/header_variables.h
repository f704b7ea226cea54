#pragma once
/// The variables of a drawing's header section, as plain members, and one table that says how each is stored.
/// Reader, writer and look-up by name all walk the table; another version's variables are rows of it.
///
/// Angles are radians, handles are 0 for none, texts stand in the drawing's code page. Members that a version doesn't
/// store keep their defaults, which are those of a new drawing in inches.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "dwg/version.h"

namespace vndk::dwg {

struct Point2 {
    double x = 0, y = 0;
    bool operator==(const Point2&) const = default;
};

struct Point3 {
    double x = 0, y = 0, z = 0;
    bool operator==(const Point3&) const = default;
};

/// A date (Julian day) or a span (days), and milliseconds of the day.
struct JulianTime {
    uint32_t day = 0, milliseconds = 0;
    bool operator==(const JulianTime&) const = default;
};

struct HeaderVariables {
#define VNDK_BRACES(...)                                                                                               \
    { __VA_ARGS__ }
#define VNDK_HEADER_VARIABLE(type, name, code, versions, standard) type name = standard;
#define VNDK_HEADER_PLACE(name, code, versions)
#include "dwg/header_variables.inc"
#undef VNDK_HEADER_PLACE
#undef VNDK_HEADER_VARIABLE
#undef VNDK_BRACES

    bool operator==(const HeaderVariables&) const = default;
};

/// How a variable stands in the file; named as the format's codes. H0, H3 and H5 are handles with that code,
/// CPSNID is an H5 that is there only while CEPSNTYPE is 3.
enum class HeaderCode : uint8_t { B, RC, BS, BL, BD, RD2, P3, TV, T, H0, H3, H5, CPSNID };

using HeaderMember =
    std::variant<bool HeaderVariables::*, int16_t HeaderVariables::*, uint32_t HeaderVariables::*,
                 double HeaderVariables::*, Point2 HeaderVariables::*, Point3 HeaderVariables::*,
                 std::string HeaderVariables::*, JulianTime HeaderVariables::*, uint64_t HeaderVariables::*>;

struct HeaderRow {
    std::string_view name;
    HeaderCode code;
    VersionMask versions;
    HeaderMember member;
};

/// All rows in the order of the file. A variable that versions store in different places has a row for each.
std::span<const HeaderRow> headerRows();

/// The row of the variable with that name, without regard to case; null when there is none.
const HeaderRow* findHeaderRow(std::string_view name);

} // namespace vndk::dwg
