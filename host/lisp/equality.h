// Whether two values have the same structure and content, for all built-ins that search lists.
#pragma once

#include "lisp/value.h"

namespace vndk::lisp {

class Evaluator;

/// Numbers are equal when they differ by at most `fuzz`. Never recurses; counts a step for each pair, because lists
/// that share their parts can take longer than anyone waits.
bool isEqual(Evaluator& evaluator, const Value& first, const Value& second, double fuzz = 0.0);

} // namespace vndk::lisp
