#include "db/dimension_text.h"

#include "ge/unit_text.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace vndk::db {

namespace {

constexpr char kDegree = '\xB0', kPlusMinus = '\xB1';
/// Characters of the usual fonts are about this much of the height wide, their spaces included.
constexpr double kMeanCharacterWidth = 0.84;

enum LinearUnit : short { kScientific = 1, kDecimal = 2, kSystemDecimal = 6 };

std::string lengthText(double length, int unit, int decimals, int zeroes, short separator) {
    const bool decimal = unit == kSystemDecimal || unit < kScientific || unit > kSystemDecimal;
    std::string text = ge::lengthText(length, decimal ? int{kDecimal} : unit, decimals, zeroes).value_or("");
    if (decimal || unit == kDecimal)
        std::replace(text.begin(), text.end(), '.',
                     static_cast<char>(separator > 0 && separator < 256 ? separator : '.'));
    return text;
}

/// DIMAZIN: 1 drops leading zeros, 2 trailing ones.
std::string withoutZeroes(std::string number, int zeroes) {
    if ((zeroes & 2) && number.find('.') != std::string::npos) {
        number.erase(number.find_last_not_of('0') + 1);
        if (number.back() == '.')
            number.pop_back();
    }
    if ((zeroes & 1) && number.starts_with("0."))
        number.erase(0, 1);
    return number;
}

std::string angleText(double angle, int decimals, const DimVariables& v) {
    const int mode = v.dimaunit >= 0 && v.dimaunit <= 4 ? v.dimaunit : 0;
    std::string text = ge::angleText(angle, mode, decimals).value_or("");
    if (mode == 0)
        return withoutZeroes(text, v.dimazin) + kDegree;
    if (mode == 1)
        std::replace(text.begin(), text.end(), 'd', kDegree);
    return text;
}

double rounded(double value, double step) { return step > 0 ? std::round(value / step) * step : value; }

/// One value of the measurement's kind: its own, or that of a tolerance or a limit.
std::string valueText(double value, bool angle, int decimals, int zeroes, const DimVariables& v) {
    return angle ? angleText(value, decimals, v) : lengthText(value, v.dimlunit, decimals, zeroes, v.dimdsep);
}

int decimalsOf(bool angle, const DimVariables& v) { return angle && v.dimadec >= 0 ? v.dimadec : v.dimdec; }

/// Two values above each other.
std::string stacked(const std::string& above, const std::string& below, double height) {
    char factor[32];
    std::snprintf(factor, sizeof factor, "%g", height);
    return std::string("{\\H") + factor + "x;\\S" + above + "^ " + below + ";}";
}

std::string withTolerance(double value, bool angle, const DimVariables& v) {
    const int decimals = decimalsOf(angle, v);
    const auto tolerance = [&](double size) { return valueText(size, angle, v.dimtdec, v.dimtzin, v); };
    if (v.dimlim)
        return stacked(valueText(value + v.dimtp, angle, decimals, v.dimzin, v),
                       valueText(value - v.dimtm, angle, decimals, v.dimzin, v), v.dimtfac);
    std::string text = valueText(value, angle, decimals, v.dimzin, v);
    if (!v.dimtol)
        return text;
    if (v.dimtp == v.dimtm)
        return text + kPlusMinus + tolerance(v.dimtp);
    return text + stacked("+" + tolerance(v.dimtp), "-" + tolerance(v.dimtm), v.dimtfac);
}

/// Puts a value where `pattern` has a mark, or in front of it.
std::string placed(const std::string& value, const std::string& pattern, const char* mark) {
    const size_t at = pattern.find(mark);
    if (at == std::string::npos)
        return value + pattern;
    return pattern.substr(0, at) + value + pattern.substr(at + 2);
}

std::string alternateText(double value, const DimVariables& v) {
    const std::string text =
        lengthText(rounded(value * v.dimaltf, v.dimaltrnd), v.dimaltu, v.dimaltd, v.dimaltz, v.dimdsep);
    return placed(text, v.dimapost, "[]");
}

} // namespace

std::string measurementText(const Measurement& measurement, const DimVariables& v) {
    if (measurement.angle)
        return withTolerance(measurement.value, true, v);
    const double value = rounded(measurement.value * std::fabs(v.dimlfac), v.dimrnd);
    std::string text = withTolerance(value, false, v);
    const size_t mark = v.dimpost.find("<>");
    const bool hasPrefix = mark != std::string::npos && mark > 0;
    text = placed(hasPrefix ? text : measurement.prefix + text, v.dimpost, "<>");
    return v.dimalt ? text + " [" + alternateText(value, v) + "]" : text;
}

std::string dimensionText(const std::string& userText, const Measurement& measurement, const DimVariables& v) {
    if (userText.empty())
        return measurementText(measurement, v);
    if (userText == " ")
        return {};
    std::string text = userText;
    if (const size_t at = text.find("<>"); at != std::string::npos)
        text.replace(at, 2, measurementText(measurement, v));
    if (const size_t at = text.find("[]"); at != std::string::npos && !measurement.angle)
        text.replace(at, 2, "[" + alternateText(measurement.value * std::fabs(v.dimlfac), v) + "]");
    return text;
}

namespace {

/// Calls `f` with the number of characters of each line.
template <class F>
void eachLine(const std::string& paragraph, F&& f) {
    size_t count = 0;
    for (size_t i = 0; i < paragraph.size(); ++i) {
        const char c = paragraph[i];
        if (c == '{' || c == '}')
            continue;
        if (c != '\\') {
            ++count;
            continue;
        }
        const char code = ++i < paragraph.size() ? paragraph[i] : '\0';
        if (code == 'P') {
            f(count);
            count = 0;
        } else if (code == '\\' || code == '{' || code == '}' || code == '~') {
            ++count;
        } else if (code == 'S') {
            // A fraction's longer half tells its width.
            const size_t end = std::min(paragraph.find(';', i), paragraph.size());
            const size_t bar = std::min(paragraph.find_first_of("^/#", i), end);
            count += std::max(bar - i, end - bar) - 1;
            i = end;
        } else if (std::string_view("HCFfTQWAp").find(code) != std::string_view::npos) {
            i = std::min(paragraph.find(';', i), paragraph.size());
        }
    }
    f(count);
}

} // namespace

double estimatedWidth(const std::string& paragraph) {
    size_t longest = 0;
    eachLine(paragraph, [&](size_t count) { longest = std::max(longest, count); });
    return kMeanCharacterWidth * static_cast<double>(longest);
}

int lineCount(const std::string& paragraph) {
    int lines = 0;
    eachLine(paragraph, [&](size_t) { ++lines; });
    return lines;
}

} // namespace vndk::db
