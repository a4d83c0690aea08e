#pragma once
// part_arguments.h - what clingo is asked for, read from its command line and changed there for the
// parts of a search. A search knows its aim from there alone, so that the two cannot differ.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace dl {

struct SearchAim {
  bool has_costs = false;    // best answer sets are looked for
  bool has_query = false;    // what holds in all, or with is_brave in some, and not the sets
  bool is_brave = false;
  std::uint64_t limit = 0;    // of answer sets; 0: none

  // Whether one set found is as good as another, and goes out at once.
  bool enumerates() const { return !has_costs && !has_query; }
};

SearchAim aim_of(const std::vector<std::string>& arguments);

// For a part: clasp's side of clingo, one thread, nothing but answers.
std::vector<std::string> part_arguments(std::vector<std::string> arguments);

// Where answer sets are enumerated: at most so many.
void limit_models(std::vector<std::string>& arguments, std::uint64_t most);

// Costs are looked for that are no higher than this at the highest level: best ones of the part
// that cannot be best ones of the whole need not be found.
//
// Note [bounds of the highest level]
// clasp takes a bound for each level. But where its preprocessing decides everything, 3.3.5
// compares with it level by level, and loses a best answer set that is worse at a lower level. So a
// bound is for the highest level alone.
void bound_costs(std::vector<std::string>& arguments, std::int64_t highest);

void set_configuration(std::vector<std::string>& arguments, std::string_view name);

}    // namespace dl
