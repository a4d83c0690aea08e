#pragma once
// function_terms.h - function terms, replaced by variables that builtin atoms tie to their functors
// and arguments: p(f(X)) becomes p(F_f_0) with #function_builtin(F_f_0,f,X) in the body. What
// stands for what is kept, for the rule being read, in FTermTable.

#include <span>
#include <string>
#include <string_view>

#include "model/clause.h"
#include "model/function_term_table.h"

namespace zarel {

// The predicate of the builtin atoms.
inline constexpr std::string_view kFunctionBuiltin = "#function_builtin";

// Whether a function term was made since the last rewriteFunctions.
bool hasFunctionTerm();

// A placeholder for functor(arguments): a fresh variable F_<functor>_<n>, n counting the function
// terms of the rule.
TERMT newFTERM(NameId functor, std::span<const TERMT> arguments);

// The builtin atom of a placeholder: its variable, its functor as a constant, its arguments as they
// are.
ATOMT buildFunctionAtom(const TERMT& placeholder);

// Every placeholder becomes its variable, and its builtin atom is added to the body, inner ones
// after outer ones.
void rewriteFunctionsInHead(Head& head, Body& body);
void rewriteFunctionsInBody(Body& body);

// Both, for a whole rule (null: no head); then the table is emptied: names start at 0 again in the
// next rule.
void rewriteFunctions(Head* head, Body& body);

// The function term as it is written, arguments separated by commas without blanks.
std::string fromFunctionToString(const TERMT& placeholder);

}    // namespace zarel
