#pragma once
// found.h - what a search has found, in numbers and in words.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace workbench {

struct Found {
  std::uint64_t answer_sets = 0;
  std::optional<std::uint64_t> different;    // of these in what is shown, where that is asked for
  std::vector<std::pair<std::string, std::string>> costs;    // weight and level of the last one
  std::uint64_t rows = 0;                                    // of a query
  std::optional<bool> truth;                                 // of a query without variables
};

// What was asked, as far as the words depend on it.
struct Asked {
  bool has_query = false;
  bool is_ground = false;    // the query, which then is true or false
  bool is_brave = false;
  bool has_weak_constraints = false;
};

enum class SearchEnd : std::uint8_t {
  kAll,       // there is nothing else
  kEnough,    // there may be more than was asked for
  kCut,       // by a limit or an interrupt
};

struct Judgement {
  std::optional<bool> holds = {};    // a query without variables
  SearchEnd end = SearchEnd::kAll;
  bool is_unproven = false;          // the best answer set so far may not be optimal
  bool has_no_answer_set = false;    // known for a query alone
};

// "cost 3 at level 2, 1 at level 1".
std::string cost_in_words(const std::vector<std::pair<std::string, std::string>>& costs);

// How many answers are counted: rows, answer sets, or those that are different.
std::uint64_t number_of_answers(const Found& found, const Asked& asked);

// One line that says what was found and whether it is all.
std::string in_words(const Found& found, const Asked& asked, const Judgement& judgement);

}    // namespace workbench
