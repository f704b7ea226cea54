#include "ge/unit_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace vndk::ge {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double fullTurn = 2 * pi;
constexpr int dropLeadingZero = 4;
constexpr int dropTrailingZeros = 8;
// Above this a length has no fraction that a real could tell, and feet would not fit an integer.
constexpr double largestSplit = 1e15;

std::string formatted(double number, std::chars_format format, int precision) {
    // The longest fixed form of a real has 309 digits before the point.
    char digits[340];
    return std::string(digits, std::to_chars(digits, digits + sizeof digits, number, format, precision).ptr);
}

std::string fixedText(double number, int precision, int zeroes = 0) {
    std::string text = formatted(number, std::chars_format::fixed, precision);
    if (text[0] == '-' && text.find_first_of("123456789") == text.npos)
        text.erase(0, 1);
    if ((zeroes & dropTrailingZeros) && text.find('.') != text.npos) {
        text.erase(text.find_last_not_of('0') + 1);
        if (text.back() == '.')
            text.pop_back();
    }
    if ((zeroes & dropLeadingZero) && text.size() > 1) {
        const std::size_t first = text[0] == '-' ? 1 : 0;
        if (text.compare(first, 2, "0.") == 0)
            text.erase(first, 1);
    }
    return text;
}

std::string scientificText(double number, int precision) {
    std::string text = formatted(number, std::chars_format::scientific, precision);
    std::replace(text.begin(), text.end(), 'e', 'E');
    return text;
}

/// "17 1/2": whole and reduced fraction of a length counted in 1/2^precision.
std::string fractionText(std::int64_t count, int precision, UnitForm form) {
    std::int64_t denominator = std::int64_t{1} << precision;
    const std::int64_t whole = count / denominator;
    std::int64_t rest = count % denominator;
    if (rest == 0)
        return std::to_string(whole);
    for (; rest % 2 == 0; rest /= 2)
        denominator /= 2;
    const std::string fraction = std::to_string(rest) + "/" + std::to_string(denominator);
    return whole == 0 ? fraction : std::to_string(whole) + (form == UnitForm::Read ? " " : "-") + fraction;
}

/// Puts feet and inches together; `zeroes & 3`: 0 hides both zeros, 1 shows both, 2 shows zero feet, 3 zero inches.
std::string feetText(std::int64_t feet, const std::string& inches, bool inchesAreZero, int zeroes, UnitForm form) {
    const int rule = zeroes & 3;
    const bool showFeet = feet != 0 || rule == 1 || rule == 2;
    const bool showInches = !inchesAreZero || rule == 1 || rule == 3 || !showFeet;
    std::string text;
    if (showFeet)
        text = std::to_string(feet) + "'";
    if (showFeet && showInches && form == UnitForm::Read)
        text += "-";
    // A fraction doesn't follow feet alone.
    if (showFeet && inches.find('/') != inches.npos && inches.find_first_of(" -") == inches.npos)
        text += form == UnitForm::Read ? "0 " : "0-";
    if (showInches)
        text += inches + "\"";
    return text;
}

std::string engineeringText(double length, int precision, int zeroes, UnitForm form) {
    const double scale = std::pow(10.0, precision);
    // Rounding before the split keeps 11.99999 from becoming 12 inches.
    const double rounded = std::round(length * scale) / scale;
    const auto feet = static_cast<std::int64_t>(rounded / 12);
    const double inches = rounded - static_cast<double>(feet) * 12;
    return feetText(feet, fixedText(inches, precision, zeroes), inches == 0, zeroes, form);
}

std::string architecturalText(double length, int precision, int zeroes, UnitForm form) {
    const std::int64_t perInch = std::int64_t{1} << precision;
    const auto count = static_cast<std::int64_t>(std::llround(length * static_cast<double>(perInch)));
    const std::int64_t rest = count % (12 * perInch);
    return feetText(count / (12 * perInch), fractionText(rest, precision, form), rest == 0, zeroes, form);
}

/// "45d30'15\"" with as many parts as the precision asks for.
std::string sexagesimalText(double degrees, int precision) {
    const int decimals = std::max(0, precision - 4);
    const double perDegree = precision == 0 ? 1 : precision <= 2 ? 60 : 3600 * std::pow(10.0, decimals);
    const auto count = static_cast<std::int64_t>(std::llround(degrees * perDegree));
    const auto unit = static_cast<std::int64_t>(perDegree);
    std::string text = std::to_string(count / unit) + "d";
    if (precision == 0)
        return text;
    const std::int64_t rest = count % unit;
    const std::int64_t perMinute = unit / 60;
    const std::int64_t perSecond = unit / 3600;
    text += std::to_string(rest / perMinute) + "'";
    if (precision > 2)
        text += fixedText(static_cast<double>(rest % perMinute) / static_cast<double>(perSecond), decimals) + "\"";
    return text;
}

std::string bearingText(double angle, int precision, UnitForm form) {
    const double degrees = angle * 180 / pi;
    const bool north = degrees <= 180;
    const bool east = degrees <= 90 || degrees >= 270;
    const double fromAxis = std::fabs(90 - std::fmod(degrees, 180));
    const std::string text = sexagesimalText(fromAxis, precision);
    if (text.find_first_of("123456789") == text.npos)
        return north ? "N" : "S";
    if (text == sexagesimalText(90, precision))
        return east ? "E" : "W";
    const std::string blank = form == UnitForm::Read ? " " : "";
    return (north ? "N" : "S") + blank + text + blank + (east ? "E" : "W");
}

/// `angle`: 0 to a whole turn.
std::optional<std::string> turnText(double angle, int mode, int precision, UnitForm form) {
    switch (mode) {
    case 0:
        return fixedText(angle * 180 / pi, precision);
    case 1:
        return sexagesimalText(angle * 180 / pi, precision);
    case 2:
        return fixedText(angle * 200 / pi, precision) + "g";
    case 3:
        return fixedText(angle, precision) + "r";
    case 4:
        return bearingText(angle, precision, form);
    default:
        return std::nullopt;
    }
}

/// A small cursor over text for the parsers below.
class Scanner {
public:
    explicit Scanner(std::string_view text) : rest_(text) { skipBlanks(); }

    bool atEnd() const { return rest_.empty(); }
    char peek() const { return rest_.empty() ? '\0' : rest_[0]; }
    bool take(char c) {
        if (peek() != c)
            return false;
        rest_.remove_prefix(1);
        return true;
    }
    bool takeLetter(char capital) { return take(capital) || take(static_cast<char>(capital + 'a' - 'A')); }
    void skipBlanks() {
        while (!rest_.empty() && rest_[0] == ' ')
            rest_.remove_prefix(1);
    }
    /// A number without a sign.
    std::optional<double> number() {
        if (!(peek() == '.' || (peek() >= '0' && peek() <= '9')))
            return std::nullopt;
        double value = 0;
        const auto result = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
        if (result.ec != std::errc())
            return std::nullopt;
        rest_.remove_prefix(static_cast<std::size_t>(result.ptr - rest_.data()));
        return value;
    }

private:
    std::string_view rest_;
};

bool takeDenominator(Scanner& scanner, double& numerator) {
    if (!scanner.take('/'))
        return true;
    const auto denominator = scanner.number();
    if (!denominator || *denominator == 0)
        return false;
    numerator /= *denominator;
    return true;
}

/// "5 1/2", "1/2" or "5.5"; `whole` has been read.
std::optional<double> mixedNumber(Scanner& scanner, double whole) {
    double value = whole;
    const bool wasFraction = scanner.peek() == '/';
    if (!takeDenominator(scanner, value))
        return std::nullopt;
    scanner.skipBlanks();
    if (wasFraction)
        return value;
    const bool goesOn = scanner.take('-');
    if (auto numerator = scanner.number()) {
        if (scanner.peek() != '/' || !takeDenominator(scanner, *numerator))
            return std::nullopt;
        value += *numerator;
    } else if (goesOn) {
        return std::nullopt;
    }
    return value;
}

std::optional<double> takeSexagesimal(Scanner& scanner, double degrees) {
    double total = degrees;
    for (const auto& [mark, divisor] : {std::pair{'\'', 60.0}, std::pair{'"', 3600.0}}) {
        const auto part = scanner.number();
        if (!part)
            break;
        if (!scanner.take(mark))
            return std::nullopt;
        total += *part / divisor;
    }
    return total * pi / 180;
}

std::optional<double> takePlainAngle(Scanner& scanner, int mode) {
    const auto number = scanner.number();
    if (!number)
        return std::nullopt;
    if (scanner.takeLetter('D'))
        return takeSexagesimal(scanner, *number);
    if (scanner.takeLetter('G') || (mode == 2 && scanner.peek() != 'r'))
        return *number * pi / 200;
    if (scanner.takeLetter('R') || mode == 3)
        return *number;
    return *number * pi / 180;
}

/// "N 45d E": the axis first, then the turn towards east or west.
std::optional<double> takeBearing(Scanner& scanner) {
    const bool north = scanner.takeLetter('N');
    if (!north && !scanner.takeLetter('S'))
        return std::nullopt;
    const double axis = north ? pi / 2 : 3 * pi / 2;
    scanner.skipBlanks();
    if (scanner.atEnd())
        return axis;
    const auto turn = takePlainAngle(scanner, 0);
    scanner.skipBlanks();
    const bool east = scanner.takeLetter('E');
    if (!turn || (!east && !scanner.takeLetter('W')))
        return std::nullopt;
    return north == east ? axis - *turn : axis + *turn;
}

} // namespace

std::optional<std::string> lengthText(double length, int mode, int precision, int zeroes, UnitForm form) {
    precision = std::clamp(precision, 0, 8);
    const double size = std::fabs(length);
    if (!(size < largestSplit) && mode >= 3 && mode <= 5)
        mode = 1;
    std::string text;
    switch (mode) {
    case 1:
        return scientificText(length, precision);
    case 2:
        return fixedText(length, precision, zeroes);
    case 3:
        text = engineeringText(size, precision, zeroes, form);
        break;
    case 4:
        text = architecturalText(size, precision, zeroes, form);
        break;
    case 5:
        text = fractionText(std::llround(size * static_cast<double>(1 << precision)), precision, form);
        break;
    default:
        return std::nullopt;
    }
    const bool zero = text.find_first_of("123456789") == text.npos;
    return length < 0 && !zero ? "-" + text : text;
}

std::optional<std::string> angleText(double angle, int mode, int precision, UnitForm form) {
    precision = std::clamp(precision, 0, 8);
    angle = std::fmod(angle, fullTurn);
    if (!(angle >= 0))
        angle = std::isnan(angle) ? 0 : angle + fullTurn;
    const auto text = turnText(angle, mode, precision, form);
    // No number of radians is a whole turn.
    const bool whole = mode != 3 && angle > pi && text == turnText(fullTurn, mode, precision, form);
    return whole ? turnText(0, mode, precision, form) : text;
}

std::optional<double> lengthFromText(std::string_view text) {
    Scanner scanner(text);
    const bool negative = scanner.take('-');
    if (!negative)
        scanner.take('+');
    auto first = scanner.number();
    if (!first)
        return std::nullopt;
    double feet = 0;
    if (scanner.take('\'')) {
        feet = *first * 12;
        scanner.skipBlanks();
        const bool goesOn = scanner.take('-');
        first = scanner.number();
        if (goesOn && !first)
            return std::nullopt;
    }
    const auto inches = first ? mixedNumber(scanner, *first) : std::optional<double>(0.0);
    scanner.take('"');
    scanner.skipBlanks();
    const double length = feet + inches.value_or(0);
    if (!inches || !scanner.atEnd() || !std::isfinite(length))
        return std::nullopt;
    return negative ? -length : length;
}

std::optional<double> angleFromText(std::string_view text, int mode) {
    Scanner scanner(text);
    const bool negative = scanner.take('-');
    std::optional<double> angle;
    if (scanner.takeLetter('E'))
        angle = 0.0;
    else if (scanner.takeLetter('W'))
        angle = pi;
    else if (auto bearing = takeBearing(scanner))
        angle = bearing;
    else
        angle = takePlainAngle(scanner, mode);
    scanner.skipBlanks();
    if (!angle || !scanner.atEnd())
        return std::nullopt;
    return negative ? -*angle : *angle;
}

} // namespace vndk::ge
