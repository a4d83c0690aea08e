// origins_test.cc - where the lines of a rewritten program come from.

#include <gtest/gtest.h>

#include "zarel/program.h"

namespace zarel {
namespace {

std::string place_text(const Place& place) {
  return std::to_string(place.first.file) + ":" + std::to_string(place.first.line) + ":" +
         std::to_string(place.first.character);
}

std::string step_text(const OriginStep& step) {
  constexpr std::string_view kNames[] = {"written", "frame", "range", "query", "template"};
  std::string text(kNames[static_cast<std::size_t>(step.kind)]);
  if (step.template_name.empty()) return text;
  return text + " " + step.template_name + " at " + place_text(step.invocation);
}

// Each line of the program, behind what it comes from.
std::string lines_with_origins(const Program& program) {
  std::istringstream text(program.text());
  std::string result;
  std::size_t number = 0;
  for (std::string line; std::getline(text, line);) {
    const LineOrigin origin = program.origin_of_line(++number);
    result += place_text(origin.place);
    for (const OriginStep& step : origin.steps) result += ", " + step_text(step);
    result += " | " + line + "\n";
  }
  EXPECT_FALSE(program.origin_of_line(number + 1).place.is_known());
  return result;
}

struct Case {
  std::string_view name, first, second, lines;
  bool has_linked_templates = false;
  friend void PrintTo(const Case& test, std::ostream* out) { *out << test.name; }
};

constexpr Case kCases[] = {
    {"statements", "p(a). \u00e4 q(X) :-\n p(X).", ":- q(b).\n:~ p(a). [1:2]\n#maxint=7.",
     "0:1:1 | a_2(p,default,a).\n0:1:9 | a_2(q,default,X) :- a_2(p,default,X).\n"
     "1:1:1 | :- a_2(q,default,b).\n1:2:1 | :~ a_2(p,default,a). [1:2]\n1:3:1 | #maxint = 7.\n"},
    {"string_over_lines", "p(\"a\nb\").\nq.", "",
     "0:1:1 | a_2(p,default,\"a\n0:1:1 | b\").\n0:3:1 | a_1(q,default).\n"},
    {"verbatim", "p. ASITIS %*x.\n y.*% q.", "  ASITIS %*z*%",
     "0:1:4 | % ASITIS's Body is herein written verbatim\n0:1:13 | x.\n0:2:1 |  y.\n"
     "0:2:6 | % End of ASITIS's Section\n0:2:6 | \n"
     "1:1:3 | % ASITIS's Body is herein written verbatim\n1:1:12 | z\n"
     "1:1:15 | % End of ASITIS's Section\n1:1:15 | \n0:1:1 | a_1(p,default).\n0:2:7 | "
     "a_1(q,default).\n"},
    {"includes", "p.\n #include <list>\n#include own", "",
     "0:2:2 | #include <list>\n0:3:1 | #include own\n0:1:1 | a_1(p,default).\n"},
    {"include_over_lines", "#include \"a\nb\"\np.", "",
     "0:1:1 | #include \"a\n0:1:1 | b\"\n0:3:1 | a_1(p,default).\n"},
    {"range", " p(1..3).", "",
     "0:1:2, range | a_2(p,default,Var0) :- #int(Var0), >=(Var0,1), <=(Var0,3).\n"},
    {"query_with_function_terms", "p(f(X),Y)?", "",
     "0:1:1, query | aux___query(X,Y) :- a_3(p,default,F_f_0,Y), #function_builtin(F_f_0,f,X).\n"
     "0:1:1 | aux___query(X,Y)?\n"},
    {"frames", "a[b->c].\nd :- e, not f[g].", "",
     "0:1:1, frame | a_5(valueOf,defaultFlogic,a,b,c,\"->\").\n"
     "0:2:9, frame | faa0 :- a_3(valueOf,defaultFlogic,f,g).\n"
     "0:2:1 | a_1(d,default) :- a_1(e,default), not faa0.\n"},
    {"templates",
     "#template u{f(1)}(1) {\n  u(X) :- f(X). }\n#template t{f(1)}(1) {\n  t(X) :- u{f(*)}(X). }",
     "a(X) :-\n t{p(*)}(X).",
     "1:1:1 | a_2(a,default,X) :- t_0(X).\n"
     "1:2:2, template t at 1:2:2 | p_1(Var0) :- a_1(Var0,p).\n"
     "0:4:3, template t at 1:2:2 | t_0(X) :- u_2(X).\n"
     "0:4:11, template u at 0:4:11, template t at 1:2:2 | p_1_3(Var0) :- a_1(Var0,p_1).\n"
     "0:2:3, template u at 0:4:11, template t at 1:2:2 | u_2(X) :- p_1_3(X).\n"},
    {"frames_in_templates", "#template t{f(1)}(1) {\n t(X) :- f(X). a[b->X] :- t(X). }",
     "c(X) :- t{p(*)}(X).",
     "1:1:1 | a_2(c,default,X) :- t_0(X).\n"
     "1:1:9, template t at 1:1:9 | p_1(Var0) :- a_1(Var0,p).\n"
     "0:2:2, template t at 1:1:9 | t_0(X) :- p_1(X).\n"
     "0:2:16, frame t at 1:1:9 | b_0(a,default,X) :- t_0(X).\n"},
    {"linked_templates", "#template t{f(1)}(1) GLOBAL g {\n t(X) :- f(X), g(X,X).\n :~ -f(X). }",
     "c(X) :- t{p(A,*)}(X).",
     "1:1:1 | a_2(c,default,X) :- t_0(A,X).\n"
     "1:1:9, template t at 1:1:9 | p_1(Group0,Var0) :- a_3(p,default,Group0,Var0).\n"
     "0:2:2, template t at 1:1:9 | g_0(Group0,X,X) :- a_3(g,default,X,X), p_1(Group0,_).\n"
     "0:2:2, template t at 1:1:9 | t_0(Group0,X) :- p_1(Group0,X), g_0(Group0,X,X).\n"
     "0:3:2, template t at 1:1:9 | minus_p_0(Group0,Var0) :- -a_3(p,default,Group0,Var0).\n"
     "0:3:2, template t at 1:1:9 | group_0(Group0) :- p_1(Group0,_).\n"
     "0:3:2, template t at 1:1:9 | :~ minus_p_0(Group0,X), group_0(Group0). \n",
     true},
};

class Origins : public testing::TestWithParam<Case> {};

TEST_P(Origins, OfEachLine) {
  Program program({.links_templates = GetParam().has_linked_templates});
  program.read_text(GetParam().first, "first");
  program.read_text(GetParam().second, "second");
  EXPECT_TRUE(program.rewrite());
  EXPECT_EQ(lines_with_origins(program), GetParam().lines);
}

INSTANTIATE_TEST_SUITE_P(Cases, Origins, testing::ValuesIn(kCases),
                         [](const auto& test) { return std::string(test.param.name); });

// As the statements that say the same, but for their places.
TEST(Facts, OfDataAreThoseOfTheText) {
  Program read;
  read.read_text("p(1,\"a b\",a). @s. o : c. 7[b -> 1, b ->> \"x\"]. q(a) :- p(a,X,Y).", "");
  Program made;
  made.read_facts("", "data.csv", [](FactBuilder& facts) {
    const auto constant = [](std::string_view name) {
      return TERMT::constant(FactBuilder::name(name));
    };
    facts.stand_at({2, 1, 2, 9});
    const NameId space = FactBuilder::name("s");
    facts.fact(FactBuilder::name("p"),
               std::vector{TERMT::integer(1), constant("\"a b\""), constant("a")},
               FactBuilder::name("default"), {});
    facts.stand_at({3, 5, 3, 5});
    facts.member(constant("o"), FactBuilder::name("c"), space);
    const std::vector<FactBuilder::Attribute> attributes = {
        {FactBuilder::name("b"), ARROW::kSingle, TERMT::integer(1)},
        {FactBuilder::name("b"), ARROW::kSet, constant("\"x\"")}};
    facts.object(TERMT::integer(7), attributes, space);
  });
  made.read_text("@s. q(a) :- p(a,X,Y).", "");
  ASSERT_TRUE(read.rewrite() && made.rewrite());
  EXPECT_EQ(made.text(), read.text());
  EXPECT_TRUE(lines_with_origins(made).starts_with(
      "0:2:1 | a_4(p,default,1,\"a b\",a).\n0:3:5, frame | a_3(instanceOf,sFlogic,o,c).\n"));
}

}    // namespace
}    // namespace zarel
