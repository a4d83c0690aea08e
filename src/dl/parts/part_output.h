#pragma once
// part_output.h - what the parts of a search print, and what that is of the whole.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "dl/child_process.h"
#include "dl/model_reader.h"
#include "dl/parts/part_arguments.h"

namespace dl {

// As clingo prints them: by level, the highest first.
using PartCosts = std::vector<std::int64_t>;

// Reads "Optimization: 4 2"; nothing where that is not what the line is.
std::optional<PartCosts> read_part_costs(std::string_view line);

class PartOutput {
 public:
  explicit PartOutput(const SearchAim& aim) : aim_(aim) {}

  // Takes the next piece of clingo's output.
  void read(std::string_view piece);
  // Returns whether the part is finished: only what the exit status, the final line and the whole
  // output agree on is. A limit of answer sets ends it, too.
  bool is_complete(const ProcessEnd& end) const;

  // Answer sets, a line each, of which none is worse than another: while they are enumerated, those
  // that came and were not taken away. Of a query with weak constraints: the consequences.
  std::string sets;
  std::uint64_t count = 0;    // of those that came and are none worse
  std::optional<PartCosts> costs;
  std::optional<std::string> consequences;    // the last line of them

  bool has_found() const { return count != 0 || consequences.has_value(); }
  // The order in which clasp finds best answer sets depends on the bound that it was given.
  void sort_sets();

 private:
  void read_line(std::string_view line);

  SearchAim aim_;
  LineKind status_ = LineKind::kOther;
  std::string rest_;    // of a line that is not whole
};

// The lines as clingo prints them: costs, answer sets or consequences; the final one.
std::string costs_text(const PartCosts& costs);
std::string answers_text(const PartOutput& output);
std::string_view status_text(const SearchAim& aim, bool has_found);

// Whether the costs are known to be better than the others.
bool are_better(const std::optional<PartCosts>& costs, const std::optional<PartCosts>& others);

// What holds in some, or in all answer sets of several parts.
class Consequences {
 public:
  explicit Consequences(bool is_brave) : is_brave_(is_brave) {}
  void add(std::string_view line);    // of a part that has an answer set
  // Nothing when no part has one. Atoms stand in the order in which they first came.
  std::optional<std::string> line() const;

 private:
  bool is_brave_;
  bool has_any_ = false;
  std::vector<std::string> atoms_;
  std::unordered_set<std::string> known_;
};

}    // namespace dl
