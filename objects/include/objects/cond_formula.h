// CCondFormula: one rule by which an attribute's value changes its own looks.
//
// A formula is a line of text, `target = expression`. It is evaluated when the attribute gets its value:
//
//   stretch = value > 900        the attribute moves to conditional point 2 when that holds, else to point 1
//   stretch = (value-600) / 600  ... or to a place between them: 0 is point 1, 1 is point 2
//   width   = if(len(value) > 8, 0.8, 1)          width factor of the text
//   height  = 2.5 * [SCALE]                       height of the text in drawing units
//   text    = value & " mm"                       what the text shows
//
// Expressions, from the loosest to the tightest binding; words and tags without regard to case:
//
//   or | and | not | = <> < <= > >= | + - & | * / | unary -
//   12.5   "text" ("" stands for a quote in it)   (expression)
//   value  the attribute's value   [TAG]  the value of the attribute with that tag on the same reference
//   if(condition, then, else)  min(a, b ...)  max(a, b ...)  abs(x)  round(x)  len(text)
//
// Values are numbers and texts. A text that is a number counts as one; `&` joins texts. Two numbers compare by
// size, anything else as text without regard to case. A comparison gives 1 or 0; 0 and the empty text are false.
#pragma once

#include "rx/status.h"

#include <functional>
#include <string>
#include <string_view>

/// What an expression gave.
struct CCondValue {
    bool isNumber = true;
    double number = 0;
    std::string text; ///< the value as text, for numbers too

    static CCondValue fromNumber(double number);
    static CCondValue fromText(std::string text);
    bool isTrue() const { return isNumber ? number != 0 : !text.empty(); }
};

class CCondFormula {
public:
    enum Target { kStretch, kWidth, kHeight, kText };

    /// Gives the text that a tag or, with an empty name, `value` stands for. False: there is no such attribute.
    using Lookup = std::function<bool(std::string_view tag, std::string& text)>;

    /// Longest formula, in characters.
    static constexpr size_t kMaxLength = 1000;

    CCondFormula() = default;
    /// An independent copy of `source`; an empty formula for null.
    explicit CCondFormula(const CCondFormula* source);

    /// Checks the text and takes it over. eInvalidInput: it isn't a formula; eOutOfRange: it is too long. The former
    /// text then stands.
    Acad::ErrorStatus setText(std::string_view text);
    const std::string& text() const { return text_; }
    Target target() const { return target_; }

    /// Works out the expression. eInvalidInput: an empty formula, a text where a number is needed; eKeyNotFound: a tag
    /// that `lookup` doesn't know; eOutOfRange: a division by zero or a number beyond all bounds.
    Acad::ErrorStatus evaluate(const Lookup& lookup, CCondValue& result) const;

private:
    std::string text_;
    size_t expression_ = 0; // where the expression begins in text_
    Target target_ = kText;
};

/// The formulas of one attribute or definition, in the order in which they were added. Owns them; copies are deep.
class CCondFormulaList {
public:
    struct Node {
        Node* next = nullptr;
        CCondFormula* formula = nullptr;
    };

    /// Room that the formulas of one list have together, each counted with kOverhead: what a file can hold of them.
    static constexpr size_t kMaxTotal = 3000;
    static constexpr size_t kOverhead = 8;

    CCondFormulaList() = default;
    CCondFormulaList(const CCondFormulaList& other);
    CCondFormulaList& operator=(const CCondFormulaList& other);
    ~CCondFormulaList();

    /// First node, null when the list is empty; the others by `next`.
    const Node* head() const { return head_; }
    /// Takes ownership, also when it fails. eNullObjectPointer; eOutOfRange: kMaxTotal would be exceeded.
    Acad::ErrorStatus append(CCondFormula* formula);
    size_t count() const;
    void swap(CCondFormulaList& other) noexcept;

private:
    void link(CCondFormula* formula);

    Node* head_ = nullptr;
    Node* tail_ = nullptr;
};
