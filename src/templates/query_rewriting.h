#pragma once
// query_rewriting.h - queries that the solver could not take as they stand.

#include "model/clause.h"

namespace zarel {

// A query with function terms becomes the one atom aux___query over its variables, and a rule that
// derives it from the query's literals is added to CLAUSES. Only atoms with a plain variable among
// their arguments give variables.
void rewriteQuery(Body& query);

}    // namespace zarel
