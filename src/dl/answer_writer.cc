#include "dl/answer_writer.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <utility>

#include "dl/failure.h"
#include "dl/folding.h"
#include "dl/model_reader.h"
#include "dl/names.h"

namespace dl {
namespace {

std::int64_t leading_number(std::string_view text, std::size_t& length) {
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  length = error == std::errc() ? static_cast<std::size_t>(end - text.data()) : 0;
  return value;
}

[[noreturn]] void fail_costs() {
  throw Failure{{zarel::Code::kCostMismatch, {}, "clingo's costs do not match the levels"}};
}

// _w(level,weight,instance), see Note [levels of variables]. What is no integer costs nothing, as
// in clingo.
void add_cost(std::string_view atom, Costs& costs) {
  atom.remove_prefix(std::string_view("_w(").size());
  std::size_t length = 0;
  const std::int64_t level = leading_number(atom, length);
  if (length == 0 || atom[length] != ',') return;
  atom.remove_prefix(length + 1);
  const std::int64_t weight = leading_number(atom, length);
  if (length == 0) return;
  std::int64_t& cost = costs[level];
  if (cost > std::numeric_limits<std::int64_t>::max() - weight)
    throw Failure{{zarel::Code::kCostOverflow, {}, "costs leave 64 bits"}};
  cost += weight;
}

// Returns whether the atom is one of ours and says something to us alone.
bool read_helper(std::string_view atom, AnswerSet& answer) {
  if (atom.starts_with("_w(")) {
    add_cost(atom, answer.costs);
    return true;
  }
  const std::optional<std::size_t> fault = numbered_helper(atom, "_fault(");
  if (!fault) return false;
  answer.fault = fault;
  return true;
}

void append_atom(std::string_view atom, AnswerSet& answer) {
  if (std::exchange(answer.has_atoms, true)) answer.text += ", ";
  append_unfolded(answer.text, atom);
}

// The usual line needs no look inside its atoms: blanks become commas.
bool append_plain(std::string_view line, AnswerSet& answer) {
  if (line.find('"') != std::string_view::npos || needs_respelling(line)) return false;
  while (!line.empty()) {
    const std::size_t blank = std::min(line.find(' '), line.size());
    append_atom(line.substr(0, blank), answer);
    line.remove_prefix(std::min(blank + 1, line.size()));
  }
  return true;
}

}    // namespace

std::optional<std::size_t> numbered_helper(std::string_view atom, std::string_view name) {
  if (!atom.starts_with(name)) return std::nullopt;
  std::size_t length = 0;
  return static_cast<std::size_t>(leading_number(atom.substr(name.size()), length));
}

void read_answer_set(std::string_view line, const ProgramParts& parts, AnswerSet& answer) {
  answer.text.clear();
  answer.text.reserve(line.size() + line.size() / 8);    // a comma for each atom
  begin_answer_set(answer);
  add_atoms(line, parts, answer);
  answer.text += '}';
}

void begin_answer_set(AnswerSet& answer) {
  answer.text += '{';
  answer.has_atoms = false;
  answer.costs.clear();
  answer.fault.reset();
}

void add_atoms(std::string_view piece, const ProgramParts& parts, AnswerSet& answer) {
  if (parts.facts.empty() && append_plain(piece, answer)) return;
  std::string spelled;
  each_atom(piece, [&](std::string_view atom) {
    if (atom.front() == '_' && read_helper(atom, answer)) return;
    if (!parts.facts.empty() && parts.facts.contains(std::string(atom))) return;
    if (!needs_respelling(atom)) return append_atom(atom, answer);
    spelled.clear();
    append_input_spelling(spelled, atom);
    append_atom(spelled, answer);
  });
}

Costs read_costs(std::string_view line, const ProgramParts& parts) {
  line.remove_prefix(std::string_view("Optimization:").size());
  Costs costs;
  std::size_t level = 0;
  while (!line.empty()) {
    line.remove_prefix(1);
    std::size_t length = 0;
    const std::int64_t cost = leading_number(line, length);
    if (length == 0 || level == parts.levels.size()) fail_costs();
    costs[parts.levels[level++]] = cost;
    line.remove_prefix(length);
  }
  if (level != parts.levels.size()) fail_costs();
  return costs;
}

void append_best_model(std::string& out, const AnswerSet& answer, const Costs& costs) {
  ((out += "Best model: ") += answer.text) += "\nCost ([Weight:Level]): <[";
  bool is_first = true;
  for (const auto& [level, cost] : costs) {
    if (!is_first) out += "\"[";
    ((out += std::to_string(cost)) += ':') += std::to_string(level);
    out += is_first ? "]>\n" : "]\"\n";
    is_first = false;
  }
  if (is_first) out += "0:1]>\n";
}

}    // namespace dl
