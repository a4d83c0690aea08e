#include "model/term.h"

#include <algorithm>
#include <new>
#include <unordered_set>

#include "base/characters.h"
#include "model/function_term_table.h"
#include "model/report.h"

namespace zarel {
namespace {

bool begins_variable(std::string_view text) {
  return !text.empty() && is_upper_case(text[0]);
}

}    // namespace

std::uint32_t WideValues::number_of(std::uint32_t value) {
  const auto next = static_cast<std::uint32_t>(values_.size());
  const auto [known, is_new] = numbers_.try_emplace(value, next);
  if (!is_new) return known->second;
  constexpr std::uint32_t kMost = 1U << 28U;
  if (next == kMost) throw std::bad_alloc();
  values_.push_back(value);
  return next;
}

void TERMT::set_wide(std::uint32_t value) {
  is_wide_ = 1;
  bits_ = wide_values().number_of(value) % kFirstWide;
}

std::uint32_t TERMT::wide_index() const {
  return wide_values().value(bits_);
}

TERMT TERMT::anonymous() {
  return {TermKind::kAnonymous, static_cast<std::int32_t>(LocalVariables().fresh_number())};
}

VariableNumbering::Entry VariableNumbering::enter(NameId name) {
  const std::uint32_t index = to_index(name);
  if (index >= slots_.size()) slots_.resize(std::size_t{index} + 1, {0, 0});
  Slot& slot = slots_[index];
  if (slot.epoch == epoch_) return {slot.number, false};
  slot = {epoch_, next_++};
  return {slot.number, true};
}

void VariableNumbering::reset() {
  ++epoch_;
  highest_ = std::max(highest_, next_);
  next_ = 0;
}

std::uint32_t VariableNumbering::unused_number() {
  next_ = std::max(highest_, next_);
  return next_++;
}

void VariableRegistry::enter(NameId name, std::uint32_t number) {
  if (!registered_.enter(name).is_new) return;
  if (number >= first_name_.size()) first_name_.resize(std::size_t{number} + 1, 0);
  if (first_name_[number] == 0) first_name_[number] = to_index(name) + 1;
}

std::optional<NameId> VariableRegistry::name_of(std::uint32_t number) const {
  if (number >= first_name_.size() || first_name_[number] == 0) return std::nullopt;
  return NameId{first_name_[number] - 1};
}

TERMT newTERMT(std::string_view text) {
  return newTERMT(names().intern(text));
}

TERMT newTERMT(NameId name) {
  if (!begins_variable(names().spelling(name))) return TERMT::constant(name);
  const auto [number, is_new] = LocalVariables().enter(name);
  if (is_new) Variables().enter(name, number);
  return TERMT::variable(number);
}

NameId name_of_variable(std::uint32_t number) {
  const std::optional<NameId> name = Variables().name_of(number);
  if (!name) end_run(1);
  return *name;
}

std::string_view getVariableName(std::uint32_t number) {
  return names().spelling(name_of_variable(number));
}

std::vector<TERMT> getTerms(std::span<const TERMT> actual, std::span<const TERMT> pattern) {
  std::vector<TERMT> merged;
  auto next = actual.begin();
  for (const TERMT& term : pattern) {
    if (term.kind == TermKind::kDollar) continue;
    if (term.kind != TermKind::kAsterisk) {
      merged.push_back(term);
    } else if (next != actual.end()) {
      merged.push_back(*next++);
    }
  }
  merged.insert(merged.end(), next, actual.end());
  return merged;
}

// A loop with a stack of its own: terms may be nested deeper than the call stack stands.
void variablesInFunctionTerm(std::vector<TERMT>& out, const TERMT& f) {
  std::vector<TERMT> open{f};
  while (!open.empty()) {
    const TERMT term = open.back();
    open.pop_back();
    if (term.is_variable()) out.push_back(term);
    if (term.kind != TermKind::kFunctionTerm) continue;
    const std::optional<FTERM> function = FTermTable().find(term.index());
    if (function) open.insert(open.end(), function->arguments.rbegin(), function->arguments.rend());
  }
}

std::string getNameTerm(std::span<const TERMT> terms, int start) {
  std::unordered_set<std::string_view> taken;
  for (const TERMT& term : terms) {
    if (term.is_variable()) taken.insert(getVariableName(term.index()));
  }
  std::string name;
  do {
    name = "Var" + std::to_string(start++);
  } while (taken.count(name) != 0);
  return name;
}

std::string getNewName(int n, const TERMT& term) {
  std::string name = term.is_variable() ? std::string(getVariableName(term.index())) : "C_const_";
  return name += std::to_string(n);
}

std::pair<TERMT, bool> standardizeGuard(const TERMT& term, bool is_inclusive) {
  return {term, is_inclusive};
}

}    // namespace zarel
