// random_proofs_test.cc - every atom of every answer set has a proof whose steps hold.
#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <map>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dl/explain/explained_answer.h"
#include "dl/explain/proof_check.h"
#include "dl/explain/proof_search.h"
#include "dl/explain/random_seeds.h"

namespace {

using dl::ProofKind;

// In these P, Q and R stand for a predicate each, with or without "-", T and U for atoms, K for a
// number and < for a comparison.
constexpr std::string_view kRules[] = {
    "P(X) :- Q(X).",
    "P(X) :- Q(X), R(X).",
    "P(Y) :- Q(X), e(X,Y).",
    "P(X) :- Q(X), e(X,Y), not R(Y).",
    "P(X) :- n(X), not Q(X).",
    "P(X) v Q(X) :- n(X).",
    "P(X) v Q(Y) :- e(X,Y), not T.",
    "P(X) v Q(X) v T :- R(X).",
    "P(X) v Q(K) v R(K) :- n(X), X >= K.",
    "P(X) v P(Y) :- e(X,Y).",
    "T v U.",
    "T :- U.",
    "T :- P(X), Q(X).",
    "T :- P(K), U.",
    "T :- P(X), Q(Y), X != Y.",
    "P(X) :- n(X), T.",
    "P(K) :- T. Q(K) :- T. U :- T.",
    ":- P(X), Q(X), T.",
    "P(X) :- n(X), K <= #count{Y : Q(Y)}.",
    "P(X) :- n(X), #count{Y : Q(Y), e(X,Y)} < K.",
    "P(X) :- n(X), not K <= #count{Y : Q(Y), not R(Y)}.",
    "P(X) :- n(X), #sum{W,Y : s(Y,W), Q(Y)} < K.",
    "P(X) :- n(X), K < #sum{W,Y : s(Y,W), Q(Y)} <= 9.",
    "P(X) :- n(X), #max{Y : Q(Y)} < K.",
    "P(X) :- n(X), #min{Y : Q(Y)} < K.",
    "P(X) :- n(X), #max{Y : Q(Y)} = X.",
    "P(X) :- n(X), X = #count{Y : Q(Y)}.",
    "T :- #sum{Y : P(Y), Q(Y)} = K.",
    "T :- K <= #count{X : h(f(X,_))}.",
    "P(X) :- n(X), #avg{W,Y : s(Y,W)} < K.",
    "h(f(X,Y)) :- P(X), Q(Y).",
    "P(X) :- h(f(X,_)), not T.",
    "T :- h(_), P(K).",
    "h(F) :- P(X), #function_builtin(F,f,X,X).",
    "h(X) v P(X) :- h(X), n(X).",
    "P(Z) :- Q(X), R(Y), Z = X + Y.",
    "P(Y) :- Q(X), #succ(X,Y), n(Y).",
};

// Here all that w gives follows only by cases, if at all.
constexpr std::string_view kSplits[] = {
    "p(K) v p(K).", "p(K) v p(K) v q(K).", "p(K) v q(K).", "q(K) v q(K) :- p(K).", "p(K) v w.",
};
constexpr std::string_view kSaturating[] = {
    "w :- p(K), p(K).",
    "w :- p(K), q(K).",
    "w :- q(K).",
    "w :- p(K).",
    "w :- 2 <= #count{X : p(X)}.",
    "w :- K < #sum{X : q(X)}.",
    "p(K) :- p(K).",
    "q(K) :- p(K), q(K).",
    "p(K) :- 1 <= #count{X : q(X), not e(X,X)} <= 4.",
};

class RandomProgram {
 public:
  explicit RandomProgram(unsigned seed) : random_(seed) {}

  std::string text() { return chance(3) ? saturated() : usual(); }

 private:
  std::string saturated() {
    std::string text = "n(1). n(2). n(3). p(X) :- w, n(X). q(X) :- n(X), w. r(X) :- p(X), q(X).\n";
    for (int i = 1 + pick(4); i > 0; --i) text += rule(kSplits[random_() % std::size(kSplits)]);
    for (int i = 3 + pick(12); i > 0; --i) {
      text += rule(kSaturating[random_() % std::size(kSaturating)]);
    }
    return text;
  }
  std::string usual() {
    std::string text = "#maxint = 6.\nn(1). n(2). ";
    if (chance(2)) text += "n(3). ";
    for (int i = pick(5); i > 0; --i) text += "e(" + number() + "," + number() + "). ";
    for (int i = pick(4); i > 0; --i) text += "s(" + number() + "," + number() + "). ";
    if (chance(3)) text += "p(" + number() + ").";
    text += '\n';
    for (int i = 3 + pick(10); i > 0; --i) text += rule(kRules[random_() % std::size(kRules)]);
    return text;
  }
  int pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  bool chance(int one_of) { return pick(one_of) == 0; }
  std::string number() { return std::to_string(1 + pick(3)); }
  std::string rule(std::string_view form) {
    static constexpr std::string_view kPredicates[] = {"p", "q", "r", "-p", "-q"};
    static constexpr std::string_view kAtoms[] = {"t", "u", "-t"};
    static constexpr std::string_view kGuards[] = {" < ", " <= ", " > ", " >= ", " = "};
    const std::string_view predicates[] = {kPredicates[pick(5)], kPredicates[pick(5)],
                                           kPredicates[pick(5)]};
    const std::string_view atoms[] = {kAtoms[pick(3)], kAtoms[pick(3)]};
    std::string text;
    for (std::size_t i = 0; i < form.size(); ++i) {
      const char c = form[i];
      if (c >= 'P' && c <= 'R') {
        text += predicates[c - 'P'];
      } else if (c == 'T' || c == 'U') {
        text += atoms[c - 'T'];
      } else if (c == 'K') {
        text += number();
      } else if (form.substr(i).starts_with("} < K")) {
        text += '}';
        text += kGuards[pick(form.find("#avg") == form.npos ? 5 : 4)];
        i += 3;
      } else {
        text += c;
      }
    }
    return text + '\n';
  }

  std::mt19937 random_;
};

// Whether a proof of the same atoms, cut two steps below them, does not begin as the whole one does.
bool has_other_top(const dl::Proof& whole, const dl::Proof& cut) {
  if (cut.nodes.size() > whole.nodes.size() || cut.roots != whole.roots) return true;
  for (dl::NodeNumber node = 0; node < cut.nodes.size(); ++node) {
    const bool is_near = std::ranges::find(cut.roots, node) != cut.roots.end();
    if (cut.nodes[node].kind != whole.nodes[node].kind) return true;
    if (cut.nodes[node].atom != whole.nodes[node].atom) return true;
    if (is_near && cut.nodes[node].items.size() != whole.nodes[node].items.size()) return true;
  }
  return false;
}

// Of the first instance of each body.
std::string fault_in_bodies(dl::ExplainedAnswer& answer, dl::ProofSearch& search,
                            std::map<ProofKind, std::size_t>& kinds) {
  dl::BodyEvaluator evaluator(answer.terms(), answer.index(), answer.store());
  const std::span<const dl::StoredStatement> statements = answer.store().statements();
  std::string fault;
  for (dl::StatementNumber number = 0; number < statements.size() && fault.empty(); ++number) {
    evaluator.each(statements[number], {}, {}, [&](const dl::Binding& binding) {
      fault = dl_test::fault_of(search.prove_body(number, binding), {dl::kNoAtom}, answer, kinds);
      return false;
    });
  }
  return fault;
}

std::string fault_in(const std::string& program, std::uint64_t number, bool& is_found,
                     std::map<ProofKind, std::size_t>& kinds) {
  const dl::Source source{"p", program};
  const dl::Options options;
  dl::ExplainedAnswer answer(dl::survey_texts({&source, 1}), options);
  is_found = answer.find({number, {}}).outcome == dl::SearchOutcome::kFound;
  if (!is_found) return {};
  dl::ProofSearch search(answer.terms(), answer.index(), answer.store());
  std::vector<dl::AtomNumber> all;
  for (dl::AtomNumber atom = 0; atom < answer.index().size(); ++atom) {
    all.push_back(atom);
    const std::vector<dl::AtomNumber> one{atom};
    const std::string fault = dl_test::fault_of(search.prove(one), one, answer, kinds);
    if (!fault.empty()) return fault + "\nin " + answer.found().text;
  }
  const std::string fault = fault_in_bodies(answer, search, kinds);
  if (!fault.empty()) return fault + "\nin a body of " + answer.found().text;
  const dl::Proof whole = search.prove(all);
  if (has_other_top(whole, search.prove(all, {2}))) return "another proof when it is cut";
  return dl_test::fault_of(whole, all, answer, kinds);
}

TEST(RandomProofs, HoldStepByStep) {
  std::map<ProofKind, std::size_t> kinds;
  std::size_t answers = 0;
  dl_test::each_seed(150, [&](unsigned seed) {
    const std::string program = RandomProgram(seed).text();
    bool is_found = true;
    for (std::uint64_t number = 1; number <= 3 && is_found; ++number) {
      EXPECT_EQ(fault_in(program, number, is_found, kinds), "") << program;
      answers += is_found ? 1 : 0;
    }
    EXPECT_EQ(kinds[ProofKind::kNotExplained], 0u) << program;
  });
  if (std::getenv("ZAREL_RANDOM_SECONDS") == nullptr) return;
  static constexpr std::string_view kNames[] = {"facts", "rules",   "choices",
                                                "cases", "assumed", "not explained"};
  std::cout << answers << " answer sets";
  for (const auto& [kind, count] : kinds) {
    std::cout << ", " << count << ' ' << kNames[static_cast<std::size_t>(kind)];
  }
  std::cout << '\n';
}

}    // namespace
