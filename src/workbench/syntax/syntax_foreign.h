#pragma once
// syntax_foreign.h - what people write who know other languages, and slips of the pen: each is
// recognised around the refused token, and answered with what there is instead.

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "workbench/messages/message.h"
#include "workbench/syntax/syntax_statement.h"

namespace workbench {

// One idea, one code; nothing when it is not that. The first that recognises something is believed.
using Recogniser = std::optional<Message> (*)(const Statement&);

std::span<const Recogniser> first_recognisers();        // a statement without its full stop
std::span<const Recogniser> language_recognisers();     // fields, SQL, sets of values
std::span<const Recogniser> directive_recognisers();    // words behind "#"
std::span<const Recogniser> sign_recognisers();         // signs and words for other signs
std::span<const Recogniser> term_recognisers();         // arguments, numbers, arithmetic
std::span<const Recogniser> aggregate_recognisers();    // aggregates and choices
std::span<const Recogniser> clause_recognisers();       // heads, bodies, queries, directives
std::span<const Recogniser> slip_recognisers();         // brackets, commas, full stops

// The statement's answer to its refused token; nothing when nobody knows one.
std::optional<Message> foreign_syntax(const Statement& statement);

// "a - b" where a term stands; of the sign at `sign`. Also of signs that are unknown characters.
std::optional<Message> arithmetic(const Statement& statement, std::size_t sign);

// The text with the pieces, "{}" being where they go.
std::string filled(std::string_view text, std::initializer_list<std::string_view> pieces);

// What is shown of a token in a sentence.
std::string shortened(std::string_view text);

inline Fix replaced(const zarel::Place& place, std::string_view text) {
  return {Fix::Kind::kReplace, place, std::string(text)};
}
inline Fix put_behind(const Token& token, std::string_view text) {
  return {Fix::Kind::kInsertBehind, token.place, std::string(text)};
}

}    // namespace workbench
