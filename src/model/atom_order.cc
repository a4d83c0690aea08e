#include "model/atom_order.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include "model/clause.h"

namespace zarel {
namespace {

// Far numbers differ by more than an int holds; what is left is which is the larger.
int difference(std::int64_t a, std::int64_t b) {
  constexpr std::int64_t kFarthest = std::numeric_limits<int>::max();
  return static_cast<int>(std::clamp(a - b, -kFarthest, kFarthest));
}

int difference(const TERMT& a, const TERMT& b) {
  if (a.kind != b.kind) {
    return difference(static_cast<std::int64_t>(a.kind), static_cast<std::int64_t>(b.kind));
  }
  return a.kind == TermKind::kAbsent ? 0
                                     : difference(std::int64_t{a.value()}, std::int64_t{b.value()});
}

int difference(std::span<const TERMT> a, std::span<const TERMT> b) {
  if (a.size() != b.size()) return static_cast<int>(a.size()) - static_cast<int>(b.size());
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (const int terms = difference(a[i], b[i]); terms != 0) return terms;
  }
  return 0;
}

int difference(const AggregateGuard& a, const AggregateGuard& b) {
  if (const int terms = difference(a.term, b.term); terms != 0) return terms;
  return int{a.is_inclusive} - int{b.is_inclusive};
}

int difference(const Literal& a, const Literal& b) {
  if (a.is_negated != b.is_negated) return int{a.is_negated} - int{b.is_negated};
  return compare(a.atom, b.atom);
}

// Non-negated literals first, each group ordered by its atoms.
std::vector<Literal> sorted(std::span<const Literal> body) {
  std::vector<Literal> literals(body.begin(), body.end());
  std::sort(literals.begin(), literals.end(), [](const Literal& a, const Literal& b) {
    return a.is_negated != b.is_negated ? b.is_negated : compare(a.atom, b.atom) < 0;
  });
  return literals;
}

int difference(std::span<const Literal> a, std::span<const Literal> b) {
  if (a.size() != b.size()) return static_cast<int>(a.size()) - static_cast<int>(b.size());
  const std::vector<Literal> first = sorted(a);
  const std::vector<Literal> second = sorted(b);
  for (std::size_t i = 0; i < first.size(); ++i) {
    if (const int literals = difference(first[i], second[i]); literals != 0) return literals;
  }
  return 0;
}

int difference(const AGGREGATEPREDT& a, const AGGREGATEPREDT& b) {
  if (const int guards = difference(a.lower, b.lower); guards != 0) return guards;
  if (const int guards = difference(a.upper, b.upper); guards != 0) return guards;
  if (a.is_equality != b.is_equality) return int{a.is_equality} - int{b.is_equality};
  if (a.has_lower != b.has_lower) return int{a.has_lower} - int{b.has_lower};
  if (a.has_upper != b.has_upper) return int{a.has_upper} - int{b.has_upper};
  if (const int terms = difference(a.terms.elements(), b.terms.elements()); terms != 0)
    return terms;
  return difference(std::span<const Literal>(a.body.elements()), b.body.elements());
}

int difference(const InvocationPayload& a, const InvocationPayload& b) {
  const std::span<const ATOMT> first = a.actuals.elements();
  const std::span<const ATOMT> second = b.actuals.elements();
  const bool is_equal = a.name == b.name && a.expansion_key == b.expansion_key &&
                        std::equal(first.begin(), first.end(), second.begin(), second.end(),
                                   [](const ATOMT& x, const ATOMT& y) { return equal(x, y); }) &&
                        difference(a.terms.elements(), b.terms.elements()) == 0;
  return is_equal ? 0 : 1;
}

int difference(const EXTERNAL_ATOM& a, const EXTERNAL_ATOM& b) {
  if (a.name != b.name)
    return difference(std::int64_t{to_index(a.name)}, std::int64_t{to_index(b.name)});
  if (const int terms = difference(a.bracketed.elements(), b.bracketed.elements()); terms != 0)
    return terms;
  return difference(a.terms.elements(), b.terms.elements());
}

}    // namespace

int compare(const ATOMT& a, const ATOMT& b) {
  if (a.predicate() != b.predicate())
    return difference(std::int64_t{a.predicate()}, std::int64_t{b.predicate()});
  if (a.payload() != b.payload()) {
    return difference(static_cast<std::int64_t>(a.payload()),
                      static_cast<std::int64_t>(b.payload()));
  }
  switch (a.payload()) {
    case ATOMT::Payload::kAggregate:
      return difference(a.aggregate(), b.aggregate());
    case ATOMT::Payload::kInvocation:
      return difference(a.invocation(), b.invocation());
    case ATOMT::Payload::kExternal:
      return difference(a.external_atom(), b.external_atom());
    case ATOMT::Payload::kTerms:
      break;
  }
  return difference(a.terms(), b.terms());
}

}    // namespace zarel
