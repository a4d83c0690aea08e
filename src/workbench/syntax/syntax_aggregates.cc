// syntax_aggregates.cc - aggregates as other languages have them, and choices.

#include "workbench/syntax/syntax_foreign.h"

namespace workbench {
namespace {

using Found = std::optional<Message>;

bool is_comparison_of_terms(std::string_view text) {
  return text == "==" || text == "!=" || text == "<>";
}

// The brace that the closing one at `index` closes; size() without one.
std::size_t opening_of(const Statement& s, std::size_t index) {
  if (s.text(index) != "}") return s.size();
  int depth = 0;
  for (std::size_t i = index + 1; i-- != 0;) {
    if (s.text(i) == "}") ++depth;
    if (s.text(i) == "{" && --depth == 0) return i;
  }
  return s.size();
}

bool closes_aggregate(const Statement& s, std::size_t index) {
  const std::size_t brace = opening_of(s, index);
  return brace != s.size() && is_aggregate(s.text(brace - 1));
}

// "#count{...} != 3" and "3 == #count{...}"
Found aggregate_comparison(const Statement& s) {
  const bool is_left = is_aggregate(s.found().text) && is_comparison_of_terms(s.before().text);
  const bool is_right = is_comparison_of_terms(s.found().text) && closes_aggregate(s, s.at() - 1);
  if (!is_left && !is_right) return std::nullopt;
  const Token& sign = is_left ? s.before() : s.found();
  Message message{"aggregate-comparison", sign.place,
                  filled("{} does not compare aggregates", {sign.text})};
  if (sign.text == "==") {
    message.help = "write = instead";
    message.fixes = {replaced(sign.place, "=")};
  } else {
    message.help = "write not in front of the literal, and = instead";
  }
  return message;
}

// An aggregate beside another one, or in it.
Found second_aggregate(const Statement& s) {
  if (!is_aggregate(s.found().text)) return std::nullopt;
  if (s.innermost() == "{") {
    return Message{"inner-aggregate",
                   s.found().place,
                   "an aggregate stands in no other",
                   "",
                   {},
                   "give the inner one a rule of its own: size(X, N) :- N = #count{...}, p(X)."};
  }
  if (!closes_aggregate(s, s.at() - 2)) return std::nullopt;
  return Message{
      "aggregate-comparison",
      s.found().place,
      "an aggregate is compared with a value, not with another one",
      "",
      {},
      filled("give one a variable: N = {}{...}, and compare the other with N", {s.found().text})};
}

// In the braces of an aggregate, in front of its colon.
Found aggregate_variables(const Statement& s) {
  if (s.innermost() != "{") return std::nullopt;
  const std::size_t brace = s.open().back();
  if (!is_aggregate(s.text(brace - 1))) return std::nullopt;
  bool has_colon = false;
  for (std::size_t i = brace; i < s.at(); ++i) has_colon |= s.text(i) == ":";
  const std::string_view sign = s.found().text;
  if (has_colon) {
    if (sign != ";") return std::nullopt;
    return Message{"aggregate-set",
                   s.found().place,
                   "an aggregate has one set",
                   "",
                   {},
                   "give the sets a predicate together: s(X) :- p(X). s(X) :- q(X). and count s"};
  }
  if (sign == ":" || s.found().kind == TokenKind::kVariable) return std::nullopt;
  Message message{"aggregate-variables", s.found().place,
                  "in front of the colon of an aggregate stand variables", ""};
  if (sign == "}") {
    message.text = "this aggregate has no colon";
    message.help = "write its variables, a colon and literals: #count{X : p(X)}";
  } else if (s.found().kind == TokenKind::kNumber) {
    message.help =
        "let a literal give the value to a variable: #sum{W, X : cost(X, W)}; "
        "where all weigh 1, use #count";
  } else {
    message.help = "write its variables, a colon and literals: #count{X : p(X)}";
  }
  return message;
}

// An aggregate that is compared with nothing.
Found aggregate_guard(const Statement& s) {
  if (!closes_aggregate(s, s.at() - 1)) return std::nullopt;
  const std::string_view sign = s.found().text;
  if (sign != "," && sign != "." && sign != "?" && !is_neck(sign)) return std::nullopt;
  const std::size_t name = opening_of(s, s.at() - 1) - 1;
  if (name != s.literal() && s.text(name - 1) != "not") return std::nullopt;
  return Message{"aggregate-guard",
                 joined(s.token(name).place, s.before().place),
                 "this aggregate is compared with nothing",
                 "",
                 {},
                 filled("compare it: 1 <= {}{...}, or N = {}{...}", {s.text(name), s.text(name)})};
}

// "{a; b}", "1 {p(X) : q(X)} 2", in a head or a body.
Found choice(const Statement& s) {
  if (s.found().text != "{" || s.before().text == "{" || is_aggregate(s.before().text) ||
      s.text(0) == "#template") {
    return std::nullopt;
  }
  const Token& before = s.before();
  const bool is_bound = before.kind == TokenKind::kNumber || before.kind == TokenKind::kVariable;
  const bool is_start = s.at() == 0 || is_neck(before.text) || before.text == "," ||
                        before.text == "not" || before.kind == TokenKind::kSign;
  if (s.innermost() == "[" || !(is_bound || is_start)) return std::nullopt;
  if (s.is_in_body()) {
    return Message{"choice-rule",
                   s.found().place,
                   "a body counts with #count",
                   "",
                   {},
                   "write 1 <= #count{X : p(X)} <= 2"};
  }
  return Message{"choice-rule",
                 s.found().place,
                 "there are no choice rules",
                 "",
                 {},
                 "write a disjunction, in v out :- ..., and bounds as a constraint: "
                 ":- not 1 <= #count{X : in(X)} <= 2."};
}

constexpr Recogniser kRecognisers[] = {
    aggregate_comparison, second_aggregate, aggregate_variables, aggregate_guard, choice,
};

}    // namespace

std::span<const Recogniser> aggregate_recognisers() {
  return kRecognisers;
}

}    // namespace workbench
