// searches_test.cc - one answer set of a program, and what a search that ends early may say of it.
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <string_view>

#include "dl/explain/single_search.h"
#include "dl/failure.h"
#include "dl/interruption.h"
#include "support/run_program.h"

namespace dl_test {
namespace {

using zarel::WorkFolder;

std::string shown(const dl::FoundAnswer& found) {
  static constexpr std::string_view kOutcomes[] = {"found", "unproven", "none", "cut"};
  std::string text(kOutcomes[static_cast<std::size_t>(found.outcome)]);
  if (!found.text.empty()) (text += ' ') += found.text;
  for (const auto& [level, cost] : found.costs) {
    (((text += ' ') += std::to_string(cost)) += '@') += std::to_string(level);
  }
  return text;
}

// The outcome, the answer set and its costs, or the message.
std::string search(std::string_view program, std::uint64_t number = 1,
                   const dl::Options& options = {}) {
  const dl::Source source{"p", program};
  try {
    return shown(dl::search_one(dl::survey_texts({&source, 1}), options, number));
  } catch (const dl::Failure& failure) {
    return failure.diagnostic.text;
  }
}

struct SearchCase {
  std::string_view name, program, found;
  std::uint64_t number = 1;
  friend void PrintTo(const SearchCase& test, std::ostream* stream) { *stream << test.name; }
};
class Searches : public testing::TestWithParam<SearchCase> {};

TEST_P(Searches, GiveOneAnswerSet) {
  EXPECT_EQ(search(GetParam().program, GetParam().number), GetParam().found);
}

constexpr SearchCase kCases[] = {
    {"the_only_one", "a.", "found {a}"},
    {"the_empty_one", ":- a.", "found {}"},
    {"none", "a. :- a.", "none"},
    {"the_last_of_three", "a v b v c. :~ d.", "found {c} 0@1", 3},
    {"one_behind_the_last", "a v b. ", "none", 3},
    {"of_best_ones_alone", "a v b v c. :~ b. [1:1]", "none", 3},
    {"best", "a v b. :~ a. [2:1] :~ b. [3:1] :~ c. [1:4]", "found {a} 0@4 2@1"},
    {"variable_levels", "p(3,2). p(4,1). :~ p(W,L). [W:L]", "found {p(3,2), p(4,1)} 3@2 4@1"},
    {"query_left_out", "p(1). q(X) :- p(X). :~ q(1). p(2), not -r(_,1)?", "found {p(1), q(1)} 1@1"},
    {"query_with_a_mistake", "p(1). not p(X)?",
     "unsafe rule: no positive literal of the body binds the variable X"},
    {"second_query", "p(1). p(1)? p(2)?", "a second query; the first is in p, line 1"},
    {"unfolded", R"(a_3(r,"x y",1,"b
c"). a_2(X,Y) :- a_3(r,X,Y,_). a_3(X,Y,1) :- a_2(Y,X).)",
     "found {a_2(\"x y\",1), a_3(1,\"x y\",1), a_3(r,\"x y\",1,\"b\nc\")}"},
    {"integer_beyond_32_bits", "p(2147483647). q(Y) :- p(X), Y = X + X.",
     "an integer leaves 32 bits; #maxint or -N= bounds it"},
};
INSTANTIATE_TEST_SUITE_P(Cases, Searches, testing::ValuesIn(kCases),
                         [](const auto& test) { return std::string(test.param.name); });

// In a process of its own: an interruption lasts. The solver has to be asked to end, and then says
// what it is told to.
void search_until_cut(std::string_view last_words) {
  std::string said;
  {
    const WorkFolder folder;
    folder.write_script("solver", "trap 'printf \"" + std::string(last_words) +
                                      "\"; exit 1' TERM\ncat > /dev/null\n"
                                      "while :; do sleep 0.01; done\n");
    dl::InterruptionPlan plan;
    plan.seconds = 0.3;
    dl::watch_interruptions(plan);
    dl::Options options;
    options.clingo = folder.path() / "solver";
    said = search(":~ a. a.", 1, options);
    (said += "; ") += search("a.");
  }
  std::cerr << said << '\n';
  std::exit(0);
}

struct CutCase {
  std::string_view name, last_words, found;
  friend void PrintTo(const CutCase& test, std::ostream* stream) { *stream << test.name; }
};
class CutSearches : public testing::TestWithParam<CutCase> {};

TEST_P(CutSearches, NeverSayMoreThanIsKnown) {
  std::string expected(GetParam().found);
  EXPECT_EXIT(search_until_cut(GetParam().last_words), testing::ExitedWithCode(0),
              "^" + expected + "; cut\n");
}

constexpr CutCase kCuts[] = {
    {"nothing_known", "UNKNOWN\\n", "cut"},
    {"best_so_far", "a\\nOptimization: 1\\nSATISFIABLE\\n", "unproven .a. 1@1"},
    {"half_an_answer_set", "Optimization: 1\\na b c", "cut"},
    {"best", "a\\nOptimization: 1\\nOPTIMUM FOUND\\n", "found .a. 1@1"},
    {"says_nothing", "", "cut"},
};
INSTANTIATE_TEST_SUITE_P(Cases, CutSearches, testing::ValuesIn(kCuts),
                         [](const auto& test) { return std::string(test.param.name); });

}    // namespace
}    // namespace dl_test
