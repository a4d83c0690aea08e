// frame_limits_test.cc - deep, wide and broken frames: all of it in linear time, nothing lost.

#include "../output/reading_fixture.h"
#include "../parser/rewrite_fixture.h"

namespace zarel {
namespace {

#define INNERMOST "a_5(valueOf,defaultFlogic,o,a,X,\"->\")"

class DeepFrame : public RewriteTest, public testing::WithParamInterface<std::size_t> {
 protected:
  static std::string nested(std::string_view innermost) {
    return joined({repeated("o[a -> ", GetParam()), innermost, repeated("]", GetParam())});
  }
  // All statements but the innermost, which says X of o.
  static std::string statements(std::string_view separator) {
    return repeated(joined({"a_5(valueOf,defaultFlogic,o,a,o,\"->\")", separator}), GetParam() - 1);
  }
  // Compared as a whole: a difference in megabytes of text is not worth printing.
  static void expect_clauses(std::initializer_list<std::string_view> input,
                             std::initializer_list<std::string_view> expected) {
    EXPECT_TRUE(rewritten({joined(input)}).clauses == joined(expected));
  }
  static void expect_error(std::initializer_list<std::string_view> input,
                           std::string_view message) {
    EXPECT_EQ(rewritten({joined(input)}).messages,
              joined({"1: line 1: ", message, ".\nAborting due to parser errors.\n"}));
  }
};

TEST_P(DeepFrame, IsEveryStatement) {
  expect_clauses({nested("X"), "."}, {statements(".\n"), INNERMOST ".\n"});
  expect_clauses({nested("X"), " v p."}, {statements(" :- faa0(X).\n"), INNERMOST " :- faa0(X).\n",
                                          "faa0(X) v a_1(p,default).\n"});
  expect_clauses({":- not ", nested("X"), "."},
                 {"faa0(X) :- ", statements(", "), INNERMOST ".\n:- not faa0(X).\n"});
  expect_clauses({":- 1 < #count{X:", nested("X"), "}."},
                 {":- 1 < #count{X:", statements(", "), INNERMOST "}.\n"});
}

TEST_P(DeepFrame, IsLookedAtToItsEnd) {
  expect_error({nested("o[not b]"), "."}, "You cannot have negation in head");
  expect_error({"-", nested("o[-b]"), "."},
               "You cannot have a nested true negation in frame definition");
  expect_error({":- ", nested("-o[b]"), "."},
               "You cannot have a negated frame for the value of an attribute");
  expect_error({repeated("o[a -> ", GetParam())}, "syntax error");
  expect_error({nested("X"), "]."}, "syntax error");
}
INSTANTIATE_TEST_SUITE_P(Depths, DeepFrame, testing::Values(10'000, 200'000));

TEST_F(RewriteTest, TakesNotAtEveryDepthOfAFrame) {
  constexpr std::size_t kDepth = 200'000;
  std::string expected = "aaa199999 :- a_5(valueOf,defaultFlogic,o,a,x,\"->\").\n";
  for (std::size_t i = kDepth - 1; i > 0; --i) {
    expected +=
        joined({"aaa", std::to_string(i - 1), " :- a_5(valueOf,defaultFlogic,o,a,o,\"->\"), ",
                "not aaa", std::to_string(i), ".\n"});
  }
  const std::string input =
      joined({":- ", repeated("o[not a -> ", kDepth), "x", repeated("]", kDepth), "."});
  EXPECT_TRUE(rewritten({input}).clauses == expected + ":- not aaa0.\n");
}

TEST_F(RewriteTest, TakesAHundredThousandAttributesAndValues) {
  std::string attributes;
  std::string values;
  std::string of_attributes;
  std::string of_values;
  for (int i = 0; i < 100'000; ++i) {
    const std::string name = joined({"n", std::to_string(i)});
    attributes += joined({i == 0 ? "" : ", ", name, " ->> c"});
    values += joined({i == 0 ? "" : ", ", name});
    of_attributes += joined({"a_5(valueOf,defaultFlogic,o,", name, ",c,\"->>\").\n"});
    of_values += joined({"a_5(valueOf,defaultFlogic,o,c,", name, ",\"->>\").\n"});
  }
  EXPECT_TRUE(rewritten({joined({"o[", attributes, "]."})}).clauses == of_attributes);
  EXPECT_TRUE(rewritten({joined({"o[c ->> {", values, "}]."})}).clauses == of_values);
}

TEST_F(RewriteTest, TakesFunctionTermsOfAnySizeInFrames) {
  const std::string deep = joined({repeated("f(", 100'000), "X", repeated(")", 100'000)});
  const std::string wide = joined({"f(", repeated("a", 1000), repeated(",\"b c\"", 1000), ")"});
  EXPECT_TRUE(rewritten({joined({":- not ", deep, "[", wide, " -> ", deep, "]."})}).clauses ==
              joined({"faa0(X,X) :- a_5(valueOf,defaultFlogic,", deep, ",", wide, ",", deep,
                      ",\"->\").\n:- not faa0(X,X).\n"}));
}

}    // namespace
}    // namespace zarel
