#include "ed/input.h"

#include <gtest/gtest.h>

using namespace vndk::host;

namespace {

/// All answers of a text as words, each shown with a letter for its kind.
std::string words(std::string_view text, AnswerForm form = AnswerForm::Word) {
    InputQueue queue;
    queue.feed(text);
    std::string shown;
    for (;;) {
        const Answer answer = queue.take(form);
        if (answer.kind == Answer::Kind::End)
            return shown;
        if (!shown.empty())
            shown += '|';
        shown += answer.kind == Answer::Kind::Cancel ? "^C" : answer.kind == Answer::Kind::Expression ? "=" : "";
        shown += answer.text;
    }
}

} // namespace

TEST(InputQueue, splitsTypedTextIntoAnswers) {
    struct Case {
        const char* text;
        const char* answers;
    };
    const Case cases[] = {
        {"LINE 0,0 10,10\n\n", "LINE|0,0|10,10|"},
        {"LINE\n0,0\n\n", "LINE|0,0|"},
        {"a  b\n", "a||b"}, // the second blank is Enter
        {"a \n", "a|"},     // and so is the line's end behind a blank
        {"   \n", ""},      // a line of blanks is one Enter
        {"  a\n", "a"},     // indentation is nothing
        {"; all of it\na\n", "a"},
        {"a ; the rest\nb\n", "a|b"},
        {"a\n  ; indented\nb\n", "a|b"},
        {"a;b\n", "a;b"},
        {"a\r\nb\r\n", "a|b"},
        {"(+ 1\n 2) x\n", "=(+ 1\n 2)|x"},
        {"(f) \nx\n", "=(f)|x"}, // the line's end belongs to the expression
        {"(f)\n\nx\n", "=(f)||x"},
        {"(princ \")\") x\n", "=(princ \")\")|x"},
        {"(f \"a\\\"(\") x\n", "=(f \"a\\\"(\")|x"},
        {"(f ; )\n 1) x\n", "=(f ; )\n 1)|x"},
        {"\x1B\x1B(f) ", "^C|^C|=(f)"},
        {"ab\x1B"
         "cd\n",
         "^C|cd"},
        {"\x1B\nb\x1B\r\n\nc\n", "^C|^C||c"}, // the end of a line that a cancel ends is no Enter
        {"(open", "=(open"},
        {"last", "last"},
        {";", ""},
        {"", ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(words(c.text), c.answers) << c.text;
}

TEST(InputQueue, keepsBlanksBetweenQuotesInNames) {
    EXPECT_EQ(words("\"a b\" c\nd=\"e f\".dwg \"open g\nh\n", AnswerForm::Name), "\"a b\"|c|d=\"e f\".dwg|\"open g|h");
    EXPECT_EQ(words("\"a b\"\n"), "\"a|b\"") << "not in other answers";
}

TEST(InputQueue, keepsBlanksOfLinesAndKnowsTheLineNumber) {
    InputQueue queue;
    queue.feed("TEXT 0,0\n  two words ; no comment (nor an expression)\n; comment\nnext\n");
    EXPECT_EQ(queue.take(AnswerForm::Word).line, 1u);
    queue.take(AnswerForm::Word);
    const Answer line = queue.take(AnswerForm::Line);
    EXPECT_EQ(line.text, "  two words ; no comment (nor an expression)");
    EXPECT_EQ(line.line, 2u);
    EXPECT_EQ(queue.take(AnswerForm::Word).line, 4u);
}

TEST(InputQueue, givesSentTextBeforeTheRestOfTheTypedText) {
    InputQueue queue;
    queue.feed("a b\n");
    EXPECT_EQ(queue.take(AnswerForm::Word).text, "a");
    queue.send("\x1B(f) ");
    EXPECT_EQ(queue.take(AnswerForm::Word).kind, Answer::Kind::Cancel);
    EXPECT_EQ(queue.take(AnswerForm::Word).text, "(f)");
    EXPECT_EQ(queue.take(AnswerForm::Word).text, "b");
    EXPECT_TRUE(queue.empty());
}

TEST(InputQueue, dropsTheRestOfTheLine) {
    InputQueue queue;
    queue.feed("a b c\nd\n");
    queue.take(AnswerForm::Word);
    queue.dropLine();
    EXPECT_EQ(queue.take(AnswerForm::Word).text, "d");
}

TEST(InputQueue, givesTypedLinesBesideWhatWasSent) {
    InputQueue queue;
    queue.feed("a b c\n (d); e \n\x1B  \nf");
    queue.send("sent ");
    EXPECT_EQ(queue.take(AnswerForm::Word).text, "sent");
    queue.take(AnswerForm::Word);
    queue.send("later ");
    EXPECT_EQ(queue.takeTypedLine()->text, "b c");
    const auto second = queue.takeTypedLine();
    EXPECT_EQ(second->text, " (d); e ") << "comments and expressions are nothing special";
    EXPECT_EQ(second->line, 2U);
    EXPECT_EQ(queue.takeTypedLine()->kind, Answer::Kind::Cancel);
    EXPECT_EQ(queue.takeTypedLine()->text, "f");
    EXPECT_FALSE(queue.takeTypedLine());
    EXPECT_EQ(queue.take(AnswerForm::Word).text, "later");
}

TEST(InputQueue, survivesAnyBytes) {
    std::string hostile;
    for (int i = 0; i < 4096; ++i)
        hostile += static_cast<char>((i * 7919) >> 3);
    hostile += std::string(100'000, '(');
    hostile += std::string(100'000, '"');
    InputQueue queue;
    queue.feed(hostile);
    size_t taken = 0;
    while (queue.take(taken % 2 ? AnswerForm::Word : AnswerForm::LineOrExpression).kind != Answer::Kind::End)
        ASSERT_LT(++taken, hostile.size());
}
