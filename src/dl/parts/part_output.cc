#include "dl/parts/part_output.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "dl/clingo_run.h"

namespace dl {

std::optional<PartCosts> read_part_costs(std::string_view line) {
  constexpr std::string_view kBegin = "Optimization:";
  if (!line.starts_with(kBegin)) return std::nullopt;
  line.remove_prefix(kBegin.size());
  PartCosts costs;
  while (line.starts_with(' ')) {
    line.remove_prefix(1);
    if (line.empty()) break;
    std::int64_t cost = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), cost);
    if (error != std::errc()) return std::nullopt;
    costs.push_back(cost);
    line.remove_prefix(static_cast<std::size_t>(end - line.data()));
  }
  if (!line.empty() || costs.empty()) return std::nullopt;
  return costs;
}

void PartOutput::read(std::string_view piece) {
  while (!piece.empty()) {
    const std::size_t end = piece.find('\n');
    if (end == std::string_view::npos) {
      rest_ += piece;
      return;
    }
    if (rest_.empty()) {
      read_line(piece.substr(0, end));
    } else {
      rest_ += piece.substr(0, end);
      read_line(std::exchange(rest_, {}));
    }
    piece.remove_prefix(end + 1);
  }
}

// Costs come in front of the answer sets that have them, and of better ones that are not printed.
void PartOutput::read_line(std::string_view line) {
  if (status_ != LineKind::kOther) return;    // figures, with empty lines, which are no answers
  switch (const LineKind kind = kind_of_line(line)) {
    case LineKind::kAnswerSet:
      if (aim_.has_query) {
        consequences = line;
      } else {
        (sets += line) += '\n';
        ++count;
      }
      return;
    case LineKind::kCosts: {
      const std::optional<PartCosts> found = read_part_costs(line);
      if (!found || found == costs) return;
      costs = found;
      sets.clear();
      count = 0;
      consequences.reset();
      return;
    }
    case LineKind::kOther:
      return;
    case LineKind::kOptimumFound:
    case LineKind::kSatisfiable:
    case LineKind::kUnsatisfiable:
    case LineKind::kUnknown:
      status_ = kind;
  }
}

bool PartOutput::is_complete(const ProcessEnd& end) const {
  if (end.signalled || !rest_.empty()) return false;
  if (end.code == kNoneExists) return status_ == LineKind::kUnsatisfiable && !has_found();
  const bool has_result =
      status_ == (aim_.has_costs ? LineKind::kOptimumFound : LineKind::kSatisfiable);
  if (end.code == kAllFound) return has_result && has_found();
  return end.code == kSomeFound && aim_.limit != 0 && count >= aim_.limit && has_found();
}

void PartOutput::sort_sets() {
  std::vector<std::string> lines;
  for (std::string_view rest(sets); !rest.empty();) {
    const std::size_t end = rest.find('\n');
    lines.emplace_back(rest.substr(0, end + 1));
    rest.remove_prefix(end + 1);
  }
  std::ranges::sort(lines);
  sets.clear();
  for (const std::string& line : lines) sets += line;
}

std::string costs_text(const PartCosts& costs) {
  std::string text("Optimization:");
  for (const std::int64_t cost : costs) (text += ' ') += std::to_string(cost);
  return text += '\n';
}

std::string answers_text(const PartOutput& output) {
  if (!output.has_found()) return {};
  std::string text = output.costs ? costs_text(*output.costs) : std::string();
  return output.consequences ? (text += *output.consequences) += '\n' : text += output.sets;
}

std::string_view status_text(const SearchAim& aim, bool has_found) {
  if (!has_found) return "UNSATISFIABLE\n";
  return aim.has_costs ? "OPTIMUM FOUND\n" : "SATISFIABLE\n";
}

bool are_better(const std::optional<PartCosts>& costs, const std::optional<PartCosts>& others) {
  return costs && (!others || *costs < *others);
}

void Consequences::add(std::string_view line) {
  const bool is_first = !std::exchange(has_any_, true);
  if (is_brave_ || is_first) {
    each_atom(line, [this](std::string_view atom) {
      if (known_.emplace(atom).second) atoms_.emplace_back(atom);
    });
    return;
  }
  std::unordered_set<std::string> here;
  each_atom(line, [&here](std::string_view atom) { here.emplace(atom); });
  std::erase_if(atoms_, [&here](const std::string& atom) { return !here.contains(atom); });
}

std::optional<std::string> Consequences::line() const {
  if (!has_any_) return std::nullopt;
  std::string line;
  for (const std::string& atom : atoms_) (line += line.empty() ? "" : " ") += atom;
  return line;
}

}    // namespace dl
