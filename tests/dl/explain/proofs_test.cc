// proofs_test.cc - which proofs atoms get, in small programs.
#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <string_view>

#include "dl/explain/explained_answer.h"
#include "dl/explain/proof_search.h"

namespace {

using dl::ProofKind;

// A proof on one line: "a" for a fact, "[a]" where it is assumed, "a!" where it is not explained,
// "a:-{...}" by a rule, "a v{...}" chosen, "a?{...|b: ...}" by cases with the case b; an aggregate is
// "value+unneeded{elements}".
class ProofLine {
 public:
  ProofLine(dl::ExplainedAnswer& answer, const dl::Proof& proof) : answer_(answer), proof_(proof) {}

  std::string text(dl::NodeNumber number) const {
    const dl::ProofNode& node = proof_.nodes[number];
    std::string atom = atom_text(node.atom);
    switch (node.kind) {
      case ProofKind::kFact:
        return atom;
      case ProofKind::kAssumed:
        return "[" + atom + "]";
      case ProofKind::kNotExplained:
        return atom + "!";
      case ProofKind::kRule:
        return atom + ":-{" + items(node) + "}";
      case ProofKind::kChoice:
        return atom + " v{" + items(node) + "}";
      default:
        return atom + "?{" + items(node) + cases(node) + "}";
    }
  }

 private:
  std::string atom_text(dl::AtomNumber atom) const {
    std::string text;
    if (atom != dl::kNoAtom) answer_.index().append(text, atom);
    return text;
  }
  std::string items(const dl::ProofNode& node) const {
    std::string text;
    for (const dl::ProofItem& item : node.items) {
      const bool is_aggregate =
          answer_.store().statement(node.statement).body[item.literal].kind == dl::kAggregate;
      if (item.node == dl::kNoNode && !is_aggregate) continue;
      if (!text.empty()) text += ' ';
      text += is_aggregate ? elements(item) : this->text(item.node);
    }
    return text;
  }
  std::string elements(const dl::ProofItem& item) const {
    std::string text;
    if (item.value != dl::kNoTerm) answer_.terms().append(text, item.value);
    (text += '+') += std::to_string(item.unneeded);
    for (const dl::ProofItem::Element& element : item.elements) {
      text += '{';
      for (const dl::NodeNumber node : element.nodes) text += this->text(node);
      text += '}';
    }
    return text;
  }
  std::string cases(const dl::ProofNode& node) const {
    std::string result;
    for (const dl::ProofNode::Case& each : node.cases) {
      ((((result += '|') += atom_text(each.assumed)) += ": ")) += text(each.node);
    }
    return result;
  }

  dl::ExplainedAnswer& answer_;
  const dl::Proof& proof_;
};

struct ProofCase {
  std::string_view name, program, atoms, proof;
  friend void PrintTo(const ProofCase& test, std::ostream* stream) { *stream << test.name; }
};
class AtomProofs : public testing::TestWithParam<ProofCase> {};

// All atoms asked for hold in the first answer set that has them.
TEST_P(AtomProofs, AreLeastAndNoCircles) {
  const dl::Source source{"p", GetParam().program};
  const dl::Options options;
  dl::ExplainedAnswer answer(dl::survey_texts({&source, 1}), options);
  ASSERT_EQ(answer.find({}).outcome, dl::SearchOutcome::kFound);
  const dl::AtomNumber before = static_cast<dl::AtomNumber>(answer.index().size());
  dl::add_answer_set(GetParam().atoms, answer.terms(), answer.index());
  ASSERT_EQ(answer.index().size(), before) << "not in " << answer.found().text;
  dl::AnswerIndex asked(answer.terms());
  std::vector<dl::AtomNumber> atoms;
  dl::add_answer_set(GetParam().atoms, answer.terms(), asked);
  for (dl::AtomNumber atom = 0; atom < asked.size(); ++atom) {
    const dl::Predicate& predicate = asked.predicate(asked.predicate_of(atom));
    atoms.push_back(answer.index().find(answer.index().number(predicate), asked.arguments(atom)));
  }
  dl::ProofSearch search(answer.terms(), answer.index(), answer.store());
  const dl::Proof proof = search.prove(atoms);
  std::string text;
  for (const dl::NodeNumber root : proof.roots) {
    if (!text.empty()) text += ' ';
    text += ProofLine(answer, proof).text(root);
  }
  EXPECT_EQ(text, GetParam().proof);
}

constexpr ProofCase kProofs[] = {
    {"a_fact_though_a_rule_gives_it_too", "a. b. a :- b.", "{a}", "a"},
    {"the_shortest_of_several", "e(1,2). e(2,3). e(3,4). e(1,4). r(1). r(Y) :- r(X), e(X,Y).",
     "{r(4)}", "r(4):-{r(1) e(1,4)}"},
    {"the_least_of_the_same_depth",
     "x. y. c :- b, d. b :- x. d :- y. c :- e. e :- x. a :- b, x, y. a :- c.", "{c, a}",
     "c:-{e:-{x}} a:-{c:-{e:-{x}}}"},
    {"never_a_circle", "x. a :- b. b :- a. b :- c. c :- x, a. c :- x, d. d :- x.", "{a}",
     "a:-{b:-{c:-{x d:-{x}}}}"},
    {"strong_negation_and_functions", "-p(f(1)). q(X) :- -p(f(X)). r(g(X,X)) :- q(X).",
     "{r(g(1,1))}", "r(g(1,1)):-{q(1):-{-p(f(1))}}"},
    {"a_choice", "x. a v b v c :- x. :- b. :- c.", "{a}", "a v{x}"},
    {"any_atom_will_do", "x. p(1,X) :- p(2,X). p(2,1) :- x. p(3,1) :- x. q :- p(_,1).", "{q}",
     "q:-{p(2,1):-{x}}"},
    {"a_lower_guard_needs_no_more",
     "p(1). p(2). x. p(3) :- x. p(4) :- p(3). q :- 3 <= #count{X : p(X)}.", "{q}",
     "q:-{4+1{p(1)}{p(2)}{p(3):-{x}}}"},
    {"the_greatest_of_a_sum", "p(1). p(5). p(7). q :- #sum{X : p(X)} > 10.", "{q}",
     "q:-{13+1{p(5)}{p(7)}}"},
    {"what_a_later_summand_makes_needless",
     "x. p(5). p(7) :- p(5). p(20) :- p(7). q :- #sum{X : p(X)} >= 20, p(20).", "{q}",
     "q:-{32+2{p(20):-{p(7):-{p(5)}}} p(20):-{p(7):-{p(5)}}}"},
    {"one_of_an_extremum", "p(1). p(5). p(7). q :- #max{X : p(X)} > 4, #min{X : p(X)} <= 5.", "{q}",
     "q:-{7+2{p(5)} 1+2{p(1)}}"},
    {"all_of_another_guard", "p(1). p(5). q :- #count{X : p(X)} < 4, #max{X : p(X)} = 5.", "{q}",
     "q:-{2+0{p(1)}{p(5)} 5+0{p(1)}{p(5)}}"},
    {"less_where_all_would_be_a_circle", "p(1). p(2) :- q. q :- #count{X : p(X)} <= 2.", "{p(2)}",
     "p(2):-{q:-{2+2}}"},
    {"a_tuple_in_several_ways", "x. p(1,a) :- p(1,b). p(1,b) :- x. q :- 1 <= #count{X : p(X,Y)}.",
     "{q}", "q:-{1+0{p(1,b):-{x}}}"},
    {"nothing_of_what_is_negated", "p(1). q :- not 2 <= #count{X : p(X)}, not r.", "{q}",
     "q:-{1+1}"},
    {"by_cases", "x. a v b :- x. a :- b. b :- a. c :- a, b.", "{c}",
     "c:-{a?{x|a: [a]|b: a:-{[b]}} b:-{a?{x|a: [a]|b: a:-{[b]}}}}"},
    {"by_cases_of_another_head", "a v b. c :- a. c :- b. a :- c. b :- c.", "{a}",
     "a:-{c?{|a: c:-{[a]}|b: c:-{[b]}}}"},
    {"by_cases_in_cases",
     "a v b. c v d. w :- a, c. w :- a, d. w :- b, c. w :- b, d. a :- w. b :- w. c :- w. d :- w.",
     "{w}", "w?{|a: w?{|c: w:-{[a] [c]}|d: w:-{[a] [d]}}|b: w?{|c: w:-{[b] [c]}|d: w:-{[b] [d]}}}"},
    {"all_of_an_average", "p(1). p(5) :- p(1). q :- #avg{X : p(X)} > 2.", "{q}",
     "q:-{+0{p(1)}{p(5):-{p(1)}}}"},
    // It follows from p(1) and p(5), but an average can fall: that is not looked into.
    {"not_an_average_of_what_follows_from_it",
     "p(1). p(5). p(3) :- q. q :- #avg{X : p(X)} > 2. r :- q.", "{r, q}", "r! q!"},
};
INSTANTIATE_TEST_SUITE_P(Cases, AtomProofs, testing::ValuesIn(kProofs),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(ProofSize, LimitsTheElementsThatAreTold) {
  const dl::Source source{"p", "p(1). p(2). p(3). p(4). q :- 3 <= #count{X : p(X)}."};
  const dl::Options options;
  dl::ExplainedAnswer answer(dl::survey_texts({&source, 1}), options);
  answer.find({});
  dl::ProofSearch search(answer.terms(), answer.index(), answer.store());
  const auto q =
      answer.index().find(answer.index().number({answer.terms().name("q"), 0, false}), {});
  const dl::ProofItem item = search.prove({q}, {0, 2}).nodes.front().items.front();
  EXPECT_EQ(item.elements.size(), 2u);
  EXPECT_EQ(item.others, 1u);
  EXPECT_EQ(item.unneeded, 1u);
}

}    // namespace
