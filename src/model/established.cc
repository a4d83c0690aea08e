#include "model/established.h"

#include <algorithm>

#include "model/atom_order.h"
#include "model/names.h"
#include "model/safety.h"
#include "model/template_records.h"

namespace zarel {
namespace {

std::string_view comparable_name(const ATOMT& atom) {
  return cut_at_underscore(getNameWithoutPrefix(atom.name()), LeadingUnderscores::kSkip);
}

}    // namespace

std::vector<TERMT> newTERMTS(const TERMT& a, const TERMT* b, const TERMT* c) {
  std::vector<TERMT> terms{a};
  if (b != nullptr) terms.push_back(*b);
  if (c != nullptr) terms.push_back(*c);
  return terms;
}

std::string getAtomLabeled(std::string_view name) {
  int counter = 0;
  return getNameLabeled(name, counter);
}

std::string getNameTemplateLabeled(const DEFINITIONATOM& definition) {
  std::string labeled = "#";
  return labeled.append(std::to_string(definition.sequence_number)).append(definition.name);
}

std::string_view getName(std::string_view name) {
  const auto* const first =
      std::find_if(name.begin(), name.end(), [](char c) { return c > '9' || c < 0; });
  return name.substr(static_cast<std::size_t>(first - name.begin()));
}

bool isFormalPred(const ATOMT& atom, std::span<const std::pair<const char*, ATOMT>> formals) {
  const std::string_view name = getName(atom.name());
  return std::any_of(formals.begin(), formals.end(),
                     [&](const auto& formal) { return name == formal.first; });
}

bool esiste(const TCONJUNCTION<ATOMT>& list, const ATOMT& atom) {
  const std::string_view name = comparable_name(atom);
  return std::any_of(list.positive().begin(), list.positive().end(),
                     [&](const ATOMT& other) { return comparable_name(other) == name; });
}

bool parametersCoincidence(std::span<const TERMT> a, std::span<const TERMT> b) {
  return std::equal(a.begin(), a.end(), b.begin(), [](const TERMT& pattern, const TERMT& term) {
    return pattern.is_marker() || pattern == term;
  });
}

bool isTrueNegated(const ATOMT& atom) {
  return atom.name().find('-') != std::string_view::npos;
}

int operator!=(const ATOMT& a, const ATOMT& b) {
  return compare(a, b);
}

int nAsterisk(const ATOMT& atom) {
  const std::span<const TERMT> terms = atom.terms();
  return static_cast<int>(std::count_if(terms.begin(), terms.end(), [](const TERMT& term) {
    return term.kind == TermKind::kAsterisk;
  }));
}

template <>
bool Body::isSafe() const {
  return rule_of(nullptr, this).isSafe();
}

template <>
bool Rule::isSafe() const {
  return !unsafe_variable(head(), body());
}

}    // namespace zarel
