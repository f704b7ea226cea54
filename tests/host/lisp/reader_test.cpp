#include "lisp/reader.h"

#include <gtest/gtest.h>

#include "lisp_fixture.h"

namespace vndk::lisp {

namespace {

/// Feeds lines one by one and writes down what comes: forms, continuation prompts, errors.
std::string transcript(std::initializer_list<const char*> lines) {
    SymbolTable symbols;
    Reader reader(symbols);
    std::string text;
    const auto drain = [&](Reader::Status status, const Value& form) {
        if (status == Reader::Status::Form)
            text += toText(form, PrintStyle::Readable) + "|";
        if (status == Reader::Status::Error)
            text += "!" + reader.error() + "|";
        return status == Reader::Status::Form;
    };
    for (const char* line : lines) {
        Value form;
        reader.feed(line);
        while (drain(reader.next(form), form)) {
        }
        if (reader.isInsideForm())
            text += reader.continuationPrompt() + "|";
    }
    drain(reader.finish(), Value());
    return text;
}

} // namespace

TEST(Reader, TellsWhenAFormGoesOnInTheNextLine) {
    EXPECT_EQ(transcript({"(a\n", "(b \"x\n", "y\") ; note )\n", "c) 2\n"}), "(_> |((_> |(_> |(A (B \"x\\ny\") C)|2|");
    EXPECT_EQ(transcript({"\"open\n", "end\"\n"}), "\"_> |\"open\\nend\"|");
    EXPECT_EQ(transcript({"(1 ;| note )\n", "still |; 2)\n"}), "(_> |(1 2)|");
    EXPECT_EQ(transcript({"'\n", "a\n"}), "_> |(QUOTE A)|");
}

TEST(Reader, NamesTheErrorAndGoesOnWithTheNextLine) {
    struct {
        const char* text;
        const char* expected;
    } const cases[] = {
        {")", "!extra right paren on input|"},
        {"(a))", "(A)|!extra right paren on input|"},
        {"(a", "(_> |!malformed list on input|"},
        {"(\"a", "(_> |!malformed string on input|"},
        {"(')", "!malformed list on input|"},
        {"(. a)", "!misplaced dot on input|"},
        {".5", "!misplaced dot on input|"},
        {"(a . b c)", "!extra cdrs in dotted pair on input|"},
        {"(a .)", "!malformed list on input|"},
        {"(a . b . c)", "!misplaced dot on input|"},
        {"1e999", "!real number out of range on input|"},
        {"(a . 'b)", "(A QUOTE B)|"},
        {"''a", "(QUOTE (QUOTE A))|"},
        {"()", "nil|"},
        {"a.b", "A.B|"},
        {"x\"s\"y", "X|\"s\"|Y|"},
    };
    for (const auto& row : cases)
        EXPECT_EQ(transcript({row.text}), row.expected) << row.text;
    EXPECT_EQ(transcript({")\n", "1\n"}), "!extra right paren on input|1|");
}

TEST(Reader, PrintedDataIsReadBackTheSame) {
    SymbolTable symbols;
    std::string bytes;
    for (int code = 0; code < 256; ++code)
        bytes += static_cast<char>(code);
    const Value value =
        Value::list({Value::string(bytes), Value::cons(Value::real(1e20), Value::integer(-3)), Value::t(), Value()});
    const std::string text = toText(value, PrintStyle::Readable);
    Reader reader(symbols);
    reader.feed(text);
    Value form;
    ASSERT_EQ(reader.next(form), Reader::Status::Form);
    EXPECT_EQ(toText(form, PrintStyle::Readable), text);
    EXPECT_EQ(form.car().text(), bytes);
}

} // namespace vndk::lisp
