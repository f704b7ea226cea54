#include "dwg/header_section.h"

#include <algorithm>
#include <cctype>

namespace vndk::dwg {

namespace {

constexpr VersionMask All = kEveryVersion;
constexpr VersionMask Old = kOnly1314;
constexpr VersionMask New = kOnly15;

const HeaderRow kRows[] = {
#define VNDK_HEADER_VARIABLE(type, name, code, versions, standard)                                                     \
    {#name, HeaderCode::code, versions, &HeaderVariables::name},
#define VNDK_HEADER_PLACE(name, code, versions) {#name, HeaderCode::code, versions, &HeaderVariables::name},
#include "dwg/header_variables.inc"
#undef VNDK_HEADER_PLACE
#undef VNDK_HEADER_VARIABLE
};

/// A row's code and its member's type go together by the table; anything else is a mistake in the table.
template <class T>
auto memberOf(const HeaderRow& row) {
    return std::get<T HeaderVariables::*>(row.member);
}

bool isStored(const HeaderRow& row, Version version, const HeaderVariables& variables) {
    if (!(row.versions & maskOf(version)))
        return false;
    return row.code != HeaderCode::CPSNID || variables.CEPSNTYPE == 3;
}

void readRow(BitReader& reader, const HeaderRow& row, HeaderVariables& variables) {
    switch (row.code) {
    case HeaderCode::B:
        variables.*memberOf<bool>(row) = reader.B();
        break;
    case HeaderCode::RC:
        variables.*memberOf<int16_t>(row) = reader.RC();
        break;
    case HeaderCode::BS:
        variables.*memberOf<int16_t>(row) = static_cast<int16_t>(reader.BS());
        break;
    case HeaderCode::BL:
        variables.*memberOf<uint32_t>(row) = reader.BL();
        break;
    case HeaderCode::BD:
        variables.*memberOf<double>(row) = reader.BD();
        break;
    case HeaderCode::RD2: {
        Point2& point = variables.*memberOf<Point2>(row);
        point.x = reader.RD();
        point.y = reader.RD();
        break;
    }
    case HeaderCode::P3: {
        Point3& point = variables.*memberOf<Point3>(row);
        point.x = reader.BD();
        point.y = reader.BD();
        point.z = reader.BD();
        break;
    }
    case HeaderCode::TV:
        variables.*memberOf<std::string>(row) = reader.TV();
        break;
    case HeaderCode::T: {
        JulianTime& time = variables.*memberOf<JulianTime>(row);
        time.day = reader.BL();
        time.milliseconds = reader.BL();
        break;
    }
    case HeaderCode::H0:
    case HeaderCode::H3:
    case HeaderCode::H5:
    case HeaderCode::CPSNID:
        variables.*memberOf<uint64_t>(row) = reader.H().value;
        break;
    }
}

void writeRow(BitWriter& writer, const HeaderRow& row, const HeaderVariables& variables) {
    switch (row.code) {
    case HeaderCode::B:
        writer.B(variables.*memberOf<bool>(row));
        break;
    case HeaderCode::RC:
        writer.RC(static_cast<uint8_t>(variables.*memberOf<int16_t>(row)));
        break;
    case HeaderCode::BS:
        writer.BS(static_cast<uint16_t>(variables.*memberOf<int16_t>(row)));
        break;
    case HeaderCode::BL:
        writer.BL(variables.*memberOf<uint32_t>(row));
        break;
    case HeaderCode::BD:
        writer.BD(variables.*memberOf<double>(row));
        break;
    case HeaderCode::RD2: {
        const Point2& point = variables.*memberOf<Point2>(row);
        writer.RD(point.x);
        writer.RD(point.y);
        break;
    }
    case HeaderCode::P3: {
        const Point3& point = variables.*memberOf<Point3>(row);
        writer.BD(point.x);
        writer.BD(point.y);
        writer.BD(point.z);
        break;
    }
    case HeaderCode::TV:
        writer.TV(std::string_view(variables.*memberOf<std::string>(row)).substr(0, 0xFFFF));
        break;
    case HeaderCode::T: {
        const JulianTime& time = variables.*memberOf<JulianTime>(row);
        writer.BL(time.day);
        writer.BL(time.milliseconds);
        break;
    }
    case HeaderCode::H0:
        writer.H(0, variables.*memberOf<uint64_t>(row));
        break;
    case HeaderCode::H3:
        writer.H(3, variables.*memberOf<uint64_t>(row));
        break;
    case HeaderCode::H5:
    case HeaderCode::CPSNID:
        writer.H(5, variables.*memberOf<uint64_t>(row));
        break;
    }
}

bool equalWithoutCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](unsigned char x, unsigned char y) { return std::toupper(x) == std::toupper(y); });
}

} // namespace

std::span<const HeaderRow> headerRows() { return kRows; }

const HeaderRow* findHeaderRow(std::string_view name) {
    const auto found = std::find_if(std::begin(kRows), std::end(kRows),
                                    [&](const HeaderRow& row) { return equalWithoutCase(row.name, name); });
    return found == std::end(kRows) ? nullptr : found;
}

bool readHeaderVariables(BitReader& reader, Version version, HeaderVariables& variables) {
    for (const HeaderRow& row : kRows)
        if (isStored(row, version, variables))
            readRow(reader, row, variables);
    return !reader.failed();
}

void writeHeaderVariables(BitWriter& writer, Version version, const HeaderVariables& variables) {
    for (const HeaderRow& row : kRows)
        if (isStored(row, version, variables))
            writeRow(writer, row, variables);
    writer.alignByte();
}

} // namespace vndk::dwg
