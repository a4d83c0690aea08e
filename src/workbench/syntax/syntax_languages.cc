// syntax_languages.cc - what databases and programming languages have: fields, statements of SQL,
// sets and lists of values, absolute values.

#include <algorithm>
#include <array>

#include "base/characters.h"
#include "workbench/syntax/syntax_foreign.h"

namespace workbench {
namespace {

using Found = std::optional<Message>;

bool is_word(const Token& token) {
  return token.kind == TokenKind::kName || token.kind == TokenKind::kVariable;
}

bool is_comparison(std::string_view text) {
  constexpr std::array kSigns =
      std::to_array<std::string_view>({"=", "==", "!=", "<>", "<", "<=", ">", ">="});
  return std::ranges::find(kSigns, text) != kSigns.end();
}

// The word that a full stop parts from the first token, nothing between them.
std::string_view word_in_front(const Statement& s) {
  std::string_view text = s.text_before();
  const Token& first = s.token(0);
  if (!text.ends_with('.')) return {};
  text.remove_suffix(1);
  std::size_t begin = text.size();
  while (begin != 0 && zarel::is_in_word(text[begin - 1])) --begin;
  const std::string_view word = text.substr(begin);
  const bool is_in_line = word.size() + 1 < first.place.first.column;
  return is_in_line && !word.empty() && !zarel::is_digit(word.front()) ? word : std::string_view{};
}

// "ann.age = 3": "ann." was a statement, and "age = 3" is none.
Found field(const Statement& s) {
  if (!is_word(s.token(0)) || !is_comparison(s.text(1)) || s.at() == 0) return std::nullopt;
  const std::string_view object = word_in_front(s);
  if (object.empty()) return std::nullopt;
  const Token& attribute = s.token(0);
  zarel::Place place = attribute.place;
  place.first.column -= static_cast<std::uint32_t>(object.size()) + 1;
  place.first.character -= static_cast<std::uint32_t>(object.size()) + 1;
  const std::string_view sign = s.text(1);
  const bool is_value = sign == "=" || sign == "==";
  const std::string name = s.unused_variable();
  const std::string_view value = begins_term(s.token(2)) ? s.text(2) : "V";
  return Message{"field-access",
                 place,
                 "an attribute is not named behind a full stop",
                 "",
                 {},
                 is_value ? filled("write {}[{} -> {}]", {object, attribute.text, value})
                          : filled("write {}[{} -> {}], {} {} {}",
                                   {object, attribute.text, name, name, sign, value})};
}

std::string in_capitals(std::string_view word) {
  std::string text(word);
  std::ranges::transform(text, text.begin(), [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
  });
  return text;
}

// "SELECT ... FROM staff": two words of which the second comes somewhere behind the first.
Found sql_statement(const Statement& s) {
  struct Form {
    std::string_view first, second, help;
  };
  constexpr Form kForms[] = {
      {"SELECT", "FROM",
       "write a query, staff(N, A), A > 30? or a rule, old(N) :- staff(N, A), A > 30."},
      {"INSERT", "INTO", "write a fact for each row: staff(ann, 30)."},
      {"CREATE", "TABLE", "leave it out: a relation is there as soon as a fact or a rule gives it"},
      {"CREATE", "VIEW", "write a rule: old(N) :- staff(N, A), A > 30."},
      {"DELETE", "FROM", "nothing is changed: leave the fact out, or let rules say what holds"},
      {"UPDATE", "SET", "nothing is changed: leave the fact out, or let rules say what holds"},
  };
  constexpr std::size_t kFarthest = 30;
  if (s.at() != 1 || !is_word(s.before())) return std::nullopt;
  const std::string first = in_capitals(s.text(0));
  for (const Form& form : kForms) {
    if (first != form.first) continue;
    for (std::size_t i = 1; i < std::min(s.size(), kFarthest); ++i) {
      if (!is_word(s.token(i)) || in_capitals(s.text(i)) != form.second) continue;
      return Message{"sql-statement",
                     joined(s.token(0).place, s.token(i).place),
                     "this is a statement of SQL",
                     "",
                     {},
                     std::string(form.help)};
    }
  }
  return std::nullopt;
}

// "1, 2, 3" behind an opening bracket; empty when something else stands there, or too much.
std::vector<std::string_view> values_behind(const Statement& s, std::size_t bracket,
                                            std::string_view closing) {
  constexpr std::size_t kMost = 4;
  std::vector<std::string_view> values;
  for (std::size_t i = bracket + 1; values.size() < kMost; i += 2) {
    if (!begins_term(s.token(i))) break;
    values.push_back(s.text(i));
    if (s.text(i + 1) == closing) return values;
    if (s.text(i + 1) != ",") break;
  }
  return {};
}

std::string help_for_member(std::string_view member, const std::vector<std::string_view>& values) {
  std::string facts;
  for (const std::string_view value : values) facts += filled(" value({}).", {value});
  if (facts.empty()) facts = " value(a). value(b).";
  return filled("give each value a fact,{} and write value({}) here", {facts, member});
}

Message no_member(const zarel::Place& place, std::string help) {
  return {"set-membership", place, "a body has no sets of values", "", {}, std::move(help)};
}

// "X in {1, 2}" and "X in 1..3"
Found in_operator(const Statement& s) {
  if (s.found().text != "in" || s.at() == 0 || !ends_term(s.before())) return std::nullopt;
  const std::string_view member = s.before().text;
  if (s.behind(2).text == "." && s.behind(3).text == ".") {
    return no_member(s.found().place,
                     filled("write #int({}), {} >= {}, {} <= {}",
                            {member, member, s.behind().text, member, s.behind(4).text}));
  }
  const std::string_view opening = s.behind().text;
  const std::string_view closing = opening == "{" ? "}" : opening == "[" ? "]" : ")";
  return no_member(s.found().place, help_for_member(member, values_behind(s, s.at() + 1, closing)));
}

// "member(X, [a, b])"
Found member_of_list(const Statement& s) {
  const std::size_t bracket = s.at();
  if (s.found().text != "[" || s.before().text != "," || s.innermost() != "(") return std::nullopt;
  const std::size_t open = s.open().back();
  if (s.text(open - 1) != "member" || open + 3 != bracket) return std::nullopt;
  return no_member(joined(s.token(open - 1).place, s.found().place),
                   help_for_member(s.text(open + 1), values_behind(s, bracket, "]")));
}

// "o[a ->> [x, y]]"
Found list_of_values(const Statement& s) {
  const std::string_view arrow = s.before().text;
  const bool is_value = arrow.ends_with("->") || arrow.ends_with("->>") || arrow.ends_with("=>") ||
                        arrow.ends_with("=>>");
  if (s.found().text != "[" || s.innermost() != "[" || !is_value) return std::nullopt;
  std::string values;
  for (const std::string_view value : values_behind(s, s.at(), "]")) {
    (values += values.empty() ? "" : ", ") += value;
  }
  return Message{"list-term",
                 s.found().place,
                 "there are no lists",
                 "",
                 {},
                 "several values of an attribute stand in braces: {" +
                     (values.empty() ? "x, y" : values) + '}'};
}

// "|X|" where a term stands.
Found absolute_value(const Statement& s) {
  const std::string_view before = s.before().text;
  const bool is_term =
      before == "(" || is_comparison(before) || (before == "," && s.innermost() == "(");
  if (s.found().text != "|" || s.at() == 0 || !is_term) return std::nullopt;
  std::size_t end = s.at() + 1;
  while (end < s.size() && s.text(end) != "|") ++end;
  if (end == s.size()) return std::nullopt;
  return Message{"absolute-value",
                 joined(s.found().place, s.token(end).place),
                 "there is no absolute value",
                 "",
                 {},
                 "integers are never negative; the distance D of X and Y takes two rules, "
                 "one with X = Y + D and one with Y = X + D"};
}

// "#sum+{...}"
Found positive_sum(const Statement& s) {
  if (s.found().text != "+" || s.before().text != "#sum") return std::nullopt;
  const zarel::Place place = joined(s.before().place, s.found().place);
  return Message{"positive-sum",
                 place,
                 "there is no #sum+",
                 "",
                 {},
                 "write #sum: integers are never negative",
                 {replaced(place, "#sum")}};
}

// "count{X : p(X)}"
Found aggregate_without_sign(const Statement& s) {
  if (s.innermost() != "{" || s.open().back() == 0) return std::nullopt;
  const Token& name = s.token(s.open().back() - 1);
  const std::string meant = filled("#{}", {name.text});
  if (s.found().text != ":" || !is_aggregate(meant)) return std::nullopt;
  return Message{"unknown-directive",
                 name.place,
                 filled("the aggregate {} begins with #", {name.text}),
                 "",
                 {},
                 filled("write {}", {meant}),
                 {replaced(name.place, meant)}};
}

// "o[a -> x; b -> y]"
Found attribute_separator(const Statement& s) {
  if (s.found().text != ";" || s.innermost() != "[" || s.text(0) == ":~") return std::nullopt;
  return Message{"missing-comma",
                 s.found().place,
                 "the attributes of an object are joined with a comma",
                 "",
                 {},
                 "write a comma instead",
                 {replaced(s.found().place, ",")}};
}

// "p -> q ; r" in a body.
Found conditional(const Statement& s) {
  if (s.found().text != "->" || !s.is_in_body() || s.before().text != ")" || !s.open().empty()) {
    return std::nullopt;
  }
  return Message{"body-alternative",
                 s.found().place,
                 "a body has no if and else",
                 "",
                 {},
                 "write a rule for each case: h :- p, q. and h :- not p, r."};
}

constexpr Recogniser kRecognisers[] = {
    aggregate_without_sign, attribute_separator, conditional,    field,
    sql_statement,          in_operator,         member_of_list, list_of_values,
    absolute_value,         positive_sum,
};

}    // namespace

std::span<const Recogniser> language_recognisers() {
  return kRecognisers;
}

}    // namespace workbench
