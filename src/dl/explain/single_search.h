#pragma once
// single_search.h - one answer set of a program, asked of clingo for an explanation.

#include <cstdint>
#include <string>
#include <vector>

#include "dl/answer_writer.h"
#include "dl/options.h"
#include "dl/translate.h"

namespace dl {

enum class SearchOutcome : std::uint8_t {
  kFound,       // the answer set asked for; a best one where there are weak constraints
  kUnproven,    // the best one that the time allowed
  kNone,        // proven: there is no such answer set
  kCut          // nothing can be said: the time was over
};

struct FoundAnswer {
  SearchOutcome outcome = SearchOutcome::kCut;
  std::string text;    // "{a, b}", as dl prints it
  Costs costs;         // by level; none without weak constraints
};

// Solves the program and gives its number-th answer set, from 1, of those that are best. All of its
// atoms are shown, and its query, if it has one, is left out. Of the options it looks at the bound,
// the seed, clingo and the threads. An interruption ends the search. Throws Failure for a program
// with a mistake and where the search failed.
FoundAnswer search_one(Program program, const Options& options, std::uint64_t number = 1);

// Those that clingo prints.
struct FoundAnswers {
  SearchOutcome outcome = SearchOutcome::kCut;    // of kUnproven there is one
  std::vector<std::string> texts;
  Costs costs;    // of each, by level
};

// Solves a program that was made for an explanation. All options hold; what has to be the same as in
// the user's run is in own_options().
FoundAnswers search_all(Program program, const Options& options);

// The bound, the seed, clingo and the threads; queries are left out.
Options own_options(const Options& options);

}    // namespace dl
