// Where lines of an edit control begin and end.
#include "controls/edit_layout.h"
#include "controls/edit_undo.h"

#include <gtest/gtest.h>

#include <random>

namespace vndk::win32 {
namespace {

EditMetrics tenPixelFont() {
    EditMetrics measure;
    measure.widths.fill(10);
    measure.averageWidth = 10;
    return measure;
}

EditWrap wrapAt(int width) { return {true, width, nullptr}; }

std::string linesOf(const std::string& text, int width) {
    EditLayout layout;
    layout.rebuild(text, tenPixelFont(), wrapAt(width));
    std::string result;
    for (int index = 0; index < layout.count(); ++index) {
        const EditLine& line = layout.line(index);
        result += text.substr(static_cast<std::size_t>(line.start), static_cast<std::size_t>(line.length));
        result += line.soft ? "/" : "|";
    }
    return result;
}

TEST(EditLayout, LinesAreWrappedBehindBlanks) {
    struct Row {
        const char* name;
        const char* text;
        int width;
        const char* expected;
    };
    const Row rows[] = {
        {"empty", "", 50, "|"},
        {"one line", "abc", 50, "abc|"},
        {"two lines", "ab\r\ncd", 50, "ab|cd|"},
        {"break at the end", "ab\r\n", 50, "ab||"},
        {"single LF is no break", "a\nb", 50, "a\nb|"},
        {"at a blank", "abc def", 50, "abc /def|"},
        {"fits exactly", "abcde", 50, "abcde|"},
        {"blanks hang over", "abcde   fg", 50, "abcde   /fg|"},
        {"blanks before a break hang over", "abcde   \r\nfg", 50, "abcde   |fg|"},
        {"long word is cut", "abcdefgh", 50, "abcde/fgh|"},
        {"long word after a short one", "ab cdefghij", 50, "ab /cdefg/hij|"},
        {"one pixel wide", "abc", 1, "a/b/c|"},
        {"not wrapped", "abc def ghi", 0, "abc def ghi|"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(linesOf(row.text, row.width), row.expected) << row.name;
}

TEST(EditLayout, TabsGoToTheNextStop) {
    EditMetrics measure = tenPixelFont();
    EXPECT_EQ(measure.extent("a\tb"), 90) << "every eight characters";
    measure.tabs = {30};
    EXPECT_EQ(measure.extent("a\tb"), 40);
    EXPECT_EQ(measure.extent("abc\tb"), 70) << "a stop is already reached";
    measure.tabs = {25, 60};
    EXPECT_EQ(measure.extent("\t\t"), 60);
    EXPECT_EQ(measure.extent("\t\t\t"), 70) << "behind the last stop";
    measure.password = '*';
    EXPECT_EQ(measure.extent("\t\t"), 20);
}

TEST(EditLayout, NearestBoundaryIsFoundFromTheMiddleOfCharacters) {
    const EditMetrics measure = tenPixelFont();
    for (int x = -20; x < 60; ++x) {
        const int expected = x < 5 ? 0 : x < 15 ? 1 : x < 25 ? 2 : 3;
        EXPECT_EQ(measure.nearest("abc", x), expected) << x;
    }
}

TEST(EditLayout, UpdateGivesWhatARebuildGives) {
    std::mt19937 random(20240611);
    const auto pick = [&random](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const std::string_view pieces[] = {"a", "word", " ", "  ", "\r\n", "\r", "\n", "\t", "longlonglong", ""};
    for (int round = 0; round < 300; ++round) {
        const EditMetrics measure = tenPixelFont();
        const EditWrap wrap = wrapAt(round % 4 == 0 ? 0 : 30 + pick(100));
        std::string text;
        EditLayout layout;
        layout.rebuild(text, measure, wrap);
        for (int step = 0; step < 60; ++step) {
            const int position = pick(static_cast<int>(text.size()) + 1);
            const int removed = std::min(pick(step % 7 == 0 ? 30 : 3), static_cast<int>(text.size()) - position);
            const std::string_view inserted = pieces[pick(std::size(pieces))];
            const std::string before = text;
            text.replace(static_cast<std::size_t>(position), static_cast<std::size_t>(removed), inserted);
            layout.update(text, measure, wrap, position, removed, static_cast<int>(inserted.size()));
            EditLayout fresh;
            fresh.rebuild(text, measure, wrap);
            ASSERT_EQ(layout.count(), fresh.count()) << testing::PrintToString(before) << " at " << position << ", -"
                                                     << removed << ", +" << testing::PrintToString(inserted);
            for (int index = 0; index < fresh.count(); ++index)
                ASSERT_TRUE(layout.line(index) == fresh.line(index))
                    << testing::PrintToString(before) << " at " << position << ", -" << removed << ", +"
                    << testing::PrintToString(inserted) << ", line " << index;
        }
    }
}

TEST(EditUndo, TypingAndDeletingJoinWhereTheyTouch) {
    struct Change {
        int position;
        const char* removed;
        int inserted;
    };
    struct Row {
        const char* name;
        std::vector<Change> changes;
        int position;
        const char* removed;
        int inserted;
    };
    const Row rows[] = {
        {"typed on", {{3, "", 1}, {4, "", 1}}, 3, "", 2},
        {"typed elsewhere", {{3, "", 1}, {9, "", 1}}, 9, "", 1},
        {"typed over a selection, then on", {{3, "old", 1}, {4, "", 1}}, 3, "old", 2},
        {"typed and taken back", {{3, "", 2}, {4, "b", 0}}, 3, "", 1},
        {"backspaces", {{5, "f", 0}, {4, "e", 0}}, 4, "ef", 0},
        {"deletes", {{5, "f", 0}, {5, "g", 0}}, 5, "fg", 0},
        {"deleted, then typed", {{5, "f", 0}, {5, "", 1}}, 5, "", 1},
    };
    for (const Row& row : rows) {
        EditUndo undo;
        for (const Change& change : row.changes)
            undo.record(change.position, change.removed, change.inserted, EditUndo::Join::withFormer);
        EXPECT_EQ(undo.position(), row.position) << row.name;
        EXPECT_EQ(undo.removed(), row.removed) << row.name;
        EXPECT_EQ(undo.inserted(), row.inserted) << row.name;
    }
}

} // namespace
} // namespace vndk::win32
