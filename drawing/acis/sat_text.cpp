#include "acis/sat_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>

namespace vndk::acis {

namespace {

constexpr int kHeaderOfThreeLines = 200; // the first version that has it
constexpr int kWithHistory = 700;
constexpr std::string_view kEndMarks[] = {"End-of-ACIS-data", "End-of-ASM-data"};

bool isBlank(char c) { return static_cast<unsigned char>(c) <= ' '; }

class Scanner {
public:
    explicit Scanner(std::string_view text) : text_(text) {}

    bool atEnd() const { return place_ >= text_.size(); }
    std::string_view line() {
        const size_t end = std::min(text_.find('\n', place_), text_.size());
        const std::string_view found = text_.substr(place_, end - place_);
        place_ = std::min(end + 1, text_.size());
        return found;
    }
    /// The next word; empty at the end.
    std::string_view word() {
        while (!atEnd() && isBlank(text_[place_]))
            ++place_;
        const size_t begin = place_;
        while (!atEnd() && !isBlank(text_[place_]))
            ++place_;
        const std::string_view found = text_.substr(begin, place_ - begin);
        size_t length = 0;
        // A text with its length in front may hold anything.
        if (found.size() > 1 && found[0] == '@' &&
            std::from_chars(found.data() + 1, found.data() + found.size(), length).ec == std::errc())
            place_ = length < text_.size() - place_ ? place_ + 1 + length : text_.size();
        return found;
    }

private:
    std::string_view text_;
    size_t place_ = 0;
};

bool isEndMark(std::string_view word) {
    return std::find(std::begin(kEndMarks), std::end(kEndMarks), word) != std::end(kEndMarks);
}

/// A record may have its own number in front.
bool isSequenceNumber(std::string_view word) {
    return word.size() > 1 && word[0] == '-' &&
           std::all_of(word.begin() + 1, word.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string numberText(double value) {
    char buffer[32];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, value).ptr;
    return {buffer, end};
}

std::string transformTokens(const AcGeMatrix3d& matrix) {
    const double scale = std::cbrt(std::fabs(matrix.det()));
    std::string text;
    bool turns = false;
    // Vectors are rows there: the columns of our matrix one after another.
    for (int column = 0; column < 3; ++column)
        for (int row = 0; row < 3; ++row) {
            const double value = matrix.entry[row][column] / scale;
            turns = turns || std::fabs(value - (row == column ? 1 : 0)) > 1e-15;
            text += numberText(value) + ' ';
        }
    for (int row = 0; row < 3; ++row)
        text += numberText(matrix.entry[row][3]) + ' ';
    text += numberText(scale);
    text += turns ? " rotate" : " no_rotate";
    text += matrix.det() < 0 ? " reflect" : " no_reflect";
    return text + " no_shear ";
}

/// Replaces views into a text from its end on, so that those in front stay where they are.
struct Replacement {
    std::string_view what;
    std::string by;
};

std::string replaced(std::string_view text, std::vector<Replacement> changes) {
    std::sort(changes.begin(), changes.end(),
              [](const Replacement& a, const Replacement& b) { return a.what.data() > b.what.data(); });
    std::string result(text);
    for (const Replacement& change : changes)
        result.replace(static_cast<size_t>(change.what.data() - text.data()), change.what.size(), change.by);
    return result;
}

/// From the first to the last of the tokens from a place on.
std::string_view tail(const SatRecord& record, size_t first) {
    const std::string_view begin = record.tokens[first], end = record.tokens.back();
    return {begin.data(), static_cast<size_t>(end.data() + end.size() - begin.data())};
}

/// The pointer to a body's transform is its last one.
std::optional<size_t> transformToken(const SatRecord& body, size_t first) {
    for (size_t i = body.tokens.size(); i > first; --i)
        if (body.isPointer(i - 1))
            return i - 1;
    return std::nullopt;
}

} // namespace

std::optional<size_t> SatRecord::pointer(size_t token) const {
    size_t number = 0;
    if (!isPointer(token))
        return std::nullopt;
    const std::string_view digits = tokens[token].substr(1);
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return result.ec == std::errc() && result.ptr == digits.data() + digits.size() ? std::optional(number)
                                                                                   : std::nullopt;
}

std::optional<double> SatRecord::number(size_t token) const {
    double value = 0;
    if (token >= tokens.size())
        return std::nullopt;
    const std::string_view digits = tokens[token];
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return result.ec == std::errc() && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<SatText> SatText::parse(std::string_view text) {
    SatText sat;
    Scanner scanner(text);
    Scanner header(scanner.line());
    const std::string_view version = header.word();
    if (std::from_chars(version.data(), version.data() + version.size(), sat.version).ec != std::errc() ||
        sat.version <= 0)
        return std::nullopt;
    sat.countToken = header.word();
    if (sat.version >= kHeaderOfThreeLines) {
        scanner.line();
        scanner.line();
    }
    while (true) {
        std::string_view word = scanner.word();
        if (isSequenceNumber(word))
            word = scanner.word();
        if (word.empty() || isEndMark(word))
            break;
        SatRecord& record = sat.records.emplace_back();
        record.name = word;
        for (word = scanner.word(); word != "#"; word = scanner.word()) {
            if (word.empty())
                return std::nullopt;
            record.tokens.push_back(word);
        }
    }
    return sat.records.empty() ? std::nullopt : std::optional(std::move(sat));
}

size_t SatText::firstToken() const { return version >= kWithHistory ? 3 : 1; }

const SatRecord* SatText::find(const SatRecord& from, std::string_view name) const {
    for (size_t i = firstToken(); i < from.tokens.size(); ++i)
        if (const SatRecord* const record = at(from.pointer(i)))
            if (record->name == name || (name.starts_with('-') && record->name.ends_with(name)))
                return record;
    return nullptr;
}

AcGeMatrix3d SatText::transformOf(const SatRecord& body) const {
    const SatRecord* const record = find(body, "transform");
    AcGeMatrix3d matrix;
    if (!record)
        return matrix;
    double values[13];
    for (size_t i = 0; i < std::size(values); ++i) {
        const std::optional<double> value = record->number(firstToken() + i);
        if (!value)
            return matrix;
        values[i] = *value;
    }
    for (int i = 0; i < 3; ++i) {
        for (int row = 0; row < 3; ++row)
            matrix.entry[row][i] = values[3 * i + row] * values[12];
        matrix.entry[i][3] = values[9 + i];
    }
    return matrix;
}

std::optional<std::string> transformed(std::string_view text, const AcGeMatrix3d& matrix) {
    const std::optional<SatText> sat = SatText::parse(text);
    if (!sat || matrix.isSingular())
        return std::nullopt;
    std::vector<Replacement> changes;
    std::set<const SatRecord*> moved;
    std::string added;
    size_t count = sat->records.size();
    for (const SatRecord& body : sat->records) {
        if (body.name != "body")
            continue;
        const std::string tokens = transformTokens(matrix * sat->transformOf(body));
        const std::optional<size_t> link = transformToken(body, sat->firstToken());
        if (!link)
            return std::nullopt;
        if (const SatRecord* const former = sat->at(body.pointer(*link))) {
            if (former->name != "transform" || former->tokens.size() <= sat->firstToken())
                return std::nullopt;
            // Bodies may share it: they move together.
            if (moved.insert(former).second)
                changes.push_back({tail(*former, sat->firstToken()), tokens.substr(0, tokens.size() - 1)});
            continue;
        }
        changes.push_back({body.tokens[*link], "$" + std::to_string(count++)});
        added += sat->firstToken() == 1 ? "transform $-1 " : "transform $-1 -1 $-1 ";
        added += tokens + "#\n";
    }
    if (changes.empty())
        return std::nullopt;
    if (count != sat->records.size() && sat->countToken == std::to_string(sat->records.size()))
        changes.push_back({sat->countToken, std::to_string(count)});
    // New records stand behind the last one, in front of a mark of the end.
    const SatRecord& last = sat->records.back();
    const std::string_view lastWord = last.tokens.empty() ? last.name : last.tokens.back();
    const size_t end =
        std::min(text.find('#', static_cast<size_t>(lastWord.data() + lastWord.size() - text.data())), text.size() - 1);
    if (!added.empty()) {
        const size_t behind = text.substr(end + 1, 1) == "\n" ? end + 2 : end + 1;
        changes.push_back({text.substr(behind, 0), behind == end + 1 ? "\n" + added : added});
    }
    return replaced(text, std::move(changes));
}

std::string scrambled(std::string_view text) {
    constexpr int kMirror = 159;
    std::string result(text);
    for (char& c : result)
        if (const auto code = static_cast<unsigned char>(c); code > ' ')
            c = static_cast<char>(kMirror - code);
    return result;
}

} // namespace vndk::acis
