#pragma once
// names.h - the spelling of names and strings in clingo's language, and back.
//
// Note [reserved names]
// A name of the input never begins with an underscore, so everything that does is ours:
//   _nNAME       a predicate or functor that clingo takes for a variable or a keyword (Node, not)
//   _tREST       the predicate #REST, whose first character clingo keeps for its own words
//   _sTEXT       the string TEXT in the name of a predicate; what is no letter and no digit is _XX
//                there, its code in hexadecimal
//   _h1, ...     pieces of a long body, and factors that are given in several ways
//   _some1, ...  atoms of which only named variables matter
//   _q           the answers of the query
//   _w           costs, where a level is a variable
//   _i           instances of rules, where they are counted
//   _fault       what is wrong with an integer; _fine where it is not
//   _u, _x       an atom that is never true, its place in a sum: see Note [sums that could wrap]
//   _m, _r, _o   constants: the bound of results, of ranges, "check overflow"
// Variables of ours are _V1, ..., and a prime in a name is ours, too: see Note [folded atoms].

#include <string>
#include <string_view>

namespace dl {

// Whether a name that begins with the character is a constant.
constexpr bool is_lower(char c) {
  return c >= 'a' && c <= 'z';
}

// Whether the character may stand inside a name.
constexpr bool is_word(char c) {
  return is_lower(c) || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// Appends the name as clingo's identifier. See Note [reserved names].
void append_clingo_name(std::string& out, std::string_view name);

// Appends a quoted string, given with its quotes, with backslashes and line ends escaped for
// clingo.
void append_clingo_string(std::string& out, std::string_view quoted);

// Appends a constant, string or integer, given as clingo's term, as part of a predicate's name (see
// the Note [folded atoms]).
void append_name_part(std::string& out, std::string_view term);

// Appends an atom or term that clingo printed as the input would spell it; it may hold strings and
// nested names.
void append_input_spelling(std::string& out, std::string_view printed);

// Whether append_input_spelling would change anything: most atoms are copied as they are.
bool needs_respelling(std::string_view printed);

}    // namespace dl
