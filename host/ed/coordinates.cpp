#include "ed/coordinates.h"

#include "db/database.h"
#include "ge/unit_text.h"

#include <array>
#include <cmath>

namespace vndk::host {

namespace {

AcGePoint3d point(const dwg::Point3& p) { return {p.x, p.y, p.z}; }

/// Up to three numbers separated by commas; 0 when one of them is none or when there are more.
int numbers(std::string_view text, std::array<double, 3>& out) {
    int count = 0;
    while (count < 3) {
        const size_t comma = text.find(',');
        const auto number = ge::lengthFromText(text.substr(0, comma));
        if (!number || !std::isfinite(*number))
            return 0;
        out[static_cast<size_t>(count++)] = *number;
        if (comma == std::string_view::npos)
            return count;
        text.remove_prefix(comma + 1);
    }
    return 0;
}

struct Marks {
    bool relative = false;
    bool world = false;
};

Marks takeMarks(std::string_view& text) {
    Marks marks;
    while (!text.empty() && (text[0] == '@' || text[0] == '*')) {
        bool& mark = text[0] == '@' ? marks.relative : marks.world;
        if (mark)
            break;
        mark = true;
        text.remove_prefix(1);
    }
    return marks;
}

std::optional<AcGeVector3d> polar(std::string_view text, size_t angleMark, const AngleUnits& units) {
    const auto distance = ge::lengthFromText(text.substr(0, angleMark));
    std::string_view angleText = text.substr(angleMark + 1);
    double z = 0;
    if (const size_t comma = angleText.find(','); comma != std::string_view::npos) {
        const auto height = ge::lengthFromText(angleText.substr(comma + 1));
        if (!height)
            return std::nullopt;
        z = *height;
        angleText = angleText.substr(0, comma);
    }
    const auto angle = typedAngle(angleText, units);
    if (!distance || !angle || !std::isfinite(*distance))
        return std::nullopt;
    return AcGeVector3d(*distance * std::cos(*angle), *distance * std::sin(*angle), z);
}

} // namespace

double wholeTurn(double radians) {
    const double turn = 2 * kAcGePi;
    const double rest = std::fmod(radians, turn);
    return rest < 0 ? rest + turn : rest;
}

AcGeMatrix3d ucsToWorld(const AcDbDatabase& database) {
    const dwg::HeaderVariables& h = database.header();
    const bool model = h.TILEMODE;
    const AcGeVector3d x = point(model ? h.UCSXDIR : h.PUCSXDIR).asVector();
    const AcGeVector3d y = point(model ? h.UCSYDIR : h.PUCSYDIR).asVector();
    const AcGeVector3d z = x.crossProduct(y);
    if (z.isZeroLength())
        return AcGeMatrix3d(); // a file may hold no axes at all
    return AcGeMatrix3d::coordSystem(point(model ? h.UCSORG : h.PUCSORG), x.normal(), y.normal(), z.normal());
}

AngleUnits angleUnits(const AcDbDatabase& database) {
    return {database.header().AUNITS, database.header().ANGBASE, database.header().ANGDIR};
}

std::optional<double> typedAngle(std::string_view text, const AngleUnits& units) {
    const auto angle = ge::angleFromText(text, units.mode);
    if (!angle || !std::isfinite(*angle))
        return std::nullopt;
    return units.base + (units.clockwise ? -*angle : *angle);
}

std::optional<AcGePoint3d> typedPoint(std::string_view text, const PointContext& context) {
    const Marks marks = takeMarks(text);
    if (text.empty())
        return marks.relative ? std::optional(context.last) : std::nullopt;
    AcGeVector3d given;
    if (const size_t mark = text.find('<'); mark != std::string_view::npos) {
        const auto vector = polar(text, mark, context.angles);
        if (!vector)
            return std::nullopt;
        given = *vector;
    } else {
        std::array<double, 3> xyz{};
        const int count = numbers(text, xyz);
        if (count < 2)
            return std::nullopt;
        const double z = count == 3 ? xyz[2] : marks.relative || marks.world ? 0 : context.elevation;
        given = {xyz[0], xyz[1], z};
    }
    if (marks.relative)
        return context.last + (marks.world ? context.worldToUcs * given : given);
    const AcGePoint3d position(given.x, given.y, given.z);
    return marks.world ? context.worldToUcs * position : position;
}

} // namespace vndk::host
