// frame_limits_test.cc - deep, wide and broken frames: all of it in linear time, nothing lost.

#include "rewrite_fixture.h"

namespace zarel {
namespace {

constexpr std::size_t kDepth = 200'000;
#define INNERMOST "a_5(valueOf,defaultFlogic,o,a,X,\"->\")"

std::string nested(std::string_view innermost) {
  return joined({repeated("o[a -> ", kDepth), innermost, repeated("]", kDepth)});
}
// All statements but the innermost, which says X of o.
std::string statements(std::string_view separator) {
  return repeated(joined({R"(a_5(valueOf,defaultFlogic,o,a,o,"->"))", separator}), kDepth - 1);
}

class FrameLimits : public RewriteTest {
 protected:
  // Compared as a whole: a difference in megabytes of text is not worth printing.
  static void expect(std::initializer_list<std::string_view> input,
                     std::initializer_list<std::string_view> clauses) {
    EXPECT_TRUE(rewritten({joined(input)}).clauses == joined(clauses));
  }
};

TEST_F(FrameLimits, TakesEveryStatementOfADeepFrame) {
  const std::string deep = nested("X");
  expect({deep, "."}, {statements(".\n"), INNERMOST ".\n"});
  expect({deep, " v p."},
         {statements(" :- faa0(X).\n"), INNERMOST " :- faa0(X).\n", "faa0(X) v a_1(p,default).\n"});
  expect({":- not ", deep, "."},
         {"faa0(X) :- ", statements(", "), INNERMOST ".\n:- not faa0(X).\n"});
  expect({":- 1 < #count{X:", deep, "}."},
         {":- 1 < #count{X:", statements(", "), INNERMOST "}.\n"});
}

TEST_F(FrameLimits, LooksAtADeepFrameToItsEnd) {
  const std::pair<std::string, std::string_view> cases[] = {
      {joined({nested("o[not b]"), "."}), "You cannot have negation in head"},
      {joined({"-", nested("o[-b]"), "."}),
       "You cannot have a nested true negation in frame definition"},
      {joined({":- ", nested("-o[b]"), "."}),
       "You cannot have a negated frame for the value of an attribute"},
      {repeated("o[a -> ", kDepth), "syntax error"},
      {joined({nested("X"), "]."}), "syntax error"},
  };
  for (const auto& [input, message] : cases)
    EXPECT_EQ(rewritten({input}).messages,
              joined({"1: line 1: ", message, ".\nAborting due to parser errors.\n"}));
}

TEST_F(FrameLimits, TakesNotAtEveryDepthOfAFrame) {
  std::string rules = "aaa199999 :- a_5(valueOf,defaultFlogic,o,a,x,\"->\").\n";
  for (std::size_t i = kDepth - 1; i > 0; --i)
    rules += joined({"aaa", std::to_string(i - 1), " :- a_5(valueOf,defaultFlogic,o,a,o,\"->\"), ",
                     "not aaa", std::to_string(i), ".\n"});
  expect({":- ", repeated("o[not a -> ", kDepth), "x", repeated("]", kDepth), "."},
         {rules, ":- not aaa0.\n"});
}

TEST_F(FrameLimits, TakesAHundredThousandAttributesAndValues) {
  const std::string attributes = numbered(100'000, "cN ->> c, ");
  const std::string values = numbered(100'000, "cN, ");
  expect({"o[", attributes, "c ->> c]."},
         {numbered(100'000, "a_5(valueOf,defaultFlogic,o,cN,c,\"->>\").\n"),
          "a_5(valueOf,defaultFlogic,o,c,c,\"->>\").\n"});
  expect({"o[c ->> {", values, "c}]."},
         {numbered(100'000, "a_5(valueOf,defaultFlogic,o,c,cN,\"->>\").\n"),
          "a_5(valueOf,defaultFlogic,o,c,c,\"->>\").\n"});
}

TEST_F(FrameLimits, TakesFunctionTermsOfAnySizeInFrames) {
  const std::string deep = joined({repeated("f(", 100'000), "X", repeated(")", 100'000)});
  const std::string wide = joined({"f(", repeated("a", 1000), repeated(",\"b c\"", 1000), ")"});
  expect({":- not ", deep, "[", wide, " -> ", deep, "]."},
         {"faa0(X,X) :- a_5(valueOf,defaultFlogic,", deep, ",", wide, ",", deep,
          ",\"->\").\n:- not faa0(X,X).\n"});
}

}    // namespace
}    // namespace zarel
