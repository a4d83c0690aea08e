// jobs_test.cc - searches that were cut into a folder: whatever they are, and in whatever order
// their parts ran, zrl join prints what zrl run does, without the program.

#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "support/run_program.h"

namespace zarel {
namespace {

// The parts run from the last to the first one, and this twice; then nothing is left of the program
// but what is in the folder. The order of answer sets is free.
constexpr std::string_view kCommands =
    "split_all() {\n"
    "  count=$(zrl split -q jobs --parts 6 \"$@\") || return\n"
    "  for i in $(seq $((count - 1)) -1 0); do zrl part -q jobs $i || return; done\n"
    "  test $count = 0 || zrl part -q jobs 0; rm *.zrl *.csv\n"
    "}\n"
    "seen() { \"$@\" >out; echo \"status $?\" >>out; sort out; }\n";

struct JoinCase {
  std::string_view name, program;
  std::string_view search = "";     // options of zrl run and zrl split
  std::string_view answers = "";    // of zrl run and zrl join
  friend void PrintTo(const JoinCase& test, std::ostream* out) { *out << test.name; }
};

class JoinedParts : public testing::TestWithParam<JoinCase> {};

TEST_P(JoinedParts, ArePrintedAsAWholeRun) {
  const JoinCase& test = GetParam();
  const WorkFolder folder;
  folder.write("program.zrl", test.program);
  folder.write("sales.csv", "who,amount\nann,3\nbob,5\n");
  const std::string search = "program.zrl " + std::string(test.search);
  const std::string answers = " --sort " + std::string(test.answers);
  const std::string commands(kCommands);
  const Outcome run = folder.run(commands + "seen zrl run " + search + answers);
  EXPECT_NE(run.output.find("status "), std::string::npos);
  EXPECT_EQ(folder.run(commands + "split_all " + search), (Outcome{"", "", 0}));
  EXPECT_EQ(folder.run(commands + "seen zrl join jobs" + answers), run);
}

constexpr JoinCase kPrograms[] = {
    {"answer_sets", "a(1) v a(2). b(X) v c(X) :- d(X). d(1..4).\n", "--maxint=9", ""},
    {"no_facts", "a(1) v a(2). b(X) v c(X) :- d(X). d(1..4). e(x).\n", "--maxint=9 --no-facts"},
    {"difference_to_the_facts", "a(1) v a(2). d(1..4). e(x).\n", "--maxint=9 --no-facts",
     "--diff=facts"},
    {"frames",
     "ann : person. ann[age -> 30]. bob : person. person :: being.\n"
     "X[likes -> tea] v X[likes -> coffee] :- X : person.\n"},
    {"frame_spaces", "p(1)@parish v p(2)@parish. ann[age -> 3]@parish.\n"},
    {"templates", "s(a, 1). s(b, 2) v s(b, 3). m(X) :- maximum{s(*, $)}(X).\n", "maximum.zrl"},
    {"functions", "p(f(a, 1)) v p(g(\"x y\")). q(f(g(X))) v r :- p(X).\n"},
    {"namespaces",
     "#namespace(ex, \"http://example.org/a#\")\n"
     "p(ex:b) v p(ex:c). q(X) :- p(X).\n"},
    {"data", "picked(X) v left(X) :- sales(X, _).\n", "sales.csv"},
    {"rows_of_all", "p(X, Y) v q(X) :- d(X), d(Y). d(1). d(2). p(X, Y)?\n"},
    {"rows_of_some", "p(X, Y) v q(X) :- d(X), d(Y). d(1). d(2). p(X, Y)?\n", "--brave",
     "--format=table"},
    {"truth", "a v b. c :- a. c :- b. c?\n"},
    {"falsehood", "a v b. c v d. a, c?\n"},
    {"query_without_answer_sets", "a v b. c v d. :- a. :- b. p(1). p(X)?\n"},
    {"no_answer_set", "a v b. c v d. :- a, c. :- a, d. :- b.\n"},
    {"costs", "a v b v c. d v e. :~ a. [3:2] :~ d. [1:1] :~ b, e. [3:2] :~ c. [0:1]\n"},
    {"rows_of_best_ones", "a(1) v a(2) v a(3). b(X) v c :- a(X). :~ a(1). [2:1] a(X)?\n",
     "--brave"},
    {"different_ones", "a v b. c v d. e v f.\n", "", "--project --filter=a,b"},
    {"counted_ones", "a v b. c v d. e v f.\n", "", "--count"},
    {"best_one", "a v b. c v d. :~ a. [1:1] :~ c. [2:1]\n", "", "--best"},
    {"fault_of_an_integer",
     "a(1) v a(2). n(900000000). b v c.\n"
     "s(Z) :- a(2), n(X), \"\xC3\xA9\" != \"e\",\n"
     "        Y = X + X, Z = Y + X, a(1).\n"
     "t(Z) :- \"\xC3\xA9\" != \"e\", a(2), n(X), Y = X + X, Z = Y + X.\n",
     "", "-q --count"},
    {"fault_in_a_template",
     "a(1) v a(2). n(900000000).\n"
     "#template triple{p(1)}(1) { triple(Z) :- p(X), Y = X + X, Z = Y + X. }\n"
     "m(X) :- n(X), a(2).\n"
     "t(Z) :- triple{m(*)}(Z).\n",
     "", "-q --count --messages=json"},
};
INSTANTIATE_TEST_SUITE_P(Programs, JoinedParts, testing::ValuesIn(kPrograms),
                         [](const auto& test) { return std::string(test.param.name); });

// A single answer set, so that its number is that of the run.
TEST(Join, WritesEveryFormAsARunDoes) {
  const WorkFolder folder;
  folder.write("program.zrl",
               "ann : person. ann[age -> 30]. likes(ann, f(tea)) v likes(ann, coffee). a v b.\n"
               ":~ likes(ann, coffee). [2:1] :~ a. [1:2]\n");
  const std::string all =
      "all() {\n"
      "  for form in text lines table json facts diff dot svg; do\n"
      "    echo $form; zrl $@ --sort --format=$form | sed 's/\"seconds\":[^,}]*//'\n"
      "  done\n"
      "  zrl $@ -q -o csv/ -o page.html --sort --filter=likes --wrap --format text; ls csv; cat "
      "csv/*\n"
      "}\n"
      "mkdir csv; ";
  const Outcome run = folder.run(all + "all run program.zrl --graph likes");
  const Outcome split =
      folder.run(std::string(kCommands) + "touch x.csv; split_all program.zrl; rm -r csv");
  EXPECT_EQ(split, (Outcome{"", "", 0}));
  EXPECT_EQ(folder.run(all + "all join jobs --graph likes"), run);
  EXPECT_NE(run.output.find("\"kind\":\"end\""), std::string::npos);
  EXPECT_EQ(
      folder.run("zrl join -q jobs -o a.txt --report page.html; grep -q tea page.html && echo yes")
          .output,
      "yes\n");
}

}    // namespace
}    // namespace zarel
