// frame_limits_test.cc - deep, wide and broken frames: all of it in linear time, nothing lost.

#include "../output/reading_fixture.h"
#include "../parser/rewrite_fixture.h"

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

TEST_F(RewriteTest, TakesEveryStatementOfADeepFrame) {
  // Compared as a whole: a difference in megabytes of text is not worth printing.
  const auto expect = [](std::initializer_list<std::string_view> input,
                         std::initializer_list<std::string_view> clauses) {
    EXPECT_TRUE(rewritten({joined(input)}).clauses == joined(clauses));
  };
  const std::string deep = nested("X");
  expect({deep, "."}, {statements(".\n"), INNERMOST ".\n"});
  expect({deep, " v p."},
         {statements(" :- faa0(X).\n"), INNERMOST " :- faa0(X).\n", "faa0(X) v a_1(p,default).\n"});
  expect({":- not ", deep, "."},
         {"faa0(X) :- ", statements(", "), INNERMOST ".\n:- not faa0(X).\n"});
  expect({":- 1 < #count{X:", deep, "}."},
         {":- 1 < #count{X:", statements(", "), INNERMOST "}.\n"});
}

TEST_F(RewriteTest, LooksAtADeepFrameToItsEnd) {
  const auto expect = [](std::initializer_list<std::string_view> input, std::string_view message) {
    EXPECT_EQ(rewritten({joined(input)}).messages,
              joined({"1: line 1: ", message, ".\nAborting due to parser errors.\n"}));
  };
  expect({nested("o[not b]"), "."}, "You cannot have negation in head");
  expect({"-", nested("o[-b]"), "."}, "You cannot have a nested true negation in frame definition");
  expect({":- ", nested("-o[b]"), "."},
         "You cannot have a negated frame for the value of an attribute");
  expect({repeated("o[a -> ", kDepth)}, "syntax error");
  expect({nested("X"), "]."}, "syntax error");
}

TEST_F(RewriteTest, TakesNotAtEveryDepthOfAFrame) {
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
  std::string attributes = "o[n0 ->> c", values = "o[c ->> {n0", of_attributes, of_values;
  for (int i = 0; i < 100'000; ++i) {
    const std::string name = joined({"n", std::to_string(i)});
    if (i > 0) attributes += joined({", ", name, " ->> c"});
    if (i > 0) values += joined({", ", name});
    of_attributes += joined({"a_5(valueOf,defaultFlogic,o,", name, ",c,\"->>\").\n"});
    of_values += joined({"a_5(valueOf,defaultFlogic,o,c,", name, ",\"->>\").\n"});
  }
  EXPECT_TRUE(rewritten({attributes + "]."}).clauses == of_attributes);
  EXPECT_TRUE(rewritten({values + "}]."}).clauses == of_values);
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
