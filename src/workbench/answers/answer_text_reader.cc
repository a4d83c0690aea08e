#include "workbench/answers/answer_text_reader.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <utility>

#include "base/characters.h"
#include "dl/folding.h"
#include "model/generic_encoding.h"
#include "workbench/answers/term_text.h"

namespace workbench {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

bool is_blank(char c) {
  return kBlanks.find(c) != std::string_view::npos;
}

constexpr std::size_t kPiece = std::size_t{1} << 16;    // of an answer set, looked at at once
constexpr std::size_t kShown = 60;                      // of what cannot be read

// Characters that say nothing about where an item ends.
bool is_inner(char c) {
  return zarel::is_in_word(c) || c == '-' || c == '\'' || c == '#';
}

std::size_t count_of(const zarel::AnswerTerms& terms) {
  return static_cast<std::size_t>(std::ranges::distance(terms.begin(), terms.end()));
}

// Whether the last of several terms is an arrow, in its quotes.
bool ends_with_arrow(std::string_view arguments) {
  constexpr auto kEnds = std::to_array<std::string_view>(
      {",\"->\"", ",\"->>\"", ",\"*->\"", ",\"*->>\"", ",\"=>\"", ",\"=>>\""});
  return std::ranges::any_of(
      kEnds, [arguments](std::string_view end) { return arguments.ends_with(end); });
}

// An atom of a space of frames is a statement about an object, if it has the parts of one.
ItemKind kind_of(std::string_view relation, std::string_view space, std::string_view arguments) {
  if (!space.ends_with(zarel::kFrameMarker) || space.size() == zarel::kFrameMarker.size())
    return ItemKind::kAtom;
  constexpr std::size_t kWithValue = 4;    // object, attribute, value, arrow
  const std::size_t count = count_of(zarel::AnswerTerms(arguments));
  if (relation == zarel::kInstanceOf && count == 2) return ItemKind::kMembership;
  if (relation == zarel::kSubClassOf && count == 2) return ItemKind::kSubclass;
  if (relation != zarel::kValueOf) return ItemKind::kAtom;
  if (count == 2) return ItemKind::kAttribute;
  return count == kWithValue && ends_with_arrow(arguments) ? ItemKind::kValue : ItemKind::kAtom;
}

// "weight:level" up to the bracket, which is taken, too.
std::optional<Cost> cost_of(std::string_view& text, std::string_view close) {
  const auto number = [&text](std::string_view end) {
    const std::size_t size = std::min(text.find(end), text.size());
    const std::string_view digits = text.substr(0, size);
    text.remove_prefix(std::min(size + end.size(), text.size()));
    return std::ranges::all_of(digits, zarel::is_digit) ? digits : std::string_view();
  };
  const std::string_view weight = number(":");
  const std::string_view level = number(close);
  if (weight.empty() || level.empty()) return std::nullopt;
  return Cost{std::string(weight), std::string(level)};
}

}    // namespace

bool AnswerTextReader::read(std::string_view text) {
  while (!text.empty() && error_.empty()) {
    std::size_t taken = 0;
    switch (state_) {
      case State::kBetween:
        taken = read_between(text);
        break;
      case State::kLine:
        taken = read_line(text);
        break;
      case State::kSet:
        taken = read_set(text);
        break;
    }
    text.remove_prefix(taken);
  }
  return error_.empty();
}

bool AnswerTextReader::read_improving(std::string_view text) {
  settle();
  is_improving_ = true;
  read(text);
  settle();
  is_improving_ = false;
  return error_.empty();
}

std::size_t AnswerTextReader::read_between(std::string_view text) {
  const std::size_t blanks = std::min(text.find_first_not_of(kBlanks), text.size());
  if (blanks != 0) return blanks;
  if (text.front() == '{') {
    begin_set();
    return 1;
  }
  state_ = State::kLine;
  line_.clear();
  in_string_ = false;
  return 0;
}

// A line ends with a line end outside of strings, or where its answer set begins.
std::size_t AnswerTextReader::read_line(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') in_string_ = !in_string_;
    if (in_string_) continue;
    if (text[i] == '\n') {
      line_ += text.substr(0, i);
      end_line();
      return i + 1;
    }
    if (text[i] == '{') {
      line_ += text.substr(0, i);
      const std::size_t end = line_.find_last_not_of(kBlanks);
      if (!zarel::is_upper_case(line_.front()) || end == std::string::npos || line_[end] != ':') {
        fail("an answer set that does not begin a line");
        return text.size();
      }
      begin_set();
      is_best_ = true;
      return i + 1;
    }
  }
  line_ += text;
  return text.size();
}

void AnswerTextReader::begin_set() {
  hand_on();
  set_.clear();
  set_.is_improving = is_improving_;
  set_.number = is_improving_ ? ++improving_sets_ : ++sets_;
  is_best_ = false;
  state_ = State::kSet;
  in_string_ = has_blanks_ = false;
  depth_ = 0;
  item_begin_ = 0;
}

// The set's text is what stood between its braces. See Note [pushed text].
std::size_t AnswerTextReader::read_set(std::string_view text) {
  text = text.substr(0, kPiece);
  const std::size_t offset = set_.text().size();
  ends_.clear();
  std::size_t begin = item_begin_;
  std::size_t size = 0;
  bool is_whole = false;
  for (; size < text.size() && !is_whole && error_.empty(); ++size) {
    const char c = text[size];
    if (in_string_) {
      size = std::min(text.find('"', size), text.size() - 1);
      in_string_ = text[size] != '"';
    } else if (is_inner(c)) {
      continue;
    } else if (c == '"') {
      in_string_ = true;
    } else if (c == '(') {
      ++depth_;
    } else if (c == ')') {
      if (depth_-- == 0) fail("a parenthesis that nothing opened");
    } else if (c == '}' || (c == ',' && depth_ == 0)) {
      if (depth_ != 0) fail("an answer set that ends inside an atom");
      ends_.push_back({offset + size, has_blanks_});
      begin = offset + size + 1;
      has_blanks_ = false;
      is_whole = c == '}';
    } else if (is_blank(c) && begin == offset + size) {
      ++begin;
    } else {
      has_blanks_ = has_blanks_ || is_blank(c);
    }
  }
  set_.text() += text.substr(0, size);
  if (error_.empty()) take_items();
  item_begin_ = std::max(begin, item_begin_);
  if (is_whole && error_.empty()) end_set();
  return size;
}

void AnswerTextReader::take_items() {
  for (const auto& [end, has_blanks] : ends_) {
    std::string& text = set_.text();
    std::size_t size = end - item_begin_;
    const char* const begin = text.data() + item_begin_;
    const std::size_t leading = std::string_view(begin, size).find_first_not_of(kBlanks);
    item_begin_ += std::min(leading, size);
    size = end - item_begin_;
    if (has_blanks) {
      const std::string compact = without_blanks(std::string_view(text).substr(item_begin_, size));
      text.replace(item_begin_, compact.size(), compact);
      size = compact.size();
    }
    take_item(item_begin_, size);
    item_begin_ = end + 1;
  }
}

void AnswerTextReader::take_item(std::size_t begin, std::size_t size) {
  std::string_view text = std::string_view(set_.text()).substr(begin, size);
  if (text.size() > std::numeric_limits<std::uint32_t>::max()) return fail("an atom of over 4 GB");
  Item item;
  item.is_negated = text.starts_with('-');
  if (item.is_negated) text.remove_prefix(1);
  if (text.empty()) return end_of_empty(begin);
  const std::size_t open = std::min(text.find('('), text.size());
  const std::string_view predicate = text.substr(0, open);
  if (open == 0 || (open != text.size() && !text.ends_with(')')))
    return fail("an atom that is none: " + std::string(text.substr(0, kShown)));
  std::string_view terms;
  if (open != text.size()) terms = text.substr(open + 1, text.size() - open - 2);
  const auto at = [this](std::string_view piece) {
    return static_cast<std::size_t>(piece.data() - set_.text().data());
  };
  const auto size_of = [](std::string_view piece) {
    return static_cast<std::uint32_t>(piece.size());
  };
  const std::string_view relation = terms.substr(0, zarel::end_of_first_term(terms));
  if (!dl::is_generic(predicate) || relation.size() == terms.size()) {
    item.begin = at(predicate);
    item.relation_size = size_of(predicate);
    item.arguments_size = size_of(terms);
    return set_.add(item);
  }
  item.begin = at(relation);
  item.relation_size = size_of(relation);
  terms.remove_prefix(relation.size() + 1);
  const std::string_view space = terms.substr(0, zarel::end_of_first_term(terms));
  terms.remove_prefix(std::min(space.size() + 1, terms.size()));
  item.space_size = size_of(space);
  item.arguments_size = size_of(terms);
  item.kind = kind_of(relation, space, terms);
  set_.add(item);
}

// No atom stands in an empty answer set alone.
void AnswerTextReader::end_of_empty(std::size_t begin) {
  const bool is_first = set_.items().empty() && ends_.size() == 1;
  if (!is_first || set_.text()[begin] == '-') fail("an atom that is missing");
}

void AnswerTextReader::end_set() {
  state_ = State::kBetween;
  has_set_ = true;
  if (!is_best_) hand_on();
}

void AnswerTextReader::settle() {
  if (state_ == State::kBetween) hand_on();
}

void AnswerTextReader::hand_on() {
  if (std::exchange(has_set_, false)) consumer_.answer_set(set_);
}

// A line that is no answer set: the costs of the one before, or what answers a query.
void AnswerTextReader::end_line() {
  state_ = State::kBetween;
  if (has_set_ && read_costs(line_)) return;
  hand_on();
  if (zarel::is_upper_case(line_.front()))
    return fail(std::string("the line ") + line_.substr(0, kShown));
  const std::string values = without_blanks(line_);
  if (is_ground_ && (values == "true" || values == "false")) {
    consumer_.truth(values == "true");
  } else {
    consumer_.row(zarel::AnswerTerms(values, namespaces_));
  }
}

// "Cost ([Weight:Level]): <[3:2]>" for the highest level, "[1:1]" in quotes for each further one.
bool AnswerTextReader::read_costs(std::string_view line) {
  line = line.substr(0, line.find_last_not_of(kBlanks) + 1);
  const std::size_t open = line.find("<[");
  const bool is_first = set_.costs.empty();
  if (is_first ? open == std::string_view::npos : !line.starts_with("\"[")) return false;
  line.remove_prefix((is_first ? open : 0) + 2);
  std::optional<Cost> cost = cost_of(line, is_first ? "]>" : "]\"");
  if (!cost || !line.empty()) return false;
  set_.costs.push_back(std::move(*cost));
  return true;
}

bool AnswerTextReader::finish() {
  if (state_ == State::kLine && error_.empty()) {
    if (in_string_) {
      fail("a string that does not end");
    } else {
      end_line();
    }
  }
  if (state_ == State::kSet) fail("an answer set that does not end");
  hand_on();
  return error_.empty();
}

void AnswerTextReader::fail(std::string_view what) {
  if (error_.empty()) error_ = what;
}

}    // namespace workbench
