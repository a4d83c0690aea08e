// syntax_terms.cc - arguments, numbers and arithmetic as other languages have them.

#include <array>

#include "parser/expected_words.h"
#include "workbench/syntax/syntax_foreign.h"

namespace workbench {
namespace {

using Found = std::optional<Message>;

constexpr std::string_view kComparisons[] = {"==", "!=", "<>", "<", "<=", ">", ">="};

bool is_comparison(std::string_view text) {
  for (const std::string_view sign : kComparisons) {
    if (text == sign) return true;
  }
  return false;
}

bool is_plain(const Token& token) {
  return token.kind == TokenKind::kVariable || token.kind == TokenKind::kNumber ||
         token.text == "#maxint";
}

// "left = right" for what is wanted of one operation; there are sums and products only.
std::string equation(std::string_view wanted, std::string_view sign, std::string_view left,
                     std::string_view right) {
  if (sign == "+" || sign == "*") return filled("{} = {} {} {}", {wanted, left, sign, right});
  if (sign == "-") return filled("{} = {} + {}", {left, wanted, right});
  return filled("{} = {} * {}", {left, wanted, right});
}

// How the operation of two plain operands is written, by where it stands.
std::string arithmetic_help(const Statement& s, std::size_t sign) {
  const std::string_view text = s.text(sign);
  const bool is_known = text == "+" || text == "*" || text == "-" || text == "/";
  if (!is_known || !is_plain(s.token(sign - 1)) || !is_plain(s.token(sign + 1))) {
    return "compute in literals of the body, one sum or product each: N = X + 1, M = N * 2";
  }
  const std::string_view left = s.text(sign - 1);
  const std::string_view right = s.text(sign + 1);
  const std::string_view why = text == "-"   ? "there is no subtraction; "
                               : text == "/" ? "there is no division; "
                                             : "";
  const std::string_view compared = s.text(sign - 2);
  const bool is_equation = compared == "=" || compared == "==";
  if (is_equation && s.token(sign - 3).kind == TokenKind::kVariable) {
    return filled("{}write {}", {why, equation(s.text(sign - 3), text, left, right)});
  }
  // "X + 1 = Y"
  const bool is_turned = s.literal() + 1 == sign && s.text(sign + 2) == "=";
  if (is_turned && s.token(sign + 3).kind == TokenKind::kVariable) {
    return filled("{}write {}", {why, equation(s.text(sign + 3), text, left, right)});
  }
  const std::string name = s.unused_variable();
  const bool is_second = (compared == "+" || compared == "*") && s.text(sign - 4) == "=";
  if (is_second && (text == "+" || text == "*")) {
    return filled("one sum or product each: {} = {} {} {}, {} = {} {} {}",
                  {name, s.text(sign - 3), compared, left, s.text(sign - 5), name, text, right});
  }
  const std::string written = equation(name, text, left, right);
  return filled("{}write {} in the body, and {} here", {why, written, name});
}

}    // namespace

std::optional<Message> arithmetic(const Statement& s, std::size_t sign) {
  const Token& left = s.token(sign - 1);
  const Token& right = s.token(sign + 1);
  if (!ends_term(left)) return std::nullopt;
  const bool is_name = left.kind == TokenKind::kName && right.kind == TokenKind::kName;
  const std::string_view text = s.text(sign);
  if (is_name && s.touch(sign - 1) && s.touch(sign)) {
    const zarel::Place place = joined(left.place, right.place);
    const std::string quoted = filled("\"{}{}{}\"", {left.text, text, right.text});
    return Message{"sign-in-name",
                   place,
                   filled("a name has no {} in it", {text}),
                   "",
                   {},
                   "names are made of letters, digits and _; anything else stands in quotes",
                   {replaced(place, quoted)}};
  }
  if (!begins_term(right) && right.text != "(" && right.text != "-" &&
      !(text == "*" && right.text == text)) {
    return std::nullopt;
  }
  const bool is_argument = s.innermost() == "(" || s.innermost() == "[";
  return Message{"arithmetic-term",
                 s.token(sign).place,
                 is_argument ? "nothing is computed in an argument" : "nothing is computed here",
                 "",
                 {},
                 arithmetic_help(s, sign)};
}

namespace {

Found arithmetic_sign(const Statement& s) {
  const std::string_view sign = s.found().text;
  if (sign == "mod" || sign == "div") {
    if (!ends_term(s.before()) || !begins_term(s.behind())) return std::nullopt;
    return Message{"arithmetic-term",
                   s.found().place,
                   filled("there is no {}", {sign}),
                   "",
                   {},
                   "there are sums and products: N is divisible by 3 where N = M * 3"};
  }
  if (sign != "-" && sign != "+" && sign != "*") return std::nullopt;
  return arithmetic(s, s.at());
}

// "-1" where a term stands, and "-1 <" where a literal does.
Found negative_number(const Statement& s) {
  std::size_t sign = s.at();
  if (s.found().text != "-") {
    if (s.before().kind != TokenKind::kNumber || s.text(s.at() - 2) != "-") return std::nullopt;
    sign = s.at() - 2;
    const bool is_value = s.innermost() == "[" && s.text(sign - 1).ends_with("->");
    if (s.literal() != sign && !is_value && !s.text(sign - 1).ends_with("->>")) return std::nullopt;
  }
  const Token& behind = s.token(sign + 1);
  if (sign != 0 && ends_term(s.token(sign - 1))) return std::nullopt;
  if (behind.kind == TokenKind::kNumber) {
    return Message{"negative-number",
                   joined(s.token(sign).place, behind.place),
                   "there are no negative numbers",
                   "",
                   {},
                   "integers begin at 0: move all values up by the same amount"};
  }
  if (sign != s.at() || !begins_term(behind) || s.literal() != sign) return std::nullopt;
  return Message{"negated-term",
                 joined(s.token(sign).place, behind.place),
                 "- stands in front of an atom, not of a term",
                 "",
                 {},
                 "leave it out, or make the name one: write \"-a\" in quotes, or minus(a)"};
}

// The full stop of "1.5", which stands at `dot`.
Found decimal(const Statement& s, std::size_t dot) {
  const Token& whole = s.token(dot - 1);
  const Token& fraction = s.token(dot + 1);
  if (s.text(dot) != "." || whole.kind != TokenKind::kNumber ||
      fraction.kind != TokenKind::kNumber || !s.touch(dot - 1) || !s.touch(dot)) {
    return std::nullopt;
  }
  constexpr std::array<std::string_view, 3> kUnits = {"tenths", "hundredths", "thousandths"};
  std::string help = "count in a smaller unit";
  if (fraction.text.size() <= kUnits.size() && whole.text.size() < 6) {
    std::string digits(whole.text == "0" ? "" : whole.text);
    digits += fraction.text;
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size() - 1));
    help = filled("count in a smaller unit: {} {}", {digits, kUnits[fraction.text.size() - 1]});
  }
  return Message{"decimal-number",
                 joined(whole.place, fraction.place),
                 "there are no decimal numbers",
                 "",
                 {},
                 help};
}

Found decimal_number(const Statement& s) {
  if (auto message = decimal(s, s.at())) return message;
  return decimal(s, s.at() - 1);
}

// ".." anywhere but in a fact of one range.
Found misplaced_range(const Statement& s) {
  std::size_t dots = s.size();
  for (const std::size_t first : {s.at(), s.at() - 1, s.at() - 2}) {
    if (s.text(first) == "." && s.text(first + 1) == "." && s.touch(first)) dots = first;
  }
  const bool is_head = is_neck(s.found().text) && s.before().text == ")";
  for (std::size_t i = 0; is_head && i + 1 < s.at(); ++i) {
    if (s.text(i) == "." && s.text(i + 1) == "." && s.touch(i)) dots = i;
  }
  if (dots == s.size() || dots == 0) return std::nullopt;
  const Token& first = s.token(dots - 1);
  const Token& last = s.token(dots + 2);
  if (!ends_term(first) || !begins_term(last)) return std::nullopt;
  const zarel::Place place = joined(first.place, last.place);
  if (s.is_in_body() || is_head || s.text(dots - 2) == "=") {
    const std::string_view variable =
        s.token(dots - 3).kind == TokenKind::kVariable ? s.text(dots - 3) : "X";
    return Message{"misplaced-range",
                   place,
                   "a range stands in a fact only, not in a rule",
                   "",
                   {},
                   filled("write #int({}), {} >= {}, {} <= {} in the body",
                          {variable, variable, first.text, variable, last.text})};
  }
  const auto is_bound = [](const Token& token) {
    return token.kind == TokenKind::kNumber || token.text == "#maxint";
  };
  if (!is_bound(first) || !is_bound(last)) {
    return Message{"misplaced-range",
                   place,
                   "a range goes from a number to a number",
                   "",
                   {},
                   "only numbers and #maxint are the ends of a range"};
  }
  return Message{"misplaced-range",
                 place,
                 "a range is the only argument of a fact",
                 "",
                 {},
                 filled("give it a fact of its own, number({}..{}). and join it in a rule",
                        {first.text, last.text})};
}

// "p(1;2)"
Found pooling(const Statement& s) {
  if (s.found().text != ";" || s.innermost() != "(") return std::nullopt;
  const std::size_t open = s.open().back();
  const std::string_view name = s.text(open - 1);
  std::string help = "write the atom once for each value";
  if (s.token(open - 1).kind == TokenKind::kName && s.behind().kind != TokenKind::kEnd &&
      !s.is_in_body() && open + 2 == s.at()) {
    help = filled("write one for each value: {}({}). {}({}).",
                  {name, s.before().text, name, s.behind().text});
  }
  return Message{"pooling", s.found().place, "an argument is one term", "", {}, help};
}

// "o[a = b]" and "o[a : b]"
Found frame_arrow(const Statement& s) {
  const std::string_view sign = s.found().text;
  if ((sign != "=" && sign != ":") || s.innermost() != "[" || s.text(0) == ":~") {
    return std::nullopt;
  }
  const bool is_prefix = sign == ":" && s.touch(s.at() - 1) && s.touch(s.at()) &&
                         s.behind().kind == TokenKind::kName && s.text(s.at() + 2).ends_with(">");
  if (is_prefix) {
    return Message{"frame-term",
                   joined(s.before().place, s.behind().place),
                   "an attribute has no prefix",
                   "",
                   {},
                   "only values have: write the whole address in quotes"};
  }
  return Message{"frame-arrow",
                 s.found().place,
                 "an attribute gets its value by an arrow",
                 "",
                 {},
                 "write -> instead",
                 {replaced(s.found().place, "->")}};
}

// "_[a -> b]" and "o : 12"
Found frame_term(const Statement& s) {
  if (s.found().text == "[" && s.before().text == "_") {
    return Message{"frame-term",
                   s.before().place,
                   "_ is no object of a frame",
                   "",
                   {},
                   "write a variable that occurs nowhere else"};
  }
  if (s.found().kind == TokenKind::kNumber && s.before().text == ":" && s.open().empty()) {
    return Message{"frame-term",
                   s.found().place,
                   "a number is no class",
                   "",
                   {},
                   "write a name, or a variable"};
  }
  return std::nullopt;
}

// "X = a", where "=" is followed by no sum, product or aggregate.
Found single_equals(const Statement& s) {
  const std::size_t first = s.literal();
  std::size_t sign = s.at();
  for (std::size_t i = first; i <= s.at(); ++i) {
    if (s.text(i) == "=") sign = i;
  }
  if (s.text(sign) != "=") return std::nullopt;
  const Token& equals = s.token(sign);
  if (s.innermost() == "(" && sign == s.at()) {
    return Message{"single-equals",
                   equals.place,
                   "an argument is a term, not a comparison",
                   "",
                   {},
                   "compare in a literal of the body: X == a"};
  }
  const bool is_before = sign == s.at() || sign + 1 == s.at();    // what follows "=" is refused
  const bool is_behind = sign + 2 == s.at() || s.found().text == "." || s.found().text == ",";
  if (!is_before && !is_behind) return std::nullopt;
  if (sign != s.at() && !begins_term(s.token(sign + 1))) return std::nullopt;
  const std::string_view left = s.text(sign - 1);
  const Token& right = s.token(sign + 1);
  std::string help = "write == to compare";
  if (sign == first + 1 && begins_term(right)) {
    help += filled(": {} == {}", {left, right.text});
    if (s.text(sign + 2) == "(") help += "(...)";
  }
  return Message{"single-equals",
                 equals.place,
                 "= stands only in front of a sum, a product or an aggregate",
                 "",
                 {},
                 help,
                 {replaced(equals.place, "==")}};
}

// "2X"
Found factor(const Statement& s) {
  const bool is_factor = s.before().kind == TokenKind::kNumber && s.touch(s.at() - 1) &&
                         s.found().kind == TokenKind::kVariable;
  if (!is_factor) return std::nullopt;
  const std::string_view left = s.before().text;
  const std::string_view right = s.found().text;
  const bool is_result = s.before(2).text == "=" && s.before(3).kind == TokenKind::kVariable;
  const std::string name = is_result ? std::string(s.before(3).text) : s.unused_variable();
  const std::string written = equation(name, "*", left, right);
  return Message{"arithmetic-term",
                 joined(s.before().place, s.found().place),
                 "a product is written with *",
                 "",
                 {},
                 is_result ? filled("write {}", {written})
                           : filled("write {} in the body, and {} here", {written, name})};
}

// "2nd" and "1e5" are a number and a name.
Found digit_name(const Statement& s) {
  if (s.before().kind != TokenKind::kNumber || !s.touch(s.at() - 1)) return std::nullopt;
  if (s.found().kind != TokenKind::kName && s.found().kind != TokenKind::kVariable &&
      s.found().text != "_") {
    return std::nullopt;
  }
  const zarel::Place place = joined(s.before().place, s.found().place);
  const std::string quoted = filled("\"{}{}\"", {s.before().text, s.found().text});
  return Message{"digit-name",
                 place,
                 "a name does not begin with a digit",
                 "",
                 {},
                 "begin it with a letter, or put it in quotes",
                 {replaced(place, quoted)}};
}

// "a.b" and "a@b" in an argument.
Found sign_in_name(const Statement& s) {
  const std::string_view sign = s.found().text;
  if ((sign != "." && sign != "@") || s.innermost() != "(") return std::nullopt;
  const bool is_name = s.before().kind == TokenKind::kName && s.behind().kind == TokenKind::kName;
  if (!is_name || !s.touch(s.at() - 1) || !s.touch(s.at())) return std::nullopt;
  const zarel::Place place = joined(s.before().place, s.behind().place);
  const std::string quoted = filled("\"{}{}{}\"", {s.before().text, sign, s.behind().text});
  return Message{"sign-in-name",
                 place,
                 filled("a name has no {} in it", {sign}),
                 "",
                 {},
                 "names are made of letters, digits and _; anything else stands in quotes",
                 {replaced(place, quoted)}};
}

// "[a, b]" where a term stands.
Found list_term(const Statement& s) {
  if (s.found().text != "[" || s.at() == 0) return std::nullopt;
  const std::string_view before = s.before().text;
  if (before != "(" && before != "," && before != "=" && !is_comparison(before)) {
    return std::nullopt;
  }
  if (s.innermost() != "(" && (before == "," || before == "(")) return std::nullopt;
  return Message{"list-term",
                 s.found().place,
                 "there are no lists",
                 "",
                 {},
                 "write a function term: cons(a, cons(b, nil))"};
}

// "(a, b)" or "(X + 1) * 2" where a term stands.
Found parenthesised_term(const Statement& s) {
  if (s.found().text != "(" || s.at() == 0 || ends_term(s.before())) return std::nullopt;
  const std::string_view before = s.before().text;
  const bool is_term = s.innermost() == "(" || before == "=" || is_comparison(before);
  if (!is_term) {
    return Message{"parenthesised-term",
                   s.found().place,
                   "literals are not grouped in parentheses",
                   "",
                   {},
                   "leave them out, or give a conjunction a name: both :- p, q."};
  }
  return Message{"parenthesised-term",
                 s.found().place,
                 "parentheses stand only behind a name",
                 "",
                 {},
                 s.innermost() == "(" ? "give the tuple a name: pair(a, b)"
                                      : "compute step by step: N = Y + 1, X = N * 2"};
}

// "p()"
Found empty_arguments(const Statement& s) {
  if (s.found().text != ")" || s.before().text != "(") return std::nullopt;
  const zarel::Place place = joined(s.before().place, s.found().place);
  return Message{"empty-arguments",
                 place,
                 "there is nothing between these parentheses",
                 "",
                 {},
                 "an atom without arguments has no parentheses",
                 {replaced(place, "")}};
}

constexpr Recogniser kRecognisers[] = {
    decimal_number, misplaced_range, negative_number, factor,          digit_name,
    sign_in_name,   arithmetic_sign, pooling,         list_term,       parenthesised_term,
    frame_arrow,    frame_term,      single_equals,   empty_arguments,
};

}    // namespace

std::span<const Recogniser> term_recognisers() {
  return kRecognisers;
}

}    // namespace workbench
