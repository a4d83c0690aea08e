// function_terms_test.cc - function terms in queries, and of any size; rules of them are golden cases.

#include "rewrite_fixture.h"

namespace zarel {
namespace {

#define TIE "#function_builtin("

struct QueryCase {
  std::string_view name, query, rule, answer;    // the answer's variables
  friend void PrintTo(const QueryCase& test, std::ostream* out) { *out << test.name; }
};
class RewrittenQuery : public RewriteTest, public testing::WithParamInterface<QueryCase> {};

TEST_P(RewrittenQuery, AsksForOneAtom) {
  const auto& [name, query, rule, answer] = GetParam();
  const RewrittenProgram program = rewritten({query});
  EXPECT_EQ(program.clauses,
            joined({"aux___query", answer, " :- ", rule, ".\naux___query", answer, "?\n"}));
  EXPECT_EQ(program.messages, "");
}

constexpr QueryCase kQueries[] = {
    {"repeats_are_kept", "p(f(Y),X), q(X,Y,X)?",
     "a_3(p,default,F_f_0,X), a_4(q,default,X,Y,X), " TIE "F_f_0,f,Y)", "(Y,X,X,Y,X)"},
    {"an_atom_of_function_terms_gives_none", "p(a,X), q(f(Z))?",
     "a_3(p,default,a,X), a_2(q,default,F_f_0), " TIE "F_f_0,f,Z)", "(X)"},
    {"at_any_depth", "p(Y,f(a,g(X,h(Z)),W))?",
     "a_3(p,default,Y,F_f_2), " TIE "F_f_2,f,a,F_g_1,W), " TIE "F_g_1,g,X,F_h_0), " TIE
     "F_h_0,h,Z)",
     "(Y,X,Z,W)"},
    {"comparisons", "X == f(Y), q(X,Y)?", "==(X,F_f_0), a_3(q,default,X,Y), " TIE "F_f_0,f,Y)",
     "(X,Y,X,Y)"},
    {"an_aggregate_gives_none", "1 < #count{X:p(f(X),Y)}, q(Z)?",
     "1 < #count{X:a_3(p,default,F_f_0,Y), " TIE "F_f_0,f,X)}, a_2(q,default,Z)", "(Z)"},
    {"frames_are_atoms", "X[a -> f(Y)], o[a -> f(Z)]?",
     R"(a_5(valueOf,defaultFlogic,X,a,f(Y),"->"), a_5(valueOf,defaultFlogic,o,a,f(Z),"->"))",
     "(X)"},
};
INSTANTIATE_TEST_SUITE_P(Cases, RewrittenQuery, testing::ValuesIn(kQueries), case_name);

// Whole texts are compared without printing them: a difference in megabytes is not worth it.
TEST_F(RewriteTest, TakesFunctionTermsAHundredThousandDeep) {
  const std::string term = joined({repeated("f(", 100'000), "X", repeated(")", 100'000)});
  std::string ties;    // F_f_99999 down to F_f_0, each to the next
  for (int i = 99'999; i > 0; --i)
    ties += joined({TIE, "F_f_", std::to_string(i), ",f,F_f_", std::to_string(i - 1), "), "});
  ties += joined({TIE, "F_f_0,f,X)"});
  EXPECT_TRUE(
      rewritten({joined({"p(", term, ",X)?"})}).clauses ==
      joined({"aux___query(X,X) :- a_3(p,default,F_f_99999,X), ", ties, ".\naux___query(X,X)?\n"}));
  EXPECT_TRUE(rewritten({joined({":- not p(", term, ")."})}).clauses ==
              joined({":- ", ties, ", not a_2(p,default,F_f_99999).\n"}));
}

TEST_F(RewriteTest, TakesAHundredThousandFunctionTermsInABody) {
  const std::string atoms = numbered(100'000, ", a_2(q,default,F_f_N)");
  const std::string ties = numbered(100'000, ", " TIE "F_f_N,f,X)");
  EXPECT_TRUE(rewritten({joined({":- r", repeated(", q(f(X))", 100'000), "."})}).clauses ==
              joined({":- a_1(r,default)", atoms, ties, ".\n"}));
}

}    // namespace
}    // namespace zarel
