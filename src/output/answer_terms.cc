#include "output/answer_terms.h"

#include <algorithm>

#include "base/characters.h"

namespace zarel {
namespace {

std::string_view without_ends(std::string_view text) {
  return text.substr(1, text.size() - 2);
}

bool is_quoted(std::string_view text) {
  return text.size() >= 2 && text.front() == '"' && text.back() == '"';
}

}    // namespace

std::size_t end_of_first_term(std::string_view terms) {
  std::size_t depth = 0;
  for (std::size_t i = 0; i < terms.size(); ++i) {
    if (is_in_word(terms[i])) continue;    // most are
    switch (terms[i]) {
      case '"':
        i = std::min(terms.find('"', i + 1), terms.size());
        break;
      case '(':
        ++depth;
        break;
      case ')':
        --depth;
        break;
      case ',':
        if (depth == 0) return i;
        break;
      default:
        break;
    }
  }
  return terms.size();
}

QualifiedName qualified_name(const NamespaceTable& namespaces, std::string_view quoted) {
  const std::size_t hash_sign = quoted.find('#');
  // Declared URIs end in # and a quote, so that a text without # begins with none of them.
  if (hash_sign == std::string_view::npos || !quoted.ends_with('"')) return {};
  const auto prefix = namespaces.prefix_of_opening(quoted.substr(0, hash_sign + 1));
  if (!prefix) return {};
  quoted.remove_suffix(1);
  return {*prefix, quoted.substr(hash_sign + 1)};
}

AnswerTerm::Kind AnswerTerm::kind() const {
  if (is_quoted(text_)) return prefix().empty() ? Kind::kString : Kind::kQualifiedConstant;
  if (text_.ends_with(')')) return Kind::kFunction;
  return !text_.empty() && is_digit(text_.front()) ? Kind::kNumber : Kind::kConstant;
}

std::string_view AnswerTerm::name() const {
  switch (kind()) {
    case Kind::kString:
      return without_ends(text_);
    case Kind::kQualifiedConstant:
      return qualified_name(*namespaces_, text_).local_name;
    case Kind::kFunction:
      return text_.substr(0, text_.find('('));
    default:
      return text_;
  }
}

std::string_view AnswerTerm::prefix() const {
  return namespaces_ != nullptr && is_quoted(text_) ? qualified_name(*namespaces_, text_).prefix
                                                    : std::string_view();
}

AnswerTerms AnswerTerm::arguments() const {
  if (is_quoted(text_) || !text_.ends_with(')')) return {};
  const std::size_t open = text_.find('(');
  return AnswerTerms(text_.substr(open + 1, text_.size() - open - 2), namespaces_);
}

AnswerTerms::Iterator::Iterator(std::string_view rest, const NamespaceTable* namespaces)
    : rest_(rest), size_(end_of_first_term(rest)), namespaces_(namespaces) {}

AnswerTerms::Iterator& AnswerTerms::Iterator::operator++() {
  rest_.remove_prefix(std::min(size_ + 1, rest_.size()));
  size_ = end_of_first_term(rest_);
  return *this;
}

AnswerTerms::Iterator AnswerTerms::Iterator::operator++(int) {
  const Iterator before = *this;
  ++*this;
  return before;
}

TermWalk::Step TermWalk::next() {
  if (rest_.starts_with(',')) rest_.remove_prefix(1);
  if (rest_.empty()) return Step::kEnd;
  if (rest_.front() == ')') {
    rest_.remove_prefix(1);
    return Step::kEndFunction;
  }
  const bool is_string = rest_.front() == '"';
  const std::size_t end = is_string ? rest_.find('"', 1) + 1 : rest_.find_first_of(",()");
  term_ = rest_.substr(0, end);
  rest_.remove_prefix(term_.size());
  if (!rest_.starts_with('(')) return Step::kTerm;
  rest_.remove_prefix(1);
  return Step::kBeginFunction;
}

}    // namespace zarel
