#include "dl/explain/answer_text.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>

#include "dl/explain/atom_batch.h"
#include "dl/names.h"

namespace dl {
namespace {

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

GroundTerm integer_of(std::string_view digits) {
  std::uint32_t value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return GroundTerms::integer(value);
}

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

  // Reads the arguments, if they are constants and integers. Returns how many; else nothing, and
  // nothing is read.
  std::optional<std::uint32_t> simple_arguments(std::vector<std::string_view>& out);

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
  } else if (!spelling.empty() && is_digit(spelling.front())) {
    out.push_back(integer_of(spelling));
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

std::optional<std::uint32_t> TermReader::simple_arguments(std::vector<std::string_view>& out) {
  out.clear();
  if (!is_at('(')) return 0;
  const std::size_t begin = position_;
  do {
    skip();
    out.push_back(word());
    if (out.back().empty() || (!is_at(',') && !is_at(')'))) {
      position_ = begin;
      return std::nullopt;
    }
  } while (is_at(','));
  skip();
  return static_cast<std::uint32_t>(out.size());
}

}    // namespace

void add_answer_set(std::string_view text, GroundTerms& terms, AnswerIndex& index) {
  TermReader reader(text, terms);
  reader.skip();
  // Blanks stand between atoms, and in strings.
  index.reserve(index.size() + static_cast<std::size_t>(std::ranges::count(text, ' ')) + 1);
  std::string_view last_name;    // most atoms have the predicate of the one before
  NameNumber name = 0;
  std::vector<std::string_view> words;
  std::vector<GroundTerm> arguments;
  AtomBatch batch(terms, index);
  const auto add = [&index](PredicateNumber predicate, std::span<const GroundTerm> each,
                            std::size_t hash, std::size_t) { index.add(predicate, each, hash); };
  while (!reader.has_ended() && !reader.is_at('}')) {
    const bool is_negated = reader.is_at('-');
    if (is_negated) reader.skip();
    const std::string_view spelling = reader.word();
    if (spelling != last_name) name = terms.name(spelling);
    last_name = spelling;
    if (const auto arity = reader.simple_arguments(words)) {
      batch.begin(index.number({name, *arity, is_negated}));
      for (const std::string_view word : words) {
        if (is_digit(word.front())) {
          batch.term(integer_of(word));
        } else {
          batch.constant(word);
        }
      }
    } else {
      reader.arguments(arguments);
      batch.begin(index.number({name, static_cast<std::uint32_t>(arguments.size()), is_negated}));
      for (const GroundTerm argument : arguments) batch.term(argument);
    }
    if (batch.is_full()) batch.empty(add);
    while (reader.is_at(',') || reader.is_at(' ')) reader.skip();
  }
  batch.empty(add);
}

GroundTerm read_ground_term(std::string_view text, GroundTerms& terms) {
  std::string enclosed("(");
  (enclosed += text) += ')';
  std::vector<GroundTerm> arguments;
  TermReader(enclosed, terms).arguments(arguments);
  return arguments.front();
}

}    // namespace dl
