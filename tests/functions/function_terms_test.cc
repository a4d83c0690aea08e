// function_terms_test.cc - function terms one by one, in queries, and of any size; rules of them
// are golden cases.

#include "functions/function_terms.h"

#include "model/printer.h"
#include "support/fresh_run.h"
#include "support/rewrite_fixture.h"
#include "support/texts.h"

namespace zarel {
namespace {

class FunctionTerms : public testing::Test {
 protected:
  FreshRun run_;

  static TERMT function(std::string_view functor, const std::vector<TERMT>& arguments) {
    return newFTERM(names().intern(functor), arguments);
  }
  template <class T>
  static std::string text(const T& whole) {
    Text out;
    append_text(out, whole);
    return out.str();
  }
};

TEST_F(FunctionTerms, AreVariablesOfTheirOwnUntilTheRuleIsRewritten) {
  EXPECT_FALSE(hasFunctionTerm());
  const TERMT f = function("f", {newTERMT("X")});
  const TERMT g = function("g", {f});
  EXPECT_TRUE(hasFunctionTerm());
  EXPECT_EQ(text(f) + text(g), "F_f_0F_g_1");
  EXPECT_EQ(newTERMT("F_g_1").value, g.value);    // the variable of that name
  Head head;
  Body body;
  head.add({"p", std::vector{g}, PREDICATE_NAMETS::TYPE::kUnknown});
  rewriteFunctionsInHead(head, body);
  EXPECT_EQ(head.atoms()[0].terms()[0], TERMT::variable(g.index()));
  EXPECT_EQ(body[0].atom.terms()[2], f);    // inner ones are for the body to rewrite
  EXPECT_TRUE(hasFunctionTerm());           // only the whole rule's rewriting ends it
  rewriteFunctions(nullptr, body);
  EXPECT_EQ(text(body[0]) + text(body[1]),
            "#function_builtin(F_g_1,g,F_f_0)#function_builtin(F_f_0,f,X)");
  EXPECT_FALSE(hasFunctionTerm());
  EXPECT_EQ(text(function("g", {})), "F_g_0");
}

TEST_F(FunctionTerms, BecomeABuiltinAtomThatKeepsInnerOnes) {
  const TERMT inner = function("g", {newTERMT("Y")});
  const ATOMT built = buildFunctionAtom(function("f", {newTERMT("X"), TERMT::integer(-3), inner}));
  EXPECT_EQ(text(built), "#function_builtin(F_f_1,f,X,-3,F_g_0)");
  EXPECT_EQ(ATOMT::Predicates().type(built.predicate()), PREDICATE_NAMETS::TYPE::kBuiltin);
  EXPECT_EQ(built.terms()[0].kind, TermKind::kVariable);
  EXPECT_EQ(built.terms()[1], newTERMT("f"));
  EXPECT_EQ(built.terms()[4], inner);
  EXPECT_EQ(fromFunctionToString(function("h", {built.terms()[3], function("g", {}), inner})),
            "h(-3,g(),g(Y))");
}

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
  std::string atoms, ties;
  for (int i = 0; i < 100'000; ++i) {
    atoms += joined({", a_2(q,default,F_f_", std::to_string(i), ")"});
    ties += joined({", ", TIE, "F_f_", std::to_string(i), ",f,X)"});
  }
  EXPECT_TRUE(rewritten({joined({":- r", repeated(", q(f(X))", 100'000), "."})}).clauses ==
              joined({":- a_1(r,default)", atoms, ties, ".\n"}));
}

}    // namespace
}    // namespace zarel
