#include "objects/cond_formula.h"

#include "db/symbol_table.h"
#include "src/formula_evaluator.h"

#include <memory>

namespace {

std::string_view trimmed(std::string_view text) {
    const size_t begin = text.find_first_not_of(" \t");
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(" \t") + 1 - begin);
}

bool findTarget(std::string_view name, CCondFormula::Target& target) {
    static constexpr struct {
        std::string_view name;
        CCondFormula::Target target;
    } kTargets[] = {{"STRETCH", CCondFormula::kStretch},
                    {"WIDTH", CCondFormula::kWidth},
                    {"HEIGHT", CCondFormula::kHeight},
                    {"TEXT", CCondFormula::kText}};
    const std::string folded = acdbFoldName(name);
    for (const auto& row : kTargets) {
        if (row.name == folded) {
            target = row.target;
            return true;
        }
    }
    return false;
}

} // namespace

CCondFormula::CCondFormula(const CCondFormula* source) {
    if (source)
        *this = *source;
}

Acad::ErrorStatus CCondFormula::setText(std::string_view text) {
    if (text.size() > kMaxLength)
        return Acad::eOutOfRange;
    const size_t equals = text.find('=');
    Target target = kText;
    if (equals == std::string_view::npos || !findTarget(trimmed(text.substr(0, equals)), target))
        return Acad::eInvalidInput;
    CCondValue unused;
    const auto status = vndk::objects::FormulaEvaluator(trimmed(text.substr(equals + 1)), nullptr).run(unused);
    if (status != Acad::eOk)
        return status;
    text_ = text;
    expression_ = equals + 1;
    target_ = target;
    return Acad::eOk;
}

Acad::ErrorStatus CCondFormula::evaluate(const Lookup& lookup, CCondValue& result) const {
    const std::string_view expression = trimmed(std::string_view(text_).substr(expression_));
    return vndk::objects::FormulaEvaluator(expression, &lookup).run(result);
}

CCondFormulaList::CCondFormulaList(const CCondFormulaList& other) {
    for (const Node* node = other.head_; node; node = node->next)
        link(new CCondFormula(node->formula));
}

CCondFormulaList& CCondFormulaList::operator=(const CCondFormulaList& other) {
    CCondFormulaList copy(other);
    swap(copy);
    return *this;
}

CCondFormulaList::~CCondFormulaList() {
    while (head_) {
        Node* const gone = head_;
        head_ = gone->next;
        delete gone->formula;
        delete gone;
    }
}

Acad::ErrorStatus CCondFormulaList::append(CCondFormula* formula) {
    std::unique_ptr<CCondFormula> held(formula);
    if (!formula)
        return Acad::eNullObjectPointer;
    size_t total = formula->text().size() + kOverhead;
    for (const Node* node = head_; node; node = node->next)
        total += node->formula->text().size() + kOverhead;
    if (total > kMaxTotal)
        return Acad::eOutOfRange;
    link(held.release());
    return Acad::eOk;
}

void CCondFormulaList::link(CCondFormula* formula) {
    Node* const node = new Node{nullptr, formula};
    (tail_ ? tail_->next : head_) = node;
    tail_ = node;
}

size_t CCondFormulaList::count() const {
    size_t count = 0;
    for (const Node* node = head_; node; node = node->next)
        ++count;
    return count;
}

void CCondFormulaList::swap(CCondFormulaList& other) noexcept {
    std::swap(head_, other.head_);
    std::swap(tail_, other.tail_);
}
