// The formula language: what is a formula, and what it gives.
#include "objects/cond_formula.h"

#include <gtest/gtest.h>

#include <random>

namespace {

/// `value` is "900", [WIDTH] is "1200", [NAME] is "Desk"; nothing else is known.
bool lookUp(std::string_view tag, std::string& text) {
    if (tag.empty())
        text = "900";
    else if (tag == "WIDTH")
        text = "1200";
    else if (tag == "NAME")
        text = "Desk";
    else
        return false;
    return true;
}

} // namespace

TEST(CondFormula, WorksOutExpressions) {
    const struct {
        const char* expression;
        const char* result;
    } cases[] = {
        {"1+2*3", "7"},
        {"(1+2)*3", "9"},
        {"10-4-3", "3"},
        {"16/4/2", "2"},
        {"-2*-3", "6"},
        {"- - 2", "2"},
        {"0*-1", "0"},
        {".5+0.25", "0.75"},
        {"2e3", "2000"},
        {"value", "900"},
        {"VALUE+1", "901"},
        {"[WIDTH]-value", "300"},
        {"value & \" mm\"", "900 mm"},
        {"1 & 2", "12"},
        {"\"12\" + 1", "13"},
        {"\" +12 \" + 1", "13"},
        {"\"say \"\"hi\"\"\"", "say \"hi\""},
        {"[NAME] = \"DESK\"", "1"},
        {"[NAME] <> \"desk\"", "0"},
        {"\"B\" > \"a\"", "1"},
        {"\"9\" < \"10\"", "1"},  // two numbers, by size
        {"\"9\" < \"10x\"", "0"}, // one isn't a number, so as text
        {"1 < 2 and 2 < 3", "1"},
        {"1 or 0 and 0", "1"},
        {"not 1 = 2", "1"},
        {"not not 5", "1"},
        {"\"\" or 0", "0"},
        {"if(value > 800, \"wide\", \"small\")", "wide"},
        {"IF(0, 1/0, 7)", "7"}, // the branch that isn't taken isn't worked out
        {"if(1, 8, [UNKNOWN])", "8"},
        {"if(0, if(1, 1/0, 2), 3)", "3"},
        {"min(3, value, 2)", "2"},
        {"max(3, value, 2)", "900"},
        {"abs(-3.5)", "3.5"},
        {"round(2.5)", "3"},
        {"len([NAME] & \"x\")", "5"},
        {"nan", nullptr},
        {"\"inf\" & \"\"", "inf"},
    };
    for (const auto& row : cases) {
        CCondFormula formula;
        const Acad::ErrorStatus status = formula.setText(std::string("text = ") + row.expression);
        ASSERT_EQ(status == Acad::eOk, row.result != nullptr) << row.expression;
        if (!row.result)
            continue;
        CCondValue result;
        EXPECT_EQ(formula.evaluate(lookUp, result), Acad::eOk) << row.expression;
        EXPECT_EQ(result.text, row.result) << row.expression;
    }
}

TEST(CondFormula, TellsWhyAnExpressionHasNoValue) {
    const struct {
        const char* expression;
        Acad::ErrorStatus status;
    } cases[] = {
        {"1/0", Acad::eOutOfRange},
        {"1/(value-900)", Acad::eOutOfRange},
        {"1e300*1e300", Acad::eOutOfRange},
        {"[NAME]+1", Acad::eInvalidInput},
        {"-[NAME]", Acad::eInvalidInput},
        {"abs(\"x\")", Acad::eInvalidInput},
        {"\"inf\"+1", Acad::eInvalidInput},
        {"[UNKNOWN]", Acad::eKeyNotFound},
        {"1 and [UNKNOWN]", Acad::eKeyNotFound},
        {"if([UNKNOWN], 1, 2)", Acad::eKeyNotFound},
    };
    for (const auto& row : cases) {
        CCondFormula formula;
        ASSERT_EQ(formula.setText(std::string("stretch=") + row.expression), Acad::eOk) << row.expression;
        CCondValue result;
        result.text = "before";
        EXPECT_EQ(formula.evaluate(lookUp, result), row.status) << row.expression;
        EXPECT_EQ(result.text, "before") << row.expression;
    }
}

TEST(CondFormula, RefusesWhatIsNoFormulaAndKeepsTheFormerOne) {
    const char* const refused[] = {
        "",
        "text",
        "text=",
        "=1",
        "size = 1",
        "text 1",
        "text = 1 2",
        "text = (1",
        "text = 1)",
        "text = 1 +",
        "text = [",
        "text = []",
        "text = [A",
        "text = \"a",
        "text = ()",
        "text = if(1, 2)",
        "text = if(1,2,3,4)",
        "text = min()",
        "text = abs(1,2)",
        "text = foo(1)",
        "text = valuex",
        "text = 1 = 2 = 3",
        "text = 1..2",
        "text = $",
        "text = 1,2",
    };
    CCondFormula formula;
    ASSERT_EQ(formula.setText("Width = 2"), Acad::eOk);
    for (const char* text : refused)
        EXPECT_EQ(formula.setText(text), Acad::eInvalidInput) << text;
    EXPECT_EQ(formula.setText("text = " + std::string(CCondFormula::kMaxLength, '1')), Acad::eOutOfRange);
    EXPECT_EQ(formula.text(), "Width = 2");
    EXPECT_EQ(formula.target(), CCondFormula::kWidth);
    CCondValue result;
    EXPECT_EQ(formula.evaluate(lookUp, result), Acad::eOk);
    EXPECT_EQ(result.number, 2);
}

TEST(CondFormula, BoundsItsNesting) {
    const auto nested = [](size_t depth, const char* open, const char* close) {
        std::string text = "text = ";
        for (size_t i = 0; i < depth; ++i)
            text += open;
        text += "1";
        for (size_t i = 0; i < depth; ++i)
            text += close;
        CCondFormula formula;
        return formula.setText(text);
    };
    EXPECT_EQ(nested(40, "(", ")"), Acad::eOk);
    EXPECT_EQ(nested(400, "(", ")"), Acad::eInvalidInput);
    EXPECT_EQ(nested(400, "-", ""), Acad::eInvalidInput);
    EXPECT_EQ(nested(200, "not ", ""), Acad::eInvalidInput);
    EXPECT_EQ(nested(300, "if", ""), Acad::eInvalidInput);
}

TEST(CondFormula, ChangedBytesDoNoHarm) {
    std::mt19937 random(7);
    const std::string characters = "()[]\",=<>+-*/& .0aeifnot\x80\xFF";
    const std::string seed =
        "text = if(not value > 8e2 and [NAME] <> \"a\", min(1, -2.5) & \" mm\", len(\"x\") / (1 + 1))";
    for (int round = 0; round < 20000; ++round) {
        std::string changed = seed;
        for (int i = 0; i < 3; ++i)
            changed[random() % changed.size()] = characters[random() % characters.size()];
        CCondFormula formula;
        if (formula.setText(changed) != Acad::eOk)
            continue;
        CCondValue result;
        const Acad::ErrorStatus status = formula.evaluate(lookUp, result);
        EXPECT_TRUE(status == Acad::eOk || status == Acad::eInvalidInput || status == Acad::eKeyNotFound ||
                    status == Acad::eOutOfRange)
            << changed;
    }
}

TEST(CondFormula, EmptyOneHasNoValue) {
    CCondValue result;
    EXPECT_EQ(CCondFormula().evaluate(lookUp, result), Acad::eInvalidInput);
    EXPECT_EQ(CCondFormula(nullptr).evaluate(lookUp, result), Acad::eInvalidInput);
}

TEST(CondFormulaList, CopiesAreIndependentAndOrdered) {
    CCondFormulaList list;
    for (const char* text : {"text = 1", "width = 2", "height = 3"}) {
        auto* formula = new CCondFormula;
        ASSERT_EQ(formula->setText(text), Acad::eOk);
        ASSERT_EQ(list.append(formula), Acad::eOk);
    }
    CCondFormulaList copy(list);
    ASSERT_EQ(list.head()->formula->setText("text = 9"), Acad::eOk);
    ASSERT_EQ(copy.count(), 3U);
    EXPECT_EQ(copy.head()->formula->text(), "text = 1");
    EXPECT_EQ(copy.head()->next->next->formula->text(), "height = 3");
    copy = list;
    EXPECT_EQ(copy.head()->formula->text(), "text = 9");
    EXPECT_EQ(copy.append(nullptr), Acad::eNullObjectPointer);
}

TEST(CondFormulaList, HoldsNoMoreThanAFileCan) {
    CCondFormulaList list;
    const std::string text = "text = \"" + std::string(CCondFormula::kMaxLength - 9, 'x') + "\"";
    const auto add = [&] {
        auto* formula = new CCondFormula;
        EXPECT_EQ(formula->setText(text), Acad::eOk);
        return list.append(formula);
    };
    EXPECT_EQ(add(), Acad::eOk);
    EXPECT_EQ(add(), Acad::eOk);
    EXPECT_EQ(add(), Acad::eOutOfRange);
    EXPECT_EQ(list.count(), 2U);
}
