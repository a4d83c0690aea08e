#include "templates/invocations.h"

#include <algorithm>
#include <ostream>

#include "model/names.h"
#include "model/printer.h"
#include "model/run.h"
#include "templates/definitions.h"
#include "templates/template_rules.h"

namespace zarel {
namespace {

struct Schedule {
  std::vector<std::uint32_t> value;
};

using Type = PREDICATE_NAMETS::TYPE;

std::uint32_t weight(const TERMT& term, std::uint32_t position) {
  switch (term.kind) {
    case TermKind::kVariable:
    case TermKind::kConstant:
    case TermKind::kInteger:
      return 3 * position;
    case TermKind::kAsterisk:
      return position;
    case TermKind::kDollar:
      return 2 * position;
    case TermKind::kAbsent:
    case TermKind::kAnonymous:
    case TermKind::kFunctionTerm:
      break;
  }
  return 0;
}

// What an actual predicate at this position, counted from 1, adds to a signature.
std::uint32_t share(std::uint32_t predicate, std::span<const TERMT> terms, std::uint32_t position) {
  std::uint32_t weights = 0;
  for (std::uint32_t j = 0; j < terms.size(); ++j) weights += weight(terms[j], j + 1);
  return template_hash(ATOMT::Predicates().name(predicate)) + weights * predicate * position;
}

std::string normalised_name(const ATOMT& actual, const BindingList& binding) {
  const std::string_view name = actual.name();
  std::string unlabelled = getNameWithoutLabel(name);
  const bool is_bound = std::any_of(binding.begin(), binding.end(), [&](const auto& pair) {
    return pair.second.predicate() == actual.predicate();
  });
  if (is_bound) return unlabelled;
  const int label = getLabel(name);
  return getNameLabeledConst(unlabelled, label < 1 ? label : label - 1);
}

}    // namespace

void InvocationTable::add(std::uint32_t signature, INVOCATIONATOM invocation) {
  by_signature_[signature].push_back(&invocations_.emplace_back(std::move(invocation)));
}

std::span<const INVOCATIONATOM* const> InvocationTable::under(std::uint32_t signature) const {
  const auto found = by_signature_.find(signature);
  if (found == by_signature_.end()) return {};
  return found->second;
}

InvocationTable& invhashmap() {
  return current_run().parts.get<InvocationTable>();
}

std::vector<std::uint32_t>& schedule() {
  return current_run().parts.get<Schedule>().value;
}

std::uint32_t signature(const INVOCATIONATOM& invocation) {
  std::uint32_t sum = template_hash(invocation.name);
  std::uint32_t position = 0;
  for (const ATOMT& actual : invocation.actuals.positive()) {
    sum += share(actual.predicate(), actual.terms(), ++position);
  }
  return sum;
}

std::uint32_t internal_signature(const INVOCATIONATOM& invocation, const BindingList& binding) {
  std::uint32_t sum = template_hash(invocation.name);
  std::uint32_t position = 0;
  for (const ATOMT& actual : invocation.actuals.positive()) {
    const ATOMT normalised(normalised_name(actual, binding), actual.terms(), Type::kUnknown);
    sum += share(normalised.predicate(), actual.terms(), ++position);
  }
  return sum;
}

void insert_in_schedule(std::uint32_t signature) {
  if (!invhashmap().contains(signature)) schedule().push_back(signature);
}

void record_invocation(INVOCATIONATOM invocation) {
  const std::uint32_t key = template_rules().expansion_of(invocation);
  insert_in_schedule(key);
  invhashmap().add(key, std::move(invocation));
}

std::vector<TERMT> getAuxTerms(const INVOCATIONATOM& invocation) {
  std::vector<TERMT> terms;
  for (const ATOMT& actual : invocation.actuals.positive()) {
    const Type type = ATOMT::Predicates().type(actual.predicate());
    if (type == Type::kAggregate || type == Type::kInvocation) continue;
    for (const TERMT& term : actual.terms()) {
      if (!term.is_marker()) terms.push_back(term);
    }
  }
  terms.insert(terms.end(), invocation.outputTerms.begin(), invocation.outputTerms.end());
  return terms;
}

INVOCATIONATOM invocation_of(const ATOMT& marker) {
  const InvocationPayload& payload = marker.invocation();
  const std::span<const TERMT> terms = payload.terms.elements();
  INVOCATIONATOM invocation{
      std::string(names().spelling(payload.name)), {terms.begin(), terms.end()}, {}};
  for (const ATOMT& actual : payload.actuals.elements()) invocation.actuals.add(actual);
  invocation.written = payload.written;
  return invocation;
}

void append_invocation(Text& out, const INVOCATIONATOM& invocation) {
  out += invocation.name;
  out += '[';
  append_list(out, invocation.actuals, ", ");
  out += "] (";
  append_list(out, invocation.outputTerms, ",");
  out += ')';
}

}    // namespace zarel
