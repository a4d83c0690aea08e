#pragma once
// printer.h - the text of the rewritten program, as the solver reads it. Every append adds to the
// end of `out`; a variable number without a name ends the run (see getVariableName).

#include <ostream>
#include <string_view>

#include "base/text.h"
#include "model/clause.h"
#include "model/template_records.h"

namespace zarel {

void append_text(Text& out, const TERMT& term);
void append_text(Text& out, const ATOMT& atom);
void append_text(Text& out, const Literal& literal);      // "not " in front of a negated one
void append_text(Text& out, const CLAUSET& clause);       // without a line end
void append_text(Text& out, const FORMALPRED& formal);    // name(arity)

// The elements with the separator between them.
template <class List>
void append_list(Text& out, const List& list, std::string_view separator) {
  bool is_first = true;
  for (const auto& element : list) {
    if (!is_first) out += separator;
    is_first = false;
    append_text(out, element);
  }
}

// A conjunction's elements in order, non-negated ones first.
template <class T>
void append_list(Text& out, const TCONJUNCTION<T>& conjunction, std::string_view separator) {
  append_list(out, conjunction.positive(), separator);
  if (!conjunction.positive().empty() && !conjunction.negated().empty()) out += separator;
  append_list(out, conjunction.negated(), separator);
}

// The same on a stream.
std::ostream& operator<<(std::ostream& out, const ATOMT& atom);
std::ostream& operator<<(std::ostream& out, const CLAUSET& clause);

}    // namespace zarel
