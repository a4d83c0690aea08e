// told_text_test.cc - explanations as text.
#include "dl/explain/told_text.h"

#include <functional>
#include <gtest/gtest.h>

#include "support/texts.h"

namespace dl {
namespace {

ToldStatement line(std::uint32_t number, std::string text, std::uint32_t column = 1) {
  return {.place = {.file = "f", .line = number, .column = column}, .text = std::move(text)};
}

ToldStatement of_template() {
  ToldStatement statement = line(5, "max(X) :- p(X).");
  statement.place.uses = {{.file = "g", .line = 9, .used = "max"},
                          {.file = "h", .line = 2, .used = "top"}};
  return statement;
}

ToldItem text_item(ToldItem::Kind kind, std::string text) {
  ToldItem item;
  item.kind = kind;
  item.text = std::move(text);
  return item;
}

ToldItem atom_item(std::uint32_t node) {
  ToldItem item = text_item(ToldItem::Kind::kAtom, "");
  item.node = node;
  return item;
}

ToldNode node(ToldKind kind, std::string atom, std::optional<std::uint32_t> statement,
              std::vector<ToldItem> items = {}) {
  ToldNode node;
  node.kind = kind;
  node.atom = std::move(atom);
  node.statement = statement;
  node.items = std::move(items);
  return node;
}

std::string written(const std::function<void(ToldText&)>& write,
                    std::uint32_t depth = ToldText::kUsualDepth) {
  std::string all;
  ToldText text([&all](std::string_view piece) { all += piece; }, depth);
  write(text);
  return all;
}

std::string proof_text(const ToldProof& proof, std::uint32_t depth = ToldText::kUsualDepth) {
  return written([&proof](ToldText& text) { text.proof(proof); }, depth);
}

struct ProofCase {
  std::string_view name;
  ToldProof proof;
  std::string_view text;
  std::uint32_t depth = ToldText::kUsualDepth;
  friend void PrintTo(const ProofCase& test, std::ostream* out) { *out << test.name; }
};

class ToldProofs : public testing::TestWithParam<ProofCase> {};
TEST_P(ToldProofs, AreWritten) {
  EXPECT_EQ(proof_text(GetParam().proof, GetParam().depth), GetParam().text);
}

// r(X) from q(X), twice, and that from facts; with a negation and a comparison.
ToldProof rules() {
  ToldProof proof;
  proof.statements = {line(1, "p(a)."), line(2, "q(X) :- p(X)."),
                      line(3, "r(X) :- q(X), q(X), X!=b, not s(X).")};
  proof.nodes = {node(ToldKind::kFact, "p(a)", 0), node(ToldKind::kRule, "q(a)", 1, {atom_item(0)}),
                 node(ToldKind::kRule, "r(a)", 2,
                      {atom_item(1), atom_item(1), text_item(ToldItem::Kind::kComparison, "a!=b"),
                       text_item(ToldItem::Kind::kNegation, "not s(a)")})};
  proof.nodes[1].with = proof.nodes[2].with = {{"X", "a"}};
  proof.roots = {2, 0};
  return proof;
}

// Two rules on one line by turns.
ToldProof rules_on_one_line() {
  ToldProof proof;
  proof.statements = {line(1, "a :- b. "), line(1, "b :- c.", 9)};
  for (std::uint32_t i = 0; i < 4; ++i) {
    proof.nodes.push_back(node(ToldKind::kRule, i % 2 == 0 ? "a" : "b", i % 2, {atom_item(i + 1)}));
  }
  proof.nodes.push_back(node(ToldKind::kRule, "b", 1));
  proof.roots = {0};
  return proof;
}

ToldProof choice_and_cases() {
  ToldProof proof;
  proof.statements = {line(1, "a v b."), line(2, "b :- a."), of_template()};
  proof.nodes = {node(ToldKind::kChoice, "c", 0),
                 node(ToldKind::kCases, "b", 0),
                 node(ToldKind::kRule, "b", 1, {atom_item(3)}),
                 node(ToldKind::kAssumed, "a", {}),
                 node(ToldKind::kAssumed, "b", {}),
                 node(ToldKind::kNotExplained, "d", {}),
                 node(ToldKind::kFact, "e", 2),
                 node(ToldKind::kFact, "g", {})};
  proof.nodes[0].instead_of = {"a", "b"};
  proof.nodes[1].cases = {{"a", 2}, {"b", 4}};
  proof.roots = {0, 1, 5, 6, 7};
  return proof;
}

ToldProof aggregates() {
  ToldProof proof;
  proof.statements = {line(1, "a :- 1<#sum{X : p(X)}.")};
  proof.nodes = {node(ToldKind::kRule, "a", 0), node(ToldKind::kFact, "p(1)", {})};
  ToldItem some = text_item(ToldItem::Kind::kAggregate, "1<#sum{X : p(X)}");
  some.value = "12";
  some.unneeded = 2;
  for (int i = 0; i < 12; ++i) some.elements.push_back({std::to_string(i), {1}});
  ToldItem few = text_item(ToldItem::Kind::kAggregate, "#avg{X : p(X)}>0");
  few.elements = {{"1,a", {1, 1}}, {"2,b", {}}};
  few.others = 3;
  ToldItem none = text_item(ToldItem::Kind::kAggregate, "#count{X : q(X)}=0");
  none.value = "0";
  proof.nodes[0].items = {some, few, none};
  proof.roots = {0};
  return proof;
}

const ProofCase kProofs[] = {
    {"rules_facts_and_what_was_printed", rules(),
     "r(a)\n"
     "  by f:3: r(X) :- q(X), q(X), X!=b, not s(X).   with X = a\n"
     "  q(a)\n"
     "    by f:2: q(X) :- p(X).   with X = a\n"
     "    p(a)    [fact, f:1]\n"
     "  q(a)    [see above]\n"
     "  a!=b\n"
     "  not s(a)\n"
     "p(a)    [fact, f:1]\n"},
    {"no_deeper_than_asked_for", rules(),
     "r(a)\n"
     "  by f:3: r(X) :- q(X), q(X), X!=b, not s(X).   with X = a\n"
     "  q(a)    ...\n"
     "  q(a)    ...\n"
     "  a!=b\n"
     "  not s(a)\n"
     "p(a)    [fact, f:1]\n",
     1},
    {"a_line_means_the_statement_quoted_last", rules_on_one_line(),
     "a\n"
     "  by f:1: a :- b. \n"
     "  b\n"
     "    by f:1: b :- c.\n"
     "    a\n"
     "      by f:1: a :- b. \n"
     "      b\n"
     "        by f:1: b :- c.\n"
     "        b\n"
     "          by f:1\n"},
    {"choices_cases_templates_and_what_is_not_explained", choice_and_cases(),
     "c\n"
     "  by f:1: a v b.\n"
     "  chosen, instead of a, b\n"
     "b\n"
     "  by cases: f:1\n"
     "  if a:\n"
     "    b\n"
     "      by f:2: b :- a.\n"
     "      a    [assumed]\n"
     "  if b:\n"
     "    b    [assumed]\n"
     "d    [not explained]\n"
     "e    [fact, f:5 (from the template max, used at g:9, from the template top, used at h:2)]\n"
     "g    [fact]\n"},
    {"aggregates", aggregates(),
     "a\n"
     "  by f:1: a :- 1<#sum{X : p(X)}.\n"
     "  1<#sum{X : p(X)}    [value 12: 0; 1; 2; 3; 4; 5; 6; 7; 8; 9; and 2 more; and 2 more that "
     "it does not need]\n"
     "    p(1)    [fact]\n    p(1)    [fact]\n    p(1)    [fact]\n    p(1)    [fact]\n"
     "    p(1)    [fact]\n    p(1)    [fact]\n    p(1)    [fact]\n    p(1)    [fact]\n"
     "    p(1)    [fact]\n    p(1)    [fact]\n"
     "  #avg{X : p(X)}>0    [1,a; 2,b; and 3 more]\n"
     "    p(1)    [fact]\n    p(1)    [fact]\n"
     "  #count{X : q(X)}=0    [value 0: no elements]\n"},
};
INSTANTIATE_TEST_SUITE_P(Told, ToldProofs, testing::ValuesIn(kProofs), zarel::case_name);

// Neither the stack nor the width of the text grows with the depth of the proof.
TEST(ToldTexts, OfProofsWithAMillionStepsAreWrittenInParagraphs) {
  constexpr std::uint32_t kSteps = 1'000'000;
  ToldProof proof;
  proof.statements = {line(1, "p(Y) :- p(X), next(X,Y).")};
  for (std::uint32_t i = 0; i < kSteps; ++i) {
    proof.nodes.push_back(node(ToldKind::kRule, "p", 0, {atom_item(i + 1)}));
  }
  proof.nodes.push_back(node(ToldKind::kFact, "p", {}));
  proof.roots = {0};
  const std::string text = proof_text(proof, 0);
  EXPECT_LT(text.size(), 120 * kSteps);
  EXPECT_TRUE(text.ends_with("p    [fact]\n"));
  const std::string indentation(64, ' ');
  EXPECT_NE(text.find('\n' + indentation + "p    [see below]\n\np\n  by f:1\n"), std::string::npos);
}

struct PartCase {
  std::string_view name;
  std::function<void(ToldText&)> write;
  std::string_view text;
  friend void PrintTo(const PartCase& test, std::ostream* out) { *out << test.name; }
};
class ToldParts : public testing::TestWithParam<PartCase> {};
TEST_P(ToldParts, AreWritten) {
  EXPECT_EQ(written(GetParam().write), GetParam().text);
}

ToldMissing missing_with_rules() {
  using State = ToldFailure::Literal::State;
  ToldMissing missing;
  missing.atom = "p(a)";
  missing.rules.resize(2);
  ToldFailure& first = missing.rules[0];
  first.statement = line(3, "p(X) :- q(X), not s(X), 1<#count{Y:t(X,Y)}, u(Z).");
  first.with = {{"X", "a"}};
  first.literals = {{.state = State::kHolds, .text = "q(a)", .value = "", .because = {}},
                    {State::kFails, "not s(a)", "", {"s(a)    [fact, f:1]"}},
                    {State::kFails, "1<#count{Y:t(a,Y)}", "1", {}},
                    {State::kOpen, "u(Z)", "", {}}};
  first.bindings = 3;
  first.was_cut = true;
  missing.rules[1].statement = line(4, "p(X) v p2(X) :- q(X).");
  missing.rules[1].other_heads = {"p2(a)", "p3(a)"};
  missing.rules[1].bindings = 2;
  missing.other_rules = {line(5, "p(b) :- q(b).")};
  missing.contrary = "-p(a)";
  return missing;
}

ToldInstance instance(std::uint32_t number, std::string value, std::uint64_t times = 1) {
  return {.statement = line(number, ":- p(X)."),
          .with = {{"X", std::move(value)}},
          .clash = "",
          .times = times};
}

const PartCase kParts[] = {
    {"missing_for_several_reasons", [](ToldText& text) { text.missing(missing_with_rules()); },
     "p(a) is not there:\n"
     "  f:3: p(X) :- q(X), not s(X), 1<#count{Y:t(X,Y)}, u(Z).   with X = a\n"
     "    holds  q(a)\n"
     "    FAILS  not s(a)\n"
     "             s(a)    [fact, f:1]\n"
     "    FAILS  1<#count{Y:t(a,Y)}    [value 1]\n"
     "    open   u(Z)\n"
     "    (2 other choices of values come as near)\n"
     "    (not all choices of values were looked at)\n"
     "  f:4: p(X) v p2(X) :- q(X).\n"
     "    the body holds, but the head is true by p2(a), p3(a)\n"
     "    (1 other choice of values comes as near)\n"
     "  f:5: p(b) :- q(b).\n"
     "    gives other atoms only\n"
     "  -p(a) holds\n"},
    {"missing_since_nothing_gives_it",
     [](ToldText& text) {
       ToldMissing missing;
       missing.atom = "fre(mary)";
       text.missing(missing);
       missing.similar = {"free/1", "tree/1"};
       text.missing(missing);
       missing.has_other_facts = true;
       text.missing(missing);
     },
     "fre(mary): no rule has this head\n"
     "fre(mary): no rule has this head; did you mean free/1 or tree/1?\n"
     "fre(mary) is not there:\n"
     "  it is no fact, and no rule has this head\n"},
    {"conflicts",
     [](ToldText& text) {
       const ToldInstance clash{.statement = {}, .with = {}, .clash = "g(a) and -g(a)"};
       text.outcome(ToldOutcome::kConstraints, false);
       text.give_up({{line(1, ":- p(X).")}, {"g/1"}, true}, false);
       text.conflict({{line(1, ":- p(X).")}, {"g/1"}, true});
       text.conflict({{line(2, ":- q.")}, {}, false});
       text.give_up_instances({{instance(1, "a"), instance(1, "b", 3)}, true});
       text.conflict_instances({{instance(1, "a"), clash}, false});
       text.outcome(ToldOutcome::kConstraints, true);
       text.give_up({{line(2, ":- q.")}, {}, false}, true);
       text.conflict({{line(2, ":- q.")}, {}, true});
       text.conflict_instances({{{.statement = line(2, ":- q.")}}, true});
       text.rules({{line(3, "a :- not a.")}, {}, true});
     },
     "There is no answer set.\n"
     "There is one without:\n"
     "  f:1: :- p(X).\n"
     "  g/1 and -g/1, which exclude each other\n"
     "These do not go together:\n"
     "  f:1\n"
     "  g/1 and -g/1, which exclude each other\n"
     "This does not go with the rules (not proven to be the fewest):\n"
     "  f:2: :- q.\n"
     "Of these, it is enough to give up:\n"
     "  f:1   with X = a\n"
     "  f:1   with X = b (3 times)\n"
     "These do not go together (not proven to be the fewest):\n"
     "  f:1   with X = a\n"
     "  g(a) and -g(a), which exclude each other\n"
     "No answer set holds it.\n"
     "It could hold without (not proven to be the fewest):\n"
     "  f:2\n"
     "It does not go together with:\n"
     "  f:2\n"
     "There is one without:\n"
     "  f:3: a :- not a.\n"},
    {"costs",
     [](ToldText& text) {
       using Outcome = ToldAvoidance::Outcome;
       text.costs({{2, 0}, {1, 310}}, true);
       const ToldPayment payment{1, 160, instance(4, "cronus")};
       text.payment(payment);
       text.avoidance({Outcome::kSameCost,
                       {{1, 310}},
                       {{1, 150, instance(4, "boreas")}, {2, 10, instance(5, "tower", 2)}},
                       4});
       text.payment(payment);
       text.avoidance({Outcome::kDearer, {{2, 1}, {1, 4}}, {}, 0});
       text.avoidance({Outcome::kUnproven, {{2, 1}, {1, 4}}, {}, 0});
       text.avoidance({Outcome::kNever, {}, {}, 0});
       text.avoidance({Outcome::kCut, {}, {}, 0});
       text.costs({{1, 0}}, false);
     },
     "The best answer set pays [310:1].\n"
     "pays 160 at level 1: f:4: :- p(X).   with X = cronus\n"
     "  avoided at the same cost: then 150 for f:4 with X = boreas; 10 at level 2 for f:5 with X = "
     "tower (2 times); 4 more\n"
     "pays 160 at level 1: f:4   with X = cronus\n"
     "  avoided only at [1:2] [4:1]\n"
     "  avoided at [1:2] [4:1], best found\n"
     "  no answer set avoids it\n"
     "  the time was over before it was known what avoids it\n"
     "The best answer set found pays nothing, not proven to be the best.\n"},
};
INSTANTIATE_TEST_SUITE_P(Told, ToldParts, testing::ValuesIn(kParts), zarel::case_name);

}    // namespace
}    // namespace dl
