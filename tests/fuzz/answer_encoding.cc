#include "answer_encoding.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>
#include <vector>

#include "model/generic_encoding.h"

namespace fuzz {
namespace {

using std::string_view;
constexpr std::size_t kNone = string_view::npos;
constexpr std::array<string_view, 6> kArrows = {"*->>", "*->", "->>", "->", "=>>", "=>"};

// The positions of a text that are neither quoted nor in brackets, from left to right, the
// outermost brackets themselves among them. A text is whole when all its brackets and quotes are
// closed.
struct TopLevel {
  explicit TopLevel(string_view text) {
    int depth = 0;
    bool is_quoted = false;
    for (std::size_t i = 0; i < text.size() && depth >= 0; ++i) {
      const char c = text[i];
      if (c == '"') is_quoted = !is_quoted;
      if (is_quoted) continue;
      if (string_view(")]}").find(c) != kNone) --depth;
      if (depth == 0) positions.push_back(i);
      if (string_view("([{").find(c) != kNone) ++depth;
    }
    is_whole = depth == 0 && !is_quoted;
  }
  std::vector<std::size_t> positions;
  bool is_whole = false;
};

std::size_t find_top(string_view text, string_view wanted) {
  const TopLevel top(text);
  for (const std::size_t at : top.positions) {
    if (text.substr(at).starts_with(wanted)) return at;
  }
  return kNone;
}

std::size_t find_last_top(string_view text, char wanted) {
  std::size_t last = kNone;
  const TopLevel top(text);
  for (const std::size_t at : top.positions) {
    if (text[at] == wanted) last = at;
  }
  return last;
}

std::vector<string_view> split(string_view text) {
  std::vector<string_view> pieces;
  std::size_t begin = 0;
  const TopLevel top(text);
  for (const std::size_t at : top.positions) {
    if (text[at] != ',') continue;
    pieces.push_back(text.substr(begin, at - begin));
    begin = at + 1;
  }
  pieces.push_back(text.substr(begin));
  return pieces;
}

// Thrown for a text that no statement of a program leaves.
struct Cut {};

void require(bool condition) {
  if (!condition) throw Cut{};
}

bool is_token(string_view term) {
  if (term.empty()) return false;
  const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
  const auto is_in_word = [](unsigned char c) { return std::isalnum(c) != 0 || c == '_'; };
  if (term[0] == '"') return term.size() > 2 && term.find('"', 1) == term.size() - 1;
  if (is_digit(term[0])) return std::ranges::all_of(term, is_digit);
  return term[0] >= 'a' && term[0] <= 'z' && std::ranges::all_of(term, is_in_word);
}

// One term, or several with commas between them.
void check_terms(string_view terms) {
  for (string_view term : split(terms)) {
    const std::size_t open = find_top(term, "(");
    if (open != kNone) {
      require(term.ends_with(')'));
      check_terms(term.substr(open + 1, term.size() - open - 2));
      term = term.substr(0, open);
    }
    require(is_token(term));
  }
}

std::string generic(string_view sign, std::initializer_list<string_view> terms) {
  std::string atom(sign);
  atom.append(zarel::kGenericStem).append(std::to_string(terms.size() - 1)).append("(");
  const char* separator = "";
  for (const string_view term : terms) {
    check_terms(term);
    (atom += std::exchange(separator, ",")) += term;
  }
  return atom += ')';
}

// Takes a minus from the front, and "@space" from the back.
struct Element {
  explicit Element(string_view text) : sign(text.substr(0, text.starts_with('-') ? 1 : 0)) {
    text.remove_prefix(sign.size());
    const std::size_t at = find_last_top(text, '@');
    body = text.substr(0, at);
    if (at != kNone) space = text.substr(at + 1);
  }
  std::string frame_space() const { return std::string(space).append(zarel::kFrameMarker); }

  string_view sign;
  string_view body;
  string_view space = zarel::kDefaultSpace;
};

std::string encoded_atom(const Element& element) {
  const std::size_t open = find_last_top(element.body, '(');
  const bool is_shown_with_arguments =
      element.space != zarel::kServiceSpace && element.space.find(zarel::kFrameMarker) == kNone;
  if (open == kNone || !is_shown_with_arguments) {
    return generic(element.sign, {element.body, element.space});
  }
  const string_view arguments = element.body.substr(open + 1, element.body.size() - open - 2);
  return generic(element.sign, {element.body.substr(0, open), element.space, arguments});
}

std::string encoded_membership(const Element& element, std::size_t colon) {
  const bool is_subclass = element.body.substr(colon).starts_with("::");
  return generic(element.sign, {is_subclass ? zarel::kSubClassOf : zarel::kInstanceOf,
                                element.frame_space(), element.body.substr(0, colon),
                                element.body.substr(colon + (is_subclass ? 2 : 1))});
}

// The arrow that comes first in an attribute, the longest of those at its place; or nothing.
string_view arrow_of(string_view attribute, std::size_t& at) {
  const TopLevel top(attribute);
  for (const std::size_t position : top.positions) {
    for (const string_view arrow : kArrows) {
      at = position;
      if (position > 0 && attribute.substr(position).starts_with(arrow)) return arrow;
    }
  }
  return {};
}

std::string encoded_attribute(string_view object, const std::string& space, string_view attribute) {
  const string_view sign = attribute.substr(0, attribute.starts_with('-') ? 1 : 0);
  attribute.remove_prefix(sign.size());
  std::size_t at = 0;
  const string_view arrow = arrow_of(attribute, at);
  if (arrow.empty()) return generic(sign, {zarel::kValueOf, space, object, attribute});
  string_view values = attribute.substr(at + arrow.size());
  if (values.starts_with('{')) values = values.substr(1, values.size() - 2);
  std::string atoms;
  for (const string_view value : split(values)) {
    if (!atoms.empty()) atoms += ", ";
    atoms += generic(sign, {zarel::kValueOf, space, object, attribute.substr(0, at), value,
                            '"' + std::string(arrow) + '"'});
  }
  return atoms;
}

std::string encoded_molecule(const Element& element, std::size_t open) {
  const string_view object = element.body.substr(0, open);
  const string_view inside = element.body.substr(open + 1, element.body.size() - open - 2);
  std::string atoms;
  for (const string_view attribute : split(inside)) {
    if (!atoms.empty()) atoms += ", ";
    atoms += encoded_attribute(object, element.frame_space(), attribute);
  }
  return atoms;
}

std::string encoded_element(string_view text) {
  const Element element(text);
  // A frame statement that is none of zarel's own leaves no text but the comma behind it.
  if (element.body.empty()) return generic(element.sign, {"other", element.frame_space(), "x"});
  if (const auto open = find_top(element.body, "["); open != kNone) {
    return encoded_molecule(element, open);
  }
  if (const auto colon = find_top(element.body, ":"); colon != kNone) {
    return encoded_membership(element, colon);
  }
  return encoded_atom(element);
}

std::string encoded_set(string_view inside) {
  std::string atoms;
  if (inside.empty()) return atoms;
  for (string_view piece : split(inside)) {
    if (!atoms.empty()) atoms += ", ";
    if (piece.starts_with(' ')) piece.remove_prefix(1);
    atoms += encoded_element(piece);
  }
  return atoms;
}

// The closing quote of a text that is quoted in a solver's output, or the same place when none
// begins there: an empty pair of quotes is no text, and its second quote may open one.
std::size_t end_of_quoted(string_view answers, std::size_t at) {
  const std::size_t end = answers[at] == '"' ? answers.find('"', at + 1) : kNone;
  return end == kNone || end == at + 1 ? at : end;
}

}    // namespace

std::optional<std::string> encoded_answers(std::string_view printed) try {
  const TopLevel top(printed);
  if (!top.is_whole) return std::nullopt;
  std::string text;
  std::size_t copied = 0;
  for (const std::size_t at : top.positions) {
    if (printed[at] != '{' && printed[at] != '}') continue;
    const string_view piece = printed.substr(copied, at - copied);
    text += printed[at] == '{' ? std::string(piece) : encoded_set(piece);
    text += printed[at];
    copied = at + 1;
  }
  text += printed.substr(copied);
  return text;
} catch (const Cut&) {
  return std::nullopt;
}

std::string with_blanks(std::string_view answers) {
  std::string text;
  for (std::size_t at = 0; at < answers.size(); ++at) {
    const std::size_t end = end_of_quoted(answers, at);
    text += answers.substr(at, end + 1 - at);
    if (answers[at] == '(') text += ' ';
    at = end;
  }
  return text;
}

bool has_unknown_arrow(std::string_view answers) {
  for (std::size_t at = 0; at < answers.size(); ++at) {
    const std::size_t end = end_of_quoted(answers, at);
    if (end == at) continue;
    const string_view quoted = answers.substr(at + 1, end - at - 1);
    const bool is_arrow = std::ranges::find(kArrows, quoted) != kArrows.end();
    if (!is_arrow && quoted.find_first_of("(){}[],<>=*") != kNone) return true;
    at = end;
  }
  return false;
}

}    // namespace fuzz
