#include "model/atom.h"

#include <algorithm>
#include <string>

#include "model/template_records.h"

namespace zarel {
namespace {

using Type = PREDICATE_NAMETS::TYPE;

std::uint32_t count_asterisks(std::span<const TERMT> terms) {
  return static_cast<std::uint32_t>(
      std::count_if(terms.begin(), terms.end(),
                    [](const TERMT& term) { return term.kind == TermKind::kAsterisk; }));
}

std::uint32_t invocation_predicate(const INVOCATIONATOM& invocation) {
  const NameId marker = names().intern("@" + invocation.name);
  return ATOMT::Predicates().enter_invocation(
      marker, static_cast<std::uint32_t>(invocation.actuals.size()), invocation.name);
}

}    // namespace

ATOMT::ATOMT(std::string_view name, std::span<const TERMT> terms, Type type)
    : ATOMT(names().intern(name), terms, type) {}

ATOMT::ATOMT(NameId name, std::span<const TERMT> terms, Type type)
    : ATOMT(name, program_storage().store(terms), type) {}

ATOMT::ATOMT(NameId name, StoredList<TERMT> terms, Type type)
    : ATOMT(Predicates().enter(name, static_cast<std::uint32_t>(terms.size()), type),
            Payload::kTerms) {
  of_.terms = terms;
  asterisks_ = count_asterisks(terms.elements()) & 0x3fffffffU;
}

ATOMT::ATOMT(const INVOCATIONATOM& invocation)
    : ATOMT(invocation_predicate(invocation), Payload::kInvocation) {
  ProgramStorage& storage = program_storage();
  of_.invocation = storage.store_value(
      InvocationPayload{names().intern(invocation.name),
                        storage.store(std::span<const TERMT>(invocation.outputTerms)),
                        storage.store(std::span<const ATOMT>(invocation.actuals.positive())),
                        invocation.expansion_key, invocation.written});
}

ATOMT ATOMT::external(std::string_view name, std::span<const TERMT> bracketed,
                      std::span<const TERMT> terms) {
  const NameId id = names().intern(name);
  const auto arity = static_cast<std::uint32_t>(terms.size());
  ATOMT atom(Predicates().enter(id, arity, Type::kExternal), Payload::kExternal);
  ProgramStorage& storage = program_storage();
  atom.of_.external_atom =
      storage.store_value(EXTERNAL_ATOM{id, storage.store(bracketed), storage.store(terms)});
  return atom;
}

std::span<const TERMT> ATOMT::terms_of_payload() const {
  switch (payload()) {
    case Payload::kTerms:
      return of_.terms.elements();
    case Payload::kInvocation:
      return of_.invocation->terms.elements();
    case Payload::kExternal:
      return of_.external_atom->terms.elements();
    case Payload::kAggregate:
      break;
  }
  return {};
}

ATOMT ATOMT::with_terms(StoredList<TERMT> terms, std::uint32_t asterisks) const {
  ATOMT atom(predicate_, Payload::kTerms);
  atom.of_.terms = terms;
  atom.asterisks_ = asterisks & 0x3fffffffU;
  return atom;
}

ATOMT newBuiltin(BUILTIN code, std::span<const TERMT> terms) {
  ATOMT atom(static_cast<std::uint32_t>(code), ATOMT::Payload::kTerms);
  atom.of_.terms = program_storage().store(terms);
  return atom;
}

ATOMT newNegativeATOMT(std::string_view name, std::span<const TERMT> terms) {
  std::string negated = "-";
  const ATOMT atom(negated.append(name), terms, Type::kUnknown);
  NegativeAtoms().insert(atom.predicate());
  return atom;
}

ATOMT newAggregate(const std::pair<TERMT, bool>& lower, const std::pair<TERMT, bool>& upper,
                   const AGGREGATEPREDT& aggregate, bool has_lower, bool has_upper,
                   bool is_equality) {
  AGGREGATEPREDT whole = aggregate;
  whole.lower = {lower.first, lower.second};
  whole.upper = {upper.first, upper.second};
  whole.has_lower = has_lower;
  whole.has_upper = has_upper;
  whole.is_equality = is_equality;

  const NameId name = names().intern(aggregate_name(whole.function));
  ATOMT atom(ATOMT::Predicates().enter(name, 0, Type::kAggregate), ATOMT::Payload::kAggregate);
  atom.of_.aggregate = program_storage().store_value(whole);
  return atom;
}

}    // namespace zarel
