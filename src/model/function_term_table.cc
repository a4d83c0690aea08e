#include "model/function_term_table.h"

namespace zarel {

void FunctionTermTable::enter(std::uint32_t variable, const FTERM& term) {
  ++count_;
  if (variable >= terms_.size()) terms_.resize(std::size_t{variable} + 1, Entry{});
  terms_[variable] = {epoch_, term.functor, arguments_.size(), term.arguments.size()};
  arguments_.insert(arguments_.end(), term.arguments.begin(), term.arguments.end());
}

std::optional<FTERM> FunctionTermTable::find(std::uint32_t variable) const {
  if (variable >= terms_.size() || terms_[variable].epoch != epoch_) return std::nullopt;
  const Entry& entry = terms_[variable];
  return FTERM{entry.functor, std::span(arguments_).subspan(entry.begin, entry.size)};
}

void FunctionTermTable::clear() {
  count_ = 0;
  ++epoch_;
  arguments_.clear();
}

}    // namespace zarel
