// translation_test.cc - the exact text for clingo, where it matters; and generic atoms in both
// forms: what clingo is given, and that answers do not tell.
#include "run_dl.h"

namespace dl_test {
namespace {

std::string translation(std::string_view program) {
  return run(program, "-translate").output;
}

constexpr Case kTranslations[] = {
    {"keeps_the_order_of_a_rule", "a(X) v -b :- c(X), not d(X).",
     "a(X);-b:-c(X),not d(X).\n#show.\n#show a/1.\n#show -b/0.\n", "-translate"},
    {"puts_assignments_after_what_they_need", "a(Z) :- Z == Y, #function_builtin(Y,f,X), p(X).",
     "a(Z):-p(X),Y=f(X),Z=Y.\n#const _m=2147483647.\n#const _r=-1.\n#const _o=1.\n#show.\n"
     "#show a/1.\n",
     "-translate"},
    {"watches_sums_for_overflow", "a(Z) :- p(X), Z = X + 1.",
     "_overflow(0):-p(X),1=_o,X<=2147483647,X>2147483647-1.\na(Z):-p(X),Z=X+1,X<=_m-1.\n"
     "#const _m=2147483647.\n#const _r=-1.\n#const _o=1.\n#show.\n#show _overflow/1.\n"
     "#show a/1.\n",
     "-translate"},
    {"shows_what_the_filters_name", "a. -a. b. -b. c.",
     "a.\n-a.\nb.\n-b.\nc.\n#show.\n#show a/0.\n#show -a/0.\n#show b/0.\n",
     "-translate -filter=a -pfilter=b,none"},
};
INSTANTIATE_TEST_SUITE_P(Translations, OrderedPrograms, testing::ValuesIn(kTranslations),
                         case_name);

TEST(Translation, CutsALongBodyIntoPiecesThatCarryWhatIsNeeded) {
  const std::string all = translation("a(X) :- p(X,Y0)" + numbered(299, ", p(YN,YM)") + ".");
  EXPECT_EQ(all.substr(0, 9), "_h1(X,Y7)");
  EXPECT_EQ(all.substr(all.find('\n') + 1, 23), "_h2(X,Y15):-_h1(X,Y7),p");
  EXPECT_NE(all.find("\na(X):-_h37(X,Y295),p(Y295,Y296),"), std::string::npos);
}

// Each p stands before its q, so that no piece carries a variable on.
TEST(Translation, OfALongBodyOrdersByVariables) {
  const std::string body = numbered(300, "p(XN), ") + numbered(300, "q(XN), ");
  EXPECT_EQ(translation("a :- " + body + "b.").substr(0, 31), "_h1:-p(X0),q(X0),p(X1),q(X1),p(");
}

TEST(Translation, LooksOnceAtALiteralForAllUsesOfAVariable) {
  const auto size_with = [](int count) {    // minutes, were it once for each use
    return translation("a :- p(X), #function_builtin(F,f" + numbered(count, ",X") + ").").size();
  };
  EXPECT_EQ(size_with(300'000), size_with(1) + 599'998);
}

TEST(Translation, WatchesALongBodyOfAnAggregateInPieces) {
  const std::string body = "q(X,Y0)" + numbered(10'000, ", YM = YN + Z");
  const std::string all = translation("a :- p(Z), 1 < #count{X:" + body + "}.");
  EXPECT_LT(all.size(), 20 * body.size());
  EXPECT_NE(all.find("_h2(Z,Y15):-p(Z),_h1(Z,Y7),Y8=Y7+Z"), std::string::npos);
}

class Forms : public testing::TestWithParam<Case> {};
TEST_P(Forms, DependOnAllUsesOfThePredicate) {
  const std::string all = translation(GetParam().program);
  EXPECT_EQ(all.substr(0, all.find("\n#") + 1), GetParam().out);
}
constexpr Case kForms[] = {
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
  const std::string kept = program + "\n% a_1 a_2 a_3";
  EXPECT_NE(translation(program), translation(kept));
  EXPECT_EQ(sorted(run(program, GetParam().options).output), sorted(GetParam().out));
  EXPECT_EQ(sorted(run(kept, GetParam().options).output), sorted(GetParam().out));
}
constexpr Case kBothForms[] = {
    {"constants_meet_at_different_places", "a_1(x_y,z) v a_1(x,y_z). -a_1(x,yz). a_2(x,y,z).",
     "{-a_1(x,yz), a_1(x_y,z), a_2(x,y,z)}\n{-a_1(x,yz), a_1(x,y_z), a_2(x,y,z)}\n"},
    {"arities", "a_1(p,d). a_1(p,d,1) :- a_1(p,d). -a_1(p,d,1,2).",
     "{a_1(p,d), a_1(p,d,1), -a_1(p,d,1,2)}\n"},
    {"spellings", "a_2(not,v,\"a(',b \\\"). a_2(p,d,not) :- a_2(not,v,X), not a_2(p,e,X).",
     "{a_2(not,v,\"a(',b \\\"), a_2(p,d,not)}\n"},
    {"strong_negation", "a_1(p,d). -a_1(p,d) :- a_1(p,d).", ""},
    {"both_negations", "a_2(n,d,1). -a_3(p,d,2,1). a_2(q,d,X) :- a_2(n,d,X), not -a_3(p,d,X,_).",
     "{a_2(n,d,1), a_2(q,d,1), -a_3(p,d,2,1)}\n"},
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
INSTANTIATE_TEST_SUITE_P(Cases, BothForms, testing::ValuesIn(kBothForms), case_name);

TEST(Folding, LooksAtALargeProgramToItsEnd) {
  const std::string facts = numbered(20'000, "a_2(p,d,N).\n");
  EXPECT_EQ(run(facts + "a_1(P,d) :- a_2(P,d,7).", "-pfilter=a_1").output, "{a_1(p,d)}\n");
}

TEST(Folding, ReachesThePiecesOfALongBody) {
  const std::string all = translation("a_1(q,d) :- " + numbered(299, "a_2(p,d,N),") + "b.");
  EXPECT_EQ(all.substr(0, 20), "_h1:-a_2'p'd(0),a_2'");
  EXPECT_NE(all.find("\na_1'q'd:-_h37,a_2'p'd(296),"), std::string::npos);
}

// What another file says is not known when the first is translated.
TEST(Folding, IsForOneFile) {
  const WorkFolder folder;
  folder.write("p", "a_2(p,d,1). b(P) :- a_2(P,d,1).");
  folder.write("q", "a_2(q,d,1).");
  folder.write("r", "a_2(q,d,1).\n#include <p>\n");
  for (const std::string_view files : {"dl p q", "dl q p", "dl r"}) {
    EXPECT_EQ(sorted(folder.run(files).output), sorted("{b(p), b(q), a_2(p,d,1), a_2(q,d,1)}\n"));
  }
}

}    // namespace
}    // namespace dl_test
