// What a sink is told of the solver's output.

#include <stdexcept>

#include "output/sinks.h"
#include "reading_fixture.h"

namespace zarel {
namespace {

// A term by its kind: 12, a, 'a string', prefix:name, f(a,b).
std::string rendered(const AnswerTerm& term);
std::string rendered(const AnswerTerms& terms) {
  std::string all;
  for (const AnswerTerm& term : terms) all.append(all.empty() ? "" : ",").append(rendered(term));
  return all;
}
std::string rendered(const AnswerTerm& term) {
  const std::string_view name = term.name();
  switch (term.kind()) {
    case AnswerTerm::Kind::kString:
      return joined({"'", name, "'"});
    case AnswerTerm::Kind::kQualifiedConstant:
      return joined({term.prefix(), ":", name});
    case AnswerTerm::Kind::kFunction:
      return joined({name, "(", rendered(term.arguments()), ")"});
    case AnswerTerm::Kind::kNumber:
      return joined({"#", name});
    default:
      return std::string(name);
  }
}

// The same by a walk.
std::string walked(const AnswerTerms& terms) {
  std::string all;
  TermWalk walk(terms);
  while (true) {
    const TermWalk::Step step = walk.next();
    if (step == TermWalk::Step::kEnd) return all;
    const bool begins_list = all.empty() || all.back() == '(';
    if (step != TermWalk::Step::kEndFunction && !begins_list) all += ',';
    if (step == TermWalk::Step::kTerm) all += rendered(walk.term());
    if (step == TermWalk::Step::kBeginFunction) all.append(walk.term().text()).append("(");
    if (step == TermWalk::Step::kEndFunction) all += ')';
  }
}

// Collects the events as text.
class Collector : public AnswerSink {
 public:
  void begin_answer_set(const AnswerSetStart& start) override {
    add({start.title, start.is_best_model() ? " " : "", start.subject, "{"});
  }
  void atom(const AnswerAtom& atom) override {
    const std::string arguments = rendered(atom.arguments);
    EXPECT_EQ(walked(atom.arguments), arguments);
    add({sign(atom.is_negated), rendered(atom.relation), "(", arguments, ") in ", atom.space});
  }
  void membership(const ClassStatement& statement) override { add_class(" is a ", statement); }
  void subclass(const ClassStatement& statement) override { add_class(" are ", statement); }
  void object(const AnswerObject& object) override {
    std::string attributes;
    for (const auto& [name, is_negated, arrow, values] : object.attributes) {
      attributes += joined({" ", sign(is_negated), rendered(name), "[", arrow});
      for (const AnswerTerm& value : values) attributes.append(" ").append(rendered(value));
      attributes += "]";
    }
    add({rendered(object.name), " in ", object.space, " has", attributes});
  }
  void end_answer_set() override { add({"}"}); }
  void cost(const AnswerCost& cost) override {
    add({cost.title, " ", cost.weight_name, " ", cost.weight, " ", cost.level_name, " ",
         cost.level});
  }
  void query_row(const AnswerTerms& values) override { add({"row ", rendered(values)}); }
  void truth_value(bool holds) override { add({holds ? "yes" : "no"}); }
  bool flush() override { return keeps_all; }

  std::string events;
  std::string_view throws_at = "none";    // the event at which it gives up
  bool keeps_all = true;

 private:
  static std::string_view sign(bool is_negated) { return is_negated ? "-" : ""; }
  void add_class(std::string_view verb, const ClassStatement& statement) {
    add({sign(statement.is_negated), rendered(statement.object), verb,
         rendered(statement.class_name), " in ", statement.space});
  }
  void add(std::initializer_list<std::string_view> pieces) {
    const std::string event = joined(pieces);
    events.append(events.empty() ? "" : "; ").append(event);
    if (event == throws_at) throw std::runtime_error(event);
  }
};

class Events : public ReadingTest<testing::TestWithParam<Case>> {};
TEST_P(Events, AreWhatIsExpected) {
  GetParam().prepare();
  vectorName().declare("ex", "\"http://e.x/o#\"");
  Collector sink;
  read_answer_sets(GetParam().input, sink, {&vectorName(), QueryForm::kOpen});
  EXPECT_EQ(sink.events, GetParam().output);
}

const auto filter_p = [] { display_settings().set_filters({"p"}, {}); };

constexpr Case kEvents[] = {
    {"terms", R"x({a_9(p,default,a1,007,"a,b)",f( a , g("(",12)),"http://e.x/o#x","e#x")})x",
     "{; p(a1,#007,'a,b)',f(a,g('(',#12)),ex:x,'e#x') in default; }"},
    {"odd_names", R"x({-a_3(f("x"),g(s),12(a)), a_2("http://e.x/o#","s,")})x",
     "{; -f('x')(12(a)) in g(s); ex:() in \"s,\"; }"},
    {"nothing_is_filtered", "{a_3(p,default,x), a_2(q,default), a_3(r,service,x)}",
     "{; p(x) in default; q() in default; r(x) in service; }", filter_p},
    {"classes", R"x({-a_3(instanceOf,nFlogic,f(o),"c,d"), a_3(subClassOf,defaultFlogic,b)})x",
     "{; -f(o) is a 'c,d' in n; b are  in default; }"},
    {"objects",
     R"x({a_5(valueOf,nFlogic,o,a,1,"->>"), a_3(valueOf,nFlogic,o,b),
          -a_5(valueOf,nFlogic,o,a,"v,","->>"), a_5(valueOf,defaultFlogic,"o@",a,v,"->"), a_2(p,s),
          a_5(valueOf,nFlogic,o,a,f(x,y),"->>"), a_5(valueOf,nFlogic,o,b,v),
          a_5(valueOf,nFlogic,f(o),"http://e.x/o#a",1,"=>")}{})x",
     "{; p() in s; 'o@' in default has a[-> v]; f(o) in n has ex:a[=> #1]; "
     "o in n has a[->> #1 f(x,y)] b[ v] -a[->> 'v,']; }; {; }"},
    {"valueless_attributes", "{a_3(valueOf,nFlogic,o,a), -a_3(valueOf,nFlogic,o,a)}",
     "{; o in n has a[] -a[]; }"},
    {"other_relations_of_frames", "{-a_3(other,nFlogic,o,a), a_2(valueOf,nFlogic)}",
     "{; -other(o,a) in nFlogic; valueOf() in nFlogic; }"},
    {"best_models",
     "Best model: {a_2(p,s)}\nCost ([Weight:Level]): <[12:3]>\n\"[5:2]\"\n\"[0:1]\" {} \"[5:2]\"\n"
     "Some answer: {} Price ([A:B]): <[x:y]> \"[1:x]\" \"[5:2]\"",
     "Best model{; p() in s; }; Cost Weight 12 Level 3;   5  2;   0  1; {; }; row '[5:2]'; "
     "Some answer{; }; Price A x B y; row '[1:x]'; row '[5:2]'"},
    {"rows", "1, b\nf(a, \"x, y\"), \"http://e.x/o#b\"\ntrue",
     "row #1,b; row f(a,'x, y'),ex:b; row true"},
    {"until_an_error", "{a_2(p,s), a_3(valueOf,nFlogic,o,a), a_2(q)}", "{; p() in s"},
};
INSTANTIATE_TEST_SUITE_P(Events, Events, testing::ValuesIn(kEvents), case_name);

TEST_F(ReaderState, TellsOfTruthWhenTheQueryHasNoVariables) {
  Collector sink;
  read_answer_sets("true false 12 true,false", sink, {nullptr, QueryForm::kGround});
  EXPECT_EQ(sink.events, "yes; no; row #12; row true,false");
}

TEST_F(ReaderState, EndsWhereTheSinkGivesUp) {
  constexpr std::string_view kAll =
      "Best model: {a_2(p,s), a_3(valueOf,nFlogic,o,a)}Cost ([W:L]): <[1:2]> x {}";
  Collector whole;
  EXPECT_EQ(read_answer_sets(kAll, whole), 0);
  for (const std::string_view event :
       {"p() in s", "o in n has a[]", "}", "Cost W 1 L 2", "row x"}) {
    Collector sink;
    sink.throws_at = event;
    EXPECT_THROW(read_answer_sets(kAll, sink), std::runtime_error);
    EXPECT_EQ(sink.events, whole.events.substr(0, sink.events.size()));
    EXPECT_TRUE(sink.events.ends_with(event)) << sink.events;
  }
  const File file(std::tmpfile());
  Collector full;
  full.keeps_all = false;
  EXPECT_THROW(read_answer_sets(file.get(), full), RunEnd);
}

TEST(AnswerTerms, AreWalkedThroughHoweverDeep) {
  const std::string text =
      joined({repeated("f(a,", 2'000'000), "x", repeated(")", 2'000'000), ",y"});
  TermWalk walk{AnswerTerms(text)};
  std::size_t depth = 0;
  std::size_t deepest = 0;
  for (auto step = walk.next(); step != TermWalk::Step::kEnd; step = walk.next()) {
    if (step == TermWalk::Step::kBeginFunction) deepest = std::max(deepest, ++depth);
    if (step == TermWalk::Step::kEndFunction) --depth;
  }
  EXPECT_EQ(deepest, 2'000'000U);
  EXPECT_EQ(depth, 0U);
  EXPECT_EQ(walk.term().text(), "y");
}

TEST_F(ReaderState, KnowsItsFormatsByTheirNames) {
  const auto sink = make_sink("text", output_, current_run());
  read_answer_sets("{a_2(q,default),", *sink);    // nothing of it is in the way of the next one
  read_answer_sets("{a_2(p,default)}", *sink);
  EXPECT_EQ(output_.str(), "{p}\n");
  EXPECT_EQ(make_sink("html", output_, current_run()), nullptr);
}

}    // namespace
}    // namespace zarel
