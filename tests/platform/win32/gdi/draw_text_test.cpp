#include "gdi/draw_text.h"
#include "gdi/font.h"
#include "text_canvas.h"
#include "win32/error.h"

#include <gtest/gtest.h>

#include <climits>
#include <numeric>
#include <random>

using namespace vndk::win32;

namespace {

constexpr int kLine = 13;

const Font& font() {
    static FontObject object = [] {
        FontObject made;
        made.description.lfHeight = -11;
        std::strcpy(made.description.lfFaceName, "MS Sans Serif");
        return made;
    }();
    return fontOf(object);
}

int widthOf(std::string_view text) { return font().width(text); }

std::vector<std::string> linesOf(std::string_view text, UINT flags, int width, int height = -1) {
    TextFormat format;
    format.flags = flags;
    std::vector<std::string> lines;
    for (const TextLine& line : layOutText(font(), text, format, width, height))
        lines.push_back(line.text);
    return lines;
}

TEST(TextLayout, BreaksAtLineEndsAndBetweenWords) {
    const int room = widthOf("aaa bbb");
    const struct {
        const char* text;
        UINT flags;
        std::vector<std::string> lines;
    } cases[] = {
        {"one\r\ntwo\nthree\rfour", 0, {"one", "two", "three", "four"}},
        {"one\n\ntwo", 0, {"one", "", "two"}},
        {"one\n", 0, {"one"}},
        {"one\ntwo", DT_SINGLELINE, {"one\ntwo"}},
        {"aaa bbb ccc", DT_WORDBREAK, {"aaa bbb", "ccc"}},
        {"aaa bbb   ccc", DT_WORDBREAK, {"aaa bbb", "ccc"}},
        {"aaa bbb ccc", DT_WORDBREAK | DT_SINGLELINE, {"aaa bbb ccc"}},
        {"aaa bbb ccc", 0, {"aaa bbb ccc"}},
        {"aaa bbb\nccc", DT_WORDBREAK, {"aaa bbb", "ccc"}},
        {"aaaaaaaaaaaaaaaa b", DT_WORDBREAK, {"aaaaaaaaaaaaaaaa", "b"}},
        {"b aaaaaaaaaaaaaaaa b", DT_WORDBREAK, {"b", "aaaaaaaaaaaaaaaa", "b"}},
        {"aaa bbb     ", DT_WORDBREAK, {"aaa bbb"}},
        {"a&aa b&bb ccc", DT_WORDBREAK, {"aaa bbb", "ccc"}},
    };
    for (const auto& row : cases)
        EXPECT_EQ(linesOf(row.text, row.flags, room), row.lines) << row.text << ' ' << row.flags;
}

TEST(TextLayout, BreaksWordsInEditControlsOnly) {
    const std::string word(40, 'w');
    const auto lines = linesOf(word, DT_WORDBREAK | DT_EDITCONTROL, widthOf("wwwww"));
    EXPECT_EQ(lines.size(), 8u);
    EXPECT_EQ(lines[0], "wwwww");
    EXPECT_EQ(linesOf(word, DT_WORDBREAK | DT_EDITCONTROL, 0).size(), 40u) << "a character for each line at least";
}

TEST(TextLayout, LosesNothingButBlanksAndStaysInTheRoom) {
    std::mt19937 random(2007);
    for (int round = 0; round < 300; ++round) {
        std::string text;
        const int length = 1 + static_cast<int>(random() % 60);
        for (int index = 0; index < length; ++index)
            text += "ab  W.i"[random() % 7];
        const int room = static_cast<int>(random() % 90);
        std::string joined;
        for (const std::string& line : linesOf(text, DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX, room)) {
            std::string_view shown = line;
            while (shown.ends_with(' '))
                shown.remove_suffix(1);
            EXPECT_TRUE(widthOf(shown) <= room || shown.size() == 1) << '"' << text << "\" in " << room;
            joined += line;
        }
        std::erase(joined, ' ');
        std::erase(text, ' ');
        ASSERT_EQ(joined, text) << room;
    }
}

TEST(TextLayout, ShortensWhatDoesNotFit) {
    const struct {
        const char* text;
        UINT flags;
        int room;
        std::vector<std::string> lines;
    } cases[] = {
        {"abcdefgh", DT_END_ELLIPSIS, widthOf("abcdefgh"), {"abcdefgh"}},
        {"abcdefgh", DT_END_ELLIPSIS, widthOf("abcdefgh") - 1, {"abcdef..."}},
        {"abcdefgh", DT_WORD_ELLIPSIS, widthOf("abc..."), {"abc..."}},
        {"abcdefgh", DT_END_ELLIPSIS, 0, {"..."}},
        {"abcdefgh", DT_END_ELLIPSIS | DT_NOPREFIX, INT_MIN / 4, {"..."}},
        {"abcdefgh\nxy", DT_END_ELLIPSIS, widthOf("abc..."), {"abcdefgh", "xy"}},
        {"abcdefgh\nxy", DT_WORD_ELLIPSIS, widthOf("abc..."), {"abc...", "xy"}},
        {"C:\\folder\\plan.dwg", DT_PATH_ELLIPSIS, widthOf("C:\\f...\\plan.dwg"), {"C:\\f...\\plan.dwg"}},
        {"C:\\folder\\plan.dwg", DT_PATH_ELLIPSIS, widthOf("...\\plan.dwg"), {"...\\plan.dwg"}},
        {"C:\\folder\\plan.dwg", DT_PATH_ELLIPSIS, 5, {"...\\plan.dwg"}},
        {"C:\\folder\\plan.dwg", DT_PATH_ELLIPSIS | DT_END_ELLIPSIS, widthOf("...\\pl..."), {"...\\pl..."}},
        {"no slash here", DT_PATH_ELLIPSIS, widthOf("no sl..."), {"no sl..."}},
    };
    for (const auto& row : cases)
        EXPECT_EQ(linesOf(row.text, row.flags, row.room), row.lines) << row.text << ' ' << row.flags << ' ' << row.room;
}

TEST(TextLayout, ShortensTheLastLineThatShows) {
    const int room = widthOf("aaa bbb");
    const UINT flags = DT_WORDBREAK | DT_END_ELLIPSIS;
    EXPECT_EQ(linesOf("aaa bbb ccc ddd eee", flags, room, 2 * kLine + 5),
              (std::vector<std::string>{"aaa bbb", "ccc d..."}));
    EXPECT_EQ(linesOf("aaa bbb ccc", flags, room, 2 * kLine), (std::vector<std::string>{"aaa bbb", "ccc"}));
    EXPECT_EQ(linesOf("aaa bbb ccc", flags, room).size(), 2u) << "the height doesn't count";
}

TEST(TextLayout, TakesMarksOut) {
    const struct {
        const char* text;
        const char* shown;
        int marked;
    } cases[] = {{"&File", "File", 0},
                 {"E&xit", "Exit", 1},
                 {"A && B", "A & B", -1},
                 {"&One &Two", "One Two", 4},
                 {"&&&File", "&File", 1},
                 {"end&", "end", -1},
                 {"", "", -1},
                 {"&", "", -1},
                 {"&a&&b", "a&b", 0}};
    for (const auto& row : cases) {
        const MarkedText result = withoutMarks(row.text);
        EXPECT_EQ(result.text, row.shown) << row.text;
        EXPECT_EQ(result.marked, row.marked) << row.text;
    }
}

TEST(DrawText, MeasuresWithoutPainting) {
    TextCanvas canvas(100, 40);
    const int wide = widthOf("wide word");
    const struct {
        const char* text;
        UINT flags;
        RECT before;
        RECT after;
        int height;
    } cases[] = {
        {"Text", DT_SINGLELINE, {5, 6, 0, 0}, {5, 6, 5 + widthOf("Text"), 19}, kLine},
        {"Text", DT_SINGLELINE | DT_VCENTER | DT_RIGHT, {5, 6, 90, 40}, {5, 6, 5 + widthOf("Text"), 19}, kLine},
        {"&Text", 0, {5, 6, 0, 0}, {5, 6, 5 + widthOf("Text"), 19}, kLine},
        {"&Text", DT_NOPREFIX, {5, 6, 0, 0}, {5, 6, 5 + widthOf("&Text"), 19}, kLine},
        {"a\nwide word", 0, {0, 0, 0, 0}, {0, 0, wide, 26}, 26},
        {"wide word", DT_WORDBREAK, {0, 0, 1, 0}, {0, 0, std::max(widthOf("wide"), widthOf("word")), 26}, 26},
        {"i wide word", DT_WORDBREAK, {0, 0, wide, 0}, {0, 0, widthOf("i wide"), 26}, 26},
        {"a\tb", DT_EXPANDTABS, {0, 0, 0, 0}, {0, 0, 48 + widthOf("b"), 13}, kLine},
    };
    for (const auto& row : cases) {
        RECT rect = row.before;
        const int height = DrawTextA(canvas.dc(), row.text, -1, &rect, row.flags | DT_CALCRECT);
        EXPECT_EQ(height, row.height) << row.text << ' ' << row.flags;
        EXPECT_EQ(rect, row.after) << row.text << ' ' << row.flags;
    }
    EXPECT_EQ(canvas.painted(), RECT{});
}

TEST(DrawText, OfNothingAnswersByTheCount) {
    TextCanvas canvas(10, 10);
    RECT rect{3, 4, 50, 60};
    EXPECT_EQ(DrawTextA(canvas.dc(), "text", 0, &rect, DT_CALCRECT), 0);
    EXPECT_EQ(rect, (RECT{3, 4, 50, 60})) << "a count of 0 leaves the rectangle alone";
    EXPECT_NE(DrawTextA(canvas.dc(), "", -1, &rect, DT_CALCRECT), 0);
    EXPECT_EQ(rect, (RECT{3, 4, 3, 4})) << "an empty text empties it";
}

TEST(DrawText, PutsTheTextInItsPlace) {
    TextCanvas canvas(100, 50);
    SetBkMode(canvas.dc(), OPAQUE);
    SetBkColor(canvas.dc(), kGreen);
    const int width = widthOf("Place");
    const RECT room{10, 5, 90, 44};
    const struct {
        UINT flags;
        int left;
        int top;
        int result;
    } cases[] = {{DT_SINGLELINE, 10, 5, 13},
                 {DT_SINGLELINE | DT_CENTER | DT_VCENTER, 10 + (80 - width) / 2, 18, 26},
                 {DT_SINGLELINE | DT_RIGHT | DT_BOTTOM, 90 - width, 31, 39},
                 {DT_VCENTER | DT_BOTTOM, 10, 5, 13}};
    for (const auto& row : cases) {
        canvas.clear();
        RECT rect = room;
        EXPECT_EQ(DrawTextA(canvas.dc(), "Place", 5, &rect, row.flags), row.result) << row.flags;
        EXPECT_EQ(canvas.painted(), (RECT{row.left, row.top, row.left + width, row.top + 13})) << row.flags;
        EXPECT_EQ(rect, room);
    }
}

TEST(DrawText, StaysInsideUnlessToldNotTo) {
    TextCanvas canvas(100, 40);
    RECT room{10, 10, 30, 18};
    DrawTextA(canvas.dc(), "WWWWWWW", -1, &room, DT_SINGLELINE);
    const RECT inside = canvas.painted();
    EXPECT_LE(inside.right, 30);
    EXPECT_LE(inside.bottom, 18);
    DrawTextA(canvas.dc(), "WWWWWWW", -1, &room, DT_SINGLELINE | DT_NOCLIP);
    EXPECT_GT(canvas.painted().right, 50);
    EXPECT_GT(canvas.painted().bottom, 18);
}

TEST(DrawText, UnderlinesTheMark) {
    const auto painted = [](const char* text, UINT flags) {
        TextCanvas canvas(80, 20);
        RECT room{4, 2, 80, 20};
        DrawTextA(canvas.dc(), text, -1, &room, flags | DT_SINGLELINE);
        return canvas.pixelsOf(kBlack);
    };
    std::set<std::pair<int, int>> bar;
    for (int x = 0; x < widthOf("b"); ++x)
        bar.emplace(4 + widthOf("a") + x, 2 + 10 + 1);
    auto marked = painted("abc", 0);
    marked.insert(bar.begin(), bar.end());
    EXPECT_EQ(painted("a&bc", 0), marked);
    EXPECT_EQ(painted("a&bc", DT_HIDEPREFIX), painted("abc", 0));
    EXPECT_EQ(painted("a&bc", DT_PREFIXONLY), bar);
    EXPECT_EQ(painted("a&&bc", 0), painted("a&bc", DT_NOPREFIX));
}

TEST(DrawText, ExpandsTabsToTheLengthInTheFlags) {
    const auto columnOf = [](UINT flags) {
        TextCanvas canvas(120, 20);
        RECT room{0, 2, 120, 20};
        DrawTextA(canvas.dc(), "\tl", -1, &room, flags | DT_EXPANDTABS);
        return canvas.painted().left;
    };
    const int bearing = columnOf(DT_TABSTOP | (1 << 8)) - 6;
    EXPECT_EQ(columnOf(0), 48 + bearing) << "eight average characters";
    EXPECT_EQ(columnOf(DT_TABSTOP | (11 << 8)), 66 + bearing) << "the flags in those bits don't count";
}

TEST(DrawText, WritesTheShortenedTextWhereItMay) {
    TextCanvas canvas(10, 10);
    char buffer[32] = "abcdefgh";
    RECT room{0, 0, widthOf("abc..."), 20};
    DrawTextA(canvas.dc(), buffer, -1, &room, DT_SINGLELINE | DT_END_ELLIPSIS | DT_MODIFYSTRING);
    EXPECT_STREQ(buffer, "abc...");
    char other[32] = "abcdefgh";
    DrawTextA(canvas.dc(), other, -1, &room, DT_SINGLELINE | DT_END_ELLIPSIS);
    EXPECT_STREQ(other, "abcdefgh");
}

TEST(DrawText, TakesMarginsAndTellsHowFarItCame) {
    TextCanvas canvas(100, 40);
    SetBkMode(canvas.dc(), OPAQUE);
    SetBkColor(canvas.dc(), kGreen);
    DRAWTEXTPARAMS params{sizeof(DRAWTEXTPARAMS), 0, 7, 9, 0};
    char text[] = "a&b\ncd\nef";
    RECT room{10, 2, 90, 2 + 2 * kLine + 5};
    DrawTextExA(canvas.dc(), text, -1, &room, DT_EDITCONTROL, &params);
    EXPECT_EQ(params.uiLengthDrawn, 7u) << "the third line doesn't fit";
    EXPECT_EQ(canvas.painted().left, 17);
    EXPECT_EQ(canvas.painted().bottom, 2 + 2 * kLine);

    RECT measured{0, 0, 0, 0};
    DrawTextExA(canvas.dc(), text, 3, &measured, DT_CALCRECT, &params);
    EXPECT_EQ(measured.right, widthOf("ab") + 16);
    params.cbSize = 3;
    EXPECT_EQ(DrawTextExA(canvas.dc(), text, 3, &measured, DT_CALCRECT, &params), 0);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST(DrawText, OfNonsenseIsRefused) {
    TextCanvas canvas(10, 10);
    RECT rect{0, 0, 10, 10};
    EXPECT_EQ(DrawTextA(nullptr, "x", 1, &rect, 0), 0);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    EXPECT_EQ(DrawTextA(canvas.dc(), nullptr, -1, &rect, 0), 0);
    EXPECT_EQ(DrawTextA(canvas.dc(), "x", 1, nullptr, 0), 0);
    EXPECT_EQ(DrawTextA(canvas.dc(), "x", -2, &rect, 0), 0);
    for (RECT wild : {RECT{INT_MAX, INT_MAX, INT_MIN, INT_MIN}, RECT{INT_MIN, INT_MIN, INT_MAX, INT_MAX}})
        for (const UINT flags : {0U, DT_SINGLELINE | DT_CENTER | DT_VCENTER, DT_WORDBREAK | DT_EXPANDTABS,
                                 DT_SINGLELINE | DT_BOTTOM | DT_RIGHT | DT_END_ELLIPSIS, UINT{DT_CALCRECT}})
            DrawTextA(canvas.dc(), "wild\t&rectangle", -1, &wild, flags); // only has to come back
}

TEST(TabbedText, StandsInColumns) {
    TextCanvas canvas(200, 20);
    const INT stops[] = {30, 70, 90};
    const INT every[] = {25};
    const INT right[] = {30, -90};
    const struct {
        int count;
        const INT* stops;
        int third; // where the third column begins
    } cases[] = {{3, stops, 70}, {1, every, 50}, {0, nullptr, 96}, {2, right, 90 - widthOf("c")}};
    for (const auto& row : cases) {
        canvas.clear();
        const DWORD size = GetTabbedTextExtentA(canvas.dc(), "a\tb\tc", 5, row.count, row.stops);
        EXPECT_EQ(LOWORD(size), row.third + widthOf("c")) << row.third;
        EXPECT_EQ(HIWORD(size), kLine);
        EXPECT_EQ(static_cast<DWORD>(TabbedTextOutA(canvas.dc(), 3, 2, "a\tb\tc", 5, row.count, row.stops, 3)), size);
        TextCanvas expected(200, 20);
        TextOutA(expected.dc(), 3 + row.third, 2, "c", 1);
        for (const auto& [x, y] : expected.pixelsOf(kBlack))
            EXPECT_EQ(canvas.color(x, y), kBlack) << row.third << ": " << x << ' ' << y;
    }
    EXPECT_EQ(GetTabbedTextExtentA(canvas.dc(), nullptr, 3, 0, nullptr), 0u);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
}

TEST(TabbedText, PassesStopsThatTheTextHasReached) {
    TextCanvas canvas(200, 20);
    const INT stops[] = {10, 60};
    const DWORD size = GetTabbedTextExtentA(canvas.dc(), "wide text\tb", 11, 2, stops);
    EXPECT_EQ(LOWORD(size), 60 + widthOf("b"));
}

} // namespace
