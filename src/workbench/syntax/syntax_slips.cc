// syntax_slips.cc - brackets, commas and full stops that are missing or too many.

#include "parser/expected_words.h"
#include "workbench/syntax/syntax_foreign.h"

namespace workbench {
namespace {

using Found = std::optional<Message>;

// The place right behind a token.
zarel::Place behind(const Token& token) {
  zarel::Position position = token.place.last;
  ++position.column;
  ++position.character;
  return {position, position};
}

struct Bracket {
  std::string_view opening, closing, name, code;
};

constexpr Bracket kBrackets[] = {
    {"(", ")", "parenthesis", "unclosed-parenthesis"},
    {"[", "]", "bracket", "unclosed-bracket"},
    {"{", "}", "brace", "unclosed-brace"},
};

const Bracket* closed_by(std::string_view text) {
  for (const Bracket& bracket : kBrackets) {
    if (bracket.closing == text) return &bracket;
  }
  return nullptr;
}

const Bracket* opened_by(std::string_view text) {
  for (const Bracket& bracket : kBrackets) {
    if (bracket.opening == text) return &bracket;
  }
  return nullptr;
}

bool ends_statement(const Token& token) {
  return token.kind == TokenKind::kEnd || token.text == "." || token.text == "?" ||
         is_neck(token.text) || token.text == "#template";
}

Message unclosed(const Statement& s, const Bracket& bracket, const Token& opening) {
  Message message{
      bracket.code,
      opening.place,
      filled("this {} is not closed", {bracket.name}),
      "opened here",
      {{s.found().place, filled("a {} is missing in front of this", {bracket.closing})}}};
  message.help = filled("write {} where it ends", {bracket.closing});
  return message;
}

// What was opened is still open where the statement ends, or where another kind of bracket closes.
Found unclosed_bracket(const Statement& s) {
  if (s.open().empty()) {
    const bool is_end = s.found().kind == TokenKind::kEnd || s.found().text == "#template";
    if (s.template_brace().kind == TokenKind::kEnd || !is_end) return std::nullopt;
    Message message = unclosed(s, kBrackets[2], s.template_brace());
    message.text = "the definition that begins here is not closed";
    return message;
  }
  const bool is_in_word = s.found().text == "." && s.touch(s.at()) && s.behind().text != "[";
  if (is_in_word) return std::nullopt;
  const Bracket* const bracket = opened_by(s.innermost());
  const Bracket* const closing = closed_by(s.found().text);
  const bool is_other = closing != nullptr && closing != bracket;
  if (!is_other && !ends_statement(s.found()) && !s.lacks_full_stop()) return std::nullopt;
  if (is_other && s.open().size() == 1 && s.template_brace().kind == TokenKind::kEnd) {
    Message message = unclosed(s, *bracket, s.token(s.open().back()));
    message.notes[0].text =
        filled("here stands {} instead of {}", {s.found().text, bracket->closing});
    message.help =
        filled("write {} instead of {}, or in front of it", {bracket->closing, s.found().text});
    return message;
  }
  return unclosed(s, *bracket, s.token(s.open().back()));
}

Found trailing_comma(const Statement& s) {
  if (s.before().text != ",") return std::nullopt;
  const bool is_end = ends_statement(s.found()) || closed_by(s.found().text) != nullptr;
  if (!is_end) return std::nullopt;
  if (s.found().kind == TokenKind::kEnd && s.open().empty()) {
    return Message{"trailing-comma",
                   s.before().place,
                   "nothing follows this comma",
                   "",
                   {},
                   "write a full stop instead, or what is to follow",
                   {replaced(s.before().place, ".")}};
  }
  return Message{"trailing-comma",
                 s.before().place,
                 "nothing follows this comma",
                 "",
                 {},
                 "leave it out, or write what is to follow",
                 {replaced(s.before().place, "")}};
}

Found leading_comma(const Statement& s) {
  const std::string_view before = s.before().text;
  if (s.found().text != ",") return std::nullopt;
  const bool is_first = before == "(" || before == "[" || before == "{" || is_neck(before);
  if (before != "," && !is_first) return std::nullopt;
  return Message{"trailing-comma",
                 s.found().place,
                 "nothing stands in front of this comma",
                 "",
                 {},
                 "leave it out, or write what is missing",
                 {replaced(s.found().place, "")}};
}

bool can_end(const Statement& s) {
  return s.expects(zarel::kFullStop) || s.expects(zarel::kQuestionMark);
}

// The literal in front of the refused token, or its last token where that is long.
std::string literal_before(const Statement& s) {
  constexpr std::size_t kMost = 40;
  const std::string_view first = s.text(s.literal());
  const std::string_view last = s.before().text;
  if (s.literal() >= s.at()) return shortened(last);
  const auto size = static_cast<std::size_t>(last.data() + last.size() - first.data());
  const std::string_view whole(first.data(), size);
  return size > kMost || whole.find('\n') != std::string_view::npos ? shortened(last)
                                                                    : std::string(whole);
}

Message missing_full_stop(const Statement& s) {
  Message message{"missing-full-stop",
                  behind(s.before()),
                  "a full stop is missing",
                  "",
                  {},
                  filled("write . behind {}", {literal_before(s)}),
                  {put_behind(s.before(), ".")}};
  if (s.found().kind != TokenKind::kEnd) {
    message.notes = {{s.found().place, "the next statement begins here"}};
  }
  return message;
}

Found unopened_bracket(const Statement& s) {
  const Bracket* const bracket = closed_by(s.found().text);
  if (bracket == nullptr || s.innermost() == bracket->opening) return std::nullopt;
  const bool ends_definition =
      s.found().text == "}" && s.open().empty() && s.template_brace().kind != TokenKind::kEnd;
  if (ends_definition && s.at() != 0 && can_end(s)) {
    Message message = missing_full_stop(s);
    message.notes = {{s.found().place, "the definition of the template ends here"}};
    return message;
  }
  return Message{"unopened-bracket",
                 s.found().place,
                 filled("there is no {} that this closes", {bracket->opening}),
                 "",
                 {},
                 "leave it out, or open it further left"};
}

Message comma_behind(const Statement& s) {
  return {"missing-comma",
          behind(s.before()),
          "a comma is missing",
          "",
          {},
          filled("write , behind {}", {literal_before(s)}),
          {put_behind(s.before(), ",")}};
}

// The rest of the statement has a neck of its own: the beginning of another rule.
bool begins_rule(const Statement& s) {
  for (std::size_t i = s.at(); i < s.size() && s.text(i) != "."; ++i) {
    if (is_neck(s.text(i))) return true;
  }
  return false;
}

// A body whose literals stand at the margin, as statements do: the next line is one more of them,
// unless it has a neck.
bool goes_on_at_margin(const Statement& s) {
  if (!s.is_in_body() || !begins_term(s.found()) || begins_rule(s)) return false;
  const zarel::Position& begin = s.token(0).place.first;
  for (std::size_t i = s.neck() + 1; i < s.at(); ++i) {
    const zarel::Position& place = s.token(i).place.first;
    if (place.line > s.token(i - 1).place.last.line && place.column <= begin.column) return true;
  }
  return false;
}

// Told before anything else: what follows is a statement of its own.
Found lacking_full_stop(const Statement& s) {
  if (!s.lacks_full_stop() || s.at() == 0 || !s.open().empty()) return std::nullopt;
  if (goes_on_at_margin(s)) return comma_behind(s);
  return missing_full_stop(s);
}

Found full_stop(const Statement& s) {
  if (s.at() == 0) return std::nullopt;
  const bool is_end = s.found().kind == TokenKind::kEnd && can_end(s) && s.open().empty();
  if (is_end) return missing_full_stop(s);
  const bool begins_other = (begins_term(s.found()) || is_neck(s.found().text)) && can_end(s) &&
                            s.open().empty() && ends_term(s.before());
  if (!begins_other) return std::nullopt;
  const bool is_fact = !s.is_in_body() && s.literal() == 0 && s.found().kind == TokenKind::kName;
  if (s.is_in_body() ? begins_rule(s) : is_fact) return missing_full_stop(s);
  return std::nullopt;
}

Found missing_comma(const Statement& s) {
  if (!s.expects("a comma") || !ends_term(s.before())) return std::nullopt;
  const std::string_view text = s.found().text;
  if (text == "in") return std::nullopt;    // of another language: no name
  const bool is_literal = s.open().empty() && (text == "not" || text == "non" || text == "#int" ||
                                               text == "#succ" || is_aggregate(text));
  if (!begins_term(s.found()) && !is_literal && !(text == "-" && s.open().empty())) {
    return std::nullopt;
  }
  return comma_behind(s);
}

constexpr Recogniser kFirst[] = {lacking_full_stop};

constexpr Recogniser kRecognisers[] = {
    trailing_comma, leading_comma, unclosed_bracket, unopened_bracket, full_stop, missing_comma,
};

}    // namespace

std::span<const Recogniser> first_recognisers() {
  return kFirst;
}

std::span<const Recogniser> slip_recognisers() {
  return kRecognisers;
}

}    // namespace workbench
