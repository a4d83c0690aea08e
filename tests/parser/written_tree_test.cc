// written_tree_test.cc - what an observer is told of a program: a text in, each statement out as
// its tree, with the pieces of the text that its places cover.

#include <gtest/gtest.h>
#include <sstream>
#include <string>

#include "model/run.h"
#include "parser/parse.h"
#include "parser/program_builder.h"
#include "support/fresh_run.h"

namespace zarel {
namespace {

// Of one line: kind numbers are those of the header's order.
class Drawing : public StatementObserver {
 public:
  explicit Drawing(std::string_view text) : text_(text) {}

  void statement(const WrittenStatement& statement) override {
    if (statement.kind == WrittenStatement::Kind::kTemplate) {
      drawn += "template " + piece(statement.name_place);
      for (const WrittenPredicate& formal : statement.formals) drawn += " " + piece(formal.place);
      for (const WrittenPredicate& global : statement.globals) drawn += " +" + piece(global.place);
      drawn += ": ";
      for (const WrittenStatement& clause : statement.clauses) this->statement(clause);
      return;
    }
    if (statement.name_place.first_line != 0) drawn += piece(statement.name_place) + " ";
    draw(statement, statement.head());
    if (!statement.body().is_empty()) drawn += " <- ";
    draw(statement, statement.body());
    for (const std::uint32_t part : {statement.weight, statement.level}) {
      if (part != kNoNode) drawn += " cost " + piece(statement.nodes[part].place);
    }
    drawn += "\n";
  }

  void flat_fact(const WrittenFlatFact& fact) override {
    drawn += "flat " + piece(fact.span.range) + "\n";
  }

  void remark(std::string_view text, const SourceLocation& place) override {
    drawn += "remark at " + std::to_string(place.column) + ":" + std::string(text) + "\n";
  }

  std::string drawn;

 private:
  std::string piece(const SourceRange& range) const {
    EXPECT_EQ(range.first_line, 1U);
    return std::string(
        text_.substr(range.first_column - 1, range.last_column - range.first_column + 1));
  }

  void draw(const WrittenStatement& statement, const WrittenStatement::List& list) {
    std::string separator;
    for (const WrittenNode& node : list) {
      drawn += separator + (node.is_negated ? "not " : "") + (node.is_strongly_negated ? "-" : "");
      separator = ", ";
      if (node.first_child == kNoNode && node.kind != WrittenKind::kAttribute) {
        const bool has_own_sign = node.is_negated || node.is_strongly_negated;
        drawn += piece(has_own_sign ? node.name_place : node.place);
        continue;
      }
      drawn += kOpening[static_cast<std::size_t>(node.kind)];
      const bool is_named = node.name_place.first_column != 0 && node.name != NameId{};
      if (is_named) drawn += piece(node.name_place) + " ";
      if (node.kind == WrittenKind::kComparison || node.kind == WrittenKind::kComputation ||
          node.kind == WrittenKind::kGuard)
        (drawn += kBuiltins[node.value].name) += " ";
      draw(statement, statement.children(node));
      drawn += ")";
    }
  }

  static constexpr std::string_view kOpening[] = {
      "",       "",    "",       "",      "",        "",       "",         "f(",
      "",       "",    "(",      "cmp(",  "calc(",   "ext(",   "guarded(", "use(",
      "frame(", "in(", "below(", "attr(", "actual(", "guard(", "agg(",     "body("};

  std::string_view text_;
};

std::string drawing(std::string_view text) {
  FreshRun run;
  run.begin({.links_templates = true});
  Drawing observer(text);
  current_run().statement_observer = &observer;
  std::ostringstream ignored;
  ProgramBuilder builder;
  parse_text(text, current_run().files.add(""), builder, ignored);
  return observer.drawn;
}

struct Case {
  std::string_view name, input, output;
  friend void PrintTo(const Case& test, std::ostream* out) { *out << test.name; }
};
class WrittenTreeOf : public testing::TestWithParam<Case> {};
TEST_P(WrittenTreeOf, TellsEachPartWithItsPlace) {
  EXPECT_EQ(drawing(GetParam().input), GetParam().output);
}

constexpr Case kCases[] = {
    {"rule", "-p(f(X), _) v q@s :- R(X, 1)@s, not -r(\"b\", v).",
     "-(p f(f X), _), q@s <- (R X, 1), not -(r \"b\", v)\n"},
    {"flat", "p(a, 1). p(X, 2).", "flat p(a, 1).\n(p X, 2)\n"},
    {"remark", "p(\"%! a\"). ASITIS %*%! b*% q. %! c %! d",
     "flat p(\"%! a\").\nq\nremark at 31: c %! d\n"},
    {"comment", "p. % %! a", "p\n"},
    {"builtins",
     "#maxint = 9. :- X == Y, Z = X + 1, *(X, Y, Z), #maxint = X + Y, #succ(X, _), Y <= #maxint.",
     " <- 9\n <- cmp(== X, Y), calc(+ X, 1, Z), calc(* X, Y, Z), calc(+ X, Y, #maxint), "
     "calc(#succ X, _), cmp(<= Y, #maxint)\n"},
    {"aggregates",
     ":~ S = #sum{P, Z : s(Z, P), not t, Z != 1}, not 1 < #count{X : p(X)} <= N. [S:2]",
     " <- guarded(guard(== S), agg(P, Z, body((s Z, P), not t, cmp(!= Z, 1)))), "
     "not guarded(guard(< 1), agg(X, body((p X))), guard(<= N)) cost S cost 2\n"},
    {"frames",
     "o[a -> x, b ->> {Y, f(Z)}, -c, d => e[g -> 1]]@s :- X : c, not f(X) : g(Y)[h], "
     "c :: D, -X[not a -> _].",
     "frame(o, attr(a, x), attr(b, Y, f(f Z)), attr(-c), attr(d, frame(e, attr(g, 1)))) <- "
     "in(X, c), not in(f(f X), f(g Y), attr(h)), below(c, D), frame(-X, not attr(a, _))\n"},
    {"pairs", "#namespace(n, \"u\") p(n:a) :- a : b, a : f(X), o[a -> n:a].",
     "n \n(p n:a) <- in(a, b), in(a, f(f X)), frame(o, attr(a, n:a))\n"},
    {"templates",
     "#template t{e(2), f(1)}(1) GLOBAL g, h { t(X) :- e(X, _). p(a). } "
     "q :- not t{r(*, $, A), -s}(X, b).",
     "template t e(2) f(1) +g +h: (t X) <- (e X, _)\n(p a)\n"
     "q <- not use(t actual(r *, $, A), -s, X, b)\n"},
    {"others", "@s. @. #maxint = 3. n(1..#maxint). #include \"f\" p(X), X < 2?",
     "@s. \n@. \n <- 3\nn  <- 1, #maxint\n#include \"f\" \n <- (p X), cmp(< X, 2)\n"},
    {"no_statement_with_an_error", "p(n:a) :- q. r(a) :- s. p( . t :- u.", "(r a) <- s\nt <- u\n"},
};
INSTANTIATE_TEST_SUITE_P(Cases, WrittenTreeOf, testing::ValuesIn(kCases),
                         [](const auto& test) { return std::string(test.param.name); });

}    // namespace
}    // namespace zarel
