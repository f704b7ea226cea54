// The reader is a loop over groups, control words and text. Destinations that aren't shown (font table and colour table
// aside) are skipped as a whole. Depth, number of fonts and of colours are limited, so that hostile input costs no more
// than its own length.
#include "controls/rtf_reader.h"

#include "win32/codepage.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <map>
#include <optional>
#include <utility>

namespace vndk::win32 {
namespace {

constexpr std::size_t deepestGroup = 200;
constexpr std::size_t mostColors = 4096;
constexpr std::size_t mostFonts = 4096;
constexpr std::size_t longestFace = 31;
constexpr std::size_t mostTabs = 32;
constexpr int noFont = INT_MIN;
constexpr int largestLength = 32767; // of indents and heights

enum class Destination : std::uint8_t { text, fontTable, colorTable, skipped };

struct GroupState {
    Destination destination = Destination::text;
    CharStyle style;
    ParagraphStyle paragraph;
    int unicodeSkip = 1; // bytes that stand for a character given by its number
};

struct Word {
    std::string_view name;
    std::optional<int> number;
    [[nodiscard]] int numberOr(int fallback) const { return number.value_or(fallback); }
    [[nodiscard]] bool on() const { return number.value_or(1) != 0; }
};

int clampLength(int value) { return std::clamp(value, -largestLength, largestLength); }

class Reader {
public:
    Reader(std::string_view bytes, RichDocument& document) : bytes_(bytes), document_(document) {
        state_.style.face = "Times New Roman";
        state_.style.height = 240;
    }

    void read();

private:
    [[nodiscard]] bool atEnd() const { return at_ >= bytes_.size(); }
    void openGroup();
    void closeGroup();
    void readControl();
    void readSymbol(char symbol);
    Word readWord();
    void applyWord(const Word& word);
    bool applyDestination(const Word& word);
    bool applyCharacterWord(const Word& word);
    bool applyParagraphWord(const Word& word);
    bool applyTableWord(const Word& word);
    bool applyTextWord(const Word& word);
    void unicode(int code);
    void text(char c);
    void append(char c);
    void endParagraph();
    void fontNameCharacter(char c);
    void skipBinary(int count);
    void flush();

    std::string_view bytes_;
    RichDocument& document_;
    std::size_t at_ = 0;
    GroupState state_;
    std::vector<GroupState> groups_;
    std::map<int, std::string> fonts_;
    int tableFont_ = noFont; // that the font table's text names
    int defaultFont_ = 0;
    std::vector<std::optional<COLORREF>> colors_;
    COLORREF tableColor_ = 0;
    bool tableColorGiven_ = false;
    bool ignorable_ = false; // the destination that follows may be skipped
    int skip_ = 0;           // bytes that a number has already stood for
    RichText piece_;
    CharStyle lastStyle_; // of the last character, and its index
    StyleIndex lastIndex_ = 0;
};

void Reader::read() {
    while (!atEnd()) {
        const char c = bytes_[at_++];
        if (c == '{')
            openGroup();
        else if (c == '}')
            closeGroup();
        else if (c == '\\')
            readControl();
        else if (c != '\r' && c != '\n' && c != '\0')
            text(c);
        // The text ends with the group that began it.
        if (c == '}' && groups_.empty())
            break;
    }
    flush();
}

void Reader::openGroup() {
    ignorable_ = false;
    skip_ = 0;
    if (groups_.size() < deepestGroup) {
        groups_.push_back(state_);
        return;
    }
    // Deeper groups are passed over whole.
    for (std::size_t depth = 1; depth > 0 && !atEnd(); ++at_) {
        if (bytes_[at_] == '\\')
            ++at_;
        else if (bytes_[at_] == '{')
            ++depth;
        else if (bytes_[at_] == '}')
            --depth;
    }
}

void Reader::closeGroup() {
    skip_ = 0;
    if (groups_.empty())
        return;
    const ParagraphStyle paragraph = state_.paragraph;
    const bool wasText = state_.destination == Destination::text;
    state_ = groups_.back();
    groups_.pop_back();
    if (wasText && groups_.empty())
        state_.paragraph = paragraph;
}

Word Reader::readWord() {
    const std::size_t begin = at_;
    while (!atEnd() && ((bytes_[at_] >= 'a' && bytes_[at_] <= 'z') || (bytes_[at_] >= 'A' && bytes_[at_] <= 'Z')))
        ++at_;
    Word word{bytes_.substr(begin, at_ - begin), std::nullopt};
    int number = 0;
    const auto [end, error] = std::from_chars(bytes_.data() + at_, bytes_.data() + bytes_.size(), number);
    if (end != bytes_.data() + at_) {
        at_ = static_cast<std::size_t>(end - bytes_.data());
        word.number = error == std::errc() ? number : 0;
    }
    if (!atEnd() && bytes_[at_] == ' ')
        ++at_;
    return word;
}

void Reader::readControl() {
    if (atEnd())
        return;
    const char c = bytes_[at_];
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    if (letter) {
        applyWord(readWord());
    } else {
        ++at_;
        readSymbol(c);
    }
}

void Reader::readSymbol(char symbol) {
    switch (symbol) {
    case '*':
        ignorable_ = true;
        break;
    case '\'': {
        int code = 0;
        if (at_ + 2 > bytes_.size())
            break;
        const auto [end, error] = std::from_chars(bytes_.data() + at_, bytes_.data() + at_ + 2, code, 16);
        if (error == std::errc() && end == bytes_.data() + at_ + 2) {
            at_ += 2;
            text(static_cast<char>(code));
        }
        break;
    }
    case '~':
        text('\xA0');
        break;
    case '_':
        text('-');
        break;
    case '\r':
    case '\n':
        endParagraph();
        break;
    case '-':
        break; // where a word may be broken: we don't
    default:
        text(symbol);
        break;
    }
}

void Reader::applyWord(const Word& word) {
    const bool ignorable = std::exchange(ignorable_, false);
    if (word.name == "bin") {
        skipBinary(word.numberOr(0));
        return;
    }
    if (state_.destination == Destination::skipped)
        return;
    if (applyDestination(word) || applyTableWord(word) || applyCharacterWord(word) || applyParagraphWord(word) ||
        applyTextWord(word))
        return;
    if (ignorable)
        state_.destination = Destination::skipped;
}

bool Reader::applyDestination(const Word& word) {
    static constexpr std::string_view skippedNames[] = {"stylesheet",
                                                        "info",
                                                        "pict",
                                                        "header",
                                                        "headerl",
                                                        "headerr",
                                                        "headerf",
                                                        "footer",
                                                        "footerl",
                                                        "footerr",
                                                        "footerf",
                                                        "footnote",
                                                        "object",
                                                        "fldinst",
                                                        "xe",
                                                        "tc",
                                                        "txe",
                                                        "rxe",
                                                        "private",
                                                        "generator",
                                                        "listtable",
                                                        "listoverridetable",
                                                        "revtbl",
                                                        "filetbl",
                                                        "pntxta",
                                                        "pntxtb",
                                                        "bkmkstart",
                                                        "bkmkend",
                                                        "nonshppict",
                                                        "themedata",
                                                        "colorschememapping",
                                                        "latentstyles",
                                                        "datastore",
                                                        "annotation",
                                                        "atnid",
                                                        "atnauthor"};
    if (word.name == "fonttbl")
        state_.destination = Destination::fontTable;
    else if (word.name == "colortbl")
        state_.destination = Destination::colorTable;
    else if (std::find(std::begin(skippedNames), std::end(skippedNames), word.name) != std::end(skippedNames))
        state_.destination = Destination::skipped;
    else
        return false;
    return true;
}

bool Reader::applyTableWord(const Word& word) {
    if (state_.destination == Destination::fontTable) {
        if (word.name == "f") {
            tableFont_ = word.numberOr(0);
            if (fonts_.size() < mostFonts)
                fonts_[tableFont_].clear();
        }
        return true;
    }
    if (state_.destination != Destination::colorTable)
        return false;
    const int part = std::clamp(word.numberOr(0), 0, 255);
    if (word.name == "red")
        tableColor_ = RGB(part, GetGValue(tableColor_), GetBValue(tableColor_));
    else if (word.name == "green")
        tableColor_ = RGB(GetRValue(tableColor_), part, GetBValue(tableColor_));
    else if (word.name == "blue")
        tableColor_ = RGB(GetRValue(tableColor_), GetGValue(tableColor_), part);
    tableColorGiven_ = true;
    return true;
}

bool Reader::applyCharacterWord(const Word& word) {
    CharStyle& style = state_.style;
    if (word.name == "b") {
        style.bold = word.on();
    } else if (word.name == "i") {
        style.italic = word.on();
    } else if (word.name == "ul" || word.name == "uld" || word.name == "uldb" || word.name == "ulw") {
        style.underline = word.on();
    } else if (word.name == "ulnone") {
        style.underline = false;
    } else if (word.name == "strike") {
        style.strikeOut = word.on();
    } else if (word.name == "fs") {
        style.height = std::clamp(word.numberOr(24), 2, 3276) * 10;
    } else if (word.name == "f") {
        if (const auto font = fonts_.find(word.numberOr(0)); font != fonts_.end() && !font->second.empty())
            style.face = font->second;
    } else if (word.name == "cf") {
        const auto index = static_cast<std::size_t>(std::max(word.numberOr(0), 0));
        style.autoColor = index >= colors_.size() || !colors_[index];
        style.color = style.autoColor ? 0 : *colors_[index];
    } else if (word.name == "plain") {
        style = CharStyle{};
        style.height = 240;
        const auto font = fonts_.find(defaultFont_);
        style.face = font != fonts_.end() && !font->second.empty() ? font->second : "Times New Roman";
    } else {
        return false;
    }
    return true;
}

bool Reader::applyParagraphWord(const Word& word) {
    ParagraphStyle& paragraph = state_.paragraph;
    if (word.name == "pard") {
        paragraph = ParagraphStyle{};
    } else if (word.name == "ql" || word.name == "qj") {
        paragraph.alignment = Alignment::left;
    } else if (word.name == "qr") {
        paragraph.alignment = Alignment::right;
    } else if (word.name == "qc") {
        paragraph.alignment = Alignment::center;
    } else if (word.name == "li") {
        paragraph.leftIndent = clampLength(word.numberOr(0));
    } else if (word.name == "ri") {
        paragraph.rightIndent = clampLength(word.numberOr(0));
    } else if (word.name == "fi") {
        paragraph.firstIndent = clampLength(word.numberOr(0));
    } else if (word.name == "sb") {
        paragraph.spaceBefore = std::max(clampLength(word.numberOr(0)), 0);
    } else if (word.name == "sa") {
        paragraph.spaceAfter = std::max(clampLength(word.numberOr(0)), 0);
    } else if (word.name == "tx") {
        if (paragraph.tabs.size() < mostTabs)
            paragraph.tabs.push_back(clampLength(word.numberOr(0)));
    } else {
        return false;
    }
    return true;
}

bool Reader::applyTextWord(const Word& word) {
    static const std::map<std::string_view, char> symbols = {
        {"tab", '\t'},      {"lquote", '\x91'}, {"rquote", '\x92'}, {"ldblquote", '\x93'}, {"rdblquote", '\x94'},
        {"bullet", '\x95'}, {"endash", '\x96'}, {"emdash", '\x97'}, {"line", '\v'}};
    if (word.name == "par" || word.name == "sect" || word.name == "page") {
        endParagraph();
    } else if (word.name == "u") {
        unicode(word.numberOr(0));
    } else if (word.name == "uc") {
        state_.unicodeSkip = std::clamp(word.numberOr(1), 0, 255);
    } else if (word.name == "deff") {
        defaultFont_ = word.numberOr(0);
    } else if (const auto symbol = symbols.find(word.name); symbol != symbols.end()) {
        text(symbol->second);
    } else {
        return false;
    }
    return true;
}

void Reader::unicode(int code) {
    const auto point = static_cast<char32_t>(code < 0 ? code + 0x10000 : code);
    std::string utf8;
    if (point < 0x80) {
        utf8.push_back(static_cast<char>(point));
    } else if (point < 0x800) {
        utf8 = {static_cast<char>(0xC0 | (point >> 6)), static_cast<char>(0x80 | (point & 0x3F))};
    } else if (point < 0x10000 && (point < 0xD800 || point > 0xDFFF)) {
        utf8 = {static_cast<char>(0xE0 | (point >> 12)), static_cast<char>(0x80 | ((point >> 6) & 0x3F)),
                static_cast<char>(0x80 | (point & 0x3F))};
    }
    const auto character = utf8.empty() || utf8[0] == '\0' ? std::nullopt : fromUtf8(utf8);
    skip_ = 0;
    // The bytes behind the number are for readers that don't know it; we need them when our code page hasn't it.
    if (!character || character->size() != 1)
        return;
    text((*character)[0]);
    skip_ = state_.unicodeSkip;
}

void Reader::skipBinary(int count) {
    at_ = std::min(bytes_.size(), at_ + static_cast<std::size_t>(std::max(count, 0)));
}

void Reader::fontNameCharacter(char c) {
    const auto font = fonts_.find(tableFont_);
    if (font == fonts_.end())
        return;
    if (c == ';')
        tableFont_ = noFont; // the name is complete
    else if (font->second.size() < longestFace)
        font->second.push_back(c);
}

void Reader::append(char c) {
    if (!(state_.style == lastStyle_) || piece_.text.empty()) {
        lastStyle_ = state_.style;
        lastIndex_ = document_.intern(state_.style);
    }
    piece_.text.push_back(c);
    piece_.styles.push_back(lastIndex_);
}

void Reader::text(char c) {
    ignorable_ = false;
    if (skip_ > 0) {
        --skip_;
        return;
    }
    switch (state_.destination) {
    case Destination::skipped:
        break;
    case Destination::fontTable:
        fontNameCharacter(c);
        break;
    case Destination::colorTable:
        if (c == ';' && colors_.size() < mostColors) {
            colors_.push_back(tableColorGiven_ ? std::optional(tableColor_) : std::nullopt);
            tableColor_ = 0;
            tableColorGiven_ = false;
        }
        break;
    case Destination::text:
        // Given by their numbers, too: a line's end ends the paragraph, and a text holds no zeros.
        if (c == '\r' || c == '\n')
            endParagraph();
        else if (c != '\0')
            append(c);
        break;
    }
}

void Reader::endParagraph() {
    if (state_.destination != Destination::text)
        return;
    append('\r');
    piece_.paragraphs.push_back(state_.paragraph);
}

void Reader::flush() {
    piece_.paragraphs.push_back(state_.paragraph);
    if (!piece_.text.empty() && piece_.text.back() == '\r') {
        piece_.text.pop_back();
        piece_.styles.pop_back();
        piece_.paragraphs.pop_back();
    }
    document_.insert(document_.length(), piece_);
}

} // namespace

bool readRtf(std::string_view bytes, RichDocument& document) {
    if (!bytes.starts_with("{\\rtf"))
        return false;
    Reader(bytes, document).read();
    return true;
}

} // namespace vndk::win32
