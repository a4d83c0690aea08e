#include "dl/explain/answer_text.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "dl/names.h"

namespace dl {
namespace {

// One after the other, from a text that is known to be well-formed.
class TermReader {
 public:
  TermReader(std::string_view text, GroundTerms& terms) : text_(text), terms_(terms) {}

  bool is_at(char c) const { return position_ < text_.size() && text_[position_] == c; }
  bool has_ended() const { return position_ >= text_.size(); }
  void skip() { ++position_; }

  std::string_view word() {
    const std::size_t begin = position_;
    if (is_at('#')) ++position_;
    while (position_ < text_.size() && is_word(text_[position_])) ++position_;
    return text_.substr(begin, position_ - begin);
  }

  // The arguments in parentheses, if there are any.
  void arguments(std::vector<GroundTerm>& out);

 private:
  // Reads a term that is not compound; of a compound the functor and the parenthesis, and opens it.
  void begin_term(std::vector<GroundTerm>& out);
  GroundTerm string();

  struct Open {
    NameNumber functor;
    std::size_t begin;    // of its arguments in the list
  };
  std::string_view text_;
  GroundTerms& terms_;
  std::size_t position_ = 0;
  std::vector<Open> open_;
};

GroundTerm TermReader::string() {
  const std::size_t end = std::min(text_.find('"', position_ + 1), text_.size() - 1) + 1;
  const std::string_view quoted = text_.substr(position_, end - position_);
  position_ = end;
  return terms_.string(quoted);
}

void TermReader::begin_term(std::vector<GroundTerm>& out) {
  if (is_at('"')) return out.push_back(string());
  const std::string_view spelling = word();
  if (is_at('(')) {
    skip();
    open_.push_back({terms_.name(spelling), out.size()});
  } else if (!spelling.empty() && spelling.front() >= '0' && spelling.front() <= '9') {
    std::uint32_t value = 0;
    std::from_chars(spelling.data(), spelling.data() + spelling.size(), value);
    out.push_back(GroundTerms::integer(value));
  } else {
    out.push_back(terms_.constant(spelling));
  }
}

void TermReader::arguments(std::vector<GroundTerm>& out) {
  out.clear();
  if (!is_at('(')) return;
  skip();
  begin_term(out);
  while (!has_ended()) {
    if (is_at(',')) {
      skip();
      begin_term(out);
    } else if (is_at(')') && !open_.empty()) {
      skip();
      const Open top = open_.back();
      open_.pop_back();
      const GroundTerm term = terms_.compound(top.functor, std::span(out).subspan(top.begin));
      out.resize(top.begin);
      out.push_back(term);
    } else if (is_at(')')) {
      return skip();
    } else {
      begin_term(out);    // the first argument
    }
  }
}

}    // namespace

void add_answer_set(std::string_view text, GroundTerms& terms, AnswerIndex& index) {
  TermReader reader(text, terms);
  reader.skip();
  // Blanks stand between atoms, and in strings.
  index.reserve(index.size() + static_cast<std::size_t>(std::ranges::count(text, ' ')) + 1);
  std::string_view last_name;    // most atoms have the predicate of the one before
  NameNumber name = 0;
  std::vector<GroundTerm> arguments;
  while (!reader.has_ended() && !reader.is_at('}')) {
    const bool is_negated = reader.is_at('-');
    if (is_negated) reader.skip();
    const std::string_view spelling = reader.word();
    if (spelling != last_name) name = terms.name(spelling);
    last_name = spelling;
    reader.arguments(arguments);
    const auto arity = static_cast<std::uint32_t>(arguments.size());
    index.add(index.number({name, arity, is_negated}), arguments);
    while (reader.is_at(',') || reader.is_at(' ')) reader.skip();
  }
}

GroundTerm read_ground_term(std::string_view text, GroundTerms& terms) {
  std::string enclosed("(");
  (enclosed += text) += ')';
  std::vector<GroundTerm> arguments;
  TermReader(enclosed, terms).arguments(arguments);
  return arguments.front();
}

}    // namespace dl
