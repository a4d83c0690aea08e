// The text of what no input file says; the golden cases hold the rest.

#include "model/printer.h"

#include "model_fixture.h"

namespace zarel {
namespace {

using Printing = ModelTest;

TEST_F(Printing, OfAtomsAndTerms) {
  const TERMT star = TERMT::asterisk(), dollar = TERMT::dollar(), least = num(-2147483647 - 1);
  const Terms terms = Terms{newTERMT("X"), num(1)}, none;
  const std::pair<ATOMT, std::string_view> cases[] = {
      {atom("p", star, TERMT::absent(), dollar, TERMT::anonymous(), least),
       "p(*,,$,_,-2147483648)"},
      {atom("p", function_term("F"), newTERMT("\"a b\"")), "p(F,\"a b\")"},
      {newBuiltin(BUILTIN::kEqual, {}), "=="},
      {count({}, {}, false), "#count{X:p}"},
      {count(num(2), newTERMT("Y"), true), "2 = #count{X:p} = Y"},
      {count(newTERMT("a"), function_term("F"), false), " < #count{X:p} < "},
      {ATOMT(invocation("t", terms, atom("p", star, dollar), atom("q"))), "t[p(*,$), q] (X,1)"},
      {ATOMT(invocation("u", none)), "u[] ()"},
      {ATOMT::external("f", terms, Terms{num(2), num(3)}), "&f[X,1](2,3)"},
      {ATOMT::external("f", none, none), "&f[]()"},
  };
  for (const auto& [of, text] : cases) EXPECT_EQ(text_of(of), text);
}

TEST_F(Printing, OfClausesTakesTheWeightAsUnsigned) {
  const Body of = body(no(atom("q")), yes(atom("p")));
  Rule rule;
  rule.init(nullptr, &of);
  const CLAUSET weak(WeakConstraint(of, {num(-1000), num(-1)}), {});
  EXPECT_EQ(list_of(std::vector{weak, CLAUSET(rule, {})}),
            ":~ p, not q. [4294966:-1],  :- p, not q.");
}

TEST_F(Printing, EndsTheRunSilentlyAtAnUnnamedVariable) {
  const ATOMT unnamed = atom("p", TERMT::variable(3));
  std::ostringstream out;
  EXPECT_EQ(end_of([&] { out << unnamed; }), 1);
  EXPECT_EQ(out.str() + errors_.str(), "");
}

}    // namespace
}    // namespace zarel
