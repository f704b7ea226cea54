#include "gi/paragraph_runs.h"

#include "gi/text_codes.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace vndk::gi {

namespace {

constexpr char kHardBlank = '\xA0';

/// What stands up to the semicolon, which is taken, too.
std::string_view takeArgument(std::string_view& rest) {
    const size_t end = rest.find(';');
    const std::string_view argument = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return argument;
}

/// A number at the front of an argument, and whether an x behind it makes it a factor.
struct Amount {
    double value = 0;
    bool isFactor = false;
};

std::optional<Amount> amountOf(std::string_view argument) {
    Amount amount;
    const auto [end, error] = std::from_chars(argument.data(), argument.data() + argument.size(), amount.value);
    if (error != std::errc() || !std::isfinite(amount.value))
        return std::nullopt;
    amount.isFactor = end != argument.data() + argument.size() && (*end == 'x' || *end == 'X');
    return amount;
}

/// A size that is given, or that many times the old one; the old one for an argument that makes no sense.
double sized(std::string_view argument, double old) {
    constexpr double kLargestFactor = 1000;
    const std::optional<Amount> amount = amountOf(argument);
    if (!amount || !(amount->value > 0))
        return old;
    return amount->isFactor ? old * std::min(amount->value, kLargestFactor) : amount->value;
}

class RunReader {
public:
    RunReader(std::string_view contents, const TextFormat& format) : rest_(contents), format_(format) {}

    std::vector<std::vector<TextRun>> read() {
        while (!rest_.empty())
            takeOne();
        finishRun();
        return std::move(paragraphs_);
    }

private:
    void finishRun() {
        if (!text_.empty())
            paragraphs_.back().push_back({std::move(text_), {}, format_, TextRun::kNone});
        text_.clear();
    }
    void finishParagraph() {
        finishRun();
        paragraphs_.emplace_back();
    }

    void takeOne() {
        const char c = rest_.front();
        PlainText codes;
        if (takeUnicode(rest_, text_))
            return;
        if (takePercentCode(rest_, codes)) {
            text_ += codes.text;
            return;
        }
        rest_.remove_prefix(1);
        if (c == '\\' && !rest_.empty())
            takeFormat();
        else if (c == '^' && !rest_.empty() && (rest_[0] == 'J' || rest_[0] == 'I' || rest_[0] == 'M'))
            takeControl();
        else if (c == '{' || c == '}')
            takeBrace(c);
        else
            text_ += c;
    }

    void takeControl() {
        const char c = rest_.front();
        rest_.remove_prefix(1);
        if (c == 'J')
            finishParagraph();
        else if (c == 'I')
            text_ += '\t';
    }

    void takeBrace(char brace) {
        finishRun();
        if (brace == '{') {
            outer_.push_back(format_);
        } else if (!outer_.empty()) {
            format_ = outer_.back();
            outer_.pop_back();
        }
    }

    /// The code behind a backslash.
    void takeFormat() {
        const char code = rest_.front();
        rest_.remove_prefix(1);
        if (code == 'P' || code == 'X')
            return finishParagraph();
        if (code == '~' || code == '\\' || code == '{' || code == '}') {
            text_ += code == '~' ? kHardBlank : code;
            return;
        }
        finishRun();
        switch (code) {
        case 'L':
        case 'l':
            format_.underlined = code == 'L';
            break;
        case 'O':
        case 'o':
            format_.overlined = code == 'O';
            break;
        case 'K':
        case 'k':
            break; // struck through
        case 'S':
            takeStack(takeArgument(rest_));
            break;
        case 'A': // across the line, tracking, tabulators: not shown
        case 'T':
        case 'p':
            takeArgument(rest_);
            break;
        case 'C':
        case 'c':
        case 'F':
        case 'f':
        case 'H':
        case 'Q':
        case 'W':
            setFormat(code, takeArgument(rest_));
            break;
        default:
            text_ += code;
        }
    }

    void setFormat(char code, std::string_view argument) {
        const std::optional<Amount> amount = amountOf(argument);
        if (code == 'H')
            format_.height = sized(argument, format_.height);
        else if (code == 'W')
            format_.widthFactor = sized(argument, format_.widthFactor);
        else if (code == 'Q' && amount && std::fabs(amount->value) < 90)
            format_.oblique = amount->value * 3.14159265358979323846 / 180;
        else if ((code == 'C' || code == 'c') && amount)
            setColor(code == 'c', amount->value);
        else if (code == 'F' || code == 'f')
            setFont(argument);
    }

    /// An index, or a true colour whose lowest byte is red.
    void setColor(bool isTrue, double number) {
        constexpr uint32_t kByLayer = 0xC0, kByBlock = 0xC1, kByColor = 0xC2, kByIndex = 0xC3;
        if (isTrue && number >= 0 && number <= 0xFFFFFF) {
            const auto value = static_cast<uint32_t>(number);
            format_.color = kByColor << 24 | (value & 0xFF) << 16 | (value & 0xFF00) | value >> 16;
        } else if (!isTrue && number >= 0 && number <= 256) {
            const auto index = static_cast<uint32_t>(number);
            format_.color = index == 0 ? kByBlock << 24 : index == 256 ? kByLayer << 24 : kByIndex << 24 | index;
        }
    }

    /// A face with its properties, `Arial|b1|i0|c0|p34`, or a font file.
    void setFont(std::string_view argument) {
        const size_t end = std::min(argument.find_first_of("|,"), argument.size());
        format_.face = argument.substr(0, end);
        format_.bold = argument.find("|b1", end) != std::string_view::npos;
        format_.italic = argument.find("|i1", end) != std::string_view::npos;
    }

    void takeStack(std::string_view argument) {
        const size_t sign = argument.find_first_of("/^#");
        if (sign == std::string_view::npos || argument[sign] == '#') {
            for (const char c : argument)
                text_ += c == '#' ? '/' : c;
            return;
        }
        std::string_view below = argument.substr(sign + 1);
        below.remove_prefix(std::min(below.find_first_not_of(' '), below.size()));
        paragraphs_.back().push_back({std::string(argument.substr(0, sign)), std::string(below), format_,
                                      argument[sign] == '/' ? TextRun::kOverLine : TextRun::kOverNothing});
    }

    std::string_view rest_;
    TextFormat format_;
    std::vector<TextFormat> outer_;
    std::string text_;
    std::vector<std::vector<TextRun>> paragraphs_{1};
};

} // namespace

std::vector<std::vector<TextRun>> paragraphRuns(std::string_view contents, const TextFormat& format) {
    return RunReader(contents, format).read();
}

} // namespace vndk::gi
