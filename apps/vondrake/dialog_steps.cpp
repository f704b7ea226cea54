#include "dialog_steps.h"

#include "win32/codepage.h"
#include "win32/input.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <span>

namespace vndk::app {

namespace {

using Kind = DialogStep::Kind;

constexpr int kFarthest = 16384; // pixels, as large as a screen can be
constexpr int kMostNotches = 1000;
constexpr int kLargestScale = 4;

bool isBlank(char c) { return c == ' ' || c == '\t'; }

bool same(std::string_view a, std::string_view b) { return win32::compareNoCase(a, b) == 0; }

/// A word, or a text in quotes.
struct Token {
    std::string text{};
    bool quoted = false;

    bool is(std::string_view word) const { return !quoted && same(text, word); }
};

std::optional<int> numberOf(std::string_view text, int least, int most) {
    if (text.starts_with('+'))
        text.remove_prefix(1);
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end || number < least || number > most)
        return std::nullopt;
    return number;
}

std::optional<POINT> pointOf(const Token& token) {
    const size_t comma = token.text.find(',');
    if (token.quoted || comma == std::string::npos)
        return std::nullopt;
    const auto x = numberOf(std::string_view(token.text).substr(0, comma), -kFarthest, kFarthest);
    const auto y = numberOf(std::string_view(token.text).substr(comma + 1), -kFarthest, kFarthest);
    if (!x || !y)
        return std::nullopt;
    return POINT{*x, *y};
}

/// The line's words and texts up to a comment. Nothing when a text isn't closed.
std::optional<std::vector<Token>> split(std::string_view line) {
    std::vector<Token> tokens;
    size_t i = 0;
    for (;;) {
        while (i < line.size() && isBlank(line[i]))
            ++i;
        if (i == line.size() || line[i] == ';')
            return tokens;
        Token token{.quoted = line[i] == '"'};
        if (!token.quoted) {
            while (i < line.size() && !isBlank(line[i]))
                token.text += line[i++];
            tokens.push_back(std::move(token));
            continue;
        }
        for (++i;;) {
            if (i == line.size())
                return std::nullopt;
            if (line[i] != '"') {
                token.text += line[i++];
            } else if (i + 1 < line.size() && line[i + 1] == '"') {
                token.text += '"';
                i += 2;
            } else {
                ++i;
                break;
            }
        }
        tokens.push_back(std::move(token));
    }
}

struct KeyName {
    std::string_view name;
    int key;
};

constexpr KeyName kKeyNames[] = {
    {"Enter", VK_RETURN},  {"Return", VK_RETURN},  {"Tab", VK_TAB},        {"Escape", VK_ESCAPE}, {"Esc", VK_ESCAPE},
    {"Space", VK_SPACE},   {"Backspace", VK_BACK}, {"Delete", VK_DELETE},  {"Del", VK_DELETE},    {"Insert", VK_INSERT},
    {"Ins", VK_INSERT},    {"Home", VK_HOME},      {"End", VK_END},        {"PageUp", VK_PRIOR},  {"PgUp", VK_PRIOR},
    {"PageDown", VK_NEXT}, {"PgDn", VK_NEXT},      {"Up", VK_UP},          {"Down", VK_DOWN},     {"Left", VK_LEFT},
    {"Right", VK_RIGHT},   {"Plus", VK_ADD},       {"Minus", VK_SUBTRACT}, {"Menu", VK_APPS},
};

int keyOfName(std::string_view name) {
    for (const KeyName& row : kKeyNames)
        if (same(row.name, name))
            return row.key;
    if (name.size() > 1 && (name[0] == 'F' || name[0] == 'f'))
        if (const auto number = numberOf(name.substr(1), 1, 12))
            return VK_F1 + *number - 1;
    return 0;
}

bool holdKey(win32::UserKeys& keys, std::string_view name) {
    bool* const key = same(name, "Ctrl")    ? &keys.control
                      : same(name, "Shift") ? &keys.shift
                      : same(name, "Alt")   ? &keys.alt
                                            : nullptr;
    const bool fresh = key && !*key;
    if (fresh)
        *key = true;
    return fresh;
}

/// "Ctrl+Shift": what is held while something else is done.
std::optional<win32::UserKeys> heldKeysOf(std::string_view text) {
    win32::UserKeys keys;
    for (;;) {
        const size_t plus = text.find('+');
        if (!holdKey(keys, text.substr(0, plus)))
            return std::nullopt;
        if (plus == std::string_view::npos)
            return keys;
        text.remove_prefix(plus + 1);
    }
}

std::optional<KeyPress> keyPressOf(std::string_view text) {
    KeyPress press;
    // A plus sign that stands last is itself the key.
    if (const size_t last = text.substr(0, text.size() - 1).find_last_of('+'); last != std::string_view::npos) {
        const auto held = heldKeysOf(text.substr(0, last));
        if (!held)
            return std::nullopt;
        press.with = *held;
        text.remove_prefix(last + 1);
    }
    press.key = keyOfName(text);
    if (press.key != 0)
        return press;
    const char c = text.size() == 1 ? text[0] : '\0';
    const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    const bool digit = c >= '0' && c <= '9';
    const bool types = !press.with.control && !press.with.alt;
    if (letter)
        press.key = c & ~0x20;
    else if (digit)
        press.key = static_cast<unsigned char>(c);
    if (types && static_cast<unsigned char>(c) > ' ' && !(press.with.shift && !letter)) {
        press.typed = press.with.shift ? static_cast<char>(press.key) : c;
        press.with = {};
    }
    return press.key != 0 || press.typed != 0 ? std::optional(press) : std::nullopt;
}

/// What follows the keyword, taken from the front. A `false` of a take leaves the sentence in `trouble`.
struct Arguments {
    std::span<const Token> rest;
    std::string_view line; ///< behind the keyword and one blank
    std::string trouble;

    bool fail(std::string sentence) {
        trouble = std::move(sentence);
        return false;
    }
    const Token* take() {
        if (rest.empty())
            return nullptr;
        const Token& token = rest.front();
        rest = rest.subspan(1);
        return &token;
    }
    bool takeWord(std::string_view word) { return !rest.empty() && rest.front().is(word) && take(); }
    bool takeControl(DialogStep& step) {
        const Token* const token = take();
        if (!token || token->text.empty())
            return fail(" needs a control: its caption in quotes, or its id.");
        const auto id = token->quoted ? std::nullopt : numberOf(token->text, -0x8000, 0xFFFF);
        step.control = id ? ControlName(*id) : ControlName(token->text);
        return true;
    }
    bool takePoint(std::optional<POINT>& point) {
        point = rest.empty() ? std::nullopt : pointOf(rest.front());
        return point && take();
    }
    bool takeItem(DialogStep& step) {
        ItemName item;
        while (!rest.empty() && rest.front().quoted)
            item.texts.push_back(take()->text);
        if (item.texts.empty()) {
            const auto row = rest.empty() ? std::nullopt : numberOf(rest.front().text, 0, INT_MAX);
            if (!row)
                return fail(" needs an item: its row, counted from 1, or its text in quotes.");
            item.row = *row;
            take();
        }
        if (!rest.empty() && !rest.front().is("WITH")) {
            const auto column = numberOf(rest.front().text, 1, kFarthest);
            if (!column)
                return fail(": \"" + rest.front().text + "\" is no column; they count from 1.");
            item.column = *column;
            take();
        }
        step.item = std::move(item);
        return true;
    }
    bool takeHeldKeys(DialogStep& step) {
        if (!takeWord("WITH"))
            return true;
        const Token* const token = take();
        const auto keys = token ? heldKeysOf(token->text) : std::nullopt;
        if (!keys)
            return fail(": behind WITH stand Ctrl, Shift or Alt, joined by a plus sign.");
        step.click.keys = *keys;
        return true;
    }
};

bool parseClick(DialogStep& step, Arguments& arguments) {
    if (!arguments.takeControl(step))
        return false;
    if (arguments.takeWord("ITEM")) {
        if (!arguments.takeItem(step))
            return false;
    } else {
        arguments.takePoint(step.point);
    }
    return arguments.takeHeldKeys(step);
}

bool parseItem(DialogStep& step, Arguments& arguments) {
    return arguments.takeControl(step) && arguments.takeItem(step) && arguments.takeHeldKeys(step);
}

bool parseDrag(DialogStep& step, Arguments& arguments) {
    std::optional<POINT> to;
    if (!arguments.takeControl(step))
        return false;
    if (!arguments.takePoint(step.point) || !arguments.takePoint(to))
        return arguments.fail(" needs two points, as x,y in pixels of the control.");
    step.to = *to;
    return arguments.takeHeldKeys(step);
}

bool parseWheel(DialogStep& step, Arguments& arguments) {
    if (!arguments.takeControl(step))
        return false;
    const Token* const token = arguments.take();
    const auto count = token ? numberOf(token->text, -kMostNotches, kMostNotches) : std::nullopt;
    if (!count)
        return arguments.fail(" needs a number of notches, positive away from the user.");
    step.count = *count;
    return true;
}

bool parseType(DialogStep& step, Arguments& arguments) {
    arguments.rest = {};
    step.text = arguments.line;
    return !step.text.empty() || arguments.fail(" needs a text, which goes on to the line's end.");
}

bool parsePress(DialogStep& step, Arguments& arguments) {
    while (const Token* const token = arguments.take()) {
        const auto press = token->text.empty() ? std::nullopt : keyPressOf(token->text);
        if (!press)
            return arguments.fail(": \"" + token->text + "\" is no key. Examples are Enter, Ctrl+A, Shift+Tab, F4, y.");
        step.keys.push_back(*press);
    }
    return !step.keys.empty() || arguments.fail(" needs a key, such as Enter or Ctrl+A.");
}

bool parsePick(DialogStep& step, Arguments& arguments) {
    while (const Token* const token = arguments.take())
        step.texts.push_back(token->text);
    return !step.texts.empty() || arguments.fail(" needs the texts of menu items in quotes, from menu to item.");
}

bool parseShow(DialogStep&, Arguments&) { return true; }

bool parsePicture(DialogStep& step, Arguments& arguments) {
    const Token* const name = arguments.take();
    if (!name || name->text.empty())
        return arguments.fail(" needs a file's name.");
    step.text = name->text;
    step.count = 1;
    if (const Token* const token = arguments.take()) {
        const auto scale = numberOf(token->text, 1, kLargestScale);
        if (!scale)
            return arguments.fail(": the scale is a number from 1 to 4.");
        step.count = *scale;
    }
    return true;
}

struct KeywordRow {
    std::string_view keyword;
    Kind kind;
    win32::UserClick click;
    bool (*parse)(DialogStep& step, Arguments& arguments);
};

constexpr KeywordRow kRows[] = {
    {"CLICK", Kind::Click, {}, parseClick},
    {"DOUBLECLICK", Kind::Click, {.twice = true}, parseClick},
    {"RIGHTCLICK", Kind::Click, {.right = true}, parseClick},
    {"ITEM", Kind::Click, {}, parseItem},
    {"DRAG", Kind::Drag, {}, parseDrag},
    {"WHEEL", Kind::Wheel, {}, parseWheel},
    {"TYPE", Kind::Type, {}, parseType},
    {"PRESS", Kind::Press, {}, parsePress},
    {"PICK", Kind::Pick, {}, parsePick},
    {"SHOW", Kind::Show, {}, parseShow},
    {"PICTURE", Kind::Picture, {}, parsePicture},
};

const KeywordRow* findRow(std::string_view keyword) {
    for (const KeywordRow& row : kRows)
        if (same(row.keyword, keyword))
            return &row;
    return nullptr;
}

} // namespace

bool holdsNoStep(std::string_view line) {
    const size_t first = line.find_first_not_of(" \t");
    return first == std::string_view::npos || line[first] == ';';
}

std::variant<DialogStep, std::string> parseDialogStep(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    const size_t end = std::min(line.find_first_of(" \t;"), line.size());
    const KeywordRow* const row = findRow(line.substr(0, end));
    if (!row)
        return "\"" + std::string(line.substr(0, end)) + "\" is no step for a dialog.";
    const std::string_view behind = line.substr(end);
    const auto tokens = row->kind == Kind::Type ? std::vector<Token>() : split(behind);
    if (!tokens)
        return std::string("A quotation mark is missing.");
    DialogStep step;
    step.kind = row->kind;
    step.click = row->click;
    Arguments arguments{*tokens, behind.substr(behind.empty() ? 0 : 1), {}};
    if (!row->parse(step, arguments))
        return std::string(row->keyword) + arguments.trouble;
    if (!arguments.rest.empty())
        return std::string(row->keyword) + ": \"" + arguments.rest.front().text + "\" is too much.";
    return step;
}

bool isDialogStepKeyword(std::string_view word) { return findRow(word) != nullptr; }

std::string dialogStepKeywords() {
    std::string keywords;
    for (const KeywordRow& row : kRows)
        keywords += (keywords.empty() ? "" : ", ") + std::string(row.keyword);
    return keywords;
}

} // namespace vndk::app
