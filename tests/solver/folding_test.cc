// folding_test.cc - generic atoms in both forms: what clingo is given, and that answers do not
// tell.
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "run_dl.h"

namespace dl_test {
namespace {

struct Form {
  std::string_view name, program, translation;
  friend void PrintTo(const Form& test, std::ostream* stream) { *stream << test.name; }
};
class Forms : public testing::TestWithParam<Form> {};
TEST_P(Forms, DependOnAllUsesOfThePredicate) {
  const std::string all = run(GetParam().program, "-translate").out;
  EXPECT_EQ(all.substr(0, all.find("\n#") + 1), GetParam().translation);
}
constexpr Form kForms[] = {
    {"constants", "a_2(p,d,X) :- -a_1(q,d), a_3( r, d, X, \"a,'b\"), not a_12(s,e,f(X)).",
     "a_2'p'd(X):--a_1'q'd,a_3'r'd(X,\"a,'b\"),not a_12's'e(f(X)).\n"},
    {"reserved_words", "a_1(not,v).", "a_1'_nnot'v.\n"},
    {"variable_in_front", "a_2(p,d,1). a_1(p,d). a_1(q,d) :- a_2(P,d,1).",
     "a_2(p,d,1).\na_1'p'd.\na_1'q'd:-a_2(P,d,1).\n"},
    {"variable_behind", "a_1(p,d) :- a_1(p,S).", "a_1(p,d):-a_1(p,S).\n"},
    {"anonymous", "a_1(p,d) :- a_1(_,d).", "a_1(p,d):-a_1(_,d).\n"},
    {"integer", "a_1(p,d). a_1(1,d).", "a_1(p,d).\na_1(1,d).\n"},
    {"string", "a_1(p,d). a_1(p,\"d\").", "a_1(p,d).\na_1(p,\"d\").\n"},
    {"compound", "a_1(p,d). a_1(p,d(1)).", "a_1(p,d).\na_1(p,d(1)).\n"},
    {"too_few_arguments", "a_1(p,d). a_1(p).", "a_1(p,d).\na_1(p).\n"},
    {"no_arguments", "a_1(p,d). a_1.", "a_1(p,d).\na_1.\n"},
    {"hidden_by_a_comment", "a_1(p,d). a_1% it\n(P,d) :- a_1(P,d).",
     "a_1(p,d).\na_1(P,d):-a_1(P,d).\n"},
    {"in_an_aggregate", "a_1(p,d) :- 1 < #count{X:a_2(X,d,X)}. a_2(p,d,1).",
     "a_1'p'd:-1<#count{X:a_2(X,d,X)}.\na_2(p,d,1).\n"},
    {"terms", "p(a_2(x,y,1)). a_2(p,d,a_2(x,y,1)).", "p(a_2(x,y,1)).\na_2'p'd(a_2(x,y,1)).\n"},
    {"other_predicates", "a_x(p,d). a_(p,d). a_1x(p,d). ba_1(X,Y) :- a_1(p,d), a_x(X,Y).",
     "a_x(p,d).\na_(p,d).\na_1x(p,d).\nba_1(X,Y):-a_1'p'd,a_x(X,Y).\n"},
};
INSTANTIATE_TEST_SUITE_P(Cases, Forms, testing::ValuesIn(kForms), case_name);

// Every program is solved twice: as it is, and with uses that keep all its predicates unfolded.
class BothForms : public testing::TestWithParam<Case> {};
TEST_P(BothForms, GiveTheSameAnswers) {
  const std::string program(GetParam().program);
  const std::string options(GetParam().options);
  const std::string kept = program + "\n% a_1 a_2 a_3";
  EXPECT_NE(run(program, "-translate").out, run(kept, "-translate").out);
  EXPECT_EQ(sorted(run(program, options).out), sorted(GetParam().out));
  EXPECT_EQ(sorted(run(kept, options).out), sorted(GetParam().out));
}
constexpr Case kCases[] = {
    {"constants_meet_at_different_places", "a_1(x_y,z) v a_1(x,y_z). -a_1(x,yz). a_2(x,y,z).",
     "{-a_1(x,yz), a_1(x_y,z), a_2(x,y,z)}\n{-a_1(x,yz), a_1(x,y_z), a_2(x,y,z)}\n"},
    {"arities", "a_1(p,d). a_1(p,d,1) :- a_1(p,d). -a_1(p,d,1,2).",
     "{a_1(p,d), a_1(p,d,1), -a_1(p,d,1,2)}\n"},
    {"spellings", "a_2(not,v,\"a(',b \\\"). a_2(p,d,not) :- a_2(not,v,X), not a_2(p,e,X).",
     "{a_2(not,v,\"a(',b \\\"), a_2(p,d,not)}\n"},
    {"strong_negation", "a_1(p,d). -a_1(p,d) :- a_1(p,d).", ""},
    {"disjunction", "a_2(p,d,1) v -a_2(p,d,2). a_2(q,d,X) :- a_2(p,d,X).",
     "{a_2(p,d,1), a_2(q,d,1)}\n{-a_2(p,d,2)}\n"},
    {"aggregate",
     "a_2(p,d,1). a_2(p,d,2). -a_2(p,d,3). a_2(n,d,N) :- N = #count{X:a_2(p,d,X)}, "
     "3 <= #sum{X:-a_2(p,d,X)}.",
     "{a_2(p,d,1), a_2(p,d,2), -a_2(p,d,3), a_2(n,d,2)}\n"},
    {"integers", "#maxint = 2. a_2(p,d,X) :- #int(X). a_2(q,d,Z) :- a_2(p,d,X), Z = X + 1.",
     "{a_2(p,d,0), a_2(p,d,1), a_2(p,d,2), a_2(q,d,1), a_2(q,d,2)}\n"},
    {"weak_constraint", "a_1(p,d) v a_1(q,d). a_2(w,d,3). :~ a_1(p,d), a_2(w,d,W). [W:2]",
     "Best model: {a_1(q,d), a_2(w,d,3)}\nCost ([Weight:Level]): <[0:2]>\n"},
    {"variable_level", "a_3(w,d,3,4). :~ a_3(w,d,W,L). [W:L]",
     "Best model: {a_3(w,d,3,4)}\nCost ([Weight:Level]): <[3:4]>\n"},
    {"query", "a_2(p,d,1) v a_2(p,d,2). a_2(p,d,3). a_2(p,d,X)?", "3\n"},
    {"brave_query", "a_2(p,d,1) v a_2(p,d,2). a_2(p,d,3). a_2(p,d,X)?", "1\n2\n3\n", "-brave"},
    {"ground_query", "a_1(p,d). -a_1(q,d). a_1(p,d), not a_1(q,d), -a_1(q,d)?", "true\n"},
    {"filter", "a_1(p,d). -a_1(q,d). a_2(p,d,1). b.", "{a_1(p,d), -a_1(q,d)}\n", "-filter=a_1"},
    {"positive_filter", "a_2(p,d,1). -a_2(q,d,1). a_1(p,d).", "{a_2(p,d,1)}\n", "-pfilter=a_2"},
    {"no_facts", "a_1(p,d). -a_2(p,d,1). a_2(q,d,X) :- -a_2(p,d,X).", "{a_2(q,d,1)}\n", "-nofacts"},
};
INSTANTIATE_TEST_SUITE_P(Cases, BothForms, testing::ValuesIn(kCases), case_name);

TEST(Folding, LooksAtALargeProgramToItsEnd) {
  std::string program;
  for (int i = 0; i < 20'000; ++i) program += "a_2(p,d," + std::to_string(i) + ").\n";
  EXPECT_EQ(run(program + "a_1(P,d) :- a_2(P,d,7).", "-pfilter=a_1").out, "{a_1(p,d)}\n");
}

TEST(Folding, ReachesThePiecesOfALongBody) {
  std::string body = "a_2(p,d,0)";
  for (int i = 1; i < 300; ++i) body += ",a_2(p,d," + std::to_string(i) + ")";
  const std::string all = run("a_1(q,d) :- " + body + ".", "-translate").out;
  EXPECT_EQ(all.substr(0, 20), "_h1:-a_2'p'd(0),a_2'");
  EXPECT_NE(all.find("\na_1'q'd:-_h37,a_2'p'd(296),"), std::string::npos);
}

// What another file says is not known when the first is translated.
TEST(Folding, IsForOneFile) {
  const Directory directory;
  directory.write("p", "a_2(p,d,1). b(P) :- a_2(P,d,1).");
  directory.write("q", "a_2(q,d,1).");
  directory.write("r", "a_2(q,d,1).\n#include <p>\n");
  const std::string both = "{b(p), b(q), a_2(p,d,1), a_2(q,d,1)}\n";
  EXPECT_EQ(sorted(directory.run("p q").out), sorted(both));
  EXPECT_EQ(sorted(directory.run("q p").out), sorted(both));
  EXPECT_EQ(sorted(directory.run("r").out), sorted(both));
}

}    // namespace
}    // namespace dl_test
