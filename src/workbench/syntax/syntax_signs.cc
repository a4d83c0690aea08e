// syntax_signs.cc - signs and words that stand for other signs elsewhere.

#include <array>

#include "parser/expected_words.h"
#include "workbench/syntax/syntax_foreign.h"

namespace workbench {
namespace {

using Found = std::optional<Message>;

// A string that runs over the line's end into the next quote: the refused word was to be inside.
Found unclosed_string(const Statement& s) {
  const Token& string = s.before();
  if (string.kind != TokenKind::kQuoted || string.place.first.line == string.place.last.line ||
      string.place.last.line != s.found().place.first.line) {
    return std::nullopt;
  }
  zarel::Place quote = string.place;
  quote.last = quote.first;
  return Message{"unclosed-string",
                 quote,
                 "the string that begins here is not closed in its line",
                 "closed only by a quote further down",
                 {{s.found().place, "where reading stopped: the string ends in front of it"}},
                 "put a quote where the string ends"};
}

// "a \"b\" c" has its end at the first quote inside.
Found escaped_quote(const Statement& s) {
  const Token& string = s.before();
  if (string.kind != TokenKind::kQuoted || !string.text.ends_with("\\\"")) return std::nullopt;
  return Message{"escaped-quote",
                 string.place,
                 "the string ends here: a quoted constant has no \" inside",
                 "",
                 {},
                 "write ' inside, or leave it out"};
}

// ":=", and arrows of other kinds where a rule has its ":-".
Found rule_arrow(const Statement& s) {
  const std::string_view sign = s.found().text;
  const bool is_free = s.open().empty() && !s.is_in_body();
  const auto answer = [&](std::size_t first) {
    const zarel::Place place = joined(s.token(first).place, s.found().place);
    return Message{"rule-arrow", place, "a rule has :- between its head and its body",
                   "",           {},    "write head :- body, the conclusion first"};
  };
  if (sign == "=" && s.before().text == ":" && s.touch(s.at() - 1)) {
    Message message = answer(s.at() - 1);
    if (s.is_in_body()) {
      return Message{"comparison-slip",
                     message.place,
                     "nothing is assigned",
                     "",
                     {},
                     "write == to compare, and = in front of a sum or a product"};
    }
    message.fixes = {replaced(message.place, ":-")};
    return message;
  }
  if (sign == "-" && (s.before().text == ":" || s.before().text == "::") && !s.is_in_body()) {
    Message message = answer(s.at() - 1);
    message.fixes = {replaced(message.place, ":-")};
    return message;
  }
  const bool is_double = s.before().text == "<-" || s.before().text == "<=";
  if (sign == ">" && is_double && s.touch(s.at() - 1)) {
    Message message = answer(s.at() - 1);
    message.text = "there is no sign for equivalence";
    message.help = "write two rules: a :- b. and b :- a.";
    return message;
  }
  if (!is_free || s.at() == 0) return std::nullopt;
  if (sign == "->" || sign == "=>" || sign == "->>" || sign == "=>>") return answer(s.at());
  if (sign == ">" && s.before().text == "==" && s.touch(s.at() - 1)) return answer(s.at() - 1);
  if (sign == "-" && s.behind().text == "->") {
    Message message = answer(s.at());
    message.place = joined(message.place, s.behind().place);
    return message;
  }
  if (sign == "if") {
    Message message = answer(s.at());
    message.fixes = {replaced(message.place, ":-")};
    return message;
  }
  return std::nullopt;
}

// "p(X) <= q(X)." is a comparison to the grammar; between atoms it was to be a rule.
Found backward_arrow(const Statement& s) {
  if (s.is_in_body() || (s.found().text != "." && s.found().text != ",")) return std::nullopt;
  for (std::size_t i = 1; i < s.at(); ++i) {
    const bool is_arrow = s.text(i) == "<=" || s.text(i) == "=>";
    const bool is_atom = s.text(i - 1) == ")" || s.token(i - 1).kind == TokenKind::kName;
    if (is_arrow && is_atom) {
      const zarel::Place place = s.token(i).place;
      return Message{"rule-arrow",
                     place,
                     "a rule has :- between its head and its body",
                     "",
                     {},
                     "write :- here; <= compares",
                     {replaced(place, ":-")}};
    }
  }
  return std::nullopt;
}

struct Slip {
  std::string_view first, second, meant;
};

struct Opposite {
  std::string_view sign, opposite;
};

std::string_view opposite_of(std::string_view sign) {
  constexpr Opposite kOpposites[] = {{"==", "!="}, {"!=", "=="}, {"<>", "=="}, {"<", ">="},
                                     {">=", "<"},  {">", "<="},  {"<=", ">"}};
  for (const Opposite& each : kOpposites) {
    if (each.sign == sign) return each.opposite;
  }
  return {};
}

// "not X > 3"
Found negated_comparison(const Statement& s) {
  const std::size_t first = s.literal();
  if (s.text(first) != "not" && s.text(first) != "non") return std::nullopt;
  for (const std::size_t sign : {s.at(), s.at() - 1}) {
    const std::string_view opposite = opposite_of(s.text(sign));
    if (opposite.empty() || sign != first + 2) continue;
    const zarel::Place place = joined(s.token(first).place, s.token(sign + 1).place);
    const std::string mended = filled("{} {} {}", {s.text(sign - 1), opposite, s.text(sign + 1)});
    Message message{"negated-comparison",
                    place,
                    "not does not negate a comparison",
                    "",
                    {},
                    filled("write the opposite: {}", {mended})};
    if (begins_term(s.token(sign + 1)) && s.text(sign + 2) != "(") {
      message.fixes = {replaced(place, mended)};
    }
    return message;
  }
  return std::nullopt;
}

// "X < Y < Z"
Found comparison_chain(const Statement& s) {
  if (opposite_of(s.found().text).empty() || !opposite_of(s.before().text).empty()) {
    return std::nullopt;
  }
  for (std::size_t i = s.literal() + 1; i < s.at(); ++i) {
    if (opposite_of(s.text(i)).empty() || s.text(s.at() - 1) == "}") continue;
    return Message{"comparison-chain",
                   s.found().place,
                   "a comparison has two sides",
                   "",
                   {},
                   filled("write two: ... {} {}, {} {} ...",
                          {s.text(i), s.before().text, s.before().text, s.found().text})};
  }
  return std::nullopt;
}

// Comparisons that are spelled otherwise.
Found comparison_slip(const Statement& s) {
  constexpr std::array kSlips = std::to_array<Slip>({{"=", "<", "<="},
                                                     {"=", "==", "=="},
                                                     {"==", "=", "=="},
                                                     {"!=", "=", "!="},
                                                     {"!=", "==", "!="},
                                                     {"<", "=", "<="},
                                                     {">", "=", ">="},
                                                     {"~", "=", "!="},
                                                     {"!", "=", "!="},
                                                     {">", "<", "!="}});
  const auto answer = [&](const zarel::Place& place, std::string_view meant) {
    return Message{"comparison-slip",
                   place,
                   filled("this comparison is written {}", {meant}),
                   "",
                   {},
                   "comparisons are ==, !=, <, <=, > and >=",
                   {replaced(place, meant)}};
  };
  for (const Slip& slip : kSlips) {
    if (s.found().text == slip.second && s.before().text == slip.first) {
      return answer(joined(s.before().place, s.found().place), slip.meant);
    }
    if (s.found().text == slip.first && s.behind().text == slip.second && s.touch(s.at())) {
      return answer(joined(s.found().place, s.behind().place), slip.meant);
    }
  }
  const bool is_in_frame = s.innermost() == "[";
  if (s.found().text == "=>" && !is_in_frame && (s.is_in_body() || s.innermost() == "{")) {
    return answer(s.found().place, ">=");
  }
  return std::nullopt;
}

// "and" and "&", in a body or a query.
Found conjunction_sign(const Statement& s) {
  const std::string_view sign = s.found().text;
  if (sign != "&" && sign != "and" && sign != "AND") return std::nullopt;
  if (s.at() == 0 || !ends_term(s.before())) return std::nullopt;
  zarel::Place place = s.found().place;
  if (sign == "&" && s.behind().text == "&" && s.touch(s.at())) {
    place = joined(place, s.behind().place);
  }
  return Message{"conjunction-sign",
                 place,
                 "literals are joined with a comma",
                 "",
                 {},
                 "write a comma instead",
                 {replaced(place, ",")}};
}

// "or", "||" and, in a body, every sign of disjunction.
Found alternative(const Statement& s) {
  const std::string_view sign = s.found().text;
  const bool is_word = sign == "or" || sign == "OR";
  const bool is_sign = sign == ";" || sign == "|" || sign == "v";
  if (!(is_word || is_sign) || !s.open().empty() || s.at() == 0) return std::nullopt;
  const bool is_doubled = sign == "|" && s.before().text == "|";
  if (!s.is_in_body() && (is_word || is_doubled)) {
    const zarel::Place place =
        is_doubled ? joined(s.before().place, s.found().place) : s.found().place;
    return Message{"disjunction-sign",
                   place,
                   "the atoms of a head are joined with v",
                   "",
                   {},
                   "v, | and ; mean the same",
                   {replaced(place, is_doubled ? "|" : "v")}};
  }
  if (!ends_term(s.before())) return std::nullopt;
  if (!s.is_in_body() && !s.expects(zarel::kQuestionMark)) return std::nullopt;
  zarel::Place place = s.found().place;
  if (sign == "|" && s.behind().text == "|") place = joined(place, s.behind().place);
  return Message{"body-alternative",
                 place,
                 "a body has no alternatives",
                 "",
                 {},
                 "write a rule for each alternative; a comma where both have to hold"};
}

// "!p": a negation, or the cut of another language.
Found exclamation(const Statement& s) {
  if (s.found().text != "!") return std::nullopt;
  const bool is_cut = s.behind().kind == TokenKind::kSign && s.behind().text != "(";
  if (is_cut) {
    return Message{"cut",
                   s.found().place,
                   "there is no cut",
                   "",
                   {},
                   "rules have no order: leave it out, and say with literals when a rule holds"};
  }
  return Message{"negation-sign",
                 s.found().place,
                 "default negation is written not",
                 "",
                 {},
                 "write not and a blank instead",
                 {replaced(s.found().place, "not ")}};
}

Found double_negation(const Statement& s) {
  const auto is_not = [](const Token& token) { return token.text == "not" || token.text == "non"; };
  const bool has_sign = s.before().text == "-" || s.before().text == "~";
  const Token& first = s.before(has_sign ? 2 : 1);
  if (!is_not(s.found()) || !is_not(first)) return std::nullopt;
  return Message{"double-negation",
                 joined(first.place, s.found().place),
                 "not stands once in front of an atom",
                 "",
                 {},
                 filled("give the inner negation a name: no_{} :- not {}. and write not no_{}",
                        {s.behind().text, s.behind().text, s.behind().text})};
}

// "NOT p(X)" begins with a variable.
Found capital_not(const Statement& s) {
  const std::string_view word = s.before().text;
  if ((word != "NOT" && word != "Not") || !begins_term(s.found())) return std::nullopt;
  return Message{"negation-sign",
                 s.before().place,
                 "default negation is written not",
                 "",
                 {},
                 "write it in small letters",
                 {replaced(s.before().place, "not")}};
}

// "X is Y + 1"
Found is_operator(const Statement& s) {
  if (s.found().text != "is" || !ends_term(s.before())) return std::nullopt;
  return Message{"is-operator",
                 s.found().place,
                 "a sum or a product is given with =",
                 "",
                 {},
                 "write = instead: X = Y + 1",
                 {replaced(s.found().place, "=")}};
}

// "v" is no name: it is met where a name should be, or followed by what cannot follow it.
Found disjunction_name(const Statement& s) {
  const bool is_found = s.found().text == "v";
  const bool was_taken = s.before().text == "v" && s.expects("an opening parenthesis");
  if (!is_found && !was_taken) return std::nullopt;
  if (is_found && s.at() != 0 && ends_term(s.before())) return std::nullopt;
  return Message{"disjunction-name",
                 is_found ? s.found().place : s.before().place,
                 "v is the sign of a disjunction, and no name here",
                 "",
                 {},
                 "choose another name, or write \"v\" in quotes for a constant"};
}

// Three words in a row, and nothing else so far.
Found prose(const Statement& s) {
  const auto is_word = [](const Token& token) {
    return token.kind == TokenKind::kName || token.kind == TokenKind::kVariable;
  };
  if (s.at() != 1 || !is_word(s.before()) || !is_word(s.found()) || !is_word(s.behind())) {
    return std::nullopt;
  }
  if (s.behind().place.first.line != s.before().place.first.line) return std::nullopt;
  return Message{"foreign-comment",
                 joined(s.before().place, s.behind().place),
                 "these words are no statement",
                 "",
                 {},
                 "a comment begins with %",
                 {{Fix::Kind::kInsertBefore, s.before().place, "% "}}};
}

constexpr Recogniser kRecognisers[] = {
    escaped_quote,    unclosed_string, rule_arrow,       comparison_slip,  negated_comparison,
    comparison_chain, backward_arrow,  conjunction_sign, alternative,      exclamation,
    double_negation,  capital_not,     is_operator,      disjunction_name, prose,
};

}    // namespace

std::span<const Recogniser> sign_recognisers() {
  return kRecognisers;
}

}    // namespace workbench
