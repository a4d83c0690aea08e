#pragma once
// answer_writer.h - answer sets and their costs as users read them.

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "dl/program_parts.h"

namespace dl {

// Costs by level, the highest first.
using Costs = std::map<std::int64_t, std::int64_t, std::greater<>>;

// An answer set as text, and what its hidden atoms say.
struct AnswerSet {
  std::string text;                    // "{a, b}"
  bool has_atoms = false;              // in the text
  Costs costs;                         // see Note [levels of variables]
  std::optional<std::size_t> fault;    // index of what is wrong with its integers
};

// Reads one line of clingo into `answer`, whose memory is used again.
void read_answer_set(std::string_view line, const ProgramParts& parts, AnswerSet& answer);

// The same in pieces that end between atoms: the text grows by "{", and by the atoms of each piece.
void begin_answer_set(AnswerSet& answer);
void add_atoms(std::string_view piece, const ProgramParts& parts, AnswerSet& answer);

// Reads clingo's line of costs, which lists them by level, the highest first; throws Failure if
// there are not as many as levels.
Costs read_costs(std::string_view line, const ProgramParts& parts);

// "Best model: {..}" and the line of its costs; each level after the highest on a line of its own,
// as a quoted string, which readers that know one level take for a term.
void append_best_model(std::string& out, const AnswerSet& answer, const Costs& costs);

// The argument of a hidden atom of ours with one number, such as _fault(3).
std::optional<std::size_t> numbered_helper(std::string_view atom, std::string_view name);

}    // namespace dl
