#include "model/function_term_table.h"

#include <utility>

namespace zarel {

void FunctionTermTable::enter(std::uint32_t variable, FTERM term) {
  ++count_;
  terms_.insert_or_assign(variable, std::move(term));
}

const FTERM* FunctionTermTable::find(std::uint32_t variable) const {
  const auto found = terms_.find(variable);
  return found == terms_.end() ? nullptr : &found->second;
}

void FunctionTermTable::clear() {
  count_ = 0;
  terms_.clear();
}

}    // namespace zarel
