// Functions that call functions: apply, mapcar, filters, sorting.
#include <vector>

#include "arguments.h"
#include "evaluator.h"

namespace vndk::lisp {

namespace {

std::vector<Value> elements(const Value& list) {
    std::vector<Value> items;
    for (const Value* rest = &asList(list); rest->isCons(); rest = &rest->cdr())
        items.push_back(rest->car());
    return items;
}

Value apply(Evaluator& evaluator, Arguments args) { return evaluator.call(args[0], elements(args[1])); }

/// Calls `use` with the arguments of each round, one from each list, until a list ends or `use` says stop.
template <class Use>
void eachRound(Evaluator& evaluator, Arguments lists, Use use) {
    std::vector<const Value*> rests;
    for (const Value& list : lists)
        rests.push_back(&asList(list));
    std::vector<Value> round(rests.size());
    for (;;) {
        evaluator.spend();
        for (std::size_t i = 0; i < rests.size(); ++i) {
            if (!rests[i]->isCons())
                return;
            round[i] = rests[i]->car();
            rests[i] = &rests[i]->cdr();
        }
        if (!use(Arguments(round)))
            return;
    }
}

Value mapcar(Evaluator& evaluator, Arguments args) {
    ListBuilder results;
    eachRound(evaluator, args.subspan(1), [&](Arguments round) {
        results.append(evaluator.call(args[0], round));
        return true;
    });
    return results.finish();
}

Value some(Evaluator& evaluator, Arguments args) {
    Value found;
    eachRound(evaluator, args.subspan(1), [&](Arguments round) {
        found = evaluator.call(args[0], round);
        return found.isNil();
    });
    return found;
}

Value every(Evaluator& evaluator, Arguments args) {
    bool all = true;
    eachRound(evaluator, args.subspan(1), [&](Arguments round) {
        all = !evaluator.call(args[0], round).isNil();
        return all;
    });
    return Value::truth(all);
}

Value filter(Evaluator& evaluator, Arguments args, bool removed) {
    ListBuilder kept;
    for (const Value* rest = &asList(args[1]); rest->isCons(); rest = &rest->cdr())
        if (!evaluator.call(args[0], {&rest->car(), 1}).isNil() != removed)
            kept.append(rest->car());
    return kept.finish();
}

Value removeIf(Evaluator& evaluator, Arguments args) { return filter(evaluator, args, true); }

Value removeIfNot(Evaluator& evaluator, Arguments args) { return filter(evaluator, args, false); }

/// A merge sort of our own: the library's sorts may run out of the array when a program's comparison contradicts
/// itself. Stable.
Value sort(Evaluator& evaluator, Arguments args) {
    std::vector<Value> items = elements(args[0]);
    std::vector<Value> merged(items.size());
    const auto goesBefore = [&](const Value& a, const Value& b) {
        const Value pair[] = {a, b};
        return !evaluator.call(args[1], pair).isNil();
    };
    for (std::size_t width = 1; width < items.size(); width *= 2) {
        for (std::size_t start = 0; start < items.size(); start += 2 * width) {
            const std::size_t middle = std::min(start + width, items.size());
            const std::size_t end = std::min(start + 2 * width, items.size());
            std::size_t left = start;
            std::size_t right = middle;
            for (std::size_t out = start; out < end; ++out) {
                const bool fromRight = right < end && (left == middle || goesBefore(items[right], items[left]));
                merged[out] = items[fromRight ? right++ : left++];
            }
        }
        items.swap(merged);
    }
    return Value::list(std::span<const Value>(items));
}

constexpr int any = Builtin::anyNumber;
constexpr Builtin builtins[] = {
    {"APPLY", 2, 2, apply},      {"MAPCAR", 2, any, mapcar},       {"VL-SOME", 2, any, some},
    {"VL-EVERY", 2, any, every}, {"VL-REMOVE-IF", 2, 2, removeIf}, {"VL-REMOVE-IF-NOT", 2, 2, removeIfNot},
    {"VL-SORT", 2, 2, sort},
};

} // namespace

std::span<const Builtin> applyBuiltins() { return builtins; }

} // namespace vndk::lisp
