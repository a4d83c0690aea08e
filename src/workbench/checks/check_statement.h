#pragma once
// check_statement.h - what is seldom meant in a statement by itself.

#include "workbench/checks/check_context.h"

namespace workbench {

// Tells the variables of a clause that occur once, where "_" could stand.
void check_single_variables(const zarel::WrittenStatement& clause, CheckContext& context);

// Tells a weight that loses its fraction.
void check_weight(const zarel::WrittenStatement& clause, CheckContext& context);

// Tells variables of a query that its answers leave out.
void check_query(const zarel::WrittenStatement& query, CheckContext& context);

}    // namespace workbench
