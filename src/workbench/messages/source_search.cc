#include "workbench/messages/source_search.h"

#include <algorithm>
#include <optional>

#include "base/characters.h"

namespace workbench {
namespace {

// The tokens of a text, as far as places ask for them: words, strings, other characters alone.
class Tokens {
 public:
  Tokens(SourceTexts& texts, const zarel::Position& from)
      : text_(texts.text(from.file)), known_(from) {
    if (!texts.has_line(from.file, from.line)) return;
    const std::string_view line = texts.line(from.file, from.line);
    const auto line_begin = static_cast<std::size_t>(line.data() - text_.data());
    known_place_ = end_ = std::min(line_begin + from.column - 1, text_.size());
  }

  // Goes on to the next token; false behind the last.
  bool next() {
    pass_blanks();
    begin_ = end_;
    known_ = first_ = position(begin_);
    known_place_ = begin_;
    if (begin_ == text_.size()) return false;
    if (text_[begin_] == '"') {
      pass_to(std::min(text_.find('"', begin_ + 1), text_.size() - 1) + 1);
    } else if (!zarel::is_in_word(text_[begin_])) {
      ++end_;
    } else {
      while (end_ < text_.size() && zarel::is_in_word(text_[end_])) ++end_;
    }
    return true;
  }

  std::string_view token() const { return text_.substr(begin_, end_ - begin_); }
  const zarel::Position& first() const { return first_; }
  zarel::Position last() const { return position(end_ - 1); }

  // Whether the token ends a statement: a full stop that is none of a range, or a question mark.
  bool ends_statement() const {
    if (token() == "?") return true;
    const bool is_in_range =
        zarel::has_at(text_, end_, '.') || zarel::has_at(text_, begin_ - 1, '.');
    return token() == "." && !is_in_range;
  }

  bool is_in_front_of(char c) {
    pass_blanks();
    return zarel::has_at(text_, end_, c);
  }

 private:
  void pass_blanks() {
    while (end_ < text_.size()) {
      if (text_[end_] == '%') {
        pass_to(std::min(text_.find('\n', end_), text_.size()));
      } else if (std::string_view(" \t\r\n").find(text_[end_]) != std::string_view::npos) {
        pass_to(end_ + 1);
      } else {
        return;
      }
    }
  }

  void pass_to(std::size_t end) {
    for (; end_ < end; ++end_) {
      if (text_[end_] != '\n') continue;
      known_ = {known_.file, known_.line + 1, 1, 1};
      known_place_ = end_ + 1;
    }
  }

  // Counted from what is known, which is near, and not from the beginning of the line.
  zarel::Position position(std::size_t place) const {
    const std::string_view before = text_.substr(known_place_, place - known_place_);
    const auto wide = std::ranges::count_if(before, zarel::continues_character);
    const auto bytes = static_cast<std::uint32_t>(before.size());
    return {known_.file, known_.line, known_.column + bytes,
            known_.character + bytes - static_cast<std::uint32_t>(wide)};
  }

  std::string_view text_;
  zarel::Position known_;    // of the last token, or of the line that was begun in it
  std::size_t known_place_ = 0;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  zarel::Position first_;
};

bool is_opening(std::string_view token) {
  return token == "(" || token == "{" || token == "[";
}

bool is_closing(std::string_view token) {
  return token == ")" || token == "}" || token == "]";
}

// Calls `use` with the place of each element of the list in parentheses or braces that opens next,
// until it returns true. Returns the last token's place when the list came to its end.
template <class Use>
std::optional<zarel::Position> for_each_element(Tokens& tokens, Use use) {
  if (!tokens.next()) return std::nullopt;
  zarel::Place element;
  for (int depth = 1; tokens.next() && !(depth == 1 && tokens.ends_statement());) {
    depth += is_opening(tokens.token()) ? 1 : is_closing(tokens.token()) ? -1 : 0;
    if (depth == 0 || (depth == 1 && tokens.token() == ",")) {
      if (element.is_known() && use(element)) return std::nullopt;
      if (depth == 0) return tokens.last();
      element = {};
    } else {
      if (!element.is_known()) element.first = tokens.first();
      element.last = tokens.last();
    }
  }
  return std::nullopt;
}

template <class Fits>
WrittenAtom find_atom(SourceTexts& texts, const zarel::Position& from, std::string_view name,
                      Fits fits) {
  Tokens tokens(texts, from);
  while (tokens.next() && !tokens.ends_statement()) {
    if (tokens.token() != name) continue;
    WrittenAtom atom{{tokens.first(), tokens.last()}};
    if (tokens.is_in_front_of('(')) {
      const auto count = [&atom](const zarel::Place& /*element*/) { return ++atom.arguments == 0; };
      atom.place.last = for_each_element(tokens, count).value_or(atom.place.last);
    }
    if (fits(atom.arguments)) return atom;
  }
  return {};
}

}    // namespace

zarel::Place place_of_word(SourceTexts& texts, const zarel::Position& from, std::string_view word) {
  Tokens tokens(texts, from);
  while (tokens.next() && !tokens.ends_statement()) {
    if (tokens.token() == word) return {tokens.first(), tokens.last()};
  }
  return {};
}

WrittenAtom first_atom(SourceTexts& texts, const zarel::Position& from, std::string_view name) {
  return find_atom(texts, from, name, [](std::size_t /*arguments*/) { return true; });
}

zarel::Place place_of_atom(SourceTexts& texts, const zarel::Position& from, std::string_view name,
                           std::size_t arguments) {
  return find_atom(texts, from, name, [=](std::size_t seen) { return seen == arguments; }).place;
}

zarel::Place place_of_actual(SourceTexts& texts, const zarel::Position& invocation,
                             std::size_t position) {
  Tokens tokens(texts, invocation);
  if (!tokens.next() || !tokens.is_in_front_of('{')) return {};
  zarel::Place found;
  for_each_element(tokens, [&](const zarel::Place& element) {
    found = element;
    return position-- == 0;
  });
  return found;
}

zarel::Place place_of_query(SourceTexts& texts, const zarel::Position& from) {
  Tokens tokens(texts, from);
  while (tokens.next() && !tokens.ends_statement()) {
  }
  return tokens.token() == "?" ? zarel::Place{from, tokens.last()} : zarel::Place{};
}

}    // namespace workbench
