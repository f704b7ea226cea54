#include "ed/system_variables.h"

#include "db/database.h"
#include "ed/host.h"
#include "ge/unit_text.h"

#include <cassert>
#include <charconv>
#include <cmath>
#include <optional>
#include <type_traits>
#include <utility>

namespace vndk::host {

namespace {

constexpr const char* kProfileSection = "Variables";

/// The whole text as a number; nothing when it is none or out of the type's range.
template <class Number>
std::optional<Number> parseNumber(std::string_view text) {
    Number result = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(result) : std::nullopt;
}

/// A value from its text, as profiles and the table's standards hold it; an empty standard is zero.
std::optional<VariableValue> parse(VariableType type, std::string_view text) {
    switch (type) {
    case VariableType::Short:
        return parseNumber<short>(text.empty() ? "0" : text);
    case VariableType::Real:
        return parseNumber<double>(text.empty() ? "0" : text);
    case VariableType::Text:
        return std::string(text);
    case VariableType::Point2:
    case VariableType::Point3: {
        double xyz[3] = {0, 0, 0};
        for (double& coordinate : xyz) {
            const size_t comma = std::min(text.find(','), text.size());
            const auto number = parseNumber<double>(comma == 0 ? "0" : text.substr(0, comma));
            if (!number)
                return std::nullopt;
            coordinate = *number;
            text.remove_prefix(std::min(comma + 1, text.size()));
        }
        return AcGePoint3d(xyz[0], xyz[1], xyz[2]);
    }
    }
    return std::nullopt;
}

VariableValue headerValue(const dwg::HeaderVariables& header, const dwg::HeaderMember& member) {
    return std::visit(
        [&](auto field) -> VariableValue {
            using T = std::remove_cvref_t<decltype(header.*field)>;
            const T& value = header.*field;
            if constexpr (std::is_same_v<T, dwg::Point3>)
                return AcGePoint3d(value.x, value.y, value.z);
            else if constexpr (std::is_same_v<T, dwg::Point2>)
                return AcGePoint3d(value.x, value.y, 0);
            else if constexpr (std::is_same_v<T, dwg::JulianTime>)
                return value.day + value.milliseconds / 86400000.0;
            else if constexpr (std::is_same_v<T, std::string> || std::is_same_v<T, double>)
                return value;
            else
                return static_cast<short>(value);
        },
        member);
}

void setHeaderValue(dwg::HeaderVariables& header, const dwg::HeaderMember& member, const VariableValue& given) {
    std::visit(
        [&](auto field) {
            auto& value = header.*field;
            using T = std::remove_cvref_t<decltype(value)>;
            if constexpr (std::is_same_v<T, dwg::Point3>) {
                const auto& p = std::get<AcGePoint3d>(given);
                value = {p.x, p.y, p.z};
            } else if constexpr (std::is_same_v<T, dwg::Point2>) {
                const auto& p = std::get<AcGePoint3d>(given);
                value = {p.x, p.y};
            } else if constexpr (std::is_same_v<T, std::string> || std::is_same_v<T, double>) {
                value = std::get<T>(given);
            } else if constexpr (std::is_same_v<T, bool>) {
                value = std::get<short>(given) != 0;
            } else if constexpr (std::is_same_v<T, int16_t>) {
                value = std::get<short>(given);
            } else {
                assert(false && "a header variable of this kind is set by a function of its own");
            }
        },
        member);
}

bool needsDocument(const VariableRow& row) {
    return row.place == VariablePlace::Header || row.place == VariablePlace::Drawing ||
           (row.place == VariablePlace::Profile && row.get);
}

size_t indexOf(const VariableRow& row) { return static_cast<size_t>(&row - SystemVariables::rows().data()); }

} // namespace

SystemVariables::SystemVariables(Host& host) : host_(host) {
    kept_.reserve(rows().size());
    for (const VariableRow& row : rows())
        kept_.push_back(parse(row.type, row.standard).value_or(VariableValue()));
}

void SystemVariables::loadProfile() {
    ProfileStore* const profile = host_.profile();
    if (!profile)
        return;
    for (const VariableRow& row : rows()) {
        if (row.place != VariablePlace::Profile)
            continue;
        const auto text = profile->read(kProfileSection, row.name);
        auto value = text ? parse(row.type, *text) : std::nullopt;
        if (value && check(row, *value) == VariableError::None)
            kept_[indexOf(row)] = std::move(*value);
    }
}

void SystemVariables::applyTo(AcApDocument& document) const {
    for (const VariableRow& row : rows())
        if (row.place == VariablePlace::Profile && row.set)
            row.set(host_, document, kept_[indexOf(row)]);
}

VariableError SystemVariables::get(std::string_view name, VariableValue& value) const {
    const VariableRow* const row = find(name);
    if (!row)
        return VariableError::Unknown;
    AcApDocument* const document = host_.documents().curDocument();
    if (needsDocument(*row) && !document)
        return VariableError::NoDocument;
    if (row->get)
        value = row->get(host_, document);
    else if (row->place == VariablePlace::Header)
        value = headerValue(document->database()->header(), dwg::findHeaderRow(row->name)->member);
    else
        value = kept_[indexOf(*row)];
    return VariableError::None;
}

/// Brings the value to the row's type and compares it with the range.
VariableError SystemVariables::check(const VariableRow& row, VariableValue& value) const {
    if (row.type == VariableType::Real && std::holds_alternative<short>(value))
        value = static_cast<double>(std::get<short>(value));
    const bool fits = row.type == VariableType::Short  ? std::holds_alternative<short>(value)
                      : row.type == VariableType::Real ? std::holds_alternative<double>(value)
                      : row.type == VariableType::Text ? std::holds_alternative<std::string>(value)
                                                       : std::holds_alternative<AcGePoint3d>(value);
    if (!fits)
        return VariableError::WrongType;
    double number = 0;
    if (const short* whole = std::get_if<short>(&value))
        number = *whole;
    else if (const double* real = std::get_if<double>(&value))
        number = *real;
    else if (const AcGePoint3d* point = std::get_if<AcGePoint3d>(&value))
        return std::isfinite(point->x + point->y + point->z) ? VariableError::None : VariableError::OutOfRange;
    else
        return VariableError::None;
    if (!std::isfinite(number) || (row.low <= row.high && (number < row.low || number > row.high)))
        return VariableError::OutOfRange;
    return VariableError::None;
}

VariableError SystemVariables::store(const VariableRow& row, const VariableValue& value) {
    AcApDocument* const document = host_.documents().curDocument();
    if (row.set && !row.set(host_, *document, value))
        return VariableError::Refused;
    if (row.place == VariablePlace::Profile || row.place == VariablePlace::Session)
        kept_[indexOf(row)] = value;
    else if (!row.set)
        document->database()->changeHeader(row.name, [&](dwg::HeaderVariables& header) {
            setHeaderValue(header, dwg::findHeaderRow(row.name)->member, value);
        });
    if (row.place == VariablePlace::Profile)
        unsaved_.push_back(indexOf(row));
    if (!host_.commandLine().commandActive())
        saveProfile();
    return VariableError::None;
}

void SystemVariables::saveProfile() {
    ProfileStore* const profile = host_.profile();
    for (const size_t index : std::exchange(unsaved_, {})) {
        const VariableRow& row = rows()[index];
        const std::string value = text(kept_[index]);
        // What has come back to what it was needs no profile that can be written.
        if (profile && profile->read(kProfileSection, row.name).value_or(row.standard) != value)
            profile->write(kProfileSection, row.name, value);
    }
}

VariableError SystemVariables::set(std::string_view name, const VariableValue& given) {
    const VariableRow* const row = find(name);
    if (!row)
        return VariableError::Unknown;
    if (row->access == VariableAccess::ReadOnly)
        return VariableError::ReadOnly;
    if (needsDocument(*row) && !host_.documents().curDocument())
        return VariableError::NoDocument;
    VariableValue value = given;
    if (const VariableError error = check(*row, value); error != VariableError::None)
        return error;
    auto& reactors = host_.editor().reactors();
    reactors.tell([row](AcEditorReactor& reactor) { reactor.sysVarWillChange(row->name); });
    const VariableError result = store(*row, value);
    const int success = result == VariableError::None;
    reactors.tell([row, success](AcEditorReactor& reactor) { reactor.sysVarChanged(row->name, success); });
    return result;
}

void SystemVariables::force(std::string_view name, VariableValue value) {
    const VariableRow* const row = find(name);
    assert(row && !row->get && row->place == VariablePlace::Session && "only the session's own values can be forced");
    kept_[indexOf(*row)] = std::move(value);
}

std::string SystemVariables::explain(std::string_view name, VariableError error) {
    const VariableRow* const row = find(name);
    const std::string quoted = std::string(row ? row->name : name);
    switch (error) {
    case VariableError::None:
        return {};
    case VariableError::Unknown:
        return "Unknown variable name: " + quoted + ". Type SETVAR and ? to list the variables.";
    case VariableError::ReadOnly:
        return quoted + " is read only.";
    case VariableError::WrongType: {
        static constexpr const char* kinds[] = {"an integer", "a number", "a text", "a 2D point", "a 3D point"};
        return quoted + " requires " + kinds[static_cast<size_t>(row->type)] + ".";
    }
    case VariableError::OutOfRange:
        if (row->type == VariableType::Short && row->low <= row->high)
            return quoted + " requires an integer between " + std::to_string(static_cast<int>(row->low)) + " and " +
                   std::to_string(static_cast<int>(row->high)) + ".";
        return quoted + (row->low <= row->high && row->low > 0 ? " requires a number greater than zero."
                         : row->low <= row->high               ? " requires a number that isn't negative."
                                                               : " requires a finite number.");
    case VariableError::Refused:
        return "The drawing has nothing of that name to set " + quoted + " to.";
    case VariableError::NoDocument:
        return quoted + " belongs to a drawing, and no drawing is open.";
    }
    return {};
}

std::string SystemVariables::text(const VariableValue& value) {
    const auto real = [](double number) {
        char buffer[32];
        const auto end = std::to_chars(buffer, buffer + sizeof buffer, number);
        return std::string(buffer, end.ptr);
    };
    if (const short* whole = std::get_if<short>(&value))
        return std::to_string(*whole);
    if (const double* number = std::get_if<double>(&value))
        return real(*number);
    if (const std::string* text = std::get_if<std::string>(&value))
        return *text;
    const AcGePoint3d& p = std::get<AcGePoint3d>(value);
    return real(p.x) + "," + real(p.y) + "," + real(p.z);
}

short SystemVariables::getShort(std::string_view name) const {
    VariableValue value;
    const short* const result = get(name, value) == VariableError::None ? std::get_if<short>(&value) : nullptr;
    return result ? *result : short{0};
}

double SystemVariables::getReal(std::string_view name) const {
    VariableValue value;
    const double* const result = get(name, value) == VariableError::None ? std::get_if<double>(&value) : nullptr;
    return result ? *result : 0;
}

std::string SystemVariables::getText(std::string_view name) const {
    VariableValue value;
    const std::string* const result =
        get(name, value) == VariableError::None ? std::get_if<std::string>(&value) : nullptr;
    return result ? *result : std::string();
}

} // namespace vndk::host
