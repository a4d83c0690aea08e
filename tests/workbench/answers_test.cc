// answers_test.cc - reading what a solver answers: nothing is lost, wherever a piece ends.

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "support/texts.h"
#include "workbench/answers/answer_text_reader.h"
#include "workbench/answers/forms.h"

namespace workbench {
namespace {

zarel::NamespaceTable& prefixes() {
  static zarel::NamespaceTable table;
  table.declare("ex", "\"http://ex.org/a#\"");
  return table;
}

// What is printed of answers that come in pieces of that size; behind it, what cannot be read.
std::string printed(std::string_view answers, std::size_t piece, bool is_ground) {
  std::ostringstream out;
  const FormSettings settings{&prefixes()};
  const std::unique_ptr<AnswerConsumer> form = make_form("text", out, settings);
  AnswerTextReader reader(*form, settings.namespaces);
  reader.expect_truth_value(is_ground);
  for (std::size_t at = 0; at < answers.size(); at += piece) reader.read(answers.substr(at, piece));
  reader.finish();
  form->flush();
  return out.str() + reader.error();
}

struct ReadingCase {
  const char* name;
  std::string_view answers, expected;
  bool is_ground = false;
};

class Reading : public testing::TestWithParam<ReadingCase> {};

TEST_P(Reading, GivesTheSameInEveryPiece) {
  const auto& [name, answers, expected, is_ground] = GetParam();
  for (std::size_t piece = 1; piece <= answers.size(); ++piece) {
    EXPECT_EQ(printed(answers, piece, is_ground), expected) << piece;
  }
}

const ReadingCase kReadingCases[] = {
    {"sets", "{}\n{a_1(p,default)}\n{ a_2(p,default,x) ,\n-a_2(q,s,1)}",
     "{}\n{p}\n{p(x), -q(1)@s}\n"},
    {"strings", R"({a_3(p,default,"",", }{"), a_2(q,default,"a b
c")})",
     "{p(\"\",\", }{\"), q(\"a b\nc\")}\n"},
    {"spaces", R"({a_1(p,s), a_1(p,"s t"), p, q(a, f(b , "c d"))})",
     R"({p@s, p@"s t", p, q(a,f(b,"c d"))})"
     "\n"},
    {"frames",
     R"({a_3(instanceOf,defaultFlogic,"o@1",c), -a_3(subClassOf,sFlogic,c,d), )"
     R"(a_5(valueOf,defaultFlogic,"o@1",a,"","->"), a_5(valueOf,defaultFlogic,"o@1",a,x,"->"), )"
     R"(-a_3(valueOf,sFlogic,"o@1",b), a_3(valueOf,default,o,a), a_2(valueOf,sFlogic,o), )"
     R"(a_5(valueOf,sFlogic,o,a,x,arrow), a_5(valueOf,sFlogic,o,a,x,"<-")})",
     R"({"o@1":c, -c::d@s, valueOf(o,a), valueOf(o)@sFlogic, )"
     R"(valueOf(o,a,x,arrow)@sFlogic, valueOf(o,a,x,"<-")@sFlogic, "o@1"[a->{"",x}],"o@1"[-b]@s})"
     "\n"},
    {"addresses",
     R"({a_3(p,default,f("http://ex.org/a#b",g),"http://ex.org/b#c"), )"
     R"(a_3(instanceOf,defaultFlogic,o,"http://ex.org/a#k")})",
     R"({p(f(ex:b,g),"http://ex.org/b#c"), o:ex:k})"
     "\n"},
    {"costs",
     "Best model: {a_1(p,default)}\nCost ([Weight:Level]): <[12:3]>\n\"[0:1]\"\n"
     "Best model: {}\nCost ([Weight:Level]): <[12:3]>\n\"[0:1]\"\n",
     "Best model: {p}\nCost ([Weight:Level]): <[12:3]>\n\"[0:1]\"\n"
     "Best model: {}\nCost ([Weight:Level]): <[12:3]>\n\"[0:1]\"\n"},
    {"rows", "1, a\n\"x, {\ny\", f(b, c)\ntrue", "1,a\n\"x, {\ny\",f(b,c)\ntrue\n"},
    {"truth", "true\n", "true\n", true},
    {"cut_off", "{a_1(p,default)}\n{a_1(q,def", "{p}\nan answer set that does not end"},
    {"no_atom", "{a_1(p,default),}", "an atom that is missing"},
    {"no_set", "{a_1(p,default}", "an answer set that ends inside an atom"},
    {"words", "Segmentation fault\n", "the line Segmentation fault"},
};
INSTANTIATE_TEST_SUITE_P(Cases, Reading, testing::ValuesIn(kReadingCases), zarel::case_name);

}    // namespace
}    // namespace workbench
