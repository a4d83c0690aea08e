#pragma once
// term_text.h - terms and statements of an answer in the language of programs.

#include <string>
#include <string_view>

#include "workbench/answers/answer_set.h"

namespace workbench {

// Appends what the user would write. Each takes constants of the terms' name spaces as
// prefix:name, at any depth; `@space` is left out where it is "default".
void append_terms(std::string& out, const zarel::AnswerTerms& terms);
void append_term(std::string& out, const zarel::AnswerTerm& term);
void append_atom(std::string& out, const zarel::AnswerAtom& atom);
void append_class(std::string& out, const zarel::ClassStatement& statement, ItemKind kind);
void append_object(std::string& out, const zarel::AnswerObject& object);
void append_attribute(std::string& out, const zarel::AnswerAttribute& attribute);
void append_statement(std::string& out, const ObjectStatement& statement);
void append_space(std::string& out, std::string_view space);

// Appends a line for each level of the costs, if there are any, as solvers of the language do.
void append_costs(std::string& out, const AnswerSet& set);

// The text without the blanks and line ends outside of its strings.
std::string without_blanks(std::string_view text);

}    // namespace workbench
