#pragma once
// program_text.h - clauses and queries as lines of text.

#include <cstddef>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/line_map.h"
#include "base/text_stretch.h"
#include "model/clause.h"
#include "model/program.h"

namespace zarel {

// Every clause on a line of its own. Returns the length of the text.
std::size_t write_clauses(std::ostream& out, std::span<const CLAUSET> clauses);

// Every query of the program: its literals, "?", a line end. Returns the length of the text.
std::size_t write_queries(std::ostream& out);

// A text, and where its lines come from. An origin is that of a clause: an OriginId.
struct MappedText {
  std::string text;
  LineMap lines;
  // Where nothing stands but facts, each of one atom with at least two terms, all of them constants
  // and integers from 0; in order, and apart from each other.
  std::vector<TextStretch> plain_facts = {};

  // Adds a piece. The lines that end in it come from there.
  void append(std::string_view piece, const LineSource& source);
  // Adds the lines of a fact that is to be among the plain ones.
  void append_plain_fact(std::string_view piece, const LineSource& source);
};

// Whether a text of a program has the facts over constants and integers alone: there is nothing in
// them that a solver's language could refuse.
enum class PlainFacts : bool { kLeftOut, kWritten };

// The whole program as a solver reads it: the verbatim sections, which are `verbatim`, the include
// lines, all clauses, and the query. Verbatim text and include lines come from themselves.
MappedText program_text(std::string_view verbatim, PlainFacts facts = PlainFacts::kWritten);

// The clauses that the user's statements became, and those that template expansion added behind
// them.
std::span<const CLAUSET> written_clauses();
std::span<const CLAUSET> generated_clauses();

}    // namespace zarel
