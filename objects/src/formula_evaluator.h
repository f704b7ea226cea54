// Works out one expression of a formula, reading it from left to right. The grammar stands in objects/cond_formula.h.
#pragma once

#include "objects/cond_formula.h"

#include <vector>

namespace vndk::objects {

class FormulaEvaluator {
public:
    /// Without `lookup` the expression is only checked: nothing that depends on values can fail.
    FormulaEvaluator(std::string_view expression, const CCondFormula::Lookup* lookup);

    Acad::ErrorStatus run(CCondValue& result);

private:
    /// Nesting that a formula may have: bounds the depth of the calls.
    static constexpr int kMaxDepth = 60;
    class Deeper;

    CCondValue alternatives(); // or
    CCondValue conjunction();  // and
    CCondValue negation();     // not
    CCondValue comparison();
    CCondValue sum();
    CCondValue product();
    CCondValue sign();
    CCondValue primary();
    CCondValue quotedText();
    CCondValue literalNumber();
    CCondValue call(std::string_view name);
    CCondValue conditional();
    std::vector<CCondValue> arguments();

    CCondValue lookedUp(std::string_view tag);
    CCondValue checked(double number);
    double number(const CCondValue& value);

    void skipBlanks();
    bool atEnd() const { return position_ >= text_.size(); }
    bool accept(std::string_view sign);
    bool acceptWord(std::string_view word);
    std::string_view word();
    void expect(std::string_view sign);
    CCondValue syntaxError();
    CCondValue valueError(Acad::ErrorStatus status);

    std::string_view text_;
    const CCondFormula::Lookup* lookup_;
    size_t position_ = 0;
    int depth_ = 0;
    bool live_; // false while a branch is read that isn't taken
    Acad::ErrorStatus status_ = Acad::eOk;
};

} // namespace vndk::objects
