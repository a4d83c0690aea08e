// frame_test.cc - frames as values: what they say of themselves, their text, their variables.

#include <sstream>

#include "frames/established.h"
#include "frames_fixture.h"

namespace zarel {
namespace {

using Frame = FramesTest;
using enum ARROW;

std::string variables_of(const FRAME& frame) {
  std::vector<TERMT> variables;
  frame.getVariables(variables);
  Text text;
  append_list(text, variables, ",");
  return text.str();
}

template <class... Parts>
std::string printed(const Parts&... parts) {
  std::ostringstream out;
  FRAME_RULE(parts...).print(out);
  return out.str();
}

TEST_F(Frame, RulesPrintALineForEachStatementOfTheHead) {
  const FRAME nested = frame("v", {says("-b", kSet, {frame("1"), frame("w", {says("c")})})});
  const FRAME_HEAD head({frame("o", {says("a", kSingle, {nested}), says("d")}), frame("p")});
  const FRAME_BODY body({frame("X", {says("not a", kSingle, {frame("Y")})}),
                         frame("q", {says("not c")}), frame("r")});
  EXPECT_EQ(printed(head), "a(o,v).\n-b(v,1).\n-b(v,w).\nc(w).\nd(o).\n");
  EXPECT_EQ(printed(body), ":- not a(X,Y), not c(q).\n");
  EXPECT_EQ(printed(FRAME_HEAD({frame("o", {says("a"), says("b")})}), body),
            "a(o) :- not a(X,Y), not c(q).\nb(o) :- not a(X,Y), not c(q).\n");
  EXPECT_EQ(printed(FRAME_HEAD({frame("o")})), "");    // a frame without attributes says nothing
  const FRAME_RULE rule(head, body), fact(head), constraint(body);
  EXPECT_TRUE(rule.isStandardRule() && !rule.isFact() && !rule.isConstraint());
  EXPECT_TRUE(fact.isFact() && !fact.isStandardRule() && !fact.isConstraint());
  EXPECT_TRUE(constraint.isConstraint() && !constraint.isFact() && !constraint.isStandardRule());
}

TEST_F(Frame, VariablesStandInOrderWithRepeats) {
  const ATTRIBUTE nested =
      says("-A", kSet, {frame("V", {says("b", kSingle, {frame("-X")})}), frame("V")});
  EXPECT_EQ(variables_of(frame("-X", {nested, says("Y"), says("not Z"), says("a")})),
            "X,A,V,X,V,Y,Z");
  EXPECT_EQ(variables_of(frame("-x", {says("\"X\"", kSet, {frame("12"), frame("_")})})), "");
  const FrameTerm subject = term("S");
  std::vector<TERMT> variables;
  says("-A").getVariables(variables, nullptr);
  says("b").getVariables(variables, &subject);
  EXPECT_EQ(variables, (std::vector<TERMT>{newTERMT("A"), newTERMT("S")}));
  const std::vector<TERMT> inner = {newTERMT("P"), newTERMT("Q")};
  const FRAME object(negated(frame_term(names().intern("g(P,Q)"), inner)), false, space());
  EXPECT_EQ(object.getSubject(), "-g(P,Q)");
  EXPECT_EQ(variables_of(object), "P,Q");
}

TEST_F(Frame, AnswersWhatItHolds) {
  const FRAME simple = frame("o"), one = frame("-o", {says("a")});
  const FRAME two = frame("o", {says("a"), says("not b")});
  const FRAME nested = frame("o", {says("a", kSingle, {frame("v", {says("not -b")})})});
  EXPECT_TRUE(simple.isSimple() && says("a").isSimple());
  EXPECT_FALSE(nested.isSimple() || nested.getAttributes()[0].isSimple());
  EXPECT_TRUE(two.hasNegation() && !nested.hasNegation());    // that of the value is not its own
  EXPECT_TRUE(nested.has_nested_negation() && nested.has_true_negation());
  EXPECT_FALSE(one.has_true_negation());
  EXPECT_TRUE(one.isAtomic() && frame("o", {says("a", kSet, {simple})}).isAtomic());
  EXPECT_FALSE(simple.isAtomic() || nested.isAtomic() || two.isAtomic());
  EXPECT_FALSE(frame("o", {says("a", kSet, {simple, simple})}).isAtomic());
}

TEST_F(Frame, CopiesDoNotChangeWithTheirOriginal) {
  FRAME original = frame("o", {says("a")});
  const FRAME copy = original;
  original.addAttribute(says("b"));
  original.setSubject("X");
  EXPECT_EQ(printed(FRAME_HEAD({copy, original})), "a(o).\na(X).\nb(X).\n");
  EXPECT_EQ(variables_of(original), "X");
}

}    // namespace
}    // namespace zarel
