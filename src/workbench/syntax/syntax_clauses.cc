// syntax_clauses.cc - heads, bodies, queries, directives and weights as other languages have them.

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>
#include <vector>

#include "parser/expected_words.h"
#include "workbench/syntax/syntax_foreign.h"

namespace workbench {
namespace {

using Found = std::optional<Message>;

// Letters that are put in, left out or changed between two words.
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t changed = diagonal + (a[i] == b[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({changed, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row.back();
}

std::string_view nearest_directive(std::string_view word) {
  constexpr std::array kKnown = std::to_array<std::string_view>(
      {"#maxint", "#int", "#succ", "#count", "#sum", "#min", "#max", "#avg", "#times", "#any",
       "#template", "#include", "#namespace"});
  constexpr std::size_t kMostLetters = 40;
  if (word.size() > kMostLetters) return {};
  std::string_view best;
  std::size_t least = std::max<std::size_t>(1, word.size() / 3) + 1;
  for (const std::string_view known : kKnown) {
    const std::size_t letters = distance(word, known);
    if (letters < least) {
      least = letters;
      best = known;
    }
  }
  return best;
}

struct ForeignDirective {
  std::string_view word, code, text, help;
};

constexpr ForeignDirective kForeignDirectives[] = {
    {"#show", "show-directive", "what is shown is no matter of the program",
     "run with --filter=p,q to see these predicates only"},
    {"#hide", "show-directive", "what is shown is no matter of the program",
     "run with --filter=p,q to see these predicates only"},
    {"#project", "show-directive", "what is shown is no matter of the program",
     "run with --filter=p,q to see these predicates only"},
    {"#const", "const-directive", "there are no named constants",
     "write the value, or a fact, size(8)., that rules read"},
    {"#minimize", "minimize-directive", "what is to be small is told by weak constraints",
     "write :~ cost(X, W). [W:1]"},
    {"#minimise", "minimize-directive", "what is to be small is told by weak constraints",
     "write :~ cost(X, W). [W:1]"},
    {"#maximize", "minimize-directive", "weak constraints tell what is to be small",
     "weigh what is lost: :~ offered(X, W), not taken(X). [W:1]"},
    {"#maximise", "minimize-directive", "weak constraints tell what is to be small",
     "weigh what is lost: :~ offered(X, W), not taken(X). [W:1]"},
    {"#sup", "extreme-term", "there is no greatest value",
     "the greatest integer is #maxint, which a program declares: #maxint = 100."},
    {"#inf", "extreme-term", "there is no least value", "integers begin at 0: compare with that"},
    {"#external", "unknown-directive", "there is no #external",
     "state the fact in a file of its own, and name that file where it holds"},
    {"#import", "unknown-directive", "there is no #import",
     "name the other file on the command line, too"},
};

Found directive(const Statement& s) {
  if (s.found().kind != TokenKind::kDirective) return std::nullopt;
  const std::string_view word = s.found().text;
  for (const ForeignDirective& foreign : kForeignDirectives) {
    if (word == foreign.word) {
      return Message{foreign.code, s.found().place,          std::string(foreign.text), "",
                     {},           std::string(foreign.help)};
    }
  }
  const std::string_view near = nearest_directive(word);
  if (near == word) return std::nullopt;    // one that stands at the wrong place
  Message message{"unknown-directive", s.found().place, filled("there is no {}", {word})};
  if (near.empty()) {
    message.help = "there are #maxint, #int, #succ, aggregates, #template, #include and #namespace";
  } else {
    message.help = filled("did you mean {}?", {near});
    message.fixes = {replaced(s.found().place, near)};
  }
  return message;
}

// What the directives of this language look like.
Found directive_form(const Statement& s) {
  constexpr std::array<std::array<std::string_view, 2>, 4> kForms = {{
      {"#maxint", "#maxint = 20."},
      {"#include", "#include \"facts.dl\""},
      {"#namespace", "#namespace(staff, \"http://example.org/staff#\")"},
      {"#template", "#template name{open(1)}(1) { name(X) :- open(X). }"},
  }};
  if (s.at() == 0 || s.lacks_full_stop() || s.is_in_body()) return std::nullopt;
  for (const auto& [word, form] : kForms) {
    if (s.text(0) != word) continue;
    if (word == "#maxint" && s.text(1) == "=" && s.at() > 2) continue;
    return Message{"directive-form",
                   s.found().place,
                   filled("this is no whole {}", {word}),
                   s.expected().empty() ? "" : filled("expected {}", {s.expected().front()}),
                   {},
                   filled("write it like this: {}", {form})};
  }
  return std::nullopt;
}

bool is_literal_only(const Token& token) {
  constexpr std::array kSigns = std::to_array<std::string_view>(
      {"==", "!=", "<>", "<", "<=", ">", ">=", "=", "#int", "#succ"});
  return std::find(kSigns.begin(), kSigns.end(), token.text) != kSigns.end() ||
         is_aggregate(token.text);
}

// A head with what belongs into a body: found at the sign behind it.
Found literal_in_head(const Statement& s) {
  const std::string_view sign = s.found().text;
  if (s.is_in_body() || !s.open().empty() || s.at() == 0) return std::nullopt;
  const bool is_late_not =
      (sign == "not" || sign == "non") && !s.expects("a literal") && !ends_term(s.before());
  if (!is_neck(sign) && sign != "." && !is_late_not) return std::nullopt;
  if (is_neck(sign) && s.token(0).kind == TokenKind::kName && s.text(1) == "{") {
    return Message{"invocation-in-head",
                   s.token(0).place,
                   "a template is invoked in bodies only",
                   "",
                   {},
                   "write a rule for each of its results: p(X) :- name{q}(X)."};
  }
  std::size_t comma = s.size();
  int depth = 0;
  for (std::size_t i = 0; i < s.at() + (is_late_not ? 1 : 0); ++i) {
    const Token& token = s.token(i);
    if (token.text == "(" || token.text == "[" || token.text == "{") ++depth;
    if (token.text == ")" || token.text == "]" || token.text == "}") --depth;
    if (depth != 0) continue;
    if (token.text == "not" || token.text == "non") {
      return Message{"not-in-head",
                     token.place,
                     "not stands in bodies only",
                     "",
                     {},
                     "write -p for what is false, or a constraint: :- p."};
    }
    if (is_literal_only(token)) {
      return Message{"comparison-in-head",
                     token.place,
                     "a head holds atoms only",
                     "",
                     {},
                     "comparisons, arithmetic and aggregates stand behind :-"};
    }
    if (token.text == "," && comma == s.size()) comma = i;
  }
  if (comma == s.size()) return std::nullopt;
  if (comma + 1 == s.at()) return std::nullopt;    // a comma too many
  if (sign == ".") {
    return Message{"comma-in-head",
                   s.token(comma).place,
                   "a comma joins the literals of a body or a query",
                   "",
                   {},
                   "end each fact with a full stop of its own, or a query with ?"};
  }
  return Message{"comma-in-head",
                 s.token(comma).place,
                 "a head has no comma",
                 "",
                 {},
                 "write a rule for each atom of the head, or v for a disjunction"};
}

Found empty_body(const Statement& s) {
  if (!is_neck(s.before().text) || (s.found().text != "." && s.found().text != "?")) {
    return std::nullopt;
  }
  Message message{"empty-body", s.before().place,
                  filled("there is nothing behind {}", {s.before().text})};
  if (s.at() > 1 && s.found().text == ".") {
    message.help = "a fact has no :-";
    message.fixes = {replaced(s.before().place, "")};
  } else {
    message.help = "write the literals of the body";
  }
  return message;
}

Found second_neck(const Statement& s) {
  if (!is_neck(s.found().text) || !s.is_in_body() || !s.open().empty() || s.lacks_full_stop() ||
      !ends_term(s.before())) {
    return std::nullopt;
  }
  const std::size_t head = s.literal();
  const Token& comma = s.token(head - 1);
  const zarel::Position& begin = s.token(head).place.first;
  if (comma.text == "," && begin.line > comma.place.last.line &&
      begin.column <= s.token(0).place.first.column) {
    return Message{"trailing-comma",
                   comma.place,
                   "the rule goes on behind this comma",
                   "",
                   {{s.token(head).place, "another rule begins here"}},
                   "write a full stop instead",
                   {replaced(comma.place, ".")}};
  }
  return Message{"second-rule-sign",
                 s.found().place,
                 filled("this rule has a second {}", {s.found().text}),
                 "",
                 {{s.token(s.neck()).place, "the first one"}},
                 "end a rule with a full stop; in a body stand commas"};
}

// The costs of weak constraints.
Found weight_form(const Statement& s) {
  if (s.innermost() != "[" || s.text(0) != ":~") return std::nullopt;
  const std::size_t bracket = s.open().back();
  const std::string_view sign = s.found().text;
  if (s.text(bracket - 1) != ".") {
    const bool is_cost = s.at() == bracket + 1 && s.found().kind == TokenKind::kNumber;
    if (!is_cost) return std::nullopt;
    return Message{"missing-full-stop",
                   s.token(bracket - 1).place,
                   "a full stop is missing in front of the weight",
                   "",
                   {},
                   "write :~ body. [weight:level]",
                   {put_behind(s.token(bracket - 1), ".")}};
  }
  Message message{"weight-form", s.found().place, "a cost is written [weight:level]"};
  message.help =
      "weight and level are numbers from 0 or variables of the body; "
      "[2:] and [:1] leave one out";
  if (sign == "@") {
    std::size_t end = s.at() + 1;
    while (end < s.size() && s.text(end) != "]") ++end;
    message.help = filled("write [{}:{}]", {s.before().text, s.behind().text});
    message.fixes = {replaced(joined(s.found().place, s.token(end - 1).place),
                              filled(":{}", {s.behind().text}))};
    if (end != s.at() + 2) message.help += "; each instance of the body counts, without terms";
  } else if (sign == "]" && s.at() == bracket + 2) {
    message.help = "write a colon behind the weight";
    message.fixes = {put_behind(s.before(), ":")};
  } else if (sign == "," && s.text(bracket + 2) == ":") {
    message.help = "leave the terms out: each instance of the body counts";
  }
  return message;
}

// "?- p(X)."
Found query_form(const Statement& s) {
  const bool is_mark = s.found().text == "?" && s.at() == 0;
  if (!is_mark) return std::nullopt;
  const zarel::Place place =
      s.touch(0) && s.text(1) == "-" ? joined(s.found().place, s.behind().place) : s.found().place;
  return Message{"query-form", place, "a query ends with its question mark",
                 "",           {},    "write p(X)? for the values of X"};
}

// A full stop behind what is a whole statement without it: "p(X)?.", "p..", "#include \"x\"."
Found stray_full_stop(const Statement& s) {
  if (s.found().text != "." || s.at() != 0) return std::nullopt;
  const std::string_view line = s.text_before().substr(s.text_before().rfind('\n') + 1);
  if (line.starts_with("#include") && s.touch(0)) {
    return Message{"directive-form",
                   joined(s.found().place, s.behind().place),
                   "a file name with a full stop stands in quotes",
                   "",
                   {},
                   "write it like this: #include \"facts.dl\""};
  }
  return Message{"stray-full-stop",
                 s.found().place,
                 "this full stop ends nothing",
                 "",
                 {},
                 "leave it out",
                 {replaced(s.found().place, "")}};
}

constexpr Recogniser kDirectives[] = {directive};

constexpr Recogniser kRecognisers[] = {
    directive_form, weight_form,     query_form,      empty_body,
    second_neck,    literal_in_head, stray_full_stop,
};

}    // namespace

std::span<const Recogniser> directive_recognisers() {
  return kDirectives;
}

std::span<const Recogniser> clause_recognisers() {
  return kRecognisers;
}

}    // namespace workbench
