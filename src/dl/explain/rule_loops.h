#pragma once
// rule_loops.h - which rules can leave a program without constraints without an answer set.

#include <vector>

#include "dl/explain/statement_store.h"

namespace dl {

// The rules whose heads depend on themselves by way of a negation or an aggregate; in the order of
// writing. Predicates are looked at, not instances, so there may be too many. A program without
// constraints and without clashes of strong negation has an answer set when these are left out.
std::vector<StatementNumber> rules_in_loops(const StatementStore& store);

}    // namespace dl
