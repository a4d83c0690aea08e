#include "dl/survey.h"

#include <utility>

#include "base/characters.h"

namespace dl {

std::vector<IncludeLine> Survey::take_includes() {
  return std::exchange(includes_, {});
}

MaybeMistake Survey::fact(const Statement& statement) {
  for (const std::uint32_t head : statement.heads)
    folding_.see_fact(statement, statement.terms[head]);
  return {};
}

MaybeMistake Survey::rule(const Statement& statement) {
  see(statement);
  return {};
}

MaybeMistake Survey::weak_constraint(const Statement& statement, const Piece&, const Piece& level) {
  const std::string_view text = level.text.empty() ? "1" : level.text;
  if (has_weak_constraints_ && text != level_) has_several_levels_ = true;
  has_several_levels_ = has_several_levels_ || !zarel::is_digit(text.front());
  has_weak_constraints_ = true;
  level_ = text;
  see(statement);
  return {};
}

MaybeMistake Survey::query(const Statement& statement) {
  has_query_ = true;
  see(statement);
  return {};
}

MaybeMistake Survey::integer_bound(std::int64_t bound, const Piece&) {
  if (!bound_) bound_ = bound;
  return {};
}

void Survey::include(std::string_view name, const Piece& directive) {
  includes_.push_back({std::string(name), directive.range});
}

// The text is not looked at in this reading.
std::string Survey::projection(const Statement&, const Term&, std::uint32_t, std::uint32_t) {
  return {};
}

void Survey::see(const Statement& statement) {
  const auto begin = static_cast<std::uint32_t>(statement.written.data() - statement.source);
  rules_.back().push_back({begin, begin + static_cast<std::uint32_t>(statement.written.size())});
  for (const std::uint32_t head : statement.heads) folding_.see(statement, statement.terms[head]);
  see_body(statement, statement.body);
  for (const Aggregate& aggregate : statement.aggregates) {
    if (aggregate.function == kSumUp || aggregate.function == kAverage) has_sums_ = true;
    see_body(statement, aggregate.body);
  }
}

void Survey::see_body(const Statement& statement, const std::vector<Literal>& body) {
  for (const Literal& literal : body) {
    if (literal.kind == kAtom) folding_.see(statement, statement.terms[literal.term]);
  }
}

}    // namespace dl
